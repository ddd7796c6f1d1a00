#include <gtest/gtest.h>

#include <QFile>

#include "platform/dbftable.h"
#include "platform/textfile.h"
#include "support/test_env.h"

using namespace mj;

namespace {
QList<DbfField> itemFields() {
  return {{u"filename"_qs, 'C', 6, 0},  {u"story"_qs, 'C', 254, 0}, {u"answer"_qs, 'C', 4, 0},
          {u"aboutlaw"_qs, 'C', 254, 0}, {u"itemid"_qs, 'C', 11, 0}, {u"hastest"_qs, 'C', 10, 0},
          {u"valid2"_qs, 'L', 1, 0},     {u"hasselect"_qs, 'L', 1, 0}, {u"itemtype"_qs, 'N', 2, 0}};
}
}  // namespace

TEST(DbfTable, CreateWriteReadByRealName) {
  test::TestEnv t;
  t.mkdir(u"\\dbf"_qs);
  const QString p = t.path(u"\\dbf\\items.mmd"_qs);
  {
    DbfTable tab = DbfTable::create(p, itemFields());
    ASSERT_TRUE(tab.isOpen()) << tab.error().toStdString();
    const int r = tab.appendRow();
    ASSERT_EQ(r, 0);
    EXPECT_TRUE(tab.setText(r, u"filename"_qs, u"010011"_qs));
    EXPECT_TRUE(tab.setText(r, u"story"_qs, u"no"_qs));
    EXPECT_TRUE(tab.setText(r, u"aboutlaw"_qs, u"《刑法》12．"_qs));
    EXPECT_TRUE(tab.setLogical(r, u"valid2"_qs, true));
    EXPECT_TRUE(tab.setNumber(r, u"itemtype"_qs, 1));
    const int r2 = tab.appendRow();
    EXPECT_TRUE(tab.setText(r2, u"filename"_qs, u"  0100"_qs));
    EXPECT_TRUE(tab.setLogical(r2, u"valid2"_qs, false));
  }
  EXPECT_TRUE(QFile::exists(p));
  EXPECT_FALSE(QFile::exists(t.path(u"\\dbf\\items.dbf"_qs)));
  EXPECT_FALSE(QFile::exists(t.path(u"\\dbf\\items.cpg"_qs)));

  DbfTable tab = DbfTable::open(p);
  ASSERT_TRUE(tab.isOpen());
  EXPECT_EQ(tab.fieldCount(), 9);
  EXPECT_EQ(tab.fields()[3].name, u"aboutlaw"_qs);
  EXPECT_EQ(tab.recordCount(), 2);
  EXPECT_EQ(tab.text(0, u"filename"_qs), u"010011"_qs);
  EXPECT_EQ(tab.text(0, u"aboutlaw"_qs), u"《刑法》12．"_qs);
  EXPECT_TRUE(tab.logical(0, u"valid2"_qs));
  EXPECT_EQ(tab.number(0, u"itemtype"_qs), 1);
  EXPECT_TRUE(tab.isNull(0, u"hastest"_qs));
  EXPECT_TRUE(tab.isNull(0, u"hasselect"_qs));
  EXPECT_FALSE(tab.logical(0, u"hasselect"_qs));
  // Left blanks are kept, right ones are not.
  EXPECT_EQ(tab.text(1, u"filename"_qs), u"  0100"_qs);
  EXPECT_EQ(tab.trimmedText(1, u"filename"_qs), u"0100"_qs);
  EXPECT_TRUE(tab.isNull(1, u"itemtype"_qs));
  EXPECT_EQ(tab.value(1, tab.fieldIndex(u"itemtype"_qs)), QVariant());
  // Text is GBK on disk.
  QFile f(p);
  ASSERT_TRUE(f.open(QIODevice::ReadOnly));
  EXPECT_TRUE(f.readAll().contains(ToGbk(u"《刑法》12．"_qs)));
}

TEST(DbfTable, EditInPlaceAndSelect) {
  test::TestEnv t;
  const QString p = t.path(u"\\items.mmd"_qs);
  {
    DbfTable tab = DbfTable::create(p, itemFields());
    for (int i = 0; i < 5; ++i) {
      const int r = tab.appendRow();
      tab.setText(r, u"filename"_qs, i < 3 ? u"010011"_qs : u"010012"_qs);
      tab.setText(r, u"itemid"_qs, (i < 3 ? u"010011"_qs : u"010012"_qs) + QStringLiteral("%1").arg(i + 1, 5, 10, QChar(u'0')));
      tab.setLogical(r, u"valid2"_qs, i != 1);
    }
  }
  {
    DbfTable tab = DbfTable::open(p, DbfTable::Mode::ReadWrite);
    EXPECT_EQ(Select(tab, {}), (QList<int>{0, 1, 2, 3, 4}));
    EXPECT_EQ(Select(tab, {{u"valid2"_qs, true}}), (QList<int>{0, 2, 3, 4}));
    EXPECT_EQ(Select(tab, {{u"filename"_qs, u"010011"_qs}}), (QList<int>{0, 1, 2}));
    EXPECT_EQ(Select(tab, {{u"filename"_qs, u"010011"_qs}, {u"valid2"_qs, true}}), (QList<int>{0, 2}));
    EXPECT_EQ(Select(tab, {{u"itemid"_qs, u"01001200004"_qs}}), (QList<int>{3}));
    EXPECT_EQ(Select(tab, {{u"nofield"_qs, u"x"_qs}}), QList<int>{});
    EXPECT_TRUE(tab.setText(2, u"story"_qs, u"2026-11-21 09:30   A"_qs));
  }
  DbfTable tab = DbfTable::open(p);
  EXPECT_EQ(tab.text(2, u"story"_qs), u"2026-11-21 09:30   A"_qs);
  EXPECT_EQ(tab.text(1, u"story"_qs), u""_qs);
}

TEST(DbfTable, ReadOnlyTableRefusesWrites) {
  test::TestEnv t;
  const QString p = t.path(u"\\t.mmd"_qs);
  { DbfTable tab = DbfTable::create(p, itemFields()); tab.appendRow(); }
  DbfTable tab = DbfTable::open(p);
  EXPECT_FALSE(tab.setText(0, 0, u"x"_qs));
  EXPECT_FALSE(tab.error().isEmpty());
}

TEST(DbfTable, TextLongerThanTheFieldIsCutAtACharacter) {
  test::TestEnv t;
  const QString p = t.path(u"\\t.mmd"_qs);
  DbfTable tab = DbfTable::create(p, {{u"a"_qs, 'C', 5, 0}});
  const int r = tab.appendRow();
  EXPECT_TRUE(tab.setText(r, 0, u"刑法典"_qs));  // 6 bytes into 5
  EXPECT_EQ(tab.text(r, 0), u"刑法"_qs);
}

TEST(DbfTable, MissingOrGarbageTableBehavesAsEmpty) {
  test::TestEnv t;
  DbfTable missing = DbfTable::open(t.path(u"\\dbf\\items.mmd"_qs));
  EXPECT_FALSE(missing.isOpen());
  EXPECT_FALSE(missing.error().isEmpty());
  EXPECT_EQ(missing.recordCount(), 0);
  EXPECT_EQ(missing.rows(), QList<int>{});
  EXPECT_EQ(missing.text(0, 0), u""_qs);
  EXPECT_FALSE(missing.setText(0, 0, u"x"_qs));
  EXPECT_EQ(missing.appendRow(), -1);
  EXPECT_EQ(Select(missing, {}), QList<int>{});

  t.writeGbk(u"\\garbage.mmd"_qs, u"this is no table at all"_qs);
  DbfTable garbage = DbfTable::open(t.path(u"\\garbage.mmd"_qs));
  EXPECT_EQ(garbage.rows().size(), garbage.recordCount());
  EXPECT_EQ(Select(garbage, {{u"itemid"_qs, u"x"_qs}}), QList<int>{});
}

TEST(DbfTable, TruncatedTableDoesNotCrash) {
  test::TestEnv t;
  const QString p = t.path(u"\\t.mmd"_qs);
  {
    DbfTable tab = DbfTable::create(p, itemFields());
    for (int i = 0; i < 50; ++i) tab.setText(tab.appendRow(), 0, u"010011"_qs);
  }
  QFile f(p);
  ASSERT_TRUE(f.open(QIODevice::ReadWrite));
  f.resize(f.size() / 2);
  f.close();
  DbfTable tab = DbfTable::open(p);
  int seen = 0;
  for (int r : tab.rows()) seen += tab.text(r, 0) == u"010011"_qs;
  EXPECT_LE(seen, 50);
}

namespace {
// A table of `rows` rows, its file's bytes and the record length.
QByteArray TableBytes(const test::TestEnv& t, int rows, int* recordLength) {
  const QString p = t.path(u"\\made.mmd"_qs);
  {
    DbfTable tab = DbfTable::create(p, itemFields());
    for (int i = 0; i < rows; ++i) tab.setText(tab.appendRow(), 0, u"01001"_qs + QString::number(i % 10));
  }
  QFile f(p);
  f.open(QIODevice::ReadOnly);
  const QByteArray b = f.readAll();
  *recordLength = uchar(b[10]) | uchar(b[11]) << 8;
  return b;
}
void WriteBytes(const QString& path, const QByteArray& b) {
  QFile f(path);
  ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
  f.write(b);
}
}  // namespace

TEST(DbfTable, AHeaderClaimingFourBillionRecordsGivesThoseTheFileHolds) {
  test::TestEnv t;
  int length = 0;
  QByteArray b = TableBytes(t, 3, &length);
  b[4] = b[5] = b[6] = b[7] = '\xFF';
  const QString p = t.path(u"\\lying.mmd"_qs);
  WriteBytes(p, b);
  const DbfTable tab = DbfTable::open(p);
  ASSERT_TRUE(tab.isOpen());
  EXPECT_EQ(tab.headerRecordCount(), 4294967295LL);
  EXPECT_EQ(tab.recordCount(), 3);
  EXPECT_EQ(tab.rows(), (QList<int>{0, 1, 2}));
  EXPECT_EQ(tab.text(2, 0), u"010012"_qs);
  EXPECT_EQ(tab.text(3, 0), QString());
  DbfScan scan(p);
  int n = 0;
  while (scan.next()) ++n;
  EXPECT_EQ(n, 3);
  // Written, the table's header tells the truth again.
  {
    DbfTable w = DbfTable::open(p, DbfTable::Mode::ReadWrite);
    EXPECT_TRUE(w.setText(0, 0, u"020011"_qs));
    EXPECT_TRUE(w.closeDurably());
  }
  EXPECT_EQ(DbfTable::open(p).headerRecordCount(), 3);
}

TEST(DbfTable, AFileCutInARecordGivesTheWholeRecordsBeforeIt) {
  test::TestEnv t;
  int length = 0;
  const QByteArray b = TableBytes(t, 5, &length);
  const int header = uchar(b[8]) | uchar(b[9]) << 8;
  const QString p = t.path(u"\\cut.mmd"_qs);
  WriteBytes(p, b.left(header + 2 * length + length / 2));
  const DbfTable tab = DbfTable::open(p);
  EXPECT_EQ(tab.headerRecordCount(), 5);
  EXPECT_EQ(tab.recordCount(), 2);
  EXPECT_EQ(tab.rows(), (QList<int>{0, 1}));
  // A record appended goes where the cut one began.
  {
    DbfTable w = DbfTable::open(p, DbfTable::Mode::ReadWrite);
    EXPECT_EQ(w.appendRow(), 2);
    EXPECT_TRUE(w.setText(2, 0, u"030011"_qs));
  }
  const DbfTable again = DbfTable::open(p);
  EXPECT_EQ(again.recordCount(), 3);
  EXPECT_EQ(again.headerRecordCount(), 3);
  EXPECT_EQ(again.text(2, 0), u"030011"_qs);
}

TEST(DbfTable, FieldsThatDoNotFitTheRecordMakeNoTable) {
  test::TestEnv t;
  int length = 0;
  QByteArray b = TableBytes(t, 2, &length);
  // The record length says 3 bytes; the fields need hundreds.
  b[10] = 3;
  b[11] = 0;
  const QString p = t.path(u"\\narrow.mmd"_qs);
  WriteBytes(p, b);
  const DbfTable tab = DbfTable::open(p);
  EXPECT_FALSE(tab.isOpen());
  EXPECT_EQ(tab.error(), u"表文件 "_qs + p + u" 已损坏：文件头不是有效的表头"_qs);
  EXPECT_EQ(tab.rows(), QList<int>{});
}

TEST(DbfTable, DeletedRowsArePassedOver) {
  test::TestEnv t;
  const QString p = t.path(u"\\t.mmd"_qs);
  DbfTable tab = DbfTable::create(p, {{u"a"_qs, 'C', 5, 0}});
  for (int i = 0; i < 3; ++i) tab.setText(tab.appendRow(), 0, QString::number(i));
  tab.close();
  // Mark the middle row deleted by hand: "*" in its first byte.
  QFile f(p);
  ASSERT_TRUE(f.open(QIODevice::ReadWrite));
  const QByteArray all = f.readAll();
  const int header = static_cast<unsigned char>(all[8]) + 256 * static_cast<unsigned char>(all[9]);
  const int reclen = static_cast<unsigned char>(all[10]) + 256 * static_cast<unsigned char>(all[11]);
  f.seek(header + reclen);
  f.write("*");
  f.close();
  DbfTable again = DbfTable::open(p);
  EXPECT_EQ(again.rows(), (QList<int>{0, 2}));
}
