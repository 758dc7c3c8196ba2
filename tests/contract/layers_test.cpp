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

// The layers that each layer may include, besides itself.
const std::map<std::string, std::set<std::string>> allowed = {
    {"kiln", {}},
    {"effect", {"kiln"}},
    {"host", {"kiln"}},
    {"press", {}},
    {"window", {"host", "press", "kiln"}},
    {"script", {"host", "press", "kiln"}},
    {"app", {"host", "press", "window", "script", "kiln"}},
};

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
  for (const char* layer : {"kiln", "effect"})
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
  for (const char* layer : {"host", "press", "window", "script", "app"})
    forEachInclude(layer, [](const auto& file, const std::string& included) {
      EXPECT_NE(included.substr(0, included.find('/')), "effect") << file;
    });
}

}  // namespace
