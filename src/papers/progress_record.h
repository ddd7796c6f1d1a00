#pragma once
// The progress record of a paper: a small INI file beside the paper, named as
// the paper with the extension ".rec". Section "1", "2" or "3" (the paper's
// section) holds one key per question number answered: "OKOK" when it was
// last answered right, else the letters last pressed (AC). Section "做到题类"
// and "做到编号", key "答", hold the section and the number of the question
// answered last. An absent key means not yet done.
//
// Reading is a pure function of the file's bytes, so that any file (cut
// off, empty, random bytes) reads without harm. Writing one answer replaces
// the whole file at once (a temporary file, flushed to the disk, takes the
// record's place): a crash leaves the record before or after the answer,
// never anything between.

#include <QByteArray>
#include <QString>

#include "platform/inifile.h"

namespace mj {

class ProgressRecord {
 public:
  ProgressRecord() = default;
  // The record of a file's bytes, decoded as the program's INI files are.
  static ProgressRecord FromBytes(const QByteArray& bytes);
  // The record file read; a file that does not exist gives an empty record
  // for which exists() is false.
  static ProgressRecord Read(const QString& path);

  bool exists() const { return exists_; }
  // The value of question n of section t ("" when not done).
  QString value(int t, qint64 n) const;
  // The two "答" values, read as numbers (their numeric prefix, 0 for none).
  double lastSection() const;
  double lastNumber() const;

 private:
  IniDocument ini_;
  bool exists_ = false;
};

// "OKOK", compared without regard to case.
bool IsOkValue(const QString& value);

// The record text with one answer in it: value (upper-cased) under key n of
// section t, and t and n as the question answered last. The same text that
// three writes with the profile function would leave.
QString RecordWithAnswer(const QString& recordText, int t, qint64 n, const QString& value);

// Writes one answer into the record file, replacing it atomically and on the
// disk when this returns true. False when the file could not be written, or
// exists but could not be read (it is then left as it is, so that no earlier
// answer is lost).
bool WriteAnswerRecord(const QString& recFile, int t, qint64 n, const QString& value);

}  // namespace mj
