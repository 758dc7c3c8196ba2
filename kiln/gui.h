// The host's user interface: the preferences that a plug-in's tab is part of, and the dialogs that it opens.
//
//   1. UIPlugin::configureUI passes the GUI; the plug-in loads its layout into it and connects readySignal;
//   2. the host fires readySignal once the layout is live, after configureUI has returned;
//   3. the plug-in binds its widgets and connects the tab panel's signals;
//   4. a dialog is loaded by openDialog, wired, and then run: runModally returns when it has closed, show at once.
#pragma once

#include "kiln/widgets.h"

namespace Kiln::XUL {

class SubDialog;

// Asks whether the preferences may be accepted.
class PreAcceptPanel : public RefCount {
 public:
  // Refuses: the preferences stay open. [plug-in, ready]
  virtual void veto() = 0;
};

// The row of tabs that the plug-in's tab is one of.
class TabPanel : public RefCount {
 public:
  // The id of the selected tab, "pro_tab_effect" for example. [plug-in, ready]
  virtual WString selectedTabId() = 0;

  // Fires when the user asks for help. [plug-in, ready]
  virtual SmartPtr<Signal<EventArg<TabPanel>>> helpSignal() = 0;

  // Fires when the user accepts, before anything is applied. [plug-in, ready]
  virtual SmartPtr<Signal<SmartPtr<PreAcceptPanel>>> preAcceptSignal() = 0;
};

class GUI : public RefCount {
 public:
  // Loads a layout (a chrome:// address) into the preferences. Throws Exception when it cannot be read. [plug-in]
  virtual void load(WStringView url) = 0;

  // Fires once, when the layout is live; without a layout when the GUI itself is. [plug-in]
  virtual SmartPtr<Signal<SmartPtr<GUI>>> readySignal() = 0;

  // The widget with that id, in any tab; null when no layout has one. [plug-in, ready]
  virtual SmartPtr<Widget> widgetById(WStringView id) = 0;

  // The row of tabs; the same object each time. [plug-in, ready]
  virtual SmartPtr<TabPanel> tabPanel() = 0;

  // Loads a dialog; null when its layout cannot be loaded, which the host has told then. Nothing is shown yet.
  // [plug-in, ready]
  virtual SmartPtr<SubDialog> openDialog(WStringView url) = 0;
};

// What the OK and cancel signals of a dialog carry.
class SubDialogEventArg : public RefCount {
 public:
  // Refuses to close by OK; has no effect on Cancel. [plug-in, ready]
  virtual void vetoClose() = 0;
};

// A dialog over the preferences or over another dialog. Dropping the last reference to one that is not open unloads it;
// the host itself holds a dialog while it is open.
class SubDialog : public RefCount {
 public:
  // The dialog's widget with that id; null when its layout has none. [plug-in, ready]
  virtual SmartPtr<Widget> widgetById(WStringView id) = 0;

  // The widget of the preferences with that id; null when there is none. [plug-in, ready]
  virtual SmartPtr<Widget> parentWidgetById(WStringView id) = 0;

  // The OK button; its enabled state is whether the user can accept. [plug-in, ready]
  virtual SmartPtr<Button> okButton() = 0;

  // Fires before the dialog closes by OK. [plug-in, ready]
  virtual SmartPtr<Signal<SubDialogEventArg&>> okSignal() = 0;

  // Fires before the dialog closes by Cancel, or because its window or the preferences close. [plug-in, ready]
  virtual SmartPtr<Signal<SubDialogEventArg&>> cancelSignal() = 0;

  // Loads a dialog over this one, as GUI::openDialog. [plug-in, ready]
  virtual SmartPtr<SubDialog> openDialog(WStringView url) = 0;

  // Opens the dialog and returns when it has closed. Throws Exception when it is open already. [plug-in, ready]
  virtual void runModally() = 0;

  // Opens the dialog and returns at once. Throws Exception when it is open already. [plug-in, ready]
  virtual void show() = 0;

  // Registers a picture (a chrome:// address) under a name for this dialog's widgets; a later one replaces an earlier
  // one. [plug-in, ready]
  virtual void registerImage(WStringView name, WStringView url) = 0;
};

}  // namespace Kiln::XUL
