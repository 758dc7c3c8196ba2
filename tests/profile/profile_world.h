// Profiles and homes created by hand, without a plug-in.
#pragma once

#include "files/temporary_folder.h"
#include "formats/overlay_index.h"
#include "formats/text.h"
#include "host/kept_settings.h"
#include "host/profiles/profile.h"
#include "tests/profile/folders.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

namespace Testing {

inline const Refhost::Progress goOn = [](int, int) { return true; };

// A record of a watermark file; `id` is in the escaped form.
inline std::string watermark(const std::string& id, const std::string& name, const std::string& colour = "#808080") {
  return "  <" + id + ">\n    <label>" + name + "</label>\n    <stylename>" + name + "</stylename>\n    <colour>" +
         colour + "</colour>\n    <value>" + id + "</value>\n    <downloaded>False</downloaded>\n  </" + id + ">\n";
}

inline const std::string noneRecord =
    "  <_x0030_>\n    <label>$IDS_NONE;</label>\n    <stylename>$IDS_NONE;</stylename>\n  </_x0030_>\n";

// In the form that the host writes.
inline std::string watermarkFile(const std::string& records) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Watermarks>\n" + noneRecord + records + "</Watermarks>\n";
}

using Overlays = std::vector<std::pair<std::u16string, std::u16string>>;  // name, file

// An index with the files that it lists: each contains its name and `content`, and has a thumbnail.
inline void putOverlays(const std::filesystem::path& folder, const Overlays& overlays,
                        const std::string& content = "") {
  std::vector<Formats::IndexEntry> entries;
  for (const auto& [name, file] : overlays) {
    entries.push_back({name, file});
    put(folder / file, "form " + Formats::toUtf8(name) + content);
    put(folder / Formats::thumbnailOf(file), "picture " + Formats::toUtf8(name) + content);
  }
  put(folder / "ovlNmFl.flo", Formats::indexBytes(entries));
}

// The files of a profile in a folder, and a home to import it into.
class ProfileWorld : public testing::Test {
 protected:
  ProfileWorld() { putManifest({{u"MirrorImage", u"MirrorImage"}}); }

  void putManifest(const Refhost::TracePairs& values) {
    put(from / "profile.xml", Refhost::manifestBytes({u"standard", values}));
  }
  void putWatermarks(const std::string& records) { put(from / "ZVeffect.xml", watermarkFile(records)); }

  void pack() { Refhost::pack(Files::realDisk(), from, "profile.xml", file, {}, goOn); }

  // Imports into the home, with its saved settings.
  Refhost::Manifest importPacked(Files::Disk& disk = Files::realDisk(), const Refhost::Progress& progress = goOn) {
    Refhost::ProfileHome into = Refhost::ProfileHome::closed(home);
    into.translate = [](std::u16string_view text) {
      return text == u"$IDS_WM_DRAFT;" ? std::u16string(u"Draft") : std::u16string(text);
    };
    into.tell = [this](const std::string& sentence) { told.push_back(sentence); };
    into.settingsFile = [this](const std::u16string& model) { return Refhost::settingsFile(home, model); };
    return Refhost::importProfile(disk, file, into, progress);
  }
  Refhost::Manifest import() {
    pack();
    return importPacked();
  }

  // The error message for the profile; empty when it is accepted.
  std::string refusal() {
    try {
      importPacked();
      return {};
    } catch (const std::runtime_error& error) {
      return error.what();
    }
  }

  std::vector<std::string> told;  // by imports
  Files::TemporaryFolder folder;
  const std::filesystem::path from = folder.path() / "from";
  const std::filesystem::path home = folder.path() / "home";
  const std::filesystem::path file = folder.path() / "profile.zip";
  const std::filesystem::path watermarks = home / "user" / "ZVeffect.xml";
  const std::filesystem::path overlays = home / "profile" / "overlays";
};

}  // namespace Testing
