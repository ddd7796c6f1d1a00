#include "bank/forecast.h"

#include <gtest/gtest.h>

#include <QFile>

#include "bank/eligibility.h"
#include "support/directory_tables.h"
#include "support/printers.h"
#include "support/test_env.h"

using namespace mj;
using test::ItemSpec;
using test::StoryEntry;

namespace {

const QDate kToday(2026, 11, 21);

QString Entry(int daysAgo, const QString& answer) { return StoryEntry(kToday.addDays(-daysAgo), answer); }

// Overwrites the bytes of field `field` (0-based) of record `record` with
// binary zeros, as a record that was never written in full holds them.
void ZeroField(const QString& path, int record, int field) {
  QFile f(path);
  ASSERT_TRUE(f.open(QIODevice::ReadWrite));
  QByteArray bytes = f.readAll();
  auto u16 = [&](int at) { return static_cast<uchar>(bytes[at]) | (static_cast<uchar>(bytes[at + 1]) << 8); };
  const int headerLength = u16(8);
  const int recordLength = u16(10);
  int offset = 1;  // the deletion mark
  for (int i = 0; i < field; ++i) offset += static_cast<uchar>(bytes[32 + i * 32 + 16]);
  const int width = static_cast<uchar>(bytes[32 + field * 32 + 16]);
  const int at = headerLength + record * recordLength + offset;
  for (int i = 0; i < width; ++i) bytes[at + i] = '\0';
  f.seek(0);
  f.write(bytes);
}

const std::array<int, 6> kNumbers{1, 1, 30, 1, 1, 30};

}  // namespace

TEST(Forecast, Num2StrAddStrCentresTheNumber) {
  EXPECT_EQ(Num2StrAddStr(5, 5, u" "_qs), u"  5  "_qs);
  // Three to spare: one to the left (the whole part of half), two to the right.
  EXPECT_EQ(Num2StrAddStr(12, 5, u" "_qs), u" 12  "_qs);
  EXPECT_EQ(Num2StrAddStr(1234, 5, u" "_qs), u"1234 "_qs);
  EXPECT_EQ(Num2StrAddStr(0, 6, u"-"_qs), u"--0---"_qs);
  // A number wider than the field takes its own width.
  EXPECT_EQ(Num2StrAddStr(123456, 4, u" "_qs), u"123456"_qs);
  EXPECT_EQ(Num2StrAddStr(12345, 5, u" "_qs), u"12345"_qs);
  // An empty pad is a blank; of a longer one only the first character counts.
  EXPECT_EQ(Num2StrAddStr(7, 4, QString()), u" 7  "_qs);
  EXPECT_EQ(Num2StrAddStr(7, 4, u"*#"_qs), u"*7**"_qs);
}

TEST(Forecast, AttemptsAndDaysOfTheWorkedExample) {
  // 1000 questions, right twice each, one extra round for the 40% wrong.
  EXPECT_EQ(UserWillDo(1000, 2, 1, 60), 2400);
  EXPECT_EQ(ForecastDays(2400, 6, 100), 5);
}

TEST(Forecast, FullScoreNeedsOnlyTheRightRounds) {
  EXPECT_EQ(UserWillDo(1000, 3, 6, 100), 3000);
  EXPECT_EQ(UserWillDo(37, 1, 6, 100), 37);
}

TEST(Forecast, NoQuestionsIsNoAttemptsAndOneDay) {
  EXPECT_EQ(UserWillDo(0, 10, 6, 30), 0);
  EXPECT_EQ(ForecastDays(0, 24, 200), 1);
  EXPECT_EQ(ForecastDays(0, 1, 30), 1);
}

TEST(Forecast, HalvesGoToTheEvenNeighbour) {
  // 1 + 0.5 = 1.5 goes up to 2; 2 + 0.5 = 2.5 goes down to 2.
  EXPECT_EQ(UserWillDo(1, 1, 1, 50), 2);
  EXPECT_EQ(UserWillDo(1, 2, 1, 50), 2);
  // 3 + 1.5 = 4.5 goes down to 4; 5 + 0.5 = 5.5 goes up to 6.
  EXPECT_EQ(UserWillDo(3, 1, 1, 50), 4);
  EXPECT_EQ(UserWillDo(5, 1, 1, 90), 6);
  // Not a half: to the nearest.
  EXPECT_EQ(UserWillDo(3, 1, 1, 70), 4);  // 3 + 0.9
  EXPECT_EQ(UserWillDo(7, 1, 1, 70), 9);  // 7 + 2.1
}

TEST(Forecast, DaysCutAfterAddingOne) {
  // 599 / 6 / 100 + 1 = 1.998...: one day.
  EXPECT_EQ(ForecastDays(599, 6, 100), 1);
  EXPECT_EQ(ForecastDays(600, 6, 100), 2);
  EXPECT_EQ(ForecastDays(100000, 1, 30), 3334);
}

TEST(Forecast, ResultTexts) {
  const ForecastText t = ForecastResultText(ForecastKind::Internal, 1000, 2400, 5);
  EXPECT_EQ(t.label6, u"内部试题库中共有1000 道试题满足你的设置要求，如果你的"_qs);
  EXPECT_EQ(t.label8, u"分，则按此种设置你可能要做 2400 道次，如果"_qs);
  EXPECT_EQ(t.label12, u"大约需要 5  天可以完整做一遍所有满足你的设置条件的内部试题，"_qs);
  const ForecastText s = ForecastResultText(ForecastKind::Simulated, 7, 123456, 12);
  EXPECT_EQ(s.label6, u"模拟试题库中共有  7  道试题满足你的设置要求，如果你的"_qs);
  EXPECT_EQ(s.label8, u"分，则按此种设置你可能要做123456道次，如果"_qs);
  EXPECT_EQ(s.label12, u"大约需要 12 天可以完整做一遍所有满足你的设置条件的模拟试题，"_qs);
}

TEST(Forecast, CountsBothTablesWithTheirOwnNumbers) {
  test::TestEnv t;
  // Internal bank: oktimes 2 makes a question with one right answer 40
  // days ago due; a hidden question counts too.
  test::WriteItemTable(t, u"items.mmd"_qs,
                       {{u"10001100001"_qs},                                        // never done: due
                        {u"10001100002"_qs, Entry(40, u"A"_qs)},                     // 1 of 2 right: due
                        {u"10001100003"_qs, Entry(40, u"A"_qs) + Entry(80, u"A"_qs)},  // finished
                        {u"10001100004"_qs, Entry(3, u"B"_qs)},                      // wrong, too recent
                        {u"10001100005"_qs, u"no"_qs, u"A"_qs, false}});             // hidden, never done
  // Simulated papers: tsoktimes 1, tspassdays 0: the one right answer
  // finishes, a wrong one of today is due at once.
  test::WriteItemTable(t, u"csitems.mmd"_qs,
                       {{u"00001100001"_qs, Entry(0, u"B"_qs)},
                        {u"00001100002"_qs, Entry(40, u"A"_qs)},
                        {u"00001100003"_qs}});
  t.clock.setDate(kToday);
  QStringList labels;
  QList<int> maxima, values;
  ForecastProgress p;
  p.setLabel = [&](const QString& s) { labels.append(s); };
  p.setMaximum = [&](int m) { maxima.append(m); };
  p.setValue = [&](int v) { values.append(v); };
  const ForecastCounts c = CalcData(t.env, {2, 1, 30, 1, 1, 0}, p);
  EXPECT_EQ(c.internal, 3);
  EXPECT_EQ(c.simulated, 2);
  EXPECT_EQ(labels, QStringList({u"正在统计符合设置条件的内部试题数，请稍候……"_qs,
                                 u"  正在统计符合设置条件的模拟试题数，请稍候……"_qs}));
  EXPECT_EQ(maxima, QList<int>({5, 3}));
  EXPECT_EQ(values, QList<int>({1, 2, 3, 4, 5, 1, 2, 3}));
  EXPECT_TRUE(t.boxes.shown().isEmpty());
}

TEST(Forecast, TheSimulatedCountUsesItsOwnNumbers) {
  test::TestEnv t;
  t.clock.setDate(kToday);
  const QList<ItemSpec> rows = {{u"00001100001"_qs, Entry(40, u"A"_qs)}, {u"00001100002"_qs, Entry(10, u"A"_qs)}};
  test::WriteItemTable(t, u"items.mmd"_qs, {});
  test::WriteItemTable(t, u"csitems.mmd"_qs, rows);
  // Internal numbers that would make both due, simulated ones that make
  // only the older one due.
  EXPECT_EQ(CalcData(t.env, {10, 1, 0, 2, 1, 30}).simulated, 1);
  EXPECT_EQ(CalcData(t.env, {10, 1, 0, 1, 1, 30}).simulated, 0);
  EXPECT_EQ(CalcData(t.env, {1, 1, 30, 2, 1, 5}).simulated, 2);
}

TEST(Forecast, ARowWithANullSixthFieldIsWarnedAboutAndNotCounted) {
  test::TestEnv t;
  t.clock.setDate(kToday);
  test::WriteItemTable(t, u"items.mmd"_qs, {{u"10001100001"_qs}, {u"10001100002"_qs}, {u"10001100003"_qs}});
  test::WriteItemTable(t, u"csitems.mmd"_qs, {{u"00001100001"_qs}, {u"00001100002"_qs}});
  // The empty text of a new question is a value: nothing is said.
  EXPECT_EQ(CalcData(t.env, kNumbers).internal, 3);
  EXPECT_TRUE(t.boxes.shown().isEmpty());
  ZeroField(t.path(u"\\dbf\\items.mmd"_qs), 1, 5);
  ZeroField(t.path(u"\\dbf\\csitems.mmd"_qs), 0, 5);
  const ForecastCounts c = CalcData(t.env, kNumbers);
  EXPECT_EQ(c.internal, 2);
  EXPECT_EQ(c.simulated, 1);
  ASSERT_EQ(t.boxes.shown().size(), 2);
  EXPECT_EQ(t.boxes.shown()[0].title, u"请注意"_qs);
  EXPECT_EQ(t.boxes.shown()[0].text, u"数据库items.mmd中第2行第6个字段的值为空,请先整理!"_qs);
  EXPECT_EQ(t.boxes.shown()[1].text, u"数据库csitems.mmd中第1行第6个字段的值为空,请先整理!"_qs);
}

TEST(Forecast, EmptyTablesCountNothingAndSayNothing) {
  test::TestEnv t;
  test::WriteItemTable(t, u"items.mmd"_qs, {});
  test::WriteItemTable(t, u"csitems.mmd"_qs, {});
  const ForecastCounts c = CalcData(t.env, kNumbers);
  EXPECT_EQ(c.internal, 0);
  EXPECT_EQ(c.simulated, 0);
  EXPECT_TRUE(t.boxes.shown().isEmpty());
}

TEST(Forecast, AMissingTableIsSaidAndTheOtherIsCounted) {
  test::TestEnv t;
  test::WriteItemTable(t, u"csitems.mmd"_qs, {{u"00001100001"_qs}});
  const ForecastCounts c = CalcData(t.env, kNumbers);
  EXPECT_EQ(c.internal, 0);
  EXPECT_EQ(c.simulated, 1);
  ASSERT_EQ(t.boxes.shown().size(), 1);
  EXPECT_EQ(t.boxes.shown()[0].title, u"请注意"_qs);
  EXPECT_EQ(t.boxes.shown()[0].text, u"表文件 "_qs + t.path(u"\\dbf\\items.mmd"_qs) +
                                         u" 不存在。\r\n预测中没有计入读不出的试题。"_qs);
}

TEST(Forecast, ACountEqualsTheTestOfEveryRow) {
  // Every shape of record against the test of each row by itself.
  test::TestEnv t;
  t.clock.setDate(kToday);
  QList<ItemSpec> rows;
  const QStringList answers = {u"A"_qs, u"B"_qs, u"AB"_qs};
  for (int i = 0; i < 300; ++i) {
    QString story;
    const int entries = i % 9;
    for (int e = 0; e < entries; ++e) story += Entry(5 + (i * 7 + e * 13) % 70, answers[(i + e) % 3]);
    rows.append({u"100011"_qs + QStringLiteral("%1").arg(i + 1, 5, 10, QChar(u'0')),
                 story.isEmpty() ? u"no"_qs : story, answers[i % 3], i % 11 != 0});
  }
  test::WriteItemTable(t, u"items.mmd"_qs, rows);
  test::WriteItemTable(t, u"csitems.mmd"_qs, {});
  for (const std::array<int, 6>& n : {std::array<int, 6>{1, 1, 30, 1, 1, 30}, std::array<int, 6>{3, 2, 10, 0, 0, 0},
                                      std::array<int, 6>{10, 6, 0, 1, 1, 1}}) {
    int expected = 0;
    for (const ItemSpec& s : rows) {
      QString story = s.story;
      if (IsOkItem(story, n[0], n[1], n[2], s.answer, false, kToday)) ++expected;
    }
    EXPECT_EQ(CalcData(t.env, n).internal, expected);
  }
}
