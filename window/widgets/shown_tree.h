// The Qt widgets that show a widget tree: which shows which node, and when it is updated.
#pragma once

#include "host/widgets/widget.h"
#include "window/widgets/surroundings.h"

#include <QString>

#include <functional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

class QWidget;

namespace Window {

class ShownTree {
 public:
  // The tree outlives the object, unless the object is told to forget it.
  ShownTree(Refhost::WidgetNode& treeRoot, const Surroundings& around);
  ShownTree(const ShownTree&) = delete;
  ShownTree& operator=(const ShownTree&) = delete;

  // Lets the widget show the node. The states common to all kinds are updated now and after each change, then `refresh`
  // is called. The widget's object name becomes the node's id.
  void add(const Refhost::WidgetNode& node, QWidget* widget, std::function<void()> refresh = [] {});

  // The node named by an attribute of `follower`; updates `follower` with it from now on. Null for none.
  Refhost::WidgetNode* follow(const Refhost::WidgetNode& follower, const char* attribute);

  // Updates the widgets of a node, of its followers and of the containers around it. False for nodes of other trees.
  bool update(const Refhost::WidgetNode& node);

  // Updates the widget of a node alone, which must have one.
  void refresh(const Refhost::WidgetNode& node) { shown.at(&node).refresh(); }

  // Drops all references to the tree, which is about to be destroyed.
  void forget();

  // Calls `action` when the tree is forgotten.
  void onForget(std::function<void()> action) { farewells.push_back(std::move(action)); }

  // Whether the node is shown; false for all after the tree was forgotten.
  bool contains(const Refhost::WidgetNode& node) const { return shown.contains(&node); }

  // Null when the node is not shown.
  QWidget* widgetOf(const Refhost::WidgetNode& node) const;

  // Valid until the tree is forgotten.
  Refhost::WidgetNode& root() const { return *tree; }

  const Surroundings& around() const { return surroundings; }

  // The user's input on the nodes goes through these.
  Refhost::UserActions& actions() const { return *surroundings.actions; }

  // The text of an attribute, and the label with its access key, in the user's language.
  QString attribute(const Refhost::WidgetNode& node, const char* name) const;
  QString label(const Refhost::WidgetNode& node) const;

 private:
  struct Shown {
    QWidget* widget;
    std::function<void()> refresh;
  };

  Surroundings surroundings;
  Refhost::WidgetNode* tree;
  std::unordered_map<const Refhost::WidgetNode*, Shown> shown;
  std::unordered_map<const Refhost::WidgetNode*, std::unordered_set<const Refhost::WidgetNode*>> followers;
  std::vector<std::function<void()>> farewells;
};

}  // namespace Window
