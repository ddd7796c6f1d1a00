#pragma once
// Bank files changed many times in a row, held in memory and written once:
// what an update package does to hundreds of questions. Each change gives
// exactly the text that PutItemText, AppendItemText and GetOneOldTi give
// on the file (bank_text.h), without reading and rewriting the whole file
// per question.
//
// A file is kept as its blocks: the text is cut behind every CR LF that
// stands before a "●", so each piece but the first starts with "●" (with its
// marker "●n●" when it is a question). PutItemText squeezes blank lines and
// takes the CR LF behind every "●" away over the whole file; both touch only
// runs of CR LF, and no run reaches over a cut, so a piece that has neither
// a double CR LF nor "●" + CR LF stays as it is, and only the others (the
// new question, its neighbours, a fresh append, the file's end) are
// squeezed again per change.

#include <QHash>
#include <QList>
#include <QString>
#include <vector>

#include "platform/env.h"

namespace mj {

// One bank file's text in pieces.
class BankFileModel {
 public:
  explicit BankFileModel(const QString& fileText = QString());

  // The file's text as the file functions would have left it.
  QString text() const;
  // GetOneOldTi of question n.
  QString oldBlock(long long n) const;
  // PutItemText of question n with the text in bank form (BankFormOf).
  void put(long long n, const QString& bankText);
  // AppendItemText: the text (AppendedItemText) goes to the end.
  void append(const QString& appended);

 private:
  struct Piece {
    QString text;
    bool settled = false;  // no double CR LF and no "●" + CR LF in it
  };
  static bool settledText(const QString& t);
  // The pieces of a text that starts behind a cut (with "●").
  static std::vector<Piece> cut(const QString& text);
  // "●n●" opens piece i (i > 0).
  bool opens(std::size_t i, const QString& marker) const;
  // Squeezes every piece that is not settled; a piece that loses its last
  // CR LF joins the next one.
  void squeeze();
  // Cuts piece i again after its text grew.
  void recut(std::size_t i);

  std::vector<Piece> pieces_;
};

// The bank files of a program folder that a batch of changes touches.
class BankFileBatch {
 public:
  explicit BankFileBatch(const Env& env) : env_(env) {}

  QString GetOneOldTi(const QString& id);
  void PutItemText(const QString& id, const QString& text);
  void AppendItemText(const QString& id, const QString& text);

  // The files changed since the last markWritten, as paths with their
  // whole text.
  QList<std::pair<QString, QString>> changedFiles() const;
  void markWritten();
  void markWritten(const QString& path) { changed_.removeAll(path); }

 private:
  // The file of a suffix, read on first use; `changing` lists it among
  // the files to write.
  BankFileModel& model(const QString& suffix, bool changing);

  Env env_;
  QHash<QString, BankFileModel> files_;  // by path
  QList<QString> changed_;
};

}  // namespace mj
