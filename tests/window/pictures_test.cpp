// Pictures in the window: display, drops, and context menus.
#include "host/reference_host.h"
#include "tests/window/shown_layout.h"
#include "window/widgets/contrast_style.h"
#include "window/widgets/images.h"
#include "window/widgets/item_list.h"
#include "window/widgets/picture_box.h"

#include <gmock/gmock.h>

#include <QBuffer>
#include <QContextMenuEvent>
#include <QDrag>
#include <QGroupBox>
#include <QMenu>
#include <QProgressBar>
#include <QRadioButton>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QTabWidget>
#include <QTimer>

namespace Window {
namespace {

using testing::ElementsAre;

std::string bitmap(int width, int height, QColor colour) {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(colour);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  image.save(&buffer, "BMP");
  return bytes.toStdString();
}

class PicturesTest : public testing::Test {
 protected:
  PicturesTest() {
    for (const char16_t* id : {u"slot", u"full"}) {
      auto& node = shown.node<Refhost::ImageBox>(id);
      shown.follow<Kiln::WString>(node.dropSignal(), [this, id](Kiln::WString value) { note(id, u" << ", value); });
      shown.follow<Kiln::WString>(node.menuSignal(), [this, id](Kiln::WString text) { note(id, u": ", text); });
    }
    shown.pictures[u"blue"] = u"chrome://test/content/blue.bmp";
    auto& list = shown.node<Refhost::ListBox>(u"list");
    list.data()->append(u"Letterhead", u"a");
    list.data()->append(u"Terms", u"C:\\\\b\\xD800.pdf");
    list.setData(list.data());
  }

  void note(std::u16string id, const char16_t* what, const Kiln::WString& text) {
    happened.push_back(Formats::toUtf8(id + what + text.str()));
  }

  Kiln::SmartPtr<Refhost::Image> bitmapImage(const char* name) const {
    const QString file = shown.folder.filePath(QString("test/content/") + name);
    return Refhost::make<Refhost::Image>(u"a bitmap", std::filesystem::path(file.toStdString()));
  }

  PictureBox& box(const char* id) { return shown.find<PictureBox>(id); }
  ItemList& list() { return shown.find<ItemList>("list"); }

  // The data of dragging that row.
  std::unique_ptr<QMimeData> dragged(int row) {
    return std::unique_ptr<QMimeData>(list().model()->mimeData({list().model()->index(row, 0)}));
  }

  bool drop(int row, const char* id) { return Testing::drop(box(id), *dragged(row), box(id).rect().center()); }

  QColor colourAt(const char* id, QPoint place) { return box(id).grab().toImage().pixelColor(place); }

  // The labels of the open menu, which is then closed.
  QStringList menuLabels(const char* id) {
    QStringList labels;
    auto* menu = box(id).findChild<QMenu*>();
    if (menu == nullptr || !menu->isVisible()) return labels;
    for (const QAction* action : menu->actions()) labels << action->text();
    menu->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return labels;
  }

  Testing::ShownLayout shown{
      "<listbox id='list' draggable='true'/><listbox id='fixed'/><listbox id='pages' iconsize='60'/>"
      "<hbox align='start'><image id='slot' width='60' height='60' droptarget='true'><menupopup>"
      "<menuitem value='clear' label='Clear it'/><menuitem value='other' label='Other'/></menupopup></image>"
      "<image id='full' width='60' height='60' droptarget='true' src='chrome://test/content/blue.bmp'/>"
      "<image id='plain' width='60' height='60'/></hbox>",
      {{"red.bmp", bitmap(40, 20, Qt::red)},
       {"white.bmp", bitmap(40, 40, Qt::white)},
       {"blue.bmp", bitmap(10, 10, Qt::blue)}}};
  std::vector<std::string> happened;
};

TEST_F(PicturesTest, ShowAPictureByItsFileAddressOrRegisteredName) {
  const QPoint middle(30, 30);
  auto& node = shown.node<Refhost::ImageBox>(u"plain");
  node.setResource(u"blue");
  EXPECT_EQ(colourAt("plain", middle), QColor(Qt::blue));
  node.setImage(bitmapImage("red.bmp"));
  EXPECT_EQ(colourAt("plain", middle), QColor(Qt::red));
}

TEST_F(PicturesTest, FitTheirRoomInTheirProportions) {
  shown.node<Refhost::ImageBox>(u"plain").setImage(bitmapImage("red.bmp"));
  EXPECT_EQ(box("plain").size(), QSize(60, 60));
  EXPECT_EQ(colourAt("plain", {2, 30}), QColor(Qt::red));
  EXPECT_EQ(colourAt("plain", {57, 30}), QColor(Qt::red));
  EXPECT_NE(colourAt("plain", {30, 12}), QColor(Qt::red));
  EXPECT_NE(colourAt("plain", {30, 47}), QColor(Qt::red));
}

TEST_F(PicturesTest, OfPagesHaveAnEdge) {
  auto& node = shown.node<Refhost::ImageBox>(u"plain");
  node.setImage(bitmapImage("white.bmp"));
  EXPECT_EQ(colourAt("plain", {0, 0}), pageEdge);
  EXPECT_EQ(colourAt("plain", {30, 30}), QColor(Qt::white));
  node.setImage({});
  node.setResource(u"blue");
  EXPECT_EQ(colourAt("plain", {0, 0}), QColor(Qt::blue));
}

TEST_F(PicturesTest, OfPagesInAListHaveTheItemsColourAsTheirEdgeWhileItIsSelected) {
  auto& node = shown.node<Refhost::ListBox>(u"pages");
  const auto item = node.data()->append(u"Terms", u"c");
  item->setImage(bitmapImage("white.bmp"));
  item->setColour(u"#FF0000");
  node.setData(node.data());
  const QListWidgetItem& row = *shown.find<ItemList>("pages").item(0);
  const auto cornerIn = [&](QIcon::Mode mode) { return row.icon().pixmap({60, 60}, mode).toImage().pixelColor(0, 0); };
  EXPECT_EQ(cornerIn(QIcon::Normal), pageEdge);
  EXPECT_EQ(cornerIn(QIcon::Selected), QColor("#FF0000"));
  EXPECT_FALSE(row.data(Qt::ForegroundRole).isValid());
}

TEST(Colours, CanBeReadOnLightAndDark) {
  for (const char* background : {"#FFFFFF", "#000000", "#232629", "#EFF0F1"})
    for (const char* colour : {"#000000", "#FFFFFF", "#FF0000", "#0000FF", "#FFFF00", "#808080"})
      EXPECT_GE(contrast(legible(QColor(colour), QColor(background)), QColor(background)), 3)
          << colour << " on " << background;
  EXPECT_EQ(legible(QColor("#0000FF"), QColor("#FFFFFF")), QColor("#0000FF"));
}

TEST(Swatches, HaveAnEdgeThatIsSeenOnLightAndDark) {
  for (const auto& [window, text] : {std::pair(Qt::white, Qt::black), std::pair(Qt::black, Qt::white)}) {
    QWidget widget;
    QPalette palette;
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, text);
    widget.setPalette(palette);
    const QImage drawn = swatch(window, {15, 15}, widget).toImage();
    EXPECT_GT(contrast(drawn.pixelColor(0, 7), window), 1.6);
    EXPECT_EQ(drawn.pixelColor(7, 7), QColor(window));
  }
}

// The edges of what is pressed, chosen and filled in, which styles draw darker than the window.
TEST(Edges, AreSeenOnBlack) {
  useContrastStyle();
  QCheckBox box;
  QRadioButton radio;
  QSpinBox number;
  number.setSpecialValueText(" ");  // no digits
  QListWidget list;
  QSlider slider;
  for (QWidget* edged : std::initializer_list<QWidget*>{&box, &radio, &number, &list, &slider}) {
    QPalette black(Qt::white, Qt::black, Qt::black, Qt::black, Qt::black, Qt::white, Qt::white, Qt::black, Qt::black);
    edged->setPalette(black);
    edged->resize(edged->sizeHint());
    const QImage drawn = edged->grab().toImage();
    double best = 1;
    for (int x = 0; x < drawn.width(); ++x)
      for (int y = 0; y < drawn.height(); ++y) best = std::max(best, contrast(drawn.pixelColor(x, y), Qt::black));
    EXPECT_GT(best, 7) << edged->metaObject()->className();
  }
}

// The greatest contrast of the picture's dots to the colour.
double bestContrast(const QImage& drawn, const QColor& colour) {
  double best = 1;
  for (int x = 0; x < drawn.width(); ++x)
    for (int y = 0; y < drawn.height(); ++y) best = std::max(best, contrast(drawn.pixelColor(x, y), colour));
  return best;
}

QPalette darkPalette(const QColor& window) {
  QPalette dark(Qt::white, window, window, window, window, Qt::white, Qt::white, window, window);
  dark.setColor(QPalette::Disabled, QPalette::WindowText, Qt::gray);
  return dark;
}

TEST(Edges, AreSeenOnDarkColours) {
  useContrastStyle();
  QCheckBox box;
  QRadioButton radio;
  QGroupBox group;
  group.setMinimumSize(40, 40);
  QLineEdit line;
  QPushButton push;
  QTabWidget tabs;
  tabs.addTab(new QWidget(&tabs), " ");
  tabs.addTab(new QWidget(&tabs), " ");
  QScrollBar bar;
  QProgressBar progress;
  QMenu menu;
  menu.addAction(" ");
  menu.addSeparator();
  for (const QColor& window : {QColor("#2a2e32"), QColor(Qt::black)})
    for (QWidget* edged : std::initializer_list<QWidget*>{&box, &radio, &group, &line, &push, &tabs, tabs.tabBar(),
                                                          &bar, &progress, &menu}) {
      edged->setPalette(darkPalette(window));
      edged->resize(edged->sizeHint());
      EXPECT_GE(bestContrast(edged->grab().toImage(), window), 3)
          << edged->metaObject()->className() << " on " << window.name().toStdString();
    }
}

TEST(Edges, TellWhatIsDisabledFromWhatIsEnabled) {
  useContrastStyle();
  QCheckBox box;
  const QColor window("#2a2e32");
  box.setPalette(darkPalette(window));
  const double enabled = bestContrast(box.grab().toImage(), window);
  box.setEnabled(false);
  EXPECT_LT(bestContrast(box.grab().toImage(), window), enabled - 1);
}

TEST(Edges, OfTheDefaultButtonAreHighlighted) {
  useContrastStyle();
  QPushButton button;
  QPalette palette = darkPalette(Qt::black);
  palette.setColor(QPalette::Highlight, Qt::yellow);
  button.setPalette(palette);
  const auto corner = [&button] { return button.grab().toImage().pixelColor(button.width() / 2, 0); };
  EXPECT_EQ(corner(), QColor(Qt::white));
  button.setDefault(true);
  EXPECT_EQ(corner(), QColor(Qt::yellow));
  button.setEnabled(false);
  EXPECT_NE(corner(), QColor(Qt::yellow));
}

TEST(Menus, ShowShortcutsFromLeftToRightInEveryLanguage) {
  useContrastStyle();
  QMenu menu;
  QAction* entry = menu.addAction(" ");
  entry->setShortcut(Qt::CTRL | Qt::Key_Plus);
  menu.setLayoutDirection(Qt::RightToLeft);
  menu.resize(menu.sizeHint());
  const QImage shown = menu.grab().toImage();
  QMenu reversed;
  reversed.setLayoutDirection(Qt::RightToLeft);
  reversed.addAction(QStringLiteral(" \t++Ctrl"));
  reversed.resize(menu.size());
  EXPECT_NE(reversed.grab().toImage(), shown);
  reversed.actions().constFirst()->setText(QStringLiteral(" \t\u2066Ctrl++\u2069"));
  EXPECT_EQ(reversed.grab().toImage(), shown);
}

TEST_F(PicturesTest, ThatAreNoBitmapsShowNothing) {
  auto huge = bitmap(4, 4, Qt::red);
  huge.replace(18, 8, std::string("\xFF\xFF\xFF\x7F\xFF\xFF\xFF\x7F", 8));
  shown.write("huge.bmp", huge);
  shown.write("cut.bmp", bitmap(40, 20, Qt::red).substr(0, 30));
  shown.write("text.bmp", "no picture");
  for (const char* name : {"huge.bmp", "cut.bmp", "text.bmp", "missing.bmp"}) {
    shown.node<Refhost::ImageBox>(u"plain").setImage(bitmapImage(name));
    EXPECT_TRUE(box("plain").picture().isNull()) << name;
  }
}

TEST_F(PicturesTest, TakeAnEntryOfAListThatIsDroppedOnThem) {
  EXPECT_TRUE(drop(0, "slot"));
  EXPECT_THAT(happened, ElementsAre("slot << a"));
}

TEST_F(PicturesTest, TakeADropWhenTheyShowSomethingAlready) {
  EXPECT_FALSE(box("full").picture().isNull());
  EXPECT_TRUE(drop(0, "full"));
  EXPECT_TRUE(drop(0, "full"));
  EXPECT_THAT(happened, ElementsAre("full << a", "full << a"));
}

TEST_F(PicturesTest, TakeNoDropsUnlessTheLayoutSaysSo) {
  EXPECT_FALSE(drop(0, "plain"));
  QMimeData text;
  text.setText("a");
  EXPECT_FALSE(Testing::drop(box("slot"), text, {5, 5}));
  shown.node<Refhost::ImageBox>(u"slot").setEnabled(false);
  EXPECT_FALSE(drop(0, "slot"));
  EXPECT_THAT(happened, ElementsAre());
}

// As the dialogs of plug-ins do, which show a list again when another item is chosen.
TEST_F(PicturesTest, AreDraggedThoughTheyWereNotSelected) {
  QApplication::setActiveWindow(&shown.window);
  list().setCurrentRow(0);
  QCoreApplication::processEvents();
  const QPoint place = list().visualItemRect(list().item(1)).center();
  QWidget& view = *list().viewport();
  const auto send = [&view](QEvent::Type type, const QPoint& at) {
    QMouseEvent event(type, at, view.mapToGlobal(at), type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                      Qt::LeftButton, {});
    QCoreApplication::sendEvent(&view, &event);
  };
  send(QEvent::MouseButtonPress, place);
  QCoreApplication::processEvents();  // the choice
  const int far = QApplication::startDragDistance() + 5;
  QTimer::singleShot(0, [] { QDrag::cancel(); });
  send(QEvent::MouseMove, place + QPoint(far, 0));
  send(QEvent::MouseMove, place + QPoint(2 * far, 0));
  const auto* drag = list().findChild<QDrag*>();
  ASSERT_NE(drag, nullptr);
  EXPECT_EQ(toWide(valueIn(*drag->mimeData())), u"C:\\\\b\\xD800.pdf");
  EXPECT_EQ(shown.node<Refhost::ListBox>(u"list").selectedIndex(), 1);
}

TEST_F(PicturesTest, AreClearedByDelete) {
  Testing::press(box("slot"), Qt::Key_Delete);
  EXPECT_THAT(happened, ElementsAre("slot: clear"));
  Testing::press(box("full"), Qt::Key_Delete);
  EXPECT_THAT(happened, ElementsAre("slot: clear"));
}

TEST_F(PicturesTest, CarryTheValueAsItIs) { EXPECT_EQ(toWide(valueIn(*dragged(1))), u"C:\\\\b\\xD800.pdf"); }

TEST_F(PicturesTest, ShowWhereADropWouldGo) {
  const QImage before = box("slot").grab().toImage();
  const auto data = dragged(0);
  QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, data.get(), Qt::LeftButton, {});
  QCoreApplication::sendEvent(&box("slot"), &enter);
  EXPECT_NE(box("slot").grab().toImage(), before);
  QDragLeaveEvent leave;
  QCoreApplication::sendEvent(&box("slot"), &leave);
  EXPECT_EQ(box("slot").grab().toImage(), before);
}

TEST_F(PicturesTest, OnlyListsThatSaySoAreDragged) {
  EXPECT_TRUE(list().dragEnabled());
  EXPECT_FALSE(shown.find<ItemList>("fixed").dragEnabled());
}

TEST_F(PicturesTest, OpenTheirMenuByMouseAndByKeys) {
  const QStringList both{"Clear it", "Other"};
  box("slot").setFocus();
  QContextMenuEvent byMouse(QContextMenuEvent::Mouse, {5, 5}, box("slot").mapToGlobal(QPoint(5, 5)));
  QCoreApplication::sendEvent(&box("slot"), &byMouse);
  EXPECT_EQ(menuLabels("slot"), both);
  Testing::press(box("slot"), Qt::Key_Menu);
  EXPECT_EQ(menuLabels("slot"), both);
  Testing::press(box("slot"), Qt::Key_F10, Qt::ShiftModifier);
  EXPECT_EQ(menuLabels("slot"), both);
  Testing::press(box("slot"), Qt::Key_F10);
  EXPECT_EQ(menuLabels("slot"), QStringList());
  Testing::press(box("full"), Qt::Key_Menu);
  EXPECT_EQ(menuLabels("full"), QStringList());
}

TEST_F(PicturesTest, TellWhatIsChosenInTheirMenu) {
  Testing::press(box("slot"), Qt::Key_Menu);
  box("slot").findChild<QMenu*>()->actions()[1]->trigger();
  EXPECT_THAT(happened, ElementsAre("slot: other"));
  box("slot").findChild<QMenu*>()->close();
}

TEST_F(PicturesTest, TakeTheFocusWhereAKeyDoesSomething) {
  EXPECT_EQ(box("slot").focusPolicy(), Qt::StrongFocus);
  EXPECT_EQ(box("plain").focusPolicy(), Qt::NoFocus);
}

}  // namespace
}  // namespace Window
