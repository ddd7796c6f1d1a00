#pragma once
// The exam outline: the table \dbf\dagang.mmd held in memory as the outline
// array, and the tree the knowledge-point window shows of it. The leading
// blanks of an outline text are the whole structure of the tree: their
// number is the depth of the row, and no parent column exists. Each leaf is
// a knowledge point, keyed by its record number therecn.

#include <QList>
#include <QString>

#include "platform/env.h"

namespace mj {

inline const QString kOutlineTableFile = QStringLiteral("\\dbf\\dagang.mmd");

// One row of the outline array; the columns 1 to 7 in this order.
struct OutlineRow {
  QString a;        // outline text, leading blanks kept (the depth), trailing ones cut
  QString b;        // path of the explanation file
  QString c;        // loaded; nothing reads it
  QString d;        // 参见法条
  QString r;        // 来源备注
  QString therecn;  // record number: the point's stable key
  QString k;        // age mark: "1" Old-, "3" New-
};

// The outline array; rows are numbered from 1 as the program counts them.
struct Outline {
  QList<OutlineRow> rows;
  qsizetype count() const { return rows.size(); }
  bool isEmpty() const { return rows.isEmpty(); }
  // Row n (1-based); nullptr outside 1..count().
  OutlineRow* row(qsizetype n) { return n >= 1 && n <= rows.size() ? &rows[n - 1] : nullptr; }
  const OutlineRow* row(qsizetype n) const { return n >= 1 && n <= rows.size() ? &rows[n - 1] : nullptr; }
};

// Loads \dbf\dagang.mmd into the outline array, in table order ("select *
// from dagang.mmd"). What is wrong with the table is returned in words for
// the user, naming the file: a table that cannot be opened (the outline
// stays empty), fields that are missing (loaded as empty), rows without a
// record number or with one that another row has already. Empty when all
// is well.
QString IniZsd(const Env& env, Outline& outline);
// Clears the outline array.
void EraseZsd(Outline& outline);

// The number of leading blanks of text.
int GetIndent(const QString& text);
// The prefix of a node's text by its age mark: "1" Old-, "3" New-, else nothing.
QString GetKPrefix(const QString& k);
// The row (1-based) whose record number is the key's numeric prefix,
// formatted as text; count() + 1 when no row has it.
qsizetype FindRowOfKey(const Outline& outline, const QString& key);
// The key of a node: the record number followed by " node"; the root's is "0 node".
QString NodeKeyOf(const QString& therecn);
inline const QString kRootKey = QStringLiteral("0 node");
inline const QString kRootText = QStringLiteral("大纲知识点");
// The text of a row's node: the prefix by k, then a trimmed.
QString NodeTextOf(const OutlineRow& row);
// The caption of a selected point: "知识点：", the node text padded with 100
// blanks, cut to 25 characters and trimmed, then "...".
QString PointCaption(const QString& nodeText);

// The tree: node 0 is the root, the others follow in row order (node i is
// row i). Children are listed in the order they were added, which is their
// order in the tree.
struct OutlineNode {
  QString key;
  QString text;
  int tag = 0;      // the depth; 0 for the root
  int parent = -1;  // -1 for the root
  QList<int> children;
};
QList<OutlineNode> BuildTree(const Outline& outline);

// The points of a citation. A point belongs to an article when the article
// stands in the flat citation list of the point's 参见法条 (short forms
// 《title》n. taken as full ones): for each piece of the flat list of
// `flatList` (《title》n．《title》m．...), the rows whose 参见法条 cites
// it, in row order, each row once. Rows are 1-based.
QList<qsizetype> PointsOfCitation(const Outline& outline, const QString& flatList);
// The points of one article: law title (with or without 《》) and number.
QList<qsizetype> ZsdForItem(const Outline& outline, const QString& lawTitle, double article);
// The flat citation list of a 参见法条 text, with its short forms taken as
// full ones.
QString PointFlatList(const QString& citation);
// The short form of an article: 《title》n.
QString ShortCitation(const QString& lawTitle, double article);

}  // namespace mj

namespace mj {

// The short forms of a 参见法条 text made full, as the check of a point does
// it: "．" becomes ".", then every "》" + n + "." with n a decimal number
// becomes "》第" + n + "条".
QString ExpandShortForms(const QString& citation);

}  // namespace mj
