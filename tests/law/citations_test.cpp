#include "law/citations.h"

#include <gtest/gtest.h>

#include "bank/tables.h"
#include "law/law_files.h"
#include "law/law_text.h"
#include "law_samples.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

// ---- LongDaAn ----

TEST(LongDaAn, OneArticle) { EXPECT_EQ(LongDaAn(u"参见《刑法》第12条"_qs), u"《刑法》12．"_qs); }

TEST(LongDaAn, RangesAndLists) {
  EXPECT_EQ(LongDaAn(u"参见《刑法》第12-15条"_qs), u"《刑法》12．《刑法》13．《刑法》14．《刑法》15．"_qs);
  EXPECT_EQ(LongDaAn(u"参见《刑法》第12条、第15条"_qs), u"《刑法》12．《刑法》15．"_qs);
  EXPECT_EQ(LongDaAn(u"参见《刑法》第12条、第15-17条《民法通则》第3条"_qs),
            u"《刑法》12．《刑法》15．《刑法》16．《刑法》17．《民法通则》3．"_qs);
}

TEST(LongDaAn, ChineseNumeralsAreNoArticleNumbers) {
  EXPECT_EQ(LongDaAn(u"参见《刑法》第十二条"_qs), QString());
  EXPECT_EQ(LongDaAn(u"参见《刑法》第十二条、第3条"_qs), u"《刑法》3．"_qs);
}

TEST(LongDaAn, ATitleIsKeptWhole) {
  EXPECT_EQ(LongDaAn(u"参见《刑法修正案第3号》第2条"_qs), u"《刑法修正案第3号》2．"_qs);
  EXPECT_EQ(LongDaAn(u"参见《刑法\r\n条例》第2条"_qs), u"《刑法\r\n条例》2．"_qs);
}

TEST(LongDaAn, WithoutATitleTheEntriesAreBare) {
  EXPECT_EQ(LongDaAn(u"第12条、第13条"_qs), u"12．13．"_qs);
  EXPECT_EQ(LongDaAn(u"12、34"_qs), u"12．34．"_qs);
}

TEST(LongDaAn, ArticleZeroAndEmptyTokens) {
  EXPECT_EQ(LongDaAn(u"参见《刑法》第0条"_qs), QString());
  EXPECT_EQ(LongDaAn(u"参见《刑法》第0条、、第7条"_qs), u"《刑法》7．"_qs);
  EXPECT_EQ(LongDaAn(QString()), QString());
  EXPECT_EQ(LongDaAn(u"、"_qs), QString());
}

TEST(LongDaAn, KuanAndXiangAreNotUnderstood) {
  // In a list, 12款 counts as 12.
  EXPECT_EQ(LongDaAn(u"参见《刑法》第12条、第2款"_qs), u"《刑法》12．《刑法》2．"_qs);
  // Without a separator, 第 and 条 go and the digits run together; only the
  // editor's variant puts the separator in first.
  EXPECT_EQ(LongDaAn(u"参见《刑法》第12条第2款"_qs), u"《刑法》122．"_qs);
  EXPECT_EQ(LongDaAnForEdit(u"参见《刑法》第12条第2款"_qs), u"《刑法》12．《刑法》2．"_qs);
  EXPECT_EQ(LongDaAn(u"参见《刑法》第12款"_qs), u"《刑法》12．"_qs);
}

TEST(LongDaAn, EntriesCarryDecimalNumbers) {
  EXPECT_EQ(LongDaAn(u"参见《刑法》第012条"_qs), u"《刑法》12．"_qs);
  EXPECT_EQ(LongDaAn(u"参见《刑法》第 1 2 条"_qs), u"《刑法》12．"_qs);
}

TEST(LongDaAn, NumbersOtherThanPlainDigitsAreReadAndWrittenAgain) {
  // Plain digits are copied as they stand; everything else goes through the
  // number and back, as a range's inserted numbers do.
  EXPECT_EQ(LongDaAn(u"《刑法》第1.5-4条"_qs), u"《刑法》1.5．《刑法》2.5．《刑法》4．"_qs);
  EXPECT_EQ(LongDaAn(u"《刑法》第+7条、第0012条"_qs), u"《刑法》7．《刑法》12．"_qs);
  EXPECT_EQ(LongDaAn(u"《刑法》第999999999999999条"_qs), u"《刑法》999999999999999．"_qs);
  EXPECT_EQ(LongDaAn(u"《刑法》第1234567890123456条"_qs), u"《刑法》1.23456789012346e+15．"_qs);
  EXPECT_EQ(LongDaAn(u"《刑法》第00条"_qs), QString());
  EXPECT_EQ(LongDaAn(u"99998-100001"_qs, CitationSep::LawQuery), u"99998．99999．100000．100001．"_qs);
}

TEST(LongDaAn, ReversedAndEqualRanges) {
  EXPECT_EQ(LongDaAn(u"《刑法》第15-12条"_qs), u"《刑法》15．《刑法》12．"_qs);
  EXPECT_EQ(LongDaAn(u"《刑法》第12-12条"_qs), u"《刑法》12．《刑法》12．"_qs);
  EXPECT_EQ(LongDaAn(u"《刑法》第1-3-5条"_qs), u"《刑法》1．《刑法》2．《刑法》3．《刑法》4．《刑法》5．"_qs);
  // Only the ASCII hyphen makes a range.
  EXPECT_EQ(LongDaAn(u"《刑法》第12至15条"_qs), u"《刑法》12．"_qs);
  EXPECT_EQ(LongDaAn(u"《刑法》第12~15条"_qs), u"《刑法》12．"_qs);
}

TEST(LongDaAn, ARangeNextToATitle) {
  EXPECT_EQ(LongDaAn(u"《甲》第2-3条《乙》第5条"_qs), u"《甲》2．《甲》3．《乙》5．"_qs);
  EXPECT_EQ(LongDaAn(u"-3"_qs), u"1．2．3．"_qs);
}

TEST(LongDaAn, TheSeparatorBeforeATitleMayBeMissing) {
  EXPECT_EQ(LongDaAn(u"参见《刑法》第12条《民法通则》第3条"_qs), u"《刑法》12．《民法通则》3．"_qs);
}

TEST(LongDaAn, ThePrefixBeforeTheCitationIsDropped) {
  EXPECT_EQ(LongDaAn(u"答案：A。参见《刑法》第1条"_qs), u"《刑法》1．"_qs);
  // The titles already got their separator, so 参见《 is gone and the prefix
  // stays a token: one with a number becomes an entry.
  EXPECT_EQ(LongDaAn(u"2参见《刑法》第1条"_qs), u"2．《刑法》1．"_qs);
}

TEST(LongDaAn, TheLawQuerysArticleBox) {
  EXPECT_EQ(LongDaAn(u"12-15,20"_qs, CitationSep::LawQuery), u"12．13．14．15．20．"_qs);
  EXPECT_EQ(LongDaAn(u"15-12"_qs, CitationSep::LawQuery), u"15．12．"_qs);
  EXPECT_EQ(LongDaAn(u"12,"_qs, CitationSep::LawQuery), u"12．"_qs);
  EXPECT_EQ(LongDaAn(u"12、13"_qs, CitationSep::LawQuery), u"12．"_qs);
  EXPECT_EQ(LongDaAn(QString(), CitationSep::LawQuery), QString());
  EXPECT_EQ(LongDaAn(u",,3"_qs, CitationSep::LawQuery), u"3．"_qs);
}

TEST(LongDaAnForEdit, RepairsMissingSeparatorsAndDropsThePrefix) {
  EXPECT_EQ(LongDaAnForEdit(u"参见《刑法》第12条第2款"_qs), u"《刑法》12．《刑法》2．"_qs);
  EXPECT_EQ(LongDaAnForEdit(u"《刑法》第1条《民法》第2条"_qs), u"《刑法》1．《民法》2．"_qs);
  EXPECT_EQ(LongDaAnForEdit(u"2参见《刑法》第1条"_qs), u"《刑法》1．"_qs);
  // Without the title step, text glued to a title stays part of the law.
  EXPECT_EQ(LongDaAnForEdit(u"甲《刑法》第1条"_qs), u"甲《刑法》1．"_qs);
  EXPECT_EQ(LongDaAn(u"甲《刑法》第1条"_qs), u"《刑法》1．"_qs);
  EXPECT_EQ(LongDaAnForEdit(u"《刑法》第1-2条"_qs), u"《刑法》1．《刑法》2．"_qs);
  EXPECT_EQ(LongDaAnForEdit(QString()), QString());
}

// ---- OkMid, ReverseText ----

TEST(OkMid, TheFourModes) {
  const QString t = u"甲《刑法》乙《民法》"_qs;
  EXPECT_EQ(OkMid(t, u"《"_qs, -2), u"甲《"_qs);
  EXPECT_EQ(OkMid(t, u"《"_qs, -1), u"甲"_qs);
  EXPECT_EQ(OkMid(t, u"《"_qs, 1), u"刑法》乙《民法》"_qs);
  EXPECT_EQ(OkMid(t, u"《"_qs, 2), u"《刑法》乙《民法》"_qs);
  EXPECT_EQ(OkMid(t, u"》乙"_qs, -2), u"甲《刑法》乙"_qs);
  EXPECT_EQ(CutAtMark(t, u"》乙"_qs, 1), u"《民法》"_qs);
}

TEST(OkMid, ABadModeGivesTheFixedSentence) {
  EXPECT_EQ(OkMid(u"甲《刑法》"_qs, u"《"_qs, 0), u"第三个参数只能为-2，-1，1，2"_qs);
  EXPECT_EQ(OkMid(u"甲《刑法》"_qs, u"《"_qs, 3), u"第三个参数只能为-2，-1，1，2"_qs);
  EXPECT_EQ(CutAtMark(u"甲《刑法》"_qs, u"《"_qs, -3), u"第三个参数只能为-2，-1，1，2"_qs);
}

TEST(OkMid, AnAbsentMarkGivesEmptyWhateverTheMode) {
  for (int mode : {-2, -1, 0, 1, 2, 7}) {
    EXPECT_EQ(OkMid(u"甲乙"_qs, u"丙"_qs, mode), QString()) << mode;
    EXPECT_EQ(OkMid(QString(), u"丙"_qs, mode), QString()) << mode;
  }
}

TEST(ReverseText, Reverses) {
  EXPECT_EQ(ReverseText(u"《刑法》12"_qs), u"21》法刑《"_qs);
  EXPECT_EQ(ReverseText(QString()), QString());
}

// ---- NormalizeDaAnLine, CleanItemList, StripKuanXiang ----

TEST(NormalizeDaAnLine, StandardForm) {
  EXPECT_EQ(NormalizeDaAnLine(u"答案：B。参见《刑法》第12条、15条"_qs), u"答案：B参见《刑法》第12条、第15条"_qs);
  EXPECT_EQ(NormalizeDaAnLine(u"答案：AB参见《刑法》第12－15条"_qs), u"答案：AB参见《刑法》第12-15条"_qs);
  EXPECT_EQ(NormalizeDaAnLine(u"答案：C 参见《刑法》第1条《民法典》第2条，第3条"_qs),
            u"答案：C参见《刑法》第1条、《民法典》第2条、第3条"_qs);
}

TEST(NormalizeDaAnLine, TheAnswerLetters) {
  EXPECT_EQ(NormalizeDaAnLine(u"答案：A,C、D～B_参见《刑法》第1条"_qs), u"答案：A,C、D～B_参见《刑法》第1条"_qs);
  EXPECT_EQ(NormalizeDaAnLine(u"xxA~B.C参见《刑法》第1条"_qs), u"答案：A~B.C参见《刑法》第1条"_qs);
  // Without any of A-D the whole line is passed over.
  EXPECT_EQ(NormalizeDaAnLine(u"参见《刑法》第1条"_qs), u"答案：参见"_qs);
  EXPECT_EQ(NormalizeDaAnLine(QString()), u"答案：参见"_qs);
}

TEST(NormalizeDaAnLine, ABareNumberAfterANumberGetsItsDi) {
  EXPECT_EQ(NormalizeDaAnLine(u"A参见《刑法》第1、2条"_qs), u"答案：A参见《刑法》第1、第2条"_qs);
  EXPECT_EQ(NormalizeDaAnLine(u"A参见《刑法》第1条、第2条"_qs), u"答案：A参见《刑法》第1条、第2条"_qs);
}

TEST(NormalizeDaAnLine, TitlesWithNothingBehindAreLeftOut) {
  EXPECT_EQ(NormalizeDaAnLine(u"答案：A参见《刑法》"_qs), u"答案：A参见"_qs);
  EXPECT_EQ(NormalizeDaAnLine(u"答案：A参见《刑法》第1条《民法》"_qs), u"答案：A参见《刑法》第1条"_qs);
  EXPECT_EQ(NormalizeDaAnLine(u"答案：A参见《刑法第1条"_qs), u"答案：A参见"_qs);
}

TEST(NormalizeDaAnLine, StrayMarksAreMerged) {
  EXPECT_EQ(NormalizeDaAnLine(u"A参见《刑法》第1。条"_qs), u"答案：A参见《刑法》第1条"_qs);
  EXPECT_EQ(NormalizeDaAnLine(u"A参见《刑法》第1~3条"_qs), u"答案：A参见《刑法》第1-3条"_qs);
}

TEST(CleanItemList, OnlyTheDiToTiaoPieces) {
  EXPECT_EQ(CleanItemList(u"x第1条y第2条z"_qs), u"第1条、第2条、"_qs);
  EXPECT_EQ(CleanItemList(u"第 1 条"_qs), u"第1条、"_qs);
  EXPECT_EQ(CleanItemList(u"第1，2.3。4．5,6条"_qs), u"第1、2、3、4、5、6条、"_qs);
  EXPECT_EQ(CleanItemList(u"第1~3条"_qs), u"第1-3条、"_qs);
  EXPECT_EQ(CleanItemList(u"没有条文"_qs), QString());
  EXPECT_EQ(CleanItemList(u"第7"_qs), u"第7"_qs);
}

TEST(StripKuanXiang, OnlyWholeArticlesRemain) {
  EXPECT_EQ(StripKuanXiang(u"《刑法》第12条第2款第3项、第13条"_qs), u"《刑法》第12条、第13条、"_qs);
  EXPECT_EQ(StripKuanXiang(u"参见《刑法》第12条第2款"_qs), u"《刑法》第12条、"_qs);
  EXPECT_EQ(StripKuanXiang(u"《刑法第1款》第2条"_qs), u"《刑法第1款》第2条、"_qs);
  EXPECT_EQ(StripKuanXiang(u"《刑法》第3"_qs), u"《刑法》"_qs);
  EXPECT_EQ(StripKuanXiang(u"《刑法"_qs), u"《"_qs);
  EXPECT_EQ(StripKuanXiang(QString()), QString());
}

// ---- GetLawTxtForDaAn ----

class LawTxtForDaAn : public ::testing::Test {
 protected:
  void SetUp() override {
    ClearLawCache();
    te.writeGbk(u"\\lawtxt\\示例法.mmd"_qs, test::SampleLaw1());
    te.writeGbk(u"\\lawtxt\\示例办法.mmd"_qs, test::SampleLaw3());
  }
  QString lawPath(const QString& name) const { return te.root() + u"/lawtxt/"_qs + name + u".mmd"_qs; }
  test::TestEnv te;
};

TEST_F(LawTxtForDaAn, TitleLineAndArticle) {
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"答案：A。参见《示例法》第1条"_qs),
            u"《示例法》\r\n　　第一条　为了示例，制定本法。\r\n\r\n"_qs);
}

TEST_F(LawTxtForDaAn, TheTitleIsPrintedForEveryArticle) {
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"参见《示例法》第4条、第1条《示例办法》第2条"_qs),
            u"《示例法》\r\n　　第四条　本法自公布之日起施行。\r\n\r\n"
            u"《示例法》\r\n　　第一条　为了示例，制定本法。\r\n\r\n"
            u"《示例办法》\r\n　　2．　第二项。\r\n\r\n"_qs);
}

TEST_F(LawTxtForDaAn, RangesAndRepeatedArticles) {
  const QString one = u"《示例法》\r\n　　第一条　为了示例，制定本法。\r\n\r\n"_qs;
  const QString two = u"《示例法》\r\n　　第二条　本法适用于示例。\r\n　　依照第一条规定处理。\r\n\r\n"_qs;
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"参见《示例法》第1-2条"_qs), one + two);
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"参见《示例法》第1条、第1条"_qs), one + one);
}

TEST_F(LawTxtForDaAn, AMissingLaw) {
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"参见《无此法》第1条"_qs),
            u"《无此法》\r\n法律文件"_qs + lawPath(u"无此法"_qs) + u"不存在。\r\n"_qs);
}

TEST_F(LawTxtForDaAn, AnArticleAboveTheLast) {
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"参见《示例法》第9条、第2条"_qs).section(u"\r\n"_qs, 0, 1),
            u"《示例法》\r\n法律文件"_qs + lawPath(u"示例法"_qs) + u"中共4条，没有《示例法》第9条"_qs);
}

TEST_F(LawTxtForDaAn, ATitleIsAFileNameNotAPath) {
  te.writeGbk(u"\\lawtxt\\sub\\示例法.mmd"_qs, test::SampleLaw1());
  te.writeGbk(u"\\示例法.mmd"_qs, test::SampleLaw1());
  // A refused title is named as given, never as a path (which may exist,
  // as <root>/示例法.mmd does here).
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"参见《sub/示例法》第1条"_qs),
            u"《sub/示例法》\r\n法律文件《sub/示例法》不存在。\r\n"_qs);
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"参见《../示例法》第1条"_qs),
            u"《../示例法》\r\n法律文件《../示例法》不存在。\r\n"_qs);
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"参见《sub\\示例法》第1条"_qs),
            u"《sub\\示例法》\r\n法律文件《sub\\示例法》不存在。\r\n"_qs);
}

TEST_F(LawTxtForDaAn, AngleBracketsAndLineBreaksLeaveThePath) {
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"参见《示<例>法》第1条"_qs),
            u"《示<例>法》\r\n　　第一条　为了示例，制定本法。\r\n\r\n"_qs);
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"参见《示例\r\n法》第1条"_qs),
            u"《示例法》\r\n　　第一条　为了示例，制定本法。\r\n\r\n"_qs);
}

TEST_F(LawTxtForDaAn, EntriesWithoutATitle) {
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"第1条"_qs), u"\r\n法律文件"_qs + lawPath(QString()) + u"不存在。\r\n"_qs);
}

TEST_F(LawTxtForDaAn, NothingCited) {
  EXPECT_EQ(GetLawTxtForDaAn(te.env, QString()), QString());
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"参见《示例法》第十条"_qs), QString());
}

TEST_F(LawTxtForDaAn, AMissingArticleInsideTheCount) {
  // 示例法 has four articles; a law with a gap gives the "没有" text too.
  te.writeGbk(u"\\lawtxt\\缺条法.mmd"_qs, u"缺条法\r\n　　第一条 甲。\r\n　　第二条 乙。\r\n　　第四条 丁。"_qs);
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"参见《缺条法》第3条"_qs),
            u"《缺条法》\r\n法律文件"_qs + lawPath(u"缺条法"_qs) + u"中共4条，没有《缺条法》第3条\r\n"_qs);
}

TEST_F(LawTxtForDaAn, APrintedArticleLeadsBackToItsNumber) {
  // A click anywhere on a title line or an article's lines: the line end,
  // then the article above it.
  const QString printed = u"答案：A\r\n"_qs + GetLawTxtForDaAn(te.env, u"参见《示例法》第2条、第3条"_qs);
  auto numberAt = [&](const QString& near) {
    const qsizetype caret = printed.indexOf(near) + 1;
    return ItemNumAtCaret(printed, LineEndAt(printed, caret), LawTypeOfName(te.env, u"《示例法》"_qs));
  };
  EXPECT_EQ(numberAt(u"示例法》\r\n　　第二条"_qs), 2);
  EXPECT_EQ(numberAt(u"依照第一条"_qs), 2);
  EXPECT_EQ(numberAt(u"示例法》\r\n　　第三条"_qs), 3);
  EXPECT_EQ(numberAt(u"（二）乙"_qs), 3);
  EXPECT_TRUE(printed.contains(u"》\r\n　　第三条"_qs));
}

// ---- GetOneLawFileName ----

TEST(GetOneLawFileName, FindsTheFileNameOfALaw) {
  test::TestEnv te;
  te.mkdir(u"\\dbf"_qs);
  {
    DbfTable t = DbfTable::create(te.path(u"\\dbf\\33.mmd"_qs), tables::LawNameFields());
    const int r1 = t.appendRow();
    t.setText(r1, u"lawname"_qs, u"《刑法》"_qs);
    t.setText(r1, u"filename"_qs, u"\\yibanti\\01001"_qs);
    const int r2 = t.appendRow();
    t.setText(r2, u"lawname"_qs, u"  《民法典》"_qs);
    t.setText(r2, u"filename"_qs, u"\\yibanti\\02001"_qs);
    t.close();
  }
  bool end = true;
  EXPECT_EQ(GetOneLawFileName(te.env, u" 《民法典》 "_qs, &end), u"\\yibanti\\02001"_qs);
  EXPECT_FALSE(end);
  EXPECT_EQ(GetOneLawFileName(te.env, u"《刑法》"_qs, &end), u"\\yibanti\\01001"_qs);
  EXPECT_TRUE(te.boxes.shown().isEmpty());
}

TEST(GetOneLawFileName, AnUnknownLawShowsTheBoxAndEndsTheProgram) {
  test::TestEnv te;
  te.mkdir(u"\\dbf"_qs);
  DbfTable::create(te.path(u"\\dbf\\33.mmd"_qs), tables::LawNameFields()).close();
  bool end = false;
  EXPECT_EQ(GetOneLawFileName(te.env, u"《无此法》"_qs, &end), QString());
  EXPECT_TRUE(end);
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].text, u" 没有从法律名数据库中得到与该法律名向对应的文件名"_qs);
  EXPECT_EQ(te.boxes.shown()[0].title, DefaultBoxTitle());
  EXPECT_EQ(te.boxes.shown()[0].style, 0);
}

}  // namespace
}  // namespace mj
