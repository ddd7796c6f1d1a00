#include "support/test_env.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include "log/news.h"
#include "platform/paths.h"
#include "platform/textfile.h"

namespace mj::test {

TestEnv::TestEnv() : dir_(std::make_unique<QTemporaryDir>()) {
  env.root = dir_->path();
  env.clock = &clock;
  env.boxes = &boxes;
  env.shell = &shell;
  env.dialogs = &dialogs;
  env.clipboard = &clipboard;
}

TestEnv::TestEnv(const QString& copyFrom) : TestEnv() {
  CopyTree(copyFrom, env.root);
  if (QFileInfo(path(u"\\ini"_qs)).isDir()) NoSupportSite(*this);
}

void NoSupportSite(const TestEnv& t) { t.writeGbk(kSiteFile, u"["_qs + kSiteSection + u"]\r\n"_qs + kSiteKey + u"="_qs + kNoSite + u"\r\n"_qs); }

void UseSupportSite(const TestEnv& t, const QUrl& site) {
  t.writeGbk(kSiteFile, u"["_qs + kSiteSection + u"]\r\n"_qs + kSiteKey + u"="_qs + site.toString() + u"\r\n"_qs);
}

void TestEnv::writeGbk(const QString& suffix, const QString& text) const {
  const QString p = path(suffix);
  QDir().mkpath(QFileInfo(p).absolutePath());
  WriteTextAtomic(p, text);
}

QString TestEnv::readGbk(const QString& suffix) const { return ReadText(path(suffix)); }

void TestEnv::mkdir(const QString& suffix) const { QDir().mkpath(path(suffix)); }

bool CopyTree(const QString& from, const QString& to) {
  QDir src(from);
  if (!src.exists()) return false;
  QDir().mkpath(to);
  QDirIterator it(from, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDirIterator::Subdirectories);
  bool ok = true;
  while (it.hasNext()) {
    const QString p = it.next();
    const QString rel = src.relativeFilePath(p);
    const QString dst = to + u'/' + rel;
    if (it.fileInfo().isDir()) ok &= QDir().mkpath(dst);
    else {
      QDir().mkpath(QFileInfo(dst).absolutePath());
      QFile::remove(dst);
      ok &= QFile::copy(p, dst);
      QFile(dst).setPermissions(QFile(p).permissions() | QFile::WriteOwner);
    }
  }
  return ok;
}

QString DemoDataDir() {
  const QString d = QStringLiteral(MJ_BINARY_DIR "/demo");
  return QFileInfo::exists(d + QStringLiteral("/yibanti")) ? d : QString();
}

QString RealDataDir() {
  const QString d = QDir::cleanPath(QStringLiteral(MJ_REALDATA_DIR));
  return QFileInfo::exists(d) ? d : QString();
}

QString OutputDir() {
  QString d = qEnvironmentVariable("MJ_TEST_OUTPUT");
  if (d.isEmpty()) d = QStringLiteral(MJ_BINARY_DIR "/test-output");
  QDir().mkpath(d);
  return d;
}

}  // namespace mj::test
