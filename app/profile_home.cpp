#include "app/messages.h"
#include "app/opening.h"
#include "files/disk.h"
#include "formats/sentences.h"
#include "formats/text.h"
#include "host/kept_settings.h"
#include "host/profiles/profile.h"

#include <algorithm>
#include <stdexcept>

namespace App {
namespace {

// Accepts only names of shipped models from a profile; a path could point anywhere.
std::string shippedModel(const Files::LayeredFolder& shipped, const std::u16string& name) {
  const auto names = Refhost::shippedModels(shipped);
  const std::string model = Formats::toUtf8(name);
  if (std::find(names.begin(), names.end(), model) == names.end())
    throw std::runtime_error(
        Formats::sentence("The profile is of the model {1}, which does not ship with kiln: name a model with --model.",
                          Formats::quoted(model)));
  return model;
}

}  // namespace

ProfileHome::ProfileHome(const std::filesystem::path& profile, Refhost::Options& options, Model model,
                         const Interruption& interruption) {
  const Files::LayeredFolder models = options.resources / "models";
  const Refhost::StringTables texts{Refhost::ChromeFolders(options.resources), options.locale};
  Refhost::ProfileHome into = Refhost::ProfileHome::closed(folder.path());
  into.translate = [&texts](std::u16string_view text) { return texts.resolve(text); };
  into.tell = tell;
  into.settingsFile = [&](const std::u16string& profileModel) {
    if (model == Model::ofProfile) options.model = shippedModel(models, profileModel);
    return Refhost::settingsFile(folder.path(), Refhost::readModel(models, options.model).name);
  };
  Refhost::importProfile(Files::realDisk(), profile, into,
                         [&interruption](int, int) { return interruption.signal() == 0; });
  options.home = folder.path();
  options.properties = keptIn(options.home, options, tell).value_or(Refhost::TracePairs());
}

}  // namespace App
