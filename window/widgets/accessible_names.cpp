#include "window/widgets/accessible_names.h"

#include "host/chrome/layout.h"
#include "host/reference_host.h"
#include "host/widgets/list.h"
#include "window/widgets/node_facts.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QLabel>

#include <algorithm>

namespace Window {
namespace {

using Refhost::WidgetKind;
using Refhost::WidgetNode;

bool showsNoWords(const WidgetNode& node) {
  switch (node.kind()) {
    case WidgetKind::groupBox:
    case WidgetKind::image:
    case WidgetKind::listBox:
    case WidgetKind::comboBox:
    case WidgetKind::textBox:
    case WidgetKind::integerTextBox:
    case WidgetKind::scrollBar:
    case WidgetKind::preview: return true;
    default: return false;
  }
}

// A button without letters or digits, such as an arrow.
bool isSymbol(const QWidget& widget) {
  const auto* button = qobject_cast<const QAbstractButton*>(&widget);
  if (button == nullptr) return false;
  const QString text = button->text();
  return std::none_of(text.begin(), text.end(), [](QChar unit) { return unit.isLetterOrNumber(); });
}

}  // namespace

void AccessibleNames::update(const QWidget& top) {
  leadLabels(tree.root(), top);
  nameForReaders(tree.root(), {});
}

void AccessibleNames::leadLabels(const WidgetNode& node, const QWidget& top) {
  const QString control = toQt(node.attribute("control"));
  auto* target = control.isEmpty() ? nullptr : top.findChild<QWidget*>(control);
  auto* label = target == nullptr ? nullptr : tree.widgetOf(node)->findChild<QLabel*>();
  if (label != nullptr) led[target] = &node;
  if (label != nullptr && label->buddy() != target) {
    label->setBuddy(target);
    tree.refresh(node);
  }
  for (const WidgetNode* child : node.children()) leadLabels(*child, top);
}

QString AccessibleNames::nameOf(const WidgetNode& node, const QWidget& widget, const QString& group) const {
  QString name = tree.attribute(node, "label");
  const auto leading = led.find(&widget);
  if (name.isEmpty()) name = leading == led.end() ? group : tree.around().texts.shown(leading->second->label());
  if (name.isEmpty()) name = tree.attribute(node, "tooltiptext");
  return withoutColon(name);
}

void AccessibleNames::nameWidget(const WidgetNode& node, QWidget& widget, const QString& group) {
  QString name = nameOf(node, widget, group);
  const auto* image = dynamic_cast<const Refhost::ImageBox*>(&node);
  if (image != nullptr && image->isDropTarget()) name = tree.around().texts("SLOT").arg(name, contentOf(*image));
  // A group's frame is what has the role of a group.
  auto* frame = widget.findChild<QGroupBox*>(QString(), Qt::FindDirectChildrenOnly);
  QWidget& named = node.kind() == WidgetKind::groupBox && frame != nullptr ? *frame : widget;
  if (named.accessibleName() != name) named.setAccessibleName(name);
}

// What a slot shows: the entry of a list with the same picture.
QString AccessibleNames::contentOf(const Refhost::ImageBox& slot) const {
  const Texts& texts = tree.around().texts;
  const auto* shown = dynamic_cast<const Refhost::Image*>(slot.image().get());
  if (shown == nullptr) return texts("SLOT_EMPTY");
  QStringList names;
  Refhost::walk(tree.root(), [&](WidgetNode& node) {
    auto* list = dynamic_cast<Refhost::ListBox*>(&node);
    for (int i = 0; list != nullptr && i < list->items().count(); ++i) {
      const auto item = list->items().at(i);
      const auto image = item->image();
      const auto* own = dynamic_cast<const Refhost::Image*>(image.get());
      if (own != nullptr && own->file == shown->file) names << plainText(toQt(item->displayedText().view()));
    }
  });
  // Overlays without a picture of their own share one.
  return names.size() == 1 ? names.first() : texts("SLOT_FILLED");
}

// The name of a widget without text is the layout's label for the widget, or, when no label outside refers to it, its
// group's caption.
void AccessibleNames::nameForReaders(const WidgetNode& node, const QString& group) {
  QString name = group;
  if (node.kind() == WidgetKind::groupBox && !node.children().empty() && isCaption(*node.children().front()))
    name = tree.around().texts.shown(node.children().front()->label());
  if (QWidget* widget = tree.widgetOf(node); widget != nullptr) {
    if (showsNoWords(node)) nameWidget(node, *widget, name);
    if (isSymbol(*widget)) widget->setAccessibleName(widget->accessibleDescription());
  }
  for (const WidgetNode* child : node.children()) nameForReaders(*child, name);
}

}  // namespace Window
