#include "press/pages/content_scan.h"

#include <gtest/gtest.h>

#include <string>

using Press::standsAlone;

TEST(ContentScan, BalancedContentStandsAlone) {
  for (const char* content : {"", "  \n", "q Q", "q 1 0 0 1 5 5 cm q Q Q", "BT /F1 12 Tf (text) Tj ET", "0 0 m 5 5 l S",
                              "0 0 5 5 re W n", "/Span << /MCID 0 /Alt (a) >> BDC (x) Tj EMC", "[(a) -120.5 (b)] TJ",
                              "<48656C6C6F> Tj", "1 0 0 rg % comment", "/Name#20x gs", "q\fQ"})
    EXPECT_TRUE(standsAlone(content)) << content;
}

TEST(ContentScan, WhatStaysOpenDoesNotStandAlone) {
  for (const char* content : {"q", "q q Q", "BT (x) Tj", "/A BMC", "/A << >> BDC", "0 0 m 5 5 l", "0 0 5 5 re W",
                              "(text", "(te(xt)", "(text\\)", "<4865", "[1 2", "<< /A 1", "q Q q"})
    EXPECT_FALSE(standsAlone(content)) << content;
}

TEST(ContentScan, WhatClosesMoreThanItOpenedDoesNotStandAlone) {
  for (const char* content : {"Q", "q Q Q", "Q q", "EMC", ")", ">", ">>", "]", "}"})
    EXPECT_FALSE(standsAlone(content)) << content;
}

TEST(ContentScan, LettersInTextNamesAndCommentsAreNotOperators) {
  EXPECT_TRUE(standsAlone("(Q Q) Tj"));
  EXPECT_TRUE(standsAlone("/Q gs"));
  EXPECT_TRUE(standsAlone("% Q Q\nq Q"));
  EXPECT_TRUE(standsAlone("(a \\) Q \\\\) Tj"));
  EXPECT_TRUE(standsAlone("(a (nested) Q) Tj"));
}

TEST(ContentScan, CommentEndsAtEitherLineEnd) {
  EXPECT_FALSE(standsAlone("% comment\rq"));
  EXPECT_FALSE(standsAlone("% comment\nq"));
}

TEST(ContentScan, WhatProgramsReadDifferentlyIsNotVouchedFor) {
  for (const char* content : {"1Q", "Qq", "unknown", "BI /W 1 /H 1 ID x EI", "[q] Q", "<< /A q >>", "{ }"})
    EXPECT_FALSE(standsAlone(content)) << content;
}

TEST(ContentScan, WordsOfValuesAreNoOperators) { EXPECT_TRUE(standsAlone("/P << /A true /B false /C null >> DP")); }
