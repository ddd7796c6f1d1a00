#include "platform/program_folder.h"

#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include "platform/paths.h"

namespace mj {

QString PerUserFolder(const QProcessEnvironment& environment) {
  // The XDG rule: a relative XDG_DATA_HOME is invalid and ignored.
  const QString xdg = environment.value(QStringLiteral("XDG_DATA_HOME"));
  if (!xdg.isEmpty() && QDir::isAbsolutePath(xdg)) return QDir::cleanPath(xdg + QStringLiteral("/mingjing"));
  const QString home = environment.value(QStringLiteral("HOME"));
  if (home.isEmpty()) return QString();
  return QDir::cleanPath(home + QStringLiteral("/.local/share/mingjing"));
}

bool IsInstalledFolder(const QString& exeDir) {
  if (QFileInfo::exists(exeDir + QLatin1Char('/') + kPackagedMarker)) return true;
  // A folder the user may not write to cannot keep practice records.
  return ::access(QFile::encodeName(exeDir).constData(), W_OK) != 0;
}

ProgramFolderChoice ChooseProgramFolder(const QString& exeDir, const QString& folderArg,
                                        const QProcessEnvironment& environment) {
  ProgramFolderChoice c;
  if (!folderArg.isEmpty()) {
    const QFileInfo fi(folderArg);
    if (!fi.exists()) {
      c.problem = QStringLiteral("程序文件夹 %1 不存在。").arg(folderArg);
    } else if (!fi.isDir()) {
      c.problem = QStringLiteral("%1 不是文件夹。").arg(folderArg);
    } else {
      c.folder = fi.absoluteFilePath();
    }
    return c;
  }
  if (!IsInstalledFolder(exeDir)) {
    c.folder = exeDir;
    return c;
  }
  c.perUser = true;
  c.folder = PerUserFolder(environment);
  if (c.folder.isEmpty())
    c.problem = QStringLiteral("找不到用户的数据文件夹：环境变量 HOME 和 XDG_DATA_HOME 都没有设置。");
  return c;
}

QString TakeFolderOption(QStringList& args, bool* present, bool* missingValue) {
  if (present) *present = false;
  if (missingValue) *missingValue = false;
  QString value;
  for (int i = 1; i < args.size();) {
    const QString& a = args[i];
    if (a == QStringLiteral("--")) break;  // what follows are operands
    if (a == QStringLiteral("--folder")) {
      if (present) *present = true;
      if (i + 1 < args.size()) {
        value = args[i + 1];
        args.remove(i, 2);
      } else {
        if (missingValue) *missingValue = true;
        args.remove(i);
      }
      continue;
    }
    if (a.startsWith(QStringLiteral("--folder="))) {
      if (present) *present = true;
      value = a.mid(9);
      if (value.isEmpty() && missingValue) *missingValue = true;
      args.remove(i);
      continue;
    }
    ++i;
  }
  return value;
}

bool FillFromDataPackage(const QString& exeDir, const QString& folder, QString* problem) {
  if (DirExists(AppPath(folder, QStringLiteral("\\yibanti")))) return true;
  const QString package = exeDir + QLatin1Char('/') + kDataPackageName;
  if (!QFileInfo(package).isExecutable()) {
    if (problem) *problem = QStringLiteral("数据包 %1 不存在，无法填充数据文件夹 %2。").arg(package, folder);
    return false;
  }
  if (!QDir().mkpath(folder)) {
    if (problem) *problem = QStringLiteral("无法建立数据文件夹 %1。").arg(folder);
    return false;
  }
  QProcess p;
  p.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  p.setStandardOutputFile(QProcess::nullDevice());
  // On the terminal: the program waits for it and goes on by itself.
  p.start(package, {QStringLiteral("--console"), folder});
  if (!p.waitForStarted(10000)) {
    if (problem) *problem = QStringLiteral("数据包 %1 无法启动。").arg(package);
    return false;
  }
  p.waitForFinished(-1);
  if (p.exitStatus() != QProcess::NormalExit || p.exitCode() != 0 ||
      !DirExists(AppPath(folder, QStringLiteral("\\yibanti")))) {
    if (problem) *problem = QStringLiteral("数据包 %1 没能填充数据文件夹 %2。").arg(package, folder);
    return false;
  }
  return true;
}

}  // namespace mj
