// stats: the figures of the statistics charts as CSV, on the demonstration
// data with records of known days and answers, and beside the core's own
// figures on a generated folder.
#include <gtest/gtest.h>

#include <QRegularExpression>

#include "bank/tables.h"
#include "cli/stats_command.h"
#include "cli_fixture.h"
#include "generator.h"
#include "log/practice_stats.h"
#include "platform/dbftable.h"
#include "settings/settings.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

using test::RunCliOn;
using test::TreeFingerprint;

// An entry of a practice record: the time and the answer right-aligned in 4.
QString Entry(const QString& time, const QString& answer) { return time + answer.rightJustified(4); }

TEST(CliStats, TheChartsOfKnownRecords) {
  if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "demonstration data not built";
  test::TestEnv te(test::DemoDataDir());
  // Three questions of the first bank: one right on the 20th and right again
  // today, one wrong on the 20th, one right on the 1st of the month.
  QString bank;
  {
    DbfTable items = DbfTable::open(te.path(u"\\dbf\\items.mmd"_qs), DbfTable::Mode::ReadWrite);
    ASSERT_TRUE(items.isOpen());
    bank = items.trimmedText(0, items.fieldIndex(u"filename"_qs));
    QList<int> rows;
    for (int r = 0; r < items.recordCount() && rows.size() < 3; ++r)
      if (items.trimmedText(r, items.fieldIndex(u"filename"_qs)) == bank) rows << r;
    ASSERT_EQ(rows.size(), 3);
    const auto key = [&](int r) { return items.trimmedText(r, items.fieldIndex(u"answer"_qs)); };
    const QString wrong = key(rows[1]) == u"D"_qs ? u"A"_qs : u"D"_qs;
    ASSERT_TRUE(items.setText(rows[0], u"story"_qs,
                              Entry(u"2026-11-21 08:00"_qs, key(rows[0])) + Entry(u"2026-11-20 09:30"_qs, key(rows[0]))));
    ASSERT_TRUE(items.setText(rows[1], u"story"_qs, Entry(u"2026-11-20 10:00"_qs, wrong)));
    ASSERT_TRUE(items.setText(rows[2], u"story"_qs, Entry(u"2026-11-01 21:15"_qs, key(rows[2]))));
  }
  // Settings of another day, so that the directory counts today.
  te.writeGbk(u"\\ini\\userself.ini"_qs,
              u"STOKTIMES=1\r\nSTADDNUM=1\r\nSTPASSDAYS=30\r\nTSOKTIMES=1\r\nTSADDNUM=1\r\nTSPASSDAYS=30\r\n"
              u"PUBFONTSIZE=15\r\nPUBBACKCOLOR=16777215\r\nPUBFORECOLOR=0\r\nSTLASTUPDATE=0\r\n"
              u"TSLASTUPDATE=0\r\nPUBFONTNAME=宋体\r\nPUBFONTIT=FALSE\r\nPUBFONTBOLD=FALSE\r\n"_qs);
  const auto before = TreeFingerprint(te.root());

  const cli::CliResult answers = RunCliOn(te.root(), {u"stats"_qs, u"--chart"_qs, u"answers"_qs});
  ASSERT_EQ(answers.status, 0) << answers.err.toStdString();
  const QStringList lines = answers.out.split(u'\n', Qt::SkipEmptyParts);
  ASSERT_EQ(lines.size(), 91);
  EXPECT_EQ(lines[0], u"日期,答题数,答对数"_qs);
  EXPECT_EQ(lines[1], u"2026-08-24,0,0"_qs);
  EXPECT_EQ(lines[90], u"2026-11-21,1,1"_qs);
  EXPECT_EQ(lines[89], u"2026-11-20,2,1"_qs);
  EXPECT_EQ(lines[70], u"2026-11-01,1,1"_qs);
  EXPECT_EQ(answers.out.count(u",0,0\n"_qs), 87);

  const cli::CliResult laws = RunCliOn(te.root(), {u"stats"_qs, u"--chart=laws"_qs});
  ASSERT_EQ(laws.status, 0);
  const QStringList lawLines = laws.out.split(u'\n', Qt::SkipEmptyParts);
  ASSERT_EQ(lawLines.size(), 2) << laws.out.toStdString();
  EXPECT_EQ(lawLines[0], u"代码,名称,类别,已做题数,答对题数,正确率(%)"_qs);
  EXPECT_TRUE(QRegularExpression(u"^"_qs + bank.left(5) + u",《[^,]+》,题库,3,2,66\\.7$"_qs).match(lawLines[1]).hasMatch())
      << lawLines[1].toStdString();

  // The first day of the forecast is what the directory shows as due today.
  const cli::CliResult due = RunCliOn(te.root(), {u"stats"_qs, u"--chart"_qs, u"due"_qs});
  ASSERT_EQ(due.status, 0);
  const QStringList dueLines = due.out.split(u'\n', Qt::SkipEmptyParts);
  ASSERT_EQ(dueLines.size(), 31);
  EXPECT_EQ(dueLines[0], u"日期,内部题库,模拟试卷"_qs);
  long long dueToday = 0;
  for (const QString& row : RunCliOn(te.root(), {u"due"_qs}).out.split(u'\n', Qt::SkipEmptyParts).mid(1))
    if (!row.trimmed().startsWith(u'-')) dueToday += row.section(u'\t', 6, 6).toLongLong();
  long long paperDue = 0;
  for (const QString& row : RunCliOn(te.root(), {u"due"_qs, u"--papers"_qs}).out.split(u'\n', Qt::SkipEmptyParts).mid(1))
    if (!row.trimmed().startsWith(u'-')) paperDue += row.section(u'\t', 6, 6).toLongLong();
  EXPECT_EQ(dueLines[1], u"2026-11-21,%1,%2"_qs.arg(dueToday).arg(paperDue));
  // Right once is finished with these settings; the question answered
  // wrong on the 20th comes back 30 days later, and nothing else does.
  EXPECT_EQ(dueLines[30], u"2026-12-20,1,0"_qs);
  for (int i = 2; i < 30; ++i) EXPECT_TRUE(dueLines[i].endsWith(u",0,0"_qs)) << dueLines[i].toStdString();

  // All three, one after the other, a blank line between them.
  const cli::CliResult all = RunCliOn(te.root(), {u"stats"_qs});
  EXPECT_EQ(all.out, answers.out + u"\n"_qs + due.out + u"\n"_qs + laws.out);
  EXPECT_EQ(TreeFingerprint(te.root()), before);

  const cli::CliResult bad = RunCliOn(te.root(), {u"stats"_qs, u"--chart"_qs, u"pie"_qs});
  EXPECT_EQ(bad.status, 1);
  EXPECT_EQ(bad.err, u"--chart 只能是 answers、due 或 laws，不是“pie”。"_qs);
}

TEST(CliStats, BesideTheCoreOnAGeneratedFolder) {
  test::TestEnv te;
  gen::Sizes s;
  s.questions = 300;
  s.banks = 6;
  QString error;
  ASSERT_TRUE(gen::Generate(te.root(), s, &error)) << error.toStdString();
  const cli::CliResult r = RunCliOn(te.root(), {u"stats"_qs});
  ASSERT_EQ(r.status, 0) << r.err.toStdString();
  // The core's figures for the same folder and day, written out here.
  const PracticeRecords records = ReadPracticeRecords(te.path(u"\\dbf"_qs));
  const QDate today(2026, 11, 21);
  QString expected = u"日期,答题数,答对数\n"_qs;
  int answered = 0;
  for (const DayAnswers& d : AnswersPerDay(records, today)) {
    expected += u"%1,%2,%3\n"_qs.arg(d.day.toString(u"yyyy-MM-dd"_qs)).arg(d.answers).arg(d.right);
    answered += d.answers;
  }
  EXPECT_GT(answered, 0);
  expected += u"\n日期,内部题库,模拟试卷\n"_qs;
  Settings settings;  // a folder without settings: the first defaults
  settings.setFirstDefaults(today);
  for (const DueDay& d : DueForecast(records, InternalSchedule(settings, today), SimulatedSchedule(settings, today)))
    expected += u"%1,%2,%3\n"_qs.arg(d.day.toString(u"yyyy-MM-dd"_qs)).arg(d.internal).arg(d.simulated);
  expected += u"\n代码,名称,类别,已做题数,答对题数,正确率(%)\n"_qs;
  for (const GroupShare& g : RightShareByLaw(records))
    expected += u"%1,%2,%3,%4,%5,%6\n"_qs.arg(g.code, g.label, g.simulated ? u"模拟试卷"_qs : u"题库"_qs)
                    .arg(g.done)
                    .arg(g.right)
                    .arg(QString::number(g.percent(), 'f', 1));
  EXPECT_EQ(r.out, expected);
  EXPECT_FALSE(QFileInfo::exists(te.path(u"\\ini\\userself.ini"_qs)));
}

TEST(CliStats, CsvFieldsAreQuotedWhenNeeded) {
  EXPECT_EQ(cli::CsvField(u"《刑法》"_qs), u"《刑法》"_qs);
  EXPECT_EQ(cli::CsvField(u"a,b"_qs), u"\"a,b\""_qs);
  EXPECT_EQ(cli::CsvField(u"say \"x\""_qs), u"\"say \"\"x\"\"\""_qs);
}

}  // namespace
}  // namespace mj
