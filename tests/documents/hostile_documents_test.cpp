// Documents that mean harm. None may crash, hang, or cost more than a small multiple of its size.
#include "files_world.h"

#include "host/documents/documents.h"
#include "host/documents/stores.h"
#include "tests/support/growth.h"

#include <gtest/gtest.h>

using namespace Refhost;
using Testing::growsLinearly;

namespace {

std::string refusal(std::string bytes) {
  const auto store = memoryStore(std::move(bytes));
  return sentenceOf<Kiln::Exception>([&] { makeDocuments()->read(store); });
}

std::string repeated(std::string_view text, std::size_t times) {
  std::string all;
  all.reserve(text.size() * times);
  while (times-- > 0) all += text;
  return all;
}

// The reading of a document that is made of so many pieces.
template <class MakeDocument>
Testing::Preparation readingOf(const MakeDocument& make) {
  return [make](int count) { return [store = memoryStore(make(count))] { makeDocuments()->read(store); }; };
}

TEST(HostileDocument, ThatIsCutOffAnywhereIsRefused) {
  const std::string whole = "<?xml version=\"1.0\"?>\n<a><_x0030_ b=\"c\">t&amp;\xC3\xA9<!-- d --></_x0030_></a>";
  for (std::size_t size = 0; size < whole.size(); ++size) EXPECT_NE(refusal(whole.substr(0, size)), "") << size;
  EXPECT_EQ(refusal(whole), "");
}

TEST(HostileDocument, ThatIsNoXmlIsRefused) {
  EXPECT_NE(refusal("PK\x03\x04 what is this"), "");
  EXPECT_NE(refusal(std::string(1000, '\0')), "");
  EXPECT_NE(refusal("<a>\x01</a>"), "");
  EXPECT_NE(refusal("<a>&#0;</a>"), "");
  EXPECT_NE(refusal("<a>\xED\xA0\x80</a>"), "");
  EXPECT_NE(refusal("<a>\xFF</a>"), "");
  EXPECT_NE(refusal("<a/><b/>"), "");
  EXPECT_NE(refusal("<p:a/>"), "");
  EXPECT_NE(refusal("<a b='1' b='2'/>"), "");
  EXPECT_NE(refusal("<a>&unknown;</a>"), "");
}

TEST(HostileDocument, WithADoctypeIsRefused) {
  EXPECT_EQ(refusal("<!DOCTYPE a>\n<a/>"), "The document:1: a DOCTYPE is not allowed here.");
}

TEST(HostileDocument, WithEntitiesThatGrowIsRefusedUnexpanded) {
  std::string bomb = "<!DOCTYPE a [<!ENTITY e0 \"ha\">";
  for (int i = 1; i < 40; ++i) {
    const std::string inner = "&e" + std::to_string(i - 1) + ";";
    bomb += "<!ENTITY e" + std::to_string(i) + " \"" + inner + inner + "\">";
  }
  bomb += "]><a>&e39;</a>";
  EXPECT_EQ(refusal(bomb), "The document:1: a DOCTYPE is not allowed here.");
}

TEST(HostileDocument, WithAnEntityOfAnotherFileIsRefused) {
  EXPECT_NE(refusal("<!DOCTYPE a [<!ENTITY e SYSTEM \"file:///etc/passwd\">]><a>&e;</a>"), "");
}

TEST(HostileDocument, ThatIsTooDeepIsRefused) {
  const auto nested = [](std::size_t depth) { return repeated("<a>", depth) + repeated("</a>", depth); };
  EXPECT_EQ(refusal(nested(documentLimits.depth)), "");
  EXPECT_NE(refusal(nested(documentLimits.depth + 1)).find("deeper in one another"), std::string::npos);
  EXPECT_NE(refusal(repeated("<a>", 200'000)).find("deeper in one another"), std::string::npos);
}

std::string recordsOf(int count) {
  std::string document = "<marks>";
  for (int i = 0; i < count; ++i) document += "<WM_" + std::to_string(i) + ">Draft</WM_" + std::to_string(i) + ">";
  return document + "</marks>";
}

TEST(HostileDocument, WithManyRecordsIsReadInTimeLinearInThem) {
  EXPECT_TRUE(growsLinearly(20'000, readingOf(recordsOf)));
}

TEST(HostileDocument, WithAsManyElementsAsThisHostReadsIsReadAndWithOneMoreRefused) {
  const std::string most = "<a>" + repeated("<b/>", documentLimits.nodes - 1);
  EXPECT_EQ(refusal(most + "</a>"), "");
  EXPECT_NE(refusal(most + "<b/></a>").find("more elements than this host reads"), std::string::npos);
}

std::string attributesOf(int count) {
  std::string document = "<a";
  for (int i = 0; i < count; ++i) document += " b" + std::to_string(i) + "=''";
  return document + "/>";
}

TEST(HostileDocument, WithManyAttributesIsReadInTimeLinearInThem) {
  EXPECT_TRUE(growsLinearly(3'000, readingOf(attributesOf)));
  EXPECT_EQ(refusal(attributesOf(300'000)), "");
}

std::string prefixesOf(int count) {
  std::string document = "<a";
  for (int i = 0; i < count; ++i) document += " xmlns:p" + std::to_string(i) + "='urn:" + std::to_string(i) + "'";
  return document + "/>";
}

TEST(HostileDocument, WithManyPrefixesIsReadInTimeLinearInThem) {
  EXPECT_TRUE(growsLinearly(3'000, readingOf(prefixesOf)));
  EXPECT_EQ(refusal(prefixesOf(100'000)), "");
}

TEST(HostileDocument, OfOneLongTextIsReadInTimeLinearInIt) {
  for (const char* piece : {"xxx", "&amp;", "_x0"})
    EXPECT_TRUE(growsLinearly(100'000, readingOf([piece](int count) {
                                return "<a>" + repeated(piece, static_cast<std::size_t>(count)) + "</a>";
                              })))
        << piece;
  EXPECT_EQ(refusal("<a>" + std::string(30 << 20, 'x') + "</a>"), "");
}

TEST(HostileDocument, ThatIsTooLargeIsRefusedUnread) {
  EXPECT_EQ(refusal("<a>" + std::string(documentLimits.bytes, ' ') + "</a>"),
            "The document is larger than this host reads.");
}

}  // namespace
