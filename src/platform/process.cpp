#include "platform/process.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStandardPaths>

#include "platform/events.h"

namespace mj {

QString FindProgram(const QString& name) { return QStandardPaths::findExecutable(name); }

ProgramResult RunProgram(const QString& program, const QStringList& args, int timeoutMs,
                         const QStringList& environment) {
  ProgramResult r;
  QProcess p;
  QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
  for (const QString& pair : environment) {
    const qsizetype eq = pair.indexOf(u'=');
    if (eq > 0) env.insert(pair.left(eq), pair.mid(eq + 1));
  }
  p.setProcessEnvironment(env);
  p.start(program, args, QIODevice::ReadOnly);
  if (!p.waitForStarted(5000)) return r;
  r.started = true;
  // Short waits, so that the window stays alive while a big table is read.
  QElapsedTimer t;
  t.start();
  while (p.state() != QProcess::NotRunning && t.elapsed() < timeoutMs) {
    p.waitForFinished(50);
    r.output += p.readAllStandardOutput();
    r.errors += p.readAllStandardError();
    LetEventsThrough();
  }
  if (p.state() != QProcess::NotRunning) {
    p.kill();
    p.waitForFinished(2000);
    return r;
  }
  r.output += p.readAllStandardOutput();
  r.errors += p.readAllStandardError();
  r.finished = p.exitStatus() == QProcess::NormalExit;
  r.exitCode = p.exitCode();
  return r;
}

}  // namespace mj
