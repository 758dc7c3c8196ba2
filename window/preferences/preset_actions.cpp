#include "window/preferences/preset_actions.h"

#include "window/dialogs/destructive_question.h"

#include <QDialogButtonBox>
#include <QInputDialog>
#include <QLineEdit>
#include <QPushButton>

namespace Window {
namespace {

// The width for a name, in pixels.
constexpr int presetNameWidth = 320;

// The OK button is disabled while the name cannot be one. Nothing when the user cancels.
std::optional<QString> askForPresetName(const QString& title, const QString& initial, const ActionWorld& world) {
  QInputDialog dialog(&world.window);
  dialog.setWindowTitle(title);
  dialog.setLabelText(world.texts()("PRESET_NAME"));
  dialog.setTextValue(initial);
  dialog.setOkButtonText(world.texts()("OK"));  // also creates the buttons
  auto* line = dialog.findChild<QLineEdit*>();
  line->setMinimumWidth(presetNameWidth);
  line->setMaxLength(static_cast<int>(Refhost::Presets::longestName));
  line->selectAll();
  auto* ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
  const auto check = [ok](const QString& text) { ok->setEnabled(!text.trimmed().isEmpty()); };
  QObject::connect(line, &QLineEdit::textChanged, &dialog, check);
  check(line->text());
  return dialog.exec() == QDialog::Accepted ? std::optional(dialog.textValue().trimmed()) : std::nullopt;
}

QString chosenName(const ActionWorld& world) {
  return toQt(world.preferences().presets().chosen().value_or(std::u16string()));
}

}  // namespace

void savePreset(const ActionWorld& world) {
  const Texts texts = world.texts();
  const auto name = askForPresetName(texts("PRESET_SAVE_TITLE"), chosenName(world), world);
  if (!name) return;
  Refhost::PresetChoice& presets = world.preferences().presets();
  const bool isFree = !presets.has(toWide(*name));
  if (isFree ||
      askToGoOn({texts("PRESET_SAVE_TITLE"), texts("PRESET_REPLACE_QUESTION").arg(*name), texts("PRESET_REPLACE")},
                texts, &world.window))
    presets.save(toWide(*name));
}

void choosePreset(const ActionWorld& world, const QString& name) {
  const Texts texts = world.texts();
  const auto gone = world.preferences().presets().choose(toWide(name));
  if (gone.watermark) world.messages.showFailure(texts("PRESET_WATERMARK_GONE").arg(plainText(name)).toStdString());
  if (gone.overlay) world.messages.showFailure(texts("PRESET_OVERLAY_GONE").arg(plainText(name)).toStdString());
}

void renamePreset(const ActionWorld& world) {
  const Texts texts = world.texts();
  const QString before = chosenName(world);
  const auto name = askForPresetName(texts("PRESET_RENAME_TITLE"), before, world);
  if (!name || *name == before) return;
  Refhost::PresetChoice& presets = world.preferences().presets();
  if (presets.has(toWide(*name)))
    return world.messages.showFailure(texts("PRESET_TAKEN").arg(plainText(*name)).toStdString());
  presets.rename(toWide(*name));
}

void deletePreset(const ActionWorld& world) {
  const Texts texts = world.texts();
  const DestructiveQuestion question{texts("PRESET_DELETE_TITLE"),
                                     texts("PRESET_DELETE_QUESTION").arg(chosenName(world)), texts("DELETE")};
  if (askToGoOn(question, texts, &world.window)) world.preferences().presets().remove();
}

}  // namespace Window
