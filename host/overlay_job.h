// Jobs that become overlays: the plug-in prepares the destination, and the captured job is written there.
#pragma once

#include "host/preferences.h"

#include <optional>
#include <string>
#include <string_view>

namespace Refhost {

// A job captured before its destination is prepared, since it may print on the overlay that it replaces.
struct CapturedJob {
  std::string_view pdf;

  // A picture of its first page, if there is one.
  std::optional<std::string_view> thumbnail = {};
};

// Writes the captured job to the destination that the plug-in has prepared in `job`. On std::runtime_error (one
// sentence) the job is cancelled, which restores an overlay that was to be replaced.
void writeOverlay(Preferences& job, const CapturedJob& captured);

// Makes an overlay in a separate print-time job with the values of the open `preferences`, so that the plug-in's
// settings for it do not stay in the preferences. The job is shown by `face` and traced in the preferences. Returns the
// overlay's name; nothing when the plug-in prepares no destination: the user has cancelled or was told why.
//
// The plug-in of the preferences reads its stores again when there was a destination. Throws std::runtime_error, one
// sentence, when the job cannot be opened or written; an overlay that was to be replaced is restored.
std::optional<std::u16string> printIntoOverlay(Preferences& preferences, Face& face, const CapturedJob& captured);

// The same for an overlay whose name is known, so that `face` is not asked for it.
std::optional<std::u16string> printIntoOverlay(Preferences& preferences, Face& face, const CapturedJob& captured,
                                               const std::u16string& name);

}  // namespace Refhost
