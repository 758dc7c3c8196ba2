// What undo keeps of a long session.
#include "formats/text.h"
#include "host/undo_history.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

namespace {

using Refhost::TracePairs;
using Refhost::UndoHistory;

TracePairs values(std::size_t units) { return {{u"", std::u16string(units, u'x')}}; }

Refhost::UndoStep step(std::size_t units) { return {values(units)}; }

TEST(UndoHistory, ForgetsTheOldestOfTooManyActions) {
  UndoHistory history;
  for (std::size_t i = 0; i < UndoHistory::mostActions + 3; ++i) history.add(step(i));
  EXPECT_EQ(history.actions(), UndoHistory::mostActions);
  for (std::size_t i = UndoHistory::mostActions + 2; i > 2; --i) EXPECT_EQ(history.takeLatest().values, values(i));
  EXPECT_TRUE(history.isEmpty());
}

TEST(UndoHistory, ForgetsTheOldestOfValuesThatAreTooLarge) {
  UndoHistory history;
  const std::size_t third = UndoHistory::mostUnits / 3;
  for (const std::size_t units : {third, third, third, std::size_t{3}}) history.add(step(units));
  EXPECT_EQ(history.actions(), 3u);
  EXPECT_EQ(history.takeLatest().values, values(3));
  history.add(step(UndoHistory::mostUnits / 4));
  EXPECT_EQ(history.actions(), 3u) << "what was taken counts no more";
}

TEST(UndoHistory, KeepsTheLatestValuesOfAnySize) {
  UndoHistory history;
  history.add(step(1));
  history.add(step(2 * UndoHistory::mostUnits));
  EXPECT_EQ(history.actions(), 1u);
  EXPECT_EQ(history.takeLatest().values, values(2 * UndoHistory::mostUnits));
  history.add(step(1));
  history.add(step(2));
  EXPECT_EQ(history.actions(), 2u);
}

TEST(Undo, TakesBackTheLatestActionsOfALongSession) {
  Testing::World world;
  const auto set = [&](std::size_t number) {
    world.preferences.set(u"OverlayName", Formats::toUtf16(std::to_string(number)));
  };
  for (std::size_t i = 0; i <= UndoHistory::mostActions + 10; ++i) set(i);
  std::size_t undone = 0;
  for (; world.preferences.canUndo(); ++undone) world.preferences.undo();
  EXPECT_EQ(undone, UndoHistory::mostActions);
  EXPECT_EQ(world.value(u"OverlayName"), u"10");
}

}  // namespace
