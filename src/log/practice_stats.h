#pragma once
// Practice statistics: how the months of practice are going, from nothing
// but the records the program keeps anyway. Every figure comes from the
// practice records (story) of items.mmd and csitems.mmd and from the due
// test the banks use; nothing is written.
//
// A record keeps the right answers since the last wrong one and that wrong
// one (a wrong answer replaces the whole record): the answers per day count
// what the records still hold, which is every answer since the last wrong
// one of each question.
//
// One function gives the figures of each chart, so that the statistics
// window and any other consumer print the same numbers:
//   AnswersPerDay    answers and right answers on each of the last 90 days
//   DueForecast      questions that become due on each of the next 30 days
//   RightShareByLaw  per law (internal banks) and per simulated paper, the
//                    questions done and those whose newest answer is right

#include <QDate>
#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

#include "bank/eligibility.h"

namespace mj {

class Settings;

// One question as the statistics read it from an item table.
struct RecordedQuestion {
  QString bank;    // filename: the bank code and the type, 6 characters
  QString story;   // the practice record, trimmed
  QString answer;  // the key, trimmed
  bool live = true;  // valid2: not hidden by the user
};

// What the statistics read: both item tables, the banks of both
// directories, the names of the laws and of the simulated papers.
struct PracticeRecords {
  QList<RecordedQuestion> internal;   // items.mmd
  QList<RecordedQuestion> simulated;  // csitems.mmd
  QSet<QString> internalBanks;        // banks of 33ok.mmd
  QSet<QString> paperBanks;           // banks of csface.mmd
  // Law title (lawname of 33.mmd) by bank code, the last five characters of
  // its filename.
  QHash<QString, QString> lawNames;
  // Paper name by paper code (5 characters): the heading of csface.mmd
  // above the paper's first bank.
  QHash<QString, QString> paperNames;
  // Tables that could not be read in full, in words for the user naming the
  // file; what could be read of them is in the lists above.
  QStringList problems;
};

// Reads the tables of the data folder (\dbf) once.
PracticeRecords ReadPracticeRecords(const QString& dataFolder);

// One entry of a practice record: its day, and whether its answer is the key.
struct RecordEntryOf {
  QDate day;
  bool right = false;
};
// The entries of a trimmed record, newest first: whole 20-character
// entries only; an entry whose first 16 characters are no date is left out.
QList<RecordEntryOf> EntriesOf(const QString& story, const QString& answer);

// The answers of one day.
struct DayAnswers {
  QDate day;
  int answers = 0;
  int right = 0;
};
// The `days` days up to `today` (oldest first, today last): the entries of
// both tables dated on each. Entries dated after today or before the first
// day are not counted.
QList<DayAnswers> AnswersPerDay(const PracticeRecords& records, const QDate& today, int days = 90);

// The questions that become due on one day if nothing is practised
// meanwhile: on the first day all those due then, on every later day those
// due then that were not due the day before.
struct DueDay {
  QDate day;
  int internal = 0;   // live questions of the banks of 33ok.mmd
  int simulated = 0;  // questions of the papers of csface.mmd
};
// The `days` days from the schedules' day on (both schedules must name the
// same day), each question tested with IsOkItem under its table's numbers
// with the date moved forward. The first day's counts are those the
// directories show as due on that day.
QList<DueDay> DueForecast(const PracticeRecords& records, const Schedule& internal, const Schedule& simulated,
                          int days = 30);

// The scheduling numbers of the settings for the internal bank and the
// simulated papers, on `day`.
Schedule InternalSchedule(const Settings& settings, const QDate& day);
Schedule SimulatedSchedule(const Settings& settings, const QDate& day);

// How one law or one simulated paper stands.
struct GroupShare {
  QString code;   // bank code of the law, or the paper's code
  QString label;  // the law's title, or the paper's name
  bool simulated = false;
  int done = 0;   // questions with at least one answer in their record
  int right = 0;  // of these, those whose newest answer is right
  // The share right, in percent (0 when nothing is done).
  double percent() const { return done > 0 ? 100.0 * right / done : 0.0; }
};
// Every law (by bank code, in code order) and then every simulated paper
// (by code) with at least one question done. A law missing from 33.mmd is
// named "题库" + its code, a paper without a heading "模拟试卷" + its code.
QList<GroupShare> RightShareByLaw(const PracticeRecords& records);

}  // namespace mj
