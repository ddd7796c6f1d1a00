#pragma once
// The commands over an outside paper that are not its check: the automatic
// conversion of the paper window.

#include "cli/command.h"

namespace mj::cli {

// The paper text of FILE as ReadPaper gives it (GBK or UTF-8, CR LF), or the
// one-line reason why there is none. Shared by the commands that read a
// paper the user names.
bool ReadNamedPaper(const QString& path, QString* text, QString* problem);

// convert-paper FILE: the paper after 试一下自动转换, on standard output. The
// file itself is left as it is; a user who likes the result saves it with
// a redirection and checks it with check-paper.
class ConvertPaperCommand final : public Command {
 public:
  QString name() const override { return QStringLiteral("convert-paper"); }
  QString operandsZh() const override { return QStringLiteral("试卷文件"); }
  QString operandsEn() const override { return QStringLiteral("FILE"); }
  QString summaryZh() const override {
    return QStringLiteral("像外部题库窗口的“试一下自动转换”那样转换一份外部试卷，结果打印到标准输出，不改原文件");
  }
  QString summaryEn() const override {
    return QStringLiteral("convert an outside paper as 试一下自动转换 of the paper window does; the result goes to "
                          "standard output, the file stays as it is");
  }
  int minOperands() const override { return 1; }
  int maxOperands() const override { return 1; }
  int run(CommandContext& ctx) override;
};

}  // namespace mj::cli
