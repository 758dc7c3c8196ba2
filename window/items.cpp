#include "window/items.h"

#include "host/widgets/list.h"
#include "window/images.h"
#include "window/texts.h"

#include <QColor>
#include <QComboBox>
#include <QDrag>
#include <QIcon>
#include <QListView>
#include <QMimeData>

#include <algorithm>

namespace Window {
namespace {

constexpr int aboveAndBelow = 4;
constexpr int valueRole = Qt::UserRole;

QVariant colourOf(Kiln::XUL::ListItem& item) {
  const auto* known = dynamic_cast<const Refhost::ListItem*>(&item);
  return known == nullptr || known->colour().empty() ? QVariant() : QVariant(QColor(toQt(known->colour())));
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

bool canWrite(QFont font, const QString& text) {
  font.setStyleStrategy(QFont::NoFontMerging);
  const QFontMetrics metrics(font);
  return std::all_of(text.begin(), text.end(), [&](QChar unit) { return unit.isSurrogate() || metrics.inFont(unit); });
}

}  // namespace

// Raw UTF-16 units, since a value may have unpaired surrogates.
QString valueIn(const QMimeData& data) {
  const QByteArray bytes = data.data(itemFormat);
  return QString(reinterpret_cast<const QChar*>(bytes.constData()), bytes.size() / qsizetype(sizeof(QChar)));
}

void ItemList::showPages(int side) {
  hasPages = true;
  setIconSize({side, side});
}

int ItemList::rowHeight() const { return std::max(fontMetrics().height(), iconSize().height()) + aboveAndBelow; }

QMimeData* ItemList::mimeData(const QList<QListWidgetItem*>& dragged) const {
  auto* data = new QMimeData;
  const QString value = dragged.isEmpty() ? QString() : dragged.first()->data(valueRole).toString();
  data->setData(itemFormat,
                QByteArray(reinterpret_cast<const char*>(value.constData()), value.size() * qsizetype(sizeof(QChar))));
  return data;
}

void ItemList::startDrag(Qt::DropActions) {
  if (currentItem() == nullptr) return;
  auto* drag = new QDrag(this);
  drag->setMimeData(mimeData({currentItem()}));
  const QIcon icon = currentItem()->icon();
  drag->setPixmap(icon.isNull() ? viewport()->grab(visualItemRect(currentItem())) : icon.pixmap(iconSize() * 2));
  drag->exec(Qt::CopyAction);
}

QSize FaceNames::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
  return {0, QFontMetrics(option.font).height() * 3 / 2};
}

void FaceNames::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  QFont own = option->font;
  own.setFamilies({option->text});
  if (canWrite(own, option->text)) option->font = own;
}

void showInOwnFaces(QComboBox& combo) {
  combo.setItemDelegate(new FaceNames(&combo));
  auto* view = qobject_cast<QListView*>(combo.view());
  if (view != nullptr) view->setUniformItemSizes(true);
  // Measuring all names would load all faces.
  combo.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  combo.setMinimumContentsLength(16);
}

void showItems(ItemList& list, Kiln::XUL::ListData& items) {
  list.clear();
  for (int i = 0; i < items.count(); ++i) {
    const auto item = items.at(i);
    const QIcon icon = list.showsPages() ? pageOf(*item, list) : iconOf(*item, list);
    auto* row = new QListWidgetItem(icon, toQt(item->displayedText().view()), &list);
    if (!list.showsPages()) row->setData(Qt::ForegroundRole, colourOf(*item));
    row->setData(valueRole, toQt(item->value().view()));
    row->setSizeHint({0, list.rowHeight()});
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
