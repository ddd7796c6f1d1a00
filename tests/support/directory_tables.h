#pragma once
// Small item and directory tables for tests of the counts, the run list and
// the directory grid.

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QString>

#include "bank/item_index.h"
#include "bank/tables.h"
#include "platform/dbftable.h"
#include "platform/vbtext.h"
#include "practice/answer_check.h"
#include "support/test_env.h"

namespace mj::test {

// One record entry of that day, at 10:32 unless told otherwise.
inline QString StoryEntry(const QDate& day, const QString& answer, const QTime& time = QTime(10, 32)) {
  return RecordEntry(QDateTime(day, time), answer);
}

struct ItemSpec {
  QString itemid;  // 11 characters; filename is its first 6
  QString story = QStringLiteral("no");
  QString answer = QStringLiteral("A");
  bool valid2 = true;
};

// Writes \dbf\<table> with the rows in order.
inline void WriteItemTable(const TestEnv& t, const QString& table, const QList<ItemSpec>& rows) {
  t.mkdir(QStringLiteral("\\dbf"));
  DbfTable tab = DbfTable::create(t.path(QStringLiteral("\\dbf\\") + table), tables::ItemFields());
  for (const ItemSpec& s : rows) {
    const int r = tab.appendRow();
    tab.setText(r, QStringLiteral("filename"), Left(s.itemid, 6));
    tab.setText(r, QStringLiteral("story"), s.story);
    tab.setText(r, QStringLiteral("answer"), s.answer);
    tab.setText(r, QStringLiteral("itemid"), s.itemid);
    tab.setLogical(r, QStringLiteral("valid2"), s.valid2);
    tab.setLogical(r, QStringLiteral("hasselect"), false);
    tab.setNumber(r, QStringLiteral("itemtype"), Val(Mid(s.itemid, 6, 1)));
  }
}

// The same rows as an index (trimmed, in table order).
inline ItemIndex IndexOf(const QList<ItemSpec>& rows) {
  ItemIndex index;
  for (const ItemSpec& s : rows) {
    ItemRow r;
    r.filename = Left(s.itemid, 6);
    r.story = Trim(s.story);
    r.answer = Trim(s.answer);
    r.itemid = s.itemid;
    r.valid2 = s.valid2;
    r.itemtype = static_cast<int>(Val(Mid(s.itemid, 6, 1)));
    index.append(r);
  }
  return index;
}

// A directory row: the 12 fields as text; numeric fields take numbers, an
// empty text leaves a field blank.
using DirSpec = QList<QString>;

inline void WriteDirectoryTable(const TestEnv& t, const QString& table, const QList<DirSpec>& rows) {
  t.mkdir(QStringLiteral("\\dbf"));
  DbfTable tab = DbfTable::create(t.path(QStringLiteral("\\dbf\\") + table), tables::DirectoryFields());
  const QList<DbfField> fields = tables::DirectoryFields();
  for (const DirSpec& row : rows) {
    const int r = tab.appendRow();
    for (int f = 0; f < row.size() && f < fields.size(); ++f) {
      if (row[f].isEmpty()) continue;
      if (fields[f].type == 'N')
        tab.setNumber(r, f, Val(row[f]));
      else
        tab.setText(r, f, row[f]);
    }
  }
}

// Field `field` of every row of a table, as text (numbers without decimals).
inline QStringList ColumnOf(const TestEnv& t, const QString& table, const QString& field) {
  const DbfTable tab = DbfTable::open(t.path(QStringLiteral("\\dbf\\") + table));
  QStringList out;
  const int f = tab.fieldIndex(field);
  for (int r : tab.rows()) {
    if (tab.isNull(r, f))
      out.append(QString());
    else if (tab.fields()[f].type == 'N')
      out.append(NumText(tab.number(r, f)));
    else
      out.append(tab.text(r, f));
  }
  return out;
}

}  // namespace mj::test
