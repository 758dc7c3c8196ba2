#include "window/widgets/items.h"

#include "host/widgets/list.h"
#include "window/language/texts.h"
#include "window/widgets/images.h"
#include "window/widgets/item_list.h"

#include <QColor>
#include <QComboBox>
#include <QIcon>

namespace Window {
namespace {

QVariant colourOf(Kiln::XUL::ListItem& item) {
  const auto* known = dynamic_cast<const Refhost::ListItem*>(&item);
  return known == nullptr || known->colour().empty() ? QVariant() : QVariant(QColor(toQt(known->colour())));
}

// For texts in the list.
QVariant legibleIn(const QWidget& list, const QVariant& colour) {
  return colour.isValid() ? legible(colour.value<QColor>(), list.palette().color(QPalette::Base)) : colour;
}

QIcon iconOf(Kiln::XUL::ListItem& item, const QWidget& on) {
  const QPixmap pixmap = pixmapOf(item.image(), on);
  return pixmap.isNull() ? QIcon() : QIcon(pixmap);
}

QIcon pageOf(Kiln::XUL::ListItem& item, const ItemList& list) {
  const QPixmap pixmap = pixmapOf(item.image(), list);
  QIcon page(pageWithEdge(pixmap, list.iconSize(), pageEdge, list));
  const QVariant colour = colourOf(item);
  const QColor edge = colour.isValid() ? colour.value<QColor>() : QColor(pageEdge);
  page.addPixmap(pageWithEdge(pixmap, list.iconSize(), edge, list), QIcon::Selected);
  return page;
}

}  // namespace

// Rows that are there already stay, since the user may be dragging one.
void showItems(ItemList& list, Kiln::XUL::ListData& items) {
  while (list.count() > items.count()) delete list.takeItem(list.count() - 1);
  for (int i = 0; i < items.count(); ++i) {
    const auto item = items.at(i);
    if (i == list.count()) new QListWidgetItem(&list);
    QListWidgetItem* row = list.item(i);
    row->setIcon(list.showsPages() ? pageOf(*item, list) : iconOf(*item, list));
    row->setText(plainText(toQt(item->displayedText().view())));
    if (!list.showsPages()) row->setData(Qt::ForegroundRole, legibleIn(list, colourOf(*item)));
    row->setData(ItemList::valueRole, toQt(item->value().view()));
    row->setSizeHint({0, list.rowHeight()});
  }
}

// Rows that are there already stay, since screen readers would tell new ones, whatever the user does elsewhere.
void showItems(QComboBox& combo, Kiln::XUL::ListData& items) {
  while (combo.count() > items.count()) combo.removeItem(combo.count() - 1);
  for (int i = 0; i < items.count(); ++i) {
    const auto item = items.at(i);
    if (i == combo.count()) combo.addItem(QString());
    combo.setItemIcon(i, iconOf(*item, combo));
    combo.setItemText(i, plainText(toQt(item->displayedText().view())));
    combo.setItemData(i, legibleIn(combo, colourOf(*item)), Qt::ForegroundRole);
  }
}

}  // namespace Window
