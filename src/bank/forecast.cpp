#include "bank/forecast.h"

#include <algorithm>
#include <limits>

#include "bank/eligibility.h"
#include "bank/table_check.h"
#include "bank/tables.h"
#include "platform/dbftable.h"
#include "platform/events.h"
#include "platform/paths.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

// A field that holds no value: absent, or binary zeros throughout. Blanks
// are the empty text, which is a value.
bool holdsNoValue(const DbfScan& scan, int field) {
  if (field >= scan.fieldCount()) return true;
  const QByteArrayView bytes = scan.bytes(field);
  for (char c : bytes)
    if (c != '\0') return false;
  return true;
}

}  // namespace

QString Num2StrAddStr(qint64 number, int width, const QString& pad) {
  const QString digits = QString::number(number);
  const QChar fill = pad.isEmpty() ? QChar(u' ') : pad.front();
  const qsizetype spare = std::max<qsizetype>(0, width - digits.size());
  const qsizetype left = spare / 2;
  return QString(left, fill) + digits + QString(spare - left, fill);
}

qint32 UserWillDo(int count, int okTimes, int addNum, int score) {
  // A 32-bit product; it cannot overflow with the counts of real tables and
  // the bounds of the settings, and would stop at the limit if it did.
  qint32 rounds = 0;
  if (__builtin_mul_overflow(count, okTimes, &rounds)) rounds = std::numeric_limits<qint32>::max();
  const double extra = (100 - score) / 100.0 * count * addNum;
  return SaturatedInt<qint32>(static_cast<double>(RoundHalfEven(rounds + extra)));
}

int ForecastDays(qint32 attempts, int hours, int perHour) {
  return SaturatedInt<int>(Int(static_cast<double>(attempts) / hours / perHour + 1));
}

QString CountingText(ForecastKind kind) {
  return kind == ForecastKind::Internal ? QStringLiteral("正在统计符合设置条件的内部试题数，请稍候……")
                                        : QStringLiteral("  正在统计符合设置条件的模拟试题数，请稍候……");
}

QString NullSixthFieldText(const QString& table, int row) {
  return QStringLiteral("数据库") + table + QStringLiteral("中第") + QString::number(row) +
         QStringLiteral("行第6个字段的值为空,请先整理!");
}

ForecastCounts CalcData(const Env& env, const std::array<int, 6>& numbers, const ForecastProgress& progress) {
  ForecastCounts counts;
  const struct {
    ForecastKind kind;
    QString table;
    int first;  // index of its oktimes among the six numbers
  } kinds[] = {{ForecastKind::Internal, tables::kItems, 0}, {ForecastKind::Simulated, tables::kCsItems, 3}};
  for (const auto& k : kinds) {
    if (progress.setLabel) progress.setLabel(CountingText(k.kind));
    const QString path = ResolveCase(env.path(QStringLiteral("\\dbf\\") + k.table));
    // A missing, damaged or cut-off table is said; what can be read of it
    // is counted.
    const QString problem = TableProblem(path, {QStringLiteral("story"), QStringLiteral("answer")});
    if (!problem.isEmpty())
      env.msgBox(problem + kCrLf + QStringLiteral("预测中没有计入读不出的试题。"), box::Exclamation,
                 QStringLiteral("请注意"));
    DbfScan scan(path);
    const int fieldStory = scan.fieldIndex(QStringLiteral("story"));
    const int fieldAnswer = scan.fieldIndex(QStringLiteral("answer"));
    if (!scan.isOpen() || fieldStory < 0 || fieldAnswer < 0) continue;
    if (progress.setMaximum) progress.setMaximum(static_cast<int>(std::min<qint64>(scan.recordCount(), std::numeric_limits<int>::max())));
    const Schedule schedule{numbers[static_cast<size_t>(k.first)], numbers[static_cast<size_t>(k.first + 1)],
                            numbers[static_cast<size_t>(k.first + 2)], false, env.today()};
    int& count = k.kind == ForecastKind::Internal ? counts.internal : counts.simulated;
    Breather breather;
    int row = 0;
    while (scan.next()) {
      ++row;
      if (progress.setValue) progress.setValue(row);
      breather.tick();
      if (holdsNoValue(scan, 5)) {
        env.msgBox(NullSixthFieldText(k.table, row), box::Exclamation, QStringLiteral("请注意"));
        continue;
      }
      QString story = scan.trimmedText(fieldStory);
      if (IsOkItem(story, schedule, scan.trimmedText(fieldAnswer))) ++count;
    }
  }
  return counts;
}

ForecastText ForecastResultText(ForecastKind kind, int count, qint32 attempts, int days) {
  const bool internal = kind == ForecastKind::Internal;
  const QString pad = QStringLiteral(" ");
  ForecastText t;
  t.label6 = (internal ? QStringLiteral("内部试题库中共有") : QStringLiteral("模拟试题库中共有")) +
             Num2StrAddStr(count, 5, pad) + QStringLiteral("道试题满足你的设置要求，如果你的");
  t.label8 = QStringLiteral("分，则按此种设置你可能要做") + Num2StrAddStr(attempts, 6, pad) + QStringLiteral("道次，如果");
  t.label12 = QStringLiteral("大约需要") + Num2StrAddStr(days, 4, pad) +
              (internal ? QStringLiteral("天可以完整做一遍所有满足你的设置条件的内部试题，")
                        : QStringLiteral("天可以完整做一遍所有满足你的设置条件的模拟试题，"));
  return t;
}

}  // namespace mj
