#pragma once
// The data package's archive: the folders and files of a program folder
// tree, packed into one byte array that the data package program carries
// inside itself and unpacks beside its executable.

#include <QByteArray>
#include <QList>
#include <QString>
#include <functional>

namespace mjpack {

struct Entry {
  QString path;  // relative to the tree's root, "/" separators
  bool isDir = false;
  QByteArray data;  // the file's bytes; empty for a folder
};

// Every folder and file under root, folders before what they hold, in a
// stable order (by path).
QList<Entry> ReadTree(const QString& root);

QByteArray Pack(const QList<Entry>& entries);
// False when the bytes are not an archive of this kind or are cut short.
bool Unpack(const QByteArray& bytes, QList<Entry>* entries);

struct UnpackReport {
  int filesWritten = 0;
  int filesKept = 0;  // already there: left as they are
  int dirsMade = 0;
  QString failedPath;  // the first file or folder that could not be made
};

// Writes the entries under root. An existing file (its name compared
// without regard to letter case, as the data set comes from Windows) is
// never touched, so a folder in use keeps its records; missing folders
// and files are made. `progress`, when given, hears after each entry how
// many of all are done.
UnpackReport UnpackInto(const QList<Entry>& entries, const QString& root,
                        const std::function<void(int done, int total)>& progress = {});

}  // namespace mjpack
