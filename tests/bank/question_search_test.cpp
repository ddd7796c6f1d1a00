// The text search over the questions: the words of a query, the folding of
// width forms, the texts searched (stem, options, answer field, notes; not
// the provider block), the lines shown for the hits with their marks, the
// files read again when they change, and the demonstration banks.
#include <gtest/gtest.h>

#include "bank/question_search.h"
#include "bank/tables.h"
#include "support/directory_tables.h"
#include "support/test_env.h"

using namespace mj;

namespace {

QStringList IdsOf(const QList<SearchHit>& hits) {
  QStringList out;
  for (const SearchHit& h : hits) out.append(h.id);
  return out;
}

// A folder with known texts: five questions of bank 100011 (the fourth
// hidden), one of bank 100012 whose file is missing, one of paper 00001.
struct Known : ::testing::Test {
  test::TestEnv t;
  QList<test::ItemSpec> internal;

  void SetUp() override {
    t.writeGbk(u"\\yibanti\\100011.mmd"_qs,
               u"生成\r\n"
               u"●1●根据《刑法》，正当防卫的成立条件是(      )\r\nA．有不法侵害\r\nB．ＡＢＣ公司\r\nC．选项三\r\nD．选项四"
               u"■答案：A参见《刑法》第20条\r\n[注释：]独有的注释词语[注于：]2026年1月1日\r\n"
               u"●2●甲某在路上遇到乙，正当\r\n防卫过当的(      )\r\nA．罚金１２３元\r\nB．选项二\r\nC．选项三\r\nD．选项四"
               u"■答案：B参见《刑法》第20条\r\n"
               u"●3●丙与丁的纠纷(      )\r\nA．合同 纠纷\r\nB．选项二\r\nC．选项三\r\nD．选项四\r\n"
               u"[本题ID及提供者有关信息：]\r\n[提供者姓名或昵称：]隐藏词语■答案：C参见《刑法》第1条\r\n"
               u"●4●被隐藏的正当防卫题(      )\r\nA．一\r\nB．二\r\nC．三\r\nD．四■答案：A参见《刑法》第1条\r\n"
               u"●5●"_qs + QString(50, u'甲') + u"目标词"_qs + QString(50, u'乙') +
                   u"(      )\r\nA．一\r\nB．二\r\nC．三\r\nD．四■答案：A参见《刑法》第1条\r\n"_qs);
    t.writeGbk(u"\\moniti\\00001.mmd"_qs,
               u"\r\n●1●试卷中的正当防卫问题(      )\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁■答案：A参见《刑法》第20条\r\n"_qs);
    internal = {{u"10001100001"_qs}, {u"10001100002"_qs}, {u"10001100003"_qs}, {u"10001100004"_qs},
                {u"10001100005"_qs}, {u"10001200001"_qs}};
    internal[3].valid2 = false;
    test::WriteItemTable(t, tables::kItems, internal);
    test::WriteItemTable(t, tables::kCsItems, {{u"00001100001"_qs}});
    test::WriteDirectoryTable(t, tables::kDirectory,
                              {{u"《刑法》"_qs}, {u"《刑法》单项选择题"_qs, u"\\yibanti\\100011.mmd"_qs}});
    test::WriteDirectoryTable(t, tables::kCsDirectory,
                              {{u"模拟试卷一"_qs}, {u"试卷一 单项选择题"_qs, u"\\moniti\\000011.mmd"_qs}});
  }
  QList<SearchHit> search(const QString& query) {
    QuestionSearch s;
    return s.search(t.env, test::IndexOf(internal), query);
  }
};

}  // namespace

TEST(SearchWordsTest, BlanksSeparateQuotesKeep) {
  EXPECT_EQ(SearchWords(u"正当防卫  甲\u3000乙"_qs), (QStringList{u"正当防卫"_qs, u"甲"_qs, u"乙"_qs}));
  EXPECT_EQ(SearchWords(u"\"合同 纠纷\" 甲"_qs), (QStringList{u"合同 纠纷"_qs, u"甲"_qs}));
  EXPECT_EQ(SearchWords(u"“合同\u3000纠纷”乙"_qs), (QStringList{u"合同 纠纷"_qs, u"乙"_qs}));
  // An open quote runs to the end.
  EXPECT_EQ(SearchWords(u"甲 \"乙 丙"_qs), (QStringList{u"甲"_qs, u"乙 丙"_qs}));
  EXPECT_EQ(SearchWords(u"ＡＢＣ１２３ Abc"_qs), (QStringList{u"abc123"_qs, u"abc"_qs}));
  EXPECT_TRUE(SearchWords(u"  \u3000 \"\" "_qs).isEmpty());
}

TEST(SearchWordsTest, FoldKeepsPlaces) {
  EXPECT_EQ(FoldForSearch(u"Ａ．正当\r\n防卫\u3000１Ｂb"_qs), u"a.正当防卫 1bb"_qs);
}

TEST_F(Known, AWordInTheStemAndOneSplitByALineBreak) {
  const QList<SearchHit> hits = search(u"正当防卫"_qs);
  // The hidden question 4 is not searched; the paper comes after the banks.
  ASSERT_EQ(IdsOf(hits), (QStringList{u"10001100001"_qs, u"10001100002"_qs, u"00001100001"_qs}));
  EXPECT_EQ(hits[0].bank, u"《刑法》单项选择题"_qs);
  EXPECT_EQ(hits[0].line, u"根据《刑法》，正当防卫的成立条件是(      )。"_qs);
  EXPECT_EQ(hits[0].marks, (QList<TextMark>{{7, 4}}));
  EXPECT_EQ(hits[1].line, u"甲某在路上遇到乙，正当防卫过当的(      )。"_qs);
  EXPECT_EQ(hits[1].marks, (QList<TextMark>{{9, 4}}));
  EXPECT_EQ(hits[2].bank, u"试卷一 单项选择题"_qs);
  EXPECT_EQ(hits[2].line, u"试卷中的正当防卫问题(      )。"_qs);
  EXPECT_EQ(MarkedLine(hits[0], u"【"_qs, u"】"_qs), u"根据《刑法》，【正当防卫】的成立条件是(      )。"_qs);
}

TEST_F(Known, AllWordsMustOccur) {
  const QList<SearchHit> hits = search(u"正当防卫 过当"_qs);
  ASSERT_EQ(IdsOf(hits), QStringList{u"10001100002"_qs});
  // Marks that touch become one.
  EXPECT_EQ(hits[0].marks, (QList<TextMark>{{9, 6}}));
  EXPECT_TRUE(search(u"正当防卫 不存在的词"_qs).isEmpty());
}

TEST_F(Known, AQuotedWordStandsAsItIs) {
  const QList<SearchHit> quoted = search(u"\"合同 纠纷\""_qs);
  ASSERT_EQ(IdsOf(quoted), QStringList{u"10001100003"_qs});
  EXPECT_EQ(quoted[0].line, u"A．合同 纠纷"_qs);
  EXPECT_EQ(quoted[0].marks, (QList<TextMark>{{2, 5}}));
  EXPECT_TRUE(search(u"\"纠纷 合同\""_qs).isEmpty());
  // The same words unquoted: both occur, the first place is in the stem.
  const QList<SearchHit> loose = search(u"纠纷 合同"_qs);
  ASSERT_EQ(IdsOf(loose), QStringList{u"10001100003"_qs});
  EXPECT_EQ(loose[0].line, u"丙与丁的纠纷(      )。"_qs);
  EXPECT_EQ(loose[0].marks, (QList<TextMark>{{4, 2}}));
}

TEST_F(Known, WidthFormsMatchEachOther) {
  for (const QString& q : {u"abc公司"_qs, u"ＡＢＣ公司"_qs, u"Abc公司"_qs}) {
    const QList<SearchHit> hits = search(q);
    ASSERT_EQ(IdsOf(hits), QStringList{u"10001100001"_qs}) << q.toStdString();
    EXPECT_EQ(hits[0].line, u"B．ＡＢＣ公司"_qs);
    EXPECT_EQ(hits[0].marks, (QList<TextMark>{{2, 5}}));
  }
  const QList<SearchHit> digits = search(u"123元"_qs);
  ASSERT_EQ(IdsOf(digits), QStringList{u"10001100002"_qs});
  EXPECT_EQ(digits[0].line, u"A．罚金１２３元"_qs);
  EXPECT_EQ(digits[0].marks, (QList<TextMark>{{4, 4}}));
}

TEST_F(Known, AWordInTheNoteOnlyAndNotInTheProviderBlock) {
  const QList<SearchHit> note = search(u"独有的注释词语"_qs);
  ASSERT_EQ(IdsOf(note), QStringList{u"10001100001"_qs});
  EXPECT_EQ(note[0].line, u"[注释：]独有的注释词语"_qs);
  EXPECT_EQ(note[0].marks, (QList<TextMark>{{5, 7}}));
  // The answer field is searched as well.
  EXPECT_EQ(IdsOf(search(u"第20条"_qs)), (QStringList{u"10001100001"_qs, u"10001100002"_qs, u"00001100001"_qs}));
  EXPECT_TRUE(search(u"隐藏词语"_qs).isEmpty());
  EXPECT_TRUE(search(u"被隐藏"_qs).isEmpty());
}

TEST_F(Known, ALongLineIsCutAroundTheWord) {
  const QList<SearchHit> hits = search(u"目标词"_qs);
  ASSERT_EQ(IdsOf(hits), QStringList{u"10001100005"_qs});
  EXPECT_EQ(hits[0].line, u"…"_qs + QString(20, u'甲') + u"目标词"_qs + QString(37, u'乙') + u"…"_qs);
  EXPECT_EQ(hits[0].marks, (QList<TextMark>{{21, 3}}));
}

TEST_F(Known, NoWordsNoHits) {
  EXPECT_TRUE(search(QString()).isEmpty());
  EXPECT_TRUE(search(u"   "_qs).isEmpty());
  EXPECT_TRUE(search(u"不存在的词"_qs).isEmpty());
}

TEST_F(Known, AMissingBankFileIsNamed) {
  QuestionSearch s;
  s.search(t.env, test::IndexOf(internal), u"甲"_qs);
  EXPECT_EQ(s.questionCount(), 6);
  EXPECT_EQ(s.unreadableFiles(), QStringList{t.path(u"\\yibanti\\100012.mmd"_qs)});
}

TEST_F(Known, AChangedFileIsReadAgain) {
  QuestionSearch s;
  const ItemIndex index = test::IndexOf(internal);
  EXPECT_EQ(IdsOf(s.search(t.env, index, u"正当防卫"_qs)).size(), 3);
  EXPECT_TRUE(s.search(t.env, index, u"新的词语"_qs).isEmpty());
  t.writeGbk(u"\\moniti\\00001.mmd"_qs,
             u"\r\n●1●试卷中的新的词语(      )\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁■答案：A参见《刑法》第20条\r\n"_qs);
  EXPECT_EQ(IdsOf(s.search(t.env, index, u"新的词语"_qs)), QStringList{u"00001100001"_qs});
  EXPECT_EQ(IdsOf(s.search(t.env, index, u"正当防卫"_qs)), (QStringList{u"10001100001"_qs, u"10001100002"_qs}));
  // A question hidden in the index is gone from the next search.
  ItemIndex fewer = index;
  fewer[0].valid2 = false;
  EXPECT_EQ(IdsOf(s.search(t.env, fewer, u"正当防卫"_qs)), QStringList{u"10001100002"_qs});
}

TEST(DemoSearchTest, TheDemonstrationBanks) {
  if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "no demonstration data built";
  test::TestEnv t(test::DemoDataDir());
  const QList<SearchHit> hits = SearchQuestions(t.env, u"正当防卫"_qs);
  ASSERT_EQ(IdsOf(hits), (QStringList{u"10001100003"_qs, u"00002200005"_qs}));
  EXPECT_EQ(hits[0].line, u"B．正当防卫"_qs);
  EXPECT_EQ(hits[0].marks, (QList<TextMark>{{2, 4}}));
  EXPECT_EQ(hits[1].line, u"根据《示例刑法》，下列关于正当防卫的说法，正确的有(      )。"_qs);
  EXPECT_EQ(hits[1].marks, (QList<TextMark>{{13, 4}}));
  EXPECT_EQ(hits[1].bank, u"试卷二 多项选择题"_qs);
  EXPECT_EQ(IdsOf(SearchQuestions(t.env, u"防卫 过当"_qs)), (QStringList{u"10001100003"_qs, u"00002200005"_qs}));
  EXPECT_EQ(IdsOf(SearchQuestions(t.env, u"罪刑法定 类推"_qs)), QStringList{u"10001100001"_qs});
  EXPECT_TRUE(SearchQuestions(t.env, u"正当防卫 罪刑法定"_qs).isEmpty());
}

TEST_F(Known, TheProgressIsToldForEveryBankFile) {
  // Told from the first search on, the one that reads every file, though
  // that search also sets the program folder.
  QuestionSearch s;
  QList<std::pair<qsizetype, qsizetype>> told;
  s.progress = [&told](qsizetype done, qsizetype total) { told.append({done, total}); };
  s.search(t.env, test::IndexOf(internal), u"甲"_qs);
  EXPECT_EQ(told, (QList<std::pair<qsizetype, qsizetype>>{{1, 3}, {2, 3}, {3, 3}}));
}
