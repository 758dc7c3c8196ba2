// What the contract's headers say of their operations, and how objects are asked for their interfaces.
#include "host/chrome/layout.h"
#include "host/documents/node.h"
#include "host/object.h"
#include "kiln/plugin.h"
#include "kiln/widgets.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

using Kiln::SmartPtr;
namespace XUL = Kiln::XUL;

const std::filesystem::path source = SOURCE_FOLDER;

std::vector<std::string> linesOf(const std::filesystem::path& file) {
  std::vector<std::string> lines;
  std::ifstream stream(file);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

// The comment right above a line, as one text.
std::string commentAbove(const std::vector<std::string>& lines, std::size_t line) {
  std::string comment;
  while (line > 0) {
    const std::string& above = lines[--line];
    const auto start = above.find_first_not_of(' ');
    if (start == above.npos || above.compare(start, 2, "//") != 0) break;
    comment.insert(0, above.substr(start + 2));
  }
  return comment;
}

TEST(Operations, HaveACommentOfTheirOwnThatSaysWhoCalls) {
  const std::regex operation("^  virtual .*\\b(\\w+)\\(.*");
  const std::regex caller("\\[(plug-in|plug-in, ready|host|plug-in, host)\\]$");
  std::size_t operations = 0;
  for (const auto& entry : std::filesystem::directory_iterator(source / "kiln")) {
    const auto lines = linesOf(entry.path());
    for (std::size_t i = 0; i < lines.size(); ++i) {
      std::smatch match;
      if (!std::regex_match(lines[i], match, operation) || lines[i].find("virtual ~") != std::string::npos) continue;
      ++operations;
      EXPECT_TRUE(std::regex_search(commentAbove(lines, i), caller))
          << entry.path().filename() << ":" << i + 1 << ": " << match[1];
    }
  }
  EXPECT_GT(operations, 150U);
}

TEST(Operations, AreNeverAskedForByDynamicCast) {
  for (const char* layer : {"kiln", "effect"})
    for (const auto& entry : std::filesystem::recursive_directory_iterator(source / layer)) {
      if (entry.path().extension() != ".h" && entry.path().extension() != ".cpp") continue;
      for (const std::string& line : linesOf(entry.path())) {
        const std::string code = line.substr(0, line.find("//"));
        EXPECT_EQ(code.find("dynamic_cast"), std::string::npos) << entry.path();
        EXPECT_EQ(code.find("typeid"), std::string::npos) << entry.path();
      }
    }
}

template <class Kind>
void addKind(std::set<std::string>& kinds, const SmartPtr<XUL::Widget>& widget) {
  const auto found = Kiln::smartCast<Kind>(widget);
  EXPECT_EQ(bool(found), dynamic_cast<Kind*>(widget.get()) != nullptr) << Kind::interfaceName;
  if (!found) return;
  EXPECT_EQ(found.get(), dynamic_cast<Kind*>(widget.get()));
  kinds.insert(Kind::interfaceName);
}

// The kinds that a widget answers to, each held to be the one that it is.
std::set<std::string> kindsOf(const SmartPtr<XUL::Widget>& widget) {
  std::set<std::string> kinds;
  addKind<XUL::Widget>(kinds, widget);
  addKind<XUL::Label>(kinds, widget);
  addKind<XUL::ImageBox>(kinds, widget);
  addKind<XUL::Button>(kinds, widget);
  addKind<XUL::Toggle>(kinds, widget);
  addKind<XUL::CheckBox>(kinds, widget);
  addKind<XUL::RadioButton>(kinds, widget);
  addKind<XUL::Selector>(kinds, widget);
  addKind<XUL::ListBox>(kinds, widget);
  addKind<XUL::ComboBox>(kinds, widget);
  addKind<XUL::TextBox>(kinds, widget);
  addKind<XUL::IntegerTextBox>(kinds, widget);
  addKind<XUL::ScrollBar>(kinds, widget);
  addKind<XUL::ColorPicker>(kinds, widget);
  addKind<XUL::WMPreview>(kinds, widget);
  addKind<XUL::Container>(kinds, widget);
  return kinds;
}

void addKindsOf(Refhost::WidgetNode& node, std::set<std::string>& kinds) {
  kinds.merge(kindsOf(SmartPtr<XUL::Widget>(&node.asWidget())));
  for (Refhost::WidgetNode* child : node.children()) addKindsOf(*child, kinds);
}

TEST(Operations, TellEveryWidgetsKind) {
  const Refhost::Trace trace;
  const Refhost::ChromeFolders chrome{RESOURCES_FOLDER};
  const Refhost::StringTables strings{chrome, "en-US"};
  Refhost::WidgetWorld widgets{trace, strings, nullptr, {}, {}};
  const Refhost::LayoutReader layouts(chrome, {});
  std::set<std::string> kinds;
  for (const char16_t* address :
       {u"chrome://effect/content/tab_effect.xul", u"chrome://effect/content/dlg_watermark.xul",
        u"chrome://effect/content/dlg_multipleoverlay.xul"}) {
    const Refhost::Layout layout = layouts.read(address, widgets);
    addKindsOf(*layout.root, kinds);
  }
  EXPECT_EQ(kinds, (std::set<std::string>{"Widget", "Label", "ImageBox", "Button", "Toggle", "CheckBox", "RadioButton",
                                          "Selector", "ListBox", "ComboBox", "TextBox", "IntegerTextBox", "ScrollBar",
                                          "ColorPicker", "WMPreview", "Container"}));
}

TEST(Operations, KnowNoInterfaceOfAnotherName) {
  const auto node = Refhost::make<Refhost::Node>(u"a");
  for (const char* name : {"", "node", "Refhost::Nod", "Refhost::Node2", "Widget", "kiln.version"})
    EXPECT_EQ(node->queryInterface(name), nullptr) << name;
  EXPECT_EQ(node->queryInterface(Refhost::Node::interfaceName), node.get());
  EXPECT_FALSE(Kiln::smartCast<Refhost::Node>(SmartPtr<Kiln::Dom::INode>()));
}

}  // namespace
