#include "law/law_search.h"

#include <algorithm>

namespace mj {

qsizetype FindLeadTail(const QString& text, const QString& lead, const QString& tail) {
  for (qsizetype q = text.indexOf(tail); q >= 0; q = text.indexOf(tail, q + 1))
    if (q >= lead.size() && QStringView(text).mid(q - lead.size(), lead.size()) == lead) return q - lead.size() + 1;
  return 0;
}

// Backwards Horspool: the window moves by the distance to the nearest
// earlier copy of its first character in find. Characters share skip slots by their low byte; a slot keeps the
// smallest skip of its characters, so no occurrence is ever stepped over.
qsizetype LastPosSkipping(const QString& text, const QString& find) {
  const qsizetype m = find.size();
  const qsizetype n = text.size();
  if (m == 0 || n == 0 || m > n) return 0;
  qsizetype skip[256];
  for (qsizetype& k : skip) k = m;
  for (qsizetype i = m - 1; i >= 1; --i) skip[find.at(i).unicode() & 0xFF] = i;
  const QChar* t = text.constData();
  const QChar* f = find.constData();
  for (qsizetype s = n - m; s >= 0;) {
    if (std::equal(f, f + m, t + s)) return s + 1;
    s -= skip[t[s].unicode() & 0xFF];
  }
  return 0;
}

}  // namespace mj
