// A view of a widget tree: Qt widgets that show the tree's state and forward user input to it. Input changes nothing
// here until the tree changes.
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
  // Builds the widgets for `root` and its descendants as children of `parent`. The tree outlives the view, unless the
  // view is told to forget it.
  TreeView(Refhost::WidgetNode& root, const Surroundings& around, QWidget* parent);
  TreeView(const TreeView&) = delete;
  TreeView& operator=(const TreeView&) = delete;

  // Owned by the parent given to the constructor. Object names are the ids of the tree's widgets.
  QWidget* widget() const { return top; }

  // Updates the view of a widget; ignores widgets of other trees.
  void update(const Refhost::WidgetNode& node);

  // Also shows a button of the tree in `button`, whose clicks call `press`.
  void adopt(Refhost::Button& node, QPushButton* button, std::function<void()> press);

  // Drops all references to the tree, which is about to be destroyed.
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

  // The widget named by an attribute of `follower`; updates `follower` with it from now on. Null for none.
  Refhost::WidgetNode* follow(const Refhost::WidgetNode& follower, const char* attribute);

  // Relations between widgets: labels and their buddies, groups and their contents, aligned rows.
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
  std::unordered_set<const QWidget*> led;  // widgets with a label buddy
  Refhost::WidgetNode* tree;
  QWidget* top;
};

}  // namespace Window
