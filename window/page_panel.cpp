#include "window/page_panel.h"

#include "window/paper.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <algorithm>

namespace Window {
namespace {

constexpr int notchOfWheel = 120;

}  // namespace

PaperView::PaperView(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setMinimumSize(260, 260);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize PaperView::sizeHint() const { return {430, 560}; }

QSize PaperView::room() const {
  return ((QSizeF(size()) - QSizeF(2 * roundSheet, 2 * roundSheet)) * devicePixelRatioF()).toSize().expandedTo({1, 1});
}

void PaperView::show(const PagePicture& newPicture) {
  shown = newPicture;
  update();
}

void PaperView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  paintDesk(painter, *this);
  if (!shown.failure.isEmpty()) {
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect().adjusted(roundSheet, roundSheet, -roundSheet, -roundSheet),
                     Qt::AlignCenter | Qt::TextWordWrap, shown.failure);
  } else if (!shown.image.isNull()) {
    paintPaper(painter);
  }
  if (hasFocus()) {
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
  }
}

// A picture of the current size is drawn pixel by pixel; an outdated one is scaled until the next arrives.
void PaperView::paintPaper(QPainter& painter) const {
  const double ratio = devicePixelRatioF();
  const QSize pixels = shown.image.size().scaled(room(), Qt::KeepAspectRatio);
  const QSize nearly = (shown.image.size() - pixels).expandedTo(pixels - shown.image.size());
  const bool fits = nearly.width() <= 2 && nearly.height() <= 2;
  QRectF sheet = sheetWithin(*this, shown.image.size());
  if (fits) sheet.setSize(QSizeF(shown.image.size()) / ratio);
  paintSheet(painter, sheet);
  painter.setRenderHint(QPainter::SmoothPixmapTransform, !fits);
  painter.drawImage(sheet, shown.image);
}

void PaperView::resizeEvent(QResizeEvent*) { Q_EMIT roomChanged(); }

void PaperView::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_PageDown:
    case Qt::Key_Down: return Q_EMIT pagesWanted(1);
    case Qt::Key_PageUp:
    case Qt::Key_Up: return Q_EMIT pagesWanted(-1);
    case Qt::Key_Home: return Q_EMIT endWanted(false);
    case Qt::Key_End: return Q_EMIT endWanted(true);
    default: QWidget::keyPressEvent(event);
  }
}

void PaperView::wheelEvent(QWheelEvent* event) {
  wheel += event->angleDelta().y();
  if (const int notches = wheel / notchOfWheel; notches != 0) {
    wheel -= notches * notchOfWheel;
    Q_EMIT pagesWanted(-notches);
  }
}

PagePanel::PagePanel(QWidget* parent)
    : QWidget(parent),
      paper(new PaperView(this)),
      back(new QToolButton(this)),
      forward(new QToolButton(this)),
      place(new QLabel(this)),
      size(new QLabel(this)),
      notes(new QLabel(this)) {
  auto* bar = new QHBoxLayout;
  bar->addStretch();
  bar->addWidget(back);
  bar->addWidget(place);
  bar->addWidget(forward);
  bar->addStretch();
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(paper, 1);
  layout->addLayout(bar);
  layout->addWidget(size);
  layout->addWidget(notes);
  paper->setObjectName("page");
  back->setObjectName("previousPage");
  forward->setObjectName("nextPage");
  place->setObjectName("place");
  place->setAlignment(Qt::AlignCenter);
  size->setObjectName("paper");
  size->setAlignment(Qt::AlignCenter);
  size->setForegroundRole(QPalette::PlaceholderText);
  notes->setObjectName("notes");
  notes->setTextFormat(Qt::PlainText);
  notes->setWordWrap(true);
  notes->setVisible(false);
  for (QToolButton* button : {back, forward}) button->setAutoRaise(true);

  connect(back, &QToolButton::clicked, this, [this] { turn(-1); });
  connect(forward, &QToolButton::clicked, this, [this] { turn(1); });
  connect(paper, &PaperView::pagesWanted, this, &PagePanel::turn);
  connect(paper, &PaperView::endWanted, this, [this](bool last) { goTo(last ? picture().pages : 1); });
  connect(paper, &PaperView::roomChanged, this, &PagePanel::redraw);
  connect(&artist, &PageArtist::drawn, this, &PagePanel::drawn);
}

void PagePanel::setTexts(const Texts& texts) {
  placeText = texts("PAGE");
  sheetText = texts("SHEET");
  sizeText = texts("PAPER");
  paperText = texts("PAGE_PICTURE");
  const bool leftToRight = layoutDirection() == Qt::LeftToRight;
  back->setArrowType(leftToRight ? Qt::LeftArrow : Qt::RightArrow);
  forward->setArrowType(leftToRight ? Qt::RightArrow : Qt::LeftArrow);
  back->setToolTip(texts("PREVIOUS_PAGE"));
  forward->setToolTip(texts("NEXT_PAGE"));
  back->setAccessibleName(back->toolTip());
  forward->setAccessibleName(forward->toolTip());
  paper->setToolTip(paperText);
  showPlace();
}

void PagePanel::setDocument(const std::filesystem::path& file) {
  order.document = file;
  redraw();
}

void PagePanel::setEffects(const Press::Effects& newEffects) {
  if (order.effects == newEffects) return;
  order.effects = newEffects;
  redraw();
}

void PagePanel::goTo(int page) {
  const int wanted = std::clamp(page, 1, std::max(1, picture().pages > 0 ? picture().pages : page));
  if (order.page == wanted) return;
  order.page = wanted;
  showPlace();
  redraw();
}

void PagePanel::redraw() {
  if (order.document.empty()) return;
  order.room = paper->room();
  artist.draw(order);
}

void PagePanel::drawn(const PagePicture& picture) {
  if (picture.pages > 0) order.page = std::min(order.page, picture.pages);
  paper->show(picture);
  showPlace();
}

void PagePanel::showPlace() {
  const int onSheet = picture().pagesOnSheet;
  const int number = (page() - 1) / onSheet + 1;
  const int count = (picture().pages + onSheet - 1) / onSheet;
  const bool isShown = picture().failure.isEmpty() && count > 0;
  const QString text = isShown ? (onSheet > 1 ? sheetText : placeText).arg(number).arg(count) : QString();
  place->setText(text);
  const QSize rounded = picture().millimetres.toSize();
  size->setText(isShown ? sizeText.arg(rounded.width()).arg(rounded.height()) : QString());
  notes->setText(picture().notes);
  notes->setVisible(!picture().notes.isEmpty());
  paper->setAccessibleName(paperText);
  paper->setAccessibleDescription(isShown ? text : picture().failure);
  back->setEnabled(number > 1);
  forward->setEnabled(number < count);
}

}  // namespace Window
