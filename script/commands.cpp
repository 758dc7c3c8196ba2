#include "script/commands.h"

#include "host/unicode.h"
#include "host/widgets/list.h"
#include "script/describe.h"
#include "script/session.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <limits>
#include <map>
#include <sstream>
#include <stdexcept>

namespace Script {
namespace {

using Arguments = std::vector<std::u16string>;
using Refhost::toNarrow;

std::string inQuotes(const std::u16string& name) { return '"' + toNarrow(name) + '"'; }

// The widget of that id, which the user can operate now. `deed` says what its kind has to be able to.
template <class Kind>
Kind& operable(Session& session, const std::u16string& id, const std::string& deed) {
  Refhost::WidgetNode& widget = session.widget(id);
  auto* kind = dynamic_cast<Kind*>(&widget);
  if (kind == nullptr) throw std::runtime_error("The widget " + inQuotes(id) + " cannot " + deed + ".");
  if (!widget.isShown()) throw std::runtime_error("The widget " + inQuotes(id) + " is hidden.");
  if (!widget.isOperable()) throw std::runtime_error("The widget " + inQuotes(id) + " is disabled.");
  return *kind;
}

// Stands for the kinds that no widget of this host is.
class Nothing {
 public:
  virtual ~Nothing() = default;
};

Json type(Session& session, const Arguments& words) {
  operable<Nothing>(session, words[0], "be typed into");
  return Json::object();
}

Json blur(Session& session, const Arguments& words) {
  operable<Nothing>(session, words[0], "lose the input focus");
  return Json::object();
}

Json scroll(Session& session, const Arguments& words) {
  operable<Nothing>(session, words[0], "be scrolled");
  return Json::object();
}

Json pick(Session& session, const Arguments& words) {
  operable<Nothing>(session, words[0], "have a colour picked");
  return Json::object();
}

Json drop(Session& session, const Arguments& words) {
  operable<Refhost::SelectorNode>(session, words[0], "have items dragged from it");
  operable<Nothing>(session, words[2], "have items dropped on it");
  return Json::object();
}

Json menu(Session& session, const Arguments& words) {
  operable<Nothing>(session, words[0], "show a context menu");
  return Json::object();
}

Json click(Session& session, const Arguments& words) {
  if (auto* box = dynamic_cast<Refhost::CheckBox*>(&session.widget(words[0])); box != nullptr)
    operable<Refhost::CheckBox>(session, words[0], "be clicked").click();
  else
    operable<Refhost::Button>(session, words[0], "be clicked").click();
  return Json::object();
}

Json select(Session& session, const Arguments& words) {
  auto& list = operable<Refhost::SelectorNode>(session, words[0], "have items selected");
  for (std::int32_t i = 0; i < list.items().count(); ++i) {
    if (list.items().at(i)->value().view() != words[1]) continue;
    list.choose(i);
    return Json::object();
  }
  throw std::runtime_error("The widget " + inQuotes(words[0]) + " has no item of the value " + inQuotes(words[1]) +
                           ".");
}

std::int32_t toNumber(const std::u16string& word) {
  const std::string digits = toNarrow(word);
  std::int32_t number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error == std::errc() && end == digits.data() + digits.size()) return number;
  throw std::runtime_error(inQuotes(word) + " is no whole number.");
}

Json selectIndex(Session& session, const Arguments& words) {
  const std::int32_t index = toNumber(words[1]);
  auto& list = operable<Refhost::SelectorNode>(session, words[0], "have items selected");
  if (index < 0 || index >= list.items().count())
    throw std::runtime_error("The widget " + inQuotes(words[0]) + " has no item at " + toNarrow(words[1]) +
                             "; it has " + std::to_string(list.items().count()) + ".");
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

// What can only be done to the preferences while no dialog lies over them.
void demandNoDialog(Session& session) {
  if (Refhost::Dialog* dialog = session.topmost())
    throw std::runtime_error("The dialog " + toNarrow(dialog->url()) + " is open; close it first.");
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
  if (Refhost::Gui* gui = session.preferences().gui())
    for (const auto& dialog : gui->openDialogs()) open.push_back(text(dialog->url()));
  Refhost::Dialog* topmost = session.topmost();
  return {{"open", open}, {"okEnabled", topmost != nullptr && topmost->ok().isOperable()}};
}

Json trace(Session& session, const Arguments&) { return {{"events", session.takeEvents()}}; }

std::string contentOf(const std::u16string& name) {
  std::ifstream file(std::filesystem::path(name), std::ios::binary);
  std::ostringstream content;
  if (file.peek() != std::ifstream::traits_type::eof()) content << file.rdbuf();
  if (!file.is_open() || file.bad()) throw std::runtime_error("The file " + toNarrow(name) + " cannot be read.");
  return content.str();
}

Json loadTicket(Session& session, const Arguments& words) {
  session.preferences().loadTicket(contentOf(words[0]), toNarrow(words[0]));
  return Json::object();
}

Json ticket(Session& session, const Arguments&) { return {{"xml", session.preferences().ticket()}}; }

Json schema(Session& session, const Arguments&) { return {{"xml", session.preferences().ticketSchema()}}; }

Json notServed(Session&, const Arguments&) {
  throw std::runtime_error("This build of the host does not serve the command.");
}

Json profileNotServed(Session& session, const Arguments& words) {
  demandNoDialog(session);
  return notServed(session, words);
}

struct Command {
  // The words that follow the name, as a sentence names them, and how many there may be.
  const char* usage;
  std::size_t least;
  std::size_t most;
  Json (*handler)(Session&, const Arguments&);
};

constexpr std::size_t anyNumber = std::numeric_limits<std::size_t>::max();

const std::map<std::string, Command, std::less<>>& commandTable() {
  static const std::map<std::string, Command, std::less<>> table = {
      // What a user does.
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

      // What the host does.
      {"set", {"NAME VALUE", 2, 2, set}},
      {"allow", {"NAME OPTION", 2, 2, allow}},
      {"forbid", {"NAME OPTION", 2, 2, forbid}},
      {"lock", {"[NAME]...", 0, anyNumber, lock}},
      {"job-step", {"NAME", 1, 1, jobStep}},
      {"write-job", {"FILE", 1, 1, notServed}},
      {"export", {"TARGET [IncludeUserdata]", 1, 2, profileNotServed}},
      {"import", {"TARGET", 1, 1, profileNotServed}},
      {"load-ticket", {"FILE", 1, 1, loadTicket}},
      {"reload", {"", 0, 0, reload}},

      // What can be read.
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

// An argument as wide text. Bytes that are no UTF-8 would be changed on their way, so they are refused.
std::u16string toArgument(const std::string& word) {
  std::u16string wide = Refhost::toWide(word);
  if (toNarrow(wide) != word) throw std::runtime_error("The line is not UTF-8.");
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
