#include "window/preferences/built_in_watermarks.h"

#include "host/profiles/built_in_watermarks.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace Window {
namespace {

constexpr int idRole = Qt::UserRole;

// In pixels.
constexpr int listWidth = 300;
constexpr int mostRows = 8;

QListWidget* listOf(const std::vector<Refhost::BuiltInWatermark>& watermarks, QWidget* parent) {
  auto* list = new QListWidget(parent);
  list->setObjectName("built_in_watermarks");
  for (const Refhost::BuiltInWatermark& each : watermarks) {
    auto* item = new QListWidgetItem(plainText(toQt(each.name)), list);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    item->setCheckState(Qt::Checked);
    item->setData(idRole, toQt(each.id));
  }
  list->setCurrentRow(0);
  list->setMinimumWidth(listWidth);
  const int rows = std::min(mostRows, list->count());
  list->setFixedHeight(rows * list->sizeHintForRow(0) + 2 * list->frameWidth());
  return list;
}

std::vector<std::u16string> checkedIn(const QListWidget& list) {
  std::vector<std::u16string> ids;
  for (int i = 0; i < list.count(); ++i)
    if (list.item(i)->checkState() == Qt::Checked) ids.push_back(toWide(list.item(i)->data(idRole).toString()));
  return ids;
}

// The ids of those that the user wants; none when the user cancels.
std::vector<std::u16string> askWhich(const std::vector<Refhost::BuiltInWatermark>& missing, const Texts& texts,
                                     QWidget* parent) {
  QDialog dialog(parent);
  dialog.setObjectName("builtInWatermarks");
  dialog.setWindowTitle(texts("WATERMARKS_BACK_TITLE"));
  auto* column = new QVBoxLayout(&dialog);
  auto* question = new QLabel(texts("WATERMARKS_BACK_QUESTION"));
  question->setWordWrap(true);
  column->addWidget(question);
  QListWidget* list = listOf(missing, &dialog);
  list->setAccessibleName(question->text());
  column->addWidget(list);
  auto* buttons = new QDialogButtonBox;
  QPushButton* go = buttons->addButton(texts("WATERMARKS_BACK_BUTTON"), QDialogButtonBox::AcceptRole);
  buttons->addButton(texts("CANCEL"), QDialogButtonBox::RejectRole);
  go->setDefault(true);
  column->addWidget(buttons);
  QObject::connect(list, &QListWidget::itemChanged, &dialog, [list, go] { go->setEnabled(!checkedIn(*list).empty()); });
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  return dialog.exec() == QDialog::Accepted ? checkedIn(*list) : std::vector<std::u16string>();
}

}  // namespace

void bringBackWatermarks(const ActionWorld& world) {
  const Texts texts = world.texts();
  const auto missing = Refhost::missingBuiltIns(world.preferences());
  if (missing.empty()) return world.messages.announce({texts("WATERMARKS_BACK_TITLE"), texts("WATERMARKS_ALL_THERE")});
  const auto wanted = askWhich(missing, texts, &world.window);
  if (!wanted.empty()) Refhost::restoreBuiltIns(world.preferences(), wanted);
}

}  // namespace Window
