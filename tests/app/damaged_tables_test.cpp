// Damaged, missing and unwritable tables, met through the program's own
// start-up and a click in the directory: the demonstration data with one
// table spoilt. Nothing hangs, nothing goes unsaid, nothing is stamped from
// a table that could not be read.

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QDir>
#include <QFile>
#include <QPushButton>

#include "app/main_window.h"
#include "bank/tables.h"
#include "log/news.h"
#include "platform/dbftable.h"
#include "platform/paths.h"
#include "platform/vbtext.h"
#include "practice/answer_check.h"
#include "practice/answer_window.h"
#include "practice/directory_widget.h"
#include "practice/practice_frame_widget.h"
#include "practice/practice_session.h"
#include "settings/settings.h"
#include "support/directory_runs.h"
#include "support/read_only.h"
#include "support/test_env.h"

using namespace mj;

namespace {

const QString kItems = u"\\dbf\\items.mmd"_qs;
const QString kDirectory = u"\\dbf\\33ok.mmd"_qs;

// The demonstration program folder, its settings of another day, a fixed
// clock; the main window is started by start().
struct Program {
  test::TestEnv t;
  std::unique_ptr<Form1> form;

  Program() : t(test::DemoDataDir()) {
    t.writeGbk(u"\\ini\\userself.ini"_qs,
               u"STOKTIMES=1\r\nSTADDNUM=1\r\nSTPASSDAYS=30\r\nTSOKTIMES=1\r\nTSADDNUM=1\r\nTSPASSDAYS=30\r\n"
               u"PUBFONTSIZE=15\r\nPUBBACKCOLOR=16777215\r\nPUBFORECOLOR=0\r\nSTLASTUPDATE=0\r\n"
               u"TSLASTUPDATE=0\r\nPUBFONTNAME=宋体\r\nPUBFONTIT=FALSE\r\nPUBFONTBOLD=FALSE\r\n"_qs);
    t.clock.set(QDateTime(QDate(2026, 11, 21), QTime(9, 30)));
  }
  QString file(const QString& suffix) const { return t.path(suffix); }

  // Starts the program; the boxes of the start-up are taken.
  QList<BoxRecord> start() {
    form = std::make_unique<Form1>(t.env);
    EXPECT_EQ(form->load(), Form1::LoadOutcome::Running);
    form->resize(1100, 760);
    form->show();
    return t.boxes.take();
  }
  DirectoryGrid* grid() const { return form->MSFlexGrid1; }
  PracticeRun& run() { return form->state().Run; }

  // The grid row of a bank (its file ends in bank + ".mmd"), with the
  // headings above it opened; 0 when the directory has none.
  int openBank(const QString& bank) { return test::OpenBankRow(*grid(), bank + u".mmd"_qs); }
  void answer(const QString& caption) {
    form->practice->Command2[AnswerCaptions().indexOf(caption)]->click();
  }
  // The day stamp of the last count of the internal banks.
  QString stamp() const {
    for (const QString& line : t.readGbk(u"\\ini\\userself.ini"_qs).split(kCrLf))
      if (line.startsWith(u"STLASTUPDATE="_qs)) return line.mid(13);
    return QString();
  }
};

// The four bytes of the record count in a table's header.
void SetHeaderRecords(const QString& path, quint32 records) {
  QFile f(path);
  ASSERT_TRUE(f.open(QIODevice::ReadWrite));
  f.seek(4);
  const char bytes[4] = {char(records & 0xFF), char(records >> 8 & 0xFF), char(records >> 16 & 0xFF),
                         char(records >> 24 & 0xFF)};
  f.write(bytes, 4);
}

// Cuts a table in the middle of record `record` (0-based).
void CutInRecord(const QString& path, int record) {
  const DbfTable t = DbfTable::open(path);
  QFile raw(path);
  ASSERT_TRUE(raw.open(QIODevice::ReadOnly));
  const QByteArray head = raw.read(12);
  const int headerLength = uchar(head[8]) | uchar(head[9]) << 8;
  const int recordLength = uchar(head[10]) | uchar(head[11]) << 8;
  raw.close();
  ASSERT_TRUE(QFile::resize(path, headerLength + qint64(record) * recordLength + recordLength / 2));
}

// The table again without one of its fields, every row copied.
void DropField(const QString& path, const QString& field) {
  QList<DbfField> fields;
  QList<QList<QVariant>> rows;
  {
    const DbfTable old = DbfTable::open(path);
    for (const DbfField& f : old.fields())
      if (f.name.compare(field, Qt::CaseInsensitive) != 0) fields.append(f);
    for (int r : old.rows()) {
      QList<QVariant> values;
      for (const DbfField& f : fields) values.append(old.value(r, old.fieldIndex(f.name)));
      rows.append(values);
    }
  }
  DbfTable t = DbfTable::create(path, fields);
  for (const QList<QVariant>& values : rows) {
    const int r = t.appendRow();
    for (int i = 0; i < fields.size(); ++i) {
      if (!values[i].isValid()) continue;
      if (fields[i].type == 'L')
        t.setLogical(r, i, values[i].toBool());
      else if (fields[i].type == 'N')
        t.setNumber(r, i, values[i].toDouble());
      else
        t.setText(r, i, values[i].toString());
    }
  }
  ASSERT_TRUE(t.close());
}

QStringList Texts(const QList<BoxRecord>& boxes) {
  QStringList r;
  for (const BoxRecord& b : boxes) r.append(b.text);
  return r;
}

QString StartMessage(const QStringList& lines) {
  return u"下列数据表不能完整读出："_qs + kCrLf + lines.join(kCrLf) + kCrLf + kCrLf +
         u"程序照常使用其中能读出的部分，读不出的试题和记录暂时不能使用；请用备份恢复这些文件后重新启动程序。"_qs;
}

// An item table that cannot be read whole: the start names its problem, the
// count of the internal banks is not stamped with the day, and a click on
// bank 100011 names the problem again instead of starting a run.
void ExpectItemTableRefused(Program& p, const QString& problem) {
  EXPECT_EQ(Texts(p.start()), QStringList{StartMessage({problem})});
  p.form->ShiTi->trigger();
  EXPECT_EQ(p.stamp(), u"0"_qs);
  p.grid()->clickRow(p.openBank(u"100011"_qs));
  EXPECT_EQ(Texts(p.t.boxes.take()), QStringList{u"该部分试题无法取出，因为题库表不能完整读出：\r\n"_qs + problem});
}

#define NEED_DEMO() \
  if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "no demonstration data built"

}  // namespace

TEST(DamagedTables, AnItemTableWhoseHeaderClaimsFourBillionRecords) {
  NEED_DEMO();
  Program p;
  SetHeaderRecords(p.file(kItems), 0xFFFFFFFFu);
  QElapsedTimer clock;
  clock.start();
  const QList<BoxRecord> start = p.start();
  EXPECT_EQ(Texts(start), QStringList{StartMessage(
                              {u"表文件 "_qs + p.file(kItems) +
                               u" 不完整：表头记有 4294967295 条记录，文件中只有 45 条完整的记录。"_qs})});
  EXPECT_EQ(p.form->state().AllItemData.size(), 45);
  p.form->ShiTi->trigger();
  const int row = p.openBank(u"100011"_qs);
  ASSERT_GT(row, 0);
  ASSERT_EQ(p.grid()->clickRow(row), DirectoryClick::Leaf);
  EXPECT_EQ(p.run().count(), 7);
  p.answer(u"A"_qs);
  EXPECT_TRUE(p.form->practice->answerWindow()->isVisible());
  // Not a walk over billions of records: well within a second or two, even
  // under the sanitizers.
  EXPECT_LT(clock.elapsed(), 20000);
  // The answer's record is in the table, whose header now tells the truth.
  const DbfTable items = DbfTable::open(p.file(kItems));
  EXPECT_EQ(items.headerRecordCount(), 45);
  EXPECT_NE(items.trimmedText(0, u"story"_qs), u"no"_qs);
}

TEST(DamagedTables, ADirectoryWhoseHeaderClaimsFourBillionRecords) {
  NEED_DEMO();
  Program p;
  SetHeaderRecords(p.file(kDirectory), 0xFFFFFFFFu);
  const QList<BoxRecord> start = p.start();
  EXPECT_EQ(Texts(start), QStringList{StartMessage(
                              {u"表文件 "_qs + p.file(kDirectory) +
                               u" 不完整：表头记有 4294967295 条记录，文件中只有 15 条完整的记录。"_qs})});
  p.form->ShiTi->trigger();
  EXPECT_EQ(p.grid()->directory().rowCount(), 15);
  const int row = p.openBank(u"100021"_qs);
  ASSERT_EQ(p.grid()->clickRow(row), DirectoryClick::Leaf);
  EXPECT_EQ(p.run().count(), 7);
}

TEST(DamagedTables, AMissingItemTableIsNamedAndTheDayIsNotStamped) {
  NEED_DEMO();
  Program p;
  // Yesterday's count: 7 due in the bank.
  ASSERT_TRUE(RemoveFile(p.file(kItems)));
  const QList<BoxRecord> start = p.start();
  EXPECT_EQ(Texts(start), QStringList{StartMessage({u"表文件 "_qs + p.file(kItems) + u" 不存在。"_qs})});
  p.form->ShiTi->trigger();
  EXPECT_TRUE(p.t.boxes.shown().isEmpty());
  EXPECT_EQ(p.stamp(), u"0"_qs);
  // The counts of the last day stay; the click says why there is nothing.
  const int row = p.openBank(u"100011"_qs);
  EXPECT_EQ(p.grid()->directory().text(row, kColTotal), u"7"_qs);
  EXPECT_EQ(p.grid()->clickRow(row), DirectoryClick::Leaf);
  EXPECT_FALSE(p.run().isOpen());
  EXPECT_EQ(Texts(p.t.boxes.take()), QStringList{u"该部分试题无法取出，因为题库表不能完整读出：\r\n表文件 "_qs +
                                                 p.file(kItems) + u" 不存在。"_qs});
}

TEST(DamagedTables, AnEmptyItemTable) {
  NEED_DEMO();
  Program p;
  ASSERT_TRUE(QFile::resize(p.file(kItems), 0));
  ExpectItemTableRefused(p, u"表文件 "_qs + p.file(kItems) + u" 是空文件。"_qs);
}

TEST(DamagedTables, AnItemTableWithAHeaderOfNoTable) {
  NEED_DEMO();
  Program p;
  QFile f(p.file(kItems));
  ASSERT_TRUE(f.open(QIODevice::ReadWrite));
  f.write(QByteArray(40, '\x7F'));
  f.close();
  EXPECT_EQ(Texts(p.start()), QStringList{StartMessage(
                                  {u"表文件 "_qs + p.file(kItems) + u" 已损坏：文件头不是有效的表头。"_qs})});
  EXPECT_TRUE(p.form->state().AllItemData.isEmpty());
  p.form->ShiTi->trigger();
  EXPECT_EQ(p.stamp(), u"0"_qs);
}

TEST(DamagedTables, NoTableFolder) {
  NEED_DEMO();
  Program p;
  ASSERT_TRUE(QDir(p.file(u"\\dbf"_qs)).removeRecursively());
  EXPECT_EQ(Texts(p.start()), QStringList{StartMessage({u"文件夹 "_qs + p.file(u"\\dbf"_qs) +
                                                        u" 不存在，其中的数据表都无法读出。"_qs})});
  p.form->ShiTi->trigger();
  EXPECT_EQ(p.grid()->directory().rowCount(), 0);
  EXPECT_EQ(p.stamp(), u"0"_qs);
  EXPECT_TRUE(p.t.boxes.shown().isEmpty());
}

TEST(DamagedTables, AnItemTableWithoutItsIdFieldDoesNotBlameTheSettings) {
  NEED_DEMO();
  Program p;
  DropField(p.file(kItems), u"itemid"_qs);
  ExpectItemTableRefused(p, u"表文件 "_qs + p.file(kItems) + u" 缺少字段 itemid。"_qs);
}

TEST(DamagedTables, AnItemTableCutInARecordIsCountedButNotStamped) {
  NEED_DEMO();
  Program p;
  const QByteArray whole = [&] {
    QFile f(p.file(kItems));
    f.open(QIODevice::ReadOnly);
    return f.readAll();
  }();
  CutInRecord(p.file(kItems), 10);
  EXPECT_EQ(Texts(p.start()), QStringList{StartMessage(
                                  {u"表文件 "_qs + p.file(kItems) +
                                   u" 不完整：表头记有 45 条记录，文件中只有 10 条完整的记录。"_qs})});
  EXPECT_EQ(p.form->state().AllItemData.size(), 10);
  p.form->ShiTi->trigger();
  // What could be read is counted; the day is not stamped.
  EXPECT_EQ(p.stamp(), u"0"_qs);
  int row = p.openBank(u"100012"_qs);
  EXPECT_EQ(p.grid()->directory().text(row, kColTotal), u"3"_qs);
  ASSERT_EQ(p.grid()->clickRow(row), DirectoryClick::Leaf);
  EXPECT_EQ(p.run().count(), 3);
  p.form->practice->Frame3Cmd[3]->click();

  // The table restored: the next start counts again, the whole bank.
  p.form.reset();
  {
    QFile f(p.file(kItems));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(whole);
  }
  EXPECT_TRUE(p.start().isEmpty());
  p.form->ShiTi->trigger();
  row = p.openBank(u"100012"_qs);
  EXPECT_EQ(p.grid()->directory().text(row, kColTotal), u"5"_qs);
  EXPECT_EQ(p.stamp(), QString::number(DayStamp(QDate(2026, 11, 21))));
}

TEST(DamagedTables, AnswersThatCannotBeSavedAreSaidOncePerRun) {
  NEED_DEMO();
  Program p;
  EXPECT_TRUE(p.start().isEmpty());
  p.form->ShiTi->trigger();
  const int row = p.openBank(u"100011"_qs);
  {
    test::ReadOnlyScope readOnly(p.file(u"\\dbf"_qs), p.t.root());
    ASSERT_TRUE(readOnly.holds());
    ASSERT_EQ(p.grid()->clickRow(row), DirectoryClick::Leaf);
    p.answer(u"A"_qs);
    Form3* answerWindow = p.form->practice->answerWindow();
    EXPECT_TRUE(answerWindow->isVisible());
    const QList<BoxRecord> told = p.t.boxes.take();
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told[0].title, u"答题记录没能保存"_qs);
    EXPECT_EQ(told[0].text, u"本题的答题记录没能保存：表文件 "_qs + p.file(kItems) +
                                u" 无法打开：没有写入权限（文件或文件夹是只读的）。\r\n\r\n"
                                u"本轮练习的答题记录都保存不了，下次启动程序时将看不到它们；您可以继续练习。"_qs);
    // The practice goes on, without a second box in this run.
    answerWindow->Command1[3]->click();
    p.form->practice->Frame3Cmd[2]->click();
    p.answer(u"B"_qs);
    EXPECT_TRUE(answerWindow->isVisible());
    EXPECT_TRUE(p.t.boxes.take().isEmpty());
    // The next run says it again.
    answerWindow->Command1[3]->click();
    p.form->practice->Frame3Cmd[3]->click();
    ASSERT_EQ(p.grid()->clickRow(row), DirectoryClick::Leaf);
    p.answer(u"A"_qs);
    EXPECT_EQ(p.t.boxes.take().size(), 1);
    answerWindow->Command1[3]->click();
  }
  const DbfTable items = DbfTable::open(p.file(kItems));
  EXPECT_EQ(items.trimmedText(0, u"story"_qs), u"no"_qs);
}

TEST(DamagedTables, AnItemTableWithoutItsRecordField) {
  NEED_DEMO();
  Program p;
  DropField(p.file(kItems), u"story"_qs);
  EXPECT_EQ(Texts(p.start()),
            QStringList{StartMessage({u"表文件 "_qs + p.file(kItems) + u" 缺少字段 story。"_qs})});
  p.form->ShiTi->trigger();
  const int row = p.openBank(u"100011"_qs);
  ASSERT_EQ(p.grid()->clickRow(row), DirectoryClick::Leaf);
  p.answer(u"A"_qs);
  EXPECT_TRUE(p.form->practice->answerWindow()->isVisible());
  EXPECT_EQ(Texts(p.t.boxes.take()),
            QStringList{u"本题的答题记录没能保存：表文件 "_qs + p.file(kItems) +
                        u" 缺少字段 story。\r\n\r\n"
                        u"本轮练习的答题记录都保存不了，下次启动程序时将看不到它们；您可以继续练习。"_qs});
}

TEST(DamagedTables, HugeNumbersInTheFilesAreNoUndefinedConversions) {
  NEED_DEMO();
  Program p;
  // A news file whose colours and exam day are far beyond any integer.
  p.t.writeGbk(u"\\ini\\newlumen.txt"_qs,
               u"[信息]\r\n考试时间=1e99\r\n[通知1]\r\n显示内容=示例通知\r\n原色=1e99\r\n鼠标色=-1e99\r\n"_qs);
  // A heading flag 1e99-5 in the directory, a serial number 9e300 in an ID.
  {
    DbfTable d = DbfTable::open(p.file(kDirectory), DbfTable::Mode::ReadWrite);
    ASSERT_TRUE(d.setText(0, u"c"_qs, u"1e99-5"_qs));
    ASSERT_TRUE(d.close());
    DbfTable items = DbfTable::open(p.file(kItems), DbfTable::Mode::ReadWrite);
    ASSERT_TRUE(items.setText(0, u"itemid"_qs, u"1000119e300"_qs));
    ASSERT_TRUE(items.close());
  }
  EXPECT_TRUE(p.start().isEmpty());
  // The exam day saturates at the largest day number.
  EXPECT_EQ(p.form->windowTitle(), u"明镜学习伴侣3.10   距今年司法统考还有"_qs +
                                       QString::number(2147483647 - DayNumber(QDate(2026, 11, 21))) + u"天"_qs);
  p.form->ShiTi->trigger();
  for (int r = 1; r <= p.grid()->directory().rowCount(); ++r) p.grid()->clickRow(r);
  const int row = p.openBank(u"100011"_qs);
  p.t.boxes.take();
  ASSERT_EQ(p.grid()->clickRow(row), DirectoryClick::Leaf);
  EXPECT_EQ(GetItemID(p.run().RunIds, 1), u"1000119e300"_qs);
  p.answer(u"A"_qs);
  EXPECT_TRUE(p.form->practice->answerWindow()->isVisible());
}
