// Passwords of jobs.
#pragma once

#include "press/pdf/job_file.h"
#include "window/language/texts.h"

#include <optional>

class QWidget;

namespace Window {

// The job with the password that opens it, which the user is asked for while it needs one or has a wrong one. Nothing
// when the user cancels. What else is wrong with a job, the page tells.
std::optional<Press::JobFile> unlocked(Press::JobFile job, const Texts& texts, QWidget* parent);

}  // namespace Window
