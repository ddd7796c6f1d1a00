#pragma once
// Question update packages: a text file *.new of corrected and new
// questions, taken into the question tables and the bank files. Each item of
// a package begins with a line that starts with "●" and carries the ID of
// its question as "[本题标识ID：][" + ID + "]"; taking it in replaces the
// question's text (which then carries the ID tag: that is how a question is
// known to have been updated), resets its practice record, and files a copy
// under a new ID in the bank of every law its answer cites. The IDs written
// go into today's day file of \更新的题.
//
// The run keeps its changes in memory (UpdateStore) and writes every file
// once, at the end, when the program is closed during the run, and every
// few seconds of a long run: each file is replaced in one step, the
// directory table first, then the bank files, the item tables and the day
// file, so that a run broken off at any moment leaves every file whole, and
// the same package taken again with "是" brings every question to the state
// of a run that was not broken off.

#include <QElapsedTimer>
#include <QHash>
#include <QList>
#include <QString>
#include <functional>
#include <memory>
#include <optional>

#include "bank/bank_file_batch.h"
#include "platform/env.h"

namespace mj {

// Adds or refreshes the row of question `id` in \dbf\items.mmd (in
// \dbf\csitems.mmd for an ID that begins with "0") from the question's text:
// a new row gets the fixed values of a new question; then the practice
// record is reset to "no" and the citation, the answer key and the type are
// taken from the text. `type` 0 takes the type from the text's type tag.
// False when the table cannot be opened or written.
bool AltItemRow(const Env& env, const QString& id, const QString& text, int type = 0);

// The first item of text, from its first delimiter up to the next one (or
// the end), which text then starts with; empty when there is no delimiter.
QString TakeNextItem(QString& text, const QString& delimiter);
// The items of a text as TakeNextItem takes them one by one, without
// copying the rest of the text each time.
QList<QStringView> SplitItems(const QString& text, const QString& delimiter);
// An item as the run takes it: between CR LFs, each double CR LF made one
// (in one pass), without "●", with half-width brackets.
QString PreparedItem(const QString& item);
// The ID behind "[本题标识ID：][" up to the next "]", blanks and line breaks
// left out; empty when there is none, or when it is not 11 digits (a file
// name is made from it).
QString GetItemIdOfNewText(const QString& item);
// The distinct titles, with 《》, that the citation of a text names: from
// "答案：", then "参见", up to the next "■" or "[", or to the end.
QString GetLawCitedNames(const QString& text);
// Replaces the question's text in its bank file and refreshes its row.
bool ReplaceOneItem(const Env& env, const QString& id, const QString& text);

// The ask before a run, and the report after it.
QString UpdateQuestionText();
// n questions seen, m of them updated.
QString UpdateReportText(qsizetype seen, qsizetype updated);
inline const QString kUpdateDialogTitle = QStringLiteral("打开明镜学习伴侣3.10更题库所需源文件");
inline const QString kUpdateFilter = QStringLiteral("明镜学习伴侣更新源文件(*.new)|*.new");
inline const QString kNotAPackage = QStringLiteral("必须为*.new文件。");

// The files of a program folder an update changes, held until written.
class UpdateStore {
 public:
  explicit UpdateStore(const Env& env);
  ~UpdateStore();

  BankFileBatch& bankFiles() { return bankFiles_; }
  // AltItemRow on the item table of the ID.
  void AltItemRow(const QString& id, const QString& text, int type = 0);
  // NewItemID on \dbf\33ok.mmd.
  QString NewItemID(const QString& lawName, int type);

  // Called before and after each file takes its new content's place, with
  // the file's path; a test stops the program there.
  std::function<void(const QString& path)> onReplace;
  // Writes every change so far, and the day file: `updatedIds` in front of
  // what today's file held when the run began. The paths that could not be
  // written (empty when all were).
  QStringList write(const QString& updatedIds);

 private:
  class Table;
  class Directory;
  Table& table(const QString& id);

  Env env_;
  BankFileBatch bankFiles_;
  std::unique_ptr<Table> items_, csItems_;
  std::unique_ptr<Directory> directory_;
  QString dayFile_;
  QString dayListBefore_;
};

// What a run needs of the main window. A run without a window (tests,
// benchmarks) takes this base as it is: it shows nothing.
class UpdateView {
 public:
  virtual ~UpdateView() = default;
  virtual void showProgress(int /*maximum*/) {}
  virtual void setProgress(int /*value*/) {}
  virtual void hideProgress() {}
  virtual void setWaitCursor(bool /*wait*/) {}
  // Lets the window's pending events run (the close request among them).
  virtual void letEventsThrough() {}
};

// The state of the run that the close request reads.
struct UpdateState {
  qint16& runState;    // 3 idle, 2 letting events through, 1 inside an item
  QString& updatedIds;  // the IDs written, newest first
};

class UpdateRun {
 public:
  UpdateRun(const Env& env, UpdateView& view, UpdateState state);
  ~UpdateRun();

  // The whole run from the file dialog to the report. False when it did not
  // start (no file, not a package, cancelled) or was broken off.
  bool run();
  // The run on a package already chosen and answered: the items, the
  // writes and the report. `updateAgain` is the answer "是".
  bool takePackage(const QString& text, bool updateAgain);

  // The close request said "是" while the run let events through: what is
  // done so far is written, with the day file. The run goes on unless
  // stop() follows.
  void writeNow();
  void stop() { stopped_ = true; }
  bool stopped() const { return stopped_; }

  // The IDs passed over or written, newest first.
  const QString& seenIds() const { return seen_; }
  // A write every `items` items instead of every few seconds (tests).
  void writeEvery(int items) { writeEvery_ = items; }
  // Called at each item before its work, and before and after each file is
  // replaced; a test stops the program there.
  std::function<void(const QString& where)> onStep;

 private:
  void takeItem(const QString& item, bool updateAgain);
  void spreadToLaws(const QString& text);
  void writeFiles();

  Env env_;
  UpdateView& view_;
  UpdateState state_;
  std::unique_ptr<UpdateStore> store_;
  QString seen_;
  bool stopped_ = false;
  int writeEvery_ = 0;
  int sinceWrite_ = 0;
  QElapsedTimer lastWrite_;
  QStringList failed_;
};

}  // namespace mj
