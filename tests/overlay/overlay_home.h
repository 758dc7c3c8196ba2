// A home with overlays, created by tests.
#pragma once

#include "effect/overlay/overlays.h"
#include "formats/text.h"
#include "tests/support/host_world.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

using Testing::bytesOf;

// An index record, assembled by hand: the name and the file name, each padded with zeros.
inline std::string recordBytes(std::u16string_view name, std::u16string_view fileName) {
  std::string bytes(Effect::indexRecordBytes, '\0');
  const auto put = [&bytes](std::size_t at, std::u16string_view text) {
    for (const char16_t unit : text) {
      bytes[at++] = static_cast<char>(static_cast<unsigned char>(unit & 0xFF));
      bytes[at++] = static_cast<char>(static_cast<unsigned char>(unit >> 8));
    }
  };
  put(0, name);
  put(128, fileName);
  return bytes;
}

// The names and files in an index: "NAME=FILE".
inline std::vector<std::string> listed(const std::string& indexBytes) {
  std::vector<std::string> lines;
  for (const auto& [name, fileName] : Effect::readIndex(indexBytes))
    lines.push_back(Formats::toUtf8(name) + "=" + Formats::toUtf8(fileName));
  return lines;
}

// Whether a name has the store's random form: five digits and ".opa".
inline bool isDrawnName(const std::string& name) {
  return name.size() == 9 && name.find_first_not_of("0123456789") == 5 && name.ends_with(".opa");
}

// A text with paths, with the same separators on every system.
inline std::string inSlashes(std::string text) {
  std::replace(text.begin(), text.end(), static_cast<char>(std::filesystem::path::preferred_separator), '/');
  return text;
}

struct OverlayHome {
  using Path = std::filesystem::path;
  using Names = std::vector<std::pair<std::u16string, std::u16string>>;

  OverlayHome() {
    std::filesystem::create_directories(folder.path / "user");
    std::filesystem::create_directories(folder.path / "profile");
  }

  Path userFolder() const { return folder.path / "profile" / "overlays"; }
  Path localFolder(const std::string& name) const { return folder.path / "localdata" / name / "overlays"; }
  static Path index(const Path& in) { return in / "ovlNmFl.flo"; }

  // Writes an index, its files, each containing its own name, and their thumbnails.
  static void put(const Path& in, const Names& overlays) {
    std::string bytes;
    for (const auto& [name, fileName] : overlays) {
      bytes += recordBytes(name, fileName);
      putFile(in, fileName);
    }
    Testing::writeFile(index(in), bytes);
  }
  static void putFile(const Path& in, const std::u16string& fileName) {
    std::filesystem::create_directories(in);
    Path file = in / fileName;
    Testing::writeFile(file, file.filename().string());
    Testing::writeFile(file.replace_extension(".bmp"), "thumbnail");
  }

  // `number` overlays with the names "form 0", "form 1" and so on.
  static Names forms(int number) {
    Names names;
    for (int i = 0; i < number; ++i) {
      const std::string digits = std::to_string(10000 + i);
      names.emplace_back(Formats::toUtf16("form " + std::to_string(i)), Formats::toUtf16(digits + ".opa"));
    }
    return names;
  }

  void putUser(const Names& overlays) const { put(userFolder(), overlays); }
  void putLocal(const std::string& name, const Names& overlays) const { put(localFolder(name), overlays); }
  std::string userIndex() const { return bytesOf(index(userFolder())); }

  Testing::TemporaryFolder folder;
};

// The overlay store on a home, without a plug-in.
class OverlayStore : public Testing::HostWorld {
 public:
  using HostWorld::HostWorld;

  Kiln::SmartPtr<Overlays> open(bool isMerged = false) { return Refhost::make<Overlays>(host, manager, isMerged); }

  // "LABEL=FILE" of each record, with "*" appended for a downloaded one.
  static std::vector<std::string> records(const Overlays& store) {
    std::vector<std::string> lines;
    for (std::int32_t i = 0; i < store.count(); ++i) {
      const auto& record = store.record(i);
      lines.push_back(Formats::toUtf8(record.label) + "=" + Formats::toUtf8(record.diskpath) +
                      (record.downloaded ? "*" : ""));
    }
    return lines;
  }
};
