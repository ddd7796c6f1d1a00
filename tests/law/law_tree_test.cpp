#include "law/law_tree.h"

#include <gtest/gtest.h>

#include "law_query_fixture.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

QStringList Keys(const LawTree& t) {
  QStringList k;
  for (const LawTreeNode& n : t.nodes) k.append(n.key);
  return k;
}

TEST(Txt2TreeView, KeysAreTheCountersOfEveryLevelDownToTheNode) {
  const LawTree t = Txt2TreeView(
      test::TreeText({u"甲组"_qs, u"    甲一"_qs, u"        甲一子"_qs, u"    甲二"_qs, u"乙组"_qs, u"    乙一"_qs}),
      u"按试卷顺序"_qs);
  EXPECT_EQ(Keys(t), (QStringList{u"0000 node"_qs, u"0001 node"_qs, u"00010001 node"_qs, u"000100010001 node"_qs,
                                  u"00010002 node"_qs, u"0002 node"_qs, u"00020001 node"_qs}));
  EXPECT_EQ(t.nodes[0].text, u"按试卷顺序"_qs);
  EXPECT_EQ(t.nodes[0].level, 0);
  EXPECT_EQ(t.nodes[1].parentKey, u"0000 node"_qs);
  EXPECT_EQ(t.nodes[3].parentKey, u"00010001 node"_qs);
  EXPECT_EQ(t.nodes[3].level, 3);
  EXPECT_EQ(t.nodes[0].children, (QList<int>{1, 5}));
  EXPECT_EQ(t.nodes[1].children, (QList<int>{2, 4}));
  EXPECT_EQ(t.nodes[2].children, (QList<int>{3}));
  // Each node knows the place of its parent, the one its key names.
  EXPECT_EQ(t.nodes[0].parent, -1);
  for (int i = 1; i < t.nodes.size(); ++i) EXPECT_EQ(t.nodes[i].parent, t.indexOf(t.nodes[i].parentKey)) << i;
  EXPECT_EQ(t.nodes[3].parent, 2);
  EXPECT_EQ(t.nodes[6].parent, 5);
  // A deeper level starts counting anew under the next parent.
  EXPECT_EQ(t.nodes[6].key, u"00020001 node"_qs);
}

TEST(Txt2TreeView, FileLinesInAnyCaseSetTheTagOfTheNodesBehindThem) {
  const LawTree t =
      Txt2TreeView(test::TreeText({u"FILE=\"\\lawtxt\\甲.mmd\""_qs, u"分组"_qs, u"    《甲》"_qs, u"    《甲二》"_qs,
                                   u"  fIlE=\"\\lawtxt\\乙.mmd\""_qs, u"    《乙》"_qs}),
                   u"根"_qs);
  ASSERT_EQ(t.nodes.size(), 5);
  EXPECT_EQ(t.nodes[1].tag, u"\\lawtxt\\甲.mmd"_qs);
  EXPECT_EQ(t.nodes[2].tag, u"\\lawtxt\\甲.mmd"_qs);
  EXPECT_EQ(t.nodes[3].tag, u"\\lawtxt\\甲.mmd"_qs);
  EXPECT_EQ(t.nodes[4].tag, u"\\lawtxt\\乙.mmd"_qs);
  EXPECT_EQ(t.nodes[4].text, u"《乙》"_qs);
  EXPECT_TRUE(t.nodes[0].tag.isEmpty());
}

TEST(Txt2TreeView, FourBlanksMakeALevelAndTheIndentIsNotPartOfTheText) {
  const LawTree t =
      Txt2TreeView(test::TreeText({u"   甲"_qs, u"    乙"_qs, u"       丙"_qs, u"        丁"_qs}), u"根"_qs);
  ASSERT_EQ(t.nodes.size(), 5);
  EXPECT_EQ(t.nodes[1].level, 1);  // 3 blanks
  EXPECT_EQ(t.nodes[1].text, u"甲"_qs);
  EXPECT_EQ(t.nodes[2].level, 2);  // 4 blanks
  EXPECT_EQ(t.nodes[3].level, 2);  // 7 blanks
  EXPECT_EQ(t.nodes[3].text, u"丙"_qs);
  EXPECT_EQ(t.nodes[4].level, 3);  // 8 blanks
  EXPECT_EQ(t.nodes[4].parentKey, u"00010002 node"_qs);
}

TEST(Txt2TreeView, ShortLinesAreSkipped) {
  const LawTree t = Txt2TreeView(u"甲\r\n\r\n乙乙\r\n \r\n    \r\n丙丙\n丁丁\r"_qs, u"根"_qs);
  EXPECT_EQ(Keys(t), (QStringList{u"0000 node"_qs, u"0001 node"_qs, u"0002 node"_qs, u"0003 node"_qs}));
  EXPECT_EQ(t.nodes[1].text, u"乙乙"_qs);
  EXPECT_EQ(t.nodes[3].text, u"丁丁"_qs);
}

TEST(Txt2TreeView, WithoutFileLinesTheTagsAreEmpty) {
  const LawTree t = Txt2TreeView(test::TreeText({u"分组"_qs, u"    《甲》"_qs}), u"根"_qs);
  ASSERT_EQ(t.nodes.size(), 3);
  EXPECT_TRUE(t.nodes[1].tag.isEmpty());
  EXPECT_TRUE(t.nodes[2].tag.isEmpty());
}

TEST(Txt2TreeView, ANodeBelowAMissingLevelCannotBeHung) {
  const LawTree t =
      Txt2TreeView(test::TreeText({u"分组"_qs, u"        深"_qs, u"            更深"_qs, u"    浅"_qs}), u"根"_qs);
  // 深 would hang below 00010000, which does not exist; so would its child.
  EXPECT_EQ(Keys(t), (QStringList{u"0000 node"_qs, u"0001 node"_qs, u"00010001 node"_qs}));
  EXPECT_EQ(t.nodes[2].text, u"浅"_qs);
}

TEST(Txt2TreeView, EmptyTextGivesTheRootOnly) {
  const LawTree t = Txt2TreeView(QString(), u"按字母顺序"_qs);
  ASSERT_EQ(t.nodes.size(), 1);
  EXPECT_EQ(t.nodes[0].key, u"0000 node"_qs);
  EXPECT_EQ(t.indexOf(u"0000 node"_qs), 0);
  EXPECT_EQ(t.indexOf(u"0001 node"_qs), -1);
}

TEST(LoadLawTree, TheThreeFilesAndTheirRoots) {
  test::TestEnv te;
  test::MakeLawFolder(te);
  const LawTree paper = LoadLawTree(te.env, LawTreeOrder::Paper);
  EXPECT_EQ(paper.nodes[0].text, u"按试卷顺序"_qs);
  ASSERT_EQ(paper.nodes.size(), 8);
  EXPECT_EQ(paper.nodes[1].text, u"试卷一相关法律、法规"_qs);
  EXPECT_EQ(paper.nodes[4].text, u"分组"_qs);
  EXPECT_EQ(paper.nodes[4].tag, u"\\lawtxt\\示例办法.mmd"_qs);
  EXPECT_EQ(paper.nodes[5].key, u"000100030001 node"_qs);
  const LawTree letter = LoadLawTree(te.env, LawTreeOrder::Letter);
  EXPECT_EQ(letter.nodes[0].text, u"按字母顺序"_qs);
  ASSERT_EQ(letter.nodes.size(), 3);
  EXPECT_EQ(letter.nodes[1].text, u"S 《示例办法》"_qs);
  EXPECT_EQ(letter.nodes[1].level, 1);
  const LawTree klass = LoadLawTree(te.env, LawTreeOrder::Class);
  EXPECT_EQ(klass.nodes[0].text, u"按类别顺序"_qs);
  EXPECT_EQ(LawTreeFile(LawTreeOrder::Class), u"\\ini\\leibie.mmd"_qs);
}

TEST(LoadLawTree, AMissingFileGivesTheRootOnly) {
  test::TestEnv te;
  const LawTree t = LoadLawTree(te.env, LawTreeOrder::Letter);
  ASSERT_EQ(t.nodes.size(), 1);
  EXPECT_EQ(t.nodes[0].text, u"按字母顺序"_qs);
}

}  // namespace
}  // namespace mj
