// The dialog for several overlays in the reference host, on a home with overlays, without the tab's handlers.
#pragma once

#include "effect/list_order.h"
#include "effect/overlay/multi_overlay_dlg.h"
#include "host/chrome/layout.h"
#include "host/gui.h"
#include "tests/overlay/overlay_home.h"
#include "tests/overlay/thumbnails.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

// The open dialog, for input and inspection. Slots are numbered from 1, as displayed.
class OpenDialog {
 public:
  explicit OpenDialog(Refhost::Dialog& openDialog) : dialog(openDialog) {}

  template <class Kind>
  Kind& widget(const std::string& id) {
    auto* found = dynamic_cast<Kind*>(dialog.layout().find(Formats::toUtf16(id)));
    if (found == nullptr) throw std::logic_error("the dialog has no widget " + id + " of that kind");
    return *found;
  }
  Refhost::ListBox& source() { return widget<Refhost::ListBox>("lib_MulOvlSource"); }
  Refhost::ImageBox& image(int slot) {
    return widget<Refhost::ImageBox>("img_MulOvl" + std::to_string(slot) + "Image");
  }
  Refhost::TextBox& field(int slot) { return widget<Refhost::TextBox>("edt_MulOvl" + std::to_string(slot) + "Manual"); }

  // A slot's display: its picture's name without ".bmp" and its rule, or "-" for the blank page. A master's rule is
  // that of the selected radio button, "?" for none.
  std::string slot(int number) {
    std::string picture = "-";
    if (image(number).image()) {
      const auto* shown = dynamic_cast<const Refhost::Image*>(image(number).image().get());
      picture = shown->file.stem().string();
    } else if (image(number).resource() != u"BlankBitmap") {
      picture = "nothing";
    }
    return picture + " " + rule(number);
  }
  std::vector<std::string> slots() {
    std::vector<std::string> all;
    for (int number = 1; number <= 8; ++number) all.push_back(slot(number));
    return all;
  }

  void select(const std::string& value) {
    for (std::int32_t i = 0; i < source().items().count(); ++i)
      if (source().items().at(i)->value().view() == Formats::toUtf16(value)) return source().choose(i);
    throw std::logic_error("the dialog has no overlay " + value);
  }
  void add(const std::string& value) {
    select(value);
    click("btn_MulOvlAdd");
  }
  void addManual(const std::string& value) {
    select(value);
    click("btn_MulOvlAddManual");
  }
  void drop(const std::string& value, int slot) { image(slot).drop(Formats::toUtf16(value)); }
  void click(const std::string& button) { widget<Refhost::Button>(button).click(); }
  void choose(const std::string& radio) { widget<Refhost::RadioButton>(radio).choose(); }
  bool type(int slot, std::string_view pages, Refhost::Edit how = Refhost::Edit::typed) {
    return field(slot).edit(Formats::toUtf16(std::string(pages)), how);
  }
  void clearByMenu(int slot) { image(slot).choose(u"clear"); }
  void clearByList(int slot) {
    widget<Refhost::ComboBox>("cmb_MulOvlGroupsToClear").choose(slot - 1);
    click("but_MulOvlClear");
  }
  void accept() { dialog.accept(); }
  void cancel() { dialog.cancel(); }

 private:
  std::string rule(int number) {
    if (number > 2) return Formats::toUtf8(field(number).content());
    std::string rules;
    for (const char* name : {"All", "Even", "Odd"})
      if (number == 1 || std::string(name) != "All")
        if (widget<Refhost::RadioButton>("rad" + std::to_string(number) + "_" + name).isChecked()) rules += name;
    return rules.empty() ? "?" : rules;
  }

  Refhost::Dialog& dialog;
};

// Overlays are named by letters, with a file of five such letters: "AAAAA.opa" is labelled "A".
inline std::string fileOf(char letter) { return std::string(5, letter) + ".opa"; }

// A value of MultipleOverlayDetails: the given entries, padded with free ones to eight.
inline std::string details(std::vector<std::string> entries) {
  entries.resize(std::max<std::size_t>(entries.size(), 8), ";");
  std::string value;
  for (const std::string& entry : entries) value += entry + "$";
  return value;
}

inline std::filesystem::path pictureOf(const Kiln::XUL::Image& image) {
  return dynamic_cast<const Refhost::Image&>(image).file;
}

class MultiDialog : public testing::Test {
 protected:
  using User = std::function<void(OpenDialog&)>;

  explicit MultiDialog(const std::string& overlays = "ABC") {
    OverlayHome::Names names;
    for (const char letter : overlays)
      names.emplace_back(Formats::toUtf16(std::string(1, letter)), Formats::toUtf16(fileOf(letter)));
    home.putUser(names);
    for (const char letter : overlays) Testing::writeFile(thumbnail(letter), bitmap(1, 1));
    world.trace.listen([this](const Refhost::TraceEvent& event) { events.push_back(event); });
  }

  std::filesystem::path file(char letter) const { return home.userFolder() / fileOf(letter); }
  std::filesystem::path thumbnail(char letter) const { return home.userFolder() / (std::string(5, letter) + ".bmp"); }
  std::string path(char letter) { return Formats::toUtf8(world.host.path(file(letter).u16string())->text().view()); }

  // Opens the dialog like the tab, runs the user's input, and returns when it has closed.
  void open(const User& user) {
    tabsStore = opening();
    const Refhost::LayoutReader layouts(world.chrome, without);
    Refhost::WidgetWorld widgets{world.trace, world.strings, {}, [](const auto& action) { action(); }, [](auto&) {}};
    const auto gui = Refhost::make<Refhost::Gui>(Refhost::GuiWorld{world.face, layouts, widgets}, world.trace);
    gui->loadTab(u"chrome://effect/content/tab_effect.xul");
    if (auto* combo = dynamic_cast<Refhost::ComboBox*>(gui->find(u"cmb_EffOverlay"))) {
      const auto items = world.host.listData();
      tabsStore->fillList(*items, true, {});
      Effect::orderByLabel(*items, 2);
      combo->setData(items);
    }
    afterTheStoreIsRead();
    world.face.onModal = [&](Refhost::Dialog& dialog) {
      blankPage = dialog.imageAddress(u"BlankBitmap");
      OpenDialog shown(dialog);
      user(shown);
      if (dialog.isOpen()) dialog.cancel();
    };
    Kiln::XUL::MultiOverlayDlg({world.host, world.manager, tabsStore}, *gui).run();
  }

  // The slots shown when the dialog opens with that value.
  std::vector<std::string> shown(const std::string& savedDetails) {
    std::vector<std::string> slots;
    openOn(savedDetails, [&slots](OpenDialog& dialog) { slots = dialog.slots(); });
    return slots;
  }
  void openOn(const std::string& savedDetails, const User& user) {
    set(u"MultipleOverlayDetails", Formats::toUtf16(savedDetails));
    open(user);
  }

  // The value of MultipleOverlayDetails that is saved after the user's input is accepted.
  std::string saved(const User& user) {
    open([&user](OpenDialog& dialog) {
      user(dialog);
      dialog.accept();
    });
    return value(u"MultipleOverlayDetails");
  }

  void set(std::u16string_view property, std::u16string_view text) {
    world.manager->model->submit({{std::u16string(property), std::u16string(text)}});
  }
  std::string value(std::u16string_view property) {
    return Formats::toUtf8(world.manager->model->value(property).value());
  }
  std::vector<Refhost::TraceEvent> take() { return std::exchange(events, {}); }

  OverlayHome home;
  OverlayStore world{home.folder.path};
  std::set<std::u16string, std::less<>> without;  // widgets omitted from the layouts
  std::vector<Refhost::TraceEvent> events;
  std::function<Kiln::SmartPtr<Overlays>()> opening = [this] { return world.open(); };
  Kiln::SmartPtr<Overlays> tabsStore;
  std::function<void()> afterTheStoreIsRead = [] {};
  std::u16string blankPage;  // the address that the dialog registers for it
};
