#include "folder_writing.h"

#include <QDir>

#include "bank/tables.h"
#include "law/law_files.h"
#include "law/numerals.h"
#include "platform/vbtext.h"

namespace mjtools {

namespace {

const QStringList kFolders = {QStringLiteral("dbf"),      QStringLiteral("yibanti"),  QStringLiteral("moniti"),
                              QStringLiteral("lawtxt"),   QStringLiteral("readme"),   QStringLiteral("ini"),
                              QStringLiteral("更新的题"), QStringLiteral("模糊题"),   QStringLiteral("知识点"),
                              QStringLiteral("新知识点"), QStringLiteral("法律文书"), QStringLiteral("外部题库")};
const QStringList kOutsideFolders = {
    QStringLiteral("宪法类"),   QStringLiteral("民法类"),   QStringLiteral("刑法类"),
    QStringLiteral("经济法类"), QStringLiteral("商法类"),   QStringLiteral("国际（经济）法类"),
    QStringLiteral("行政法类"), QStringLiteral("律师法类"), QStringLiteral("试卷一"),
    QStringLiteral("试卷二"),   QStringLiteral("试卷三")};

}  // namespace

bool MakeProgramFolders(const QString& root, QString* failed) {
  QStringList dirs = kFolders;
  for (const QString& d : kOutsideFolders) dirs.append(QStringLiteral("外部题库/") + d);
  for (const QString& d : dirs)
    if (!QDir().mkpath(root + u'/' + d)) {
      if (failed) *failed = d;
      return false;
    }
  return true;
}

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

QString AnswerField(const QString& key, const QString& cite, const QString& note, const QString& noteDate) {
  QString field = QStringLiteral("答案：") + key + QStringLiteral("参见") + cite;
  if (!note.isEmpty()) field += mj::kCrLf + QStringLiteral("[注释：]") + note + QStringLiteral("[注于：]") + noteDate;
  return field;
}

QString QuestionBlock(int serial, const QString& id, const QString& stem, const QStringList& options,
                      const QStringList& provider, const QString& answerField) {
  using mj::kCrLf;
  QString block = u'●' + QString::number(serial) + u'●' + stem;
  for (int k = 0; k < options.size(); ++k) block += kCrLf + QChar(u'A' + k) + u'．' + options[k];
  if (provider.size() == 5)
    block += kCrLf + QStringLiteral("[本题ID及提供者有关信息：]") + kCrLf + QStringLiteral("[本题标识ID：][") + id +
             u']' + kCrLf + QStringLiteral("[提供者姓名或昵称：]") + provider[0] + kCrLf +
             QStringLiteral("[提供者QQ号码：]") + provider[1] + kCrLf + QStringLiteral("[提供者E_mail：]") +
             provider[2] + kCrLf + QStringLiteral("[提供者主页：]") + provider[3] + kCrLf +
             QStringLiteral("[提供日期：]") + provider[4];
  return block + u'■' + answerField;
}

// A new row is all blanks: only the fields that get a value are written.
bool AppendItemRecord(mj::DbfTable& t, const ItemRecord& item) {
  const int r = t.appendRow();
  bool ok = r >= 0;
  ok = ok && t.setText(r, QStringLiteral("filename"), item.itemid.left(6));
  ok = ok && t.setText(r, QStringLiteral("story"), item.story);
  ok = ok && t.setText(r, QStringLiteral("answer"), item.answer);
  ok = ok && t.setText(r, QStringLiteral("aboutlaw"), item.aboutlaw);
  ok = ok && t.setText(r, QStringLiteral("itemid"), item.itemid);
  ok = ok && t.setLogical(r, QStringLiteral("valid2"), true);
  ok = ok && t.setLogical(r, QStringLiteral("hasselect"), true);
  ok = ok && t.setNumber(r, QStringLiteral("itemtype"), item.type);
  if (item.board != 0) {
    ok = ok && t.setNumber(r, QStringLiteral("boardid"), item.board);
    ok = ok && t.setNumber(r, QStringLiteral("topicid"), item.topic);
  }
  return ok;
}

bool AppendDirectoryRecord(mj::DbfTable& t, const DirectoryRecord& row) {
  namespace tables = mj::tables;
  const int r = t.appendRow();
  bool ok = r >= 0;
  ok = ok && t.setText(r, tables::kDirLabel, row.label);
  ok = ok && (row.file.isEmpty() || t.setText(r, tables::kDirFile, row.file));
  ok = ok && (row.flag.isEmpty() || t.setText(r, tables::kDirFlag, row.flag));
  ok = ok && t.setText(r, tables::kDirId, QString::number(r + 1));
  ok = ok && t.setNumber(r, tables::kDirTotal, row.total);
  ok = ok && t.setNumber(r, tables::kDirDone, row.done);
  ok = ok && t.setNumber(r, tables::kDirRight, row.right);
  const QString score = row.done ? QString::number(row.right * 100 / row.done) + u'%' : QStringLiteral("0%");
  ok = ok && t.setText(r, tables::kDirScore, score);
  ok = ok && t.setNumber(r, tables::kDirMinutes, 0);
  ok = ok && t.setNumber(r, tables::kDirEligible, row.eligible);
  return ok;
}

QString TreeFileLine(const QString& lawName) {
  return QStringLiteral("FILE=\"") + mj::LawFileTag(lawName) + u'"' + mj::kCrLf;
}

}  // namespace mjtools
