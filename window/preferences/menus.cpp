#include "window/preferences/menus.h"

#include "formats/text.h"

#include <QAction>
#include <QActionGroup>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include <utility>

namespace Window {
namespace {

QAction* addChoice(QMenu& menu, QActionGroup& group, const QString& text, bool isChosen) {
  QAction* choice = menu.addAction(QString(text).replace('&', "&&"));
  choice->setCheckable(true);
  choice->setChecked(isChosen);
  group.addAction(choice);
  return choice;
}

// A language's own name.
QString ownName(const Refhost::ChromeFolders& chrome, const std::string& locale) {
  const auto file = chrome.file(Formats::toUtf16("chrome://window/content/" + locale + "/strings.dtd"));
  const Refhost::StringTable table = Refhost::readStrings(*file);
  const auto name = table.find(std::u16string_view(u"IDS_KILN_LANGUAGE"));
  return name == table.end() ? QString::fromStdString(locale) : toQt(name->second);
}

}  // namespace

Menus::Menus(QMainWindow& menuWindow, Session& windowSession, Messages& windowMessages, QAction& inspectorSwitch,
             MenuActions menuActions)
    : window(menuWindow),
      session(windowSession),
      messages(windowMessages),
      inspector(inspectorSwitch),
      actions(std::move(menuActions)) {}

void Menus::build() {
  const Texts texts = session.texts();
  QMenuBar& bar = *window.menuBar();
  bar.clear();
  fillFileMenu(*bar.addMenu(texts("FILE")));
  fillEditMenu(*bar.addMenu(texts("EDIT")));
  fillModelMenu(*bar.addMenu(texts("MODEL")));
  fillLanguageMenu(*bar.addMenu(texts("LANGUAGES")));

  QMenu* view = bar.addMenu(texts("VIEW"));
  inspector.setText(texts("SHOW_INSPECTOR"));
  inspector.setShortcut(Qt::Key_F12);
  view->addActions(actions.ofPage());
  view->addSeparator();
  view->addAction(&inspector);

  QMenu* help = bar.addMenu(texts("HELP"));
  addEntry(*help, "HELP_TAB", QKeySequence(Qt::Key_F1), actions.helpOnTab);
  addEntry(*help, "HELP_WINDOW", {}, actions.helpOnWindow);
  help->addSeparator();
  addEntry(*help, "REPORT", {}, actions.reportProblem);
}

void Menus::fillFileMenu(QMenu& menu) {
  addEntry(menu, "OPEN", QKeySequence::Open, actions.openDocument);
  addEntry(menu, "PRINT", QKeySequence::Print, actions.print);
  addEntry(menu, "PRINT_OVERLAY", {}, actions.printIntoOverlay);
  menu.addSeparator();
  addEntry(menu, "OPEN_TICKET", {}, actions.openTicket);
  addEntry(menu, "SAVE_TICKET", QKeySequence::Save, actions.saveTicket);
  menu.addSeparator();
  addEntry(menu, "EXPORT_PROFILE", {}, actions.exportProfile);
  addEntry(menu, "IMPORT_PROFILE", {}, actions.importProfile);
  menu.addSeparator();
  QAction* quit = menu.addAction(session.texts()("QUIT"), &window, &QWidget::close);
  quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
}

void Menus::fillEditMenu(QMenu& menu) {
  undoEntry = addEntry(menu, "UNDO_ENTRY", QKeySequence::Undo, actions.undo);
  redoEntry = addEntry(menu, "REDO_ENTRY", QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), actions.redo);
  menu.addSeparator();
  addEntry(menu, "WATERMARKS_BACK", {}, actions.bringBackWatermarks);
}

void Menus::showHistory(const std::optional<QString>& undone, const std::optional<QString>& redone) {
  const Texts texts = session.texts();
  const auto show = [&texts](QAction& entry, const char* plain, const char* named, const std::optional<QString>& name) {
    const bool isNamed = name && !name->isEmpty();
    entry.setText(isNamed ? texts(named).arg(QString(*name).replace('&', "&&")) : texts(plain));
    entry.setEnabled(name.has_value());
  };
  show(*undoEntry, "UNDO_ENTRY", "UNDO_ACTION", undone);
  show(*redoEntry, "REDO_ENTRY", "REDO_ACTION", redone);
}

// A choice reopens the preferences and rebuilds the menus, so it is queued until the menu has closed.
void Menus::fillModelMenu(QMenu& menu) {
  menu.setObjectName("models");
  const auto folder = session.preferences().options().resources / "models";
  const std::u16string present = session.preferences().model().description().name;
  auto* group = new QActionGroup(&menu);
  for (const std::string& name : Refhost::shippedModels(folder)) {
    const Refhost::ModelDescription model = Refhost::readModel(folder, name);
    QAction* choice = addChoice(menu, *group, session.texts().shown(model.label), model.name == present);
    choice->setData(QString::fromStdString(name));
    QObject::connect(
        choice, &QAction::triggered, &window,
        [this, name] { messages.guarded([&] { actions.reopen(name, session.locale()); }); }, Qt::QueuedConnection);
  }
}

void Menus::fillLanguageMenu(QMenu& menu) {
  menu.setObjectName("languages");
  const Refhost::ChromeFolders& chrome = session.preferences().chrome();
  auto* group = new QActionGroup(&menu);
  for (const std::string& locale : chrome.locales("window")) {
    QAction* choice = addChoice(menu, *group, ownName(chrome, locale), locale == session.locale());
    choice->setData(QString::fromStdString(locale));
    QObject::connect(
        choice, &QAction::triggered, &window,
        [this, locale] { messages.guarded([&] { actions.reopen(session.model(), locale); }); }, Qt::QueuedConnection);
  }
}

QAction* Menus::addEntry(QMenu& menu, const char* name, const QKeySequence& keys, const std::function<void()>& action) {
  QAction* entry = menu.addAction(session.texts()(name));
  entry->setObjectName(name);
  entry->setShortcut(keys);
  QObject::connect(entry, &QAction::triggered, &window, [this, action] { messages.guarded(action); });
  return entry;
}

}  // namespace Window
