#pragma once
// The commands over the law library: one article, the law text under a
// citation, and the text search of the law query.

#include "cli/command.h"

namespace mj::cli {

// A law title as the user types it, with or without 《》: the title without them.
QString BareTitle(const QString& title);
// The message for a law that has no file.
QString UnknownLawText(const Env& env, const QString& title);

// article 刑法 133: the article as the answer window prints it under an answer
// that cites it.
class ArticleCommand final : public Command {
 public:
  QString name() const override { return QStringLiteral("article"); }
  QString operandsZh() const override { return QStringLiteral("法律名 条号"); }
  QString operandsEn() const override { return QStringLiteral("LAW NUMBER"); }
  QString summaryZh() const override { return QStringLiteral("照答案窗口的样子打印一条法条，如：article 刑法 133"); }
  QString summaryEn() const override {
    return QStringLiteral("print one article of a law as the answer window prints it, e.g. article 刑法 133");
  }
  int minOperands() const override { return 2; }
  int maxOperands() const override { return 2; }
  int run(CommandContext& ctx) override;
};

// cite "参见《刑法》第12条第2款、第13条": the law text printed under an answer
// with that citation.
class CiteCommand final : public Command {
 public:
  QString name() const override { return QStringLiteral("cite"); }
  QString operandsZh() const override { return QStringLiteral("引文"); }
  QString operandsEn() const override { return QStringLiteral("CITATION"); }
  QString summaryZh() const override {
    return QStringLiteral("打印答案下面这段引文所引的法条，如：cite \"参见《刑法》第12条、第13条\"");
  }
  QString summaryEn() const override {
    return QStringLiteral("print the law text an answer with this citation shows, e.g. cite \"参见《刑法》第12条、第13条\"");
  }
  int minOperands() const override { return 1; }
  int maxOperands() const override { return 1; }
  int run(CommandContext& ctx) override;
};

// search 正当防卫 --group 刑法类: the articles holding a text, as the law query
// shows them for a group (or one law) of its trees. With --questions the
// question search instead (cli/question_commands.h).
class SearchCommand final : public Command {
 public:
  QString name() const override { return QStringLiteral("search"); }
  QString operandsZh() const override { return QStringLiteral("文字"); }
  QString operandsEn() const override { return QStringLiteral("TEXT"); }
  QString summaryZh() const override {
    return QStringLiteral("按法律查询的方式找出含这段文字的法条，如：search 正当防卫 --group 刑法类；"
                          "加 --questions 则按“题目搜索”查试题，如：search --questions 正当防卫 过当");
  }
  QString summaryEn() const override {
    return QStringLiteral("the articles holding a text, as the law query finds them, e.g. search 正当防卫 --group 刑法类; "
                          "with --questions the questions holding words, as 题目搜索 finds them");
  }
  QList<OptionInfo> options() const override;
  int minOperands() const override { return 1; }
  // Several words for the question search (--questions).
  int maxOperands() const override { return 1000; }
  int run(CommandContext& ctx) override;
};

}  // namespace mj::cli
