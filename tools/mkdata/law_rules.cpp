#include "law_rules.h"

#include <QRegularExpression>

#include "law/numerals.h"

namespace mkdata {

QString ArticleHead(int type, int n) {
  switch (type) {
    case 1:
      return u'第' + mj::DaXie(n) + u'条';
    case 2:
      return mj::DaXie(n) + u'、';
    case 3:
      return QString::number(n) + u'．';
    default:
      return QString();
  }
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
