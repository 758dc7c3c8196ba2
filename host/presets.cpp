#include "host/presets.h"

#include "files/home_lock.h"
#include "files/whole_file.h"
#include "formats/printable.h"
#include "formats/sentences.h"
#include "formats/text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>
#include <stdexcept>

namespace Refhost {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

// Far more than any model's settings need.
constexpr std::size_t mostPresetBytes = std::size_t{1} << 20;

constexpr std::u16string_view presetStart = u"preset-";
constexpr std::u16string_view presetEnd = u".json";

std::string quotedName(std::u16string_view name) { return Formats::quoted(Formats::printable(Formats::toUtf8(name))); }

bool isPresetFile(const fs::path& name) {
  const std::u16string text = Files::pathText(name);
  return text.starts_with(presetStart) && text.ends_with(presetEnd);
}

std::string presetBytes(const Preset& preset) {
  Json values = Json::object();
  for (const auto& [name, value] : preset.values) values[Formats::toUtf8(name)] = Formats::toUtf8(value);
  const Json document = {
      {"name", Formats::toUtf8(preset.name)}, {"model", Formats::toUtf8(preset.model)}, {"values", values}};
  return document.dump(4, ' ', false, Json::error_handler_t::replace) + '\n';
}

// Nothing when the bytes are no preset.
std::optional<Preset> parsePreset(const std::string& bytes) {
  const Json document = Json::parse(bytes, nullptr, false);
  if (!document.is_object()) return {};
  const auto text = [&document](const char* member) -> std::optional<std::u16string> {
    const auto found = document.find(member);
    if (found == document.end() || !found->is_string()) return {};
    return Formats::toUtf16(found->get_ref<const std::string&>());
  };
  const auto name = text("name");
  const auto model = text("model");
  const auto values = document.find("values");
  if (!name || !model || values == document.end() || !values->is_object()) return {};
  Preset preset{*name, *model, {}};
  for (const auto& [property, value] : values->items()) {
    if (!value.is_string()) return {};
    preset.values.emplace_back(Formats::toUtf16(property), Formats::toUtf16(value.get_ref<const std::string&>()));
  }
  return preset;
}

void ignoreProblem(const std::string&) {}

}  // namespace

struct Presets::Kept {
  fs::path file;
  Preset preset;
};

std::string presetNameProblem(std::u16string_view name) {
  if (name.find_first_not_of(u" \t\n\r\u3000") == name.npos) return Formats::sentence("A preset needs a name.");
  if (name.size() > Presets::longestName)
    return Formats::sentence("The name of a preset has at most {1} characters.", Presets::longestName);
  return {};
}

Presets::Presets(Files::Disk& filesDisk, const fs::path& homeFolder, std::chrono::milliseconds longestWaitForLock)
    : disk(filesDisk),
      home(homeFolder),
      folder(homeFolder / "presets"),
      longestWait(longestWaitForLock) {}

std::vector<Preset> Presets::read(const std::function<void(const std::string&)>& tell) const {
  std::vector<Preset> all;
  try {
    for (Kept& each : kept(tell)) all.push_back(std::move(each.preset));
  } catch (const Files::DiskError& problem) {
    tell(Formats::sentence("The presets are left out: {1}", problem.what()));
  }
  std::ranges::sort(all, {}, &Preset::name);
  return all;
}

void Presets::save(const Preset& preset) const {
  if (const std::string problem = presetNameProblem(preset.name); !problem.empty()) throw std::runtime_error(problem);
  Files::createFolders(disk, folder);
  const Files::HomeLock lock(disk, home, longestWait);
  for (const Kept& each : kept(ignoreProblem))
    if (each.preset.name == preset.name) {
      Files::replaceWhole(disk, each.file, presetBytes(preset));
      return;
    }
  for (int number = 1;; ++number) {
    const fs::path file = folder / ("preset-" + std::to_string(number) + ".json");
    if (disk.kind(file) != Files::EntryKind::none) continue;
    Files::replaceWhole(disk, file, presetBytes(preset));
    return;
  }
}

void Presets::rename(std::u16string_view name, std::u16string_view newName) const {
  if (const std::string problem = presetNameProblem(newName); !problem.empty()) throw std::runtime_error(problem);
  const Files::HomeLock lock(disk, home, longestWait);
  Kept renamed = demand(name);
  for (const Kept& each : kept(ignoreProblem))
    if (each.preset.name == newName && each.file != renamed.file)
      throw std::runtime_error(
          Formats::sentence("There is a preset {1} already: choose another name.", quotedName(newName)));
  renamed.preset.name = newName;
  Files::replaceWhole(disk, renamed.file, presetBytes(renamed.preset));
}

void Presets::remove(std::u16string_view name) const {
  const Files::HomeLock lock(disk, home, longestWait);
  const Kept removed = demand(name);
  disk.remove(removed.file);
  disk.syncFolder(folder);
}

// In the order of their files. Throws Files::DiskError when the folder cannot be listed.
std::vector<Presets::Kept> Presets::kept(const std::function<void(const std::string&)>& tell) const {
  std::vector<Kept> all;
  if (disk.kind(folder) != Files::EntryKind::folder) return all;
  std::vector<Files::Entry> entries = disk.entries(folder);
  std::ranges::sort(entries, {}, &Files::Entry::name);
  for (const Files::Entry& entry : entries) {
    if (!isPresetFile(entry.name)) continue;
    const fs::path file = folder / entry.name;
    try {
      if (auto preset = parsePreset(disk.read(file, mostPresetBytes)))
        all.push_back({file, std::move(*preset)});
      else
        tell(Formats::sentence("The preset in {1} is damaged and is left out: delete the file.",
                               Files::shownPath(file)));
    } catch (const Files::DiskError& problem) {
      tell(Formats::sentence("A preset is left out: {1}", problem.what()));
    }
  }
  return all;
}

Presets::Kept Presets::demand(std::u16string_view name) const {
  for (Kept& each : kept(ignoreProblem))
    if (each.preset.name == name) return std::move(each);
  throw std::runtime_error(Formats::sentence("There is no preset {1}.", quotedName(name)));
}

}  // namespace Refhost
