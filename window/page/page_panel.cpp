#include "window/page/page_panel.h"

#include "window/page/paper_view.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace Window {

PagePanel::PagePanel(QWidget* parent)
    : QWidget(parent),
      shows(new QAction(this)),
      paper(new PaperView(this)),
      back(new QToolButton(this)),
      forward(new QToolButton(this)),
      place(new QLabel(this)),
      size(new QLabel(this)),
      overlays(new QLabel(this)),
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
  layout->addWidget(overlays);
  layout->addWidget(notes);
  paper->setObjectName("page");
  back->setObjectName("previousPage");
  forward->setObjectName("nextPage");
  place->setObjectName("place");
  place->setAlignment(Qt::AlignCenter);
  size->setObjectName("paper");
  size->setAlignment(Qt::AlignCenter);
  size->setForegroundRole(QPalette::PlaceholderText);
  overlays->setObjectName("overlays");
  notes->setObjectName("notes");
  for (QLabel* label : {overlays, notes}) {
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setVisible(false);
  }
  for (QToolButton* button : {back, forward}) button->setAutoRaise(true);

  shows->setObjectName("showPage");
  shows->setCheckable(true);
  shows->setChecked(true);
  addAction(shows);
  connect(shows, &QAction::toggled, this, [this](bool isShown) {
    setVisible(isShown);
    redraw();
  });

  connect(back, &QToolButton::clicked, this, [this] { turn(-1); });
  connect(forward, &QToolButton::clicked, this, [this] { turn(1); });
  connect(paper, &PaperView::pagesWanted, this, &PagePanel::turn);
  connect(paper, &PaperView::endWanted, this, [this](bool last) { goTo(last ? picture().pages : 1); });
  connect(paper, &PaperView::roomChanged, this, &PagePanel::redraw);
  connect(&artist, &PageArtist::drawn, this, &PagePanel::drawn);
}

const PagePicture& PagePanel::picture() const { return paper->picture(); }

void PagePanel::setTexts(const Texts& texts) {
  placeText = texts("PAGE");
  sheetText = texts("SHEET");
  sizeText = texts("PAPER");
  paperText = texts("PAGE_PICTURE");
  overlayTexts = OverlayTexts(texts);
  shows->setText(texts("SHOW_PAGE"));
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

void PagePanel::setDocument(const Press::JobFile& file) {
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
  if (order.document.file.empty() || !shows->isChecked()) return;
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
  showOverlays();
  paper->setAccessibleName(paperText);
  paper->setAccessibleDescription(isShown ? text : picture().failure);
  back->setEnabled(number > 1);
  forward->setEnabled(number < count);
}

// The words keep room for the page: a long text is cut, and whole in the tooltip.
void PagePanel::showOverlays() {
  constexpr qsizetype mostCharacters = 400;
  const QString words = overlayTexts.sentences(picture().overlays);
  const bool isLong = words.size() > mostCharacters;
  overlays->setText(isLong ? words.left(mostCharacters) + "..." : words);
  overlays->setToolTip(isLong ? toolTipOf(words, false) : QString());
  overlays->setVisible(!words.isEmpty());
}

}  // namespace Window
