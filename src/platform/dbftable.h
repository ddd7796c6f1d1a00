#pragma once
// dBASE tables (the .mmd files of \dbf), read and written through shapelib
// under their real file names. Text fields are GBK on disk. Rows are walked
// in table order; rows marked deleted are passed over, as the database
// engine did.
//
// A table that cannot be opened behaves as an empty one: every read gives
// nothing, every write fails, and error() says why (in words for the user,
// naming the file).
//
// The header is not taken on trust: a table holds at most the records its
// file holds in full, whatever record count its header gives, and a header
// whose fields do not fit in its records makes the table one that cannot be
// opened.

#include <QList>
#include <QString>
#include <QVariant>
#include <memory>
#include <optional>
#include <utility>

namespace mj {

struct DbfField {
  QString name;
  char type = 'C';  // 'C' text, 'N' number, 'L' logical, 'D' date
  int width = 10;
  int decimals = 0;
};

class DbfTable {
 public:
  enum class Mode { Read, ReadWrite };

  DbfTable();
  ~DbfTable();
  DbfTable(const DbfTable&) = delete;
  DbfTable& operator=(const DbfTable&) = delete;
  DbfTable(DbfTable&&) noexcept;
  DbfTable& operator=(DbfTable&&) noexcept;

  // Opens an existing table file by its real name (any extension).
  static DbfTable open(const QString& path, Mode mode = Mode::Read);
  // Creates (replacing) a table with the given fields; code page GBK.
  static DbfTable create(const QString& path, const QList<DbfField>& fields);

  bool isOpen() const;
  QString error() const;  // why the table is not open, or why the last write failed
  QString path() const;
  // Writes pending changes and closes the file; false (and error() says
  // why) when the system could not write them.
  bool close();
  // close(), and for a table opened for writing the data reaches the disk
  // before this returns (fdatasync), so that a power cut right after loses
  // nothing of it. False when the table was not open or the data could not
  // be written.
  bool closeDurably();

  QList<DbfField> fields() const;
  int fieldCount() const;
  int fieldIndex(const QString& name) const;  // without regard to case; -1 when absent

  // Physical record numbers 0..recordCount()-1, deleted ones included: the
  // records the file holds in full, at most headerRecordCount().
  int recordCount() const;
  // The record count the header gives, which may be more than the file holds.
  qint64 headerRecordCount() const;
  // The live rows in table order.
  QList<int> rows() const;

  // Field access by physical record number and field index (or name).
  bool isNull(int record, int field) const;  // blank field
  QString text(int record, int field) const;  // right blanks removed, left ones kept
  QString trimmedText(int record, int field) const;
  bool logical(int record, int field) const;  // T, t, Y, y
  double number(int record, int field) const;  // 0 for a blank or non-numeric field
  QVariant value(int record, int field) const;  // null variant for a blank field

  bool isNull(int record, const QString& field) const { return isNull(record, fieldIndex(field)); }
  QString text(int record, const QString& field) const { return text(record, fieldIndex(field)); }
  QString trimmedText(int record, const QString& field) const { return trimmedText(record, fieldIndex(field)); }
  bool logical(int record, const QString& field) const { return logical(record, fieldIndex(field)); }
  double number(int record, const QString& field) const { return number(record, fieldIndex(field)); }

  // Writes; a text longer than the field is cut at a character boundary.
  bool setText(int record, int field, const QString& value);
  bool setLogical(int record, int field, bool value);
  bool setNumber(int record, int field, double value);
  bool setNull(int record, int field);

  bool setText(int record, const QString& field, const QString& value) { return setText(record, fieldIndex(field), value); }
  bool setLogical(int record, const QString& field, bool value) { return setLogical(record, fieldIndex(field), value); }
  bool setNumber(int record, const QString& field, double value) { return setNumber(record, fieldIndex(field), value); }

  // Appends a blank row and returns its record number, -1 on failure.
  int appendRow();
  // Writes the current record and the header, so that another reader sees them.
  bool flush();

 private:
  struct Impl;
  std::unique_ptr<Impl> d;
};

// One pass over all rows of a table file, for loading a big table at once
// (the question index at start-up): the file is read in blocks, and the
// live rows come in table order with the same field values as DbfTable
// gives them. A file that ends inside a row gives the rows before it; a
// missing file or one without a sound header gives no rows and isOpen()
// false. Read only.
//
//   DbfScan scan(path);
//   const int f = scan.fieldIndex("itemid");
//   while (scan.next()) use(scan.trimmedText(f));
class DbfScan {
 public:
  explicit DbfScan(const QString& path);
  ~DbfScan();
  DbfScan(const DbfScan&) = delete;
  DbfScan& operator=(const DbfScan&) = delete;

  bool isOpen() const { return open_; }
  QString error() const { return error_; }
  const QList<DbfField>& fields() const { return fields_; }
  int fieldCount() const { return static_cast<int>(fields_.size()); }
  int fieldIndex(const QString& name) const;  // without regard to case; -1 when absent

  // Records of the table, deleted ones included: those the header gives,
  // as far as the file holds them in full.
  qint64 recordCount() const { return records_; }
  // Moves to the next live row; false when there is none.
  bool next();
  int record() const { return record_; }  // physical record number of the row

  // Fields of the current row.
  bool isNull(int field) const;
  QString text(int field) const;  // right blanks removed, left ones kept
  QString trimmedText(int field) const;
  bool logical(int field) const;
  double number(int field) const;
  // The field's bytes as they stand in the file; empty for a bad field.
  QByteArrayView bytes(int field) const;

 private:
  const char* raw(int field, int* width) const;
  bool fill();

  struct File;
  std::unique_ptr<File> file_;
  bool open_ = false;
  QString error_;
  QList<DbfField> fields_;
  QList<int> offset_;  // of each field inside a record
  qint64 records_ = 0;
  int recordLength_ = 0;
  QByteArray block_;         // records read ahead
  qsizetype blockRows_ = 0;  // complete records in block_
  qsizetype inBlock_ = -1;   // current record inside block_
  qint64 blockFirst_ = 0;    // record number of block_'s first record
  int record_ = -1;
  const char* row_ = nullptr;
};

// The equality filters of the program's queries:
//   select * from t                                -> Select(t, {})
//   ... where valid2=true                          -> Select(t, {{"valid2", true}})
//   ... where filename='x'                         -> Select(t, {{"filename", "x"}})
//   ... where filename='x' and valid2=true         -> both
//   ... where itemid='id'                          -> Select(t, {{"itemid", id}})
// A text condition compares the field without its right blanks; a bool one
// the logical value. An unknown field matches nothing.
using DbfCondition = std::pair<QString, QVariant>;
QList<int> Select(const DbfTable& table, const QList<DbfCondition>& where);

}  // namespace mj
