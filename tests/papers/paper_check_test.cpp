#include "papers/paper_check.h"

#include <gtest/gtest.h>

#include "papers_fixture.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

using test::AnswerItem;
using test::BareQuestion;
using test::InlineQuestion;
using test::Lines;

const QString kNote =
    u"注意：由于本程序要适应现存的各种格式，所以你返回后要检查一下原文本是否与该统计结果相符。如果不符，即如果只有单选题和多选题而没有任意选择题，只要下面提示已经通过检验，则也是可以开始做题的。但是你的这个文件内不能只有后面的试题类型而没有前面的试题类型，即不能只有多选题或任意选择题而没有单选题。\r\n"_qs;

class PaperCheckTest : public ::testing::Test {
 protected:
  PaperCheckTest() { test::WriteStandardLawList(te); }
  PaperCheckResult check(const QString& text) { return RunPaperCheck(te.env, text, state); }

  test::TestEnv te;
  PaperState state;
};

QStringList Join(std::initializer_list<QStringList> parts) {
  QStringList all;
  for (const QStringList& p : parts) all += p;
  return all;
}

// --- GetStartOrEndNum ------------------------------------------------------

TEST_F(PaperCheckTest, StartIsTheFirstLineStartWithADigitButNeverTheFirstLine) {
  EXPECT_EQ(GetStartOrEndNum(te.env, u"1．甲\r\n2．乙\r\n3．丙"_qs, u"Start"_qs), 2);
  // No "．" is demanded for the start; which is compared without regard to case.
  EXPECT_EQ(GetStartOrEndNum(te.env, u"说明\r\n2003年的题\r\n5．乙"_qs, u"START"_qs), 2003);
  EXPECT_EQ(GetStartOrEndNum(te.env, u"说明\r\n 7．乙"_qs, u"start"_qs), 0);
  EXPECT_EQ(GetStartOrEndNum(te.env, QString(), u"Start"_qs), 0);
}

TEST_F(PaperCheckTest, EndIsTheLastLineThatBeginsWithDigitsAndPoint) {
  EXPECT_EQ(GetStartOrEndNum(te.env, u"说明\r\n3．甲\r\n14．乙\r\nA．丙\r\n[答案：]A"_qs, u"end"_qs), 14);
  // A line of digits without "．", a "．" inside a line, digits inside a line.
  EXPECT_EQ(GetStartOrEndNum(te.env, u"x\r\n5．甲\r\n2003年\r\n见第12．条\r\n．\r\n"_qs, u"End"_qs), 5);
  // The very first line has no line feed before it.
  EXPECT_EQ(GetStartOrEndNum(te.env, u"9．甲"_qs, u"end"_qs), 0);
  EXPECT_EQ(GetStartOrEndNum(te.env, QString(), u"end"_qs), 0);
  EXPECT_TRUE(te.boxes.shown().isEmpty());
}

TEST_F(PaperCheckTest, AnotherWhichShowsTheBoxAndGivesZero) {
  EXPECT_EQ(GetStartOrEndNum(te.env, u"\r\n1．甲"_qs, u"middle"_qs), 0);
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].title, u"调用GetStartOrEndNum错误"_qs);
  EXPECT_EQ(te.boxes.shown()[0].text, u"在调用函数时使用的第二个参数必须为start 或者\u3000end"_qs);
  EXPECT_EQ(te.boxes.shown()[0].style, box::Exclamation);
}

TEST_F(PaperCheckTest, HugeNumbersStopAtTheTopOfAnInteger) {
  EXPECT_EQ(GetStartOrEndNum(te.env, u"x\r\n99999999999999999999．"_qs, u"end"_qs), 2147483647);
}

// --- GetLostNum, OnlyABCD, PutBadLawToCombo ----------------------------------

TEST(GetLostNum, ListsTheNumbersWithoutALine) {
  EXPECT_EQ(GetLostNum(u"\r\n1．a\r\n2．b\r\n4．c"_qs, 1, 4), u"3．"_qs);
  EXPECT_EQ(GetLostNum(u"\r\n1．a\r\n4．c"_qs, 1, 5), u"2．3．5．"_qs);
  // 11． is no line of 1．.
  EXPECT_EQ(GetLostNum(u"\r\n11．a\r\n2．b"_qs, 1, 2), u"1．"_qs);
}

TEST(GetLostNum, ANumberOutOfOrderCountsAsMissing) {
  EXPECT_EQ(GetLostNum(u"\r\n2．b\r\n1．a\r\n3．c"_qs, 1, 3), u"2．"_qs);
}

TEST(GetLostNum, DigitsWithALeadingZeroAreNotTheNumber) {
  // The search is for the number's own digits: 07． and 007． are not 7．.
  EXPECT_EQ(GetLostNum(u"\r\n07．a\r\n007．b\r\n8．c"_qs, 7, 8), u"7．"_qs);
  EXPECT_EQ(GetLostNum(u"\r\n0．a\r\n1．b"_qs, 0, 1), QString());
  // Digits far beyond any question number are no number of the walk.
  EXPECT_EQ(GetLostNum(u"\r\n1．a\r\n12345678901234567890．b\r\n2．c"_qs, 1, 2), QString());
}

TEST(GetLostNum, EmptySectionOrReversedRangeGivesNothing) {
  EXPECT_EQ(GetLostNum(QString(), 1, 3), QString());
  EXPECT_EQ(GetLostNum(u"\r\n1．a"_qs, 3, 1), QString());
}

TEST(GetLostNum, AHugeSpanIsCutShort) {
  const QString lost = GetLostNum(u"\r\n1．a"_qs, 1, 2000000000);
  EXPECT_TRUE(lost.startsWith(u"2．3．4．"_qs));
  EXPECT_TRUE(lost.endsWith(QString::number(kMaxNumberSpan) + u"．……"_qs));
}

TEST(OnlyABCD, TheLettersOnceInOrder) {
  EXPECT_EQ(OnlyABCD(u"DCBADx"_qs), u"ABCD"_qs);
  EXPECT_EQ(OnlyABCD(u"ABX"_qs), u"AB"_qs);
  EXPECT_EQ(OnlyABCD(u"abcd"_qs), QString());
  EXPECT_EQ(OnlyABCD(QString()), QString());
}

TEST(PutBadLawToCombo, EachNameOnceInOrder) {
  EXPECT_EQ(PutBadLawToCombo(u"《型法》《民法》《型法》"_qs), (QStringList{u"《型法》"_qs, u"《民法》"_qs}));
  EXPECT_TRUE(PutBadLawToCombo(QString()).isEmpty());
}

TEST_F(PaperCheckTest, GetAllLawNameJoinsTheTrimmedNames) {
  bool ok = false;
  EXPECT_EQ(GetAllLawName(te.env, &ok), u"《示例刑法》《行政处罚示例规定》《合同示例规则》"_qs);
  EXPECT_TRUE(ok);
  test::TestEnv empty;
  EXPECT_EQ(GetAllLawName(empty.env, &ok), QString());
  EXPECT_FALSE(ok);
}

// --- Whole reports -------------------------------------------------------------

TEST_F(PaperCheckTest, NoHeadingAtAll) {
  const PaperCheckResult r = check(Lines({u"随便一些文字"_qs, u"1．题干"_qs, u"A．甲"_qs}));
  EXPECT_EQ(r.report, u"    没有“一、单项选择题”字样\r\n    没有“二、多项选择题”字样\r\n    没有“三、任意选择题”字样\r\n"_qs + kNote +
                          u"\r\n注意：本次检验未通过。\r\n原因：本文件中三种试题类型字样均没出现。\r\n共有0个答案。\r\n"_qs);
  EXPECT_FALSE(r.passed);
  EXPECT_EQ(state.OutTiMode, 1);
  for (int t = 1; t <= 3; ++t) EXPECT_TRUE(state.OutTiText[t].isEmpty());
}

TEST_F(PaperCheckTest, AnInlinePaperThatPasses) {
  const QString text = Lines(Join({{u"外部试卷"_qs, u"一、单项选择题"_qs},
                                   InlineQuestion(1, u"A"_qs, u"《示例刑法》第12条"_qs),
                                   InlineQuestion(2, u"B"_qs, u"《示例刑法》第13条"_qs),
                                   {u"二、多项选择题"_qs},
                                   InlineQuestion(1, u"AB"_qs, u"《合同示例规则》第3条"_qs),
                                   {u"三、任意选择题"_qs},
                                   InlineQuestion(1, u"ABC"_qs, u"《行政处罚示例规定》第1条"_qs)}));
  const PaperCheckResult r = check(text);
  EXPECT_EQ(r.report,
            u"\r\n共有2道单选题，1道多选题，1道任选题，4个答案。\r\n"
            "\r\n单选题编号从1到2共2道=2道。检验通过\r\n"
            "\r\n多选题编号从1到1共1道=1道。检验通过\r\n"
            "\r\n任选题编号从1到1共1道=1道。检验通过\r\n"
            "\r\n各个试题详细检验结果汇报：\r\n\r\n"
            "一、单项选择题\r\n第1题：通过检验。\r\n第2题：通过检验。\r\n\r\n"
            "二、多项选择题\r\n第1题：通过检验。\r\n\r\n"
            "三、任意选择题\r\n第1题：通过检验。\r\n\r\n"
            "\r\n"_qs);
  EXPECT_TRUE(r.passed);
  EXPECT_TRUE(r.lawNames.isEmpty());
  EXPECT_EQ(state.OutTiMode, 1);
  // Numbers of the sections; column 3 is the practice's to work out.
  EXPECT_EQ(state.OutTiNum[1][1], 1);
  EXPECT_EQ(state.OutTiNum[1][2], 2);
  EXPECT_EQ(state.OutTiNum[2][1], 1);
  EXPECT_EQ(state.OutTiNum[3][2], 1);
  for (int c = 1; c <= 3; ++c) EXPECT_EQ(state.OutTiNum[0][c], 0);
  // The free text in front of heading one is dropped; each section starts
  // with the line end in front of its heading.
  const qsizetype h2 = text.indexOf(u"二、多项选择题"_qs);
  const qsizetype h3 = text.indexOf(u"三、任意选择题"_qs);
  EXPECT_EQ(state.OutTiText[1], text.mid(4, h2 - 4));
  // Sections two and three start at their heading (no line end in front).
  EXPECT_EQ(state.OutTiText[2], text.mid(h2, h3 - h2));
  EXPECT_EQ(state.OutTiText[3], text.mid(h3));
  for (int t = 1; t <= 3; ++t) EXPECT_TRUE(state.OutDaAnText[t].isEmpty());
}

TEST_F(PaperCheckTest, NumbersOneTwoFour) {
  const QString text = Lines(Join({{u"一、单项选择题"_qs},
                                   InlineQuestion(1, u"A"_qs, u"《示例刑法》第1条"_qs),
                                   InlineQuestion(2, u"B"_qs, u"《示例刑法》第2条"_qs),
                                   InlineQuestion(4, u"C"_qs, u"《示例刑法》第4条"_qs)}));
  const PaperCheckResult r = check(text);
  EXPECT_EQ(r.report, u"    没有“二、多项选择题”字样\r\n    没有“三、任意选择题”字样\r\n"_qs + kNote +
                          u"\r\n共有3道单选题，3个答案。\r\n"
                          "\r\n单选题编号从1到4共4道不等于3道。检验未通过。\r\n"
                          "提示：单选题没有第3．题。\r\n"
                          "\r\n各个试题详细检验结果汇报：\r\n\r\n"
                          "一、单项选择题\r\n第1题：通过检验。\r\n第2题：通过检验。\r\n×没有第3题的试题编号。\r\n第4题：通过检验。\r\n\r\n"
                          "\r\n"_qs);
  EXPECT_FALSE(r.passed);
  // A heading at the very start has no line end before it: the section is
  // the whole text.
  EXPECT_EQ(state.OutTiText[1], text);
}

TEST_F(PaperCheckTest, OptionMarkersAreRoundedToQuestions) {
  // Five markers are one question, six are two (6 / 4 + 0.5 = 2).
  QStringList five = Join({{u"一、单项选择题"_qs}, InlineQuestion(1, u"A"_qs, u"《示例刑法》第1条"_qs)});
  five.insert(5, u"A．多出来的选项"_qs);
  EXPECT_TRUE(check(Lines(five)).report.contains(u"\r\n共有1道单选题，1个答案。\r\n"_qs));
  QStringList six = five;
  six.insert(5, u"B．又多出来的选项"_qs);
  const PaperCheckResult r = check(Lines(six));
  EXPECT_TRUE(r.report.contains(u"\r\n共有2道单选题，1个答案。\r\n"_qs)) << r.report.toStdString();
  EXPECT_TRUE(r.report.contains(u"但2并不等于1（答案数），请你检查一下“答案：”字样和“A．”“B．”“C．”“D．”等字样。\r\n提示：单选题有2道，而答案却有1道。\r\n"_qs));
  // A missing "D．" rounds away unnoticed: three markers are one question.
  QStringList three = Join({{u"一、单项选择题"_qs}, InlineQuestion(1, u"A"_qs, u"《示例刑法》第1条"_qs)});
  three.removeAt(5);
  EXPECT_TRUE(check(Lines(three)).report.contains(u"\r\n单选题编号从1到1共1道=1道。检验通过\r\n"_qs));
}

TEST_F(PaperCheckTest, ANumberInTheFirstLineOfASectionIsNotItsStart) {
  // Section two begins "二、多项选择题5．…" on its heading's line.
  const QString text = Lines(Join({{u"一、单项选择题"_qs},
                                   InlineQuestion(1, u"A"_qs, u"《示例刑法》第1条"_qs),
                                   {u"二、多项选择题5．标题行上的题"_qs},
                                   InlineQuestion(6, u"AB"_qs, u"《示例刑法》第2条"_qs)}));
  check(text);
  EXPECT_EQ(state.OutTiNum[2][1], 6);
  EXPECT_EQ(state.OutTiNum[2][2], 6);
}

TEST_F(PaperCheckTest, AnUnregisteredLawName) {
  const QString text = Lines(Join({{u"一、单项选择题"_qs},
                                   InlineQuestion(1, u"A"_qs, u"《示例刑法》第1条"_qs),
                                   InlineQuestion(2, u"B"_qs, u"《示例刑法》第2条"_qs),
                                   InlineQuestion(3, u"C"_qs, u"《型法》第3条"_qs),
                                   InlineQuestion(4, u"D"_qs, u"《型法》第4条、《民诉》第5条"_qs)}));
  const PaperCheckResult r = check(text);
  EXPECT_TRUE(r.report.contains(u"\r\n第3题：未注册的法律名《型法》，未通过检验。\r\n"_qs)) << r.report.toStdString();
  EXPECT_TRUE(r.report.contains(u"\r\n第4题：未注册的法律名《型法》《民诉》，未通过检验。\r\n"_qs));
  EXPECT_EQ(state.BadLawNames, u"《型法》《型法》《民诉》"_qs);
  EXPECT_EQ(r.lawNames, (QStringList{u"《型法》"_qs, u"《民诉》"_qs}));
  // A fault of a single question is reported in words only: the flag of the
  // check stays as it was.
  EXPECT_TRUE(r.passed);
}

TEST_F(PaperCheckTest, AnItemWithoutAnswerTag) {
  const QString text = Lines(Join({{u"一、单项选择题"_qs},
                                   InlineQuestion(1, u"A"_qs, u"《示例刑法》第1条"_qs),
                                   InlineQuestion(2, u"B"_qs, u"《示例刑法》第2条"_qs),
                                   InlineQuestion(3, QString(), u"《示例刑法》第3条"_qs),
                                   InlineQuestion(4, u"对"_qs, u"《示例刑法》第4条"_qs)}));
  const PaperCheckResult r = check(text);
  EXPECT_TRUE(r.report.contains(u"\r\n第3题：无答案无参见法条，未通过检验。\r\n"_qs)) << r.report.toStdString();
  // An answer line without a letter A to D is no answer; its citation counts.
  EXPECT_TRUE(r.report.contains(u"\r\n第4题：无答案，未通过检验。\r\n"_qs));
  // Three answer tags for four questions.
  EXPECT_TRUE(r.report.contains(u"但4并不等于3（答案数），"_qs));
}

TEST_F(PaperCheckTest, AnUnreadableLawListReportsEveryName) {
  test::TestEnv bare;
  PaperState s;
  const PaperCheckResult r = RunPaperCheck(
      bare.env, Lines(Join({{u"一、单项选择题"_qs}, InlineQuestion(1, u"A"_qs, u"《示例刑法》第1条"_qs)})), s);
  EXPECT_FALSE(r.lawListOk);
  EXPECT_TRUE(r.report.contains(u"第1题：未注册的法律名《示例刑法》，未通过检验。"_qs));
}

TEST_F(PaperCheckTest, HeadingsOutOfOrder) {
  const QString text = Lines(Join({{u"三、任意选择题"_qs},
                                   InlineQuestion(1, u"A"_qs, u"《示例刑法》第1条"_qs),
                                   {u"二、多项选择题"_qs},
                                   InlineQuestion(1, u"AB"_qs, u"《示例刑法》第2条"_qs),
                                   {u"一、单项选择题"_qs},
                                   InlineQuestion(1, u"C"_qs, u"《示例刑法》第3条"_qs)}));
  const PaperCheckResult r = check(text);
  EXPECT_TRUE(r.report.startsWith(
      u"\r\n注意：本次检验未通过。\r\n原因：“二、多项选择题”在“一、单项选择题”前。\r\n“三、任意选择题”在“一、单项选择题”前。\r\n“三、任意选择题”在“二、多项选择题”前。\r\n\r\n共有"_qs))
      << r.report.toStdString();
  EXPECT_FALSE(r.passed);
}

TEST_F(PaperCheckTest, AMissingFirstHeadingPassesTheOrderTest) {
  // Only "二、多项选择题": p1 is 0, so the order cannot fail; this stays.
  const PaperCheckResult r =
      check(Lines(Join({{u"二、多项选择题"_qs}, InlineQuestion(1, u"AB"_qs, u"《示例刑法》第1条"_qs)})));
  EXPECT_FALSE(r.report.contains(u"注意：本次检验未通过。"_qs));
  EXPECT_TRUE(r.passed);
}

TEST_F(PaperCheckTest, PlusSignsOfTheMismatchLine) {
  // No single choices, two multiple choices, one free choice, no answers.
  const QString text = Lines(Join({{u"一、单项选择题"_qs, u"二、多项选择题"_qs},
                                   BareQuestion(1), BareQuestion(2), {u"三、任意选择题"_qs}, BareQuestion(1)}));
  const PaperCheckResult r = check(text);
  EXPECT_TRUE(r.report.contains(
      u"但2+1并不等于0（答案数），请你检查一下“答案：”字样和“A．”“B．”“C．”“D．”等字样。\r\n提示：多选题有2道，而答案却有0道。任选题有1道，而答案却有0道。\r\n"_qs))
      << r.report.toStdString();
}

TEST_F(PaperCheckTest, ACaseStudyBlockEndsTheFreeChoices) {
  const QString text = Lines(Join({{u"一、单项选择题"_qs},
                                   InlineQuestion(1, u"A"_qs, u"《示例刑法》第1条"_qs),
                                   {u"三、任意选择题"_qs},
                                   InlineQuestion(1, u"AB"_qs, u"《示例刑法》第2条"_qs),
                                   {u"四、案例分析"_qs, u"7．某甲……"_qs}}));
  check(text);
  const qsizetype h3 = text.indexOf(u"三、任意选择题"_qs);
  const qsizetype c = text.indexOf(u"四、案例分析"_qs);
  EXPECT_EQ(state.OutTiText[3], text.mid(h3, c - h3));
  EXPECT_EQ(state.OutTiNum[3][2], 1);
}

TEST_F(PaperCheckTest, ACaseWordBeforeTheFreeChoicesCutsNothing) {
  const QString text = Lines(Join({{u"一、单项选择题"_qs, u"1．本案例中(      )"_qs, u"A．甲"_qs, u"B．乙"_qs,
                                    u"C．丙"_qs, u"D．丁"_qs, u"[答案：]A"_qs, u"[参见：]《示例刑法》第1条"_qs},
                                   {u"三、任意选择题"_qs},
                                   InlineQuestion(1, u"AB"_qs, u"《示例刑法》第2条"_qs),
                                   {u"四、案例分析"_qs}}));
  check(text);
  const qsizetype h3 = text.indexOf(u"三、任意选择题"_qs);
  EXPECT_EQ(state.OutTiText[3], text.mid(h3));
}

TEST_F(PaperCheckTest, ACaseWordOnTheHeadingLineGivesTheTextUpToThatLine) {
  // The line end before the case word stands before heading three: the
  // section is that prefix as it stands.
  const QString text = Lines(Join({{u"一、单项选择题"_qs},
                                   InlineQuestion(1, u"A"_qs, u"《示例刑法》第1条"_qs),
                                   {u"三、任意选择题（案例）"_qs},
                                   InlineQuestion(1, u"AB"_qs, u"《示例刑法》第2条"_qs)}));
  check(text);
  const qsizetype h3 = text.indexOf(u"三、任意选择题"_qs);
  EXPECT_EQ(state.OutTiText[3], text.left(h3));
}

// --- Separate answers -------------------------------------------------------

QString SeparatePaper() {
  return Lines(Join({{u"试卷说明"_qs, u"一、单项选择题"_qs},
                     BareQuestion(1),
                     BareQuestion(2),
                     {u"二、多项选择题"_qs},
                     BareQuestion(1),
                     {u"[本卷参考答案]"_qs, u"一、单项选择题"_qs},
                     AnswerItem(1, u"A"_qs, u"《示例刑法》第1条"_qs),
                     AnswerItem(2, u"B"_qs, u"《示例刑法》第2条"_qs),
                     {u"二、多项选择题"_qs},
                     AnswerItem(1, u"AB"_qs, u"《合同示例规则》第3条"_qs)}));
}

TEST_F(PaperCheckTest, APaperWithSeparateAnswersThatPasses) {
  const QString text = SeparatePaper();
  const PaperCheckResult r = check(text);
  EXPECT_EQ(state.OutTiMode, 2);
  EXPECT_EQ(r.report, u"    没有“三、任意选择题”字样\r\n"_qs + kNote +
                          u"\r\n共有2道单选题，1道多选题，3个答案。\r\n"
                          "\r\n单选题编号从1到2共2道=2道。检验通过\r\n"
                          "\r\n多选题编号从1到1共1道=1道。检验通过\r\n"
                          "\r\n单选题答案编号从1到2共2道=2道。检验通过\r\n"
                          "\r\n多选题答案编号从1到1共1道=1道。检验通过\r\n"
                          "\r\n各个试题详细检验结果汇报：\r\n\r\n"
                          "一、单项选择题\r\n第1题：通过检验。\r\n第2题：通过检验。\r\n\r\n"
                          "二、多项选择题\r\n第1题：通过检验。\r\n\r\n"
                          "\r\n"_qs);
  EXPECT_TRUE(r.passed);
  // The answer sections: one character of the next heading's line end stays
  // in the first.
  const qsizetype tag = text.indexOf(u"\r\n[本卷参考答案]"_qs);
  const QString answers = text.mid(tag);
  const qsizetype b1 = answers.indexOf(u"\r\n一、单项选择题"_qs);
  const qsizetype b2 = answers.indexOf(u"\r\n二、多项选择题"_qs);
  EXPECT_EQ(state.OutDaAnText[1], answers.mid(b1, b2 - b1 + 1));
  EXPECT_EQ(state.OutDaAnText[2], answers.mid(b2));
  EXPECT_EQ(state.OutDaAnText[3], QString());
  const qsizetype h2 = text.indexOf(u"二、多项选择题"_qs);
  EXPECT_EQ(state.OutTiText[2], text.mid(h2, tag - h2));
}

TEST_F(PaperCheckTest, SeparateAnswersWithGapsAndFaults) {
  const QString text = Lines(Join({{u"一、单项选择题"_qs},
                                   BareQuestion(1),
                                   BareQuestion(3),
                                   {u"[本卷参考答案]"_qs, u"一、单项选择题"_qs},
                                   AnswerItem(1, u"A"_qs, QString()),
                                   AnswerItem(3, u"对"_qs, u"《型法》第2条"_qs)}));
  const PaperCheckResult r = check(text);
  // Question 2 does not exist: its line reads only "通过检验。". The answer
  // item of 1 runs to the end of the answers, as there is no answer 2, and
  // so takes in the citation of 3.
  EXPECT_EQ(r.report, u"    没有“二、多项选择题”字样\r\n    没有“三、任意选择题”字样\r\n"_qs + kNote +
                          u"\r\n共有2道单选题，2个答案。\r\n"
                          "\r\n单选题编号从1到3共3道不等于2道。检验未通过。\r\n"
                          "\r\n单选题答案编号从1到3共3道不等于2道。检验未通过。\r\n"
                          "提示：单选题没有第2．题。\r\n"
                          "提示：单选题第2．题没有答案。\r\n"
                          "\r\n各个试题详细检验结果汇报：\r\n\r\n"
                          "一、单项选择题\r\n第1题：未注册的法律名《型法》，未通过检验。\r\n通过检验。\r\n第3题：无答案未注册的法律名《型法》，未通过检验。\r\n\r\n"
                          "\r\n"_qs);
  EXPECT_EQ(r.lawNames, QStringList{u"《型法》"_qs});
}

TEST_F(PaperCheckTest, TheAnswerTagInTheFirstLineIsNotSeen) {
  check(u"[本卷参考答案]\r\n一、单项选择题\r\n1．"_qs);
  EXPECT_EQ(state.OutTiMode, 1);
}

TEST_F(PaperCheckTest, TheCaseWordOfSeparateAnswersIsCaseQuestion) {
  // "案例" alone does not end the free choices of a paper with separate answers.
  const QString text = Lines(Join({{u"一、单项选择题"_qs},
                                   BareQuestion(1),
                                   {u"三、任意选择题"_qs},
                                   BareQuestion(1),
                                   {u"案例分析"_qs},
                                   {u"[本卷参考答案]"_qs, u"一、单项选择题"_qs},
                                   AnswerItem(1, u"A"_qs, u"《示例刑法》第1条"_qs),
                                   {u"三、任意选择题"_qs},
                                   AnswerItem(1, u"A"_qs, u"《示例刑法》第1条"_qs)}));
  check(text);
  EXPECT_TRUE(state.OutTiText[3].endsWith(u"案例分析"_qs));
}

TEST_F(PaperCheckTest, ACheckRewritesTheStateAndTheBadNames) {
  check(Lines(Join({{u"一、单项选择题"_qs}, InlineQuestion(1, u"A"_qs, u"《型法》第1条"_qs)})));
  EXPECT_EQ(state.BadLawNames, u"《型法》"_qs);
  state.OutTiNum[3][3] = 77;
  const PaperCheckResult r = check(u"没有标题"_qs);
  EXPECT_TRUE(state.BadLawNames.isEmpty());
  EXPECT_TRUE(r.lawNames.isEmpty());
  EXPECT_EQ(state.OutTiNum[3][3], 0);
  EXPECT_TRUE(state.OutTiText[1].isEmpty());
}

TEST_F(PaperCheckTest, CheckEachItemGivesUpOnBadArguments) {
  QString bad;
  EXPECT_EQ(CheckEachItem(QString(), QString(), 1, 2, &bad), QString());
  EXPECT_EQ(CheckEachItem(QString(), u"\r\n1．"_qs, 0, 2, &bad), QString());
  EXPECT_EQ(CheckEachItem(QString(), u"\r\n1．"_qs, 1, 0, &bad), QString());
  EXPECT_EQ(CheckEachItem(QString(), u"\r\n1．"_qs, 3, 2, &bad), QString());
  EXPECT_EQ(CheckEachItem2(QString(), u"\r\n1．"_qs, u"\r\n1．"_qs, 3, 2, &bad), QString());
  EXPECT_TRUE(bad.isEmpty());
}

TEST_F(PaperCheckTest, TheItemIsCutFromItsNumberToTheNextOne) {
  // Question 1's item reaches to the end when 2 is missing, so 3's answer
  // counts for it.
  const QString section = u"\r\n1．甲\r\n3．乙\r\n[答案：]A\r\n[参见：]《示例刑法》第1条"_qs;
  QString bad;
  EXPECT_EQ(CheckEachItem(u"《示例刑法》"_qs, section, 1, 3, &bad),
            u"第1题：通过检验。\r\n×没有第2题的试题编号。\r\n第3题：通过检验。\r\n"_qs);
}

}  // namespace
}  // namespace mj
