// The overlay index, and the text format of several overlays: pure functions.
#include "formats/file_list.h"
#include "overlay_home.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

namespace {

using Effect::FileListEntry;
using Effect::indexBytes;
using Effect::IndexEntry;
using Effect::isOverlayFileName;
using Effect::readIndex;
using Effect::storableName;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(IndexRecord, HasTheNameThenTheFileNameInUtf16LittleEndian) {
  const std::string bytes = indexBytes({{u"Aé€", u"01234.opa"}});
  EXPECT_EQ(bytes.size(), 154U);
  EXPECT_EQ(bytes.substr(0, 8), std::string("A\0\xE9\0\xAC\x20\0\0", 8));
  EXPECT_EQ(bytes.substr(8, 120), std::string(120, '\0'));
  EXPECT_EQ(bytes.substr(128, 20), std::string("0\0001\0002\0003\0004\0.\0o\0p\0a\0\0\0", 20));
  EXPECT_EQ(bytes.substr(148), std::string(6, '\0'));
}

TEST(IndexRecord, CutsANameThatDoesNotFitAndEndsItWithNothing) {
  for (const std::size_t units : {63U, 64U, 65U, 70U}) {
    const std::string bytes = indexBytes({{std::u16string(units, u'n'), u"1"}});
    ASSERT_EQ(bytes.size(), 154U) << units;
    const std::size_t kept = std::min<std::size_t>(units, 64);
    EXPECT_EQ(readIndex(bytes)[0].name, std::u16string(kept, u'n')) << units;
    EXPECT_EQ(bytes[126] == 'n', units >= 64) << units;
    EXPECT_EQ(readIndex(bytes)[0].fileName, u"1") << units;
  }
}

TEST(IndexRecord, CutsAFileNameToThirteenUnits) {
  const std::string bytes = indexBytes({{u"n", u"1234567890.opax"}});
  EXPECT_EQ(bytes.substr(152), std::string("p\0", 2));
  EXPECT_EQ(readIndex(bytes)[0].fileName, u"1234567890.op");
}

TEST(IndexRecord, MayBeCutBetweenTheUnitsOfACharacter) {
  const std::u16string name = std::u16string(63, u'n') + u"\U0001F600";
  const std::u16string cut = std::u16string(63, u'n') + char16_t{0xD83D};
  EXPECT_EQ(readIndex(indexBytes({{name, u"1"}}))[0].name, cut);
  EXPECT_EQ(storableName(name), cut);
}

TEST(IndexRecord, KeepsAnUnpairedSurrogate) {
  const std::u16string name = {u'a', 0xDC00, u'b', 0xD800};
  EXPECT_EQ(readIndex(indexBytes({{name, u"1"}}))[0].name, name);
}

TEST(IndexRecord, EndsAtNoUnitThatIsOnlyHalfZero) {
  const std::u16string name = u"A\u0100\u0200z";
  EXPECT_THAT(readIndex(recordBytes(name, u"1.opa")), ElementsAre(IndexEntry{name, u"1.opa"}));
}

TEST(Index, IsAsManyRecordsAsAreComplete) {
  const std::string two = recordBytes(u"one", u"1.opa") + recordBytes(u"two", u"2.opa");
  EXPECT_EQ(two.size(), 308U);
  EXPECT_THAT(readIndex(two), ElementsAre(IndexEntry{u"one", u"1.opa"}, IndexEntry{u"two", u"2.opa"}));
  EXPECT_THAT(readIndex(two.substr(0, 307)), ElementsAre(IndexEntry{u"one", u"1.opa"}));
  EXPECT_THAT(readIndex(two + std::string(153, 'x')).size(), 2U);
  EXPECT_THAT(readIndex(two.substr(0, 153)), IsEmpty());
  EXPECT_THAT(readIndex(""), IsEmpty());
}

TEST(Index, IgnoresWhatFollowsTheFirstNulOfAField) {
  std::string bytes = recordBytes(u"name", u"1.opa");
  bytes[10] = 'x';
  bytes[128 + 12] = 'x';
  EXPECT_THAT(readIndex(bytes), ElementsAre(IndexEntry{u"name", u"1.opa"}));
}

TEST(Index, OfAnyBytesIsReadAndComesBackAsItWasRead) {
  std::mt19937 random(7);
  for (int round = 0; round < 200; ++round) {
    std::string bytes(random() % 1000, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    const auto entries = readIndex(bytes);
    EXPECT_EQ(entries.size(), bytes.size() / 154);
    EXPECT_EQ(readIndex(indexBytes(entries)), entries);
  }
}

TEST(StorableName, IsWhatComesBackFromAnIndex) {
  using namespace std::string_view_literals;
  const std::u16string_view names[] = {u"", u"short", u"with\0nul"sv, u"\0"sv};
  for (const std::u16string_view name : names)
    EXPECT_EQ(storableName(name), readIndex(indexBytes({{std::u16string(name), u""}}))[0].name);
  EXPECT_EQ(storableName(std::u16string(70, u'n')), std::u16string(64, u'n'));
}

TEST(OverlayFileName, IsOneInTheFolderItself) {
  for (const char16_t* name : {u"01234.opa", u"x", u"..opa", u"a b.opa"}) EXPECT_TRUE(isOverlayFileName(name));
  for (const char16_t* name : {u"", u".", u"..", u"../a.opa", u"..\\a.opa", u"a/b", u"a\\b", u"/a", u"C:a.opa", u"a:b"})
    EXPECT_FALSE(isOverlayFileName(name)) << Formats::toUtf8(name);
}

TEST(OverlayFileName, IsNotTheIndexItself) {
  EXPECT_FALSE(isOverlayFileName(u"ovlNmFl.flo"));
  EXPECT_FALSE(isOverlayFileName(u"OVLNMFL.FLO"));
}

TEST(OverlayFileName, OfANumberHasFiveDigits) {
  EXPECT_EQ(Effect::overlayFileName(0), u"00000.opa");
  EXPECT_EQ(Effect::overlayFileName(1234), u"01234.opa");
  EXPECT_EQ(Effect::overlayFileName(99999), u"99999.opa");
}

TEST(Thumbnail, HasTheStemOfTheFileAndBmp) {
  EXPECT_EQ(Effect::thumbnailOf(u"01234.opa"), u"01234.bmp");
  EXPECT_EQ(Effect::thumbnailOf(u"a.b.opa"), u"a.b.bmp");
  EXPECT_EQ(Effect::thumbnailOf(u"a"), u"a.bmp");
  EXPECT_EQ(Effect::thumbnailOf(u"/home.d/01234.opa"), u"/home.d/01234.bmp");
  EXPECT_EQ(Effect::thumbnailOf(u"/home.d/a"), u"/home.d/a.bmp");
}

TEST(LastPart, FollowsTheLastSeparatorOfEitherKind) {
  EXPECT_EQ(Effect::lastPartOf(u"C:\\folder\\1.opa"), u"1.opa");
  EXPECT_EQ(Effect::lastPartOf(u"/folder/1.opa"), u"1.opa");
  EXPECT_EQ(Effect::lastPartOf(u"C:\\folder/1.opa"), u"1.opa");
  EXPECT_EQ(Effect::lastPartOf(u"/folder\\1.opa"), u"1.opa");
  EXPECT_EQ(Effect::lastPartOf(u"1.opa"), u"1.opa");
  EXPECT_EQ(Effect::lastPartOf(u"folder/"), u"");
}

// "FILE|PAGES" of each entry, or "FILE" for one without a ";".
std::vector<std::string> entriesOf(std::u16string_view list) {
  std::vector<std::string> lines;
  while (!list.empty()) {
    const FileListEntry entry = Effect::takeFirst(list);
    lines.push_back(Formats::toUtf8(entry.file) + (entry.hasPages ? "|" + Formats::toUtf8(entry.pages) : ""));
  }
  return lines;
}

TEST(FileList, IsPartedAtDollarsAndEachEntryAtItsFirstSemicolon) {
  EXPECT_THAT(entriesOf(u"01234.opa;All$;$b;1,3;5-9$"), ElementsAre("01234.opa|All", "|", "b|1,3;5-9"));
  EXPECT_THAT(entriesOf(u"a$b;Odd"), ElementsAre("a", "b|Odd"));
  EXPECT_THAT(entriesOf(u"$$a;$"), ElementsAre("", "", "a|"));
  EXPECT_THAT(entriesOf(u""), IsEmpty());
}

TEST(FileList, HasEachEntryBehindTheOther) {
  std::u16string list;
  Effect::append(list, u"/home/1.opa", u"All");
  Effect::append(list, u"", u"");
  EXPECT_EQ(list, u"/home/1.opa;All$;$");
}

TEST(FileList, OfTenMegabytesIsReadInTimeLinearInIt) {
  const std::u16string list(10'000'000, u'$');
  std::size_t entries = 0;
  for (std::u16string_view rest = list; !rest.empty(); ++entries) Effect::takeFirst(rest);
  EXPECT_EQ(entries, list.size());
}

}  // namespace
