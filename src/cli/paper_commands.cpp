#include "cli/paper_commands.h"

#include "papers/auto_format.h"
#include "papers/paper_file.h"

namespace mj::cli {

bool ReadNamedPaper(const QString& path, QString* text, QString* problem) {
  const QString absolute = NamedInputFile(path, QStringLiteral("试卷文件"), problem);
  if (absolute.isEmpty()) return false;
  const PaperFile paper = ReadPaper(absolute);
  if (!paper.ok) {
    *problem = QStringLiteral("试卷文件 %1 无法读取。").arg(path);
    return false;
  }
  *text = paper.text;
  return true;
}

int ConvertPaperCommand::run(CommandContext& ctx) {
  QString text, problem;
  if (!ReadNamedPaper(ctx.operands[0], &text, &problem)) return ctx.fail(problem);
  ctx.out = AutoFormat(text);
  return 0;
}

}  // namespace mj::cli
