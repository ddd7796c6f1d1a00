#include "practice/practice_texts.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>

#include "support/printers.h"

using namespace mj;

TEST(PracticeTexts, TopLabelOfABankRun) {
  EXPECT_EQ(TopLabelText(false, u"◎《示例刑法》单项选择题"_qs, 12, 3),
            u"◎《示例刑法》单项选择题  符合你的设置条件的共12题 这是第3题。"_qs);
}

TEST(PracticeTexts, TopLabelOfALawQueryRun) {
  EXPECT_EQ(TopLabelText(true, u"◎ignored"_qs, 5, 1), u"◎与该法条相关的试题共5道 这是第1题。"_qs);
}

TEST(PracticeTexts, ClockOfAnHourAndAHalf) {
  const QDateTime now(QDate(2026, 11, 21), QTime(9, 5));
  EXPECT_EQ(ClockText(now, 5400, 0), u"2026-11-21 09:05\r\n01:90:00   00:00"_qs);
}

TEST(PracticeTexts, ClockShowsTheLastTwoDigits) {
  const QDateTime now(QDate(2026, 1, 2), QTime(23, 59));
  // 1 h 41 min 7 s: minutes 101 show as 01; the question at 125 s is 02:05.
  EXPECT_EQ(ClockText(now, 6067, 125), u"2026-01-02 23:59\r\n01:01:07   02:05"_qs);
  EXPECT_EQ(ClockText(now, 0, 0), u"2026-01-02 23:59\r\n00:00:00   00:00"_qs);
  EXPECT_EQ(TwoDigits(7), u"07"_qs);
  EXPECT_EQ(TwoDigits(123), u"23"_qs);
}

TEST(PracticeTexts, AnswerRowsOfTheThreeTypes) {
  const AnswerRow one = AnswerRowOf(1);
  EXPECT_EQ(one.first, 0);
  EXPECT_EQ(one.last, 3);
  EXPECT_EQ(one.leftOf(0), 360);
  EXPECT_EQ(one.leftOf(3), 3360);
  EXPECT_EQ(one.width, 900);
  EXPECT_EQ(one.top, 735);
  EXPECT_EQ(one.height, 450);
  EXPECT_FALSE(one.shows(4));

  const AnswerRow two = AnswerRowOf(2);
  EXPECT_EQ(two.first, 4);
  EXPECT_EQ(two.last, 14);
  EXPECT_FALSE(two.shows(3));
  EXPECT_TRUE(two.shows(4));
  EXPECT_EQ(two.leftOf(4), 360);
  EXPECT_EQ(two.leftOf(14), 360 + 10 * 400);
  EXPECT_EQ(two.width, 300);
  EXPECT_EQ(two.height, 350);

  const AnswerRow three = AnswerRowOf(3);
  EXPECT_EQ(three.first, 0);
  EXPECT_EQ(three.last, 14);
  EXPECT_EQ(three.leftOf(14), 360 + 14 * 300);
  EXPECT_EQ(three.width, 270);
  EXPECT_EQ(three.height, 300);
  // Every top is the same: one row.
  EXPECT_EQ(two.top, 735);
  EXPECT_EQ(three.top, 735);
}

TEST(PracticeTexts, UnknownTypeOffersEveryAnswer) {
  const AnswerRow r = AnswerRowOf(0);
  EXPECT_EQ(r.first, 0);
  EXPECT_EQ(r.last, 14);
}

TEST(PracticeTexts, MyPauseWaits) {
  QElapsedTimer t;
  t.start();
  MyPause(0.05);
  EXPECT_GE(t.elapsed(), 50);
  MyPause(0);
}

TEST(PracticeTexts, FontSizeStaysWithin10And70) {
  EXPECT_EQ(BiggerFontSize(15), 17);
  EXPECT_EQ(BiggerFontSize(68), 70);
  EXPECT_EQ(BiggerFontSize(70), 70);
  EXPECT_EQ(BiggerFontSize(69), 71);  // below 70: +2, as the button does it
  EXPECT_EQ(SmallerFontSize(12), 10);
  EXPECT_EQ(SmallerFontSize(10), 10);
  EXPECT_EQ(SmallerFontSize(11), 9);
}
