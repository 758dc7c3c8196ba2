// Texts of others in what people read.
#include "formats/printable.h"

#include <gtest/gtest.h>

namespace {

using Formats::printable;

TEST(Printable, TextIsLeftAsItIs) {
  const std::string text = "Überweisung 漢字 😀 \u200Fשלום\u200E a\u200Db";
  EXPECT_EQ(printable(text), text);
  EXPECT_EQ(printable(Formats::toUtf16(text)), Formats::toUtf16(text));
}

TEST(Printable, ALineBreakOfAnyKindIsASpace) {
  for (const std::string end : {"\n", "\r", "\t", "\v", "\f", "\u0085", "\u2028", "\u2029"})
    EXPECT_EQ(printable("a" + end + "b"), "a b");
}

TEST(Printable, WhatATerminalObeysIsReplaced) {
  EXPECT_EQ(printable("\x1B[2J\x7F"), "\uFFFD[2J\uFFFD");
  for (char32_t code = 0; code < 0xA0; ++code) {
    const std::u32string shown = Formats::toUtf32(printable(Formats::toUtf8(code)));
    ASSERT_EQ(shown.size(), 1u) << static_cast<unsigned>(code);
    EXPECT_TRUE(shown[0] == code ? code >= ' ' && code < 0x7F : shown[0] == U' ' || shown[0] == 0xFFFD);
  }
}

TEST(Printable, WhatIsNoUtf8IsReplaced) {
  EXPECT_EQ(printable("a\x9B\x32J"), "a\uFFFD2J") << "a control of terminals that take bytes for Latin-1";
  EXPECT_EQ(printable("\xED\xA0\xBD"), "\uFFFD") << "an unpaired surrogate";
}

TEST(Printable, NothingChangesTheDirectionOfWhatFollows) {
  for (const char32_t code : {0x202AU, 0x202BU, 0x202CU, 0x202DU, 0x202EU, 0x2066U, 0x2067U, 0x2068U, 0x2069U, 0x206FU})
    EXPECT_EQ(printable("a" + Formats::toUtf8(code) + "fdp.exe"), "a\uFFFDfdp.exe") << static_cast<unsigned>(code);
  EXPECT_EQ(printable(std::u16string_view(u"a\u202Eb")), u"a\uFFFDb");
}

}  // namespace
