// The modes of what commands make, whatever the user's mask is.
#include "tests/script/process.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;

mode_t modeOf(const fs::path& path) {
  struct stat status{};
  return ::lstat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 07777;
}

// Runs kiln with this mask.
Outcome runMasked(const std::string& mask, std::vector<std::string> words) {
  words.insert(words.begin(), {"-c", "umask " + mask + "; exec \"$0\" \"$@\"", KILN});
  return runProgram("/bin/sh", words);
}

class Modes : public testing::TestWithParam<const char*> {
 protected:
  Outcome run(const std::vector<std::string>& words) const { return runMasked(GetParam(), words); }

  const fs::path folder = testFolder();
  const fs::path home = folder / "above" / "home";
};

TEST_P(Modes, OfAHomeThatIsMadeLetItsOwnerInAlone) {
  EXPECT_EQ(run({"overlay", "list", "--home", home.string()}).status, 0);
  EXPECT_EQ(modeOf(home), 0700u);
}

TEST_P(Modes, OfAHomeThatAnImportMakesLetItsOwnerInAlone) {
  const fs::path profile = folder / "mine.zip";
  EXPECT_EQ(run({"profile", "export", profile.string(), "--home", (folder / "other").string()}).status, 0);
  EXPECT_EQ(run({"profile", "import", profile.string(), "--home", home.string()}).status, 0);
  EXPECT_EQ(modeOf(home), 0700u);
}

TEST_P(Modes, OfAHomeThatIsThereStay) {
  fs::create_directories(home);
  fs::permissions(home, fs::perms(0755));
  EXPECT_EQ(run({"overlay", "list", "--home", home.string()}).status, 0);
  EXPECT_EQ(modeOf(home), 0755u);
}

TEST_P(Modes, OfANewFileAreThoseOfTheMaskAndOfAnOldOneItsOwn) {
  const fs::path file = folder / "sample.pdf";
  EXPECT_EQ(run({"sample", file.string()}).status, 0);
  EXPECT_EQ(modeOf(file), 0666u & ~static_cast<mode_t>(std::stoi(GetParam(), nullptr, 8)));
  for (const unsigned mode : {0600u, 0640u, 0644u}) {
    writeFile(file, "old");
    fs::permissions(file, fs::perms(mode));
    EXPECT_EQ(run({"sample", file.string()}).status, 0);
    EXPECT_EQ(modeOf(file), mode);
  }
}

INSTANTIATE_TEST_SUITE_P(Masks, Modes, testing::Values("0", "077"));

}  // namespace
