#include "papers/law_list.h"

#include "bank/tables.h"
#include "platform/dbftable.h"
#include "platform/vbtext.h"

namespace mj {

QStringList LawOrderEntries() {
  return {QStringLiteral("按试卷顺序"), QStringLiteral("按字母顺序"), QStringLiteral("按类别顺序")};
}

QStringList LawGroupEntries(int order) {
  switch (order) {
    case 0:
      return {QStringLiteral("试卷一相关法律、法规"), QStringLiteral("试卷二相关法律、法规"),
              QStringLiteral("试卷三相关法律、法规")};
    case 1: {
      QStringList l;
      for (char c = 'A'; c <= 'Z'; ++c) l.append(QStringLiteral("以字母") + QChar(c) + QStringLiteral("开头的法律"));
      return l;
    }
    case 2:
      return {QStringLiteral("宪法类法律、法规"),   QStringLiteral("民法类法律、法规"),
              QStringLiteral("行政法类法律、法规"), QStringLiteral("刑法类法律、法规"),
              QStringLiteral("商法类法律、法规"),   QStringLiteral("经济法类法律、法规"),
              QStringLiteral("国际（经济）法类法律、法规"), QStringLiteral("律师法类法律、法规")};
    default:
      return {};
  }
}

LawGroupFilter LawFilterOf(int order, int group) {
  const QStringList groups = LawGroupEntries(order);
  if (group < 0 || group >= groups.size()) return {};
  switch (order) {
    case 0:
      return {QStringLiteral("f"), group + 1};
    case 1:
      return {QStringLiteral("c"), Mid(groups[group], 4, 1)};
    default:
      return {QStringLiteral("lei"), group + 1};
  }
}

QStringList PutDataTocombo3(const Env& env, const QString& field, const QVariant& value) {
  QStringList names;
  const DbfTable t = DbfTable::open(env.path(QStringLiteral("\\dbf\\") + tables::kLawList));
  const int f = t.fieldIndex(field);
  const int name = t.fieldIndex(QStringLiteral("lawname"));
  if (f < 0 || name < 0) return names;
  const bool numeric = value.typeId() == QMetaType::Int;
  for (const int r : t.rows()) {
    const bool match = numeric ? t.number(r, f) == value.toInt() : t.trimmedText(r, f) == value.toString();
    if (match) names.append(t.trimmedText(r, name));
  }
  return names;
}

QString BareLawName(const QString& name) {
  QString n = name;
  n.remove(u'《');
  n.remove(u'》');
  return n;
}

}  // namespace mj
