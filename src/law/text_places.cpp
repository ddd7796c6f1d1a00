#include "law/text_places.h"

#include <algorithm>

#include "platform/text_toolkit.h"

namespace mj {

namespace {

// The length of the line break at i, 0 when none starts there.
int BreakAt(const QString& text, qsizetype i) {
  const QChar c = text.at(i);
  if (c == u'\r') return (i + 1 < text.size() && text.at(i + 1) == u'\n') ? 2 : 1;
  if (c == u'\n' || c == QChar::ParagraphSeparator) return 1;
  return 0;
}

}  // namespace

qsizetype TextIndexOfLine(const QString& text, int line, qsizetype column) {
  qsizetype start = 0;
  int current = 0;
  qsizetype i = 0;
  while (i < text.size() && current < line) {
    const int b = BreakAt(text, i);
    if (b > 0) {
      ++current;
      i += b;
      start = i;
    } else {
      ++i;
    }
  }
  if (current < line) return text.size();
  qsizetype end = start;
  while (end < text.size() && BreakAt(text, end) == 0) ++end;
  return std::min(start + std::max<qsizetype>(column, 0), end);
}

LinePlace LineOfTextIndex(const QString& text, qsizetype index) {
  index = std::clamp<qsizetype>(index, 0, text.size());
  LinePlace p;
  qsizetype start = 0;
  for (qsizetype i = 0; i < index;) {
    const int b = BreakAt(text, i);
    if (b == 0) {
      ++i;
      continue;
    }
    if (i + b > index) break;  // inside a CR LF: the end of this line
    ++p.line;
    i += b;
    start = i;
  }
  p.column = std::min(index, text.size()) - start;
  // An index on the LF of a CR LF stands at the end of the line, before the CR.
  if (index > 0 && index < text.size() && text.at(index) == u'\n' && text.at(index - 1) == u'\r') --p.column;
  return p;
}

CrLfPlace ToCrLfPlace(const QString& shownText, qsizetype position) {
  CrLfPlace p;
  p.text = HeldText(shownText);
  const qsizetype at = std::clamp<qsizetype>(position, 0, shownText.size());
  p.index = at + shownText.left(at).count(u'\n');
  return p;
}

}  // namespace mj
