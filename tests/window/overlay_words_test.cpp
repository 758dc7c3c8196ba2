// Beside the page: which overlays are printed on which pages, in words.
#include "press/job/print.h"
#include "press/job/sample.h"
#include "tests/window/open_window.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>

#include <fstream>

namespace Window {
namespace {

class OverlayWords : public testing::Test {
 protected:
  static void write(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
  }

  // Two overlays of the user, each the first page of the sample job.
  static void putOverlays(const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    std::string index;
    for (const std::string name : {"Letterhead", "Continuation"}) {
      const std::string file = name == "Letterhead" ? "00001.opa" : "00002.opa";
      std::string record(154, '\0');
      for (std::size_t i = 0; i < name.size(); ++i) record[2 * i] = name[i];
      for (std::size_t i = 0; i < file.size(); ++i) record[128 + 2 * i] = file[i];
      index += record;
      write(folder / file, Press::samplePdf());
    }
    write(folder / "ovlNmFl.flo", index);
  }

  std::filesystem::path overlays() const {
    return std::filesystem::path(open.home.path().toStdU16String()) / "profile" / "overlays";
  }

  // Sets what the dialog for several overlays saves for a first and a third slot; returns the words.
  QString wordsOf(const std::u16string& first, const std::u16string& third) {
    Refhost::Preferences& preferences = open.window->preferences();
    const std::u16string letterhead = (overlays() / "00001.opa").u16string() + u";" + first + u"$";
    const std::u16string continuation = (overlays() / "00002.opa").u16string() + u";" + third + u"$";
    preferences.set(u"OverlaySourceFileName", letterhead + continuation);
    preferences.set(u"OverlayImage", u"MultipleOverlayImage");
    preferences.set(u"OverlaySel", u"Multiple");
    open.settle();
    return label().text();
  }

  QLabel& label() { return open.find<QLabel>("overlays"); }

  Testing::OpenWindow open{
      [](Request& request) { putOverlays(std::filesystem::path(request.preferences.home) / "profile" / "overlays"); }};
};

TEST_F(OverlayWords, AreHiddenWithoutAnOverlay) { EXPECT_TRUE(label().isHidden()) << label().text().toStdString(); }

TEST_F(OverlayWords, FollowAChoiceInTheTab) {
  open.find<QComboBox>("cmb_EffOverlay").setFocus();
  Testing::press(open.find<QComboBox>("cmb_EffOverlay"), Qt::Key_End);
  open.settle();
  EXPECT_EQ(label().text(), "Overlays by page: 1-4: Letterhead");
  EXPECT_TRUE(label().isVisible());
}

TEST_F(OverlayWords, NameThePagesOfSeveralOverlays) {
  EXPECT_EQ(wordsOf(u"1", u"2-"), "Overlays by page: 1: Letterhead; 2-4: Continuation");
  EXPECT_EQ(wordsOf(u"All", u"2"), "Overlays by page: 1, 3-4: Letterhead; 2: Letterhead, Continuation");
}

TEST_F(OverlayWords, CountSheetsWhereSeveralPagesGoOnOne) {
  open.window->preferences().set(u"Nin1", u"2in1");
  EXPECT_EQ(wordsOf(u"1", u"2-"), "Overlays by sheet: 1: Letterhead; 2: Continuation");
}

TEST_F(OverlayWords, NameTheOverlayWhoseListSelectsNothingAndWhatWould) {
  EXPECT_EQ(wordsOf(u"All", u"--2,"),
            "Overlays by page: 1-4: Letterhead\n"
            "\u201c--2,\u201d names no page for \u201cContinuation\u201d: write for example 1,3,5-9.");
  EXPECT_EQ(wordsOf(u"All", u""),
            "Overlays by page: 1-4: Letterhead\n"
            "\u201cContinuation\u201d is on no page, because its list is empty: write for example 1,3,5-9.");
  EXPECT_EQ(wordsOf(u"All", u"8-9"),
            "Overlays by page: 1-4: Letterhead\n\u201cContinuation\u201d is on no page of this job.");
}

TEST(OverlayWordsOfAStrangeFolder, TellThatItCannotBeOneOfSeveral) {
  Testing::OpenWindow open;
  open.window->preferences().set(u"OverlaySourceFileName", u"\\\\server\\users$\\x\\00001.opa;All$");
  open.window->preferences().set(u"OverlayImage", u"MultipleOverlayImage");
  open.settle();
  EXPECT_TRUE(open.find<QLabel>("overlays").text().contains("has \u201c$\u201d or \u201c;\u201d in its name"));
}

}  // namespace
}  // namespace Window
