// Asks the user for a name.
#pragma once

#include "window/dialogs/name_field.h"

#include <QString>
#include <QStringList>

#include <optional>

class QWidget;

namespace Window {

struct NameQuestion {
  // What the dialog is called, for the help on it.
  QString topic;

  QString title;
  QString label;

  // The greatest length of the name, in UTF-16 units.
  int longest;

  // The name to begin with, and the names offered for completion.
  QString name = {};
  QStringList offered = {};

  // What to say about a name. One that is not allowed is not accepted.
  JudgeName judge = {};

  // What else to tell the user; empty for nothing.
  QString note = {};
};

// Nothing when the user cancels.
std::optional<QString> askForName(const NameQuestion& question, QWidget* parent);

}  // namespace Window
