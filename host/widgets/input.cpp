#include "host/widgets/input.h"

#include "formats/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace Refhost {
namespace {

class TextChange final : public Kiln::XUL::TextChangeEvent {
 public:
  TextChange(Kiln::SmartPtr<Kiln::XUL::TextBox> changedBox, const std::u16string& newText, bool isComposition)
      : box(std::move(changedBox)),
        proposed(newText),
        composition(isComposition) {}
  Kiln::WString text() override { return Refhost::text(proposed); }
  bool isProvisional() override { return composition; }
  void refuse() override { refused = true; }
  Kiln::SmartPtr<Kiln::XUL::TextBox> source() override { return box; }
  bool refused = false;

 private:
  Kiln::SmartPtr<Kiln::XUL::TextBox> box;
  std::u16string proposed;
  bool composition;
};

// Sets a variable for the duration of a scope.
template <class T>
class During {
 public:
  During(T& target, T value) : variable(target), before(std::exchange(target, std::move(value))) {}
  During(const During&) = delete;
  During& operator=(const During&) = delete;
  ~During() { variable = std::move(before); }

 private:
  T& variable;
  T before;
};

// The text truncated to `units`, never within a surrogate pair.
std::u16string_view cut(std::u16string_view text, std::size_t units) {
  if (text.size() <= units) return text;
  const bool splitsPair = units > 0 && (text[units - 1] & 0xFC00) == 0xD800 && (text[units] & 0xFC00) == 0xDC00;
  return text.substr(0, splitsPair ? units - 1 : units);
}

void forEachRadio(WidgetNode& parent, const std::function<void(RadioButton&)>& visit) {
  for (WidgetNode* child : parent.children()) {
    if (auto* radio = dynamic_cast<RadioButton*>(child)) visit(*radio);
    forEachRadio(*child, visit);
  }
}

}  // namespace

std::u16string stepped(const NumberRange& range, std::u16string_view text, std::int32_t steps) {
  const std::string digits = Formats::toUtf8(text);
  double number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  number = std::isfinite(number) ? std::clamp(number, -1e9, 1e9) : 0;
  // From 72.5, a step up leads to 73, and a step down to 72.
  const double start = steps > 0 ? std::floor(number) : std::ceil(number);
  const double reached = std::clamp(start + double(steps) * range.step, double(range.least), double(range.most));
  return Formats::toUtf16(std::to_string(static_cast<std::int32_t>(reached)));
}

template <class Interface>
TextBoxImpl<Interface>::TextBoxImpl(WidgetWorld& world, WidgetKind kind, const std::u16string& id)
    : WidgetImpl<Interface>(world, kind, id),
      typings(make<ChangeSignal>(world.trace, "text", id)),
      pastes(make<ChangeSignal>(world.trace, "text", id)),
      blurs(make<BlurSignal>(world.trace, "blur", id)) {}

template <class Interface>
void TextBoxImpl<Interface>::setText(Kiln::WStringView text) {
  std::u16string wanted(text.view());
  this->record("setText", wanted);
  if (told != nullptr && *told == wanted) return;
  change(std::move(wanted), Edit::typed);
}

template <class Interface>
void TextBoxImpl<Interface>::setMaximumLength(std::int32_t units) {
  limit = static_cast<std::size_t>(std::max(units, 0));
  this->changed();
}

template <class Interface>
bool TextBoxImpl<Interface>::edit(std::u16string_view text, Edit how) {
  if (!this->isOperable()) return false;
  std::u16string wanted(limit ? cut(text, *limit) : text);
  const bool settles = isComposition && how != Edit::composing;
  if (wanted == held && !settles) return true;
  bool taken = false;
  this->world.dispatch([&] { taken = change(std::move(wanted), how); });
  return taken;
}

template <class Interface>
void TextBoxImpl<Interface>::leave() {
  this->world.dispatch(
      [this] { blurs->fire(Kiln::XUL::EventArg<Kiln::XUL::TextBox>(Kiln::SmartPtr<Kiln::XUL::TextBox>(this))); });
}

template <class Interface>
void TextBoxImpl<Interface>::start(std::u16string text, std::optional<std::size_t> startLimit,
                                   std::optional<NumberRange> startRange) {
  held = std::move(text);
  limit = startLimit;
  numbers = startRange;
}

// Gives way to a change that a handler makes meanwhile.
template <class Interface>
bool TextBoxImpl<Interface>::change(std::u16string text, Edit how) {
  const Kiln::SmartPtr<Kiln::XUL::Widget> self(this);
  const auto event = make<TextChange>(this, text, how == Edit::composing);
  const unsigned changesBefore = changesMade;
  {
    const During<const std::u16string*> telling(told, &text);
    (how == Edit::pasted ? pastes : typings)->fire(event);
  }
  if (event->refused) return false;
  if (changesMade != changesBefore) return true;
  ++changesMade;
  held = std::move(text);
  isComposition = how == Edit::composing;
  this->changed();
  return true;
}

template class TextBoxImpl<Kiln::XUL::TextBox>;
template class TextBoxImpl<Kiln::XUL::IntegerTextBox>;

void RadioButton::setChecked(bool mark) {
  if (mark) uncheckOthers();
  ToggleImpl::setChecked(mark);
}

void RadioButton::choose() {
  if (!isOperable() || checked) return;
  uncheckOthers();
  changeMark(true);
  fire();
}

void RadioButton::uncheckOthers() {
  WidgetNode* group = parent();
  while (group != nullptr && group->attribute("element") != u"radiogroup") group = group->parent();
  if (group == nullptr) return;
  forEachRadio(*group, [this](RadioButton& radio) {
    if (&radio != this) radio.changeMark(false);
  });
}

ScrollBar::ScrollBar(WidgetWorld& widgetWorld, WidgetKind kind, const std::u16string& id)
    : WidgetImpl(widgetWorld, kind, id),
      scrolls(make<HostSignal<Kiln::XUL::EventArg<Kiln::XUL::ScrollBar>>>(widgetWorld.trace, "scroll", id)) {}

void ScrollBar::setPosition(std::int32_t position) {
  record("setPosition", double(position));
  const std::int32_t reached = std::clamp(position, lowest, highest);
  if (told == reached) return;
  move(reached);
}

void ScrollBar::scroll(std::int32_t position) {
  const std::int32_t reached = std::clamp(position, lowest, highest);
  if (!isOperable() || reached == current) return;
  world.dispatch([this, reached] { move(reached); });
}

void ScrollBar::start(std::int32_t from, std::int32_t to, std::int32_t position) {
  lowest = from;
  highest = std::max(from, to);
  current = std::clamp(position, lowest, highest);
}

void ScrollBar::move(std::int32_t position) {
  const Kiln::SmartPtr<Kiln::XUL::ScrollBar> self(this);
  const bool moves = position != current;
  current = position;
  if (moves) changed();
  const During<std::optional<std::int32_t>> telling(told, position);
  scrolls->fire(Kiln::XUL::EventArg<Kiln::XUL::ScrollBar>(self));
}

ColorPicker::ColorPicker(WidgetWorld& widgetWorld, WidgetKind kind, const std::u16string& id)
    : WidgetImpl(widgetWorld, kind, id),
      changes(make<HostSignal<Kiln::XUL::EventArg<Kiln::XUL::ColorPicker>>>(widgetWorld.trace, "change", id)) {}

void ColorPicker::pick(std::uint32_t colour) {
  if (!isOperable()) return;
  picked = colour & 0xFFFFFF;
  changed();
  world.dispatch([this] { changes->fire(Kiln::XUL::EventArg<Kiln::XUL::ColorPicker>(this)); });
}

}  // namespace Refhost
