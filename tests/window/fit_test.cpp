// Every tab and dialog, in every language: nothing is cut off, nothing lies over anything else. The program runs these
// tests at 100 and at 200 %.
#include "tests/window/misfits.h"
#include "tests/window/open_window.h"
#include "window/dialog_windows.h"

#include <gmock/gmock.h>

#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

namespace Window {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

const std::vector<std::string> locales = {"en-US", "de-DE", "fr-FR", "ja-JP", "zh-CN", "zh-TW"};

class FitTest : public testing::TestWithParam<std::string> {
 protected:
  static Testing::OpenWindow windowOf(const std::string& model) {
    return Testing::OpenWindow([&](Request& request) {
      request.preferences.locale = GetParam();
      request.preferences.model = model;
    });
  }

  // Presses the button; `look` runs in the dialog that opens, which is then cancelled.
  static void inDialogOf(QAbstractButton& opener, const std::function<void(DialogWindow&)>& look) {
    bool wasOpen = false;
    QTimer::singleShot(0, &opener, [&] {
      auto* dialog = dynamic_cast<DialogWindow*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return;
      wasOpen = true;
      QCoreApplication::processEvents();
      look(*dialog);
      dialog->reject();
    });
    opener.click();
    EXPECT_TRUE(wasOpen);
  }
};

TEST_P(FitTest, TheTabs) {
  Testing::OpenWindow open = windowOf("standard");
  for (const char* tab : {"pro_tab_effect", "pro_tab_device"}) {
    open.selectTab(tab);
    open.settle();
    EXPECT_THAT(Testing::misfits(*open.window), IsEmpty());
  }
}

TEST_P(FitTest, TheEditor) {
  for (const char* model : {"standard", "blackmark", "plainmark"}) {
    Testing::OpenWindow open = windowOf(model);
    inDialogOf(open.find<QPushButton>("btn_WMAdd"), [](DialogWindow& editor) {
      editor.findChild<QAbstractButton*>("rad_EffWMTrans")->click();
      editor.findChild<QWidget*>("txt_EffWMTxtBox")->setFocus();
      QCoreApplication::processEvents();
      EXPECT_THAT(Testing::misfits(editor), IsEmpty());
      EXPECT_LE(editor.height(), 720);
    });
  }
}

TEST_P(FitTest, TheOtherDialogs) {
  Testing::OpenWindow open = windowOf("standard");
  for (const char16_t* address :
       {u"chrome://effect/content/dlg_multipleoverlay.xul", u"chrome://effect/content/dlg_overlayfull.xul",
        u"chrome://base/content/dlg_overwrite.xul", u"chrome://base/content/dlg_confirmdelete.xul"}) {
    open.window->preferences().gui()->openDialog(address)->show();
    const auto shown = open.window->findChildren<DialogWindow*>();
    ASSERT_THAT(shown, SizeIs(1));
    QCoreApplication::processEvents();
    EXPECT_THAT(Testing::misfits(*shown[0]), IsEmpty()) << Refhost::toNarrow(address);
    shown[0]->reject();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
}

INSTANTIATE_TEST_SUITE_P(Each, FitTest, testing::ValuesIn(locales),
                         [](const auto& tested) { return tested.param.substr(0, 2) + tested.param.substr(3); });

// What the tests above find.
TEST(Misfits, AreTextsWithoutRoomAndWidgetsOverOthers) {
  QWidget window;
  auto* row = new QHBoxLayout(&window);
  auto* label = new QLabel("A label of some length", &window);
  auto* button = new QPushButton("Press", &window);
  row->addWidget(label);
  row->addWidget(button);
  window.show();
  QCoreApplication::processEvents();
  EXPECT_THAT(Testing::misfits(window), IsEmpty());
  label->setFixedWidth(10);
  QCoreApplication::processEvents();
  EXPECT_THAT(Testing::misfits(window), SizeIs(1));
  button->move(label->pos());
  EXPECT_THAT(Testing::misfits(window), SizeIs(2));
}

}  // namespace
}  // namespace Window
