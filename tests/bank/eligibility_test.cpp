#include "bank/eligibility.h"

#include <gtest/gtest.h>

#include <QRandomGenerator>

#include "support/directory_tables.h"
#include "support/printers.h"
#include "support/test_env.h"

using namespace mj;
using test::ItemSpec;
using test::StoryEntry;

namespace {

const QDate kToday(2026, 11, 21);

bool Due(QString story, int okTimes, int addNum, int passDays, const QString& answer, bool chaJuan = false,
         const QDate& today = kToday) {
  return IsOkItem(story, okTimes, addNum, passDays, answer, chaJuan, today);
}

QString Entry(int daysAgo, const QString& answer) { return StoryEntry(kToday.addDays(-daysAgo), answer); }

}  // namespace

// --- the due test ---

TEST(IsOkItem, NeverDoneAndEmptyRecordAreDue) {
  EXPECT_TRUE(Due(u"no"_qs, 1, 1, 30, u"A"_qs));
  EXPECT_TRUE(Due(QString(), 1, 1, 30, u"A"_qs));
  EXPECT_TRUE(Due(u"   no   "_qs, 1, 1, 30, u"A"_qs));
  // Shorter than one entry: no entries, due.
  EXPECT_TRUE(Due(u"2026-11-21 10:3"_qs, 1, 1, 30, u"A"_qs));
}

TEST(IsOkItem, TrimsTheRecordInPlace) {
  QString story = u"  "_qs + Entry(40, u"A"_qs) + u"  "_qs;
  EXPECT_TRUE(IsOkItem(story, 2, 1, 30, u"A"_qs, false, kToday));
  EXPECT_EQ(story, Entry(40, u"A"_qs));
  QString no = u" no "_qs;
  IsOkItem(no, 1, 1, 30, u"A"_qs, false, kToday);
  EXPECT_EQ(no, u"no"_qs);
}

TEST(IsOkItem, OneRightEntry) {
  // OkTimes 1: one right answer finishes the question.
  EXPECT_FALSE(Due(Entry(40, u"A"_qs), 1, 1, 30, u"A"_qs));
  // OkTimes 2 and enough days: due again.
  EXPECT_TRUE(Due(Entry(40, u"A"_qs), 2, 1, 30, u"A"_qs));
  // 21 October to 21 November is 30 days by the formula, 22 October 29.
  EXPECT_TRUE(Due(StoryEntry(QDate(2026, 10, 21), u"A"_qs), 2, 1, 30, u"A"_qs));
  // Not enough days.
  EXPECT_FALSE(Due(StoryEntry(QDate(2026, 10, 22), u"A"_qs), 2, 1, 30, u"A"_qs));
}

TEST(IsOkItem, OneWrongEntryIsDueAfterPassDays) {
  // n - 1 = 0 right answers since the wrong one: 0 < 1 + 1.
  EXPECT_TRUE(Due(StoryEntry(QDate(2026, 10, 21), u"B"_qs), 1, 1, 30, u"A"_qs));
  EXPECT_FALSE(Due(StoryEntry(QDate(2026, 10, 22), u"B"_qs), 1, 1, 30, u"A"_qs));
  // A wrong answer given today is not due today.
  EXPECT_FALSE(Due(Entry(0, u"B"_qs), 1, 1, 1, u"A"_qs));
}

TEST(IsOkItem, RightAnswersAfterAWrongOne) {
  // Newest first: two entries, the oldest wrong: 1 < 2, due.
  const QString two = Entry(31, u"A"_qs) + Entry(70, u"C"_qs);
  EXPECT_TRUE(Due(two, 1, 1, 30, u"A"_qs));
  // Three entries: 2 is not below 2, finished.
  const QString three = Entry(31, u"A"_qs) + Entry(70, u"A"_qs) + Entry(110, u"C"_qs);
  EXPECT_FALSE(Due(three, 1, 1, 30, u"A"_qs));
  // With OkTimes 2 and AddNum 1 the same record still needs one more.
  EXPECT_TRUE(Due(three, 2, 1, 30, u"A"_qs));
}

TEST(IsOkItem, OkTimesBoundWithoutWrongAnswers) {
  QString rec;
  for (int i = 0; i < 3; ++i) rec += Entry(31 + i * 40, u"AB"_qs);
  EXPECT_TRUE(Due(rec, 4, 1, 30, u"AB"_qs));   // 3 < 4
  EXPECT_FALSE(Due(rec, 3, 1, 30, u"AB"_qs));  // 3 is not below 3
  // AddNum does not matter without a wrong answer.
  EXPECT_FALSE(Due(rec, 3, 6, 30, u"AB"_qs));
}

TEST(IsOkItem, AddNumBoundAfterAWrongAnswer) {
  QString rec;
  for (int i = 0; i < 3; ++i) rec += Entry(31 + i * 40, u"A"_qs);
  rec += Entry(200, u"D"_qs);                 // n = 4, 3 right answers since the wrong one
  EXPECT_TRUE(Due(rec, 2, 2, 30, u"A"_qs));   // 3 < 4
  EXPECT_FALSE(Due(rec, 2, 1, 30, u"A"_qs));  // 3 is not below 3
  EXPECT_FALSE(Due(rec, 1, 2, 30, u"A"_qs));
}

TEST(IsOkItem, ThirtyDayMonthFormula) {
  // From the 31st to the 1st of the next month: 30 + 1 - 31 = 0 days.
  const QDate first(2026, 11, 1);
  const QString rec = StoryEntry(QDate(2026, 10, 31), u"A"_qs);
  EXPECT_FALSE(Due(rec, 2, 1, 1, u"A"_qs, false, first));
  EXPECT_TRUE(Due(rec, 2, 1, 0, u"A"_qs, false, first));
  // 31 December to 1 January: 365 - 11 * 30 - 30 = 5 days.
  const QString newYear = StoryEntry(QDate(2025, 12, 31), u"A"_qs);
  EXPECT_TRUE(Due(newYear, 2, 1, 5, u"A"_qs, false, QDate(2026, 1, 1)));
  EXPECT_FALSE(Due(newYear, 2, 1, 6, u"A"_qs, false, QDate(2026, 1, 1)));
  // 1 March after 28 February: 30 - 27 = 3 days, not 1.
  const QString feb = StoryEntry(QDate(2026, 2, 28), u"A"_qs);
  EXPECT_TRUE(Due(feb, 2, 1, 3, u"A"_qs, false, QDate(2026, 3, 1)));
  EXPECT_FALSE(Due(feb, 2, 1, 4, u"A"_qs, false, QDate(2026, 3, 1)));
}

TEST(IsOkItem, PassDaysZeroMakesTodaysRightAnswerDueAgain) {
  EXPECT_TRUE(Due(Entry(0, u"A"_qs), 2, 1, 0, u"A"_qs));
  // ... when OkTimes allows.
  EXPECT_FALSE(Due(Entry(0, u"A"_qs), 1, 1, 0, u"A"_qs));
}

TEST(IsOkItem, ChaJuanValues) {
  // -10, 1, -10 with the review flag: a wrong oldest entry is due, a right one never.
  EXPECT_TRUE(Due(Entry(0, u"B"_qs), -10, 1, -10, u"A"_qs, true));
  EXPECT_FALSE(Due(Entry(0, u"A"_qs), -10, 1, -10, u"A"_qs, true));
  // A right answer after the wrong one keeps the question in the review.
  EXPECT_TRUE(Due(Entry(0, u"A"_qs) + Entry(5, u"B"_qs), -10, 1, -10, u"A"_qs, true));
  EXPECT_TRUE(Due(u"no"_qs, -10, 1, -10, u"A"_qs, true));
  // Dates up to ten days ahead still pass the day test; eleven do not.
  EXPECT_TRUE(Due(Entry(-10, u"B"_qs), -10, 1, -10, u"A"_qs, true));
  EXPECT_FALSE(Due(Entry(-11, u"B"_qs), -10, 1, -10, u"A"_qs, true));
  // Without the flag the same numbers decide by n - 1 < OkTimes + AddNum.
  EXPECT_FALSE(Due(Entry(0, u"B"_qs), -10, 1, -10, u"A"_qs, false));
}

TEST(IsOkItem, AnswersAreComparedTrimmed) {
  const QString rec = Entry(40, u"AB"_qs);
  ASSERT_EQ(Right(rec, 4), u"  AB"_qs);
  EXPECT_FALSE(Due(rec, 1, 1, 30, u"AB"_qs));    // equal: right, finished
  EXPECT_FALSE(Due(rec, 1, 1, 30, u" AB "_qs));  // the key is trimmed too
  EXPECT_TRUE(Due(rec, 1, 1, 30, u"ABC"_qs));    // wrong: due
}

TEST(IsOkItem, GarbageDateIsNotDue) {
  EXPECT_FALSE(Due(u"abcdefghijklmnopqrst"_qs, 1, 1, 0, u"A"_qs));
  EXPECT_FALSE(Due(u"2026-02-30 10:00   A"_qs, 5, 1, 0, u"A"_qs));
  EXPECT_FALSE(Due(u"2026-11-01 25:00   A"_qs, 5, 1, 0, u"A"_qs));
  EXPECT_FALSE(Due(u"26-11-01 10:00     A"_qs, 5, 1, 0, u"A"_qs));
  EXPECT_FALSE(Due(u"2026-11-01x10:00   A"_qs, 5, 1, 0, u"A"_qs));
  // Even the review flag does not make it due.
  EXPECT_FALSE(Due(u"abcdefghijklmnopqrst"_qs, -10, 1, -10, u"A"_qs, true));
}

TEST(IsOkItem, EntryCountIsTheWholePartOfLengthBy20) {
  // 39 characters are one entry: the oldest answer is read from the end.
  const QString rec = Entry(40, u"A"_qs) + u"xxxxxxxxxxxxxxxxxx B"_qs.left(19);
  ASSERT_EQ(rec.size(), 39);
  EXPECT_TRUE(Due(rec, 1, 1, 30, u"A"_qs));  // last 4 "xx B" trimmed is not "A": wrong, 0 < 2
}

TEST(EntryDate, ReadsTheFirstSixteenCharacters) {
  EXPECT_EQ(EntryDate(u"2003-06-26 10:32  AB"_qs), QDate(2003, 6, 26));
  EXPECT_EQ(EntryDate(u"2003-6-6 9:05      A"_qs), QDate(2003, 6, 6));
  EXPECT_EQ(EntryDate(u"2003/06/26 10:32  AB"_qs), QDate(2003, 6, 26));
  EXPECT_EQ(EntryDate(u"2003-06-26"_qs), QDate(2003, 6, 26));
  EXPECT_EQ(EntryDate(u"2003-06-26 10:32:59"_qs), QDate(2003, 6, 26));
  EXPECT_FALSE(EntryDate(u"no"_qs));
  EXPECT_FALSE(EntryDate(u"2003-06/26 10:32"_qs));
  EXPECT_FALSE(EntryDate(u"2003-13-01 10:32"_qs));
  EXPECT_FALSE(EntryDate(u"2003-06-26 10"_qs));
}

namespace {

QString WrittenEntry(int year, int month, int day, const QString& time = u"10:32"_qs) {
  return u"%1-%2-%3 "_qs.arg(year, 4, 10, QChar(u'0')).arg(month, 2, 10, QChar(u'0')).arg(day, 2, 10, QChar(u'0')) +
         time + u"  AB"_qs;
}

}  // namespace

// Entries in the form the program writes are read by a quicker way than
// the other forms: the day must be the calendar's day, and what is no day
// must stay no day.
TEST(EntryDate, WrittenFormGivesTheCalendarsDay) {
  for (QDate d(1899, 12, 1); d <= QDate(2101, 1, 31); d = d.addDays(1))
    ASSERT_EQ(EntryDate(WrittenEntry(d.year(), d.month(), d.day())), d) << qPrintable(d.toString(Qt::ISODate));
  for (int y = 1; y <= 9999; ++y) {
    for (auto [m, day] : {std::pair{1, 1}, {2, 28}, {2, 29}, {3, 1}, {12, 31}}) {
      const std::optional<QDate> want =
          QDate::isValid(y, m, day) ? std::optional<QDate>(QDate(y, m, day)) : std::nullopt;
      ASSERT_EQ(EntryDate(WrittenEntry(y, m, day)), want) << y << "-" << m << "-" << day;
    }
  }
  EXPECT_FALSE(EntryDate(WrittenEntry(0, 1, 1)));
  EXPECT_FALSE(EntryDate(WrittenEntry(2003, 2, 29)));
  EXPECT_FALSE(EntryDate(WrittenEntry(1900, 2, 29)));
  EXPECT_EQ(EntryDate(WrittenEntry(2000, 2, 29)), QDate(2000, 2, 29));
  EXPECT_FALSE(EntryDate(WrittenEntry(2003, 4, 31)));
  EXPECT_FALSE(EntryDate(WrittenEntry(2003, 0, 10)));
  EXPECT_FALSE(EntryDate(WrittenEntry(2003, 6, 0)));
  EXPECT_EQ(EntryDate(WrittenEntry(2003, 6, 26, u"23:59"_qs)), QDate(2003, 6, 26));
  EXPECT_EQ(EntryDate(WrittenEntry(2003, 6, 26, u"00:00"_qs)), QDate(2003, 6, 26));
  EXPECT_FALSE(EntryDate(WrittenEntry(2003, 6, 26, u"24:00"_qs)));
  EXPECT_FALSE(EntryDate(WrittenEntry(2003, 6, 26, u"23:60"_qs)));
  EXPECT_FALSE(EntryDate(WrittenEntry(2003, 6, 26, u"1a:00"_qs)));
  EXPECT_FALSE(EntryDate(u"2003-06-2x 10:32  AB"_qs));
  // The same text in the other forms gives the same day.
  EXPECT_EQ(EntryDate(u"2003-06-26 10:32"_qs), EntryDate(u" 2003-6-26 10:32"_qs));
  EXPECT_EQ(EntryDate(u"2003-06-26 10:32"_qs), EntryDate(u"2003/06/26 10:32"_qs));
}

// --- the counts ---

namespace {

const QString kFace = u"33ok.mmd"_qs;
const QString kItems = u"items.mmd"_qs;

Schedule Sched(int ok, int add, int pass, bool chaJuan = false) { return Schedule{ok, add, pass, chaJuan, kToday}; }

// Two banks and a third with no questions; a hidden question in the first.
QList<ItemSpec> SmallBank() {
  return {
      {u"01001100001"_qs, u"no"_qs, u"A"_qs, true},
      {u"01001100002"_qs, Entry(1, u"A"_qs), u"A"_qs, true},   // right yesterday: not due
      {u"01001100003"_qs, Entry(40, u"B"_qs), u"A"_qs, true},  // wrong long ago: due
      {u"01001100004"_qs, u"no"_qs, u"A"_qs, false},           // hidden
      {u"01001200001"_qs, u"no"_qs, u"AB"_qs, true},
      {u"01001200002"_qs, Entry(40, u"  AB"_qs), u"AB"_qs, true},      // right, OkTimes 1: finished
      {u"01001100005"_qs, u"garbage garbage garb"_qs, u"A"_qs, true},  // not due
  };
}

QList<test::DirSpec> SmallFace() {
  return {
      {u"民法"_qs, QString(), u"2-3"_qs, u"1"_qs, u"99"_qs, QString(), QString(), QString(), QString(), QString(),
       QString(), u"77"_qs},
      {u"民法单项选择题"_qs, u"\\yibanti\\010011.mmd"_qs, QString(), u"2"_qs},
      {u"民法多项选择题"_qs, u"\\yibanti\\010012.MMD"_qs, QString(), u"3"_qs},
      {u"说明"_qs, u"readme.txt"_qs, QString(), u"4"_qs, u"5"_qs, QString(), QString(), QString(), QString(), QString(),
       QString(), u"5"_qs},
      {u"空的题库"_qs, u"\\yibanti\\099991.mmd"_qs, QString(), u"5"_qs, u"8"_qs, QString(), QString(), QString(),
       QString(), QString(), QString(), u"8"_qs},
      {u"空行"_qs},
  };
}

}  // namespace

TEST(NewIniDbfData, CountsLiveAndDueQuestionsPerBank) {
  test::TestEnv t;
  const QList<ItemSpec> items = SmallBank();
  test::WriteItemTable(t, kItems, items);
  test::WriteDirectoryTable(t, kFace, SmallFace());
  int maximum = -1;
  QList<int> values;
  CountProgress p{[&](int m) { maximum = m; }, [&](int v) { values.append(v); }};
  ASSERT_TRUE(NewIniDbfData(t.path(u"\\dbf"_qs), kFace, kItems, test::IndexOf(items), Sched(1, 1, 30), p));
  // The heading before the first bank gets 0 and 0; the row with a text file
  // and the blank row receive the numbers of the row before them.
  EXPECT_EQ(test::ColumnOf(t, kFace, u"f"_qs), (QStringList{u"0"_qs, u"4"_qs, u"2"_qs, u"2"_qs, u"0"_qs, u"0"_qs}));
  EXPECT_EQ(test::ColumnOf(t, kFace, u"oknum"_qs), (QStringList{u"0"_qs, u"2"_qs, u"1"_qs, u"1"_qs, u"0"_qs, u"0"_qs}));
  // Other fields stay.
  EXPECT_EQ(test::ColumnOf(t, kFace, u"a"_qs).at(0), u"民法"_qs);
  // The bar: the live questions of the table, from 1, one step per question counted.
  EXPECT_EQ(maximum, 6);
  ASSERT_FALSE(values.isEmpty());
  EXPECT_EQ(values.first(), 1);
  EXPECT_EQ(values.last(), 7);
}

TEST(NewIniDbfData, FollowsTheIndexNotTheTable) {
  test::TestEnv t;
  QList<ItemSpec> items = SmallBank();
  test::WriteItemTable(t, kItems, items);
  test::WriteDirectoryTable(t, kFace, SmallFace());
  ItemIndex index = test::IndexOf(items);
  index[0].valid2 = false;  // hidden since the load
  index[1].story = u"no"_qs;
  int maximum = -1;
  NewIniDbfData(t.path(u"\\dbf"_qs), kFace, kItems, index, Sched(1, 1, 30), {[&](int m) { maximum = m; }, {}});
  EXPECT_EQ(maximum, 5);  // the live questions of the index
  EXPECT_EQ(test::ColumnOf(t, kFace, u"f"_qs).at(1), u"3"_qs);
  EXPECT_EQ(test::ColumnOf(t, kFace, u"oknum"_qs).at(1), u"2"_qs);
}

TEST(NewIniDbfData, MissingDirectoryTableChangesNothing) {
  test::TestEnv t;
  test::WriteItemTable(t, kItems, SmallBank());
  EXPECT_FALSE(NewIniDbfData(t.path(u"\\dbf"_qs), kFace, kItems, test::IndexOf(SmallBank()), Sched(1, 1, 30)));
}

TEST(NewIniDbfData, SameCountsAsTheWalkOverEveryRow) {
  // A random bank: both ways must write identical tables.
  QRandomGenerator rng(20261121);
  QList<ItemSpec> items;
  QList<test::DirSpec> face;
  const QStringList answers = {u"A"_qs, u"B"_qs, u"AB"_qs, u"ACD"_qs};
  for (int bank = 0; bank < 25; ++bank) {
    const QString code = u"0%1"_qs.arg(1000 + bank) + QString::number(1 + bank % 3);
    if (bank % 5 == 0) face.append({u"标题"_qs, QString(), u"%1-%2"_qs.arg(face.size() + 2).arg(face.size() + 6)});
    face.append({u"库"_qs + code, u"\\yibanti\\"_qs + code + u".mmd"_qs});
    for (int q = 0; q < 40; ++q) {
      QString story = u"no"_qs;
      const int entries = rng.bounded(5);
      if (entries > 0) story.clear();
      for (int e = 0; e < entries; ++e) story += Entry(rng.bounded(-12, 90), answers[rng.bounded(4)]);
      if (rng.bounded(50) == 0) story = u"not a date at all!!!"_qs;
      items.append(
          {code + u"%1"_qs.arg(q + 1, 5, 10, QChar(u'0')), story, answers[rng.bounded(4)], rng.bounded(10) != 0});
    }
  }
  face.append({u"无题"_qs, u"\\yibanti\\077771.mmd"_qs});
  const ItemIndex index = test::IndexOf(items);
  for (const Schedule& s : {Sched(1, 1, 30), Sched(3, 2, 10), Sched(2, 0, 0), Sched(-10, 1, -10, true)}) {
    test::TestEnv a, b;
    for (test::TestEnv* e : {&a, &b}) {
      test::WriteItemTable(*e, kItems, items);
      test::WriteDirectoryTable(*e, kFace, face);
    }
    int va = 0, vb = 0;
    int ma = 0, mb = 0;
    NewIniDbfData(a.path(u"\\dbf"_qs), kFace, kItems, index, s, {[&](int m) { ma = m; }, [&](int v) { va = v; }});
    NewIniDbfDataByWalk(b.path(u"\\dbf"_qs), kFace, kItems, index, s, {[&](int m) { mb = m; }, [&](int v) { vb = v; }});
    EXPECT_EQ(ma, mb);  // index and table in step: the same maximum
    EXPECT_EQ(test::ColumnOf(a, kFace, u"f"_qs), test::ColumnOf(b, kFace, u"f"_qs));
    EXPECT_EQ(test::ColumnOf(a, kFace, u"oknum"_qs), test::ColumnOf(b, kFace, u"oknum"_qs));
    EXPECT_EQ(va, vb);
    EXPECT_NE(test::ColumnOf(a, kFace, u"oknum"_qs).join(QString()), QString());
  }
}

TEST(IniDbfData, CountsOverTheTableHiddenQuestionsIncluded) {
  test::TestEnv t;
  test::WriteItemTable(t, u"csitems.mmd"_qs, SmallBank());
  test::WriteDirectoryTable(t, u"csface.mmd"_qs, SmallFace());
  int maximum = -1, last = -1;
  ASSERT_TRUE(IniDbfData(t.path(u"\\dbf"_qs), u"csface.mmd"_qs, u"csitems.mmd"_qs, Sched(1, 1, 30),
                         {[&](int m) { maximum = m; }, [&](int v) { last = v; }}));
  // The hidden question 01001100004 counts here; f is not touched.
  EXPECT_EQ(test::ColumnOf(t, u"csface.mmd"_qs, u"oknum"_qs),
            (QStringList{u"0"_qs, u"3"_qs, u"1"_qs, u"1"_qs, u"0"_qs, u"0"_qs}));
  EXPECT_EQ(test::ColumnOf(t, u"csface.mmd"_qs, u"f"_qs),
            (QStringList{u"99"_qs, QString(), QString(), u"5"_qs, u"8"_qs, QString()}));
  EXPECT_EQ(maximum, 7);  // every row of the item table
  EXPECT_EQ(last, 7);     // one step per question tested
}

TEST(IniDbfData, BankIsTheSixCharactersBeforeTheExtension) {
  test::TestEnv t;
  test::WriteItemTable(t, u"csitems.mmd"_qs,
                       {{u"01001100001"_qs}, {u"01001100002"_qs}, {u"\\01001000"_qs.left(6) + u"00000"_qs}});
  // "\moniti\01001.mmd": Mid(b, Len(b) - 9, 6) is "\01001", not the paper's code.
  test::WriteDirectoryTable(
      t, u"csface.mmd"_qs,
      {{u"卷一"_qs, u"\\moniti\\010011.mmd"_qs}, {u"卷二"_qs, u"\\moniti\\01001.mmd"_qs}, {u"短"_qs, u"a.mmd"_qs}});
  IniDbfData(t.path(u"\\dbf"_qs), u"csface.mmd"_qs, u"csitems.mmd"_qs, Sched(1, 1, 30));
  // The third name is too short for the 6 characters: the bank of the row
  // before it is counted again.
  EXPECT_EQ(test::ColumnOf(t, u"csface.mmd"_qs, u"oknum"_qs), (QStringList{u"2"_qs, u"1"_qs, u"1"_qs}));
}

TEST(IniDbfData, BankListedTwiceIsCountedTwice) {
  test::TestEnv t;
  test::WriteItemTable(t, u"csitems.mmd"_qs, SmallBank());
  test::WriteDirectoryTable(t, u"csface.mmd"_qs,
                            {{u"一"_qs, u"\\moniti\\010011.mmd"_qs}, {u"二"_qs, u"\\moniti\\010011.mmd"_qs}});
  int last = -1;
  IniDbfData(t.path(u"\\dbf"_qs), u"csface.mmd"_qs, u"csitems.mmd"_qs, Sched(1, 1, 30), {{}, [&](int v) { last = v; }});
  EXPECT_EQ(test::ColumnOf(t, u"csface.mmd"_qs, u"oknum"_qs), (QStringList{u"3"_qs, u"3"_qs}));
  EXPECT_EQ(last, 10);  // five questions tested for each row
}

TEST(IniDbfData, MissingTables) {
  test::TestEnv t;
  test::WriteDirectoryTable(t, u"csface.mmd"_qs, {{u"一"_qs, u"\\moniti\\010011.mmd"_qs}});
  // No item table: no count, and the numbers of the last one stay.
  EXPECT_FALSE(IniDbfData(t.path(u"\\dbf"_qs), u"csface.mmd"_qs, u"csitems.mmd"_qs, Sched(1, 1, 30)));
  EXPECT_EQ(test::ColumnOf(t, u"csface.mmd"_qs, u"oknum"_qs), QStringList{u""_qs});
  // No directory table: nothing to write.
  EXPECT_FALSE(IniDbfData(t.path(u"\\dbf"_qs), u"nothere.mmd"_qs, u"csitems.mmd"_qs, Sched(1, 1, 30)));
}

// --- the run list ---

TEST(GetLongID, DueLiveQuestionsOfOneBankInTableOrder) {
  test::TestEnv t;
  test::WriteItemTable(t, kItems,
                       {
                           {u"01001100009"_qs},                            // due
                           {u"01001200001"_qs},                            // other bank
                           {u"01001100002"_qs, Entry(1, u"A"_qs)},         // not due
                           {u"01001100003"_qs, u"no"_qs, u"A"_qs, false},  // hidden
                           {u"01001100001"_qs, Entry(40, u"C"_qs)},        // due
                           {u"01001100005"_qs, u"   no"_qs},               // due
                       });
  const RunList run = GetLongID(t.path(u"\\dbf"_qs), kItems, u"010011"_qs, Sched(1, 1, 30));
  EXPECT_EQ(run.ids, u"010011000090100110000101001100005"_qs);
  // The record set holds the live rows of the bank that were walked.
  EXPECT_EQ(run.records.records(), (QList<int>{0, 2, 4, 5}));
  EXPECT_EQ(run.records.findRecord(u"01001100001"_qs), 4);
  EXPECT_EQ(run.records.findRecord(u"01001100003"_qs), std::nullopt);  // hidden: not in the set
  EXPECT_EQ(run.records.findRecord(u"01001200001"_qs), std::nullopt);
  EXPECT_EQ(run.records.story(2), Entry(1, u"A"_qs));
  ASSERT_TRUE(run.records.setStory(4, Entry(0, u"A"_qs) + Entry(40, u"C"_qs)));
  EXPECT_EQ(test::ColumnOf(t, kItems, u"story"_qs).at(4), Entry(0, u"A"_qs) + Entry(40, u"C"_qs));
  EXPECT_EQ(test::ColumnOf(t, kItems, u"valid2"_qs).size(), 6);
}

TEST(RunRecordSet, UpdateStoryReadsAndWritesTheRowOfAnId) {
  test::TestEnv t;
  test::WriteItemTable(t, kItems,
                       {
                           {u"01001100009"_qs},                            // due
                           {u"01001100001"_qs, Entry(40, u"C"_qs)},        // due
                           {u"01001100003"_qs, u"no"_qs, u"A"_qs, false},  // hidden
                       });
  const RunList run = GetLongID(t.path(u"\\dbf"_qs), kItems, u"010011"_qs, Sched(1, 1, 30));
  QStringList seen;
  auto next = [&seen](const QString& old) {
    seen.append(old);
    return Entry(0, u"A"_qs) + old;
  };
  EXPECT_EQ(run.records.updateStory(u"01001100001"_qs, next), Entry(0, u"A"_qs) + Entry(40, u"C"_qs));
  EXPECT_EQ(seen, QStringList{Entry(40, u"C"_qs)});
  EXPECT_EQ(test::ColumnOf(t, kItems, u"story"_qs).at(1), Entry(0, u"A"_qs) + Entry(40, u"C"_qs));
  // A row outside the set is neither read nor written.
  EXPECT_EQ(run.records.updateStory(u"01001100003"_qs, next), std::nullopt);
  EXPECT_EQ(run.records.updateStory(u"01001200001"_qs, next), std::nullopt);
  EXPECT_EQ(seen.size(), 1);
  EXPECT_EQ(test::ColumnOf(t, kItems, u"story"_qs).at(2), u"no"_qs);
}

TEST(GetLongID, UnknownBankOrTableGivesAnEmptyList) {
  test::TestEnv t;
  test::WriteItemTable(t, kItems, {{u"01001100001"_qs}});
  EXPECT_EQ(GetLongID(t.path(u"\\dbf"_qs), kItems, u"999999"_qs, Sched(1, 1, 30)).ids, QString());
  const RunList none = GetLongID(t.path(u"\\dbf"_qs), u"nothere.mmd"_qs, u"010011"_qs, Sched(1, 1, 30));
  EXPECT_EQ(none.ids, QString());
  EXPECT_TRUE(none.records.isEmpty());
  EXPECT_EQ(none.records.findRecord(u"01001100001"_qs), std::nullopt);
}

TEST(GetLongID, ReviewNumbersKeepWrongAndUndoneQuestions) {
  test::TestEnv t;
  test::WriteItemTable(t, u"csitems.mmd"_qs,
                       {
                           {u"01001100001"_qs, Entry(0, u"B"_qs) + Entry(3, u"A"_qs)},  // right oldest: out
                           {u"01001100002"_qs, Entry(0, u"A"_qs) + Entry(3, u"B"_qs)},  // wrong oldest: in
                           {u"01001100003"_qs},                                         // not done: in
                       });
  EXPECT_EQ(GetLongID(t.path(u"\\dbf"_qs), u"csitems.mmd"_qs, u"010011"_qs, Sched(-10, 1, -10, true)).ids,
            u"0100110000201001100003"_qs);
}
