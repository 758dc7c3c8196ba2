// Every tab and dialog in every language: no text is cut off, no widgets overlap. The program runs these tests at 100
// and at 200 %.
#include "press/job/sample.h"
#include "tests/support/locales.h"
#include "tests/window/misfits.h"
#include "tests/window/open_window.h"
#include "tests/window/stored_overlays.h"
#include "window/dialogs/dialog_window.h"
#include "window/dialogs/new_overlay_dialog.h"

#include <gmock/gmock.h>

#include <QBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QTimer>

#include <fstream>

namespace Window {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class FitTest : public testing::TestWithParam<std::string> {
 protected:
  static Testing::OpenWindow
  windowOf(const std::string& model, const std::function<void(Request&)>& change = [](auto&) {}) {
    return Testing::OpenWindow([&](Request& request) {
      request.preferences.locale = GetParam();
      request.preferences.model = model;
      change(request);
    });
  }

  // A dialog must also fit on a small screen.
  static void expectToFit(QDialog& dialog) {
    QCoreApplication::processEvents();
    EXPECT_THAT(Testing::misfits(dialog), IsEmpty());
    EXPECT_LE(dialog.height(), 720);
    EXPECT_LE(dialog.width(), 1024);
    EXPECT_TRUE(QRect(QPoint(), dialog.screen()->availableSize()).contains(QRect(QPoint(), dialog.size())));
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
  // The check box for A3 and Ledger has a longer text when the printer itself rotates these pages.
  for (const char16_t* turnsPages : {u"False", u"True"}) {
    Testing::OpenWindow open = windowOf("standard", [&](Request& request) {
      request.preferences.settings.emplace_back(u"kilnworks.A3LDRotate180.rotation", turnsPages);
    });
    for (const char* tab : {"pro_tab_effect", "pro_tab_device"}) {
      open.selectTab(tab);
      open.settle();
      EXPECT_THAT(Testing::misfits(*open.window), IsEmpty());
    }
  }
}

TEST_P(FitTest, TheEditor) {
  for (const char* model : {"standard", "blackmark", "plainmark"}) {
    Testing::OpenWindow open = windowOf(model, [](Request& request) {
      request.preferences.settings.emplace_back(u"kilnworks.watermark.stylename.support", u"True");
    });
    inDialogOf(open.find<QPushButton>("btn_WMAdd"), [](DialogWindow& editor) {
      editor.findChild<QAbstractButton*>("rad_EffWMTrans")->click();
      editor.findChild<QWidget*>("txt_EffWMTxtBox")->setFocus();
      expectToFit(editor);
    });
  }
}

TEST_P(FitTest, TheDialogForSeveralOverlays) {
  Testing::OpenWindow open = windowOf("standard", Testing::useSeveralOverlays);
  inDialogOf(open.find<QPushButton>("but_EffDet"), [](DialogWindow& dialog) {
    EXPECT_EQ(dialog.findChild<QListWidget*>("lib_MulOvlSource")->count(), 2);
    expectToFit(dialog);
  });
}

TEST_P(FitTest, TheDialogForANewOverlay) {
  Testing::OpenWindow open = windowOf("standard");
  const QTemporaryDir folder;
  const QString form = folder.filePath("form.pdf");
  std::ofstream(form.toStdString(), std::ios::binary) << Press::samplePdf();
  const Texts texts(open.window->preferences().strings());
  for (const char* said : {"NAME_MISSING", "NAME_RESERVED", "NAME_TAKEN", "NAME_REPLACES"}) {
    const NameVerdict verdict{texts(said), true};
    NewOverlayDialog dialog({.fileName = "Letterhead of the head office, 2026.pdf",
                             .name = "Letterhead of the head office, 2026",
                             .judge = [&](const QString&) { return verdict; },
                             .form = {form.toStdString(), 4, true}},
                            texts, open.window.get());
    dialog.show();
    QCoreApplication::processEvents();
    Testing::waitUntil([&] { return dialog.isSettled(); });
    expectToFit(dialog);
  }
}

TEST_P(FitTest, TheOtherDialogs) {
  Testing::OpenWindow open = windowOf("standard");
  for (const char16_t* address :
       {u"chrome://effect/content/dlg_overlayfull.xul", u"chrome://base/content/dlg_overwrite.xul",
        u"chrome://base/content/dlg_confirmdelete.xul"}) {
    open.window->preferences().gui()->openDialog(address)->show();
    const auto shown = open.window->findChildren<DialogWindow*>();
    ASSERT_THAT(shown, SizeIs(1));
    SCOPED_TRACE(Formats::toUtf8(address));
    expectToFit(*shown[0]);
    shown[0]->reject();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
}

INSTANTIATE_TEST_SUITE_P(Each, FitTest, testing::ValuesIn(Testing::locales), Testing::testedLocale);

// The detection used by the tests above.
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
