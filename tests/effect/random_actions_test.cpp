// Thousands of actions of a user and of the host, in any order: no watermark and no overlay disappears but by a
// confirmed deletion or replacement of that very name.
#include "formats/names.h"
#include "formats/text.h"
#include "host/gui.h"
#include "host/widgets/input.h"
#include "host/widgets/list.h"
#include "tests/effect/made_home.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

namespace WidgetId = Formats::WidgetId;
namespace Prop = Formats::Prop;
namespace Value = Formats::Value;
using Formats::toUtf16;
using Formats::toUtf8;

class User {
 public:
  User(const Testing::MadeHome& where, unsigned seed) : home(where), random(seed) { open(); }

  // Does something; tells what.
  std::string act() {
    mayGo.clear();
    const std::vector<std::pair<const char*, void (User::*)()>> actions = {
        {"choose a watermark", &User::chooseWatermark}, {"add a watermark", &User::addWatermark},
        {"edit a watermark", &User::editWatermark},     {"delete a watermark", &User::deleteWatermark},
        {"choose an overlay", &User::chooseOverlay},    {"delete an overlay", &User::deleteOverlay},
        {"make an overlay", &User::makeOverlay},        {"change availability", &User::changeAvailability},
        {"set the selections", &User::setSelections},   {"undo", &User::undo},
        {"refresh the stores", &User::refresh},         {"open again", &User::openAgain}};
    const auto& [name, action] = actions[below(actions.size())];
    (this->*action)();
    return name;
  }

  // Whether the user has agreed to lose that name with the last action. Names of built-in watermarks are references.
  bool hasGivenUp(const std::string& name) const { return mayGo.contains(shown(name)); }

  // The name in a thing of the home: "overlay profile/overlays Letterhead".
  static std::string nameIn(const std::string& thing) { return thing.substr(thing.find(' ', thing.find(' ') + 1) + 1); }

 private:
  std::string shown(const std::string& name) const {
    return toUtf8(world->preferences.strings().resolve(toUtf16(name)));
  }
  std::size_t below(std::size_t end) { return random() % end; }
  bool tossed() { return below(2) == 0; }
  std::u16string anyName() {
    constexpr const char16_t* names[] = {u"Mine", u"Draft", u"Corp", u"Alpha", u"Zebra", u"Letterhead", u"New"};
    return names[below(std::size(names))];
  }

  void open() {
    formerNames.clear();
    Refhost::Options options = Testing::builtOptions();
    options.home = home.path();
    options.settings = {{std::u16string(Formats::Setting::userDataSupport), tossed() ? u"True" : u"False"},
                        {std::u16string(Formats::Setting::defaultUserDataHide), tossed() ? u"2" : u"0"},
                        {std::u16string(Formats::Setting::styleNameSupport), tossed() ? u"True" : u"False"}};
    if (tossed()) options.properties = {{std::u16string(Prop::printJob), std::u16string(Value::overlayJob)}};
    world = std::make_unique<Testing::World>(std::move(options));
    world->face.onModal = [this](Refhost::Dialog& dialog) { answer(dialog); };
  }

  void answer(Refhost::Dialog& dialog) {
    const std::u16string url = dialog.url();
    if (url == Formats::Address::watermarkEditor) return edit(dialog);
    const bool agrees = tossed();
    if (agrees && (url == Formats::Address::confirmDelete || url == Formats::Address::overwrite)) giveUp(asked);
    if (agrees)
      dialog.accept();
    else
      dialog.cancel();
  }

  void giveUp(const std::string& name) {
    mayGo.insert(name);
    mayGo.insert(formerNames[name].begin(), formerNames[name].end());
  }

  void edit(Refhost::Dialog& dialog) {
    const std::string before = asked;
    const std::u16string name = anyName();
    if (tossed()) type(dialog, WidgetId::textBox, name);
    if (tossed()) type(dialog, WidgetId::styleNameBox, name);
    if (tossed()) type(dialog, WidgetId::angle, u"30");
    auto* box = dynamic_cast<Refhost::TextBoxNode*>(dialog.layout().find(WidgetId::styleNameBox));
    asked = toUtf8(box->content());  // what a question is about from now on
    const std::set<std::string> agreed = mayGo;
    if (tossed() || !dialog.accept()) {
      dialog.cancel();
      mayGo = agreed;
      return;
    }
    if (before.empty()) return;
    giveUp(before);  // a renamed one has its former name no more, except in local data
    formerNames[asked].insert(before);
    formerNames[asked].merge(std::set(formerNames[before]));
  }

  static void type(Refhost::Dialog& dialog, Formats::Name id, const std::u16string& text) {
    dynamic_cast<Refhost::TextBoxNode&>(*dialog.layout().find(id)).edit(text, Refhost::Edit::typed);
  }

  Refhost::SelectorNode& list(Formats::Name id) { return world->widget<Refhost::SelectorNode>(id); }
  std::string selectedIn(Formats::Name id) {
    Refhost::SelectorNode& selector = list(id);
    const auto item = selector.items().at(selector.selection());
    return item ? toUtf8(item->displayedText().view()) : "";
  }
  void press(Formats::Name id) { world->widget<Refhost::Button>(id).click(); }
  void choose(Formats::Name id) {
    Refhost::SelectorNode& selector = list(id);
    selector.choose(static_cast<int>(below(static_cast<std::size_t>(selector.items().count()))));
  }

  void chooseWatermark() { choose(WidgetId::watermarkList); }
  void addWatermark() {
    asked.clear();
    press(WidgetId::watermarkAdd);
  }
  void editWatermark() {
    asked = selectedIn(WidgetId::watermarkList);
    press(WidgetId::watermarkEdit);
  }
  void deleteWatermark() {
    asked = selectedIn(WidgetId::watermarkList);
    press(WidgetId::watermarkDelete);
  }
  void chooseOverlay() { choose(WidgetId::overlayList); }
  void deleteOverlay() {
    asked = selectedIn(WidgetId::overlayList);
    press(WidgetId::overlayDelete);
  }
  void makeOverlay() {
    const std::u16string name = anyName();
    asked = toUtf8(name);
    world->face.jobStep = name;
    world->preferences.set(std::u16string(Prop::overlayImageCreate), std::u16string(Value::on));
    if (world->value(Prop::ovlDestCreated) != Value::yes) return;
    if (tossed())
      world->preferences.writeJob("a form");
    else
      world->preferences.set(std::u16string(Prop::cancelJob), std::u16string(Value::yes));
    world->preferences.set(std::u16string(Prop::ovlDestCreated), std::u16string(Value::no));
    world->preferences.set(std::u16string(Prop::cancelJob), std::u16string(Value::no));
  }
  void changeAvailability() {
    const bool isOverlay = tossed();
    const std::u16string property(isOverlay ? Prop::overlayImage : Prop::watermark);
    const std::u16string option(isOverlay ? Value::overlayImage : Value::watermark);
    world->preferences.setAvailable(property, option, tossed());
  }
  void setSelections() {
    constexpr const char16_t* ids[] = {u"0", u"1", u"WM_1", u"WM_7", u"WM_1_G", u"unknown"};
    constexpr const char16_t* files[] = {u"None", u"Multiple", u"00001.opa", u"00002.opa", u"00009.opa"};
    if (tossed())
      world->preferences.set(std::u16string(Prop::watermarkSel), ids[below(std::size(ids))]);
    else
      world->preferences.set(std::u16string(Prop::overlaySel), files[below(std::size(files))]);
  }
  void undo() {
    if (tossed())
      takeBack();
    else
      world->preferences.restoreDefaults();
  }

  // What undo takes away, redo brings back.
  void takeBack() {
    if (!world->preferences.canUndo()) return;
    const auto all = home.things();
    world->preferences.undo();
    const auto left = home.things();
    if (!world->preferences.canRedo()) return;
    world->preferences.redo();
    EXPECT_EQ(home.things(), all);
    world->preferences.undo();
    EXPECT_EQ(home.things(), left);
    std::vector<std::string> gone;
    std::ranges::set_difference(all, left, std::back_inserter(gone));
    for (const std::string& thing : gone) mayGo.insert(shown(nameIn(thing)));
  }
  void refresh() { world->preferences.refreshStores(); }
  void openAgain() {
    world.reset();
    open();
  }

  const Testing::MadeHome& home;
  std::set<std::string> mayGo;                               // displayed names
  std::map<std::string, std::set<std::string>> formerNames;  // of renamed watermarks, which local data keeps
  std::mt19937 random;
  std::unique_ptr<Testing::World> world;
  std::string asked;  // the name that a question is about
};

class RandomActions : public testing::TestWithParam<unsigned> {};

TEST_P(RandomActions, LoseNothingThatNobodyAgreedToLose) {
  const Testing::MadeHome home;
  auto before = home.things();
  ASSERT_EQ(before.size(), 11U);
  User user(home, GetParam());
  for (int step = 0; step < 400; ++step) {
    const std::string what = step == 0 ? "open" : user.act();
    const auto now = home.things();
    std::vector<std::string> gone;
    std::ranges::set_difference(before, now, std::back_inserter(gone));
    for (const std::string& thing : gone) {
      ASSERT_TRUE(user.hasGivenUp(User::nameIn(thing))) << thing << " is gone after step " << step << ": " << what;
    }
    before = now;
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomActions, testing::Range(1U, 13U));

}  // namespace
