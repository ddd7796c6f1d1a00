#pragma once
// Program folders of any size, for benchmarks and tests: N questions in M
// internal banks under a directory with nested headings, simulated papers,
// K laws of A articles each with citations into them, and practice records
// of every shape the program meets. Everything written is generated data
// (生成数据) and says so.
//
//   mj::gen::Sizes s;
//   s.questions = 20000;
//   s.banks = 60;
//   s.laws = 20;
//   s.articles = 400;
//   QString error;
//   mj::gen::Result r;
//   if (!mj::gen::Generate(folder, s, &error, &r)) ...

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include "bank/item_index.h"

namespace mj::gen {

struct Sizes {
  int questions = 1000;               // questions of the internal banks, in all (items.mmd)
  int banks = 12;                     // internal banks: leaves of 33ok.mmd
  int laws = 3;                       // laws; law k (from 0) has numbering type k % 3 + 1
  int articles = 100;                 // articles of every law
  int papers = 1;                     // simulated papers (csface.mmd, csitems.mmd)
  int paperQuestions = 30;            // questions of each simulated paper
  int codesPerGroup = 10;             // bank codes under one top heading of the directory
  QDate today = QDate(2026, 11, 21);  // the day the practice records are written against
  // Every record as long as the program keeps one (FullStoryText) instead
  // of the five shapes below: for the statistics' benchmarks.
  bool fullRecords = false;
};

// The shapes of practice records (field story). Question i of an item table
// (0-based, table order) gets shape i % kStoryShapes.
enum class Story {
  Never,           // "no"
  OneRight,        // one right entry, days ago
  WrongThenRight,  // right entries (newest first), the oldest entry wrong
  Eight,           // eight right entries
  Future,          // two right entries dated after today
};
inline constexpr int kStoryShapes = 5;
Story StoryShapeOf(int i);
// The record of question i in shape `shape` for the answer key `key`.
QString StoryText(Story shape, int i, const QString& key, const QDate& today);
// A record of ten entries (200 characters, the longest the program keeps:
// a longer one is cut to 160) over the last 90 days or so, newest first, 8
// to 10 days apart; the oldest entry is wrong for every second question.
QString FullStoryText(int i, const QString& key, const QDate& today);
// The program's due test with the settings a new user has (done right once,
// one more after a wrong answer, 30 days apart): the eligible counts that
// the directory tables are written with.
bool DueWithDefaults(const QString& story, const QString& key, const QDate& today);

// Long practice records, for what reads them over a whole index (the wrong
// book): every live question i of index (0-based) gets `entries` entries an
// hour apart, the newest at `newest` less i % 24 hours, each the question's
// key, except the newest entry of the questions with i % every == at: a
// wrong answer of the same kind as the key, never the key itself. Gives how
// many live questions got that wrong newest entry.
int LongRecords(ItemIndex& index, const QDateTime& newest, int entries, int every, int at);

// Names of the generated things.
QString LawName(int k);    // 生成法律1 for k = 0 (file lawtxt\生成法律1.mmd)
QString LawTitle(int k);   // 《生成法律1》
QString LawCode(int k);    // 10001 for k = 0
int LawType(int k);        // 1, 2, 3, 1, ...
QString BankName(int b);   // six characters: code and type of internal bank b (from 0)
QString PaperCode(int p);  // 00001 for p = 0

// The text of an update package for a folder of these sizes: `items`
// items, item k correcting question k / banks + 1 of bank k % banks (so
// that no question comes twice while items <= questions), with a new stem,
// key and note, citing one law, or two for every third item. ids, when
// given, gets the questions' IDs in the package's order.
QString UpdatePackage(const Sizes& sizes, int items, QStringList* ids = nullptr);

struct Result {
  int questions = 0;       // rows of items.mmd
  int paperQuestions = 0;  // rows of csitems.mmd
  int directoryRows = 0;   // rows of 33ok.mmd
  int headings = 0;        // heading rows of 33ok.mmd
  int citations = 0;       // entries of all aboutlaw lists
  QStringList lawFiles;    // lawtxt\*.mmd written
};

// Writes the program folder at root (made when missing; files of the same
// names are replaced). False with *error on bad sizes or a write failure.
bool Generate(const QString& root, const Sizes& sizes, QString* error, Result* result = nullptr);

}  // namespace mj::gen
