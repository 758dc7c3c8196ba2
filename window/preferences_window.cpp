#include "window/preferences_window.h"

#include "press/job/sample.h"
#include "window/fonts.h"
#include "window/help_viewer.h"
#include "window/inspector.h"
#include "window/page_panel.h"
#include "window/paper.h"

#include <QAction>
#include <QApplication>
#include <QCompleter>
#include <QFile>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabWidget>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace Window {
namespace {

// Pixels between the tabs, the page and the row of buttons, and beside a button's text.
constexpr int between = 12;
constexpr int besideText = 14;

// The width for an overlay's name, in pixels.
constexpr int nameWidth = 320;

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

std::filesystem::path writeSample(const QTemporaryDir& folder) {
  const QString path = folder.filePath("sample.pdf");
  const std::string bytes = Press::samplePdf();
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes.data(), static_cast<qint64>(bytes.size())) < 0)
    throw std::runtime_error("The sample job cannot be written to \"" + path.toStdString() + "\" (" +
                             file.errorString().toStdString() + "): free some space.");
  return path.toStdU16String();
}

}  // namespace

PreferencesWindow::PreferencesWindow(const Request& request)
    : document(request.document),
      session(onThisMachine(request.preferences), *this) {
  build();
  session.onOpening = [this](Refhost::Preferences& opening) { inspector->follow(opening.trace()); };
  session.onSetAside = [this](const std::filesystem::path& file) {
    showFailure(texts()("SET_ASIDE").arg(toQt(file.u16string())).toStdString());
  };
  inspector->setVisible(request.inspector);
  pages->goTo(request.page);
}

PreferencesWindow::~PreferencesWindow() {
  QCoreApplication::removeTranslator(&qtTexts);
  leaveTabs();
}

void PreferencesWindow::build() {
  auto* centre = new QWidget(this);
  tabs = new QTabWidget(centre);
  tabs->setObjectName("tabs");
  tabs->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
  pages = new PagePanel(centre);
  inspector = new Inspector(this);
  addDockWidget(Qt::RightDockWidgetArea, inspector);

  // Opening the pane enlarges the window, if the screen has room.
  connect(inspector->toggleViewAction(), &QAction::triggered, this, [this](bool isShown) {
    const int change = isShown ? inspector->sizeHint().width() : -inspector->width();
    resize(std::min(width() + change, screen()->availableSize().width()), height());
  });

  auto* sides = new QHBoxLayout;
  sides->setSpacing(between);
  sides->addWidget(tabs);
  sides->addWidget(pages, 1);
  auto* row = new QHBoxLayout;
  addButton(*row, "RESTORE", &PreferencesWindow::restoreDefaults);
  undoButton = addButton(*row, "UNDO", &PreferencesWindow::undo);
  addButton(*row, "HELP_BUTTON", &PreferencesWindow::help);
  row->addStretch();
  addButton(*row, "PRINT_BUTTON", &PreferencesWindow::print);
  okButton = addButton(*row, "OK", &PreferencesWindow::accept);
  cancelButton = addButton(*row, "CANCEL", &PreferencesWindow::cancel);
  auto* all = new QVBoxLayout(centre);
  all->setSpacing(between);
  all->addLayout(sides, 1);
  all->addLayout(row);
  setCentralWidget(centre);

  okButton->setDefault(true);
  connect(tabs, &QTabWidget::currentChanged, this, [this](int index) {
    if (index >= 0 && preferences().gui() != nullptr)
      preferences().selectTab(toWide(tabs->widget(index)->objectName()));
  });
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

QPushButton* PreferencesWindow::addButton(QHBoxLayout& row, const char* name, void (PreferencesWindow::*press)()) {
  auto* button = new QPushButton(this);
  button->setObjectName(name);
  row.addWidget(button);
  connect(button, &QPushButton::clicked, this, [this, press] { guarded([this, press] { (this->*press)(); }); });
  buttons.emplace_back(button, name);
  return button;
}

void PreferencesWindow::open() {
  if (document.empty()) document = writeSample(sampleFolder);
  session.open();
  showOpened();
  resize(sizeHint().boundedTo(screen()->availableSize() * 0.95));
}

// Updates everything that depends on the model or language of newly opened preferences.
void PreferencesWindow::showOpened() {
  QLocale::setDefault(QLocale(QString::fromStdString(session.locale())));
  useFontsFor(session.locale());
  qtTexts.setTexts(texts());
  QCoreApplication::removeTranslator(&qtTexts);
  QCoreApplication::installTranslator(&qtTexts);
  for (const auto& [button, name] : buttons) {
    button->setText(texts()(name));
    button->setMinimumWidth(button->fontMetrics().horizontalAdvance(button->text()) + 2 * besideText);
  }
  undoButton->setShortcut(QKeySequence::Undo);  // setting a text clears a button's shortcut
  tabs->setAccessibleName(texts()("TITLE"));
  pages->setTexts(texts());
  inspector->setTexts(texts());
  buildMenus();
  showTabs();
  orderFocus();
  setDocument(document);
  preferences().model().onChange([this] {
    stale = true;
    QMetaObject::invokeMethod(this, &PreferencesWindow::showState, Qt::QueuedConnection);
  });
  showState();
}

void PreferencesWindow::showTabs() {
  leaveTabs();
  if (preferences().gui() == nullptr) return;
  const std::u16string selected = preferences().gui()->panel().selectedTabId().str();
  for (const Refhost::Layout& layout : preferences().gui()->tabs()) {
    auto* scroll = new QScrollArea(tabs);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setFocusPolicy(Qt::NoFocus);
    auto view = std::make_shared<TreeView>(*layout.root, surroundings(), scroll);
    scroll->setWidget(view->widget());
    scroll->viewport()->setAutoFillBackground(false);
    view->widget()->setAutoFillBackground(false);
    const QSize hint = view->widget()->sizeHint();
    scroll->setMinimumWidth(hint.width() + scroll->verticalScrollBar()->sizeHint().width());
    const std::u16string id = layout.root->WidgetNode::id();
    scroll->setObjectName(toQt(id));
    tabs->addTab(scroll, toQt(layout.root->shownLabel()));
    views.push_back(std::move(view));
    if (id == selected) tabs->setCurrentIndex(tabs->count() - 1);
  }
}

// Tab order: tabs, page, buttons, although the tabs were filled last.
void PreferencesWindow::orderFocus() {
  QWidget* last = tabs;
  for (QWidget* each = tabs->nextInFocusChain(); each != tabs; each = each->nextInFocusChain())
    if (tabs->isAncestorOf(each)) last = each;
  std::vector<QWidget*> others;
  for (QWidget* each : pages->findChildren<QWidget*>())
    if ((each->focusPolicy() & Qt::TabFocus) != 0) others.push_back(each);
  for (const auto& [button, name] : buttons) others.push_back(button);
  for (QWidget* each : others) {
    setTabOrder(last, each);
    last = each;
  }
}

void PreferencesWindow::leaveTabs() {
  for (const auto& view : views) view->forget();
  const QSignalBlocker quiet(tabs);
  while (tabs->count() > 0) {
    // A widget may be handling the event that ends the tabs, or waiting to; keep its view until it is destroyed.
    QWidget* page = tabs->widget(0);
    QObject::connect(page, &QObject::destroyed, [view = views.at(0)] {});
    views.erase(views.begin());
    page->setParent(nullptr);
    page->deleteLater();
  }
}

void PreferencesWindow::showState() {
  stale = false;
  if (preferences().gui() == nullptr) return;
  undoButton->setEnabled(preferences().canUndo());
  pages->setEffects(effects());
  inspector->showProperties(preferences().model());
}

void PreferencesWindow::reopen(const std::string& model, const std::string& locale) {
  const QString selected = tabs->currentWidget() != nullptr ? tabs->currentWidget()->objectName() : QString();
  leaveTabs();
  std::string failure;
  try {
    session.reopen(model, locale);
  } catch (const std::runtime_error& error) {
    failure = error.what();
  }
  showOpened();
  for (int i = 0; i < tabs->count(); ++i)
    if (tabs->widget(i)->objectName() == selected) tabs->setCurrentIndex(i);
  if (!failure.empty()) showFailure(failure);
}

void PreferencesWindow::setDocument(const std::filesystem::path& file) {
  document = file;
  setWindowTitle(nameOfJob() + QStringLiteral(" \u2013 ") + texts()("TITLE"));
  pages->setDocument(file);
}

Surroundings PreferencesWindow::surroundings() {
  return {texts(), preferences().chrome(), paperOf(preferences().model().value(u"PaperSize").value_or(u""))};
}

bool PreferencesWindow::isSettled() const { return !stale && pages->isSettled(); }

QString PreferencesWindow::pageFailure() const { return pages->picture().failure; }

void PreferencesWindow::runModally(Refhost::Dialog& dialog) { dialogs.runModally(dialog, surroundings(), this); }

void PreferencesWindow::dialogOpened(Refhost::Dialog& dialog) { dialogs.open(dialog, surroundings(), this); }

void PreferencesWindow::dialogClosed(Refhost::Dialog& dialog) { dialogs.closed(dialog); }

void PreferencesWindow::widgetChanged(Refhost::WidgetNode& widget) {
  for (const auto& view : views) view->update(widget);
  dialogs.update(widget);
}

void PreferencesWindow::showHelp(const std::u16string& url, const std::u16string& topic) {
  // While a dialog is modal, only its children are usable.
  QWidget* modal = QApplication::activeModalWidget();
  QWidget* owner = modal != nullptr ? modal : this;
  if (helpViewer == nullptr || helpViewer->parentWidget() != owner) {
    delete helpViewer;
    helpViewer = new HelpViewer(owner);
  }
  helpShown = helpViewer->show(url, topic, preferences().chrome(), texts());
  if (!helpShown) showFailure(texts()("NOT_OPENED").arg(toQt(url)).toStdString());
}

// Offers the existing names for completion: entering one recreates that overlay.
std::optional<std::u16string> PreferencesWindow::askJobStep() {
  QInputDialog question(this);
  question.setWindowTitle(texts()("OVERLAY_TITLE"));
  question.setLabelText(texts()("JOB_STEP"));
  auto* completer = new QCompleter(namesInUse(), &question);
  completer->setCaseSensitivity(Qt::CaseInsensitive);
  question.setTextValue({});  // creates the line edit for the completer
  auto* line = question.findChild<QLineEdit*>();
  line->setCompleter(completer);
  line->setMinimumWidth(nameWidth);
  const bool isGiven = question.exec() == QDialog::Accepted;
  return isGiven ? std::optional(toWide(question.textValue())) : std::nullopt;
}

// The overlays in the tab's list, after the entries for none and for several.
QStringList PreferencesWindow::namesInUse() {
  QStringList names;
  Refhost::Gui* gui = preferences().gui();
  auto* list = gui == nullptr ? nullptr : dynamic_cast<Refhost::SelectorNode*>(gui->find(u"cmb_EffOverlay"));
  for (int i = 0; list != nullptr && i < list->items().count(); ++i) {
    const auto item = list->items().at(i);
    const std::u16string value = item->value().str();
    if (value != u"None" && value != u"Multiple") names << toQt(item->displayedText().view());
  }
  return names;
}

// The message box is modeless, so that the failed action can return first.
void PreferencesWindow::showFailure(const std::string& sentence) {
  const QString text = QString::fromStdString(sentence);
  told << text;
  QMetaObject::invokeMethod(
      this,
      [this, text] {
        auto* box = new QMessageBox(QMessageBox::Warning, texts()("TITLE"), text, QMessageBox::NoButton, this);
        box->addButton(texts()("OK"), QMessageBox::AcceptRole);
        box->setAttribute(Qt::WA_DeleteOnClose);
        box->open();
      },
      Qt::QueuedConnection);
}

}  // namespace Window
