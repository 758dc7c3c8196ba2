// OK, Cancel and Restore defaults.
#include "editor_world.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const char* overwrite = "chrome://base/content/dlg_overwrite.xul";

TEST_F(Editor, IsAcceptedByOkAlone) {
  EXPECT_TRUE(world.edit([](Hand& hand) { EXPECT_TRUE(hand.accept()); }));
  EXPECT_FALSE(world.edit([](Hand& hand) { hand.cancel(); }));
  EXPECT_FALSE(world.edit([](Hand&) {}));
}

TEST_F(Editor, ReplacesAnImpossibleSizeBySixOnOk) {
  for (const char* size : {"5", "301", "", "x", "1e9", "-72"}) {
    const auto record = world.newRecord({{"label", "x"}, {"stylename", "x"}, {"fontsize", size}});
    EXPECT_TRUE(world.edit(record, [&](Hand& hand) {
      EXPECT_EQ(hand.text("txt_EffWMFonSiz"), size);
      EXPECT_TRUE(hand.accept());
    }));
    EXPECT_EQ(fieldOf(record, "fontsize"), "6") << size;
    EXPECT_EQ(world.takePreview().back(), "size 6") << size;
  }
}

TEST_F(Editor, KeepsThePossibleSizesAsWholeNumbersOnOk) {
  const std::pair<const char*, const char*> sizes[] = {
      {"6", "6"}, {"300", "300"}, {"72.5", "72"}, {"12 pt", "12"}, {"+8", "8"}};
  for (const auto& [typed, kept] : sizes) {
    const auto record = world.newRecord();
    EXPECT_TRUE(world.edit(record, [&](Hand& hand) {
      hand.type("txt_EffWMFonSiz", typed);
      EXPECT_TRUE(hand.accept());
    }));
    EXPECT_EQ(fieldOf(record, "fontsize"), kept) << typed;
  }
}

// A tab whose list has some watermarks; the second one is selected.
class EditorOverAList : public Editor {
 protected:
  EditorOverAList() {
    for (const char16_t* name : {u"$IDS_NONE;", u"first", u"second", u"third"}) world.addToList(name);
    world.list().select(2);
  }

  // Enters the name and presses OK; whether the editor was accepted and closed.
  bool accept(const std::string& name, bool isNew, bool saysYes) {
    bool isClosed = false;
    const auto record = world.newRecord({{"label", "Text"}, {"stylename", "second"}});
    const bool isAccepted = world.edit(
        record,
        [&](Hand& hand) {
          hand.saysYes = saysYes;
          hand.type("txt_EffWMStyleName", name);
          isClosed = hand.accept();
          questions = hand.questions;
          if (!isClosed) hand.cancel();
        },
        isNew);
    EXPECT_EQ(isAccepted, isClosed);
    return isClosed;
  }

  std::vector<std::string> questions;
};

TEST_F(EditorOverAList, DoesNotAskAboutTheRecordsOwnName) {
  EXPECT_TRUE(accept("second", false, false));
  EXPECT_THAT(questions, IsEmpty());
}

TEST_F(EditorOverAList, AsksBeforeANewRecordReplacesTheSelectedOne) {
  EXPECT_FALSE(accept("second", true, false));
  EXPECT_THAT(questions, ElementsAre(overwrite));
  EXPECT_TRUE(accept("second", true, true));
  EXPECT_EQ(world.list().selection(), 2);
}

TEST_F(EditorOverAList, AsksBeforeAnotherRecordIsReplaced) {
  EXPECT_FALSE(accept("third", false, false));
  EXPECT_THAT(questions, ElementsAre(overwrite));
  EXPECT_EQ(world.list().selection(), 2);
  EXPECT_TRUE(accept("third", false, true));
  EXPECT_EQ(world.list().selection(), 2);
}

TEST_F(EditorOverAList, SelectsTheEntryAboveWhenOneAboveIsReplaced) {
  EXPECT_FALSE(accept("first", false, false));
  EXPECT_EQ(world.list().selection(), 2);
  EXPECT_TRUE(accept("first", false, true));
  EXPECT_EQ(world.list().selection(), 1);
}

TEST_F(EditorOverAList, ComparesNamesExactly) {
  for (const char* name : {"Third", "third ", "WM_third"}) {
    EXPECT_TRUE(accept(name, false, false)) << name;
    EXPECT_THAT(questions, IsEmpty()) << name;
  }
}

TEST_F(EditorOverAList, ComparesTheTranslationOfAnEntry) {
  world.addToList(u"$IDS_WM_DRAFT;");
  EXPECT_FALSE(accept("Draft", false, false));
  EXPECT_THAT(questions, ElementsAre(overwrite));
}

// Downloaded watermarks are never replaced; the user's own are, whichever is edited.
TEST_F(EditorOverAList, AsksAboutNoDownloadedEntryAndAboutEveryOther) {
  for (const bool isNew : {false, true})
    for (const bool isSelectedMarked : {false, true}) {
      world.list().data()->at(2)->setMarked(isSelectedMarked);
      if (!isNew && !isSelectedMarked) world.addToList(u"downloaded")->setMarked(true);
      EXPECT_TRUE(accept("downloaded", isNew, false));
      EXPECT_THAT(questions, IsEmpty());
      EXPECT_FALSE(accept("third", isNew, false));
      EXPECT_THAT(questions, ElementsAre(overwrite));
    }
}

TEST_F(EditorOverAList, NamesTheEntryThatWillBeReplaced) {
  std::string name;
  world.edit(world.newRecord({{"label", "Text"}, {"stylename", "second"}}), [&](Hand& hand) {
    hand.type("txt_EffWMStyleName", "third");
    hand.onQuestion = [&name](Refhost::Dialog& question) {
      const auto* shown = dynamic_cast<Refhost::Label*>(question.layout().find(u"txt_OverwriteName"));
      ASSERT_NE(shown, nullptr);
      EXPECT_TRUE(shown->isVisible());
      name = Formats::toUtf8(shown->label());
    };
    hand.accept();
    hand.cancel();
  });
  EXPECT_EQ(name, "third");
}

TEST_F(EditorOverAList, AsksAgainAfterARefusal) {
  const auto record = world.newRecord({{"label", "Text"}, {"stylename", "second"}});
  EXPECT_TRUE(world.edit(record, [](Hand& hand) {
    hand.type("txt_EffWMStyleName", "third");
    EXPECT_FALSE(hand.accept());
    hand.saysYes = true;
    EXPECT_TRUE(hand.accept());
    EXPECT_THAT(hand.questions, SizeIs(2));
  }));
}

TEST_F(EditorOverAList, EachOfTwoClashesHasToBeConfirmed) {
  world.addToList(u"first");
  int answers = 0;
  const auto record = world.newRecord({{"label", "Text"}, {"stylename", "second"}});
  world.edit(record, [&](Hand& hand) {
    hand.type("txt_EffWMStyleName", "first");
    hand.onAnswer = [&] { hand.saysYes = ++answers == 1; };
    EXPECT_FALSE(hand.accept());
    hand.cancel();
  });
  EXPECT_EQ(answers, 2);
}

TEST_F(EditorOverAList, AsksAboutTheEntryOfNoneForARecordThatCameWithItsName) {
  world.edit(world.newRecord({{"label", "Text"}, {"stylename", "None"}}), [](Hand& hand) {
    EXPECT_FALSE(hand.accept());
    EXPECT_THAT(hand.questions, ElementsAre(overwrite));
  });
}

TEST_F(EditorOverAList, AsksAboutEachOfTwoClashesWhateverTheFirstAnswer) {
  world.addToList(u"third");
  EXPECT_FALSE(accept("third", false, false));
  EXPECT_THAT(questions, ElementsAre(overwrite, overwrite));
}

TEST_F(EditorOverAList, KnowsItsOwnNameAgainAfterOneOfTwoClashesWasConfirmed) {
  world.addToList(u"first");
  const auto record = world.newRecord({{"label", "Text"}, {"stylename", "second"}});
  EXPECT_TRUE(world.edit(record, [&](Hand& hand) {
    hand.type("txt_EffWMStyleName", "first");
    hand.onAnswer = [&] { hand.saysYes = hand.questions.size() == 1; };
    EXPECT_FALSE(hand.accept());
    EXPECT_THAT(hand.questions, SizeIs(2));
    EXPECT_EQ(world.list().selection(), 2);
    hand.questions.clear();
    hand.type("txt_EffWMStyleName", "second");
    EXPECT_TRUE(hand.accept());
    EXPECT_THAT(hand.questions, IsEmpty());
  }));
}

TEST_F(EditorOverAList, ShowsTheSizeOfAnOkThatWasRefused) {
  world.edit(world.newRecord({{"label", "Text"}, {"stylename", "second"}}), [](Hand& hand) {
    hand.type("txt_EffWMFonSiz", "301");
    hand.type("txt_EffWMStyleName", "third");
    EXPECT_FALSE(hand.accept());
    EXPECT_EQ(hand.text("txt_EffWMFonSiz"), "6");
  });
}

TEST_F(EditorOverAList, ReplacesAnImpossibleSizeBeforeItAsksAboutTheName) {
  std::vector<std::string> sizes;
  world.edit(world.newRecord({{"label", "Text"}, {"stylename", "second"}}), [&sizes](Hand& hand) {
    hand.type("txt_EffWMFonSiz", "301");
    hand.type("txt_EffWMStyleName", "third");
    hand.onAnswer = [&] { sizes = {hand.text("txt_EffWMFonSiz"), hand.field("fontsize")}; };
    EXPECT_FALSE(hand.accept());
  });
  EXPECT_THAT(sizes, ElementsAre("6", "6"));
}

// A host may close a dialog that has neither been accepted nor cancelled.
TEST_F(EditorOverAList, StaysAcceptedAfterARefusedOkUntilItIsCancelled) {
  EXPECT_TRUE(world.edit(world.newRecord({{"label", "Text"}, {"stylename", "second"}}), [](Hand& hand) {
    hand.type("txt_EffWMStyleName", "third");
    EXPECT_FALSE(hand.accept());
  }));
}

TEST(EditorOverwriting, IsRefusedWhereTheQuestionCannotBeAsked) {
  const Testing::TemporaryFolder folder;
  EditorOptions options;
  options.resources = folder.path / "resources";
  Testing::copyResources(options.resources);
  std::filesystem::remove(options.resources / "base/content/dlg_overwrite.xul");
  EditorWorld world(options);
  for (const char16_t* name : {u"own", u"third"}) world.addToList(name);
  world.list().select(0);
  EXPECT_FALSE(world.edit(world.newRecord({{"label", "Text"}, {"stylename", "own"}}), [](Hand& hand) {
    hand.type("txt_EffWMStyleName", "third");
    EXPECT_FALSE(hand.accept());
    EXPECT_THAT(hand.questions, IsEmpty());
    hand.cancel();
  }));
}

// The name follows the text even without a box for it, so the question is needed there too.
TEST(EditorOverwriting, IsAskedAboutWithoutABoxOfTheNameToo) {
  EditorOptions options;
  options.without = {u"txt_EffWMStyleName"};
  EditorWorld world(options);
  for (const char16_t* name : {u"own", u"third"}) world.addToList(name);
  world.list().select(0);
  world.edit(world.newRecord({{"label", "own"}, {"stylename", "own"}}), [](Hand& hand) {
    hand.type("txt_EffWMTxtBox", "third");
    EXPECT_FALSE(hand.accept());
    EXPECT_THAT(hand.questions, ElementsAre(overwrite));
    hand.cancel();
  });
}

TEST_F(EditorOverAList, CancellingAfterARefusedOkStoresNothing) {
  const auto record = world.newRecord({{"label", "Text"}, {"stylename", "second"}});
  EXPECT_FALSE(world.edit(record, [](Hand& hand) {
    hand.type("txt_EffWMStyleName", "third");
    EXPECT_FALSE(hand.accept());
    hand.cancel();
  }));
}

TEST_F(Editor, RestoresTheNoneRecordWhereThereAreNoDefaults) {
  const auto record = world.newRecord({{"label", "x"},
                                       {"stylename", "y"},
                                       {"angle", "33"},
                                       {"fontsize", "9"},
                                       {"positionX", "L"},
                                       {"colour", "#FF0000"},
                                       {"fontstyle", "Bold"},
                                       {"printStyle", "Transparency"},
                                       {"intensity", "30"}});
  world.edit(record, [this](Hand& hand) {
    hand.type("txt_EffWMStyleName", "Mine");
    world.takePreview();
    hand.click("but_EffWMResDef");
    EXPECT_THAT(world.takePreview(), ElementsAre("text ", "colour #808080", "face Arial", "bold false", "italic false",
                                                 "size 72", "rotation 0", "position CC", "opacity 100"));
    EXPECT_EQ(hand.text("txt_EffWMTxtBox"), "");
    EXPECT_EQ(hand.field("label"), "");
    EXPECT_EQ(hand.field("stylename"), "");
    EXPECT_EQ(hand.field("angle"), "0");
    EXPECT_EQ(hand.text("txt_EffWMAngle"), "0");
    EXPECT_EQ(hand.position("scr_EffWMAngScroll"), 90);
    EXPECT_EQ(hand.field("fontsize"), "72");
    EXPECT_EQ(hand.field("positionX"), "C");
    EXPECT_EQ(hand.field("colour"), "#808080");
    EXPECT_EQ(hand.field("fontstyle"), "Regular");
    EXPECT_EQ(hand.field("printStyle"), "Solid");
    EXPECT_TRUE(hand.isChosen("rad_EffWMSol"));
    EXPECT_FALSE(hand.canAccept());
    hand.type("txt_EffWMTxtBox", "New");
    EXPECT_EQ(hand.field("stylename"), "New") << "the name follows the text again";
  });
}

TEST_F(Editor, RestoresTheRecordsOwnDefaults) {
  const auto record = world.newRecord({{"label", "x"}, {"stylename", "y"}, {"angle", "33"}, {"fontname", "beta"}});
  const auto defaults = record->childOrNew(Effect::Field::defaultSetting);
  for (const auto& [name, text] : Fields{{"label", "$IDS_WM_DRAFT;"},
                                         {"stylename", "Began"},
                                         {"fontsize", "108"},
                                         {"fontstyle", "Bold"},
                                         {"colour", "#0000FF"},
                                         {"angle", "45"},
                                         {"positionX", "R"},
                                         {"positionY", "L"},
                                         {"printStyle", "Transparency"},
                                         {"intensity", "60"}})
    setFieldOf(defaults, name, text);
  world.edit(record, [](Hand& hand) {
    hand.type("txt_EffWMStyleName", "Mine");
    hand.click("but_EffWMResDef");
    const Fields restored = {{"label", "Draft"},    {"stylename", "Began"}, {"fontsize", "108"},
                             {"fontstyle", "Bold"}, {"colour", "#0000FF"},  {"angle", "45"},
                             {"positionX", "R"},    {"positionY", "L"},     {"printStyle", "Transparency"},
                             {"intensity", "60"}};
    for (const auto& [name, text] : restored) EXPECT_EQ(hand.field(name), text) << name;
    EXPECT_EQ(hand.field("fontname"), "Arial") << "the defaults name no face: the user's language does";
    EXPECT_TRUE(hand.isChosen("rad_EffWMTrans"));
    EXPECT_EQ(hand.position("scr_EffWMOpaScroll"), 60);
    EXPECT_TRUE(hand.canAccept());
    hand.type("txt_EffWMTxtBox", "New");
    EXPECT_EQ(hand.field("stylename"), "Began") << "the name was typed";
  });
  EXPECT_EQ(fieldOf(defaults, "label"), "$IDS_WM_DRAFT;") << "the defaults stay";
}

// What the defaults of a record say of its text and its name, and what is shown of that.
struct Defaults {
  const char* name;
  Fields fields;
  std::string label;
  std::string stylename;
  std::string nameOfANewText;  // typed after a name was typed and the defaults were restored
};

class EditorOfARecordWithDefaults : public Editor, public testing::WithParamInterface<Defaults> {};

TEST_P(EditorOfARecordWithDefaults, LetsTheNameFollowTheTextAgainWhereTheyHaveNeither) {
  const Defaults& test = GetParam();
  const auto record = world.newRecord({{"label", "x"}, {"stylename", "y"}, {"fontsize", "9"}});
  const auto defaults = record->childOrNew(Effect::Field::defaultSetting);
  setFieldOf(defaults, "fontsize", "108");
  for (const auto& [name, text] : test.fields) setFieldOf(defaults, name, text);
  world.edit(record, [&test](Hand& hand) {
    hand.type("txt_EffWMStyleName", "Mine");
    hand.click("but_EffWMResDef");
    EXPECT_EQ(hand.text("txt_EffWMTxtBox"), test.label);
    EXPECT_EQ(hand.field("label"), test.label);
    EXPECT_EQ(hand.text("txt_EffWMStyleName"), test.stylename);
    EXPECT_EQ(hand.field("stylename"), test.stylename);
    EXPECT_EQ(hand.field("fontsize"), "108");
    EXPECT_FALSE(hand.canAccept());
    hand.type("txt_EffWMTxtBox", "New");
    EXPECT_EQ(hand.field("stylename"), test.nameOfANewText);
  });
}

INSTANTIATE_TEST_SUITE_P(With, EditorOfARecordWithDefaults,
                         testing::Values(Defaults{"NeitherTextNorName", {}, "", "", "New"},
                                         Defaults{"NoText", {{"stylename", "Began"}}, "", "Began", "Began"},
                                         Defaults{"NoName", {{"label", "Began"}}, "Began", "", ""}),
                         [](const auto& test) { return test.param.name; });

}  // namespace
