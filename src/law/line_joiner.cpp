#include "law/line_joiner.h"

#include "law/law_text.h"
#include "platform/events.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

// The line between from and to (0-based, to excluded) without the blanks at
// its ends.
QStringView TrimmedLine(const QString& t, qsizetype from, qsizetype to) {
  while (from < to && t.at(from) == u' ') ++from;
  while (to > from && t.at(to - 1) == u' ') --to;
  return QStringView(t).mid(from, to - from);
}

bool EndsSentence(QChar c) {
  static const QString marks = QStringLiteral("。：；:;");
  return marks.contains(c);
}

}  // namespace

QString JoinBrokenLines(const QString& text) {
  QString t = Trim(text);
  if (t.size() > 2 && t.startsWith(kCrLf)) t.remove(0, 2);
  if (t.indexOf(kCrLf) <= 0) return QString();

  // LineKind asks whether the rest of the text holds two ideographic blanks
  // anywhere; it does exactly while the last such pair lies inside it.
  const qsizetype lastPair = t.lastIndexOf(kLawIndent);
  QString out;
  out.reserve(t.size());
  Breather breathe;
  qsizetype from = 0;
  for (;;) {
    const qsizetype br = t.indexOf(kCrLf, from);
    if (br <= from) break;  // no line break left, or an empty line
    const QStringView line = TrimmedLine(t, from, br);
    from = br + 2;
    breathe.tick();
    if (line.isEmpty()) continue;
    out += line;
    if (EndsSentence(line.back())) {
      out += kCrLf;
      continue;
    }
    const QStringView rest = QStringView(t).mid(from);
    const bool pair = lastPair >= from;
    if (LineKind(rest, 1, pair) >= 1 || LineKind(rest, 2, pair) >= 1 || LineKind(rest, 3, pair) >= 1) out += kCrLf;
  }
  return out;
}

}  // namespace mj
