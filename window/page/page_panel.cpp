#include "window/page/page_panel.h"

#include "window/page/page_bar.h"
#include "window/page/page_strip.h"
#include "window/page/paper.h"
#include "window/page/paper_view.h"
#include "window/widgets/readers.h"

#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>
#include <cmath>

namespace Window {
namespace {

// So many lines of notes are seen at once.
constexpr int linesOfNotes = 3;

// Papers whose sides differ by less are the same.
constexpr double sameMillimetres = 3;

// Long enough that the page is not examined between clicks that follow each other.
constexpr auto untilExamined = std::chrono::milliseconds(200);

bool areSamePaper(const QSizeF& one, const QSizeF& other) {
  const auto isNear = [](double a, double b) { return std::abs(a - b) < sameMillimetres; };
  return (isNear(one.width(), other.width()) && isNear(one.height(), other.height())) ||
         (isNear(one.width(), other.height()) && isNear(one.height(), other.width()));
}

}  // namespace

PagePanel::PagePanel(QWidget* parent)
    : QWidget(parent),
      shows(new QAction(this)),
      showsStrip(new QAction(this)),
      paper(new PaperView(this)),
      strip(new PageStrip(artist, this)),
      bar(new PageBar(this)),
      size(new QLabel(this)),
      notesRoom(new QScrollArea(this)),
      noted(new QWidget),
      overlays(new QLabel(noted)),
      notes(new QLabel(noted)) {
  build();
  buildActions();
  moment.setSingleShot(true);
  moment.setInterval(untilExamined);
  connect(&moment, &QTimer::timeout, this, &PagePanel::examine);
  connect(bar, &PageBar::turned, this, &PagePanel::turn);
  connect(bar, &PageBar::endWanted, this, [this](bool last) { goTo(last ? picture().pages : 1); });
  connect(bar, &PageBar::numberEntered, this,
          [this](int number) { goTo((number - 1) * order.effects.pagesOnSheet + 1); });
  connect(bar, &PageBar::zoomWanted, paper, &PaperView::setZoom);
  connect(bar, &PageBar::zoomStepped, this, [this](int steps) { paper->zoomBy(steps); });
  connect(strip, &PageStrip::pageWanted, this, &PagePanel::goTo);
  connect(paper, &PaperView::pagesWanted, this, &PagePanel::turn);
  connect(paper, &PaperView::endWanted, this, [this](bool last) { goTo(last ? picture().pages : 1); });
  connect(paper, &PaperView::roomChanged, this, &PagePanel::redraw);
  connect(paper, &PaperView::zoomChanged, this, [this] { bar->showZoom(paper->zoom(), paper->factor()); });
  connect(&artist, &PageArtist::drawn, this, &PagePanel::drawn);
  connect(&artist, &PageArtist::examined, this, [this](const HiddenMarks& found) {
    hidden = found;
    isExamining = false;
    showNotes();
  });
}

// The strip uses the artist, which is destroyed before the child widgets are.
PagePanel::~PagePanel() { delete strip; }

void PagePanel::build() {
  paper->setObjectName("page");
  strip->setObjectName("pageStrip");
  setRole(*strip, QAccessible::List);
  size->setObjectName("paper");
  size->setAlignment(Qt::AlignCenter);
  size->setForegroundRole(QPalette::PlaceholderText);
  overlays->setObjectName("overlays");
  notes->setObjectName("notes");
  auto* lines = new QVBoxLayout(noted);
  lines->setContentsMargins(0, 0, 0, 0);
  for (QLabel* label : {overlays, notes}) {
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    setRole(*label, QAccessible::Notification);
    label->setVisible(false);
    lines->addWidget(label);
  }
  lines->addStretch();

  // The room of the notes is always the same, so that they do not move the page.
  notesRoom->setObjectName("notesRoom");
  setRole(*notesRoom, QAccessible::Grouping);
  notesRoom->setFrameShape(QFrame::NoFrame);
  notesRoom->setWidgetResizable(true);
  notesRoom->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  notesRoom->setFocusPolicy(Qt::NoFocus);
  notesRoom->setFixedHeight(linesOfNotes * fontMetrics().lineSpacing() + 2);
  notesRoom->setWidget(noted);

  auto* pages = new QHBoxLayout;
  pages->addWidget(strip);
  pages->addWidget(paper, 1);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addLayout(pages, 1);
  layout->addWidget(bar);
  layout->addWidget(size);
  layout->addWidget(notesRoom);
}

void PagePanel::buildActions() {
  shows->setObjectName("showPage");
  showsStrip->setObjectName("showStrip");
  for (QAction* each : {shows, showsStrip}) {
    each->setCheckable(true);
    each->setChecked(true);
  }
  auto* gap = new QAction(this);
  gap->setSeparator(true);
  addActions({shows, showsStrip, gap});
  addActions(bar->zoomActions());
  connect(showsStrip, &QAction::toggled, this, &PagePanel::showStrip);
  connect(shows, &QAction::toggled, this, [this](bool isShown) {
    setVisible(isShown);
    showsStrip->setEnabled(isShown);
    for (QAction* each : bar->zoomActions()) each->setEnabled(isShown);
    redraw();
  });
}

const PagePicture& PagePanel::picture() const { return paper->picture(); }

bool PagePanel::isComplete() const { return isExamined() && (!strip->isVisible() || strip->isComplete()); }

void PagePanel::setTexts(const Texts& texts) {
  sizeText = texts("PAPER");
  paperText = texts("PAGE_PICTURE");
  otherPaperText = texts("OTHER_PAPER");
  watermarkHiddenText = texts("WATERMARK_HIDDEN");
  overlaysHiddenText = texts("OVERLAYS_HIDDEN");
  overlayTexts = OverlayTexts(texts);
  shows->setText(texts("SHOW_PAGE"));
  showsStrip->setText(texts("SHOW_STRIP"));
  strip->setAccessibleName(texts("PAGE_STRIP"));
  strip->setToolTip(texts("PAGE_STRIP"));
  notesRoom->setAccessibleName(texts("PAGE_NOTES"));
  bar->setTexts(texts);
  paper->setToolTip(paperText);
  showPlace();
}

void PagePanel::setDocument(const Press::JobFile& file) {
  order.document = file;
  hidden = {};
  redraw();
}

void PagePanel::setEffects(const Press::Effects& newEffects) {
  if (order.effects == newEffects) return;
  order.effects = newEffects;
  hidden = {};
  redraw();
}

void PagePanel::setPaper(const QString& name, const QSizeF& points) {
  if (name == chosenPaper && points == chosenSize) return;
  chosenPaper = name;
  chosenSize = points;
  showNotes();
}

PageOrder PagePanel::plainPage() const {
  PageOrder plain;
  plain.document = order.document;
  plain.page = order.page;
  if (!order.effects.watermark.onEachPage) plain.effects.pagesOnSheet = order.effects.pagesOnSheet;
  return plain;
}

QSizeF PagePanel::plainSize() const {
  const bool isShown = picture().pagesOnSheet == plainPage().effects.pagesOnSheet;
  return isShown ? picture().millimetres * pointsPerMillimetre : QSizeF();
}

void PagePanel::goTo(int page) {
  const int wanted = std::clamp(page, 1, std::max(1, picture().pages > 0 ? picture().pages : page));
  if (order.page == wanted) return;
  order.page = wanted;
  hidden = {};
  showPlace();
  redraw();
}

void PagePanel::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_PageDown: return turn(1);
    case Qt::Key_PageUp: return turn(-1);
    default: QWidget::keyPressEvent(event);
  }
}

void PagePanel::redraw() {
  if (order.document.file.empty() || !shows->isChecked()) return;
  order.room = paper->room();
  order.resolution = paper->resolution();
  strip->wait();
  isExamining = false;
  artist.draw(order);
}

void PagePanel::drawn(const PagePicture& picture) {
  if (picture.pages > 0) order.page = std::min(order.page, picture.pages);
  paper->show(picture);
  strip->show(order, picture);
  showStrip();
  const QStringList before{notes->text(), overlays->text()};
  showPlace();
  if (notes->text() != before[0]) announce(*notes);
  if (overlays->text() != before[1]) announce(*overlays);
  moment.start();
}

// One page needs no others beside it.
void PagePanel::showStrip() {
  const bool isWanted = showsStrip->isChecked() && strip->count() != 1;
  if (strip->isVisibleTo(this) != isWanted) strip->setVisible(isWanted);
}

void PagePanel::examine() {
  const Press::Effects& effects = order.effects;
  const bool isUnder = (effects.watermark.isUnderPage && !effects.watermark.text.empty()) ||
                       (!effects.overlaysOverPage && !effects.overlays.empty());
  isExamining = isUnder && artist.isIdle() && picture().failure.isEmpty();
  if (isExamining) artist.examine(order);
}

void PagePanel::showPlace() {
  const int onSheet = picture().pagesOnSheet;
  const int number = (page() - 1) / onSheet + 1;
  const int count = (picture().pages + onSheet - 1) / onSheet;
  const bool isShown = picture().failure.isEmpty() && count > 0;
  bar->showPlace(number, isShown ? count : 0, onSheet > 1);
  bar->showZoom(paper->zoom(), isShown ? paper->factor() : 0);
  const QSize rounded = picture().millimetres.toSize();
  size->setText(isShown ? sizeText.arg(rounded.width()).arg(rounded.height()) : QString());
  showNotes();
  paper->setAccessibleName(paperText);
  paper->setAccessibleDescription(isShown ? bar->place() : picture().failure);
  strip->setAccessibleDescription(bar->place());
}

void PagePanel::showNotes() {
  QStringList lines;
  if (hidden.watermark) lines << watermarkHiddenText;
  if (hidden.overlays) lines << overlaysHiddenText;
  lines << paperNote() << picture().notes;
  lines.removeAll(QString());
  notes->setText(lines.join('\n'));
  notes->setVisible(!lines.isEmpty());
  showOverlays();
}

// The print side does not scale pages to the paper.
QString PagePanel::paperNote() const {
  const QSizeF& printed = picture().millimetres;
  if (chosenPaper.isEmpty() || printed.isEmpty() || areSamePaper(printed, chosenSize / pointsPerMillimetre)) return {};
  const QSize rounded = printed.toSize();
  return otherPaperText.arg(chosenPaper, sizeText.arg(rounded.width()).arg(rounded.height()));
}

// The words keep room for the page: a long text is cut, and whole in the tooltip.
void PagePanel::showOverlays() {
  constexpr qsizetype mostCharacters = 400;
  const QString words = overlayTexts.sentences(picture().overlays);
  const bool isLong = words.size() > mostCharacters;
  overlays->setText(isLong ? words.left(mostCharacters) + "..." : words);
  overlays->setToolTip(isLong ? toolTipOf(words, false) : QString());
  overlays->setVisible(!words.isEmpty());
  showRoomOfNotes();
}

// Readers are told the notes when the focus comes, which passes by when there are none.
void PagePanel::showRoomOfNotes() {
  QStringList told{overlays->text(), notes->text()};
  told.removeAll(QString());
  notesRoom->setAccessibleDescription(told.join('\n'));
  notesRoom->setFocusPolicy(told.isEmpty() ? Qt::NoFocus : Qt::TabFocus);
}

}  // namespace Window
