#include "app/account.h"

#include "app/user.h"

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
