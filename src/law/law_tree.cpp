#include "law/law_tree.h"

#include <QHash>

#include "platform/textfile.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

const QString kRootKey = QStringLiteral("0000 node");
const QString kNodeSuffix = QStringLiteral(" node");

QString KeyOf(const QList<int>& counters, int level) {
  QString key;
  for (int k = 1; k <= level; ++k) key += QStringLiteral("%1").arg(counters.value(k), 4, 10, QLatin1Char('0'));
  return key + kNodeSuffix;
}

// The path of a file line: the text between the double quotes behind FILE=;
// without quotes, the trimmed rest of the line.
QString FileLinePath(const QString& line, qsizetype fileAt) {
  const QString rest = Mid(line, fileAt + 5);
  const qsizetype open = InStr(rest, QStringLiteral("\""));
  if (open == 0) return Trim(rest);
  const qsizetype close = InStr(open + 1, rest, QStringLiteral("\""));
  return close == 0 ? Mid(rest, open + 1) : Mid(rest, open + 1, close - open - 1);
}

}  // namespace

int LawTree::indexOf(const QString& key) const {
  for (int i = 0; i < nodes.size(); ++i)
    if (nodes[i].key == key) return i;
  return -1;
}

QString LawTreeFile(LawTreeOrder order) {
  switch (order) {
    case LawTreeOrder::Paper:
      return QStringLiteral("\\ini\\shijuan.mmd");
    case LawTreeOrder::Letter:
      return QStringLiteral("\\ini\\zimu.mmd");
    case LawTreeOrder::Class:
      return QStringLiteral("\\ini\\leibie.mmd");
  }
  return QString();
}

QString LawTreeRootCaption(LawTreeOrder order) {
  switch (order) {
    case LawTreeOrder::Paper:
      return QStringLiteral("按试卷顺序");
    case LawTreeOrder::Letter:
      return QStringLiteral("按字母顺序");
    case LawTreeOrder::Class:
      return QStringLiteral("按类别顺序");
  }
  return QString();
}

LawTree Txt2TreeView(const QString& fileText, const QString& rootCaption) {
  LawTree tree;
  LawTreeNode root;
  root.key = kRootKey;
  root.text = rootCaption;
  tree.nodes.append(root);
  QHash<QString, int> byKey{{kRootKey, 0}};

  QString text = fileText;
  text.replace(kCrLf, QStringLiteral("\n"));
  text.replace(u'\r', u'\n');
  const QStringList lines = text.split(u'\n');

  QList<int> counters(2, 0);  // counters[level], level from 1
  QString file;
  for (const QString& line : lines) {
    if (Len(line) < 2 || Trim(line).isEmpty()) continue;
    const qsizetype fileAt = InStr(UCase(line), QStringLiteral("FILE="));
    if (fileAt > 0) {
      file = FileLinePath(line, fileAt);
      continue;
    }
    qsizetype indent = 0;
    while (indent < line.size() && line.at(indent) == u' ') ++indent;
    const int level = static_cast<int>(indent / 4 + 1);
    if (counters.size() <= level) counters.resize(level + 1, 0);
    ++counters[level];
    for (int k = level + 1; k < counters.size(); ++k) counters[k] = 0;

    LawTreeNode node;
    node.level = level;
    node.key = KeyOf(counters, level);
    node.parentKey = level == 1 ? kRootKey : KeyOf(counters, level - 1);
    node.text = line.mid(indent);
    node.tag = file;
    const auto parent = byKey.constFind(node.parentKey);
    if (parent == byKey.constEnd()) continue;  // a skipped level: the node cannot be hung anywhere
    const int place = static_cast<int>(tree.nodes.size());
    node.parent = *parent;
    tree.nodes[*parent].children.append(place);
    byKey.insert(node.key, place);
    tree.nodes.append(node);
  }
  return tree;
}

LawTree LoadLawTree(const Env& env, LawTreeOrder order) {
  return Txt2TreeView(ReadText(env.path(LawTreeFile(order))), LawTreeRootCaption(order));
}

}  // namespace mj
