// A watermark store with a new home, without a plug-in.
#pragma once

#include "effect/watermark/watermarks.h"
#include "formats/text.h"
#include "host/widgets/list.h"
#include "tests/support/host_world.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

using Testing::bytesOf;

using Fields = std::vector<std::pair<std::string, std::string>>;

// A record's element; `element` is the escaped id ("_x0031_" for "1").
inline std::string element(const std::string& element, const Fields& fields) {
  std::string xml = "<" + element + ">";
  for (const auto& [name, text] : fields) xml += "<" + name + ">" + text + "</" + name + ">";
  return xml + "</" + element + ">";
}

// The text of a watermark file.
inline std::string watermarkFile(const std::string& elements) { return "<Watermarks>" + elements + "</Watermarks>"; }

// A file with one record, whose id is its element's name.
inline std::string oneRecord(const std::string& id, const std::string& name) {
  return watermarkFile(element(id, {{"label", name}, {"value", id}}));
}

class StoreWorld : public Testing::HostWorld {
 public:
  using HostWorld::HostWorld;

  Kiln::SmartPtr<Watermarks> open(bool isMerged = false) { return Refhost::make<Watermarks>(host, manager, isMerged); }

  std::filesystem::path userFile() const { return home / "user" / "ZVeffect.xml"; }
  std::filesystem::path localFile(const std::string& folder) const {
    return home / "localdata" / folder / "ZVeffect.xml";
  }
  std::filesystem::path mergedCopy() const { return home / "localdata" / "ZVeffect.xml"; }

  // A record made from the NoneRecord, like in the editor.
  static Effect::Node newRecord(Watermarks& store, std::u16string_view name) {
    auto record = store.makeNoneRecord();
    Effect::setField(*record, Effect::Field::label, name);
    Effect::setField(*record, Effect::Field::stylename, name);
    return record;
  }

  static std::u16string add(Watermarks& store, std::u16string_view name) {
    return store.addRecord(newRecord(store, name));
  }

  // The store's list: "ID=TEXT" of each item, with "*" appended for a downloaded one.
  std::vector<std::string> list(const Watermarks& store, bool withIcon = true) {
    const auto items = host.listData();
    store.fillList(*items, withIcon ? host.image(u"chrome://base/content/bitmaps/tips_UD_tb.bmp", u"global") : nullptr);
    std::vector<std::string> lines;
    for (std::int32_t i = 0; i < items->count(); ++i) {
      const auto item = Kiln::smartCast<Refhost::ListItem>(items->at(i));
      const bool isMarked = item->image() && item->colour() == u"#FF0000";
      lines.push_back(Formats::toUtf8(item->value().view()) + "=" + Formats::toUtf8(item->text().view()) +
                      (isMarked ? "*" : ""));
    }
    return lines;
  }

  // The records in a file: a field of each by id; empty when there is no file.
  using Names = std::map<std::string, std::string>;
  Names namesIn(const std::filesystem::path& file, std::u16string_view field = Effect::Field::stylename) {
    const auto path = host.path(file.u16string());
    if (!path->exists()) return {};
    Names names;
    for (const auto& record : Effect::recordsOf(*host.documents()->read(host.file(path))))
      names[Formats::toUtf8(record->name().view())] = Formats::toUtf8(Effect::fieldText(*record, field).view());
    return names;
  }
};

// A home whose user has never opened the tab.
struct Home {
  Home() { std::filesystem::create_directories(folder.path / "user"); }

  void putUserFile(const std::string& bytes) const { Testing::writeFile(folder.path / "user" / "ZVeffect.xml", bytes); }
  void putLocalFile(const std::string& name, const std::string& bytes) const {
    std::filesystem::create_directories(folder.path / "localdata" / name);
    Testing::writeFile(folder.path / "localdata" / name / "ZVeffect.xml", bytes);
  }

  Testing::TemporaryFolder folder;
};

// A store on a home on the disk.
class Store : public testing::Test {
 protected:
  Home home;
  StoreWorld world{home.folder.path};
};
