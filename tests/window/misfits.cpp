#include "tests/window/misfits.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QStyleOptionFrame>
#include <QTabBar>

namespace Testing {
namespace {

std::string describe(const QWidget& widget) {
  QString text;
  if (auto* label = qobject_cast<const QLabel*>(&widget)) text = label->text();
  if (auto* button = qobject_cast<const QAbstractButton*>(&widget)) text = button->text();
  return std::string(widget.metaObject()->className()) + " " + widget.objectName().toStdString() + " \"" +
         text.toStdString() + "\"";
}

int widthOf(const QString& text, const QWidget& widget) {
  return widget.fontMetrics().size(Qt::TextShowMnemonic, text).width();
}

// The width that a widget's text needs, and the available width.
struct Width {
  int needed = 0;
  int given = 0;
};

Width widthIn(const QLabel& label) {
  return label.wordWrap() ? Width{} : Width{label.sizeHint().width(), label.width()};
}

Width widthIn(const QAbstractButton& button) {
  // A push button may be narrower than the desktop's default, as long as its text fits.
  const bool isPush = qobject_cast<const QPushButton*>(&button) != nullptr;
  const int iconWidth = button.icon().isNull() ? 0 : button.iconSize().width() + 4;
  return {isPush ? widthOf(button.text(), button) + iconWidth + 8 : button.sizeHint().width(), button.width()};
}

// Face names may have any length.
Width widthIn(const QComboBox& combo) {
  if (combo.sizeAdjustPolicy() == QComboBox::AdjustToMinimumContentsLengthWithIcon) return {};
  QStyleOptionComboBox option;
  option.initFrom(&combo);
  int widest = 0;
  for (int i = 0; i < combo.count(); ++i) {
    const int iconWidth = combo.itemIcon(i).isNull() ? 0 : combo.iconSize().width() + 4;
    widest = std::max(widest, widthOf(combo.itemText(i), combo) + iconWidth);
  }
  const QRect field = combo.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &combo);
  return {widest, field.width()};
}

// A line edit scrolls, but short texts such as numbers must fit.
Width widthIn(const QLineEdit& line) {
  if (line.text().size() > 5) return {};
  QStyleOptionFrame option;
  option.initFrom(&line);
  const QRect contents = line.style()->subElementRect(QStyle::SE_LineEditContents, &option, &line);
  return {widthOf(line.text(), line) + 4, contents.width()};
}

// User-defined names may have any length; the initial items must fit.
Width widthIn(const QListWidget& list) {
  constexpr int beside = 6;
  int widest = 0;
  for (int row = 0; row < list.count(); ++row) {
    const int iconWidth = list.item(row)->icon().isNull() ? 0 : list.iconSize().width() + 4;
    widest = std::max(widest, widthOf(list.item(row)->text(), list) + iconWidth + beside);
  }
  return {widest, list.viewport()->width()};
}

Width widthIn(const QTabBar& bar) {
  Width tightest;
  for (int tab = 0; tab < bar.count(); ++tab) {
    const Width width{widthOf(bar.tabText(tab), bar), bar.tabRect(tab).width()};
    if (width.needed - width.given >= tightest.needed - tightest.given) tightest = width;
  }
  return tightest;
}

Width widthIn(const QWidget& widget) {
  if (auto* label = qobject_cast<const QLabel*>(&widget)) return widthIn(*label);
  if (auto* button = qobject_cast<const QAbstractButton*>(&widget)) return widthIn(*button);
  if (auto* combo = qobject_cast<const QComboBox*>(&widget)) return widthIn(*combo);
  if (auto* line = qobject_cast<const QLineEdit*>(&widget)) return widthIn(*line);
  if (auto* list = qobject_cast<const QListWidget*>(&widget)) return widthIn(*list);
  if (auto* bar = qobject_cast<const QTabBar*>(&widget)) return widthIn(*bar);
  return {};
}

int heightNeeded(const QWidget& widget) {
  if (qobject_cast<const QAbstractSpinBox*>(widget.parentWidget())) return 0;  // the frame is the parent's
  if (auto* label = qobject_cast<const QLabel*>(&widget))
    return label->wordWrap() ? label->heightForWidth(label->width()) : label->sizeHint().height();
  const bool hasText = qobject_cast<const QAbstractButton*>(&widget) || qobject_cast<const QComboBox*>(&widget) ||
                       qobject_cast<const QLineEdit*>(&widget);
  return hasText ? widget.sizeHint().height() : 0;
}

// The children managed by a layout; others, such as parts of a scroll area, have fixed positions.
std::vector<const QWidget*> arranged(const QWidget& parent) {
  std::vector<const QWidget*> children;
  if (parent.layout() == nullptr) return children;
  for (const QWidget* child : parent.findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
    if (child->isVisible() && !child->isWindow()) children.push_back(child);
  return children;
}

void check(const QWidget& parent, std::vector<std::string>& found) {
  const auto children = arranged(parent);
  for (std::size_t i = 0; i < children.size(); ++i) {
    const QWidget& child = *children[i];
    if (!parent.rect().contains(child.geometry())) found.push_back(describe(child) + " reaches out of its parent");
    for (std::size_t j = 0; j < i; ++j)
      if (children[j]->geometry().intersects(child.geometry()))
        found.push_back(describe(child) + " lies over " + describe(*children[j]));
  }
}

}  // namespace

std::vector<std::string> misfits(const QWidget& root) {
  std::vector<std::string> found;
  check(root, found);
  for (const QWidget* widget : root.findChildren<QWidget*>()) {
    if (!widget->isVisible()) continue;
    check(*widget, found);
    const Width width = widthIn(*widget);
    if (width.needed > width.given)
      found.push_back(describe(*widget) + " is " + std::to_string(width.needed - width.given) + " too narrow");
    if (heightNeeded(*widget) > widget->height()) found.push_back(describe(*widget) + " is too low");
  }
  return found;
}

}  // namespace Testing
