// Double-click, Delete and the context menu in the lists of watermarks and overlays, and the questions that they open.
#include "tests/window/open_window.h"
#include "window/dialogs/dialog_window.h"

#include <gmock/gmock.h>

#include <QContextMenuEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>

namespace Window {
namespace {

class ListInputTest : public testing::Test {
 protected:
  QListWidget& list() { return open.find<QListWidget>("lst_selectedWatermark"); }

  int rowOf(const QString& name) {
    const auto found = list().findItems(name, Qt::MatchExactly);
    return found.isEmpty() ? -1 : list().row(found.front());
  }

  QPoint placeOf(const QString& name) { return list().visualItemRect(list().item(rowOf(name))).center(); }

  void doubleClick(const QString& name) {
    QWidget& surface = *list().viewport();
    const QPointF place = placeOf(name);
    Testing::click(surface, place.toPoint());
    QMouseEvent twice(QEvent::MouseButtonDblClick, place, surface.mapToGlobal(place), Qt::LeftButton, Qt::LeftButton,
                      {});
    QCoreApplication::sendEvent(&surface, &twice);
    QCoreApplication::processEvents();
  }

  void select(const QString& name) {
    Testing::click(*list().viewport(), placeOf(name));
    QCoreApplication::processEvents();
  }

  // Operates the next dialog, and closes it.
  void inDialog(const std::function<void(DialogWindow&)>& operate) {
    wasShown = false;
    timer.callOnTimeout([this, operate] {
      auto* dialog = qobject_cast<DialogWindow*>(QApplication::activeModalWidget());
      if (dialog == nullptr || std::exchange(wasShown, true)) return;
      operate(*dialog);
      if (dialog->isVisible()) dialog->reject();
    });
    timer.start(5);
  }

  // Opens the list's context menu; null when there is none.
  QMenu* menuOf(QWidget& widget, QPoint place) {
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, widget.mapToGlobal(place));
    QCoreApplication::sendEvent(&widget, &event);
    QCoreApplication::processEvents();
    return open.window->findChild<QMenu*>("list_menu");
  }

  Testing::OpenWindow open;
  QTimer timer;
  bool wasShown = false;
};

TEST_F(ListInputTest, DoubleClickEditsTheWatermark) {
  QString text;
  inDialog([&](DialogWindow& dialog) { text = dialog.findChild<QLineEdit*>("txt_EffWMTxtBox")->text(); });
  doubleClick("Draft");
  EXPECT_EQ(text, "Draft");
}

TEST_F(ListInputTest, DoubleClickOnNoneOpensNothing) {
  inDialog([](DialogWindow&) {});
  doubleClick(list().item(0)->text());
  QCoreApplication::processEvents();
  EXPECT_FALSE(wasShown);
}

TEST_F(ListInputTest, DeleteAsksByNameAndReturnDeletesNothing) {
  select("Draft");
  QString subject;
  inDialog([&](DialogWindow& dialog) {
    subject = dialog.findChild<QLabel*>("subject")->text();
    EXPECT_TRUE(dialog.findChild<QPushButton*>("cancel")->isDefault());
    Testing::press(*dialog.findChild<QPushButton*>("cancel"), Qt::Key_Return);
  });
  Testing::press(list(), Qt::Key_Delete);
  QCoreApplication::processEvents();
  EXPECT_TRUE(wasShown);
  EXPECT_EQ(subject, "Draft");
  EXPECT_GE(rowOf("Draft"), 0);
}

TEST_F(ListInputTest, DeleteDeletesWhatIsAgreedTo) {
  select("Draft");
  inDialog([](DialogWindow& dialog) { dialog.findChild<QPushButton*>("accept")->click(); });
  Testing::press(list(), Qt::Key_Delete);
  QCoreApplication::processEvents();
  EXPECT_EQ(rowOf("Draft"), -1);
}

TEST_F(ListInputTest, ContextMenuHasTheButtonsOfTheList) {
  select("Draft");
  QMenu* menu = menuOf(*list().viewport(), placeOf("Draft"));
  ASSERT_NE(menu, nullptr);
  QStringList entries;
  for (const QAction* entry : menu->actions()) entries << entry->objectName() + (entry->isEnabled() ? "" : " off");
  EXPECT_EQ(entries, (QStringList{"btn_WMAdd", "btn_WMEdit", "btn_WMDel"}));
  inDialog([](DialogWindow& dialog) { EXPECT_EQ(dialog.objectName(), "dlg_confirmdelete"); });
  menu->actions().back()->trigger();
  QCoreApplication::processEvents();
  EXPECT_TRUE(wasShown);
}

TEST_F(ListInputTest, ContextMenuOffersOnlyWhatTheButtonsOffer) {
  select(list().item(0)->text());
  QMenu* menu = menuOf(*list().viewport(), placeOf(list().item(0)->text()));
  ASSERT_NE(menu, nullptr);
  QStringList enabled;
  for (const QAction* entry : menu->actions())
    if (entry->isEnabled()) enabled << entry->objectName();
  EXPECT_EQ(enabled, QStringList{"btn_WMAdd"});
}

TEST_F(ListInputTest, OverlaysHaveTheirOwn) {
  auto& overlays = open.find<QWidget>("cmb_EffOverlay");
  QMenu* menu = menuOf(overlays, {5, 5});
  ASSERT_NE(menu, nullptr);
  ASSERT_EQ(menu->actions().size(), 3);
  EXPECT_EQ(menu->actions()[0]->text(), "New...");
  EXPECT_TRUE(menu->actions()[0]->isEnabled());
  EXPECT_EQ(menu->actions()[1]->text(), "&Rename...");
  EXPECT_FALSE(menu->actions()[1]->isEnabled()) << "none is selected";
  EXPECT_EQ(menu->actions()[2]->objectName(), "btn_OvlDel");
  EXPECT_FALSE(menu->actions()[2]->isEnabled()) << "none is selected";
}

}  // namespace
}  // namespace Window
