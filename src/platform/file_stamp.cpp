#include "platform/file_stamp.h"

#include <QDateTime>
#include <QFileInfo>

namespace mj {

FileStamp StampOf(const QString& path) {
  const QFileInfo info(path);
  FileStamp s;
  if (!info.isFile()) return s;
  s.exists = true;
  s.size = info.size();
  const QDateTime modified = info.lastModified();
  s.modifiedMs = modified.isValid() ? modified.toMSecsSinceEpoch() : 0;
  return s;
}

}  // namespace mj
