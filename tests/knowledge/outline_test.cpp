// The outline table in memory and the tree built from the blanks of its
// texts.
#include <gtest/gtest.h>

#include "knowledge/outline.h"
#include "knowledge_fixture.h"
#include "support/printers.h"

namespace mj {
namespace {

using test::DagangRow;
using test::NumberedRows;
using test::WriteDagang;

// The tree as text: each node's text indented by two blanks per level, one a line.
QString Shape(const QList<OutlineNode>& nodes) {
  QString out;
  std::function<void(int, int)> walk = [&](int n, int level) {
    out += QString(level * 2, u' ') + nodes[n].text + u'\n';
    for (const int c : nodes[n].children) walk(c, level + 1);
  };
  walk(0, 0);
  return out;
}

Outline OutlineOf(const QList<QString>& texts) {
  Outline o;
  int n = 0;
  for (const QString& t : texts) {
    OutlineRow r;
    r.a = t;
    r.therecn = QString::number(++n);
    o.rows << r;
  }
  return o;
}

TEST(Outline, LoadKeepsLeadingBlanksAndTrimsTheRest) {
  test::TestEnv t;
  WriteDagang(t, {{u"大纲"_qs, {}, {}, 1, {}},
                  {u"  刑法  "_qs, u"  《刑法》1.  "_qs, u" 示例 "_qs, 2, u"3"_qs, u"  \\知识点\\2.txt "_qs}});
  Outline o;
  EXPECT_EQ(IniZsd(t.env, o), u""_qs);
  ASSERT_EQ(o.count(), 2);
  EXPECT_EQ(o.rows[1].a, u"  刑法"_qs);
  EXPECT_EQ(o.rows[1].b, u"\\知识点\\2.txt"_qs);
  EXPECT_EQ(o.rows[1].d, u"《刑法》1."_qs);
  EXPECT_EQ(o.rows[1].r, u"示例"_qs);
  EXPECT_EQ(o.rows[1].therecn, u"2"_qs);
  EXPECT_EQ(o.rows[1].k, u"3"_qs);
  EXPECT_EQ(o.rows[0].d, u""_qs);
  // Loading again appends: the array is loaded only when it is empty.
  EraseZsd(o);
  EXPECT_TRUE(o.isEmpty());
}

TEST(Outline, IndentAndPrefix) {
  EXPECT_EQ(GetIndent(u"  a b "_qs), 2);
  EXPECT_EQ(GetIndent(u"a"_qs), 0);
  EXPECT_EQ(GetIndent(u"   "_qs), 3);
  EXPECT_EQ(GetKPrefix(u"1"_qs), u"Old-"_qs);
  EXPECT_EQ(GetKPrefix(u"3"_qs), u"New-"_qs);
  // A row with k = "2" has no prefix, nor has any other mark.
  EXPECT_EQ(GetKPrefix(u"2"_qs), u""_qs);
  EXPECT_EQ(GetKPrefix(u""_qs), u""_qs);
  OutlineRow r;
  r.a = u"    累犯"_qs;
  r.k = u"2"_qs;
  EXPECT_EQ(NodeTextOf(r), u"累犯"_qs);
  r.k = u"1"_qs;
  EXPECT_EQ(NodeTextOf(r), u"Old-累犯"_qs);
}

TEST(Outline, FindRowOfKeyByNumericPrefix) {
  const Outline o = OutlineOf({u"a"_qs, u"b"_qs, u"c"_qs});
  EXPECT_EQ(FindRowOfKey(o, u"2 node"_qs), 2);
  EXPECT_EQ(FindRowOfKey(o, u"3"_qs), 3);
  EXPECT_EQ(FindRowOfKey(o, u"02 node"_qs), 2);
  // A key not in the array gives the row one past the end.
  EXPECT_EQ(FindRowOfKey(o, u"9 node"_qs), 4);
  EXPECT_EQ(FindRowOfKey(o, u"0 node"_qs), 4);
  EXPECT_EQ(FindRowOfKey(o, u"x"_qs), 4);
}

TEST(Outline, CaptionIsCutTo25Characters) {
  EXPECT_EQ(PointCaption(u"犯罪故意"_qs), u"知识点：犯罪故意..."_qs);
  const QString longText = u"一二三四五六七八九十一二三四五六七八九十一二三四五六七八"_qs;
  EXPECT_EQ(PointCaption(longText), u"知识点：一二三四五六七八九十一二三四五六七八九十一二三四五..."_qs);
}

TEST(OutlineTree, AnEmptyTableGivesOnlyTheRoot) {
  const QList<OutlineNode> nodes = BuildTree(Outline());
  ASSERT_EQ(nodes.size(), 1);
  EXPECT_EQ(nodes[0].key, u"0 node"_qs);
  EXPECT_EQ(nodes[0].text, u"大纲知识点"_qs);
  EXPECT_TRUE(nodes[0].children.isEmpty());
}

TEST(OutlineTree, KeysTextsAndTags) {
  Outline o = OutlineOf({u"大纲"_qs, u"  刑法"_qs, u"    累犯"_qs});
  o.rows[2].k = u"3"_qs;
  o.rows[2].therecn = u"17"_qs;
  const QList<OutlineNode> nodes = BuildTree(o);
  ASSERT_EQ(nodes.size(), 4);
  EXPECT_EQ(nodes[1].key, u"1 node"_qs);
  EXPECT_EQ(nodes[3].key, u"17 node"_qs);
  EXPECT_EQ(nodes[3].text, u"New-累犯"_qs);
  EXPECT_EQ(nodes[3].tag, 4);
  EXPECT_EQ(nodes[2].tag, 2);
  EXPECT_EQ(nodes[3].parent, 2);
}

TEST(OutlineTree, RowsWithoutBlanksHangUnderTheRoot) {
  const QList<OutlineNode> nodes =
      BuildTree(OutlineOf({u"甲"_qs, u"  甲一"_qs, u"      甲一一"_qs, u"乙"_qs, u"丙"_qs, u"  丙一"_qs, u"丁"_qs}));
  EXPECT_EQ(Shape(nodes), u"大纲知识点\n  甲\n    甲一\n      甲一一\n  乙\n  丙\n    丙一\n  丁\n"_qs);
}

TEST(OutlineTree, UpFromSixToFourFindsTheTwo) {
  // 2, 6, 4: the 4 goes up from the 6 to its first ancestor not deeper
  // than 4, the 2, and becomes its sibling.
  const QList<OutlineNode> nodes = BuildTree(OutlineOf({u"  二"_qs, u"      六"_qs, u"    四"_qs}));
  EXPECT_EQ(Shape(nodes), u"大纲知识点\n  二\n    六\n  四\n"_qs);
  // With a 0 above, the 2's sibling is still under the root.
  const QList<OutlineNode> deeper =
      BuildTree(OutlineOf({u"零"_qs, u"  二"_qs, u"      六"_qs, u"        八"_qs, u"    四"_qs}));
  EXPECT_EQ(Shape(deeper), u"大纲知识点\n  零\n    二\n      六\n        八\n    四\n"_qs);
}

TEST(OutlineTree, TheShapeDependsOnTheOrderOfRowsAlone) {
  // The same rows in another order give another tree.
  EXPECT_EQ(Shape(BuildTree(OutlineOf({u"  二"_qs, u"    四"_qs, u"      六"_qs}))),
            u"大纲知识点\n  二\n    四\n      六\n"_qs);
  EXPECT_EQ(Shape(BuildTree(OutlineOf({u"      六"_qs, u"    四"_qs, u"  二"_qs}))),
            u"大纲知识点\n  六\n  四\n  二\n"_qs);
}

TEST(OutlineTree, AJumpDownByManyLevelsMakesAChild) {
  // The blanks need not grow one level at a time. Going up again compares
  // with the depths of the ancestors only: the 2 finds the 0 not deeper
  // than itself and becomes its sibling, under the root.
  const QList<OutlineNode> nodes = BuildTree(OutlineOf({u"甲"_qs, u"          深"_qs, u"          同"_qs, u"  浅"_qs}));
  EXPECT_EQ(Shape(nodes), u"大纲知识点\n  甲\n    深\n    同\n  浅\n"_qs);
}

TEST(OutlineTree, AFirstRowThatBeginsDeeperHangsUnderTheRoot) {
  const QList<OutlineNode> nodes = BuildTree(OutlineOf({u"    深"_qs, u"    同"_qs, u"      子"_qs}));
  EXPECT_EQ(Shape(nodes), u"大纲知识点\n  深\n  同\n    子\n"_qs);
}

TEST(OutlineTree, EqualDepthsAreSiblingsInRowOrder) {
  const QList<OutlineNode> nodes = BuildTree(OutlineOf({u"甲"_qs, u"  一"_qs, u"  二"_qs, u"  三"_qs}));
  ASSERT_EQ(nodes[1].children.size(), 3);
  EXPECT_EQ(nodes[nodes[1].children[0]].text, u"一"_qs);
  EXPECT_EQ(nodes[nodes[1].children[2]].text, u"三"_qs);
}

TEST(OutlineBadInput, MissingFieldsAreEmptyAndSaid) {
  test::TestEnv t;
  WriteDagang(t, {{u"大纲"_qs, u"《刑法》1."_qs, {}, 1, {}}, {u"  刑法"_qs, {}, {}, 2, {}}},
              {{u"a"_qs, 'C', 50, 0}, {u"therecn"_qs, 'N', 8, 0}});
  Outline o;
  const QString problems = IniZsd(t.env, o);
  ASSERT_EQ(o.count(), 2);
  EXPECT_EQ(o.rows[1].a, u"  刑法"_qs);
  EXPECT_EQ(o.rows[0].d, u""_qs);
  EXPECT_EQ(problems, u"大纲表"_qs + MapSeparators(t.path(kOutlineTableFile)) +
                          u"有问题：\r\n缺少字段b、c、d、r、k，这些内容都当作空的。"_qs);
}

TEST(OutlineBadInput, RowsWithoutOrWithDoubledNumbersAreNamed) {
  test::TestEnv t;
  WriteDagang(t, {{u"大纲"_qs, {}, {}, 1, {}}, {u"  无号"_qs, {}, {}, 0, {}}, {u"  重号"_qs, {}, {}, 1, {}}});
  Outline o;
  const QString problems = IniZsd(t.env, o);
  EXPECT_EQ(o.count(), 3);
  EXPECT_EQ(problems, u"大纲表"_qs + MapSeparators(t.path(kOutlineTableFile)) +
                          u"有问题：\r\n这些条目没有记录号，不能记录知识点：“无号”。\r\n"
                          u"这些条目的记录号与前面的条目重复，选中时显示的是前面那一条：“重号”（记录号1）。"_qs);
  // The tree is built all the same; the doubled key finds the first row.
  EXPECT_EQ(BuildTree(o).size(), 4);
  EXPECT_EQ(FindRowOfKey(o, u"1 node"_qs), 1);
}

TEST(OutlineBadInput, AMissingOrBrokenTableGivesAnEmptyOutline) {
  test::TestEnv t;
  Outline o;
  const QString missing = IniZsd(t.env, o);
  EXPECT_TRUE(missing.startsWith(u"不能读取大纲表"_qs + MapSeparators(t.path(kOutlineTableFile)))) << (missing).toStdString();
  EXPECT_TRUE(o.isEmpty());
  t.mkdir(u"\\dbf"_qs);
  QFile f(t.path(kOutlineTableFile));
  ASSERT_TRUE(f.open(QIODevice::WriteOnly));
  f.write(QByteArray("\x03\x7f\x01\x01\xff\xff\xff\x0f broken"));
  f.close();
  EXPECT_FALSE(IniZsd(t.env, o).isEmpty());
  EXPECT_TRUE(o.isEmpty());
  EXPECT_EQ(BuildTree(o).size(), 1);
}

TEST(OutlineCitations, ShortFormsAreExpanded) {
  EXPECT_EQ(ExpandShortForms(u"《刑法》12.《刑法》13．《民法典》第5条"_qs), u"《刑法》第12条《刑法》第13条《民法典》第5条"_qs);
  EXPECT_EQ(ExpandShortForms(u"《刑法》x."_qs), u"《刑法》x."_qs);
  EXPECT_EQ(ShortCitation(u"刑法"_qs, 12), u"《刑法》12."_qs);
  EXPECT_EQ(ShortCitation(u"《刑法》"_qs, 3), u"《刑法》3."_qs);
}

TEST(OutlineCitations, PointsOfACitationCompareWholeArticles) {
  Outline o = OutlineOf({u"甲"_qs, u"乙"_qs, u"丙"_qs, u"丁"_qs});
  o.rows[0].d = u"《刑法》12."_qs;
  o.rows[1].d = u"《刑法》112．"_qs;
  o.rows[2].d = u"《民法典》12.《刑法》第12条"_qs;
  o.rows[3].d = u""_qs;
  EXPECT_EQ(PointsOfCitation(o, u"《刑法》12．"_qs), (QList<qsizetype>{1, 3}));
  EXPECT_EQ(PointsOfCitation(o, u"《刑法》112．《民法典》12．"_qs), (QList<qsizetype>{2, 3}));
  EXPECT_EQ(ZsdForItem(o, u"刑法"_qs, 12), (QList<qsizetype>{1, 3}));
  EXPECT_EQ(ZsdForItem(o, u"刑法"_qs, 1), QList<qsizetype>{});
  EXPECT_EQ(PointsOfCitation(o, u""_qs), QList<qsizetype>{});
}

}  // namespace
}  // namespace mj
