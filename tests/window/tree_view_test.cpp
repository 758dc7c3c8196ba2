#include "tests/window/open_window.h"
#include "window/widgets/item_list.h"
#include "window/widgets/tree_view.h"

#include <gmock/gmock.h>

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

namespace Window {
namespace {

using Refhost::WidgetNode;
using testing::HasSubstr;

constexpr const char* mirror = "ePTKWPageMirrorImage";

class TreeViewTest : public testing::Test {
 protected:
  Testing::OpenWindow open;
};

TEST_F(TreeViewTest, ShowsEveryWidgetAsTheTreeSays) {
  int checked = 0;
  for (const Refhost::Layout& layout : open.window->preferences().gui()->tabs()) {
    QWidget& page = open.find<QWidget>(Formats::toUtf8(layout.root->WidgetNode::id()).c_str());
    Refhost::walk(*layout.root, [&](WidgetNode& node) {
      if (node.id().empty() || &node == layout.root.get()) return;
      ++checked;
      auto* widget = page.findChild<QWidget*>(toQt(node.id()));
      ASSERT_NE(widget, nullptr) << Formats::toUtf8(node.id());
      EXPECT_EQ(!widget->isHidden(), node.isVisible()) << Formats::toUtf8(node.id());
      EXPECT_EQ(widget->isEnabledTo(widget->parentWidget()), node.isEnabled()) << Formats::toUtf8(node.id());
      auto* box = dynamic_cast<Refhost::CheckBox*>(&node);
      if (box != nullptr) {
        EXPECT_EQ(dynamic_cast<QCheckBox&>(*widget).isChecked(), box->isChecked());
      }
    });
  }
  EXPECT_GT(checked, 25);
}

TEST_F(TreeViewTest, TellsTheTreeOfAClickAndShowsWhatBecomesOfIt) {
  open.find<QCheckBox>(mirror).click();
  EXPECT_TRUE(open.node<Refhost::CheckBox>(u"ePTKWPageMirrorImage").isChecked());
  EXPECT_TRUE(open.find<QCheckBox>(mirror).isChecked());
  EXPECT_EQ(open.value(u"MirrorImage"), "MirrorImage");
}

TEST_F(TreeViewTest, ShowsNoMarkThatTheTreeDoesNotHave) {
  // A disabled or hidden widget ignores all clicks.
  open.node<Refhost::CheckBox>(u"ePTKWPageMirrorImage").setVisible(false);
  open.find<QCheckBox>(mirror).click();
  EXPECT_FALSE(open.find<QCheckBox>(mirror).isChecked());
}

TEST_F(TreeViewTest, FollowsEachChangeOfTheTree) {
  auto& box = open.find<QCheckBox>(mirror);
  auto& node = open.node<Refhost::CheckBox>(u"ePTKWPageMirrorImage");
  node.setChecked(true);
  EXPECT_TRUE(box.isChecked());
  node.setEnabled(false);
  EXPECT_FALSE(box.isEnabled());
  node.setLabel(u"R&D");
  EXPECT_THAT(box.text().toStdString(), HasSubstr("R&&D"));
  node.setVisible(false);
  EXPECT_TRUE(box.isHidden());
}

TEST_F(TreeViewTest, ResolvesStringTableReferences) {
  open.node<Refhost::CheckBox>(u"ePTKWPageMirrorImage").setLabel(u"$IDS_NONE;");
  EXPECT_THAT(open.find<QCheckBox>(mirror).text().remove('&').toStdString(), HasSubstr("None"));
}

TEST_F(TreeViewTest, AnAccessKeyClicks) {
  QApplication::setActiveWindow(open.window.get());
  auto& box = open.find<QCheckBox>(mirror);
  box.setFocus();
  Testing::press(box, Qt::Key_I, Qt::AltModifier);
  Testing::waitUntil([&] { return open.value(u"MirrorImage") == "MirrorImage"; });
}

TEST_F(TreeViewTest, TheSpaceKeyClicks) {
  Testing::press(open.find<QCheckBox>(mirror), Qt::Key_Space);
  EXPECT_EQ(open.value(u"MirrorImage"), "MirrorImage");
}

TEST_F(TreeViewTest, ALabelLeadsToItsControl) {
  EXPECT_EQ(open.find<QWidget>("lbl_DevPaperSize").findChild<QLabel*>()->buddy(),
            &open.find<QComboBox>("cmb_DevPaperSize"));
}

TEST_F(TreeViewTest, AChosenEntryOfAComboBoxReachesTheModel) {
  auto& combo = open.find<QComboBox>("cmb_DevPaperSize");
  Testing::press(combo, Qt::Key_Down);
  EXPECT_EQ(open.value(u"PaperSize"), "A3");
  EXPECT_EQ(combo.currentIndex(), 1);
}

TEST_F(TreeViewTest, AListShowsItsItemsWithTheirColours) {
  auto& node = open.node<Refhost::ListBox>(u"lst_selectedWatermark");
  auto& list = open.find<ItemList>("lst_selectedWatermark");
  const auto data = node.data();
  while (data->count() > 0) data->remove(0);
  data->append(u"$IDS_NONE;", u"0");
  data->append(u"Draft", u"1")->setColour(u"#FF0000");
  node.setEnabled(true);
  node.setData(data);
  ASSERT_EQ(list.count(), 2);
  EXPECT_EQ(list.item(0)->text(), "None");
  EXPECT_EQ(list.item(1)->foreground().color(), QColor("#FF0000"));
  EXPECT_EQ(list.currentRow(), node.selection());
}

TEST_F(TreeViewTest, ARowOfAListIsChosenByTheKeyboard) {
  auto& node = open.node<Refhost::ListBox>(u"lst_selectedWatermark");
  auto& list = open.find<ItemList>("lst_selectedWatermark");
  const auto data = node.data();
  while (data->count() > 0) data->remove(0);
  data->append(u"a", u"0");
  data->append(u"b", u"1");
  node.setEnabled(true);
  node.setData(data);
  node.select(0);
  Testing::press(list, Qt::Key_Down);
  Testing::waitUntil([&] { return node.selection() == 1; });
}

TEST_F(TreeViewTest, TheCurrentRowOfAListIsChosenAgainByAClickAndByTheKeyboard) {
  auto& list = open.find<ItemList>("lst_selectedWatermark");
  const auto turnOn = [this] { open.window->preferences().set(u"Watermark", u"Watermark"); };
  const auto isOff = [this] { return open.value(u"Watermark") == "None"; };
  ASSERT_EQ(list.currentRow(), 0);
  turnOn();
  QKeyEvent space(QEvent::KeyPress, Qt::Key_Space, {}, " ");
  QCoreApplication::sendEvent(&list, &space);
  Testing::waitUntil(isOff);
  turnOn();
  Testing::click(*list.viewport(), list.visualItemRect(list.item(0)).center());
  Testing::waitUntil(isOff);
}

TEST_F(TreeViewTest, AnotherRowOfAListIsChosenOnceByAClick) {
  auto& list = open.find<ItemList>("lst_selectedWatermark");
  int choices = 0;
  open.window->preferences().trace().listen([&choices](const Refhost::TraceEvent& event) {
    if (event.op == "transition") ++choices;
  });
  Testing::click(*list.viewport(), list.visualItemRect(list.item(1)).center());
  Testing::waitUntil([this] { return open.value(u"Watermark") == "Watermark"; });
  open.settle();
  EXPECT_EQ(choices, 1);
}

TEST_F(TreeViewTest, AGroupWithNothingToSeeIsNotShown) {
  auto& box = open.find<QCheckBox>(mirror);
  QWidget* section = qobject_cast<QGroupBox*>(box.parentWidget())->parentWidget();
  EXPECT_FALSE(section->isHidden());
  for (const auto* id :
       {u"ePTKWPageMirrorImage", u"ePTKWPageNegativeImage", u"chk_EffRot180Deg", u"chk_EffRot180DegForA3LD"})
    open.node<Refhost::CheckBox>(id).setVisible(false);
  EXPECT_TRUE(section->isHidden());
  open.node<Refhost::CheckBox>(u"chk_EffRot180Deg").setVisible(true);
  EXPECT_FALSE(section->isHidden());
}

TEST_F(TreeViewTest, ARowWithNothingToSeeIsNotShown) {
  QWidget& row = *open.find<QWidget>("lbl_DevNin1").parentWidget();
  EXPECT_FALSE(row.isHidden());
  open.node<Refhost::Label>(u"lbl_DevNin1").setVisible(false);
  EXPECT_FALSE(row.isHidden());
  open.node<Refhost::ComboBox>(u"cmb_DevNin1").setVisible(false);
  EXPECT_TRUE(row.isHidden());
  open.node<Refhost::Label>(u"lbl_DevNin1").setVisible(true);
  EXPECT_FALSE(row.isHidden());
}

TEST_F(TreeViewTest, RowsAndSharedColumnsAreLinedUp) {
  const auto left = [&](const char* name) {
    auto& widget = open.find<QWidget>(name);
    return widget.mapTo(open.window.get(), QPoint()).x();
  };
  const int before = left("but_EffDet");
  open.node<Refhost::Button>(u"but_EffDet").setLabel(u"Wider than its column");
  open.settle();
  EXPECT_LT(left("but_EffDet"), before);
  EXPECT_EQ(left("btn_WMAdd"), left("but_EffDet"));
  open.selectTab("pro_tab_device");
  open.node<Refhost::Label>(u"lbl_DevPaperSize").setLabel(u"A label wider than its column is");
  open.settle();
  EXPECT_EQ(left("cmb_DevPaperSize"), left("cmb_DevNin1"));
  EXPECT_EQ(left("cmb_DevPaperSize"), left("cmb_DevColourMode"));
}

TEST_F(TreeViewTest, TouchesNothingOfATreeThatItForgot) {
  auto& node = open.node<Refhost::CheckBox>(u"ePTKWPageMirrorImage");
  QWidget parent;
  const Texts texts(open.window->preferences().strings());
  TreeView view(node, {Texts(open.window->preferences().strings()), open.window->preferences().chrome(), {}}, &parent);
  view.forget();
  node.setChecked(true);
  view.update(node);
  EXPECT_FALSE(dynamic_cast<QCheckBox&>(*view.widget()).isChecked());
}

}  // namespace
}  // namespace Window
