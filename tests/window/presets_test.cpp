// The presets above the tabs.
#include "tests/window/answers.h"

#include <gmock/gmock.h>

#include <QComboBox>
#include <QLabel>
#include <QListWidget>

namespace Window {
namespace {

class PresetsTest : public testing::Test {
 protected:
  QComboBox& list() { return open.find<QComboBox>("presets"); }
  void mirror() {
    open.find<QCheckBox>("ePTKWPageMirrorImage").click();
    open.settle();
  }
  bool isMirrored() { return open.find<QCheckBox>("ePTKWPageMirrorImage").isChecked(); }

  static std::function<void(QWidget&)> named(const QString& text) {
    return [text](QWidget& dialog) {
      dialog.findChild<QLineEdit*>()->setText(text);
      Testing::press(*dialog.findChild<QLineEdit*>(), Qt::Key_Return);
    };
  }
  void save(const QString& text) { answers.choose("PRESET_SAVE", {named(text)}); }

  void choose(const QString& text) {
    Q_EMIT list().activated(list().findText(text, Qt::MatchStartsWith));
    open.settle();
  }

  Testing::OpenWindow open;
  Testing::Answers answers{open};
};

TEST_F(PresetsTest, AreNoneAtFirst) {
  EXPECT_EQ(list().currentIndex(), -1);
  EXPECT_EQ(list().placeholderText(), "(none)");
  EXPECT_TRUE(open.window->findChild<QAction*>("PRESET_SAVE")->isEnabled());
  EXPECT_FALSE(open.window->findChild<QAction*>("PRESET_RENAME")->isEnabled());
  EXPECT_FALSE(open.window->findChild<QAction*>("PRESET_DELETE")->isEnabled());
}

TEST_F(PresetsTest, AreChosenAndTellWhatHasChanged) {
  mirror();
  save("Mirrored");
  EXPECT_EQ(list().currentText(), "Mirrored");
  mirror();
  EXPECT_EQ(list().currentText(), "Mirrored (changed)");
  choose("Mirrored");
  EXPECT_TRUE(isMirrored());
  EXPECT_EQ(list().currentText(), "Mirrored");
  EXPECT_EQ(open.window->findChild<QAction*>("UNDO_ENTRY")->text(), "&Undo: Choose preset");
}

TEST_F(PresetsTest, AreKeptForTheNextWindow) {
  mirror();
  save("Mirrored");
  open.find<QPushButton>("OK").click();
  Testing::OpenWindow next([&](Request& request) { request.preferences.home = open.home.path().toStdU16String(); });
  EXPECT_EQ(next.find<QComboBox>("presets").currentText(), "Mirrored");
}

TEST_F(PresetsTest, AreReplacedOnlyWhenAgreed) {
  save("Mine");
  mirror();
  answers.choose("PRESET_SAVE", {named("Mine"), [](QWidget& dialog) {
                                   auto& box = dynamic_cast<QMessageBox&>(dialog);
                                   EXPECT_TRUE(box.text().contains("“Mine”"));
                                   Testing::press(*box.defaultButton(), Qt::Key_Return);
                                 }});
  EXPECT_EQ(list().currentText(), "Mine (changed)");
  answers.choose("PRESET_SAVE", {named("Mine"), Testing::button("Replace")});
  EXPECT_EQ(list().currentText(), "Mine");
  EXPECT_EQ(list().count(), 1);
}

TEST_F(PresetsTest, AreRenamed) {
  save("Mine");
  save("Other");
  answers.choose("PRESET_RENAME", {[](QWidget& dialog) {
                   EXPECT_EQ(dialog.findChild<QLineEdit*>()->text(), "Other");
                   named("Yours")(dialog);
                 }});
  EXPECT_EQ(list().currentText(), "Yours");
}

TEST_F(PresetsTest, AreNotRenamedToATakenName) {
  save("Mine");
  save("Other");
  answers.choose("PRESET_RENAME", {[](QWidget& dialog) {
                   const auto* ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
                   EXPECT_TRUE(ok->isEnabled());
                   named("Mine")(dialog);
                   EXPECT_FALSE(ok->isEnabled());
                   EXPECT_TRUE(dialog.findChild<QLabel*>("said")->text().contains("“Mine”"));
                   Testing::escape(dialog);
                 }});
  EXPECT_EQ(list().currentText(), "Other");
  EXPECT_EQ(list().count(), 2);
}

TEST_F(PresetsTest, AreDeletedOnlyWhenAgreed) {
  save("Mine");
  answers.choose("PRESET_DELETE", {[](QWidget& dialog) {
                   auto& box = dynamic_cast<QMessageBox&>(dialog);
                   EXPECT_TRUE(box.text().contains("“Mine”"));
                   EXPECT_EQ(box.defaultButton()->text().remove('&'), "Cancel");
                   Testing::escape(dialog);
                 }});
  EXPECT_EQ(list().count(), 1);
  answers.choose("PRESET_DELETE", {Testing::button("Delete")});
  EXPECT_EQ(list().count(), 0);
  EXPECT_EQ(list().currentIndex(), -1);
}

TEST_F(PresetsTest, HaveNoEmptyName) {
  answers.choose("PRESET_SAVE", {[](QWidget& dialog) {
                   auto* ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
                   EXPECT_FALSE(ok->isEnabled());
                   dialog.findChild<QLineEdit*>()->setText("  ");
                   EXPECT_FALSE(ok->isEnabled());
                   EXPECT_EQ(dialog.findChild<QLabel*>("said")->text(), "Enter a name.");
                   dialog.findChild<QLineEdit*>()->setText("a");
                   EXPECT_TRUE(ok->isEnabled());
                   EXPECT_EQ(dialog.findChild<QLineEdit*>()->maxLength(), int{Refhost::Presets::longestName});
                   Testing::escape(dialog);
                 }});
  EXPECT_EQ(list().count(), 0);
}

TEST_F(PresetsTest, SayWhenTheirWatermarkIsGone) {
  auto& marks = open.find<QListWidget>("lst_selectedWatermark");
  marks.setCurrentItem(marks.findItems("Draft", Qt::MatchExactly).front());
  open.settle();
  save("Drafts");
  QTimer::singleShot(0, open.window.get(),
                     [] { QApplication::activeModalWidget()->findChild<QPushButton*>("accept")->click(); });
  open.find<QPushButton>("btn_WMDel").click();
  open.settle();
  choose("Drafts");
  ASSERT_EQ(open.window->failures().size(), 1);
  EXPECT_TRUE(open.window->failures().front().startsWith("The watermark of the preset “Drafts” is gone"));
}

}  // namespace
}  // namespace Window
