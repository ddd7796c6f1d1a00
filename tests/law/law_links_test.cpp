#include "law/law_links.h"

#include <gtest/gtest.h>

#include "law/citations.h"
#include "law/law_extract.h"
#include "law/law_query.h"
#include "law_query_fixture.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

using test::Item;
using test::kSampleLast;

// Questions of 《示例法》 (bank code 10001) and 《深层法》 (no row in the
// law-name table).
ItemIndex SampleItems() {
  return {
      Item(u"10001100001"_qs, u"A"_qs, u"《示例法》12．《示例法》3．"_qs),
      Item(u"10001100002"_qs, u"B"_qs, u"《示例法》1．"_qs),
      Item(u"10001100003"_qs, u"C"_qs, u"《示例法》2．"_qs),
      Item(u"10001200004"_qs, u"AB"_qs, u"《示例法》12．"_qs, false),       // hidden
      Item(u"20001100001"_qs, u"A"_qs, u"《示例法》12．《示例法》3．"_qs),  // another law's bank
      Item(u"10001300005"_qs, u"A"_qs, u"《示例法》12．《示例法》3．"_qs),  // the first one again
      Item(u"10001100006"_qs, u"D"_qs, u"《示例法》12．"_qs),
      Item(u"30001100001"_qs, u"A"_qs, u"《深层法》1．"_qs),
  };
}

// ---- NewGetForm6LongId -------------------------------------------------------

TEST(NewGetForm6LongId, TheLiveQuestionsOfTheArticleInItsBank) {
  const ItemIndex items = SampleItems();
  EXPECT_EQ(NewGetForm6LongId(items, u"10001"_qs, u"《示例法》"_qs, 12), u"1000110000110001100006"_qs);
  EXPECT_EQ(NewGetForm6LongId(items, u"10001"_qs, u"《示例法》"_qs, 3), u"10001100001"_qs);
  EXPECT_EQ(NewGetForm6LongId(items, u"20001"_qs, u"《示例法》"_qs, 12), u"20001100001"_qs);
  EXPECT_EQ(NewGetForm6LongId(items, u"10001"_qs, u"《示例法》"_qs, 99), QString());
  EXPECT_EQ(NewGetForm6LongId(items, QString(), QString(), 12), QString());
}

TEST(NewGetForm6LongId, TheKeyOfArticleOneOrTwoDoesNotMatchTwelve) {
  const ItemIndex items = SampleItems();
  EXPECT_EQ(NewGetForm6LongId(items, u"10001"_qs, u"《示例法》"_qs, 1), u"10001100002"_qs);
  EXPECT_EQ(NewGetForm6LongId(items, u"10001"_qs, u"《示例法》"_qs, 2), u"10001100003"_qs);
  // Nor the title of another law ending alike.
  const ItemIndex other{Item(u"10001100009"_qs, u"A"_qs, u"《大示例法》12．"_qs)};
  EXPECT_EQ(NewGetForm6LongId(other, u"10001"_qs, u"《示例法》"_qs, 12), QString());
}

TEST(NewGetForm6LongId, AHiddenQuestionDoesNotCount) {
  ItemIndex items = SampleItems();
  items[3].valid2 = true;
  EXPECT_EQ(NewGetForm6LongId(items, u"10001"_qs, u"《示例法》"_qs, 12), u"100011000011000120000410001100006"_qs);
}

TEST(NewGetForm6LongId, TheSameQuestionInTwoBanksCountsOnce) {
  ItemIndex items = SampleItems();
  items[5].answer = u"B"_qs;  // no longer the same question
  EXPECT_EQ(NewGetForm6LongId(items, u"10001"_qs, u"《示例法》"_qs, 12), u"100011000011000130000510001100006"_qs);
}

TEST(NewGetForm6LongId, TheLongIdIsTheFileNameAndTheSerialNumber) {
  const ItemIndex items{Item(u"10001100007"_qs, u"A"_qs, u"《示例法》5．"_qs)};
  ItemIndex moved = items;
  moved[0].filename = u"100012"_qs;
  EXPECT_EQ(NewGetForm6LongId(moved, u"10001"_qs, u"《示例法》"_qs, 5), u"10001200007"_qs);
}

TEST(GetForm6LongId, TheTableFormWithoutDedupe) {
  test::TestEnv te;
  te.mkdir(u"\\dbf"_qs);
  {
    DbfTable t = DbfTable::create(te.path(u"\\dbf\\items.mmd"_qs), tables::ItemFields());
    for (const ItemRow& r : SampleItems()) {
      const int row = t.appendRow();
      t.setText(row, u"filename"_qs, r.filename);
      t.setText(row, u"answer"_qs, r.answer);
      t.setText(row, u"aboutlaw"_qs, r.aboutlaw);
      t.setText(row, u"itemid"_qs, r.itemid);
      t.setLogical(row, u"valid2"_qs, r.valid2);
    }
    t.close();
  }
  EXPECT_EQ(GetForm6LongId(te.env, u"10001"_qs, u"《示例法》"_qs, 12),
            u"10001100001100012000041000130000510001100006"_qs);
  EXPECT_EQ(GetForm6LongId(te.env, u"10001"_qs, u"《示例法》"_qs, 1), u"10001100002"_qs);
}

TEST(GetMyLawFileName, CodeAndNameFromTheLawNameTable) {
  test::TestEnv te;
  test::MakeLawFolder(te);
  EXPECT_EQ(GetMyLawFileName(te.env, u"《示例法》"_qs, 1), u"10001"_qs);
  EXPECT_EQ(GetMyLawFileName(te.env, u" 《示例规定》 "_qs, 1), u"10002"_qs);
  EXPECT_EQ(GetMyLawFileName(te.env, u"《示例法》"_qs, 2), u"《示例法》"_qs);
  EXPECT_EQ(GetMyLawFileName(te.env, u"《深层法》"_qs, 1), QString());
  EXPECT_EQ(GetMyLawFileName(te.env, u"《深层法》"_qs, 2), QString());
  EXPECT_EQ(GetMyLawFileName(te.env, u"《示例法》"_qs, 3), QString());
  EXPECT_TRUE(te.boxes.shown().isEmpty());
}

TEST(GetMyOkItemNum, TheArticleAtAPosition) {
  const QString text = test::ArticleLaw(kSampleLast);
  EXPECT_EQ(GetMyOkItemNum(text, text.indexOf(u"第12号"_qs) + 1), 12);
  EXPECT_EQ(GetMyOkItemNum(text, 3), 0);
}

// ---- Clicks in the result view -------------------------------------------

class LinksTest : public ::testing::Test {
 protected:
  LinksTest() {
    test::MakeLawFolder(te);
    q = std::make_unique<LawQuery>(te.env);
    q->setItems(&items);
  }
  void pickLaw(const QString& text) {
    for (int i = 0; i < q->tree.nodes.size(); ++i)
      if (q->tree.nodes[i].text == text) q->clickNode(i);
  }
  // 0-based caret on the first place of what.
  qsizetype at(const QString& what) const { return q->view.indexOf(what); }

  test::TestEnv te;
  ItemIndex items = SampleItems();
  std::unique_ptr<LawQuery> q;
};

TEST_F(LinksTest, AClickOnAnArticleMakesItsQuestionsReady) {
  pickLaw(u"《示例法》"_qs);
  q->editText1(u"3,12"_qs);
  q->query();
  q->clickInView(at(u"第12号"_qs));
  EXPECT_TRUE(q->Command5Enabled);
  EXPECT_EQ(q->Command5Caption, u"相关2题"_qs);
  EXPECT_EQ(q->longIds, u"1000110000110001100006"_qs);
  EXPECT_EQ(q->relatedRunIds(), q->longIds);
  EXPECT_EQ(q->relatedRunCount(), 2);
  // The list of article 3.
  q->clickInView(at(u"（二）乙"_qs));
  EXPECT_EQ(q->Command5Caption, u"相关1题"_qs);
  EXPECT_EQ(q->longIds, u"10001100001"_qs);
  // The heading of an article, on its numeral.
  q->clickInView(at(u"十二条"_qs));
  EXPECT_EQ(q->Command5Caption, u"相关2题"_qs);
}

TEST_F(LinksTest, AClickOnTheWholeLawAndOnASearchResult) {
  pickLaw(u"《示例法》"_qs);
  q->clickInView(at(u"示例法第1号"_qs));
  EXPECT_EQ(q->Command5Caption, u"相关1题"_qs);
  EXPECT_EQ(q->longIds, u"10001100002"_qs);
  // An article without questions.
  q->clickInView(at(u"示例法第7号"_qs));
  EXPECT_FALSE(q->Command5Enabled);
  EXPECT_TRUE(q->longIds.isEmpty());
  // A chapter line is no article.
  q->clickInView(at(u"第一章"_qs) + 2);
  EXPECT_FALSE(q->Command5Enabled);
  // Over a group: the position tells the law.
  pickLaw(u"试卷一相关法律、法规"_qs);
  q->editText2(u"号规定"_qs);
  q->query();
  q->clickInView(at(u"示例法第2【"_qs));
  EXPECT_EQ(q->longIds, u"10001100003"_qs);
}

TEST_F(LinksTest, ClicksThatDoNothing) {
  // Before any result.
  q->clickInView(3);
  EXPECT_FALSE(q->Command5Enabled);
  pickLaw(u"《示例法》"_qs);
  q->clickInView(at(u"示例法第1号"_qs));
  ASSERT_TRUE(q->Command5Enabled);
  // The right button opens the menu and leaves the button as it is.
  q->clickInView(at(u"示例法第7号"_qs), false, true);
  EXPECT_TRUE(q->Command5Enabled);
  EXPECT_EQ(q->longIds, u"10001100002"_qs);
  // "没有该条。" has no law.
  q->editText1(u"99"_qs);
  q->query();
  q->clickInView(2);
  EXPECT_FALSE(q->Command5Enabled);
  // The keypad closes in any case.
  q->keypadOpen = true;
  q->clickInView(0, false, true);
  EXPECT_FALSE(q->keypadOpen);
}

TEST_F(LinksTest, CtrlDoesWhatAPlainClickDoes) {
  pickLaw(u"《示例法》"_qs);
  q->clickInView(at(u"示例法第12号"_qs), true);
  EXPECT_EQ(q->Command5Caption, u"相关2题"_qs);
}

TEST_F(LinksTest, ALawWithoutARowInTheLawNameTableGivesNoQuestions) {
  q->loadTree(LawTreeOrder::Paper);
  // 《深层法》 is a child of 分组.
  pickLaw(u"《深层法》"_qs);
  ASSERT_EQ(q->Label3, u"将要查询 《深层法》"_qs);
  q->clickInView(at(u"只在深处"_qs));
  EXPECT_FALSE(q->Command5Enabled);
  // Yet an answer citing it opens it.
  const QString answer = u"答案：A。参见《深层法》第1条\r\n"_qs + GetLawTxtForDaAn(te.env, u"参见《深层法》第1条"_qs);
  ASSERT_TRUE(answer.contains(u"《深层法》\r\n　　第一条　只在深处"_qs)) << answer.toStdString();
  LawQuery other(te.env);
  other.setItems(&items);
  EXPECT_TRUE(other.openFromAnswer(answer, answer.indexOf(u"只在深处"_qs) + 1, 1));
  EXPECT_EQ(other.Label3, u"准备查询:《深层法》"_qs);
  EXPECT_EQ(other.view, te.readGbk(u"\\lawtxt\\深层法.mmd"_qs));
  EXPECT_FALSE(other.Command5Enabled);
}

// ---- From an answer to the law -------------------------------------------

class AnswerTest : public LinksTest {
 protected:
  AnswerTest() {
    answer = u"你错选了答案B。\r\n\r\n答案：A。参见《示例法》第12条、第3条\r\n"_qs +
             GetLawTxtForDaAn(te.env, u"参见《示例法》第12条、第3条"_qs);
  }
  // 1-based place of the n-th occurrence of what.
  qsizetype pos(const QString& what, int n = 1) const {
    qsizetype p = -1;
    for (int i = 0; i < n; ++i) p = answer.indexOf(what, p + 1);
    return p + 1;
  }
  std::optional<AnswerCitation> at(qsizetype p) const { return CitationAtAnswer(te.env, answer, p); }
  QString answer;
};

TEST_F(AnswerTest, ThePrintedTextHasTheShapeTheClicksRelyOn) {
  EXPECT_EQ(answer,
            u"你错选了答案B。\r\n\r\n答案：A。参见《示例法》第12条、第3条\r\n"
            u"《示例法》\r\n　　第十二条　示例法第12号规定的内容。\r\n\r\n"
            u"《示例法》\r\n　　第三条　下列情形适用本法：\r\n　　（一）甲；\r\n　　（二）乙。\r\n\r\n"_qs);
}

TEST_F(AnswerTest, AClickInAnArticleNamesIt) {
  ASSERT_TRUE(at(pos(u"第12号"_qs)).has_value());
  EXPECT_EQ(at(pos(u"第12号"_qs))->title, u"示例法"_qs);
  EXPECT_EQ(at(pos(u"第12号"_qs))->item, u"第十二条"_qs);
  EXPECT_EQ(at(pos(u"十二条"_qs))->item, u"第十二条"_qs);
  EXPECT_EQ(at(pos(u"（二）乙"_qs))->item, u"第三条"_qs);
}

TEST_F(AnswerTest, AClickOnATitleLineOpensTheArticleBelowIt) {
  EXPECT_EQ(at(pos(u"《示例法》\r\n"_qs))->item, u"第十二条"_qs);
  EXPECT_EQ(at(pos(u"示例法》\r\n"_qs, 1))->item, u"第十二条"_qs);
  EXPECT_EQ(at(pos(u"《示例法》\r\n"_qs, 2))->item, u"第三条"_qs);
  EXPECT_EQ(at(pos(u"法》\r\n　　第三"_qs))->item, u"第三条"_qs);
}

TEST_F(AnswerTest, ClicksOutsideThePrintedArticlesDoNothing) {
  EXPECT_FALSE(at(pos(u"错选"_qs)).has_value());      // no 《 before
  EXPECT_FALSE(at(pos(u"第12条、"_qs)).has_value());  // the answer's own citation
  EXPECT_FALSE(at(0).has_value());
  EXPECT_FALSE(CitationAtAnswer(te.env, u"没有引文的答案"_qs, 3).has_value());
  const QString digits = u"《示例法》\r\n　　第12条　内容。"_qs;
  EXPECT_FALSE(CitationAtAnswer(te.env, digits, 9).has_value());
  const QString missing = u"《没有的法》\r\n　　第一条　内容。"_qs;
  EXPECT_FALSE(CitationAtAnswer(te.env, missing, 10).has_value());
  const QString outside = u"《../示例法》\r\n　　第一条　内容。"_qs;
  EXPECT_FALSE(CitationAtAnswer(te.env, outside, 10).has_value());
}

TEST_F(AnswerTest, ADoubleClickOpensTheLawAtTheArticle) {
  LawQuery other(te.env);
  other.setItems(&items);
  ASSERT_TRUE(other.openFromAnswer(answer, pos(u"《示例法》\r\n"_qs), 1));
  const QString law = test::ArticleLaw(kSampleLast);
  EXPECT_EQ(other.view, law);
  EXPECT_EQ(other.fileList, u"《示例法》●\\lawtxt\\示例法.mmd■"_qs);
  EXPECT_EQ(other.Label3, u"准备查询:《示例法》"_qs);
  EXPECT_EQ(other.result.lengths, u"000000000000066"_qs);
  EXPECT_EQ(other.result.names, u"《示例法》●"_qs);
  ASSERT_TRUE(other.caretRequest.has_value());
  EXPECT_EQ(other.caretRequest->position, law.indexOf(u"\r\n　　第十二条"_qs) + 2);
  EXPECT_TRUE(other.caretRequest->toTop);
  EXPECT_TRUE(other.Command4Enabled);
  EXPECT_TRUE(other.Command8Visible[0]);
  EXPECT_TRUE(other.Command5Enabled);
  EXPECT_EQ(other.Command5Caption, u"相关2题"_qs);
  // Any place of the law belongs to it.
  other.clickInView(law.indexOf(u"示例法第24号"_qs));
  EXPECT_FALSE(other.Command5Enabled);
  other.clickInView(law.indexOf(u"示例法第2号"_qs));
  EXPECT_EQ(other.longIds, u"10001100003"_qs);
}

TEST_F(AnswerTest, TheFlagDecides) {
  LawQuery other(te.env);
  EXPECT_FALSE(other.openFromAnswer(answer, pos(u"第12号"_qs), 0));
  EXPECT_FALSE(other.openFromAnswer(answer, pos(u"第12号"_qs), 3));
  EXPECT_EQ(other.Label3, u"准备查询:"_qs);
  // Ctrl (2) opens the law as a plain double click until the knowledge points come.
  EXPECT_TRUE(other.openFromAnswer(answer, pos(u"第12号"_qs), 2));
  EXPECT_EQ(other.Label3, u"准备查询:《示例法》"_qs);
}

TEST_F(AnswerTest, TheLawQueryButtonOpensTheFirstPrintedArticle) {
  LawQuery other(te.env);
  other.setItems(&items);
  ASSERT_TRUE(other.openAtAnswer(answer));
  const QString law = test::ArticleLaw(kSampleLast);
  EXPECT_EQ(other.Label3, u"准备查询:《示例法》"_qs);
  EXPECT_EQ(other.view, law);
  ASSERT_TRUE(other.caretRequest.has_value());
  EXPECT_EQ(other.caretRequest->position, law.indexOf(u"\r\n　　第十二条"_qs) + 2);
  EXPECT_EQ(other.Command5Caption, u"相关2题"_qs);
  // The second printed article comes first when the first is cut away.
  LawQuery second(te.env);
  second.setItems(&items);
  ASSERT_TRUE(second.openAtAnswer(answer.mid(answer.indexOf(u"第12号"_qs))));
  ASSERT_TRUE(second.caretRequest.has_value());
  EXPECT_EQ(second.caretRequest->position, law.indexOf(u"\r\n　　第三条"_qs) + 2);
}

TEST_F(AnswerTest, TheLawQueryButtonWithoutAPrintedArticle) {
  LawQuery other(te.env);
  EXPECT_FALSE(other.openAtAnswer(u"答案：A。参见《示例法》第12条\r\n"_qs));
  EXPECT_FALSE(other.openAtAnswer(QString()));
  // A printed article whose law file is missing opens nothing.
  EXPECT_FALSE(other.openAtAnswer(u"《没有的法》\r\n　　第一条　内容。"_qs));
  EXPECT_EQ(other.Label3, u"准备查询:"_qs);
  EXPECT_FALSE(other.caretRequest.has_value());
}

// ---- Export of the law texts -------------------------------------------------

TEST(CollectLawTexts, EveryArticleOfEveryLaw) {
  test::TestEnv te;
  test::MakeLawFolder(te);
  QStringList asked;
  const QList<LawTextRecord> records = CollectLawTexts(te.env, [&](const QString& title) {
    asked.append(title);
    return title == u"《示例法》"_qs ? u"10001"_qs : QString();
  });
  EXPECT_EQ(asked.size(), 4);
  EXPECT_TRUE(asked.contains(u"《深层法》"_qs));
  QMap<QString, int> perLaw;
  for (const LawTextRecord& r : records) ++perLaw[r.lawName];
  EXPECT_EQ(perLaw.value(u"示例法"_qs), kSampleLast);
  EXPECT_EQ(perLaw.value(u"示例规定"_qs), 3);
  // A heading of style 2．that is missing still prints the heading: such a
  // law runs to the end of the numeral table.
  EXPECT_EQ(perLaw.value(u"示例办法"_qs), 600);
  EXPECT_EQ(perLaw.value(u"深层法"_qs), 2);
  for (const LawTextRecord& r : records) {
    if (r.lawName == u"示例办法"_qs && r.itemNum == 4) {
      EXPECT_EQ(r.itemText, u"　　4．　\r\n"_qs);
    }
    if (r.lawName != u"示例法"_qs || r.itemNum != 12) continue;
    EXPECT_EQ(r.lawId, u"10001"_qs);
    EXPECT_EQ(r.itemText, u"　　第十二条　示例法第12号规定的内容。\r\n"_qs);
  }
}

}  // namespace
}  // namespace mj
