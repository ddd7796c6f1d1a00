#include "knowledge/outline.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>

#include "law/citations.h"
#include "platform/dbftable.h"
#include "platform/text_toolkit.h"
#include "platform/vbtext.h"

namespace mj {

namespace {
const QString kFieldNames[] = {QStringLiteral("a"), QStringLiteral("b"),       QStringLiteral("c"), QStringLiteral("d"),
                               QStringLiteral("r"), QStringLiteral("therecn"), QStringLiteral("k")};
}  // namespace

QString IniZsd(const Env& env, Outline& outline) {
  const QString path = env.path(kOutlineTableFile);
  const DbfTable t = DbfTable::open(path);
  if (!t.isOpen()) return QStringLiteral("不能读取大纲表") + MapSeparators(path) + QStringLiteral("：") + t.error();
  int field[7];
  QStringList missing;
  for (int i = 0; i < 7; ++i) {
    field[i] = t.fieldIndex(kFieldNames[i]);
    if (field[i] < 0) missing << kFieldNames[i];
  }
  auto value = [&](int rec, int i) { return field[i] < 0 ? QString() : t.trimmedText(rec, field[i]); };
  QStringList unnumbered;
  QStringList doubled;
  QSet<QString> seen;
  const QList<int> rows = t.rows();
  outline.rows.reserve(outline.rows.size() + rows.size());
  for (const int rec : rows) {
    OutlineRow row;
    // The outline text keeps its leading blanks: they are the depth.
    row.a = field[0] < 0 ? QString() : t.text(rec, field[0]);
    row.b = value(rec, 1);
    row.c = value(rec, 2);
    row.d = value(rec, 3);
    row.r = value(rec, 4);
    row.therecn = value(rec, 5);
    row.k = value(rec, 6);
    outline.rows.append(row);
    const QString shown = Trim(row.a).isEmpty() ? QStringLiteral("（第%1行）").arg(outline.rows.size())
                                                : QStringLiteral("“") + Trim(row.a) + QStringLiteral("”");
    if (Val(row.therecn) == 0)
      unnumbered << shown;
    else if (seen.contains(NumText(Val(row.therecn))))
      doubled << shown + QStringLiteral("（记录号") + row.therecn + QStringLiteral("）");
    else
      seen.insert(NumText(Val(row.therecn)));
  }
  QStringList problems;
  if (!missing.isEmpty())
    problems << QStringLiteral("缺少字段") + missing.join(QStringLiteral("、")) + QStringLiteral("，这些内容都当作空的。");
  auto listOf = [](const QStringList& items) {
    QStringList shown = items.mid(0, 10);
    QString s = shown.join(QStringLiteral("、"));
    if (items.size() > 10) s += QStringLiteral("等%1条").arg(items.size());
    return s;
  };
  if (!unnumbered.isEmpty())
    problems << QStringLiteral("这些条目没有记录号，不能记录知识点：") + listOf(unnumbered) + QStringLiteral("。");
  if (!doubled.isEmpty())
    problems << QStringLiteral("这些条目的记录号与前面的条目重复，选中时显示的是前面那一条：") + listOf(doubled) +
                    QStringLiteral("。");
  if (problems.isEmpty()) return QString();
  return QStringLiteral("大纲表") + MapSeparators(path) + QStringLiteral("有问题：") + kCrLf + problems.join(kCrLf);
}

void EraseZsd(Outline& outline) { outline.rows.clear(); }

int GetIndent(const QString& text) { return static_cast<int>(Len(text) - Len(LTrim(text))); }

QString GetKPrefix(const QString& k) {
  if (k == u"1") return QStringLiteral("Old-");
  if (k == u"3") return QStringLiteral("New-");
  return QString();
}

qsizetype FindRowOfKey(const Outline& outline, const QString& key) {
  const QString number = NumText(Val(key));
  for (qsizetype i = 0; i < outline.rows.size(); ++i)
    if (outline.rows[i].therecn == number) return i + 1;
  return outline.rows.size() + 1;
}

QString NodeKeyOf(const QString& therecn) { return therecn + QStringLiteral(" node"); }

QString NodeTextOf(const OutlineRow& row) { return GetKPrefix(row.k) + Trim(row.a); }

QString PointCaption(const QString& nodeText) {
  return QStringLiteral("知识点：") + Trim(Left(nodeText + Space(100), 25)) + QStringLiteral("...");
}

QList<OutlineNode> BuildTree(const Outline& outline) {
  QList<OutlineNode> nodes;
  nodes.reserve(outline.rows.size() + 1);
  OutlineNode root;
  root.key = kRootKey;
  root.text = kRootText;
  nodes.append(root);
  int prev = -1;  // the node added last
  int last = 0;   // its depth
  for (const OutlineRow& row : outline.rows) {
    const int depth = GetIndent(row.a);
    int parent = 0;
    if (depth == 0 || prev < 0) {
      // A row without blanks hangs under the root whatever stood before it,
      // and so does a first row that begins deeper.
      parent = 0;
    } else if (depth > last) {
      // Deeper by any number of blanks: a child of the row before.
      parent = prev;
    } else if (depth == last) {
      parent = nodes[prev].parent;
    } else {
      // Up from the row before to the first ancestor not deeper than this
      // row, whose sibling it becomes. Reaching the root, it becomes a
      // child of the root: the root has no siblings.
      int n = nodes[prev].parent;
      while (n > 0 && nodes[n].tag > depth) n = nodes[n].parent;
      parent = n > 0 ? nodes[n].parent : 0;
    }
    OutlineNode node;
    node.key = NodeKeyOf(row.therecn);
    node.text = NodeTextOf(row);
    node.tag = depth;
    node.parent = parent;
    const int index = static_cast<int>(nodes.size());
    nodes.append(node);
    nodes[parent].children.append(index);
    prev = index;
    last = depth;
  }
  return nodes;
}

QString ExpandShortForms(const QString& citation) {
  static const QRegularExpression shortForm(QStringLiteral("》([0-9]+)\\."));
  QString t = citation;
  t.replace(QStringLiteral("．"), QStringLiteral("."));
  t.replace(shortForm, QStringLiteral("》第\\1条"));
  return t;
}

QString PointFlatList(const QString& citation) { return LongDaAn(ExpandShortForms(citation)); }

QString ShortCitation(const QString& lawTitle, double article) {
  QString title = lawTitle;
  if (!title.startsWith(u'《')) title = u'《' + title + u'》';
  return title + NumText(article) + u'.';
}

QList<qsizetype> PointsOfCitation(const Outline& outline, const QString& flatList) {
  QList<qsizetype> found;
  QString rest = flatList;
  QStringList pieces;
  // The pieces 《title》n． of the list, as the items of an update package are cut.
  for (QString piece = CutMarkedBlock(rest, QStringLiteral("《")); !piece.isEmpty();
       piece = CutMarkedBlock(rest, QStringLiteral("《")))
    pieces << piece;
  if (pieces.isEmpty()) return found;
  for (qsizetype i = 0; i < outline.rows.size(); ++i) {
    const QString& d = outline.rows[i].d;
    if (Trim(d).isEmpty()) continue;
    const QString flat = PointFlatList(d);
    for (const QString& piece : std::as_const(pieces)) {
      // The title in front and the full-width point behind bound the number:
      // 《刑法》12． is not found in 《刑法》112．, since each entry begins with 《.
      if (flat.contains(piece)) {
        found << i + 1;
        break;
      }
    }
  }
  return found;
}

QList<qsizetype> ZsdForItem(const Outline& outline, const QString& lawTitle, double article) {
  QString title = lawTitle;
  if (!title.startsWith(u'《')) title = u'《' + title + u'》';
  return PointsOfCitation(outline, title + NumText(article) + QStringLiteral("．"));
}

}  // namespace mj
