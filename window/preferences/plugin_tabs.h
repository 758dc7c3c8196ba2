// The plug-in's tabs.
#pragma once

#include "host/gui.h"
#include "window/widgets/surroundings.h"

#include <QTabWidget>

#include <memory>
#include <vector>

namespace Window {

class TreeView;

// The object name of a page is the id of its tab.
class PluginTabs final : public QTabWidget {
  Q_OBJECT

 public:
  explicit PluginTabs(QWidget* parent);
  ~PluginTabs() override;

  // Shows the tabs of these preferences, with the selected one in front.
  void showTabs(Refhost::Gui& gui, const Surroundings& around);

  // Removes all tabs. Call before the preferences' widgets are destroyed.
  void leave();

  // Updates the view of a widget, if it is in a tab.
  void updateView(const Refhost::WidgetNode& node);

  // The id of the tab in front; empty for none.
  QString selected() const;
  void select(const QString& id);

 private:
  std::vector<std::shared_ptr<TreeView>> views;  // of the tabs, in order
};

}  // namespace Window
