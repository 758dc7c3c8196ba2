// This program is built here without the library that reads archives.
#include "app/opening.h"

#include <stdexcept>

namespace App {

ProfileHome::ProfileHome(const std::filesystem::path& profile, Refhost::Options&, const Interruption&) {
  throw std::runtime_error("The profile " + profile.string() +
                           " cannot be read: profiles are read on Linux only; give the settings one by one.");
}

}  // namespace App
