// The languages of the product, for tests that hold in each.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Testing {

inline const std::vector<std::string> locales = {"en-US", "de-DE", "fr-FR", "ja-JP", "zh-CN", "zh-TW"};

// The locale without its hyphen, which names of tests cannot have.
inline std::string testedLocale(const testing::TestParamInfo<std::string>& tested) {
  return tested.param.substr(0, 2) + tested.param.substr(3);
}

}  // namespace Testing
