// What screen readers are told, as Qt tells it; reader_test.py asks the bus.
#include "tests/window/answers.h"
#include "window/page/page_number.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
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

// They do so without a click.
TEST(Readers, ToggleCheckBoxes) {
  Testing::OpenWindow open;
  auto& box = open.find<QCheckBox>("ePTKWPageMirrorImage");
  QAccessibleActionInterface& actions = *QAccessible::queryAccessibleInterface(&box)->actionInterface();
  for (const char* chosen : {"MirrorImage", "None"}) {
    actions.doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(open.value(u"MirrorImage"), chosen);
    EXPECT_EQ(box.isChecked(), std::string(chosen) == "MirrorImage");
  }
}

TEST(Readers, ChooseRadioButtons) {
  Testing::OpenWindow open;
  Testing::Answers(open).press("btn_WMAdd", [](QWidget& editor) {
    auto& outline = *editor.findChild<QRadioButton*>("rad_EffWMDrawAsOut");
    auto& transparent = *editor.findChild<QRadioButton*>("rad_EffWMTrans");
    for (QRadioButton* each : {&transparent, &outline}) {
      QAccessible::queryAccessibleInterface(each)->actionInterface()->doAction(
          QAccessibleActionInterface::toggleAction());
      EXPECT_EQ(transparent.isChecked(), each == &transparent);
      EXPECT_EQ(outline.isChecked(), each == &outline);
      EXPECT_EQ(editor.findChild<QWidget*>("scr_EffWMOpaScroll")->isEnabled(), each == &transparent);
    }
    Testing::escape(editor);
  });
}

// reader_test.py does not reach it: the menu of a button is not told.
TEST(Readers, AreToldTheLabelOfAPresetsName) {
  Testing::OpenWindow open;
  QString told;
  Testing::Answers(open).choose("PRESET_SAVE", {[&told](QWidget& dialog) {
                                  told = nameOf(*dialog.findChild<QLineEdit*>());
                                  Testing::escape(dialog);
                                }});
  EXPECT_EQ(told, "Name of the preset");
}

TEST(Readers, AreToldNamesWithoutAccessKeysAndColons) {
  Testing::OpenWindow open;
  auto& presets = open.find<QComboBox>("presets");
  EXPECT_EQ(nameOf(presets), "Preset");
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&presets)
                ->relations(QAccessible::Label)
                .value(0)
                .first->text(QAccessible::Name),
            "Preset");
  EXPECT_EQ(nameOf(open.find<QPushButton>("manage_presets")), "Manage");
}

TEST(Readers, AreToldWhatAComboBoxShowsWhenNothingIsChosen) {
  Testing::OpenWindow open;
  auto& presets = open.find<QComboBox>("presets");
  QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(&presets);
  EXPECT_EQ(reader->text(QAccessible::Value), "(none)");
  EXPECT_EQ(reader->textInterface()->text(0, reader->textInterface()->characterCount()), "(none)");
}

TEST(Readers, AreLeftAloneByListsThatOtherSettingsDoNotChange) {
  Testing::OpenWindow open;
  open.selectTab("pro_tab_device");
  auto& paper = open.find<QComboBox>("cmb_DevPaperSize");
  int changes = 0;
  QObject::connect(paper.model(), &QAbstractItemModel::rowsRemoved, &paper, [&changes] { ++changes; });
  QObject::connect(paper.model(), &QAbstractItemModel::rowsInserted, &paper, [&changes] { ++changes; });
  open.window->preferences().model().submit({{u"Watermark", u"Watermark"}, {u"WatermarkText", u"Draft"}});
  open.settle();
  EXPECT_EQ(changes, 0);
}

TEST(Readers, AreToldOfThePageOnce) {
  Testing::OpenWindow open;
  auto& number = open.find<PageNumber>("place");
  EXPECT_EQ(nameOf(number) + ' ' + number.text(), "Go to Page 1 of 4");
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&number)->text(QAccessible::Description), "");
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
  auto& room = open.find<QWidget>("notesRoom");
  EXPECT_EQ(room.focusPolicy(), Qt::NoFocus) << "nothing to read";
  open.window->preferences().model().submit(
      {{u"Watermark", u"Watermark"}, {u"WatermarkText", u"Draft"}, {u"WatermarkTextFont", u"No Such Face"}});
  Testing::waitUntil([&open] { return !open.find<QLabel>("notes").text().isEmpty(); });
  auto& notes = open.find<QLabel>("notes");
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&notes)->role(), QAccessible::Notification);
  EXPECT_TRUE(nameOf(notes).contains("No Such Face")) << nameOf(notes).toStdString();
  EXPECT_EQ(room.focusPolicy(), Qt::TabFocus);
  EXPECT_EQ(room.accessibleDescription(), notes.text());
}

}  // namespace
}  // namespace Window
