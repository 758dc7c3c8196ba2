#include "host/documents/documents.h"
#include "tests/files/scratch.h"

#include <gtest/gtest.h>

using namespace Refhost;

namespace {

const std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

std::string again(const std::string& document) {
  const std::string bytes = writeXml(*readXml(document, "ticket", documentLimits));
  EXPECT_EQ(writeXml(*readXml(bytes, "ticket", documentLimits)), bytes);
  return bytes;
}

// Documents in the canonical form are unchanged by a round trip.
void expectKept(const std::string& body) { EXPECT_EQ(again(head + body), head + body); }

TEST(Namespaces, PrefixesAndAttributesAreKept) {
  expectKept("<p:ticket xmlns:p=\"urn:p\" xmlns:q=\"urn:q\" version=\"1\">\n"
             "  <p:feature name=\"q:mirror\"/>\n"
             "  <q:value q:type=\"p:text\">a</q:value>\n"
             "</p:ticket>\n");
}

TEST(Namespaces, TheDefaultOneIsKept) {
  expectKept("<ticket xmlns=\"urn:p\">\n  <inner xmlns=\"\">\n    <bare/>\n  </inner>\n  <feature/>\n</ticket>\n");
}

TEST(Namespaces, APrefixMayChangeItsMeaningInside) {
  expectKept("<p:a xmlns:p=\"urn:1\">\n  <p:b xmlns:p=\"urn:2\"/>\n  <p:c/>\n</p:a>\n");
}

TEST(Namespaces, UnusedDeclarationsAreKeptForTheTextsThatMeanThem) {
  expectKept("<a xmlns:psk=\"urn:keywords\">\n  <b>psk:Portrait</b>\n</a>\n");
}

TEST(Namespaces, TheOneOfXmlItselfIsNeverDeclared) {
  expectKept("<a xml:lang=\"de\" xml:space=\"preserve\"/>\n");
  const auto root = make<Node>(u"root");
  root->attributes = {{u"http://www.w3.org/XML/1998/namespace", u"", u"lang", u"de"}};
  EXPECT_EQ(writeXml(*root), head + "<root xml:lang=\"de\"/>\n");
}

TEST(Namespaces, AttributeValuesComeBackExactly) {
  expectKept("<a b=\"&amp;&lt;&gt;&quot;'&#9;&#10;&#13; \"/>\n");
  EXPECT_EQ(readXml("<a b='&#13;&#10;&#9;'/>", "", documentLimits)->attributes.at(0).value, u"\r\n\t");
}

TEST(Namespaces, AreDeclaredWhereTheyAreFirstWanted) {
  const auto root = make<Node>(u"root");
  for (const auto name : {u"a", u"b"}) {
    auto child = make<Node>(name);
    child->prefix = u"p";
    child->nameSpace = u"urn:p";
    root->append(child);
  }
  EXPECT_EQ(writeXml(*root), head + "<root>\n  <p:a xmlns:p=\"urn:p\"/>\n  <p:b xmlns:p=\"urn:p\"/>\n</root>\n");
  root->declarations = {{u"p", u"urn:p"}};
  EXPECT_EQ(writeXml(*root), head + "<root xmlns:p=\"urn:p\">\n  <p:a/>\n  <p:b/>\n</root>\n");
}

TEST(Namespaces, TwoOfOnePrefixOnOneElementAreToldApart) {
  const auto root = make<Node>(u"root");
  root->prefix = u"p";
  root->nameSpace = u"urn:1";
  root->attributes = {{u"urn:2", u"p", u"a", u"v"}, {u"urn:3", u"", u"b", u"v"}, {u"urn:2", u"p", u"c", u"v"}};
  const std::string bytes = writeXml(*root);
  EXPECT_EQ(bytes, head + "<p:root xmlns:p=\"urn:1\" xmlns:ns1=\"urn:2\" xmlns:ns2=\"urn:3\" ns1:a=\"v\" ns2:b=\"v\" "
                          "ns1:c=\"v\"/>\n");
  const auto read = readXml(bytes, "", documentLimits);
  EXPECT_EQ(read->nameSpace, u"urn:1");
  EXPECT_EQ(read->attributes.at(0).nameSpace, u"urn:2");
  EXPECT_EQ(read->attributes.at(1).nameSpace, u"urn:3");
}

TEST(Namespaces, APrefixThatAnElementUsesIsNotChangedOnIt) {
  const auto root = make<Node>(u"root");
  root->declarations = {{u"p", u"urn:1"}};
  auto child = make<Node>(u"child");
  child->prefix = u"p";
  child->nameSpace = u"urn:1";
  child->attributes = {{u"urn:2", u"p", u"a", u"v"}};
  root->append(child);
  EXPECT_EQ(writeXml(*root),
            head + "<root xmlns:p=\"urn:1\">\n  <p:child xmlns:ns1=\"urn:2\" ns1:a=\"v\"/>\n</root>\n");
}

TEST(Namespaces, AnElementWithoutOneLeavesTheDefaultOne) {
  const auto root = make<Node>(u"root");
  root->nameSpace = u"urn:p";
  root->childOrNew(u"bare");
  const std::string bytes = writeXml(*root);
  EXPECT_EQ(bytes, head + "<root xmlns=\"urn:p\">\n  <bare xmlns=\"\"/>\n</root>\n");
  EXPECT_TRUE(readXml(bytes, "", documentLimits)->children().at(0)->nameSpace.empty());
}

TEST(Namespaces, DeclarationsThatXmlDoesNotAllowAreRefused) {
  const std::vector<std::pair<std::u16string, std::u16string>> wrong[] = {
      {{u"p", u""}},
      {{u"xmlns", u"urn:p"}},
      {{u"xml", u"urn:p"}},
      {{u"a b", u"urn:p"}},
      {{u"p", u"urn:1"}, {u"p", u"urn:2"}},
      {{u"", u"urn:p"}}};  // on an element without a namespace
  for (const auto& declarations : wrong) {
    const auto root = make<Node>(u"root");
    root->declarations = declarations;
    EXPECT_THROW(writeXml(*root), std::runtime_error);
  }
}

}  // namespace
