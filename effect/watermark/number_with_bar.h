// A number in a text box with a scroll bar: entered in either, shown in both.
#pragma once

#include "effect/watermark/own_change.h"
#include "kiln/widgets.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace Kiln::XUL {

class NumberWithBar final : public SignalTarget {
 public:
  // The number that a text of the box means; nothing for a text to reject.
  using Parse = std::optional<std::int32_t>(std::u16string_view text);
  using Take = std::function<void(std::int32_t number)>;

  // `numberAtStart` is the number of the bar's position 0. `taker` is called with each number that is entered, after
  // the bar has moved; `scrollTaker`, if any, before that with each number that the user scrolls to.
  NumberWithBar(std::int32_t numberAtStart, Parse& parser, Take taker, Take scrollTaker = {})
      : least(numberAtStart),
        parse(parser),
        take(std::move(taker)),
        takeScrolled(std::move(scrollTaker)) {}

  // Connects the widgets; each may be null.
  void connectWidgets(SmartPtr<TextBox> textBox, SmartPtr<ScrollBar> scrollBar);

  // Enters a text as the user does.
  void enter(WStringView text);

  // The same with the text of a record, which counts as untouched.
  void load(WStringView text);

  // Shows a number without taking it.
  void show(std::int32_t number);

  // The number at the bar's position; nothing without a bar.
  std::optional<std::int32_t> barNumber() const;

 private:
  void onText(SmartPtr<TextChangeEventArg> change);
  void onFocusLost(EventArg<TextBox> event);
  void onScroll(EventArg<ScrollBar> event);
  bool takeText(WStringView text);

  const std::int32_t least;
  Parse& parse;
  const Take take;
  const Take takeScrolled;
  SmartPtr<TextBox> box;
  SmartPtr<ScrollBar> bar;
  OwnChange ownChange;
  bool isTouched = false;  // the user has changed the number
};

}  // namespace Kiln::XUL
