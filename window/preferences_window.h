// "Printing preferences": the plug-in's tabs on one side, the page as it will print on the other.
#pragma once

#include "host/face.h"
#include "press/job/capture.h"
#include "press/job/effects.h"
#include "window/dialog_windows.h"
#include "window/qt_texts.h"
#include "window/session.h"
#include "window/tree_view.h"
#include "window/window.h"

#include <QMainWindow>
#include <QPointer>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QHBoxLayout;
class QMenu;
class QPushButton;
class QTabWidget;

namespace Window {

class HelpViewer;
class Inspector;
class PagePanel;

// A message to the user about a finished action.
struct News {
  QString title;
  QString sentence;

  // Deviations from what was requested, as sentences.
  std::vector<std::string> notes = {};

  // The resulting file, which the message offers to show; empty for none.
  std::filesystem::path file = {};
};

class PreferencesWindow final : public QMainWindow, private Refhost::Face {
  Q_OBJECT

 public:
  explicit PreferencesWindow(const Request& request);
  ~PreferencesWindow() override;

  // Opens the preferences. Throws std::runtime_error: one sentence.
  void open();

  Refhost::Preferences& preferences() { return session.preferences(); }

  // Whether the picture of the page shows the current settings.
  bool isSettled() const;

  // Why there is no picture of the page, as one sentence; empty when there is one.
  QString pageFailure() const;

  // All failures so far, each as one sentence.
  const QStringList& failures() const { return told; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  // Refhost::Face
  void runModally(Refhost::Dialog& dialog) override;
  void dialogOpened(Refhost::Dialog& dialog) override;
  void dialogClosed(Refhost::Dialog& dialog) override;
  void widgetChanged(Refhost::WidgetNode& widget) override;
  void showHelp(const std::u16string& url, const std::u16string& topic) override;
  std::optional<std::u16string> askJobStep() override;
  void showFailure(const std::string& sentence) override;

  QStringList namesInUse();

  // In the language of the open preferences; valid until they are reopened.
  Texts texts() { return Texts(preferences().strings()); }

  // The environment of these preferences' tabs and dialogs.
  Surroundings surroundings();

  // Building, in preferences_window.cpp.
  void build();
  QPushButton* addButton(QHBoxLayout& row, const char* name, void (PreferencesWindow::*press)());
  void showOpened();
  void showTabs();
  void orderFocus();
  void leaveTabs();
  void showState();
  void reopen(const std::string& model, const std::string& locale);
  void setDocument(const std::filesystem::path& file);

  // The menus, in menus.cpp; those of profiles in profiles.cpp.
  void buildMenus();
  void addEntry(QMenu& menu, const char* name, const QKeySequence& keys, void (PreferencesWindow::*does)());
  void addProfileEntries(QMenu& menu);
  void fillModelMenu(QMenu& menu);
  void fillLanguageMenu(QMenu& menu);

  // User actions, in actions.cpp, overlay_job.cpp, profiles.cpp and tickets.cpp.
  void openDocument();
  void openTicket();
  void saveTicket();
  void exportProfile();
  void importProfile();
  void print();
  void printIntoOverlay();
  void store(const Press::Capture& overlay);
  void accept();
  void cancel();
  bool keep();
  void discard();
  bool mayClose();
  void undo();
  void restoreDefaults();
  void help();
  void helpOnWindow();
  bool isSample() const;
  QString nameOfJob();
  QString folderOfJob() const;
  bool isAccepted();
  void announce(const News& news);
  Press::Effects effects();
  void guarded(const std::function<void()>& action);

  std::filesystem::path document;
  QTemporaryDir sampleFolder;
  QtTexts qtTexts;
  QTabWidget* tabs = nullptr;
  PagePanel* pages = nullptr;
  Inspector* inspector = nullptr;
  QPointer<HelpViewer> helpViewer;
  std::vector<std::pair<QPushButton*, const char*>> buttons;
  QPushButton* undoButton = nullptr;
  QPushButton* okButton = nullptr;
  QPushButton* cancelButton = nullptr;
  std::vector<std::shared_ptr<TreeView>> views;  // of the tabs, in order
  DialogWindows dialogs;
  QStringList told;
  bool helpShown = false;

  // Whether the preferences have changed since they were last shown.
  bool stale = false;

  // Last, so that it is destroyed first: its end still uses the other members.
  Session session;
};

}  // namespace Window
