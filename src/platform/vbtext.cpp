#include "platform/vbtext.h"

#include <cmath>

namespace mj {

std::optional<QString> MidChecked(const QString& s, qsizetype start, qsizetype n) {
  if (start < 1) return std::nullopt;
  if (start > s.size()) return QString();
  if (n < 0) return s.mid(start - 1);
  return s.mid(start - 1, n);
}

QString Mid(const QString& s, qsizetype start, qsizetype n) {
  return MidChecked(s, start, n).value_or(QString());
}

QString Left(const QString& s, qsizetype n) {
  if (n <= 0) return QString();
  return s.left(n);
}

QString Right(const QString& s, qsizetype n) {
  if (n <= 0) return QString();
  return s.right(n);
}

qsizetype InStr(const QString& s, const QString& find) { return InStr(1, s, find); }

qsizetype InStr(qsizetype start, const QString& s, const QString& find) {
  if (start < 1) start = 1;
  if (s.isEmpty()) return 0;
  if (find.isEmpty()) return start <= s.size() + 1 ? start : 0;
  if (start > s.size()) return 0;
  const qsizetype p = s.indexOf(find, start - 1);
  return p < 0 ? 0 : p + 1;
}

qsizetype InStrRev(const QString& s, const QString& find, qsizetype start) {
  if (start == -1) start = s.size();
  if (s.isEmpty() || start < 1) return 0;
  if (start > s.size()) return 0;
  if (find.isEmpty()) return start;
  // The match must end at or before start.
  const qsizetype from = start - find.size();
  if (from < 0) return 0;
  const qsizetype p = s.lastIndexOf(find, from);
  return p < 0 ? 0 : p + 1;
}

QString LTrim(const QString& s) {
  qsizetype i = 0;
  while (i < s.size() && s[i] == u' ') ++i;
  return s.mid(i);
}

QString RTrim(const QString& s) {
  qsizetype e = s.size();
  while (e > 0 && s[e - 1] == u' ') --e;
  return s.left(e);
}

QString Trim(const QString& s) { return LTrim(RTrim(s)); }

QString UCase(const QString& s) {
  QString r = s;
  for (QChar& c : r)
    if (c >= u'a' && c <= u'z') c = QChar(c.unicode() - 32);
  return r;
}

QString LCase(const QString& s) {
  QString r = s;
  for (QChar& c : r)
    if (c >= u'A' && c <= u'Z') c = QChar(c.unicode() + 32);
  return r;
}

namespace {
bool skippable(QChar c) { return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n'; }
}  // namespace

double Val(const QString& s) {
  // Collect the characters that count, dropping the blanks Val ignores.
  QString t;
  t.reserve(s.size());
  for (QChar c : s)
    if (!skippable(c)) t.append(c);

  qsizetype i = 0;
  if (t.size() >= 2 && t[0] == u'&') {
    const QChar k = t[1].toUpper();
    int base = 0;
    qsizetype j = 2;
    if (k == u'H') base = 16;
    else if (k == u'O') base = 8;
    else if (k.isDigit()) { base = 8; j = 1; }
    if (base) {
      long long v = 0;
      bool any = false;
      for (; j < t.size(); ++j) {
        const char16_t u = t[j].unicode();
        int d = -1;
        if (u >= u'0' && u <= u'9') d = u - u'0';
        else if (u >= u'a' && u <= u'f') d = u - u'a' + 10;
        else if (u >= u'A' && u <= u'F') d = u - u'A' + 10;
        if (d < 0 || d >= base) break;
        v = v * base + d;
        any = true;
        if (v > 0xFFFFFFFFLL) break;
      }
      if (!any) return 0;
      // Hexadecimal and octal literals are 16- or 32-bit signed values.
      if (v <= 0xFFFF) return static_cast<double>(static_cast<qint16>(v));
      return static_cast<double>(static_cast<qint32>(static_cast<quint32>(v)));
    }
  }

  QString num;
  if (i < t.size() && (t[i] == u'+' || t[i] == u'-')) num.append(t[i++]);
  bool digits = false;
  while (i < t.size() && t[i] >= u'0' && t[i] <= u'9') { num.append(t[i++]); digits = true; }
  if (i < t.size() && t[i] == u'.') {
    num.append(u'.');
    ++i;
    while (i < t.size() && t[i] >= u'0' && t[i] <= u'9') { num.append(t[i++]); digits = true; }
  }
  if (!digits) return 0;
  if (i < t.size() && (t[i] == u'e' || t[i] == u'E' || t[i] == u'd' || t[i] == u'D')) {
    qsizetype j = i + 1;
    QString ex = QStringLiteral("e");
    if (j < t.size() && (t[j] == u'+' || t[j] == u'-')) ex.append(t[j++]);
    bool exDigits = false;
    while (j < t.size() && t[j] >= u'0' && t[j] <= u'9') { ex.append(t[j++]); exDigits = true; }
    if (exDigits) num.append(ex);
  }
  bool ok = false;
  const double v = num.toDouble(&ok);
  return ok ? v : 0;
}

double Int(double x) { return std::floor(x); }

long long RoundHalfEven(double x) { return SaturatedInt<long long>(std::nearbyint(x)); }

QString Space(qsizetype n) { return n > 0 ? QString(n, u' ') : QString(); }

QString StringOf(qsizetype n, QChar c) { return n > 0 ? QString(n, c) : QString(); }

QString CStr(long long n) { return QString::number(n); }

QString NumText(double x) {
  if (std::isfinite(x) && x == std::floor(x) && std::fabs(x) < 1e15)
    return QString::number(static_cast<long long>(x));
  return QString::number(x, 'g', 15);
}

}  // namespace mj
