// Labels and the widgets that they name, for access keys and screen readers.
#pragma once

#include "host/widgets/input.h"
#include "window/widgets/shown_tree.h"

#include <QString>

#include <unordered_map>

namespace Window {

class AccessibleNames {
 public:
  // The widgets shown outlive the object.
  explicit AccessibleNames(ShownTree& shownTree) : tree(shownTree) {}

  // Gives every widget below `top` its label or name, again after each change of the tree.
  void update(const QWidget& top);

 private:
  void leadLabels(const Refhost::WidgetNode& node, const QWidget& top);
  void nameForReaders(const Refhost::WidgetNode& node, const QString& group);
  void nameWidget(const Refhost::WidgetNode& node, QWidget& widget, const QString& group);
  QString nameOf(const Refhost::WidgetNode& node, const QWidget& widget, const QString& group) const;
  QString contentOf(const Refhost::ImageBox& slot) const;

  ShownTree& tree;
  std::unordered_map<const QWidget*, const Refhost::WidgetNode*> led;  // the labels of widgets that have one
};

}  // namespace Window
