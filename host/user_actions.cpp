#include "host/user_actions.h"

#include "formats/overlay_index.h"
#include "formats/text.h"
#include "formats/watermark_record.h"
#include "host/chrome/layout.h"
#include "host/gui.h"

#include <array>
#include <cstdio>
#include <exception>

namespace Refhost {
namespace {

// Restores a variable at the end of a scope.
template <class T>
class Restoring {
 public:
  explicit Restoring(T& target) : variable(target), before(target) {}
  Restoring(const Restoring&) = delete;
  Restoring& operator=(const Restoring&) = delete;
  ~Restoring() { variable = std::move(before); }

 private:
  T& variable;
  T before;
};

std::u16string wideNumber(std::int32_t number) { return Formats::toUtf16(std::to_string(number)); }

std::u16string valueAt(SelectorNode& list, std::int32_t index) {
  const auto item = list.items().at(index);
  return item ? item->value().str() : std::u16string();
}

std::int32_t firstOf(SelectorNode& list, std::u16string_view value) {
  for (std::int32_t i = 0; i < list.items().count(); ++i)
    if (list.items().at(i)->value().view() == value) return i;
  return -1;
}

// The index of the item that is dragged: the selected one, or the first one with that value.
std::int32_t draggedIndex(SelectorNode& list, std::u16string_view value) {
  const std::int32_t selected = list.selection();
  return selected >= 0 && valueAt(list, selected) == value ? selected : firstOf(list, value);
}

// Whether the value was made up for what a user created, and is another one when it is created again.
bool isMadeUp(std::u16string_view value) {
  return value.starts_with(Formats::madeIdStart) || value.ends_with(Formats::overlayEnding);
}

// Whether the value names that item, in another run as well.
bool isTelling(SelectorNode& list, std::int32_t index) {
  const std::u16string value = valueAt(list, index);
  return !isMadeUp(value) && firstOf(list, value) == index;
}

WidgetNode& nodeOf(SelectorNode& list) { return dynamic_cast<WidgetNode&>(list); }
WidgetNode& nodeOf(TextBoxNode& box) { return dynamic_cast<WidgetNode&>(box); }

// The list in the widget's tab or dialog that an item with that value can be dragged from; null for none.
ListBox* dragSource(WidgetNode& target, const std::u16string& value) {
  WidgetNode* root = &target;
  while (root->parent() != nullptr) root = root->parent();
  ListBox* source = nullptr;
  walk(*root, [&](WidgetNode& node) {
    auto* list = dynamic_cast<ListBox*>(&node);
    if (list != nullptr && source == nullptr && list->isDragSource() && firstOf(*list, value) >= 0) source = list;
  });
  return source;
}

}  // namespace

void UserActions::act(const UserAction& action, const std::function<void()>& deed) { act(action, Name::none, deed); }

void UserActions::actWithName(const UserAction& action, const std::function<void()>& deed) {
  act(action, Name::asked, deed);
}

void UserActions::act(const UserAction& action, Name name, const std::function<void()>& deed) {
  struct Entry {
    Entry(std::vector<const UserAction*>& all, const UserAction& entered) : actions(all) { all.push_back(&entered); }
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;
    ~Entry() { actions.pop_back(); }
    std::vector<const UserAction*>& actions;
  };
  const Entry entry(doing, action);
  actAndTell(action, name, deed);
}

void UserActions::actAndTell(const UserAction& action, Name name, const std::function<void()>& deed) {
  if (listener == nullptr || isActing) return deed();
  const Dialog* dialog = running.empty() ? nullptr : running.back();
  const Restoring outer(current);
  begin(action);
  if (name == Name::none) tellHeld();
  // The code that opened a dialog goes on when the dialog has closed.
  const auto end = [this, dialog] {
    isActing = false;
    if (dialog == nullptr || dialog->isOpen()) send();
  };
  isActing = true;
  try {
    deed();
  } catch (const std::exception& error) {
    failed(error.what());
    end();
    throw;
  }
  end();
}

void UserActions::answer(const std::string& name, TraceValue value) {
  if (unanswered && unanswered->number == current) unanswered->answer.members.emplace_back(name, std::move(value));
}

void UserActions::named(const std::optional<std::u16string>& name) {
  givenName = name;
  if (!held) return;
  listener->begins({"job-step", {name.value_or(u"-")}, name ? OwnText::argument : OwnText::none});
  listener->answered({});
  tellHeld();
}

// A failure takes precedence.
void UserActions::vetoed() {
  if (unanswered && unanswered->answer.failure.empty()) unanswered->answer.members.emplace_back("vetoed", true);
}

void UserActions::failed(const std::string& sentence) {
  if (unanswered && unanswered->answer.failure.empty()) unanswered->answer.failure = sentence;
}

void UserActions::inDialog(const Dialog& dialog, const std::function<void()>& loop) {
  if (listener == nullptr) return loop();
  if (unanswered) {
    unanswered->answer.members.emplace_back("modal", dialog.url());
    send();
  } else {
    dialogToTell = dialog.url();
  }
  const Restoring acting(isActing);
  isActing = false;
  running.push_back(&dialog);
  try {
    loop();
  } catch (...) {
    running.pop_back();
    throw;
  }
  running.pop_back();
}

void UserActions::begin(const UserAction& action) {
  if (unanswered) send();
  current = ++count;
  unanswered = {current, {}};
  held = action;
  if (dialogToTell) answer("modal", *std::exchange(dialogToTell, std::nullopt));
}

void UserActions::tellHeld() {
  if (held) listener->begins(*std::exchange(held, std::nullopt));
}

void UserActions::send() {
  if (!unanswered) return;
  tellHeld();
  const ActionAnswer answer = std::move(unanswered->answer);
  unanswered.reset();
  listener->answered(answer);
}

// Handlers may close the dialog that owns the widget.
void UserActions::onWidget(WidgetNode& widget, const UserAction& action, const std::function<void()>& deed) {
  if (!widget.isOperable()) return;
  const Kiln::SmartPtr<Kiln::XUL::Widget> alive(&widget.asWidget());
  UserAction whole = action;
  whole.arguments.insert(whole.arguments.begin(), widget.id());
  act(whole, deed);
}

void UserActions::click(Button& button) {
  onWidget(button, {"click"}, [&] { button.click(); });
}

void UserActions::click(CheckBox& box) {
  onWidget(box, {"click"}, [&] { box.click(); });
}

void UserActions::click(RadioButton& button) {
  onWidget(button, {"click"}, [&] { button.choose(); });
}

void UserActions::choose(SelectorNode& list, std::int32_t index) {
  if (!list.items().at(index)) return;
  const UserAction action = isTelling(list, index) ? UserAction{"select", {valueAt(list, index)}}
                                                   : UserAction{"select-index", {wideNumber(index)}};
  onWidget(nodeOf(list), action, [&] { list.choose(index); });
}

// A script has no compositions: the text that settles one repeats it.
bool UserActions::type(TextBoxNode& box, std::u16string_view text, Edit how) {
  if (how == Edit::composing) return box.edit(text, how);
  bool isTaken = false;
  const OwnText own = box.range() ? OwnText::none : OwnText::argument;
  onWidget(nodeOf(box), {"type", {std::u16string(text)}, own}, [&] {
    isTaken = box.edit(text, how);
    answer("accepted", isTaken);
    answer("text", box.content());
  });
  return isTaken;
}

// A box loses the focus also when it is hidden or disabled, which is not the user's doing.
void UserActions::leave(TextBoxNode& box) {
  if (!nodeOf(box).isOperable()) return box.leave();
  onWidget(nodeOf(box), {"blur", {}, box.range() ? OwnText::none : OwnText::answer}, [&] {
    box.leave();
    answer("text", box.content());
  });
}

void UserActions::scroll(ScrollBar& bar, std::int32_t position) {
  if (position < bar.least() || position > bar.most() || position == bar.position()) return bar.scroll(position);
  onWidget(bar, {"scroll", {wideNumber(position)}}, [&] { bar.scroll(position); });
}

void UserActions::pick(ColorPicker& picker, std::uint32_t colour) {
  std::array<char, 8> text{};
  std::snprintf(text.data(), text.size(), "#%06X", static_cast<unsigned>(colour & 0xFFFFFF));
  onWidget(picker, {"pick", {Formats::toUtf16(text.data())}}, [&] { picker.pick(colour); });
}

void UserActions::drop(ImageBox& image, const std::u16string& value) {
  ListBox* source = dragSource(image, value);
  if (source == nullptr || !image.isOperable()) return image.drop(value);
  const Kiln::SmartPtr<Kiln::XUL::Widget> alive(&image.asWidget());
  const std::int32_t index = draggedIndex(*source, value);
  const std::u16string from = source->WidgetNode::id();
  const std::u16string onto = image.WidgetNode::id();
  const UserAction action = isTelling(*source, index) ? UserAction{"drop", {from, value, onto}}
                                                      : UserAction{"drop-index", {from, wideNumber(index), onto}};
  act(action, [&] { image.drop(value); });
}

void UserActions::chooseFromMenu(ImageBox& image, const std::u16string& text) {
  onWidget(image, {"menu", {text}}, [&] { image.choose(text); });
}

}  // namespace Refhost
