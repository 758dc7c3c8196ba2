// Several folders as one.
#include "files/layered_folder.h"
#include "scratch.h"

#include <gmock/gmock.h>

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

class LayeredFolders : public testing::Test {
 protected:
  LayeredFolders() {
    for (const char* name : {"upper/content", "lower/content"}) fs::create_directories(scratch.folder / name);
    put(upper / "content" / "both", "upper");
    put(lower / "content" / "both", "lower");
    put(lower / "content" / "below", "lower");
    put(upper / "content" / "above", "upper");
  }

  Scratch scratch;
  const fs::path upper = scratch.folder / "upper";
  const fs::path lower = scratch.folder / "lower";
  const Files::LayeredFolder layers{std::vector<fs::path>{upper, lower}};
};

TEST_F(LayeredFolders, FindTheFileOfTheFirstThatHasIt) {
  EXPECT_EQ(layers.find("content/both"), upper / "content/both");
  EXPECT_EQ(layers.find("content/below"), lower / "content/below");
  EXPECT_EQ((layers / "content").find("below"), lower / "content" / "below");
}

TEST_F(LayeredFolders, NameTheFirstForAFileThatThereIsNot) {
  EXPECT_EQ(layers.find("content/none"), upper / "content/none");
}

TEST_F(LayeredFolders, ListEachNameOnce) {
  const auto content = layers / "content";
  EXPECT_THAT(content.entries(),
              ElementsAre(upper / "content" / "above", lower / "content" / "below", upper / "content" / "both"));
  EXPECT_THAT((layers / "none").entries(), IsEmpty());
}

TEST_F(LayeredFolders, MayBeASingleFolder) {
  const Files::LayeredFolder single = lower;
  EXPECT_EQ(single.find("content/both"), lower / "content/both");
}

}  // namespace
