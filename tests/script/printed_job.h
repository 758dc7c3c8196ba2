// A sample job that is printed with the settings of a home.
#pragma once

#include "tests/script/process.h"

#include <gtest/gtest.h>

class PrintedJob : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(runKiln({"sample", job.string()}).status, 0); }

  Outcome print(const std::vector<std::string>& words, const std::filesystem::path& to) const {
    std::vector<std::string> all = {"print", job.string(), to.string(), "--home", home.string()};
    all.insert(all.end(), words.begin(), words.end());
    return runKiln(all);
  }
  Outcome print(const std::vector<std::string>& words) const { return print(words, out); }

  const std::filesystem::path home = testFolder() / "home";
  const std::filesystem::path job = testFolder() / "job.pdf";
  const std::filesystem::path out = testFolder() / "out.pdf";
  const std::filesystem::path wanted = testFolder() / "wanted.pdf";
};
