#pragma once
// The commands over the banks and the outside papers: the due counts of the
// directory and the check of a paper.

#include "cli/command.h"

namespace mj::cli {

// due: the directory of the internal banks (or of the simulated papers) as
// the window shows it after the day's count, every row open, as text.
class DueCommand final : public Command {
 public:
  QString name() const override { return QStringLiteral("due"); }
  QString operandsZh() const override { return QString(); }
  QString operandsEn() const override { return QString(); }
  QString summaryZh() const override {
    return QStringLiteral("按题库目录的样子列出每个题库今天的适格题数（和总题数、做次数、对次数、得分、用时）");
  }
  QString summaryEn() const override {
    return QStringLiteral("the questions due today per bank, as the bank directory shows them, with its other columns");
  }
  QList<OptionInfo> options() const override;
  int minOperands() const override { return 0; }
  int maxOperands() const override { return 0; }
  int run(CommandContext& ctx) override;
};

// check-paper FILE: the report of the paper check, as its result window shows it.
class CheckPaperCommand final : public Command {
 public:
  QString name() const override { return QStringLiteral("check-paper"); }
  QString operandsZh() const override { return QStringLiteral("试卷文件"); }
  QString operandsEn() const override { return QStringLiteral("FILE"); }
  QString summaryZh() const override {
    return QStringLiteral("检验一份外部试卷的格式，打印检验结果窗口里的全部报告");
  }
  QString summaryEn() const override {
    return QStringLiteral("check the layout of an outside paper and print the whole report of the check");
  }
  int minOperands() const override { return 1; }
  int maxOperands() const override { return 1; }
  int run(CommandContext& ctx) override;
};

}  // namespace mj::cli
