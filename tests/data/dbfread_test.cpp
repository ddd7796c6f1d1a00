// The demonstration tables read by an independent dBASE reader (Debian's
// python3-dbfread): field names, row counts and every text, decoded as GBK,
// must be what the program's own table layer reads.

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include "data_test_util.h"
#include "platform/dbftable.h"
#include "platform/paths.h"
#include "support/test_env.h"

using namespace mj;
using namespace mj::datatest;

namespace {

const QString kPython = u"/usr/bin/python3"_qs;

bool HaveDbfread() {
  if (!QFile::exists(kPython)) return false;
  QProcess p;
  p.start(kPython, {u"-c"_qs, u"import dbfread"_qs});
  return p.waitForFinished(60000) && p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0;
}

// The table as dbfread reads it: {"fields": [...], "rows": [[...], ...]},
// every value as text (None as null).
QJsonObject ReadWithDbfread(const QString& path) {
  const QString script =
      uR"(
import json, sys
from dbfread import DBF
t = DBF(sys.argv[1], encoding='gbk', char_decode_errors='strict')
rows = [[None if v is None else (v if isinstance(v, str) else ('T' if v is True else 'F' if v is False else repr(v)))
         for v in r.values()] for r in t]
print(json.dumps({'fields': t.field_names, 'rows': rows}))
)"_qs;
  QProcess p;
  p.start(kPython, {u"-c"_qs, script, path});
  EXPECT_TRUE(p.waitForFinished(60000));
  EXPECT_EQ(p.exitCode(), 0) << p.readAllStandardError().toStdString();
  return QJsonDocument::fromJson(p.readAllStandardOutput()).object();
}

}  // namespace

TEST(Dbfread, ReadsTheDemoTablesWithTheirNamesAndGbkText) {
  if (!HaveDbfread()) GTEST_SKIP() << "/usr/bin/python3 with dbfread is not installed";
  int chinese = 0;
  for (const QString& table : {u"items.mmd"_qs, u"csitems.mmd"_qs, u"33ok.mmd"_qs, u"csface.mmd"_qs, u"33.mmd"_qs,
                               u"listbox.mmd"_qs, u"dagang.mmd"_qs}) {
    SCOPED_TRACE(table.toStdString());
    const QString path = AppPath(Demo(), u"\\dbf\\"_qs + table);
    const QJsonObject got = ReadWithDbfread(path);
    DbfTable t = DbfTable::open(path);
    ASSERT_TRUE(t.isOpen());
    const QJsonArray names = got[u"fields"_qs].toArray();
    ASSERT_EQ(names.size(), t.fieldCount());
    for (int f = 0; f < t.fieldCount(); ++f) EXPECT_EQ(names[f].toString(), t.fields()[f].name);
    const QJsonArray rows = got[u"rows"_qs].toArray();
    const QList<int> own = t.rows();
    ASSERT_EQ(rows.size(), own.size());
    for (int i = 0; i < own.size(); ++i) {
      const QJsonArray values = rows[i].toArray();
      for (int f = 0; f < t.fieldCount(); ++f) {
        const char type = t.fields()[f].type;
        if (type == 'C') {
          // dbfread drops right blanks and keeps left ones, as the program does.
          const QString mine = t.text(own[i], f);
          EXPECT_EQ(values[f].toString(), mine) << i << " " << t.fields()[f].name.toStdString();
          for (QChar c : mine) chinese += c.unicode() >= 0x4E00 && c.unicode() <= 0x9FFF;
        } else if (type == 'L') {
          EXPECT_EQ(values[f].toString(), t.logical(own[i], f) ? u"T"_qs : u"F"_qs);
        } else if (type == 'N') {
          if (t.isNull(own[i], f))
            EXPECT_TRUE(values[f].isNull());
          else
            EXPECT_EQ(values[f].toString().toDouble(), t.number(own[i], f));
        }
      }
    }
  }
  EXPECT_GT(chinese, 500);
}
