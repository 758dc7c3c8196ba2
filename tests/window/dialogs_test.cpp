// The dialogs of a plug-in, over the window.
#include "tests/window/open_window.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
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
    EXPECT_EQ(button(window, "accept").text(), "Delete");
    EXPECT_EQ(button(window, "cancel").text(), "Cancel");
    EXPECT_TRUE(button(window, "accept").isDefault());
    window.reject();
  });
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

TEST_F(DialogsTest, CloseWithThePreferences) {
  open.window->preferences().gui()->openDialog(question)->show();
  const QPointer<DialogWindow> window = shown();
  ASSERT_FALSE(window.isNull());
  open.choose("models", "tev");
  Testing::waitUntil([&] { return window.isNull(); });
}

}  // namespace
}  // namespace Window
