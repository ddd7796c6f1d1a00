#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/printers.h"

#include "platform/vbtext.h"

using namespace mj;

TEST(VbText, MidIsOneBased) {
  EXPECT_EQ(Mid(u"abcdef"_qs, 2, 3), u"bcd"_qs);
  EXPECT_EQ(Mid(u"abcdef"_qs, 4), u"def"_qs);
  EXPECT_EQ(Mid(u"abc"_qs, 5, 2), u""_qs);
  EXPECT_EQ(Mid(u"abc"_qs, 3, 10), u"c"_qs);
  EXPECT_EQ(Mid(u"abc"_qs, 0, 1), u""_qs);
  EXPECT_FALSE(MidChecked(u"abc"_qs, 0, 1).has_value());
  EXPECT_EQ(MidChecked(u"abc"_qs, 4, 1).value(), u""_qs);
  EXPECT_EQ(Mid(u"第一百零五条"_qs, 2, 4), u"一百零五"_qs);
}

TEST(VbText, LeftRight) {
  EXPECT_EQ(Left(u"abc"_qs, 2), u"ab"_qs);
  EXPECT_EQ(Left(u"abc"_qs, 9), u"abc"_qs);
  EXPECT_EQ(Left(u"abc"_qs, -1), u""_qs);
  EXPECT_EQ(Right(u"abc"_qs, 2), u"bc"_qs);
  EXPECT_EQ(Right(u"abc"_qs, 0), u""_qs);
}

TEST(VbText, InStr) {
  EXPECT_EQ(InStr(u"abcabc"_qs, u"c"_qs), 3);
  EXPECT_EQ(InStr(4, u"abcabc"_qs, u"c"_qs), 6);
  EXPECT_EQ(InStr(u"abc"_qs, u"x"_qs), 0);
  EXPECT_EQ(InStr(u""_qs, u""_qs), 0);
  EXPECT_EQ(InStr(2, u"abc"_qs, u""_qs), 2);
  EXPECT_EQ(InStr(4, u"abc"_qs, u""_qs), 4);
  EXPECT_EQ(InStr(5, u"abc"_qs, u""_qs), 0);
  EXPECT_EQ(InStr(9, u"abc"_qs, u"c"_qs), 0);
}

TEST(VbText, InStrRev) {
  EXPECT_EQ(InStrRev(u"abcabc"_qs, u"abc"_qs), 4);
  EXPECT_EQ(InStrRev(u"abcabc"_qs, u"abc"_qs, 5), 1);
  EXPECT_EQ(InStrRev(u"abcabc"_qs, u"abc"_qs, 6), 4);
  EXPECT_EQ(InStrRev(u"abc"_qs, u"x"_qs), 0);
  EXPECT_EQ(InStrRev(u"abc"_qs, u""_qs), 3);
}

TEST(VbText, TrimOnlyBlanks) {
  EXPECT_EQ(Trim(u"  a b  "_qs), u"a b"_qs);
  EXPECT_EQ(LTrim(u"  a "_qs), u"a "_qs);
  EXPECT_EQ(RTrim(u" a  "_qs), u" a"_qs);
  // The ideographic blank of law texts is not trimmed.
  EXPECT_EQ(Trim(u"\u3000a\u3000"_qs), u"\u3000a\u3000"_qs);
  EXPECT_EQ(Trim(u"\ta\r\n"_qs), u"\ta\r\n"_qs);
}

TEST(VbText, Case) {
  EXPECT_EQ(UCase(u"PubFontName=Arial宋体"_qs), u"PUBFONTNAME=ARIAL宋体"_qs);
  EXPECT_EQ(LCase(u"FILE="_qs), u"file="_qs);
}

TEST(VbText, ValReadsTheNumericPrefix) {
  EXPECT_EQ(Val(u"12款"_qs), 12);
  EXPECT_EQ(Val(u"abc"_qs), 0);
  EXPECT_EQ(Val(u""_qs), 0);
  EXPECT_EQ(Val(u"  42  "_qs), 42);
  EXPECT_EQ(Val(u"1 2 3"_qs), 123);
  EXPECT_EQ(Val(u"-7.5x"_qs), -7.5);
  EXPECT_EQ(Val(u"00012"_qs), 12);
  EXPECT_EQ(Val(u"1e3"_qs), 1000);
  EXPECT_EQ(Val(u"1e"_qs), 1);
  EXPECT_EQ(Val(u"&HFF"_qs), 255);
  EXPECT_EQ(Val(u"&O17"_qs), 15);
  EXPECT_EQ(Val(u".5"_qs), 0.5);
  EXPECT_EQ(Val(u"12-15"_qs), 12);
  EXPECT_EQ(Val(u"十二"_qs), 0);
}

TEST(VbText, IntAndRounding) {
  EXPECT_EQ(Int(7.0 / 9 * 100), 77);
  EXPECT_EQ(Int(-0.5), -1);
  EXPECT_EQ(RoundHalfEven(2.5), 2);
  EXPECT_EQ(RoundHalfEven(3.5), 4);
  EXPECT_EQ(RoundHalfEven(-2.5), -2);
}

TEST(VbText, NumbersBeyondAnIntegerSaturate) {
  constexpr long long kMax = std::numeric_limits<long long>::max(), kMin = std::numeric_limits<long long>::min();
  EXPECT_EQ(RoundHalfEven(1e99), kMax);
  EXPECT_EQ(RoundHalfEven(-1e99), kMin);
  EXPECT_EQ(RoundHalfEven(Val(u"9e300"_qs)), kMax);
  EXPECT_EQ(RoundHalfEven(std::nan("")), 0);
  EXPECT_EQ(SaturatedInt<int>(1e99), std::numeric_limits<int>::max());
  EXPECT_EQ(SaturatedInt<int>(-1e99), std::numeric_limits<int>::min());
  EXPECT_EQ(SaturatedInt<int>(2147483647.5), 2147483647);
  EXPECT_EQ(SaturatedInt<int>(-2147483648.5), -2147483647 - 1);
  EXPECT_EQ(SaturatedInt<int>(-12.7), -12);
  EXPECT_EQ(SaturatedInt<qint16>(40000), 32767);
  EXPECT_EQ(SaturatedInt<long long>(9223372036854775807.0), kMax);
  EXPECT_EQ(SaturatedInt<long long>(-9223372036854775808.0), kMin);
  EXPECT_EQ(SaturatedInt<long long>(std::nan("")), 0);
}

TEST(VbText, Misc) {
  EXPECT_EQ(Space(3), u"   "_qs);
  EXPECT_EQ(Space(-1), u""_qs);
  EXPECT_EQ(StringOf(3, u'*'), u"***"_qs);
  EXPECT_EQ(CStr(-12), u"-12"_qs);
  EXPECT_EQ(NumText(30), u"30"_qs);
  EXPECT_EQ(NumText(2.5), u"2.5"_qs);
}
