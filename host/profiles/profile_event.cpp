#include "host/profiles/profile_event.h"

#include "host/documents/path_text.h"
#include "host/model/settings.h"

namespace Refhost {

std::filesystem::path profileLocation(const std::filesystem::path& localData, const std::filesystem::path& target) {
  return localData / target;
}

Kiln::SmartPtr<Kiln::Property> ProfileEvent::property(Kiln::WStringView name) {
  if (!includeUserdata || name.view() != u"IncludeUserdata") return {};
  return make<PlainProperty>(*includeUserdata);
}

Kiln::WString ProfileEvent::location(Kiln::WStringView localData) {
  const auto folder = makePath(world, profileLocation(pathFromText(localData.view()), target));
  if (includeUserdata) folder->createFolder();
  return folder->text();
}

}  // namespace Refhost
