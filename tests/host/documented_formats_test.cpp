// docs/formats.md names every element and attribute that the readers know, and no others; its examples can be read.
#include "formats/text.h"
#include "host/chrome/layout.h"
#include "host/chrome/strings.h"
#include "host/documents/documents.h"
#include "host/model/description.h"
#include "host/plugin_description.h"
#include "host/ticket/schema.h"
#include "tests/support/host_world.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <vector>

namespace {

using Testing::writeFile;
using Names = std::set<std::string>;

// The lines of the section with that heading.
std::vector<std::string> sectionOf(const std::string& heading) {
  std::ifstream page(std::filesystem::path(SOURCE_FOLDER) / "docs" / "formats.md");
  std::vector<std::string> lines;
  bool isInside = false;
  for (std::string line; std::getline(page, line);) {
    if (line.starts_with("## ")) isInside = line == "## " + heading;
    if (isInside) lines.push_back(line);
  }
  return lines;
}

// The first code block of a section.
std::string exampleOf(const std::string& heading) {
  std::string example;
  for (const std::string& line : sectionOf(heading)) {
    if (line.starts_with("    "))
      example += line.substr(4) + "\n";
    else if (!example.empty())
      break;
  }
  return example;
}

Names wordsOf(std::string_view list) {
  Names words;
  Refhost::eachWord(list, [&words](std::string_view word, bool) { words.emplace(word); });
  return words;
}

Names inBackquotes(const std::string& text) {
  static const std::regex quoted("`([^`]+)`");
  Names words;
  for (std::sregex_iterator each(text.begin(), text.end(), quoted), end; each != end; ++each) words.insert((*each)[1]);
  return words;
}

std::vector<std::string> cellsOf(const std::string& row) {
  std::vector<std::string> cells;
  std::istringstream stream(row.substr(1));
  for (std::string cell; std::getline(stream, cell, '|');) cells.push_back(cell);
  return cells;
}

struct Documented {
  std::map<std::string, std::vector<std::string>> elements;  // the cells of each element's row
  Names attributes;                                          // those that have a row
};

Documented documentedIn(const std::string& heading) {
  Documented found;
  bool areAttributes = false;
  for (const std::string& line : sectionOf(heading)) {
    if (!line.starts_with("|") || line.starts_with("|---")) continue;
    const auto cells = cellsOf(line);
    if (line.starts_with("| attribute ")) areAttributes = true;
    const Names names = inBackquotes(cells.at(0));
    if (areAttributes) {
      found.attributes.insert(names.begin(), names.end());
    } else if (!names.empty()) {
      EXPECT_TRUE(found.elements.emplace(*names.begin(), cells).second) << line;
    }
  }
  return found;
}

// "a container" stands for those of a box.
void expectParents(const Refhost::ElementFormat& element, const Refhost::DocumentFormat& format,
                   const std::string& cell) {
  if (element.within.empty())
    EXPECT_EQ(cell, " the root ") << element.name;
  else if (cell == " a container ")
    EXPECT_EQ(element.within, format.find("vbox")->within) << element.name;
  else
    EXPECT_EQ(inBackquotes(cell), wordsOf(element.within)) << element.name;
}

void expectDocumented(const Refhost::DocumentFormat& format, const std::string& heading) {
  const Documented documented = documentedIn(heading);
  EXPECT_EQ(documented.elements.size(), format.elements.size());
  Names attributes;
  for (const auto& element : format.elements) {
    const auto row = documented.elements.find(std::string(element.name));
    ASSERT_NE(row, documented.elements.end()) << element.name;
    expectParents(element, format, row->second.at(1));
    EXPECT_EQ(inBackquotes(row->second.at(2)), wordsOf(element.attributes)) << element.name;
    attributes.merge(wordsOf(element.attributes));
    attributes.merge(wordsOf(element.sharedAttributes));
  }
  EXPECT_EQ(documented.attributes, attributes);
}

TEST(FormatsPage, NamesAllOfALayout) {
  expectDocumented(Refhost::layoutFormat, "Layouts");
  const auto lines = sectionOf("Layouts");
  std::string text;
  for (const std::string& line : lines) text += line + " ";
  const auto shared = text.find("All but the last three also take ");
  ASSERT_NE(shared, text.npos);
  for (const auto& element : Refhost::layoutFormat.elements) {
    const Names own = inBackquotes(text.substr(shared, text.find('.', shared) - shared));
    const bool isLast = &element - Refhost::layoutFormat.elements.data() >=
                        static_cast<std::ptrdiff_t>(Refhost::layoutFormat.elements.size()) - 3;
    EXPECT_EQ(wordsOf(element.sharedAttributes), isLast ? Names() : own) << element.name;
  }
  EXPECT_NE(text.find(Refhost::layoutFormat.nameSpace), text.npos);
}

TEST(FormatsPage, NamesAllOfAModel) { expectDocumented(Refhost::modelFormat, "Models"); }
TEST(FormatsPage, NamesAllOfAPluginDescription) { expectDocumented(Refhost::pluginFormat, "Plug-in descriptions"); }
TEST(FormatsPage, NamesAllOfATicketSchema) {
  expectDocumented(Refhost::ticketSchemaFormat, "Ticket schemas");
  EXPECT_NE(exampleOf("Ticket schemas").find(Refhost::ticketSchemaFormat.nameSpace), std::string::npos);
}

TEST(FormatsPage, HasALayoutAndItsTextsThatCanBeRead) {
  const Testing::TemporaryFolder folder;
  writeFile(folder.path / "staple" / "content" / "tab.xul", exampleOf("Layouts"));
  writeFile(folder.path / "staple" / "content" / "en-US" / "strings.dtd", exampleOf("String tables"));
  const Refhost::ChromeFolders chrome(folder.path);
  const Refhost::StringTables strings(chrome, "en-US");
  const Refhost::Trace trace;
  Refhost::WidgetWorld world{trace, strings, {}, [](const auto& action) { action(); }, [](auto&) {}};
  const auto layout = Refhost::LayoutReader(chrome, {}).read(u"chrome://staple/content/tab.xul", world);
  ASSERT_NE(layout.find(u"cmb_place"), nullptr);
  EXPECT_EQ(strings.resolve(layout.root->WidgetNode::label()), u"Staples");
  EXPECT_EQ(strings.resolve(u"$IDS_STAPLE;"), u"Staple & fold");
}

TEST(FormatsPage, HasAPluginDescriptionThatCanBeRead) {
  const Testing::TemporaryFolder folder;
  writeFile(folder.path / "plugin.xml", exampleOf("Plug-in descriptions"));
  EXPECT_EQ(Refhost::readPluginDescription(folder.path / "plugin.xml").name, "staple");
}

TEST(FormatsPage, HasAModelThatCanBeRead) {
  const Testing::TemporaryFolder folder;
  writeFile(folder.path / "folder.xml", exampleOf("Models"));
  const auto model =
      Refhost::readModel(std::filesystem::path(RESOURCES_FOLDER) / "models", (folder.path / "folder.xml").string());
  EXPECT_EQ(model.name, u"folder");
  EXPECT_EQ(model.rules.size(), 1U);
}

TEST(FormatsPage, HasATicketSchemaThatCanBeRead) {
  const auto document = Refhost::readXml(exampleOf("Ticket schemas"), "schema.xml", Refhost::documentLimits);
  EXPECT_EQ(Refhost::readSchema(*document).features.size(), 1U);
}

}  // namespace
