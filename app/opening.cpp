#include "app/opening.h"

#include "files/system_reason.h"
#include "formats/sentences.h"
#include "host/kept_settings.h"

#include <stdexcept>
#include <system_error>

namespace App {

namespace fs = std::filesystem;

bool isThere(const fs::path& path) {
  std::error_code error;
  if (fs::symlink_status(path, error).type() == fs::file_type::not_found) return false;
  if (fs::exists(fs::status(path, error))) return true;
  throw std::runtime_error(Formats::sentence(
      "{1} cannot be reached ({2}): check where links lead, and who may look into the folders on the way.",
      path.string(), Files::systemReason(error)));
}

std::optional<Refhost::TracePairs> keptIn(const fs::path& home, const Refhost::Options& options, Tell tellUser) {
  const Refhost::ModelDescription model = Refhost::readModel(options.resources / "models", options.model);
  const fs::path file = Refhost::settingsFile(home, model.name);
  const Refhost::KeptSettings kept = Refhost::readSettings(file, tellUser);
  if (!kept.setAside.empty())
    throw std::runtime_error(
        Formats::sentence("The settings in {1} were damaged and are now in {2}: accept the preferences once more.",
                          file.string(), kept.setAside.string()));
  if (!isThere(file)) return {};
  return Refhost::applicable(kept.values, model);
}

}  // namespace App
