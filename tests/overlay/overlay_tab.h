// The tab in the reference host, on a home with overlays.
#pragma once

#include "host/gui.h"
#include "host/reference_host.h"
#include "host/widgets/list.h"
#include "overlay_home.h"
#include "thumbnails.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

// The pairs of each transition among the events.
inline std::vector<std::string> sent(const std::vector<Refhost::TraceEvent>& events) {
  std::vector<std::string> lines = Testing::transitions(events);
  std::transform(lines.begin(), lines.end(), lines.begin(), inSlashes);
  return lines;
}

inline Refhost::Options withUserData() {
  auto options = Testing::builtOptions();
  options.settings = {{u"kilnworks.tips.userdata.support", u"True"}};
  return options;
}

struct OverlayTab {
  // Opens the preferences with a home.
  explicit OverlayTab(const OverlayHome& openedHome, Refhost::Options options = Testing::builtOptions())
      : home(openedHome) {
    options.home = home.folder.path;
    world = std::make_unique<Testing::World>(std::move(options));
    announced = world->take();
    world->face.onModal = [this](Refhost::Dialog& dialog) {
      dialogs.push_back(Formats::toUtf8(dialog.url()));
      if (onDialog) onDialog(dialog);
    };
  }

  Refhost::ComboBox& list() { return world->widget<Refhost::ComboBox>(u"cmb_EffOverlay"); }
  Refhost::Button& button(std::u16string_view id) { return world->widget<Refhost::Button>(id); }
  bool isEnabled(std::u16string_view id) { return world->preferences.gui()->find(id)->isEnabled(); }

  // The ids of the enabled overlay controls.
  std::vector<std::string> operable() {
    std::vector<std::string> ids;
    for (const char* id : {"lbl_Ovl", "cmb_EffOverlay", "but_EffDet", "btn_OvlDel", "ePTKWJobOverlayImage_Layering",
                           "ePTKWJobOverlayImage_PrintPerPage"})
      if (isEnabled(Formats::toUtf16(id))) ids.emplace_back(id);
    return ids;
  }
  std::string value(std::u16string_view property) { return inSlashes(Formats::toUtf8(world->value(property))); }
  std::string selected() { return Formats::toUtf8(list().selectedItem()->value().view()); }

  // The picture's file or address; empty for none.
  std::string picture() {
    const auto image = world->widget<Refhost::ImageBox>(u"img_EffOverlay").image();
    const auto* own = dynamic_cast<const Refhost::Image*>(image.get());
    return own == nullptr ? "" : inSlashes(Formats::toUtf8(own->source));
  }

  // The scope of the caption's picture; "-" for no picture.
  std::string captionScope() {
    const auto image = world->widget<Refhost::Label>(u"lbl_Ovl").image();
    const auto* own = dynamic_cast<const Refhost::Image*>(image.get());
    return own == nullptr ? "-" : Formats::toUtf8(own->scope);
  }

  // "VALUE=TEXT" of each item, with "*" appended for a downloaded one.
  std::vector<std::string> items() {
    std::vector<std::string> lines;
    for (std::int32_t i = 0; i < list().items().count(); ++i) {
      const auto item = list().items().at(i);
      lines.push_back(Formats::toUtf8(item->value().view()) + "=" + Formats::toUtf8(item->displayedText().view()) +
                      (item->isMarked() ? "*" : ""));
    }
    return lines;
  }

  void choose(std::u16string_view itemValue) {
    for (std::int32_t i = 0; i < list().items().count(); ++i)
      if (list().items().at(i)->value().view() == itemValue) return list().choose(i);
    FAIL() << "no such item";
  }

  void set(std::u16string_view property, std::u16string_view text) {
    world->preferences.set(std::u16string(property), std::u16string(text));
  }

  // Deletes the selected overlay, and confirms.
  void remove() {
    onDialog = [](Refhost::Dialog& dialog) { dialog.accept(); };
    button(u"btn_OvlDel").click();
  }

  std::string userFile(const std::string& name) const { return (home.userFolder() / name).generic_string(); }

  const OverlayHome& home;
  std::unique_ptr<Testing::World> world;
  std::vector<Refhost::TraceEvent> announced;  // events while opening
  std::vector<std::string> dialogs;            // the dialogs opened since
  std::function<void(Refhost::Dialog&)> onDialog;
};

inline OverlayHome::Names twoOverlays() { return {{u"terms", u"00002.opa"}, {u"Letterhead", u"00001.opa"}}; }

// The overlay group of a tab on a home with two overlays.
class OverlayGroup : public testing::Test {
 protected:
  OverlayGroup() { home.putUser(twoOverlays()); }
  OverlayHome home;
};
