// The text and the name of a watermark: when the name follows the text, and when OK is enabled.
#include "editor_world.h"

namespace {

using testing::ElementsAre;

class EditorOfTextsAlone : public testing::Test {
 protected:
  static EditorOptions withoutNames() {
    EditorOptions options;
    options.hasStyleNames = false;
    return options;
  }
  EditorWorld world{withoutNames()};
};

TEST_F(Editor, NameFollowsTheTextUntilOneIsTyped) {
  world.edit(
      world.newRecord({}),
      [](Hand& hand) {
        hand.type("txt_EffWMTxtBox", "Dra");
        hand.type("txt_EffWMTxtBox", "Draft");
        EXPECT_EQ(hand.text("txt_EffWMStyleName"), "Draft");
        EXPECT_EQ(hand.field("stylename"), "Draft");
        hand.type("txt_EffWMStyleName", "Mine");
        hand.type("txt_EffWMTxtBox", "Draft 2");
        EXPECT_EQ(hand.text("txt_EffWMStyleName"), "Mine");
        EXPECT_EQ(hand.field("stylename"), "Mine");
        EXPECT_EQ(hand.field("label"), "Draft 2");
      },
      true);
}

TEST_F(Editor, TextIsTakenAfterTheHostFailedToShowTheName) {
  world.edit([this](Hand& hand) {
    {
      const EditorWorld::FailingChange failing(world, "txt_EffWMStyleName", "setText");
      hand.type("txt_EffWMTxtBox", "first");
      EXPECT_EQ(world.face.failures.size(), 1U);
    }
    hand.type("txt_EffWMTxtBox", "second");
    EXPECT_EQ(hand.field("label"), "second");
    EXPECT_EQ(hand.text("txt_EffWMStyleName"), "second");
  });
}

// The host refuses the change, so neither the box nor the record has it.
TEST_F(Editor, TextThatAFailureKeepsFromTheBoxIsNotInTheRecord) {
  for (const char* widget : {"txt_EffWMStyleName", "dlg_watermark"}) {
    const std::string operation = widget == std::string("dlg_watermark") ? "enable" : "setText";
    world.edit([&](Hand& hand) {
      const std::string id = operation == "enable" ? Formats::toUtf8(hand.dialog.ok().id().view()) : widget;
      const EditorWorld::FailingChange failing(world, id, operation);
      EXPECT_FALSE(hand.type("txt_EffWMTxtBox", "first"));
      EXPECT_EQ(std::exchange(world.face.failures, {}).size(), 1U) << id;
      EXPECT_EQ(hand.field("label"), "Text") << id;
      EXPECT_EQ(hand.field("stylename"), "Name") << id;
    });
  }
}

TEST_F(Editor, NameThatIsOnlyDeletedStillFollowsTheText) {
  world.edit([](Hand& hand) {
    hand.type("txt_EffWMStyleName", "");
    hand.type("txt_EffWMTxtBox", "Other");
    EXPECT_EQ(hand.text("txt_EffWMStyleName"), "Other");
  });
}

TEST_F(Editor, TypedNameShowsTheTextInThePreview) {
  world.edit([this](Hand& hand) {
    world.takePreview();
    hand.type("txt_EffWMStyleName", "Mine");
    EXPECT_THAT(world.takePreview(), ElementsAre("text Text"));
    hand.type("txt_EffWMTxtBox", "Other");
    EXPECT_THAT(world.takePreview(), ElementsAre("text Other"));
    EXPECT_EQ(hand.field("label"), "Other");
  });
}

TEST_F(Editor, PastedTextCountsAsTyped) {
  world.edit([](Hand& hand) {
    hand.type("txt_EffWMStyleName", "Mine", Refhost::Edit::pasted);
    hand.type("txt_EffWMTxtBox", "Other", Refhost::Edit::pasted);
    EXPECT_EQ(hand.field("label"), "Other");
    EXPECT_EQ(hand.field("stylename"), "Mine");
  });
}

TEST_F(EditorOfTextsAlone, TextIsTheNameToo) {
  world.edit(world.newRecord({{"label", "Text"}, {"stylename", "Name"}}), [this](Hand& hand) {
    EXPECT_EQ(hand.field("stylename"), "Name") << "until something is typed";
    world.takePreview();
    hand.type("txt_EffWMTxtBox", "Other");
    EXPECT_EQ(hand.field("label"), "Other");
    EXPECT_EQ(hand.field("stylename"), "Other");
    EXPECT_EQ(hand.text("txt_EffWMStyleName"), "Other");
    EXPECT_THAT(world.takePreview(), ElementsAre("text Other"));
  });
}

TEST_F(EditorOfTextsAlone, NameThatIsSetByTheHostLeavesTheText) {
  world.edit([this](Hand& hand) {
    world.takePreview();
    hand.widget<Refhost::TextBox>("txt_EffWMStyleName").setText(u"Set");
    EXPECT_EQ(hand.field("label"), "Text");
    EXPECT_EQ(hand.field("stylename"), "Set");
    EXPECT_THAT(world.takePreview(), ElementsAre("text Set"));
  });
}

TEST_F(Editor, CanBeAcceptedWithATextAndAName) {
  world.edit([](Hand& hand) {
    EXPECT_TRUE(hand.canAccept());
    hand.type("txt_EffWMTxtBox", "");
    EXPECT_FALSE(hand.canAccept()) << "neither";
    hand.type("txt_EffWMStyleName", "Name");
    EXPECT_FALSE(hand.canAccept()) << "no text";
    hand.type("txt_EffWMTxtBox", "Text");
    EXPECT_TRUE(hand.canAccept());
    hand.type("txt_EffWMStyleName", "");
    EXPECT_FALSE(hand.canAccept()) << "no name";
  });
}

TEST_F(Editor, CannotBeNamedNoneInAnyLanguage) {
  world.edit([](Hand& hand) {
    for (const char* none : {"None", "Ohne", "Aucun", "なし", "无", "無", "$IDS_NONE;"}) {
      hand.type("txt_EffWMStyleName", none);
      EXPECT_FALSE(hand.canAccept()) << none;
      hand.type("txt_EffWMStyleName", std::string(none) + " ");
      EXPECT_TRUE(hand.canAccept()) << none << ", and a space";
    }
    hand.type("txt_EffWMStyleName", "none");
    EXPECT_TRUE(hand.canAccept());
  });
}

TEST_F(Editor, TextCanBeNoneUnderAnotherName) {
  world.edit([](Hand& hand) {
    hand.type("txt_EffWMStyleName", "Mine");
    hand.type("txt_EffWMTxtBox", "None");
    EXPECT_TRUE(hand.canAccept());
  });
}

TEST_F(EditorOfTextsAlone, TextCannotBeNone) {
  world.edit([](Hand& hand) {
    for (const char* none : {"None", "$IDS_NONE;"}) {
      hand.type("txt_EffWMTxtBox", none);
      EXPECT_FALSE(hand.canAccept()) << none;
    }
  });
}

TEST_F(Editor, ReservedNameIsNotAskedForWhileARecordIsShown) {
  world.edit(world.newRecord({{"label", "Text"}, {"stylename", "None"}}),
             [](Hand& hand) { EXPECT_TRUE(hand.canAccept()); });
}

}  // namespace
