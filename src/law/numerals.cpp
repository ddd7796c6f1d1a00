#include "law/numerals.h"

#include <QHash>
#include <QMutex>
#include <QMutexLocker>
#include <cmath>

#include "platform/vbtext.h"

namespace mj {

namespace {

const QString kPlaces = QStringLiteral("万千百十个零");
const QString kDigits = QStringLiteral("1234567890");
const QString kNumeralDigits = QStringLiteral("一二三四五六七八九零");
const QString kRepairRun = QStringLiteral("零一十");

// The numeral digit of one decimal digit character.
QString NumeralDigit(QChar d) { return Mid(kNumeralDigits, InStr(kDigits, QString(d)), 1); }

QString DaXieWhole(long long n) {
  if (n == 10) return QStringLiteral("十");
  if (n >= 0 && n <= 9) return NumeralDigit(CStr(n).at(0));
  if (n >= 11 && n <= 19) return QStringLiteral("十") + NumeralDigit(CStr(n).back());

  // Padded form: every digit followed by its place name.
  const QString padded = Right(QStringLiteral("00000") + CStr(n), 5);
  QString s;
  for (qsizetype p = 1; p <= 5; ++p) {
    s += NumeralDigit(padded.at(p - 1));
    s += Mid(kPlaces, p, 1);
  }
  // The units place sign always goes; a zero unit goes with it.
  s = Mid(s, 9, 1) == u"零" ? Left(s, 8) : Left(s, 9);
  while (Left(s, 1) == u"零") s = Mid(s, 3);
  // A zero swallows its own place name and any zero that follows it.
  QString r = Left(s, 1);
  for (qsizetype i = 2; i <= Len(s); ++i) {
    const QString c = Mid(s, i, 1);
    if (Right(r, 1) == u"零" && InStr(kPlaces, c) > 0) continue;
    r += c;
  }
  while (Right(r, 1) == u"零") r.chop(1);
  // House rule: after a zero, 一十 is written 十 (一千零十), as the law texts do.
  for (qsizetype p = InStr(r, kRepairRun); p > 0; p = InStr(r, kRepairRun)) r.remove(p, 1);
  return r;
}

// Numeral -> number, the first (smallest) number that prints it.
const QHash<QString, qint32>& ReverseMap() {
  static const QHash<QString, qint32> map = [] {
    QHash<QString, qint32> m;
    m.reserve(100000);
    for (qint32 i = 1; i <= 99999; ++i) {
      const QString s = DaXieWhole(i);
      if (!m.contains(s)) m.insert(s, i);
    }
    return m;
  }();
  return map;
}

}  // namespace

QString DaXie(double n) {
  if (!std::isfinite(n)) return QString();
  const long long k = RoundHalfEven(n);
  if (k < 0 || k > 99999) return QString();
  return DaXieWhole(k);
}

qint32 DaXieToNum(const QString& text) {
  const auto& m = ReverseMap();
  const auto it = m.constFind(text);
  if (it == m.constEnd() || it.value() > 30000) return -1;
  return it.value();
}

qint32 MyGetTheNum(const QString& text) {
  const auto& m = ReverseMap();
  const auto it = m.constFind(text);
  return it == m.constEnd() ? 0 : it.value();
}

bool IsUcaseNum(const QString& text) {
  static const QString allowed = QStringLiteral("一二三四五六七八九十百千万亿零");
  for (QChar c : text)
    if (!allowed.contains(c)) return false;
  return true;
}

QString GetLongDaXie(qint16 count) {
  if (count <= 0) return QString();
  // The table for the largest count asked so far; smaller ones are its head.
  static QMutex mutex;
  static QString longest;
  QMutexLocker lock(&mutex);
  const qsizetype have = longest.size() / 9;
  if (have < count) {
    longest.reserve(static_cast<qsizetype>(count) * 9);
    for (qsizetype i = have + 1; i <= count; ++i) longest += Right(Space(9) + DaXieWhole(i), 9);
  }
  return longest.left(static_cast<qsizetype>(count) * 9);
}

QString NumeralOfSlot(const QString& table, long long n) {
  if (n < 1) return QString();
  return Trim(Mid(table, (n - 1) * 9 + 1, 9));
}

QStringList MakeNumeralTable() {
  QStringList table;
  FillNumeralTable(table);
  return table;
}

void FillNumeralTable(QStringList& table) {
  table.clear();
  table.reserve(kNumeralTableLast + 1);
  for (int i = 0; i <= kNumeralTableLast; ++i) table.append(DaXieWhole(i));
}

}  // namespace mj
