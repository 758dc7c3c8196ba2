#include "app/opening.h"

#include "host/kept_settings.h"

#include <stdexcept>
#include <system_error>

namespace App {

namespace fs = std::filesystem;

std::optional<Refhost::TracePairs> keptIn(const fs::path& home, const Refhost::Options& options) {
  const Refhost::ModelDescription model = Refhost::readModel(options.resources / "models", options.model);
  const fs::path file = Refhost::settingsFile(home, model.name);
  std::error_code ignored;
  if (!fs::exists(file, ignored)) return {};
  const Refhost::KeptSettings kept = Refhost::readSettings(file);
  if (!kept.setAside.empty())
    throw std::runtime_error("The settings in " + file.string() + " were damaged and are now in " +
                             kept.setAside.string() + ": accept the preferences once more.");
  return Refhost::applicable(kept.values, model);
}

}  // namespace App
