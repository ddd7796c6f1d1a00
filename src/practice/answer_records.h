#pragma once
// What the answer step and the answer window change on disk besides the
// practice record: the day file of uncertain questions and a question hidden
// by the user; and what they read: the discussion address of a question and
// the question behind an exchange number.

#include <QString>

#include "bank/item_index.h"
#include "platform/env.h"

namespace mj {

// Puts id in front of the ID list of today's file of uncertain questions,
// \模糊题\ + yyyymmdd.ini (the folder is made when it is missing). False
// when it cannot be written.
bool MarkUncertain(const Env& env, const QString& id);

// Hides question id for good: valid2 false in its row of the item table
// (folder, table), and column 7 false in every row of the working index with
// that ID. False when the table row could not be written.
bool HideTheItem(const QString& folder, const QString& table, const QString& id, ItemIndex& itemData);

// The discussion address of question id: from its row in the item table,
// when the field boardid is there and not blank, newsLink1 + "?boardid=" +
// boardid + "&id=" + topicid + newsLink3. Empty otherwise (tables without
// the forum fields have none).
QString DiscussionLink(const QString& folder, const QString& table, const QString& id, const QString& newsLink1,
                       const QString& newsLink3);

// The exchange number box of the answer window, after each change.
struct ExchangeStep {
  enum Kind {
    Nothing,   // the box holds the current question's number or no number
    Unknown,   // a number that no question of the index has: "该交流号不存在。"
    Question,  // the question `id` is to be shown
  };
  Kind kind = Nothing;
  QString text;  // the box's text after "**" became "*"
  QString id;    // the 11 characters behind the first "*"
};
// Reads the box: "**" becomes "*"; the current question's "*" + ID + "*"
// does nothing; otherwise the last "*" must stand at place 13 behind a
// first "*" (the form "*" + 11 characters + "*"), and the ID must be in the
// whole index (column 5).
ExchangeStep ReadExchangeNumber(const QString& boxText, const QString& currentId, const ItemIndex& allItemData);

// The message of an exchange number that no question has.
inline const QString kNoSuchExchangeNumber = QStringLiteral("该交流号不存在。");

}  // namespace mj
