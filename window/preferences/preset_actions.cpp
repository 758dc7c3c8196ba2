#include "window/preferences/preset_actions.h"

#include "window/dialogs/destructive_question.h"
#include "window/dialogs/name_question.h"

#include <algorithm>

namespace Window {
namespace {

QString chosenName(const ActionWorld& world) {
  return toQt(world.preferences().presets().chosen().value_or(std::u16string()));
}

std::optional<QString> askForPresetName(const QString& title, const JudgeName& judge, const ActionWorld& world) {
  return askForName({.topic = "presets",
                     .title = title,
                     .label = world.texts()("PRESET_NAME"),
                     .longest = static_cast<int>(Refhost::Presets::longestName),
                     .name = chosenName(world),
                     .judge = judge},
                    &world.window);
}

}  // namespace

void savePreset(const ActionWorld& world) {
  const Texts texts = world.texts();
  const auto judge = [missing = texts("NAME_MISSING")](const QString& name) {
    return name.isEmpty() ? NameVerdict{missing, false} : NameVerdict{};
  };
  const auto name = askForPresetName(texts("PRESET_SAVE_TITLE"), judge, world);
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
  Refhost::PresetChoice& presets = world.preferences().presets();
  const QString before = chosenName(world);
  const auto judge = [before, names = presets.names(), missing = texts("NAME_MISSING"),
                      taken = texts("PRESET_TAKEN")](const QString& name) {
    if (name.isEmpty()) return NameVerdict{missing, false};
    const bool isTaken = name != before && std::ranges::find(names, toWide(name)) != names.end();
    return isTaken ? NameVerdict{taken.arg(plainText(name)), false} : NameVerdict{};
  };
  const auto name = askForPresetName(texts("PRESET_RENAME_TITLE"), judge, world);
  if (name && *name != before) presets.rename(toWide(*name));
}

void deletePreset(const ActionWorld& world) {
  const Texts texts = world.texts();
  const DestructiveQuestion question{texts("PRESET_DELETE_TITLE"),
                                     texts("PRESET_DELETE_QUESTION").arg(chosenName(world)), texts("DELETE")};
  if (askToGoOn(question, texts, &world.window)) world.preferences().presets().remove();
}

}  // namespace Window
