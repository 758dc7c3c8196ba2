// The tab in the reference host, on a home with watermarks.
#pragma once

#include "formats/text.h"
#include "host/model/settings.h"
#include "host/reference_host.h"
#include "host/widgets/list.h"
#include "tests/support/host_world.h"
#include "tests/support/world.h"

#include <gmock/gmock.h>

inline constexpr const char16_t* listId = u"lst_selectedWatermark";
inline constexpr const char16_t* perPageId = u"ePTKWPageWatermark_PrintPerPage";

inline const char* const oneOfAKind = R"(<Watermarks>
  <WM_1><label>Mine</label><stylename>apple</stylename><value>WM_1</value><fontname>Face</fontname>
    <fontsize>24</fontsize><fontstyle>BoldItalic</fontstyle><colour>#FF0000</colour><angle>45</angle>
    <positionX>L</positionX><positionY>U</positionY><printStyle>Transparency</printStyle>
    <transparency><intensity>30</intensity></transparency></WM_1>
  <WM_2><label>Ours</label><stylename>Banana</stylename><value>WM_2</value><fontsize>x</fontsize>
    <colour>#12</colour><angle>-90</angle><printStyle>Outline</printStyle>
    <transparency><intensity>30</intensity></transparency></WM_2>
  <WM_3><label>$IDS_WM_DRAFT;</label><stylename>Äpfel</stylename><value>WM_3</value></WM_3>
</Watermarks>)";

// A run with a new home.
struct Tab {
  explicit Tab(const std::string& userFile = oneOfAKind, Refhost::Options options = Testing::builtOptions()) {
    std::filesystem::create_directories(home.path / "user");
    if (!userFile.empty()) Testing::writeFile(home.path / "user" / "ZVeffect.xml", userFile);
    options.home = home.path;
    world = std::make_unique<Testing::World>(std::move(options));
    world->take();
  }

  Refhost::ListBox& list() { return world->widget<Refhost::ListBox>(listId); }
  Refhost::Button& button(std::u16string_view id) { return world->widget<Refhost::Button>(id); }
  bool isEnabled(std::u16string_view id) { return world->preferences.gui()->find(id)->isEnabled(); }
  std::string value(std::u16string_view property) { return Formats::toUtf8(world->value(property)); }
  std::string selected() { return Formats::toUtf8(list().selectedItem()->value().view()); }

  void choose(std::u16string_view id) {
    for (std::int32_t i = 0; i < list().items().count(); ++i)
      if (list().items().at(i)->value().view() == id) return list().choose(i);
    FAIL() << "no such item";
  }

  std::vector<std::string> items() {
    std::vector<std::string> lines;
    for (std::int32_t i = 0; i < list().items().count(); ++i) {
      const auto item = list().items().at(i);
      lines.push_back(Formats::toUtf8(item->value().view()) + "=" + Formats::toUtf8(item->displayedText().view()));
    }
    return lines;
  }

  Testing::TemporaryFolder home;
  std::unique_ptr<Testing::World> world;
};
