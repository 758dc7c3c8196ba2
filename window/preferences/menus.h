// The menus of the window.
#pragma once

#include "window/preferences/messages.h"
#include "window/preferences/session.h"

#include <QList>

#include <functional>
#include <optional>
#include <string>

class QAction;
class QKeySequence;
class QMainWindow;
class QMenu;

namespace Window {

// What the entries do.
struct MenuActions {
  std::function<void()> openDocument;
  std::function<void()> print;
  std::function<void()> printIntoOverlay;
  std::function<void()> openTicket;
  std::function<void()> saveTicket;
  std::function<void()> exportProfile;
  std::function<void()> importProfile;
  std::function<void()> undo;
  std::function<void()> redo;
  std::function<void()> bringBackWatermarks;
  std::function<void()> helpOnTab;
  std::function<void()> helpOnWindow;
  std::function<void()> reportProblem;
  std::function<void(const std::string& model, const std::string& locale)> reopen;

  // Entries that belong to the window.
  std::function<QList<QAction*>()> ofPage;
};

class Menus {
 public:
  // `menuWindow`, the session and the messages outlive the menus; `inspectorSwitch` belongs to the window.
  Menus(QMainWindow& menuWindow, Session& windowSession, Messages& windowMessages, QAction& inspectorSwitch,
        MenuActions menuActions);

  // Builds all menus for the model and the language of the open preferences.
  void build();

  // Shows what undo and redo would do; nothing disables the entry. The names may be empty.
  void showHistory(const std::optional<QString>& undone, const std::optional<QString>& redone);

 private:
  void fillFileMenu(QMenu& menu);
  void fillEditMenu(QMenu& menu);
  void fillModelMenu(QMenu& menu);
  void fillLanguageMenu(QMenu& menu);
  QAction* addEntry(QMenu& menu, const char* name, const QKeySequence& keys, const std::function<void()>& action);

  QMainWindow& window;
  Session& session;
  Messages& messages;
  QAction& inspector;
  MenuActions actions;
  QAction* undoEntry = nullptr;
  QAction* redoEntry = nullptr;
};

}  // namespace Window
