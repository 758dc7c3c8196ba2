#include "window/widgets/accessible_names.h"

#include "window/widgets/node_facts.h"

#include <QAbstractButton>
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
  if (label != nullptr) led.insert(target);
  if (label != nullptr && label->buddy() != target) {
    label->setBuddy(target);
    tree.refresh(node);
  }
  for (const WidgetNode* child : node.children()) leadLabels(*child, top);
}

// The name of a widget without text is the layout's label for the widget, or, when no label outside refers to it, its
// group's caption.
void AccessibleNames::nameForReaders(const WidgetNode& node, const QString& group) {
  QString name = group;
  if (node.kind() == WidgetKind::groupBox && !node.children().empty() && isCaption(*node.children().front()))
    name = tree.around().texts.shown(node.children().front()->label());
  if (QWidget* widget = tree.widgetOf(node); widget != nullptr) {
    if (showsNoWords(node)) {
      const QString own = tree.attribute(node, "label");
      if (!own.isEmpty() || !led.contains(widget)) widget->setAccessibleName(own.isEmpty() ? name : own);
    }
    if (isSymbol(*widget)) widget->setAccessibleName(widget->accessibleDescription());
  }
  for (const WidgetNode* child : node.children()) nameForReaders(*child, name);
}

}  // namespace Window
