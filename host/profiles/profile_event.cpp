#include "host/profiles/profile_event.h"

#include "files/path_text.h"
#include "formats/names.h"
#include "host/model/settings.h"

namespace Refhost {

std::filesystem::path profileLocation(const std::filesystem::path& localData, const std::filesystem::path& target) {
  return localData / target;
}

Kiln::SmartPtr<Kiln::Property> ProfileEvent::property(Kiln::WStringView name) {
  if (!includeUserdata || name.view() != Formats::ExportArgument::includeUserdata) return {};
  return make<PlainProperty>(*includeUserdata);
}

Kiln::WString ProfileEvent::location(Kiln::WStringView localData) {
  const auto folder = makePath(world, profileLocation(Files::pathFromText(localData.view()), target));
  if (includeUserdata) folder->createFolder();
  return folder->text();
}

}  // namespace Refhost
