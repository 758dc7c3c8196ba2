// Decides where and with which settings a command opens the preferences.
#pragma once

#include "app/host_options.h"
#include "app/messages.h"
#include "app/system/interruption.h"
#include "files/temporary_folder.h"

#include <filesystem>
#include <optional>
#include <string>

namespace App {

// Whether the file or folder exists. Throws std::runtime_error, one sentence, when that cannot be determined, and for a
// dangling link: jobs must not print without files that may exist.
bool isThere(const std::filesystem::path& path);

// The settings saved by the window in `home` for the model of `options`; nothing when there are none. `tellUser` takes
// what the user should know of the home. Throws std::runtime_error, one sentence, when they cannot be read.
std::optional<Refhost::TracePairs> keptIn(const std::filesystem::path& home, const Refhost::Options& options,
                                          Tell tellUser);

// A temporary home with a profile's content, to print with a profile without changing the user's home.
class ProfileHome {
 public:
  enum class Model { ofProfile, ofOptions };

  // Sets `options` to open this home, with one of the two models. Throws std::runtime_error, one sentence, when the
  // profile cannot be imported, and Refhost::Stopped when the user interrupts.
  ProfileHome(const std::filesystem::path& profile, Refhost::Options& options, Model model,
              const Interruption& interruption);

 private:
  Files::TemporaryFolder folder;
};

}  // namespace App
