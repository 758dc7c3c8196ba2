// String tables and layouts: shipped and invalid ones.
#include "formats/text.h"
#include "host/chrome/help.h"
#include "host/chrome/layout.h"
#include "host/chrome/strings.h"
#include "tests/support/failure_of.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <regex>

namespace {

using Testing::failureOf;
using Testing::TemporaryFolder;
using Testing::writeFile;

const std::filesystem::path resources = RESOURCES_FOLDER;
const Refhost::ChromeFolders chrome(resources);
const std::vector<std::string> locales = {"de-DE", "en-US", "fr-FR", "ja-JP", "zh-CN", "zh-TW"};

TEST(StringTables, HaveTheSameTextsInEveryLocale) {
  for (const std::string& package : chrome.packages()) {
    std::vector<std::string> spoken = locales;
    if (package == "base" || package == "window") spoken.insert(spoken.begin(), "ar");  // the host's alone
    EXPECT_EQ(chrome.locales(package), spoken) << package;
    std::set<std::u16string> expected;
    for (const std::string& locale : spoken) {
      const auto table = Refhost::readStrings(resources / package / "content" / locale / "strings.dtd");
      std::set<std::u16string> names;
      for (const auto& [name, text] : table) {
        names.insert(name);
        EXPECT_FALSE(text.empty()) << Formats::toUtf8(name);
      }
      if (expected.empty()) expected = names;
      EXPECT_EQ(names, expected) << package << " " << locale;
    }
  }
}

TEST(StringTables, AreInTheFallbacksLanguageWhereAPackageLacksTheLocale) {
  const Refhost::StringTables arabic(chrome, "ar");
  EXPECT_EQ(arabic.resolve(u"$IDS_OK;"), u"\u0645\u0648\u0627\u0641\u0642");
  EXPECT_EQ(arabic.resolve(u"$IDS_EFFECT_TAB;"), u"Effects");
  EXPECT_EQ(Refhost::helpPage(chrome, "ar", u"chrome://base/locale/help.chm", u"5100"),
            u"chrome://base/content/en-US/help/5100.html");
}

// The plug-in refuses without a message, so the hints have to say what is taken.
TEST(WatermarkEditor, SaysInEveryLanguageWhatItsTextBoxesTake) {
  for (const std::string& locale : locales) {
    const Refhost::StringTables strings(chrome, locale);
    const Refhost::Trace trace;
    Refhost::WidgetWorld world{trace, strings, {}, [](const auto& action) { action(); }, [](auto&) {}};
    const auto layout = Refhost::LayoutReader(chrome, {}).read(u"chrome://effect/content/dlg_watermark.xul", world);
    int boxes = 0;
    Refhost::walk(*layout.root, [&](Refhost::WidgetNode& widget) {
      const auto* box = dynamic_cast<Refhost::TextBoxNode*>(&widget);
      if (box == nullptr) return;
      ++boxes;
      const auto hint = strings.resolve(widget.attribute("tooltiptext"));
      std::vector<std::u16string> facts = {u"63", strings.resolve(u"$IDS_NONE;")};
      if (const auto& range = box->range()) {
        facts.clear();
        for (const std::int32_t number : {std::abs(range->least), range->most, range->step})
          facts.push_back(Formats::toUtf16(std::to_string(number)));
      }
      for (const auto& fact : facts) EXPECT_NE(hint.find(fact), hint.npos) << locale << ' ' << Formats::toUtf8(hint);
    });
    EXPECT_EQ(boxes, 5);
  }
}

// Every "$IDS_...;" in shipped files and in the sources has a text in every locale.
TEST(StringTables, HaveATextForEveryReference) {
  const std::regex reference("\\$(IDS_[A-Za-z0-9_]+);");
  std::map<std::string, std::string> used;
  for (const std::filesystem::path& root : {resources, std::filesystem::path(SOURCE_FOLDER)})
    for (std::filesystem::recursive_directory_iterator files(root), last; files != last; ++files) {
      const std::filesystem::directory_entry& entry = *files;
      const auto name = entry.path().filename();
      // Other tests write below "build" meanwhile.
      if (files.depth() == 0 &&
          (name == "build" || name == "tests" || name == "examples" || name == "check" || name == ".git"))
        files.disable_recursion_pending();
      if (!entry.is_regular_file()) continue;
      const auto type = entry.path().extension();
      if (type != ".xul" && type != ".xml" && type != ".cpp" && type != ".h" && type != ".html") continue;
      std::ifstream stream(entry.path());
      const std::string text{std::istreambuf_iterator<char>(stream), {}};
      for (std::sregex_iterator match(text.begin(), text.end(), reference), end; match != end; ++match)
        used[(*match)[1]] = entry.path().string();
    }
  used.erase("IDS_NAME");  // the placeholder in comments
  EXPECT_GT(used.size(), 50U);
  for (const std::string& locale : locales) {
    const Refhost::StringTables tables(chrome, locale);
    for (const auto& [name, file] : used) {
      const auto token = Formats::toUtf16("$" + name + ";");
      EXPECT_NE(tables.resolve(token), token) << name << " of " << file << " in " << locale;
    }
  }
}

TEST(HelpPages, AreTheLanguagesOwnOrElseTheOneForAll) {
  const auto addressOf = [](std::u16string_view url, std::u16string_view topic) {
    return Formats::toUtf8(Refhost::helpPage(chrome, "de-DE", url, topic));
  };
  EXPECT_EQ(addressOf(u"chrome://base/locale/help.chm", u"5100"), "chrome://base/content/de-DE/help/5100.html");
  EXPECT_EQ(addressOf(u"chrome://effect/locale/help.chm", u"pro_tab_effect"),
            "chrome://effect/content/help/pro_tab_effect.html");
  EXPECT_EQ(addressOf(u"chrome://effect/locale/help.chm", u"none"), "chrome://effect/content/de-DE/help/none.html");
  EXPECT_EQ(addressOf(u"chrome://effect/content/help/a.html", u"b"), "chrome://effect/content/help/a.html");
}

TEST(HelpPages, HaveTheTextsOfTheLanguage) {
  constexpr std::u16string_view address = u"chrome://effect/content/help/pro_tab_effect.html";
  for (const std::string& locale : locales) {
    const Refhost::StringTables strings(chrome, locale);
    const auto page = Refhost::readHelp(chrome, strings, address);
    ASSERT_TRUE(page);
    EXPECT_EQ(page->find("$IDS_"), page->npos) << locale << *page;
    EXPECT_NE(page->find("<h1>" + Formats::toUtf8(strings.resolve(u"$IDS_EFFECT_TAB;")) + "</h1>"), page->npos);
    EXPECT_TRUE(page->ends_with("</html>\n"));
  }
}

TEST(HelpPages, HaveLabelsWithoutWhatOnlyControlsNeed) {
  const TemporaryFolder folder;
  writeFile(folder.path / "p/content/en-US/strings.dtd",
            "<!ENTITY IDS_KEY \"Mirror(I)\"><!ENTITY IDS_MORE \"Edit(S)...\"><!ENTITY IDS_SIGNS \"a &amp; &lt;b>\">"
            "<!ENTITY IDS_WORD \"A (word)\">");
  writeFile(folder.path / "p/content/h.html", "<p>$IDS_KEY;, $IDS_MORE;, $IDS_SIGNS;, $IDS_WORD;, $5, $IDS_NO; $IDS_");
  const Refhost::ChromeFolders folders(folder.path);
  const Refhost::StringTables strings(folders, "en-US");
  EXPECT_EQ(Refhost::readHelp(folders, strings, u"chrome://p/content/h.html"),
            "<p>Mirror, Edit, a &amp; &lt;b>, A (word), $5, $IDS_NO; $IDS_");
  EXPECT_FALSE(Refhost::readHelp(folders, strings, u"chrome://p/content/none.html"));
  EXPECT_FALSE(Refhost::readHelp(folders, strings, u"h.html"));
}

TEST(StringTables, LeaveOtherTextsAsTheyAre) {
  const Refhost::StringTables tables(chrome, "en-US");
  EXPECT_EQ(tables.resolve(u"$IDS_NONE;"), u"None");
  for (const auto* text : {u"Draft", u"", u"$IDS_NONE", u"IDS_NONE;", u"$IDS_NO_SUCH_TEXT;", u" $IDS_NONE;"})
    EXPECT_EQ(tables.resolve(text), text);
}

TEST(StringTables, ResolvePredefinedReferences) {
  const TemporaryFolder folder;
  writeFile(folder.path / "strings.dtd",
            "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- <!ENTITY IDS_NOT \"x\"> -->\n"
            "<!ENTITY IDS_A 'first'>\n<!ENTITY IDS_B \"a &amp; b &lt; &#x65E5; &#38; c &#38;\">");
  const auto table = Refhost::readStrings(folder.path / "strings.dtd");
  EXPECT_EQ(table.size(), 2U);
  EXPECT_EQ(table.at(u"IDS_A"), u"first");
  EXPECT_EQ(table.at(u"IDS_B"), u"a & b < 日 & c &");
}

std::string failureOfStrings(const std::string& second) {
  const TemporaryFolder folder;
  writeFile(folder.path / "strings.dtd", "<!ENTITY IDS_A \"a\">\n" + second + "\n<!ENTITY IDS_C \"c\">");
  const auto sentence = failureOf([&] { Refhost::readStrings(folder.path / "strings.dtd"); });
  return std::regex_replace(sentence, std::regex("^.*strings\\.dtd"), "strings.dtd");
}

TEST(StringTables, FailWithFileAndLine) {
  EXPECT_TRUE(failureOfStrings("<!ENTITY IDS_B \"b\"").starts_with("strings.dtd:3: "));
  EXPECT_EQ(failureOfStrings("<!ENTITY IDS_A \"b\">"), "strings.dtd:2: the text IDS_A stands twice.");
  EXPECT_EQ(failureOfStrings("<!ENTITY IDS_B \"a &IDS_A; b\">"),
            "strings.dtd:2: there is no text for the reference &IDS_A;.");
  EXPECT_EQ(failureOfStrings("<!ENTITY IDS_B SYSTEM \"b.txt\">"), "strings.dtd:2: the entity IDS_B has no text.");
  EXPECT_EQ(failureOfStrings("<!ENTITY % IDS_B \"b\">"), "strings.dtd:2: the entity IDS_B has no text.");
  for (const char* other : {"<!ELEMENT a ANY>", "<!ATTLIST a b CDATA #IMPLIED>", "<!NOTATION a SYSTEM 'b'>", "%other;",
                            "<?other?>", "<!ENTITY amp '&#38;#38;'>"})
    EXPECT_EQ(failureOfStrings(other), "strings.dtd:2: only entities with texts belong here.") << other;
}

TEST(StringTables, AreNotFoundForAnUnknownLocale) {
  EXPECT_EQ(failureOf([] { Refhost::StringTables(chrome, "xx-XX"); }), "There are no texts for the locale xx-XX.");
}

TEST(ChromeAddresses, NameFilesOfTheirPackageAlone) {
  EXPECT_EQ(chrome.file(u"chrome://effect/content/tab_effect.xul"),
            resources / "effect" / "content" / "tab_effect.xul");
  for (const auto* address :
       {u"chrome://effect/../secret", u"chrome://effect//x", u"chrome://effect/./x", u"file:///etc/passwd", u"effect/x",
        u"chrome://effect/a\\..\\b", u"chrome://c:/x", u"chrome://../x"})
    EXPECT_FALSE(chrome.file(address)) << Formats::toUtf8(address);
}

TEST(ChromeAddresses, NameNoFileWithANul) {
  EXPECT_FALSE(chrome.file(std::u16string(u"chrome://effect/content/tab_effect.xul") + u'\0' + u".dtd"));
}

class Layouts : public testing::Test {
 protected:
  std::string failureOfLayout(const std::string& xml) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder.path / "p" / "content");
    writeFile(folder.path / "p" / "content" / "l.xul", xml);
    const Refhost::ChromeFolders folders(folder.path);
    const auto sentence =
        failureOf([&] { Refhost::LayoutReader(folders, {}).read(u"chrome://p/content/l.xul", world); });
    return std::regex_replace(sentence, std::regex("^.*l\\.xul"), "l.xul");
  }

  Refhost::Trace trace;
  Refhost::StringTables strings{chrome, "en-US"};
  Refhost::WidgetWorld world{trace, strings, nullptr, [](const auto& action) { action(); }, [](auto&) {}};
  const std::string start =
      "<tabpanel xmlns='http://www.mozilla.org/keymaster/gatekeeper/there.is.only.xul' id='t' label='T'>";
};

TEST_F(Layouts, ThatShipCanAllBeRead) {
  std::size_t read = 0;
  for (const std::string& package : chrome.packages())
    for (const auto& entry : std::filesystem::directory_iterator(resources / package / "content"))
      if (entry.path().extension() == ".xul") {
        ++read;
        const auto address = "chrome://" + package + "/content/" + entry.path().filename().string();
        EXPECT_EQ(failureOf([&] { Refhost::LayoutReader(chrome, {}).read(Formats::toUtf16(address), world); }),
                  "it did not fail");
      }
  EXPECT_GE(read, 4U);
}

TEST_F(Layouts, FailWithFileAndLine) {
  EXPECT_EQ(failureOfLayout("<tabpanel id='t'/>"),
            "l.xul:1: <tabpanel> is not in the namespace "
            "\"http://www.mozilla.org/keymaster/gatekeeper/there.is.only.xul\".");
  EXPECT_EQ(failureOfLayout("<vbox/>"), "l.xul:1: the root is a <vbox>, not a <tabpanel> or a <dialog>.");
  EXPECT_EQ(failureOfLayout(start + "\n<vbox>\n<slider/></vbox></tabpanel>"), "l.xul:3: <slider> is not known here.");
  EXPECT_EQ(failureOfLayout(start + "\n<vbox id='a'/><hbox id='a'/></tabpanel>"), "l.xul:2: the id a is used twice.");
  EXPECT_EQ(failureOfLayout(start + "\n<vbox hidden='yes'/></tabpanel>"),
            "l.xul:2: hidden is neither \"true\" nor \"false\".");
  EXPECT_EQ(failureOfLayout(start + "\n<vbox></tabpanel>"), "l.xul:2: mismatched tag");
  EXPECT_EQ(failureOfLayout(start + "\n<listitem label='a' value='b'/></tabpanel>"),
            "l.xul:2: <listitem> does not belong into <tabpanel>.");
  EXPECT_EQ(failureOfLayout(start + "\n<button><label/></button></tabpanel>"),
            "l.xul:2: <label> does not belong into <button>.");
  EXPECT_EQ(failureOfLayout(start + "\n<vbox colour='red'/></tabpanel>"), "l.xul:2: <vbox> takes no attribute colour.");
  EXPECT_EQ(failureOfLayout(start + "\n<vbox xml:id='a'/></tabpanel>"), "l.xul:2: <vbox> takes no attribute id.");
  EXPECT_EQ(failureOfLayout(start + "\n<label>text</label></tabpanel>"),
            "l.xul:2: <label> has a text, which is not known here.");
  EXPECT_EQ(failureOfLayout(start + "\n<label value='&IDS_NONE;'/></tabpanel>"), "l.xul:2: undefined entity");
  EXPECT_EQ(failureOfLayout(start + "\n<label value='$IDS_NO_SUCH_TEXT;'/></tabpanel>"),
            "l.xul:2: value is $IDS_NO_SUCH_TEXT;, which en-US has no text for.");
  EXPECT_EQ(failureOfLayout(start + "\n<label value='$IDS_NONE'/></tabpanel>"),
            "l.xul:2: value is $IDS_NONE, which en-US has no text for.");
  EXPECT_EQ(failureOfLayout(start + "<menulist>\n<menuitem label='$IDS_NONES;'/></menulist></tabpanel>"),
            "l.xul:2: label is $IDS_NONES;, which en-US has no text for.");
  EXPECT_EQ(failureOfLayout(start + "\n<vbox align='top'/></tabpanel>"),
            "l.xul:2: align is \"top\", and may be \"start\", \"center\", \"end\".");
  EXPECT_EQ(failureOfLayout(start + "\n<vbox width='wide'/></tabpanel>"), "l.xul:2: width is no whole number.");
  EXPECT_EQ(failureOfLayout(start + "\n<image droptarget='yes'/></tabpanel>"),
            "l.xul:2: droptarget is neither \"true\" nor \"false\".");
  EXPECT_EQ(failureOfLayout("<!DOCTYPE x>" + start + "</tabpanel>"), "l.xul:1: a DOCTYPE is not allowed here.");
  std::string deep = start;
  for (int i = 0; i < 100; ++i) deep += "<vbox>";
  EXPECT_EQ(failureOfLayout(deep), "l.xul:1: elements lie deeper in one another than this host reads.");
}

}  // namespace
