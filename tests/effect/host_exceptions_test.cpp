// Exceptions that the host throws to the plug-in propagate through it, back to the host.
#include "host/allocator.h"
#include "tests/support/world.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace {

using testing::Each;
using testing::EndsWith;
using testing::SizeIs;
using Testing::World;

// Throws at one trace event: during a call of the plug-in to the host.
struct Thrower {
  void operator()(const Refhost::TraceEvent&) {
    if (++*events != at) return;
    throw std::runtime_error("The host's own.");
  }

  int at;
  int* events;
};

TEST(HostExceptions, PassThroughThePluginAndLeaveNothingBehind) {
  const long before = Refhost::heap().blocks();
  int thrownAt = 0;
  bool isThrown = true;
  while (isThrown) {
    ++thrownAt;
    {
      World world;
      int events = 0;
      world.preferences.trace().listen(Thrower{thrownAt, &events});
      world.box(u"chk_EffRot180Deg").click();
      world.box(u"ePTKWPageNegativeImage").click();
      isThrown = events >= thrownAt;
      events = thrownAt;  // only once
      EXPECT_THAT(world.face.failures, SizeIs(isThrown ? 1 : 0)) << thrownAt;
      EXPECT_THAT(world.face.failures, Each(EndsWith("The host's own."))) << thrownAt;

      world.box(u"ePTKWPageMirrorImage").click();
      EXPECT_EQ(world.value(u"MirrorImage"), u"MirrorImage") << thrownAt;
    }
    EXPECT_EQ(Refhost::heap().blocks(), before) << thrownAt;
  }
  EXPECT_GT(thrownAt, 6);
}

}  // namespace
