#include "law/law_query.h"

#include <gtest/gtest.h>

#include "law_query_fixture.h"
#include "platform/textfile.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

using test::kSampleLast;
using test::PrintedArticle;

// Articles as a number query shows them one behind the other.
QString Articles(const QList<int>& numbers) {
  QString s;
  for (const int n : numbers) s += PrintedArticle(n, kSampleLast).mid(2);
  return s;
}

class LawQueryTest : public ::testing::Test {
 protected:
  LawQueryTest() {
    test::MakeLawFolder(te);
    q = std::make_unique<LawQuery>(te.env);
  }
  int node(const QString& text) const {
    for (int i = 0; i < q->tree.nodes.size(); ++i)
      if (q->tree.nodes[i].text == text) return i;
    ADD_FAILURE() << "no node " << text.toStdString();
    return -1;
  }
  void pick(const QString& text) { q->clickNode(node(text)); }
  void numbers(const QString& text) {
    q->editText1(text);
    q->query();
  }
  void search(const QString& text) {
    q->editText2(text);
    q->query();
  }
  QStringList boxTexts() {
    QStringList r;
    for (const BoxRecord& b : te.boxes.take()) r.append(b.text);
    return r;
  }

  test::TestEnv te;
  std::unique_ptr<LawQuery> q;
};

// ---- The tree --------------------------------------------------------------

TEST_F(LawQueryTest, StartsWithThePaperTreeAndNoLaw) {
  EXPECT_EQ(q->tree.nodes[0].text, u"按试卷顺序"_qs);
  EXPECT_EQ(q->Label3, u"准备查询:"_qs);
  EXPECT_FALSE(q->Command4Enabled);
  EXPECT_FALSE(q->Command5Enabled);
  EXPECT_FALSE(q->Command8Visible[0]);
  EXPECT_FALSE(q->Command8Visible[1]);
  EXPECT_FALSE(q->resultShown);
  EXPECT_TRUE(q->viewReadOnly);
}

TEST_F(LawQueryTest, OrderButtonsLoadTheOtherTrees) {
  q->loadTree(LawTreeOrder::Letter);
  EXPECT_EQ(q->tree.nodes[0].text, u"按字母顺序"_qs);
  EXPECT_EQ(q->tree.nodes[2].text, u"S 《示例法》"_qs);
  q->loadTree(LawTreeOrder::Class);
  EXPECT_EQ(q->tree.nodes[0].text, u"按类别顺序"_qs);
  q->loadTree(LawTreeOrder::Paper);
  EXPECT_EQ(q->tree.nodes[1].text, u"试卷一相关法律、法规"_qs);
}

TEST_F(LawQueryTest, ALeafShowsTheLawAndIndexesItAsOneLaw) {
  pick(u"《示例法》"_qs);
  EXPECT_EQ(q->Label3, u"将要查询 《示例法》"_qs);
  EXPECT_EQ(q->view, test::ArticleLaw(kSampleLast));
  EXPECT_EQ(q->lawText(), test::ArticleLaw(kSampleLast));
  EXPECT_EQ(q->itemCount(), kSampleLast);
  EXPECT_TRUE(q->Text1Enabled);
  EXPECT_TRUE(q->Command4Enabled);
  EXPECT_EQ(q->fileList, u"《示例法》●\\lawtxt\\示例法.mmd■"_qs);
  EXPECT_EQ(q->title, u"《示例法》"_qs);
  EXPECT_EQ(q->file, u"\\lawtxt\\示例法.mmd"_qs);
  EXPECT_EQ(q->result.lengths, QStringLiteral("%1").arg(q->view.size(), 15, 10, QLatin1Char('0')));
  EXPECT_EQ(q->result.names, u"《示例法》●"_qs);
  EXPECT_TRUE(te.boxes.shown().isEmpty());
}

TEST_F(LawQueryTest, AGroupListsItsDirectChildrenAndAllowsOnlyTheTextSearch) {
  pick(u"《示例法》"_qs);
  pick(u"试卷一相关法律、法规"_qs);
  EXPECT_EQ(q->Label3, u"将要查询 试卷一相关法律、法规"_qs);
  EXPECT_EQ(q->view,
            u"你现在选择的不是单个法律，所以不能使用“全文”按钮，也不能按条查询，只能按包含字符串方式查询。"_qs);
  EXPECT_TRUE(q->lawText().isEmpty());
  EXPECT_FALSE(q->Text1Enabled);
  EXPECT_TRUE(q->Text2Enabled);
  EXPECT_FALSE(q->Command4Enabled);
  EXPECT_EQ(q->fileList,
            u"《示例法》●\\lawtxt\\示例法.mmd■《示例规定》●\\lawtxt\\示例规定.mmd■分组●\\lawtxt\\示例办法.mmd■"_qs);
  EXPECT_TRUE(q->result.isEmpty());
}

TEST_F(LawQueryTest, TheRootOnlyResetsTheLabel) {
  pick(u"《示例法》"_qs);
  q->clickNode(0);
  EXPECT_EQ(q->Label3, u"准备查询:"_qs);
  EXPECT_EQ(q->view, test::ArticleLaw(kSampleLast));
}

TEST_F(LawQueryTest, AMissingLawFileIsToldAndTheClickEnds) {
  RemoveFile(te.path(u"\\lawtxt\\示例规定.mmd"_qs));
  pick(u"《示例法》"_qs);
  pick(u"《示例规定》"_qs);
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].text, u"法律/法规文件"_qs + te.path(u"\\lawtxt\\示例规定.mmd"_qs) + u"不存在。"_qs);
  EXPECT_EQ(te.boxes.shown()[0].style, 48);
  EXPECT_EQ(q->Label3, u"将要查询 《示例法》"_qs);
  EXPECT_EQ(q->view, test::ArticleLaw(kSampleLast));
}

TEST_F(LawQueryTest, ATreeWithoutFileLinesNamesNoFile) {
  te.writeGbk(u"\\ini\\shijuan.mmd"_qs, test::TreeText({u"试卷一"_qs, u"    《示例法》"_qs}));
  q->loadTree(LawTreeOrder::Paper);
  // The law has no file: it is said, and the click ends.
  q->clickNode(2);
  EXPECT_EQ(boxTexts(), QStringList(1, u"法律/法规文件"_qs + te.path(QString()) + u"不存在。"_qs));
  EXPECT_EQ(q->Label3, u"准备查询:"_qs);
  // The group is chosen all the same: it shows no law text of its own.
  q->clickNode(1);
  EXPECT_TRUE(te.boxes.shown().isEmpty());
  EXPECT_EQ(q->Label3, u"将要查询 试卷一"_qs);
  EXPECT_FALSE(q->Command4Enabled);
  EXPECT_FALSE(q->Text1Enabled);
  EXPECT_EQ(q->view,
            u"你现在选择的不是单个法律，所以不能使用“全文”按钮，也不能按条查询，只能按包含字符串方式查询。"_qs);
  // A query then ends in one of the texts for an empty result.
  search(u"盗窃"_qs);
  EXPECT_EQ(q->view, u"没有含  盗窃  的法条。"_qs);
  EXPECT_TRUE(te.boxes.shown().isEmpty());
}

TEST_F(LawQueryTest, AGroupWhoseFileIsMissingIsChosen) {
  // The file line above a group names a file that is gone; its laws have
  // theirs.
  te.writeGbk(u"\\ini\\shijuan.mmd"_qs,
              test::TreeText({u"FILE=\"\\lawtxt\\旧目录.mmd\""_qs, u"试卷一"_qs, u"FILE=\"\\lawtxt\\示例法.mmd\""_qs,
                              u"    《示例法》"_qs}));
  q->loadTree(LawTreeOrder::Paper);
  q->clickNode(1);
  EXPECT_TRUE(te.boxes.shown().isEmpty());
  EXPECT_EQ(q->Label3, u"将要查询 试卷一"_qs);
  EXPECT_EQ(q->fileList, u"《示例法》●\\lawtxt\\示例法.mmd■"_qs);
  search(u"盗窃"_qs);
  EXPECT_TRUE(q->view.startsWith(u"《示例法》\r\n　　第十条　【盗窃】"_qs)) << q->view.left(40).toStdString();
}

TEST_F(LawQueryTest, ATagLeavingTheProgramFolderNamesNoFile) {
  te.writeGbk(u"\\ini\\shijuan.mmd"_qs, test::TreeText({u"FILE=\"\\..\\lawtxt\\示例法.mmd\""_qs, u"《示例法》"_qs}));
  q->loadTree(LawTreeOrder::Paper);
  q->clickNode(1);
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_TRUE(te.boxes.shown()[0].text.startsWith(u"法律/法规文件"_qs));
  EXPECT_TRUE(q->lawText().isEmpty());
}

// ---- Query by article numbers ------------------------------------------------

TEST_F(LawQueryTest, TwelveToFifteenAndTwentyGiveFiveArticlesInThatOrder) {
  pick(u"《示例法》"_qs);
  numbers(u"12-15,20"_qs);
  EXPECT_EQ(q->view, Articles({12, 13, 14, 15, 20}));
  EXPECT_EQ(q->view.left(40),
            u"　　第十二条　示例法第12号规定的内容。\r\n　　第十三条　示例法第13号规定的内容。\r\n"_qs.left(40));
  EXPECT_TRUE(q->Text1.isEmpty());
  EXPECT_FALSE(q->keypadOpen);
  EXPECT_TRUE(q->focusResult);
  EXPECT_EQ(q->lastResult, q->view);
  EXPECT_EQ(q->result.lengths, QStringLiteral("%1").arg(q->view.size(), 15, 10, QLatin1Char('0')));
  EXPECT_EQ(q->result.names, u"《示例法》●"_qs);
}

TEST_F(LawQueryTest, AReversedRangeGivesItsTwoEnds) {
  pick(u"《示例法》"_qs);
  numbers(u"15-12"_qs);
  EXPECT_EQ(q->view, Articles({15, 12}));
}

TEST_F(LawQueryTest, NumbersAboveTheLastArticleArePassedOver) {
  pick(u"《示例法》"_qs);
  numbers(u"24-30"_qs);
  EXPECT_EQ(q->view, Articles({24, 25}));
  numbers(u"26,40-45"_qs);
  EXPECT_EQ(q->view, u"没有该条。"_qs);
  EXPECT_TRUE(q->result.isEmpty());
  EXPECT_EQ(q->lastResult, u"没有该条。"_qs);
}

TEST_F(LawQueryTest, TheLastArticleIsReadWithoutAnEndMarker) {
  pick(u"《示例法》"_qs);
  numbers(u"25"_qs);
  EXPECT_EQ(q->view, u"　　第二十五条　本法自公布之日起施行。\r\n"_qs);
  search(u"施行"_qs);
  EXPECT_EQ(q->view, u"《示例法》\r\n　　第二十五条　本法自公布之日起【施行】。\r\n\r\n\r\n"_qs);
}

TEST_F(LawQueryTest, AMultiLineArticleKeepsItsList) {
  pick(u"《示例法》"_qs);
  numbers(u"3"_qs);
  EXPECT_EQ(q->view, u"　　第三条　下列情形适用本法：\r\n　　（一）甲；\r\n　　（二）乙。\r\n"_qs);
}

TEST_F(LawQueryTest, TheOtherHeadingStyles) {
  pick(u"《示例办法》"_qs);
  numbers(u"2-3"_qs);
  EXPECT_EQ(q->view, u"　　2．　第二项。\r\n　　3．　第三项。\r\n"_qs);
  q->clickNode(0);
  pick(u"《示例规定》"_qs);
  numbers(u"3"_qs);
  EXPECT_EQ(q->view, u"　　三、　第三项内容，\r\n　　接续的一行。\r\n"_qs);
}

TEST_F(LawQueryTest, AThousandNumbers) {
  pick(u"《示例法》"_qs);
  QStringList list;
  for (int i = 1; i <= 1000; ++i) list.append(QString::number(i));
  numbers(list.join(u','));
  QList<int> all;
  for (int i = 1; i <= kSampleLast; ++i) all.append(i);
  EXPECT_EQ(q->view, Articles(all));
  EXPECT_TRUE(te.boxes.shown().isEmpty());
}

TEST_F(LawQueryTest, TheTextBoxWinsWhenBothAreFilled) {
  pick(u"《示例法》"_qs);
  q->editText1(u"12"_qs);
  q->editText2(u"盗窃"_qs);
  q->query();
  EXPECT_TRUE(q->Text1.isEmpty());
  EXPECT_EQ(q->view, u"《示例法》\r\n　　第十条　【盗窃】公私财物，数额较大的，处三年以下有期徒刑。\r\n\r\n\r\n"_qs);
}

TEST_F(LawQueryTest, BothBoxesEmptyOnlyMoveTheFocus) {
  pick(u"《示例法》"_qs);
  const int version = q->viewVersion;
  q->focusResult = false;
  q->query();
  EXPECT_EQ(q->viewVersion, version);
  EXPECT_TRUE(q->focusResult);
}

TEST_F(LawQueryTest, TheColonlessTestFiresOnlyOnTheColonlessLabel) {
  // With no law chosen the label has its colon: the query goes on and ends in
  // the texts for an empty result.
  search(u"盗窃"_qs);
  EXPECT_EQ(q->view, u"没有含  盗窃  的法条。"_qs);
  q->editText2(QString());
  numbers(u"12"_qs);
  EXPECT_EQ(q->view, u"没有该条。"_qs);
  EXPECT_TRUE(te.boxes.shown().isEmpty());
  q->fullText();
  EXPECT_TRUE(q->view.isEmpty());
  EXPECT_TRUE(te.boxes.shown().isEmpty());
  // Only the label without its colon stops them.
  q->Label3 = u"准备查询"_qs;
  search(u"盗窃"_qs);
  q->fullText();
  ASSERT_EQ(te.boxes.shown().size(), 2);
  EXPECT_EQ(te.boxes.shown()[0].text, u"请先选择要查询的法律！"_qs);
  EXPECT_EQ(te.boxes.shown()[0].style, 48);
  EXPECT_EQ(te.boxes.shown()[1].text, u"请先选择要查询的法律！"_qs);
}

TEST_F(LawQueryTest, AQueryDisablesTheRelatedQuestions) {
  pick(u"《示例法》"_qs);
  q->Command5Enabled = true;
  numbers(u"1"_qs);
  EXPECT_FALSE(q->Command5Enabled);
}

// ---- Query by text -----------------------------------------------------------

TEST_F(LawQueryTest, ArticleHeadingTextIsFoundAndNotMarked) {
  pick(u"《示例法》"_qs);
  search(u"第十条"_qs);
  EXPECT_EQ(q->view, u"《示例法》\r\n　　第十条　盗窃公私财物，数额较大的，处三年以下有期徒刑。\r\n\r\n\r\n"_qs);
  search(u"第 十条"_qs);
  EXPECT_EQ(q->view, u"没有含  第 十条  的法条。"_qs);
}

TEST_F(LawQueryTest, NothingFound) {
  pick(u"《示例法》"_qs);
  search(u"不存在的字"_qs);
  EXPECT_EQ(q->view, u"没有含  不存在的字  的法条。"_qs);
  EXPECT_TRUE(q->result.isEmpty());
}

TEST_F(LawQueryTest, AGroupSearchesItsDirectChildrenOnly) {
  pick(u"试卷一相关法律、法规"_qs);
  search(u"独特"_qs);  // only in 《深层法》, a grandchild
  EXPECT_EQ(q->view, u"没有含  独特  的法条。"_qs);
  search(u"内容"_qs);
  EXPECT_EQ(q->result.names, u"《示例法》●《示例规定》●"_qs);
  const QString first = q->view.left(q->view.indexOf(u"《示例规定》"_qs));
  EXPECT_EQ(q->result.lengths.left(15), QStringLiteral("%1").arg(first.size(), 15, 10, QLatin1Char('0')));
  EXPECT_TRUE(q->view.contains(u"《示例规定》\r\n　　一、　总则【内容】。\r\n"_qs)) << (q->view).toStdString();
  // The subgroup stands in the list with its own file.
  search(u"第二项"_qs);
  EXPECT_EQ(q->result.names, u"《示例规定》●分组●"_qs);
  EXPECT_TRUE(q->view.contains(u"分组\r\n　　2．　【第二项】。\r\n"_qs)) << (q->view).toStdString();
}

TEST_F(LawQueryTest, OneCharacterOverAWholeGroup) {
  pick(u"试卷一相关法律、法规"_qs);
  search(u"。"_qs);
  EXPECT_EQ(q->result.names, u"《示例法》●《示例规定》●分组●"_qs);
  qsizetype sum = 0;
  for (int i = 0; i < q->result.lengths.size(); i += 15) sum += q->result.lengths.mid(i, 15).toLongLong();
  EXPECT_EQ(sum, q->view.size());
  EXPECT_TRUE(te.boxes.shown().isEmpty());
}

// The law file closed by the end mark on a line of its own, as the tools that
// write law texts leave it.
class EndMarkTest : public LawQueryTest {
 protected:
  EndMarkTest() {
    te.writeGbk(u"\\lawtxt\\示例法.mmd"_qs, test::ArticleLaw(kSampleLast) + u"\r\n　　----<全文完>----\r\n"_qs);
    ClearLawCache();
  }
  // Neither the mark nor the indented empty line it stood on.
  static void expectClean(const QString& view) {
    EXPECT_FALSE(view.contains(u"全文完"_qs)) << view.right(80).toStdString();
    EXPECT_FALSE(view.contains(u"\r\n　　\r\n"_qs)) << view.right(80).toStdString();
    EXPECT_FALSE(view.endsWith(u"　　"_qs)) << view.right(80).toStdString();
  }
  const QString lastArticle = u"　　第二十五条 本法自公布之日起施行。"_qs;
};

TEST_F(EndMarkTest, TheTreeClickShowsTheLawWithoutIt) {
  pick(u"《示例法》"_qs);
  expectClean(q->view);
  EXPECT_EQ(q->view, test::ArticleLaw(kSampleLast) + u"\r\n"_qs);
  EXPECT_EQ(q->itemCount(), kSampleLast);
}

TEST_F(EndMarkTest, TheWholeTextShowsNoMark) {
  pick(u"《示例法》"_qs);
  numbers(u"3"_qs);
  q->fullText();
  expectClean(q->view);
  EXPECT_TRUE(q->view.endsWith(u"本法自公布之日起施行。\r\n"_qs));
}

TEST_F(EndMarkTest, AQueryReachingTheLastArticleShowsNoMark) {
  pick(u"《示例法》"_qs);
  numbers(u"24-25"_qs);
  expectClean(q->view);
  EXPECT_EQ(q->view, Articles({24, 25}));
}

TEST_F(EndMarkTest, ATextSearchLeavesNoEmptyLineBehind) {
  pick(u"《示例法》"_qs);
  search(u"施行"_qs);
  expectClean(q->view);
  EXPECT_EQ(q->view, u"《示例法》\r\n　　第二十五条　本法自公布之日起【施行】。\r\n\r\n\r\n"_qs);
  // The mark itself is found nowhere.
  search(u"全文完"_qs);
  EXPECT_EQ(q->view, u"没有含  全文完  的法条。"_qs);
}

TEST_F(EndMarkTest, OpeningTheLawFromAnAnswerShowsNoMark) {
  q->openLawAt(u"示例法"_qs, u"第二十五条"_qs);
  expectClean(q->view);
  ASSERT_TRUE(q->caretRequest);
  EXPECT_EQ(q->view.mid(q->caretRequest->position, lastArticle.size()), lastArticle);
  EXPECT_TRUE(q->view.endsWith(u"本法自公布之日起施行。\r\n"_qs));
}

TEST_F(EndMarkTest, AMarkInsideALineLeavesTheRestOfTheLine) {
  te.writeGbk(u"\\lawtxt\\示例法.mmd"_qs, test::ArticleLaw(kSampleLast) + u"(完)----<全文完>----"_qs);
  ClearLawCache();
  pick(u"《示例法》"_qs);
  EXPECT_EQ(q->view, test::ArticleLaw(kSampleLast) + u"(完)"_qs);
}

TEST_F(LawQueryTest, OnlyBlanksFindEveryArticle) {
  pick(u"《示例法》"_qs);
  search(u"  "_qs);
  EXPECT_TRUE(q->view.startsWith(u"《示例法》\r\n　　第一条　"_qs)) << (q->view.left(40)).toStdString();
  EXPECT_FALSE(q->view.contains(u"【"_qs));
}

// ---- 全文 ------------------------------------------------------------------

TEST_F(LawQueryTest, FullTextShowsTheWholeLaw) {
  pick(u"《示例法》"_qs);
  numbers(u"3"_qs);
  q->fullText();
  EXPECT_EQ(q->view, test::ArticleLaw(kSampleLast));
  EXPECT_EQ(q->result.names, u"《示例法》●"_qs);
  EXPECT_EQ(q->lastResult, q->view);
}

// ---- Result index ------------------------------------------------------------

TEST(LawResultIndex, APositionGivesItsLaw) {
  LawResultIndex r;
  EXPECT_EQ(r.GetLawName(1), QString());
  r.add(10, u"《甲》"_qs);
  r.add(5, u"X 《乙》"_qs);
  r.add(7, u"《丙》\r\n附注"_qs);
  EXPECT_EQ(r.lengths, u"000000000000010000000000000005000000000000007"_qs);
  EXPECT_EQ(r.GetLawName(1), u"《甲》"_qs);
  EXPECT_EQ(r.GetLawName(10), u"《甲》"_qs);
  EXPECT_EQ(r.GetLawName(11), u"《乙》"_qs);
  EXPECT_EQ(r.GetLawName(15), u"《乙》"_qs);
  EXPECT_EQ(r.GetLawName(16), u"《丙》"_qs);
  // Beyond all parts: the last law.
  EXPECT_EQ(r.GetLawName(1000), u"《丙》"_qs);
  r.setSingle(3, u"\r无名"_qs);
  EXPECT_EQ(r.GetLawName(2), u"\r无名"_qs);
  r.clear();
  EXPECT_TRUE(r.isEmpty());
}

// ---- The article-number box ---------------------------------------------------

TEST(CheckArticleBox, ALastCharacterOutsideTheSetIsRemovedWithAMessage) {
  const ArticleBoxCheck c = CheckArticleBox(u"12a"_qs);
  EXPECT_EQ(c.text, u"12"_qs);
  EXPECT_EQ(c.messages, QStringList{u"注意：文本框中的数据不合法，只能含小写数字和“,”号和（或）“-”号！"_qs});
  EXPECT_TRUE(c.caretToEnd);
}

TEST(CheckArticleBox, TwoJoinersInARowLoseTheLastSilently) {
  EXPECT_EQ(CheckArticleBox(u"12,-"_qs).text, u"12,"_qs);
  EXPECT_EQ(CheckArticleBox(u"12--"_qs).text, u"12-"_qs);
  EXPECT_TRUE(CheckArticleBox(u"12,-"_qs).messages.isEmpty());
  EXPECT_EQ(CheckArticleBox(u"-"_qs).text, u"-"_qs);
  EXPECT_EQ(CheckArticleBox(u"12-15,20"_qs).text, u"12-15,20"_qs);
}

TEST(CheckArticleBox, ABadCharacterInsideEmptiesTheBox) {
  const ArticleBoxCheck c = CheckArticleBox(u"1a2"_qs);
  EXPECT_TRUE(c.text.isEmpty());
  EXPECT_EQ(c.messages, QStringList{u"注意：文本框中有不合法字符，请重新输入！"_qs});
  const ArticleBoxCheck both = CheckArticleBox(u"1a2b"_qs);
  EXPECT_TRUE(both.text.isEmpty());
  EXPECT_EQ(both.messages, (QStringList{u"注意：文本框中的数据不合法，只能含小写数字和“,”号和（或）“-”号！"_qs,
                                        u"注意：文本框中有不合法字符，请重新输入！"_qs}));
  EXPECT_TRUE(CheckArticleBox(QString()).messages.isEmpty());
}

TEST_F(LawQueryTest, TypingInTheArticleBoxShowsTheMessages) {
  pick(u"《示例法》"_qs);
  q->editText1(u"1２"_qs);
  EXPECT_EQ(q->Text1, u"1"_qs);
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].text, u"注意：文本框中的数据不合法，只能含小写数字和“,”号和（或）“-”号！"_qs);
}

// ---- Entering the boxes, the decimal key ------------------------------------

TEST_F(LawQueryTest, WithoutALawEnteringABoxWarns) {
  EXPECT_FALSE(q->enterText1());
  EXPECT_FALSE(q->enterText2());
  EXPECT_FALSE(q->decimalKey());
  EXPECT_EQ(boxTexts(), QStringList(3, u"请先选择要查询的法律！"_qs));
  EXPECT_FALSE(q->keypadOpen);
}

TEST_F(LawQueryTest, EnteringTheArticleBoxEmptiesBothAndOpensTheKeypad) {
  pick(u"《示例法》"_qs);
  q->editText1(u"12"_qs);
  q->editText2(u"盗窃"_qs);
  EXPECT_TRUE(q->enterText1());
  EXPECT_TRUE(q->Text1.isEmpty());
  EXPECT_TRUE(q->Text2.isEmpty());
  EXPECT_TRUE(q->keypadOpen);
  q->editText1(u"5"_qs);
  EXPECT_TRUE(q->enterText2());
  EXPECT_FALSE(q->keypadOpen);
  EXPECT_TRUE(q->Text1.isEmpty());
  q->editText2(u"财物"_qs);
  EXPECT_TRUE(q->decimalKey());
  EXPECT_TRUE(q->keypadOpen);
  EXPECT_TRUE(q->Text2.isEmpty());
  EXPECT_TRUE(te.boxes.shown().isEmpty());
}

TEST_F(LawQueryTest, ALabelWithATitleBehindTheColonIsALawChosen) {
  q->openLawAt(u"示例法"_qs, u"第三条"_qs);
  EXPECT_EQ(q->Label3, u"准备查询:《示例法》"_qs);
  EXPECT_TRUE(q->enterText1());
  EXPECT_TRUE(te.boxes.shown().isEmpty());
}

// ---- The keypad ----------------------------------------------------------

TEST(Keypad, Rules) {
  using namespace keypad;
  EXPECT_EQ(Press(QString(), 0), QString());  // 0 in an empty box
  EXPECT_EQ(Press(QString(), 1), u"1"_qs);
  EXPECT_EQ(Press(u"1"_qs, 0), u"10"_qs);
  EXPECT_EQ(Press(u"12"_qs, kMinus), u"12-"_qs);
  EXPECT_EQ(Press(u"12-"_qs, kComma), u"12-"_qs);
  EXPECT_EQ(Press(u"12,"_qs, kMinus), u"12,"_qs);
  EXPECT_EQ(Press(u"12-15"_qs, kComma), u"12-15,"_qs);
  EXPECT_EQ(Press(u"12-15"_qs, kDelete), u"12-1"_qs);
  EXPECT_EQ(Press(QString(), kDelete), QString());
  EXPECT_EQ(Press(u"12-15"_qs, kClear), QString());
  EXPECT_EQ(Press(u".3"_qs, 4), u"34"_qs);  // a leading point goes first
  EXPECT_EQ(Press(u"."_qs, 0), QString());
  EXPECT_EQ(Press(u".12"_qs, kRun), u"12"_qs);
  EXPECT_EQ(Press(QString(), kMinus), u"-"_qs);
}

TEST(Keypad, EnabledButtons) {
  using namespace keypad;
  EXPECT_FALSE(Enabled(QString(), kDelete));
  EXPECT_FALSE(Enabled(QString(), kRun));
  EXPECT_TRUE(Enabled(QString(), kMinus));
  EXPECT_TRUE(Enabled(QString(), 0));
  EXPECT_TRUE(Enabled(u"1"_qs, kDelete));
  EXPECT_TRUE(Enabled(u"1"_qs, kRun));
  EXPECT_FALSE(Enabled(u"1-"_qs, kMinus));
  EXPECT_FALSE(Enabled(u"1-"_qs, kComma));
  EXPECT_FALSE(Enabled(u"1,"_qs, kComma));
  EXPECT_TRUE(Enabled(u"1"_qs, kComma));
  EXPECT_TRUE(Enabled(u"1"_qs, kClear));
}

TEST(Keypad, KeysOfTheKeyboard) {
  using namespace keypad;
  for (int d = 0; d <= 9; ++d) EXPECT_EQ(ButtonForChar(QChar(u'0' + d)), d);
  EXPECT_EQ(ButtonForChar(u'-'), kMinus);
  EXPECT_EQ(ButtonForChar(u','), kComma);
  EXPECT_EQ(ButtonForChar(u'*'), kComma);
  EXPECT_EQ(ButtonForChar(u'C'), kClear);
  EXPECT_EQ(ButtonForChar(u'c'), kClear);
  EXPECT_EQ(ButtonForChar(u'/'), kClear);
  EXPECT_EQ(ButtonForChar(u'\b'), kDelete);
  EXPECT_EQ(ButtonForChar(u'\r'), kRun);
  EXPECT_EQ(ButtonForChar(u'.'), -1);
  EXPECT_EQ(ButtonForChar(u'a'), -1);
}

TEST(Keypad, KeyPresses) {
  using namespace keypad;
  EXPECT_EQ(ButtonForKey(Qt::Key_Backspace, u'\b'), kDelete);
  EXPECT_EQ(ButtonForKey(Qt::Key_Backspace, QChar()), kDelete);
  EXPECT_EQ(ButtonForKey(Qt::Key_Return, u'\r'), kRun);
  EXPECT_EQ(ButtonForKey(Qt::Key_Return, QChar()), kRun);
  EXPECT_EQ(ButtonForKey(Qt::Key_Enter, u'\r'), kRun);
  EXPECT_EQ(ButtonForKey(Qt::Key_Enter, QChar()), kRun);
  // Other keys go by the character they typed.
  EXPECT_EQ(ButtonForKey(Qt::Key_7, u'7'), 7);
  EXPECT_EQ(ButtonForKey(Qt::Key_Asterisk, u'*'), kComma);
  EXPECT_EQ(ButtonForKey(Qt::Key_Slash, u'/'), kClear);
  EXPECT_EQ(ButtonForKey(Qt::Key_C, u'c'), kClear);
  EXPECT_EQ(ButtonForKey(Qt::Key_Minus, u'-'), kMinus);
  EXPECT_EQ(ButtonForKey(Qt::Key_Period, u'.'), -1);
  EXPECT_EQ(ButtonForKey(Qt::Key_Shift, QChar()), -1);
  EXPECT_EQ(ButtonForKey(Qt::Key_Delete, u'\x7f'), -1);
}

TEST(Keypad, HelpText) {
  EXPECT_EQ(keypad::HelpTitle(), u"本框说明"_qs);
  EXPECT_EQ(keypad::HelpText(),
            u"1、无论何时按下小数点均可调出本输入框。所以如果要想查询第1条，\r\n"
            u"   则只需在任何时候在键盘上键入“．1”然后回车即可，而不必先\r\n"
            u"   用鼠标点击上面的输入框。\r\n"
            u"2、在使用键盘输入时，“*”和“,”均同于“,”。\r\n"
            u"  “C”和“/”均同于“清空”。\r\n"
            u"3、减号“-”同于“-”，回车键同于按钮“条”。"_qs);
}

TEST_F(LawQueryTest, TheKeypadTypesIntoTheArticleBoxAndRunsTheQuery) {
  pick(u"《示例法》"_qs);
  ASSERT_TRUE(q->decimalKey());
  for (const int b :
       {0, 1, 2, keypad::kMinus, keypad::kMinus, keypad::kComma, 1, 4, keypad::kComma, 2, 5, 7, keypad::kDelete})
    q->keypadPress(b);
  EXPECT_EQ(q->Text1, u"12-14,25"_qs);
  q->keypadPress(keypad::kRun);
  EXPECT_FALSE(q->keypadOpen);
  EXPECT_TRUE(q->Text1.isEmpty());
  EXPECT_EQ(q->view, Articles({12, 13, 14, 25}));
  // 条 on an empty box is disabled.
  const int version = q->viewVersion;
  q->keypadPress(keypad::kRun);
  EXPECT_EQ(q->viewVersion, version);
}

// ---- Emphases ----------------------------------------------------------------

TEST_F(LawQueryTest, EmphasesButtonsFollowTheLaw) {
  pick(u"《示例法》"_qs);
  EXPECT_TRUE(q->Command8Visible[0]);
  EXPECT_TRUE(q->Command8Visible[1]);
  EXPECT_EQ(q->Command8Tag[0], u"3,9-12"_qs);
  EXPECT_EQ(q->Command8Tag[1], u"20-21"_qs);
  q->pressEmphasis(0);
  EXPECT_EQ(q->view, Articles({3, 9, 10, 11, 12}));
  q->pressEmphasis(1);
  EXPECT_EQ(q->view, Articles({20, 21}));
  pick(u"《示例办法》"_qs);
  EXPECT_TRUE(q->Command8Visible[0]);
  EXPECT_FALSE(q->Command8Visible[1]);
  EXPECT_EQ(q->Command8Tag[0], u"2"_qs);
  // A group's title has no 《》: both go.
  pick(u"试卷一相关法律、法规"_qs);
  EXPECT_FALSE(q->Command8Visible[0]);
  EXPECT_FALSE(q->Command8Visible[1]);
}

TEST_F(LawQueryTest, WithoutTheEmphasesFileTheButtonsStayAsTheyAre) {
  pick(u"《示例法》"_qs);
  RemoveFile(te.path(u"\\ini\\emphases.ini"_qs));
  pick(u"试卷一相关法律、法规"_qs);
  EXPECT_TRUE(q->Command8Visible[0]);
  EXPECT_EQ(q->Command8Tag[0], u"3,9-12"_qs);
}

TEST(ReadEmphases, TitlesAndValues) {
  test::TestEnv te;
  test::MakeLawFolder(te);
  EXPECT_FALSE(ReadEmphases(te.env, u"《示例法"_qs).titleOk);
  EXPECT_FALSE(ReadEmphases(te.env, u"示例法》"_qs).titleOk);
  EXPECT_EQ(ReadEmphases(te.env, u"S 《示例法》"_qs).key, u"3,9-12"_qs);
  EXPECT_TRUE(ReadEmphases(te.env, u"《没有的法》"_qs).key.isEmpty());
}

TEST_F(LawQueryTest, GarbageEmphasesGiveTheBoxMessagesAndNoCrash) {
  te.writeGbk(u"\\ini\\emphases.ini"_qs, u"[示例法]\r\n重点法条=abc\r\n次重点法条=1,,,,x9--99999999\r\n"_qs);
  pick(u"《示例法》"_qs);
  q->pressEmphasis(0);
  EXPECT_EQ(boxTexts(), (QStringList{u"注意：文本框中的数据不合法，只能含小写数字和“,”号和（或）“-”号！"_qs,
                                     u"注意：文本框中有不合法字符，请重新输入！"_qs}));
  EXPECT_EQ(q->view, test::ArticleLaw(kSampleLast));  // both boxes empty: nothing shown anew
  q->pressEmphasis(1);
  EXPECT_EQ(boxTexts(), QStringList{u"注意：文本框中有不合法字符，请重新输入！"_qs});
  te.writeGbk(u"\\ini\\emphases.ini"_qs, u"[示例法]\r\n重点法条=1,,,,9--30\r\n"_qs);
  pick(u"《示例法》"_qs);
  q->pressEmphasis(0);
  QList<int> expected{1, 9};
  for (int i = 1; i <= kSampleLast; ++i) expected.append(i);
  EXPECT_EQ(q->view, Articles(expected));
}

// ---- Temporary text and saving ---------------------------------------------

TEST_F(LawQueryTest, TheTemporaryTextCollectsResults) {
  pick(u"《示例法》"_qs);
  numbers(u"3"_qs);
  q->mergeToText();
  q->mergeToText();  // already in it
  numbers(u"10"_qs);
  q->mergeToText();
  // Articles found by their numbers come with the law's name above them.
  const QString named = u"《示例法》\r\n"_qs;
  EXPECT_EQ(q->tempText, named + Articles({3}) + named + Articles({10}));
  q->lookText();
  EXPECT_EQ(q->view, q->tempText);
  EXPECT_TRUE(q->inTempText);
  EXPECT_FALSE(q->viewReadOnly);
  EXPECT_FALSE(q->Command5Enabled);
  EXPECT_EQ(q->Command5Caption, u"在看临时文本"_qs);
  EXPECT_FALSE(q->menu.LookText);
  EXPECT_FALSE(q->menu.MergeToText);
  EXPECT_FALSE(q->menu.SaveTheText);
  EXPECT_TRUE(q->menu.SaveTempText);
  EXPECT_TRUE(q->menu.GoBack);
  // The user's edits are the temporary text.
  q->editView(q->view + u"我的笔记"_qs);
  EXPECT_EQ(q->tempText, named + Articles({3}) + named + Articles({10}) + u"我的笔记"_qs);
  // A click does nothing here.
  q->clickInView(5);
  EXPECT_FALSE(q->Command5Enabled);
  q->goBack();
  EXPECT_EQ(q->view, Articles({10}));
  EXPECT_FALSE(q->inTempText);
  EXPECT_TRUE(q->viewReadOnly);
  EXPECT_TRUE(q->menu.LookText);
  EXPECT_TRUE(q->menu.MergeToText);
  EXPECT_TRUE(q->menu.SaveTheText);
  EXPECT_FALSE(q->menu.SaveTempText);
  EXPECT_FALSE(q->menu.GoBack);
  EXPECT_EQ(q->Command5Caption, u"相关试题"_qs);
}

TEST_F(LawQueryTest, TheSavedTemporaryTextNamesTheLawOfItsArticles) {
  pick(u"《示例法》"_qs);
  numbers(u"3"_qs);
  q->lookText();
  q->goBack();  // back at the articles: they still belong to the law
  q->mergeToText();
  // A search result names its laws itself.
  search(u"盗窃"_qs);
  const QString found = q->view;
  ASSERT_TRUE(found.startsWith(u"《示例法》\r\n"_qs));
  q->mergeToText();
  // The whole law names itself too.
  q->fullText();
  EXPECT_TRUE(q->articlesTitle.isEmpty());
  const QString target = te.path(u"\\临时.txt"_qs);
  te.dialogs.answer(target);
  q->lookText();
  q->saveTempText();
  EXPECT_EQ(ReadText(target), u"《示例法》\r\n"_qs + Articles({3}) + found);
}

TEST_F(LawQueryTest, EmptyingTheTemporaryText) {
  pick(u"《示例法》"_qs);
  numbers(u"3"_qs);
  q->mergeToText();
  q->noText();
  EXPECT_TRUE(q->tempText.isEmpty());
  EXPECT_EQ(q->view, Articles({3}));
  q->mergeToText();
  q->lookText();
  q->noText();
  EXPECT_TRUE(q->view.isEmpty());
  EXPECT_TRUE(q->tempText.isEmpty());
}

TEST_F(LawQueryTest, AQueryLeavesTheTemporaryText) {
  pick(u"《示例法》"_qs);
  q->lookText();
  numbers(u"3"_qs);
  EXPECT_FALSE(q->inTempText);
  EXPECT_TRUE(q->viewReadOnly);
}

TEST_F(LawQueryTest, SavingTheShownText) {
  pick(u"《示例法》"_qs);
  numbers(u"3"_qs);
  const QString target = te.path(u"\\out\\第三条.txt"_qs);
  te.mkdir(u"\\out"_qs);
  te.dialogs.answer(target);
  q->saveTheText();
  ASSERT_EQ(te.dialogs.fileRequests.size(), 1);
  const FileDialogRequest& r = te.dialogs.fileRequests[0];
  EXPECT_EQ(r.filter, u"Text (*.txt)|*.txt"_qs);
  EXPECT_EQ(r.defaultExt, u".txt"_qs);
  EXPECT_EQ(r.fileName, u"第三条下列情形适用本法：（一）甲；（二）"_qs);
  EXPECT_EQ(ReadText(target), Articles({3}));
  EXPECT_EQ(ReadBytes(target), ToGbk(Articles({3})));
  EXPECT_TRUE(te.boxes.shown().isEmpty());
}

TEST_F(LawQueryTest, TheSearchTextProposesTheName) {
  pick(u"《示例法》"_qs);
  search(u"盗窃"_qs);
  q->editText2(u"  盗窃 "_qs);
  q->saveTheText();  // cancelled
  ASSERT_EQ(te.dialogs.fileRequests.size(), 1);
  EXPECT_EQ(te.dialogs.fileRequests[0].fileName, u"盗窃"_qs);
  EXPECT_TRUE(te.boxes.shown().isEmpty());
}

TEST_F(LawQueryTest, OverwritingAsksYesNoCancel) {
  pick(u"《示例法》"_qs);
  numbers(u"3"_qs);
  const QString first = te.path(u"\\a.txt"_qs);
  const QString second = te.path(u"\\b.txt"_qs);
  te.writeGbk(u"\\a.txt"_qs, u"旧"_qs);
  te.writeGbk(u"\\b.txt"_qs, u"旧"_qs);
  // No: the dialog comes again; Yes on the second name writes it.
  te.dialogs.answer(first);
  te.dialogs.answer(second);
  te.boxes.answer(box::No);
  te.boxes.answer(box::Yes);
  q->saveTheText();
  ASSERT_EQ(te.boxes.shown().size(), 2);
  EXPECT_EQ(te.boxes.shown()[0].text, u"文件 "_qs + first + u" 已存在，要覆盖掉原来的文件吗？"_qs);
  EXPECT_EQ(te.boxes.shown()[0].title, u"请注意"_qs);
  EXPECT_EQ(box::buttonsOf(te.boxes.shown()[0].style), box::YesNoCancel);
  EXPECT_EQ(te.readGbk(u"\\a.txt"_qs), u"旧"_qs);
  EXPECT_EQ(te.readGbk(u"\\b.txt"_qs), Articles({3}));
  // Cancel ends without writing.
  te.boxes.clear();
  te.writeGbk(u"\\b.txt"_qs, u"旧"_qs);
  te.dialogs.answer(second);
  te.boxes.answer(box::Cancel);
  q->saveTheText();
  EXPECT_EQ(te.readGbk(u"\\b.txt"_qs), u"旧"_qs);
  EXPECT_EQ(te.dialogs.fileRequests.size(), 3);
}

TEST_F(LawQueryTest, SavingTheTemporaryText) {
  pick(u"《示例法》"_qs);
  numbers(u"10"_qs);
  q->mergeToText();
  q->saveTempText();  // not in the temporary text: disabled
  EXPECT_TRUE(te.dialogs.fileRequests.isEmpty());
  q->lookText();
  q->editView(q->view + u"笔记"_qs);
  te.dialogs.answer(te.path(u"\\t.txt"_qs));
  q->saveTempText();
  ASSERT_EQ(te.dialogs.fileRequests.size(), 1);
  EXPECT_EQ(te.dialogs.fileRequests[0].fileName, u"《示例法》第十条盗窃公私财物，数额较大的"_qs);
  EXPECT_EQ(te.readGbk(u"\\t.txt"_qs), u"《示例法》\r\n"_qs + Articles({10}) + u"笔记"_qs);
}

TEST(MayBeFileName, Rules) {
  EXPECT_EQ(MayBeFileName(QString()), u"noname"_qs);
  EXPECT_EQ(MayBeFileName(u"*?/\\|.\r\n　"_qs), u"noname"_qs);
  EXPECT_EQ(MayBeFileName(u"《刑法》\r\n　　第一条 为了"_qs), u"《刑法》第一条 为了"_qs);
  EXPECT_EQ(MayBeFileName(u"a.b*c?d/e\\f|g"_qs), u"abcdefg"_qs);
  EXPECT_EQ(MayBeFileName(u"一二三四五六七八九十一二三四五六七八九十一二三"_qs),
            u"一二三四五六七八九十一二三四五六七八九十"_qs);
}

// ---- Table of contents ----------------------------------------------------

TEST_F(LawQueryTest, AClickOnALineOfTheContentsJumpsToItsHeading) {
  QStringList lines{u"目录法"_qs, u"　　目录"_qs, u"　　第一章 总则"_qs, u"　　第二章 分则"_qs, u"　　第一章 总则"_qs};
  for (int i = 1; i <= 5; ++i) lines.append(u"　　第"_qs + DaXie(i) + u"条 总则内容"_qs + CStr(i) + u"。"_qs);
  lines << u"　　第二章 分则"_qs;
  for (int i = 6; i <= 30; ++i) lines.append(u"　　第"_qs + DaXie(i) + u"条 分则内容"_qs + CStr(i) + u"。"_qs);
  te.writeGbk(u"\\lawtxt\\目录法.mmd"_qs, test::JoinCrLf(lines));
  te.writeGbk(u"\\ini\\leibie.mmd"_qs, test::TreeText({u"FILE=\"\\lawtxt\\目录法.mmd\""_qs, u"《目录法》"_qs}));
  EXPECT_FALSE(q->readingResult());
  q->loadTree(LawTreeOrder::Class);
  pick(u"《目录法》"_qs);
  EXPECT_TRUE(q->readingResult());
  EXPECT_FALSE(q->caretRequest.has_value());

  q->clickInViewAndJump(q->view.indexOf(u"二章 分则"_qs), false);
  ASSERT_TRUE(q->caretRequest.has_value());
  EXPECT_EQ(q->caretRequest->position, q->view.lastIndexOf(u"　　第二章 分则"_qs));
  EXPECT_TRUE(q->caretRequest->toTop);
  q->caretRequest.reset();

  // An article line occurs once: no jump, but the click is read as ever.
  q->clickInViewAndJump(q->view.indexOf(u"总则内容3"_qs), false);
  EXPECT_FALSE(q->caretRequest.has_value());
  EXPECT_TRUE(q->viewReadOnly);

  // In the temporary text nothing jumps, and nothing is read.
  q->mergeToText();
  q->lookText();
  EXPECT_FALSE(q->readingResult());
  q->clickInViewAndJump(q->view.indexOf(u"二章 分则"_qs), false);
  EXPECT_FALSE(q->caretRequest.has_value());
  EXPECT_FALSE(q->viewReadOnly);
}

TEST_F(LawQueryTest, AGroupOrAnEmptyViewIsNoResultBeingRead) {
  pick(u"分组"_qs);
  EXPECT_FALSE(q->readingResult());
  pick(u"《示例法》"_qs);
  EXPECT_TRUE(q->readingResult());
  q->noText();  // not in the temporary text: the view stays
  EXPECT_TRUE(q->readingResult());
  q->lookText();
  EXPECT_FALSE(q->readingResult());
  q->goBack();
  EXPECT_TRUE(q->readingResult());
}

TEST(TocJumpTarget, ALineOfTheContentsLeadsToItsHeading) {
  const QString law =
      test::JoinCrLf({u"某法"_qs, u"　　目录"_qs, u"　　第一章 总则"_qs, u"　　第二章 分则"_qs, u"　　第一章 总则"_qs,
                      u"　　第一条 内容。"_qs, u"　　第二章 分则"_qs, u"　　第二条 内容。"_qs});
  const qsizetype onSecond = law.indexOf(u"第二章"_qs) + 1;
  const auto jump = TocJumpTarget(law, onSecond);
  ASSERT_TRUE(jump.has_value());
  EXPECT_EQ(*jump, law.indexOf(u"　　第二章 分则"_qs, law.indexOf(u"　　第二章 分则"_qs) + 1));
  // An article line occurs once: no jump.
  EXPECT_FALSE(TocJumpTarget(law, law.indexOf(u"第一条"_qs)).has_value());
  // Without 目录 nothing jumps.
  EXPECT_FALSE(TocJumpTarget(QString(law).replace(u"目录"_qs, u"目次"_qs), onSecond).has_value());
  // A line that starts with a stop character does not jump.
  const QString stops = u"目录\r\n。甲\r\n。甲\r\n"_qs + QString(20, u'x') + u"\r\n。甲"_qs;
  EXPECT_FALSE(TocJumpTarget(stops, 4).has_value());
  // An empty line does not jump.
  EXPECT_FALSE(TocJumpTarget(u"目录\r\n\r\n\r\n"_qs, 4).has_value());
}

TEST(TocJumpTarget, ASecondPlaceWithin15CharactersDoesNotJump) {
  const QString t = u"目录\r\n甲乙\r\n甲乙\r\n"_qs;
  EXPECT_FALSE(TocJumpTarget(t, 5).has_value());
  const QString far = u"目录\r\n甲乙\r\n"_qs + QString(20, u'x') + u"\r\n甲乙"_qs;
  ASSERT_TRUE(TocJumpTarget(far, 5).has_value());
  EXPECT_EQ(*TocJumpTarget(far, 5), far.lastIndexOf(u"甲乙"_qs));
}

}  // namespace
}  // namespace mj
