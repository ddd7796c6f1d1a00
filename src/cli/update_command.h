#pragma once
// apply-update FILE.new [--again]: a question update package taken into the
// program folder as 自动更新 → 选新题库文件并更新进系统题库 does, with the
// report of the run.

#include "cli/command.h"

namespace mj::cli {

class ApplyUpdateCommand final : public Command {
 public:
  QString name() const override { return QStringLiteral("apply-update"); }
  QString operandsZh() const override { return QStringLiteral("更新包.new"); }
  QString operandsEn() const override { return QStringLiteral("FILE.new"); }
  QString summaryZh() const override {
    return QStringLiteral("把更新包（*.new）里改正的题和新题更新进题库，打印结果汇报；已经更新过的题只在加 --again 时再更新");
  }
  QString summaryEn() const override {
    return QStringLiteral("take the corrected and new questions of an update package (*.new) into the banks and print "
                          "the report; questions updated before are updated again only with --again");
  }
  QList<OptionInfo> options() const override;
  int minOperands() const override { return 1; }
  int maxOperands() const override { return 1; }
  bool writes() const override { return true; }
  int run(CommandContext& ctx) override;
};

}  // namespace mj::cli
