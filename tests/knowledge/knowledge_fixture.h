#pragma once
// Outline tables and program folders for the tests of the knowledge points.

#include <gtest/gtest.h>

#include <QList>
#include <QString>

#include "bank/tables.h"
#include "knowledge/outline.h"
#include "platform/dbftable.h"
#include "support/test_env.h"

namespace mj::test {

// One row of dagang.mmd as a test writes it; therecn 0 is left blank.
struct DagangRow {
  DagangRow(QString a_ = {}, QString d_ = {}, QString r_ = {}, int n = 0, QString k_ = {}, QString b_ = {})
      : a(std::move(a_)), d(std::move(d_)), r(std::move(r_)), therecn(n), k(std::move(k_)), b(std::move(b_)) {}
  QString a;
  QString d;
  QString r;
  int therecn = 0;
  QString k;
  QString b;
};

inline void WriteDagang(const TestEnv& t, const QList<DagangRow>& rows,
                        const QList<DbfField>& fields = tables::OutlineFields()) {
  t.mkdir(QStringLiteral("\\dbf"));
  DbfTable tab = DbfTable::create(t.path(kOutlineTableFile), fields);
  ASSERT_TRUE(tab.isOpen()) << tab.error().toStdString();
  for (const DagangRow& row : rows) {
    const int r = tab.appendRow();
    ASSERT_GE(r, 0);
    auto set = [&](const char* name, const QString& v) {
      const int f = tab.fieldIndex(QString::fromLatin1(name));
      if (f >= 0 && !v.isEmpty()) tab.setText(r, f, v);
    };
    set("a", row.a);
    set("b", row.b);
    set("d", row.d);
    set("r", row.r);
    set("k", row.k);
    const int f = tab.fieldIndex(QStringLiteral("therecn"));
    if (f >= 0 && row.therecn != 0) tab.setNumber(r, f, row.therecn);
  }
  ASSERT_TRUE(tab.close());
}

// A rows' outline: depth by the number of blanks, record numbers 1.. in order.
inline QList<DagangRow> NumberedRows(const QList<QString>& texts) {
  QList<DagangRow> rows;
  for (qsizetype i = 0; i < texts.size(); ++i) {
    DagangRow r;
    r.a = texts[i];
    r.therecn = static_cast<int>(i + 1);
    rows << r;
  }
  return rows;
}

// The row of dagang.mmd with that record number, as the table holds it.
inline OutlineRow TableRow(const TestEnv& t, int therecn) {
  OutlineRow out;
  const DbfTable tab = DbfTable::open(t.path(kOutlineTableFile));
  for (const int rec : tab.rows())
    if (tab.number(rec, QStringLiteral("therecn")) == therecn) {
      out.a = tab.text(rec, QStringLiteral("a"));
      out.b = tab.trimmedText(rec, QStringLiteral("b"));
      out.c = tab.trimmedText(rec, QStringLiteral("c"));
      out.d = tab.trimmedText(rec, QStringLiteral("d"));
      out.r = tab.trimmedText(rec, QStringLiteral("r"));
      out.therecn = tab.trimmedText(rec, QStringLiteral("therecn"));
      out.k = tab.trimmedText(rec, QStringLiteral("k"));
    }
  return out;
}

}  // namespace mj::test
