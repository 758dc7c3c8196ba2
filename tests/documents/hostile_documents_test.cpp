// Documents that mean harm. None may crash, hang, or cost more than a small multiple of its size.
#include "files_world.h"

#include "host/documents/documents.h"
#include "host/documents/stores.h"

#include <gtest/gtest.h>

#include <ctime>

using namespace Refhost;

namespace {

#if defined(__has_feature)
#define HAS_SANITIZER __has_feature(address_sanitizer)
#elif defined(__SANITIZE_ADDRESS__)
#define HAS_SANITIZER 1
#else
#define HAS_SANITIZER 0
#endif

// How many times as long things may take: with a sanitizer, and on Windows, whose clock counts other programs' time
// too.
#if HAS_SANITIZER
constexpr int slowness = 10;
#elif defined(_WIN32)
constexpr int slowness = 4;
#else
constexpr int slowness = 1;
#endif

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

// The processor's time that reading takes. What is allowed below leaves room for a machine that is busy with other
// things.
double secondsToRead(std::string bytes, bool isReadable) {
  const auto store = memoryStore(std::move(bytes));
  const std::clock_t start = std::clock();
  const std::string sentence = sentenceOf<Kiln::Exception>([&] { makeDocuments()->read(store); });
  EXPECT_EQ(sentence.empty(), isReadable) << sentence;
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC / slowness;
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

TEST(HostileDocument, WithEntitiesThatGrowIsRefusedAtOnce) {
  std::string bomb = "<!DOCTYPE a [<!ENTITY e0 \"ha\">";
  for (int i = 1; i < 40; ++i) {
    const std::string inner = "&e" + std::to_string(i - 1) + ";";
    bomb += "<!ENTITY e" + std::to_string(i) + " \"" + inner + inner + "\">";
  }
  bomb += "]><a>&e39;</a>";
  EXPECT_LT(secondsToRead(bomb, false), 0.1);
}

TEST(HostileDocument, WithAnEntityOfAnotherFileIsRefused) {
  EXPECT_NE(refusal("<!DOCTYPE a [<!ENTITY e SYSTEM \"file:///etc/passwd\">]><a>&e;</a>"), "");
}

TEST(HostileDocument, ThatIsTooDeepIsRefused) {
  const auto nested = [](std::size_t depth) { return repeated("<a>", depth) + repeated("</a>", depth); };
  EXPECT_EQ(refusal(nested(documentLimits.depth)), "");
  EXPECT_NE(refusal(nested(documentLimits.depth + 1)).find("deeper in one another"), std::string::npos);
  EXPECT_LT(secondsToRead(repeated("<a>", 200'000), false), 0.1);
}

std::string recordsOf(int count) {
  std::string document = "<marks>";
  for (int i = 0; i < count; ++i) document += "<WM_" + std::to_string(i) + ">Draft</WM_" + std::to_string(i) + ">";
  return document + "</marks>";
}

TEST(HostileDocument, WithAMillionRecordsIsReadInSeconds) {
  const double hundredThousand = secondsToRead(recordsOf(100'000), true);
  const double million = secondsToRead(recordsOf(1'000'000), true);
  EXPECT_LT(million, 6);
  EXPECT_LT(million, 30 * hundredThousand);  // 10 times as many: 100 times as long if the cost grew with the square
}

TEST(HostileDocument, WithMoreElementsThanThatIsRefused) {
  EXPECT_NE(refusal("<a>" + repeated("<b/>", documentLimits.nodes) + "</a>").find("more elements than this host reads"),
            std::string::npos);
}

TEST(HostileDocument, WithManyAttributesIsReadOrRefusedSoon) {
  std::string document = "<a";
  for (int i = 0; i < 300'000; ++i) document += " b" + std::to_string(i) + "=''";
  EXPECT_LT(secondsToRead(document + "/>", true), 1.5);
}

TEST(HostileDocument, WithManyPrefixesIsReadOrRefusedSoon) {
  std::string document = "<a";
  for (int i = 0; i < 100'000; ++i) document += " xmlns:p" + std::to_string(i) + "='urn:" + std::to_string(i) + "'";
  EXPECT_LT(secondsToRead(document + "/>", true), 3);
}

TEST(HostileDocument, OfOneLongTextIsRead) {
  EXPECT_LT(secondsToRead("<a>" + std::string(30 << 20, 'x') + "</a>", true), 3);
  EXPECT_LT(secondsToRead("<a>" + repeated("&amp;", 1 << 20) + "</a>", true), 1.5);
  EXPECT_LT(secondsToRead("<a>" + repeated("_x0", 1 << 20) + "</a>", true), 1.5);
}

TEST(HostileDocument, ThatIsTooLargeIsRefusedUnread) {
  EXPECT_EQ(refusal("<a>" + std::string(documentLimits.bytes, ' ') + "</a>"),
            "The document is larger than this host reads.");
}

}  // namespace
