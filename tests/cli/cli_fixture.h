#pragma once
// Shared pieces of the command-line tests: a run of mingjing-cli in this
// process, and a fingerprint of a folder tree to prove that a command left
// it as it was.

#include <QCryptographicHash>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include "cli/cli.h"
#include "platform/clock.h"

namespace mj::test {

// Runs mingjing-cli with the arguments on `folder` (none: no --folder), on
// the tests' fixed day.
inline cli::CliResult RunCliOn(const QString& folder, QStringList args) {
  static FixedClock clock;
  static QTemporaryDir exeDir;  // an executable's folder that is not an installed one
  args.prepend(QStringLiteral("mingjing-cli"));
  if (!folder.isEmpty()) args << QStringLiteral("--folder") << folder;
  QProcessEnvironment environment;
  environment.insert(QStringLiteral("HOME"), exeDir.path());
  return cli::RunCli(args, cli::CliSetup{exeDir.path(), environment, &clock});
}

// Path -> size, modification time and content hash of every file below root,
// and every folder.
inline QMap<QString, QString> TreeFingerprint(const QString& root) {
  QMap<QString, QString> m;
  QDirIterator it(root, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDirIterator::Subdirectories);
  while (it.hasNext()) {
    const QString path = it.next();
    const QFileInfo fi = it.fileInfo();
    if (fi.isDir()) {
      m.insert(path, QStringLiteral("folder"));
      continue;
    }
    QFile f(path);
    QByteArray hash;
    if (f.open(QIODevice::ReadOnly)) hash = QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha1).toHex();
    m.insert(path, QString::number(fi.size()) + QLatin1Char(' ') +
                       QString::number(fi.lastModified().toMSecsSinceEpoch()) + QLatin1Char(' ') +
                       QString::fromLatin1(hash));
  }
  return m;
}

// Text with CR LF line ends as the command prints it.
inline QString Lf(QString text) { return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")); }

}  // namespace mj::test
