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

// A button with nothing to read on it, such as an arrow.
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

// The width that the layout asks for; 0 for none.
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

// What shows no words of its own is called by the label that the layout gives it for that, else, where none leads to it
// from outside, by the caption of its group.
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

// Rows of label and control have their controls below each other, also over groups that follow each other. In a
// container that shares columns, the groups have all their columns below each other.
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
