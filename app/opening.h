// Where the preferences of a command open, and with what.
#pragma once

#include "app/host_options.h"
#include "app/interruption.h"
#include "host/temporary_folder.h"

#include <filesystem>
#include <optional>
#include <string>

namespace App {

// Whether there is such a file or folder. Throws std::runtime_error, one sentence, where that cannot be told, and for a
// link that leads nowhere: jobs must not print without what may be there.
bool isThere(const std::filesystem::path& path);

// What was accepted in the window for the model of `options` and is kept in `home`; nothing when nothing was. Throws
// std::runtime_error, one sentence, when it cannot be read.
std::optional<Refhost::TracePairs> keptIn(const std::filesystem::path& home, const Refhost::Options& options);

// A home that exists while this object does, and holds what a profile brings. So a profile can be printed with, and the
// user's home stays as it is.
class ProfileHome {
 public:
  enum class Model { ofProfile, ofOptions };

  // Has `options` open there, with one of the two models. Throws std::runtime_error, one sentence, when the profile
  // cannot be taken, and Refhost::Stopped when the user wants to stop.
  ProfileHome(const std::filesystem::path& profile, Refhost::Options& options, Model model,
              const Interruption& interruption);

 private:
  Refhost::TemporaryFolder folder;
};

}  // namespace App
