// Opening the editor: connections, the options that the model allows, and the initial preview.
#include "editor_world.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const Fields transparentRecord = {
    {"label", "Draft"},          {"stylename", "My draft"},      {"fontname", "Arial"}, {"fontsize", "96"},
    {"fontstyle", "BoldItalic"}, {"colour", "#FF0000"},          {"angle", "-45"},      {"positionX", "R"},
    {"positionY", "U"},          {"printStyle", "Transparency"}, {"intensity", "30"}};

TEST_F(Editor, ConnectsItsWidgetsInOrder) {
  world.edit([](Hand&) {});
  const std::string url = "chrome://effect/content/dlg_watermark.xul";
  EXPECT_THAT(Testing::connections(world.events),
              ElementsAre("ok " + url, "cancel " + url, "click UL", "click UC", "click UR", "click CL", "click CC",
                          "click CR", "click LL", "click LC", "click LR", "change colpic_WMBrowse",
                          "change cmb_EffWMCol", "text txt_EffWMTxtBox", "text txt_EffWMTxtBox",
                          "text txt_EffWMStyleName", "text txt_EffWMStyleName", "change cmb_EffWMSty",
                          "text txt_EffWMFonSiz", "text txt_EffWMFonSiz", "blur txt_EffWMFonSiz", "text txt_EffWMAngle",
                          "text txt_EffWMAngle", "blur txt_EffWMAngle", "scroll scr_EffWMAngScroll",
                          "click rad_EffWMSol", "click rad_EffWMTrans", "click rad_EffWMDrawAsOut", "text txt_EffWMOpa",
                          "text txt_EffWMOpa", "blur txt_EffWMOpa", "scroll scr_EffWMOpaScroll",
                          "change cmb_EffWMFonNam", "click but_EffWMResDef"));
}

TEST_F(Editor, ShowsTheRecord) {
  world.edit(world.newRecord(transparentRecord), [](Hand& hand) {
    EXPECT_EQ(hand.text("txt_EffWMTxtBox"), "Draft");
    EXPECT_EQ(hand.text("txt_EffWMStyleName"), "My draft");
    EXPECT_EQ(hand.selected("cmb_EffWMCol"), "#FF0000");
    EXPECT_EQ(hand.selected("cmb_EffWMFonNam"), "Arial");
    EXPECT_EQ(hand.selected("cmb_EffWMSty"), "BoldItalic");
    EXPECT_EQ(hand.text("txt_EffWMFonSiz"), "96");
    EXPECT_EQ(hand.text("txt_EffWMAngle"), "-45");
    EXPECT_EQ(hand.position("scr_EffWMAngScroll"), 45);
    EXPECT_TRUE(hand.isChosen("rad_EffWMTrans"));
    EXPECT_EQ(hand.text("txt_EffWMOpa"), "30");
    EXPECT_EQ(hand.position("scr_EffWMOpaScroll"), 30);
    EXPECT_TRUE(hand.canAccept());
  });
}

// Transparency is sent twice: when its box is set, and when the print style is applied.
TEST_F(Editor, TellsThePreviewEachValueInOrder) {
  world.edit(world.newRecord(transparentRecord), [this](Hand&) {
    EXPECT_THAT(world.takePreview(),
                ElementsAre("text Draft", "colour #FF0000", "face Arial", "bold true", "italic true", "size 96",
                            "rotation 315", "position UR", "opacity 0.7", "opacity 0.7"));
  });
}

TEST_F(Editor, TellsThePreviewAHundredForWhatIsNotTransparent) {
  for (const char* style : {"Solid", "Outline"}) {
    auto fields = transparentRecord;
    fields.push_back({"printStyle", style});
    world.edit(world.newRecord(fields), [this](Hand& hand) {
      EXPECT_THAT(world.takePreview(),
                  ElementsAre("text Draft", "colour #FF0000", "face Arial", "bold true", "italic true", "size 96",
                              "rotation 315", "position UR", "opacity 100"));
      EXPECT_EQ(hand.field("intensity"), "0");
      EXPECT_EQ(hand.position("scr_EffWMOpaScroll"), 50);
    });
    EXPECT_THAT(world.face.failures, IsEmpty());
  }
}

TEST_F(Editor, OpensANewWatermarkEmptyAndUnacceptable) {
  world.edit(
      world.newRecord({}),
      [](Hand& hand) {
        EXPECT_EQ(hand.text("txt_EffWMTxtBox"), "");
        EXPECT_EQ(hand.text("txt_EffWMStyleName"), "");
        EXPECT_EQ(hand.field("label"), "");
        EXPECT_FALSE(hand.canAccept());
        EXPECT_FALSE(hand.accept());
      },
      true);
}

TEST_F(Editor, ShowsAndKeepsTheTranslationOfAReference) {
  EditorOptions options;
  options.locale = "de-DE";
  EditorWorld german(options);
  german.edit(german.newRecord({{"label", "$IDS_WM_DRAFT;"}, {"stylename", "$IDS_WM_COPY;"}}), [](Hand& hand) {
    EXPECT_EQ(hand.text("txt_EffWMTxtBox"), "Entwurf");
    EXPECT_EQ(hand.text("txt_EffWMStyleName"), "Kopie");
    EXPECT_EQ(hand.field("label"), "Entwurf");
    EXPECT_EQ(hand.field("stylename"), "Kopie");
    EXPECT_EQ(hand.preview().text, u"Entwurf");
  });
}

TEST_F(Editor, TakesATextThatOnlyBeginsLikeAReferenceAsItIs) {
  world.edit(world.newRecord({{"label", "$5 off"}, {"stylename", "$5 off"}}),
             [](Hand& hand) { EXPECT_EQ(hand.text("txt_EffWMTxtBox"), "$5 off"); });
}

TEST_F(Editor, LimitsWhatCanBeTyped) {
  world.edit([](Hand& hand) {
    const std::pair<const char*, std::size_t> limits[] = {
        {"txt_EffWMTxtBox", 63}, {"txt_EffWMStyleName", 63}, {"txt_EffWMAngle", 3}, {"txt_EffWMOpa", 3}};
    for (const auto& [id, limit] : limits)
      EXPECT_EQ(hand.widget<Refhost::TextBoxNode>(id).maximumLength(), limit) << id;
    EXPECT_EQ(hand.widget<Refhost::TextBoxNode>("txt_EffWMFonSiz").maximumLength(), std::nullopt);
  });
}

TEST_F(Editor, WithoutItsLayoutIsCancelledAtOnce) {
  Testing::TemporaryFolder folder;
  Testing::copyResources(folder.path / "resources");
  std::filesystem::remove(folder.path / "resources/effect/content/dlg_watermark.xul");
  EditorOptions options;
  options.resources = folder.path / "resources";
  EditorWorld broken(options);
  bool isShown = false;
  EXPECT_FALSE(broken.edit([&](Hand&) { isShown = true; }));
  EXPECT_FALSE(isShown);
  EXPECT_THAT(Testing::connections(broken.events), IsEmpty());
}

TEST_F(Editor, FillsTheFacesInOrder) {
  world.edit([](Hand& hand) {
    auto& faces = hand.widget<Refhost::ComboBox>("cmb_EffWMFonNam").items();
    std::vector<std::string> names;
    for (std::int32_t i = 0; i < faces.count(); ++i) {
      EXPECT_EQ(faces.at(i)->text().view(), faces.at(i)->value().view());
      names.push_back(Formats::toUtf8(faces.at(i)->value().view()));
    }
    EXPECT_THAT(names, ElementsAre("Arial", "Zeta", "beta"));
  });
}

TEST_F(Editor, LeavesTheFacesAsTheyAreWhereFontsCannotBeTold) {
  EditorOptions options;
  options.fonts.reset();
  EditorWorld fontless(options);
  fontless.edit(fontless.newRecord({{"fontname", "Arial"}}), [&](Hand& hand) {
    EXPECT_EQ(hand.widget<Refhost::ComboBox>("cmb_EffWMFonNam").items().count(), 0);
    EXPECT_EQ(hand.field("fontname"), "Arial");
    EXPECT_THAT(Testing::connections(fontless.events), testing::Not(testing::Contains("change cmb_EffWMFonNam")));
  });
}

TEST_F(Editor, HidesTheRowOfTheNameWhereNamesAreNotSupported) {
  for (const char16_t* setting : {u"", u"False", u"True"}) {
    EditorOptions options;
    options.hasStyleNames = false;
    EditorWorld run(options);
    const std::u16string support = setting;
    if (!support.empty()) run.set(u"kilnworks.watermark.stylename.support", support);
    run.edit([&](Hand& hand) { EXPECT_EQ(hand.node("wmStyleName").isVisible(), support == u"True"); });
  }
}

// The colours of a model, whether it is monochrome, and the editor's reaction.
struct ColourModel {
  const char* name;
  bool hasBlack;
  bool hasOthers;
  bool isMonochrome;
  bool isOffered;
  bool isHidden;
};

class EditorOn : public Editor, public testing::WithParamInterface<ColourModel> {};

TEST_P(EditorOn, OffersTheColoursOfTheModel) {
  const ColourModel& model = GetParam();
  world.allowColours(model.hasBlack, model.hasOthers);
  world.manager->model->start(u"MonochromeModel", model.isMonochrome ? u"True" : u"False");
  world.edit(world.newRecord(transparentRecord), [&](Hand& hand) {
    for (const char* id : {"colpic_WMBrowse", "cmb_EffWMCol", "txt_WMCol"}) {
      EXPECT_EQ(hand.node(id).isEnabled(), model.isOffered) << id;
      EXPECT_EQ(hand.node(id).isVisible(), !model.isHidden) << id;
    }
    const std::string colour = model.isOffered ? "#FF0000" : "#000000";
    EXPECT_EQ(hand.field("colour"), colour);
    EXPECT_EQ(hand.selected("cmb_EffWMCol"), colour);
    EXPECT_EQ(Formats::toUtf8(hand.preview().colour), colour);

    hand.click("but_EffWMResDef");
    const std::string restored = model.isOffered ? "#808080" : "#000000";
    EXPECT_EQ(hand.field("colour"), restored);
    EXPECT_EQ(hand.selected("cmb_EffWMCol"), restored);
    EXPECT_EQ(Formats::toUtf8(hand.preview().colour), restored);
  });
  const auto isConnected = testing::Contains("change colpic_WMBrowse");
  if (model.hasBlack && !model.hasOthers)
    EXPECT_THAT(Testing::connections(world.events), testing::Not(isConnected));
  else
    EXPECT_THAT(Testing::connections(world.events), isConnected);
}

INSTANTIATE_TEST_SUITE_P(A, EditorOn,
                         testing::Values(ColourModel{"ColourPrinter", true, true, false, true, false},
                                         ColourModel{"ColourPrinterThatSaysMonochrome", true, true, true, true, false},
                                         ColourModel{"BlackOnlyPrinter", true, false, false, false, false},
                                         ColourModel{"BlackOnlyMonochromePrinter", true, false, true, false, true},
                                         ColourModel{"PrinterWithoutBlack", false, true, false, false, false},
                                         ColourModel{"PrinterWithNeither", false, false, false, false, false},
                                         ColourModel{"MonochromePrinterWithNeither", false, false, true, false, true}),
                         [](const auto& test) { return test.param.name; });

TEST_F(Editor, TellsABlackOnlyModelsPreviewBlackThreeTimes) {
  world.allowColours(true, false);
  world.edit(world.newRecord(transparentRecord), [this](Hand&) {
    const auto told = world.takePreview();
    EXPECT_THAT(std::vector(told.begin() + 1, told.begin() + 4),
                ElementsAre("colour #000000", "colour #000000", "colour #000000"));
  });
}

TEST(EditorWithoutAColourPicker, OpensOnABlackOnlyModel) {
  EditorOptions options;
  options.without = {u"colpic_WMBrowse"};
  EditorWorld world(options);
  world.allowColours(true, false);
  EXPECT_TRUE(world.edit([](Hand& hand) { EXPECT_TRUE(hand.accept()); }));
  EXPECT_THAT(world.face.failures, IsEmpty());
}

// Every id that the editor looks for; without any one of them the others go on.
constexpr const char* everyId[] = {"txt_EffWMText",
                                   "txt_EffWMTxtBox",
                                   "txt_EffWMStyleName",
                                   "wmStyleName",
                                   "cmb_EffWMCol",
                                   "colpic_WMBrowse",
                                   "txt_WMCol",
                                   "cmb_EffWMFonNam",
                                   "cmb_EffWMSty",
                                   "txt_EffWMFonSiz",
                                   "txt_EffWMAngle",
                                   "scr_EffWMAngScroll",
                                   "UL",
                                   "CC",
                                   "LR",
                                   "rad_EffWMSol",
                                   "rad_EffWMTrans",
                                   "rad_EffWMDrawAsOut",
                                   "txt_EffWMOpa",
                                   "scr_EffWMOpaScroll",
                                   "lblTrans0",
                                   "lblTrans50",
                                   "lblTrans100",
                                   "lblTransUnit",
                                   "but_EffWMResDef",
                                   "lst_selectedWatermark"};

class EditorWithout : public testing::TestWithParam<const char*> {};

TEST_P(EditorWithout, TheWidgetEditsEverythingElse) {
  EditorOptions options;
  options.without = {Formats::toUtf16(GetParam())};
  EditorWorld world(options);
  const auto has = [](const char* id) { return std::string(id) != GetParam(); };
  const auto record = world.newRecord(transparentRecord);
  EXPECT_TRUE(world.edit(record, [&](Hand& hand) {
    if (has("txt_EffWMTxtBox")) hand.type("txt_EffWMTxtBox", "Other");
    if (has("txt_EffWMAngle")) hand.type("txt_EffWMAngle", "12");
    if (has("scr_EffWMAngScroll")) hand.scroll("scr_EffWMAngScroll", 100);
    if (has("colpic_WMBrowse")) hand.pick(0x123456);
    if (has("txt_EffWMFonSiz")) hand.type("txt_EffWMFonSiz", "24");
    if (has("UL")) hand.click("UL");
    if (has("rad_EffWMSol")) hand.choose("rad_EffWMSol");
    if (has("rad_EffWMTrans")) hand.choose("rad_EffWMTrans");
    if (has("scr_EffWMOpaScroll")) hand.scroll("scr_EffWMOpaScroll", 70);
    if (has("txt_EffWMOpa")) hand.type("txt_EffWMOpa", "71");
    EXPECT_TRUE(hand.accept());
  }));
  EXPECT_THAT(world.face.failures, IsEmpty());
  EXPECT_EQ(fieldOf(record, "label"), has("txt_EffWMTxtBox") ? "Other" : "Draft");
  EXPECT_EQ(fieldOf(record, "fontsize"), has("txt_EffWMFonSiz") ? "24" : "96");
  EXPECT_EQ(fieldOf(record, "positionX"), has("UL") ? "L" : "R");
  EXPECT_EQ(fieldOf(record, "angle"), has("scr_EffWMAngScroll") ? "10" : "12");
  EXPECT_EQ(fieldOf(record, "colour"), has("colpic_WMBrowse") ? "#123456" : "#FF0000");
}

INSTANTIATE_TEST_SUITE_P(Each, EditorWithout, testing::ValuesIn(everyId),
                         [](const auto& test) { return std::string(test.param); });

}  // namespace
