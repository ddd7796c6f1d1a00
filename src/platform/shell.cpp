#include "platform/shell.h"

#include <QProcess>
#include <QUrl>

#include "platform/paths.h"

namespace mj {

bool DesktopShell::open(const QString& target, const QString& workDir) {
  QString t = target;
  const bool address = t.startsWith(u"http://", Qt::CaseInsensitive) || t.startsWith(u"https://", Qt::CaseInsensitive) ||
                       t.startsWith(u"mailto:", Qt::CaseInsensitive);
  if (!address) {
    t = ResolveCase(t);
    if (!PathExists(t)) return false;
  }
  return QProcess::startDetached(QStringLiteral("xdg-open"), {t}, MapSeparators(workDir));
}

bool DesktopShell::start(const QString& program, const QStringList& args, WindowMode) {
  return QProcess::startDetached(ResolveCase(program), args);
}

bool RecordingShell::open(const QString& target, const QString& workDir) {
  calls.append({ShellCall::Open, target, {}, workDir, WindowMode::Normal});
  return result;
}

bool RecordingShell::start(const QString& program, const QStringList& args, WindowMode mode) {
  calls.append({ShellCall::Start, program, args, QString(), mode});
  return result;
}

}  // namespace mj
