#pragma once
// add-law FILE --title 《…》 --class …: a new law taken into the law library
// as the window 添加新法律/法规 does it (open, 整理 with the article check,
// 归类, 添加进系统), without a window.

#include "cli/command.h"

namespace mj::cli {

// The first letter of the pinyin of a character of the common Chinese
// characters (GB 2312 level 1, which is ordered by pinyin), 'A' to 'Z';
// an empty string for any other character (a Latin letter gives itself).
QString PinyinInitial(QChar c);

// The choice of the class box (属民法类法律、法规) that a user's class names:
// 民法, 民法类 or the choice itself; empty when none.
QString ClassChoiceOf(const QString& given);
// The choice of the paper box for 一/二/三, 1/2/3, 试卷二 or the choice itself.
QString PaperChoiceOf(const QString& given);
// The choice of the letter box for a letter A-Z (either case).
QString LetterChoiceOf(const QString& given);
// The paper group of the laws of a class: the group of the tree by paper
// that holds most of the laws that the tree by class lists under it (the
// first such group on a tie); empty when it holds none of them.
QString PaperChoiceForClass(const Env& env, const QString& classChoice);

class AddLawCommand final : public Command {
 public:
  QString name() const override { return QStringLiteral("add-law"); }
  QString operandsZh() const override { return QStringLiteral("法律文本.md|法律文本.txt --title 《标题》 --class 类别"); }
  QString operandsEn() const override { return QStringLiteral("FILE.md|FILE.txt --title 《TITLE》 --class CLASS"); }
  QString summaryZh() const override {
    return QStringLiteral("像“添加新法律/法规”窗口那样把一部法律的文本（纯文本或 Markdown）整理、检查条文并加入法律库和三棵法律树");
  }
  QString summaryEn() const override {
    return QStringLiteral("clean a law's text (plain text or Markdown), check its articles and add it to the law library "
                          "and the three law trees, as the window 添加新法律/法规 does");
  }
  QList<OptionInfo> options() const override;
  int minOperands() const override { return 1; }
  int maxOperands() const override { return 1; }
  bool writes() const override { return true; }
  int run(CommandContext& ctx) override;
};

}  // namespace mj::cli
