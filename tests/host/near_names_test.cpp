// Suggestions for misspelt names.
#include "formats/near_names.h"

#include <gmock/gmock.h>

namespace {

using Formats::didYouMean;
using Formats::nearNames;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(NearNames, CountEachSlipOnce) {
  EXPECT_EQ(Formats::editDistance(u"Draft", u"Draft"), 0u);
  EXPECT_EQ(Formats::editDistance(u"draft", u"DRAFT"), 0u);
  EXPECT_EQ(Formats::editDistance(u"Drft", u"Draft"), 1u);
  EXPECT_EQ(Formats::editDistance(u"Draaft", u"Draft"), 1u);
  EXPECT_EQ(Formats::editDistance(u"Graft", u"Draft"), 1u);
  EXPECT_EQ(Formats::editDistance(u"Darft", u"Draft"), 1u);
  EXPECT_EQ(Formats::editDistance(u"", u"Draft"), 5u);
}

TEST(NearNames, AreTheNearestFirst) {
  EXPECT_THAT(nearNames({"Letterheads", "Terms", "Letterhead", "Letterheed"}, "Leterhead"),
              ElementsAre("Letterhead", "Letterheads", "Letterheed"));
}

TEST(NearNames, AreAtMostThreeDifferentOnes) {
  EXPECT_THAT(nearNames({"WM 1", "WM 1", "WM 2", "WM 3", "WM 4"}, "WM 5"), ElementsAre("WM 1", "WM 2", "WM 3"));
}

TEST(NearNames, AreNoneThatDifferByMoreThanAThird) {
  EXPECT_THAT(nearNames({"Confidential", "None", "ab"}, "Draft"), IsEmpty());
  EXPECT_THAT(nearNames({"b", "ab"}, "a"), ElementsAre("ab"));
  EXPECT_THAT(nearNames({"Draft"}, ""), IsEmpty());
  EXPECT_THAT(nearNames({std::string(101, 'a')}, std::string(100, 'a')), IsEmpty());
}

TEST(NearNames, AreAskedAbout) {
  EXPECT_EQ(didYouMean({"Draft"}, "Drft"), " Did you mean \"Draft\"?");
  EXPECT_EQ(didYouMean({"kvt", "kvx"}, "kv"), " Did you mean \"kvt\" or \"kvx\"?");
  EXPECT_EQ(didYouMean({"Draft"}, "Letterhead"), "");
}

}  // namespace
