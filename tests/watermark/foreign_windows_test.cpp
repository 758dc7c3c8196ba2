// A host built by another compiler, whose exceptions unwind past the store.
#include "store_changes.h"
#include "tests/files/failing_disk.h"
#include "tests/support/foreign_exception.h"

#include <gmock/gmock.h>

namespace {

class ForeignException : public testing::TestWithParam<Change> {};

TEST_P(ForeignException, LeavesTheStoreUsable) {
  int points = 0;
  for (int thrownAt = 1;; ++thrownAt) {
    const Home home;
    home.putUserFile(userFileBytes);
    home.putLocalFile("a", oneRecord("WM_a", "from a"));
    FailingDisk disk(Files::realDisk());
    disk.fail = [](const auto&) { Testing::throwForeignException(); };
    StoreWorld world(home.folder.path, disk);
    world.files.home.clear();  // the host's own lock would stay: nothing that is cut short is destroyed
    const auto store = world.open();
    disk.operations = 0;
    disk.failing = thrownAt;
    const bool isCutShort = Testing::endsByForeignException([&] { GetParam().make(*store); });
    disk.failing = 0;
    if (!isCutShort) break;
    ++points;

    const std::u16string id = world.add(*store, u"later");
    EXPECT_TRUE(store->hasName(u"later")) << thrownAt;
    EXPECT_TRUE(std::ranges::any_of(GetParam().oneOf, [&](const auto& name) { return store->hasName(name); }));
    renameRecord(*store, id, u"later still");
    StoreWorld next(home.folder.path);
    EXPECT_EQ(next.list(*next.open()), world.list(*store)) << thrownAt;
    EXPECT_TRUE(next.face.failures.empty()) << thrownAt;
  }
  EXPECT_GT(points, 3);
}

INSTANTIATE_TEST_SUITE_P(While, ForeignException, testing::ValuesIn(changes.begin() + 1, changes.end()),
                         [](const auto& each) { return each.param.name; });

}  // namespace
