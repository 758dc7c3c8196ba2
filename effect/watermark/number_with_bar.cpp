#include "effect/watermark/number_with_bar.h"

#include "effect/watermark/numbers.h"

namespace Kiln::XUL {

using namespace Effect;

void NumberWithBar::connectWidgets(SmartPtr<TextBox> textBox, SmartPtr<ScrollBar> scrollBar) {
  constexpr std::int32_t mostCharacters = 3;
  box = std::move(textBox);
  bar = std::move(scrollBar);
  if (box) {
    box->setMaximumLength(mostCharacters);
    connect(*box->typingSignal(), *this, &NumberWithBar::onText);
    connect(*box->pastingSignal(), *this, &NumberWithBar::onText);
    connect(*box->blurSignal(), *this, &NumberWithBar::onFocusLost);
  }
  if (bar) connect(*bar->scrollSignal(), *this, &NumberWithBar::onScroll);
}

// The box's handler takes the text; without a box, this does.
void NumberWithBar::enter(WStringView text) {
  if (box)
    box->setText(text);
  else
    takeText(text);
}

void NumberWithBar::load(WStringView text) {
  enter(text);
  isTouched = false;
}

void NumberWithBar::show(std::int32_t number) {
  ownChange.setPosition(bar, number - least);
  ownChange.setText(box, decimalText(number));
}

std::optional<std::int32_t> NumberWithBar::barNumber() const {
  return bar ? std::optional(bar->position() + least) : std::nullopt;
}

void NumberWithBar::onText(SmartPtr<TextChangeEventArg> change) {
  if (!ownChange.isRunning() && !takeText(change->text())) change->refuse();
}

// A box that the user only passes through changes nothing: the record may have a value that the box cannot show.
void NumberWithBar::onFocusLost(EventArg<TextBox> event) {
  if (isTouched) enter(event.source().text());
}

void NumberWithBar::onScroll(EventArg<ScrollBar> event) {
  if (ownChange.isRunning()) return;
  const std::int32_t number = event.source().position() + least;
  if (takeScrolled) takeScrolled(number);
  enter(decimalText(number));
}

// False for a text to reject.
bool NumberWithBar::takeText(WStringView text) {
  const auto number = parse(text);
  if (!number) return false;
  ownChange.setPosition(bar, *number - least);
  take(*number);
  isTouched = true;
  return true;
}

}  // namespace Kiln::XUL
