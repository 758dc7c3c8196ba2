#include "app/job_options.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

TEST(JobOptions, AreNamesAndValues) {
  EXPECT_THAT(App::parseJobOptions("media=a4  number-up=2\tnoCollate"),
              ElementsAre(Pair("media", "a4"), Pair("number-up", "2"), Pair("noCollate", "")));
  EXPECT_THAT(App::parseJobOptions(" "), IsEmpty());
}

TEST(JobOptions, KeepSpacesThatAreQuotedOrEscapedOrInBraces) {
  EXPECT_THAT(App::parseJobOptions(R"(a='1 2' b="3 '4" c=5\ \'6\\ d={x=1 y={2 3}} e=7)"),
              ElementsAre(Pair("a", "1 2"), Pair("b", "3 '4"), Pair("c", "5 '6\\"), Pair("d", "{x=1 y={2 3}}"),
                          Pair("e", "7")));
}

TEST(JobOptions, NeverComeOutOfAnotherOnesValue) {
  EXPECT_THAT(App::parseJobOptions(R"(title='a kiln-MirrorImage=MirrorImage')"),
              ElementsAre(Pair("title", "a kiln-MirrorImage=MirrorImage")));
  EXPECT_THAT(App::parseJobOptions(R"(title=a\ kiln-MirrorImage=MirrorImage)"),
              ElementsAre(Pair("title", "a kiln-MirrorImage=MirrorImage")));
}

TEST(JobOptions, ThatAreNotClosedEndWithTheText) {
  EXPECT_THAT(App::parseJobOptions("a='1 2"), ElementsAre(Pair("a", "1 2")));
  EXPECT_THAT(App::parseJobOptions("a={1 2"), ElementsAre(Pair("a", "{1 2")));
  EXPECT_THAT(App::parseJobOptions("a=1\\"), ElementsAre(Pair("a", "1\\")));
  EXPECT_THAT(App::parseJobOptions("a=1} b=2"), ElementsAre(Pair("a", "1}"), Pair("b", "2")));
}

}  // namespace
