#include "script/commands.h"

#include "files/disk.h"
#include "formats/near_names.h"
#include "formats/text.h"
#include "host/overlay_job.h"
#include "host/overlay_names.h"
#include "host/profiles/built_in_watermarks.h"
#include "host/profiles/profile.h"
#include "script/describe.h"
#include "script/session.h"
#include "script/widget_commands.h"

#include <algorithm>
#include <limits>
#include <map>
#include <stdexcept>

namespace Script {
namespace {

using Formats::toUtf8;

// A white picture of one pixel.
constexpr std::string_view
    smallestBitmap("BM\x3A\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\1\0\0\0\1\0\0\0\1\0\x18\0\0\0\0\0\4\0\0\0"
                   "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\xFF\xFF\xFF\0",
                   58);

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

Json undo(Session& session, const Arguments&) {
  demandNoDialog(session);
  session.gui();
  if (!session.preferences().canUndo()) throw std::runtime_error("There is nothing to undo.");
  session.preferences().undo();
  return Json::object();
}

Json redo(Session& session, const Arguments&) {
  demandNoDialog(session);
  session.gui();
  if (!session.preferences().canRedo()) throw std::runtime_error("There is nothing to redo.");
  session.preferences().redo();
  return Json::object();
}

Json defaults(Session& session, const Arguments&) {
  demandNoDialog(session);
  session.gui();
  session.preferences().restoreDefaults();
  return Json::object();
}

Json print(Session& session, const Arguments&) {
  demandNoDialog(session);
  session.mayPrint();
  return Json::object();
}

// The overlay is of the smallest job: nothing here looks into it.
Json printOverlay(Session& session, const Arguments&) {
  demandNoDialog(session);
  session.gui();
  const Refhost::CapturedJob job{"%PDF-1.7\n%%EOF\n", smallestBitmap};
  return {{"created", Refhost::printIntoOverlay(session.preferences(), session, job).has_value()}};
}

Json renameOverlay(Session& session, const Arguments& words) {
  demandNoDialog(session);
  session.gui();
  Refhost::SelectorNode* const list = Refhost::overlayList(session.preferences());
  if (list == nullptr) throw std::runtime_error("The preferences have no list of overlays.");
  Refhost::renameOverlay(session.preferences(), list->selection(), words[0]);
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

Json reopen(Session& session, const Arguments& words) {
  demandNoDialog(session);
  Refhost::TracePairs values;
  for (std::size_t i = 2; i < words.size(); ++i) {
    const std::size_t equals = words[i].find(u'=');
    if (equals == 0 || equals == words[i].npos) throw std::runtime_error(inQuotes(words[i]) + " is not NAME=VALUE.");
    values.emplace_back(words[i].substr(0, equals), words[i].substr(equals + 1));
  }
  session.reopen(toUtf8(words[0]), toUtf8(words[1]), values);
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

Json importProfileFile(Session& session, const Arguments& words) {
  demandProfiles(session);
  Json notes = Json::array();
  Refhost::ProfileHome home = Refhost::ProfileHome::of(session.preferences());
  home.tell = [&notes](const std::string& sentence) { notes.push_back(sentence); };
  const Refhost::Manifest profile =
      Refhost::importProfile(Files::realDisk(), Files::pathFromText(words[0]), home, [](int, int) { return true; });
  session.preferences().importProfile({}, profile.values, *home.changes);
  return {{"notes", notes}};
}

Json savePreset(Session& session, const Arguments& words) {
  demandNoDialog(session);
  session.gui();
  session.preferences().presets().save(words[0]);
  return Json::object();
}

Json choosePreset(Session& session, const Arguments& words) {
  demandNoDialog(session);
  session.gui();
  const auto gone = session.preferences().presets().choose(words[0]);
  return {{"watermarkGone", gone.watermark}, {"overlayGone", gone.overlay}};
}

Json renamePreset(Session& session, const Arguments& words) {
  demandNoDialog(session);
  session.gui();
  session.preferences().presets().rename(words[0]);
  return Json::object();
}

Json deletePreset(Session& session, const Arguments&) {
  demandNoDialog(session);
  session.gui();
  session.preferences().presets().remove();
  return Json::object();
}

Json presets(Session& session, const Arguments&) {
  session.gui();
  Refhost::PresetChoice& choice = session.preferences().presets();
  Json names = Json::array();
  for (const std::u16string& name : choice.names()) names.push_back(text(name));
  return {{"presets", names},
          {"chosen", choice.chosen() ? text(*choice.chosen()) : Json(nullptr)},
          {"changed", choice.isChanged()}};
}

Json restoreWatermarks(Session& session, const Arguments& words) {
  demandNoDialog(session);
  session.gui();
  Refhost::restoreBuiltIns(session.preferences(), words);
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
      {"drop-index", {"SOURCE N TARGET", 3, 3, dropIndex}},
      {"menu", {"ID ITEM", 2, 2, menu}},
      {"ok", {"", 0, 0, ok}},
      {"cancel", {"", 0, 0, cancel}},
      {"tab", {"ID", 1, 1, tab}},
      {"help", {"", 0, 0, help}},
      {"undo", {"", 0, 0, undo}},
      {"redo", {"", 0, 0, redo}},
      {"defaults", {"", 0, 0, defaults}},
      {"restore-watermarks", {"ID...", 1, anyNumber, restoreWatermarks}},
      {"preset", {"NAME", 1, 1, choosePreset}},
      {"preset-save", {"NAME", 1, 1, savePreset}},
      {"preset-rename", {"NAME", 1, 1, renamePreset}},
      {"preset-delete", {"", 0, 0, deletePreset}},
      {"print", {"", 0, 0, print}},
      {"print-overlay", {"", 0, 0, printOverlay}},
      {"rename-overlay", {"NAME", 1, 1, renameOverlay}},
      {"import-profile", {"FILE", 1, 1, importProfileFile}},

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
      {"reopen", {"MODEL LOCALE [NAME=VALUE]...", 2, anyNumber, reopen}},

      // Queries.
      {"get", {"NAME", 1, 1, get}},
      {"properties", {"", 0, 0, properties}},
      {"setting", {"KEY", 1, 1, setting}},
      {"presets", {"", 0, 0, presets}},
      {"widget", {"ID", 1, 1, widget}},
      {"dialogs", {"", 0, 0, dialogs}},
      {"trace", {"", 0, 0, trace}},
      {"ticket", {"", 0, 0, ticket}},
      {"schema", {"", 0, 0, schema}},
  };
  return table;
}

std::vector<std::string> commandNames() {
  std::vector<std::string> names;
  for (const auto& [name, command] : commandTable()) names.push_back(name);
  return names;
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
  if (found == commandTable().end())
    throw std::runtime_error("There is no command \"" + name + "\"." + Formats::didYouMean(commandNames(), name));
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
