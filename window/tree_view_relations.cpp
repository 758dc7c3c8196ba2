#include "window/tree_view.h"

#include <QAbstractButton>
#include <QLabel>

#include <algorithm>

namespace Window {
namespace {

using Refhost::WidgetKind;
using Refhost::WidgetNode;

bool isRow(const WidgetNode& node) {
  return node.kind() == WidgetKind::box && node.attribute("element") == u"hbox" && !node.children().empty();
}

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

bool isFlexible(const WidgetNode& node) { return node.kind() == WidgetKind::spacer || !node.attribute("flex").empty(); }

std::vector<WidgetNode*> rowsOf(const WidgetNode& container) {
  std::vector<WidgetNode*> rows;
  std::copy_if(container.children().begin(), container.children().end(), std::back_inserter(rows),
               [](const WidgetNode* child) { return isRow(*child); });
  return rows;
}

bool beginsWithLabel(const WidgetNode* row) { return !row->children().front()->attribute("control").empty(); }

// The width set in the layout; 0 for none.
int ownWidth(const WidgetNode& node) { return toQt(node.attribute("width")).toInt(); }

}  // namespace

void TreeView::relate(WidgetNode& root) {
  leadLabels(root);
  nameForReaders(root, {});
  lineUp(root);
}

QWidget* TreeView::widgetOf(const WidgetNode& node) const {
  const auto found = shown.find(&node);
  return found == shown.end() ? nullptr : found->second.widget;
}

void TreeView::leadLabels(WidgetNode& node) {
  const QString control = toQt(node.attribute("control"));
  auto* target = control.isEmpty() ? nullptr : top->findChild<QWidget*>(control);
  auto* label = target == nullptr ? nullptr : widgetOf(node)->findChild<QLabel*>();
  if (label != nullptr) led.insert(target);
  if (label != nullptr && label->buddy() != target) {
    label->setBuddy(target);
    shown.at(&node).refresh();
  }
  for (WidgetNode* child : node.children()) leadLabels(*child);
}

// Accessible names for widgets without text: the layout's label for the widget, or, when no label outside refers to it,
// its group's caption.
void TreeView::nameForReaders(WidgetNode& node, const QString& group) {
  QString name = group;
  if (node.kind() == WidgetKind::groupBox && !node.children().empty() &&
      node.children().front()->attribute("element") == u"caption")
    name = texts.shown(node.children().front()->label());
  if (QWidget* widget = widgetOf(node); widget != nullptr) {
    if (showsNoWords(node)) {
      const QString own = attribute(node, "label");
      if (!own.isEmpty() || !led.contains(widget)) widget->setAccessibleName(own.isEmpty() ? name : own);
    }
    if (isSymbol(*widget)) widget->setAccessibleName(widget->toolTip());
  }
  for (WidgetNode* child : node.children()) nameForReaders(*child, name);
}

// Aligns the controls of label and control rows, also across consecutive groups. In a container that shares columns,
// all columns of the groups are aligned.
void TreeView::lineUp(WidgetNode& container) {
  for (WidgetNode* child : container.children()) lineUp(*child);
  std::vector<WidgetNode*> labelled = rowsOf(container);
  for (const WidgetNode* child : container.children()) {
    if (child->kind() != WidgetKind::groupBox) continue;
    const auto rows = rowsOf(*child);
    labelled.insert(labelled.end(), rows.begin(), rows.end());
  }
  std::erase_if(labelled, [](const WidgetNode* row) { return !beginsWithLabel(row); });
  lineUpRows(labelled, false);

  const auto* shares = dynamic_cast<const Refhost::Container*>(&container);
  if (shares != nullptr && shares->sharesColumns()) {
    std::vector<WidgetNode*> all;
    for (const WidgetNode* group : container.children()) {
      const auto rows = rowsOf(*group);
      all.insert(all.end(), rows.begin(), rows.end());
    }
    lineUpRows(all, true);
  }
}

void TreeView::lineUpRows(const std::vector<WidgetNode*>& rows, bool everyColumn) {
  std::size_t columns = 0;
  for (const WidgetNode* row : rows) columns = std::max(columns, everyColumn ? row->children().size() : 1);
  for (std::size_t column = 0; column < columns; ++column) {
    std::vector<QWidget*> cells;
    int width = 0;
    for (const WidgetNode* row : rows) {
      if (column >= row->children().size() || isFlexible(*row->children()[column])) continue;
      const WidgetNode& cell = *row->children()[column];
      QWidget* widget = widgetOf(cell);
      if (widget == nullptr || !cell.isVisible()) continue;
      cells.push_back(widget);
      width = std::max({width, ownWidth(cell), widget->sizeHint().width()});
    }
    for (QWidget* cell : cells) cell->setMinimumWidth(width);
  }
}

}  // namespace Window
