// Overrides the screen resolution that the system reports.
#pragma once

#include <optional>

namespace App {

// Makes the system report these horizontal pixels per inch to this process, if the system controls that. Nothing: the
// process continues. A number: another process with that resolution has run the whole command, and this one must exit
// with that status.
//
// Call before anything else, before standard input is read. Failures are ignored here; the host detects a wrong
// resolution later.
std::optional<int> reportPixelsPerInch(int wanted);

}  // namespace App
