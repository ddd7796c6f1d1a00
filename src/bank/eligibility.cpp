#include "bank/eligibility.h"

#include <QHash>

#include "app/text_toolkit.h"
#include "platform/dbftable.h"
#include "platform/events.h"
#include "platform/paths.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

// Reads 1 to maxDigits digits at s[i]; false when there is none.
bool readNumber(const QString& s, qsizetype& i, int maxDigits, int& value) {
  value = 0;
  int digits = 0;
  while (i < s.size() && digits < maxDigits && s[i] >= u'0' && s[i] <= u'9') {
    value = value * 10 + (s[i].unicode() - u'0');
    ++i;
    ++digits;
  }
  return digits > 0;
}

// The directory's bank file test: b not blank and ending in ".MMD" in upper case.
bool hasBankFile(const DbfTable& face, int record, int fieldB) {
  if (fieldB < 0 || face.isNull(record, fieldB)) return false;
  return UCase(Right(face.text(record, fieldB), 4)) == QStringLiteral(".MMD");
}

// The number of live questions of the item table: the bar's maximum.
int liveQuestionCount(const QString& folder, const QString& itemTable) {
  const DbfTable items = DbfTable::open(AppPath(folder, itemTable));
  return static_cast<int>(Select(items, {{QStringLiteral("valid2"), true}}).size());
}

struct BankCount {
  int total = 0;
  int ok = 0;
};

// Shared frame of both index counts: opens the directory table, sets the
// bar, walks the rows and writes f and oknum. `countBank` gives the numbers
// of one bank.
bool writeIndexCounts(const QString& folder, const QString& faceTable, const QString& itemTable,
                      const CountProgress& progress, const std::function<BankCount(const QString& bank)>& countBank) {
  if (progress.setMaximum) progress.setMaximum(liveQuestionCount(folder, itemTable));
  int bar = 1;
  if (progress.setValue) progress.setValue(bar);

  DbfTable face = DbfTable::open(AppPath(folder, faceTable), DbfTable::Mode::ReadWrite);
  if (!face.isOpen()) return false;
  const int fieldB = face.fieldIndex(QStringLiteral("b"));
  const int fieldF = face.fieldIndex(QStringLiteral("f"));
  const int fieldOk = face.fieldIndex(QStringLiteral("oknum"));
  Breather breather;
  BankCount count;
  for (int r : face.rows()) {
    if (hasBankFile(face, r, fieldB)) {
      count = countBank(GetSmallTxtName(face.text(r, fieldB)));
      bar += count.total;
      if (progress.setValue) progress.setValue(bar);
    }
    face.setNumber(r, fieldOk, count.ok);
    face.setNumber(r, fieldF, count.total);
    breather.tick();
  }
  face.close();
  return true;
}

}  // namespace

std::optional<QDate> EntryDate(const QString& story) {
  const QString s = Trim(Left(story, 16));
  qsizetype i = 0;
  int year = 0, month = 0, day = 0;
  auto sep = [&](QChar c) { return i < s.size() && s[i] == c; };
  if (!readNumber(s, i, 4, year) || i != 4) return std::nullopt;
  if (!sep(u'-') && !sep(u'/')) return std::nullopt;
  const QChar dateSep = s[i++];
  if (!readNumber(s, i, 2, month) || !sep(dateSep)) return std::nullopt;
  ++i;
  if (!readNumber(s, i, 2, day)) return std::nullopt;
  const QDate date(year, month, day);
  if (!date.isValid()) return std::nullopt;
  if (i == s.size()) return date;
  // The time of day: blanks, then h:mm with optional seconds.
  if (s[i] != u' ') return std::nullopt;
  while (i < s.size() && s[i] == u' ') ++i;
  int hour = 0, minute = 0, second = 0;
  if (!readNumber(s, i, 2, hour) || !sep(u':')) return std::nullopt;
  ++i;
  if (!readNumber(s, i, 2, minute)) return std::nullopt;
  if (sep(u':')) {
    ++i;
    if (!readNumber(s, i, 2, second)) return std::nullopt;
  }
  if (i != s.size() || hour > 23 || minute > 59 || second > 59) return std::nullopt;
  return date;
}

bool IsOkItem(QString& story, int okTimes, int addNum, int passDays, const QString& answer, bool isChaJuan,
              const QDate& today) {
  story = Trim(story);
  const qsizetype n = Len(story) / 20;
  if (n == 0) return true;
  const std::optional<QDate> d = EntryDate(story);
  if (!d) return false;  // the conversion fails: not due
  const int passed = (today.year() - d->year()) * 365 + (today.month() - d->month()) * 30 + (today.day() - d->day());
  if (passed < passDays) return false;
  if (Trim(Right(story, 4)) != Trim(answer)) {
    // The oldest entry is a wrong answer; n - 1 right answers came after it.
    if (isChaJuan) return true;
    return n - 1 < okTimes + addNum;
  }
  return n < okTimes;
}

qint16 MonthDayStamp(const QDate& date) { return static_cast<qint16>(Val(CStr(date.month()) + CStr(date.day()))); }

bool NewIniDbfData(const QString& folder, const QString& faceTable, const QString& itemTable, const ItemIndex& index,
                   const Schedule& schedule, const CountProgress& progress) {
  // One walk of the index gives every bank's numbers; a directory row then
  // looks its bank up. The per-row walk gives the same numbers, as the test
  // of a question does not depend on the directory row.
  QHash<QString, BankCount> banks;
  banks.reserve(1024);
  for (const ItemRow& row : index) {
    if (!row.valid2) continue;
    BankCount& c = banks[row.filename];
    ++c.total;
    QString story = row.story;
    if (IsOkItem(story, schedule, row.answer)) ++c.ok;
  }
  return writeIndexCounts(folder, faceTable, itemTable, progress,
                          [&banks](const QString& bank) { return banks.value(bank); });
}

bool NewIniDbfDataByWalk(const QString& folder, const QString& faceTable, const QString& itemTable,
                         const ItemIndex& index, const Schedule& schedule, const CountProgress& progress) {
  return writeIndexCounts(folder, faceTable, itemTable, progress, [&](const QString& bank) {
    BankCount c;
    for (const ItemRow& row : index) {
      if (row.filename != bank || !row.valid2) continue;
      ++c.total;
      QString story = row.story;
      if (IsOkItem(story, schedule, row.answer)) ++c.ok;
    }
    return c;
  });
}

bool IniDbfData(const QString& folder, const QString& faceTable, const QString& itemTable, const Schedule& schedule,
                const CountProgress& progress) {
  const DbfTable items = DbfTable::open(AppPath(folder, itemTable));
  if (progress.setMaximum) progress.setMaximum(static_cast<int>(items.rows().size()));
  int bar = 0;

  DbfTable face = DbfTable::open(AppPath(folder, faceTable), DbfTable::Mode::ReadWrite);
  if (!face.isOpen()) return false;
  const int fieldB = face.fieldIndex(QStringLiteral("b"));
  const int fieldOk = face.fieldIndex(QStringLiteral("oknum"));
  const int fieldStory = items.fieldIndex(QStringLiteral("story"));
  const int fieldAnswer = items.fieldIndex(QStringLiteral("answer"));
  Breather breather;
  QString bank;
  int count = 0;
  for (int r : face.rows()) {
    if (hasBankFile(face, r, fieldB)) {
      const QString b = face.text(r, fieldB);
      // A name too short for the 6 characters leaves the bank as it was.
      if (const std::optional<QString> m = MidChecked(b, Len(b) - 9, 6)) bank = *m;
      count = 0;
      for (int q : Select(items, {{QStringLiteral("filename"), bank}})) {
        QString story = items.text(q, fieldStory);
        if (IsOkItem(story, schedule, items.text(q, fieldAnswer))) ++count;
        if (progress.setValue) progress.setValue(++bar);
        breather.tick();
      }
    }
    face.setNumber(r, fieldOk, count);
  }
  face.close();
  return true;
}

std::optional<int> RunRecordSet::findRecord(const QString& id) const {
  if (records_.isEmpty()) return std::nullopt;
  const DbfTable t = DbfTable::open(path_);
  const int fieldId = t.fieldIndex(QStringLiteral("itemid"));
  if (fieldId < 0) return std::nullopt;
  for (int r : records_)
    if (t.trimmedText(r, fieldId) == id) return r;
  return std::nullopt;
}

QString RunRecordSet::story(int record) const {
  const DbfTable t = DbfTable::open(path_);
  return t.trimmedText(record, t.fieldIndex(QStringLiteral("story")));
}

bool RunRecordSet::setStory(int record, const QString& story) const {
  DbfTable t = DbfTable::open(path_, DbfTable::Mode::ReadWrite);
  const bool ok = t.setText(record, QStringLiteral("story"), story);
  t.close();
  return ok;
}

RunList GetLongID(const QString& folder, const QString& itemTable, const QString& bankName, const Schedule& schedule) {
  RunList out;
  const QString path = AppPath(folder, itemTable);
  const DbfTable items = DbfTable::open(path);
  const QList<int> rows = Select(items, {{QStringLiteral("filename"), bankName}, {QStringLiteral("valid2"), true}});
  out.records = RunRecordSet(path, rows);
  const int fieldStory = items.fieldIndex(QStringLiteral("story"));
  const int fieldAnswer = items.fieldIndex(QStringLiteral("answer"));
  const int fieldId = items.fieldIndex(QStringLiteral("itemid"));
  Breather breather;
  for (int r : rows) {
    QString story = items.trimmedText(r, fieldStory);
    if (IsOkItem(story, schedule, items.trimmedText(r, fieldAnswer))) out.ids += items.text(r, fieldId);
    breather.tick();
  }
  return out;
}

}  // namespace mj
