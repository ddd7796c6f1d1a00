#include "platform/file_stamp.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace mj {

FileStamp StampOf(const QString& path) {
#ifdef Q_OS_UNIX
  // One stat call: QFileInfo's time goes through the local time zone on
  // every call, which costs more than the stat itself when a search looks
  // at every bank file before each query.
  struct stat st {};
  FileStamp s;
  if (::stat(QFile::encodeName(path).constData(), &st) != 0 || !S_ISREG(st.st_mode)) return s;
  s.exists = true;
  s.size = static_cast<qint64>(st.st_size);
  s.modifiedMs = static_cast<qint64>(st.st_mtim.tv_sec) * 1000 + st.st_mtim.tv_nsec / 1000000;
  return s;
#else
  const QFileInfo info(path);
  FileStamp s;
  if (!info.isFile()) return s;
  s.exists = true;
  s.size = info.size();
  const QDateTime modified = info.lastModified();
  s.modifiedMs = modified.isValid() ? modified.toMSecsSinceEpoch() : 0;
  return s;
#endif
}

}  // namespace mj
