#include "host/widgets/widget.h"

#include "host/chrome/strings.h"

#include <algorithm>

namespace Refhost {

const char* nameOf(WidgetKind kind) {
  switch (kind) {
    case WidgetKind::box: return "box";
    case WidgetKind::groupBox: return "groupbox";
    case WidgetKind::tab: return "tab";
    case WidgetKind::spacer: return "spacer";
    case WidgetKind::label: return "label";
    case WidgetKind::image: return "image";
    case WidgetKind::button: return "button";
    case WidgetKind::checkBox: return "checkbox";
    case WidgetKind::radioButton: return "radio";
    case WidgetKind::listBox: return "listbox";
    case WidgetKind::comboBox: return "combobox";
    case WidgetKind::textBox: return "textbox";
    case WidgetKind::integerTextBox: return "integertextbox";
    case WidgetKind::scrollBar: return "scrollbar";
    case WidgetKind::colorPicker: return "colorpicker";
    case WidgetKind::preview: return "preview";
  }
  return "";
}

// A plug-in may hold a child longer.
WidgetNode::~WidgetNode() {
  for (WidgetNode* child : childNodes) child->parentNode = nullptr;
}

bool WidgetNode::isShown() const { return visible && (parentNode == nullptr || parentNode->isShown()); }

bool WidgetNode::isOperable() const {
  return visible && enabled && (parentNode == nullptr || parentNode->isOperable());
}

std::u16string WidgetNode::shownLabel() const { return world.strings.resolve(labelText); }

std::u16string WidgetNode::attribute(const std::string& name) const {
  const auto found = attributes.find(name);
  return found == attributes.end() ? std::u16string() : found->second;
}

// Owns the child before it names it, so that nothing is named that is gone when memory runs out in between.
void WidgetNode::adopt(WidgetNode& child) {
  owned.emplace_back(&child.asWidget());
  childNodes.push_back(&child);
  child.parentNode = this;
}

void WidgetNode::initialise(bool startsVisible, bool startsEnabled, std::u16string startLabel) {
  visible = startsVisible;
  enabled = startsEnabled;
  labelText = std::move(startLabel);
}

void WidgetNode::record(std::string_view operation, std::optional<TraceValue> value) const {
  TraceEvent event{"widget", {{"id", widgetId}, {"do", std::u16string(operation.begin(), operation.end())}}};
  if (value) event.members.emplace_back("value", std::move(*value));
  world.trace.record(event);
}

void WidgetNode::changeVisible(bool value) {
  if (visible == value) return;
  visible = value;
  changed();
}

void WidgetNode::changeEnabled(bool value) {
  if (enabled == value) return;
  enabled = value;
  changed();
}

void WidgetNode::changeLabel(std::u16string_view label) {
  record("setLabel", std::u16string(label));
  if (labelText == label) return;
  labelText = label;
  changed();
}

void Container::shareColumns() {
  columnsShared = true;
  changed();
}

void Label::setImage(Kiln::SmartPtr<Kiln::XUL::Image> picture) {
  shownImage = std::move(picture);
  changed();
}

Button::Button(WidgetWorld& widgetWorld, WidgetKind kind, const std::u16string& id)
    : WidgetImpl(widgetWorld, kind, id),
      clicks(make<HostSignal<Kiln::XUL::EventArg<Kiln::XUL::Button>>>(widgetWorld.trace, "click", id)) {}

void Button::click() {
  if (!isOperable()) return;
  world.dispatch([this] { clicks->fire(Kiln::XUL::EventArg<Kiln::XUL::Button>(this)); });
}

void CheckBox::click() {
  if (!isOperable()) return;
  changeMark(!checked);
  fire();
}

ImageBox::ImageBox(WidgetWorld& widgetWorld, WidgetKind kind, const std::u16string& id)
    : WidgetImpl(widgetWorld, kind, id),
      drops(make<HostSignal<Kiln::WString>>(widgetWorld.trace, "drop", id)),
      menus(make<HostSignal<Kiln::WString>>(widgetWorld.trace, "menu", id)) {}

void ImageBox::setImage(Kiln::SmartPtr<Kiln::XUL::Image> picture) {
  shownImage = std::move(picture);
  shownResource.clear();
  changed();
}

void ImageBox::setResource(Kiln::WStringView name) {
  shownImage.reset();
  shownResource = name.view();
  changed();
}

void ImageBox::drop(const std::u16string& value) {
  if (!isOperable() || !isDropTarget()) return;
  world.dispatch([&] { drops->fire(text(value)); });
}

void ImageBox::choose(const std::u16string& chosen) {
  const bool isThere = std::ranges::any_of(menuItems, [&](const MenuItem& item) { return item.text == chosen; });
  if (!isOperable() || !isThere) return;
  world.dispatch([&] { menus->fire(text(chosen)); });
}

}  // namespace Refhost
