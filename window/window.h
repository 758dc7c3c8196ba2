// The window's one entry. The window is a library of its own, loaded when a window is to be shown, so that printing and
// scripts start without a windowing toolkit.
#pragma once

#include "host/preferences.h"

#include <filesystem>
#include <string>

namespace Window {

struct Request {
  // What to open. Without a home, nothing that the user changes outlives the window.
  Refhost::Options preferences;

  // The job to print; empty for the sample job.
  std::filesystem::path document;

  // Draws the window into this PNG file instead of showing it, and ends; needs no display. Empty for a real window.
  std::filesystem::path screenshot;

  // The id of a button to press first, as if the user did; the picture is then of the dialog that it opens. Empty for
  // none.
  std::string press;

  // The page to look at first, from 1.
  int page = 1;

  // Whether the inspector is open from the start.
  bool inspector = false;
};

}  // namespace Window

// Shows the window until the user closes it; once in a process. The exit status: 0, or 2 when the preferences cannot be
// opened, or 1 when the picture cannot be made; then standard error says why in one sentence. Never throws.
extern "C" int kilnShow(const Window::Request& request);

// The name of that function, and its type, for loading it by name.
namespace Window {
inline constexpr const char* showSymbol = "kilnShow";
using Show = int (*)(const Request&);
}  // namespace Window
