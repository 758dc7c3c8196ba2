// The plug-in in the reference host, on homes with watermarks and overlays.
#pragma once

#include "files/temporary_folder.h"
#include "host/gui.h"
#include "host/widgets/list.h"
#include "tests/profile/profile_world.h"

#include <memory>

namespace Testing {

inline Refhost::Options optionsFor(const std::filesystem::path& homeFolder) {
  Refhost::Options options = builtOptions();
  options.home = homeFolder;
  return options;
}

class ProfileHomes : public testing::Test {
 protected:
  static void putWatermarkFile(const std::filesystem::path& homeFolder, const std::string& records) {
    put(homeFolder / "user" / "ZVeffect.xml", watermarkFile(records));
  }
  static std::filesystem::path overlaysOf(const std::filesystem::path& homeFolder) {
    return homeFolder / "profile" / "overlays";
  }

  Files::TemporaryFolder folder;
  const std::filesystem::path home = folder.path() / "home";
  const std::filesystem::path other = folder.path() / "other";
};

struct PluginRun {
  explicit PluginRun(const Refhost::Options& options) : world(options) {}
  explicit PluginRun(const std::filesystem::path& home) : PluginRun(optionsFor(home)) {}

  std::filesystem::path exportTo(const std::filesystem::path& target) {
    return world.preferences.exportProfile(target, u"True").value();
  }

  Refhost::ListBox& watermarkList() { return world.widget<Refhost::ListBox>(u"lst_selectedWatermark"); }
  Refhost::ComboBox& overlayList() { return world.widget<Refhost::ComboBox>(u"cmb_EffOverlay"); }
  std::vector<std::string> watermarks() { return itemsOf(watermarkList()); }
  std::vector<std::string> overlays() { return itemsOf(overlayList()); }
  // "ADDRESS COLOUR" of an item's picture.
  static std::string tipOf(Refhost::SelectorNode& list, std::int32_t item) {
    const auto shown = Kiln::smartCast<Refhost::ListItem>(list.items().at(item));
    const auto picture = Kiln::smartCast<Refhost::Image>(shown->image());
    return (picture ? Formats::toUtf8(picture->source) : "") + " " + Formats::toUtf8(shown->colour());
  }
  bool isEnabled(std::u16string_view id) { return world.preferences.gui()->find(id)->isEnabled(); }
  std::string value(std::u16string_view property) { return Formats::toUtf8(world.value(property)); }

  void deleteWatermark(std::u16string_view id) {
    world.preferences.set(u"WatermarkSel", std::u16string(id));
    world.face.onModal = [](Refhost::Dialog& dialog) { dialog.accept(); };
    world.widget<Refhost::Button>(u"btn_WMDel").click();
  }

  World world;

 private:
  // "VALUE=TEXT" of each item, with "*" appended for a downloaded one.
  static std::vector<std::string> itemsOf(Refhost::SelectorNode& list) {
    std::vector<std::string> lines;
    for (std::int32_t i = 0; i < list.items().count(); ++i) {
      const auto item = list.items().at(i);
      lines.push_back(Formats::toUtf8(item->value().view()) + "=" + Formats::toUtf8(item->displayedText().view()) +
                      (item->isMarked() ? "*" : ""));
    }
    return lines;
  }
};

}  // namespace Testing
