#include "law_rules.h"

#include <QRegularExpression>

#include "app/text_toolkit.h"
#include "platform/vbtext.h"

namespace mkdata {

namespace {

const QString kCrLf = QStringLiteral("\r\n");
const QString kDigits = QStringLiteral("1234567890");
const QString kNumeralDigits = QStringLiteral("一二三四五六七八九零");
const QString kPlaces = QStringLiteral("万千百十个零");

QChar NumeralDigit(QChar d) { return kNumeralDigits[kDigits.indexOf(d)]; }

// The first heading-like line of a text, as the program finds it to skip a
// table of contents: each line taken with the LF before it and its own CR.
QString FirstHeadLine(const QString& text, const QString& sp) {
  const QString t = text + kCrLf;
  const QString first = QStringLiteral("\n") + sp + QStringLiteral("第一二三四五六七八九十");
  const QString skip = QStringLiteral("\n") + sp + QStringLiteral("第零一二三四五六七八九十百千万");
  const QString stop = QStringLiteral("章节条部．、") + sp + QStringLiteral(" ");
  qsizetype start = 0;
  while (start < t.size()) {
    const qsizetype cr = t.indexOf(kCrLf, start);
    if (cr < 0) break;
    const QString line = t.mid(start, cr - start + 1);
    if (!line.isEmpty() && first.contains(line[0])) {
      qsizetype i = 0;
      while (i < line.size() && skip.contains(line[i])) ++i;
      if (i < line.size() && stop.contains(line[i])) return line;
    }
    start = cr + 1;  // the next line begins with the LF
  }
  return QString();
}

}  // namespace

QString Numeral(int n) {
  if (n == 10) return QStringLiteral("十");
  if (n >= 0 && n <= 9) return QString(NumeralDigit(QString::number(n)[0]));
  if (n >= 11 && n <= 19) return u'十' + QString(NumeralDigit(QString::number(n % 10)[0]));
  const QString padded = QStringLiteral("%1").arg(n, 5, 10, QChar(u'0'));
  QString s;
  for (int p = 0; p < 5; ++p) {
    s += NumeralDigit(padded[p]);
    s += kPlaces[p];
  }
  s = s.left(s[8] == u'零' ? 8 : 9);
  while (s.startsWith(u'零')) s = s.mid(2);
  if (s.isEmpty()) return s;
  QString r(s[0]);
  for (qsizetype i = 1; i < s.size(); ++i) {
    if (r.back() == u'零' && kPlaces.contains(s[i])) continue;
    r += s[i];
  }
  while (r.endsWith(u'零')) r.chop(1);
  for (qsizetype p = r.indexOf(QStringLiteral("零一十")); p >= 0; p = r.indexOf(QStringLiteral("零一十")))
    r.remove(p + 1, 1);
  return r;
}

QString ArticleHead(int type, int n) {
  switch (type) {
    case 1:
      return u'第' + Numeral(n) + u'条';
    case 2:
      return Numeral(n) + u'、';
    case 3:
      return QString::number(n) + u'．';
    default:
      return QString();
  }
}

int LawTextType(const QString& text) {
  const QString sp = text.contains(QStringLiteral("　　")) ? QStringLiteral("　　") : QString();
  QString t = text;
  if (t.contains(sp + QStringLiteral("目录") + kCrLf)) {
    const QString head = FirstHeadLine(t, sp);
    if (!head.isEmpty()) t = t.mid(t.indexOf(head) + head.size()) + kCrLf;
  }
  const QString markers[3] = {QStringLiteral("第二条"), QStringLiteral("二、"), QStringLiteral("2．")};
  qsizetype best = 100000;
  int type = 0;
  for (int k = 0; k < 3; ++k) {
    const qsizetype p = t.indexOf(kCrLf + sp + markers[k]);
    if (p >= 0 && p + 1 < best) {
      best = p + 1;
      type = k + 1;
    }
  }
  return type;
}

QString FlatCitations(const QString& input) {
  const QChar sep = u'、';
  QString text = input;
  if (!text.endsWith(sep)) text += sep;
  // Copy: a title is taken whole; outside it 第, 条 and line breaks go.
  QString copy;
  bool inTitle = false;
  for (QChar c : text) {
    if (c == u'《') {
      inTitle = true;
      copy += c;
    } else if (c == u'》') {
      inTitle = false;
      copy += c;
      copy += sep;
    } else if (inTitle) {
      copy += c;
    } else if (c != u'第' && c != u'条' && c != u'\r' && c != u'\n') {
      copy += c;
    }
  }
  text = mj::ReplaceAll(copy, QStringLiteral("《"), QString(sep) + u'《');
  text = mj::ReplaceAll(text, QString(sep) + sep, QString(sep));
  // Ranges: a-b becomes a, a+1, ..., b.
  for (qsizetype p = text.indexOf(u'-'); p >= 0; p = text.indexOf(u'-')) {
    const QString left = sep + text.left(p);
    const QString right = text.mid(p + 1);
    const QString lastToken = left.mid(left.lastIndexOf(sep) + 1);
    const qsizetype a = qsizetype(mj::Val(lastToken));
    const qsizetype rightEnd = right.indexOf(sep);
    const qsizetype b = qsizetype(mj::Val(rightEnd >= 0 ? right.left(rightEnd) : right));
    QString middle;
    for (qsizetype k = a + 1; k <= b - 1; ++k) middle += QString::number(k) + sep;
    text = left + sep + middle + right;
  }
  if (text.contains(QStringLiteral("参见《"))) text = text.mid(text.indexOf(u'《'));
  QString out, law;
  for (qsizetype p = text.indexOf(sep); p >= 0; p = text.indexOf(sep)) {
    const QString token = text.left(p);
    text = text.mid(p + 1);
    if (token.contains(u'《')) {
      law = token;
      continue;
    }
    const double v = mj::Val(token);
    if (v != 0) out += law + QString::number(qint64(v)) + u'．';
  }
  return out;
}

bool SplitFlatList(const QString& flat, QList<CitationEntry>* entries) {
  static const QRegularExpression entry(QStringLiteral("\\G《([^《》]+)》([0-9]+)．"));
  entries->clear();
  qsizetype pos = 0;
  while (pos < flat.size()) {
    const auto m = entry.match(flat, pos);
    if (!m.hasMatch()) return false;
    entries->append({u'《' + m.captured(1) + u'》', m.captured(2).toInt()});
    pos = m.capturedEnd();
  }
  return true;
}

}  // namespace mkdata
