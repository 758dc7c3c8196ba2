// The dialogs of a plug-in, over the window.
#include "tests/window/open_window.h"
#include "window/dialogs/dialog_window.h"
#include "window/widgets/picture_box.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTextBrowser>
#include <QTimer>

namespace Window {
namespace {

constexpr const char16_t* question = u"chrome://base/content/dlg_confirmdelete.xul";

class DialogsTest : public testing::Test {
 protected:
  // Opens the dialog modally; `operate` runs once it is shown.
  void run(const std::function<void(DialogWindow&)>& operate) {
    dialog = open.window->preferences().gui()->openDialog(question);
    QTimer::singleShot(0, open.window.get(), [&] { operate(*shown()); });
    dialog->runModally();
  }

  DialogWindow* shown() { return open.window->findChild<DialogWindow*>(); }

  static QPushButton& button(DialogWindow& window, const char* id) { return *window.findChild<QPushButton*>(id); }

  Testing::OpenWindow open;
  Kiln::SmartPtr<Kiln::XUL::SubDialog> dialog;
};

TEST_F(DialogsTest, RunUntilTheUserAnswers) {
  bool wasShown = false;
  run([&](DialogWindow& window) {
    wasShown = window.isVisible() && window.isModal();
    EXPECT_EQ(open.window->preferences().gui()->openDialogs().size(), 1u);
    button(window, "accept").click();
  });
  EXPECT_TRUE(wasShown);
  EXPECT_TRUE(open.window->preferences().gui()->openDialogs().empty());
}

TEST_F(DialogsTest, HaveTheirOwnWordsOnTheButtons) {
  run([&](DialogWindow& window) {
    EXPECT_FALSE(window.windowTitle().isEmpty());
    EXPECT_FALSE(window.windowTitle().contains("IDS_"));
    EXPECT_EQ(button(window, "accept").text().remove('&'), "Delete");
    EXPECT_EQ(button(window, "cancel").text().remove('&'), "Cancel");
    EXPECT_TRUE(button(window, "cancel").isDefault()) << "it deletes nothing";
    window.reject();
  });
}

TEST_F(DialogsTest, HaveFurtherButtonsOfTheirOwnBesideThose) {
  QTimer::singleShot(0, open.window.get(), [this] {
    auto& line = *shown()->findChild<QLineEdit*>("txt_EffWMTxtBox");
    line.setText("Mine");
    QPushButton& restore = button(*shown(), "but_EffWMResDef");
    EXPECT_EQ(restore.parentWidget(), button(*shown(), "accept").parentWidget());
    EXPECT_EQ(restore.accessibleDescription(), restore.toolTip());
    EXPECT_TRUE(line.accessibleDescription().startsWith("What is printed: "));
    EXPECT_EQ(line.toolTip(), "<p>" + line.accessibleDescription() + "</p>") << "wrapped";
    restore.click();
    EXPECT_EQ(line.text(), "");
    shown()->reject();
  });
  open.find<QPushButton>("btn_WMAdd").click();
}

TEST_F(DialogsTest, CloseByTheEscapeKey) {
  run([&](DialogWindow& window) { Testing::press(window, Qt::Key_Escape); });
  EXPECT_TRUE(open.window->preferences().gui()->openDialogs().empty());
}

TEST_F(DialogsTest, CanBeAcceptedOnlyWhileTheirOkIsEnabled) {
  run([&](DialogWindow& window) {
    dialog->okButton()->disable();
    EXPECT_FALSE(button(window, "accept").isEnabled());
    button(window, "accept").click();
    EXPECT_TRUE(window.isVisible());
    dialog->okButton()->enable();
    EXPECT_TRUE(button(window, "accept").isEnabled());
    button(window, "accept").click();
  });
}

TEST_F(DialogsTest, RunOverEachOther) {
  run([&](DialogWindow& outer) {
    const auto inner = dialog->openDialog(question);
    QTimer::singleShot(0, open.window.get(), [&] {
      auto* top = dynamic_cast<DialogWindow*>(QApplication::activeModalWidget());
      ASSERT_NE(top, nullptr);
      EXPECT_NE(top, &outer);
      button(*top, "cancel").click();
    });
    inner->runModally();
    EXPECT_TRUE(outer.isVisible());
    button(outer, "accept").click();
  });
}

TEST_F(DialogsTest, ThatAreNotModalStayOpenAndLeaveTheWindowToTheUser) {
  dialog = open.window->preferences().gui()->openDialog(question);
  dialog->show();
  ASSERT_NE(shown(), nullptr);
  EXPECT_FALSE(shown()->isModal());
  EXPECT_TRUE(shown()->isVisible());
  const QPointer<DialogWindow> window = shown();
  button(*window, "cancel").click();
  EXPECT_TRUE(open.window->preferences().gui()->openDialogs().empty());
  Testing::waitUntil([&] { return window.isNull(); });
}

class MultipleOverlaysTest : public testing::Test {
 protected:
  // Opens the dialog for several overlays; `operate` runs once it is shown, and then it is closed.
  void run(const std::function<void(DialogWindow&)>& operate) {
    QTimer::singleShot(0, open.window.get(), [&] {
      auto* dialog = qobject_cast<DialogWindow*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      QApplication::setActiveWindow(dialog);
      operate(*dialog);
      dialog->reject();
    });
    Testing::press(open.find<QComboBox>("cmb_EffOverlay"), Qt::Key_Down);
  }

  static QWidget* helpOver(DialogWindow& dialog) {
    auto* help = dialog.findChild<QWidget*>("help");
    return help != nullptr && help->isVisible() ? help : nullptr;
  }

  Testing::OpenWindow open;
};

TEST_F(MultipleOverlaysTest, HaveAHelpThatCanBeUsedWhileTheyRun) {
  QPointer<QWidget> help;
  run([&](DialogWindow& dialog) {
    EXPECT_EQ(helpOver(dialog), nullptr);
    dialog.findChild<QPushButton*>("btn_MulOvlHelp")->click();
    help = helpOver(dialog);
    ASSERT_FALSE(help.isNull());
    EXPECT_NE(help->findChild<QTextBrowser*>()->toPlainText(), QString());
    // Modal dialogs block keys to other windows.
    Testing::press(*help, Qt::Key_Escape);
    EXPECT_FALSE(help->isVisible());
    EXPECT_TRUE(dialog.isVisible());
  });
  Testing::waitUntil([&] { return help.isNull(); });
  EXPECT_TRUE(open.window->failures().isEmpty());
}

TEST_F(MultipleOverlaysTest, HaveTheirHelpOnF1) {
  run([&](DialogWindow& dialog) {
    Testing::press(*dialog.findChild<QListWidget*>("lib_MulOvlSource"), Qt::Key_F1);
    EXPECT_NE(helpOver(dialog), nullptr);
  });
}

TEST_F(MultipleOverlaysTest, TakeTheHelpFromTheWindowAndGiveItBack) {
  open.find<QPushButton>("HELP_BUTTON").click();
  ASSERT_NE(open.window->findChild<QWidget*>("help", Qt::FindDirectChildrenOnly), nullptr);
  run([&](DialogWindow& dialog) {
    Testing::press(dialog, Qt::Key_F1);
    EXPECT_NE(helpOver(dialog), nullptr);
    EXPECT_EQ(open.window->findChild<QWidget*>("help", Qt::FindDirectChildrenOnly), nullptr);
  });
  open.find<QPushButton>("HELP_BUTTON").click();
  auto* help = open.window->findChild<QWidget*>("help", Qt::FindDirectChildrenOnly);
  ASSERT_NE(help, nullptr);
  EXPECT_TRUE(help->isVisible());
}

TEST_F(MultipleOverlaysTest, NameEachOfTheirPictures) {
  run([&](DialogWindow& dialog) {
    QStringList names;
    for (PictureBox* box : dialog.findChildren<PictureBox*>())
      names << QAccessible::queryAccessibleInterface(box)->text(QAccessible::Name);
    names.sort();
    QStringList expected;
    for (int slot = 1; slot <= 8; ++slot) expected << "Overlay " + QString::number(slot) + ": empty";
    EXPECT_EQ(names, expected) << names.join(", ").toStdString();
  });
}

TEST_F(DialogsTest, WithoutAHelpHaveTheTabsOnF1) {
  run([&](DialogWindow& window) {
    QApplication::setActiveWindow(&window);
    Testing::press(window, Qt::Key_F1);
    auto* help = window.findChild<QWidget*>("help");
    ASSERT_NE(help, nullptr);
    EXPECT_TRUE(help->isVisible());
    Testing::press(*help, Qt::Key_F1);
    Testing::press(*help, Qt::Key_Escape);
    window.reject();
  });
  EXPECT_TRUE(open.window->failures().isEmpty());
}

TEST_F(DialogsTest, CloseWithThePreferences) {
  open.window->preferences().gui()->openDialog(question)->show();
  const QPointer<DialogWindow> window = shown();
  ASSERT_FALSE(window.isNull());
  open.choose("models", "tev");
  Testing::waitUntil([&] { return window.isNull(); });
}

}  // namespace
}  // namespace Window
