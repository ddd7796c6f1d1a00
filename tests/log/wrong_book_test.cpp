// 错题本: the questions whose newest entry is wrong, grouped by bank with the
// time of the newest wrong answer, newest bank first; hidden questions and
// questions answered right last are not in it; the grid in the practice
// log's style.
#include <gtest/gtest.h>

#include "bank/item_index.h"
#include "bank/tables.h"
#include "generator.h"
#include "log/wrong_book.h"
#include "support/directory_tables.h"
#include "support/test_env.h"

using namespace mj;

namespace {

const QDate kDay(2026, 11, 20);

QString At(int hour, int minute, const QString& answer, const QDate& day = kDay) {
  return test::StoryEntry(day, answer, QTime(hour, minute));
}

struct Book : ::testing::Test {
  test::TestEnv t;
  QList<test::ItemSpec> internal;
  void SetUp() override {
    test::WriteDirectoryTable(t, tables::kDirectory,
                              {{u"《刑法》"_qs},
                               {u"《刑法》单项选择题"_qs, u"\\yibanti\\100011.mmd"_qs},
                               {u"《刑法》多项选择题"_qs, u"\\yibanti\\100012.mmd"_qs},
                               {u"《民法典》单项选择题"_qs, u"\\yibanti\\100021.mmd"_qs}});
    test::WriteDirectoryTable(t, tables::kCsDirectory,
                              {{u"模拟试卷一"_qs}, {u"试卷一 单项选择题"_qs, u"\\moniti\\000011.mmd"_qs}});
    internal = {
        {u"10001100001"_qs, At(9, 0, u"A"_qs), u"A"_qs},                      // right
        {u"10001100002"_qs, At(9, 1, u"B"_qs), u"A"_qs},                      // wrong at 9:01
        {u"10001100003"_qs, u"no"_qs, u"A"_qs},                               // never done
        {u"10001100004"_qs, At(9, 3, u"C"_qs), u"A"_qs},                      // wrong at 9:03
        {u"10001100005"_qs, At(9, 4, u"A"_qs) + At(8, 0, u"B"_qs), u"A"_qs},  // right after wrong
        {u"10001100006"_qs, At(9, 5, u"D"_qs), u"A"_qs, false},               // hidden
        {u"10001200001"_qs, At(10, 0, u"AB"_qs), u"ABD"_qs},                  // wrong at 10:00
        {u"10001200002"_qs, At(10, 1, u"ABD"_qs), u"ABD"_qs},                 // right
        {u"10002100001"_qs, At(9, 2, u"B"_qs, kDay.addDays(-3)), u"C"_qs},    // wrong three days ago
        {u"10009100001"_qs, At(9, 2, u"B"_qs), u"C"_qs},                      // a bank no row names
    };
    test::WriteItemTable(t, tables::kItems, internal);
    test::WriteItemTable(t, tables::kCsItems,
                         {{u"00001100001"_qs, At(11, 0, u"D"_qs), u"A"_qs}, {u"00001100002"_qs, At(11, 1, u"A"_qs), u"A"_qs}});
  }
};

}  // namespace

TEST(NewestEntryWrongTest, OnlyTheNewestEntryCounts) {
  QString when;
  EXPECT_FALSE(NewestEntryWrong(u"no"_qs, u"A"_qs));
  EXPECT_FALSE(NewestEntryWrong(QString(), u"A"_qs));
  EXPECT_TRUE(NewestEntryWrong(At(9, 1, u"B"_qs), u"A"_qs, &when));
  EXPECT_EQ(when, u"2026-11-20 09:01"_qs);
  EXPECT_FALSE(NewestEntryWrong(At(9, 1, u"A"_qs) + At(8, 0, u"B"_qs), u"A"_qs));
  EXPECT_FALSE(NewestEntryWrong(At(9, 1, u"ABD"_qs), u"ABD"_qs));
  EXPECT_TRUE(NewestEntryWrong(At(9, 1, u"AB"_qs), u"ABD"_qs));
  // A key that could not be read: every answer is wrong, as in the practice.
  EXPECT_TRUE(NewestEntryWrong(At(9, 1, u"A"_qs), QString()));
  // Not an entry: nothing.
  EXPECT_FALSE(NewestEntryWrong(u"这不是做题记录，长度也超过了二十个字符"_qs, u"A"_qs));
  // Only the first 20 characters are read, whatever follows.
  QString longStory = At(9, 1, u"C"_qs);
  for (int i = 0; i < 199; ++i) longStory += At(8, 0, u"A"_qs);
  EXPECT_TRUE(NewestEntryWrong(longStory, u"A"_qs));
}

TEST_F(Book, GroupsCountsAndTheNewestFirst) {
  const WrongBook book = BuildWrongBook(t.env, test::IndexOf(internal));
  ASSERT_EQ(book.groups.size(), 5);
  QStringList banks, titles, ids, newest;
  QList<int> counts;
  for (const WrongBankGroup& g : book.groups) {
    banks << g.bank;
    titles << g.title;
    ids << g.ids;
    newest << g.newest;
    counts << g.count;
  }
  EXPECT_EQ(banks, (QStringList{u"000011"_qs, u"100012"_qs, u"100011"_qs, u"100091"_qs, u"100021"_qs}));
  EXPECT_EQ(titles, (QStringList{u"试卷一 单项选择题"_qs, u"《刑法》多项选择题"_qs, u"《刑法》单项选择题"_qs, u"100091"_qs,
                                 u"《民法典》单项选择题"_qs}));
  EXPECT_EQ(ids, (QStringList{u"00001100001"_qs, u"10001200001"_qs, u"1000110000210001100004"_qs, u"10009100001"_qs,
                              u"10002100001"_qs}));
  EXPECT_EQ(counts, (QList<int>{1, 1, 2, 1, 1}));
  EXPECT_EQ(newest, (QStringList{u"2026-11-20 11:00"_qs, u"2026-11-20 10:00"_qs, u"2026-11-20 09:03"_qs,
                                 u"2026-11-20 09:02"_qs, u"2026-11-17 09:02"_qs}));
  EXPECT_EQ(book.count(), 6);
  EXPECT_EQ(book.allIds(),
            u"00001100001"_qs + u"10001200001"_qs + u"1000110000210001100004"_qs + u"10009100001"_qs + u"10002100001"_qs);
  // From the folder alone: the same book.
  const WrongBook read = ReadWrongBook(t.env);
  EXPECT_EQ(read.allIds(), book.allIds());
}

TEST_F(Book, TheGridInThePracticeLogsStyle) {
  const LogGrid g = WrongBookGrid(BuildWrongBook(t.env, test::IndexOf(internal)));
  const QString blank = u"\u3000"_qs;
  EXPECT_EQ(g.format, u"<|<"_qs + blank.repeated(8) + u"最近一次做错的题按题库归类"_qs + blank.repeated(8) +
                          u"|^题    数   |^最近做错的日期    "_qs);
  ASSERT_EQ(g.rows.size(), 5);
  EXPECT_EQ(g.rows[0], (QStringList{u"试卷一 单项选择题"_qs, u"1"_qs, u"2026年11月20日"_qs}));
  EXPECT_EQ(g.rows[2], (QStringList{u"《刑法》单项选择题"_qs, u"2"_qs, u"2026年11月20日"_qs}));
  EXPECT_EQ(g.rows[4], (QStringList{u"《民法典》单项选择题"_qs, u"1"_qs, u"2026年11月17日"_qs}));
}

TEST_F(Book, AnEmptyBook) {
  for (test::ItemSpec& s : internal) s.story = u"no"_qs;
  test::WriteItemTable(t, tables::kCsItems, {});
  const WrongBook book = BuildWrongBook(t.env, test::IndexOf(internal));
  EXPECT_TRUE(book.groups.isEmpty());
  EXPECT_EQ(book.count(), 0);
  EXPECT_TRUE(WrongBookGrid(book).rows.isEmpty());
}

// The book over a generated folder whose records are long (200 entries), the
// newest entry wrong for every tenth question (i % 10 == 3). The generated
// multiple-choice questions with i % 5 == 3 have the key "ABCD": a wrong
// answer written as "ABCD" for all of them would be right for those, and the
// book would hold only the single-choice third of the questions set wrong.
TEST(WrongBookGenerated, EveryQuestionSetWrongIsInTheBook) {
  test::TestEnv t;
  gen::Sizes s;
  s.questions = 600;
  s.banks = 6;
  s.laws = 1;
  s.articles = 20;
  s.papers = 0;
  QString error;
  ASSERT_TRUE(gen::Generate(t.root(), s, &error)) << error.toStdString();
  ItemIndex index;
  ReadData2ItemData(t.path(u"\\dbf"_qs), tables::kItems, index);
  ASSERT_EQ(index.size(), 600);
  const QDateTime newest(QDate(2026, 11, 21), QTime(9, 30));
  const int setWrong = gen::LongRecords(index, newest, 200, 10, 3);
  EXPECT_EQ(setWrong, 60);
  QStringList expected;
  int fourLetterKeys = 0;
  for (qsizetype i = 3; i < index.size(); i += 10) {
    expected.append(index[i].itemid);
    if (index[i].answer == u"ABCD") ++fourLetterKeys;
    EXPECT_EQ(index[i].story.size(), 200 * 20);
  }
  ASSERT_GT(fourLetterKeys, 0) << "the case of a key of four letters is covered";
  const WrongBook book = BuildWrongBook(t.env, index);
  EXPECT_EQ(book.count(), 60);
  // The groups come newest first: the same IDs as those set wrong, in
  // another order.
  const QString ids = book.allIds();
  QStringList found;
  for (qsizetype p = 0; p + 11 <= ids.size(); p += 11) found.append(ids.mid(p, 11));
  found.sort();
  expected.sort();
  EXPECT_EQ(found, expected);
  EXPECT_EQ(book.groups.size(), 6);
  for (const WrongBankGroup& g : book.groups) EXPECT_EQ(g.count, 10) << g.bank.toStdString();
}
