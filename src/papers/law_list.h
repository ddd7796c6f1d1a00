#pragma once
// The law-name list \dbf\listbox.mmd in its three orderings, for the pick
// lists of the question editor and the batch replacement window: an
// ordering (Combo1) gives its groups (Combo2), a group the law names
// (Combo3). Fields: lawname (with 《》), f (paper 1 to 3), c (first letter of
// the romanised name, A to Z), lei (class number from 1).

#include <QString>
#include <QStringList>
#include <QVariant>

#include "platform/env.h"

namespace mj {

// "按试卷顺序", "按字母顺序", "按类别顺序".
QStringList LawOrderEntries();
// The groups of ordering `order` (0, 1, 2 as above); none for another value.
QStringList LawGroupEntries(int order);

// What a group picks: records whose `field` equals `value`.
struct LawGroupFilter {
  QString field;
  QVariant value;  // a number for f and lei, a letter for c
};
// The filter of group `group` (0-based place in its list) of ordering
// `order`: f = group + 1; c = the fourth character of the entry; lei =
// group + 1. An empty field for a place outside the list.
LawGroupFilter LawFilterOf(int order, int group);

// PutDataTocombo3: the lawname of every record of the table whose field
// equals the value, in stored order, trimmed. A table that cannot be read
// gives none.
QStringList PutDataTocombo3(const Env& env, const QString& field, const QVariant& value);

// The law's name without 《 and 》.
QString BareLawName(const QString& name);

}  // namespace mj
