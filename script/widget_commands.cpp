#include "script/widget_commands.h"

#include "formats/text.h"
#include "host/widgets/input.h"
#include "host/widgets/list.h"
#include "script/session.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>

namespace Script {
namespace {

using Formats::toUtf8;

// Keeps a widget alive while its handlers run, which may close the dialog that owns it.
using Held = Kiln::SmartPtr<Kiln::XUL::Widget>;

// The widget with that id, if the user can operate it now. `deed` describes the required kind in the error message.
template <class Kind>
Kind& operable(Session& session, const std::u16string& id, const std::string& deed) {
  Refhost::WidgetNode& widget = session.widget(id);
  auto* kind = dynamic_cast<Kind*>(&widget);
  if (kind == nullptr) throw std::runtime_error("The widget " + inQuotes(id) + " cannot " + deed + ".");
  if (!widget.isShown()) throw std::runtime_error("The widget " + inQuotes(id) + " is hidden.");
  if (!widget.isOperable()) throw std::runtime_error("The widget " + inQuotes(id) + " is disabled.");
  return *kind;
}

std::int32_t toNumber(const std::u16string& word) {
  const std::string digits = toUtf8(word);
  std::int32_t number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error == std::errc() && end == digits.data() + digits.size()) return number;
  throw std::runtime_error(inQuotes(word) + " is no whole number.");
}

// The index of the first item with that value.
std::int32_t indexOf(Refhost::SelectorNode& list, const std::u16string& id, const std::u16string& value) {
  for (std::int32_t i = 0; i < list.items().count(); ++i)
    if (list.items().at(i)->value().view() == value) return i;
  throw std::runtime_error("The widget " + inQuotes(id) + " has no item of the value " + inQuotes(value) + ".");
}

std::string noItemAt(Refhost::SelectorNode& list, const std::u16string& id, const std::u16string& index) {
  return "The widget " + inQuotes(id) + " has no item at " + toUtf8(index) + "; it has " +
         std::to_string(list.items().count()) + ".";
}

}  // namespace

std::string inQuotes(const std::u16string& name) { return '"' + toUtf8(name) + '"'; }

Json type(Session& session, const Arguments& words) {
  auto& box = operable<Refhost::TextBoxNode>(session, words[0], "be typed into");
  const Held held(&session.widget(words[0]).asWidget());
  const bool accepted = box.edit(words[1], Refhost::Edit::typed);
  return {{"accepted", accepted}, {"text", text(box.content())}};
}

Json blur(Session& session, const Arguments& words) {
  auto& box = operable<Refhost::TextBoxNode>(session, words[0], "lose the input focus");
  const Held held(&session.widget(words[0]).asWidget());
  box.leave();
  return {{"text", text(box.content())}};
}

Json scroll(Session& session, const Arguments& words) {
  auto& bar = operable<Refhost::ScrollBar>(session, words[0], "be scrolled");
  const std::int32_t position = toNumber(words[1]);
  if (position < bar.least() || position > bar.most())
    throw std::runtime_error("The widget " + inQuotes(words[0]) + " has no position " + toUtf8(words[1]) +
                             "; it goes from " + std::to_string(bar.least()) + " to " + std::to_string(bar.most()) +
                             ".");
  bar.scroll(position);
  return Json::object();
}

Json pick(Session& session, const Arguments& words) {
  auto& picker = operable<Refhost::ColorPicker>(session, words[0], "have a colour picked");
  const std::string colour = toUtf8(words[1]);
  std::uint32_t value = 0;
  const auto* end = colour.data() + colour.size();
  if (colour.size() != 7 || colour.front() != '#' || std::from_chars(colour.data() + 1, end, value, 16).ptr != end)
    throw std::runtime_error(inQuotes(words[1]) + " is no colour of the form #RRGGBB.");
  picker.pick(value);
  return Json::object();
}

Json drop(Session& session, const Arguments& words) {
  auto& source = operable<Refhost::ListBox>(session, words[0], "have items dragged from it");
  if (!source.isDragSource())
    throw std::runtime_error("The widget " + inQuotes(words[0]) + " cannot have items dragged from it.");
  indexOf(source, words[0], words[1]);
  auto& target = operable<Refhost::ImageBox>(session, words[2], "have items dropped on it");
  if (!target.isDropTarget())
    throw std::runtime_error("The widget " + inQuotes(words[2]) + " cannot have items dropped on it.");
  target.drop(words[1]);
  return Json::object();
}

Json dropIndex(Session& session, const Arguments& words) {
  const std::int32_t index = toNumber(words[1]);
  auto& source = operable<Refhost::ListBox>(session, words[0], "have items dragged from it");
  const auto item = source.items().at(index);
  if (!item) throw std::runtime_error(noItemAt(source, words[0], words[1]));
  return drop(session, {words[0], item->value().str(), words[2]});
}

Json menu(Session& session, const Arguments& words) {
  auto& image = operable<Refhost::ImageBox>(session, words[0], "show a context menu");
  if (std::ranges::none_of(image.menu(), [&](const auto& item) { return item.text == words[1]; }))
    throw std::runtime_error("The widget " + inQuotes(words[0]) + " has no " + inQuotes(words[1]) +
                             " in its context menu.");
  image.choose(words[1]);
  return Json::object();
}

Json click(Session& session, const Arguments& words) {
  Refhost::WidgetNode& widget = session.widget(words[0]);
  if (dynamic_cast<Refhost::CheckBox*>(&widget) != nullptr)
    operable<Refhost::CheckBox>(session, words[0], "be clicked").click();
  else if (dynamic_cast<Refhost::RadioButton*>(&widget) != nullptr)
    operable<Refhost::RadioButton>(session, words[0], "be clicked").choose();
  else
    operable<Refhost::Button>(session, words[0], "be clicked").click();
  return Json::object();
}

Json select(Session& session, const Arguments& words) {
  auto& list = operable<Refhost::SelectorNode>(session, words[0], "have items selected");
  list.choose(indexOf(list, words[0], words[1]));
  return Json::object();
}

Json selectIndex(Session& session, const Arguments& words) {
  const std::int32_t index = toNumber(words[1]);
  auto& list = operable<Refhost::SelectorNode>(session, words[0], "have items selected");
  if (index < 0 || index >= list.items().count()) throw std::runtime_error(noItemAt(list, words[0], words[1]));
  list.choose(index);
  return Json::object();
}

}  // namespace Script
