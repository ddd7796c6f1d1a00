// The lists of past work: days of practice, day files, updated questions by
// law, and the questions a row practises again.
#include "log/practice_log.h"

#include <gtest/gtest.h>

#include <QRandomGenerator>

#include "bank/tables.h"
#include "platform/dbftable.h"
#include "platform/text_toolkit.h"
#include "platform/vbtext.h"
#include "support/test_env.h"

using namespace mj;

namespace {

// An entry of a practice record: the time and the answer right-aligned in 4.
QString entry(const QString& date, const QString& answer, const QString& time = u"09:30"_qs) {
  return date + u" "_qs + time + QString(4 - answer.size(), u' ') + answer;
}

ItemRow item(const QString& id, const QString& answer, const QString& story) {
  ItemRow r;
  r.itemid = id;
  r.filename = id.left(6);
  r.answer = answer;
  r.story = story;
  r.valid2 = true;
  r.itemtype = id.mid(5, 1).toInt();
  return r;
}

const QString kBlank = u"\u3000"_qs;

}  // namespace

TEST(SortCells, OrdersCellsAscending) {
  EXPECT_EQ(SortCells(u"200306152003010120021231"_qs, 8), u"200212312003010120030615"_qs);
  EXPECT_EQ(SortCells(u"100230000110001"_qs, 5), u"000011000110023"_qs);
  // A text shorter than one cell gives nothing; a part cell is dropped.
  EXPECT_EQ(SortCells(u"2003061"_qs, 8), u""_qs);
  EXPECT_EQ(SortCells(u""_qs, 8), u""_qs);
  EXPECT_EQ(SortCells(u"2003061520030"_qs, 8), u"20030615"_qs);
}

TEST(PracticeLog, EveryEntryGivesADayNotOnlyTheOldest) {
  const ItemIndex index = {
      item(u"10001100001"_qs, u"A"_qs, entry(u"2026-11-20"_qs, u"A"_qs) + entry(u"2026-11-02"_qs, u"B"_qs)),
      item(u"10001100002"_qs, u"B"_qs, entry(u"2026-11-02"_qs, u"B"_qs)),
      item(u"10001100003"_qs, u"C"_qs, u"no"_qs),
      item(u"10001100004"_qs, u"D"_qs, entry(u"2026-10-31"_qs, u"ABCD"_qs)),
  };
  EXPECT_EQ(GetAllDoneDays(index), u"202611202026110220261031"_qs);
  EXPECT_EQ(SortCells(GetAllDoneDays(index), 8), u"202610312026110220261120"_qs);
}

TEST(PracticeLog, AQuestionCountsOnlyOnTheDayOfItsOldestEntry) {
  // Done on two days, both entries kept: it counts on 11-02 (wrong there),
  // and 11-20 is listed with nothing.
  const ItemIndex index = {
      item(u"10001100001"_qs, u"A"_qs, entry(u"2026-11-20"_qs, u"A"_qs) + entry(u"2026-11-02"_qs, u"B"_qs)),
      item(u"10001100002"_qs, u"B"_qs, entry(u"2026-11-02"_qs, u"B"_qs)),
  };
  EXPECT_EQ(GetDayStat(index, u"20261102"_qs), u"         2         1        50"_qs);
  EXPECT_EQ(GetDayStat(index, u"20261120"_qs), u"         0         0         0"_qs);
  test::TestEnv t;
  const std::optional<LogGrid> g = BuildDaysGrid(t.env, index);
  ASSERT_TRUE(g);
  ASSERT_EQ(g->rows.size(), 2);
  EXPECT_EQ(g->rows[0], (QStringList{u"2026年11月 2日"_qs, u"2"_qs, u"1"_qs, u"50%"_qs}));
  EXPECT_EQ(g->rows[1], (QStringList{u"2026年11月20日"_qs, u"0"_qs, u"0"_qs, u"0%"_qs}));
  EXPECT_TRUE(t.boxes.shown().isEmpty());
}

TEST(PracticeLog, TheAnswerIsTheOneAtTheLastPlaceOfTheDate) {
  // Two answers on the same day: the older one (further right) decides.
  const ItemIndex index = {
      item(u"10001100001"_qs, u"AB"_qs, entry(u"2026-11-02"_qs, u"AB"_qs, u"10:00"_qs) + entry(u"2026-11-02"_qs, u"A"_qs)),
      item(u"10001100002"_qs, u"AB"_qs, entry(u"2026-11-02"_qs, u"A"_qs, u"10:00"_qs) + entry(u"2026-11-02"_qs, u"AB"_qs)),
      item(u"10001100003"_qs, u"C"_qs, entry(u"2026-11-02"_qs, u"C"_qs)),
  };
  EXPECT_EQ(GetDayStat(index, u"20261102"_qs), u"         3         2        66"_qs);
  EXPECT_EQ(GetDayItemIds(index, u"2026-11-02"_qs, false), u"100011000011000110000210001100003"_qs);
  EXPECT_EQ(GetDayItemIds(index, u"2026-11-02"_qs, true), u"10001100001"_qs);
}

TEST(PracticeLog, ANoRecordHasNoDateInItsTail) {
  // 20 blanks + "no": the last 20 characters are 18 blanks and "no".
  const ItemIndex index = {item(u"10001100001"_qs, u"A"_qs, u"no"_qs)};
  EXPECT_EQ(GetAllDoneDays(index), u""_qs);
  EXPECT_EQ(GetDayStat(index, u"20261102"_qs), u"         0         0         0"_qs);
  EXPECT_EQ(GetDayItemIds(index, u"2026-11-02"_qs, false), u""_qs);
  test::TestEnv t;
  EXPECT_FALSE(BuildDaysGrid(t.env, index));
  ASSERT_EQ(t.boxes.shown().size(), 1);
  EXPECT_EQ(t.boxes.shown()[0].title, u"无做题记录"_qs);
  EXPECT_EQ(t.boxes.shown()[0].text, u"没有做题记录。"_qs);
  EXPECT_EQ(t.boxes.shown()[0].style, box::Information);
}

TEST(PracticeLog, ARecordOfTenCharactersOrLessGivesNoDay) {
  const ItemIndex index = {item(u"10001100001"_qs, u"A"_qs, u"2026-11-02"_qs),
                           item(u"10001100002"_qs, u"A"_qs, u"2026-11-03 "_qs)};
  EXPECT_EQ(GetAllDoneDays(index), u"20261103"_qs);
}

TEST(PracticeLog, TheDayStatsOfTheGridAreThoseOfEachDayAlone) {
  // Records of every shape, some of them damaged: the grid's one walk over
  // the index gives what the day-by-day count gives.
  QRandomGenerator rnd(20261121);
  const QStringList answers = {u"A"_qs, u"B"_qs, u"AB"_qs, u"ABCD"_qs, u"C"_qs};
  ItemIndex index;
  for (int i = 0; i < 3000; ++i) {
    const QString key = answers[rnd.bounded(answers.size())];
    QString story;
    const int n = rnd.bounded(12);
    for (int k = 0; k < n; ++k) {
      const QDate d = QDate(2026, 9, 1).addDays(rnd.bounded(60));
      story += entry(d.toString(u"yyyy-MM-dd"_qs), rnd.bounded(3) == 0 ? answers[rnd.bounded(answers.size())] : key);
    }
    if (n == 0) story = u"no"_qs;
    if (rnd.bounded(40) == 0) story = story.mid(rnd.bounded(15));  // cut at a wrong place
    if (rnd.bounded(60) == 0) story += u"2026-13-45"_qs;            // no real day
    index.append(item(QStringLiteral("1000%1%2").arg(1 + i % 3).arg(i, 6, 10, QChar(u'0')), key, Trim(story)));
  }
  test::TestEnv t;
  const std::optional<LogGrid> g = BuildDaysGrid(t.env, index);
  ASSERT_TRUE(g);
  const QString days = SortCells(GetAllDoneDays(index), 8);
  ASSERT_EQ(g->rows.size(), days.size() / 8);
  for (int i = 0; i < g->rows.size(); ++i) {
    const QString cell = days.mid(i * 8, 8);
    const QString stat = GetDayStat(index, cell);
    EXPECT_EQ(g->rows[i], (QStringList{DayLabel(cell, LogMode::Days), Trim(stat.mid(0, 10)), Trim(stat.mid(10, 10)),
                                       Trim(stat.mid(20, 10)) + u"%"_qs}))
        << cell.toStdString();
  }
}

TEST(PracticeLog, LabelsAndTheirDates) {
  EXPECT_EQ(DayLabel(u"20030615"_qs, LogMode::Days), u"2003年 6月15日"_qs);
  EXPECT_EQ(DayLabel(u"20030615"_qs, LogMode::UpdatedByDay), u"2003年 6月15日更新的试题"_qs);
  EXPECT_EQ(DayLabel(u"20031105"_qs, LogMode::UncertainByDay), u"2003年11月 5日做起来不太肯定的试题"_qs);
  EXPECT_EQ(DateOfLabel(u"2003年 6月15日"_qs), u"2003-06-15"_qs);
  EXPECT_EQ(DateOfLabel(u"2003年11月 5日更新的试题"_qs), u"2003-11-05"_qs);
  // Shorter than 11 characters: a date no record holds.
  EXPECT_EQ(DateOfLabel(u"2003年6月5日"_qs), u"6666-66-66"_qs);
  EXPECT_EQ(DateOfLabel(u""_qs), u"6666-66-66"_qs);
}

TEST(PracticeLog, GridFormats) {
  EXPECT_EQ(LogGridFormat(LogMode::Days),
            u"<|<"_qs + kBlank.repeated(15) + u"每天做过的题详细列表"_qs + kBlank.repeated(15) +
                u"|^做题数   |^正确数    |^得 分    "_qs);
  EXPECT_EQ(LogGridFormat(LogMode::UpdatedByDay),
            u"<|<"_qs + kBlank.repeated(11) + u"已更新的试题按日期进行分类"_qs + kBlank.repeated(11) +
                u"|^题    数   |^正确数    |^得 分    "_qs);
  EXPECT_EQ(LogGridFormat(LogMode::UncertainByDay),
            u"<|<"_qs + kBlank.repeated(11) + u"做起来不太肯定的题按日期进行整理如下"_qs + kBlank.repeated(11) +
                u"|^做题数   |^正确数    |^得 分    "_qs);
  EXPECT_EQ(LogGridFormat(LogMode::UpdatedByLaw),
            u"^|"_qs + kBlank.repeated(17) + u"刚更新的试题,按法律或试卷归类"_qs + kBlank.repeated(17) + u"|^题    数   "_qs);
}

TEST(DayFileStat, RepeatsCountAndAnUnknownIdIsNeverRight) {
  const ItemIndex index = {
      item(u"10001100001"_qs, u"A"_qs, entry(u"2026-11-02"_qs, u"A"_qs)),
      item(u"10001100002"_qs, u"B"_qs, entry(u"2026-11-02"_qs, u"C"_qs)),
  };
  // The same question twice counts twice, and so does its right answer.
  const DayFileStat s = GetDayFileStat(index, u"2026-11-02"_qs, u"100011000011000110000110001100002"_qs);
  EXPECT_EQ(s.count, 3);
  EXPECT_EQ(s.right, 2);
  EXPECT_EQ(s.score, 66);
  const DayFileStat u = GetDayFileStat(index, u"2026-11-02"_qs, u"1000110000190001300001"_qs);
  EXPECT_EQ(u.count, 2);
  EXPECT_EQ(u.right, 1);
  EXPECT_EQ(u.score, 50);
  const DayFileStat e = GetDayFileStat(index, u"2026-11-02"_qs, QString());
  EXPECT_EQ(e.count, 0);
  EXPECT_EQ(e.score, 0);
}

TEST(DayFileStat, TheScoreIsDividedFirstInFloatingPoint) {
  // 29 / 50 * 100 is 57.99999999999999 in floating point.
  ItemIndex index;
  QString list;
  for (int i = 0; i < 50; ++i) {
    const QString id = QStringLiteral("100011%1").arg(i + 1, 5, 10, QChar(u'0'));
    index.append(item(id, u"A"_qs, entry(u"2026-11-02"_qs, i < 29 ? u"A"_qs : u"B"_qs)));
    list += id;
  }
  const DayFileStat s = GetDayFileStat(index, u"2026-11-02"_qs, list);
  EXPECT_EQ(s.right, 29);
  EXPECT_EQ(s.score, 57);
}

TEST(KeepWrongItems, OnYesOnlyTheWrongOnesOfTheIndexStay) {
  const ItemIndex index = {
      item(u"10001100001"_qs, u"A"_qs, entry(u"2026-11-02"_qs, u"B"_qs)),
      item(u"10001100002"_qs, u"B"_qs, entry(u"2026-11-02"_qs, u"B"_qs)),
      item(u"10001100003"_qs, u"C"_qs, entry(u"2026-11-03"_qs, u"A"_qs)),
  };
  // 10001100009 was marked uncertain and is gone from the index.
  const QString list = u"10001100009100011000031000110000210001100001"_qs;
  EXPECT_EQ(KeepWrongItems(index, list, u"2026-11-02"_qs, false), list);
  EXPECT_EQ(KeepWrongItems(index, list, u"2026-11-02"_qs, true), u"10001100001"_qs);
}

TEST(BankCodes, DistinctCodesAndTheirIds) {
  const QString list = u"100021000011000110000200001100003100021000040000120000110001100007"_qs;
  EXPECT_EQ(GetBankCodes(list), u"100021000100001"_qs);
  EXPECT_EQ(GetIdsOfBank(list, u"10002"_qs), u"1000210000110002100004"_qs);
  EXPECT_EQ(GetIdsOfBank(list, u"00001"_qs), u"0000110000300001200001"_qs);
  EXPECT_EQ(GetIdsOfBank(list, u"1000"_qs), u""_qs);
  EXPECT_EQ(GetIdsOfBank(list, u"100021"_qs), u""_qs);
  EXPECT_EQ(GetBankCodes(QString()), u""_qs);
}

namespace {

void writeDirectory(const test::TestEnv& t, const QList<std::pair<QString, QString>>& rows) {
  t.mkdir(u"\\dbf"_qs);
  DbfTable d = DbfTable::create(t.path(u"\\dbf\\33ok.mmd"_qs), tables::DirectoryFields());
  for (const auto& [a, b] : rows) {
    const int r = d.appendRow();
    if (!a.isNull()) d.setText(r, u"a"_qs, a);
    if (!b.isNull()) d.setText(r, u"b"_qs, b);
  }
}

}  // namespace

TEST(BankCodes, TheTitleComesFromTheFirstFilledRowThatNamesTheCode) {
  test::TestEnv t;
  writeDirectory(t, {{u"第二部分 刑法题库"_qs, QString()},
                     {QString(), u"\\yibanti\\100011.mmd"_qs},
                     {u"  《示例刑法》单项选择题"_qs, u"\\yibanti\\100011.mmd"_qs},
                     {u"《别的》多项选择题"_qs, u"\\yibanti\\100012.mmd"_qs},
                     {u"没有书名号的标签"_qs, u"\\yibanti\\100031.mmd"_qs}});
  EXPECT_EQ(GetBankTitle(t.env, u"10001"_qs), u"《示例刑法》"_qs);
  EXPECT_EQ(GetBankTitle(t.env, u"10003"_qs), u""_qs);
  EXPECT_EQ(GetBankTitle(t.env, u"10009"_qs), u""_qs);
  // A simulated paper has no title.
  EXPECT_EQ(GetBankTitle(t.env, u"00001"_qs), u""_qs);
}

TEST(BankCodes, TheLawGridAndItsRows) {
  test::TestEnv t;
  writeDirectory(t, {{u"《示例刑法》单项选择题"_qs, u"\\yibanti\\100011.mmd"_qs},
                     {u"《合同示例规则》多项选择题"_qs, u"\\yibanti\\100032.mmd"_qs}});
  t.writeGbk(u"\\更新的题\\20261120.ini"_qs, u"\"1000110000500001100002\"\r\n"_qs);
  t.writeGbk(u"\\更新的题\\20261121.ini"_qs, u"\"100032000011000110000600001100003\"\r\n"_qs);
  const std::optional<LogGrid> g = BuildLawGrid(t.env);
  ASSERT_TRUE(g);
  EXPECT_EQ(g->codes, (QStringList{u"00001"_qs, u"10001"_qs, u"10003"_qs}));
  ASSERT_EQ(g->rows.size(), 3);
  EXPECT_EQ(g->rows[0], (QStringList{u""_qs, u"2"_qs}));
  EXPECT_EQ(g->rows[1], (QStringList{u"《示例刑法》"_qs, u"2"_qs}));
  EXPECT_EQ(g->rows[2], (QStringList{u"《合同示例规则》"_qs, u"1"_qs}));
  // A row gives the IDs of its code, in the order of the day files.
  EXPECT_EQ(IdsOfRow(t.env, {}, *g, 1), u"1000110000510001100006"_qs);
  EXPECT_EQ(IdsOfRow(t.env, {}, *g, 2), u"10003200001"_qs);
  // A blank title is the first code without one.
  EXPECT_EQ(IdsOfRow(t.env, {}, *g, 0), u"0000110000200001100003"_qs);
  EXPECT_TRUE(t.boxes.shown().isEmpty());
  // Nothing updated yet: no grid.
  test::TestEnv none;
  none.mkdir(u"\\更新的题"_qs);
  EXPECT_FALSE(BuildLawGrid(none.env));
}

TEST(DayFileGrid, OnlyDayFilesAreListedTheOldestFirst) {
  test::TestEnv t;
  const ItemIndex index = {
      item(u"10001100001"_qs, u"A"_qs, entry(u"2026-11-21"_qs, u"A"_qs)),
      item(u"10001100002"_qs, u"B"_qs, entry(u"2026-11-21"_qs, u"C"_qs)),
  };
  t.writeGbk(u"\\模糊题\\20261121.ini"_qs, u"\"100011000021000110000110001100001\"\r\n"_qs);
  t.writeGbk(u"\\模糊题\\20261101.ini"_qs, u"\"10001100002\"\r\n"_qs);
  t.writeGbk(u"\\模糊题\\2026112.ini"_qs, u"\"10001100002\"\r\n"_qs);
  t.writeGbk(u"\\模糊题\\damaged.ini"_qs, u"\"1000110000\"\r\n"_qs);
  const LogGrid g = BuildDayFileGrid(t.env, index, LogMode::UncertainByDay);
  EXPECT_EQ(g.format, LogGridFormat(LogMode::UncertainByDay));
  ASSERT_EQ(g.rows.size(), 2);
  EXPECT_EQ(g.rows[0], (QStringList{u"2026年11月 1日做起来不太肯定的试题"_qs, u"1"_qs, u"0"_qs, u"0%"_qs}));
  EXPECT_EQ(g.rows[1], (QStringList{u"2026年11月21日做起来不太肯定的试题"_qs, u"3"_qs, u"2"_qs, u"66%"_qs}));
  // A damaged day file counts as empty.
  t.writeGbk(u"\\更新的题\\20261120.ini"_qs, u"\"1000110000\"\r\n"_qs);
  const LogGrid u = BuildDayFileGrid(t.env, index, LogMode::UpdatedByDay);
  ASSERT_EQ(u.rows.size(), 1);
  EXPECT_EQ(u.rows[0], (QStringList{u"2026年11月20日更新的试题"_qs, u"0"_qs, u"0"_qs, u"0%"_qs}));
}

TEST(RowChoice, ModeOneAsksAndGivesTheWrongOrAllQuestions) {
  test::TestEnv t;
  const ItemIndex index = {
      item(u"10001100001"_qs, u"A"_qs, entry(u"2026-11-02"_qs, u"B"_qs)),
      item(u"10001100002"_qs, u"B"_qs, entry(u"2026-11-02"_qs, u"B"_qs)),
  };
  const std::optional<LogGrid> g = BuildDaysGrid(t.env, index);
  ASSERT_TRUE(g);
  t.boxes.answer(box::Yes);
  EXPECT_EQ(IdsOfRow(t.env, index, *g, 0), u"10001100001"_qs);
  t.boxes.answer(box::No);
  EXPECT_EQ(IdsOfRow(t.env, index, *g, 0), u"1000110000110001100002"_qs);
  const QList<BoxRecord> asked = t.boxes.take();
  ASSERT_EQ(asked.size(), 2);
  EXPECT_EQ(asked[0].title, u"请选择"_qs);
  EXPECT_EQ(asked[0].text, u"只做上次作错的题吗？\r\n“否”则做该日做过的全部试题。"_qs);
  EXPECT_EQ(asked[0].style, box::YesNo | box::Question);
}

TEST(RowChoice, AnEmptyListIsSaidByMode) {
  test::TestEnv t;
  const ItemIndex index = {item(u"10001100001"_qs, u"A"_qs, entry(u"2026-11-02"_qs, u"A"_qs))};
  LogGrid g;
  g.mode = LogMode::Days;
  g.rows = {{u"2026年11月 2日"_qs}};
  t.boxes.answer(box::Yes);
  EXPECT_EQ(IdsOfRow(t.env, index, g, 0), u""_qs);
  g.mode = LogMode::UpdatedByDay;
  g.rows = {{u"2026年11月 2日更新的试题"_qs}};
  EXPECT_EQ(IdsOfRow(t.env, index, g, 0), u""_qs);
  g.mode = LogMode::UncertainByDay;
  t.boxes.answer(box::Yes);
  EXPECT_EQ(IdsOfRow(t.env, index, g, 0), u""_qs);
  const QList<BoxRecord> b = t.boxes.take();
  ASSERT_EQ(b.size(), 5);
  EXPECT_EQ(b[1].text, u"没有符合条件的试题，或者你当日全做对了，但这次你却选了只做错题"_qs);
  EXPECT_EQ(b[1].title, DefaultBoxTitle());
  EXPECT_EQ(b[1].style, box::Information);
  EXPECT_EQ(b[2].text, u"没有更新试题记录"_qs);
  EXPECT_EQ(b[4].text, u"没有符合条件的试题，或者你当时全猜对了，但这次你却选了只做错题"_qs);
  // Mode 4 says nothing.
  g.mode = LogMode::UpdatedByLaw;
  g.rows = {{u"《刑法》"_qs, u"1"_qs}};
  EXPECT_EQ(IdsOfRow(t.env, index, g, 0), u""_qs);
  EXPECT_TRUE(t.boxes.shown().isEmpty());
}

TEST(RowChoice, ModeThreeOnNoKeepsAQuestionGoneFromTheIndex) {
  test::TestEnv t;
  const ItemIndex index = {item(u"10001100001"_qs, u"A"_qs, entry(u"2026-11-02"_qs, u"B"_qs))};
  t.writeGbk(u"\\模糊题\\20261102.ini"_qs, u"\"100011000091000110000110001100009\"\r\n"_qs);
  const LogGrid g = BuildDayFileGrid(t.env, index, LogMode::UncertainByDay);
  ASSERT_EQ(g.rows.size(), 1);
  t.boxes.answer(box::No);
  EXPECT_EQ(IdsOfRow(t.env, index, g, 0), u"100011000091000110000110001100009"_qs);
  t.boxes.answer(box::Yes);
  EXPECT_EQ(IdsOfRow(t.env, index, g, 0), u"10001100001"_qs);
}

TEST(RowChoice, ModeTwoGivesTheDayFileAsItStands) {
  test::TestEnv t;
  t.writeGbk(u"\\更新的题\\20261102.ini"_qs, u"\"1000110000110001100001\"\r\n"_qs);
  const LogGrid g = BuildDayFileGrid(t.env, {}, LogMode::UpdatedByDay);
  ASSERT_EQ(g.rows.size(), 1);
  EXPECT_EQ(g.rows[0][1], u"2"_qs);
  EXPECT_EQ(IdsOfRow(t.env, {}, g, 0), u"1000110000110001100001"_qs);
  EXPECT_TRUE(t.boxes.shown().isEmpty());
}
