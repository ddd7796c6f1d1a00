#include "practice/directory.h"

#include <gtest/gtest.h>

#include "platform/text_toolkit.h"
#include "platform/vbtext.h"
#include "support/directory_tables.h"
#include "support/printers.h"
#include "support/test_env.h"

using namespace mj;

namespace {

const QString U3000 = QString(QChar(0x3000));

Directory::Fields Row(const QString& label, const QString& flag = QString(), int total = 0, int done = 0, int right = 0,
                      int minutes = 0, int eligible = 0, const QString& file = QString()) {
  Directory::Fields f;
  f[0] = label;
  f[1] = file;
  f[2] = flag;
  f[4] = QString::number(total);
  f[5] = QString::number(done);
  f[6] = QString::number(right);
  f[7] = u"stale"_qs;
  f[10] = QString::number(minutes);
  f[11] = QString::number(eligible);
  return f;
}

// 1 民法 (2-7) over
//   2 单项 (3-4) over the leaves 3 and 4
//   5 a leaf
//   6 多项 (7-7) over the leaf 7
// 8 刑法, a leaf with no answers
// The headings carry stale numbers of their own, which the sums replace.
Directory Sample() {
  Directory d;
  d.setRows({
      Row(u"民法"_qs, u"2-7"_qs, 999, 999, 999, 999, 999),
      Row(u"单项"_qs, u"3-4"_qs, 555, 555, 555, 555, 555),
      Row(u"民法单选一"_qs, QString(), 10, 9, 7, 5, 3, u"\\yibanti\\010011.mmd"_qs),
      Row(u"民法单选二"_qs, QString(), 20, 0, 0, 0, 20, u"\\yibanti\\010021.mmd"_qs),
      Row(u"民法案例"_qs, QString(), 5, 1, 1, 2, 4, u"\\yibanti\\010031.mmd"_qs),
      Row(u"多项"_qs, u"7-7"_qs, 1, 1, 1, 1, 1),
      Row(u"民法多选"_qs, QString(), 6, 4, 1, 3, 5, u"\\yibanti\\010012.mmd"_qs),
      Row(u"  刑法"_qs, QString(), 8, 0, 0, 0, 8, u"\\yibanti\\020011.mmd"_qs),
  });
  d.show(GridFormatText(DirectoryMode::ShiTi));
  return d;
}

QList<int> Heights(const Directory& d) {
  QList<int> h;
  for (int r = 1; r <= d.rowCount(); ++r) h.append(d.rowHeight(r));
  return h;
}

QStringList Column(const Directory& d, int c) {
  QStringList out;
  for (int r = 1; r <= d.rowCount(); ++r) out.append(d.text(r, c));
  return out;
}

}  // namespace

// --- header ---

TEST(DirectoryHeader, TextsOfTheThreeModes) {
  const QString tail = u"|<文件名2|<  标志3|<  文件ID号4    |^总题数      |"_qs;
  EXPECT_EQ(DirectoryHeader(DirectoryMode::CeShi),
            Space(5) + u"目"_qs + Space(16) + u"录"_qs + Space(29) + u"."_qs + tail +
                u"^已做数   |^正确数    |^得 分    |^9|^10|^用时(分)     |^适格题数"_qs + U3000 + Space(6));
  EXPECT_EQ(DirectoryHeader(DirectoryMode::ChaJuan),
            Space(5) + u"目"_qs + Space(16) + u"录"_qs + Space(29) + u"."_qs + tail +
                u"^已做数   |^正确数    |^得 分    |^9|^10|^用时(分)     |^未做或错"_qs + U3000 + Space(6));
  EXPECT_EQ(DirectoryHeader(DirectoryMode::ShiTi), Space(4) + u"目"_qs + Space(16) + u"录"_qs + Space(28) + u"."_qs +
                                                       tail +
                                                       u"^做次数   |^对次数    |^得 分    |^9|^10|^用时(分)     |^"_qs +
                                                       U3000 + u"适格题数"_qs + U3000 + Space(4));
  EXPECT_EQ(GridFormatText(DirectoryMode::ShiTi), u"<a        |<"_qs + U3000 + DirectoryHeader(DirectoryMode::ShiTi));
}

TEST(DirectoryHeader, FormatTextGivesTheHeaderRow) {
  Directory d;
  d.setFormatText(GridFormatText(DirectoryMode::ChaJuan));
  ASSERT_EQ(d.header().size(), kDirectoryColumnCount);
  EXPECT_EQ(d.text(0, 0), u"a        "_qs);
  EXPECT_EQ(d.text(0, 1), U3000 + Space(5) + u"目"_qs + Space(16) + u"录"_qs + Space(29) + u"."_qs);
  EXPECT_EQ(d.header()[1].alignment, u'<');
  EXPECT_EQ(d.text(0, 2), u"文件名2"_qs);
  EXPECT_EQ(d.text(0, 5), u"总题数      "_qs);
  EXPECT_EQ(d.header()[5].alignment, u'^');
  EXPECT_EQ(d.text(0, 6), u"已做数   "_qs);
  EXPECT_EQ(d.text(0, 8), u"得 分    "_qs);
  EXPECT_EQ(d.text(0, 9), u"9"_qs);
  EXPECT_EQ(d.text(0, 12), u"未做或错"_qs + U3000 + Space(6));
  EXPECT_EQ(d.rowHeight(0), 400);
}

TEST(DirectoryHeader, VisibleColumns) {
  QList<int> shown;
  for (int c = 0; c < kDirectoryColumnCount; ++c)
    if (IsVisibleColumn(c)) shown.append(c);
  EXPECT_EQ(shown, (QList<int>{1, 5, 6, 7, 8, 11, 12}));
  EXPECT_EQ(kVisibleColumns, u"01050607081112"_qs);
}

// --- score and flags ---

TEST(DirectoryScore, CutNotRounded) {
  EXPECT_EQ(ScoreText(9, 7), u"77%"_qs);
  EXPECT_EQ(ScoreText(3, 2), u"66%"_qs);
  EXPECT_EQ(ScoreText(0, 0), u"0%"_qs);
  EXPECT_EQ(ScoreText(0, 5), u"0%"_qs);
  EXPECT_EQ(ScoreText(4, 4), u"100%"_qs);
}

TEST(DirectoryFlag, RangeOfAHeading) {
  long long a = -1, b = -1;
  EXPECT_TRUE(HeadingRange(u"12-30"_qs, a, b));
  EXPECT_EQ(a, 12);
  EXPECT_EQ(b, 30);
  // A "-" without numbers: 0 for both bounds.
  EXPECT_TRUE(HeadingRange(u"-"_qs, a, b));
  EXPECT_EQ(a, 0);
  EXPECT_EQ(b, 0);
  EXPECT_FALSE(HeadingRange(u"12"_qs, a, b));
  EXPECT_FALSE(HeadingRange(QString(), a, b));
}

// --- the whole grid ---

TEST(Directory, ShowLeavesTheTopLevelWithHeadingsClosed) {
  const Directory d = Sample();
  EXPECT_EQ(Heights(d), (QList<int>{300, 0, 0, 0, 0, 0, 0, 240}));
  // Labels over the whole grid: left-trimmed, headings with "+".
  EXPECT_EQ(d.text(1, 1), u"+民法"_qs);
  EXPECT_EQ(d.text(8, 1), u"刑法"_qs);
  // Rows inside the closed heading keep their table labels.
  EXPECT_EQ(d.text(2, 1), u"单项"_qs);
  EXPECT_TRUE(d.hasHeadingLook(1));
  EXPECT_FALSE(d.hasHeadingLook(2));
  EXPECT_FALSE(d.hasHeadingLook(8));
}

TEST(Directory, SumsGoOverLeafRowsOnly) {
  const Directory d = Sample();
  // Leaves 3, 4, 5, 7: the nested headings' own numbers are not counted.
  EXPECT_EQ(d.text(1, kColTotal), u"41"_qs);
  EXPECT_EQ(d.text(1, kColDone), u"14"_qs);
  EXPECT_EQ(d.text(1, kColRight), u"9"_qs);
  EXPECT_EQ(d.text(1, kColMinutes), u"10"_qs);
  EXPECT_EQ(d.text(1, kColEligible), u"32"_qs);
  EXPECT_EQ(d.text(1, kColScore), u"64%"_qs);
  // Leaves get their score from their own numbers.
  EXPECT_EQ(d.text(8, kColScore), u"0%"_qs);
}

TEST(Directory, HeadingWithoutAnswersShowsZeroPercent) {
  Directory d;
  d.setRows({Row(u"头"_qs, u"2-3"_qs, 7, 7, 7), Row(u"甲"_qs, QString(), 4), Row(u"乙"_qs, QString(), 6)});
  d.show(GridFormatText(DirectoryMode::CeShi));
  EXPECT_EQ(d.text(1, kColScore), u"0%"_qs);
  EXPECT_EQ(d.text(1, kColTotal), u"10"_qs);
  EXPECT_EQ(d.text(1, kColDone), u"0"_qs);
}

TEST(Directory, SevenRightOfNineShowsSeventySevenPercent) {
  Directory d;
  d.setRows({Row(u"头"_qs, u"2-2"_qs), Row(u"甲"_qs, QString(), 10, 9, 7)});
  d.show(GridFormatText(DirectoryMode::ShiTi));
  EXPECT_EQ(d.text(1, kColScore), u"77%"_qs);
}

TEST(Directory, SignIsEnsuredOnHeadings) {
  Directory d;
  d.setRows({Row(u"-开着"_qs, u"2-2"_qs), Row(u"叶"_qs, QString(), 1), Row(u"+关着"_qs, u"4-4"_qs),
             Row(u"叶"_qs, QString(), 1), Row(u"  前有空白"_qs, u"6-6"_qs), Row(u"叶"_qs, QString(), 1)});
  d.show(GridFormatText(DirectoryMode::ShiTi));
  EXPECT_EQ(d.text(1, 1), u"+开着"_qs);
  EXPECT_EQ(d.text(3, 1), u"+关着"_qs);
  // The sign goes in front of the label as it stands.
  EXPECT_EQ(d.text(5, 1), u"+  前有空白"_qs);
  EXPECT_EQ(Heights(d), (QList<int>{300, 0, 300, 0, 300, 0}));
}

TEST(Directory, FlagWithoutNumbersIsAnEmptyRange) {
  Directory d;
  d.setRows({Row(u"甲"_qs, QString(), 3, 2, 1), Row(u"空标题"_qs, u"-"_qs, 5, 5, 5), Row(u"乙"_qs, QString(), 4)});
  d.show(GridFormatText(DirectoryMode::ShiTi));
  EXPECT_EQ(Heights(d), (QList<int>{240, 300, 240}));
  EXPECT_EQ(d.text(2, 1), u"+空标题"_qs);
  EXPECT_EQ(d.text(2, kColTotal), u"0"_qs);
  EXPECT_EQ(d.text(2, kColScore), u"0%"_qs);
  EXPECT_EQ(d.text(1, kColScore), u"50%"_qs);
  EXPECT_EQ(d.text(0, 1).isEmpty(), false);
}

TEST(Directory, CellsThatAreNoNumberCountAsZero) {
  Directory d;
  d.setRows({Row(u"头"_qs, u"2-3"_qs), Row(u"甲"_qs, QString(), 3), Row(u"乙"_qs)});
  d.setText(3, kColTotal, u"abc"_qs);
  d.setText(3, kColDone, QString());
  d.show(GridFormatText(DirectoryMode::ShiTi));
  EXPECT_EQ(d.text(1, kColTotal), u"3"_qs);
}

// --- opening and closing ---

TEST(Directory, OpeningShowsChildrenWithChildHeadingsClosed) {
  Directory d = Sample();
  ASSERT_TRUE(d.toggleHeading(1));
  EXPECT_EQ(d.text(1, 1), u"-民法"_qs);
  EXPECT_EQ(Heights(d), (QList<int>{300, 300, 0, 0, 240, 300, 0, 240}));
  // Indented under the heading: four blanks before a heading, five before a leaf.
  EXPECT_EQ(d.text(2, 1), u"    +单项"_qs);
  EXPECT_EQ(d.text(5, 1), u"     民法案例"_qs);
  EXPECT_EQ(d.text(6, 1), u"    +多项"_qs);
  // The child headings sum their own leaves.
  EXPECT_EQ(d.text(2, kColTotal), u"30"_qs);
  EXPECT_EQ(d.text(2, kColDone), u"9"_qs);
  EXPECT_EQ(d.text(2, kColScore), u"77%"_qs);
  EXPECT_EQ(d.text(6, kColTotal), u"6"_qs);
  EXPECT_EQ(d.text(6, kColScore), u"25%"_qs);
  EXPECT_EQ(d.text(5, kColScore), u"100%"_qs);
  EXPECT_TRUE(d.hasHeadingLook(2));
  EXPECT_TRUE(d.hasHeadingLook(6));
  EXPECT_FALSE(d.hasHeadingLook(5));

  // The nested heading opens one level deeper.
  ASSERT_TRUE(d.toggleHeading(2));
  EXPECT_EQ(d.text(2, 1), u"    -单项"_qs);
  EXPECT_EQ(Heights(d), (QList<int>{300, 300, 240, 240, 240, 300, 0, 240}));
  EXPECT_EQ(d.text(3, 1), Space(9) + u"民法单选一"_qs);
  EXPECT_EQ(d.text(3, kColScore), u"77%"_qs);
  EXPECT_EQ(d.text(4, kColScore), u"0%"_qs);
}

TEST(Directory, ClosingHidesEveryRowOfTheRange) {
  Directory d = Sample();
  d.toggleHeading(1);
  d.toggleHeading(2);
  ASSERT_TRUE(d.toggleHeading(1));
  EXPECT_EQ(d.text(1, 1), u"+民法"_qs);
  EXPECT_EQ(Heights(d), (QList<int>{300, 0, 0, 0, 0, 0, 0, 240}));
  // Opened again, the child heading that was open starts closed.
  d.toggleHeading(1);
  EXPECT_EQ(d.text(2, 1), u"    +单项"_qs);
  EXPECT_EQ(Heights(d), (QList<int>{300, 300, 0, 0, 240, 300, 0, 240}));
}

TEST(Directory, ToggleOfALeafDoesNothing) {
  Directory d = Sample();
  const QStringList before = Column(d, 1);
  EXPECT_FALSE(d.toggleHeading(8));
  EXPECT_FALSE(d.toggleHeading(0));
  EXPECT_FALSE(d.toggleHeading(99));
  EXPECT_EQ(Column(d, 1), before);
}

TEST(Directory, IniRowsIndentsUnderTheRowAbove) {
  Directory d;
  d.setRows({Row(u"   上"_qs), Row(u"甲"_qs), Row(u"  乙"_qs, u"4-4"_qs), Row(u"丙"_qs)});
  d.IniRows(2, 3);
  EXPECT_EQ(d.text(2, 1), Space(3 + 5) + u"甲"_qs);
  EXPECT_EQ(d.text(3, 1), Space(3 + 4) + u"+  乙"_qs);
  // The row above and the rows outside are not touched.
  EXPECT_EQ(d.text(1, 1), u"   上"_qs);
  EXPECT_EQ(d.rowHeight(4), 0);
}

// --- cells ---

TEST(Directory, GetTextAndPutText) {
  Directory d = Sample();
  EXPECT_EQ(d.GetText(3, kColDone), u"9"_qs);
  d.PutText(3, kColDone, u"4"_qs, 1);
  EXPECT_EQ(d.GetText(3, kColDone), u"13"_qs);
  d.PutText(3, kColDone, u"-3"_qs, 1);
  EXPECT_EQ(d.GetText(3, kColDone), u"10"_qs);
  d.PutText(3, kColDone, u"abc"_qs, 0);
  EXPECT_EQ(d.GetText(3, kColDone), u"abc"_qs);
  d.PutText(3, kColDone, u"2"_qs, 1);  // a cell that is no number counts as 0
  EXPECT_EQ(d.GetText(3, kColDone), u"2"_qs);
  d.PutText(99, kColDone, u"2"_qs, 1);  // outside the grid: no effect
  EXPECT_EQ(d.GetText(99, kColDone), QString());
}

// --- the end of a run ---

TEST(Directory, EndOfRunUpdatesTheRowAndAllHeadingsOverIt) {
  Directory d = Sample();
  d.toggleHeading(1);
  d.toggleHeading(2);
  QString stat;
  d.addRunCounters(3, 125, 4, 3, 2, stat);
  // The row: minutes + 2, due - 2, answers + 4, right + 3, score again.
  EXPECT_EQ(d.text(3, kColMinutes), u"7"_qs);
  EXPECT_EQ(d.text(3, kColEligible), u"1"_qs);
  EXPECT_EQ(d.text(3, kColDone), u"13"_qs);
  EXPECT_EQ(d.text(3, kColRight), u"10"_qs);
  EXPECT_EQ(d.text(3, kColScore), u"76%"_qs);
  // Both headings over it, without a reload.
  EXPECT_EQ(d.text(2, kColDone), u"13"_qs);
  EXPECT_EQ(d.text(2, kColRight), u"10"_qs);
  EXPECT_EQ(d.text(2, kColMinutes), u"7"_qs);
  EXPECT_EQ(d.text(2, kColEligible), u"21"_qs);
  EXPECT_EQ(d.text(2, kColScore), u"76%"_qs);
  EXPECT_EQ(d.text(1, kColDone), u"18"_qs);
  EXPECT_EQ(d.text(1, kColRight), u"12"_qs);
  EXPECT_EQ(d.text(1, kColScore), u"66%"_qs);
  EXPECT_EQ(d.text(1, kColTotal), u"41"_qs);  // the total does not change
  // A heading whose range does not hold the row is left alone.
  EXPECT_EQ(d.text(6, kColDone), u"4"_qs);
  // The group for the table.
  EXPECT_EQ(stat, u"    3    4    3"_qs);
  d.addRunCounters(5, 59, 1, 0, 0, stat);
  EXPECT_EQ(stat, u"    3    4    3    5    1    0"_qs);
  EXPECT_EQ(d.text(5, kColMinutes), u"2"_qs);  // 59 seconds are 0 whole minutes
}

TEST(Directory, EndOfRunSkipsHeadingsWithoutSign) {
  Directory d = Sample();  // row 2 was never shown: its label has no sign
  QString stat;
  d.addRunCounters(3, 0, 2, 2, 1, stat);
  EXPECT_EQ(d.text(2, kColDone), u"555"_qs);
  EXPECT_EQ(d.text(1, kColDone), u"16"_qs);
  EXPECT_EQ(d.text(1, kColEligible), u"31"_qs);
}

// --- the table ---

namespace {

QList<test::DirSpec> SampleTable() {
  return {
      {u"民法"_qs, QString(), u"2-3"_qs, u"1"_qs, u"9"_qs, u"9"_qs, u"9"_qs, u"9%"_qs, QString(), QString(), u"9"_qs,
       u"9"_qs},
      {u"民法单项选择题"_qs, u"\\yibanti\\010011.mmd"_qs, QString(), u"2"_qs, u"10"_qs, u"9"_qs, u"7"_qs, u"x"_qs,
       QString(), QString(), u"5"_qs, u"3"_qs},
      {u"民法多项选择题"_qs, u"\\yibanti\\010012.mmd"_qs, QString(), u"3"_qs, u"6"_qs, QString(), QString(), QString(),
       QString(), QString(), QString(), u"6"_qs},
  };
}

}  // namespace

TEST(Directory, LoadsTheRowsOfTheTable) {
  test::TestEnv t;
  test::WriteDirectoryTable(t, u"33ok.mmd"_qs, SampleTable());
  Directory d;
  ASSERT_TRUE(d.load(t.path(u"\\dbf"_qs), u"33ok.mmd"_qs));
  ASSERT_EQ(d.rowCount(), 3);
  EXPECT_EQ(d.text(2, 1), u"民法单项选择题"_qs);
  EXPECT_EQ(d.text(2, 2), u"\\yibanti\\010011.mmd"_qs);
  EXPECT_EQ(d.text(2, kColTotal), u"10"_qs);
  EXPECT_EQ(d.text(2, kColScore), u"x"_qs);
  EXPECT_EQ(d.text(3, kColDone), QString());
  EXPECT_EQ(d.text(2, kColFixed), QString());
  EXPECT_EQ(Heights(d), (QList<int>{240, 240, 240}));
  d.show(GridFormatText(DirectoryMode::ShiTi));
  EXPECT_EQ(d.text(1, kColTotal), u"16"_qs);
  EXPECT_EQ(d.text(1, kColScore), u"77%"_qs);
  // The children are prepared when their heading opens.
  EXPECT_EQ(d.text(3, kColScore), QString());
  d.toggleHeading(1);
  EXPECT_EQ(d.text(3, kColScore), u"0%"_qs);
  EXPECT_EQ(d.text(2, kColScore), u"77%"_qs);

  Directory none;
  EXPECT_FALSE(none.load(t.path(u"\\dbf"_qs), u"nothere.mmd"_qs));
  EXPECT_EQ(none.rowCount(), 0);
  none.show(GridFormatText(DirectoryMode::ShiTi));
  EXPECT_EQ(none.text(0, 2), u"文件名2"_qs);
}

TEST(AltDbfData, AddsTheGroupsToTheTableRows) {
  test::TestEnv t;
  test::WriteDirectoryTable(t, u"33ok.mmd"_qs, SampleTable());
  const QString stat = GetStrFromNum(2, 5) + GetStrFromNum(4, 5) + GetStrFromNum(3, 5) + GetStrFromNum(3, 5) +
                       GetStrFromNum(2, 5) + GetStrFromNum(1, 5) + GetStrFromNum(9, 5) + GetStrFromNum(1, 5) +
                       GetStrFromNum(1, 5);
  ASSERT_TRUE(AltDbfData(t.path(u"\\dbf"_qs), u"33ok.mmd"_qs, stat, 150, 1));
  // Row 2: answers 9 + 4, right 7 + 3, minutes 5 + 2, due 3 - 1; row 3 from
  // blank fields; row 9 does not exist.
  EXPECT_EQ(test::ColumnOf(t, u"33ok.mmd"_qs, u"g"_qs), (QStringList{u"9"_qs, u"13"_qs, u"2"_qs}));
  EXPECT_EQ(test::ColumnOf(t, u"33ok.mmd"_qs, u"h"_qs), (QStringList{u"9"_qs, u"10"_qs, u"1"_qs}));
  EXPECT_EQ(test::ColumnOf(t, u"33ok.mmd"_qs, u"l"_qs), (QStringList{u"9"_qs, u"7"_qs, u"2"_qs}));
  EXPECT_EQ(test::ColumnOf(t, u"33ok.mmd"_qs, u"oknum"_qs), (QStringList{u"9"_qs, u"2"_qs, u"5"_qs}));
  // The total and the stored score are not written.
  EXPECT_EQ(test::ColumnOf(t, u"33ok.mmd"_qs, u"f"_qs), (QStringList{u"9"_qs, u"10"_qs, u"6"_qs}));
  EXPECT_EQ(test::ColumnOf(t, u"33ok.mmd"_qs, u"i"_qs), (QStringList{u"9%"_qs, u"x"_qs, QString()}));
}

TEST(AltDbfData, EmptyTextOrMissingTable) {
  test::TestEnv t;
  test::WriteDirectoryTable(t, u"33ok.mmd"_qs, SampleTable());
  EXPECT_TRUE(AltDbfData(t.path(u"\\dbf"_qs), u"33ok.mmd"_qs, QString(), 600, 3));
  EXPECT_EQ(test::ColumnOf(t, u"33ok.mmd"_qs, u"oknum"_qs), (QStringList{u"9"_qs, u"3"_qs, u"6"_qs}));
  EXPECT_FALSE(AltDbfData(t.path(u"\\dbf"_qs), u"nothere.mmd"_qs, u"    1    1    1"_qs, 0, 0));
}

// --- a click ---

TEST(DirectoryClick, HeadingsToggleLeavesStartPractice) {
  test::TestEnv t;
  Directory d = Sample();
  EXPECT_EQ(ClickDirectoryRow(d, 1, t.env), DirectoryClick::Toggled);
  EXPECT_EQ(d.text(1, 1), u"-民法"_qs);
  EXPECT_EQ(ClickDirectoryRow(d, 5, t.env), DirectoryClick::Leaf);
  EXPECT_EQ(ClickDirectoryRow(d, 1, t.env), DirectoryClick::Toggled);
  EXPECT_EQ(d.text(1, 1), u"+民法"_qs);
  EXPECT_EQ(ClickDirectoryRow(d, 0, t.env), DirectoryClick::Nothing);
  EXPECT_TRUE(t.boxes.shown().isEmpty());
}

TEST(DirectoryClick, RowWithoutQuestionsGetsTheBoxExceptAtTheEnd) {
  test::TestEnv t;
  Directory d;
  d.setRows({Row(u"空"_qs, QString(), 0), Row(u"头"_qs, u"3-3"_qs), Row(u"也空"_qs, QString(), 0)});
  d.show(GridFormatText(DirectoryMode::ShiTi));
  EXPECT_EQ(ClickDirectoryRow(d, 1, t.env), DirectoryClick::Empty);
  ASSERT_EQ(t.boxes.shown().size(), 1);
  EXPECT_EQ(t.boxes.shown()[0].text, u"对不起，该部分试题待以后追加。"_qs);
  // A heading over nothing: the box, and no toggle.
  EXPECT_EQ(ClickDirectoryRow(d, 2, t.env), DirectoryClick::Empty);
  EXPECT_EQ(d.text(2, 1), u"+头"_qs);
  EXPECT_EQ(t.boxes.shown().size(), 2);
  // The last row stays silent.
  EXPECT_EQ(ClickDirectoryRow(d, 3, t.env), DirectoryClick::Nothing);
  EXPECT_EQ(t.boxes.shown().size(), 2);
}
