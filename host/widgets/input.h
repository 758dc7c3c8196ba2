// Widgets for input: text boxes, radio buttons, scroll bars, colour pickers.
#pragma once

#include "host/widgets/widget.h"

namespace Refhost {

// The kinds of a user's edit. A composition is unsettled text of an input method.
enum class Edit { typed, pasted, composing };

// The numbers that a text box is for, as its layout says; handlers decide what it accepts.
struct NumberRange {
  std::int32_t least;
  std::int32_t most;
  std::int32_t step;
};

// The text's number changed by so many steps, and at least and at most what the range says. A fraction goes to the next
// number in that direction; text that is no number counts as 0.
std::u16string stepped(const NumberRange& range, std::u16string_view text, std::int32_t steps);

// The interface of all text boxes for faces.
class TextBoxNode {
 public:
  virtual ~TextBoxNode() = default;
  virtual const std::u16string& content() const = 0;

  // The maximum number of UTF-16 units that the user can enter; nothing for no limit.
  virtual std::optional<std::size_t> maximumLength() const = 0;

  // Nothing for a box that is not for numbers.
  virtual const std::optional<NumberRange>& range() const = 0;

  // The user changes the box's whole text to `text`, truncated to the maximum length. False, with the text unchanged,
  // when a handler refuses or throws, or the box is disabled. Unchanged text is only reported when it settles a
  // composition.
  virtual bool edit(std::u16string_view text, Edit how) = 0;

  // The box loses the input focus.
  virtual void leave() = 0;

  // For the layout reader.
  virtual void start(std::u16string text, std::optional<std::size_t> limit, std::optional<NumberRange> range) = 0;
};

// Handlers run before the change. Setting the text fires the signals even when it is unchanged, except from a handler
// of a change to the same text, which would recurse endlessly.
template <class Interface>
class TextBoxImpl final : public WidgetImpl<Interface>, public TextBoxNode {
 public:
  using ChangeArgument = Kiln::SmartPtr<Kiln::XUL::TextChangeEventArg>;
  using ChangeSignal = HostSignal<ChangeArgument>;
  using BlurSignal = HostSignal<Kiln::XUL::EventArg<Kiln::XUL::TextBox>>;

  TextBoxImpl(WidgetWorld& world, WidgetKind kind, const std::u16string& id);

  Kiln::WString text() override { return Refhost::text(held); }
  void setText(Kiln::WStringView text) override;
  void setMaximumLength(std::int32_t units) override;
  Kiln::SmartPtr<Kiln::Signal<ChangeArgument>> typingSignal() override { return typings; }
  Kiln::SmartPtr<Kiln::Signal<ChangeArgument>> pastingSignal() override { return pastes; }
  Kiln::SmartPtr<Kiln::Signal<Kiln::XUL::EventArg<Kiln::XUL::TextBox>>> blurSignal() override { return blurs; }

  const std::u16string& content() const override { return held; }
  std::optional<std::size_t> maximumLength() const override { return limit; }
  const std::optional<NumberRange>& range() const override { return numbers; }
  bool edit(std::u16string_view text, Edit how) override;
  void leave() override;
  void start(std::u16string text, std::optional<std::size_t> startLimit,
             std::optional<NumberRange> startRange) override;

 private:
  bool change(std::u16string text, Edit how);

  std::u16string held;
  std::optional<std::size_t> limit;
  std::optional<NumberRange> numbers;
  const std::u16string* told = nullptr;  // the change being reported to handlers
  unsigned changesMade = 0;
  bool isComposition = false;  // whether the text contains one
  Kiln::SmartPtr<ChangeSignal> typings;
  Kiln::SmartPtr<ChangeSignal> pastes;
  Kiln::SmartPtr<BlurSignal> blurs;
};

using TextBox = TextBoxImpl<Kiln::XUL::TextBox>;
using IntegerTextBox = TextBoxImpl<Kiln::XUL::IntegerTextBox>;

// A choice of the enclosing <radiogroup>; at most one is checked.
class RadioButton final : public ToggleImpl<Kiln::XUL::RadioButton> {
 public:
  using ToggleImpl::ToggleImpl;

  void setChecked(bool mark) override;

  // The user chooses it; does nothing while disabled or already checked.
  void choose();

 private:
  void uncheckOthers();
};

class ScrollBar final : public WidgetImpl<Kiln::XUL::ScrollBar> {
 public:
  ScrollBar(WidgetWorld& world, WidgetKind kind, const std::u16string& id);

  // Setting a position fires the signal even when it is unchanged, except from a handler of the same position.
  std::int32_t position() override { return current; }
  void setPosition(std::int32_t position) override;
  Kiln::SmartPtr<Kiln::Signal<Kiln::XUL::EventArg<Kiln::XUL::ScrollBar>>> scrollSignal() override { return scrolls; }

  std::int32_t least() const { return lowest; }
  std::int32_t most() const { return highest; }

  // The user moves the bar; `position` is clamped. Does nothing while disabled or when it is unchanged.
  void scroll(std::int32_t position);

  // For the layout reader.
  void start(std::int32_t from, std::int32_t to, std::int32_t position);

 private:
  void move(std::int32_t position);

  std::int32_t lowest = 0;
  std::int32_t highest = 100;
  std::int32_t current = 0;
  std::optional<std::int32_t> told;
  Kiln::SmartPtr<HostSignal<Kiln::XUL::EventArg<Kiln::XUL::ScrollBar>>> scrolls;
};

class ColorPicker final : public WidgetImpl<Kiln::XUL::ColorPicker> {
 public:
  ColorPicker(WidgetWorld& world, WidgetKind kind, const std::u16string& id);

  std::uint32_t colour() override { return picked; }
  Kiln::SmartPtr<Kiln::Signal<Kiln::XUL::EventArg<Kiln::XUL::ColorPicker>>> changeSignal() override { return changes; }

  // The user picks a colour, 0xRRGGBB, possibly the current one; does nothing while disabled.
  void pick(std::uint32_t colour);

 private:
  std::uint32_t picked = 0;
  Kiln::SmartPtr<HostSignal<Kiln::XUL::EventArg<Kiln::XUL::ColorPicker>>> changes;
};

}  // namespace Refhost
