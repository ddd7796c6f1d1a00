#pragma once
// The question index: the rows of an item table in memory, in table order.
// The program's row 1 is element 0 of the list; its columns 1 to 9 are the
// fields below, in the order of the item table.

#include <QList>
#include <QString>

namespace mj {

struct ItemRow {
  QString filename;  // 1: first 6 ID characters (trimmed)
  QString story;     // 2: practice record (trimmed)
  QString answer;    // 3: answer key (trimmed)
  QString aboutlaw;  // 4: flat citation list (trimmed)
  QString itemid;    // 5: the 11-character ID (trimmed)
  QString hastest;   // 6 (trimmed)
  bool valid2 = false;     // 7: live question
  bool hasselect = false;  // 8
  int itemtype = 0;        // 9: 1, 2 or 3
};

using ItemIndex = QList<ItemRow>;

}  // namespace mj
