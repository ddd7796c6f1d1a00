#pragma once
// The workload forecast: how much work one full pass over the questions due
// today is, with the scheduling numbers on the settings window, saved or
// not. It counts the due questions of both item tables, estimates the
// attempts from the user's expected average score, and turns them into days
// from the hours per day and the speed.

#include <QDate>
#include <QString>
#include <array>
#include <functional>

#include "platform/env.h"

namespace mj {

// The three inputs of the forecast window: bounds of their up-down
// controls (step 1) and the values they start with.
struct ForecastInput {
  int minimum;
  int maximum;
  int start;
};
inline constexpr ForecastInput kAverageScore{30, 100, 60};   // expected score, in percent
inline constexpr ForecastInput kHoursPerDay{1, 24, 6};       // hours of study per day
inline constexpr ForecastInput kPerHour{30, 200, 100};       // questions per hour

// The number in decimal, centred in a field of `width` characters. An empty
// `pad` pads with blanks; of a longer one only the first character counts. A
// number wider than the field makes the field as wide as the number. The
// left padding is the whole part of half the spare room, the rest goes to
// the right.
QString Num2StrAddStr(qint64 number, int width, const QString& pad);

// The attempts one pass over `count` questions takes: every question must be
// answered right `okTimes` times, and the share of wrong answers,
// (100 - score) percent, costs `addNum` extra rounds:
//   count * okTimes + (100 - score) / 100 * count * addNum
// The product count * okTimes is formed in 32-bit integers, the rest in
// double precision; the sum is rounded to the nearest integer, halves to the
// even neighbour.
qint32 UserWillDo(int count, int okTimes, int addNum, int score);

// The days the attempts take: the whole part of
// attempts / hours / perHour + 1, divided in double precision in this order.
int ForecastDays(qint32 attempts, int hours, int perHour);

// The counts of the two kinds of question.
enum class ForecastKind { Internal, Simulated };
struct ForecastCounts {
  int internal = 0;   // CountST: due questions of items.mmd
  int simulated = 0;  // CountTS: due questions of csitems.mmd
  int of(ForecastKind kind) const { return kind == ForecastKind::Internal ? internal : simulated; }
};

// What the count reports while it runs; any member may be empty.
struct ForecastProgress {
  std::function<void(const QString& text)> setLabel;  // what is being counted
  std::function<void(int maximum)> setMaximum;        // rows of the table
  std::function<void(int value)> setValue;            // rows walked so far
};

// The text shown while the table of a kind is counted.
QString CountingText(ForecastKind kind);

// The count (the button 开始预测): every row of \dbf\items.mmd, then of
// \dbf\csitems.mmd, hidden questions included, is tested with IsOkItem on
// its story and answer with the three numbers of its kind (`numbers` in the
// order of the settings file: stoktimes, staddnum, stpassdays, tsoktimes,
// tsaddnum, tspassdays) on `env`'s today. A row whose sixth field is null
// is not counted: the box "请注意" names the table and the row (counted from
// 1). A null field is one that holds no value at all: the table has no
// sixth field, or the field's bytes are binary zeros, as a record that was
// never written in full leaves them. The empty text a new question gets
// there is a value. An empty table counts 0; a table that cannot be read in
// full is said in a box, and what can be read of it is counted. Window
// events are let through about once a second.
ForecastCounts CalcData(const Env& env, const std::array<int, 6>& numbers, const ForecastProgress& progress = {});

// The text of the warning about a row with a null sixth field.
QString NullSixthFieldText(const QString& table, int row);

// The three result lines of the forecast window, rebuilt in full after
// each change: Label6 with the count, Label8 with the attempts, Label12 with
// the days.
struct ForecastText {
  QString label6;
  QString label8;
  QString label12;
};
ForecastText ForecastResultText(ForecastKind kind, int count, qint32 attempts, int days);

}  // namespace mj
