#include "log/practice_stats.h"

#include <QMap>
#include <utility>

#include "bank/table_check.h"
#include "bank/tables.h"
#include "platform/dbftable.h"
#include "platform/events.h"
#include "platform/paths.h"
#include "platform/vbtext.h"
#include "settings/settings.h"

namespace mj {

namespace {

// One entry of a record: the time "yyyy-mm-dd hh:mm" and the answer
// right-aligned in 4 characters.
constexpr qsizetype kEntryLength = 20;

// Calls `visit` with each entry of a trimmed record, newest first, until it
// returns false: whole 20-character entries only, an entry whose first 16
// characters are no date left out, and so is one `passOver` says need not be
// read (its date is not wanted). The record is read in place: the
// statistics read millions of entries.
template <typename PassOver, typename Visit>
void forEachEntry(const QString& story, const QString& answer, PassOver&& passOver, Visit&& visit) {
  const QStringView all(story);
  const qsizetype n = all.size() / kEntryLength;
  for (qsizetype i = 0; i < n; ++i) {
    const QStringView entry = all.mid(i * kEntryLength, kEntryLength);
    if (passOver(entry)) continue;
    const std::optional<QDate> day = EntryDate(entry);
    if (!day) continue;
    if (!visit(RecordEntryOf{*day, entry.mid(16).trimmed() == answer})) return;
  }
}

template <typename Visit>
void forEachEntry(const QString& story, const QString& answer, Visit&& visit) {
  forEachEntry(story, answer, [](QStringView) { return false; }, std::forward<Visit>(visit));
}

// Whether an entry starts with "yyyy-mm-dd", all ten characters digits but
// for the two dashes.
bool isDigitDay(QStringView entry) {
  for (qsizetype i = 0; i < 10; ++i) {
    const char16_t c = entry[i].unicode();
    if (i == 4 || i == 7 ? c != u'-' : (c < u'0' || c > u'9')) return false;
  }
  return true;
}

// Reads the questions of one item table; a problem with the table goes to
// `problems`.
QList<RecordedQuestion> readQuestions(const QString& path, QStringList& problems) {
  const QString problem = TableProblem(
      path, {QStringLiteral("filename"), QStringLiteral("story"), QStringLiteral("answer"), QStringLiteral("valid2")});
  if (!problem.isEmpty()) problems.append(problem);
  QList<RecordedQuestion> out;
  DbfScan scan(ResolveCase(path));
  const int fieldName = scan.fieldIndex(QStringLiteral("filename"));
  const int fieldStory = scan.fieldIndex(QStringLiteral("story"));
  const int fieldAnswer = scan.fieldIndex(QStringLiteral("answer"));
  const int fieldLive = scan.fieldIndex(QStringLiteral("valid2"));
  if (!scan.isOpen() || fieldName < 0 || fieldStory < 0 || fieldAnswer < 0) return out;
  out.reserve(static_cast<qsizetype>(scan.recordCount()));
  Breather breather;
  while (scan.next()) {
    out.append({scan.trimmedText(fieldName), scan.trimmedText(fieldStory), scan.trimmedText(fieldAnswer),
                fieldLive < 0 || (!scan.isNull(fieldLive) && scan.logical(fieldLive))});
    breather.tick();
  }
  return out;
}

// The bank code of each law of 33.mmd, and its title.
QHash<QString, QString> readLawNames(const QString& path) {
  QHash<QString, QString> out;
  const DbfTable t = DbfTable::open(ResolveCase(path));
  const int name = t.fieldIndex(QStringLiteral("lawname"));
  const int file = t.fieldIndex(QStringLiteral("filename"));
  if (name < 0 || file < 0) return out;
  for (int r : t.rows()) {
    const QString code = Right(t.trimmedText(r, file), 5);
    if (!code.isEmpty() && !out.contains(code)) out.insert(code, t.trimmedText(r, name));
  }
  return out;
}

// The name of each simulated paper: the heading row (a row without a bank
// file) nearest above the first bank of the paper in csface.mmd.
QHash<QString, QString> readPaperNames(const QString& path) {
  QHash<QString, QString> out;
  const DbfTable t = DbfTable::open(ResolveCase(path));
  const int a = t.fieldIndex(QStringLiteral("a"));
  const int b = t.fieldIndex(QStringLiteral("b"));
  if (a < 0 || b < 0) return out;
  QString heading;
  for (int r : t.rows()) {
    const QString file = t.trimmedText(r, b);
    if (UCase(Right(file, 4)) != QStringLiteral(".MMD")) {
      heading = t.trimmedText(r, a);
      continue;
    }
    const std::optional<QString> bank = MidChecked(file, Len(file) - 9, 6);
    if (!bank || heading.isEmpty()) continue;
    const QString code = Left(*bank, 5);
    if (!out.contains(code)) out.insert(code, heading);
  }
  return out;
}

// The question's first day due among `days` days from the schedule's day,
// or -1. The due test depends on the date only through the days passed
// since the newest entry, which never decrease from one day to the next
// (the formula years * 365 + months * 30 + days gives 0 to 5 for each step
// of a day): once due, a question stays due. So a binary search between
// the first and the last day finds the first day on which IsOkItem says due.
int firstDueDay(const RecordedQuestion& q, const Schedule& schedule, int days) {
  auto dueOn = [&](int k) {
    Schedule s = schedule;
    s.today = schedule.today.addDays(k);
    QString story = q.story;
    return IsOkItem(story, s, q.answer);
  };
  if (dueOn(0)) return 0;
  if (days < 2 || !dueOn(days - 1)) return -1;
  int notDue = 0, due = days - 1;
  while (due - notDue > 1) {
    const int mid = (notDue + due) / 2;
    (dueOn(mid) ? due : notDue) = mid;
  }
  return due;
}

}  // namespace

PracticeRecords ReadPracticeRecords(const QString& dataFolder) {
  PracticeRecords r;
  r.internal = readQuestions(AppPath(dataFolder, tables::kItems), r.problems);
  r.simulated = readQuestions(AppPath(dataFolder, tables::kCsItems), r.problems);
  for (const QString& b : DirectoryBanks(dataFolder, tables::kDirectory, false)) r.internalBanks.insert(b);
  for (const QString& b : DirectoryBanks(dataFolder, tables::kCsDirectory, true)) r.paperBanks.insert(b);
  r.lawNames = readLawNames(AppPath(dataFolder, tables::kLawNames));
  r.paperNames = readPaperNames(AppPath(dataFolder, tables::kCsDirectory));
  return r;
}

QList<RecordEntryOf> EntriesOf(const QString& story, const QString& answer) {
  QList<RecordEntryOf> out;
  out.reserve(story.size() / kEntryLength);
  forEachEntry(story, answer, [&out](const RecordEntryOf& e) {
    out.append(e);
    return true;
  });
  return out;
}

QList<DayAnswers> AnswersPerDay(const PracticeRecords& records, const QDate& today, int days) {
  QList<DayAnswers> out(std::max(0, days));
  if (out.isEmpty()) return out;
  const QDate first = today.addDays(1 - days);
  for (int i = 0; i < out.size(); ++i) out[i].day = first.addDays(i);
  const qint64 firstDay = first.toJulianDay();
  // Most entries of a long record lie before the first day. An entry in the
  // form the program writes starts with its day as ten characters,
  // "yyyy-mm-dd" all digits, and such texts compare as their days do: one
  // outside the texts of the first day and of today is passed over without
  // reading its date. It could not count anyway: out of the days, or no
  // date at all.
  const bool byText = first.year() >= 1 && today.year() <= 9999;
  const QString firstText = first.toString(QStringLiteral("yyyy-MM-dd"));
  const QString lastText = today.toString(QStringLiteral("yyyy-MM-dd"));
  const auto outsideDays = [&](QStringView entry) {
    return byText && isDigitDay(entry) && (entry.first(10) < firstText || entry.first(10) > lastText);
  };
  for (const QList<RecordedQuestion>* table : {&records.internal, &records.simulated}) {
    for (const RecordedQuestion& q : *table) {
      forEachEntry(q.story, q.answer, outsideDays, [&](const RecordEntryOf& e) {
        const qint64 i = e.day.toJulianDay() - firstDay;
        if (i >= 0 && i < out.size()) {
          ++out[i].answers;
          if (e.right) ++out[i].right;
        }
        return true;
      });
    }
  }
  return out;
}

QList<DueDay> DueForecast(const PracticeRecords& records, const Schedule& internal, const Schedule& simulated,
                          int days) {
  QList<DueDay> out(std::max(0, days));
  for (int i = 0; i < out.size(); ++i) out[i].day = internal.today.addDays(i);
  for (const RecordedQuestion& q : records.internal) {
    if (!q.live || !records.internalBanks.contains(q.bank)) continue;
    if (const int k = firstDueDay(q, internal, days); k >= 0) ++out[k].internal;
  }
  // The simulated papers are counted as their directory counts them, hidden
  // questions included.
  for (const RecordedQuestion& q : records.simulated) {
    if (!records.paperBanks.contains(q.bank)) continue;
    if (const int k = firstDueDay(q, simulated, days); k >= 0) ++out[k].simulated;
  }
  return out;
}

Schedule InternalSchedule(const Settings& settings, const QDate& day) {
  return {settings.number(kStOkTimes), settings.number(kStAddNum), settings.number(kStPassDays), false, day};
}

Schedule SimulatedSchedule(const Settings& settings, const QDate& day) {
  return {settings.number(kTsOkTimes), settings.number(kTsAddNum), settings.number(kTsPassDays), false, day};
}

QList<GroupShare> RightShareByLaw(const PracticeRecords& records) {
  QList<GroupShare> out;
  for (const bool simulated : {false, true}) {
    QMap<QString, GroupShare> groups;
    for (const RecordedQuestion& q : simulated ? records.simulated : records.internal) {
      if (q.story.size() < kEntryLength) continue;
      // The newest entry with a date tells how the question stands.
      std::optional<RecordEntryOf> newest;
      forEachEntry(q.story, q.answer, [&newest](const RecordEntryOf& e) {
        newest = e;
        return false;
      });
      if (!newest) continue;
      const QString code = Left(q.bank, 5);
      GroupShare& g = groups[code];
      if (g.code.isEmpty()) {
        g.code = code;
        g.simulated = simulated;
        g.label = simulated ? records.paperNames.value(code, QStringLiteral("模拟试卷") + code)
                            : records.lawNames.value(code, QStringLiteral("题库") + code);
      }
      ++g.done;
      if (newest->right) ++g.right;
    }
    for (const GroupShare& g : groups) out.append(g);
  }
  return out;
}

}  // namespace mj
