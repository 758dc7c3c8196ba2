// Profiles in the window: export, import, errors.
#include "tests/window/answers.h"

#include <gmock/gmock.h>

#include <QComboBox>

#include <fstream>

namespace Window {
namespace {

using Testing::Answers;
using Testing::button;
using Testing::file;
using testing::HasSubstr;
using testing::IsEmpty;
using Testing::name;
using Testing::OpenWindow;

QString said(OpenWindow& open) {
  auto* box = open.window->findChild<QMessageBox*>();
  return box == nullptr ? QString() : box->text();
}

QStringList overlays(OpenWindow& open) {
  QStringList names;
  auto& list = open.find<QComboBox>("cmb_EffOverlay");
  for (int i = 2; i < list.count(); ++i) names << list.itemText(i);
  return names;
}

class ProfilesTest : public testing::Test {
 protected:
  // A user with an overlay, which is selected, and a mirrored page.
  ProfilesTest() {
    answers.choose("PRINT_OVERLAY", {name("Letterhead")});
    Testing::press(open.find<QComboBox>("cmb_EffOverlay"), Qt::Key_End);
    open.find<QCheckBox>("ePTKWPageMirrorImage").click();
    open.settle();
  }

  const QTemporaryDir folder;
  const QString profile = folder.filePath("mine.zip");
  OpenWindow open;
  Answers answers{open};
};

TEST_F(ProfilesTest, TakeSettingsAndOverlaysToAnotherHome) {
  answers.choose("EXPORT_PROFILE", {button("Export..."), file(profile)});
  EXPECT_EQ(said(open), "The profile is packed into \u201cmine.zip\u201d.");
  EXPECT_THAT(answers.unexpected, IsEmpty());

  OpenWindow other;
  Answers there(other);
  there.choose("IMPORT_PROFILE", {file(profile)});
  EXPECT_EQ(said(other), "The profile \u201cmine.zip\u201d is imported.");
  EXPECT_EQ(overlays(other), QStringList{"Letterhead"});
  EXPECT_EQ(other.find<QComboBox>("cmb_EffOverlay").currentText(), "Letterhead");
  EXPECT_TRUE(other.find<QCheckBox>("ePTKWPageMirrorImage").isChecked());
  EXPECT_EQ(other.page(), open.page());
  EXPECT_TRUE(other.window->failures().isEmpty());
}

TEST_F(ProfilesTest, TellOfAFileThatTheyNameButDoNotHold) {
  open.window->preferences().set(u"OverlaySourceFileName", profile.toStdU16String());
  std::ofstream(profile.toStdString()) << "<b>a file</b>";
  open.settle();
  ASSERT_EQ(open.value(u"OverlaySourceFileName"), profile.toStdString());
  const QString packed = folder.filePath("other.zip");
  answers.choose("EXPORT_PROFILE", {button("Export..."), file(packed)});

  OpenWindow other;
  Answers(other).choose("IMPORT_PROFILE", {file(packed)});
  EXPECT_EQ(other.value(u"OverlaySourceFileName"), "");
  auto* box = other.window->findChild<QMessageBox*>();
  ASSERT_NE(box, nullptr);
  EXPECT_THAT(box->informativeText().toStdString(), HasSubstr(profile.toStdString() + "\" is not in the profile"));
  for (const QLabel* label : box->findChildren<QLabel*>()) EXPECT_EQ(label->textFormat(), Qt::PlainText);
}

TEST_F(ProfilesTest, LeaveOutWhatTheUserMadeWhenToldTo) {
  const auto settingsOnly = [](QWidget& dialog) {
    auto* box = dialog.findChild<QCheckBox*>();
    EXPECT_TRUE(box->isChecked());
    EXPECT_EQ(box->text(), "Include &my watermarks and overlays");
    Testing::press(*box, Qt::Key_Space);
    button("Export...")(dialog);
  };
  answers.choose("EXPORT_PROFILE", {settingsOnly, file(profile)});

  OpenWindow other;
  Answers(other).choose("IMPORT_PROFILE", {file(profile)});
  EXPECT_EQ(overlays(other), QStringList());
  EXPECT_TRUE(other.find<QCheckBox>("ePTKWPageMirrorImage").isChecked());
}

TEST_F(ProfilesTest, AreAnActionThatUndoTakesBack) {
  answers.choose("EXPORT_PROFILE", {button("Export..."), file(profile)});
  OpenWindow other;
  Answers(other).choose("IMPORT_PROFILE", {file(profile)});
  EXPECT_NE(overlays(other), QStringList());
  other.find<QPushButton>("UNDO").click();
  other.settle();
  EXPECT_FALSE(other.find<QCheckBox>("ePTKWPageMirrorImage").isChecked());
  EXPECT_EQ(overlays(other), QStringList());
}

TEST_F(ProfilesTest, AreNotWrittenWhenTheUserCancels) {
  answers.choose("EXPORT_PROFILE", {Testing::escape});
  answers.choose("EXPORT_PROFILE", {button("Export..."), Testing::escape});
  EXPECT_EQ(said(open), QString());
  EXPECT_FALSE(std::filesystem::exists(profile.toStdString()));
  answers.choose("IMPORT_PROFILE", {Testing::escape});
  EXPECT_EQ(said(open), QString());
  EXPECT_TRUE(open.window->failures().isEmpty());
}

TEST_F(ProfilesTest, ThatCannotBeWrittenSayWhy) {
  answers.choose("EXPORT_PROFILE", {button("Export..."), file(folder.filePath("nowhere/mine.zip"))});
  ASSERT_EQ(open.window->failures().size(), 1);
  EXPECT_THAT(open.window->failures().constFirst().toStdString(), HasSubstr("mine.zip"));
  EXPECT_EQ(said(open), open.window->failures().constFirst());
}

TEST_F(ProfilesTest, ThatAreNoneAreRefusedAndChangeNothing) {
  std::ofstream(profile.toStdString()) << "no archive";
  const auto before = open.window->preferences().model().values();
  answers.choose("IMPORT_PROFILE", {file(profile)});
  ASSERT_EQ(open.window->failures().size(), 1);
  EXPECT_THAT(open.window->failures().constFirst().toStdString(), HasSubstr("mine.zip"));
  EXPECT_EQ(open.window->preferences().model().values(), before);
  EXPECT_EQ(overlays(open), QStringList{"Letterhead"});
}

}  // namespace
}  // namespace Window
