#pragma once
// stats: the figures behind the charts of the practice statistics, as CSV.

#include "cli/command.h"

namespace mj::cli {

class StatsCommand final : public Command {
 public:
  QString name() const override { return QStringLiteral("stats"); }
  QString operandsZh() const override { return QString(); }
  QString operandsEn() const override { return QString(); }
  QString summaryZh() const override {
    return QStringLiteral("以 CSV 输出做题统计各图表背后的数字：每天答题数、今后每天到期题数、每部法律的正确率");
  }
  QString summaryEn() const override {
    return QStringLiteral("the figures behind the practice statistics charts as CSV: answers per day, questions "
                          "due per day ahead, share right per law");
  }
  QList<OptionInfo> options() const override;
  int minOperands() const override { return 0; }
  int maxOperands() const override { return 0; }
  int run(CommandContext& ctx) override;
};

// A CSV field: quoted (with inner quotes doubled) when it holds a comma, a
// quote or a line break.
QString CsvField(const QString& text);

}  // namespace mj::cli
