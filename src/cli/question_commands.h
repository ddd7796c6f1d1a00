#pragma once
// The commands over the questions themselves: the question search (search
// --questions) and 错题本 (wrong).

#include "cli/command.h"

namespace mj::cli {

// search --questions 词…: the questions of the internal banks and the
// simulated papers that hold every word, as 题目搜索 finds them: one line
// per hit, bank, ID and the line around the hit with the words in 【】.
// The operands are the query as typed into the window's box, one blank
// between them; a word in double quotes is taken as it stands.
int RunQuestionSearch(CommandContext& ctx);

// wrong: 错题本, the banks holding questions whose newest answer is wrong,
// as the window's grid shows them: bank, count, date of the newest wrong
// answer, newest first.
class WrongCommand final : public Command {
 public:
  QString name() const override { return QStringLiteral("wrong"); }
  QString operandsZh() const override { return QString(); }
  QString operandsEn() const override { return QString(); }
  QString summaryZh() const override {
    return QStringLiteral("错题本：最近一次做错的题按题库归类，列出题库、题数和最近做错的日期，最近的在前");
  }
  QString summaryEn() const override {
    return QStringLiteral("the book of wrong answers: the questions last answered wrong per bank, with the count and "
                          "the date of the newest wrong answer, newest first");
  }
  QList<OptionInfo> options() const override;
  int minOperands() const override { return 0; }
  int maxOperands() const override { return 0; }
  int run(CommandContext& ctx) override;
};

}  // namespace mj::cli
