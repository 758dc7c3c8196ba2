// The presets, above the tabs: the chosen one, and a menu of what can be done with it.
#pragma once

#include "host/preset_choice.h"
#include "window/preferences/messages.h"

#include <QWidget>

#include <functional>

class QComboBox;
class QLabel;
class QPushButton;

namespace Window {

struct PresetActions {
  std::function<void(const QString& name)> choose;
  std::function<void()> save;
  std::function<void()> rename;
  std::function<void()> remove;
};

class PresetBar final : public QWidget {
  Q_OBJECT

 public:
  // Failures of the actions are shown in `barMessages`, which outlive the bar.
  PresetBar(Messages& barMessages, PresetActions presetActions, QWidget* parent);

  // To be called before access keys are given, which are in the texts.
  void setTexts(const Texts& texts);

  // Shows the presets anew.
  void showPresets(const Refhost::PresetChoice& presets, const Texts& texts);

  // Shows which is chosen, and whether the settings have changed since.
  void showState(const Refhost::PresetChoice& presets, const Texts& texts);

 private:
  void addEntry(const char* name, const std::function<void()>& action);

  Messages& messages;
  PresetActions actions;
  QLabel* label;
  QComboBox* list;
  QPushButton* manage;
};

}  // namespace Window
