#include "window/widgets/alignment.h"

#include "window/widgets/node_facts.h"

#include <QWidget>

#include <algorithm>
#include <vector>

namespace Window {
namespace {

using Refhost::WidgetKind;
using Refhost::WidgetNode;

bool isRow(const WidgetNode& node) {
  return node.kind() == WidgetKind::box && node.attribute("element") == u"hbox" && !node.children().empty();
}

bool isFlexible(const WidgetNode& node) { return node.kind() == WidgetKind::spacer || !node.attribute("flex").empty(); }

std::vector<const WidgetNode*> rowsOf(const WidgetNode& container) {
  std::vector<const WidgetNode*> rows;
  std::copy_if(container.children().begin(), container.children().end(), std::back_inserter(rows),
               [](const WidgetNode* child) { return isRow(*child); });
  return rows;
}

bool beginsWithLabel(const WidgetNode* row) { return !row->children().front()->attribute("control").empty(); }

void lineUpRows(const std::vector<const WidgetNode*>& rows, bool everyColumn, const ShownTree& tree) {
  std::size_t columns = 0;
  for (const WidgetNode* row : rows) columns = std::max(columns, everyColumn ? row->children().size() : 1);
  for (std::size_t column = 0; column < columns; ++column) {
    std::vector<QWidget*> cells;
    int width = 0;
    for (const WidgetNode* row : rows) {
      if (column >= row->children().size() || isFlexible(*row->children()[column])) continue;
      const WidgetNode& cell = *row->children()[column];
      QWidget* widget = tree.widgetOf(cell);
      if (widget == nullptr || !cell.isVisible()) continue;
      cells.push_back(widget);
      width = std::max({width, number(cell, "width"), widget->sizeHint().width()});
    }
    for (QWidget* cell : cells) cell->setMinimumWidth(width);
  }
}

}  // namespace

void lineUp(const WidgetNode& container, const ShownTree& tree) {
  for (const WidgetNode* child : container.children()) lineUp(*child, tree);
  std::vector<const WidgetNode*> labelled = rowsOf(container);
  for (const WidgetNode* child : container.children()) {
    if (child->kind() != WidgetKind::groupBox) continue;
    const auto rows = rowsOf(*child);
    labelled.insert(labelled.end(), rows.begin(), rows.end());
  }
  std::erase_if(labelled, [](const WidgetNode* row) { return !beginsWithLabel(row); });
  lineUpRows(labelled, false, tree);

  const auto* shares = dynamic_cast<const Refhost::Container*>(&container);
  if (shares != nullptr && shares->sharesColumns()) {
    std::vector<const WidgetNode*> all;
    for (const WidgetNode* group : container.children()) {
      const auto rows = rowsOf(*group);
      all.insert(all.end(), rows.begin(), rows.end());
    }
    lineUpRows(all, true, tree);
  }
}

}  // namespace Window
