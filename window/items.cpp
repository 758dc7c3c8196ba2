#include "window/items.h"

#include "host/widgets/list.h"
#include "window/images.h"
#include "window/texts.h"

#include <QColor>
#include <QComboBox>
#include <QIcon>
#include <QListWidget>

namespace Window {
namespace {

QVariant colourOf(Kiln::XUL::ListItem& item) {
  const auto* known = dynamic_cast<const Refhost::ListItem*>(&item);
  return known == nullptr || known->colour().empty() ? QVariant() : QVariant(QColor(toQt(known->colour())));
}

QIcon iconOf(Kiln::XUL::ListItem& item, const QWidget& on) {
  const QPixmap pixmap = pixmapOf(item.image(), on);
  return pixmap.isNull() ? QIcon() : QIcon(pixmap);
}

}  // namespace

int rowHeight(const QListWidget& list) { return list.fontMetrics().height() + 4; }

void showItems(QListWidget& list, Kiln::XUL::ListData& items) {
  list.clear();
  for (int i = 0; i < items.count(); ++i) {
    const auto item = items.at(i);
    auto* row = new QListWidgetItem(iconOf(*item, list), toQt(item->displayedText().view()), &list);
    row->setData(Qt::ForegroundRole, colourOf(*item));
    row->setSizeHint({0, rowHeight(list)});
  }
}

void showItems(QComboBox& combo, Kiln::XUL::ListData& items) {
  combo.clear();
  for (int i = 0; i < items.count(); ++i) {
    const auto item = items.at(i);
    combo.addItem(iconOf(*item, combo), toQt(item->displayedText().view()));
    combo.setItemData(i, colourOf(*item), Qt::ForegroundRole);
  }
  combo.setCurrentIndex(-1);
}

}  // namespace Window
