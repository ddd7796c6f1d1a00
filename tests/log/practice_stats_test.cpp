// The figures of the statistics window, against figures the test works out
// from the records it wrote itself.
#include "log/practice_stats.h"

#include <gtest/gtest.h>

#include <QMap>
#include <QRandomGenerator>

#include "bank/eligibility.h"
#include "bank/item_index.h"
#include "bank/tables.h"
#include "platform/dbftable.h"
#include "platform/vbtext.h"
#include "settings/settings.h"
#include "support/printers.h"
#include "support/test_env.h"

using namespace mj;

namespace {

const QDate kToday(2026, 11, 21);

QString Entry(const QDate& day, const QString& answer, int minute = 32) {
  return day.toString(u"yyyy-MM-dd"_qs) + QStringLiteral(" 10:%1").arg(minute, 2, 10, QChar(u'0')) +
         Right(u"    "_qs + answer, 4);
}

// A question the test writes, with the entries of its record as the test
// knows them (newest first).
struct Known {
  QString id;
  QString key;
  bool live = true;
  struct E {
    QDate day;
    QString given;
  };
  QList<E> entries;
  QString extra;  // text behind the entries (a damaged tail), or the whole record when no entries

  QString story() const {
    if (entries.isEmpty()) return extra.isEmpty() ? u"no"_qs : extra;
    QString s;
    for (const E& e : entries) s += Entry(e.day, e.given);
    return s + extra;
  }
};

void WriteTable(const test::TestEnv& t, const QString& table, const QList<Known>& rows) {
  t.mkdir(u"\\dbf"_qs);
  DbfTable tab = DbfTable::create(t.path(u"\\dbf\\"_qs + table), tables::ItemFields());
  for (const Known& k : rows) {
    const int r = tab.appendRow();
    tab.setText(r, u"filename"_qs, Left(k.id, 6));
    tab.setText(r, u"story"_qs, k.story());
    tab.setText(r, u"answer"_qs, k.key);
    tab.setText(r, u"itemid"_qs, k.id);
    tab.setLogical(r, u"valid2"_qs, k.live);
    tab.setLogical(r, u"hasselect"_qs, true);
    tab.setNumber(r, u"itemtype"_qs, Val(Mid(k.id, 6, 1)));
  }
}

// Directory rows: label and file (empty for a heading).
void WriteDirectory(const test::TestEnv& t, const QString& table, const QList<std::pair<QString, QString>>& rows) {
  DbfTable tab = DbfTable::create(t.path(u"\\dbf\\"_qs + table), tables::DirectoryFields());
  for (const auto& [label, file] : rows) {
    const int r = tab.appendRow();
    tab.setText(r, tables::kDirLabel, label);
    if (!file.isEmpty()) tab.setText(r, tables::kDirFile, file);
    tab.setNumber(r, tables::kDirTotal, 0);
    tab.setNumber(r, tables::kDirEligible, 0);
  }
}

void WriteLawNames(const test::TestEnv& t) {
  DbfTable tab = DbfTable::create(t.path(u"\\dbf\\33.mmd"_qs), tables::LawNameFields());
  for (const auto& [name, file] :
       {std::pair{u"《示例刑法》"_qs, u"\\yibanti\\10001"_qs}, std::pair{u"《示例民法》"_qs, u"\\yibanti\\10002"_qs}}) {
    const int r = tab.appendRow();
    tab.setText(r, u"lawname"_qs, name);
    tab.setText(r, u"filename"_qs, file);
  }
}

// A folder with records of every shape: laws 10001 and 10002 named in
// 33.mmd, 10003 in the directory but not named, 10004 in neither; papers
// 00001 and 00002 in the paper directory, 00003 not. The records hold the
// answers of the last 120 days and a few dated ahead, right and wrong,
// hidden questions, records never done, damaged entries.
struct Folder {
  test::TestEnv t;
  QList<Known> internal, simulated;

  Folder() {
    t.clock.setDate(kToday);
    QRandomGenerator rng(20261121);
    const QStringList keys = {u"A"_qs, u"C"_qs, u"AB"_qs, u"ABD"_qs, u"D"_qs};
    auto make = [&](const QString& bank, int count) {
      QList<Known> out;
      for (int i = 1; i <= count; ++i) {
        Known k;
        k.id = bank + QStringLiteral("%1").arg(i, 5, 10, QChar(u'0'));
        k.key = keys[rng.bounded(keys.size())];
        k.live = rng.bounded(10) != 0;
        const int n = rng.bounded(11);  // 0 (never done) to 10 entries
        QDate day = kToday.addDays(rng.bounded(-120, 4));
        for (int e = 0; e < n; ++e) {
          // Newest first: every later entry lies further back. The oldest
          // may be wrong, the others are right, as a record holds them.
          const bool wrong = e == n - 1 && rng.bounded(3) == 0;
          k.entries.append({day, wrong ? (k.key == u"B"_qs ? u"C"_qs : u"B"_qs) : k.key});
          day = day.addDays(-rng.bounded(0, 40));
        }
        if (n > 0 && rng.bounded(15) == 0) k.extra = u"2026-13-45 10:32   A"_qs;  // an entry that is no date
        if (n > 0 && rng.bounded(15) == 0) k.extra = u"2026-11-"_qs;              // a cut-off entry
        out.append(k);
      }
      return out;
    };
    for (const QString& bank : {u"100011"_qs, u"100012"_qs, u"100021"_qs, u"100031"_qs, u"100041"_qs})
      internal += make(bank, 60);
    for (const QString& bank : {u"000011"_qs, u"000012"_qs, u"000021"_qs, u"000031"_qs}) simulated += make(bank, 25);
    WriteTable(t, u"items.mmd"_qs, internal);
    WriteTable(t, u"csitems.mmd"_qs, simulated);
    WriteLawNames(t);
    WriteDirectory(t, u"33ok.mmd"_qs,
                   {{u"第一部分"_qs, {}},
                    {u"《示例刑法》单项选择题"_qs, u"\\yibanti\\100011.mmd"_qs},
                    {u"《示例刑法》多项选择题"_qs, u"\\yibanti\\100012.mmd"_qs},
                    {u"第二部分"_qs, {}},
                    {u"《示例民法》单项选择题"_qs, u"\\yibanti\\100021.MMD"_qs},
                    {u"《第三法》单项选择题"_qs, u"\\yibanti\\100031.mmd"_qs},
                    {u"待追加"_qs, {}}});
    WriteDirectory(t, u"csface.mmd"_qs,
                   {{u"示例模拟试卷一"_qs, {}},
                    {u"试卷一 单项选择题"_qs, u"\\moniti\\000011.mmd"_qs},
                    {u"试卷一 多项选择题"_qs, u"\\moniti\\000012.mmd"_qs},
                    {u"示例模拟试卷二"_qs, {}},
                    {u"试卷二 单项选择题"_qs, u"\\moniti\\000021.mmd"_qs}});
  }
  QString dbf() const { return t.path(u"\\dbf"_qs); }
};

}  // namespace

TEST(PracticeStats, EntriesOfARecord) {
  const QString story = Entry(QDate(2026, 11, 20), u"AB"_qs) + Entry(QDate(2026, 11, 3), u"AB"_qs) +
                        u"2026-02-30 10:32  AB"_qs + Entry(QDate(2026, 10, 1), u"C"_qs) + u"2026-09"_qs;
  const QList<RecordEntryOf> e = EntriesOf(story, u"AB"_qs);
  ASSERT_EQ(e.size(), 3);
  EXPECT_EQ(e[0].day, QDate(2026, 11, 20));
  EXPECT_TRUE(e[0].right);
  EXPECT_EQ(e[1].day, QDate(2026, 11, 3));
  EXPECT_TRUE(e[1].right);
  EXPECT_EQ(e[2].day, QDate(2026, 10, 1));
  EXPECT_FALSE(e[2].right);
  EXPECT_TRUE(EntriesOf(u"no"_qs, u"A"_qs).isEmpty());
  EXPECT_TRUE(EntriesOf(QString(), u"A"_qs).isEmpty());
}

TEST(PracticeStats, AnswersPerDayOfASmallFolder) {
  test::TestEnv t;
  WriteTable(t, u"items.mmd"_qs,
             {{u"10001100001"_qs, u"A"_qs, true, {{kToday, u"A"_qs}, {kToday.addDays(-3), u"B"_qs}}, {}},
              {u"10001100002"_qs, u"AB"_qs, false, {{kToday, u"AB"_qs}}, {}},
              // Ahead of today and 90 days back: outside the chart.
              {u"10001100003"_qs, u"C"_qs, true, {{kToday.addDays(1), u"C"_qs}, {kToday.addDays(-90), u"C"_qs}}, {}}});
  WriteTable(t, u"csitems.mmd"_qs,
             {{u"00001100001"_qs, u"D"_qs, true, {{kToday.addDays(-3), u"D"_qs}, {kToday.addDays(-89), u"A"_qs}}, {}}});
  const QList<DayAnswers> days = AnswersPerDay(ReadPracticeRecords(t.path(u"\\dbf"_qs)), kToday);
  ASSERT_EQ(days.size(), 90);
  EXPECT_EQ(days.first().day, kToday.addDays(-89));
  EXPECT_EQ(days.last().day, kToday);
  QMap<int, std::pair<int, int>> nonEmpty;
  for (int i = 0; i < days.size(); ++i)
    if (days[i].answers > 0) nonEmpty.insert(i, {days[i].answers, days[i].right});
  const QMap<int, std::pair<int, int>> expected = {{0, {1, 0}}, {86, {2, 1}}, {89, {2, 2}}};
  EXPECT_EQ(nonEmpty, expected);
}

// Entries in other forms than the program writes count by their date as the
// due test reads it; days that do not exist and entries out of order count
// by their own date, wherever they stand.
TEST(PracticeStats, AnswersPerDayReadEveryFormOfDate) {
  PracticeRecords r;
  auto add = [&r](const QString& story, const QString& key) { r.internal.append({u"100011"_qs, story, key, true}); };
  add(u"2026-8-24 9:05     A"_qs + u"2026/11/21 10:32   A"_qs + u" 2026-11-2 10:3    B"_qs, u"A"_qs);
  add(u"2026-11-31 10:32   A"_qs + u"2026-02-29 10:32   A"_qs + u"2026-11-2x 10:32   A"_qs + u"2026-11-20 25:00   A"_qs,
      u"A"_qs);
  // Out of order: a day in the chart behind one before it and one after today.
  add(Entry(QDate(2026, 1, 1), u"A"_qs) + Entry(kToday.addDays(1), u"A"_qs) + Entry(QDate(2026, 8, 24), u"B"_qs) +
          Entry(QDate(2026, 8, 23), u"A"_qs) + Entry(QDate(2025, 11, 21), u"A"_qs) + Entry(kToday, u"A"_qs),
      u"A"_qs);
  r.simulated.append({u"000011"_qs, u"2026-11-21 10:32:01A"_qs + u"2026-11-21  9:32   C"_qs, u"C"_qs, true});
  const QList<DayAnswers> days = AnswersPerDay(r, kToday);
  ASSERT_EQ(days.first().day, QDate(2026, 8, 24));
  QMap<QDate, std::pair<int, int>> nonEmpty;
  for (const DayAnswers& d : days)
    if (d.answers > 0) nonEmpty.insert(d.day, {d.answers, d.right});
  // 2026-11-02 " 2026-11-2 10:3" trimmed reads as the 2nd, its answer "B" wrong.
  const QMap<QDate, std::pair<int, int>> expected = {
      {QDate(2026, 8, 24), {2, 1}}, {QDate(2026, 11, 2), {1, 0}}, {kToday, {4, 3}}};
  EXPECT_EQ(nonEmpty, expected);
}

TEST(PracticeStats, AnswersPerDayEqualTheEntriesTheTestWrote) {
  Folder f;
  const PracticeRecords records = ReadPracticeRecords(f.dbf());
  EXPECT_TRUE(records.problems.isEmpty());
  ASSERT_EQ(records.internal.size(), f.internal.size());
  ASSERT_EQ(records.simulated.size(), f.simulated.size());
  for (int span : {90, 30, 1}) {
    QList<int> answers(span), right(span);
    for (const QList<Known>* table : {&f.internal, &f.simulated})
      for (const Known& k : *table)
        for (const Known::E& e : k.entries) {
          const qint64 back = e.day.daysTo(kToday);
          if (back < 0 || back >= span) continue;
          ++answers[span - 1 - back];
          if (e.given == k.key) ++right[span - 1 - back];
        }
    const QList<DayAnswers> days = AnswersPerDay(records, kToday, span);
    ASSERT_EQ(days.size(), span);
    int total = 0;
    for (int i = 0; i < span; ++i) {
      EXPECT_EQ(days[i].day, kToday.addDays(i - span + 1));
      EXPECT_EQ(days[i].answers, answers[i]) << span << " " << i;
      EXPECT_EQ(days[i].right, right[i]) << span << " " << i;
      total += days[i].answers;
    }
    if (span == 90) {
      EXPECT_GT(total, 300);  // the folder is not trivially empty
    }
  }
}

TEST(PracticeStats, RightShareEqualsTheNewestAnswersTheTestWrote) {
  Folder f;
  const QList<GroupShare> shares = RightShareByLaw(ReadPracticeRecords(f.dbf()));
  QMap<QString, std::pair<int, int>> expected;  // "i10001" or "s00001" -> done, right
  for (const bool simulated : {false, true})
    for (const Known& k : simulated ? f.simulated : f.internal) {
      if (k.entries.isEmpty()) continue;
      auto& [done, right] = expected[(simulated ? u"s"_qs : u"i"_qs) + Left(k.id, 5)];
      ++done;
      if (k.entries.first().given == k.key) ++right;
    }
  QMap<QString, std::pair<int, int>> got;
  QStringList labels;
  for (const GroupShare& g : shares) {
    got.insert((g.simulated ? u"s"_qs : u"i"_qs) + g.code, {g.done, g.right});
    labels.append(g.label);
    EXPECT_DOUBLE_EQ(g.percent(), 100.0 * g.right / g.done);
  }
  EXPECT_EQ(got, expected);
  // Laws in code order, then papers; names from 33.mmd and the paper
  // directory's headings, else from the code.
  EXPECT_EQ(labels, QStringList({u"《示例刑法》"_qs, u"《示例民法》"_qs, u"题库10003"_qs, u"题库10004"_qs,
                                 u"示例模拟试卷一"_qs, u"示例模拟试卷二"_qs, u"模拟试卷00003"_qs}));
}

TEST(PracticeStats, DueForecastEqualsTheDayByDayTest) {
  Folder f;
  const PracticeRecords records = ReadPracticeRecords(f.dbf());
  for (const auto& [internal, simulated] :
       {std::pair{Schedule{1, 1, 30, false, kToday}, Schedule{1, 1, 30, false, kToday}},
        std::pair{Schedule{3, 2, 7, false, kToday}, Schedule{0, 0, 0, false, kToday}},
        std::pair{Schedule{2, 1, 45, false, kToday}, Schedule{2, 3, 14, false, kToday}}}) {
    // Day by day, each question on its own: due that day and not the day
    // before (the first day: due).
    QList<int> expectedInternal(30), expectedSimulated(30);
    auto due = [](const Known& k, Schedule s, int day) {
      s.today = kToday.addDays(day);
      QString story = k.story();
      return IsOkItem(story, s, k.key);
    };
    for (const Known& k : f.internal) {
      if (!k.live || Left(k.id, 5) == u"10004"_qs) continue;  // hidden, or no bank of the directory
      for (int d = 0; d < 30; ++d)
        if (due(k, internal, d) && (d == 0 || !due(k, internal, d - 1))) ++expectedInternal[d];
    }
    for (const Known& k : f.simulated) {
      if (Left(k.id, 5) == u"00003"_qs) continue;
      for (int d = 0; d < 30; ++d)
        if (due(k, simulated, d) && (d == 0 || !due(k, simulated, d - 1))) ++expectedSimulated[d];
    }
    const QList<DueDay> days = DueForecast(records, internal, simulated);
    ASSERT_EQ(days.size(), 30);
    int later = 0;
    for (int d = 0; d < 30; ++d) {
      EXPECT_EQ(days[d].day, kToday.addDays(d));
      EXPECT_EQ(days[d].internal, expectedInternal[d]) << d;
      EXPECT_EQ(days[d].simulated, expectedSimulated[d]) << d;
      if (d > 0) later += days[d].internal + days[d].simulated;
    }
    EXPECT_GT(later, 0);
  }
}

TEST(PracticeStats, DueTodayEqualsTheCountsOfTheDirectories) {
  Folder f;
  Settings settings;
  for (const auto& [i, v] : {std::pair{kStOkTimes, 2},
                             {kStAddNum, 1},
                             {kStPassDays, 20},
                             {kTsOkTimes, 1},
                             {kTsAddNum, 2},
                             {kTsPassDays, 10}})
    settings.setNumber(i, v);
  const QList<DueDay> days = DueForecast(ReadPracticeRecords(f.dbf()), InternalSchedule(settings, kToday),
                                         SimulatedSchedule(settings, kToday));
  // The counts of the directories, as 内部题库 and 摸拟试卷 make them.
  ItemIndex index;
  ReadData2ItemData(f.dbf(), u"items.mmd"_qs, index);
  ASSERT_TRUE(NewIniDbfData(f.dbf(), u"33ok.mmd"_qs, u"items.mmd"_qs, index, InternalSchedule(settings, kToday)));
  ASSERT_TRUE(IniDbfData(f.dbf(), u"csface.mmd"_qs, u"csitems.mmd"_qs, SimulatedSchedule(settings, kToday)));
  auto dueOfBanks = [&](const QString& table) {
    const DbfTable t = DbfTable::open(f.t.path(u"\\dbf\\"_qs + table));
    int sum = 0;
    for (int r : t.rows())
      if (!t.isNull(r, tables::kDirFile)) sum += static_cast<int>(t.number(r, tables::kDirEligible));
    return sum;
  };
  EXPECT_EQ(days[0].internal, dueOfBanks(u"33ok.mmd"_qs));
  EXPECT_EQ(days[0].simulated, dueOfBanks(u"csface.mmd"_qs));
  EXPECT_GT(days[0].internal, 0);
  EXPECT_GT(days[0].simulated, 0);
}

TEST(PracticeStats, DueForecastOverTheEndOfAMonth) {
  // The days passed count months as 30 days: an answer of 31 October with
  // 30 days to wait is due on 1 December, day 10 of the forecast.
  test::TestEnv t;
  WriteTable(t, u"items.mmd"_qs,
             {{u"10001100001"_qs, u"A"_qs, true, {{QDate(2026, 10, 31), u"A"_qs}}, {}},
              {u"10001100002"_qs, u"A"_qs, true, {}, {}},  // never done
              {u"10001100003"_qs,
               u"A"_qs,
               true,
               {{QDate(2026, 10, 31), u"A"_qs}, {QDate(2026, 9, 1), u"A"_qs}},
               {}},                                                           // finished
              {u"10001100004"_qs, u"A"_qs, true, {{kToday, u"B"_qs}}, {}}});  // wrong today: due after day 29
  WriteTable(t, u"csitems.mmd"_qs, {});
  WriteDirectory(t, u"33ok.mmd"_qs, {{u"《示例刑法》单项选择题"_qs, u"\\yibanti\\100011.mmd"_qs}});
  const Schedule s{2, 1, 30, false, kToday};
  const QList<DueDay> days = DueForecast(ReadPracticeRecords(t.path(u"\\dbf"_qs)), s, s);
  QList<int> internal;
  for (const DueDay& d : days) internal.append(d.internal);
  QList<int> expected(30, 0);
  expected[0] = 1;
  expected[10] = 1;
  EXPECT_EQ(internal, expected);
  EXPECT_EQ(days[10].day, QDate(2026, 12, 1));
}

TEST(PracticeStats, MissingTablesAreSaid) {
  test::TestEnv t;
  t.mkdir(u"\\dbf"_qs);
  const PracticeRecords r = ReadPracticeRecords(t.path(u"\\dbf"_qs));
  EXPECT_TRUE(r.internal.isEmpty());
  EXPECT_TRUE(r.simulated.isEmpty());
  EXPECT_EQ(r.problems, QStringList({u"表文件 "_qs + t.path(u"\\dbf\\items.mmd"_qs) + u" 不存在。"_qs,
                                     u"表文件 "_qs + t.path(u"\\dbf\\csitems.mmd"_qs) + u" 不存在。"_qs}));
  EXPECT_TRUE(RightShareByLaw(r).isEmpty());
  for (const DayAnswers& d : AnswersPerDay(r, kToday)) EXPECT_EQ(d.answers, 0);
}
