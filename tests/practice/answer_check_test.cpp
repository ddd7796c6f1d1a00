#include "practice/answer_check.h"

#include <gtest/gtest.h>

#include "platform/vbtext.h"
#include "support/printers.h"

using namespace mj;

namespace {

const QDateTime kNow(QDate(2026, 11, 21), QTime(9, 30));

QString entry(const QString& day, const QString& answer) { return day + u" 10:32"_qs + Right(u"    "_qs + answer, 4); }

}  // namespace

TEST(AnswerCheck, CaptionsByIndex) {
  const QStringList expected = {u"A"_qs,  u"B"_qs,  u"C"_qs,   u"D"_qs,   u"AB"_qs,  u"AC"_qs,  u"AD"_qs,  u"BC"_qs,
                                u"BD"_qs, u"CD"_qs, u"ABC"_qs, u"ABD"_qs, u"ACD"_qs, u"BCD"_qs, u"ABCD"_qs};
  EXPECT_EQ(AnswerCaptions(), expected);
  EXPECT_EQ(AnswerButtonIndex(u"ABCD"_qs), 14);
  EXPECT_EQ(AnswerButtonIndex(u"BA"_qs), -1);
}

TEST(AnswerCheck, OrderKeepsEachLetterOnceInAlphabeticOrder) {
  EXPECT_EQ(Order(u"DCBA"_qs), u"ABCD"_qs);
  EXPECT_EQ(Order(u"DADx"_qs), u"AD"_qs);
  EXPECT_EQ(Order(u"abc"_qs), u""_qs);
  EXPECT_EQ(Order(u""_qs), u""_qs);
}

TEST(AnswerCheck, CheckDaAnModes) {
  // An answer "ABC" and a key "AC" differ by mode 1.
  EXPECT_EQ(CheckDaAn(u"ABC"_qs, u"AC"_qs, 1), u"B"_qs);
  EXPECT_EQ(CheckDaAn(u"ABC"_qs, u"AC"_qs, 2), u""_qs);
  EXPECT_FALSE(SameAnswer(u"ABC"_qs, u"AC"_qs));
  EXPECT_EQ(CheckDaAn(u"A"_qs, u"BDA"_qs, 2), u"BD"_qs);
  EXPECT_EQ(CheckDaAn(u"DBA"_qs, u"C"_qs, 1), u"DBA"_qs);
  EXPECT_EQ(CheckDaAn(u"A"_qs, u"B"_qs, 3), u""_qs);
  EXPECT_EQ(CheckDaAn(u"A"_qs, u"B"_qs, 0), u""_qs);
  EXPECT_TRUE(SameAnswer(u"BA"_qs, u"AB"_qs));
  // An empty key makes every non-empty answer wrong.
  EXPECT_FALSE(SameAnswer(u"A"_qs, u""_qs));
}

TEST(AnswerCheck, RecordEntryIsTwentyCharacters) {
  EXPECT_EQ(RecordEntry(kNow, u"AB"_qs), u"2026-11-21 09:30  AB"_qs);
  EXPECT_EQ(RecordEntry(QDateTime(QDate(2003, 6, 26), QTime(22, 5)), u"ABCD"_qs), u"2003-06-26 22:05ABCD"_qs);
  EXPECT_EQ(Len(RecordEntry(kNow, u"A"_qs)), 20);
}

TEST(AnswerCheck, WrongAnswerReplacesTheWholeRecord) {
  QString old;
  for (int i = 0; i < 7; ++i) old += entry(u"2026-10-0"_qs + QString::number(i + 1), u"A"_qs);
  const QString e = RecordEntry(kNow, u"B"_qs);
  EXPECT_EQ(NextRecord(old, e, true), e);
  EXPECT_EQ(Len(NextRecord(old, e, true)), 20);
  EXPECT_EQ(NextRecord(u"no"_qs, e, true), e);
}

TEST(AnswerCheck, RightAnswerGoesInFront) {
  const QString e = RecordEntry(kNow, u"A"_qs);
  EXPECT_EQ(NextRecord(u"no"_qs, e, false), e);
  const QString old = entry(u"2026-10-01"_qs, u"A"_qs);
  EXPECT_EQ(NextRecord(old, e, false), e + old);
}

TEST(AnswerCheck, TheEleventhEntryCutsTheRecordTo160) {
  QString old;
  for (int i = 0; i < 10; ++i) old += entry(QStringLiteral("2026-10-%1").arg(10 - i, 2, 10, QChar(u'0')), u"A"_qs);
  ASSERT_EQ(Len(old), 200);
  const QString e = RecordEntry(kNow, u"A"_qs);
  const QString next = NextRecord(old, e, false);
  EXPECT_EQ(Len(next), 160);
  // The newest stays first; the oldest three entries are gone.
  EXPECT_EQ(next, Left(e + old, 160));
  EXPECT_FALSE(next.contains(u"2026-10-01"_qs));
  EXPECT_FALSE(next.contains(u"2026-10-02"_qs));
  EXPECT_FALSE(next.contains(u"2026-10-03"_qs));
  EXPECT_TRUE(next.contains(u"2026-10-04"_qs));
  // Ten entries (200 characters) stay whole.
  QString nine = Left(old, 180);
  EXPECT_EQ(Len(NextRecord(nine, e, false)), 200);
}

TEST(AnswerCheck, OutcomeSentences) {
  // First attempt.
  EXPECT_EQ(OutcomeSentence({}, true, u"B"_qs), u"你错选了答案B。"_qs);
  EXPECT_EQ(OutcomeSentence({}, false, u"A"_qs), u"恭喜你，你做对了。"_qs);
  // Right after right, wrong after right.
  EXPECT_EQ(OutcomeSentence({u"A"_qs, true}, false, u"A"_qs), u"上次做对了，本次又恭喜你，你做对了。"_qs);
  EXPECT_EQ(OutcomeSentence({u"A"_qs, true}, true, u"C"_qs), u"上次做对了，但本次你错选了答案C。"_qs);
  // Right after wrong, wrong after wrong.
  EXPECT_EQ(OutcomeSentence({u"A"_qs, false}, false, u"B"_qs), u"上次错选了答案A，但本次恭喜你，你做对了。"_qs);
  EXPECT_EQ(OutcomeSentence({u"A"_qs, false}, true, u"B"_qs), u"上次错选了答案A，本次你又错选了答案B。"_qs);
}

TEST(AnswerCheck, HistoryOfAFirstAttempt) {
  EXPECT_EQ(GetHistoryText(u"no"_qs), u"本题第一次做"_qs);
  EXPECT_EQ(GetHistoryText(u""_qs), u"本题第一次做"_qs);
  EXPECT_EQ(GetHistoryText(u"2026-11-21 09:30  "_qs), u"本题第一次做"_qs);
}

TEST(AnswerCheck, HistoryOfAQuestionDoneOnce) {
  const QString e = u"2026-11-21 09:30   A"_qs;
  EXPECT_EQ(GetHistoryText(e), u"本题只做过一次，情况如下："_qs + u"\r\n\r\n"_qs + e + u"\r\n"_qs);
}

TEST(AnswerCheck, HistoryOfAQuestionDoneThreeTimes) {
  const QString a = u"2026-11-21 09:30   A"_qs;
  const QString b = u"2026-10-20 08:00   A"_qs;
  const QString c = u"2026-09-19 07:15  BC"_qs;
  EXPECT_EQ(GetHistoryText(a + b + c), u"本题共做过"_qs + u"3"_qs + u"次，分别如下："_qs + u"\r\n\r\n"_qs + a +
                                           u"\r\n"_qs + b + u"\r\n"_qs + c + u"\r\n"_qs);
}
