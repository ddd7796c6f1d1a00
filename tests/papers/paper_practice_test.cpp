// The practice of a paper without its window: running numbers, question
// lists, the texts of a question, the group passages, the outcome of an
// answer, the progress record and its file, the start with its summary and
// resumption, and the score in the names on leaving.

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include "law/law_files.h"
#include "papers/paper_check.h"
#include "papers/paper_file.h"
#include "papers/paper_practice.h"
#include "papers/progress_record.h"
#include "paper_practice_fixture.h"
#include "platform/textfile.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

using test::InlineQuestion;
using test::Lines;

using test::SeparateAnswers;
using test::ThreeSections;

class PaperPractice : public ::testing::Test {
 protected:
  PaperPractice() {
    test::WriteStandardLawList(te);
    te.mkdir(u"\\外部题库"_qs);
    ClearLawCache();
  }
  ~PaperPractice() override { ClearLawCache(); }
  void check(const QString& text) {
    RunPaperCheck(te.env, text, state);
    GetOutTotal(state);
  }
  QString paperPath(const QString& name = u"卷.txt"_qs) const { return te.path(u"\\外部题库\\"_qs + name); }
  QString writePaper(const QString& text, const QString& name = u"卷.txt"_qs) {
    EXPECT_TRUE(WritePaper(paperPath(name), text, PaperEncoding::Gbk));
    return paperPath(name);
  }
  QString writeRecord(const QString& text, const QString& name = u"卷.rec"_qs) {
    te.writeGbk(u"\\外部题库\\"_qs + name, text);
    return paperPath(name);
  }
  static ProgressRecord Record(const QString& text) { return ProgressRecord::FromBytes(ToGbk(text)); }

  test::TestEnv te;
  PaperState state;
};

// ---- running numbers and lists ----

TEST_F(PaperPractice, RunningNumbersJoinTheSections) {
  check(ThreeSections());
  EXPECT_EQ(GetOutTotal(state), 6);
  EXPECT_EQ(state.OutTiNum[1][3], 3);
  EXPECT_EQ(state.OutTiNum[2][3], 5);
  EXPECT_EQ(state.OutTiNum[3][3], 6);
  const std::pair<int, int> expected[] = {{0, 0}, {1, 1}, {1, 2}, {1, 3}, {2, 4}, {2, 5}, {3, 1}, {0, 0}};
  for (qint64 k = 0; k <= 7; ++k) {
    SCOPED_TRACE(k);
    EXPECT_EQ(GetTiClass(state, k), expected[k].first);
    EXPECT_EQ(GetTiNum(state, k), expected[k].second);
  }
  EXPECT_EQ(GetTiClass(state, -1), 0);
}

TEST_F(PaperPractice, ASectionWithoutNumbersAddsNothing) {
  state.OutTiNum[1][1] = 3;
  state.OutTiNum[1][2] = 7;
  state.OutTiNum[3][1] = 1;
  state.OutTiNum[3][2] = 2;
  EXPECT_EQ(GetOutTotal(state), 7);
  EXPECT_EQ(state.OutTiNum[2][3], 5);
  EXPECT_EQ(GetTiClass(state, 5), 1);
  EXPECT_EQ(GetTiNum(state, 5), 7);
  EXPECT_EQ(GetTiClass(state, 6), 3);
  EXPECT_EQ(GetTiNum(state, 6), 1);
  // Only a last number: last - first, as the rule says.
  PaperState s;
  s.OutTiNum[1][2] = 4;
  EXPECT_EQ(GetOutTotal(s), 4);
}

TEST_F(PaperPractice, QuestionListsHaveCellsOfSixCharacters) {
  EXPECT_EQ(MakeAllTiList(0), u""_qs);
  EXPECT_EQ(MakeAllTiList(-3), u""_qs);
  EXPECT_EQ(MakeAllTiList(3), u"*   1**   2**   3*"_qs);
  const QString list = MakeAllTiList(1200);
  EXPECT_EQ(TiListCount(list), 1200);
  EXPECT_EQ(TiListNumber(list, 1), 1);
  EXPECT_EQ(TiListNumber(list, 1200), 1200);
  EXPECT_EQ(TiListNumber(u"*  12**9999*"_qs, 2), 9999);
  EXPECT_EQ(TiListNumber(u"*  12*"_qs, 0), 0);
  EXPECT_EQ(TiListNumber(u"*  12*"_qs, 2), 0);
  // Four places hold 9999 questions at most.
  EXPECT_EQ(TiListCount(MakeAllTiList(10000)), 9999);
}

// ---- texts of a question ----

TEST_F(PaperPractice, StemAndAnswerOfInlinePapers) {
  check(ThreeSections());
  EXPECT_EQ(GetStemText(state, 1), u"1．这是第1题的题干(      )\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁"_qs);
  EXPECT_EQ(GetDaAnText(state, 1), u"[答案：]A\r\n[参见：]《示例刑法》第1条\r\n"_qs);
  // The last question of a section runs to the section's end.
  EXPECT_EQ(GetStemText(state, 3), u"3．这是第3题的题干(      )\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁"_qs);
  EXPECT_EQ(GetDaAnText(state, 3), u"[答案：]C\r\n[参见：]《示例刑法》第3条\r\n"_qs);
  EXPECT_EQ(GetDaAnText(state, 4), u"[答案：]A、C\r\n[参见：]《示例刑法》第1条、第2条\r\n"_qs);
  EXPECT_EQ(GetStemText(state, 6), u"1．这是第1题的题干(      )\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁"_qs);
  EXPECT_EQ(GetDaAnText(state, 6), u"[答案：]ABCD\r\n[参见：]《示例刑法》第3条"_qs + u"\r\n"_qs);
  // No such question.
  EXPECT_EQ(GetStemText(state, 7), u"没有该题题干。"_qs);
  EXPECT_EQ(GetDaAnText(state, 7), u"没有该题答案。"_qs);
  EXPECT_EQ(GetStemText(state, 0), u"没有该题题干。"_qs);
}

TEST_F(PaperPractice, StemAndAnswerOfPapersWithSeparateAnswers) {
  check(SeparateAnswers());
  EXPECT_EQ(state.OutTiMode, 2);
  EXPECT_EQ(GetOutTotal(state), 3);
  EXPECT_EQ(GetStemText(state, 1), u"1．这是第1题的题干(      )\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁"_qs);
  EXPECT_EQ(GetDaAnText(state, 1), u"[答案：]B\r\n[参见：]《示例刑法》第2条\r\n"_qs);
  // The answer section was cut one character into the next section's line
  // end; that CR stays.
  EXPECT_EQ(GetDaAnText(state, 2), u"[答案：]C\r\r\n"_qs);
  EXPECT_EQ(GetDaAnText(state, 3), u"[答案：]AD\r\n[参见：]《示例刑法》第1条\r\n"_qs);
}

TEST_F(PaperPractice, AnInlineQuestionWithoutAnswerLineHasNoAnswer) {
  QStringList l = {u"一、单项选择题"_qs};
  l += InlineQuestion(1, {}, {});
  l += InlineQuestion(2, u"B"_qs, {});
  check(Lines(l));
  EXPECT_EQ(GetStemText(state, 1), u"1．这是第1题的题干(      )\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁"_qs);
  EXPECT_EQ(GetDaAnText(state, 1), u"没有该题答案。"_qs);
  EXPECT_EQ(GetDaAnText(state, 2), u"[答案：]B"_qs + u"\r\n"_qs);
}

TEST_F(PaperPractice, AStrayLineWithTheNextNumberWidensTheItem) {
  QStringList l = {u"一、单项选择题"_qs};
  l += InlineQuestion(1, u"A"_qs, {});
  l += InlineQuestion(2, u"B"_qs, {});
  l += u"2．又一行以2．开头"_qs;
  l += InlineQuestion(3, u"C"_qs, {});
  check(Lines(l));
  const QString stem = GetStemText(state, 1);
  EXPECT_TRUE(stem.startsWith(u"1．这是第1题的题干"_qs));
  EXPECT_TRUE(stem.endsWith(u"D．丁"_qs));
  // Up to the answer line of question 1, which the widened item holds.
  EXPECT_EQ(GetDaAnText(state, 1), u"[答案：]A2．这是第2题的题干(      )A．甲B．乙C．丙D．丁\r\n[答案：]B\r\n"_qs);
}

TEST_F(PaperPractice, StemsAreTrimmedOfBlanks) {
  state.OutTiMode = 1;
  state.OutTiNum[1][1] = 1;
  state.OutTiNum[1][2] = 1;
  state.OutTiText[1] = u"一、单项选择题\r\n1．题干  \r\n[答案：]A"_qs;
  GetOutTotal(state);
  EXPECT_EQ(GetStemText(state, 1), u"1．题干"_qs);
}

// ---- answer letters, the law-name gap, the lower box ----

TEST_F(PaperPractice, AnswerLetters) {
  EXPECT_EQ(OutABCD(u"[答案：]A、C"_qs), u"AC"_qs);
  EXPECT_EQ(OutABCD(u"答案：C,A"_qs), u"AC"_qs);
  EXPECT_EQ(OutABCD(u"答案：D～B"_qs), u"BD"_qs);
  EXPECT_EQ(OutABCD(u"答案：A~B-C_D"_qs), u"ABCD"_qs);
  EXPECT_EQ(OutABCD(u"答案：AB参见C"_qs), u"AB"_qs);
  EXPECT_EQ(OutABCD(u"答案：a、B"_qs), u"B"_qs);
  EXPECT_EQ(OutABCD(u"答案：无"_qs), u""_qs);
  EXPECT_EQ(OutABCD(QString()), u""_qs);
}

TEST_F(PaperPractice, AnAnswerWithoutCitationGetsAnEmptyLawNameBeforeTheFirstDi) {
  EXPECT_EQ(WithLawNameGap(u"[答案：]A\r\n[参见：]刑法第12条、第13条\r\n"_qs),
            u"[答案：]A\r\n[参见：]刑法《》第12条、第13条\r\n"_qs);
  EXPECT_EQ(WithLawNameGap(u"[答案：]A\r\n[参见：]《刑法》第12条\r\n"_qs), u"[答案：]A\r\n[参见：]《刑法》第12条\r\n"_qs);
  EXPECT_EQ(WithLawNameGap(u"[答案：]A\r\n"_qs), u"[答案：]A\r\n"_qs);
}

TEST_F(PaperPractice, TheLowerBoxPrintsTheCitedArticlesAsForTheBanks) {
  te.writeGbk(u"\\lawtxt\\示例刑法.mmd"_qs,
              u"中华人民共和国示例刑法\r\n　　第一条 为了示例，制定本法。\r\n　　第二条 本法适用于示例。\r\n"_qs);
  EXPECT_EQ(AboutLawText(te.env, u"[答案：]A\r\n[参见：]《示例刑法》第2条第1款\r\n"_qs),
            u"答案：A参见《示例刑法》第2条、第1款\r\n《示例刑法》\r\n　　第二条　本法适用于示例。\r\n\r\n"_qs);
  // A law the program does not have is said, not left out.
  EXPECT_EQ(AboutLawText(te.env, u"[答案：]B\r\n[参见：]《没有的法》第3条\r\n"_qs),
            u"答案：B参见《没有的法》第3条\r\n《没有的法》\r\n法律文件"_qs + te.root() +
                u"/lawtxt/没有的法.mmd不存在。\r\n"_qs);
  EXPECT_EQ(AboutLawText(te.env, u"[答案：]C\r\n"_qs), u"答案：C参见\r\n"_qs);
}

// ---- group passages ----

QString GroupPaper(const QString& passage) {
  QStringList l = {u"一、单项选择题"_qs, u"1．题干一"_qs, u"A．甲"_qs, u"B．乙"_qs, u"C．丙"_qs, u"D．丁"_qs};
  l += passage;
  l += u"[答案：]A"_qs;
  l += InlineQuestion(2, u"B"_qs, {});
  l += InlineQuestion(3, u"C"_qs, {});
  l += InlineQuestion(4, u"D"_qs, {});
  return Lines(l);
}

TEST_F(PaperPractice, APassageBehindTheOptionsServesItsGroup) {
  check(GroupPaper(u"(一)甲乙二人合伙经营，请回答2-3题。"_qs));
  GroupPassage g;
  EXPECT_EQ(ShowOutTi(state, g, 1), u"1．题干一\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁\r\n"_qs);
  EXPECT_EQ(g.OutGroupText, u"(一)甲乙二人合伙经营，请回答2-3题。"_qs);
  EXPECT_EQ(g.OutGroupFirst, 2);
  EXPECT_EQ(g.OutGroupLast, 3);
  EXPECT_EQ(ShowOutTi(state, g, 2), u"(一)甲乙二人合伙经营，请回答2-3题。\r\n"_qs + GetStemText(state, 2));
  EXPECT_EQ(ShowOutTi(state, g, 3), u"(一)甲乙二人合伙经营，请回答2-3题。\r\n"_qs + GetStemText(state, 3));
  EXPECT_EQ(ShowOutTi(state, g, 4), GetStemText(state, 4));
  EXPECT_EQ(g.OutGroupFirst, 0);
  EXPECT_EQ(g.OutGroupText, u""_qs);
  // Back from outside the group, the passage is gone.
  EXPECT_EQ(ShowOutTi(state, g, 3), GetStemText(state, 3));
}

TEST_F(PaperPractice, APassageWithoutBracketStartsOnTheLineBehindTheOptions) {
  check(GroupPaper(u"某甲与某乙的纠纷，请回答第2至3题。"_qs));
  GroupPassage g;
  EXPECT_EQ(ShowOutTi(state, g, 1), u"1．题干一\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁\r\n"_qs);
  EXPECT_EQ(g.OutGroupText, u"某甲与某乙的纠纷，请回答第2至3题。"_qs);
  EXPECT_EQ(g.OutGroupFirst, 2);
  EXPECT_EQ(g.OutGroupLast, 3);
}

TEST_F(PaperPractice, AQuestionInAGroupMayStartTheNextOne) {
  QStringList l = {u"一、单项选择题"_qs, u"1．题干一"_qs, u"A．甲"_qs, u"B．乙"_qs, u"C．丙"_qs, u"D．丁"_qs,
                   u"(一)案情一，请回答2-2题"_qs, u"[答案：]A"_qs, u"2．题干二"_qs, u"A．甲"_qs, u"B．乙"_qs, u"C．丙"_qs,
                   u"D．丁"_qs, u"(二)案情二，请回答3-3题"_qs, u"[答案：]B"_qs};
  l += InlineQuestion(3, u"C"_qs, {});
  check(Lines(l));
  GroupPassage g;
  ShowOutTi(state, g, 1);
  EXPECT_EQ(ShowOutTi(state, g, 2), u"(一)案情一，请回答2-2题\r\n2．题干二\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁\r\n"_qs);
  EXPECT_EQ(g.OutGroupText, u"(二)案情二，请回答3-3题"_qs);
  EXPECT_EQ(ShowOutTi(state, g, 3), u"(二)案情二，请回答3-3题\r\n"_qs + GetStemText(state, 3));
}

TEST_F(PaperPractice, SetGroupNeedsTwoNumbers) {
  GroupPassage g;
  SetGroup(g, u"请回答下列问题。"_qs);
  EXPECT_EQ(g.OutGroupFirst, 0);
  EXPECT_EQ(g.OutGroupText, u""_qs);
  SetGroup(g, u"案情，请回答5-7题"_qs);
  EXPECT_EQ(g.OutGroupFirst, 5);
  EXPECT_EQ(g.OutGroupLast, 7);
  SetGroup(g, u"请回答第3题"_qs);  // the second number is the 0 of 另加0-0
  EXPECT_EQ(g.OutGroupFirst, 0);
  SetGroup(g, u"没有那个词"_qs);
  EXPECT_EQ(g.OutGroupLast, 0);
  SetGroup(g, u"请回答99999999999999999999-3"_qs);
  EXPECT_EQ(g.OutGroupFirst, 0);
}

TEST_F(PaperPractice, AQuestionOfTheStemThatSaysPleaseAnswerIsShownAsItIs) {
  // The real papers have "请回答" inside the stem, in front of the options.
  QStringList l = {u"一、单项选择题"_qs, u"1．根据以上情况，请回答下列问题。甲的行为构成何罪?"_qs, u"A．甲"_qs, u"B．乙"_qs,
                   u"C．丙"_qs, u"D．丁"_qs, u"[答案：]A"_qs};
  check(Lines(l));
  GroupPassage g;
  EXPECT_EQ(ShowOutTi(state, g, 1), GetStemText(state, 1));
  EXPECT_EQ(g.OutGroupFirst, 0);
}

// ---- status line and outcome ----

TEST_F(PaperPractice, TheStatusLine) {
  EXPECT_EQ(PracticeStatusLine(6, 1, 2), u"共6题符合条件,本题为单选题，编号为2"_qs);
  EXPECT_EQ(PracticeStatusLine(6, 2, 4), u"共6题符合条件,本题为多选题，编号为4"_qs);
  EXPECT_EQ(PracticeStatusLine(6, 3, 1), u"共6题符合条件,本题为任选题，编号为1"_qs);
  EXPECT_EQ(PracticeStatusLine(6, 0, 0), u"共6题符合条件,"_qs);
}

TEST_F(PaperPractice, TheOutcomeOfAnAnswer) {
  const QString answer = u"[答案：]A、C\r\n[参见：]《示例刑法》第1条\r\n"_qs;
  AnswerOutcome o = JudgeAnswer(u"AC"_qs, answer, {});
  EXPECT_TRUE(o.right);
  EXPECT_EQ(o.value, u"OKOK"_qs);
  EXPECT_EQ(o.line, u"恭喜你，你做对了。\r\n"_qs);
  o = JudgeAnswer(u"A"_qs, answer, u"OKOK"_qs);
  EXPECT_FALSE(o.right);
  EXPECT_EQ(o.value, u"A"_qs);
  EXPECT_EQ(o.line, u"错选为A。\r\n"_qs);
  o = JudgeAnswer(u"AC"_qs, answer, u"BD"_qs);
  EXPECT_EQ(o.line, u"上次错选为BD,本次恭喜你，你做对了。\r\n"_qs);
  o = JudgeAnswer(u"B"_qs, answer, u"BD"_qs);
  EXPECT_EQ(o.line, u"上次错选为BD,本次错选为B。\r\n"_qs);
  // A question without answer text counts every press as wrong.
  for (const QString& caption : {u"A"_qs, u"ABCD"_qs}) {
    o = JudgeAnswer(caption, u"没有该题答案。"_qs, {});
    EXPECT_FALSE(o.right);
    EXPECT_EQ(o.value, caption);
  }
  // A free-choice answer of all four needs ABCD.
  EXPECT_FALSE(JudgeAnswer(u"ABC"_qs, u"[答案：]ABCD"_qs, {}).right);
  EXPECT_TRUE(JudgeAnswer(u"ABCD"_qs, u"[答案：]ABCD"_qs, {}).right);
  // okok is right in any case.
  EXPECT_EQ(JudgeAnswer(u"B"_qs, u"[答案：]A"_qs, u"okok"_qs).line, u"错选为B。\r\n"_qs);
}

// ---- the progress record ----

TEST_F(PaperPractice, TheRecordFileHoldsExactlyTheAnswers) {
  QString text = RecordWithAnswer({}, 1, 1, u"okok"_qs);
  EXPECT_EQ(text, u"[1]\r\n1=OKOK\r\n[做到题类]\r\n答=1\r\n[做到编号]\r\n答=1\r\n"_qs);
  text = RecordWithAnswer(text, 1, 2, u"c"_qs);
  EXPECT_EQ(text, u"[1]\r\n1=OKOK\r\n2=C\r\n[做到题类]\r\n答=1\r\n[做到编号]\r\n答=2\r\n"_qs);
  text = RecordWithAnswer(text, 2, 4, u"AB"_qs);
  EXPECT_EQ(text, u"[1]\r\n1=OKOK\r\n2=C\r\n[做到题类]\r\n答=2\r\n[做到编号]\r\n答=4\r\n[2]\r\n4=AB\r\n"_qs);
  text = RecordWithAnswer(text, 1, 2, u"OKOK"_qs);
  EXPECT_EQ(text, u"[1]\r\n1=OKOK\r\n2=OKOK\r\n[做到题类]\r\n答=1\r\n[做到编号]\r\n答=2\r\n[2]\r\n4=AB\r\n"_qs);
}

TEST_F(PaperPractice, WritingAnAnswerReplacesTheFileAndKeepsWhatItCannotRead) {
  const QString rec = paperPath(u"卷.rec"_qs);
  ASSERT_TRUE(WriteAnswerRecord(rec, 1, 3, u"b"_qs));
  EXPECT_EQ(te.readGbk(u"\\外部题库\\卷.rec"_qs), u"[1]\r\n3=B\r\n[做到题类]\r\n答=1\r\n[做到编号]\r\n答=3\r\n"_qs);
  ASSERT_TRUE(WriteAnswerRecord(rec, 3, 1, u"OKOK"_qs));
  EXPECT_EQ(te.readGbk(u"\\外部题库\\卷.rec"_qs),
            u"[1]\r\n3=B\r\n[做到题类]\r\n答=3\r\n[做到编号]\r\n答=1\r\n[3]\r\n1=OKOK\r\n"_qs);
  // No temporary file is left behind.
  EXPECT_EQ(QDir(te.path(u"\\外部题库"_qs)).entryList(QDir::Files), QStringList{u"卷.rec"_qs});
  // A folder that is not there cannot take the record.
  EXPECT_FALSE(WriteAnswerRecord(te.path(u"\\没有\\卷.rec"_qs), 1, 1, u"A"_qs));
  EXPECT_FALSE(WriteAnswerRecord(QString(), 1, 1, u"A"_qs));
  // A record that cannot be read is not overwritten.
  QFile f(rec);
  ASSERT_TRUE(f.setPermissions(QFileDevice::WriteOwner));
  if (!f.open(QIODevice::ReadOnly)) {
    EXPECT_FALSE(WriteAnswerRecord(rec, 1, 4, u"A"_qs));
    ASSERT_TRUE(f.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner));
    EXPECT_EQ(te.readGbk(u"\\外部题库\\卷.rec"_qs),
              u"[1]\r\n3=B\r\n[做到题类]\r\n答=3\r\n[做到编号]\r\n答=1\r\n[3]\r\n1=OKOK\r\n"_qs);
  }
  f.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}

TEST_F(PaperPractice, TheRecordReadsAsTheProfileFunctionReadsIt) {
  const ProgressRecord r = Record(u"[1]\r\n 2 = okok \r\n3=AC\r\n[1]\r\n4=B\r\n[做到题类]\r\n答=2abc\r\n[做到编号]\r\n答=\r\n"_qs);
  EXPECT_TRUE(r.exists());
  EXPECT_EQ(r.value(1, 2), u"okok"_qs);
  EXPECT_EQ(r.value(1, 3), u"AC"_qs);
  EXPECT_EQ(r.value(1, 4), u""_qs);  // only the first section of a name counts
  EXPECT_EQ(r.value(2, 2), u""_qs);
  EXPECT_EQ(r.lastSection(), 2.0);
  EXPECT_EQ(r.lastNumber(), 0.0);
  EXPECT_TRUE(IsOkValue(u"OkOk"_qs));
  EXPECT_FALSE(IsOkValue(u"OKOK "_qs));
  EXPECT_FALSE(ProgressRecord::Read(paperPath(u"没有.rec"_qs)).exists());
  EXPECT_FALSE(ProgressRecord::Read(QString()).exists());
}

TEST_F(PaperPractice, AnyBytesReadWithoutHarm) {
  QRandomGenerator rng(20261121);
  for (int round = 0; round < 300; ++round) {
    QByteArray bytes(static_cast<int>(rng.bounded(400)), Qt::Uninitialized);
    for (char& c : bytes) c = static_cast<char>(rng.bounded(256));
    // Now and then make it look like a record.
    if (round % 3 == 0) bytes.prepend("[1]\r\n1=");
    if (round % 5 == 0) bytes.append("\r\n[\xd7\xf6\xb5\xbd\xcc\xe2\xc0\xe0]\r\n\xb4\xf0=");
    const ProgressRecord r = ProgressRecord::FromBytes(bytes);
    (void)r.value(1, 1);
    (void)r.lastSection();
    check(ThreeSections());
    const qint64 last = GetLastDone(state, r, 6);
    EXPECT_TRUE(last >= 0 && last <= 5);
    EXPECT_EQ(GetOutInfo(state, r, 6).size(), 10);
  }
}

TEST_F(PaperPractice, TheLastQuestionDoneTheSummaryAndTheWrongOnes) {
  check(ThreeSections());
  const QString text = u"[1]\r\n1=OKOK\r\n2=C\r\n[做到题类]\r\n答=2\r\n[做到编号]\r\n答=4\r\n[2]\r\n4=AB\r\n"_qs;
  const ProgressRecord r = Record(text);
  EXPECT_EQ(GetLastDone(state, r, 6), 4);
  EXPECT_EQ(GetOutInfo(state, r, 6), u"    3    1"_qs);
  EXPECT_EQ(InfoDone(GetOutInfo(state, r, 6)), 3);
  EXPECT_EQ(InfoRight(GetOutInfo(state, r, 6)), 1);
  EXPECT_EQ(GetNotOkList(state, r, 6), u"*   2**   3**   4**   5**   6*"_qs);
  // The last question of the paper: it starts again.
  EXPECT_EQ(GetLastDone(state, Record(u"[做到题类]\r\n答=3\r\n[做到编号]\r\n答=1\r\n"_qs), 6), 1);
  // A question the paper does not have, or no paper.
  EXPECT_EQ(GetLastDone(state, Record(u"[做到题类]\r\n答=1\r\n[做到编号]\r\n答=9\r\n"_qs), 6), 0);
  EXPECT_EQ(GetLastDone(state, r, 0), 0);
  EXPECT_EQ(GetLastDone(state, Record(QString()), 6), 0);
  // No file, or no questions: nothing to tell.
  EXPECT_EQ(GetOutInfo(state, ProgressRecord(), 6), u""_qs);
  EXPECT_EQ(GetOutInfo(state, r, 0), u""_qs);
  EXPECT_EQ(GetNotOkList(state, ProgressRecord(), 6), u""_qs);
  // An empty file: all not done.
  EXPECT_EQ(GetOutInfo(state, Record(QString()), 6), u"    0    0"_qs);
  EXPECT_EQ(GetNotOkList(state, Record(QString()), 6), MakeAllTiList(6));
}

// ---- names ----

TEST_F(PaperPractice, RecordNamesAndScoreMarks) {
  EXPECT_EQ(RecordFileOf(u"/a/外部题库/卷.txt"_qs), u"/a/外部题库/卷.rec"_qs);
  EXPECT_EQ(RecordFileOf(u"/a/外部题库/卷.html"_qs), u"/a/外部题库/卷.rec"_qs);
  EXPECT_EQ(RecordFileOf(u"/a/b.c/卷"_qs), u"/a/b.c/卷.rec"_qs);
  EXPECT_TRUE(InPaperFolder(u"/a/外部题库/刑法类/卷.txt"_qs));
  EXPECT_TRUE(InPaperFolder(u"C:\\明镜\\外部题库\\卷.txt"_qs));
  EXPECT_FALSE(InPaperFolder(u"/home/甲/卷.txt"_qs));
  EXPECT_FALSE(InPaperFolder(QString()));
  EXPECT_EQ(ScoreMark(7, 100), u"07%"_qs);
  EXPECT_EQ(ScoreMark(85, 100), u"85%"_qs);
  EXPECT_EQ(ScoreMark(6, 6), u"00%"_qs);
  EXPECT_EQ(ScoreMark(1, 3), u"33%"_qs);
  EXPECT_EQ(ScoreMark(0, 0), u"00%"_qs);
  EXPECT_EQ(MarkedName(u"/a/外部题库/卷.rec"_qs, u"85%"_qs), u"/a/外部题库/85%卷.rec"_qs);
  EXPECT_EQ(MarkedName(u"/a/外部题库/07%卷.rec"_qs, u"85%"_qs), u"/a/外部题库/85%卷.rec"_qs);
  EXPECT_EQ(MarkedName(u"/a/50%/卷.rec"_qs, u"85%"_qs), u"/a/50%/85%卷.rec"_qs);
}

// ---- the start ----

TEST_F(PaperPractice, AFirstStartTakesAllQuestions) {
  check(ThreeSections());
  const auto s = StartPaperPractice(te.env, state, writePaper(ThreeSections()));
  ASSERT_TRUE(s);
  EXPECT_EQ(s->list, MakeAllTiList(6));
  EXPECT_EQ(s->recFile, paperPath(u"卷.rec"_qs));
  EXPECT_EQ(s->total, 6);
  EXPECT_TRUE(te.boxes.shown().isEmpty());
}

TEST_F(PaperPractice, APaperOutsideTheFolderOfPapersIsWarnedOf) {
  check(ThreeSections());
  te.mkdir(u"\\别处"_qs);
  const QString path = te.path(u"\\别处\\卷.txt"_qs);
  ASSERT_TRUE(WritePaper(path, ThreeSections(), PaperEncoding::Gbk));
  // Even with a record there, all questions come.
  te.writeGbk(u"\\别处\\卷.rec"_qs, u"[做到题类]\r\n答=1\r\n[做到编号]\r\n答=2\r\n"_qs);
  const auto s = StartPaperPractice(te.env, state, path);
  ASSERT_TRUE(s);
  EXPECT_EQ(s->list, MakeAllTiList(6));
  EXPECT_EQ(s->recFile, te.path(u"\\别处\\卷.rec"_qs));
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].title, u"最好保存进“外部题库”文件夹下。"_qs);
  EXPECT_EQ(te.boxes.shown()[0].text, u"注意，只有先把该文件保存在“外部题库”目录下，做题记录才能有效保存。"_qs);
  EXPECT_EQ(te.boxes.shown()[0].style, box::Information);
}

// The summary in front of the questions of a resumption; the record's change
// time set to a known one.
QString SetChanged(const QString& path, const QDateTime& when) {
  QFile f(path);
  EXPECT_TRUE(f.open(QIODevice::ReadWrite));
  EXPECT_TRUE(f.setFileTime(when, QFileDevice::FileModificationTime));
  return path;
}

const QString kRecordAt4 = u"[1]\r\n1=OKOK\r\n2=C\r\n[做到题类]\r\n答=2\r\n[做到编号]\r\n答=4\r\n[2]\r\n4=AB\r\n"_qs;
const QString kSummaryAt4 =
    u"今天是2026年11月21日，本套试题\r\n已经在2026年11月20日8点5分做过，\r\n共6道\r\n已经做了3道\r\n做对1道\r\n正确率为 16%\r\n"_qs;

TEST_F(PaperPractice, AResumptionGoesOnBehindTheQuestionAnsweredLast) {
  check(ThreeSections());
  const QString paper = writePaper(ThreeSections());
  SetChanged(writeRecord(kRecordAt4), QDateTime(QDate(2026, 11, 20), QTime(8, 5)));
  te.boxes.answer(box::No);
  const auto s = StartPaperPractice(te.env, state, paper);
  ASSERT_TRUE(s);
  EXPECT_EQ(s->list, u"*   5**   6*"_qs);
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].text,
            kSummaryAt4 + u"最后一次做的是第4题（也就是多选题的第4题），\r\n这次是否从第1题开始重做？"_qs);
  EXPECT_EQ(te.boxes.shown()[0].title, DefaultBoxTitle());
  EXPECT_EQ(te.boxes.shown()[0].style, box::YesNo | box::Question);
}

TEST_F(PaperPractice, StartingAgainFromTheFirstOffersTheWrongOnes) {
  check(ThreeSections());
  const QString paper = writePaper(ThreeSections());
  SetChanged(writeRecord(kRecordAt4), QDateTime(QDate(2026, 11, 20), QTime(8, 5)));
  // Yes, then only the wrong and the not done ones.
  te.boxes.answer(box::Yes);
  te.boxes.answer(box::Yes);
  auto s = StartPaperPractice(te.env, state, paper);
  ASSERT_TRUE(s);
  EXPECT_EQ(s->list, u"*   2**   3**   4**   5**   6*"_qs);
  ASSERT_EQ(te.boxes.shown().size(), 2);
  EXPECT_EQ(te.boxes.shown()[1].text, u"本次是否只做曾做错的题和未做过的题？"_qs);
  EXPECT_EQ(te.boxes.shown()[1].title, u"请选择"_qs);
  te.boxes.clear();
  // Yes, then all.
  te.boxes.answer(box::Yes);
  te.boxes.answer(box::No);
  s = StartPaperPractice(te.env, state, paper);
  ASSERT_TRUE(s);
  EXPECT_EQ(s->list, MakeAllTiList(6));
}

TEST_F(PaperPractice, AfterTheLastQuestionOnlyTheWrongOnesAreAskedFor) {
  check(ThreeSections());
  const QString paper = writePaper(ThreeSections());
  SetChanged(writeRecord(u"[1]\r\n1=OKOK\r\n2=OKOK\r\n3=A\r\n[2]\r\n4=OKOK\r\n5=OKOK\r\n[3]\r\n1=OKOK\r\n"
                         "[做到题类]\r\n答=3\r\n[做到编号]\r\n答=1\r\n"_qs),
             QDateTime(QDate(2025, 1, 2), QTime(23, 59)));
  te.boxes.answer(box::Yes);
  const auto s = StartPaperPractice(te.env, state, paper);
  ASSERT_TRUE(s);
  EXPECT_EQ(s->list, u"*   3*"_qs);
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].title, u"请选择"_qs);
  EXPECT_EQ(te.boxes.shown()[0].text,
            u"今天是2026年11月21日，本套试题\r\n已经在2025年1月2日23点59分做过，\r\n共6道\r\n已经做了6道\r\n做对5道\r\n正确率为 83%\r\n"
            u"本次是否只做曾做错的题和未做过的题？"_qs);
  // No: all of them.
  te.boxes.clear();
  te.boxes.answer(box::No);
  EXPECT_EQ(StartPaperPractice(te.env, state, paper)->list, MakeAllTiList(6));
}

TEST_F(PaperPractice, WithEverythingRightThereIsNothingLeft) {
  check(ThreeSections());
  const QString paper = writePaper(ThreeSections());
  writeRecord(u"[1]\r\n1=OKOK\r\n2=OKOK\r\n3=okok\r\n[2]\r\n4=OKOK\r\n5=OKOK\r\n[3]\r\n1=OKOK\r\n"
              "[做到题类]\r\n答=3\r\n[做到编号]\r\n答=1\r\n"_qs);
  te.boxes.answer(box::Yes);
  EXPECT_FALSE(StartPaperPractice(te.env, state, paper));
  ASSERT_EQ(te.boxes.shown().size(), 2);
  EXPECT_EQ(te.boxes.shown()[1].text, u"没有符合条件的试题。"_qs);
  EXPECT_EQ(te.boxes.shown()[1].style, box::Exclamation);
}

TEST_F(PaperPractice, ARecordThatDoesNotFitThePaperMayBeDeleted) {
  check(ThreeSections());
  const QString paper = writePaper(ThreeSections());
  const QString rec = writeRecord(u"[1]\r\n1=OKOK\r\n[做到题类]\r\n答=1\r\n[做到编号]\r\n答=40\r\n"_qs);
  const QString question = u"没有符合条件的试题，或者是本试卷的记录文件，也就是"_qs + rec + u"有误，要删除本文件吗？"_qs;
  te.boxes.answer(box::No);
  EXPECT_FALSE(StartPaperPractice(te.env, state, paper));
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].text, question);
  EXPECT_EQ(te.boxes.shown()[0].style, box::YesNo | box::Question);
  EXPECT_TRUE(QFileInfo::exists(rec));
  te.boxes.clear();
  te.boxes.answer(box::Yes);
  EXPECT_FALSE(StartPaperPractice(te.env, state, paper));
  EXPECT_EQ(te.boxes.shown().size(), 1);
  EXPECT_FALSE(QFileInfo::exists(rec));
  // Without the record the next start takes all.
  te.boxes.clear();
  EXPECT_EQ(StartPaperPractice(te.env, state, paper)->list, MakeAllTiList(6));
}

TEST_F(PaperPractice, APaperWithoutQuestionsHasNothingToPractise) {
  check(u"一、单项选择题\r\n没有题目"_qs);
  EXPECT_FALSE(StartPaperPractice(te.env, state, writePaper(u"一、单项选择题\r\n没有题目"_qs)));
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].text, u"没有符合条件的试题。"_qs);
}

TEST_F(PaperPractice, APaperThatVanishedIsSaid) {
  check(ThreeSections());
  const QString paper = writePaper(ThreeSections());
  ASSERT_TRUE(QFile::remove(paper));
  EXPECT_FALSE(StartPaperPractice(te.env, state, paper));
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].text, u"试卷文件"_qs + paper +
                                          u"已经不存在了，可能被移走或删除了。请先按“保存一下”把窗口里的试题保存下来，再开始做题。"_qs);
  EXPECT_EQ(te.boxes.shown()[0].style, box::Exclamation);
}

TEST_F(PaperPractice, APaperOfMoreThan9999QuestionsCannotBeListed) {
  state.OutTiMode = 1;
  state.OutTiNum[1][1] = 1;
  state.OutTiNum[1][2] = 10000;
  EXPECT_FALSE(StartPaperPractice(te.env, state, writePaper(u"一、单项选择题"_qs)));
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].text, u"本试卷共有10000道题，超过了9999道，不能做题。请把它分成几个文件再做。"_qs);
}

// ---- leaving ----

TEST_F(PaperPractice, LeavingPutsTheScoreInFrontOfPaperAndRecord) {
  check(ThreeSections());
  const QString paper = writePaper(ThreeSections());
  // 3 of 6 right.
  const QString record =
      u"[1]\r\n1=OKOK\r\n2=OKOK\r\n3=A\r\n[2]\r\n4=OKOK\r\n[做到题类]\r\n答=2\r\n[做到编号]\r\n答=4\r\n"_qs;
  const QString rec = writeRecord(record);
  const QString renamed = LeavePaperPractice(state, paper, rec);
  EXPECT_EQ(renamed, paperPath(u"50%卷.txt"_qs));
  EXPECT_FALSE(QFileInfo::exists(paper));
  EXPECT_FALSE(QFileInfo::exists(rec));
  EXPECT_EQ(ReadPaper(renamed).text, ThreeSections());
  EXPECT_EQ(te.readGbk(u"\\外部题库\\50%卷.rec"_qs), record);
  // The next time the mark is replaced: all right gives 00%.
  te.writeGbk(u"\\外部题库\\50%卷.rec"_qs,
              u"[1]\r\n1=OKOK\r\n2=OKOK\r\n3=OKOK\r\n[2]\r\n4=OKOK\r\n5=OKOK\r\n[3]\r\n1=OKOK\r\n"_qs);
  EXPECT_EQ(LeavePaperPractice(state, renamed, paperPath(u"50%卷.rec"_qs)), paperPath(u"00%卷.txt"_qs));
  EXPECT_EQ(QDir(te.path(u"\\外部题库"_qs)).entryList(QDir::Files), (QStringList{u"00%卷.rec"_qs, u"00%卷.txt"_qs}));
}

TEST_F(PaperPractice, LeavingWithoutAnyAnswerMarksThePaperOnly) {
  check(ThreeSections());
  const QString paper = writePaper(ThreeSections(), u"卷.htm"_qs);
  EXPECT_EQ(LeavePaperPractice(state, paper, RecordFileOf(paper)), paperPath(u"00%卷.htm"_qs));
  EXPECT_EQ(QDir(te.path(u"\\外部题库"_qs)).entryList(QDir::Files), QStringList{u"00%卷.htm"_qs});
}

TEST_F(PaperPractice, PaperAndRecordStayTogether) {
  check(ThreeSections());
  const QString paper = writePaper(ThreeSections());
  const QString rec = writeRecord(u"[1]\r\n1=OKOK\r\n"_qs);
  // Another paper has the name already: nothing is renamed.
  writePaper(u"别的试卷"_qs, u"16%卷.txt"_qs);
  EXPECT_EQ(LeavePaperPractice(state, paper, rec), paper);
  EXPECT_TRUE(QFileInfo::exists(rec));
  EXPECT_EQ(ReadPaper(paperPath(u"16%卷.txt"_qs)).text, u"别的试卷"_qs);
  // A record of the new name without its paper goes.
  QFile::remove(paperPath(u"16%卷.txt"_qs));
  writeRecord(u"[1]\r\n1=A\r\n"_qs, u"16%卷.rec"_qs);
  EXPECT_EQ(LeavePaperPractice(state, paper, rec), paperPath(u"16%卷.txt"_qs));
  EXPECT_EQ(te.readGbk(u"\\外部题库\\16%卷.rec"_qs), u"[1]\r\n1=OKOK\r\n"_qs);
  // A paper outside the folder of papers keeps its name.
  te.mkdir(u"\\别处"_qs);
  const QString outside = te.path(u"\\别处\\卷.txt"_qs);
  ASSERT_TRUE(WritePaper(outside, ThreeSections(), PaperEncoding::Gbk));
  EXPECT_EQ(LeavePaperPractice(state, outside, RecordFileOf(outside)), outside);
  EXPECT_TRUE(QFileInfo::exists(outside));
}

}  // namespace
}  // namespace mj
