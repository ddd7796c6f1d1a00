#include "support/read_only.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace mj::test {

namespace {

constexpr uid_t kNobody = 65534;

void setMode(const QString& path, mode_t mode) { ::chmod(QFile::encodeName(path).constData(), mode); }

mode_t modeOf(const QString& path) {
  struct stat st {};
  ::stat(QFile::encodeName(path).constData(), &st);
  return st.st_mode & 07777;
}

}  // namespace

ReadOnlyScope::ReadOnlyScope(const QString& folder, const QString& root) : folder_(folder) {
  QDirIterator it(folder_, QDir::Files | QDir::Hidden);
  while (it.hasNext()) setMode(it.next(), 0444);
  setMode(folder_, 0555);
  if (::geteuid() == 0) {
    // The program folder and every folder in it readable by others and by
    // the group (the process keeps root's group), and the folders above it
    // passable.
    for (QString p = QFileInfo(root).absoluteFilePath(); p != QStringLiteral("/"); p = QFileInfo(p).path()) {
      if ((modeOf(p) & 055) != 055) {
        opened_.append(p);
        setMode(p, modeOf(p) | 055);
      }
    }
    QDirIterator dirs(root, QDir::Dirs | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (dirs.hasNext()) {
      const QString d = dirs.next();
      if ((modeOf(d) & 055) != 055) {
        opened_.append(d);
        setMode(d, modeOf(d) | 055);
      }
    }
    QDirIterator files(root, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
      const QString f = files.next();
      if ((modeOf(f) & 044) != 044) setMode(f, modeOf(f) | 044);
    }
    asNobody_ = ::seteuid(kNobody) == 0;
  }
  // The scope holds when a file of the folder cannot be opened for writing.
  const QString probe = QDir(folder_).filePath(QStringLiteral(".probe"));
  const int fd = ::open(QFile::encodeName(probe).constData(), O_WRONLY | O_CREAT, 0644);
  holds_ = fd < 0;
  if (fd >= 0) {
    ::close(fd);
    ::unlink(QFile::encodeName(probe).constData());
  }
}

ReadOnlyScope::~ReadOnlyScope() {
  if (asNobody_) (void)::seteuid(0);
  setMode(folder_, 0755);
  QDirIterator it(folder_, QDir::Files | QDir::Hidden);
  while (it.hasNext()) setMode(it.next(), 0644);
  for (const QString& p : opened_) setMode(p, modeOf(p) & ~055);
}

}  // namespace mj::test
