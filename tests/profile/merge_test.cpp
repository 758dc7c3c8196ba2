// Merging a profile into a home with content.
#include "tests/profile/profile_world.h"

namespace {

using namespace Testing;
using namespace Refhost;

class Merge : public ProfileWorld {
 protected:
  std::u16string value(const Manifest& manifest, std::u16string_view name) {
    for (const auto& [property, text] : manifest.values)
      if (property == name) return text;
    return u"(none)";
  }

  // "NAME=FILE" of each overlay of the home.
  std::vector<std::string> index() {
    std::vector<std::string> lines;
    for (const auto& entry : Formats::readIndex(bytesOf(overlays / "ovlNmFl.flo")))
      lines.push_back(Formats::toUtf8(entry.name) + "=" + Formats::toUtf8(entry.fileName));
    return lines;
  }
};

using testing::ElementsAre;

TEST_F(Merge, OfAWatermarkThatIsTheSameTakesTheHomes) {
  put(watermarks, watermarkFile(watermark("WM_2", "Draft")));
  putWatermarks(watermark("WM_1", "Draft"));
  putManifest({{u"WatermarkSel", u"WM_1"}});
  const Manifest imported = import();
  EXPECT_EQ(bytesOf(watermarks), watermarkFile(watermark("WM_2", "Draft")));
  EXPECT_EQ(value(imported, u"WatermarkSel"), u"WM_2");
}

TEST_F(Merge, OfAnotherWatermarkOfTheNameKeepsBoth) {
  put(watermarks, watermarkFile(watermark("WM_2", "Draft", "#FF0000")));
  putWatermarks(watermark("WM_1", "Draft"));
  putManifest({{u"WatermarkSel", u"WM_1"}});
  EXPECT_EQ(value(import(), u"WatermarkSel"), u"WM_1");
  const std::string both = bytesOf(watermarks);
  EXPECT_THAT(both, testing::HasSubstr(watermark("WM_2", "Draft", "#FF0000")));
  EXPECT_THAT(both,
              testing::HasSubstr("<label>Draft</label>\n    <stylename>Draft (2)</stylename>\n    <colour>#808080"));
  import();
  EXPECT_EQ(bytesOf(watermarks), both);
}

TEST_F(Merge, OfAnotherWatermarkOfTheIdGivesANewId) {
  put(watermarks, watermarkFile(watermark("_x0031_", "Confidential")));
  putWatermarks(watermark("_x0031_", "Secret") + watermark("_x0031__2", "Own"));
  putManifest({{u"WatermarkSel", u"1"}});
  put(watermarks,
      watermarkFile("  <_x0031_>\n    <stylename>Confidential</stylename>\n    <value>1</value>\n  </_x0031_>\n"));
  put(from / "ZVeffect.xml",
      watermarkFile("  <_x0031_>\n    <stylename>Secret</stylename>\n    <value>1</value>\n  </_x0031_>\n"
                    "  <_x0031__2>\n    <stylename>Own</stylename>\n    <value>1_2</value>\n  </_x0031__2>\n"));
  const std::u16string id = value(import(), u"WatermarkSel");
  EXPECT_EQ(id, u"1_3");
  const std::string merged = bytesOf(watermarks);
  EXPECT_THAT(merged, testing::HasSubstr("<stylename>Confidential</stylename>\n    <value>1</value>"));
  EXPECT_THAT(merged, testing::HasSubstr("<stylename>Secret</stylename>\n    <value>1_3</value>"));
  EXPECT_THAT(merged, testing::HasSubstr("<stylename>Own</stylename>\n    <value>1_2</value>"));
  EXPECT_EQ(value(import(), u"WatermarkSel"), u"1_3");
  EXPECT_EQ(bytesOf(watermarks), merged);
}

// The store reads ids likewise.
TEST_F(Merge, KnowsAWatermarkWithoutAnIdByItsElementWithoutTheEndingOfADownloadedOne) {
  const auto nameless = [](const std::string& element, const std::string& name) {
    return "  <" + element + ">\n    <stylename>" + name + "</stylename>\n    <value></value>\n  </" + element + ">\n";
  };
  put(watermarks, watermarkFile(nameless("WM_1", "Mine")));
  put(from / "ZVeffect.xml", watermarkFile(nameless("WM_1_G", "Theirs")));
  putManifest({{u"WatermarkSel", u"WM_1_G"}});
  EXPECT_EQ(value(import(), u"WatermarkSel"), u"WM_1_2");
}

// Built-in watermarks have translated names, and a face for the user's language.
TEST_F(Merge, OfWatermarksThatCameWithTheProgramLooksPastTheFace) {
  const auto draft = [](const std::string& face, const std::string& size) {
    return watermarkFile(
        "  <_x0032_>\n    <label>$IDS_WM_DRAFT;</label>\n    <stylename>$IDS_WM_DRAFT;</stylename>\n    "
        "<fontname>" +
        face + "</fontname>\n    <fontsize>" + size +
        "</fontsize>\n    <value>2</value>\n"
        "  </_x0032_>\n");
  };
  put(watermarks, draft("Arial", "72"));
  put(from / "ZVeffect.xml", draft("Gothic", "72"));
  import();
  EXPECT_EQ(bytesOf(watermarks), draft("Arial", "72"));
  put(from / "ZVeffect.xml", draft("Gothic", "108"));
  import();
  EXPECT_THAT(bytesOf(watermarks), testing::HasSubstr("<stylename>Draft (2)</stylename>"));
}

// Downloaded records keep the ids and names of their own files, so a profile may have a user's and a downloaded one
// with the same name.
TEST_F(Merge, OfTwoWatermarksOfOneNameInAProfileKeepsBoth) {
  putManifest({{u"WatermarkSel", u"WM_1_G"}});
  put(from / "ZVeffect.xml", watermarkFile(watermark("WM_1", "Draft") +
                                           "  <WM_1_G>\n    <stylename>Draft</stylename>\n    <value>WM_1</value>\n    "
                                           "<downloaded>True</downloaded>\n  </WM_1_G>\n"));
  EXPECT_EQ(value(import(), u"WatermarkSel"), u"WM_1_2");
  EXPECT_THAT(bytesOf(watermarks), testing::HasSubstr("  <WM_1_2>\n    <stylename>Draft (2)</stylename>\n    "
                                                      "<value>WM_1_2</value>\n    <downloaded>False</downloaded>\n"));
}

TEST_F(Merge, OfAnOverlayThatIsTheSameTakesTheHomes) {
  putOverlays(overlays, {{u"Form", u"00001.opa"}});
  putOverlays(from / "overlays", {{u"Form", u"12345.opa"}});
  putManifest({{u"OverlaySel", u"12345.opa"}, {u"OverlaySourceFileName", u"/elsewhere/overlays/12345.opa"}});
  const Tree before = treeOf(overlays);
  const Manifest imported = import();
  EXPECT_EQ(treeOf(overlays), before);
  EXPECT_EQ(value(imported, u"OverlaySel"), u"00001.opa");
  EXPECT_EQ(value(imported, u"OverlaySourceFileName"), (overlays / "00001.opa").u16string());
}

TEST_F(Merge, OfAnotherOverlayOfTheNameKeepsBoth) {
  putOverlays(overlays, {{u"Form", u"00001.opa"}});
  putOverlays(from / "overlays", {{u"Form", u"12345.opa"}}, "of the profile");
  putManifest({{u"OverlaySel", u"12345.opa"}});
  EXPECT_EQ(value(import(), u"OverlaySel"), u"12345.opa");
  EXPECT_THAT(index(), ElementsAre("Form=00001.opa", "Form (2)=12345.opa"));
  const Tree both = treeOf(overlays);
  import();
  EXPECT_EQ(treeOf(overlays), both);
}

TEST_F(Merge, OfAnotherOverlayOfTheFileNameGivesANewFileName) {
  putOverlays(overlays, {{u"Own", u"12345.OPA"}, {u"First", u"00000.opa"}});
  put(overlays / "00001.bmp", "somebody's picture");
  putOverlays(from / "overlays", {{u"Form", u"12345.opa"}});
  putManifest({{u"OverlaySel", u"Multiple"},
               {u"MultipleOverlayDetails", u"12345.opa;All$;$;$;$;$;$;$;$"},
               {u"OverlaySourceFileName", u"C:\\old\\12345.opa;All$/gone/00009.opa;Odd$"}});
  const Manifest imported = import();
  EXPECT_THAT(index(), ElementsAre("Own=12345.OPA", "First=00000.opa", "Form=00002.opa"));
  EXPECT_EQ(bytesOf(overlays / "00002.opa"), "form Form");
  EXPECT_EQ(bytesOf(overlays / "00002.bmp"), "picture Form");
  EXPECT_EQ(bytesOf(overlays / "12345.OPA"), "form Own");
  EXPECT_EQ(value(imported, u"MultipleOverlayDetails"), u"00002.opa;All$;$;$;$;$;$;$;$");
  EXPECT_EQ(value(imported, u"OverlaySourceFileName"), (overlays / "00002.opa").u16string() + u";All$");
}

std::string leftOut(const std::string& file) {
  return "The overlay \"" + file + "\" is not in the profile, and is left out: choose another one, or none.";
}

TEST_F(Merge, TakesNoPathThatLeadsOutOfTheProfile) {
  putOverlays(from / "overlays", {{u"Form", u"12345.opa"}});
  for (const std::string path :
       {"/etc/passwd", "/home/a/letter.pdf", "C:\\Users\\a\\x.opa", "..", "/", "/x/ovlNmFl.flo", "12345.opa/..",
        "/a/12345.opa;All$/etc/passwd;All$", "relative.pdf", "12346.opa"}) {
    putManifest({{u"OverlaySel", u"12345.opa"}, {u"OverlaySourceFileName", Formats::toUtf16(path)}});
    told.clear();
    EXPECT_EQ(value(import(), u"OverlaySourceFileName"), u"") << path;
    EXPECT_THAT(told, ElementsAre(leftOut(path)));
    EXPECT_THAT(bytesOf(Refhost::settingsFile(home, u"standard")),
                testing::HasSubstr("\"OverlaySourceFileName\": \"\""));
  }
}

TEST_F(Merge, OfAPathToAnotherPlaceTakesTheOverlayOfItsFileName) {
  putOverlays(from / "overlays", {{u"Form", u"12345.opa"}});
  putManifest({{u"OverlaySel", u"12345.opa"}, {u"OverlaySourceFileName", u"/etc/12345.opa"}});
  EXPECT_EQ(value(import(), u"OverlaySourceFileName"), (overlays / "12345.opa").u16string());
  EXPECT_THAT(told, testing::IsEmpty());
}

TEST_F(Merge, OfSettingsAloneTakesTheHomesOwnOverlay) {
  putOverlays(overlays, {{u"Form", u"00001.opa"}});
  putManifest({{u"OverlaySel", u"00001.opa"}, {u"OverlaySourceFileName", u"/old/home/overlays/00001.opa"}});
  EXPECT_EQ(value(import(), u"OverlaySourceFileName"), (overlays / "00001.opa").u16string());
  EXPECT_THAT(told, testing::IsEmpty());
}

TEST_F(Merge, TakesOutOfAListWhatLeadsOutOfTheProfile) {
  putOverlays(from / "overlays", {{u"Form", u"12345.opa"}});
  const std::u16string inHome = (overlays / "12345.opa").u16string();
  const auto taken = [&](const std::u16string& list) {
    putManifest({{u"OverlaySel", u"Multiple"}, {u"OverlaySourceFileName", list}});
    told.clear();
    return value(import(), u"OverlaySourceFileName");
  };
  EXPECT_EQ(taken(u"/etc/passwd;All$/old/12345.opa;1,3$/etc/group;2$"), inHome + u";1,3$");
  EXPECT_THAT(told, ElementsAre(leftOut("/etc/passwd"), leftOut("/etc/group")));
  EXPECT_EQ(taken(u"12345.opa;All$;$"), inHome + u";All$;$");
  EXPECT_THAT(told, testing::IsEmpty());
  for (const std::u16string list : {u"12345.opa;/../../../../../etc/passwd$", u"12345.opa;a;b$", u";/etc/passwd$"}) {
    EXPECT_EQ(taken(list), u"");
    EXPECT_THAT(told, ElementsAre(leftOut(Formats::toUtf8(list))));
  }
}

TEST_F(Merge, TellsOfAsManyPathsAsPeopleCanChooseOverlays) {
  std::u16string list;
  for (int i = 0; i < 1000; ++i) list += u"/etc/passwd;All$";
  putManifest({{u"OverlaySel", u"Multiple"}, {u"OverlaySourceFileName", list}});
  EXPECT_EQ(value(import(), u"OverlaySourceFileName"), u"");
  EXPECT_THAT(told, testing::SizeIs(8));
}

TEST_F(Merge, OfAnEntryWithoutAFileTakesItsPlace) {
  putOverlays(overlays, {{u"Form", u"00001.opa"}});
  std::filesystem::remove(overlays / "00001.opa");
  putOverlays(from / "overlays", {{u"Form", u"12345.opa"}});
  import();
  EXPECT_THAT(index(), ElementsAre("Form=12345.opa"));
}

TEST_F(Merge, OfTwoOverlaysOfOneNameInAProfileKeepsBoth) {
  putOverlays(from / "overlays", {{u"Form", u"12345.opa"}, {u"Other", u"23456.opa"}});
  put(from / "overlays" / "ovlNmFl.flo", Formats::indexBytes({{u"Form", u"12345.opa"}, {u"Form", u"23456.opa"}}));
  import();
  EXPECT_THAT(index(), ElementsAre("Form=12345.opa", "Form (2)=23456.opa"));
}

TEST_F(Merge, NumbersANameWithinItsField) {
  const std::u16string name(64, u'n');
  putOverlays(overlays, {{name, u"00001.opa"}});
  putOverlays(from / "overlays", {{name, u"12345.opa"}}, "of the profile");
  import();
  EXPECT_THAT(index(), ElementsAre(Formats::toUtf8(name) + "=00001.opa", std::string(60, 'n') + " (2)=12345.opa"));
}

}  // namespace
