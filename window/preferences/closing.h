// How the preferences end: their changes are kept or discarded.
#pragma once

#include "window/preferences/plugin_tabs.h"
#include "window/preferences/session.h"

namespace Window {

// Keeping and discarding destroy the preferences' widgets; the window must close then.
class Closing {
 public:
  // All outlive the object.
  Closing(QWidget& parent, Session& windowSession, PluginTabs& windowTabs)
      : window(parent),
        session(windowSession),
        tabs(windowTabs) {}

  // False when the preferences were not accepted. Reports a failure to save the settings first.
  bool keep();
  void discard();

  // Asks what to do with changed settings; false when the window stays open.
  bool keepOrDiscard();

 private:
  QWidget& window;
  Session& session;
  PluginTabs& tabs;
};

}  // namespace Window
