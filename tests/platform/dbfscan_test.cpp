#include <gtest/gtest.h>

#include <QFile>

#include "platform/dbftable.h"
#include "platform/textfile.h"
#include "support/test_env.h"

using namespace mj;

namespace {

QList<DbfField> scanFields() {
  return {{u"name"_qs, 'C', 12, 0},
          {u"note"_qs, 'C', 254, 0},
          {u"flag"_qs, 'L', 1, 0},
          {u"num"_qs, 'N', 8, 2},
          {u"code"_qs, 'C', 11, 0}};
}

// Rewrites bytes of a table file in place.
void patch(const QString& path, qint64 at, const QByteArray& bytes) {
  QFile f(path);
  ASSERT_TRUE(f.open(QIODevice::ReadWrite));
  ASSERT_TRUE(f.seek(at));
  ASSERT_EQ(f.write(bytes), bytes.size());
}

int headerLengthOf(const QString& path) {
  QFile f(path);
  if (!f.open(QIODevice::ReadOnly)) return 0;
  const QByteArray h = f.read(12);
  return static_cast<unsigned char>(h[8]) + 256 * static_cast<unsigned char>(h[9]);
}

int recordLengthOf(const QString& path) {
  QFile f(path);
  if (!f.open(QIODevice::ReadOnly)) return 0;
  const QByteArray h = f.read(12);
  return static_cast<unsigned char>(h[10]) + 256 * static_cast<unsigned char>(h[11]);
}

}  // namespace

TEST(DbfScan, GivesTheRowsAndValuesOfDbfTable) {
  test::TestEnv t;
  const QString p = t.path(u"\\t.mmd"_qs);
  {
    DbfTable tab = DbfTable::create(p, scanFields());
    int r = tab.appendRow();
    tab.setText(r, 0, u"  刑法 "_qs);
    tab.setText(r, 1, u"《刑法》12．《民法典》1165．"_qs);
    tab.setLogical(r, 2, true);
    tab.setNumber(r, 3, 12.5);
    tab.setText(r, 4, u"01001100001"_qs);
    r = tab.appendRow();  // all blank
    r = tab.appendRow();
    tab.setText(r, 0, u"abc"_qs);
    tab.setLogical(r, 2, false);
    tab.setNumber(r, 3, 3);
  }
  const DbfTable tab = DbfTable::open(p);
  DbfScan scan(p);
  ASSERT_TRUE(scan.isOpen()) << scan.error().toStdString();
  EXPECT_EQ(scan.recordCount(), 3);
  ASSERT_EQ(scan.fieldCount(), 5);
  EXPECT_EQ(scan.fields()[1].name, u"note"_qs);
  EXPECT_EQ(scan.fields()[1].width, 254);
  EXPECT_EQ(scan.fields()[3].type, 'N');
  EXPECT_EQ(scan.fields()[3].decimals, 2);
  EXPECT_EQ(scan.fieldIndex(u"CODE"_qs), 4);
  EXPECT_EQ(scan.fieldIndex(u"none"_qs), -1);
  int rows = 0;
  while (scan.next()) {
    const int r = scan.record();
    EXPECT_EQ(r, rows);
    for (int f = 0; f < 5; ++f) {
      EXPECT_EQ(scan.isNull(f), tab.isNull(r, f)) << r << " " << f;
      EXPECT_EQ(scan.text(f), tab.text(r, f)) << r << " " << f;
      EXPECT_EQ(scan.trimmedText(f), tab.trimmedText(r, f)) << r << " " << f;
      EXPECT_EQ(scan.logical(f), tab.logical(r, f)) << r << " " << f;
      EXPECT_EQ(scan.number(f), tab.number(r, f)) << r << " " << f;
    }
    ++rows;
  }
  EXPECT_EQ(rows, 3);
  EXPECT_FALSE(scan.next());
}

TEST(DbfScan, ExactTextsOfTheFirstRow) {
  test::TestEnv t;
  const QString p = t.path(u"\\t.mmd"_qs);
  {
    DbfTable tab = DbfTable::create(p, scanFields());
    const int r = tab.appendRow();
    tab.setText(r, 0, u"  刑法 "_qs);
    tab.setText(r, 1, u"《刑法》12．"_qs);
    tab.setLogical(r, 2, true);
    tab.setNumber(r, 3, 12.5);
  }
  DbfScan scan(p);
  ASSERT_TRUE(scan.next());
  EXPECT_EQ(scan.text(0), u"  刑法"_qs);
  EXPECT_EQ(scan.trimmedText(0), u"刑法"_qs);
  EXPECT_EQ(scan.text(1), u"《刑法》12．"_qs);
  EXPECT_TRUE(scan.logical(2));
  EXPECT_EQ(scan.number(3), 12.5);
  EXPECT_TRUE(scan.isNull(4));
  EXPECT_EQ(scan.text(4), u""_qs);
  EXPECT_EQ(scan.bytes(0), QByteArrayView(ToGbk(u"  刑法      "_qs)));
  EXPECT_EQ(scan.text(9), u""_qs);  // no such field
  EXPECT_TRUE(scan.bytes(9).isEmpty());
}

TEST(DbfScan, BytesThatAreNotGbkReadAsDbfTableReadsThem) {
  test::TestEnv t;
  const QString p = t.path(u"\\t.mmd"_qs);
  {
    DbfTable tab = DbfTable::create(p, scanFields());
    for (int i = 0; i < 4; ++i) tab.setText(tab.appendRow(), 1, u"法"_qs);
  }
  const int h = headerLengthOf(p);
  const int len = recordLengthOf(p);
  const int note = 1 + 12;                                          // deletion flag, then name
  patch(p, h + 0 * len + note, QByteArray("\x80\x41\xFF", 3));      // single 0x80, 0xFF
  patch(p, h + 1 * len + note, QByteArray("ab\xB7", 3));            // lead byte, then a blank
  patch(p, h + 2 * len + note, QByteArray("\x81\x30\x81\x30", 4));  // a four-byte sequence
  patch(p, h + 3 * len + note, QByteArray("\xB7\xA8\xB7\xA8", 4));  // plain 法法
  // What the GBK decoder itself makes of the field's bytes.
  const QList<QByteArray> stored = {QByteArray("\x80\x41\xFF", 3), QByteArray("ab\xB7", 3),
                                    QByteArray("\x81\x30\x81\x30", 4), QByteArray("\xB7\xA8\xB7\xA8", 4)};
  const DbfTable tab = DbfTable::open(p);
  DbfScan scan(p);
  int r = 0;
  while (scan.next()) {
    EXPECT_EQ(scan.text(1), tab.text(r, 1)) << r;
    EXPECT_EQ(scan.trimmedText(1), tab.trimmedText(r, 1)) << r;
    EXPECT_EQ(tab.text(r, 1), FromGbk(stored[r])) << r;
    ++r;
  }
  EXPECT_EQ(r, 4);
  DbfScan again(p);
  for (int i = 0; i < 4; ++i) ASSERT_TRUE(again.next());
  EXPECT_EQ(again.text(1), u"法法"_qs);
}

TEST(DbfScan, DeletedRowsArePassedOver) {
  test::TestEnv t;
  const QString p = t.path(u"\\t.mmd"_qs);
  {
    DbfTable tab = DbfTable::create(p, {{u"a"_qs, 'C', 5, 0}});
    for (int i = 0; i < 3; ++i) tab.setText(tab.appendRow(), 0, QString::number(i));
  }
  patch(p, headerLengthOf(p) + recordLengthOf(p), "*");
  DbfScan scan(p);
  QStringList seen;
  QList<int> records;
  while (scan.next()) {
    seen << scan.text(0);
    records << scan.record();
  }
  EXPECT_EQ(seen, (QStringList{u"0"_qs, u"2"_qs}));
  EXPECT_EQ(records, (QList<int>{0, 2}));
}

TEST(DbfScan, ManyRowsAcrossReadBlocksComeInOrder) {
  test::TestEnv t;
  const QString p = t.path(u"\\t.mmd"_qs);
  const int n = 1000;  // several blocks of 64 KiB at 280 bytes a row
  {
    DbfTable tab = DbfTable::create(p, scanFields());
    for (int i = 0; i < n; ++i) {
      const int r = tab.appendRow();
      tab.setText(r, 0, QString::number(i));
      tab.setText(r, 1, u"第"_qs + QString::number(i) + u"条"_qs);
    }
  }
  DbfScan scan(p);
  int i = 0;
  while (scan.next()) {
    ASSERT_EQ(scan.text(0), QString::number(i));
    ASSERT_EQ(scan.text(1), u"第"_qs + QString::number(i) + u"条"_qs);
    ++i;
  }
  EXPECT_EQ(i, n);
}

TEST(DbfScan, ATruncatedFileGivesTheCompleteRows) {
  test::TestEnv t;
  const QString p = t.path(u"\\t.mmd"_qs);
  {
    DbfTable tab = DbfTable::create(p, scanFields());
    for (int i = 0; i < 5; ++i) tab.setText(tab.appendRow(), 0, QString::number(i));
  }
  const int h = headerLengthOf(p);
  const int len = recordLengthOf(p);
  QFile f(p);
  ASSERT_TRUE(f.open(QIODevice::ReadWrite));
  ASSERT_TRUE(f.resize(h + 3 * len + len / 2));  // three rows and half of the fourth
  f.close();
  DbfScan scan(p);
  QStringList seen;
  while (scan.next()) seen << scan.text(0);
  EXPECT_EQ(seen, (QStringList{u"0"_qs, u"1"_qs, u"2"_qs}));

  // Cut inside the header: no table.
  ASSERT_TRUE(f.open(QIODevice::ReadWrite));
  ASSERT_TRUE(f.resize(h - 10));
  f.close();
  DbfScan cut(p);
  EXPECT_FALSE(cut.isOpen());
  EXPECT_FALSE(cut.error().isEmpty());
  EXPECT_FALSE(cut.next());
}

TEST(DbfScan, MissingOrGarbageFileGivesNoRows) {
  test::TestEnv t;
  DbfScan missing(t.path(u"\\dbf\\items.mmd"_qs));
  EXPECT_FALSE(missing.isOpen());
  EXPECT_FALSE(missing.error().isEmpty());
  EXPECT_FALSE(missing.next());
  EXPECT_EQ(missing.text(0), u""_qs);
  EXPECT_TRUE(missing.isNull(0));

  t.writeGbk(u"\\short.mmd"_qs, u"this is no table"_qs);
  DbfScan shortFile(t.path(u"\\short.mmd"_qs));
  EXPECT_FALSE(shortFile.isOpen());
  EXPECT_FALSE(shortFile.next());

  // A header whose length runs past the end of the file.
  QByteArray junk(200, 'x');
  junk[8] = '\xFF';
  junk[9] = '\x7F';
  junk[10] = '\x10';
  junk[11] = '\x00';
  ASSERT_TRUE(WriteBytesAtomic(t.path(u"\\junk.mmd"_qs), junk));
  DbfScan j(t.path(u"\\junk.mmd"_qs));
  EXPECT_FALSE(j.isOpen());
  EXPECT_FALSE(j.next());

  // Fields wider than the record.
  QByteArray wide(32 + 32 + 1 + 40, ' ');
  wide[0] = '\x03';
  wide[4] = '\x01';
  wide[8] = static_cast<char>(65);  // header: 32 + one descriptor + terminator
  wide[10] = '\x05';                // record of 5 bytes
  wide.replace(32, 4, "name");
  wide[32 + 4] = '\0';
  wide[32 + 11] = 'C';
  wide[32 + 16] = static_cast<char>(200);
  wide[64] = '\x0D';
  ASSERT_TRUE(WriteBytesAtomic(t.path(u"\\wide.mmd"_qs), wide));
  DbfScan w(t.path(u"\\wide.mmd"_qs));
  EXPECT_FALSE(w.isOpen());
  EXPECT_FALSE(w.next());
}

TEST(DbfScan, NumbersReadAsDbfTableReadsThem) {
  test::TestEnv t;
  const QString p = t.path(u"\\t.mmd"_qs);
  const QList<double> values = {0, 3, -3, 123456789, -12345678, 7.25};
  const QStringList texts = {u"0"_qs, u" 3"_qs, u"-3"_qs, u"123456789"_qs, u"-12345678"_qs, u"7.25"_qs};
  {
    DbfTable tab = DbfTable::create(p, {{u"i"_qs, 'N', 10, 0}, {u"d"_qs, 'N', 12, 2}, {u"c"_qs, 'C', 12, 0}});
    for (qsizetype i = 0; i < values.size(); ++i) {
      const int r = tab.appendRow();
      tab.setNumber(r, 0, values[i]);
      tab.setNumber(r, 1, values[i]);
      tab.setText(r, 2, texts[i]);
    }
    const int r = tab.appendRow();  // text that is no number
    tab.setText(r, 2, u"12a"_qs);
    tab.appendRow();  // blank
  }
  const DbfTable tab = DbfTable::open(p);
  DbfScan scan(p);
  int r = 0;
  while (scan.next()) {
    for (int f = 0; f < 3; ++f) EXPECT_EQ(scan.number(f), tab.number(r, f)) << r << " " << f;
    if (r < values.size()) {
      EXPECT_EQ(scan.number(1), values[r]);
      EXPECT_EQ(scan.number(2), values[r]);
    }
    ++r;
  }
  EXPECT_EQ(r, values.size() + 2);
  DbfScan again(p);
  for (int i = 0; i < 7; ++i) ASSERT_TRUE(again.next());
  EXPECT_EQ(again.number(2), 0);  // "12a"
  EXPECT_EQ(again.number(0), 0);  // blank
}
