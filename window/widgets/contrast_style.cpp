#include "window/widgets/contrast_style.h"

#include <QApplication>
#include <QPainter>
#include <QStyleOption>

namespace Window {
namespace {

constexpr char16_t endOfIsolate = u'\u2069';

// Styles draw edges darker than the window, which on dark colours is hardly seen.
bool hidesEdges(const QPalette& palette) {
  return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

// Between the window and its text, with a contrast of 3 to the window; on black, whose desktops want strong contrasts,
// the text's.
QColor edgeColour(const QPalette& palette) {
  constexpr int darkest = 16;
  constexpr double partOfText = 0.45;
  const QColor window = palette.color(QPalette::Window);
  const QColor text = palette.color(QPalette::WindowText);
  if (window.lightness() < darkest) return text;
  const auto mixed = [](int one, int other) { return qRound(one + partOfText * (other - one)); };
  return QColor(mixed(window.red(), text.red()), mixed(window.green(), text.green()),
                mixed(window.blue(), text.blue()));
}

// Of what has the keyboard's focus, the highlight's.
QPen edgePen(const QStyleOption& option, bool isHighlighted) {
  if (!isHighlighted) return {edgeColour(option.palette), 1};
  return {option.palette.color(QPalette::Highlight), 2};
}

void drawEdge(const QStyleOption& option, const QRect& around, QPainter& painter, bool isHighlighted = false,
              bool isRound = false) {
  if (around.isEmpty()) return;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, isRound);
  painter.setBrush(Qt::NoBrush);
  const QPen pen = edgePen(option, isHighlighted);
  painter.setPen(pen);
  const double inside = pen.widthF() / 2;
  const QRectF edge = QRectF(around).adjusted(inside, inside, -inside, -inside);
  isRound ? painter.drawEllipse(edge) : painter.drawRect(edge);
  painter.restore();
}

void drawLine(const QStyleOption& option, const QPoint& from, const QPoint& to, QPainter& painter) {
  painter.save();
  painter.setPen(edgePen(option, false));
  painter.drawLine(from, to);
  painter.restore();
}

bool isFocusedByKeys(const QStyleOption& option) {
  return (option.state & QStyle::State_HasFocus) != 0 && (option.state & QStyle::State_KeyboardFocusChange) != 0;
}

bool isDefaultButton(const QStyleOption& option) {
  const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
  const bool isEnabled = (option.state & QStyle::State_Enabled) != 0;
  return isEnabled && button != nullptr && (button->features & QStyleOptionButton::DefaultButton) != 0;
}

// A tab above its page: the selected one is joined to the page, and has a highlighted top.
void drawTab(const QStyleOption& option, QPainter& painter) {
  const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(&option);
  if (tab == nullptr || tab->shape != QTabBar::RoundedNorth) return;
  constexpr int lower = 2;
  constexpr int topOfSelected = 3;
  const bool isSelected = (option.state & QStyle::State_Selected) != 0;
  const QRect around = option.rect.adjusted(0, isSelected ? 0 : lower, 0, 0);
  drawLine(option, around.topLeft(), around.topRight(), painter);
  drawLine(option, around.topLeft(), around.bottomLeft(), painter);
  drawLine(option, around.topRight(), around.bottomRight(), painter);
  if (isSelected)
    painter.fillRect(QRect(around.topLeft(), QSize(around.width(), topOfSelected)),
                     option.palette.color(QPalette::Highlight));
}

void drawSeparator(const QStyleOption& option, QPainter& painter) {
  const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(&option);
  if (item == nullptr || item->menuItemType != QStyleOptionMenuItem::Separator || !item->text.isEmpty()) return;
  constexpr int beside = 4;
  const int middle = option.rect.center().y();
  drawLine(option, {option.rect.left() + beside, middle}, {option.rect.right() - beside, middle}, painter);
}

// A triangle in the middle of the button.
void drawArrow(const QStyleOption& option, const QRect& button, bool isUp, bool isEnabled, QPainter& painter) {
  const double half = qMin(4.0, qMin(button.width() / 3.0, button.height() / 1.5));
  const QPointF middle = QRectF(button).center();
  const double tip = isUp ? -half / 2 : half / 2;
  const QPointF corners[] = {middle + QPointF(-half, -tip), middle + QPointF(half, -tip), middle + QPointF(0, tip)};
  const auto group = isEnabled ? option.palette.currentColorGroup() : QPalette::Disabled;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(option.palette.color(group, QPalette::ButtonText));
  painter.drawPolygon(corners, 3);
  painter.restore();
}

// The shortcut is behind a tab. Its signs, such as those of "Ctrl++", stay where they are in a text from right to left.
QString withIsolatedShortcut(const QString& text) {
  constexpr char16_t leftToRight = u'\u2066';
  const qsizetype tab = text.indexOf('\t');
  return tab < 0 ? text : text.left(tab + 1) + QChar(leftToRight) + text.mid(tab + 1) + QChar(endOfIsolate);
}

}  // namespace

void ContrastStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                  const QWidget* widget) const {
  const bool isDark = hidesEdges(option->palette);
  // The style's own frame of a group lies within this one, and would be a second line.
  if (!isDark || element != PE_FrameGroupBox) QProxyStyle::drawPrimitive(element, option, painter, widget);
  if (!isDark) return;
  switch (element) {
    case PE_IndicatorRadioButton: return drawEdge(*option, option->rect, *painter, isFocusedByKeys(*option), true);
    case PE_IndicatorCheckBox: return drawEdge(*option, option->rect, *painter, isFocusedByKeys(*option));
    case PE_PanelButtonCommand:
      return drawEdge(*option, option->rect, *painter, isFocusedByKeys(*option) || isDefaultButton(*option));
    case PE_FrameLineEdit: return drawEdge(*option, option->rect, *painter, (option->state & State_HasFocus) != 0);
    case PE_Frame:
    case PE_FrameGroupBox:
    case PE_FrameMenu:
    case PE_FrameTabWidget:
    case PE_PanelMenu: return drawEdge(*option, option->rect, *painter);
    default: break;
  }
}

void ContrastStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const {
  const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
  if (element == CE_MenuItem && item != nullptr && item->direction == Qt::RightToLeft) {
    QStyleOptionMenuItem isolated(*item);
    isolated.text = withIsolatedShortcut(item->text);
    QProxyStyle::drawControl(element, &isolated, painter, widget);
  } else {
    QProxyStyle::drawControl(element, option, painter, widget);
  }
  if (!hidesEdges(option->palette)) return;
  const QRect& around = option->rect;
  switch (element) {
    case CE_MenuItem: return drawSeparator(*option, *painter);
    case CE_TabBarTabShape: return drawTab(*option, *painter);
    case CE_ProgressBarGroove: return drawEdge(*option, around, *painter);
    case CE_HeaderSection:
      drawLine(*option, around.bottomLeft(), around.bottomRight(), *painter);
      return option->direction == Qt::LeftToRight ? drawLine(*option, around.topRight(), around.bottomRight(), *painter)
                                                  : drawLine(*option, around.topLeft(), around.bottomLeft(), *painter);
    default: break;
  }
}

void ContrastStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                       const QWidget* widget) const {
  QProxyStyle::drawComplexControl(control, option, painter, widget);
  if (!hidesEdges(option->palette)) return;
  switch (control) {
    case CC_SpinBox: return drawSpinBox(*option, *painter, widget);
    case CC_Slider: return drawSlider(*option, *painter, widget);
    case CC_ScrollBar: return drawScrollBar(*option, *painter, widget);
    default: break;
  }
}

void ContrastStyle::drawSpinBox(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const {
  drawEdge(option, option.rect, painter, (option.state & State_HasFocus) != 0);
  const auto* box = qstyleoption_cast<const QStyleOptionSpinBox*>(&option);
  if (box == nullptr || box->buttonSymbols != QAbstractSpinBox::UpDownArrows) return;
  for (const SubControl button : {SC_SpinBoxUp, SC_SpinBoxDown}) {
    const bool isUp = button == SC_SpinBoxUp;
    const auto step = isUp ? QAbstractSpinBox::StepUpEnabled : QAbstractSpinBox::StepDownEnabled;
    drawArrow(option, subControlRect(CC_SpinBox, &option, button, widget), isUp, (box->stepEnabled & step) != 0,
              painter);
  }
}

void ContrastStyle::drawSlider(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const {
  const QRect handle = subControlRect(CC_Slider, &option, SC_SliderHandle, widget);
  painter.save();
  painter.setClipRegion(QRegion(option.rect) - handle);
  drawEdge(option, subControlRect(CC_Slider, &option, SC_SliderGroove, widget), painter);
  painter.restore();
  drawEdge(option, handle, painter, isFocusedByKeys(option));
}

void ContrastStyle::drawScrollBar(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const {
  drawEdge(option, option.rect, painter);
  drawEdge(option, subControlRect(CC_ScrollBar, &option, SC_ScrollBarSlider, widget), painter);
}

// A text from left to right keeps its dots and its colon at its right.
void ContrastStyle::drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette,
                                 bool isEnabled, const QString& text, QPalette::ColorRole role) const {
  constexpr char16_t ownDirection = u'\u2068';
  const bool isMirrored = painter->layoutDirection() == Qt::RightToLeft && !text.isEmpty();
  QProxyStyle::drawItemText(painter, rect, flags, palette, isEnabled,
                            isMirrored ? QChar(ownDirection) + text + QChar(endOfIsolate) : text, role);
}

int ContrastStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                             QStyleHintReturn* answer) const {
  return hint == SH_DialogButtonBox_ButtonsHaveIcons ? 0 : QProxyStyle::styleHint(hint, option, widget, answer);
}

void useContrastStyle() {
  if (qobject_cast<ContrastStyle*>(QApplication::style()) == nullptr) QApplication::setStyle(new ContrastStyle);
}

}  // namespace Window
