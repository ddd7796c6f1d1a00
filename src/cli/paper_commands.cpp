#include "cli/paper_commands.h"

#include <QFileInfo>

#include "papers/auto_format.h"
#include "papers/paper_file.h"

namespace mj::cli {

bool ReadNamedPaper(const QString& path, QString* text, QString* problem) {
  const QFileInfo fi(path);
  if (!fi.exists()) {
    *problem = QStringLiteral("试卷文件 %1 不存在。").arg(path);
    return false;
  }
  if (fi.isDir()) {
    *problem = QStringLiteral("%1 是文件夹，不是试卷文件。").arg(path);
    return false;
  }
  const PaperFile paper = ReadPaper(fi.absoluteFilePath());
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
