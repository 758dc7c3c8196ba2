#include "window/page/page_bar.h"

#include "window/page/page_number.h"

#include <QAction>
#include <QHBoxLayout>
#include <QMenu>
#include <QToolButton>

#include <cmath>

namespace Window {

PageBar::PageBar(QWidget* parent)
    : QWidget(parent),
      first(addButton("firstPage", QStringLiteral("\u00ab"))),
      back(addButton("previousPage", {})),
      number(new PageNumber(this)),
      forward(addButton("nextPage", {})),
      last(addButton("lastPage", QStringLiteral("\u00bb"))),
      smaller(addButton("smaller", QStringLiteral("\u2212"))),
      sizes(addButton("sizes", {})),
      larger(addButton("larger", QStringLiteral("+"))),
      zoomIn(new QAction(this)),
      zoomOut(new QAction(this)),
      trueSize(new QAction(this)),
      wholePage(new QAction(this)),
      pageWidth(new QAction(this)) {
  number->setObjectName("place");
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(2);
  layout->addStretch();
  for (QWidget* each : {static_cast<QWidget*>(first), static_cast<QWidget*>(back), static_cast<QWidget*>(number),
                        static_cast<QWidget*>(forward), static_cast<QWidget*>(last)})
    layout->addWidget(each);
  layout->addStretch();
  for (QToolButton* each : {smaller, sizes, larger}) layout->addWidget(each);
  buildZooms();

  connect(first, &QToolButton::clicked, this, [this] { Q_EMIT endWanted(false); });
  connect(back, &QToolButton::clicked, this, [this] { Q_EMIT turned(-1); });
  connect(number, &PageNumber::entered, this, &PageBar::numberEntered);
  connect(forward, &QToolButton::clicked, this, [this] { Q_EMIT turned(1); });
  connect(last, &QToolButton::clicked, this, [this] { Q_EMIT endWanted(true); });
  connect(smaller, &QToolButton::clicked, zoomOut, &QAction::trigger);
  connect(larger, &QToolButton::clicked, zoomIn, &QAction::trigger);
}

QToolButton* PageBar::addButton(const char* name, const QString& symbol) {
  auto* button = new QToolButton(this);
  button->setObjectName(name);
  button->setText(symbol);
  button->setAutoRaise(true);
  return button;
}

void PageBar::buildZooms() {
  zooms = {zoomIn, zoomOut, trueSize, wholePage, pageWidth};
  zoomIn->setObjectName("zoomIn");
  zoomOut->setObjectName("zoomOut");
  trueSize->setObjectName("trueSize");
  wholePage->setObjectName("fitPage");
  pageWidth->setObjectName("fitWidth");

  // The plus sign is on a key with another sign in many layouts.
  zoomIn->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)});
  zoomOut->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Minus));
  trueSize->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_0));
  for (QAction* each : {wholePage, pageWidth}) each->setCheckable(true);

  auto* menu = new QMenu(this);
  menu->addActions(zooms);
  sizes->setMenu(menu);
  sizes->setPopupMode(QToolButton::InstantPopup);
  connect(zoomIn, &QAction::triggered, this, [this] { Q_EMIT zoomStepped(1); });
  connect(zoomOut, &QAction::triggered, this, [this] { Q_EMIT zoomStepped(-1); });
  connect(trueSize, &QAction::triggered, this, [this] { Q_EMIT zoomWanted({Zoom::Kind::size, 1}); });
  connect(wholePage, &QAction::triggered, this, [this] { Q_EMIT zoomWanted({Zoom::Kind::page}); });
  connect(pageWidth, &QAction::triggered, this, [this] { Q_EMIT zoomWanted({Zoom::Kind::width}); });
}

void PageBar::setTexts(const Texts& texts) {
  placeText = texts("PAGE");
  sheetText = texts("SHEET");
  sizeText = texts("PER_CENT");
  const bool leftToRight = layoutDirection() == Qt::LeftToRight;
  back->setArrowType(leftToRight ? Qt::LeftArrow : Qt::RightArrow);
  forward->setArrowType(leftToRight ? Qt::RightArrow : Qt::LeftArrow);
  zoomIn->setText(texts("ZOOM_IN"));
  zoomOut->setText(texts("ZOOM_OUT"));
  trueSize->setText(texts("TRUE_SIZE"));
  wholePage->setText(texts("FIT_PAGE"));
  pageWidth->setText(texts("FIT_WIDTH"));
  const auto name = [](QWidget& widget, const QString& text) {
    widget.setToolTip(text);
    widget.setAccessibleName(text);
  };
  name(*first, texts("FIRST_PAGE"));
  name(*back, texts("PREVIOUS_PAGE"));
  number->setName(texts("GO_TO"), texts("GO_TO_PAGE"));
  name(*forward, texts("NEXT_PAGE"));
  name(*last, texts("LAST_PAGE"));
  name(*smaller, spokenName(zoomOut->text()));
  name(*larger, spokenName(zoomIn->text()));
  name(*sizes, texts("ZOOM"));
  sizes->setText(sizeText.arg(400));
  sizes->setMinimumWidth(sizes->sizeHint().width());  // for any factor
}

void PageBar::showPlace(int page, int count, bool isSheet) {
  isShown = count > 0;
  number->show(isSheet ? sheetText : placeText, page, count);
  number->setEnabled(isShown);
  for (QToolButton* each : {first, back}) each->setEnabled(isShown && page > 1);
  for (QToolButton* each : {forward, last}) each->setEnabled(isShown && page < count);
}

QString PageBar::place() const { return isShown ? number->text() : QString(); }

void PageBar::showZoom(const Zoom& zoom, double factor) {
  wholePage->setChecked(zoom.kind == Zoom::Kind::page);
  pageWidth->setChecked(zoom.kind == Zoom::Kind::width);
  sizes->setText(factor > 0 ? sizeText.arg(std::lround(100 * factor)) : QString());
  sizes->setAccessibleDescription(sizes->text());
}

}  // namespace Window
