// Asks the user for the password of a job.
#pragma once

#include "window/language/texts.h"

#include <QString>

#include <optional>
#include <string>

class QWidget;

namespace Window {

// Nothing when the user cancels. `wasWrong`: the user has given another one, which does not open the job.
std::optional<std::string> askForPassword(const QString& jobName, bool wasWrong, const Texts& texts, QWidget* parent);

}  // namespace Window
