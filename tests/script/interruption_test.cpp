#include "app/interruption.h"

#include <gtest/gtest.h>

#include <csignal>

namespace {

TEST(Interruption, FirstSignalIsNotedInsteadOfEndingTheProcess) {
  for (const int number : {SIGINT, SIGTERM}) {
    const App::Interruption interruption;
    EXPECT_EQ(interruption.signal(), 0);
    std::raise(number);
    EXPECT_EQ(interruption.signal(), number);
  }
}

TEST(Interruption, SecondSignalEndsTheProcess) {
  const auto interruptTwice = [] {
    const App::Interruption interruption;
    std::raise(SIGINT);
    std::raise(SIGINT);
  };
  EXPECT_EXIT(interruptTwice(), testing::KilledBySignal(SIGINT), "");
}

}  // namespace
