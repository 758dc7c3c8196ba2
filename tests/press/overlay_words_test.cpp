// Which overlays go on which pages, in words.
#include "press/job/overlay_words.h"
#include "press/job/plan.h"
#include "tests/press/test_job.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using Press::Effects;
using Press::PageRule;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

Effects with(std::vector<Press::Overlay> overlays) {
  Effects effects;
  effects.overlays = std::move(overlays);
  return effects;
}

}  // namespace

TEST(OverlaysInWords, NameTheOverlaysOfEachRunOfPages) {
  const Effects letter = with({{"/o/Letterhead", PageRule("1")}, {"/o/Continuation", PageRule("2-")}});
  EXPECT_EQ(overlaysInWords(letter, 20), "1: Letterhead; 2-20: Continuation");
  EXPECT_EQ(overlaysInWords(letter, 2), "1: Letterhead; 2: Continuation");
  EXPECT_EQ(overlaysInWords(letter, 1), "1: Letterhead");
  EXPECT_EQ(overlaysInWords(with({{"/o/A", PageRule()}, {"/o/B", PageRule("3,5-6")}}), 9),
            "1-2, 4, 7-9: A; 3, 5-6: A, B");
}

TEST(OverlaysInWords, ShortenEveryOtherPage) {
  const Effects effects = with({{"/o/Odd", PageRule("Odd")}, {"/o/Even", PageRule("Even")}});
  EXPECT_EQ(overlaysInWords(effects, 20), "1, 3, ..., 19: Odd; 2, 4, ..., 20: Even");
  EXPECT_EQ(overlaysInWords(effects, 6), "1, 3, 5: Odd; 2, 4, 6: Even");
}

TEST(OverlaysInWords, AreEmptyWhereNoPageGetsAny) {
  EXPECT_EQ(Press::overlaysInWords({}, 3), "");
  const Effects beyond = with({{"/o/A", PageRule("9")}, {"/o/B", PageRule("Even")}});
  EXPECT_EQ(overlaysInWords(beyond, 1), "");
  EXPECT_THAT(overlaysOnNoPage(beyond, 1), ElementsAre("A", "B"));
  EXPECT_THAT(overlaysOnNoPage(beyond, 8), ElementsAre("A"));
  EXPECT_THAT(overlaysOnNoPage(beyond, 9), IsEmpty());
}

TEST(OverlaysInWords, CountSheetsWhereOverlaysGoOnSheets) {
  Effects effects = with({{"/o/A", PageRule("2-")}});
  effects.pagesOnSheet = 4;
  EXPECT_TRUE(overlaysCountSheets(effects));
  EXPECT_EQ(overlaysInWords(effects, 9), "2-3: A");
  effects.overlaysOnEachPage = true;
  EXPECT_FALSE(overlaysCountSheets(effects));
  EXPECT_EQ(overlaysInWords(effects, 9), "2-9: A");
}

TEST(OverlayName, IsThatOfTheIndexBesideTheFile) {
  const TestFolder folder;
  EXPECT_EQ(Press::overlayName(folder / "00001.opa"), "00001.opa");
  std::string record(154, '\0');
  record[0] = 'A';
  for (std::size_t i = 0; i < 9; ++i) record[128 + 2 * i] = "00001.opa"[i];
  write(folder / "ovlNmFl.flo", record);
  EXPECT_EQ(Press::overlayName(folder / "00001.opa"), "A");
  EXPECT_EQ(Press::overlayName(folder / "00002.opa"), "00002.opa");
}

TEST(OverlayTroubles, AreToldByThePlanAndWhenPrinted) {
  const TestFolder folder;
  write(folder / "in.pdf", TestJob().bytes());
  const Effects effects = Press::effectsFromProperties(
      {{"OverlayImage", "MultipleOverlayImage"}, {"OverlaySourceFileName", "/o/a.opa;$/o/b.opa;-$"}});
  const std::vector<std::string> notes = Press::printPdf(folder / "in.pdf", folder / "out.pdf", effects);
  EXPECT_THAT(notes,
              ElementsAre("For the overlay \"a.opa\", no page is named: write All, Even, Odd, or numbers such as "
                          "1,3,5-9.",
                          "For the overlay \"b.opa\", \"-\" names no page: write All, Even, Odd, or numbers such as "
                          "1,3,5-9."));
  EXPECT_EQ(Press::planPrint(folder / "in.pdf", effects).notes, notes);
  const Effects blank = Press::effectsFromProperties({{"OverlayImage", "MultipleOverlayImage"}});
  EXPECT_THAT(overlayNotes(blank), ElementsAre("Several overlays are chosen, but none has pages: choose them again."));
}
