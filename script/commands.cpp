#include "script/commands.h"

#include "files/disk.h"
#include "formats/text.h"
#include "host/widgets/input.h"
#include "host/widgets/list.h"
#include "script/describe.h"
#include "script/session.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <map>
#include <stdexcept>

namespace Script {
namespace {

using Arguments = std::vector<std::u16string>;
using Formats::toUtf8;

// Keeps a widget alive while its handlers run, which may close the dialog that owns it.
using Held = Kiln::SmartPtr<Kiln::XUL::Widget>;

std::string inQuotes(const std::u16string& name) { return '"' + toUtf8(name) + '"'; }

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

// The index of the first item with that value.
std::int32_t indexOf(Refhost::SelectorNode& list, const std::u16string& id, const std::u16string& value) {
  for (std::int32_t i = 0; i < list.items().count(); ++i)
    if (list.items().at(i)->value().view() == value) return i;
  throw std::runtime_error("The widget " + inQuotes(id) + " has no item of the value " + inQuotes(value) + ".");
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
  if (index < 0 || index >= list.items().count())
    throw std::runtime_error("The widget " + inQuotes(words[0]) + " has no item at " + toUtf8(words[1]) + "; it has " +
                             std::to_string(list.items().count()) + ".");
  list.choose(index);
  return Json::object();
}

Json ok(Session& session, const Arguments&) {
  if (Refhost::Dialog* dialog = session.topmost())
    session.accept(*dialog);
  else
    session.acceptPreferences();
  return Json::object();
}

Json cancel(Session& session, const Arguments&) {
  if (Refhost::Dialog* dialog = session.topmost()) {
    Kiln::SmartPtr<Refhost::Dialog>(dialog)->cancel();
  } else {
    session.gui();
    session.preferences().cancel();
  }
  return Json::object();
}

// Rejects commands on the preferences while a dialog is open.
void demandNoDialog(Session& session) {
  if (Refhost::Dialog* dialog = session.topmost())
    throw std::runtime_error("The dialog " + toUtf8(dialog->url()) + " is open; close it first.");
}

Json tab(Session& session, const Arguments& words) {
  demandNoDialog(session);
  for (const Refhost::Layout& layout : session.gui().tabs()) {
    const Refhost::WidgetNode& root = *layout.root;
    if (root.id() != words[0]) continue;
    session.preferences().selectTab(words[0]);
    return Json::object();
  }
  throw std::runtime_error("The preferences have no tab " + inQuotes(words[0]) + ".");
}

Json help(Session& session, const Arguments&) {
  demandNoDialog(session);
  session.gui();
  session.preferences().help();
  return Json::object();
}

void demandProperty(Session& session, const std::u16string& name) {
  if (!session.preferences().model().isKnown(name))
    throw std::runtime_error("The model has no property " + inQuotes(name) + ".");
}

Json set(Session& session, const Arguments& words) {
  demandProperty(session, words[0]);
  session.preferences().set(words[0], words[1]);
  return Json::object();
}

Json setAvailable(Session& session, const Arguments& words, bool available) {
  demandProperty(session, words[0]);
  for (const auto& property : session.preferences().model().description().properties) {
    const auto& options = property.options;
    if (property.name == words[0] && !options.empty() && std::ranges::find(options, words[1]) == options.end())
      throw std::runtime_error("The property " + inQuotes(words[0]) + " has no option " + inQuotes(words[1]) + ".");
  }
  session.preferences().setAvailable(words[0], words[1], available);
  return Json::object();
}

Json allow(Session& session, const Arguments& words) { return setAvailable(session, words, true); }

Json forbid(Session& session, const Arguments& words) { return setAvailable(session, words, false); }

Json lock(Session& session, const Arguments& words) {
  session.preferences().lock(words);
  return Json::object();
}

Json jobStep(Session& session, const Arguments& words) {
  session.setJobStep(jobStepOf(words[0]));
  return Json::object();
}

Json reload(Session& session, const Arguments&) {
  demandNoDialog(session);
  session.reload();
  return Json::object();
}

Json get(Session& session, const Arguments& words) {
  demandProperty(session, words[0]);
  return {{"value", text(*session.preferences().model().value(words[0]))}};
}

Json properties(Session& session, const Arguments&) {
  return {{"properties", describe(session.preferences().model().values())}};
}

Json setting(Session& session, const Arguments& words) {
  const auto value = session.preferences().setting(words[0]);
  return {{"value", value ? text(*value) : Json(nullptr)}};
}

Json widget(Session& session, const Arguments& words) { return describe(session.widget(words[0])); }

Json dialogs(Session& session, const Arguments&) {
  Json open = Json::array();
  for (const auto& dialog : session.preferences().openDialogs()) open.push_back(text(dialog->url()));
  Refhost::Dialog* topmost = session.topmost();
  return {{"open", open}, {"okEnabled", topmost != nullptr && topmost->ok().isOperable()}};
}

Json trace(Session& session, const Arguments&) { return {{"events", session.takeEvents()}}; }

Json writeJob(Session& session, const Arguments& words) {
  constexpr std::size_t largestJob = std::size_t{1} << 31;
  session.preferences().writeJob(Files::realDisk().read(Files::pathFromText(words[0]), largestJob));
  return Json::object();
}

Json loadTicket(Session& session, const Arguments& words) {
  session.preferences().loadTicketFile(Files::pathFromText(words[0]));
  return Json::object();
}

Json ticket(Session& session, const Arguments&) { return {{"xml", session.preferences().ticket()}}; }

Json schema(Session& session, const Arguments&) { return {{"xml", session.preferences().ticketSchema()}}; }

// Profiles need no user interface, but cannot be imported once it is closed.
void demandProfiles(Session& session) {
  demandNoDialog(session);
  if (session.preferences().options().mode != Refhost::Mode::rootless) session.gui();
}

Json exportProfile(Session& session, const Arguments& words) {
  demandProfiles(session);
  const std::u16string includeUserdata = words.size() > 1 ? words[1] : u"True";
  const auto location = session.preferences().exportProfile(Files::pathFromText(words[0]), includeUserdata);
  if (!location) return {{"location", nullptr}};
  return {{"location", text(Files::pathText(location->generic_string<std::filesystem::path::value_type>()))}};
}

Json importProfile(Session& session, const Arguments& words) {
  demandProfiles(session);
  session.preferences().importProfile(Files::pathFromText(words[0]), {});
  return Json::object();
}

struct Command {
  // The arguments after the name, as shown in messages, and their minimum and maximum number.
  const char* usage;
  std::size_t least;
  std::size_t most;
  Json (*handler)(Session&, const Arguments&);
};

constexpr std::size_t anyNumber = std::numeric_limits<std::size_t>::max();

const std::map<std::string, Command, std::less<>>& commandTable() {
  static const std::map<std::string, Command, std::less<>> table = {
      // User actions.
      {"click", {"ID", 1, 1, click}},
      {"select", {"ID VALUE", 2, 2, select}},
      {"select-index", {"ID N", 2, 2, selectIndex}},
      {"type", {"ID TEXT", 2, 2, type}},
      {"blur", {"ID", 1, 1, blur}},
      {"scroll", {"ID N", 2, 2, scroll}},
      {"pick", {"ID #RRGGBB", 2, 2, pick}},
      {"drop", {"SOURCE VALUE TARGET", 3, 3, drop}},
      {"menu", {"ID ITEM", 2, 2, menu}},
      {"ok", {"", 0, 0, ok}},
      {"cancel", {"", 0, 0, cancel}},
      {"tab", {"ID", 1, 1, tab}},
      {"help", {"", 0, 0, help}},

      // Host actions.
      {"set", {"NAME VALUE", 2, 2, set}},
      {"allow", {"NAME OPTION", 2, 2, allow}},
      {"forbid", {"NAME OPTION", 2, 2, forbid}},
      {"lock", {"[NAME]...", 0, anyNumber, lock}},
      {"job-step", {"NAME", 1, 1, jobStep}},
      {"write-job", {"FILE", 1, 1, writeJob}},
      {"export", {"TARGET [IncludeUserdata]", 1, 2, exportProfile}},
      {"import", {"TARGET", 1, 1, importProfile}},
      {"load-ticket", {"FILE", 1, 1, loadTicket}},
      {"reload", {"", 0, 0, reload}},

      // Queries.
      {"get", {"NAME", 1, 1, get}},
      {"properties", {"", 0, 0, properties}},
      {"setting", {"KEY", 1, 1, setting}},
      {"widget", {"ID", 1, 1, widget}},
      {"dialogs", {"", 0, 0, dialogs}},
      {"trace", {"", 0, 0, trace}},
      {"ticket", {"", 0, 0, ticket}},
      {"schema", {"", 0, 0, schema}},
  };
  return table;
}

// Converts an argument. Rejects invalid UTF-8, which would be changed by the conversion.
std::u16string toArgument(const std::string& word) {
  std::u16string wide = Formats::toUtf16(word);
  if (toUtf8(wide) != word) throw std::runtime_error("The line is not UTF-8.");
  return wide;
}

}  // namespace

std::optional<std::u16string> jobStepOf(const std::u16string& word) {
  return word == u"-" ? std::nullopt : std::optional(word);
}

Json obey(Session& session, const std::vector<std::string>& words) {
  const std::string& name = words.front();
  const auto found = commandTable().find(name);
  if (found == commandTable().end()) throw std::runtime_error("There is no command \"" + name + "\".");
  const Command& command = found->second;
  const std::size_t count = words.size() - 1;
  if (count < command.least || count > command.most) {
    const std::string usage = *command.usage == '\0' ? name : name + ' ' + command.usage;
    throw std::runtime_error("The command is used as: " + usage);
  }
  Arguments arguments;
  for (std::size_t i = 1; i < words.size(); ++i) arguments.push_back(toArgument(words[i]));
  return command.handler(session, arguments);
}

}  // namespace Script
