// The library that reads and writes profiles, which is loaded dynamically.
#include "tests/script/process.h"

#include <gmock/gmock.h>

using testing::AllOf;
using testing::HasSubstr;

TEST(ProfileLibrary, IsAskedForByNameWhenItIsMissing) {
  const auto program = testFolder() / "kiln";
  std::filesystem::copy_file(KILN, program);
  const auto outcome =
      runProgram(program.string(), {"profile", "import", (testFolder() / "mine.zip").string(), "--resources",
                                    KILN_RESOURCES, "--home", (testFolder() / "home").string()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, AllOf(HasSubstr("kiln-archives.so"), HasSubstr("install the program again")));
  EXPECT_FALSE(std::filesystem::exists(testFolder() / "home"));
}

TEST(ProfileLibrary, IsNotNeededForPrinting) {
  const auto outcome = runProgram("/usr/bin/env", {"ldd", KILN});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.out, AllOf(HasSubstr("libqpdf"), testing::Not(HasSubstr("libarchive"))));
}
