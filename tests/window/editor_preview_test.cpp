// The watermark editor's preview: the user's own page, a watermark that the mouse moves and turns, and numbers whose
// limits are told.
#include "press/job/print.h"
#include "press/job/sample.h"
#include "tests/window/open_window.h"
#include "window/dialogs/dialog_window.h"
#include "window/page/paper.h"
#include "window/widgets/text_field.h"
#include "window/widgets/watermark_view.h"

#include <gtest/gtest.h>

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>

#include <fstream>

namespace Window {
namespace {

class EditorPreviewTest : public testing::Test {
 protected:
  // Opens the editor for a new watermark; `act` runs in it, and it is cancelled unless that has closed it.
  void edit(const std::function<void()>& act) {
    bool wasOpen = false;
    QTimer::singleShot(0, open.window.get(), [&] {
      editor = dynamic_cast<DialogWindow*>(QApplication::activeModalWidget());
      if (editor == nullptr) return;
      wasOpen = true;
      Testing::waitUntil([this] { return view().isSettled(); });
      field("txt_EffWMTxtBox").setText("Fresh");
      act();
      if (editor->isVisible()) editor->reject();
    });
    open.find<QPushButton>("btn_WMAdd").click();
    EXPECT_TRUE(wasOpen);
  }

  WatermarkView& view() { return *editor->findChild<WatermarkView*>("txt_EffWMText"); }
  TextField& field(const char* name) { return *editor->findChild<TextField*>(name); }
  QPushButton& button(const char* name) { return *editor->findChild<QPushButton*>(name); }
  QString notice() {
    auto* label = editor->findChild<QLabel*>("notice");
    return label != nullptr && label->isVisible() ? label->text() : QString();
  }

  void drag(const QPointF& from, const QPointF& to) {
    const auto send = [this](QEvent::Type type, const QPointF& at, Qt::MouseButtons buttons) {
      QMouseEvent event(type, at, view().mapToGlobal(at), Qt::LeftButton, buttons, {});
      QCoreApplication::sendEvent(&view(), &event);
    };
    send(QEvent::MouseButtonPress, from, Qt::LeftButton);
    send(QEvent::MouseMove, to, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, to, {});
  }

  // The place as screen readers tell it.
  QString place() { return view().accessibleDescription(); }

  Testing::OpenWindow open;
  DialogWindow* editor = nullptr;
};

constexpr auto upper = Press::Down::upper;
constexpr auto middle = Press::Down::centre;
constexpr auto left = Press::Across::left;
constexpr auto centre = Press::Across::centre;

TEST_F(EditorPreviewTest, ShowsThePageUnderTheWatermarkUnlessItIsSwitchedOff) {
  edit([this] {
    field("txt_EffWMTxtBox").setText("");
    const QRect sheet = view().sheet().toAlignedRect();
    const auto brightness = [&] {
      const QImage image = view().grab(sheet).toImage();
      double sum = 0;
      for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) sum += qGray(image.pixel(x, y));
      return sum / image.width() / image.height();
    };
    const double withPage = brightness();
    auto& box = *view().findChild<QCheckBox*>("showsPage");
    EXPECT_EQ(box.text().remove('&'), "Show my page");
    box.click();
    EXPECT_LT(withPage, brightness() - 5);
  });
}

TEST_F(EditorPreviewTest, LeavesTheFirstFocusToTheText) {
  edit([this] { EXPECT_EQ(editor->focusWidget()->objectName().toStdString(), "txt_EffWMTxtBox"); });
}

TEST_F(EditorPreviewTest, HasTheShapeOfThePageThatIsShown) {
  const std::string file = open.home.filePath("wide.pdf").toStdString();
  Press::Effects twoOnOne;
  twoOnOne.pagesOnSheet = 2;
  const std::filesystem::path sample = open.home.filePath("sample.pdf").toStdString();
  std::ofstream(sample, std::ios::binary) << Press::samplePdf();
  std::ofstream(file, std::ios::binary) << Press::printPage(sample, 1, twoOnOne);
  open.window.reset();
  Testing::OpenWindow wide([&](Request& request) { request.document = file; });
  std::swap(open.window, wide.window);
  edit([this] { EXPECT_NEAR(view().sheet().width() / view().sheet().height(), 297.0 / 210, 0.01); });
  std::swap(open.window, wide.window);
}

TEST_F(EditorPreviewTest, TakesTheWatermarkToThePlaceNearestToWhereItIsDropped) {
  edit([this] {
    EXPECT_TRUE(place().contains("Center")) << place().toStdString();
    const QPointF way = view().spotOf(upper, left) - view().spotOf(middle, centre);
    drag(view().sheet().center(), view().sheet().center() + way * 0.8);
    EXPECT_TRUE(place().contains("Upper left")) << place().toStdString();
  });
}

TEST_F(EditorPreviewTest, LeavesTheWatermarkWhereItIsWhenItIsHardlyDragged) {
  edit([this] {
    drag(view().sheet().center(), view().sheet().center() + QPointF(5, 5));
    EXPECT_TRUE(place().contains("Center"));
    const QPointF beside = view().spotOf(upper, left);
    drag(beside, view().spotOf(upper, centre));
    EXPECT_TRUE(place().contains("Center")) << "only the watermark can be dragged";
  });
}

TEST_F(EditorPreviewTest, TurnsTheWatermarkByItsHandle) {
  edit([this] {
    field("txt_EffWMAngle").setText("0");
    const QPointF middleOfMark = view().sheet().center();
    const double length = QLineF(middleOfMark, *view().handle()).length();
    drag(*view().handle(), middleOfMark + QPointF(-length, 0));
    EXPECT_EQ(field("txt_EffWMAngle").text(), "90");
    EXPECT_EQ(notice(), "");
    drag(*view().handle(), middleOfMark + QPointF(0, length));
    EXPECT_EQ(field("txt_EffWMAngle").text(), "90");
    EXPECT_TRUE(notice().contains("\u221290 to 90")) << notice().toStdString();
  });
}

TEST_F(EditorPreviewTest, TellsTheLimitsOfANumberThatIsRefused) {
  edit([this] {
    TextField& angle = field("txt_EffWMAngle");
    angle.setFocus();
    angle.selectAll();
    angle.insert("91");
    EXPECT_NE(angle.text(), "91");
    EXPECT_TRUE(notice().contains("\u221290 to 90")) << notice().toStdString();
    EXPECT_TRUE(angle.accessibleDescription().contains("\u221290 to 90"));
  });
}

TEST_F(EditorPreviewTest, TellsThatASizeWasChangedBeforeItIsAccepted) {
  edit([this] {
    TextField& size = field("txt_EffWMFonSiz");
    size.setFocus();
    size.setText("301");
    QAbstractButton& accept = *editor->findChild<QDialogButtonBox*>()->buttons().front();
    ASSERT_EQ(accept.text(), "OK");
    accept.click();
    EXPECT_TRUE(editor->isVisible());
    EXPECT_EQ(size.text(), "6");
    EXPECT_TRUE(notice().contains("6 to 300")) << notice().toStdString();
    accept.click();
    EXPECT_FALSE(editor->isVisible());
  });
}

TEST_F(EditorPreviewTest, TellsWhereTheArrowKeysEnd) {
  edit([this] {
    TextField& size = field("txt_EffWMFonSiz");
    size.setFocus();
    size.setText("299");
    Testing::press(size, Qt::Key_Up);
    EXPECT_EQ(size.text(), "300");
    EXPECT_EQ(notice(), "");
    Testing::press(size, Qt::Key_Up);
    EXPECT_EQ(size.text(), "300");
    EXPECT_TRUE(notice().contains("6 to 300"));
  });
}

}  // namespace
}  // namespace Window
