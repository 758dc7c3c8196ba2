#include "window/widgets/shown_tree.h"

#include "host/chrome/layout.h"
#include "window/widgets/node_facts.h"

#include <QWidget>

#include <utility>

namespace Window {

using Refhost::WidgetNode;

namespace {

QString asToolTip(const QString& text, const QWidget& widget) {
  constexpr int widest = 400;
  return toolTipOf(text, widget.fontMetrics().horizontalAdvance(text) > widest);
}

}  // namespace

ShownTree::ShownTree(WidgetNode& treeRoot, const Surroundings& around) : surroundings(around), tree(&treeRoot) {}

void ShownTree::add(const WidgetNode& node, QWidget* widget, std::function<void()> refresh) {
  widget->setObjectName(toQt(node.id()));
  if (const int width = number(node, "width"); width > 0) widget->setMinimumWidth(width);
  if (const int height = number(node, "height"); height > 0) widget->setMinimumHeight(height);
  const auto all = [this, &node, widget, refresh = std::move(refresh)] {
    widget->setVisible(node.isVisible() && !isEmptied(node));
    widget->setEnabled(node.isEnabled());
    const QString tip = attribute(node, "tooltiptext");
    widget->setToolTip(asToolTip(tip, *widget));
    widget->setAccessibleDescription(tip);
    refresh();
  };
  all();
  shown[&node] = {widget, all};
}

WidgetNode* ShownTree::follow(const WidgetNode& follower, const char* attribute) {
  const std::u16string id = follower.attribute(attribute);
  WidgetNode* found = nullptr;
  Refhost::walk(*tree, [&](WidgetNode& node) {
    if (!id.empty() && node.id() == id) found = &node;
  });
  if (found != nullptr) followers[found].insert(&follower);
  return found;
}

bool ShownTree::update(const WidgetNode& node) {
  const auto found = shown.find(&node);
  if (found == shown.end()) return false;
  found->second.refresh();
  if (const auto following = followers.find(&node); following != followers.end())
    for (const WidgetNode* follower : following->second) shown.at(follower).refresh();
  for (const WidgetNode* above = node.parent(); above != nullptr; above = above->parent())
    if (const auto container = shown.find(above); container != shown.end()) container->second.refresh();
  return true;
}

void ShownTree::forget() {
  for (const auto& farewell : std::exchange(farewells, {})) farewell();
  shown.clear();
  tree = nullptr;
}

QWidget* ShownTree::widgetOf(const WidgetNode& node) const {
  const auto found = shown.find(&node);
  return found == shown.end() ? nullptr : found->second.widget;
}

QString ShownTree::attribute(const WidgetNode& node, const char* name) const {
  return surroundings.texts.shown(node.attribute(name));
}

QString ShownTree::label(const WidgetNode& node) const {
  return withAccessKey(surroundings.texts.shown(node.label()), attribute(node, "accesskey"));
}

}  // namespace Window
