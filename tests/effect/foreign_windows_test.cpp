// A host built by another compiler, whose exceptions unwind past the plug-in.
#include "tests/support/foreign_exception.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

namespace {

using Testing::World;

TEST(ForeignExceptions, LeaveThePluginUsable) {
  int thrownAt = 0;
  bool isThrown = true;
  while (isThrown) {
    ++thrownAt;
    World world;
    int events = 0;
    bool isGuarded = true;
    world.preferences.trace().listen([&](const auto&) {
      if (isGuarded && ++events == thrownAt) Testing::throwForeignException();
    });
    isThrown = Testing::endsByForeignException([&] { world.box(u"chk_EffRot180Deg").click(); });
    isGuarded = false;

    world.box(u"ePTKWPageMirrorImage").click();
    EXPECT_EQ(world.value(u"MirrorImage"), u"MirrorImage") << thrownAt;
    EXPECT_TRUE(world.box(u"ePTKWPageMirrorImage").isChecked()) << thrownAt;
    EXPECT_NE(world.preferences.ticket().find("PageMirrorImage"), std::string::npos) << thrownAt;
    EXPECT_TRUE(world.face.failures.empty()) << thrownAt;
  }
  EXPECT_GT(thrownAt, 3);
}

}  // namespace
