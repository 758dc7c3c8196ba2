#include "files_world.h"

#include <gtest/gtest.h>

using namespace Refhost;

namespace {

TEST(Path, TakesBothSeparators) { EXPECT_EQ(joined("C:\\a/b", u"c\\d/e"), u"C:\\a\\b\\c\\d\\e"); }

}  // namespace
