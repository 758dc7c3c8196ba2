// Stands in for the watermark editor in a plug-in for tests: its dialog has a list for each field that the test
// changes, and what is selected there becomes the field's text.
#include "effect/watermark/editor.h"
#include "effect/watermark/record.h"
#include "kiln/signal.h"

namespace Effect {
namespace {

class Answer final : public Kiln::SignalTarget {
 public:
  void onOk(Kiln::XUL::SubDialogEventArg&) { accepted = true; }
  bool accepted = false;
};

}  // namespace

bool editWatermark(Kiln::Host&, Kiln::XUL::GUI& gui, const Node& record, bool isNew) {
  const auto dialog = gui.openDialog(Address::watermarkEditor);
  if (!dialog) return false;
  const auto title = Kiln::smartCast<Kiln::XUL::Label>(dialog->widgetById(u"mode"));
  title->setLabel(isNew ? std::u16string(u"new") : fieldText(*record, Field::stylename).str());
  Answer answer;
  Kiln::connect(*dialog->okSignal(), answer, &Answer::onOk);
  dialog->runModally();
  for (const Name field : {Field::label, Field::stylename, Field::angle}) {
    const auto list = Kiln::smartCast<Kiln::XUL::ComboBox>(dialog->widgetById(field));
    if (const auto chosen = list->selectedItem()) setField(*record, field, chosen->value());
  }
  return answer.accepted;
}

}  // namespace Effect
