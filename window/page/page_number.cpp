#include "window/page/page_number.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QStyle>

#include <algorithm>

namespace Window {

PageNumber::PageNumber(QWidget* parent) : QSpinBox(parent) {
  setButtonSymbols(QAbstractSpinBox::NoButtons);
  setAlignment(Qt::AlignCenter);
  setKeyboardTracking(false);
  setCorrectionMode(QAbstractSpinBox::CorrectToNearestValue);
  connect(this, &QSpinBox::valueChanged, this, &PageNumber::entered);
}

// The line has as much room as one of its own, whatever the language's font.
QSize PageNumber::sizeHint() const {
  const int frame = style()->pixelMetric(QStyle::PM_SpinBoxFrameWidth, nullptr, this);
  return QSpinBox::sizeHint().expandedTo({0, lineEdit()->sizeHint().height() + 2 * frame});
}

QSize PageNumber::minimumSizeHint() const { return {QSpinBox::minimumSizeHint().width(), sizeHint().height()}; }

// The tip is the line's: readers would tell one of the box after its name.
void PageNumber::setName(const QString& name, const QString& tip) {
  lineEdit()->setToolTip(tip);
  for (QWidget* each : {static_cast<QWidget*>(this), static_cast<QWidget*>(lineEdit())}) each->setAccessibleName(name);
}

void PageNumber::show(const QString& words, int number, int count) {
  if (words == shownWords && value() == number && shownCount == count) return;
  shownWords = words;
  shownCount = count;
  const QSignalBlocker quiet(this);
  const auto part = [&words, count](int index) {
    return count > 0 ? words.section("%1", index, index).replace("%2", QString::number(count)) : QString();
  };
  setPrefix(part(0));
  setSuffix(part(1));
  setSpecialValueText(count > 0 ? QString() : QStringLiteral("\u2013"));
  setRange(std::min(1, count), count);
  setValue(number);
}

// Return enters the number, and does not press OK; the keys that turn pages do so here too.
void PageNumber::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_PageUp:
    case Qt::Key_PageDown: return event->ignore();
    case Qt::Key_Return:
    case Qt::Key_Enter: QSpinBox::keyPressEvent(event); return event->accept();
    default: QSpinBox::keyPressEvent(event);
  }
}

}  // namespace Window
