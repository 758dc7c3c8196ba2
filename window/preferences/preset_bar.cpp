#include "window/preferences/preset_bar.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSignalBlocker>

#include <utility>

namespace Window {
namespace {

constexpr int nameRole = Qt::UserRole;

}  // namespace

PresetBar::PresetBar(Messages& barMessages, PresetActions presetActions, QWidget* parent)
    : QWidget(parent),
      messages(barMessages),
      actions(std::move(presetActions)),
      label(new QLabel(this)),
      list(new QComboBox(this)),
      manage(new QPushButton(this)) {
  list->setObjectName("presets");
  list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  list->setMinimumContentsLength(12);
  list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  label->setBuddy(list);
  manage->setObjectName("manage_presets");
  manage->setMenu(new QMenu(manage));
  addEntry("PRESET_SAVE", actions.save);
  addEntry("PRESET_RENAME", actions.rename);
  addEntry("PRESET_DELETE", actions.remove);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(label);
  row->addWidget(list, 1);
  row->addWidget(manage);
  connect(list, &QComboBox::activated, this, [this](int index) {
    const QString name = list->itemData(index, nameRole).toString();
    messages.guarded([this, name] { actions.choose(name); });
  });
}

void PresetBar::addEntry(const char* name, const std::function<void()>& action) {
  QAction* entry = manage->menu()->addAction(QString());
  entry->setObjectName(name);
  connect(entry, &QAction::triggered, this, [this, action] { messages.guarded(action); });
}

void PresetBar::setTexts(const Texts& texts) {
  label->setText(texts("PRESET"));
  manage->setText(texts("PRESET_MANAGE"));
  list->setPlaceholderText(texts("PRESET_NONE"));
  for (QAction* entry : manage->menu()->actions()) entry->setText(texts(entry->objectName().toLatin1().constData()));
}

void PresetBar::showPresets(const Refhost::PresetChoice& presets, const Texts& texts) {
  const QSignalBlocker quiet(list);
  list->clear();
  for (const std::u16string& name : presets.names()) list->addItem(QString(), toQt(name));
  showState(presets, texts);
}

void PresetBar::showState(const Refhost::PresetChoice& presets, const Texts& texts) {
  const auto& chosen = presets.chosen();
  const QSignalBlocker quiet(list);
  int current = -1;
  for (int i = 0; i < list->count(); ++i) {
    const QString name = list->itemData(i, nameRole).toString();
    const bool isChosen = chosen && toWide(name) == *chosen;
    if (isChosen) current = i;
    const QString shown = plainText(name);
    list->setItemText(i, isChosen && presets.isChanged() ? texts("PRESET_CHANGED").arg(shown) : shown);
  }
  list->setCurrentIndex(current);
  for (QAction* entry : manage->menu()->actions())
    entry->setEnabled(chosen.has_value() || entry->objectName() == QLatin1String("PRESET_SAVE"));
}

}  // namespace Window
