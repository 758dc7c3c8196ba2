#include "app/system/user.h"

#include <gmock/gmock.h>

#include <windows.h>

namespace {

using testing::Contains;

TEST(User, WantsTheLanguagesOfTheSystem) {
  wchar_t own[LOCALE_NAME_MAX_LENGTH] = {};
  GetUserDefaultLocaleName(own, LOCALE_NAME_MAX_LENGTH);
  EXPECT_THAT(App::wantedLocales(), Contains(std::filesystem::path(own).string()));
}

TEST(User, FolderIsInTheRoamingData) {
  const std::filesystem::path roaming = _wgetenv(L"APPDATA");
  EXPECT_EQ(App::userFolder(), roaming / "kiln");
}

}  // namespace
