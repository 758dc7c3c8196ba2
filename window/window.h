// The entry point of the window library, which is loaded on demand, so that printing and scripts start without a
// windowing toolkit.
#pragma once

#include "host/preferences.h"

#include <filesystem>
#include <string>

namespace Window {

struct Request {
  // What to open. Without a home, the user's changes are discarded with the window.
  Refhost::Options preferences;

  // The job to print; empty for the sample job.
  std::filesystem::path document;

  // The password that opens it; empty for none. The user is asked for one that is missing or wrong.
  std::string password = {};

  // Draws the window to this PNG file instead of showing it, and exits; needs no display. Empty for a real window.
  std::filesystem::path screenshot;

  // The id of a button to click first; the picture then shows the dialog that it opens. Empty for none.
  std::string press;

  // The drive script to record the session in, as it happens; empty for none.
  std::filesystem::path record;

  // The product's version.
  std::string version;

  // The initial page, from 1.
  int page = 1;

  // Whether the inspector is open initially.
  bool inspector = false;
};

}  // namespace Window

// Shows the window until the user closes it. Call once per process. Returns the exit status: 0, 2 when the preferences
// cannot be opened, or 1 when the picture cannot be made; errors are printed to standard error as one sentence. Never
// throws.
extern "C" int kilnShow(const Window::Request& request);

// The name and type of that function, for dynamic loading.
namespace Window {
inline constexpr const char* showSymbol = "kilnShow";
using Show = int(const Request&);
}  // namespace Window
