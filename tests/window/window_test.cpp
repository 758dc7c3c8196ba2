// The window as a whole: buttons, menus, closing.
#include "tests/window/open_window.h"

#include <gmock/gmock.h>

#include <QAbstractItemView>
#include <QClipboard>
#include <QComboBox>
#include <QDockWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTextBrowser>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>

#include <algorithm>
#include <fstream>
#include <vector>

namespace Window {
namespace {

using testing::HasSubstr;

class WindowTest : public testing::Test {
 protected:
  void mirror() {
    open.find<QCheckBox>("ePTKWPageMirrorImage").click();
    open.settle();
  }
  bool isMirrored() { return open.find<QCheckBox>("ePTKWPageMirrorImage").isChecked(); }

  // Reopens the window with the same home.
  std::string mirrorAfterwards() {
    Testing::OpenWindow next([&](Request& request) { request.preferences.home = open.home.path().toStdString(); });
    return next.value(u"MirrorImage");
  }

  // Presses that button of the question on closing.
  void answerWhenAsked(const QString& text) {
    QTimer::singleShot(0, open.window.get(), [text] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      for (QAbstractButton* button : box->buttons())
        if (QString(button->text()).remove('&') == text) return button->click();
      ADD_FAILURE() << "no button " << text.toStdString();
    });
  }

  Testing::OpenWindow open;
};

TEST_F(WindowTest, UndoTakesBackTheLastClick) {
  auto& undo = open.find<QPushButton>("UNDO");
  EXPECT_FALSE(undo.isEnabled());
  mirror();
  EXPECT_TRUE(undo.isEnabled());
  undo.click();
  open.settle();
  EXPECT_FALSE(isMirrored());
  EXPECT_FALSE(undo.isEnabled());
}

TEST_F(WindowTest, UndoHasItsUsualKey) {
  mirror();
  QApplication::setActiveWindow(open.window.get());
  Testing::press(open.find<QWidget>("page"), Qt::Key_Z, Qt::ControlModifier);
  Testing::waitUntil([&] { return !isMirrored(); });
}

TEST_F(WindowTest, RestoreDefaultsTakesEverythingBackAndCanBeUndone) {
  mirror();
  open.find<QPushButton>("RESTORE").click();
  open.settle();
  EXPECT_FALSE(isMirrored());
  open.find<QPushButton>("UNDO").click();
  EXPECT_TRUE(isMirrored());
}

TEST_F(WindowTest, OkKeepsTheSettingsAndCloses) {
  mirror();
  open.find<QPushButton>("OK").click();
  EXPECT_FALSE(open.window->isVisible());
  EXPECT_EQ(mirrorAfterwards(), "MirrorImage");
}

TEST_F(WindowTest, CancelDiscardsTheSettingsAndCloses) {
  mirror();
  open.find<QPushButton>("CANCEL").click();
  EXPECT_FALSE(open.window->isVisible());
  EXPECT_EQ(mirrorAfterwards(), "None");
}

TEST_F(WindowTest, ClosesWithoutAQuestionWhenNothingChanged) {
  EXPECT_TRUE(open.window->close());
  EXPECT_FALSE(open.window->isVisible());
}

TEST_F(WindowTest, AsksBeforeChangesAreLost) {
  mirror();
  answerWhenAsked("Cancel");
  open.window->close();
  EXPECT_TRUE(open.window->isVisible());
  answerWhenAsked("Keep");
  open.window->close();
  EXPECT_FALSE(open.window->isVisible());
  EXPECT_EQ(mirrorAfterwards(), "MirrorImage");
}

TEST_F(WindowTest, DiscardsChangesWhenToldTo) {
  mirror();
  answerWhenAsked("Discard");
  open.window->close();
  EXPECT_FALSE(open.window->isVisible());
  EXPECT_EQ(mirrorAfterwards(), "None");
}

TEST_F(WindowTest, HelpShowsThePageOfTheTab) {
  open.find<QPushButton>("HELP_BUTTON").click();
  auto& help = open.find<QWidget>("help");
  EXPECT_TRUE(help.isVisible());
  EXPECT_THAT(help.findChild<QTextBrowser*>()->toPlainText().toStdString(), HasSubstr("Watermark"));
}

TEST_F(WindowTest, HelpOnATabWithoutItsOwnIsThatOnTheWindow) {
  open.selectTab("pro_tab_device");
  open.find<QPushButton>("HELP_BUTTON").click();
  EXPECT_THAT(open.find<QWidget>("help").findChild<QTextBrowser*>()->toPlainText().toStdString(),
              HasSubstr("inspector"));
}

TEST_F(WindowTest, TheReturnKeyIsOkAndTheEscapeKeyIsCancel) {
  QApplication::setActiveWindow(open.window.get());
  mirror();
  auto& box = open.find<QCheckBox>("ePTKWPageMirrorImage");
  box.setFocus();
  Testing::press(box, Qt::Key_Return);
  Testing::waitUntil([&] { return !open.window->isVisible(); });
  EXPECT_EQ(mirrorAfterwards(), "MirrorImage");

  Testing::OpenWindow other;
  QApplication::setActiveWindow(other.window.get());
  auto& otherBox = other.find<QCheckBox>("ePTKWPageMirrorImage");
  otherBox.setFocus();
  Testing::press(otherBox, Qt::Key_Escape);
  Testing::waitUntil([&] { return !other.window->isVisible(); });
}

TEST_F(WindowTest, TheReturnKeyInAnOpenListOnlyTakesAnEntry) {
  QApplication::setActiveWindow(open.window.get());
  open.selectTab("pro_tab_device");
  QComboBox* list = nullptr;
  for (QComboBox* each : open.window->findChildren<QComboBox*>())
    if (each->isVisible() && each->count() > 1) list = each;
  ASSERT_NE(list, nullptr);
  list->setFocus();
  const int before = list->currentIndex();
  const int wanted = before == 0 ? 1 : 0;
  list->showPopup();
  Testing::press(*list->view(), wanted > before ? Qt::Key_Down : Qt::Key_Up);
  Testing::press(*list->view(), Qt::Key_Return);
  Testing::waitUntil([&] { return list->currentIndex() == wanted; });
  QCoreApplication::processEvents();
  EXPECT_TRUE(open.window->isVisible());
}

TEST_F(WindowTest, TheTabKeyGoesFromTheTabsToThePageToTheButtons) {
  auto* tabs = open.window->findChild<QTabWidget*>();
  std::vector<QWidget*> stops;
  for (QWidget* each = tabs->nextInFocusChain(); each != tabs; each = each->nextInFocusChain())
    if ((each->focusPolicy() & Qt::TabFocus) != 0 && each->isVisible()) stops.push_back(each);
  const auto place = [&](const QWidget& widget) { return std::ranges::find(stops, &widget) - stops.begin(); };
  const auto inTabs = [&](const QWidget* each) { return tabs->isAncestorOf(each) && each != tabs->tabBar(); };
  const auto lastInTabs = std::find_if(stops.rbegin(), stops.rend(), inTabs);
  ASSERT_NE(lastInTabs, stops.rend());
  const auto page = place(open.find<QWidget>("page"));
  EXPECT_LT(place(**lastInTabs), page);
  EXPECT_LT(page, place(open.find<QPushButton>("PRINT_BUTTON")));
  EXPECT_LT(place(open.find<QPushButton>("PRINT_BUTTON")), place(open.find<QPushButton>("CANCEL")));
}

TEST_F(WindowTest, TheInspectorShowsThePropertiesAsTheyAre) {
  open.find<QDockWidget>("inspector").show();
  auto& list = open.find<QTreeWidget>("properties");
  const auto row = [&list](const QString& name) { return list.findItems(name, Qt::MatchExactly).value(0); };
  mirror();
  EXPECT_EQ(row("MirrorImage")->text(1), "MirrorImage");
  EXPECT_TRUE(row("MirrorImage")->font(1).bold());
  open.window->preferences().setAvailable(u"NegativeImage", u"Negative", false);
  open.settle();
  EXPECT_EQ(row("NegativeImage")->text(2), "Negative");
}

TEST_F(WindowTest, TheInspectorHasRoomForNamesAndValues) {
  open.find<QDockWidget>("inspector").toggleViewAction()->trigger();
  open.settle();
  const auto& list = open.find<QTreeWidget>("properties");
  EXPECT_GE(list.viewport()->width(), list.columnWidth(0) + 14 * list.fontMetrics().averageCharWidth());
  EXPECT_GE(list.columnWidth(0), list.fontMetrics().horizontalAdvance("WatermarkTextTransparency"));
}

TEST_F(WindowTest, TheInspectorShowsTextsOfOthersOnALineAndInTheirOrder) {
  open.find<QDockWidget>("inspector").show();
  open.window->preferences().set(u"WatermarkText", u"a\nb\u202Ec");
  open.settle();
  const auto rows = open.find<QTreeWidget>("properties").findItems("WatermarkText", Qt::MatchExactly);
  ASSERT_EQ(rows.size(), 1);
  EXPECT_EQ(rows.front()->text(1), QString::fromUtf8("a b\uFFFDc"));
}

TEST_F(WindowTest, TheInspectorShowsEveryEventFromTheOpeningOn) {
  open.find<QDockWidget>("inspector").show();
  auto& events = open.find<QPlainTextEdit>("events");
  const std::string opening = events.toPlainText().toStdString();
  EXPECT_THAT(opening, HasSubstr(R"({"op":"connect","signal":"gui-ready","of":"GUI"})"));
  mirror();
  EXPECT_THAT(events.toPlainText().toStdString().substr(opening.size()), HasSubstr(R"(["MirrorImage","MirrorImage"])"));
}

TEST_F(WindowTest, AFailureIsASentenceInABox) {
  open.window->preferences().dispatch([] { throw std::runtime_error("The tray is empty."); });
  QCoreApplication::processEvents();
  auto* box = open.window->findChild<QMessageBox*>();
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(box->text(), "The tray is empty.");
}

TEST_F(WindowTest, AFailureShowsTheNamesInItAsTheyAre) {
  open.window->preferences().dispatch([] { throw std::runtime_error("<b>name</b>\u202E is gone."); });
  QCoreApplication::processEvents();
  auto* box = open.window->findChild<QMessageBox*>();
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(box->text(), QString::fromUtf8("<b>name</b>\uFFFD is gone."));
  for (const QLabel* label : box->findChildren<QLabel*>()) EXPECT_EQ(label->textFormat(), Qt::PlainText);
}

TEST(WindowOnDamagedSettings, SaysSoAndOpensWithTheDefaults) {
  Testing::OpenWindow open([](Request& request) {
    const auto folder = request.preferences.home / "profile";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "settings-standard.json") << "damaged";
  });
  ASSERT_EQ(open.window->failures().size(), 1);
  EXPECT_THAT(open.window->failures().constFirst().toStdString(), HasSubstr("settings-standard.json.damaged"));
  EXPECT_EQ(open.value(u"MirrorImage"), "None");
}

TEST(WindowFromRightToLeft, HasItsArrowsTurned) {
  Testing::OpenWindow open([](Request& request) { request.preferences.locale = "ar"; });
  EXPECT_EQ(open.find<QToolButton>("nextPage").arrowType(), Qt::LeftArrow);
  EXPECT_LT(open.find<QToolButton>("nextPage").x(), open.find<QToolButton>("previousPage").x());
  EXPECT_GT(open.find<QTabWidget>("tabs").x(), open.find<QWidget>("page").mapTo(open.window.get(), QPoint()).x());
}

}  // namespace
}  // namespace Window
