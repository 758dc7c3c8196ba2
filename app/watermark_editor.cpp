#include "app/watermark_editor.h"

#include "app/messages.h"
#include "app/shown_items.h"
#include "formats/colour.h"
#include "formats/names.h"
#include "formats/near_names.h"
#include "formats/sentences.h"
#include "formats/text.h"

#include <algorithm>
#include <stdexcept>

namespace App {
namespace {

namespace WidgetId = Formats::WidgetId;
using Formats::toUtf16;
using Formats::toUtf8;

class Editor {
 public:
  explicit Editor(Refhost::Dialog& opened) : dialog(opened) {}

  void fill(const WatermarkEdit& edit) {
    if (edit.text)
      type(WidgetId::textBox, *edit.text, Formats::sentenceTemplate("The text of a watermark cannot be {1}."));
    if (edit.name) typeName(*edit.name);
    const WatermarkLook& look = edit.look;
    if (look.font) chooseFont(*look.font);
    if (look.style) chooseValue(WidgetId::fontStyle, toUtf16(*look.style));
    if (look.size)
      type(WidgetId::fontSize, *look.size, Formats::sentenceTemplate("The size of a watermark cannot be {1}."));
    if (look.place) widget<Refhost::Button>(look.position()).click();
    if (look.angle)
      type(WidgetId::angle, *look.angle, Formats::sentenceTemplate("The angle of a watermark cannot be {1}."));
    if (look.colour) chooseColour(toUtf16(*look.colour));
    if (look.isOutline) widget<Refhost::RadioButton>(WidgetId::printOutline).choose();
    if (!look.transparency) return;
    widget<Refhost::RadioButton>(WidgetId::printTransparent).choose();
    type(WidgetId::opacity, *look.transparency,
         Formats::sentenceTemplate("The transparency of a watermark cannot be {1}."));
  }

  // The watermark's name in the list.
  std::string name() {
    const auto* row = dialog.layout().find(WidgetId::styleNameRow);
    const bool hasName = row != nullptr && row->isVisible();
    return toUtf8(widget<Refhost::TextBoxNode>(hasName ? WidgetId::styleNameBox : WidgetId::textBox).content());
  }

 private:
  template <class Kind>
  Kind& widget(std::u16string_view id) {
    return demandWidget<Kind>(dialog.layout(), id);
  }

  bool isOperable(Formats::Name id) {
    const auto* const found = dialog.layout().find(id);
    return found != nullptr && found->isShown() && found->isOperable();
  }

  // What the box does not take, or replaces when it is left, is refused by the template of a sentence.
  void type(Formats::Name id, const std::string& text, std::string_view refusal) {
    auto& box = widget<Refhost::TextBoxNode>(id);
    box.edit(toUtf16(text), Refhost::Edit::typed);
    box.leave();
    if (toUtf8(box.content()) != text) throw std::runtime_error(Formats::sentence(refusal, inQuotes(text)));
  }

  void typeName(const std::string& name) {
    if (!isOperable(WidgetId::styleNameBox))
      throw std::runtime_error(Formats::sentence("A watermark's name is its text here; leave out --name."));
    type(WidgetId::styleNameBox, name, Formats::sentenceTemplate("The name of a watermark cannot be {1}."));
  }

  void chooseFont(const std::string& font) {
    auto& list = widget<Refhost::SelectorNode>(WidgetId::fontName);
    const auto items = shownItems(list);
    const auto item = std::ranges::find(items, font, &ShownItem::name);
    if (item != items.end()) return list.choose(item->index);
    std::vector<std::string> names;
    for (const ShownItem& each : items) names.push_back(each.name);
    throw std::runtime_error(Formats::sentence("The font {1} is not installed.", inQuotes(font)) +
                             Formats::didYouMean(names, font));
  }

  bool chooseValue(Formats::Name id, std::u16string_view value) {
    auto& list = widget<Refhost::SelectorNode>(id);
    const auto items = shownItems(list);
    const auto item = std::ranges::find(items, value, &ShownItem::value);
    if (item == items.end()) return false;
    list.choose(item->index);
    return true;
  }

  void chooseColour(const std::u16string& wanted) {
    const std::u16string colour = Formats::colourText(Formats::colourOf(wanted));
    if (!isOperable(WidgetId::colourList))
      throw std::runtime_error(
          Formats::sentence("This model does not print watermarks in colours of choice; leave out --colour."));
    if (!chooseValue(WidgetId::colourList, colour))
      widget<Refhost::ColorPicker>(WidgetId::colourPicker).pick(Formats::colourOf(colour));
  }

  Refhost::Dialog& dialog;
};

}  // namespace

bool editWatermark(Refhost::Dialog& dialog, const WatermarkEdit& edit) {
  Editor editor(dialog);
  editor.fill(edit);
  if (!dialog.ok().isOperable())
    throw std::runtime_error(
        Formats::sentence("No watermark can have the name {1}: choose another one.", inQuotes(editor.name())));
  return dialog.accept();
}

}  // namespace App
