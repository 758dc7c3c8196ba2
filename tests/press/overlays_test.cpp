#include "press/pdf/bytes.h"
#include "tests/press/awkward_pages.h"
#include "tests/press/rendering.h"
#include "tests/press/test_job.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace fs = std::filesystem;
using Press::Effects;
using Press::Overlay;
using Press::PageRule;
using Press::Picture;
using testing::HasSubstr;

namespace {

// A job of plain pages, each with a small mark in the centre.
std::string pagesJob(int count, const std::string& entries = "") {
  using Press::reference;
  Press::PdfBytes pdf;
  pdf.add("<< /Type /Catalog /Pages 2 0 R >>");
  const int pages = pdf.reserve();
  std::string kids;
  for (int page = 0; page < count; ++page) {
    const int content = pdf.addStream("", "0 0 1 rg 40 40 20 " + std::to_string(2 * page + 2) + " re f");
    kids += reference(pdf.add("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 100 100] /Contents " + reference(content) +
                              " /Resources << >> " + entries + " >>")) +
            " ";
  }
  pdf.set(pages, "<< /Type /Pages /Count " + std::to_string(count) + " /Kids [" + kids + "] >>");
  return pdf.finish(1);
}

// A form with a square of one colour at a given position.
std::string square(const std::string& colour, int x, int y, const std::string& box = "[0 0 100 100]") {
  return TestJob{.boxes = "/MediaBox " + box,
                 .contents = {colour + " rg " + std::to_string(x) + " " + std::to_string(y) + " 10 10 re f"}}
      .bytes();
}

class Overlays : public testing::Test {
 protected:
  fs::path form(const std::string& name, const std::string& bytes) {
    write(folder / name, bytes);
    return folder / name;
  }

  std::string print(const std::string& job, const Effects& effects) {
    write(folder / "in.pdf", job);
    Press::printPdf(folder / "in.pdf", folder / "out.pdf", effects);
    return read(folder / "out.pdf");
  }

  std::string sentence(const std::string& job, const Effects& effects) {
    try {
      print(job, effects);
    } catch (const Press::Error& error) {
      EXPECT_FALSE(fs::exists(folder / "out.pdf"));
      return error.what();
    }
    return "printed";
  }

  const TestFolder folder;
};

Effects with(std::vector<Overlay> overlays) {
  Effects effects;
  effects.overlays = std::move(overlays);
  return effects;
}

}  // namespace

TEST(OverlayProperties, NameOneFileForAllPages) {
  // A single file may have any name, including the separators of the list format.
  EXPECT_EQ(Press::overlaysFromProperties({{"OverlayImage", "OverlayImage"}, {"OverlaySourceFileName", "/o/a;1$.opa"}}),
            (std::vector<Overlay>{{"/o/a;1$.opa", PageRule()}}));
}

TEST(OverlayProperties, NameSeveralFilesWithTheirPages) {
  EXPECT_EQ(Press::overlaysFromProperties({{"OverlayImage", "MultipleOverlayImage"},
                                           {"OverlaySourceFileName", "/o/a.opa;All$/o/b.opa;Even$/o/a.opa;1,3-5$"}}),
            (std::vector<Overlay>{
                {"/o/a.opa", PageRule("All")}, {"/o/b.opa", PageRule("Even")}, {"/o/a.opa", PageRule("1,3-5")}}));
}

TEST(OverlayProperties, NameNothingWhenTheFeatureIsOff) {
  for (const char* kind : {"", "None", "overlayimage"})
    EXPECT_THAT(Press::overlaysFromProperties({{"OverlayImage", kind}, {"OverlaySourceFileName", "/o/a.opa"}}),
                testing::IsEmpty());
  EXPECT_THAT(Press::overlaysFromProperties({{"OverlayImage", "MultipleOverlayImage"}}), testing::IsEmpty());
}

TEST(OverlayProperties, AreRefusedWhenTheyMakeNoSense) {
  const auto refused = [](const char* kind, const std::string& source) {
    return Press::effectsFromProperties({{"OverlayImage", kind}, {"OverlaySourceFileName", source}}).refusal;
  };
  EXPECT_THAT(refused("OverlayImage", ""), HasSubstr("choose another overlay"));
  EXPECT_THAT(refused("MultipleOverlayImage", "/o/a.opa$"), HasSubstr("/o/a.opa"));
  EXPECT_THAT(refused("MultipleOverlayImage", ";All$"), HasSubstr("does not name a file"));
  EXPECT_THAT(refused("MultipleOverlayImage", "/o/a.opa;1,a$"), HasSubstr("\"a\""));
  for (const char* divided : {"/o$/a.opa;All$", "/o;/a.opa;All$", "\\\\s\\u$\\a.opa;1,3$"})
    EXPECT_THAT(refused("MultipleOverlayImage", divided), HasSubstr("has \"$\" or \";\" in its name"));
  std::string endless;
  for (int entry = 0; entry < 100'000; ++entry) endless += "/o/a.opa;All$";
  EXPECT_THAT(refused("MultipleOverlayImage", endless), HasSubstr("more than 1000 overlays"));
}

TEST(OverlayProperties, NameOneFileThatATicketDoesNotTellFromSeveral) {
  for (const char* file : {"/o$/a.opa", "/o;x/a.opa", "\\\\server\\users$\\a.opa"}) {
    const Effects effects = Press::effectsFromProperties(
        {{"OverlayImage", "MultipleOverlayImage"}, {"OverlaySel", "a.opa"}, {"OverlaySourceFileName", file}});
    EXPECT_EQ(effects.overlays, (std::vector<Overlay>{{file, PageRule()}}));
    EXPECT_EQ(effects.refusal, "");
    EXPECT_THAT(effects.overlayTroubles, testing::IsEmpty());
  }
}

TEST(OverlayProperties, HaveNoOverlayWithoutPages) {
  using Press::OverlayTrouble;
  using Kind = OverlayTrouble::Kind;
  const Effects effects = Press::effectsFromProperties(
      {{"OverlayImage", "MultipleOverlayImage"},
       {"OverlaySel", "Multiple"},
       {"OverlaySourceFileName", "/o/a.opa;$/o/b.opa;-$/o/c.opa;,$/o/d.opa;0$/o/e.opa;--2,$/o/f.opa;--,2,1--3$"}});
  EXPECT_EQ(effects.refusal, "");
  EXPECT_EQ(effects.overlays, (std::vector<Overlay>{{"/o/f.opa", PageRule("2")}}));
  EXPECT_EQ(effects.overlayTroubles, (std::vector<OverlayTrouble>{{Kind::noPages, "/o/a.opa", ""},
                                                                  {Kind::namesNoPage, "/o/b.opa", "-"},
                                                                  {Kind::namesNoPage, "/o/c.opa", ","},
                                                                  {Kind::namesNoPage, "/o/d.opa", "0"},
                                                                  {Kind::namesNoPage, "/o/e.opa", "--2,"},
                                                                  {Kind::namesNoPage, "/o/f.opa", "--,1--3"}}));
}

TEST(OverlayProperties, NameTheFilesWhoseFoldersDivideTheList) {
  using Press::OverlayTrouble;
  const auto troubles = [](const char* source) {
    return Press::overlayTroubles({{"OverlayImage", "MultipleOverlayImage"}, {"OverlaySourceFileName", source}});
  };
  EXPECT_EQ(troubles("/o$x/a.opa;All$/o/b.opa;1$/o;y/c.opa;2-$"),
            (std::vector<OverlayTrouble>{{OverlayTrouble::Kind::folder, "/o$x/a.opa", ""},
                                         {OverlayTrouble::Kind::folder, "/o;y/c.opa", ""}}));
  EXPECT_EQ(troubles("").size(), 1U);
  EXPECT_EQ(troubles("").front().kind, OverlayTrouble::Kind::noneAssigned);
  EXPECT_THAT(troubles(std::string(1'000'000, '$').c_str()), testing::SizeIs(1));
}

TEST(OverlayProperties, SayWhereAndHowOftenToPrint) {
  const Effects plain = Press::effectsFromProperties({{"OverlayLayering", "Underlay"}, {"OverlayOccurance", "None"}});
  EXPECT_FALSE(plain.overlaysOverPage);
  EXPECT_FALSE(plain.overlaysOnEachPage);
  const Effects other = Press::effectsFromProperties({{"OverlayLayering", "Overlay"}, {"OverlayOccurance", "PerPage"}});
  EXPECT_TRUE(other.overlaysOverPage);
  EXPECT_TRUE(other.overlaysOnEachPage);
  EXPECT_EQ(Press::effectsFromProperties({{"Nin1", "2in1"}}).pagesOnSheet, 2);
  EXPECT_EQ(Press::effectsFromProperties({{"Nin1", "4in1"}}).pagesOnSheet, 4);
  EXPECT_EQ(Press::effectsFromProperties({{"Nin1", "None"}}).pagesOnSheet, 1);
}

TEST_F(Overlays, LieUnderThePageOrOverIt) {
  const fs::path red = form("red.opa", square("1 0 0", 45, 35));
  Effects effects = with({{red, PageRule()}});
  const std::string job =
      TestJob{.boxes = "/MediaBox [0 0 100 100]", .contents = {"0 0 1 rg 40 40 20 20 re f"}}.bytes();
  const Picture under = render(print(job, effects));
  EXPECT_EQ(pixel(under, 50, 62), 0xFF0000u);
  EXPECT_EQ(pixel(under, 50, 57), 0x0000FFu);
  effects.overlaysOverPage = true;
  const Picture over = render(print(job, effects));
  EXPECT_EQ(pixel(over, 50, 62), 0xFF0000u);
  EXPECT_EQ(pixel(over, 50, 57), 0xFF0000u);
}

TEST_F(Overlays, GoToThePagesThatTheirRulesName) {
  const Effects effects = with({{form("red.opa", square("1 0 0", 10, 10)), PageRule("Odd")},
                                {form("green.opa", square("0 1 0", 10, 30)), PageRule("Even")},
                                {form("grey.opa", square("0.5 0.5 0.5", 10, 50)), PageRule("8-,3,2-1,7-7")}});
  print(pagesJob(10), effects);
  Press::Job printedJob(folder / "out.pdf");
  ASSERT_EQ(printedJob.pageCount(), 10);
  for (int page = 1; page <= 10; ++page) {
    SCOPED_TRACE(page);
    const Picture picture = render(printedJob.printPage(page, {}));
    const bool isListed = page <= 3 || page >= 7;
    EXPECT_EQ(pixel(picture, 15, 85), page % 2 == 1 ? 0xFF0000u : 0xFFFFFFu);
    EXPECT_EQ(pixel(picture, 15, 65), page % 2 == 0 ? 0x00FF00u : 0xFFFFFFu);
    EXPECT_EQ(pixel(picture, 15, 45), isListed ? 0x808080u : 0xFFFFFFu);
    EXPECT_EQ(pixel(picture, 50, 59 - 2 * (page - 1)), 0x0000FFu);  // the page's own
    Press::Job preview(folder / "in.pdf");
    EXPECT_EQ(difference(render(preview.printPage(page, effects)), picture), 0);
  }
}

TEST_F(Overlays, LieUponEachOtherInTheOrderOfTheirNames) {
  const fs::path red = form("red.opa", square("1 0 0", 10, 10)), green = form("green.opa", square("0 1 0", 15, 10));
  EXPECT_EQ(pixel(render(print(pagesJob(1), with({{red, PageRule()}, {green, PageRule()}}))), 17, 85), 0x00FF00u);
  EXPECT_EQ(pixel(render(print(pagesJob(1), with({{green, PageRule()}, {red, PageRule()}}))), 17, 85), 0xFF0000u);
}

TEST_F(Overlays, LieUnderTheWatermark) {
  Effects effects = with({{form("red.opa", square("1 0 0", 45, 45)), PageRule()}});
  effects.overlaysOverPage = true;
  effects.watermark.text = "■";
  effects.watermark.colour = 0x00FF00;
  EXPECT_EQ(pixel(render(print(pagesJob(1), effects)), 50, 50), 0x00FF00u);
}

TEST_F(Overlays, FillPagesOfOtherSizesWithoutBeingStretched) {
  const fs::path red = form("red.opa", square("1 0 0", 0, 0));
  const auto on = [&](const std::string& box) {
    return render(print(TestJob{.boxes = "/MediaBox " + box, .contents = {""}}.bytes(), with({{red, PageRule()}})));
  };
  const Picture twice = on("[0 0 200 200]");
  EXPECT_EQ(pixel(twice, 19, 181), 0xFF0000u);
  EXPECT_EQ(pixel(twice, 21, 181), 0xFFFFFFu);
  const Picture wide = on("[0 0 200 100]");  // centred: from 50 to 150
  EXPECT_EQ(pixel(wide, 51, 99), 0xFF0000u);
  EXPECT_EQ(pixel(wide, 59, 91), 0xFF0000u);
  EXPECT_EQ(pixel(wide, 49, 99), 0xFFFFFFu);
  EXPECT_EQ(pixel(wide, 61, 99), 0xFFFFFFu);
}

TEST_F(Overlays, AreStoredOnce) {
  std::string noise;
  for (int word = 0; word < 5000; ++word) noise += std::to_string(word * 7919 % 10007) + " ";
  const fs::path large = form("large.opa", TestJob{.contents = {marks + "% " + noise}}.bytes());
  const std::size_t plain = print(pagesJob(1000), {}).size();
  const Effects effects = with({{large, PageRule("Odd")}, {large, PageRule("Even")}});
  EXPECT_LT(print(pagesJob(1000), effects).size(), plain + 2 * noise.size() + 80'000);
  EXPECT_EQ(complaints(read(folder / "out.pdf")), "");
}

TEST_F(Overlays, KeepTheirHiddenLayersHidden) {
  TestJob layered{.boxes = "/MediaBox [0 0 100 100]",
                  .contents = {"/OC /A BDC 1 0 0 rg 10 10 10 10 re f EMC /OC /B BDC 1 0 0 rg 10 30 10 10 re f EMC"},
                  .resources = "/Properties << /A 4 0 R /B 5 0 R >>",
                  .objects = {"<< /Type /OCG /Name (A) >>", "<< /Type /OCG /Name (B) >>"}};
  TestJob page = layered;
  page.contents = {"/OC /A BDC 0 1 0 rg 50 10 10 10 re f EMC /OC /B BDC 0 1 0 rg 50 30 10 10 re f EMC"};
  const auto withLayers = [](TestJob job, const std::string& states) {
    job.catalog = "/OCProperties << /OCGs [4 0 R 5 0 R] /D << " + states + " >> >>";
    return job.bytes();
  };
  const unsigned white = 0xFFFFFF, red = 0xFF0000, green = 0x00FF00;
  const std::string ordinary = "/OFF [4 0 R]", reversed = "/BaseState /OFF /ON [4 0 R]";
  for (const auto& [states, isAHidden] : {std::pair(ordinary, true), std::pair(reversed, false)}) {
    const Effects effects = with({{form("layered.opa", withLayers(layered, states)), PageRule()}});
    for (const auto& [job, isPagesAHidden, isPagesBHidden] :
         {std::tuple(page.bytes(), false, false), std::tuple(withLayers(page, ordinary), true, false),
          std::tuple(withLayers(page, reversed), false, true)}) {
      const std::string result = print(job, effects);
      EXPECT_EQ(complaints(result), "");
      for (const std::string& pdf : {result, Press::printPage(folder / "in.pdf", 1, effects)}) {
        for (const Renderer renderer : allRenderers) {
          SCOPED_TRACE(states + " in renderer " + std::to_string(static_cast<int>(renderer)) + " on\n" + job);
          const Picture picture = render(pdf, renderer);
          EXPECT_EQ(pixel(picture, 15, 85), isAHidden ? white : red);
          EXPECT_EQ(pixel(picture, 15, 65), isAHidden ? red : white);
          EXPECT_EQ(pixel(picture, 55, 85), isPagesAHidden ? white : green);
          EXPECT_EQ(pixel(picture, 55, 65), isPagesBHidden ? white : green);
        }
      }
    }
  }
}

TEST_F(Overlays, ChangeWithTheirFile) {
  write(folder / "in.pdf", pagesJob(1));
  Press::Job job(folder / "in.pdf");
  const fs::path file = form("form.opa", square("1 0 0", 10, 10));
  EXPECT_EQ(pixel(render(job.printPage(1, with({{file, PageRule()}}))), 15, 85), 0xFF0000u);
  form("form.opa", square("0 1 0", 10, 10));
  fs::last_write_time(file, fs::last_write_time(file) + std::chrono::seconds(1));
  EXPECT_EQ(pixel(render(job.printPage(1, with({{file, PageRule()}}))), 15, 85), 0x00FF00u);
  fs::remove(file);
  EXPECT_THROW(job.printPage(1, with({{file, PageRule()}})), Press::Error);
  EXPECT_THROW(job.printPage(1, with({{file, PageRule()}})), Press::Error);
}

TEST_F(Overlays, ThatCannotBePrintedAreNamedInASentence) {
  const auto refused = [&](const fs::path& file) { return sentence(pagesJob(1), with({{file, PageRule()}})); };
  EXPECT_THAT(refused(folder / "none.opa"), HasSubstr("none.opa\" does not exist"));
  EXPECT_THAT(refused(form("text.opa", "no form at all")), HasSubstr("text.opa\" is not a PDF file"));
  EXPECT_THAT(refused(form("cut.opa", "%PDF-1.7 and then nothing")), HasSubstr("cut.opa\" is damaged"));
  EXPECT_THAT(refused(folder.path), HasSubstr("is not an ordinary file"));
}

TEST_F(Overlays, WithAChainOfObjectsWithoutEndAreRefused) {
  TestJob job{.contents = {"/X Do"}, .resources = "/XObject 4 0 R"};
  for (int number = 4; number < 200'000; ++number)
    job.objects.push_back("<< /X " + std::to_string(number + 1) + " 0 R >>");
  job.objects.push_back("<< >>");
  EXPECT_THAT(sentence(pagesJob(1), with({{form("chain.opa", job.bytes()), PageRule()}})),
              HasSubstr("chain.opa\" cannot be printed as an overlay (its parts are nested too deeply)"));
}

TEST_F(Overlays, ThatLoopArePrinted) {
  const TestJob job{
      .contents = {"/X Do"},
      .resources = "/XObject << /X 4 0 R >> /Self 5 0 R",
      .objects = {streamObject("/Subtype /Form /BBox [0 0 100 100] /Resources << /XObject << /X 4 0 R >> >>",
                               "/X Do 1 0 0 rg 10 10 10 10 re f"),
                  "[5 0 R 6 0 R]", "<< /Back 5 0 R /Page 3 0 R /Pages 2 0 R >>"}};
  EXPECT_EQ(sentence(pagesJob(1), with({{form("loop.opa", job.bytes()), PageRule()}})), "printed");
}

// Overlay pages may be awkward pages too.
class AwkwardOverlays : public testing::TestWithParam<AwkwardPage> {};

INSTANTIATE_TEST_SUITE_P(All, AwkwardOverlays, testing::ValuesIn(awkwardPages()),
                         [](const auto& page) { return std::string(page.param.name); });

TEST_P(AwkwardOverlays, LookAsTheirPage) {
  const AwkwardPage& page = GetParam();
  const TestFolder folder;
  write(folder / "form.opa", page.job.bytes());
  const Picture alone = render(page.job.bytes(), page.renderer);
  const std::string box = "[0 0 " + std::to_string(alone.width) + " " + std::to_string(alone.height) + "]";
  const std::string empty = TestJob{.boxes = "/MediaBox " + box, .contents = {""}}.bytes();
  const std::string after = printed(empty, with({{folder / "form.opa", PageRule()}}));
  EXPECT_EQ(complaints(after), "");
  // Inside a form, renderers anti-alias fills differently; so a few pixels may differ, in any colour.
  const Picture picture = render(after, page.renderer);
  ASSERT_EQ(picture.argb.size(), alone.argb.size());
  std::size_t different = 0;
  for (std::size_t index = 0; index < alone.argb.size(); ++index) different += picture.argb[index] != alone.argb[index];
  EXPECT_LE(different, page.tolerance > 0 ? alone.argb.size() : alone.argb.size() / 100);
}
