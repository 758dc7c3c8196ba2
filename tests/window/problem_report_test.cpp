// "Report a problem...": what the report has, and what it leaves out.
#include "formats/names.h"
#include "tests/window/answers.h"
#include "window/dialogs/dialog_window.h"

#include <gmock/gmock.h>

#include <QPlainTextEdit>
#include <QProcess>

#include <fstream>
#include <sstream>

namespace Window {
namespace {

using Testing::button;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class ProblemReportTest : public testing::Test {
 protected:
  // Makes a watermark with these texts, and leaves it chosen.
  void makeWatermark(const QString& text, const QString& style) {
    QTimer::singleShot(0, open.window.get(), [=] {
      QWidget* editor = QApplication::activeModalWidget();
      editor->findChild<QLineEdit*>("txt_EffWMTxtBox")->insert(text);
      const std::pair<const char*, QString> others[] = {{"txt_EffWMStyleName", style}, {"txt_EffWMFonSiz", "17"}};
      for (const auto& [id, other] : others) {
        auto* line = editor->findChild<QLineEdit*>(id);
        line->selectAll();
        line->insert(other);
      }
      editor->findChild<QPushButton*>("accept")->click();
    });
    open.find<QPushButton>("btn_WMAdd").click();
    open.settle();
  }

  // Saves a report; `look` gets the dialog first.
  std::string save(const std::function<void(QWidget&)>& look = [](QWidget&) {}) {
    std::filesystem::remove(report.toStdU16String());
    const auto answer = [&](QWidget& dialog) {
      look(dialog);
      button("Save...")(dialog);
    };
    answers.choose("REPORT", {answer, Testing::file(report)});
    EXPECT_THAT(answers.unexpected, IsEmpty());
    std::stringstream content;
    content << std::ifstream(report.toStdString()).rdbuf();
    return content.str();
  }

  static void includeTexts(QWidget& dialog) { Testing::press(*dialog.findChild<QCheckBox*>(), Qt::Key_Space); }

  const QTemporaryDir folder;
  const QString report = folder.filePath("report.drive");
  Testing::OpenWindow open{[](Request& request) {
    request.version = "1.2.3";
    request.preferences.settings.emplace_back(Formats::Setting::styleNameSupport, u"True");
  }};
  Testing::Answers answers{open};
};

TEST_F(ProblemReportTest, HasTheSessionTheVersionsAndTheSettings) {
  open.find<QCheckBox>("ePTKWPageMirrorImage").click();
  open.settle();
  const std::string content = save();
  EXPECT_THAT(content, HasSubstr("#: kiln 1.2.3\n#: contract "));
  EXPECT_THAT(content, HasSubstr("#: qt 6"));
  EXPECT_THAT(content, HasSubstr("\n#: model standard\n"));
  EXPECT_THAT(content, HasSubstr("\nclick ePTKWPageMirrorImage\n#= {\"ok\":true}\n"));
  EXPECT_THAT(content, HasSubstr("\n#   MirrorImage=MirrorImage\n"));
  auto* box = open.window->findChild<QMessageBox*>();
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(box->text(), "The report is saved as \u201creport.drive\u201d.");
}

TEST_F(ProblemReportTest, HasNoTextsOfTheUserUnlessTheyAreIncluded) {
  const std::vector<std::string> texts = {"Anna", "Secret project", "4711", "Letter of Carl",
                                          folder.path().toStdString()};
  const QString ticket = folder.filePath("Doras ticket.xml");
  std::ofstream(ticket.toStdString()) << "no ticket";
  makeWatermark("Anna", "Secret project");
  makeWatermark("4711", "Anna");
  answers.choose("PRINT_OVERLAY", {Testing::name("Letter of Carl")});
  Testing::press(open.find<QWidget>("cmb_EffOverlay"), Qt::Key_End);
  open.settle();
  answers.choose("OPEN_TICKET", {Testing::file(ticket)});
  ASSERT_EQ(open.window->failures().size(), 1);

  const std::string without = save([](QWidget& dialog) { EXPECT_FALSE(dialog.findChild<QCheckBox*>()->isChecked()); });
  const std::string with = save(includeTexts);
  for (const std::string& text : texts) {
    EXPECT_THAT(without, Not(HasSubstr(text)));
    EXPECT_THAT(with, HasSubstr(text));
  }
  EXPECT_THAT(without, Not(HasSubstr("Doras")));
  EXPECT_THAT(without, Not(HasSubstr(open.home.path().toStdString())));

  EXPECT_THAT(without,
              HasSubstr("\ntype txt_EffWMTxtBox \"text 1\"\n#= {\"ok\":true,\"accepted\":true,\"text\":\"text 1\"}\n"));
  EXPECT_THAT(without, HasSubstr("\ntype txt_EffWMStyleName \"text 2\"\n"));
  EXPECT_THAT(without, HasSubstr("\ntype txt_EffWMStyleName \"text 1\"\n"));
  EXPECT_THAT(without, HasSubstr("\ntype txt_EffWMFonSiz 17\n"));
  EXPECT_THAT(without, ContainsRegex("\n#   WatermarkText=text [0-9]+\n"));
  EXPECT_THAT(without, HasSubstr("\n#   WatermarkTextFontSize=17\n"));
  EXPECT_THAT(with, HasSubstr("\n#   WatermarkText=4711\n"));
}

TEST_F(ProblemReportTest, Replays) {
  makeWatermark("Anna", "Secret project");
  open.find<QCheckBox>("ePTKWPageMirrorImage").click();
  open.settle();
  for (const auto& look :
       {std::function<void(QWidget&)>([](QWidget&) {}), std::function<void(QWidget&)>(includeTexts)}) {
    save(look);
    QProcess kiln;
    kiln.start(KILN, {"drive", "--expect", report});
    kiln.waitForFinished(-1);
    EXPECT_EQ(kiln.exitCode(), 0) << kiln.readAllStandardOutput().toStdString();
  }
}

TEST_F(ProblemReportTest, IsShownBeforeItIsSaved) {
  makeWatermark("Anna", "Secret project");
  QString before;
  QString after;
  const std::string saved = save([&](QWidget& dialog) {
    auto* shown = dialog.findChild<QPlainTextEdit*>("report");
    before = shown->toPlainText();
    includeTexts(dialog);
    after = shown->toPlainText();
  });
  EXPECT_EQ(after.toStdString(), saved);
  EXPECT_THAT(before.toStdString(), Not(HasSubstr("Anna")));
  EXPECT_NE(before, after);
}

TEST_F(ProblemReportTest, IsNotSavedWhenTheUserCancels) {
  answers.choose("REPORT", {Testing::escape});
  answers.choose("REPORT", {button("Save..."), Testing::escape});
  EXPECT_FALSE(std::filesystem::exists(report.toStdString()));
  EXPECT_EQ(open.window->findChild<QMessageBox*>(), nullptr);
}

TEST_F(ProblemReportTest, ThatCannotBeSavedSaysWhy) {
  answers.choose("REPORT", {button("Save..."), Testing::file(folder.filePath("nowhere/report.drive"))});
  ASSERT_EQ(open.window->failures().size(), 1);
  EXPECT_THAT(open.window->failures().constFirst().toStdString(), HasSubstr("report.drive"));
}

TEST_F(ProblemReportTest, IsReadFromTheLeftInEveryLanguage) {
  open.choose("languages", "ar");
  Qt::LayoutDirection shown = Qt::RightToLeft;
  answers.choose("REPORT", {[&shown](QWidget& dialog) {
                   shown = dialog.findChild<QWidget*>("report")->layoutDirection();
                   Testing::escape(dialog);
                 }});
  EXPECT_EQ(shown, Qt::LeftToRight);
  open.choose("languages", "en-US");
}

}  // namespace
}  // namespace Window
