#include "window/preferences/preferences_window.h"

#include "formats/papers.h"
#include "kiln/version.h"
#include "window/dialogs/file_question.h"
#include "window/inspector/inspector.h"
#include "window/language/fonts.h"
#include "window/page/page_panel.h"
#include "window/page/paper.h"
#include "window/preferences/action_names.h"
#include "window/preferences/built_in_watermarks.h"
#include "window/preferences/button_row.h"
#include "window/preferences/overlay_list.h"
#include "window/preferences/overlay_making.h"
#include "window/preferences/overlay_printing.h"
#include "window/preferences/plugin_tabs.h"
#include "window/preferences/preset_actions.h"
#include "window/preferences/printing.h"
#include "window/preferences/problem_report.h"
#include "window/preferences/profile_actions.h"
#include "window/preferences/ticket_actions.h"
#include "window/preferences/unlocking.h"
#include "window/widgets/access_keys.h"
#include "window/widgets/contrast_style.h"
#include "window/widgets/readers.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLocale>
#include <QPushButton>
#include <QScopeGuard>
#include <QScreen>
#include <QSysInfo>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace Window {
namespace {

// Pixels between the tabs, the page and the row of buttons.
constexpr int between = 12;

// Adds facts about this machine that the request does not set.
Refhost::Options onThisMachine(Refhost::Options options) {
  const QScreen* screen = QGuiApplication::primaryScreen();
  options.dpi = static_cast<int>(std::lround(screen->logicalDotsPerInchX() * screen->devicePixelRatio()));
  if (!options.fonts)
    options.fonts = [] {
      std::vector<std::u16string> names;
      for (const QString& family : QFontDatabase::families()) names.push_back(toWide(family));
      return names;
    };
  return options;
}

Script::Facts versionsOf(const Request& request) {
  return {{"kiln", request.version},
          {"contract", std::to_string(Kiln::contractVersion.major) + '.' + std::to_string(Kiln::contractVersion.minor)},
          {"system", QSysInfo::prettyProductName().toStdString()},
          {"qt", qVersion()}};
}

}  // namespace

PreferencesWindow::PreferencesWindow(const Request& request)
    : job({request.document, request.password}),
      recording(versionsOf(request)),
      centre(new QWidget(this)),
      tabs(new PluginTabs(centre)),
      pages(new PagePanel(centre)),
      inspector(new Inspector(this)),
      messages(*this, session),
      help(*this, session, messages),
      dialogCare([this](const QDialog& dialog) { help.onDialog(dialog); }),
      face({*this, session, *tabs, *pages, messages, help}),
      closing(*this, session, *tabs),
      menus(*this, session, messages, *inspector->toggleViewAction(), menuActions()),
      presets(new PresetBar(messages, presetActions(), centre)),
      buttons(new ButtonRow(messages)),
      session(onThisMachine(request.preferences), face) {
  installReaders();
  useContrastStyle();
  build();
  session.onOpening = [this](Refhost::Preferences& opening) {
    inspector->follow(opening.trace());
    recording.opens(opening.options());
  };
  recording.onFailure = [this](const std::string& sentence) { messages.showFailure(sentence); };
  if (!request.record.empty()) recording.writeTo(request.record);
  recording.propertiesNow = [this] { return session.preferences().model().values(); };
  session.actions().tell(&recording);
  session.onSetAside = [this](const std::filesystem::path& file) {
    messages.showFailure(session.texts()("SET_ASIDE").arg(toQt(file.u16string())).toStdString());
  };
  inspector->setVisible(request.inspector);
  pages->goTo(request.page);
}

PreferencesWindow::~PreferencesWindow() {
  QCoreApplication::removeTranslator(&qtTexts);
  tabs->leave();
}

void PreferencesWindow::build() {
  addDockWidget(Qt::RightDockWidgetArea, inspector);

  // The window grows and shrinks with its panes, as far as the screen has room.
  const auto growWith = [this](const QWidget& pane, bool isShown) {
    const int change = pane.isWindow() ? 0 : isShown ? pane.sizeHint().width() : -pane.width();
    resize(std::min(width() + change, screen()->availableSize().width()), height());
    giveAccessKeys(*this);
  };
  connect(inspector->toggleViewAction(), &QAction::triggered, this, [this, growWith](bool isShown) {
    if (isShown) inspector->settle(*this);
    growWith(*inspector, isShown);
    if (isShown) resizeDocks({inspector}, {inspector->sizeHint().width()}, Qt::Horizontal);
  });
  connect(pages->toggleViewAction(), &QAction::triggered, this,
          [this, growWith](bool isShown) { growWith(*pages, isShown); });

  auto* sides = new QHBoxLayout;
  sides->setSpacing(between);
  auto* settings = new QVBoxLayout;
  settings->addWidget(presets);
  settings->addWidget(tabs, 1);
  sides->addLayout(settings);
  sides->addWidget(pages, 1);
  addButtons();
  auto* all = new QVBoxLayout(centre);
  all->setSpacing(between);
  all->addLayout(sides, 1);
  all->addLayout(buttons);
  setCentralWidget(centre);

  connect(tabs, &QTabWidget::currentChanged, this, [this](int index) {
    if (index >= 0 && preferences().gui() != nullptr)
      preferences().selectTab(toWide(tabs->widget(index)->objectName()));
    giveAccessKeys(*this);
  });
}

void PreferencesWindow::addButtons() {
  buttons->add("RESTORE", this, [this] { preferences().restoreDefaults(); });
  undoButton = buttons->add("UNDO", this, [this] { travel(&Refhost::Preferences::undo); }, QKeySequence::Undo);
  buttons->add("HELP_BUTTON", this, [this] { help.onTab(); }, Qt::Key_F1);
  buttons->divide();
  buttons->add("PRINT_BUTTON", this, toDo(print), QKeySequence::Print);
  okButton = buttons->add(
      "OK", this,
      [this] {
        if (closing.keep()) close();
      },
      Qt::Key_Return);
  cancelButton = buttons->add(
      "CANCEL", this,
      [this] {
        closing.discard();
        close();
      },
      Qt::Key_Escape);
  okButton->setDefault(true);
}

MenuActions PreferencesWindow::menuActions() {
  return {.openDocument = [this] { openDocument(); },
          .print = toDo(print),
          .printIntoOverlay = toDo(printIntoOverlay),
          .openTicket = toDo(openTicket),
          .saveTicket = toDo(saveTicket),
          .exportProfile = toDo(exportProfile),
          .importProfile = toDo(importProfile),
          .undo = [this] { travel(&Refhost::Preferences::undo); },
          .redo = [this] { travel(&Refhost::Preferences::redo); },
          .bringBackWatermarks = toDo(bringBackWatermarks),
          .helpOnTab = [this] { help.onTab(); },
          .helpOnWindow = [this] { help.onWindow(); },
          .reportProblem = toDo(reportProblem),
          .reopen = [this](const std::string& model, const std::string& locale) { reopen(model, locale); },
          .ofPage = [this] { return pages->viewActions(); }};
}

PresetActions PreferencesWindow::presetActions() {
  const auto showAfterwards = [this] {
    return qScopeGuard([this] { presets->showPresets(preferences().presets(), session.texts()); });
  };
  const auto shown = [showAfterwards](std::function<void()> action) {
    return [showAfterwards, action = std::move(action)] {
      const auto atEnd = showAfterwards();
      action();
    };
  };
  const auto choose = [this, showAfterwards](const QString& name) {
    const auto atEnd = showAfterwards();
    choosePreset(world(), name);
  };
  return {.choose = choose,
          .save = shown(toDo(savePreset)),
          .rename = shown(toDo(renamePreset)),
          .remove = shown(toDo(deletePreset))};
}

// What is printed on may be another file, or none.
void PreferencesWindow::travel(void (Refhost::Preferences::*direction)()) {
  (preferences().*direction)();
  pages->redraw();
}

std::function<void()> PreferencesWindow::toDo(void (*action)(const ActionWorld&)) {
  return [this, action] { action(world()); };
}

ActionWorld PreferencesWindow::world() { return {*this, face, session, job, *pages, messages, recording}; }

void PreferencesWindow::offerOverlays() {
  const auto guarded = [this](void (*action)(const ActionWorld&)) {
    return [this, action] { messages.guarded([this, action] { action(world()); }); };
  };
  addToOverlayList(*tabs, session.texts(),
                   {.create = guarded(newOverlay),
                    .createOf =
                        [this](const std::filesystem::path& file) {
                          messages.guarded([this, &file] { newOverlayOf(world(), file); });
                        },
                    .mayRename = [this] { return mayRenameOverlay(world()); },
                    .rename = guarded(renameOverlay)});
}

void PreferencesWindow::closeEvent(QCloseEvent* event) {
  const bool isOver = preferences().gui() == nullptr;
  event->setAccepted(isOver || closing.keepOrDiscard());
}

void PreferencesWindow::changeEvent(QEvent* event) {
  // Another program may have saved the job again.
  if (event->type() == QEvent::ActivationChange && isActiveWindow()) pages->redraw();
  QMainWindow::changeEvent(event);
}

// As in dialogs, Return presses the focused button or OK, and Escape presses Cancel. Receives keys that no widget
// handles; an open list is a window of its own.
void PreferencesWindow::keyPressEvent(QKeyEvent* event) {
  auto* focused = qobject_cast<QPushButton*>(QApplication::focusWidget());
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: return (focused != nullptr ? focused : okButton)->click();
    case Qt::Key_Escape: return cancelButton->click();
    default: QMainWindow::keyPressEvent(event);
  }
}

void PreferencesWindow::open() {
  job.prepare();
  session.open();
  showOpened();
  fitOnScreen();
  resize(sizeHint().boundedTo(screen()->availableSize() * 0.95));
}

// Large texts on a small screen leave no room for everything: the buttons take two rows, and the page is hidden until
// the user shows it.
void PreferencesWindow::fitOnScreen() {
  centre->ensurePolished();
  const QMargins around = centre->layout()->contentsMargins();
  const int room = screen()->availableSize().width() - around.left() - around.right();
  buttons->fitInto(room);
  const bool hasRoom = tabs->minimumSizeHint().width() + between + pages->minimumSizeHint().width() <= room;
  if (!hasRoom) pages->toggleViewAction()->setChecked(false);
}

void PreferencesWindow::showOpened() {
  showLanguage();
  tabs->leave();
  if (preferences().gui() != nullptr) tabs->showTabs(*preferences().gui(), session.surroundings());
  offerOverlays();
  giveAccessKeys(*this);
  orderFocus();
  setDocument(job.file());
  const auto follow = [this] {
    stale = true;
    QMetaObject::invokeMethod(this, &PreferencesWindow::showState, Qt::QueuedConnection);
  };
  preferences().model().onChange(follow);
  preferences().onHistory = follow;
  presets->showPresets(preferences().presets(), session.texts());
  showState();
}

void PreferencesWindow::showLanguage() {
  const Texts texts = session.texts();
  const QLocale locale = localeOf(session.locale());
  QLocale::setDefault(locale);
  QGuiApplication::setLayoutDirection(locale.textDirection());
  useFontsFor(session.locale());
  qtTexts.setTexts(texts);
  QCoreApplication::removeTranslator(&qtTexts);
  QCoreApplication::installTranslator(&qtTexts);
  buttons->setTexts(texts);
  presets->setTexts(texts);
  tabs->setAccessibleName(texts("TITLE"));
  pages->setTexts(texts);
  inspector->setTexts(texts);
  menus.build();
}

// Tab order: tabs, page, buttons, presets, although the tabs were filled last.
void PreferencesWindow::orderFocus() {
  QWidget* last = tabs;
  for (QWidget* each = tabs->nextInFocusChain(); each != tabs; each = each->nextInFocusChain())
    if (tabs->isAncestorOf(each)) last = each;
  std::vector<QWidget*> others;
  for (QWidget* each : pages->findChildren<QWidget*>())
    if ((each->focusPolicy() & Qt::TabFocus) != 0) others.push_back(each);
  for (QPushButton* button : buttons->buttons()) others.push_back(button);
  for (QWidget* each : presets->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
    if ((each->focusPolicy() & Qt::TabFocus) != 0) others.push_back(each);
  for (QWidget* each : others) {
    setTabOrder(last, each);
    last = each;
  }
}

void PreferencesWindow::showState() {
  stale = false;
  if (preferences().gui() == nullptr) return;
  showHistory();
  presets->showState(preferences().presets(), session.texts());
  showPaper();
  pages->setEffects(session.effects());
  inspector->showProperties(preferences().model());
}

void PreferencesWindow::showPaper() {
  const std::u16string paper = preferences().model().value(Formats::Prop::paperSize).value_or(u"");
  const QString label = paper.empty() ? QString() : "$IDS_DEVICE_PAPERSIZE_" + toQt(paper).toUpper() + ';';
  pages->setPaper(session.texts().shown(toWide(label)), paperOf(paper));
}

void PreferencesWindow::showHistory() {
  const auto name = [this](const Refhost::UserAction* action) {
    return action == nullptr ? std::nullopt : std::optional(nameOf(*action, session.texts(), *tabs));
  };
  const auto undone = name(preferences().nextToUndo());
  undoButton->setEnabled(undone.has_value());
  const QString keys = QKeySequence(QKeySequence::Undo).toString(QKeySequence::NativeText);
  undoButton->setToolTip(undone && !undone->isEmpty()
                             ? spokenName(session.texts()("UNDO_ACTION")).arg(*undone) + " (" + keys + ')'
                             : keys);
  menus.showHistory(undone, name(preferences().nextToRedo()));
}

void PreferencesWindow::reopen(const std::string& model, const std::string& locale) {
  const QString selected = tabs->selected();
  tabs->leave();
  std::string failure;
  try {
    session.reopen(model, locale);
  } catch (const std::runtime_error& error) {
    failure = error.what();
  }
  showOpened();
  tabs->select(selected);
  if (!failure.empty()) messages.showFailure(failure);
}

void PreferencesWindow::openDocument() {
  const FileQuestion question{.title = "OPEN_TITLE", .files = "PDF_FILES", .folder = job.folder()};
  const auto file = askForFile(question, session.texts(), this);
  if (!file) return;
  if (const auto opened = unlocked(*file, session.texts(), this)) {
    pages->goTo(1);
    setDocument(*opened);
  }
}

void PreferencesWindow::unlockJob() {
  if (const auto opened = unlocked(job.file(), session.texts(), this))
    if (*opened != job.file()) setDocument(*opened);
}

void PreferencesWindow::setDocument(const Press::JobFile& file) {
  job.replaceBy(file);
  setWindowTitle(plainText(job.name(session.texts())) + QStringLiteral(" \u2013 ") + session.texts()("TITLE"));
  pages->setDocument(file);
}

bool PreferencesWindow::isSettled() const { return !stale && pages->isSettled(); }

bool PreferencesWindow::isComplete() const { return isSettled() && pages->isComplete(); }

QString PreferencesWindow::pageFailure() const { return pages->picture().failure; }

}  // namespace Window
