#include "host/unicode.h"
#include "window/inspector.h"
#include "window/preferences_window.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <QMenuBar>

#include <algorithm>

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
  const auto file = chrome.file(Refhost::toWide("chrome://window/content/" + locale + "/strings.dtd"));
  const Refhost::StringTable table = Refhost::readStrings(*file);
  const auto name = table.find(std::u16string_view(u"IDS_KILN_LANGUAGE"));
  return name == table.end() ? QString::fromStdString(locale) : toQt(name->second);
}

}  // namespace

void PreferencesWindow::addEntry(QMenu& menu, const char* name, const QKeySequence& keys,
                                 void (PreferencesWindow::*does)()) {
  QAction* action = menu.addAction(texts()(name));
  action->setObjectName(name);
  action->setShortcut(keys);
  connect(action, &QAction::triggered, this, [this, does] { guarded([this, does] { (this->*does)(); }); });
}

void PreferencesWindow::buildMenus() {
  menuBar()->clear();
  QMenu* file = menuBar()->addMenu(texts()("FILE"));
  addEntry(*file, "OPEN", QKeySequence::Open, &PreferencesWindow::openDocument);
  addEntry(*file, "PRINT", QKeySequence::Print, &PreferencesWindow::print);
  addEntry(*file, "PRINT_OVERLAY", {}, &PreferencesWindow::printIntoOverlay);
  file->addSeparator();
  addEntry(*file, "OPEN_TICKET", {}, &PreferencesWindow::openTicket);
  addEntry(*file, "SAVE_TICKET", QKeySequence::Save, &PreferencesWindow::saveTicket);
  addProfileEntries(*file);
  file->addSeparator();
  QAction* quit = file->addAction(texts()("QUIT"), this, &QWidget::close);
  quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));

  fillModelMenu(*menuBar()->addMenu(texts()("MODEL")));
  fillLanguageMenu(*menuBar()->addMenu(texts()("LANGUAGES")));

  QMenu* view = menuBar()->addMenu(texts()("VIEW"));
  QAction* toggle = inspector->toggleViewAction();
  toggle->setText(texts()("SHOW_INSPECTOR"));
  toggle->setShortcut(Qt::Key_F12);
  view->addAction(toggle);

  QMenu* helpMenu = menuBar()->addMenu(texts()("HELP"));
  addEntry(*helpMenu, "HELP_TAB", QKeySequence(Qt::Key_F1), &PreferencesWindow::help);
  addEntry(*helpMenu, "HELP_WINDOW", {}, &PreferencesWindow::helpOnWindow);
}

// A choice reopens the preferences and rebuilds the menus, so it is queued until the menu has closed.
void PreferencesWindow::fillModelMenu(QMenu& menu) {
  menu.setObjectName("models");
  const auto folder = preferences().options().resources / "models";
  const std::u16string present = preferences().model().description().name;
  auto* group = new QActionGroup(&menu);
  for (const std::string& name : Refhost::shippedModels(folder)) {
    const Refhost::ModelDescription model = Refhost::readModel(folder, name);
    QAction* choice = addChoice(menu, *group, texts().shown(model.label), model.name == present);
    choice->setData(QString::fromStdString(name));
    connect(
        choice, &QAction::triggered, this, [this, name] { guarded([&] { reopen(name, session.locale()); }); },
        Qt::QueuedConnection);
  }
}

void PreferencesWindow::fillLanguageMenu(QMenu& menu) {
  menu.setObjectName("languages");
  auto* group = new QActionGroup(&menu);
  for (const std::string& locale : preferences().chrome().locales("window")) {
    QAction* choice = addChoice(menu, *group, ownName(preferences().chrome(), locale), locale == session.locale());
    choice->setData(QString::fromStdString(locale));
    connect(
        choice, &QAction::triggered, this, [this, locale] { guarded([&] { reopen(session.model(), locale); }); },
        Qt::QueuedConnection);
  }
}

}  // namespace Window
