// Memory runs out at each allocation of an action, in plug-in and host: what people made is there as it was before the
// action or as it is after it, all memory is given back, and the next opening works.
//
// An action takes thousands of allocations; unless EVERY_ALLOCATION is set in the environment, thirty of them fail,
// spread over the action.
#include "formats/names.h"
#include "host/allocator.h"
#include "host/gui.h"
#include "host/widgets/input.h"
#include "host/widgets/list.h"
#include "tests/effect/made_home.h"
#include "tests/support/world.h"

#include <dlfcn.h>
#include <execinfo.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <iterator>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <set>
#include <string>

namespace {

namespace WidgetId = Formats::WidgetId;
namespace Prop = Formats::Prop;
namespace Value = Formats::Value;

enum class Shortage { once, fromThenOn };

// Whether a directory iterator of the standard library is at work: it ends the program when it gets no memory.
bool isInDirectoryIterator() {
  void* frames[32];
  const int count = ::backtrace(frames, std::size(frames));
  return std::any_of(frames, frames + count, [](void* address) {
    Dl_info place{};
    return ::dladdr(address, &place) != 0 && place.dli_sname != nullptr &&
           std::strstr(place.dli_sname, "directory_iterator") != nullptr;
  });
}

// What `operator new` of this program and of the libraries that it loads gives.
struct Supply {
  bool has() {
    if (!isCounting) return true;
    const bool isOver = taken++ >= amount && !isInDirectoryIterator();
    if (isOver && shortage == Shortage::once) amount = forever;
    if (isOver) ++refused;
    return !isOver;
  }

  static constexpr long forever = std::numeric_limits<long>::max();
  bool isCounting = false;
  Shortage shortage = Shortage::once;
  long amount = forever;
  long taken = 0;
  long refused = 0;
};
Supply supply;

void* take(std::size_t bytes) noexcept { return supply.has() ? std::malloc(bytes == 0 ? 1 : bytes) : nullptr; }
void* takeOrThrow(std::size_t bytes) {
  if (void* memory = take(bytes)) return memory;
  throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t bytes) { return takeOrThrow(bytes); }
void* operator new[](std::size_t bytes) { return takeOrThrow(bytes); }
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept { return take(bytes); }
void* operator new[](std::size_t bytes, const std::nothrow_t&) noexcept { return take(bytes); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

using Testing::MadeHome;
using Testing::World;

// Counts what is taken while it lives, and refuses all after `amount`, or the next one alone.
class Scarcity {
 public:
  Scarcity(Shortage shortage, long amount) { supply = {true, shortage, amount, 0, 0}; }
  ~Scarcity() { supply.isCounting = false; }
  Scarcity(const Scarcity&) = delete;
  Scarcity& operator=(const Scarcity&) = delete;
};

struct Action {
  const char* name;
  std::function<void(World&)> prepare;  // with memory enough
  std::function<void(World&)> run;
};

// Types a name and a text into the editor, and agrees to everything.
void agree(Refhost::Dialog& dialog) {
  if (dialog.url() == Formats::Address::watermarkEditor)
    for (const auto& id : {WidgetId::textBox, WidgetId::styleNameBox})
      dynamic_cast<Refhost::TextBoxNode&>(*dialog.layout().find(id)).edit(u"Typed", Refhost::Edit::typed);
  if (!dialog.accept()) dialog.cancel();
}

std::unique_ptr<World> opened(const std::filesystem::path& home) {
  Refhost::Options options = Testing::builtOptions();
  options.home = home;
  options.settings = {{std::u16string(Formats::Setting::userDataSupport), u"True"},
                      {std::u16string(Formats::Setting::styleNameSupport), u"True"}};
  auto world = std::make_unique<World>(std::move(options));
  world->face.onModal = agree;
  return world;
}

Refhost::SelectorNode& list(World& world, Formats::Name id) { return world.widget<Refhost::SelectorNode>(id); }

void choose(World& world, Formats::Name id, std::u16string_view text) {
  Refhost::SelectorNode& selector = list(world, id);
  for (int i = 0; i < selector.items().count(); ++i)
    if (selector.items().at(i)->displayedText().view() == text) return selector.choose(i);
  FAIL() << "no such item";
}
void press(World& world, Formats::Name id) { world.widget<Refhost::Button>(id).click(); }

void nothing(World&) {}
void openAnother(World& world) { opened(world.preferences.home()); }
void chooseMine(World& world) { choose(world, WidgetId::watermarkList, u"Mine"); }
void chooseZebra(World& world) { choose(world, WidgetId::overlayList, u"Zebra"); }
void addWatermark(World& world) { press(world, WidgetId::watermarkAdd); }
void editWatermark(World& world) { press(world, WidgetId::watermarkEdit); }
void deleteWatermark(World& world) { press(world, WidgetId::watermarkDelete); }
void deleteOverlay(World& world) { press(world, WidgetId::overlayDelete); }
void makeOverlay(World& world) {
  world.face.jobStep = u"New";
  world.preferences.set(std::u16string(Prop::overlayImageCreate), std::u16string(Value::on));
  if (world.value(Prop::ovlDestCreated) == Value::yes) world.preferences.writeJob("a form");
  world.preferences.set(std::u16string(Prop::ovlDestCreated), std::u16string(Value::no));
}
void replaceOverlay(World& world) {
  world.face.jobStep = u"Letterhead";
  world.preferences.set(std::u16string(Prop::overlayImageCreate), std::u16string(Value::on));
  if (world.value(Prop::ovlDestCreated) == Value::yes) world.preferences.writeJob("a form");
  world.preferences.set(std::u16string(Prop::ovlDestCreated), std::u16string(Value::no));
}
void refresh(World& world) { world.preferences.refreshStores(); }
void writeTicket(World& world) { world.preferences.loadTicket(world.preferences.ticket(), "ticket.xml"); }
void exportProfile(World& world) { world.preferences.exportProfile(world.preferences.home() / "profile.out", u"Yes"); }
void importProfile(World& world) { world.preferences.importProfile({}, {{u"MirrorImage", u"MirrorImage"}}); }
void acceptAll(World& world) { world.preferences.accept(); }

const Action actions[] = {{"Open", nothing, openAnother},
                          {"AddWatermark", nothing, addWatermark},
                          {"EditWatermark", chooseMine, editWatermark},
                          {"DeleteWatermark", chooseMine, deleteWatermark},
                          {"DeleteOverlay", chooseZebra, deleteOverlay},
                          {"MakeOverlay", nothing, makeOverlay},
                          {"ReplaceOverlay", nothing, replaceOverlay},
                          {"RefreshStores", nothing, refresh},
                          {"TicketThereAndBack", chooseMine, writeTicket},
                          {"ExportProfile", nothing, exportProfile},
                          {"ImportProfile", chooseMine, importProfile},
                          {"Accept", chooseMine, acceptAll}};

class OutOfMemory : public testing::TestWithParam<std::tuple<Action, Shortage>> {};

// Everything that was made before and after the action when memory suffices, and what the action takes.
struct Undisturbed {
  explicit Undisturbed(const Action& action) {
    const MadeHome home;
    auto world = opened(home.path());
    action.prepare(*world);
    before = home.things();
    {
      const Scarcity none(Shortage::once, Supply::forever);
      action.run(*world);
      taken = supply.taken;
    }
    world.reset();
    after = home.things();
  }

  std::multiset<std::string> before;
  std::multiset<std::string> after;
  long taken = 0;
};

TEST_P(OutOfMemory, LeavesWhatWasMadeAsItWasOrAsItShallBe) {
  const auto& [action, shortage] = GetParam();
  const Undisturbed known(action);
  ASSERT_GT(known.taken, 0);
  const long step = std::getenv("EVERY_ALLOCATION") ? 1 : std::max(1L, known.taken / 30);
  for (long amount = 0; amount < known.taken; amount += step) {
    SCOPED_TRACE(amount);
    const MadeHome home;
    const long blocks = Refhost::heap().blocks();
    auto world = opened(home.path());
    action.prepare(*world);
    long refused = 0;
    {
      const Scarcity scarcity(shortage, amount);
      try {
        action.run(*world);
      } catch (const std::exception&) {  // the caller of this host operation is told
      }
      refused = supply.refused;
    }
    EXPECT_GT(refused, 0);
    world.reset();
    EXPECT_EQ(Refhost::heap().blocks(), blocks);
    const auto left = home.things();
    EXPECT_TRUE(left == known.before || left == known.after) << testing::PrintToString(left);

    world = opened(home.path());
    EXPECT_TRUE(world->face.failures.empty());
    world.reset();
    EXPECT_EQ(home.things(), left);
    if (HasFailure()) return;
  }
}

INSTANTIATE_TEST_SUITE_P(Actions, OutOfMemory,
                         testing::Combine(testing::ValuesIn(actions),
                                          testing::Values(Shortage::once, Shortage::fromThenOn)),
                         [](const auto& one) {
                           return std::string(std::get<Action>(one.param).name) +
                                  (std::get<Shortage>(one.param) == Shortage::once ? "Once" : "FromThenOn");
                         });

}  // namespace
