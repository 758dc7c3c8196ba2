// One profile export or import, as plug-ins see it.
#pragma once

#include "host/documents/path.h"
#include "host/object.h"
#include "kiln/profile.h"

#include <filesystem>
#include <optional>
#include <string>

namespace Refhost {

// Where a plug-in's files of a profile are: the folder of local data followed by the target, or the target itself when
// that is an absolute path.
std::filesystem::path profileLocation(const std::filesystem::path& localData, const std::filesystem::path& target);

class ProfileEvent final : public Kiln::ImportExportEvent {
 public:
  // `world` outlives the event. Without a value for "IncludeUserdata" the event has no such argument: an import.
  ProfileEvent(const FileWorld& fileWorld, std::filesystem::path profileTarget,
               std::optional<std::u16string> includeUserdataValue)
      : world(fileWorld),
        target(std::move(profileTarget)),
        includeUserdata(std::move(includeUserdataValue)) {}

  Kiln::SmartPtr<Kiln::Property> property(Kiln::WStringView name) override;
  Kiln::WString location(Kiln::WStringView localData) override;

 private:
  const FileWorld& world;
  std::filesystem::path target;
  std::optional<std::u16string> includeUserdata;
};

}  // namespace Refhost
