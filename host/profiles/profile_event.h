// A profile export or import event for plug-ins.
#pragma once

#include "host/documents/path.h"
#include "host/object.h"
#include "kiln/profile.h"

#include <filesystem>
#include <optional>
#include <string>

namespace Refhost {

// The folder of a plug-in's files in a profile: `target` below the folder of local data, or `target` itself if
// absolute.
std::filesystem::path profileLocation(const std::filesystem::path& localData, const std::filesystem::path& target);

class ProfileEvent final : public Kiln::ImportExportEvent {
 public:
  // `world` outlives the event. Without `includeUserdataValue`, as in an import, the event has no such argument.
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
