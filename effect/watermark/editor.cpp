#include "effect/watermark/editor.h"

#include "effect/vocabulary.h"
#include "kiln/signal.h"

namespace Effect {
namespace {

// Which of the dialog's buttons closed it.
class Answer final : public Kiln::SignalTarget {
 public:
  explicit Answer(Kiln::XUL::SubDialog& dialog) {
    Kiln::connect(*dialog.okSignal(), *this, &Answer::onOk);
    Kiln::connect(*dialog.cancelSignal(), *this, &Answer::onCancel);
  }

  bool accepted = false;

 private:
  void onOk(Kiln::XUL::SubDialogEventArg&) { accepted = true; }
  void onCancel(Kiln::XUL::SubDialogEventArg&) { accepted = false; }
};

}  // namespace

bool editWatermark(Kiln::Host&, Kiln::XUL::GUI& gui, const Kiln::SmartPtr<Kiln::Dom::INode>&, bool) {
  const auto dialog = gui.openDialog(Address::watermarkEditor);
  if (!dialog) return false;
  const Answer answer(*dialog);
  dialog->runModally();
  return answer.accepted;
}

}  // namespace Effect
