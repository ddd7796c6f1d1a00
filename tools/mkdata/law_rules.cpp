#include "law_rules.h"

#include <QRegularExpression>

namespace mkdata {

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
