// What a user writes, moves and picks in: text boxes, radio buttons, scroll bars, colour pickers.
#pragma once

#include "host/widgets/widget.h"

namespace Refhost {

// How a user changes a text. A composition is an input method's text that is not settled yet.
enum class Edit { typed, pasted, composing };

// What faces see of a text box, whichever it is.
class TextBoxNode {
 public:
  virtual ~TextBoxNode() = default;
  virtual const std::u16string& content() const = 0;

  // The most UTF-16 units that the user can enter; nothing for any number.
  virtual std::optional<std::size_t> maximumLength() const = 0;

  // The user's edit makes `text` the box's whole text, cut to the maximum length. False when a handler refuses it, or
  // throws, or the box cannot be operated; the box then keeps what it has. The text that it has already is told again
  // only when it settles a composition.
  virtual bool edit(std::u16string_view text, Edit how) = 0;

  // The box loses the input focus.
  virtual void leave() = 0;

  // For the layout reader.
  virtual void start(std::u16string text, std::optional<std::size_t> limit) = 0;
};

// A change is told before it is made. A text that is set fires the signals even when the box has it already, except
// while a change of this box to that very text is being told, where a handler that sets what it was told would never
// end.
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
  bool edit(std::u16string_view text, Edit how) override;
  void leave() override;
  void start(std::u16string text, std::optional<std::size_t> startLimit) override;

 private:
  bool change(std::u16string text, Edit how);

  std::u16string held;
  std::optional<std::size_t> limit;
  const std::u16string* told = nullptr;  // the change that is being told
  unsigned changesMade = 0;
  bool isComposition = false;  // whether the text holds one
  Kiln::SmartPtr<ChangeSignal> typings;
  Kiln::SmartPtr<ChangeSignal> pastes;
  Kiln::SmartPtr<BlurSignal> blurs;
};

using TextBox = TextBoxImpl<Kiln::XUL::TextBox>;
using IntegerTextBox = TextBoxImpl<Kiln::XUL::IntegerTextBox>;

// One of the choices of the <radiogroup> around it, of which at most one is checked.
class RadioButton final : public ToggleImpl<Kiln::XUL::RadioButton> {
 public:
  using ToggleImpl::ToggleImpl;

  void setChecked(bool mark) override;

  // The user chooses it; nothing happens while it cannot be operated, or when it is the one chosen.
  void choose();

 private:
  void uncheckOthers();
};

class ScrollBar final : public WidgetImpl<Kiln::XUL::ScrollBar> {
 public:
  ScrollBar(WidgetWorld& world, WidgetKind kind, const std::u16string& id);

  // A position that is set fires the signal even when the bar is there already, except while that very position is
  // being told.
  std::int32_t position() override { return current; }
  void setPosition(std::int32_t position) override;
  Kiln::SmartPtr<Kiln::Signal<Kiln::XUL::EventArg<Kiln::XUL::ScrollBar>>> scrollSignal() override { return scrolls; }

  std::int32_t least() const { return lowest; }
  std::int32_t most() const { return highest; }

  // The user moves the bar, to its nearer end when `position` lies outside; nothing happens while it cannot be
  // operated, or when it is there already.
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

  // The user picks a colour, 0xRRGGBB, perhaps the one it has; nothing happens while it cannot be operated.
  void pick(std::uint32_t colour);

 private:
  std::uint32_t picked = 0;
  Kiln::SmartPtr<HostSignal<Kiln::XUL::EventArg<Kiln::XUL::ColorPicker>>> changes;
};

}  // namespace Refhost
