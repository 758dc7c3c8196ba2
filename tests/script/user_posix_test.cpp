#include "app/system/user.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <stdexcept>

namespace {

const std::vector<std::string> shipped = {"de-DE", "en-US", "fr-FR", "ja-JP", "zh-CN", "zh-TW"};

// The environment of one test; variables not listed are unset.
class User : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG", "LANGUAGE", "XDG_DATA_HOME", "HOME"}) unsetenv(name);
  }

  static void set(const char* name, const char* value) { setenv(name, value, 1); }

  static std::string localeFor(const char* lang) {
    set("LANG", lang);
    return App::userLocale(shipped);
  }
};

TEST_F(User, LocaleIsTheOneOfTheEnvironment) {
  EXPECT_EQ(localeFor("ja_JP.UTF-8"), "ja-JP");
  EXPECT_EQ(localeFor("zh_TW"), "zh-TW");
  EXPECT_EQ(localeFor("fr_FR@euro"), "fr-FR");
}

TEST_F(User, OtherCountryOfTheSameLanguageServes) {
  EXPECT_EQ(localeFor("de_CH.UTF-8"), "de-DE");
  EXPECT_EQ(localeFor("zh_SG.UTF-8"), "zh-CN");
  EXPECT_EQ(localeFor("zh_HK.UTF-8"), "zh-TW");
}

TEST_F(User, LocaleIsEnglishWhereNothingElseServes) {
  for (const char* lang : {"", "C", "C.UTF-8", "POSIX", "pt_BR.UTF-8"}) EXPECT_EQ(localeFor(lang), "en-US") << lang;
  unsetenv("LANG");
  EXPECT_EQ(App::userLocale(shipped), "en-US");
}

TEST_F(User, MessagesGoBeforeLangAndAllGoesBeforeBoth) {
  set("LANG", "fr_FR");
  set("LC_MESSAGES", "de_DE");
  EXPECT_EQ(App::userLocale(shipped), "de-DE");
  set("LC_ALL", "ja_JP");
  EXPECT_EQ(App::userLocale(shipped), "ja-JP");
}

TEST_F(User, ListOfLanguagesGoesBeforeTheLocale) {
  set("LANGUAGE", "pt_BR:de:fr");
  EXPECT_EQ(localeFor("ja_JP.UTF-8"), "de-DE");
  set("LANGUAGE", "pt_BR");
  EXPECT_EQ(localeFor("ja_JP.UTF-8"), "ja-JP");
}

TEST_F(User, ListOfLanguagesDoesNotCountInTheSystemsOwnLocale) {
  set("LANGUAGE", "de");
  for (const char* lang : {"C", "C.UTF-8", "POSIX"}) EXPECT_EQ(localeFor(lang), "en-US") << lang;
}

TEST_F(User, FolderIsInTheDataHome) {
  set("HOME", "/home/somebody");
  EXPECT_EQ(App::userFolder(), "/home/somebody/.local/share/kiln");
  set("XDG_DATA_HOME", "relative, and so not to be used");
  EXPECT_EQ(App::userFolder(), "/home/somebody/.local/share/kiln");
  set("XDG_DATA_HOME", "/data");
  EXPECT_EQ(App::userFolder(), "/data/kiln");
}

TEST_F(User, EnvironmentWithoutAFolderIsASentence) { EXPECT_THROW(App::userFolder(), std::runtime_error); }

}  // namespace
