#include "window/preferences/button_row.h"

#include "window/widgets/access_keys.h"

#include <QPushButton>

namespace Window {
namespace {

// Pixels beside a button's text.
constexpr int besideText = 14;

}  // namespace

ButtonRow::ButtonRow(Messages& rowMessages)
    : QBoxLayout(QBoxLayout::LeftToRight),
      messages(rowMessages),
      end(new QHBoxLayout) {
  addLayout(end);
}

void ButtonRow::divide() {
  addStretch();
  end = new QHBoxLayout;
  addLayout(end);
}

void ButtonRow::fitInto(int width) {
  setDirection(LeftToRight);
  if (sizeHint().width() > width) setDirection(TopToBottom);
}

QPushButton* ButtonRow::add(const char* name, QWidget* parent, const std::function<void()>& action,
                            const QKeySequence& keys) {
  auto* button = new QPushButton(parent);
  button->setObjectName(name);
  end->addWidget(button);
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
