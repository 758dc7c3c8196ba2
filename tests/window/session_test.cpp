#include "host/kept_settings.h"
#include "tests/window/open_window.h"
#include "window/preferences/session.h"

#include <gmock/gmock.h>

#include <fstream>

namespace Window {
namespace {

class SilentFace final : public Refhost::Face {
 public:
  void runModally(Refhost::Dialog&) override {}
  void dialogOpened(Refhost::Dialog&) override {}
  void dialogClosed(Refhost::Dialog&) override {}
  void widgetChanged(Refhost::WidgetNode&) override {}
  void showHelp(const std::u16string&, const std::u16string&) override {}
  std::optional<std::u16string> askJobStep() override { return {}; }
  void showFailure(const std::string& sentence) override { ADD_FAILURE() << sentence; }
};

class SessionTest : public testing::Test {
 protected:
  SessionTest() {
    options.home = home.path().toStdU16String();
    session = std::make_unique<Session>(options, face);
    session->open();
  }

  void openAnother() {
    session = std::make_unique<Session>(options, face);
    session->open();
  }
  void mirror() { session->preferences().set(u"MirrorImage", u"MirrorImage"); }
  std::u16string mirrored() { return session->preferences().model().value(u"MirrorImage").value(); }

  QTemporaryDir home;
  SilentFace face;
  Refhost::Options options = Testing::builtOptions();
  std::unique_ptr<Session> session;
};

// Built-in watermarks have their texts in the language of the window.
TEST_F(SessionTest, PrintsTheSameInEveryLanguage) {
  session->preferences().set(u"WatermarkSel", u"1");
  session->preferences().set(u"Watermark", u"Watermark");
  const Press::Effects english = session->effects();
  ASSERT_FALSE(english.watermark.text.empty());
  for (const char* locale : {"de-DE", "fr-FR", "ja-JP", "zh-CN", "zh-TW", "en-US"}) {
    session->reopen(session->model(), locale);
    EXPECT_EQ(session->effects(), english) << locale;
  }
}

TEST_F(SessionTest, KeepsWhatWasAcceptedForTheNextOpening) {
  mirror();
  EXPECT_TRUE(session->keep());
  openAnother();
  EXPECT_EQ(mirrored(), u"MirrorImage");
  EXPECT_FALSE(session->isChanged());
}

TEST_F(SessionTest, ForgetsWhatWasCancelled) {
  mirror();
  session->preferences().cancel();
  openAnother();
  EXPECT_EQ(mirrored(), u"None");
}

TEST_F(SessionTest, IsChangedUntilAClickIsUndone) {
  EXPECT_FALSE(session->isChanged());
  mirror();
  EXPECT_TRUE(session->isChanged());
  session->preferences().undo();
  EXPECT_FALSE(session->isChanged());
}

TEST_F(SessionTest, CarriesChangesToAnotherModelAndLanguage) {
  mirror();
  session->reopen("tev", "en-US");
  EXPECT_EQ(mirrored(), u"MirrorImage");
  session->reopen("tev", "ja-JP");
  EXPECT_EQ(mirrored(), u"MirrorImage");
  EXPECT_TRUE(session->isChanged());
}

TEST_F(SessionTest, StaysUnchangedInAnotherLanguage) {
  session->reopen("standard", "de-DE");
  EXPECT_FALSE(session->isChanged());
}

TEST_F(SessionTest, OpensWhatWasKeptForTheOtherModel) {
  session->reopen("tev", "en-US");
  mirror();
  EXPECT_TRUE(session->keep());
  openAnother();
  EXPECT_EQ(mirrored(), u"None");
  session->reopen("tev", "en-US");
  EXPECT_EQ(mirrored(), u"MirrorImage");
}

TEST_F(SessionTest, StaysAsItWasWhenTheOtherModelCannotBeOpened) {
  mirror();
  EXPECT_THROW(session->reopen("no-such-model", "en-US"), std::runtime_error);
  EXPECT_EQ(session->model(), "standard");
  EXPECT_EQ(mirrored(), u"MirrorImage");
  EXPECT_NE(session->preferences().gui(), nullptr);
}

TEST_F(SessionTest, TellsOfSettingsThatWereSetAside) {
  std::ofstream(Refhost::settingsFile(options.home, u"standard")) << "damaged";
  session = std::make_unique<Session>(options, face);
  std::filesystem::path told;
  session->onSetAside = [&told](const std::filesystem::path& file) { told = file; };
  session->open();
  EXPECT_EQ(told.filename(), "settings-standard.json.damaged-1");
}

TEST_F(SessionTest, KeepsWhatAnInterruptedImportBringsWhereItIsAccepted) {
  session.reset();
  constexpr const char* left = ".kiln-2147483646-1.tmp";
  std::ofstream(options.home / "profile" / left)
      << Refhost::settingsBytes({{u"MirrorImage", u"MirrorImage"}, {u"PaperSize", u"A3"}});
  std::ofstream(options.home / "import.journal")
      << "kiln-file-set 1\nprofile/" << left << '\0' << "profile/settings-standard.json" << '\0';
  openAnother();
  EXPECT_TRUE(session->keep());
  openAnother();
  EXPECT_EQ(mirrored(), u"MirrorImage");
}

TEST(SessionWithoutHome, KeepsNothingBeyondItself) {
  SilentFace face;
  std::filesystem::path home;
  {
    Session session(Testing::builtOptions(), face);
    session.open();
    home = session.preferences().home();
    EXPECT_TRUE(std::filesystem::exists(home));
  }
  EXPECT_FALSE(std::filesystem::exists(home));
}

}  // namespace
}  // namespace Window
