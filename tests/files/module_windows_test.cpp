// Libraries that do not load: the reason in words.
#include "files/module.h"
#include "tests/files/scratch.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

std::string refusal(const std::filesystem::path& file) {
  try {
    const Files::Module module(file);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "it did not fail";
}

TEST(Module, ThatNeedsALibraryWhichIsMissingNamesIt) {
  EXPECT_EQ(refusal(NEEDING_LIBRARY), "these libraries that it needs are not found: absent_library.dll");
}

TEST(Module, WhoseLibraryNeedsOneWhichIsMissingNamesThat) {
  EXPECT_EQ(refusal(NEEDING_INDIRECTLY_LIBRARY), "these libraries that it needs are not found: absent_library.dll");
}

TEST(Module, ThatIsNoLibraryIsRefusedInWords) {
  const Scratch scratch;
  put(scratch.folder / "text.dll", "This is no library.");
  EXPECT_EQ(refusal(scratch.folder / "text.dll"), "it is no library for this program's kind of processor");
}

TEST(Module, WithoutAFileIsRefusedInWords) {
  const Scratch scratch;
  EXPECT_THAT(refusal(scratch.folder / "none.dll"),
              AllOf(Not(HasSubstr("system error")), Not(HasSubstr("126")), Not(HasSubstr("did not fail"))));
}

}  // namespace
