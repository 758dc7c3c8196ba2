// The manual pages that kiln writes of itself.
#include "tests/script/process.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <sstream>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

// The pages by name, "kiln-print.1" for example, in the language of a locale.
std::map<std::string, std::string> manual(const std::string& locale) {
  const auto folder = testFolder() / "pages";
  std::filesystem::create_directory(folder);
  const auto outcome = runKiln({"--manual", folder.string()}, {}, {"LC_ALL=" + locale});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out, "");
  std::map<std::string, std::string> pages;
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    pages[entry.path().filename().string()] = readFile(entry.path());
  return pages;
}

// The words in front of the explanations in a part of the help: commands, or options.
std::set<std::string> namesInHelp(const std::vector<std::string>& command, const std::string& pattern) {
  std::vector<std::string> words = command;
  words.emplace_back("--help");
  std::istringstream help(runKiln(words, {}, {"LC_ALL=C"}).out);
  std::set<std::string> names;
  std::smatch found;
  for (std::string line; std::getline(help, line);)
    if (std::regex_search(line, found, std::regex(pattern))) names.insert(found[1]);
  return names;
}

std::set<std::string> commands() { return namesInHelp({}, "^  ([a-z]+)  +[A-Z]"); }

std::string escaped(const std::string& words) { return std::regex_replace(words, std::regex("-"), "\\-"); }

TEST(Manual, HasAPageForKilnAndForEachCommand) {
  std::set<std::string> expected = {"kiln.1"};
  for (const std::string& command : commands()) expected.insert("kiln-" + command + ".1");
  ASSERT_GT(expected.size(), 5u);
  std::set<std::string> pages;
  for (const auto& [name, page] : manual("C")) pages.insert(name);
  EXPECT_EQ(pages, expected);
}

TEST(Manual, HasEveryOptionOfTheHelp) {
  const auto pages = manual("C");
  for (const std::string& command : commands())
    for (const std::string& option : namesInHelp({command}, "^  (?:-h,)?(--[a-z-]+)")) {
      const std::string name = "kiln-" + command + ".1";
      EXPECT_THAT(pages.at(name), HasSubstr(escaped(option))) << name;
    }
}

TEST(Manual, HasTheOptionsOfACommandsParts) {
  const auto page = manual("C").at("kiln-watermark.1");
  EXPECT_THAT(page, HasSubstr("\n.SS kiln watermark add\n"));
  EXPECT_THAT(page, HasSubstr("\\fB\\-\\-transparency\\fR PERCENT\nFrom 0 to 100\n"));
}

TEST(Manual, HasTheSectionsThatReadersLookFor) {
  const auto page = manual("C").at("kiln-print.1");
  EXPECT_THAT(page, StartsWith(".TH KILN\\-PRINT 1 \""));
  std::size_t last = 0;
  for (const std::string heading :
       {"NAME", "SYNOPSIS", "DESCRIPTION", "ARGUMENTS", "OPTIONS", "EXAMPLES", "EXIT STATUS", "SEE ALSO"}) {
    const std::size_t at = page.find("\n.SH " + heading + "\n");
    ASSERT_NE(at, page.npos) << heading;
    EXPECT_GT(at, last) << heading;
    last = at;
  }
  EXPECT_THAT(page, HasSubstr("\nkiln\\-print \\- Prints a PDF"));
}

TEST(Manual, HasTheSameSectionsInEachLanguage) {
  const auto count = [](const std::string& page) {
    std::size_t sections = 0;
    for (std::size_t at = page.find("\n.SH "); at != page.npos; at = page.find("\n.SH ", at + 1)) ++sections;
    return sections;
  };
  const auto english = manual("C");
  for (const std::string locale : {"de_DE", "fr_FR", "ja_JP", "zh_CN", "zh_TW"})
    for (const auto& [name, page] : manual(locale + ".UTF-8"))
      EXPECT_EQ(count(page), count(english.at(name))) << locale << ' ' << name;
}

// Each line is a request, or text that cannot be taken for one.
TEST(Manual, HasNoRequestByAccident) {
  for (const auto& [name, page] : manual("C")) {
    std::istringstream lines(page);
    for (std::string line; std::getline(lines, line);)
      EXPECT_TRUE(std::regex_search(line, std::regex(R"(^(\.(TH|SH|SS|TP|PP|ad|nh|nf|fi|in)( |$)|\\&\.|[^.' ]))")))
          << name << ": " << line;
  }
}

TEST(Manual, NeedsAFolderThatIsThere) {
  const auto outcome = runKiln({"--manual", (testFolder() / "none").string()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("none"));
}

}  // namespace
