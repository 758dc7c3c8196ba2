#include "host/profiles/archive_module.h"

#include <type_traits>

extern "C" __attribute__((visibility("default"))) Refhost::ArchiveFunctions kilnArchives(Formats::Language& language) {
  Formats::shareLanguage(language);
  return {Refhost::pack, Refhost::unpack};
}

static_assert(std::is_same_v<decltype(kilnArchives), Refhost::GetArchiveFunctions>);
