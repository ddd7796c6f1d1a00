#pragma once
// Rows of an item table with every field set, for tests that read the
// question index back or change rows.

#include <gtest/gtest.h>

#include <QList>
#include <QString>

#include "bank/item_index.h"
#include "bank/tables.h"
#include "platform/dbftable.h"
#include "support/test_env.h"

namespace mj::test {

struct TableRow {
  QString filename, story, answer, aboutlaw, itemid, hastest;
  bool valid2 = true;
  bool hasselect = false;
  int itemtype = 1;
};

inline void writeItems(const TestEnv& t, const QString& table, const QList<TableRow>& rows) {
  t.mkdir(QStringLiteral("\\dbf"));
  DbfTable tab = DbfTable::create(t.path(QStringLiteral("\\dbf\\") + table), tables::ItemFields());
  ASSERT_TRUE(tab.isOpen());
  for (const TableRow& s : rows) {
    const int r = tab.appendRow();
    tab.setText(r, QStringLiteral("filename"), s.filename);
    tab.setText(r, QStringLiteral("story"), s.story);
    tab.setText(r, QStringLiteral("answer"), s.answer);
    tab.setText(r, QStringLiteral("aboutlaw"), s.aboutlaw);
    tab.setText(r, QStringLiteral("itemid"), s.itemid);
    tab.setText(r, QStringLiteral("hastest"), s.hastest);
    tab.setLogical(r, QStringLiteral("valid2"), s.valid2);
    tab.setLogical(r, QStringLiteral("hasselect"), s.hasselect);
    tab.setNumber(r, QStringLiteral("itemtype"), s.itemtype);
  }
}

inline TableRow plainRow(const QString& id) {
  return {id.left(6), QStringLiteral("no"), QStringLiteral("A"), QStringLiteral("《刑法》1．"), id, QString(), true,
          false,      id.mid(5, 1).toInt()};
}

inline ItemRow indexRow(const QString& id) {
  ItemRow r;
  r.filename = id.left(6);
  r.story = QStringLiteral("no");
  r.answer = QStringLiteral("A");
  r.aboutlaw = QStringLiteral("《刑法》1．");
  r.itemid = id;
  r.valid2 = true;
  r.itemtype = id.mid(5, 1).toInt();
  return r;
}

}  // namespace mj::test
