// A view of a widget tree: Qt widgets that show what the tree says and tell it what the user does. It has no behaviour
// of its own: a click changes nothing here until the tree says so.
#pragma once

#include "host/widgets/input.h"
#include "host/widgets/list.h"
#include "host/widgets/preview.h"
#include "host/widgets/widget.h"
#include "window/surroundings.h"

#include <QWidget>

#include <functional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

class QBoxLayout;
class QButtonGroup;
class QPushButton;

namespace Window {

class TreeView {
 public:
  // Builds the widgets of `root` and all below it as children of `parent`. The tree outlives the view, or the view is
  // told to forget it.
  TreeView(Refhost::WidgetNode& root, const Surroundings& around, QWidget* parent);
  TreeView(const TreeView&) = delete;
  TreeView& operator=(const TreeView&) = delete;

  // Belongs to the parent given at construction. Its widgets carry the ids of the tree as object names.
  QWidget* widget() const { return top; }

  // Shows a widget of the tree as it is now; nothing for a widget of another tree.
  void update(const Refhost::WidgetNode& node);

  // Also shows that button of the tree in `button`, which then tells `press` of clicks.
  void adopt(Refhost::Button& node, QPushButton* button, std::function<void()> press);

  // The tree is gone or about to go: nothing of it is touched any more.
  void forget();

 private:
  struct Shown {
    QWidget* widget;
    std::function<void()> refresh;
  };

  QWidget* build(Refhost::WidgetNode& node, QWidget* parent);
  QWidget* buildContainer(Refhost::WidgetNode& node, QWidget* parent);
  QWidget* buildGroup(Refhost::WidgetNode& node, QWidget* parent);
  QWidget* buildLabel(Refhost::Label& node, QWidget* parent);
  QWidget* buildImage(Refhost::ImageBox& node, QWidget* parent);
  QWidget* buildButton(Refhost::Button& node, QWidget* parent);
  QWidget* buildCheckBox(Refhost::CheckBox& node, QWidget* parent);
  QWidget* buildList(Refhost::WidgetNode& node, QWidget* parent);
  QWidget* buildCombo(Refhost::WidgetNode& node, QWidget* parent);
  QWidget* buildText(Refhost::WidgetNode& node, QWidget* parent);
  QWidget* buildRadio(Refhost::RadioButton& node, QWidget* parent);
  QWidget* buildScroll(Refhost::ScrollBar& node, QWidget* parent);
  QWidget* buildColourPicker(Refhost::ColorPicker& node, QWidget* parent);
  QWidget* buildPreview(Refhost::WatermarkPreview& node, QWidget* parent);
  QPixmap pictureIn(const Refhost::ImageBox& node, const QWidget& on) const;
  QButtonGroup* groupOf(const Refhost::WidgetNode& radio);
  QColor startColour(Refhost::ColorPicker& node);
  void fill(QBoxLayout* layout, Refhost::WidgetNode& node, QWidget* parent, std::size_t first = 0);
  void show(const Refhost::WidgetNode& node, QWidget* widget, std::function<void()> refresh = [] {});

  // The widget that `follower` names in that attribute, each change of which it shows from now on; null for none.
  Refhost::WidgetNode* follow(const Refhost::WidgetNode& follower, const char* attribute);

  // What relates widgets to each other: labels to what they lead to, groups to what they hold, rows to rows.
  void relate(Refhost::WidgetNode& root);
  void leadLabels(Refhost::WidgetNode& root);
  void nameForReaders(Refhost::WidgetNode& node, const QString& group);
  void lineUp(Refhost::WidgetNode& container);
  void lineUpRows(const std::vector<Refhost::WidgetNode*>& rows, bool everyColumn);
  QWidget* widgetOf(const Refhost::WidgetNode& node) const;

  QString attribute(const Refhost::WidgetNode& node, const char* name) const;
  QString shownLabel(const Refhost::WidgetNode& node) const;

  Surroundings surroundings;
  Texts texts;
  std::unordered_map<const Refhost::WidgetNode*, Shown> shown;
  std::unordered_map<const Refhost::WidgetNode*, std::unordered_set<const Refhost::WidgetNode*>> followers;
  std::unordered_map<const Refhost::WidgetNode*, QButtonGroup*> radioGroups;
  std::unordered_set<const QWidget*> led;  // those that a label leads to
  Refhost::WidgetNode* tree;
  QWidget* top;
};

}  // namespace Window
