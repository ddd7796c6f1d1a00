#include "platform/shell.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>

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
  auto* opener = new QProcess;
  opener->setProgram(opener_);
  opener->setArguments({t});
  opener->setWorkingDirectory(MapSeparators(workDir));
  opener->setStandardOutputFile(QProcess::nullDevice());
  opener->setStandardErrorFile(QProcess::nullDevice());
  opener->start();
  if (!opener->waitForStarted(5000)) {
    delete opener;
    return false;
  }
  // Wait for the opener's answer; the windows are still drawn meanwhile,
  // but take no input.
  QElapsedTimer waited;
  waited.start();
  while (opener->state() != QProcess::NotRunning && waited.elapsed() < verdictMs_) {
    opener->waitForFinished(50);
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  }
  if (opener->state() == QProcess::NotRunning) {
    const bool opened = opener->exitStatus() == QProcess::NormalExit && opener->exitCode() == 0;
    delete opener;
    return opened;
  }
  // It runs on with the program it started; it goes when it ends.
  QObject::connect(opener, &QProcess::finished, opener, &QObject::deleteLater);
  opener->setParent(QCoreApplication::instance());
  return true;
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
