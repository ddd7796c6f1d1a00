#include "data_test_util.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include "law/numerals.h"
#include "platform/paths.h"
#include "platform/textfile.h"
#include "support/test_env.h"

namespace mj::datatest {

QString Demo() {
  const QString d = test::DemoDataDir();
  EXPECT_FALSE(d.isEmpty()) << "the demonstration data were not built (target demo_data)";
  return d;
}

QString ReadDemo(const QString& suffix) { return ReadText(AppPath(Demo(), suffix)); }

QStringList DemoTextFiles() {
  QStringList out;
  const QString root = Demo();
  QDirIterator it(root, QDir::Files, QDirIterator::Subdirectories);
  while (it.hasNext()) {
    const QString p = it.next();
    const QString rel = QDir(root).relativeFilePath(p);
    if (rel.startsWith(u"dbf/") || rel.endsWith(u".jpg") || rel.endsWith(u".ico") || rel.endsWith(u".cur")) continue;
    out.append(rel);
  }
  out.sort();
  return out;
}

QList<RealLaw> RealLawsOfTheList() {
  QList<RealLaw> out;
  if (test::RealDataDir().isEmpty()) return out;
  QFile f(QStringLiteral(MJ_SOURCE_DIR "/data/laws.txt"));
  EXPECT_TRUE(f.open(QIODevice::ReadOnly));
  for (const QString& line : QString::fromUtf8(f.readAll()).split(u'\n')) {
    const QStringList fields = line.trimmed().split(u'|');
    if (line.startsWith(u'#') || fields.size() != 7) continue;
    out.append({fields[1], fields[3].toInt(), fields[4].at(0), fields[5], fields[6].split(u'+')});
  }
  return out;
}

QString ArticleHeading(int type, int n) {
  switch (type) {
    case 1:
      return u"　　第"_qs + DaXie(n) + u'条';
    case 2:
      return u"　　"_qs + DaXie(n) + u'、';
    case 3:
      return u"　　"_qs + QString::number(n) + u'．';
    default:
      return QString();
  }
}

int TextType(const QString& lawText) {
  const QString markers[3] = {u"\r\n　　第二条"_qs, u"\r\n　　二、"_qs, u"\r\n　　2．"_qs};
  int type = 0;
  qsizetype best = -1;
  for (int k = 0; k < 3; ++k) {
    const qsizetype p = lawText.indexOf(markers[k]);
    if (p >= 0 && (best < 0 || p < best)) {
      best = p;
      type = k + 1;
    }
  }
  return type;
}

QList<LawFile> DemoLaws() {
  QList<LawFile> out;
  DbfTable t = DbfTable::open(AppPath(Demo(), u"\\dbf\\33.mmd"_qs));
  EXPECT_TRUE(t.isOpen()) << t.error().toStdString();
  for (int r : t.rows()) {
    LawFile law;
    law.title = t.trimmedText(r, u"lawname"_qs);
    QString name = law.title;
    name.remove(u'《').remove(u'》');
    law.text = ReadText(AppPath(Demo(), u"\\lawtxt\\"_qs + name + u".mmd"_qs));
    law.type = TextType(law.text);
    out.append(law);
  }
  return out;
}

bool ParseFlatList(const QString& flat, QList<Citation>* out) {
  static const QRegularExpression entry(u"\\G《([^《》]+)》([0-9]+)．"_qs);
  out->clear();
  qsizetype pos = 0;
  while (pos < flat.size()) {
    const auto m = entry.match(flat, pos);
    if (!m.hasMatch()) return false;
    out->append({u'《' + m.captured(1) + u'》', m.captured(2).toInt()});
    pos = m.capturedEnd();
  }
  return !out->isEmpty();
}

QList<QMap<QString, QString>> TableRows(const QString& path) {
  QList<QMap<QString, QString>> rows;
  DbfTable t = DbfTable::open(path);
  EXPECT_TRUE(t.isOpen()) << path.toStdString();
  const QList<DbfField> fields = t.fields();
  for (int r : t.rows()) {
    QMap<QString, QString> row;
    for (int f = 0; f < fields.size(); ++f) {
      QString v;
      if (fields[f].type == 'L')
        v = t.isNull(r, f) ? QString() : (t.logical(r, f) ? u"T"_qs : u"F"_qs);
      else if (fields[f].type == 'N')
        v = t.isNull(r, f) ? QString() : QString::number(t.number(r, f));
      else
        v = t.trimmedText(r, f);
      row.insert(fields[f].name.toLower(), v);
    }
    rows.append(row);
  }
  return rows;
}

}  // namespace mj::datatest
