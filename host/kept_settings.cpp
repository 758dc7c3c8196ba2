#include "host/kept_settings.h"

#include "files/file_set.h"
#include "files/home_lock.h"
#include "files/system_reason.h"
#include "files/whole_file.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "host/profiles/home_import.h"
#include "host/user_folders.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <map>
#include <optional>
#include <stdexcept>

namespace Refhost {
namespace {

using Json = nlohmann::json;

// Far more than any model's settings need.
constexpr std::size_t mostBytes = 1 << 20;

std::string quoted(const std::filesystem::path& file) { return Formats::quoted(Files::shownPath(file)); }

// Nothing when the bytes are not valid settings.
std::optional<TracePairs> parse(const std::string& bytes) {
  const Json document = Json::parse(bytes, nullptr, false);
  const auto values = document.is_object() ? document.find("values") : document.end();
  if (values == document.end() || !values->is_object()) return {};
  TracePairs pairs;
  for (const auto& [name, value] : values->items()) {
    if (!value.is_string()) return {};
    pairs.emplace_back(Formats::toUtf16(name), Formats::toUtf16(value.get_ref<const std::string&>()));
  }
  return pairs;
}

// The content of the file; nothing when there is none. No settings are in a file that is too large.
std::optional<std::string> bytesIn(Files::Disk& disk, const std::filesystem::path& file) {
  try {
    if (disk.kind(file) == Files::EntryKind::none) return {};
    return disk.read(file, mostBytes);
  } catch (const Files::DiskError& problem) {
    if (problem.code() != std::errc::file_too_large) throw;
    return "";
  }
}

}  // namespace

std::filesystem::path settingsFile(const std::filesystem::path& home, const std::u16string& model) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  constexpr std::string_view plain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";
  std::string name;
  for (const char unit : Formats::toUtf8(model)) {
    if (plain.find(unit) != plain.npos) {
      name += unit;
      continue;
    }
    const auto byte = static_cast<unsigned char>(unit);
    name += {'%', digits[byte >> 4], digits[byte & 15]};
  }
  return home / "profile" / ("settings-" + name + ".json");
}

KeptSettings readSettings(const std::filesystem::path& file, const std::function<void(const std::string&)>& tell,
                          Files::Disk& disk) {
  const std::filesystem::path home = file.parent_path().parent_path();
  completeImport(disk, home, Files::longestLockWait, tell);
  const auto known = [&]() -> std::optional<KeptSettings> {
    const auto bytes = bytesIn(disk, file);
    if (!bytes) return KeptSettings{};
    if (const auto values = parse(*bytes)) return KeptSettings{*values, {}};
    return {};
  };
  if (auto settings = known()) return *settings;

  // Another program may have found it damaged as well, and have written a new one meanwhile.
  const Files::HomeLock lock(disk, home);
  if (auto settings = known()) return *settings;
  std::filesystem::path aside = file;
  aside += ".damaged-";
  try {
    aside = Files::firstFree(disk, aside);
    disk.replace(file, aside);
  } catch (const Files::DiskError& problem) {
    throw std::runtime_error(
        Formats::sentence("The settings in {1} are damaged and cannot be renamed ({2}): delete the file.", quoted(file),
                          problem.code() ? Files::systemReason(problem.code()) : problem.what()));
  }
  return {{}, aside};
}

TracePairs peekAtSettings(const std::filesystem::path& file, Files::Disk& disk) {
  std::optional<TracePairs> values;
  Files::tryTo([&] {
    if (const auto bytes = bytesIn(disk, file)) values = parse(*bytes);
  });
  return values.value_or(TracePairs());
}

std::string settingsBytes(const TracePairs& values) {
  Json members = Json::object();
  for (const auto& [name, value] : values) members[Formats::toUtf8(name)] = Formats::toUtf8(value);
  return Json{{"values", members}}.dump(4, ' ', false, Json::error_handler_t::replace) + '\n';
}

void writeSettings(const std::filesystem::path& file, const TracePairs& values, Files::Disk& disk) {
  try {
    Files::createFolders(disk, file.parent_path());
    const std::filesystem::path home = file.parent_path().parent_path();
    const Files::HomeLock lock(disk, home);
    Files::completeFileSet(disk, importJournal(home));  // else it would be completed later, over these settings
    Files::replaceWhole(disk, file, settingsBytes(values));
  } catch (const Files::DiskError& error) {
    throw std::runtime_error(Formats::sentence("The settings are not kept: {1}", error.what()));
  }
}

TracePairs changedValues(const TracePairs& values, const ModelDescription& model) {
  std::map<std::u16string_view, std::u16string_view> last;
  for (const auto& [name, value] : values) last[name] = value;
  TracePairs changed;
  for (const PropertyDescription& property : model.properties)
    if (const auto found = last.find(property.name); found != last.end() && found->second != property.defaultValue)
      changed.emplace_back(found->first, found->second);
  return changed;
}

TracePairs applicable(const TracePairs& values, const ModelDescription& model) {
  TracePairs result;
  for (const auto& [name, value] : values) {
    const auto property = std::find_if(model.properties.begin(), model.properties.end(),
                                       [&wanted = name](const auto& known) { return known.name == wanted; });
    if (property == model.properties.end() || property->isContext) continue;
    const auto& options = property->options;
    const bool isOption = options.empty() || std::find(options.begin(), options.end(), value) != options.end();
    if (isOption) result.emplace_back(name, value);
  }
  return result;
}

}  // namespace Refhost
