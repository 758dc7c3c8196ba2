// F1 in a dialog of the window: the help on the window says something about it, in every language.
#include "press/job/sample.h"
#include "tests/window/answers.h"
#include "tests/window/stored_overlays.h"

#include <gmock/gmock.h>

#include <QComboBox>
#include <QListWidget>
#include <QProcess>
#include <QTextBlock>
#include <QTextBrowser>

#include <fstream>

namespace Window {
namespace {

using testing::IsEmpty;

// The places of a page of help that can be scrolled to.
QStringList topicsOf(const QTextDocument& page) {
  QStringList topics;
  for (QTextBlock block = page.begin(); block.isValid(); block = block.next()) {
    topics << block.charFormat().anchorNames();
    for (auto part = block.begin(); !part.atEnd(); ++part) topics << part.fragment().charFormat().anchorNames();
  }
  return topics;
}

class HelpTopicsTest : public testing::TestWithParam<std::string> {
 protected:
  HelpTopicsTest() {
    std::ofstream(path("form.pdf").toStdString(), std::ios::binary) << Press::samplePdf();
    QProcess::execute("qpdf", {"--encrypt", "sesame", "owner", "256", "--", path("form.pdf"), path("locked.pdf")});
  }

  QString path(const char* name) const { return folder.filePath(name); }

  // Presses F1 in the next dialog, reads the help, and closes both.
  std::function<void(QWidget&)> askForHelp(const QString& topic) {
    return [this, topic](QWidget& dialog) {
      QApplication::setActiveWindow(&dialog);
      Testing::press(dialog, Qt::Key_F1);
      EXPECT_EQ(dialog.objectName(), topic);
      auto* help = dialog.findChild<QWidget*>("help");
      ASSERT_NE(help, nullptr) << topic.toStdString();
      EXPECT_TRUE(topicsOf(*help->findChild<QTextBrowser*>()->document()).contains(topic)) << topic.toStdString();
      help->close();
      Testing::press(dialog, Qt::Key_Escape);
      ++read;
    };
  }

  QTemporaryDir folder;
  Testing::OpenWindow open{[](Request& request) {
    Testing::putOverlays(request.preferences.home, {{QStringLiteral("Terms"), QStringLiteral("00001.opa")}});
    request.preferences.locale = GetParam();
  }};
  Testing::Answers answers{open};
  int read = 0;
};

TEST_P(HelpTopicsTest, AreThereForTheDialogsOfTheMenus) {
  const std::pair<const char*, const char*> dialogs[] = {{"PRINT", "print"},
                                                         {"PRINT_OVERLAY", "printIntoOverlay"},
                                                         {"EXPORT_PROFILE", "profile"},
                                                         {"REPORT", "reporting"},
                                                         {"PRESET_SAVE", "presets"}};
  for (const auto& [entry, topic] : dialogs) answers.choose(entry, {askForHelp(topic)});
  answers.choose("OPEN", {Testing::file(path("locked.pdf")), askForHelp("password")});
  EXPECT_THAT(answers.unexpected, IsEmpty());
  EXPECT_EQ(read, 6);
}

TEST_P(HelpTopicsTest, AreThereForTheDialogsOfOverlays) {
  answers.during([this] { open.find<QPushButton>("newOverlayButton").click(); },
                 {Testing::file(path("form.pdf")), askForHelp("newOverlay")});
  auto& list = open.find<QComboBox>("cmb_EffOverlay");
  open.node<Refhost::SelectorNode>(u"cmb_EffOverlay").choose(2);
  const auto rename = [&] {
    QApplication::setActiveWindow(open.window.get());
    list.setFocus();
    Testing::press(list, Qt::Key_F2);
  };
  answers.during(rename, {askForHelp("renameOverlay")});
  EXPECT_THAT(answers.unexpected, IsEmpty());
  EXPECT_EQ(read, 2);
}

TEST_P(HelpTopicsTest, AreThereForBuiltInWatermarks) {
  open.find<QListWidget>("lst_selectedWatermark").setCurrentRow(1);
  open.settle();
  answers.press("btn_WMDel", [](QWidget& question) { question.findChild<QPushButton*>("accept")->click(); });
  answers.choose("WATERMARKS_BACK", {askForHelp("builtInWatermarks")});
  EXPECT_THAT(answers.unexpected, IsEmpty());
  EXPECT_EQ(read, 1);
}

INSTANTIATE_TEST_SUITE_P(Each, HelpTopicsTest, testing::Values("en-US", "de-DE", "fr-FR", "ja-JP", "zh-CN", "zh-TW"),
                         [](const auto& tested) { return tested.param.substr(0, 2) + tested.param.substr(3); });

}  // namespace
}  // namespace Window
