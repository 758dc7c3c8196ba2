#include "files_world.h"
#include "host/documents/documents.h"
#include "host/documents/stores.h"

#include <gtest/gtest.h>

#include <random>

using namespace Refhost;

namespace {

using NodePointer = Kiln::SmartPtr<Kiln::Dom::INode>;

std::string written(const NodePointer& root) {
  const auto store = memoryStore();
  makeDocuments()->write(root, store);
  return std::string(store->readAll().view());
}

NodePointer readBack(std::string bytes) { return makeDocuments()->read(memoryStore(std::move(bytes))); }

// Writes and reads a document with one child; returns that child.
NodePointer afterRoundTrip(std::u16string_view name, std::u16string_view value) {
  const NodePointer root = makeDocuments()->createElement(u"root", u"", u"");
  root->childOrNew(name)->setValue(value);
  const NodePointer again = readBack(written(root));
  EXPECT_EQ(again->childCount(), 1);
  return again->childAt(0);
}

void expectEqual(const Node& a, const Node& b) {
  ASSERT_EQ(a.localNameText(), b.localNameText());
  ASSERT_EQ(a.text(), b.text());
  ASSERT_EQ(a.children().size(), b.children().size());
  for (std::size_t i = 0; i < a.children().size(); ++i)
    ASSERT_NO_FATAL_FAILURE(expectEqual(*a.children()[i], *b.children()[i]));
}

TEST(Documents, AreReadableByAPerson) {
  const NodePointer root = makeDocuments()->createElement(u"watermarks", u"", u"");
  const NodePointer record = root->childOrNew(u"0");
  record->childOrNew(u"label")->setValue(u"Caf\u00E9 <&> \"\u4E0B\u66F8\u304D\"");
  record->childOrNew(u"transparency")->childOrNew(u"intensity")->setValue(u"0");
  record->childOrNew(u"fontname");
  EXPECT_EQ(written(root), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                           "<watermarks>\n"
                           "  <_x0030_>\n"
                           "    <label>Caf\u00E9 &lt;&amp;&gt; \"\u4E0B\u66F8\u304D\"</label>\n"
                           "    <transparency>\n"
                           "      <intensity>0</intensity>\n"
                           "    </transparency>\n"
                           "    <fontname/>\n"
                           "  </_x0030_>\n"
                           "</watermarks>\n");
}

TEST(Documents, GiveTheSameBytesForTheSameContent) {
  const NodePointer root = makeDocuments()->createElement(u"root", u"", u"");
  for (const auto id : {u"WM_2", u"0", u"WM_10"}) root->childOrNew(id)->childOrNew(u"label")->setValue(id);
  const std::string bytes = written(root);
  EXPECT_EQ(written(root->clone()), bytes);
  EXPECT_EQ(written(readBack(bytes)), bytes);
}

TEST(Documents, KeepTheOrderOfChildrenAndEveryOneOfAName) {
  const NodePointer root = readBack("<r><b>1</b><a>2</a><b>3</b></r>");
  ASSERT_EQ(root->childCount(), 3);
  EXPECT_EQ(root->childAt(1)->value().view(), u"2");
  EXPECT_EQ(root->childAt(2)->value().view(), u"3");
  EXPECT_EQ(root->child(u"b")->value().view(), u"1");
}

TEST(Documents, CarryEveryUnitInNamesAndTexts) {
  for (unsigned unit = 0; unit <= 0xFFFF; unit += unit < 0x180 || unit >= 0xD7F0 ? 1 : 37) {
    const std::u16string text(1, static_cast<char16_t>(unit));
    const NodePointer child = afterRoundTrip(text, text);
    ASSERT_EQ(child->name().str(), text) << unit;
    ASSERT_EQ(child->value().str(), text) << unit;
  }
}

TEST(Documents, CarryTextsThatXmlWouldChange) {
  for (const std::u16string text : {u"", u" ", u"\n", u" a ", u"\r\n", u"a\rb\r\nc\n", u"\t\ta\t", u"]]>", u"<![CDATA[",
                                    u"&amp;", u"_x0030_", u"_x005F_x0030_", u"__x", u"_", u"x_", u"_x", u"&#13;"}) {
    const NodePointer child = afterRoundTrip(text, text);
    EXPECT_EQ(child->name().str(), text);
    EXPECT_EQ(child->value().str(), text);
  }
}

TEST(Documents, CarryTheTextOfAnElementWithChildren) {
  for (const std::u16string text : {u"text", u" \r\n text\t", u"   ", u"a\n\nb", u"_x0020_"}) {
    const NodePointer root = makeDocuments()->createElement(u"root", u"", u"");
    root->setValue(text);
    root->childOrNew(u"child");
    EXPECT_EQ(readBack(written(root))->value().str(), text);
  }
}

// Fragments whose combinations are error-prone.
class RandomTexts {
 public:
  std::u16string next(std::size_t most) {
    std::u16string text;
    for (std::size_t length = below(most + 1); length > 0; --length) text += piece();
    return text;
  }
  std::size_t below(std::size_t end) { return random() % end; }

 private:
  std::u16string piece() {
    static const std::u16string pieces[] = {u"_", u"x",  u"_x", u"_x0030_", u"0", u"0030", u"A",
                                            u" ", u"\n", u"\r", u"<",       u"&", u"]]>"};
    switch (below(4)) {
      case 0: return std::u16string(1, static_cast<char16_t>(below(0x10000)));
      case 1: return std::u16string(1, static_cast<char16_t>(below(0x80)));
      case 2: return std::u16string(1, static_cast<char16_t>(0xD800 + below(0x800)));
      default: return pieces[below(std::size(pieces))];
    }
  }

  std::mt19937 random{20240501};
};

TEST(Documents, BringBackRandomIdsAndTexts) {
  RandomTexts texts;
  for (int document = 0; document < 6; ++document) {
    const auto root = make<Node>(u"root");
    for (int i = 0; i < 50'000; ++i) {
      auto child = make<Node>(texts.next(6));
      child->setValue(texts.next(8));
      root->append(child);
    }
    const NodePointer again = readBack(written(root));
    ASSERT_NO_FATAL_FAILURE(expectEqual(*root, *Kiln::smartCast<Node>(again)));
  }
}

Kiln::SmartPtr<Node> randomTree(RandomTexts& texts, int depth) {
  auto node = make<Node>(texts.next(4));
  node->setValue(texts.next(4));
  if (depth > 0)
    for (std::size_t children = texts.below(4); children > 0; --children) node->append(randomTree(texts, depth - 1));
  return node;
}

TEST(Documents, BringBackRandomTrees) {
  RandomTexts texts;
  for (int i = 0; i < 500; ++i) {
    const auto root = randomTree(texts, 5);
    const std::string bytes = written(root);
    const NodePointer again = readBack(bytes);
    ASSERT_NO_FATAL_FAILURE(expectEqual(*root, *Kiln::smartCast<Node>(again)));
    ASSERT_EQ(written(again), bytes);
  }
}

TEST(Documents, ReadWhatPeopleWrite) {
  const NodePointer root =
      readBack("\xEF\xBB\xBF<?xml version='1.0'?>\r\n<!-- mine -->\r\n<marks>\r\n"
               "  <_x0031_><label>Draft<!-- ! --> &#x41;<![CDATA[<b>]]></label>\r\n<!-- --></_x0031_>\r\n"
               "  <plain_x/>\r\n</marks>");
  EXPECT_EQ(root->child(u"1")->child(u"label")->value().view(), u"Draft A<b>");
  EXPECT_TRUE(root->child(u"1")->value().empty());
  EXPECT_TRUE(root->value().empty());
  EXPECT_TRUE(root->child(u"plain_x"));
}

TEST(Documents, ReadTheEncodingThatIsDeclared) {
  EXPECT_EQ(readBack("<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE9</a>")->value().view(), u"\u00E9");
  EXPECT_EQ(readBack(std::string("\xFF\xFE<\0a\0/\0>\0", 10))->name().view(), u"a");
}

TEST(Documents, GoThroughAFileAndAreTraced) {
  const FilesWorld world;
  const auto store = fileStore(world.files, world.path(u"marks.xml"));
  const NodePointer root = makeDocuments()->createElement(u"marks", u"", u"");
  root->childOrNew(u"0");
  makeDocuments()->write(root, store);
  const std::string bytes = contentOf(world.scratch.folder / "marks.xml");
  EXPECT_EQ(bytes, written(root));
  EXPECT_EQ(world.events, std::vector<std::string>{"write path=marks.xml bytes=" + std::to_string(bytes.size())});
  makeDocuments()->write(makeDocuments()->read(store), store);
  EXPECT_EQ(world.events.size(), 1u);
}

TEST(Documents, NameTheFileAndTheLineThatIsWrong) {
  const FilesWorld world;
  put(world.scratch.folder / "marks.xml", "<marks>\n  <a>\n</marks>\n");
  const auto store = fileStore(world.files, world.path(u"marks.xml"));
  EXPECT_EQ(sentenceOf<Kiln::Exception>([&] { makeDocuments()->read(store); }),
            Files::shownPath(world.scratch.folder / "marks.xml") + ":3: mismatched tag");
}

TEST(Documents, RefuseToWriteWhatTheyWouldNotRead) {
  const FilesWorld world;
  put(world.scratch.folder / "marks.xml", "old");
  const auto store = fileStore(world.files, world.path(u"marks.xml"));
  const NodePointer root = makeDocuments()->createElement(u"root", u"", u"");
  NodePointer inner = root;
  for (std::size_t depth = 1; depth < documentLimits.depth; ++depth) inner = inner->childOrNew(u"a");
  EXPECT_EQ(readBack(written(root))->childCount(), 1);
  inner->childOrNew(u"a");
  EXPECT_THROW(makeDocuments()->write(root, store), Kiln::Exception);
  EXPECT_EQ(contentOf(world.scratch.folder / "marks.xml"), "old");

  const NodePointer large = makeDocuments()->createElement(u"root", u"", u"");
  constexpr std::size_t escapedBytes = 7;  // _x0001_
  large->setValue(std::u16string(documentLimits.bytes / escapedBytes + 1, u'\u0001'));
  EXPECT_THROW(makeDocuments()->write(large, store), Kiln::Exception);

  const auto wide = make<Node>(u"root");
  while (wide->children().size() < documentLimits.nodes) wide->append(make<Node>(u"a"));
  EXPECT_THROW(makeDocuments()->write(wide, store), Kiln::Exception);
  EXPECT_EQ(contentOf(world.scratch.folder / "marks.xml"), "old");
  EXPECT_THROW(makeDocuments()->write({}, store), Kiln::Exception);
}

TEST(XmlWithoutEscaping, KeepsNamesAndTextsAsTheyAre) {
  const auto root = readXml("<a><b_x0030_>_x0041_</b_x0030_></a>", "ticket", documentLimits);
  EXPECT_EQ(root->childAt(0)->name().view(), u"b_x0030_");
  EXPECT_EQ(root->childAt(0)->value().view(), u"_x0041_");
  EXPECT_EQ(writeXml(*root), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a>\n  <b_x0030_>_x0041_</b_x0030_>\n</a>\n");
}

TEST(XmlWithoutEscaping, RefusesWhatXmlCannotCarry) {
  const auto root = make<Node>(u"root");
  root->childOrNew(u"0");
  EXPECT_EQ(sentenceOf<std::runtime_error>([&] { writeXml(*root); }),
            "A document cannot be written: its element \"0\" has a name that XML cannot carry: \"0\".");
  root->removeChild(u"0");
  for (const std::u16string& text : {std::u16string(1, u'\0'), std::u16string(u"\u001F"),
                                     std::u16string(1, char16_t{0xD800}), std::u16string(u"\uFFFF")}) {
    root->setValue(text);
    EXPECT_EQ(sentenceOf<std::runtime_error>([&] { writeXml(*root); }),
              "A document cannot be written: its element \"root\" holds a character that XML cannot carry.");
  }
  root->setValue(u"\r\n\t \U0001F5A8");
  EXPECT_EQ(readXml(writeXml(*root), "ticket", documentLimits)->text(), u"\r\n\t \U0001F5A8");
}

}  // namespace
