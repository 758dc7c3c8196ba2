// "Printing preferences": the plug-in's tabs on one side, the page as it will print on the other.
#pragma once

#include "window/dialogs/dialog_care.h"
#include "window/language/qt_texts.h"
#include "window/preferences/action_world.h"
#include "window/preferences/closing.h"
#include "window/preferences/help.h"
#include "window/preferences/job.h"
#include "window/preferences/menus.h"
#include "window/preferences/messages.h"
#include "window/preferences/preset_bar.h"
#include "window/preferences/session.h"
#include "window/preferences/window_face.h"
#include "window/window.h"

#include <QMainWindow>

#include <functional>

class QPushButton;

namespace Window {

class ButtonRow;
class Inspector;

class PreferencesWindow final : public QMainWindow {
  Q_OBJECT

 public:
  explicit PreferencesWindow(const Request& request);
  ~PreferencesWindow() override;

  // Opens the preferences. Throws std::runtime_error: one sentence.
  void open();

  // Asks the user for the password of the job, if it needs one.
  void unlockJob();

  Refhost::Preferences& preferences() { return session.preferences(); }

  // Whether the picture of the page shows the current settings.
  bool isSettled() const;

  // Whether everything beside it is drawn too.
  bool isComplete() const;

  // Why there is no picture of the page, as one sentence; empty when there is one.
  QString pageFailure() const;

  // All failures so far, each as one sentence.
  const QStringList& failures() const { return messages.failures(); }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void build();
  void addButtons();
  MenuActions menuActions();

  // An action for a button or a menu.
  std::function<void()> toDo(void (*action)(const ActionWorld&));
  ActionWorld world();

  // Adds the window's own actions to the plug-in's list of overlays.
  void offerOverlays();

  // Update the window for newly opened preferences, for their language alone, and for changed values.
  void showOpened();
  void fitOnScreen();
  void showLanguage();
  void showState();
  void showPaper();
  void orderFocus();
  void reopen(const std::string& model, const std::string& locale);
  void showHistory();
  void travel(void (Refhost::Preferences::*direction)());
  PresetActions presetActions();
  void openDocument();
  void setDocument(const Press::JobFile& file);

  Job job;
  Script::Recording recording;
  QtTexts qtTexts;
  QWidget* centre;
  PluginTabs* tabs;
  PagePanel* pages;
  Inspector* inspector;
  Messages messages;
  Help help;
  DialogCare dialogCare;
  WindowFace face;
  Closing closing;
  Menus menus;
  PresetBar* presets;
  ButtonRow* buttons;
  QPushButton* undoButton = nullptr;
  QPushButton* okButton = nullptr;
  QPushButton* cancelButton = nullptr;

  // Whether the preferences have changed since they were last shown.
  bool stale = false;

  // Last, so that it is destroyed first: its end still uses the other members.
  Session session;
};

}  // namespace Window
