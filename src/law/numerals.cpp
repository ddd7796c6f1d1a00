#include "law/numerals.h"

#include <QHash>
#include <QMutex>
#include <QMutexLocker>
#include <cmath>

#include "platform/vbtext.h"

namespace mj {

namespace {

// The numeral digits of 0..9.
constexpr char16_t kDigit[] = u"零一二三四五六七八九";

// The numeral digit of d, 0..9.
QString NumeralDigit(long long d) { return QString(QChar(kDigit[d])); }

QString DaXieWhole(long long n) {
  if (n == 10) return QStringLiteral("十");
  if (n >= 0 && n <= 9) return NumeralDigit(n);
  if (n >= 11 && n <= 19) return QStringLiteral("十") + NumeralDigit(n - 10);

  // Padded form: every digit of the five-digit number followed by its place
  // name, 万千百十个 (105 gives 零万零千一百零十五个). Built in a fixed buffer:
  // the look-ups call this for every numeral they check.
  static constexpr char16_t kPlace[] = u"万千百十个";
  constexpr char16_t kZero = u'零';
  char16_t s[10];
  long long rest = n;
  for (int p = 4; p >= 0; --p) {
    s[2 * p] = kDigit[rest % 10];
    s[2 * p + 1] = kPlace[p];
    rest /= 10;
  }
  // The units place sign always goes; a zero unit goes with it.
  const int len = s[8] == kZero ? 8 : 9;
  int start = 0;
  while (start < len && s[start] == kZero) start += 2;
  // A zero swallows its own place name and any zero that follows it.
  auto isPlace = [](char16_t c) { return c == u'万' || c == u'千' || c == u'百' || c == u'十' || c == u'个' || c == u'零'; };
  char16_t r[10];
  int m = 0;
  if (start < len) r[m++] = s[start];
  for (int i = start + 1; i < len; ++i) {
    if (r[m - 1] == kZero && isPlace(s[i])) continue;
    r[m++] = s[i];
  }
  while (m > 0 && r[m - 1] == kZero) --m;
  // House rule: after a zero, 一十 is written 十 (一千零十), as the law texts do.
  for (int i = 0; i + 2 < m;) {
    if (r[i] == kZero && r[i + 1] == u'一' && r[i + 2] == u'十') {
      for (int j = i + 1; j + 1 < m; ++j) r[j] = r[j + 1];
      --m;
      i = 0;
    } else {
      ++i;
    }
  }
  return QString(reinterpret_cast<const QChar*>(r), m);
}

// The one number a numeral text can stand for, read by place values
// (十 alone is 10, 零 only separates), or 0 when the text holds anything else.
// It is only a candidate: the look-ups accept it when DaXie prints exactly
// the given text for it, so that the inverse stays as wide as the generator
// and no wider (一十 reads as 10, but 10 prints 十, so 一十 is no numeral).
qint32 CandidateOf(const QString& text) {
  static const QString digits = QStringLiteral("一二三四五六七八九");
  long long total = 0, section = 0, digit = 0;
  bool any = false;
  for (QChar c : text) {
    const qsizetype d = digits.indexOf(c);
    if (d >= 0) {
      digit = d + 1;
      any = true;
      continue;
    }
    int unit = 0;
    switch (c.unicode()) {
      case u'零': digit = 0; continue;
      case u'十': unit = 10; break;
      case u'百': unit = 100; break;
      case u'千': unit = 1000; break;
      case u'万':
        total += (section + digit) * 10000;
        section = digit = 0;
        if (total > 99999) return 0;
        continue;
      default:
        return 0;
    }
    section += (digit == 0 && unit == 10 ? 1 : digit) * unit;
    digit = 0;
    any = true;
  }
  const long long n = total + section + digit;
  return any && n >= 1 && n <= 99999 ? static_cast<qint32>(n) : 0;
}

// The number (1..limit) whose numeral is text, or 0.
qint32 NumberOfNumeral(const QString& text, qint32 limit) {
  const qint32 n = CandidateOf(text);
  return n >= 1 && n <= limit && DaXieWhole(n) == text ? n : 0;
}

}  // namespace

QString DaXie(double n) {
  if (!std::isfinite(n)) return QString();
  const long long k = RoundHalfEven(n);
  if (k < 0 || k > 99999) return QString();
  return DaXieWhole(k);
}

qint32 DaXieToNum(const QString& text) {
  const qint32 n = NumberOfNumeral(text, 30000);
  return n == 0 ? -1 : n;
}

qint32 MyGetTheNum(const QString& text) { return NumberOfNumeral(text, 99999); }

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
  // A slot beyond the table is empty (and its place would not fit a number).
  if (n < 1 || n > table.size() / 9 + 1) return QString();
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
