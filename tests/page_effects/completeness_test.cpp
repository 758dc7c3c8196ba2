// Every page effect has all its parts. docs/adding-an-effect.md tells where each belongs.
#include "formats/text.h"
#include "tests/page_effects/missing_parts.h"
#include "tests/support/host_world.h"

#include <gmock/gmock.h>

namespace Formats {

// The name of an effect in messages about tests.
static void PrintTo(const PageEffect& effect, std::ostream* out) { *out << toUtf8(effect.property); }

}  // namespace Formats

namespace {

namespace fs = std::filesystem;
using testing::AnyOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const fs::path documents = SOURCE_FOLDER "/docs";

class PageEffect : public testing::TestWithParam<Formats::PageEffect> {};

TEST_P(PageEffect, HasAllItsParts) {
  const auto missing = missingParts(GetParam(), {.resources = RESOURCES_FOLDER, .documents = documents});
  std::string sentences;
  for (const std::string& sentence : missing) sentences += '\n' + sentence;
  EXPECT_THAT(missing, IsEmpty()) << sentences;
}

INSTANTIATE_TEST_SUITE_P(Each, PageEffect, testing::ValuesIn(Formats::PageEffects::all),
                         [](const auto& instance) { return Formats::toUtf8(instance.param.property); });

// A copy of what an effect consists of, without one part of it.
class IncompleteEffect : public testing::Test {
 protected:
  IncompleteEffect() {
    Testing::copyResources(resources);
    fs::copy(documents, folder.path / "docs", fs::copy_options::recursive);
  }

  std::vector<std::string> missing(std::span<const Press::PageEffect> printed = Press::pageEffects) const {
    return missingParts(Formats::PageEffects::rotate180,
                        {.resources = resources, .documents = folder.path / "docs", .printed = printed});
  }

  // What is missing once the text is another, in one of the files.
  std::vector<std::string> missingWith(const fs::path& file, const std::string& before, const std::string& after) {
    const std::string bytes = Testing::bytesOf(folder.path / file);
    std::string changed = bytes;
    const std::size_t place = changed.find(before);
    if (place == changed.npos) throw std::logic_error(file.string() + " has no " + before);
    Testing::writeFile(folder.path / file, changed.replace(place, before.size(), after));
    std::vector<std::string> sentences;
    try {
      sentences = missing();
    } catch (const std::runtime_error& refusal) {  // the readers miss it themselves
      sentences = {refusal.what()};
    }
    Testing::writeFile(folder.path / file, bytes);
    return sentences;
  }

  // What is missing once a row of the print side is another.
  static constexpr auto isRow = [](const Press::PageEffect& row) {
    return row.setting == Formats::PageEffects::rotate180;
  };
  std::vector<std::string> missingWithRow(void (*change)(Press::PageEffect&)) const {
    std::vector<Press::PageEffect> rows(std::begin(Press::pageEffects), std::end(Press::pageEffects));
    change(*std::ranges::find_if(rows, isRow));
    return missing(rows);
  }

  const Testing::TemporaryFolder folder;
  const fs::path resources = folder.path / "resources";
};

TEST_F(IncompleteEffect, IsToldWhenAModelDoesNotDeclareIt) {
  const fs::path file = "resources/models/standard.xml";
  const std::string start = "<property name=\"Rotate180\" value=\"None\">";
  const std::string options = "\n    <option value=\"None\"/><option value=\"Rotate180\"/>\n  </property>";
  EXPECT_THAT(missingWith(file, start + options, ""),
              ElementsAre("Rotate180 is no property of host/models/standard.xml."));
  EXPECT_THAT(missingWith(file, start, "<property name=\"Rotate180\" value=\"Rotate180\">"),
              Contains("Rotate180 is not \"None\" at first in host/models/standard.xml."));
  EXPECT_THAT(missingWith(file, start + options, start + "<option value=\"None\"/></property>"),
              Contains("Rotate180 has no option \"Rotate180\" in host/models/standard.xml."));
  EXPECT_THAT(missingWith(file, start + options, start + "<option value=\"Rotate180\"/></property>"),
              ElementsAre(HasSubstr("Rotate180 has no option None.")));
}

TEST_F(IncompleteEffect, IsToldWhenOneModelAloneDoesNotDeclareIt) {
  Testing::writeFile(resources / "models" / "tev.xml", "<model name=\"tev\" label=\"Tev\"/>");
  EXPECT_THAT(missing(), ElementsAre("Rotate180 is no property of host/models/tev.xml."));
}

TEST_F(IncompleteEffect, IsToldWhenTheTabHasNoBoxForIt) {
  const fs::path file = "resources/effect/content/tab_effect.xul";
  EXPECT_THAT(
      missingWith(file, "\"chk_EffRot180Deg\"", "\"chk_Other\""),
      ElementsAre(
          "Rotate180 has no check box chk_EffRot180Deg in effect/content/tab_effect.xul, which names its texts."));
  EXPECT_THAT(
      missingWith(file, "<checkbox id=\"chk_EffRot180Deg\"", "<caption id=\"chk_EffRot180Deg\""),
      Contains("Rotate180 has no check box chk_EffRot180Deg in effect/content/tab_effect.xul, which names its texts."));
}

TEST_F(IncompleteEffect, IsToldWhenItsBoxLacksAText) {
  const fs::path file = "resources/effect/content/tab_effect.xul";
  EXPECT_THAT(missingWith(file, " label=\"$IDS_EFFECT_ROTATE_180;\"", ""),
              Contains("Rotate180 has no label in effect/content/tab_effect.xul."));
  EXPECT_THAT(missingWith(file, "accesskey=\"$IDS_EFFECT_ROTATE_180_KEY;\"", ""),
              ElementsAre("Rotate180 has no access key in effect/content/tab_effect.xul."));
  EXPECT_THAT(missingWith(file, "tooltiptext=\"$IDS_EFFECT_ROTATE_180_TIP;\"", ""),
              ElementsAre("Rotate180 has no tip in effect/content/tab_effect.xul."));
}

TEST_F(IncompleteEffect, IsToldForEachTextOfEachLanguage) {
  const Refhost::ChromeFolders chrome(resources);
  ASSERT_EQ(chrome.locales("effect").size(), 6U);
  for (const std::string& locale : chrome.locales("effect"))
    for (const auto& [name, part] :
         {std::pair("IDS_EFFECT_ROTATE_180", "label"), std::pair("IDS_EFFECT_ROTATE_180_KEY", "access key"),
          std::pair("IDS_EFFECT_ROTATE_180_TIP", "tip"), std::pair("IDS_EFFECT_ROTATE_180_HELP", "help")}) {
      const std::string file = "effect/content/" + locale + "/strings.dtd";
      EXPECT_THAT(missingWith("resources/" + file, std::string(name) + " ", "IDS_OTHER "),
                  Contains(AnyOf("Rotate180 has no " + std::string(part) + " in " + file + ".",
                                 HasSubstr("$" + std::string(name) + ";, which en-US has no text for."))));
    }
}

TEST_F(IncompleteEffect, IsToldWhenItsAccessKeyIsInUseOrNotInItsLabel) {
  const fs::path file = "resources/effect/content/en-US/strings.dtd";
  EXPECT_THAT(missingWith(file, "IDS_EFFECT_ROTATE_180_KEY \"R\"", "IDS_EFFECT_ROTATE_180_KEY \"E\""),
              ElementsAre("Rotate180 has the access key \"e\" in en-US, as btn_WMEdit has."));
  EXPECT_THAT(missingWith(file, "IDS_EFFECT_ROTATE_180_KEY \"R\"", "IDS_EFFECT_ROTATE_180_KEY \"X\""),
              ElementsAre("Rotate180 has the access key \"x\" in en-US, which its label has not."));
}

TEST_F(IncompleteEffect, IsToldWhenTheHelpLeavesItOut) {
  EXPECT_THAT(missingWith("resources/effect/content/help/pro_tab_effect.html", "$IDS_EFFECT_ROTATE_180;", "180"),
              ElementsAre("Rotate180 has no entry in effect/content/help/pro_tab_effect.html."));
}

TEST_F(IncompleteEffect, IsToldWhenTicketsDoNotCarryIt) {
  const std::string file = "effect/content/schema_effect.xml";
  EXPECT_THAT(missingWith("resources/" + file, "property=\"Rotate180\"", "property=\"Other\""),
              ElementsAre("Rotate180 has no feature in " + file + "."));
  EXPECT_THAT(missingWith("resources/" + file, "<option name=\"kw:Rotate180\" value=\"Rotate180\"/>", ""),
              ElementsAre("Rotate180 has no option for \"Rotate180\" in kw:ePTKWPageRotate180 in " + file + "."));
}

TEST_F(IncompleteEffect, IsToldWhenItIsNotPrinted) {
  std::vector<Press::PageEffect> rows(std::begin(Press::pageEffects), std::end(Press::pageEffects));
  std::erase_if(rows, isRow);
  EXPECT_THAT(missing(rows), ElementsAre("Rotate180 is not printed: it is not in the table of press/job/effects.h."));
  EXPECT_THAT(missingWithRow([](Press::PageEffect& row) { row.flip = Press::Flip::none; }),
              ElementsAre("Rotate180 changes nothing on a page in press/job/effects.h."));
  EXPECT_THAT(missingWithRow([](Press::PageEffect& row) { row.result = ""; }),
              ElementsAre("Rotate180 has no words for a dry run in press/job/effects.h."));
}

TEST_F(IncompleteEffect, IsToldWhenADocumentLeavesItOut) {
  EXPECT_THAT(missingWith("docs/printing.md", "`Rotate180`", "another"),
              ElementsAre("Rotate180 is not in docs/printing.md."));
  EXPECT_THAT(missingWith("docs/print-ticket.md", "`Rotate180`", "another"),
              ElementsAre("Rotate180 is not in docs/print-ticket.md."));
  EXPECT_THAT(missingWith("docs/print-ticket.md", "`kw:ePTKWPageRotate180`", "another"),
              ElementsAre("Rotate180 is in tickets as kw:ePTKWPageRotate180, which is not in docs/print-ticket.md."));
}

}  // namespace
