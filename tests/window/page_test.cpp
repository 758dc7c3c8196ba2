// The page beside the tabs: it is updated with each click, and has controls for the other pages.
#include "press/job/print.h"
#include "press/job/sample.h"
#include "tests/window/open_window.h"
#include "window/page/paper_view.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>

#include <chrono>
#include <fstream>

namespace Window {
namespace {

class PageTest : public testing::Test {
 protected:
  QString place() { return open.find<QLabel>("place").text(); }
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
  EXPECT_TRUE(open.find<QLabel>("place").text().contains("1")) << "of one page";
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

TEST(PageOfADamagedJob, IsASentence) {
  const QTemporaryDir folder;
  const std::string file = folder.filePath("damaged.pdf").toStdString();
  std::ofstream(file) << "no PDF at all";
  Testing::OpenWindow open([&](Request& request) { request.document = file; });
  EXPECT_TRUE(open.window->pageFailure().contains("damaged.pdf")) << open.window->pageFailure().toStdString();
  EXPECT_EQ(open.find<QWidget>("page").accessibleDescription(), open.window->pageFailure());
}

TEST(PageOfARequest, IsShownFirst) {
  Testing::OpenWindow open([](Request& request) { request.page = 3; });
  EXPECT_EQ(open.find<QLabel>("place").text(), "Page 3 of 4");
}

}  // namespace
}  // namespace Window
