#include "law/numerals.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/printers.h"

namespace mj {
namespace {

TEST(DaXie, SmallNumbersAndTheTens) {
  EXPECT_EQ(DaXie(0), u"零"_qs);
  EXPECT_EQ(DaXie(1), u"一"_qs);
  EXPECT_EQ(DaXie(9), u"九"_qs);
  EXPECT_EQ(DaXie(10), u"十"_qs);
  EXPECT_EQ(DaXie(11), u"十一"_qs);
  EXPECT_EQ(DaXie(15), u"十五"_qs);
  EXPECT_EQ(DaXie(19), u"十九"_qs);
  EXPECT_EQ(DaXie(20), u"二十"_qs);
  EXPECT_EQ(DaXie(21), u"二十一"_qs);
}

TEST(DaXie, ExamplesThatFixTheBehaviour) {
  EXPECT_EQ(DaXie(100), u"一百"_qs);
  EXPECT_EQ(DaXie(101), u"一百零一"_qs);
  EXPECT_EQ(DaXie(105), u"一百零五"_qs);
  EXPECT_EQ(DaXie(110), u"一百一十"_qs);
  EXPECT_EQ(DaXie(115), u"一百一十五"_qs);
  EXPECT_EQ(DaXie(200), u"二百"_qs);
  EXPECT_EQ(DaXie(1000), u"一千"_qs);
  EXPECT_EQ(DaXie(1001), u"一千零一"_qs);
  EXPECT_EQ(DaXie(1100), u"一千一百"_qs);
  EXPECT_EQ(DaXie(10000), u"一万"_qs);
  EXPECT_EQ(DaXie(10100), u"一万零一百"_qs);
}

TEST(DaXie, AZeroSwallowsPlaceNamesAndFollowingZeros) {
  EXPECT_EQ(DaXie(1005), u"一千零五"_qs);
  EXPECT_EQ(DaXie(10001), u"一万零一"_qs);
  EXPECT_EQ(DaXie(20030), u"二万零三十"_qs);
  EXPECT_EQ(DaXie(452), u"四百五十二"_qs);
  EXPECT_EQ(DaXie(1260), u"一千二百六十"_qs);
  EXPECT_EQ(DaXie(99999), u"九万九千九百九十九"_qs);
  // The longest numeral fills a whole 9-character slot.
  EXPECT_EQ(DaXie(12345), u"一万二千三百四十五"_qs);
  EXPECT_EQ(DaXie(12345).size(), 9);
}

TEST(DaXie, HouseRuleDropsTheOneOfOneTenAfterAZero) {
  EXPECT_EQ(DaXie(1010), u"一千零十"_qs);
  EXPECT_EQ(DaXie(1015), u"一千零十五"_qs);
  EXPECT_EQ(DaXie(10010), u"一万零十"_qs);
  EXPECT_EQ(DaXie(10110), u"一万零一百一十"_qs);
  EXPECT_EQ(DaXie(310), u"三百一十"_qs);
}

TEST(DaXie, OutsideTheContractGivesNoNumeral) {
  EXPECT_EQ(DaXie(-1), QString());
  EXPECT_EQ(DaXie(100000), QString());
  EXPECT_EQ(DaXie(12.0), u"十二"_qs);
}

TEST(DaXieToNum, FindsWhatTheGeneratorPrints) {
  EXPECT_EQ(DaXieToNum(u"二十"_qs), 20);
  EXPECT_EQ(DaXieToNum(u"一百零五"_qs), 105);
  EXPECT_EQ(DaXieToNum(u"一千零十"_qs), 1010);
  EXPECT_EQ(MyGetTheNum(u"一千零十"_qs), 1010);
  EXPECT_EQ(DaXieToNum(DaXie(1010)), 1010);
}

TEST(DaXieToNum, TextbookFormsAreNoNumerals) {
  EXPECT_EQ(DaXieToNum(u"一千零一十"_qs), -1);
  EXPECT_EQ(MyGetTheNum(u"一千零一十"_qs), 0);
  EXPECT_EQ(DaXieToNum(u"一十"_qs), -1);
  EXPECT_EQ(MyGetTheNum(u"一十"_qs), 0);
}

TEST(DaXieToNum, TenAndZero) {
  EXPECT_EQ(DaXieToNum(u"十"_qs), 10);
  EXPECT_EQ(MyGetTheNum(u"十"_qs), 10);
  // The search starts at 1, so zero is never found.
  EXPECT_EQ(DaXieToNum(u"零"_qs), -1);
  EXPECT_EQ(MyGetTheNum(u"零"_qs), 0);
}

TEST(DaXieToNum, TextsThatAreNoNumerals) {
  EXPECT_EQ(DaXieToNum(QString()), -1);
  EXPECT_EQ(MyGetTheNum(QString()), 0);
  EXPECT_EQ(DaXieToNum(u"第十条"_qs), -1);
  EXPECT_EQ(MyGetTheNum(u"第十条"_qs), 0);
  EXPECT_EQ(DaXieToNum(u" 十"_qs), -1);
  EXPECT_EQ(DaXieToNum(u"abc"_qs), -1);
}

TEST(DaXieToNum, TheTwoLimitsDiffer) {
  EXPECT_EQ(DaXieToNum(u"三万"_qs), 30000);
  EXPECT_EQ(DaXieToNum(u"三万零一"_qs), -1);
  EXPECT_EQ(MyGetTheNum(u"三万零一"_qs), 30001);
  EXPECT_EQ(DaXieToNum(u"九万九千九百九十九"_qs), -1);
  EXPECT_EQ(MyGetTheNum(u"九万九千九百九十九"_qs), 99999);
}

TEST(DaXieToNum, EveryNumeralReadsBackToItsNumber) {
  for (int i = 1; i <= 99999; ++i) {
    ASSERT_EQ(MyGetTheNum(DaXie(i)), i) << i;
    if (i <= 30000) {
      ASSERT_EQ(DaXieToNum(DaXie(i)), i) << i;
    }
  }
}

TEST(IsUcaseNum, EveryCharacterMustBeANumeral) {
  EXPECT_TRUE(IsUcaseNum(QString()));
  EXPECT_TRUE(IsUcaseNum(u"一千零十"_qs));
  EXPECT_TRUE(IsUcaseNum(u"三亿"_qs));  // 亿 passes although DaXie never prints it
  EXPECT_FALSE(IsUcaseNum(u"第一"_qs));
  EXPECT_FALSE(IsUcaseNum(u"一2"_qs));
  EXPECT_FALSE(IsUcaseNum(u"一 "_qs));
}

TEST(GetLongDaXie, SlotsOfNineCharacters) {
  const QString t = GetLongDaXie(3);
  EXPECT_EQ(t.size(), 27);
  EXPECT_EQ(t, u"        一        二        三"_qs);
  EXPECT_EQ(t.mid(9, 9).trimmed(), u"二"_qs);
  EXPECT_EQ(NumeralOfSlot(t, 2), u"二"_qs);
  EXPECT_EQ(NumeralOfSlot(t, 4), QString());
  EXPECT_EQ(NumeralOfSlot(t, 0), QString());
  // A slot far beyond the table: empty, and no place is computed for it.
  EXPECT_EQ(NumeralOfSlot(t, std::numeric_limits<long long>::max() - 1), QString());
}

TEST(GetLongDaXie, CountZeroOrBelowGivesEmpty) {
  EXPECT_EQ(GetLongDaXie(0), QString());
  EXPECT_EQ(GetLongDaXie(-4), QString());
}

TEST(GetLongDaXie, LongerAndShorterTablesAgree) {
  const QString big = GetLongDaXie(1260);
  EXPECT_EQ(big.size(), 1260 * 9);
  EXPECT_EQ(NumeralOfSlot(big, 1010), u"一千零十"_qs);
  EXPECT_EQ(NumeralOfSlot(big, 1260), u"一千二百六十"_qs);
  EXPECT_EQ(GetLongDaXie(5), big.left(45));
  const QString small = GetLongDaXie(12345);
  EXPECT_EQ(small.mid(12344 * 9, 9), u"一万二千三百四十五"_qs);
  for (int i = 1; i <= 12345; ++i) ASSERT_EQ(NumeralOfSlot(small, i), DaXie(i)) << i;
}

TEST(NumeralTable, HoldsZeroToTwoThousand) {
  const QStringList table = MakeNumeralTable();
  ASSERT_EQ(table.size(), 2001);
  EXPECT_EQ(table[0], u"零"_qs);
  EXPECT_EQ(table[10], u"十"_qs);
  EXPECT_EQ(table[1010], u"一千零十"_qs);
  EXPECT_EQ(table[2000], u"二千"_qs);
  QStringList filled{u"old"_qs};
  FillNumeralTable(filled);
  EXPECT_EQ(filled, table);
}

}  // namespace
TEST(Numerals, EveryPrintedNumeralReadsBackToItsNumberAndNothingElseDoes) {
  for (int i = 1; i <= 99999; ++i) {
    const QString s = DaXie(i);
    ASSERT_EQ(MyGetTheNum(s), i) << s.toStdString();
    ASSERT_EQ(DaXieToNum(s), i <= 30000 ? i : -1) << s.toStdString();
  }
  // Readable as numbers, but never printed so: not numerals.
  for (const QString& s : {u"一十"_qs, u"一千零一十"_qs, u"零五"_qs, u"二零"_qs, u"十十"_qs, u"万"_qs, u"一万零零五"_qs,
                           u"九万九千九百九十九十"_qs, u"十万"_qs, u"一二"_qs, u"百"_qs, u"零"_qs, u""_qs, u"5"_qs}) {
    EXPECT_EQ(MyGetTheNum(s), 0) << s.toStdString();
    EXPECT_EQ(DaXieToNum(s), -1) << s.toStdString();
  }
}

}  // namespace mj
