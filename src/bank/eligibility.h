#pragma once
// Which question is due. The decision is one test on a question's practice
// record (IsOkItem); around it stand the counts of due questions per bank that
// the directory tables keep in their field oknum, the run list of one bank,
// and the day stamp that makes the internal bank count once a day.
//
// A practice record ("story") is a row of 20-character entries, newest first:
// "yyyy-mm-dd hh:mm" and the given answer right-aligned in 4 characters. A
// question never done holds "no". A wrong answer replaces the whole record by
// its own entry, so the oldest entry is the last wrong answer or the very
// first answer, and every later entry is a right one.
//
// The internal bank is counted once a day: the settings keep the day stamp
// (DayStamp, settings/settings.h) of the last count.

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

#include "bank/item_index.h"

namespace mj {

// The scheduling numbers of one run, with the review flag of 查卷 and the day
// the test is made on.
struct Schedule {
  int okTimes = 1;         // right answers after which a question is finished
  int addNum = 1;          // extra right answers required after a wrong one
  int passDays = 30;       // days that must lie between two attempts
  bool isChaJuan = false;  // a wrong oldest entry makes a question due at once
  QDate today;
};

// The due test on a practice record. `story` is trimmed in place. The days
// passed since the newest entry are counted as years * 365 + months * 30 +
// days (so the 31st to the 1st of the next month is 0 days). A record whose
// first 16 characters are no date is not due. `answer` is the question's key.
bool IsOkItem(QString& story, int okTimes, int addNum, int passDays, const QString& answer, bool isChaJuan,
              const QDate& today);
inline bool IsOkItem(QString& story, const Schedule& s, const QString& answer) {
  return IsOkItem(story, s.okTimes, s.addNum, s.passDays, answer, s.isChaJuan, s.today);
}

// The date of a record entry from its first 16 characters ("yyyy-mm-dd hh:mm",
// months, days and hours also with one digit, "/" also as date separator);
// nothing when they are no valid date and time.
std::optional<QDate> EntryDate(QStringView story);

// What a count reports while it runs: the maximum of the bar once, then the
// position as questions are counted. Either may be empty.
struct CountProgress {
  std::function<void(int maximum)> setMaximum;
  std::function<void(int value)> setValue;
};

// The count over the question index, for the internal bank. For every row of
// the directory table `faceTable` whose field b ends in ".mmd" (any case), the
// bank is the text of b between its last "\" and its last "."; every index row
// of that bank (column 1) with valid2 true counts in f, and those that pass
// IsOkItem in oknum. A row without such a file receives the numbers of the
// row before it (0 and 0 before the first bank). The bar goes from 1 up by
// one per question counted; its maximum is the number of live questions of
// the index, the in-memory copy of `itemTable`. Returns false when the
// directory table cannot be opened for writing or written.
bool NewIniDbfData(const QString& folder, const QString& faceTable, const QString& itemTable, const ItemIndex& index,
                   const Schedule& schedule, const CountProgress& progress = {});

// The same count done the long way: one walk of the whole index per directory
// row, the bar's maximum from a query of the live rows of `itemTable`. Same
// numbers as NewIniDbfData; kept to check the fast count against.
bool NewIniDbfDataByWalk(const QString& folder, const QString& faceTable, const QString& itemTable,
                         const ItemIndex& index, const Schedule& schedule, const CountProgress& progress = {});

// The count over the tables, for the simulated papers (which have no index).
// For every directory row whose b ends in ".mmd", the bank is the 6
// characters Mid(b, Len(b) - 9, 6); the rows of `itemTable` with that
// filename are tested with IsOkItem, hidden ones included, and oknum gets the
// count (0 when the bank has no rows). f is not touched. A row without a file
// receives the count of the row before it. Returns true when the count is
// whole: false when the directory table cannot be written, when the item
// table cannot be read or lacks filename, story or answer (then nothing is
// written), or when it holds fewer rows than its header gives (then the rows
// it holds are counted).
bool IniDbfData(const QString& folder, const QString& faceTable, const QString& itemTable, const Schedule& schedule,
                const CountProgress& progress = {});

// The banks the directory table `faceTable` points at, in table order, as
// the counts above find them: for the internal banks (simulated false) the
// text of b between its last "\" and its last "."; for the simulated papers
// the 6 characters Mid(b, Len(b) - 9, 6). Only rows whose b ends in ".mmd"
// (any case) point at a bank. Empty when the table cannot be read.
QStringList DirectoryBanks(const QString& folder, const QString& faceTable, bool simulated);

// The rows of the item table a run works on: the live rows of one bank, in
// table order. The answer step writes each new practice record into the row
// of its question here. The table is opened anew for each read or write,
// so that a row changed meanwhile through another handle (a hidden
// question) is never written back with old values.
class RunRecordSet {
 public:
  RunRecordSet() = default;
  RunRecordSet(QString tablePath, QList<int> records) : path_(std::move(tablePath)), records_(std::move(records)) {}

  const QString& tablePath() const { return path_; }
  // Physical record numbers of the rows, in table order.
  const QList<int>& records() const { return records_; }
  bool isEmpty() const { return records_.isEmpty(); }

  // The first row of the set, walking from its first one, whose itemid is
  // `id`; nothing when the set has none (or the table cannot be opened).
  std::optional<int> findRecord(const QString& id) const;
  // The trimmed story of a record of the set; empty when it cannot be read.
  QString story(int record) const;
  // Writes the story of a record of the set; false when it cannot.
  bool setStory(int record, const QString& story) const;
  // findRecord, story and setStory in one opening of the table: the first
  // row of the set whose itemid is `id` gets the story `next` makes of its
  // trimmed story, and is on the disk (fdatasync) when this returns. Returns
  // the story made; nothing when the set has no such row. A table that
  // cannot be opened for writing, has no story field or cannot be written
  // still gives the story, which is then not written: writeProblem (when
  // given) says why, in words for the user naming the file, and is empty
  // when the story was written.
  std::optional<QString> updateStory(const QString& id, const std::function<QString(const QString& story)>& next,
                                     QString* writeProblem = nullptr) const;

 private:
  QString path_;
  QList<int> records_;
};

struct RunList {
  QString ids;           // the IDs of the due questions, 11 characters each, no separator
  RunRecordSet records;  // the rows walked to find them
};

// The run list of one bank: the rows of `itemTable` with filename `bankName`
// and valid2 true, in table order, whose trimmed story and answer pass
// IsOkItem; their itemid values written one behind the other.
RunList GetLongID(const QString& folder, const QString& itemTable, const QString& bankName, const Schedule& schedule);

// The rows of `itemTable` whose itemid is one of the IDs of an ID list, in
// table order: where the answers of a run over a given list are written.
RunRecordSet RecordsOfList(const QString& folder, const QString& itemTable, const QString& ids);

}  // namespace mj
