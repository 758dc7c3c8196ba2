// A home in which people made watermarks and overlays, and what of that is still there.
#pragma once

#include "formats/names.h"
#include "formats/overlay_index.h"
#include "formats/text.h"
#include "formats/watermark_record.h"
#include "host/documents/documents.h"
#include "tests/support/host_world.h"

#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace Testing {

inline constexpr const char* marksOfTheUser = R"(<?xml version="1.0" encoding="UTF-8"?>
<Watermarks>
  <WM_1><label>Mine</label><stylename>Mine</stylename><value>WM_1</value></WM_1>
  <WM_2><label>Draft</label><stylename>Draft</stylename><value>WM_2</value></WM_2>
</Watermarks>)";
inline constexpr const char* marksOfA = R"(<?xml version="1.0" encoding="UTF-8"?>
<Watermarks>
  <WM_1><label>Corp</label><stylename>Corp</stylename><value>WM_1</value></WM_1>
  <WM_7><label>Draft</label><stylename>Draft</stylename><value>WM_7</value></WM_7>
</Watermarks>)";
inline constexpr const char* marksOfB = R"(<?xml version="1.0" encoding="UTF-8"?>
<Watermarks>
  <WM_7><label>Mine</label><stylename>Mine</stylename><value>WM_7</value></WM_7>
  <WM_8><label>Draft</label><stylename>Draft</stylename><value>WM_8</value></WM_8>
</Watermarks>)";

// A home with the user's things and two folders of local data that clash with them in names, ids and file names.
struct MadeHome {
  MadeHome() {
    writeFile(path() / "user" / "ZVeffect.xml", marksOfTheUser);
    writeFile(path() / "localdata" / "A" / "ZVeffect.xml", marksOfA);
    writeFile(path() / "localdata" / "B" / "ZVeffect.xml", marksOfB);
    put(path() / "profile" / "overlays", {{u"Zebra", u"00001.opa"}, {u"Letterhead", u"00002.opa"}});
    put(path() / "localdata" / "A" / "overlays", {{u"Alpha", u"00001.opa"}, {u"Letterhead", u"00003.opa"}});
    put(path() / "localdata" / "B" / "overlays", {{u"Alpha", u"00002.opa"}});
  }

  static void put(const std::filesystem::path& folder, const std::vector<Formats::IndexEntry>& entries) {
    for (const auto& entry : entries) writeFile(folder / entry.fileName, Formats::toUtf8(entry.name));
    writeFile(folder / Formats::overlayIndexName, Formats::indexBytes(entries));
  }

  const std::filesystem::path& path() const { return folder.path; }

  // "KIND FOLDER NAME" of everything that somebody made.
  std::multiset<std::string> things() const {
    std::multiset<std::string> all;
    for (const char* place : {"user", "localdata/A", "localdata/B"}) {
      const std::filesystem::path file = path() / place / Formats::watermarkFileName;
      if (!std::filesystem::exists(file)) continue;
      const auto root =
          Refhost::readXml(bytesOf(file), file.string(), Refhost::documentLimits, Refhost::NameEscaping::on);
      for (const auto& record : root->children())
        if (const auto name = record->child(Formats::Field::stylename); name && record->localNameText() != u"0")
          all.insert(std::string("mark ") + place + ' ' + Formats::toUtf8(name->value().view()));
    }
    for (const char* place : {"profile/overlays", "localdata/A/overlays", "localdata/B/overlays"}) {
      const std::filesystem::path index = path() / place / Formats::overlayIndexName;
      if (!std::filesystem::exists(index)) continue;
      for (const auto& entry : Formats::readIndex(bytesOf(index)))
        if (std::filesystem::exists(path() / place / entry.fileName))
          all.insert(std::string("overlay ") + place + ' ' + Formats::toUtf8(entry.name));
    }
    return all;
  }

  TemporaryFolder folder;
};

}  // namespace Testing
