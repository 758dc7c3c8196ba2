// Radio buttons, scroll bars, colour pickers and lists of faces in the window.
#include "host/widgets/preview.h"
#include "tests/window/shown_layout.h"

#include <gmock/gmock.h>

#include <QAbstractItemDelegate>
#include <QAbstractItemView>
#include <QColorDialog>
#include <QComboBox>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QStyledItemDelegate>

namespace Window {
namespace {

using testing::ElementsAre;

class RadioButtonsTest : public testing::Test {
 protected:
  QRadioButton& button(const char* id) { return shown.find<QRadioButton>(id); }
  Refhost::RadioButton& node(std::u16string_view id) { return shown.node<Refhost::RadioButton>(id); }
  std::vector<bool> marks() { return {button("a").isChecked(), button("b").isChecked(), button("c").isChecked()}; }

  Testing::ShownLayout shown{
      "<radiogroup><hbox><radio id='a' label='A' selected='true'/><radio id='b' label='B' accesskey='B'/></hbox>"
      "<radio id='c' label='C'/></radiogroup><textbox id='other'/>"};
};

TEST_F(RadioButtonsTest, ShowTheOneThatIsChosen) {
  EXPECT_THAT(marks(), ElementsAre(true, false, false));
  node(u"c").setChecked(true);
  EXPECT_THAT(marks(), ElementsAre(false, false, true));
  node(u"c").setChecked(false);
  EXPECT_THAT(marks(), ElementsAre(false, false, false));
}

TEST_F(RadioButtonsTest, TellTheTreeOfAClick) {
  button("b").click();
  EXPECT_TRUE(node(u"b").isChecked());
  EXPECT_FALSE(node(u"a").isChecked());
  EXPECT_THAT(marks(), ElementsAre(false, true, false));
}

TEST_F(RadioButtonsTest, AreOneToTheArrowKeysWhereverTheyStand) {
  button("a").setFocus();
  Testing::press(button("a"), Qt::Key_Right);
  EXPECT_TRUE(node(u"b").isChecked());
  Testing::press(button("b"), Qt::Key_Down);
  EXPECT_TRUE(node(u"c").isChecked());
  EXPECT_TRUE(button("c").hasFocus());
}

TEST_F(RadioButtonsTest, AreOneToTheTabulator) {
  button("a").setFocus();
  Testing::press(button("a"), Qt::Key_Tab);
  EXPECT_TRUE(shown.find<QWidget>("other").hasFocus());
}

TEST_F(RadioButtonsTest, ObeyTheirAccessKeys) {
  button("a").setFocus();
  Testing::press(button("a"), Qt::Key_B, Qt::AltModifier);
  Testing::waitUntil([&] { return node(u"b").isChecked(); });
}

class ScrollBarsTest : public testing::Test {
 protected:
  QSlider& slider() { return shown.find<QSlider>("angle"); }
  Refhost::ScrollBar& bar() { return shown.node<Refhost::ScrollBar>(u"angle"); }

  Testing::ShownLayout shown{"<groupbox><caption label='Turn'/><scrollbar id='angle' maxpos='180' curpos='90'/>"
                             "<scrollbar id='named' label='Size' orient='vertical'/></groupbox>"};
};

TEST_F(ScrollBarsTest, ShowThePositionAndTheRange) {
  EXPECT_EQ(slider().minimum(), 0);
  EXPECT_EQ(slider().maximum(), 180);
  EXPECT_EQ(slider().value(), 90);
  bar().setPosition(30);
  EXPECT_EQ(slider().value(), 30);
}

TEST_F(ScrollBarsTest, LieAsTheLayoutSays) {
  EXPECT_EQ(slider().orientation(), Qt::Horizontal);
  EXPECT_EQ(shown.find<QSlider>("named").orientation(), Qt::Vertical);
}

TEST_F(ScrollBarsTest, MoveByKeys) {
  Testing::press(slider(), Qt::Key_Right);
  EXPECT_EQ(bar().position(), 91);
  Testing::press(slider(), Qt::Key_PageDown);
  EXPECT_EQ(bar().position(), 73);
  Testing::press(slider(), Qt::Key_End);
  EXPECT_EQ(bar().position(), 180);
}

TEST_F(ScrollBarsTest, ShowWhatAHandlerMakesOfAMove) {
  shown.follow<Kiln::XUL::EventArg<Kiln::XUL::ScrollBar>>(bar().scrollSignal(), [this](auto) {
    if (bar().position() == 91) bar().setPosition(10);
  });
  Testing::press(slider(), Qt::Key_Right);
  EXPECT_EQ(slider().value(), 10);
}

TEST_F(ScrollBarsTest, AreNamedForReaders) {
  EXPECT_EQ(slider().accessibleName(), "Turn");
  EXPECT_EQ(shown.find<QSlider>("named").accessibleName(), "Size");
}

class ColourPickerTest : public testing::Test {
 protected:
  QPushButton& button() { return shown.find<QPushButton>("more"); }

  QColorDialog& openDialog() {
    button().click();
    return *button().findChild<QColorDialog*>();
  }

  QColor swatch() {
    const QImage image = button().icon().pixmap(button().iconSize()).toImage();
    return image.pixelColor(image.rect().center());
  }

  Testing::ShownLayout shown{
      "<menulist id='colours'><menuitem label='Red' value='#FF0000'/>"
      "<menuitem label='Own' value='custom'/><menuitem label='Blue' value='#0000FF'/></menulist>"
      "<colorpicker id='more' label='More' accesskey='M' list='colours' tooltiptext='Any colour'/>"};
};

TEST_F(ColourPickerTest, TellsTheColourThatIsPicked) {
  std::vector<std::uint32_t> picked;
  auto& node = shown.node<Refhost::ColorPicker>(u"more");
  shown.follow<Kiln::XUL::EventArg<Kiln::XUL::ColorPicker>>(
      node.changeSignal(), [&](auto event) { picked.push_back(event.source().colour()); });
  QColorDialog& dialog = openDialog();
  dialog.setCurrentColor(QColor(255, 0, 128));
  dialog.accept();
  EXPECT_THAT(picked, ElementsAre(0xFF0080u));
}

TEST_F(ColourPickerTest, TellsNothingWhenItIsCancelled) {
  auto& node = shown.node<Refhost::ColorPicker>(u"more");
  QColorDialog& dialog = openDialog();
  dialog.setCurrentColor(QColor(255, 0, 128));
  dialog.reject();
  EXPECT_EQ(node.colour(), 0u);
}

TEST_F(ColourPickerTest, StartsFromTheColourOfItsList) {
  EXPECT_EQ(swatch(), QColor(Qt::red));
  shown.node<Refhost::ComboBox>(u"colours").select(2);
  EXPECT_EQ(swatch(), QColor(Qt::blue));
  EXPECT_EQ(openDialog().currentColor(), QColor(Qt::blue));
}

TEST_F(ColourPickerTest, OpensByTheKeyboard) {
  button().setFocus();
  Testing::press(button(), Qt::Key_Space);
  EXPECT_NE(button().findChild<QColorDialog*>(), nullptr);
}

TEST(SymbolButtons, AreReadByTheirTipsAndAsWideAsTheLayoutSays) {
  Testing::ShownLayout shown{"<hbox><button id='up' label='↑' width='40' tooltiptext='Top'/>"
                             "<button id='words' label='Restore everything' width='40'/></hbox>"};
  auto& up = shown.find<QPushButton>("up");
  EXPECT_EQ(up.accessibleName(), "Top");
  EXPECT_EQ(up.width(), 40);
  auto& words = shown.find<QPushButton>("words");
  EXPECT_GT(words.width(), words.fontMetrics().horizontalAdvance(words.text()));
}

class FacesTest : public testing::Test {
 protected:
  QComboBox& combo() { return shown.find<QComboBox>("faces"); }

  void fill(const QStringList& names) {
    auto& node = shown.node<Refhost::ComboBox>(u"faces");
    for (const QString& name : names) node.data()->append(toWide(name), toWide(name));
    node.setData(node.data());
  }

  // A picture of that row as a delegate paints it.
  QImage painted(const QAbstractItemDelegate& delegate, int row) {
    QStyleOptionViewItem option;
    option.font = combo().font();
    option.rect = QRect(0, 0, 240, 30);
    QImage image(option.rect.size(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    delegate.paint(&painter, option, combo().model()->index(row, 0));
    return image;
  }

  bool isInItsOwnFace(int row) { return painted(*combo().itemDelegate(), row) != painted(QStyledItemDelegate(), row); }

  Testing::ShownLayout shown{"<menulist id='faces' fontpreview='true'/>"};
};

TEST_F(FacesTest, AreNamedEachInItsOwn) {
  fill({"DejaVu Serif", "DejaVu Sans Mono", "No such face"});
  EXPECT_TRUE(isInItsOwnFace(0));
  EXPECT_TRUE(isInItsOwnFace(1));
  EXPECT_FALSE(isInItsOwnFace(2));
}

TEST_F(FacesTest, ThatCannotWriteTheirNamesAreNamedInTheListsOwn) {
  fill({QString::fromUtf8("DejaVu 漢字")});
  EXPECT_FALSE(isInItsOwnFace(0));
}

TEST(FaceThatIsNotListed, IsNamedOnALineAndInItsOrder) {
  Testing::ShownLayout shown{"<wmpreview id='page'/><menulist id='faces' preview='page'/>"};
  shown.node<Refhost::WatermarkPreview>(u"page").setFontFace(u"a\nb\u202Ec");
  EXPECT_EQ(shown.find<QComboBox>("faces").placeholderText(), QString::fromUtf8("a b\uFFFDc"));
}

// Counts how often an item is measured or painted, which may load its face.
class CountingDelegate : public QAbstractItemDelegate {
 public:
  explicit CountingDelegate(const QAbstractItemDelegate& itemDelegate) : delegate(itemDelegate) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    ++painted;
    delegate.paint(painter, option, index);
  }
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    ++measured;
    return delegate.sizeHint(option, index);
  }

  mutable int painted = 0;
  mutable int measured = 0;

 private:
  const QAbstractItemDelegate& delegate;
};

TEST_F(FacesTest, AreLoadedOnlyWhereTheyShow) {
  QStringList names;
  for (int i = 0; i < 1000; ++i) names << QString("Face %1").arg(i);
  fill(names);
  QAbstractItemDelegate* const own = combo().itemDelegate();
  CountingDelegate counting(*own);
  combo().view()->setItemDelegate(&counting);
  combo().showPopup();
  QCoreApplication::processEvents();
  EXPECT_GT(counting.painted, 0);
  EXPECT_LT(counting.painted, 200);
  EXPECT_LT(counting.measured, 200);
  EXPECT_EQ(combo().count(), 1000);
  combo().hidePopup();
  combo().view()->setItemDelegate(own);
}

}  // namespace
}  // namespace Window
