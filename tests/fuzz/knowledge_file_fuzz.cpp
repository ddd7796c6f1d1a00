// A knowledge file newzsd<i>.txt of any bytes, as it comes from the web
// folder: its values read by section and key, then taken into a small
// outline table (citations and explanations of the points without one,
// explanation files or paths), the outline loaded again and its tree, its
// citations and the points of an article worked out. Last, the lines of the
// text as outline texts: the leading blanks alone make the tree.

#include <QDir>

#include "bank/tables.h"
#include "fuzz_target.h"
#include "knowledge/knowledge_points.h"
#include "knowledge/outline.h"
#include "platform/clock.h"
#include "platform/dbftable.h"
#include "platform/file_moves.h"
#include "platform/messagebox.h"
#include "platform/textfile.h"

using namespace mj;

namespace {

// The outline every input starts from: a law, a chapter, and points of
// record numbers 20 to 23, point 21 with a citation of its own (kept) and
// point 23 with an explanation file the user wrote (kept too).
const QString& Template() {
  static const QString root = [] {
    const QString r = fuzz::WorkFolder() + QStringLiteral("/knowledge_template");
    QDir().mkpath(r + QStringLiteral("/dbf"));
    QDir().mkpath(r + QStringLiteral("/新知识点"));
    DbfTable t = DbfTable::create(r + QStringLiteral("/dbf/") + tables::kOutline, tables::OutlineFields());
    const auto row = [&t](const QString& a, int recn, const QString& d, const QString& b) {
      const int i = t.appendRow();
      t.setText(i, QStringLiteral("a"), a);
      if (!b.isEmpty()) t.setText(i, QStringLiteral("b"), b);
      if (!d.isEmpty()) t.setText(i, QStringLiteral("d"), d);
      t.setNumber(i, QStringLiteral("therecn"), recn);
    };
    row(QStringLiteral("示例大纲"), 1, QString(), QString());
    row(QStringLiteral("  刑法"), 2, QString(), QString());
    row(QStringLiteral("    刑罚的具体运用"), 3, QString(), QString());
    row(QStringLiteral("      自首"), 21, QStringLiteral("《示例刑法》67."), QString());
    row(QStringLiteral("      立功"), 22, QString(), QString());
    row(QStringLiteral("      累犯"), 23, QString(), QStringLiteral("\\知识点\\23.txt"));
    row(QStringLiteral("    数罪并罚"), 20, QString(), QString());
    t.close();
    WriteTextAtomic(r + QStringLiteral("/知识点/23.txt"), QStringLiteral("我自己写的解释。"));
    return r;
  }();
  return root;
}

}  // namespace

MJ_FUZZ_TARGET(knowledge_file) {
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const QString text = fuzz::GbkText(data, size);
  (void)MyReadFromIni(text, QStringLiteral("知识点"), QStringLiteral("初始信息"));
  // A section and a key named by the text's own first two lines.
  const QStringList lines = text.split(QStringLiteral("\r\n"));
  if (lines.size() >= 2) (void)MyReadFromIni(text, lines[0], lines[1]);

  const QString folder = fuzz::WorkFolder() + QStringLiteral("/knowledge");
  QDir(folder).removeRecursively();
  if (!CopyFolderOver(Template(), folder)) return 0;
  static FixedClock clock;
  ScriptedBoxes boxes;
  Env env;
  env.root = folder;
  env.clock = &clock;
  env.boxes = &boxes;
  const QString file = KnowledgeFilePath(env, 1, QStringLiteral("txt"));
  if (!WriteBytesAtomic(file, bytes)) return 0;

  Outline outline;
  (void)IniZsd(env, outline);
  const TakeInResult taken = TakeInKnowledgeFile(env, outline, file);
  for (const qsizetype row : taken.filled) {
    const OutlineRow* r = outline.row(row);
    if (!r) continue;
    (void)ExpandShortForms(r->d);
    (void)PointsOfCitation(outline, PointFlatList(r->d));
    (void)FullExplanationPath(env, r->b);
    (void)ExplanationKindOf(r->b);
  }
  // What the table holds now, as the window loads it.
  Outline reloaded;
  (void)IniZsd(env, reloaded);
  (void)BuildTree(reloaded);
  (void)ZsdForItem(reloaded, QStringLiteral("示例刑法"), 32);

  // Outline texts of any depth, one a line.
  Outline fromLines;
  for (qsizetype i = 0; i < lines.size() && i < 2000; ++i) {
    OutlineRow r;
    r.a = lines[i];
    r.therecn = QString::number(i + 1);
    r.k = lines[i].left(1);
    fromLines.rows.append(r);
  }
  for (const OutlineNode& n : BuildTree(fromLines)) (void)PointCaption(n.text);
  return 0;
}
