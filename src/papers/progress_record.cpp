#include "papers/progress_record.h"

#include <cmath>

#include "platform/paths.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

const QString kLastSection = QStringLiteral("做到题类");
const QString kLastNumber = QStringLiteral("做到编号");
const QString kLastKey = QStringLiteral("答");

// A number read from a record value: its numeric prefix (0 for none, and
// for what is no number at all).
double NumberOf(const QString& value) {
  const double v = Val(value);
  return std::isfinite(v) ? v : 0.0;
}

}  // namespace

ProgressRecord ProgressRecord::FromBytes(const QByteArray& bytes) {
  ProgressRecord r;
  r.ini_ = IniDocument(DecodeText(bytes));
  r.exists_ = true;
  return r;
}

ProgressRecord ProgressRecord::Read(const QString& path) {
  if (path.isEmpty() || !FileExists(path)) return {};
  bool ok = false;
  const QByteArray bytes = ReadBytes(path, &ok);
  return FromBytes(ok ? bytes : QByteArray());
}

QString ProgressRecord::value(int t, qint64 n) const { return ini_.value(QString::number(t), QString::number(n)); }

double ProgressRecord::lastSection() const { return NumberOf(ini_.value(kLastSection, kLastKey)); }
double ProgressRecord::lastNumber() const { return NumberOf(ini_.value(kLastNumber, kLastKey)); }

bool IsOkValue(const QString& value) { return value.compare(QStringLiteral("OKOK"), Qt::CaseInsensitive) == 0; }

QString RecordWithAnswer(const QString& recordText, int t, qint64 n, const QString& value) {
  QString text = IniWithValue(recordText, QString::number(t), QString::number(n), UCase(value));
  text = IniWithValue(text, kLastSection, kLastKey, QString::number(t));
  return IniWithValue(text, kLastNumber, kLastKey, QString::number(n));
}

bool WriteAnswerRecord(const QString& recFile, int t, qint64 n, const QString& value) {
  if (recFile.isEmpty()) return false;
  QString old;
  if (FileExists(recFile)) {
    bool ok = false;
    old = ReadText(recFile, &ok);
    if (!ok) return false;
  }
  return WriteTextAtomic(recFile, RecordWithAnswer(old, t, n, value));
}

}  // namespace mj
