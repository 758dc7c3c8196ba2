// The preview of a watermark: the position and rendering of the text.
#include "press/marks/place.h"
#include "press/text/outlines.h"
#include "tests/window/shown_layout.h"
#include "window/widgets/watermark_view.h"

#include <gtest/gtest.h>

namespace Window {
namespace {

class WatermarkViewTest : public testing::Test {
 protected:
  WatermarkViewTest() {
    shown.window.resize(600, 800);
    QCoreApplication::processEvents();
    node().setText(u"Draft");
    node().setFontFace(u"DejaVu Sans");
    node().setColour(u"#FF0000");
    node().setFontSize(72);
  }

  Refhost::WatermarkPreview& node() { return shown.node<Refhost::WatermarkPreview>(u"page"); }
  WatermarkView& view() { return shown.find<WatermarkView>("page"); }
  QImage picture() { return view().grab().toImage(); }
  QRectF sheet() { return sheetWithin(view(), paperOf(u"A4")); }

  // The bounds of the differences to a blank sheet.
  QRect marked() {
    const QImage with = picture();
    const std::u16string text = node().watermark().text;
    node().setText(u"");
    const QImage bare = picture();
    node().setText(text);
    QRect around;
    for (int y = 0; y < with.height(); ++y)
      for (int x = 0; x < with.width(); ++x)
        if (with.pixel(x, y) != bare.pixel(x, y)) around |= QRect(x, y, 1, 1);
    return around;
  }

  // The number of pixels with the full colour.
  int inked(const QColor& colour) {
    const QImage image = picture();
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x) count += image.pixelColor(x, y) == colour ? 1 : 0;
    return count;
  }

  Testing::ShownLayout shown{"<wmpreview id='page' flex='1' outlined='edge'/><radiogroup><radio id='solid' label='S'/>"
                             "<radio id='edge' label='E'/></radiogroup>"};
};

TEST_F(WatermarkViewTest, ShowsThePaperInItsProportions) {
  EXPECT_NEAR(sheet().height() / sheet().width(), 297.0 / 210, 0.005);
  const QImage image = picture();
  const QColor paper(Qt::white);
  EXPECT_EQ(image.pixelColor((sheet().topLeft() + QPointF(2, 2)).toPoint()), paper);
  EXPECT_EQ(image.pixelColor((sheet().bottomRight() - QPointF(2, 2)).toPoint()), paper);
  EXPECT_NE(image.pixelColor(2, 2), paper);
}

TEST(Paper, HasTheSizeThatItsNameSays) {
  EXPECT_NEAR(paperOf(u"A4").width(), 595.28, 0.01);
  EXPECT_NEAR(paperOf(u"A3").height(), 1190.55, 0.01);
  EXPECT_EQ(paperOf(u"Letter"), QSizeF(612, 792));
  EXPECT_EQ(paperOf(u"Ledger"), QSizeF(792, 1224));
  EXPECT_EQ(paperOf(u"Papyrus"), paperOf(u"A4"));
}

TEST_F(WatermarkViewTest, DrawsTheTextAtItsTrueSize) {
  Press::Watermark mark;
  mark.text = "Draft";
  mark.face = "DejaVu Sans";
  mark.size = 72;
  const Press::Box bounds = Press::outlinesOf(mark).bounds;
  const double scale = sheet().width() / paperOf(u"A4").width();
  EXPECT_NEAR(marked().width(), (bounds.x1 - bounds.x0) * scale, 2);
  EXPECT_NEAR(marked().height(), (bounds.y1 - bounds.y0) * scale, 2);
}

TEST_F(WatermarkViewTest, PutsTheTextInEachOfNinePlaces) {
  const QPointF middle = sheet().center();
  const auto side = [](double place, double centre) { return place < centre - 20 ? -1 : place > centre + 20 ? 1 : 0; };
  for (const char16_t down : {u'U', u'C', u'L'}) {
    for (const char16_t across : {u'L', u'C', u'R'}) {
      node().setPosition(std::u16string{down, across});
      const QPointF place = QRectF(marked()).center();
      EXPECT_EQ(side(place.y(), middle.y()), down == u'U' ? -1 : down == u'L' ? 1 : 0);
      EXPECT_EQ(side(place.x(), middle.x()), across == u'L' ? -1 : across == u'R' ? 1 : 0);
    }
  }
}

// The bounds of all pixels with the mark's red.
QRectF redIn(const QImage& image) {
  QRect around;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x) {
      const QColor colour = image.pixelColor(x, y);
      if (colour.red() - colour.green() > 40) around |= QRect(x, y, 1, 1);
    }
  return QRectF(around);
}

// Also when the text is larger than the sheet, and for any shape of the window.
TEST(WatermarkOnPaper, KeepsItsMarginInEachOfNinePlaces) {
  for (const QSizeF paper : {paperOf(u"A4"), paperOf(u"Ledger"), QSizeF(298, 420), QSizeF(216, 144), QSizeF(90, 60)}) {
    WatermarkView view(paper, nullptr);
    view.resize(700, 640);
    const QRectF sheet = sheetWithin(view, paper);
    EXPECT_NEAR(sheet.height() / sheet.width(), paper.height() / paper.width(), 0.005);
    Press::PageFrame page;
    page.visible = {0, 0, paper.width(), paper.height()};
    const double margin = Press::markMargin(page) * sheet.width() / paper.width();
    Press::Watermark mark;
    mark.text = "Draft";
    mark.face = "DejaVu Sans";
    mark.size = 40;
    mark.colour = 0xFF0000;
    for (const Press::Down down : {Press::Down::upper, Press::Down::centre, Press::Down::lower}) {
      for (const Press::Across across : {Press::Across::left, Press::Across::centre, Press::Across::right}) {
        mark.down = down;
        mark.across = across;
        view.show(mark);
        const QRectF seen = redIn(view.grab().toImage());
        ASSERT_FALSE(seen.isEmpty());
        EXPECT_TRUE(sheet.adjusted(margin - 1, margin - 1, 1 - margin, 1 - margin).contains(seen));
        switch (mark.across) {
          case Press::Across::left: EXPECT_NEAR(seen.left() - sheet.left(), margin, 1.5); break;
          case Press::Across::centre: EXPECT_NEAR(seen.center().x(), sheet.center().x(), 1.5); break;
          case Press::Across::right: EXPECT_NEAR(sheet.right() - seen.right(), margin, 1.5); break;
        }
        switch (mark.down) {
          case Press::Down::upper: EXPECT_NEAR(seen.top() - sheet.top(), margin, 1.5); break;
          case Press::Down::centre: EXPECT_NEAR(seen.center().y(), sheet.center().y(), 1.5); break;
          case Press::Down::lower: EXPECT_NEAR(sheet.bottom() - seen.bottom(), margin, 1.5); break;
        }
      }
    }
  }
}

TEST_F(WatermarkViewTest, TurnsTheTextCounterClockwise) {
  node().setRotation(45);
  const QRect around = marked();
  const QImage image = picture();
  const auto inkedIn = [&](const QRect& part) {
    int count = 0;
    for (int y = part.top(); y <= part.bottom(); ++y)
      for (int x = part.left(); x <= part.right(); ++x) count += image.pixelColor(x, y).green() < 128 ? 1 : 0;
    return count;
  };
  const QSize third = around.size() / 3;
  EXPECT_GT(inkedIn({around.topRight() - QPoint(third.width() - 1, 0), third}), 50);
  EXPECT_GT(inkedIn({around.bottomLeft() - QPoint(0, third.height() - 1), third}), 50);
  EXPECT_EQ(inkedIn({around.topLeft(), third}), 0);
}

TEST_F(WatermarkViewTest, DrawsInTheColour) {
  EXPECT_GT(inked(Qt::red), 200);
  node().setColour(u"#0000FF");
  EXPECT_EQ(inked(Qt::red), 0);
  EXPECT_GT(inked(Qt::blue), 200);
}

TEST_F(WatermarkViewTest, IsOpaqueFromOneUpwards) {
  const QImage opaque = picture();
  node().setOpacity(100);
  EXPECT_EQ(picture(), opaque);
  node().setOpacity(0.5);
  EXPECT_EQ(inked(Qt::red), 0);
  EXPECT_GT(inked(QColor(255, 127, 127)) + inked(QColor(255, 128, 128)), 200);
  node().setOpacity(0);
  EXPECT_TRUE(marked().isNull());
}

TEST_F(WatermarkViewTest, LetsOverlappingLettersNotShowThroughEachOther) {
  // Synthetic bold strokes the outline, which overlaps the fill.
  node().setFontFace(u"Droid Sans Fallback");
  node().setBold(true);
  node().setOpacity(0.5);
  const QImage image = picture();
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (image.pixelColor(x, y).red() == 255) {
        EXPECT_GE(image.pixelColor(x, y).green(), 126) << x << ' ' << y;
      }
  EXPECT_FALSE(marked().isNull());
}

TEST_F(WatermarkViewTest, DrawsTheStyles) {
  const QImage regular = picture();
  node().setBold(true);
  const QImage bold = picture();
  EXPECT_NE(bold, regular);
  node().setItalic(true);
  EXPECT_NE(picture(), bold);
  node().setFontFace(u"DejaVu Serif");
  EXPECT_NE(picture(), bold);
}

TEST_F(WatermarkViewTest, DrawsTheEdgesAloneWhileTheButtonIsChosenThatTheLayoutNames) {
  const int whole = inked(Qt::red);
  shown.node<Refhost::RadioButton>(u"edge").choose();
  EXPECT_LT(inked(Qt::red), whole / 2);
  EXPECT_FALSE(marked().isNull());
  shown.node<Refhost::RadioButton>(u"solid").choose();
  EXPECT_EQ(inked(Qt::red), whole);
}

TEST_F(WatermarkViewTest, KeepsALargeTextOnTheSheet) {
  node().setFontSize(1e9);
  EXPECT_TRUE(sheet().toAlignedRect().contains(marked()));
  EXPECT_GT(marked().width(), sheet().width() * 0.8);
}

TEST_F(WatermarkViewTest, DrawsNothingInASizeThatIsNone) {
  for (const double size : {0.0, -12.0, std::numeric_limits<double>::infinity(), std::nan("")}) {
    node().setFontSize(size);
    EXPECT_TRUE(marked().isNull()) << size;
  }
}

TEST_F(WatermarkViewTest, SaysWhyATextCannotBeDrawn) {
  node().setText(std::u16string(100000, u'x'));
  EXPECT_TRUE(view().failure().contains("100000"));
  EXPECT_FALSE(picture().isNull());
  node().setText(u"x");
  EXPECT_TRUE(view().failure().isEmpty());
}

}  // namespace
}  // namespace Window
