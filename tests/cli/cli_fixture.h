#pragma once
// Shared pieces of the command-line tests: a run of mingjing-cli in this
// process, a fingerprint of a folder tree to prove that a command left it as
// it was, and a test over a copy of the demonstration folder.

#include <gtest/gtest.h>

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
#include "law/law_files.h"
#include "platform/clock.h"
#include "support/test_env.h"

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

// A test on its own copy of the demonstration folder, its fingerprint taken
// at the start; skipped when the demonstration data are not built.
class CliDemoTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (DemoDataDir().isEmpty()) GTEST_SKIP() << "demonstration data not built";
    te = std::make_unique<TestEnv>(DemoDataDir());
    // Law texts of an earlier test's folder are not this folder's.
    ClearLawCache();
    before = TreeFingerprint(te->root());
  }
  // Runs on the copy of the demonstration folder.
  cli::CliResult run(const QStringList& args) { return RunCliOn(te->root(), args); }
  // The folder is as it was before the test.
  void expectUnchanged() { EXPECT_EQ(TreeFingerprint(te->root()), before); }
  // Status 1, the message alone on standard error, nothing on standard output.
  void expectFailure(const QStringList& args, const QString& message) {
    const cli::CliResult r = run(args);
    EXPECT_EQ(r.status, 1) << args.join(u' ').toStdString();
    EXPECT_EQ(r.err, message) << args.join(u' ').toStdString();
    EXPECT_EQ(r.out, QString()) << args.join(u' ').toStdString();
    EXPECT_FALSE(r.err.contains(u'\n'));
  }

  std::unique_ptr<TestEnv> te;
  QMap<QString, QString> before;
};

// Text with CR LF line ends as the command prints it.
inline QString Lf(QString text) { return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")); }

}  // namespace mj::test
