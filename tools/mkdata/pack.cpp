#include "pack.h"

#include <QDataStream>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

#include "platform/paths.h"
#include "platform/textfile.h"

namespace mjpack {

namespace {

const QByteArray kMagic = QByteArrayLiteral("MJDATA-PACK-1\n");

}  // namespace

QList<Entry> ReadTree(const QString& root) {
  QList<Entry> out;
  QDir base(root);
  QDirIterator it(root, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDirIterator::Subdirectories);
  while (it.hasNext()) {
    const QString p = it.next();
    Entry e;
    e.path = base.relativeFilePath(p);
    e.isDir = it.fileInfo().isDir();
    if (!e.isDir) {
      QFile f(p);
      if (f.open(QIODevice::ReadOnly)) e.data = f.readAll();
    }
    out.append(e);
  }
  // A folder sorts before everything inside it, since its path is a prefix.
  std::sort(out.begin(), out.end(), [](const Entry& a, const Entry& b) { return a.path < b.path; });
  return out;
}

QByteArray Pack(const QList<Entry>& entries) {
  QByteArray bytes;
  QDataStream s(&bytes, QIODevice::WriteOnly);
  s.setVersion(QDataStream::Qt_6_0);
  s.writeRawData(kMagic.constData(), int(kMagic.size()));
  s << quint32(entries.size());
  for (const Entry& e : entries) s << e.path << e.isDir << e.data;
  return bytes;
}

bool Unpack(const QByteArray& bytes, QList<Entry>* entries) {
  entries->clear();
  if (!bytes.startsWith(kMagic)) return false;
  QDataStream s(bytes.mid(kMagic.size()));
  s.setVersion(QDataStream::Qt_6_0);
  quint32 n = 0;
  s >> n;
  for (quint32 i = 0; i < n && s.status() == QDataStream::Ok; ++i) {
    Entry e;
    s >> e.path >> e.isDir >> e.data;
    entries->append(e);
  }
  return s.status() == QDataStream::Ok && entries->size() == qsizetype(n);
}

UnpackReport UnpackInto(const QList<Entry>& entries, const QString& root,
                        const std::function<void(int done, int total)>& progress) {
  UnpackReport r;
  const int total = static_cast<int>(entries.size());
  int done = 0;
  for (const Entry& e : entries) {
    if (!r.failedPath.isEmpty()) break;
    if (progress) progress(done, total);
    ++done;
    // AppPath names an existing file or folder that differs only in case.
    const QString target = mj::AppPath(root, e.path);
    if (e.isDir) {
      if (mj::DirExists(target)) continue;
      if (mj::MakeDir(target))
        ++r.dirsMade;
      else
        r.failedPath = target;
      continue;
    }
    if (mj::PathExists(target)) {
      ++r.filesKept;
      continue;
    }
    const QString dir = QFileInfo(target).absolutePath();
    if (!mj::DirExists(dir) && !mj::MakeDir(dir)) {
      r.failedPath = dir;
      continue;
    }
    if (mj::WriteBytesAtomic(target, e.data))
      ++r.filesWritten;
    else
      r.failedPath = target;
  }
  if (progress && r.failedPath.isEmpty()) progress(total, total);
  return r;
}

}  // namespace mjpack
