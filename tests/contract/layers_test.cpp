// The include rules between layers.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>

namespace {

const std::filesystem::path source = SOURCE_FOLDER;

// The layers that each layer may include, besides itself, as the table in docs/architecture.md has them.
std::map<std::string, std::set<std::string>> allowedIncludes() {
  const std::regex row("^\\| `(\\w+)/` \\| .* \\| (.*) \\|$");
  const std::regex folder("`(\\w+)/`");
  std::map<std::string, std::set<std::string>> rules;
  std::ifstream page(source / "docs" / "architecture.md");
  for (std::string line; std::getline(page, line);) {
    std::smatch match;
    if (!std::regex_match(line, match, row)) continue;
    std::set<std::string>& may = rules[match[1]];
    const std::string targets = match[2];
    for (std::sregex_iterator each(targets.begin(), targets.end(), folder), end; each != end; ++each)
      may.insert((*each)[1]);
  }
  return rules;
}

const std::map<std::string, std::set<std::string>> allowed = allowedIncludes();

bool isSource(const std::filesystem::path& file) { return file.extension() == ".h" || file.extension() == ".cpp"; }

// Calls `visit` with each source file of a layer and each path that it includes in quotes.
template <class Visit>
void forEachInclude(const std::string& layer, const Visit& visit) {
  const std::regex include("^\\s*#\\s*include\\s*\"([^\"]+)\"");
  for (const auto& entry : std::filesystem::recursive_directory_iterator(source / layer)) {
    if (!isSource(entry.path())) continue;
    std::ifstream stream(entry.path());
    std::smatch match;
    for (std::string line; std::getline(stream, line);)
      if (std::regex_search(line, match, include)) visit(entry.path(), match[1].str());
  }
}

TEST(Layers, IncludeOnlyWhatTheyMay) {
  EXPECT_EQ(allowed.size(), 10U);
  std::size_t includes = 0;
  for (const auto& [layer, others] : allowed) {
    forEachInclude(layer, [&, &own = layer, &may = others](const auto& file, const std::string& included) {
      ++includes;
      const std::string target = included.substr(0, included.find('/'));
      EXPECT_TRUE(target == own || may.contains(target)) << file << " includes " << included;
      EXPECT_TRUE(std::filesystem::exists(source / included))
          << file << " includes " << included << ", which is not named from the root";
    });
  }
  EXPECT_GT(includes, 100U);
}

TEST(Layers, OfThePluginUseTheStandardLibraryAndTheSystemAlone) {
  const std::regex include("^\\s*#\\s*include\\s*<([^>]+)>");
  for (const char* layer : {"kiln", "formats", "effect"})
    for (const auto& entry : std::filesystem::recursive_directory_iterator(source / layer)) {
      if (!isSource(entry.path())) continue;
      std::ifstream stream(entry.path());
      std::smatch match;
      for (std::string line; std::getline(stream, line);) {
        if (!std::regex_search(line, match, include)) continue;
        const std::string header = match[1];
        const bool isStandard = header.find('.') == header.npos && header.find('/') == header.npos;
        const bool isPlatform = entry.path().string().find("platform") != std::string::npos;
        EXPECT_TRUE(isStandard || isPlatform) << entry.path() << " includes <" << header << ">";
        if (header == "iostream" || header == "fstream" || header == "regex" || header == "locale")
          ADD_FAILURE() << entry.path() << " includes <" << header << ">, which makes the library many times larger";
      }
    }
}

// The names in formats/names.h that mean nothing but the effect tab's. The values among them that are words of their
// own, such as "True" and "Bold", may be written by others for other reasons, and so may names of two letters.
std::set<std::string> vocabulary() {
  const std::set<std::string> spaces = {"Prop", "PageEffects", "WidgetId", "Setting", "Address", "Token"};
  const std::regex opening("^namespace (\\w+) \\{");
  const std::regex literal("u\"([^\"]+)\"");
  std::set<std::string> names;
  std::ifstream stream(source / "formats" / "names.h");
  std::string space;
  for (std::string line; std::getline(stream, line);) {
    std::smatch match;
    if (std::regex_search(line, match, opening)) space = match[1];
    if (line.starts_with('}')) space.clear();
    if (!spaces.contains(space)) continue;
    for (std::sregex_iterator each(line.begin(), line.end(), literal), end; each != end; ++each)
      if ((*each)[1].length() > 2) names.insert((*each)[1]);
  }
  return names;
}

TEST(Layers, SpellTheNamesOfTheTabInOnePlace) {
  const std::set<std::string> names = vocabulary();
  ASSERT_GT(names.size(), 100U);
  const std::regex literal("\"([^\"\\\\]+)\"");
  for (const auto& [layer, others] : allowed) {
    if (layer == "formats") continue;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(source / layer)) {
      if (!isSource(entry.path())) continue;
      std::ifstream stream(entry.path());
      for (std::string line; std::getline(stream, line);) {
        const std::string code = line.substr(0, line.find("//"));
        for (std::sregex_iterator each(code.begin(), code.end(), literal), end; each != end; ++each)
          EXPECT_FALSE(names.contains((*each)[1]))
              << entry.path() << " spells " << (*each)[0] << ", see formats/names.h";
      }
    }
  }
}

// It takes some preparation, which that header makes.
TEST(Layers, IncludeThePdfLibraryThroughOneHeader) {
  const std::regex include("^\\s*#\\s*include\\s*<qpdf/");
  std::set<std::filesystem::path> files;
  for (const auto& [layer, others] : allowed)
    for (const auto& entry : std::filesystem::recursive_directory_iterator(source / layer)) {
      if (!isSource(entry.path())) continue;
      std::ifstream stream(entry.path());
      for (std::string line; std::getline(stream, line);)
        if (std::regex_search(line, include)) files.insert(entry.path());
    }
  EXPECT_EQ(files, std::set{source / "press/pdf/qpdf.h"});
}

TEST(Layers, ReachThePluginOnlyByItsFileName) {
  for (const char* layer : {"files", "host", "press", "window", "script", "check", "app"})
    forEachInclude(layer, [](const auto& file, const std::string& included) {
      EXPECT_NE(included.substr(0, included.find('/')), "effect") << file;
    });
}

}  // namespace
