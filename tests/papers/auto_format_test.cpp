#include "papers/auto_format.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QMap>
#include <random>

#include "law/line_joiner.h"
#include "papers/auto_format_literal.h"
#include "papers/loose_papers.h"
#include "papers/paper_check.h"
#include "support/literal_joiner.h"
#include "papers_fixture.h"
#include "platform/textfile.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

QString Lines(const QStringList& lines) { return lines.join(u"\r\n"_qs) + u"\r\n"_qs; }

// The conversion must give exactly what the rules written out one by one give.
void ExpectLiteral(const QString& text) {
  const QString fast = AutoFormat(text);
  const QString slow = literal::AutoFormat(text);
  ASSERT_EQ(fast, slow) << "input: " << text.toStdString();
}

// ---- The examples -------------------------------------------------------------

const QString kExample = Lines({u"1、下列……"_qs, u"A、甲"_qs, u"B、乙"_qs, u"C、丙"_qs, u"D、丁"_qs,
                                u"答案：A，参见《刑诉》第十二条"_qs});

TEST(AutoFormat, NumberedLinesBecomeTheLayoutOfAPaper) {
  // Numbers and options with 、 become ．on lines of their own; the answer
  // goes behind its tag and the citation onto a line of its own, with the
  // full law name and the article in digits. The 参 that the rule for 见《
  // doubled stays at the end of the answer line.
  EXPECT_EQ(AutoFormat(kExample), Lines({u"1．下列……"_qs, u"A．甲"_qs, u"B．乙"_qs, u"C．丙"_qs, u"D．丁"_qs,
                                         u"[答案：]A．参"_qs, u"[参见：]《刑事诉讼法》第12条"_qs}));
}

TEST(AutoFormat, ACitationThatSaidCanJianKeepsADoubledCan) {
  const QString in = Lines({u"1、题干"_qs, u"A、甲"_qs, u"B、乙"_qs, u"C、丙"_qs, u"D、丁"_qs,
                            u"答案：A。参见《刑法》第三条"_qs});
  EXPECT_EQ(AutoFormat(in), Lines({u"1．题干"_qs, u"A．甲"_qs, u"B．乙"_qs, u"C．丙"_qs, u"D．丁"_qs,
                                   u"[答案：]A．参"_qs, u"[参见：]《刑法》第3条"_qs}));
}

TEST(AutoFormat, ATextWithoutLineBreakComesOutAsOneLineEnd) {
  EXPECT_EQ(AutoFormat(u"1、下列说法正确的是 A、甲 B、乙 答案：A"_qs), u"\r\n"_qs);
  EXPECT_EQ(AutoFormat(u"\r\n1、题干"_qs), u"\r\n"_qs) << "the first line is empty";
  EXPECT_EQ(AutoFormat(QString()), u"\r\n"_qs);
}

TEST(AutoFormat, TheLastLineWithoutLineBreakIsLost) {
  const QString in = u"1、题干\r\nA、甲\r\nB、乙\r\nC、丙\r\nD、丁\r\n答案：A"_qs;
  EXPECT_EQ(AutoFormat(in), Lines({u"1．题干"_qs, u"A．甲"_qs, u"B．乙"_qs, u"C．丙"_qs, u"D．丁"_qs}));
  EXPECT_EQ(AutoFormat(in + u"\r\n"_qs),
            Lines({u"1．题干"_qs, u"A．甲"_qs, u"B．乙"_qs, u"C．丙"_qs, u"D．丁"_qs, u"[答案：]A"_qs}));
}

TEST(AutoFormat, AStemBeginningWithALetterIsTakenForAnAnswer) {
  const QString in = Lines({u"3．A公司诉乙"_qs, u"A．甲"_qs, u"B．乙"_qs, u"C．丙"_qs, u"D．丁"_qs, u"答案：B"_qs});
  EXPECT_EQ(AutoFormat(in), Lines({u"3．"_qs, u"[答案：]A公司诉乙"_qs, u"A．甲"_qs, u"B．乙"_qs, u"C．丙"_qs,
                                   u"D．丁"_qs, u"[答案：]B"_qs}));
}

TEST(AutoFormat, NumbersAbove400And500AreNotRepaired) {
  // A question number at a line start: 400 is taken, 401 is not.
  EXPECT_EQ(AutoFormat(u"\r\n400,甲。\r\n401,乙。\r\n"_qs), Lines({u"400．甲。"_qs, u"401，乙。"_qs}));
  // Behind a blank the same.
  EXPECT_EQ(AutoFormat(u"题 400,甲。\r\n题 401,乙。\r\n"_qs), Lines({u"题"_qs, u"400．甲。"_qs, u"题401，乙。"_qs}));
  // Article numbers: 500 becomes digits, 501 stays a numeral.
  EXPECT_EQ(AutoFormat(u"依第五百条、第五百零一条。\r\n"_qs), u"依第500条、第五百零一条。\r\n"_qs);
}

TEST(AutoFormat, TheWordAnswerInAStemIsTornOut) {
  const QString in = Lines({u"1、本题答案不唯一。"_qs, u"A、甲"_qs, u"B、乙"_qs, u"C、丙"_qs, u"D、丁"_qs, u"答案：AB"_qs});
  EXPECT_EQ(AutoFormat(in), Lines({u"1．本题"_qs, u"[答案：]不唯一。"_qs, u"A．甲"_qs, u"B．乙"_qs, u"C．丙"_qs,
                                   u"D．丁"_qs, u"[答案：]AB"_qs}));
}

TEST(AutoFormat, TheFourMendedFormsOfAnswerStayWords) {
  EXPECT_EQ(AutoFormat(u"选出正确答案。\r\n"_qs), u"选出正确答案。\r\n"_qs);
  EXPECT_EQ(AutoFormat(u"选出正确答案，共一个。\r\n"_qs), u"选出正确答案，共一个。\r\n"_qs);
  EXPECT_EQ(AutoFormat(u"这是正确的答案吗\r\n"_qs), u"这是正确的答案吗\r\n"_qs);
  EXPECT_EQ(AutoFormat(u"参考答案：A\r\n"_qs), u"\r\n[参考答案]A\r\n"_qs);
  // Any other use becomes a tag.
  EXPECT_EQ(AutoFormat(u"写出正确答案吗\r\n"_qs), Lines({u"写出正确"_qs, u"[答案：]吗"_qs}));
}

TEST(AutoFormat, TheAnswerHeadingOfThePaperIsShieldedAndRestored) {
  EXPECT_EQ(AutoFormat(u"题。\r\n本卷参考答案\r\n1．A\r\n"_qs),
            Lines({u"题。"_qs, u"[本卷参考答案]"_qs, u"1．"_qs, u"[答案：]A"_qs}));
}

TEST(AutoFormat, ASecondRunDoesNotGiveTheSameText) {
  const QString once = AutoFormat(u"题。\r\n本卷参考答案\r\n1．A\r\n"_qs);
  const QString twice = AutoFormat(once);
  EXPECT_NE(once, twice);
  EXPECT_EQ(twice, Lines({u"题。"_qs, u"["_qs, u"[本卷参考答案]]1．"_qs, u"[答案：]A"_qs}));
}

TEST(AutoFormat, FrontMatterBeforeTheFirstHeadingGoesAndHeadingRemarksGoEverywhere) {
  const QString in = Lines({u"模拟试卷"_qs, u"一．单项选择题（每题1分）"_qs, u"1、甲。"_qs, u"乙（每题1分）"_qs,
                            u"二、多项选择题"_qs, u"2、丙。"_qs});
  EXPECT_EQ(AutoFormat(in), Lines({u"一、单项选择题"_qs, u"1．甲。"_qs, u"乙"_qs, u"二、多项选择题"_qs, u"2．丙。"_qs}));
}

TEST(AutoFormat, ShortLawNamesBecomeFullNames) {
  const QString in = u"《刑 诉》《六机关规定》《民通意见》《高检规则》《人民检察院规则》《刑诉法》《民诉》《民诉法》《高法解释》。\r\n"_qs;
  EXPECT_EQ(AutoFormat(in), u"《刑事诉讼法》《六部委刑诉法规定》《民法通则意见》《检察院规则》《检察院规则》"
                            u"《刑事诉讼法》《民事诉讼法》《民事诉讼法》《刑事诉讼法解释》。\r\n"_qs);
}

TEST(AutoFormat, ArticleNumeralsInAllFourFormsBecomeDigits) {
  EXPECT_EQ(AutoFormat(u"依第十，第十一、十二条及第二十条。\r\n"_qs), u"依第10，第11、12条及第20条。\r\n"_qs);
  // 十 does not match inside 十二, and the closing 、 of one opens the next.
  EXPECT_EQ(AutoFormat(u"第十、二条和第十二条。\r\n"_qs), u"第10、2条和第12条。\r\n"_qs);
}

TEST(FormatReplace, AWordBecomesATagOnALineOfItsOwn) {
  EXPECT_EQ(FormatReplace(u"甲答案 A"_qs, u"答案"_qs), u"甲\r\n[答案：]A"_qs);
  EXPECT_EQ(FormatReplace(u"甲答案：A"_qs, u"答案"_qs), u"甲\r\n[答案：]A"_qs) << "one colon only";
  EXPECT_EQ(FormatReplace(u"甲[答案]A"_qs, u"答案"_qs), u"甲\r\n[答案：]A"_qs) << "one pair of brackets only";
  EXPECT_EQ(FormatReplace(u"甲[答案：]A"_qs, u"答案"_qs), u"甲\r\n[答案：]A"_qs);
  EXPECT_EQ(FormatReplace(u"甲\r\n\r\n答案\r\n\r\nA"_qs, u"答案"_qs), u"甲\r\n[答案：]A"_qs);
  EXPECT_EQ(FormatReplace(QString(), u"答案"_qs), QString());
}

// ---- The same text as the rules written out ----------------------------------

TEST(AutoFormat, GivesWhatTheRulesWrittenOutGiveOnTheExamples) {
  for (const QString& t :
       {kExample, u"1、下列说法正确的是 A、甲 B、乙 答案：A"_qs, u"\r\n1、题干"_qs, QString(), u"\r\n"_qs,
        u"1、题干\r\nA、甲\r\nB、乙\r\nC、丙\r\nD、丁\r\n答案：A"_qs, u"3．A公司诉乙\r\n"_qs,
        u"\r\n400,甲。\r\n401,乙。\r\n"_qs, u"题 400,甲。\r\n题 401,乙。\r\n"_qs, u"见第五百条、第五百零一条。\r\n"_qs,
        u"参见《刑法》第三条\r\n"_qs, u"题。\r\n本卷参考答案\r\n1．A\r\n"_qs, u"第十、二条和第十二条。\r\n"_qs,
        u"\r\n 007,甲\r\n0,乙 12345,丙 3 4,丁\r\n"_qs, u"第零条第一千条、十条第一百零五，\r\n"_qs})
    ExpectLiteral(t);
}

TEST(AutoFormat, GivesWhatTheRulesWrittenOutGiveOnTheSamplePapers) {
  const QString dir = QStringLiteral(MJ_SOURCE_DIR) + u"/data/"_qs;
  for (const QString& name : {u"ini/sample1.ini"_qs, u"ini/sample2.ini"_qs, u"外部题库/外部题库试样3（含错误）.txt"_qs}) {
    SCOPED_TRACE(name.toStdString());
    QFile f(dir + name);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(f.readAll()).replace(u"\n"_qs, u"\r\n"_qs);
    ASSERT_GT(text.size(), 200);
    ExpectLiteral(text);
    // The samples are in the layout already, and yet the conversion changes them.
    EXPECT_NE(AutoFormat(text), text);
  }
}

TEST(AutoFormat, GivesWhatTheRulesWrittenOutGiveOnAThousandGeneratedPapers) {
  std::mt19937 rng(20240518);
  for (int i = 0; i < 1000; ++i) {
    const QString paper = test::LoosePaper(rng, 1 + static_cast<int>(rng() % 12));
    const QString fast = AutoFormat(paper);
    ASSERT_EQ(fast, literal::AutoFormat(paper)) << "paper " << i << ":\n" << paper.toStdString();
  }
}

// ---- The real questions as a loose paper ---------------------------------------

// The lines of question k in a converted paper, searched from *from on: the
// question came through whole when they are its stem line k．, the four
// options A．to D．and [答案：] with its answer, and nothing else.
bool CameThroughWhole(const QStringList& lines, int k, const QString& answer, qsizetype* from) {
  const QString head = QString::number(k) + u"．"_qs;
  const QString next = QString::number(k + 1) + u"．"_qs;
  qsizetype l = *from;
  while (l < lines.size() && !lines[l].startsWith(head)) ++l;
  if (l >= lines.size()) return false;
  *from = l + 1;
  qsizetype e = l + 1;
  while (e < lines.size() && !lines[e].startsWith(next)) ++e;
  if (e - l != 6 || lines[l].size() <= head.size()) return false;
  for (int o = 0; o < 4; ++o)
    if (!lines[l + 1 + o].startsWith(QString(u"ABCD"_qs.at(o)) + u"．"_qs) || lines[l + 1 + o].size() < 3) return false;
  return lines[l + 5] == u"[答案：]"_qs + answer;
}

QStringList ConvertedLines(const QString& text) {
  QStringList lines = text.split(u"\r\n"_qs);
  while (!lines.isEmpty() && lines.last().isEmpty()) lines.removeLast();
  return lines;
}

TEST(AutoFormat, TheRealQuestionsAsALoosePaper) {
  const QString real = test::RealDataDir();
  if (real.isEmpty()) GTEST_SKIP() << "../shared/realdata is absent";
  const QList<test::RealQuestion> questions = test::RealQuestions(real + u"/questions/lawbench-3-6.json"_qs);
  ASSERT_EQ(questions.size(), 500);
  const QString paper = test::RealLoosePaper(questions);
  const QString converted = AutoFormat(paper);
  ASSERT_EQ(converted, literal::AutoFormat(paper));
  QFile out(test::OutputDir() + u"/lawbench-3-6-converted.txt"_qs);
  if (out.open(QIODevice::WriteOnly)) out.write(ToGbk(converted));

  // Each question that does not come through whole, with the step of the
  // conversion that tore it: the last step that, left out, lets it through.
  // 23: a stem beginning with A (A市, A省) behind the number is taken for an
  //     answer (225．A省B市C区 becomes 225．答案A省...).
  // 18: an option holding its own letter and mark again (C、c.乙..., D、D，胡仙...)
  //     is split into two option lines.
  const QMap<int, int> expectedTorn = {{225, 23}, {322, 18}, {362, 18}, {367, 23}};
  const QStringList lines = ConvertedLines(converted);
  qsizetype from = 0;
  int whole = 0;
  QMap<int, int> torn;
  for (int k = 1; k <= questions.size(); ++k) {
    const test::RealQuestion& q = questions[k - 1];
    if (CameThroughWhole(lines, k, q.answer, &from)) {
      ++whole;
      continue;
    }
    // The question alone, under its own number, step by step.
    const QString alone = test::RealLoosePaper({q}, k);
    qsizetype f = 0;
    EXPECT_FALSE(CameThroughWhole(ConvertedLines(AutoFormat(alone)), k, q.answer, &f)) << k;
    int step = 0;
    for (int s = static_cast<int>(literal::AutoFormatSteps().size()); s >= 1 && step == 0; --s) {
      qsizetype g = 0;
      if (CameThroughWhole(ConvertedLines(literal::AutoFormat(alone, s)), k, q.answer, &g)) step = s;
    }
    torn.insert(k, step);
  }
  EXPECT_EQ(whole, 496);
  EXPECT_EQ(torn, expectedTorn);

  // The check of the converted paper: every question passes on its own, and
  // the counts show the four torn ones, 2 option markers and 2 answer tags
  // too many: 501 questions by their markers, 502 answers.
  test::TestEnv te;
  test::WriteStandardLawList(te);
  PaperState state;
  const PaperCheckResult check = RunPaperCheck(te.env, converted, state);
  QFile expected(QStringLiteral(MJ_SOURCE_DIR) + u"/tests/papers/data/lawbench-3-6-report.txt"_qs);
  ASSERT_TRUE(expected.open(QIODevice::ReadOnly));
  const QString report = QString::fromUtf8(expected.readAll());
  if (check.report != report) {
    QFile got(test::OutputDir() + u"/lawbench-3-6-report.txt"_qs);
    if (got.open(QIODevice::WriteOnly)) got.write(check.report.toUtf8());
  }
  EXPECT_EQ(check.report, report) << "the report as it came is in the test output folder";
  EXPECT_FALSE(check.passed);
  EXPECT_TRUE(check.report.contains(u"共有501道单选题，502个答案。"_qs));
  EXPECT_EQ(check.report.count(u"题：通过检验。"_qs), 500);
}

// ---- The line joiner as the conversion uses it ------------------------------------

TEST(JoinBrokenLines, GivesWhatItsRulesWrittenOutGiveOnGeneratedPapers) {
  std::mt19937 rng(77);
  for (int i = 0; i < 200; ++i) {
    const QString paper = test::LoosePaper(rng, 1 + static_cast<int>(rng() % 20));
    ASSERT_EQ(JoinBrokenLines(paper), test::LiteralJoinBrokenLines(paper)) << paper.toStdString();
  }
}

// The written-out conversion calls the program's joiner at its step 16; here
// that joiner meets its own rules written out on the very texts the
// conversion hands it (steps 1 to 15 done), generated and real.
TEST(JoinBrokenLines, GivesWhatItsRulesWrittenOutGiveOnTheTextsTheConversionHandsIt) {
  const auto beforeJoin = [](QString t) {
    const QList<literal::Step>& steps = literal::AutoFormatSteps();
    for (int i = 0; i < 15; ++i) steps[i](t);
    return t;
  };
  std::mt19937 rng(1515);
  for (int i = 0; i < 300; ++i) {
    const QString t = beforeJoin(test::LoosePaper(rng, 1 + static_cast<int>(rng() % 30)));
    ASSERT_EQ(JoinBrokenLines(t), test::LiteralJoinBrokenLines(t)) << t.toStdString();
  }
  const QString real = test::RealDataDir();
  if (real.isEmpty()) return;
  const QString t =
      beforeJoin(test::RealLoosePaper(test::RealQuestions(real + u"/questions/lawbench-3-6.json"_qs)));
  EXPECT_EQ(JoinBrokenLines(t), test::LiteralJoinBrokenLines(t));
}

}  // namespace
}  // namespace mj
