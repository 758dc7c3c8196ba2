#include "app/system/account.h"

#include "app/system/user.h"

#include <pwd.h>
#include <unistd.h>

namespace App {

Account runningAccount() {
  const passwd* entry = getpwuid(geteuid());
  if (entry == nullptr) return {};
  const std::filesystem::path home = entry->pw_dir;
  return {entry->pw_name, dataFolder(home)};
}

}  // namespace App
