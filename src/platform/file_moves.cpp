#include "platform/file_moves.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>

#include "platform/paths.h"

namespace mj {

bool MoveFileOver(const QString& from, const QString& to) {
  const QString src = ResolveCase(MapSeparators(from));
  const QString dst = ResolveCase(MapSeparators(to));
  return ::rename(QFile::encodeName(src).constData(), QFile::encodeName(dst).constData()) == 0;
}

bool RenameFileKeeping(const QString& from, const QString& to) {
  const QString target = ResolveCase(MapSeparators(to));
  const QByteArray src = QFile::encodeName(ResolveCase(MapSeparators(from)));
  const QByteArray dst = QFile::encodeName(target);
  // The kernel refuses to replace in the same step as it renames, so that a
  // file appearing under the new name meanwhile is never lost either.
  if (::renameat2(AT_FDCWD, src.constData(), AT_FDCWD, dst.constData(), RENAME_NOREPLACE) == 0) return true;
  if (errno != EINVAL && errno != ENOSYS) return false;
  // A file system without that guarantee: look first, then rename.
  if (QFileInfo::exists(target)) return false;
  return ::rename(src.constData(), dst.constData()) == 0;
}

bool CopyFolderOver(const QString& from, const QString& to) {
  const QString src = ResolveCase(MapSeparators(from));
  if (!QFileInfo(src).isDir()) return false;
  bool ok = MakeDir(to);
  const QString dst = ResolveCase(MapSeparators(to));
  const QDir dir(src);
  for (const QFileInfo& fi : dir.entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Name)) {
    const QString target = dst + u'/' + fi.fileName();
    if (fi.isDir())
      ok = CopyFolderOver(fi.filePath(), target) && ok;
    else
      ok = CopyFileOver(fi.filePath(), target) && ok;
  }
  return ok;
}

QDateTime FileModified(const QString& path) {
  const QFileInfo fi(ResolveCase(MapSeparators(path)));
  return fi.exists() ? fi.lastModified() : QDateTime();
}

QString CleanAbsolutePath(const QString& path) { return QDir::cleanPath(QFileInfo(MapSeparators(path)).absoluteFilePath()); }

bool IsInsideFolder(const QString& path, const QString& folder) {
  const QString p = CleanAbsolutePath(path);
  QString f = CleanAbsolutePath(folder);
  if (p == f) return true;
  if (!f.endsWith(u'/')) f.append(u'/');
  return p.startsWith(f);
}

}  // namespace mj
