#include "bank/eligibility.h"

#include <QHash>
#include <QSet>

#include "platform/dbftable.h"
#include "platform/events.h"
#include "platform/paths.h"
#include "platform/text_toolkit.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

// Blanks (U+0020) off both ends, as Trim does, without a copy.
QStringView trimBlanks(QStringView s) {
  qsizetype b = 0, e = s.size();
  while (b < e && s[b] == u' ') ++b;
  while (e > b && s[e - 1] == u' ') --e;
  return s.sliced(b, e - b);
}

// Reads 1 to maxDigits digits at s[i]; false when there is none.
bool readNumber(QStringView s, qsizetype& i, int maxDigits, int& value) {
  value = 0;
  int digits = 0;
  while (i < s.size() && digits < maxDigits && s[i] >= u'0' && s[i] <= u'9') {
    value = value * 10 + (s[i].unicode() - u'0');
    ++i;
    ++digits;
  }
  return digits > 0;
}

struct Ymd {
  int year = 0, month = 0, day = 0;
};

int digitAt(QStringView s, qsizetype i) {
  const char16_t c = s[i].unicode();
  return c >= u'0' && c <= u'9' ? c - u'0' : -1;
}

// The number of the two to four digits from s[from] on; -1 when one is no digit.
int digitsAt(QStringView s, qsizetype from, qsizetype count) {
  int value = 0;
  for (qsizetype i = from; i < from + count; ++i) {
    const int d = digitAt(s, i);
    if (d < 0) return -1;
    value = value * 10 + d;
  }
  return value;
}

bool isLeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

// Whether the day exists, as QDate::isValid says for the years 1 to 9999.
bool isValidDay(int year, int month, int day) {
  static constexpr int kMonthDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (year < 1 || month < 1 || month > 12 || day < 1) return false;
  return day <= kMonthDays[month - 1] + (month == 2 && isLeapYear(year) ? 1 : 0);
}

// The form in which the program writes every entry, "yyyy-mm-dd hh:mm" with
// all digits, read position by position: the statistics read millions of
// entries, and this is several times quicker than the general reader. Sets
// `taken` false when the text does not have this form, so that the general
// reader decides; the answer is the same either way.
std::optional<Ymd> writtenFormYmd(QStringView story, bool& taken) {
  taken = false;
  if (story.size() < 16 || story[4] != u'-' || story[7] != u'-' || story[10] != u' ' || story[13] != u':')
    return std::nullopt;
  const int year = digitsAt(story, 0, 4), month = digitsAt(story, 5, 2), day = digitsAt(story, 8, 2);
  const int hour = digitsAt(story, 11, 2), minute = digitsAt(story, 14, 2);
  if (year < 0 || month < 0 || day < 0 || hour < 0 || minute < 0) return std::nullopt;
  taken = true;
  if (!isValidDay(year, month, day) || hour > 23 || minute > 59) return std::nullopt;
  return Ymd{year, month, day};
}

// The date of the first 16 characters of a record: "yyyy-mm-dd hh:mm", with
// one-digit months, days and hours, "/" between the date's parts, seconds or
// no time at all also taken.
std::optional<Ymd> entryYmd(QStringView story) {
  bool taken = false;
  if (std::optional<Ymd> d = writtenFormYmd(story, taken); taken) return d;
  const QStringView s = trimBlanks(story.left(16));
  qsizetype i = 0;
  Ymd d;
  auto at = [&](QChar c) { return i < s.size() && s[i] == c; };
  if (!readNumber(s, i, 4, d.year) || i != 4) return std::nullopt;
  if (!at(u'-') && !at(u'/')) return std::nullopt;
  const QChar dateSep = s[i++];
  if (!readNumber(s, i, 2, d.month) || !at(dateSep)) return std::nullopt;
  ++i;
  if (!readNumber(s, i, 2, d.day)) return std::nullopt;
  if (!QDate::isValid(d.year, d.month, d.day)) return std::nullopt;
  if (i == s.size()) return d;
  if (s[i] != u' ') return std::nullopt;
  while (i < s.size() && s[i] == u' ') ++i;
  int hour = 0, minute = 0, second = 0;
  if (!readNumber(s, i, 2, hour) || !at(u':')) return std::nullopt;
  ++i;
  if (!readNumber(s, i, 2, minute)) return std::nullopt;
  if (at(u':')) {
    ++i;
    if (!readNumber(s, i, 2, second)) return std::nullopt;
  }
  if (i != s.size() || hour > 23 || minute > 59 || second > 59) return std::nullopt;
  return d;
}

// The due test on a trimmed record, with today's date in parts.
bool isDue(QStringView story, const Schedule& s, const Ymd& today, QStringView answer) {
  const qsizetype n = story.size() / 20;
  if (n == 0) return true;
  const std::optional<Ymd> d = entryYmd(story);
  if (!d) return false;  // the conversion fails: not due
  const int passed = (today.year - d->year) * 365 + (today.month - d->month) * 30 + (today.day - d->day);
  if (passed < s.passDays) return false;
  if (trimBlanks(story.right(4)) != trimBlanks(answer)) {
    // The oldest entry is a wrong answer; n - 1 right answers came after it.
    if (s.isChaJuan) return true;
    return n - 1 < s.okTimes + s.addNum;
  }
  return n < s.okTimes;
}

Ymd ymdOf(const QDate& date) {
  Ymd d;
  date.getDate(&d.year, &d.month, &d.day);
  return d;
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

// Shared frame of both index counts: sets the bar, opens the directory
// table, walks its rows and writes f and oknum. `countBank` gives the
// numbers of one bank.
bool writeIndexCounts(const QString& folder, const QString& faceTable, int maximum, const CountProgress& progress,
                      const std::function<BankCount(const QString& bank)>& countBank) {
  if (progress.setMaximum) progress.setMaximum(maximum);
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
  return face.close();
}

}  // namespace

std::optional<QDate> EntryDate(QStringView story) {
  const std::optional<Ymd> d = entryYmd(story);
  if (!d) return std::nullopt;
  // The Julian day of a Gregorian date (Fliegel and Van Flandern), for years
  // from 1 on: the same day as QDate(year, month, day), without the
  // calendar's checks that entryYmd has made already.
  const qint64 y = d->year, m = d->month, a = (m - 14) / 12;
  const qint64 jd =
      (1461 * (y + 4800 + a)) / 4 + (367 * (m - 2 - 12 * a)) / 12 - (3 * ((y + 4900 + a) / 100)) / 4 + d->day - 32075;
  return QDate::fromJulianDay(jd);
}

bool IsOkItem(QString& story, int okTimes, int addNum, int passDays, const QString& answer, bool isChaJuan,
              const QDate& today) {
  if (!story.isEmpty() && (story.front() == u' ' || story.back() == u' ')) story = Trim(story);
  return isDue(story, Schedule{okTimes, addNum, passDays, isChaJuan, today}, ymdOf(today), answer);
}

bool NewIniDbfData(const QString& folder, const QString& faceTable, const QString&, const ItemIndex& index,
                   const Schedule& schedule, const CountProgress& progress) {
  // One walk of the index gives every bank's numbers; a directory row then
  // looks its bank up. The walk of the index per directory row gives the
  // same numbers, as the test of a question does not depend on the row.
  // The live questions of the index are those of the item table, whose
  // in-memory copy it is: they give the bar its maximum without reading
  // the table again.
  const Ymd today = ymdOf(schedule.today);
  QHash<QString, BankCount> banks;
  banks.reserve(1024);
  int live = 0;
  for (const ItemRow& row : index) {
    if (!row.valid2) continue;
    ++live;
    BankCount& c = banks[row.filename];
    ++c.total;
    if (isDue(trimBlanks(row.story), schedule, today, row.answer)) ++c.ok;
  }
  return writeIndexCounts(folder, faceTable, live, progress,
                          [&banks](const QString& bank) { return banks.value(bank); });
}

bool NewIniDbfDataByWalk(const QString& folder, const QString& faceTable, const QString& itemTable,
                         const ItemIndex& index, const Schedule& schedule, const CountProgress& progress) {
  return writeIndexCounts(folder, faceTable, liveQuestionCount(folder, itemTable), progress, [&](const QString& bank) {
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
  const int fieldStory = items.fieldIndex(QStringLiteral("story"));
  const int fieldAnswer = items.fieldIndex(QStringLiteral("answer"));
  const int fieldName = items.fieldIndex(QStringLiteral("filename"));
  // A table that cannot be read would count every bank empty: the numbers
  // of the last count stay.
  if (!items.isOpen() || fieldStory < 0 || fieldAnswer < 0 || fieldName < 0) return false;
  const QList<int> itemRows = items.rows();
  if (progress.setMaximum) progress.setMaximum(static_cast<int>(itemRows.size()));
  int bar = 0;

  DbfTable face = DbfTable::open(AppPath(folder, faceTable), DbfTable::Mode::ReadWrite);
  if (!face.isOpen()) return false;
  const int fieldB = face.fieldIndex(QStringLiteral("b"));
  const int fieldOk = face.fieldIndex(QStringLiteral("oknum"));
  // The rows of each bank in table order: one walk of the table gives what
  // a query per bank (filename = bank) would.
  struct Question {
    QString story;
    QString answer;
  };
  QHash<QString, QList<Question>> byBank;
  for (int q : itemRows)
    byBank[items.text(q, fieldName)].append({items.text(q, fieldStory), items.text(q, fieldAnswer)});
  Breather breather;
  QString bank;
  int count = 0;
  for (int r : face.rows()) {
    if (hasBankFile(face, r, fieldB)) {
      const QString b = face.text(r, fieldB);
      // A name too short for the 6 characters leaves the bank as it was.
      if (const std::optional<QString> m = MidChecked(b, Len(b) - 9, 6)) bank = *m;
      count = 0;
      const auto found = byBank.constFind(bank);
      if (found != byBank.cend()) {
        for (const Question& q : *found) {
          QString story = q.story;
          if (IsOkItem(story, schedule, q.answer)) ++count;
          if (progress.setValue) progress.setValue(++bar);
          breather.tick();
        }
      }
    }
    face.setNumber(r, fieldOk, count);
  }
  // A table read in part has been counted as far as it goes; the count is
  // not whole.
  return face.close() && items.recordCount() == items.headerRecordCount();
}

QStringList DirectoryBanks(const QString& folder, const QString& faceTable, bool simulated) {
  const DbfTable face = DbfTable::open(AppPath(folder, faceTable));
  const int fieldB = face.fieldIndex(QStringLiteral("b"));
  QStringList banks;
  for (int r : face.rows()) {
    if (!hasBankFile(face, r, fieldB)) continue;
    const QString b = face.text(r, fieldB);
    if (!simulated)
      banks.append(GetSmallTxtName(b));
    else if (const std::optional<QString> m = MidChecked(b, Len(b) - 9, 6))
      banks.append(*m);
  }
  return banks;
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

std::optional<QString> RunRecordSet::updateStory(const QString& id,
                                                 const std::function<QString(const QString& story)>& next,
                                                 QString* writeProblem) const {
  if (records_.isEmpty()) return std::nullopt;
  QString problem;
  DbfTable t = DbfTable::open(path_, DbfTable::Mode::ReadWrite);
  if (!t.isOpen()) {
    problem = t.error();
    t = DbfTable::open(path_);
  }
  const int fieldId = t.fieldIndex(QStringLiteral("itemid"));
  if (fieldId < 0) return std::nullopt;
  const int fieldStory = t.fieldIndex(QStringLiteral("story"));
  if (problem.isEmpty() && fieldStory < 0) problem = QStringLiteral("表文件 %1 缺少字段 story").arg(t.path());
  for (int r : records_) {
    if (t.trimmedText(r, fieldId) != id) continue;
    const QString story = next(t.trimmedText(r, fieldStory));
    if (problem.isEmpty() && !t.setText(r, fieldStory, story)) problem = t.error();
    // The record is on the disk before the caller goes on: a power cut
    // right after the answer loses nothing.
    if (problem.isEmpty() ? !t.closeDurably() : !t.close()) {
      if (problem.isEmpty()) problem = t.error();
    }
    if (writeProblem) *writeProblem = problem;
    return story;
  }
  return std::nullopt;
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

RunRecordSet RecordsOfList(const QString& folder, const QString& itemTable, const QString& ids) {
  QSet<QString> wanted;
  for (qsizetype i = 0; i + 11 <= ids.size(); i += 11) wanted.insert(ids.mid(i, 11));
  const QString path = AppPath(folder, itemTable);
  QList<int> rows;
  if (!wanted.isEmpty()) {
    DbfScan scan(path);
    const int fieldId = scan.fieldIndex(QStringLiteral("itemid"));
    if (fieldId >= 0)
      while (scan.next())
        if (wanted.contains(scan.trimmedText(fieldId))) rows.append(scan.record());
  }
  return RunRecordSet(path, rows);
}

}  // namespace mj
