#include "window/widgets/notice.h"

#include <QAccessible>
#include <QLabel>
#include <QTimer>
#include <QToolTip>

#include <algorithm>
#include <chrono>

namespace Window {
namespace {

// Long enough to read a sentence twice.
constexpr auto untilGone = std::chrono::seconds(8);

constexpr int noticeMargin = 5;
constexpr int widestNotice = 320;

QLabel& noticeOf(QWidget& window) {
  if (auto* known = window.findChild<QLabel*>("notice", Qt::FindDirectChildrenOnly)) return *known;
  auto* label = new QLabel(&window);
  label->setObjectName("notice");
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setPalette(QToolTip::palette());
  label->setBackgroundRole(QPalette::ToolTipBase);
  label->setForegroundRole(QPalette::ToolTipText);
  label->setAutoFillBackground(true);
  label->setFrameShape(QFrame::Box);
  label->setMargin(noticeMargin);
  label->setAttribute(Qt::WA_TransparentForMouseEvents);
  auto* gone = new QTimer(label);
  gone->setSingleShot(true);
  gone->setInterval(untilGone);
  QObject::connect(gone, &QTimer::timeout, label, &QWidget::hide);
  return *label;
}

}  // namespace

void showNotice(QWidget& widget, const QString& sentence) {
  QWidget& window = *widget.window();
  QLabel& label = noticeOf(window);
  label.setText(sentence);
  label.setAccessibleName(sentence);
  const int width = std::min(widestNotice, label.fontMetrics().horizontalAdvance(sentence) + 4 * noticeMargin);
  label.resize(width, label.heightForWidth(width));
  const QPoint below = widget.mapTo(&window, QPoint(0, widget.height() + 2));
  const int most = std::max(0, window.width() - label.width());
  label.move(std::clamp(below.x(), 0, most), std::min(below.y(), std::max(0, window.height() - label.height())));
  label.raise();
  label.show();
  label.findChild<QTimer*>()->start();
  QAccessibleEvent alert(&label, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

}  // namespace Window
