#include "app/system/interruption.h"

#include <gtest/gtest.h>

#include <csignal>

namespace {

constexpr int wishes[] = {SIGINT, SIGTERM, SIGHUP};

// Resets signal handling, which depends on how the tests were started.
class Interruption : public testing::Test {
 protected:
  Interruption() {
    for (const int number : wishes) std::signal(number, SIG_DFL);
  }
};

TEST_F(Interruption, FirstSignalIsNotedInsteadOfEndingTheProcess) {
  for (const int number : wishes) {
    const App::Interruption interruption;
    EXPECT_EQ(interruption.signal(), 0);
    std::raise(number);
    EXPECT_EQ(interruption.signal(), number);
  }
}

TEST_F(Interruption, SecondSignalEndsTheProcess) {
  const auto interruptTwice = [] {
    const App::Interruption interruption;
    std::raise(SIGINT);
    std::raise(SIGINT);
  };
  EXPECT_EXIT(interruptTwice(), testing::KilledBySignal(SIGINT), "");
}

TEST_F(Interruption, WhatWasIgnoredStaysIgnored) {
  for (const int number : wishes) {
    std::signal(number, SIG_IGN);
    {
      const App::Interruption interruption;
      std::raise(number);
      EXPECT_EQ(interruption.signal(), 0);
    }
    EXPECT_EQ(std::signal(number, SIG_DFL), SIG_IGN);
  }
}

}  // namespace
