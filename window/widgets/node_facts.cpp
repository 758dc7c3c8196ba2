#include "window/widgets/node_facts.h"

#include "window/language/texts.h"

namespace Window {
namespace {

using Refhost::WidgetKind;
using Refhost::WidgetNode;

// Whether a container shows anything besides its caption and empty space.
bool hasContent(const WidgetNode& container) {
  for (const WidgetNode* child : container.children()) {
    if (!child->isVisible() || isCaption(*child) || child->kind() == WidgetKind::spacer) continue;
    const bool isBox = child->kind() == WidgetKind::box || child->kind() == WidgetKind::groupBox;
    if (!isBox || hasContent(*child)) return true;
  }
  return false;
}

}  // namespace

int number(const WidgetNode& node, const char* attribute, int otherwise) {
  bool isNumber = false;
  const int value = toQt(node.attribute(attribute)).toInt(&isNumber);
  return isNumber ? value : otherwise;
}

bool isCaption(const WidgetNode& node) { return node.attribute("element") == u"caption"; }

bool isEmptied(const WidgetNode& node) {
  if (node.kind() == WidgetKind::box) return !node.children().empty() && !hasContent(node);
  return node.kind() == WidgetKind::groupBox && !hasContent(node);
}

}  // namespace Window
