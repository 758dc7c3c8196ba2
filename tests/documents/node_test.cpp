#include "host/documents/node.h"

#include "kiln/exception.h"
#include "tests/support/growth.h"

#include <gtest/gtest.h>

using namespace Refhost;

namespace {

using NodePointer = Kiln::SmartPtr<Kiln::Dom::INode>;

std::vector<std::u16string> childNames(const NodePointer& node) {
  std::vector<std::u16string> names;
  for (std::int32_t i = 0; i < node->childCount(); ++i) names.push_back(node->childAt(i)->name().str());
  return names;
}
using Names = std::vector<std::u16string>;

NodePointer leaf(std::u16string_view name, std::u16string_view value) {
  NodePointer node = make<Node>(name);
  node->setValue(value);
  return node;
}

TEST(Node, HasANameAndAText) {
  const NodePointer node = make<Node>(u"label");
  EXPECT_EQ(node->name().view(), u"label");
  EXPECT_TRUE(node->value().empty());
  node->setValue(u"Draft");
  EXPECT_EQ(node->value().view(), u"Draft");
}

TEST(Node, KeepsChildrenInTheOrderTheyCame) {
  const NodePointer node = make<Node>(u"root");
  node->childOrNew(u"b")->setValue(u"1");
  node->setChild(u"a", leaf(u"x", u"2"));
  EXPECT_EQ(node->childOrNew(u"b")->value().view(), u"1");
  EXPECT_EQ(childNames(node), Names({u"b", u"a"}));
  EXPECT_EQ(node->child(u"a")->value().view(), u"2");
  EXPECT_FALSE(node->child(u"x"));
  EXPECT_FALSE(node->childAt(-1));
  EXPECT_FALSE(node->childAt(2));
}

TEST(Node, PutsAChildInThePlaceOfAnother) {
  const NodePointer node = make<Node>(u"root");
  for (const auto name : {u"a", u"b", u"c"}) node->childOrNew(name);
  node->setChild(u"b", leaf(u"x", u"new"));
  EXPECT_EQ(childNames(node), Names({u"a", u"b", u"c"}));
  EXPECT_EQ(node->child(u"b")->value().view(), u"new");
}

TEST(Node, GivesTheNodeItTakesInItsName) {
  const NodePointer node = make<Node>(u"root");
  const NodePointer child = leaf(u"x", u"");
  node->setChild(u"1", child);
  EXPECT_EQ(child->name().view(), u"1");
  EXPECT_EQ(node->child(u"1"), child);
}

TEST(Node, CopiesANodeThatHasAParent) {
  const NodePointer first = make<Node>(u"first");
  const NodePointer second = make<Node>(u"second");
  const NodePointer child = leaf(u"a", u"1");
  first->setChild(u"a", child);
  second->setChild(u"b", child);
  child->setValue(u"2");
  EXPECT_EQ(child->name().view(), u"a");
  EXPECT_EQ(first->child(u"a")->value().view(), u"2");
  EXPECT_EQ(second->child(u"b")->value().view(), u"1");
}

TEST(Node, TakesInWhatHasLostItsParent) {
  NodePointer first = make<Node>(u"first");
  const NodePointer second = make<Node>(u"second");
  const NodePointer removed = first->childOrNew(u"a");
  const NodePointer replaced = first->childOrNew(u"b");
  const NodePointer orphan = first->childOrNew(u"c");
  first->removeChild(u"a");
  first->setChild(u"b", leaf(u"b", u""));
  first.reset();
  for (const NodePointer& node : {removed, replaced, orphan}) {
    second->setChild(node->name(), node);
    EXPECT_EQ(second->child(node->name()), node);
  }
}

TEST(Node, NeverLiesInItself) {
  const NodePointer root = make<Node>(u"root");
  const NodePointer inner = root->childOrNew(u"a");
  inner->setChild(u"b", root);
  root->setChild(u"c", root);
  EXPECT_NE(inner->child(u"b"), root);
  EXPECT_EQ(childNames(inner->child(u"b")), Names({u"a"}));
  EXPECT_EQ(childNames(root), Names({u"a", u"c"}));
  EXPECT_EQ(root->clone()->childCount(), 2);
}

TEST(Node, RemovesTheFirstChildOfAName) {
  const auto node = make<Node>(u"root");
  for (const auto value : {u"1", u"2"}) {
    auto child = make<Node>(u"a");
    child->setValue(value);
    node->append(child);
  }
  EXPECT_EQ(node->child(u"a")->value().view(), u"1");
  EXPECT_TRUE(node->removeChild(u"a"));
  EXPECT_EQ(node->child(u"a")->value().view(), u"2");
  EXPECT_TRUE(node->removeChild(u"a"));
  EXPECT_FALSE(node->removeChild(u"a"));
}

TEST(Node, ClonesWithEverythingBelow) {
  const auto node = make<Node>(u"root");
  node->nameSpace = u"urn:n";
  node->prefix = u"p";
  node->attributes = {{u"", u"", u"a", u"v"}};
  node->declarations = {{u"p", u"urn:n"}};
  node->childOrNew(u"a")->childOrNew(u"b")->setValue(u"1");
  const auto twin = node->copy();
  node->child(u"a")->child(u"b")->setValue(u"2");
  EXPECT_EQ(twin->child(u"a")->child(u"b")->value().view(), u"1");
  EXPECT_EQ(twin->nameSpace, u"urn:n");
  EXPECT_EQ(twin->prefix, u"p");
  EXPECT_EQ(twin->attributes.at(0).value, u"v");
  EXPECT_EQ(twin->declarations.at(0).second, u"urn:n");
}

TEST(Node, RefusesNoNode) {
  const NodePointer node = make<Node>(u"root");
  EXPECT_THROW(node->setChild(u"a", {}), Kiln::Exception);
}

// Also with the index for many children.
TEST(Node, FindsItsChildrenHoweverManyAndWhateverWasDoneToThem) {
  const NodePointer node = make<Node>(u"root");
  const auto name = [](int i) {
    const std::string digits = std::to_string(i);
    return u"n" + std::u16string(digits.begin(), digits.end());
  };
  constexpr int many = 200;
  for (int i = 0; i < many; ++i) node->childOrNew(name(i))->setValue(name(i));
  for (int i = 0; i < many; i += 3) node->setChild(name(i), leaf(u"x", u"set"));
  for (int i = 0; i < many; ++i) ASSERT_EQ(node->child(name(i))->value().str(), i % 3 == 0 ? u"set" : name(i));
  for (int i = 1; i < many; i += 3) EXPECT_TRUE(node->removeChild(name(i)));
  node->setChild(u"last", leaf(u"last", u"set"));
  for (int i = 0; i < many; ++i) {
    const NodePointer child = node->child(name(i));
    ASSERT_EQ(static_cast<bool>(child), i % 3 != 1) << i;
    if (child) {
      EXPECT_EQ(child->value().str(), i % 3 == 0 ? u"set" : name(i));
    }
  }
  EXPECT_EQ(node->child(u"last")->value().view(), u"set");
  EXPECT_FALSE(node->child(u"x"));
}

TEST(Node, TakesManyChildrenInTimeLinearInThem) {
  EXPECT_TRUE(Testing::growsLinearly(10'000, [](int count) {
    return [count] {
      const NodePointer node = make<Node>(u"root");
      for (int i = 0; i < count; ++i) {
        const std::string digits = std::to_string(i);
        node->childOrNew(std::u16string(digits.begin(), digits.end()));
      }
      EXPECT_EQ(node->childCount(), count);
    };
  }));
}

}  // namespace
