#include "platform/paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

#include "platform/textfile.h"

namespace mj {

QString MapSeparators(const QString& path) {
  QString p = path;
  p.replace(u'\\', u'/');
  return p;
}

QString ResolveCase(const QString& path) {
  const QString p = MapSeparators(path);
  if (p.isEmpty() || QFileInfo::exists(p)) return p;
  // Walk the components and fix each one that exists only in another case.
  const bool absolute = p.startsWith(u'/');
  const QStringList parts = p.split(u'/', Qt::SkipEmptyParts);
  QString cur = absolute ? QStringLiteral("/") : QStringLiteral(".");
  bool found = true;
  for (int i = 0; i < parts.size(); ++i) {
    const QString& part = parts[i];
    QString next = cur == u'/' ? u'/' + part : cur + u'/' + part;
    if (found && !QFileInfo::exists(next)) {
      found = false;
      if (part != u"." && part != u"..") {
        const QStringList entries = QDir(cur).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
        for (const QString& e : entries) {
          if (e.compare(part, Qt::CaseInsensitive) == 0) {
            next = cur == u'/' ? u'/' + e : cur + u'/' + e;
            found = true;
            break;
          }
        }
      }
    }
    if (!found) return p;
    cur = next;
  }
  if (!absolute && cur.startsWith(QStringLiteral("./"))) cur = cur.mid(2);
  return cur;
}

QString AppPath(const QString& root, const QString& suffix) {
  QString s = MapSeparators(suffix);
  QString r = MapSeparators(root);
  while (r.endsWith(u'/') && r.size() > 1) r.chop(1);
  if (!s.startsWith(u'/')) s.prepend(u'/');
  const QString full = r + s;
  // Keep a trailing separator when the suffix names a folder with one.
  const bool trailing = full.endsWith(u'/');
  QString resolved = ResolveCase(trailing ? full.left(full.size() - 1) : full);
  if (trailing) resolved.append(u'/');
  return resolved;
}

bool FileExists(const QString& path) {
  const QFileInfo fi(ResolveCase(path));
  return fi.exists() && fi.isFile();
}

bool DirExists(const QString& path) {
  QString p = MapSeparators(path);
  while (p.endsWith(u'/') && p.size() > 1) p.chop(1);
  const QFileInfo fi(ResolveCase(p));
  return fi.exists() && fi.isDir();
}

bool PathExists(const QString& path) { return QFileInfo::exists(ResolveCase(path)); }

bool MakeDir(const QString& path) { return QDir().mkpath(ResolveCase(path)); }

bool RemoveFile(const QString& path) { return QFile::remove(ResolveCase(path)); }

bool CopyFileOver(const QString& from, const QString& to) {
  bool ok = false;
  const QByteArray bytes = ReadBytes(from, &ok);
  return ok && WriteBytesAtomic(to, bytes);
}

QString SystemErrorText(int error) {
  switch (error) {
    case EACCES:
    case EPERM:
      return QStringLiteral("没有写入权限（文件或文件夹是只读的）");
    case EROFS:
      return QStringLiteral("所在的磁盘是只读的");
    case ENOSPC:
    case EDQUOT:
      return QStringLiteral("磁盘已满");
    case ENOENT:
      return QStringLiteral("文件或文件夹不存在");
    case EIO:
      return QStringLiteral("磁盘读写出错");
    case EISDIR:
      return QStringLiteral("这是一个文件夹");
    default:
      return QStringLiteral("系统错误 %1").arg(error);
  }
}

bool SyncFileData(const QString& path) {
  const QByteArray name = QFile::encodeName(ResolveCase(path));
  const int fd = ::open(name.constData(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return false;
  const bool ok = ::fdatasync(fd) == 0;
  const int saved = errno;
  ::close(fd);
  errno = saved;
  return ok;
}

}  // namespace mj
