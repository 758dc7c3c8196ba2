// What screen readers are told, as Qt tells it; reader_test.py asks the bus.
#include "tests/window/open_window.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTreeWidget>

namespace Window {
namespace {

QString nameOf(QWidget& widget) { return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name); }

TEST(Readers, AreToldTheLabelAndTheValueOfAComboBox) {
  Testing::OpenWindow open;
  open.selectTab("pro_tab_device");
  auto& paper = open.find<QComboBox>("cmb_DevPaperSize");
  QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(&paper);
  EXPECT_EQ(nameOf(paper), "Paper size");
  EXPECT_EQ(reader->role(), QAccessible::ComboBox);
  EXPECT_EQ(reader->text(QAccessible::Value), "A4");
  EXPECT_EQ(reader->textInterface()->text(0, reader->textInterface()->characterCount()), "A4");
  EXPECT_TRUE(reader->child(0)->child(0)->state().selected);
}

// Each change of a widget is told to screen readers.
TEST(HiddenInspector, IsLeftAloneUntilItIsShown) {
  Testing::OpenWindow open;
  open.find<QCheckBox>("ePTKWPageMirrorImage").click();
  open.settle();
  EXPECT_EQ(open.find<QPlainTextEdit>("events").toPlainText(), "");
  EXPECT_EQ(open.find<QTreeWidget>("properties").topLevelItemCount(), 0);
  open.find<QWidget>("inspector").show();
  EXPECT_TRUE(open.find<QPlainTextEdit>("events").toPlainText().contains("MirrorImage"));
  EXPECT_FALSE(open.find<QTreeWidget>("properties").findItems("MirrorImage", Qt::MatchExactly).isEmpty());
}

// reader_test.py hears what is announced.
TEST(Readers, TakeNotesForNotifications) {
  Testing::OpenWindow open;
  open.window->preferences().model().submit(
      {{u"Watermark", u"Watermark"}, {u"WatermarkText", u"Draft"}, {u"WatermarkTextFont", u"No Such Face"}});
  Testing::waitUntil([&open] { return !open.find<QLabel>("notes").text().isEmpty(); });
  auto& notes = open.find<QLabel>("notes");
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&notes)->role(), QAccessible::Notification);
  EXPECT_TRUE(nameOf(notes).contains("No Such Face")) << nameOf(notes).toStdString();
}

}  // namespace
}  // namespace Window
