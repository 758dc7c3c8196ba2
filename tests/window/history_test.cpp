// Undo and redo in the window, and built-in watermarks that come back.
#include "tests/window/answers.h"

#include <gmock/gmock.h>

#include <QListWidget>

namespace Window {
namespace {

class HistoryTest : public testing::Test {
 protected:
  QAction& entry(const char* name) { return *open.window->findChild<QAction*>(name); }
  QAction& undo() { return entry("UNDO_ENTRY"); }
  QAction& redo() { return entry("REDO_ENTRY"); }

  QListWidget& list() { return open.find<QListWidget>("lst_selectedWatermark"); }
  bool isListed(const QString& name) { return !list().findItems(name, Qt::MatchExactly).isEmpty(); }

  void deleteWatermark(const QString& name) {
    list().setCurrentItem(list().findItems(name, Qt::MatchExactly).front());
    QCoreApplication::processEvents();
    QTimer::singleShot(0, open.window.get(),
                       [] { QApplication::activeModalWidget()->findChild<QPushButton*>("accept")->click(); });
    open.find<QPushButton>("btn_WMDel").click();
    open.settle();
  }

  Testing::OpenWindow open;
  Testing::Answers answers{open};
};

TEST_F(HistoryTest, NamesWhatIsUndoneAndRedone) {
  EXPECT_FALSE(undo().isEnabled());
  EXPECT_FALSE(redo().isEnabled());
  open.find<QCheckBox>("ePTKWPageMirrorImage").click();
  open.settle();
  EXPECT_EQ(undo().text(), "&Undo: Mirror image");
  undo().trigger();
  open.settle();
  EXPECT_FALSE(undo().isEnabled());
  EXPECT_EQ(undo().text(), "&Undo");
  EXPECT_EQ(redo().text(), "&Redo: Mirror image");
  redo().trigger();
  open.settle();
  EXPECT_TRUE(open.find<QCheckBox>("ePTKWPageMirrorImage").isChecked());
}

TEST_F(HistoryTest, BringsBackADeletedWatermark) {
  deleteWatermark("Draft");
  EXPECT_FALSE(isListed("Draft"));
  EXPECT_EQ(undo().text(), "&Undo: Delete watermark");
  undo().trigger();
  open.settle();
  EXPECT_TRUE(isListed("Draft"));
  EXPECT_EQ(list().currentItem()->text(), "Draft");
  redo().trigger();
  open.settle();
  EXPECT_FALSE(isListed("Draft"));
  EXPECT_TRUE(open.window->failures().isEmpty());
}

TEST_F(HistoryTest, RedoHasItsUsualKey) {
  open.find<QCheckBox>("ePTKWPageMirrorImage").click();
  undo().trigger();
  open.settle();
  QApplication::setActiveWindow(open.window.get());
  Testing::press(open.find<QWidget>("page"), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  Testing::waitUntil([&] { return open.find<QCheckBox>("ePTKWPageMirrorImage").isChecked(); });
}

TEST_F(HistoryTest, DeletedBuiltInWatermarksAreOfferedAndComeBack) {
  deleteWatermark("Draft");
  deleteWatermark("Copy");
  QStringList offered;
  answers.choose("WATERMARKS_BACK", {[&](QWidget& dialog) {
                   auto* missing = dialog.findChild<QListWidget*>("built_in_watermarks");
                   for (int i = 0; i < missing->count(); ++i) offered << missing->item(i)->text();
                   missing->item(1)->setCheckState(Qt::Unchecked);
                   Testing::button("Bring back")(dialog);
                 }});
  EXPECT_EQ(offered, (QStringList{"Draft", "Copy"}));
  EXPECT_TRUE(isListed("Draft"));
  EXPECT_FALSE(isListed("Copy"));
  EXPECT_EQ(undo().text(), "&Undo: Bring back watermarks");
  undo().trigger();
  open.settle();
  EXPECT_FALSE(isListed("Draft"));
}

TEST_F(HistoryTest, SaysWhenNoBuiltInWatermarkIsMissing) {
  answers.choose("WATERMARKS_BACK", {});
  auto* told = open.window->findChild<QMessageBox*>();
  ASSERT_NE(told, nullptr);
  EXPECT_EQ(told->text(), "All built-in watermarks are there.");
}

}  // namespace
}  // namespace Window
