#include "platform/textfile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>
#include <QStringDecoder>
#include <QStringEncoder>
#include <cstdio>
#include <unistd.h>

#include "platform/paths.h"

namespace mj {

QByteArray ToGbk(const QString& text) {
  QStringEncoder enc("GBK");
  return enc.encode(text);
}

QString FromGbk(const QByteArray& bytes) {
  QStringDecoder dec("GBK");
  return dec.decode(bytes);
}

QString DecodeText(const QByteArray& bytes) {
  if (bytes.startsWith("\xEF\xBB\xBF")) {
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString s = utf8.decode(bytes.mid(3));
    if (!utf8.hasError()) return s;
  }
  return FromGbk(bytes);
}

qsizetype GbkLength(const QString& text) { return ToGbk(text).size(); }

QString GbkHead(const QString& text, qsizetype maxBytes) {
  if (maxBytes <= 0) return QString();
  QStringEncoder enc("GBK");
  qsizetype bytes = 0;
  qsizetype i = 0;
  while (i < text.size()) {
    const qsizetype step = (text[i].isHighSurrogate() && i + 1 < text.size()) ? 2 : 1;
    const qsizetype w = text[i].unicode() < 0x80 ? 1 : QByteArray(enc.encode(QStringView(text).mid(i, step))).size();
    if (bytes + w > maxBytes) break;
    bytes += w;
    i += step;
  }
  return text.left(i);
}

QByteArray ReadBytes(const QString& path, bool* ok) {
  QFile f(ResolveCase(path));
  if (!f.open(QIODevice::ReadOnly)) {
    if (ok) *ok = false;
    return {};
  }
  if (ok) *ok = true;
  return f.readAll();
}

QString ReadText(const QString& path, bool* ok) { return DecodeText(ReadBytes(path, ok)); }

bool WriteBytesAtomic(const QString& path, const QByteArray& bytes) {
  QSaveFile f(ResolveCase(path));
  if (!f.open(QIODevice::WriteOnly)) return false;
  if (f.write(bytes) != bytes.size()) {
    f.cancelWriting();
    return false;
  }
  return f.commit();
}

bool WriteBytesPlain(const QString& path, const QByteArray& bytes) {
  QFile f(ResolveCase(path));
  if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate)) return false;
  const bool ok = f.write(bytes) == bytes.size() && f.flush();
  f.close();
  return ok;
}

bool SyncToDisk(const QStringList& paths) {
  if (paths.isEmpty()) return true;
  QFile first(ResolveCase(paths.first()));
  if (!first.open(QIODevice::ReadOnly)) return false;
#ifdef __linux__
  // One write-back for the whole file system costs as much as one fsync.
  if (::syncfs(first.handle()) == 0) return true;
#endif
  first.close();
  bool ok = true;
  for (const QString& p : paths) {
    QFile f(ResolveCase(p));
    ok = f.open(QIODevice::ReadOnly) && ::fsync(f.handle()) == 0 && ok;
  }
  return ok;
}

bool RenameOver(const QString& from, const QString& to) {
  return std::rename(QFile::encodeName(ResolveCase(from)).constData(), QFile::encodeName(ResolveCase(to)).constData()) == 0;
}

bool WriteTextAtomic(const QString& path, const QString& text) {
  return WriteBytesAtomic(path, ToGbk(text));
}

bool AppendText(const QString& path, const QString& text) {
  QFile f(ResolveCase(path));
  if (!f.open(QIODevice::WriteOnly | QIODevice::Append)) return false;
  const QByteArray b = ToGbk(text);
  return f.write(b) == b.size() && f.flush();
}

int RemoveLeftoverSaves(const QString& path) {
  const QFileInfo file(ResolveCase(path));
  const QDir dir = file.dir();
  const QRegularExpression leftover(QStringLiteral("^") + QRegularExpression::escape(file.fileName()) +
                                    QStringLiteral("\\.[A-Za-z0-9]{6}$"));
  int removed = 0;
  for (const QString& name : dir.entryList({file.fileName() + QStringLiteral(".*")}, QDir::Files | QDir::Hidden))
    if (leftover.match(name).hasMatch() && QFile::remove(dir.filePath(name))) ++removed;
  return removed;
}

}  // namespace mj
