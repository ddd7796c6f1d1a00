#pragma once
// The question index: the rows of an item table in memory, in table order.
// The program's row 1 is element 0 of the list; its columns 1 to 9 are the
// fields below, in the order of the item table.
//
// Also the table operations on single questions: a new ID in a bank, and the
// row of a question added or refreshed by an update.

#include <QList>
#include <QString>

#include "platform/env.h"

namespace mj {

struct ItemRow {
  QString filename;        // 1: first 6 ID characters (trimmed)
  QString story;           // 2: practice record (trimmed)
  QString answer;          // 3: answer key (trimmed)
  QString aboutlaw;        // 4: flat citation list (trimmed)
  QString itemid;          // 5: the 11-character ID (trimmed)
  QString hastest;         // 6 (trimmed)
  bool valid2 = false;     // 7: live question
  bool hasselect = false;  // 8
  int itemtype = 0;        // 9: 1, 2 or 3

  bool operator==(const ItemRow&) const = default;
};

using ItemIndex = QList<ItemRow>;

// Reads every row of the table `table` in the folder `folder` into `array`,
// in table order. The six text columns are trimmed; valid2, hasselect and
// itemtype are taken as they are. Window events are let through once a
// second. A table that cannot be opened leaves `array` empty; a table whose
// file ends inside a row gives the rows before it.
void ReadData2ItemData(const QString& folder, const QString& table, ItemIndex& array);

// Makes the working index `itemData` a copy of `array`. An empty `array`
// leaves `itemData` empty, which is the state of the simulated runs: every
// lookup in it comes up empty.
void SetWorkItemData(ItemIndex& itemData, const ItemIndex& array);

// Releases the index: the array is emptied and its memory given back.
// rowCount, the number of rows the caller had, changes nothing.
void MyEraseItemData(ItemIndex& array, qsizetype rowCount);

// The ID at place i (from 1) of an ID list: the 11 characters from
// (i - 1) * 11 + 1. Empty past the end of the list (and for i below 1).
QString GetItemID(const QString& list, qsizetype i);

// Place (from 1) of the first row whose itemid is `id`, walking from row 1;
// 0 when there is none.
qsizetype FindItemRow(const ItemIndex& index, const QString& id);
// That row, or nullptr.
const ItemRow* FindItem(const ItemIndex& index, const QString& id);
ItemRow* FindItem(ItemIndex& index, const QString& id);

// The ID every question gets when no directory row fits its law and type.
inline const QString kFallbackItemId = QStringLiteral("90001300001");

// A new ID in the bank of law `lawName` and question type `type` (1, 2, 3):
// the first row of \dbf\33ok.mmd with a, b and f filled whose a holds the
// law name and the type word ("单项选择题", "多项选择题", "任意选择题"). The ID is
// the bank code of its b, the type, and f + 1 in 5 digits; f is raised to
// f + 1. When no row fits: kFallbackItemId, and nothing changes.
QString NewItemID(const Env& env, const QString& lawName, int type);

}  // namespace mj
