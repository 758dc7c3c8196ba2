// The common error behaviour of all kiln commands.
#pragma once

#include "tests/script/process.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <sstream>

inline void expectHelp(const std::string& command) {
  using testing::HasSubstr;
  const auto outcome = runKiln({command, "--help"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.out,
              testing::AllOf(HasSubstr("kiln " + command), HasSubstr("Example"), HasSubstr("Exit status:")));
  EXPECT_EQ(runKiln({"help", command}).out, outcome.out);
  EXPECT_THAT(runKiln({"--help"}).out, HasSubstr(command));
  std::istringstream lines(outcome.out);
  for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 120u) << line;
}

// Expects a single sentence that contains all of `parts`.
inline void expectRefusal(const Outcome& outcome, const std::vector<std::string>& parts = {}) {
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.out, "");
  EXPECT_THAT(outcome.err, testing::StartsWith("kiln: "));
  EXPECT_EQ(std::ranges::count(outcome.err, '\n'), 1) << outcome.err;
  for (const std::string& part : parts) EXPECT_THAT(outcome.err, testing::HasSubstr(part));
}
