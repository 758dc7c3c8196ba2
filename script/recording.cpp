#include "script/recording.h"

#include "files/path_text.h"
#include "formats/names.h"
#include "formats/overlay_index.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "formats/watermark_record.h"
#include "host/home.h"
#include "host/kept_settings.h"
#include "host/profiles/merge.h"
#include "script/describe.h"
#include "script/portable_text.h"
#include "script/words.h"

#include <algorithm>
#include <stdexcept>

namespace Script {
namespace {

using Formats::toUtf8;

std::string numberOf(std::size_t count, const char* one, const char* several) {
  return std::to_string(count) + ' ' + (count == 1 ? one : several);
}

// The user's own watermarks and overlays in a home; empty when there are none, or they cannot be read.
std::string heldIn(const std::filesystem::path& home) {
  constexpr std::size_t mostBytes = std::size_t{64} << 20;
  std::size_t watermarks = 0;
  std::size_t overlays = 0;
  Files::Disk& disk = Files::realDisk();
  try {
    const auto file = home / "user" / Files::pathFromText(Formats::watermarkFileName);
    if (disk.kind(file) == Files::EntryKind::file) {
      const auto records = Refhost::readWatermarks(disk.read(file, mostBytes), {});
      for (const auto& record : records->children())
        if (record->localNameText().starts_with(Formats::madeIdStart)) ++watermarks;
    }
    const auto index = home / "profile" / "overlays" / Files::pathFromText(Formats::overlayIndexName);
    if (disk.kind(index) == Files::EntryKind::file) overlays = Formats::readIndex(disk.read(index, mostBytes)).size();
  } catch (const std::exception&) {
    // The opening tells of it.
  }
  if (watermarks + overlays == 0) return {};
  return numberOf(watermarks, "watermark", "watermarks") + ", " + numberOf(overlays, "overlay", "overlays");
}

std::string pairOf(const std::u16string& name, const std::u16string& value) {
  return toUtf8(name) + '=' + toUtf8(value);
}

std::string fontsOf(const Refhost::Options& opening) {
  const auto names = opening.fonts ? opening.fonts() : std::nullopt;
  if (!names || names->empty()) return "-";
  std::string list;
  for (const std::u16string& name : *names)
    if (name.find(u',') == name.npos) list += (list.empty() ? "" : ",") + toUtf8(name);
  return list;
}

}  // namespace

Facts factsOf(const Refhost::Options& opening) {
  Facts facts = {{"model", opening.model}, {"mode", std::string(nameOf(opening.mode))}, {"locale", opening.locale}};
  if (!opening.active) facts.push_back({"inactive", ""});
  if (opening.dpi && *opening.dpi != 96) facts.push_back({"dpi", std::to_string(*opening.dpi)});
  facts.push_back({"fonts", fontsOf(opening)});
  for (const auto& [key, value] : opening.settings)
    facts.push_back({"config", value ? pairOf(key, *value) : toUtf8(key) + '-'});
  const auto model = Refhost::readModel(opening.resources / "models", opening.model);
  for (const auto& [name, value] : Refhost::changedValues(opening.properties, model))
    facts.push_back({"property", withoutHome(pairOf(name, value), opening.home)});
  for (const auto& [key, value] : opening.customisation) facts.push_back({"customise", pairOf(key, value)});
  for (const std::u16string& id : opening.withoutWidgets) facts.push_back({"without", toUtf8(id)});
  return facts;
}

std::string toLines(const Facts& facts) {
  std::string lines;
  for (const auto& [name, value] : facts) {
    lines += std::string(factMark) + name;
    if (!value.empty()) lines += ' ' + toWord(value);
    lines += '\n';
  }
  return lines;
}

std::string toLines(const RecordedAction& recorded) {
  std::string lines = recorded.action.command;
  for (const std::u16string& argument : recorded.action.arguments) lines += ' ' + toWord(toUtf8(argument));
  lines += '\n';
  if (!recorded.answer) return lines;
  const bool isOk = recorded.answer->failure.empty();
  Json answer = {{"ok", isOk}};
  if (!isOk) answer["error"] = recorded.answer->failure;
  for (const auto& [name, value] : recorded.answer->members) answer[name] = describe(value);
  return lines + std::string(answerMark) + toLine(answer) + '\n';
}

Recording::Recording(Facts versionFacts, std::size_t mostKept) : versions(std::move(versionFacts)), most(mostKept) {}

void Recording::writeTo(const std::filesystem::path& newFile) {
  path = newFile;
  file.open(path, std::ios::binary | std::ios::trunc);
  if (!file)
    throw std::runtime_error(
        Formats::sentence("The recording {1} cannot be written: check that its folder exists and may be written.",
                          Files::shownPath(path)));
}

void Recording::opens(const Refhost::Options& opening) {
  if (opened) return;
  opened = opening;
  if (!opening.home.empty()) opened->home = Refhost::homePath(opening.home);
  homeHeld = heldIn(opened->home);
  if (file.is_open()) write(toLines(facts()));
}

Facts Recording::facts() const {
  Facts all = versions;
  const Facts opening = factsOf(*opened);
  all.insert(all.end(), opening.begin(), opening.end());
  if (!homeHeld.empty()) all.push_back({"home-held", homeHeld});
  return all;
}

void Recording::begins(const Refhost::UserAction& action) {
  if (propertiesNow) before = propertiesNow();
  kept.push_back({action});
  const std::string line = toLines(kept.back());
  bytes += line.size();
  if (file.is_open()) write(line);
  forgetOldest();
}

void Recording::answered(const Refhost::ActionAnswer& answer) {
  if (kept.empty()) return;
  RecordedAction& last = kept.back();
  const std::size_t written = toLines(last).size();
  last.answer = answer;
  last.answer->failure = withoutHome(Formats::inEnglish(answer.failure), home());
  const std::string lines = toLines(last);
  bytes += lines.size() - written;
  if (file.is_open()) write(lines.substr(written));
  addChanges();
  forgetOldest();
}

void Recording::addChanges() {
  // A file that is read may have ids that the recorded run has made up, and the replay others.
  const std::string& command = kept.back().action.command;
  if (!propertiesNow || command == "load-ticket" || command == "import-profile" || command == "import") return;
  for (const auto& [name, value] : propertiesNow()) {
    const auto known = std::ranges::find(before, name, &Refhost::TracePairs::value_type::first);
    if (known == before.end() || known->second == value) continue;
    const std::string shown = withoutHome(toUtf8(value), home());
    kept.push_back({{"get", {name}}, Refhost::ActionAnswer{{{"value", Formats::toUtf16(shown)}}, {}}});
    const std::string lines = toLines(kept.back());
    bytes += lines.size();
    if (file.is_open()) write(lines);
  }
}

void Recording::write(const std::string& lines) {
  file << lines << std::flush;
  if (file) return;
  file.close();
  if (onFailure)
    onFailure(Formats::sentence("The recording {1} cannot be written any more: free some space, and record again.",
                                Files::shownPath(path)));
}

void Recording::forgetOldest() {
  while (bytes > most && kept.size() > 1) {
    bytes -= toLines(kept.front()).size();
    kept.pop_front();
    isCut = true;
  }
}

}  // namespace Script
