// "Printing preferences": the tabs of the plug-in on one side, the page as it will print on the other.
#pragma once

#include "host/face.h"
#include "press/capture.h"
#include "press/effects.h"
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

// What the user is told when something is done.
struct News {
  QString title;
  QString sentence;

  // What is not quite as asked, as sentences.
  std::vector<std::string> notes = {};

  // The file that has come of it, which the user may look at; empty for none.
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

  // Whether the picture of the page is that of the present settings.
  bool isSettled() const;

  // Why there is no picture of the page, as one sentence; empty when there is one.
  QString pageFailure() const;

  // All that went wrong so far, each as one sentence.
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

  // In the language of the preferences that are open; valid until they are opened anew.
  Texts texts() { return Texts(preferences().strings()); }

  // What the tabs and dialogs of these preferences are shown in.
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

  // What the user does, in actions.cpp, overlay_job.cpp, profiles.cpp and tickets.cpp.
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
  void takeUp(const Refhost::TracePairs& values);
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
  std::vector<std::shared_ptr<TreeView>> views;  // of the tabs, in their order
  DialogWindows dialogs;
  QStringList told;
  bool helpShown = false;

  // Whether the preferences have changed since they were last shown.
  bool stale = false;

  // Last, so that it goes first, while what it tells of its end is still there.
  Session session;
};

}  // namespace Window
