#include "practice/practice_texts.h"

#include <QElapsedTimer>

#include "platform/events.h"
#include "platform/vbtext.h"

namespace mj {

QString TopLabelText(bool fromLawQuery, const QString& runTitle, qint64 count, qint64 curIndex) {
  if (fromLawQuery)
    return QStringLiteral("◎与该法条相关的试题共") + CStr(count) + QStringLiteral("道 ") + QStringLiteral("这是第") +
           CStr(curIndex) + QStringLiteral("题。");
  return runTitle + QStringLiteral("  ") + QStringLiteral("符合你的设置条件的共") + CStr(count) +
         QStringLiteral("题 ") + QStringLiteral("这是第") + CStr(curIndex) + QStringLiteral("题。");
}

QString TwoDigits(qint64 n) { return Right(QStringLiteral("00") + CStr(n), 2); }

QString ClockText(const QDateTime& now, qint64 runSeconds, qint64 questionSeconds) {
  return now.toString(QStringLiteral("yyyy-MM-dd HH:mm")) + kCrLf + TwoDigits(runSeconds / 3600) + u':' +
         TwoDigits(runSeconds / 60) + u':' + TwoDigits(runSeconds % 60) + QStringLiteral("   ") +
         TwoDigits(questionSeconds / 60) + u':' + TwoDigits(questionSeconds % 60);
}

AnswerRow AnswerRowOf(int type) {
  switch (type) {
    case 1:
      return {0, 3, 360, 900, 735, 450, 1000};
    case 2:
      return {4, 14, 360, 300, 735, 350, 400};
    default:
      return {0, 14, 360, 270, 735, 300, 300};
  }
}

void MyPause(double seconds) {
  QElapsedTimer t;
  t.start();
  while (t.elapsed() < seconds * 1000) LetEventsThrough();
}

int BiggerFontSize(int size) { return size < 70 ? size + 2 : size; }
int SmallerFontSize(int size) { return size > 10 ? size - 2 : size; }

}  // namespace mj
