#include "app/opening.h"
#include "host/documents/disk.h"
#include "host/kept_settings.h"
#include "host/profiles/profile.h"

namespace App {

ProfileHome::ProfileHome(const std::filesystem::path& profile, Refhost::Options& options, const Interruption& interruption) {
  const Refhost::StringTables texts{Refhost::ChromeFolders(options.resources), options.locale};
  Refhost::ProfileHome into = Refhost::ProfileHome::closed(folder.path());
  into.translate = [&texts](std::u16string_view text) { return texts.resolve(text); };
  const std::u16string model = Refhost::readModel(options.resources / "models", options.model).name;
  into.settingsFile = [&](const std::u16string&) { return Refhost::settingsFile(folder.path(), model); };
  Refhost::importProfile(Refhost::realDisk(), profile, into,
                         [&interruption](int, int) { return interruption.signal() == 0; });
  options.home = folder.path();
  options.properties = keptIn(options.home, options).value_or(Refhost::TracePairs());
}

}  // namespace App
