// Drawing the window to a picture, as by a program that loads the library and has no display.
#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <fstream>

namespace {

using testing::HasSubstr;

struct Ended {
  int status;
  std::string said;
};

class ScreenshotTest : public testing::Test {
 protected:
  Ended show(const QString& document, const QString& png, const QString& model = "standard",
             const QString& locale = "en-US") {
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(QCoreApplication::applicationFilePath(), {"--show", document, png, model, locale});
    if (!program.waitForFinished(60000)) return {-1, "does not end"};
    return {program.exitCode(), program.readAllStandardError().toStdString()};
  }

  static QProcessEnvironment withoutDisplay() {
    auto variables = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) variables.remove(name);
    return variables;
  }

  QProcessEnvironment environment = withoutDisplay();
  QTemporaryDir folder;
  QString picture = folder.filePath("window.png");
};

TEST_F(ScreenshotTest, TellsNothingOfTheToolkitsOwnTroubles) {
  environment.insert("LC_ALL", "de_XX.ISO-8859-1");
  environment.insert("XDG_RUNTIME_DIR", folder.filePath("nowhere"));
  environment.insert("QT_STYLE_OVERRIDE", "no such style");
  const Ended ended = show("", picture);
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.said, "");
}

TEST_F(ScreenshotTest, DisplayThatCannotBeOpenedIsASentence) {
  for (const char* platform : {"xcb", "no such platform"}) {
    environment.insert("DISPLAY", ":9999");
    environment.insert("QT_QPA_PLATFORM", platform);
    const Ended ended = show("", "");
    EXPECT_EQ(ended.status, 2) << platform;
    EXPECT_THAT(ended.said, testing::StartsWith("kiln: The display cannot be opened: check DISPLAY"));
    EXPECT_EQ(std::count(ended.said.begin(), ended.said.end(), '\n'), 1) << ended.said;
  }
}

TEST_F(ScreenshotTest, DisplayThatCannotBeOpenedIsToldInTheLanguageOfTheWindow) {
  EXPECT_THAT(show("", "", "standard", "de-DE").said, testing::StartsWith("kiln: Es gibt keine Anzeige"));
  environment.insert("DISPLAY", ":9999");
  environment.insert("QT_QPA_PLATFORM", "xcb");
  EXPECT_THAT(show("", "", "standard", "de-DE").said,
              testing::StartsWith("kiln: Die Anzeige kann nicht geöffnet werden: Prüfen Sie DISPLAY"));
}

TEST_F(ScreenshotTest, ShowsTheWholeWindow) {
  const Ended ended = show("", picture);
  EXPECT_EQ(ended.status, 0) << ended.said;
  const QImage image(picture);
  EXPECT_GT(image.width(), 800);
  EXPECT_GT(image.height(), 500);
}

TEST_F(ScreenshotTest, DiffersByLanguage) {
  const QString other = folder.filePath("other.png");
  show("", picture);
  const Ended ended = show("", other, "standard", "ja-JP");
  EXPECT_EQ(ended.status, 0) << ended.said;
  EXPECT_NE(QImage(picture), QImage(other));
}

TEST_F(ScreenshotTest, ThatCannotBeWrittenIsASentence) {
  const Ended ended = show("", folder.filePath("missing/window.png"));
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.said, HasSubstr("missing/window.png"));
}

TEST_F(ScreenshotTest, OfADamagedJobIsASentence) {
  const QString damaged = folder.filePath("damaged.pdf");
  std::ofstream(damaged.toStdString()) << "no PDF";
  const Ended ended = show(damaged, picture);
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.said, HasSubstr("damaged.pdf"));
  EXPECT_FALSE(QFile::exists(picture));
}

TEST_F(ScreenshotTest, OfAnUnknownModelIsASentence) {
  const Ended ended = show("", picture, "no-such-model");
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.said, HasSubstr("no-such-model"));
}

TEST_F(ScreenshotTest, IsAdvisedWhereThereIsNoDisplay) {
  const Ended ended = show("", "");
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.said, HasSubstr("--screenshot"));
}

}  // namespace
