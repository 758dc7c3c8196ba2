// Asks the user for a name.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

class QWidget;

namespace Window {

struct NameQuestion {
  QString title;
  QString label;

  // The names offered for completion.
  QStringList offered;
};

// Nothing when the user cancels.
std::optional<QString> askForName(const NameQuestion& question, QWidget* parent);

}  // namespace Window
