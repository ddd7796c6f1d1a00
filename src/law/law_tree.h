#pragma once
// The law trees of the law query: three plain text files in \ini, one per
// order (by paper, by letter, by class), read into a list of nodes.
//
// A tree file has one entry per line:
//   FILE="\lawtxt\刑法.mmd"     sets the file of the nodes that follow (any
//                              letter case of FILE=); makes no node
//       《刑法》               a node: 4 blanks of indent per level below 1
// Lines shorter than 2 characters (and lines of blanks only) are skipped.

#include <QList>
#include <QString>

#include "platform/env.h"

namespace mj {

struct LawTreeNode {
  QString key;          // counters of levels 1..level, 4 digits each, + " node"
  QString parentKey;    // "" for the root
  QString text;         // the line without its indent
  QString tag;          // the file line in force, e.g. \lawtxt\刑法.mmd
  int level = 0;        // 0 for the root
  QList<int> children;  // places in LawTree::nodes, in file order
  int parent = -1;      // place of the parent in LawTree::nodes, -1 for the root
};

struct LawTree {
  // nodes[0] is the root, "0000 node"; the others follow in file order.
  QList<LawTreeNode> nodes;
  int indexOf(const QString& key) const;  // -1 when absent
};

enum class LawTreeOrder { Paper, Letter, Class };

// \ini\shijuan.mmd, \ini\zimu.mmd, \ini\leibie.mmd.
QString LawTreeFile(LawTreeOrder order);
// "按试卷顺序", "按字母顺序", "按类别顺序".
QString LawTreeRootCaption(LawTreeOrder order);

// The tree of a tree file's text under a root with the given caption. A node
// whose parent is missing (a level skipped) is not added, and neither are
// its descendants.
LawTree Txt2TreeView(const QString& fileText, const QString& rootCaption);
// The tree of one of the three files of the program folder; only the root
// when the file is missing.
LawTree LoadLawTree(const Env& env, LawTreeOrder order);

}  // namespace mj
