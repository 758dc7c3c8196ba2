// The built library's symbol table.
#include "check/exports.h"

#include <gtest/gtest.h>

namespace {

TEST(PluginLibrary, ExportsCreatePluginAndNothingElse) {
  EXPECT_EQ(Checking::exportsOf(PLUGIN_FILE), std::vector<std::string>{"createPlugin"});
}

}  // namespace
