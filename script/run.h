// The script face: runs the preferences without a window, controlled by a script. docs/drive.md describes the language.
#pragma once

#include "host/preferences.h"

#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>

namespace Script {

struct Request {
  // An empty home is a temporary one for the run, including reloads.
  Refhost::Options preferences;

  // The initial answer to the host's modal job step; nothing leaves OverlayImageName unchanged.
  std::optional<std::u16string> jobStep;

  // The file to write trace events to immediately; empty for none.
  std::filesystem::path trace;
};

// Executes one command per line, and writes one answer per line. Returns the exit status: 0 when all answers have "ok"
// true, else 1. Throws std::runtime_error, one sentence, when the preferences cannot be opened, or the commands cannot
// be read to their end.
int run(const Request& request, std::istream& commands, std::ostream& answers);

}  // namespace Script
