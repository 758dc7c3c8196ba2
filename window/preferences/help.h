// Help on the plug-in's tabs and on the window.
#pragma once

#include "window/preferences/messages.h"
#include "window/preferences/session.h"

#include <QPointer>

#include <string>

namespace Window {

class HelpViewer;

class Help {
 public:
  // All outlive the object.
  Help(QWidget& parent, Session& windowSession, Messages& windowMessages)
      : window(parent),
        session(windowSession),
        messages(windowMessages) {}

  // Shows a page, scrolled to the topic, over the active window.
  void show(const std::u16string& url, const std::u16string& topic);

  // On the selected tab; on the window when the plug-in has no help for the tab.
  void onTab();
  void onWindow();

 private:
  QWidget& window;
  Session& session;
  Messages& messages;
  QPointer<HelpViewer> viewer;
  bool isShown = false;  // whether the last page could be shown
};

}  // namespace Window
