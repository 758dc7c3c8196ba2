// Errors when the preferences cannot be opened: one sentence that names the problem, and exit status 2.
#include "tests/script/usage.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <regex>

namespace {

using std::filesystem::path;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

// A copy of the built resources, to be damaged.
path copyOfResources() {
  const path copy = testFolder() / "resources";
  std::filesystem::copy(std::filesystem::canonical(KILN_RESOURCES), copy, std::filesystem::copy_options::recursive);
  return copy;
}

// The line of the first occurrence of `part` in `text`, from 1.
std::ptrdiff_t lineOf(const std::string& text, const std::string& part) {
  return 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(text.find(part)), '\n');
}

void replace(const path& file, const std::string& from, const std::string& to) {
  std::string content = readFile(file);
  ASSERT_NE(content.find(from), std::string::npos) << file;
  content.replace(content.find(from), from.size(), to);
  writeFile(file, content);
}

TEST(Opening, ShippedPluginOpens) {
  const auto outcome = runKiln({"drive"}, "get MirrorImage\n");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out, "{\"ok\":true,\"value\":\"None\"}\n");
  EXPECT_EQ(outcome.err, "");
}

TEST(Opening, TabOpensWithoutAnyOneOfItsWidgets) {
  const std::string layout = readFile(path(KILN_RESOURCES) / "effect" / "content" / "tab_effect.xul");
  const std::regex id(" id=\"([^\"]+)\"");
  int tried = 0;
  for (auto found = std::sregex_iterator(layout.begin(), layout.end(), id); found != std::sregex_iterator(); ++found) {
    const auto outcome =
        runKiln({"drive", "--without", found->str(1)}, "set Rotate180 Rotate180\nforbid Rotate180 Rotate180\nok\n");
    EXPECT_EQ(outcome.status, 0) << found->str(1) << '\n' << outcome.out << outcome.err;
    ++tried;
  }
  EXPECT_GT(tried, 20);
}

TEST(Opening, MissingLibraryIsNamed) {
  expectRefusal(runKiln({"drive", "--plugin", "/no/such/plugin.so"}, "ok\n"), {"/no/such/plugin.so"});
}

TEST(Opening, FileThatIsNoLibraryIsNamed) {
  const path file = testFolder() / "text.so";
  writeFile(file, "This is no library.\n");
  expectRefusal(runKiln({"drive", "--plugin", file.string()}), {file.string()});
}

TEST(Opening, LibraryWithoutTheFactoryIsNamed) {
  expectRefusal(runKiln({"drive", "--plugin", NO_PLUGIN}), {NO_PLUGIN, "createPlugin"});
}

TEST(Opening, LayoutThatIsNotWellFormedIsNamedWithItsLine) {
  const path resources = copyOfResources();
  const path layout = resources / "effect" / "content" / "tab_effect.xul";
  replace(layout, "</groupbox>", "</groupbux>");
  expectRefusal(runKiln({"drive", "--resources", resources.string()}),
                {layout.string(), std::to_string(lineOf(readFile(layout), "</groupbux>"))});
}

TEST(Opening, UnknownElementOfALayoutIsNamedWithItsLine) {
  const path resources = copyOfResources();
  const path layout = resources / "effect" / "content" / "tab_effect.xul";
  replace(layout, "<spacer flex=\"1\"/>", "<starship/>");
  expectRefusal(runKiln({"drive", "--resources", resources.string()}),
                {layout.string(), "starship", std::to_string(lineOf(readFile(layout), "<starship/>"))});
}

TEST(Opening, MissingLayoutIsNamed) {
  const path resources = copyOfResources();
  std::filesystem::remove(resources / "effect" / "content" / "tab_effect.xul");
  expectRefusal(runKiln({"drive", "--resources", resources.string()}), {"tab_effect.xul"});
}

TEST(Opening, ModelThatIsNotWellFormedIsNamedWithItsLine) {
  const path resources = copyOfResources();
  const path model = resources / "models" / "standard.xml";
  replace(model, "</model>", "");
  expectRefusal(runKiln({"drive", "--resources", resources.string()}), {model.string() + ":"});
}

TEST(Opening, UnknownAttributeOfALayoutIsNamedWithItsLine) {
  const path resources = copyOfResources();
  const path layout = resources / "effect" / "content" / "tab_effect.xul";
  replace(layout, "<caption id=\"lbl_Ovl\"", "<caption id=\"lbl_Ovl\" colour=\"red\"");
  expectRefusal(runKiln({"drive", "--resources", resources.string()}),
                {layout.string() + ":" + std::to_string(lineOf(readFile(layout), "colour")) +
                 ": <caption> takes no attribute colour."});
}

TEST(Opening, TextThatALayoutNamesAndNoTableHasIsNamedWithItsLine) {
  const path resources = copyOfResources();
  const path layout = resources / "effect" / "content" / "tab_effect.xul";
  replace(layout, "$IDS_EFFECT_MIRROR;", "$IDS_EFFECT_MIROR;");
  expectRefusal(runKiln({"drive", "--resources", resources.string()}),
                {layout.string() + ":" + std::to_string(lineOf(readFile(layout), "MIROR")), "$IDS_EFFECT_MIROR;"});
}

TEST(Opening, DamagedDescriptionOfAPluginIsNamedWithItsLine) {
  const path resources = copyOfResources();
  const path description = resources / "effect" / "content" / "plugin.xml";
  replace(description, "need=\"optional\"", "need=\"sometimes\"");
  expectRefusal(
      runKiln({"drive", "--resources", resources.string()}),
      {description.string() + ":" + std::to_string(lineOf(readFile(description), "sometimes")) + ": need is neither"});
}

TEST(Opening, AllPropertiesThatAModelLacksAreNamed) {
  const path model = testFolder() / "bare.xml";
  writeFile(model, "<model name=\"bare\" label=\"Bare\"><property name=\"WatermarkSel\" value=\"0\"/></model>");
  expectRefusal(runKiln({"drive", "--model", model.string()}),
                {"The model bare lacks properties that the plug-in effect needs: Watermark, FirstPageOnly,",
                 "OverlaySel", "Rotate180ForA3LD."});
}

TEST(Opening, ModelMayExtendAShippedOne) {
  const path model = testFolder() / "mine.xml";
  writeFile(model, "<model extends=\"kvt\"><value of=\"PaperSize\" is=\"A3\"/></model>");
  const auto outcome = runKiln({"drive", "--model", model.string()}, "get ModelNumber\nget PaperSize\n");
  EXPECT_EQ(outcome.out, "{\"ok\":true,\"value\":\"KVT\"}\n{\"ok\":true,\"value\":\"A3\"}\n");
}

// Each file is looked for in the first folder, then in the others.
TEST(Opening, FolderInFrontOfTheShippedFilesChangesWhatItHas) {
  const path front = testFolder() / "front";
  const path shipped = KILN_RESOURCES;
  const path layout = front / "effect" / "content" / "tab_effect.xul";
  std::filesystem::create_directories(layout.parent_path());
  std::filesystem::create_directories(front / "models");
  writeFile(layout, readFile(shipped / "effect" / "content" / "tab_effect.xul"));
  replace(layout, "id=\"btn_WMAdd\"", "id=\"btn_mine\"");
  writeFile(front / "models" / "mine.xml", "<model extends=\"kvt\"/>");
  const auto outcome =
      runKiln({"drive", "--resources", front.string(), "--resources", shipped.string(), "--model", "mine"},
              "get ModelNumber\nwidget btn_mine\n");
  EXPECT_EQ(outcome.status, 0) << outcome.out << outcome.err;
  EXPECT_THAT(outcome.out, StartsWith("{\"ok\":true,\"value\":\"KVT\"}\n"));
  EXPECT_EQ(
      runKiln({"drive", "--resources", shipped.string(), "--resources", front.string()}, "widget btn_mine\n").status,
      1);
  EXPECT_EQ(runKiln({"ticket", "--resources", front.string(), "--resources", shipped.string()}).status, 0);
  expectRefusal(runKiln({"drive", "--resources", front.string()}), {"no texts for the locale en-US"});
}

TEST(Opening, ModelOfAPathOfItsOwnOpens) {
  const path model = testFolder() / "mine.xml";
  writeFile(model, readFile(path(KILN_RESOURCES) / "models" / "standard.xml"));
  EXPECT_EQ(runKiln({"drive", "--model", model.string()}, "get MirrorImage\n").status, 0);
}

TEST(Opening, UnknownPropertyInAModelIsNamedWithItsLine) {
  const path model = testFolder() / "broken.xml";
  std::string content = readFile(path(KILN_RESOURCES) / "models" / "standard.xml");
  const std::string rule = "\n<rule unavailable=\"MirorImage\" option=\"MirrorImage\"/>\n";
  content.insert(content.find("</model>"), rule);
  writeFile(model, content);
  expectRefusal(runKiln({"drive", "--model", model.string()}),
                {model.string(), "MirorImage", std::to_string(lineOf(content, "MirorImage"))});
}

TEST(Opening, UnknownModelIsNamed) { expectRefusal(runKiln({"drive", "--model", "nonesuch"}), {"nonesuch"}); }

TEST(Opening, UnknownPropertyOnTheCommandLineIsNamed) {
  expectRefusal(runKiln({"drive", "--property", "MirorImage=None"}), {"MirorImage"});
}

TEST(Opening, UnknownLocaleIsNamed) { expectRefusal(runKiln({"drive", "--locale", "xx-XX"}), {"xx-XX"}); }

TEST(Opening, PluginThatThrowsIsNotLeftHalfOpen) {
  expectRefusal(
      runKiln({"drive", "--plugin", FAKE_PLUGIN, "--resources", FAKE_RESOURCES, "--config", "fake.opening=throw"},
              "properties\n"),
      {"fake_plugin", ", ready: thrown while opening"});
}

TEST(Opening, PluginThatThrowsWhatIsNoExceptionIsNamedWithTheStep) {
  for (const std::string step : {"createPlugin", "create", "initialise", "configureUI", "ready"})
    expectRefusal(runKiln({"drive", "--plugin", FAKE_PLUGIN, "--resources", FAKE_RESOURCES, "--config",
                           "fake.fails=" + step, "--config", "fake.throws=a number"}),
                  {path(FAKE_PLUGIN).filename().string() + ", " + step + ": "});
}

TEST(Opening, HomeThatCannotBeMadeIsToldOnceAndKeepsNothingFromOpening) {
  const path file = testFolder() / "file";
  writeFile(file, "");
  const auto outcome = runKiln({"drive", "--home", (file / "home").string()}, "get MirrorImage\n");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "{\"ok\":true,\"value\":\"None\"}\n");
  EXPECT_THAT(outcome.err, AllOf(StartsWith("kiln: "), HasSubstr(file.string())));
  EXPECT_EQ(std::ranges::count(outcome.err, '\n'), 1) << outcome.err;
}

TEST(Opening, ScriptAndTraceFilesThatCannotBeOpenedAreNamed) {
  expectRefusal(runKiln({"drive", "/no/such/script"}), {"/no/such/script"});
  expectRefusal(runKiln({"drive", "--trace", "/no/such/folder/trace"}), {"/no/such/folder/trace"});
}

}  // namespace
