// Help on the plug-in's tabs and on the window.
#pragma once

#include "window/preferences/messages.h"
#include "window/preferences/session.h"

#include <QPointer>

#include <string>

class QDialog;

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
  void onWindow(const std::u16string& topic = {});

  // On a dialog that is open: on the tab for a dialog of the plug-in, or on the window.
  void onDialog(const QDialog& dialog);

 private:
  QWidget& window;
  Session& session;
  Messages& messages;
  QPointer<HelpViewer> viewer;
  bool isShown = false;  // whether the last page could be shown
};

}  // namespace Window
