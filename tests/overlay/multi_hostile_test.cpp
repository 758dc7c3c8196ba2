// Values of MultipleOverlayDetails that no dialog wrote.
#include "tests/overlay/multi_dialog.h"

namespace {

using testing::ElementsAre;

const std::vector<std::string> free = {"- ?", "- ?", "- ", "- ", "- ", "- ", "- ", "- "};
const std::vector<std::string> defaults = {"BBBBB All", "- ?", "- ", "- ", "- ", "- ", "- ", "- "};

std::string repeated(const std::string& entry, std::size_t times) {
  std::string value;
  while (times-- > 0) value += entry;
  return value;
}

TEST_F(MultiDialog, OpensWithNothingOnAValueWithoutASemicolon) {
  for (const char* value : {"rubbish", "$", "$$$$$$$$", "AAAAA.opa", "AAAAA.opa$BBBBB.opa$"})
    EXPECT_EQ(shown(value), free) << value;
}

TEST_F(MultiDialog, OpensWithTheSlotsOfEntriesThatHaveASemicolon) {
  EXPECT_THAT(shown("$AAAAA.opa;Odd$x$CCCCC.opa;4"),
              ElementsAre("- ?", "AAAAA Odd", "- ", "CCCCC 4", "- ", "- ", "- ", "- "));
}

TEST_F(MultiDialog, OpensWithTheFirstEightOfNineOverlays) {
  EXPECT_THAT(shown("AAAAA.opa;All$" + repeated("BBBBB.opa;1$", 7) + "CCCCC.opa;9$"),
              ElementsAre("AAAAA All", "BBBBB ?", "BBBBB 1", "BBBBB 1", "BBBBB 1", "BBBBB 1", "BBBBB 1", "BBBBB 1"));
  EXPECT_EQ(shown("AAAAA.opa;All$" + repeated(";$", 7) + "gone.opa;9$"), defaults);
}

TEST_F(MultiDialog, OpensWithTheFirstEightOfTenThousandEntries) {
  EXPECT_THAT(shown(repeated("CCCCC.opa;All$", 10'000)),
              ElementsAre("CCCCC All", "CCCCC ?", "CCCCC ", "CCCCC ", "CCCCC ", "CCCCC ", "CCCCC ", "CCCCC "));
}

// Its radio buttons, or its field, cannot show such a rule; it holds until the user gives another one.
TEST_F(MultiDialog, KeepsTheRuleOfAnotherSlotUntilTheUserGivesOne) {
  const std::string value = details({"AAAAA.opa;1-3", "BBBBB.opa;All", "CCCCC.opa;Even", "AAAAA.opa;1;2"});
  EXPECT_THAT(shown(value), ElementsAre("AAAAA ?", "BBBBB ?", "CCCCC ", "AAAAA ", "- ", "- ", "- ", "- "));
  EXPECT_EQ(saved([](OpenDialog&) {}), value);
  EXPECT_EQ(saved([](OpenDialog& dialog) {
              dialog.choose("rad1_All");
              dialog.choose("rad2_Odd");
              dialog.type(3, "5");
            }),
            details({"AAAAA.opa;All", "BBBBB.opa;Odd", "CCCCC.opa;5", "AAAAA.opa;1;2"}));
}

TEST_F(MultiDialog, OpensWithTheDefaultsOnAFileThatIsNotTheStores) {
  Testing::writeFile(home.userFolder() / "stray.opa", "not in the index");
  for (const char* label : {"stray.opa", "None", "..", ".", "/", "../overlays/AAAAA.opa", "aaaaa.opa", "AAAAA.opa "})
    EXPECT_EQ(shown(details({std::string(label) + ";All"})), defaults) << label;
}

TEST_F(MultiDialog, OpensOnTenMegabytes) {
  constexpr std::size_t units = 10'000'000 / sizeof(char16_t);
  EXPECT_EQ(shown(repeated("CCCCC.opa;7$", units / 12))[7], "CCCCC 7");
  EXPECT_EQ(shown("AAAAA.opa;" + std::string(units, 'x'))[0], "AAAAA ?");
  EXPECT_EQ(shown(std::string(units, 'x') + ";All$"), defaults);
  EXPECT_EQ(shown(std::string(units, '$')), free);
}

}  // namespace
