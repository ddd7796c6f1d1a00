#pragma once
// What tells whether a file changed since it was last read: its size and
// the time of its last change. Caches of file contents (the texts of the
// question search) keep the stamp of what they read and read the file again
// only when the stamp differs.

#include <QString>

namespace mj {

struct FileStamp {
  bool exists = false;
  qint64 size = 0;
  qint64 modifiedMs = 0;  // milliseconds since the epoch, 0 when unknown
  bool operator==(const FileStamp&) const = default;
};

// The stamp of the file at path; exists false for a missing file (or a
// folder).
FileStamp StampOf(const QString& path);

}  // namespace mj
