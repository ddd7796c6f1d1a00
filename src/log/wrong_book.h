#pragma once
// 错题本, the book of the questions last answered wrong: every live question
// of the internal banks (the question index) and of the simulated papers
// (\dbf\csitems.mmd) whose newest practice entry is a wrong answer, grouped
// by bank. Nothing of it is stored: it is worked out from the practice
// records each time, so that a question leaves the book as soon as it is
// answered right, by the same records the banks use.
//
// A practice record (story) holds entries of 20 characters, newest first:
// the time as yyyy-mm-dd hh:mm and the answer given, right-aligned in 4. An
// entry is wrong when its trimmed answer is not the question's key (the
// answer field of the item table), as the practice log judges answers.

#include <QList>
#include <QString>

#include "bank/item_index.h"
#include "log/practice_log.h"
#include "platform/env.h"

namespace mj {

struct WrongBankGroup {
  QString bank;    // the 6 characters of its questions' filename field
  QString title;   // the bank's label in the directory; its 6 characters when there is none
  QString ids;     // the wrong questions, 11 characters each, in table order
  int count = 0;   // how many
  QString newest;  // the time of the newest wrong answer among them, yyyy-mm-dd hh:mm
};

struct WrongBook {
  // The banks, the one with the newest wrong answer first (banks of equal
  // time in table order).
  QList<WrongBankGroup> groups;
  // Every wrong question, bank after bank in the order above.
  QString allIds() const;
  int count() const;
};

// Whether the newest entry of a record (trimmed, as the index holds it) is
// a wrong answer to key; *when gets its time. A record without a whole
// entry ("no") is never wrong.
bool NewestEntryWrong(const QString& story, const QString& key, QString* when = nullptr);

// The book of the live questions of `internal` (the question index) and of
// \dbf\csitems.mmd.
WrongBook BuildWrongBook(const Env& env, const ItemIndex& internal);
// The same from the program folder alone (\dbf\items.mmd read as well), for
// front ends without the program's index in memory.
WrongBook ReadWrongBook(const Env& env);

// What the window (and the command line) says of a book without questions.
inline const QString kWrongBookEmpty =
    QStringLiteral("错题本中没有题：做过的题最近一次都做对了，或者还没有做过题。");

// The book as the list grid shows it, in the style of the practice log:
// the bank, the count, the date of the newest wrong answer.
QString WrongBookFormat();
LogGrid WrongBookGrid(const WrongBook& book);

}  // namespace mj
