#include "cli/scratch_folder.h"

#include "platform/paths.h"

namespace mj::cli {

ScratchFolder::ScratchFolder(const Env& env, const QStringList& files, const QStringList& required)
    : env_{dir_.path(), env.clock, env.boxes, env.shell, env.dialogs, nullptr} {
  if (!dir_.isValid()) {
    problem_ = QStringLiteral("无法建立临时文件夹：%1").arg(dir_.errorString());
    return;
  }
  for (const QString& f : files + required) {
    // The folder is there even when the file is not, so that the core can
    // make the file on the copy as it would in the program folder.
    const QString to = env_.path(f);
    MakeDir(to.left(to.lastIndexOf(QLatin1Char('/'))));
    const QString from = env.path(f);
    if (!FileExists(from)) {
      if (required.contains(f)) {
        problem_ = QStringLiteral("%1 不存在。").arg(from);
        return;
      }
      continue;
    }
    if (!CopyFileOver(from, to)) {
      problem_ = QStringLiteral("无法读取 %1。").arg(from);
      return;
    }
  }
}

}  // namespace mj::cli
