// The page beside the tabs: it is updated with each click, and has controls for the other pages.
#include "press/job/print.h"
#include "press/job/sample.h"
#include "tests/window/open_window.h"
#include "window/page/page_number.h"
#include "window/page/page_strip.h"
#include "window/page/paper_view.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QToolButton>
#include <QWheelEvent>

#include <chrono>
#include <cmath>
#include <fstream>

namespace Window {
namespace {

class PageTest : public testing::Test {
 protected:
  QString place() { return open.find<PageNumber>("place").text(); }
  QWidget& paper() { return open.find<QWidget>("page"); }

  Testing::OpenWindow open;
};

// Rendering a mirrored page differs from mirroring its picture in shades of edges; the sum of differences is small.
double difference(const QImage& one, const QImage& other) {
  if (one.size() != other.size()) return 255;
  double sum = 0;
  for (int y = 0; y < one.height(); ++y)
    for (int x = 0; x < one.width(); ++x) sum += std::abs(qGray(one.pixel(x, y)) - qGray(other.pixel(x, y)));
  return sum / one.width() / one.height();
}

TEST_F(PageTest, IsMirroredByAClickAndComesBackByUndo) {
  const QImage plain = open.page();
  ASSERT_GT(plain.width(), 100);
  open.find<QCheckBox>("ePTKWPageMirrorImage").click();
  open.settle();
  EXPECT_LT(difference(open.page(), plain.mirrored(true, false)), 3);
  EXPECT_GT(difference(open.page(), plain), 3);
  open.find<QPushButton>("UNDO").click();
  open.settle();
  EXPECT_EQ(open.page(), plain);
}

TEST(PageOfAJob, FollowsTheFileWhenItIsSavedAnew) {
  QTemporaryDir folder;
  const std::filesystem::path file = folder.filePath("job.pdf").toStdU16String();
  const auto save = [&file](const std::string& pdf) { std::ofstream(file, std::ios::binary) << pdf; };
  save(Press::samplePdf());
  Testing::OpenWindow open([&](Request& request) { request.document = file; });
  const QImage before = open.page();
  const auto time = std::filesystem::last_write_time(file);
  save(Press::printPage(file, 2, {}));
  std::filesystem::last_write_time(file, time + std::chrono::seconds(2));
  open.find<QCheckBox>("ePTKWPageMirrorImage").click();
  open.settle();
  EXPECT_GT(difference(open.page(), before.mirrored(true, false)), 3);
  EXPECT_TRUE(open.find<PageNumber>("place").text().contains("1")) << "of one page";
  EXPECT_FALSE(open.find<QToolButton>("nextPage").isEnabled());
}

TEST_F(PageTest, ShowsWhatCannotBeChosenAsItPrints) {
  open.find<QCheckBox>("ePTKWPageNegativeImage").click();
  open.settle();
  const QImage negative = open.page();
  open.window->preferences().setAvailable(u"NegativeImage", u"Negative", false);
  open.settle();
  EXPECT_GT(difference(open.page(), negative), 100);
}

TEST_F(PageTest, FillsTheRoomInOneDirection) {
  const QSize room = open.window->findChild<PaperView*>()->room();
  const QSize page = open.page().size();
  EXPECT_LE(page.width(), room.width() + 2);
  EXPECT_LE(page.height(), room.height() + 2);
  EXPECT_TRUE(page.width() >= room.width() - 2 || page.height() >= room.height() - 2);
}

TEST_F(PageTest, IsDrawnAnewWhenTheWindowGrows) {
  const QSize before = open.page().size();
  open.window->resize(open.window->size() + QSize(300, 300));
  open.settle();
  EXPECT_GT(open.page().height(), before.height());
}

TEST_F(PageTest, LeadsToTheOtherPages) {
  EXPECT_EQ(place(), "Page 1 of 4");
  EXPECT_FALSE(open.find<QToolButton>("previousPage").isEnabled());
  open.find<QToolButton>("nextPage").click();
  open.settle();
  EXPECT_EQ(place(), "Page 2 of 4");
  EXPECT_TRUE(open.find<QToolButton>("previousPage").isEnabled());
}

TEST_F(PageTest, IsTurnedByTheKeyboard) {
  Testing::press(paper(), Qt::Key_End);
  open.settle();
  EXPECT_EQ(place(), "Page 4 of 4");
  EXPECT_FALSE(open.find<QToolButton>("nextPage").isEnabled());
  Testing::press(paper(), Qt::Key_PageDown);
  Testing::press(paper(), Qt::Key_PageUp);
  open.settle();
  EXPECT_EQ(place(), "Page 3 of 4");
  Testing::press(paper(), Qt::Key_Home);
  open.settle();
  EXPECT_EQ(place(), "Page 1 of 4");
}

TEST_F(PageTest, SaysItsPlaceToAScreenReader) {
  EXPECT_EQ(paper().accessibleName(), "The page as it will print");
  EXPECT_EQ(paper().accessibleDescription(), "Page 1 of 4");
}

TEST_F(PageTest, IsASheetWhileSeveralPagesAreOnOne) {
  const QString upright = open.find<QLabel>("paper").text();
  EXPECT_LT(open.page().width(), open.page().height());
  open.window->preferences().set(u"Nin1", u"2in1");
  open.settle();
  EXPECT_EQ(place(), "Sheet 1 of 2");
  EXPECT_EQ(open.find<QLabel>("paper").text(), "297 \u00d7 210 mm");
  EXPECT_GT(open.page().width(), open.page().height());
  EXPECT_TRUE(open.page().width() >= open.window->findChild<PaperView*>()->room().width() - 2);
  open.window->preferences().set(u"Nin1", u"None");
  open.settle();
  EXPECT_EQ(place(), "Page 1 of 4");
  EXPECT_EQ(open.find<QLabel>("paper").text(), upright);
  EXPECT_LT(open.page().width(), open.page().height());
}

TEST_F(PageTest, IsTurnedSheetBySheet) {
  open.window->preferences().set(u"Nin1", u"2in1");
  open.settle();
  const QImage first = open.page();
  open.find<QToolButton>("nextPage").click();
  open.settle();
  EXPECT_EQ(place(), "Sheet 2 of 2");
  EXPECT_NE(open.page(), first);
  EXPECT_FALSE(open.find<QToolButton>("nextPage").isEnabled());
  Testing::press(paper(), Qt::Key_PageUp);
  open.settle();
  EXPECT_EQ(place(), "Sheet 1 of 2");
  EXPECT_EQ(open.page(), first);
  EXPECT_FALSE(open.find<QToolButton>("previousPage").isEnabled());
}

TEST_F(PageTest, IsHiddenByTheMenuAndDrawnAnewWhenItComesBack) {
  auto& panel = *open.window->findChild<PagePanel*>();
  const QImage plain = open.page();
  QAction& shows = open.find<QAction>("showPage");
  const int width = open.window->width();
  shows.trigger();
  EXPECT_FALSE(panel.isVisible());
  EXPECT_LT(open.window->width(), width);
  open.find<QCheckBox>("ePTKWPageMirrorImage").click();
  open.settle();
  EXPECT_EQ(open.page(), plain) << "nothing is drawn for nobody";
  shows.trigger();
  open.settle();
  EXPECT_TRUE(panel.isVisible());
  EXPECT_GT(difference(open.page(), plain), 3);
}

TEST_F(PageTest, IsZoomedByStepsAndFitsAgain) {
  const QSize fitting = open.page().size();
  auto& view = open.find<PaperView>("page");
  open.find<QAction>("trueSize").trigger();
  open.settle();
  EXPECT_EQ(view.factor(), 1);
  EXPECT_NEAR(open.page().width(), 210 / 25.4 * view.logicalDpiX(), 2);
  EXPECT_EQ(open.find<QToolButton>("sizes").text(), "100%");
  open.find<QToolButton>("larger").click();
  EXPECT_EQ(view.factor(), 1.25);
  open.find<QToolButton>("smaller").click();
  open.find<QToolButton>("smaller").click();
  EXPECT_EQ(view.factor(), 0.75);
  open.find<QAction>("fitPage").trigger();
  open.settle();
  EXPECT_EQ(open.page().size(), fitting);
  EXPECT_TRUE(open.find<QAction>("fitPage").isChecked());
}

TEST_F(PageTest, TellsItsZoomAsSoonAsItsRoomChanges) {
  const auto& told = open.find<QToolButton>("sizes");
  const QString before = told.text();
  auto& view = open.find<PaperView>("page");
  view.resize(view.size() / 2);
  EXPECT_NE(told.text(), before);
  EXPECT_EQ(told.text(), QString::number(std::lround(100 * view.factor())) + '%');
}

TEST(Zoom, StepsToTheNextUsualFactor) {
  EXPECT_EQ(nextFactor(1, true), 1.25);
  EXPECT_EQ(nextFactor(1, false), 0.75);
  EXPECT_EQ(nextFactor(0.6, true), 0.67);
  EXPECT_EQ(nextFactor(0.6, false), 0.5);
}

TEST(Zoom, StaysBeyondTheUsualFactors) {
  EXPECT_EQ(nextFactor(4, true), 4);
  EXPECT_EQ(nextFactor(7, true), 7);
  EXPECT_EQ(nextFactor(7, false), 4);
  EXPECT_EQ(nextFactor(0.1, false), 0.1);
  EXPECT_EQ(nextFactor(0.05, false), 0.05);
  EXPECT_EQ(nextFactor(0.05, true), 0.1);
}

TEST_F(PageTest, FillsTheWidthOnDemand) {
  open.find<QAction>("fitWidth").trigger();
  open.settle();
  auto& view = open.find<PaperView>("page");
  EXPECT_NEAR(view.sheet().width(), view.viewport()->width() - 40, 2);
  EXPECT_EQ(view.horizontalScrollBar()->maximum(), 0);
  EXPECT_GT(view.verticalScrollBar()->maximum(), 0);
}

void turnWheel(QWidget& widget, QPoint place, int delta, Qt::KeyboardModifiers modifiers) {
  QWheelEvent event(place, widget.mapToGlobal(place), {}, {0, delta}, {}, modifiers, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&widget, &event);
}

TEST_F(PageTest, IsZoomedAroundTheMouse) {
  auto& view = open.find<PaperView>("page");
  const QRectF before = view.sheet();
  const QPoint place = before.topLeft().toPoint() + QPoint(100, 150);
  const auto part = [&](const QRectF& sheet) { return (place.y() - sheet.top()) / sheet.height(); };
  turnWheel(*view.viewport(), place, 5 * 120, Qt::ControlModifier);
  EXPECT_GT(view.sheet().width(), 2 * before.width());
  EXPECT_NEAR(part(view.sheet()), part(before), 0.01);
  EXPECT_EQ(this->place(), "Page 1 of 4");
}

TEST_F(PageTest, IsDraggedWhenItIsLargerThanItsView) {
  auto& view = open.find<PaperView>("page");
  open.find<QAction>("trueSize").trigger();
  open.settle();
  view.verticalScrollBar()->setValue(50);
  const QPointF before = view.sheet().topLeft();
  const auto send = [&](QEvent::Type type, QPointF at, Qt::MouseButtons buttons) {
    QMouseEvent event(type, at, view.viewport()->mapToGlobal(at), Qt::LeftButton, buttons, {});
    QCoreApplication::sendEvent(view.viewport(), &event);
  };
  send(QEvent::MouseButtonPress, {200, 200}, Qt::LeftButton);
  send(QEvent::MouseMove, {190, 170}, Qt::LeftButton);
  send(QEvent::MouseButtonRelease, {190, 170}, {});
  EXPECT_EQ(view.sheet().top(), before.y() - 30);
}

TEST_F(PageTest, IsChosenByItsNumber) {
  auto& number = open.find<PageNumber>("place");
  QLineEdit& line = *number.findChild<QLineEdit*>();
  line.setText("Page 3 of 4");
  Testing::press(number, Qt::Key_Return);
  open.settle();
  EXPECT_EQ(place(), "Page 3 of 4");
  EXPECT_TRUE(open.window->isVisible()) << "Return has not pressed OK";
  open.find<QToolButton>("lastPage").click();
  EXPECT_EQ(place(), "Page 4 of 4");
  open.find<QToolButton>("firstPage").click();
  EXPECT_EQ(place(), "Page 1 of 4");
}

TEST_F(PageTest, IsOneOfAStripThatLeadsToTheOthers) {
  auto& strip = open.find<PageStrip>("pageStrip");
  EXPECT_EQ(strip.count(), 4);
  Testing::waitUntil([&] { return strip.isComplete(); });
  const QImage plain = strip.grab().toImage();
  Testing::press(strip, Qt::Key_Down);
  open.settle();
  EXPECT_EQ(place(), "Page 2 of 4");
  Testing::click(*strip.viewport(), {40, 10});
  EXPECT_EQ(place(), "Page 1 of 4");
  open.find<QCheckBox>("ePTKWPageNegativeImage").click();
  open.settle();
  Testing::waitUntil([&] { return strip.isComplete(); });
  EXPECT_GT(difference(strip.grab().toImage(), plain), 20);
  open.find<QAction>("showStrip").trigger();
  EXPECT_FALSE(strip.isVisible());
}

TEST_F(PageTest, SaysWhereTheChosenPaperIsAnother) {
  auto& notes = open.find<QLabel>("notes");
  EXPECT_EQ(notes.text(), "");
  const QRect before = paper().geometry();
  open.window->preferences().set(u"PaperSize", u"A3");
  open.settle();
  EXPECT_TRUE(notes.text().contains("A3") && notes.text().contains("210 \u00d7 297 mm")) << notes.text().toStdString();
  EXPECT_EQ(paper().geometry(), before) << "a note does not move the page";
  open.window->preferences().set(u"PaperSize", u"A4");
  open.settle();
  EXPECT_EQ(notes.text(), "");
}

// A job of so many pages: blank, or with paint all over them.
std::string plainJob(int pages, const std::string& paint) {
  std::string kids;
  std::string objects =
      "3 0 obj\n<< /Length " + std::to_string(paint.size()) + " >>\nstream\n" + paint + "\nendstream\nendobj\n";
  for (int page = 0; page < pages; ++page) {
    kids += std::to_string(page + 4) + " 0 R ";
    objects += std::to_string(page + 4) +
               " 0 obj\n<< /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Contents 3 0 R >>\nendobj\n";
  }
  return "%PDF-1.4\n1 0 obj\n<< /Type /Catalog /Pages 2 0 R >>\nendobj\n2 0 obj\n<< /Type /Pages /Kids [ " + kids +
         "] /Count " + std::to_string(pages) + " >>\nendobj\n" + objects +
         "trailer\n<< /Root 1 0 R >>\nstartxref\n0\n%%EOF\n";
}

class PlainPageTest : public testing::Test {
 protected:
  std::filesystem::path write(const std::string& pdf) {
    const std::filesystem::path file = folder.filePath("job.pdf").toStdU16String();
    std::ofstream(file, std::ios::binary) << pdf;
    return file;
  }

  // The notes on the page once a mark under it has been chosen and the page examined.
  QString notesUnder(const std::string& paint) {
    Testing::OpenWindow open([&](Request& request) { request.document = write(plainJob(1, paint)); });
    auto& panel = *open.window->findChild<PagePanel*>();
    Press::Effects effects;
    effects.watermark.text = "Draft";
    effects.watermark.face = "DejaVu Sans";
    effects.watermark.isUnderPage = true;
    panel.setEffects(effects);
    open.settle();
    Testing::waitUntil([&] { return panel.isExamined(); });
    return open.find<QLabel>("notes").text();
  }

  QTemporaryDir folder;
};

TEST_F(PlainPageTest, TellsOfAMarkThatItsBackgroundHides) {
  EXPECT_TRUE(notesUnder("1 1 1 rg 0 0 595 842 re f").contains("The watermark lies under the page"));
}

TEST_F(PlainPageTest, TellsNothingOfAMarkThatIsSeen) {
  EXPECT_EQ(notesUnder(""), "");
  EXPECT_EQ(notesUnder("1 1 1 rg 0 0 250 842 re f"), "") << "half of it is seen";
}

TEST_F(PlainPageTest, OfALongJobDrawsTheSmallPicturesInSightAlone) {
  Testing::OpenWindow open([&](Request& request) { request.document = write(plainJob(10000, "")); });
  auto& strip = open.find<PageStrip>("pageStrip");
  EXPECT_EQ(strip.count(), 10000);
  Testing::waitUntil([&] { return strip.isComplete(); });
  const int inSight = strip.kept();
  EXPECT_LT(inSight, 20);
  open.find<QToolButton>("lastPage").click();
  open.settle();
  Testing::waitUntil([&] { return strip.isComplete(); });
  EXPECT_LE(strip.kept(), inSight + 1) << "the first ones are forgotten";
}

TEST_F(PlainPageTest, AloneInItsJobHasNoStrip) {
  Testing::OpenWindow open([&](Request& request) { request.document = write(plainJob(1, "")); });
  EXPECT_FALSE(open.find<PageStrip>("pageStrip").isVisible());
  EXPECT_EQ(open.find<PageNumber>("place").text(), "Page 1 of 1");
}

TEST(PageOfADamagedJob, IsASentence) {
  const QTemporaryDir folder;
  const std::string file = folder.filePath("damaged.pdf").toStdString();
  std::ofstream(file) << "no PDF at all";
  Testing::OpenWindow open([&](Request& request) { request.document = file; });
  EXPECT_TRUE(open.window->pageFailure().contains("damaged.pdf")) << open.window->pageFailure().toStdString();
  EXPECT_EQ(open.find<QWidget>("page").accessibleDescription(), open.window->pageFailure());
  EXPECT_EQ(open.find<PageNumber>("place").text(), "\u2013");
  EXPECT_FALSE(open.find<PageNumber>("place").isEnabled());
}

TEST(PageOfARequest, IsShownFirst) {
  Testing::OpenWindow open([](Request& request) { request.page = 3; });
  EXPECT_EQ(open.find<PageNumber>("place").text(), "Page 3 of 4");
}

}  // namespace
}  // namespace Window
