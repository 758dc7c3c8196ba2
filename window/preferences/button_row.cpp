#include "window/preferences/button_row.h"

#include "window/widgets/access_keys.h"

#include <QPushButton>

#include <algorithm>

namespace Window {
namespace {

// Pixels beside a button's text.
constexpr int besideText = 14;

}  // namespace

ButtonRow::ButtonRow(Messages& rowMessages) : QBoxLayout(QBoxLayout::LeftToRight), messages(rowMessages) { addEnd(); }

void ButtonRow::addEnd() {
  ends.push_back(new QBoxLayout(QBoxLayout::LeftToRight));
  addLayout(ends.back());
}

void ButtonRow::divide() {
  addStretch();
  addEnd();
}

void ButtonRow::fitInto(int width) {
  const auto widthOf = [this](const QLayout& end) {
    int wanted = 0;
    for (const auto& [button, name] : named) {
      if (end.indexOf(button) < 0) continue;
      button->ensurePolished();
      wanted += std::max(button->sizeHint().width(), button->minimumWidth()) + spacing();
    }
    return wanted;
  };
  int all = 0;
  for (QBoxLayout* end : ends) {
    const int wanted = widthOf(*end);
    all += wanted;
    end->setDirection(wanted > width ? TopToBottom : LeftToRight);
  }
  setDirection(all > width ? TopToBottom : LeftToRight);
}

QPushButton* ButtonRow::add(const char* name, QWidget* parent, const std::function<void()>& action,
                            const QKeySequence& keys) {
  auto* button = new QPushButton(parent);
  button->setObjectName(name);
  ends.back()->addWidget(button);
  button->setProperty(keysElsewhere, !keys.isEmpty());
  button->setToolTip(keys.toString(QKeySequence::NativeText));
  connect(button, &QPushButton::clicked, this, [this, action] { messages.guarded(action); });
  named.emplace_back(button, name);
  return button;
}

void ButtonRow::setTexts(const Texts& texts) {
  for (const auto& [button, name] : named) {
    button->setText(texts(name));
    button->setMinimumWidth(button->fontMetrics().horizontalAdvance(button->text()) + 2 * besideText);
  }
}

std::vector<QPushButton*> ButtonRow::buttons() const {
  std::vector<QPushButton*> all;
  for (const auto& [button, name] : named) all.push_back(button);
  return all;
}

}  // namespace Window
