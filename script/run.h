// The script face: runs the preferences without a window, by a script of commands. docs/drive.md describes its
// language.
#pragma once

#include "host/preferences.h"

#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>

namespace Script {

struct Request {
  // An empty home is a temporary one that lives as long as the run, reloads included.
  Refhost::Options preferences;

  // What the host's modal job step answers from the opening on; nothing leaves OverlayImageName as it is.
  std::optional<std::u16string> jobStep;

  // The file that every trace event is written to as it happens; empty for none.
  std::filesystem::path trace;
};

// Obeys the commands, one a line, and writes one answer a line. Gives the exit status: 0 when every command was
// answered with "ok" true, else 1. Throws std::runtime_error, one sentence, when the preferences cannot be opened.
int run(const Request& request, std::istream& commands, std::ostream& answers);

}  // namespace Script
