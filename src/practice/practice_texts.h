#pragma once
// What the practice frame shows besides the question: the top label, the
// clock label, and the places of the answer buttons for each question type.

#include <QDateTime>
#include <QString>

namespace mj {

// The top label Label5. From the law query: "◎与该法条相关的试题共" n "道 "
// "这是第" i "题。"; otherwise the run's title, two blanks,
// "符合你的设置条件的共" n "题 " "这是第" i "题。".
QString TopLabelText(bool fromLawQuery, const QString& runTitle, qint64 count, qint64 curIndex);

// The clock label Label6: the time as "yyyy-mm-dd hh:mm", CR LF, the run's
// time as hours ":" minutes ":" seconds, three blanks, the question's time as
// minutes ":" seconds. Minutes do not wrap at 60 (an hour and a half reads
// 01:90:00); each number shows its last two digits.
QString ClockText(const QDateTime& now, qint64 runSeconds, qint64 questionSeconds);
// The last two digits of n with zeros in front.
QString TwoDigits(qint64 n);

// The row of answer buttons of a question type, in twips before scaling:
// the buttons first..last of Command2 are shown, button i at
// left + (i - first) * step; the others are hidden.
//   type 1 (single choice):   A to D,       0..3,  360, 900, 735, 450, 1000
//   type 2 (multiple choice): AB to ABCD,   4..14, 360, 300, 735, 350, 400
//   type 3 (any choice):      A to ABCD,    0..14, 360, 270, 735, 300, 300
// A type that is none of these gets the row of type 3, so that every answer
// can still be given.
struct AnswerRow {
  int first;
  int last;
  int left;
  int width;
  int top;
  int height;
  int step;
  bool shows(int index) const { return index >= first && index <= last; }
  int leftOf(int index) const { return left + (index - first) * step; }
};
AnswerRow AnswerRowOf(int type);

// Waits until `seconds` have passed, letting window events through.
void MyPause(double seconds);


// Font size steps of the question box: +2 below 70, -2 above 10.
int BiggerFontSize(int size);
int SmallerFontSize(int size);

}  // namespace mj
