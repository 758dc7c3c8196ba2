// User input to the slots of the dialog for several overlays: filling, choosing pages, clearing.
#include "tests/overlay/multi_dialog.h"

#include <random>

namespace {

using testing::ElementsAre;

// A dialog with the given first slots; the others are free.
const std::string onlyA = details({"AAAAA.opa;All"});

class EachSlot : public MultiDialog, public testing::WithParamInterface<int> {
 protected:
  int slot() const { return GetParam(); }
  std::string withoutPages() const { return slot() == 1 ? "All" : slot() == 2 ? "Even" : ""; }

  // A value with only AAAAA.opa in this slot, and a rule for it.
  std::string rule() const { return slot() <= 2 ? "Odd" : "2-" + std::to_string(slot()); }
  std::string filled(const std::string& file = "AAAAA.opa") const {
    std::vector<std::string> entries(8, ";");
    entries[0] = "CCCCC.opa;All";
    entries[static_cast<std::size_t>(slot()) - 1] = file + ";" + rule();
    return details(entries);
  }
  std::string freeSlot() const { return slot() <= 2 ? "- ?" : "- "; }
};
INSTANTIATE_TEST_SUITE_P(All, EachSlot, testing::Range(1, 9));

TEST_P(EachSlot, TakesADroppedOverlay) {
  open([this](OpenDialog& dialog) {
    dialog.clearByMenu(1);
    dialog.drop("AAAAA.opa", slot());
    for (int other = 1; other <= 8; ++other)
      EXPECT_EQ(dialog.slot(other).substr(0, 1), other == slot() ? "A" : "-") << other;
    EXPECT_EQ(dialog.slot(slot()), "AAAAA " + withoutPages());
  });
}

TEST_P(EachSlot, ChangesItsOverlayForADroppedOneAndKeepsItsPages) {
  set(u"MultipleOverlayDetails", Formats::toUtf16(filled()));
  EXPECT_EQ(saved([this](OpenDialog& dialog) {
              dialog.drop("BBBBB.opa", slot());
              EXPECT_EQ(dialog.slot(slot()), "BBBBB " + rule());
            }),
            filled("BBBBB.opa"));
}

TEST_P(EachSlot, IsReadBackAsItWasSaved) {
  openOn(filled(), [this](OpenDialog& dialog) { EXPECT_EQ(dialog.slot(slot()), "AAAAA " + rule()); });
  EXPECT_EQ(saved([](OpenDialog&) {}), filled());
}

TEST_P(EachSlot, IsClearedByItsContextMenu) {
  openOn(filled(), [this](OpenDialog& dialog) {
    dialog.clearByMenu(slot());
    EXPECT_EQ(dialog.slot(slot()), freeSlot());
    EXPECT_EQ(dialog.slot(1), slot() == 1 ? freeSlot() : "CCCCC All");
  });
}

TEST_P(EachSlot, IsClearedByTheList) {
  openOn(filled(), [this](OpenDialog& dialog) {
    dialog.clearByList(slot());
    EXPECT_EQ(dialog.slot(slot()), freeSlot());
    EXPECT_EQ(dialog.slot(1), slot() == 1 ? freeSlot() : "CCCCC All");
  });
}

TEST_P(EachSlot, IsSavedFreeOnceItIsCleared) {
  set(u"MultipleOverlayDetails", Formats::toUtf16(filled()));
  EXPECT_EQ(saved([this](OpenDialog& dialog) { dialog.clearByList(slot()); }),
            slot() == 1 ? details({}) : details({"CCCCC.opa;All"}));
}

TEST_P(EachSlot, CanBeFilledAgainOnceItIsCleared) {
  openOn(filled(), [this](OpenDialog& dialog) {
    dialog.clearByMenu(slot());
    dialog.drop("BBBBB.opa", slot());
    EXPECT_EQ(dialog.slot(slot()), "BBBBB " + withoutPages());
  });
}

TEST_P(EachSlot, IgnoresADropThatIsNoOverlay) {
  openOn(filled(), [this](OpenDialog& dialog) {
    dialog.drop("rubbish", slot());
    dialog.drop("", slot());
    EXPECT_EQ(dialog.slot(slot()), "AAAAA " + rule());
  });
}

TEST_F(MultiDialog, ListsTheSlotsToClearInTheirOrder) {
  open([](OpenDialog& dialog) {
    auto& choice = dialog.widget<Refhost::ComboBox>("cmb_MulOvlGroupsToClear");
    std::vector<std::u16string> values;
    for (std::int32_t i = 0; i < choice.items().count(); ++i) values.push_back(choice.items().at(i)->value().str());
    EXPECT_THAT(values, ElementsAre(u"ClearMaster1", u"ClearMaster2", u"ClearManual1", u"ClearManual2", u"ClearManual3",
                                    u"ClearManual4", u"ClearManual5", u"ClearManual6"));
  });
}

TEST_F(MultiDialog, ClearsNothingByAnotherMenuItem) {
  openOn(onlyA, [](OpenDialog& dialog) {
    for (const char16_t* item : {u"Clear", u"clear ", u"clea", u""}) {
      dialog.image(1).addMenuItem({item, item});
      dialog.image(1).choose(item);
    }
    EXPECT_EQ(dialog.slot(1), "AAAAA All");
  });
}

TEST_F(MultiDialog, AddsToTheMasterSlotsInTurnAndThenNoMore) {
  open([](OpenDialog& dialog) {
    dialog.clearByMenu(1);
    dialog.add("AAAAA.opa");
    EXPECT_THAT(dialog.slots(), ElementsAre("AAAAA All", "- ?", "- ", "- ", "- ", "- ", "- ", "- "));
    dialog.add("BBBBB.opa");
    dialog.add("CCCCC.opa");
    EXPECT_THAT(dialog.slots(), ElementsAre("AAAAA All", "BBBBB Even", "- ", "- ", "- ", "- ", "- ", "- "));
  });
}

TEST_F(MultiDialog, AddsToTheFirstMasterSlotAgainWhenItIsFreed) {
  open([](OpenDialog& dialog) {
    dialog.add("AAAAA.opa");
    dialog.clearByMenu(1);
    dialog.add("CCCCC.opa");
    EXPECT_EQ(dialog.slot(1), "CCCCC All");
    EXPECT_EQ(dialog.slot(2), "AAAAA Even");
  });
}

TEST_F(MultiDialog, AddsToTheManualSlotsInTurnAndThenNoMore) {
  openOn(onlyA, [](OpenDialog& dialog) {
    for (const char* file : {"AAAAA.opa", "BBBBB.opa", "CCCCC.opa", "AAAAA.opa", "BBBBB.opa", "CCCCC.opa", "AAAAA.opa"})
      dialog.addManual(file);
    EXPECT_THAT(dialog.slots(),
                ElementsAre("AAAAA All", "- ?", "AAAAA ", "BBBBB ", "CCCCC ", "AAAAA ", "BBBBB ", "CCCCC "));
  });
}

TEST_F(MultiDialog, AddsToAManualSlotThatWasFreedInBetween) {
  openOn(details({"AAAAA.opa;All", ";", "AAAAA.opa;3", "AAAAA.opa;4", "AAAAA.opa;5"}), [](OpenDialog& dialog) {
    dialog.clearByMenu(4);
    dialog.addManual("CCCCC.opa");
    EXPECT_THAT(dialog.slots(), ElementsAre("AAAAA All", "- ?", "AAAAA 3", "CCCCC ", "AAAAA 5", "- ", "- ", "- "));
  });
}

TEST_F(MultiDialog, GivesAnOverlayAddedToAFreeManualSlotNoPages) {
  openOn(onlyA, [](OpenDialog& dialog) {
    EXPECT_TRUE(dialog.type(3, "7"));
    dialog.addManual("BBBBB.opa");
    EXPECT_EQ(dialog.slot(3), "BBBBB ");
  });
}

TEST_F(MultiDialog, GivesAnOverlayDroppedOnAFreeMasterSlotTheRuleChosenThere) {
  openOn(onlyA, [](OpenDialog& dialog) {
    dialog.choose("rad2_Odd");
    dialog.drop("BBBBB.opa", 2);
    EXPECT_EQ(dialog.slot(2), "BBBBB Odd");
  });
}

TEST_F(MultiDialog, SavesAFreeSlotFreeWhateverItsRule) {
  set(u"MultipleOverlayDetails", Formats::toUtf16(onlyA));
  EXPECT_EQ(saved([](OpenDialog& dialog) {
              dialog.choose("rad2_Odd");
              EXPECT_TRUE(dialog.type(3, "7"));
            }),
            onlyA);
}

TEST_F(MultiDialog, SavesTheRuleOfEachRadioButton) {
  for (const std::string rule : {"Even", "Odd", "All"})
    EXPECT_EQ(saved([&rule](OpenDialog& dialog) { dialog.choose("rad1_" + rule); }), details({"BBBBB.opa;" + rule}));
  set(u"MultipleOverlayDetails", Formats::toUtf16(details({"BBBBB.opa;All", "CCCCC.opa;Even"})));
  for (const std::string rule : {"Odd", "Even"})
    EXPECT_EQ(saved([&rule](OpenDialog& dialog) { dialog.choose("rad2_" + rule); }),
              details({"BBBBB.opa;All", "CCCCC.opa;" + rule}));
}

TEST_F(MultiDialog, TurnsTheSecondMasterWhenTheFirstTakesItsPages) {
  openOn(details({"AAAAA.opa;Odd", "BBBBB.opa;Even"}), [](OpenDialog& dialog) {
    dialog.choose("rad1_Even");
    EXPECT_EQ(dialog.slot(1), "AAAAA Even");
    EXPECT_EQ(dialog.slot(2), "BBBBB Odd");
    dialog.choose("rad1_Odd");
    EXPECT_EQ(dialog.slot(2), "BBBBB Even");
  });
}

// Whatever the third slot has: only another hand gives it a master's rule.
TEST_F(MultiDialog, TurnsTheSecondMasterBackWhenItTakesTheFirstOnesPages) {
  openOn(details({"AAAAA.opa;Odd", "BBBBB.opa;Even", "CCCCC.opa;Even"}), [](OpenDialog& dialog) {
    dialog.choose("rad2_Odd");
    EXPECT_EQ(dialog.slot(1), "AAAAA Odd");
    EXPECT_EQ(dialog.slot(2), "BBBBB Even");
  });
}

TEST_F(MultiDialog, TurnsASecondMasterThatIsPlacedBesideTheSamePages) {
  openOn(details({"AAAAA.opa;Even"}), [](OpenDialog& dialog) {
    dialog.add("BBBBB.opa");
    EXPECT_EQ(dialog.slot(2), "BBBBB Odd");
  });
}

TEST_F(MultiDialog, TurnsTheRuleOfAFreeSecondMasterOnlyWhereItIsTheFirstOnes) {
  openOn(details({"AAAAA.opa;Odd"}), [](OpenDialog& dialog) {
    dialog.choose("rad2_Even");
    EXPECT_EQ(dialog.slot(2), "- Even");
    dialog.choose("rad1_Even");
    EXPECT_EQ(dialog.slot(2), "- Odd");
  });
}

TEST_F(MultiDialog, LeavesTheSecondMasterAnotherRuleWhileTheFirstIsFree) {
  const std::string value = details({"AAAAA.opa;All", "BBBBB.opa;All"});
  set(u"MultipleOverlayDetails", Formats::toUtf16(value));
  EXPECT_EQ(saved([](OpenDialog& dialog) {
              dialog.clearByMenu(1);
              dialog.choose("rad1_Even");
            }),
            details({";", "BBBBB.opa;All"}));
}

TEST_F(MultiDialog, LeavesTheSecondMasterItsPagesBesideAFirstOnAll) {
  openOn(details({"AAAAA.opa;Even", "BBBBB.opa;Odd"}), [](OpenDialog& dialog) {
    dialog.choose("rad1_All");
    EXPECT_EQ(dialog.slot(2), "BBBBB Odd");
    dialog.choose("rad2_Even");
    EXPECT_EQ(dialog.slot(2), "BBBBB Even");
  });
}

TEST_F(MultiDialog, TakesDigitsCommasAndHyphensAsPages) {
  openOn(details({"AAAAA.opa;All", ";", "BBBBB.opa;"}), [](OpenDialog& dialog) {
    EXPECT_TRUE(dialog.type(3, "1-3,5"));
    for (const char* refused : {"1;2", "1-3,5x", "1 2", "All", "$", "１"}) {
      EXPECT_FALSE(dialog.type(3, refused)) << refused;
      EXPECT_FALSE(dialog.type(3, refused, Refhost::Edit::pasted)) << refused;
      EXPECT_FALSE(dialog.type(3, refused, Refhost::Edit::composing)) << refused;
      EXPECT_EQ(dialog.slot(3), "BBBBB 1-3,5");
    }
    EXPECT_TRUE(dialog.type(3, "9", Refhost::Edit::pasted));
    EXPECT_EQ(dialog.slot(3), "BBBBB 9");
  });
}

class EachManualSlot : public MultiDialog, public testing::WithParamInterface<int> {};
INSTANTIATE_TEST_SUITE_P(All, EachManualSlot, testing::Range(3, 9));

TEST_P(EachManualSlot, SavesThePagesThatAreTyped) {
  const int slot = GetParam();
  std::vector<std::string> entries(8, ";");
  entries[0] = "BBBBB.opa;All";
  entries[static_cast<std::size_t>(slot) - 1] = "AAAAA.opa;1,3,5-9";
  EXPECT_EQ(saved([slot](OpenDialog& dialog) {
              dialog.drop("AAAAA.opa", slot);
              dialog.type(slot, "1,3,5-9");
              dialog.type(slot, "1,3,5-9;");
            }),
            details(entries));
  EXPECT_EQ(value(u"OverlaySourceFileName"), path('B') + ";All$" + path('A') + ";1,3,5-9$");
}

TEST_P(EachManualSlot, GivesADroppedOverlayNoPagesThatWereTypedBefore) {
  const int slot = GetParam();
  openOn(onlyA, [slot](OpenDialog& dialog) {
    EXPECT_TRUE(dialog.type(slot, "7"));
    dialog.drop("BBBBB.opa", slot);
    EXPECT_EQ(dialog.slot(slot), "BBBBB ");
  });
}

TEST_P(EachManualSlot, IsNotPrintedOnceItsPagesAreEmptied) {
  const int slot = GetParam();
  std::vector<std::string> entries(8, ";");
  entries[0] = "BBBBB.opa;All";
  entries[static_cast<std::size_t>(slot) - 1] = "AAAAA.opa;4";
  set(u"MultipleOverlayDetails", Formats::toUtf16(details(entries)));
  entries[static_cast<std::size_t>(slot) - 1] = "AAAAA.opa;";
  EXPECT_EQ(saved([slot](OpenDialog& dialog) { EXPECT_TRUE(dialog.type(slot, "")); }), details(entries));
  EXPECT_EQ(value(u"OverlaySourceFileName"), path('B') + ";All$");
}

// A user with random input, and the invariants of the dialog.
class RandomUser {
 public:
  explicit RandomUser(unsigned seed) : random(seed) {}

  void act(OpenDialog& dialog) {
    const std::string overlay = fileOf("ABC"[below(3)]);
    const int slot = 1 + below(8);
    switch (below(8)) {
      case 0: return dialog.add(overlay);
      case 1: return dialog.addManual(overlay);
      case 2: return dialog.clearByMenu(slot);
      case 3: return dialog.clearByList(slot);
      case 4: return dialog.choose(pick({"rad1_All", "rad1_Even", "rad1_Odd", "rad2_Even", "rad2_Odd"}));
      case 5:
        if (slot > 2 && dialog.image(slot).image())
          dialog.type(slot, pick({"1", "1-3,5", "9-2", "", "1;2", "x", "7,"}));
        return;
      default: return dialog.drop(overlay, slot);
    }
  }

 private:
  int below(int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); }
  std::string pick(const std::vector<std::string>& from) { return from[random() % from.size()]; }

  std::mt19937 random;
};

// The value for the dialog's display; a rule without an overlay is not saved.
std::string detailsOf(const std::vector<std::string>& slots) {
  std::vector<std::string> entries;
  for (const std::string& slot : slots) {
    const auto blank = slot.find(' ');
    const bool isFree = slot.front() == '-';
    const std::string rule = slot.substr(blank + 1);
    entries.push_back(isFree ? ";" : slot.substr(0, blank) + ".opa;" + (rule == "?" ? "" : rule));
  }
  return details(entries);
}

TEST_F(MultiDialog, SavesWhatItShowsAndShowsWhatItSavedWhateverTheUserDoes) {
  for (unsigned seed = 0; seed < 60; ++seed) {
    RandomUser user(seed);
    std::vector<std::string> slots;
    const std::string value = saved([&](OpenDialog& dialog) {
      for (int i = 0; i < 25; ++i) {
        user.act(dialog);
        slots = dialog.slots();
        const bool areBothOccupied = slots[0].front() != '-' && slots[1].front() != '-';
        const std::string first = slots[0].substr(slots[0].find(' '));
        EXPECT_FALSE(areBothOccupied && first != " All" && first == slots[1].substr(slots[1].find(' '))) << seed;
      }
    });
    EXPECT_EQ(value, detailsOf(slots)) << seed;
    if (slots[0].front() == '-') continue;
    if (slots[1].front() == '-') slots[1] = "- ?";
    EXPECT_EQ(shown(value), slots) << seed;
  }
}

}  // namespace
