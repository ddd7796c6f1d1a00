// The sample papers of the demonstration data through the paper window: the
// whole report of each, and the faulty one mended with the shipped pairs.

#include <gtest/gtest.h>

#include <QComboBox>
#include <QPushButton>

#include "papers/check_result_window.h"
#include "papers/pair_list_window.h"
#include "papers/paper_check.h"
#include "papers/paper_file.h"
#include "papers/paper_window.h"
#include "support/printers.h"
#include "support/test_env.h"
#include "support/window_checks.h"

namespace mj {
namespace {

const QString kMissingFreeChoice =
    u"    没有“三、任意选择题”字样\r\n注意：由于本程序要适应现存的各种格式，所以你返回后要检查一下原文本是否与该统计结果相符。如果不符，即如果只有单选题和多选题而没有任意选择题，只要下面提示已经通过检验，则也是可以开始做题的。但是你的这个文件内不能只有后面的试题类型而没有前面的试题类型，即不能只有多选题或任意选择题而没有单选题。\r\n"_qs;

class DemoPapers : public ::testing::Test {
 protected:
  void SetUp() override {
    if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "no demonstration data built";
    te = std::make_unique<test::TestEnv>(test::DemoDataDir());
  }
  PaperCheckResult check(const QString& name) {
    const PaperFile f = ReadPaper(te->path(u"\\外部题库\\"_qs + name));
    EXPECT_TRUE(f.ok) << name.toStdString();
    EXPECT_EQ(f.encoding, PaperEncoding::Gbk);
    return RunPaperCheck(te->env, f.text, state);
  }

  std::unique_ptr<test::TestEnv> te;
  PaperState state;
};

TEST_F(DemoPapers, TheInlineSamplePasses) {
  const PaperCheckResult r = check(u"外部题库试样1.txt"_qs);
  EXPECT_EQ(r.report,
            u"\r\n共有3道单选题，2道多选题，1道任选题，6个答案。\r\n"
            "\r\n单选题编号从1到3共3道=3道。检验通过\r\n"
            "\r\n多选题编号从4到5共2道=2道。检验通过\r\n"
            "\r\n任选题编号从6到6共1道=1道。检验通过\r\n"
            "\r\n各个试题详细检验结果汇报：\r\n\r\n"
            "一、单项选择题\r\n第1题：通过检验。\r\n第2题：通过检验。\r\n第3题：通过检验。\r\n\r\n"
            "二、多项选择题\r\n第4题：通过检验。\r\n第5题：通过检验。\r\n\r\n"
            "三、任意选择题\r\n第6题：通过检验。\r\n\r\n\r\n"_qs);
  EXPECT_TRUE(r.passed);
  EXPECT_EQ(state.OutTiMode, 1);
  EXPECT_EQ(state.OutTiNum[2][1], 4);
  EXPECT_EQ(state.OutTiNum[3][2], 6);
}

TEST_F(DemoPapers, TheSampleWithSeparateAnswersPasses) {
  const PaperCheckResult r = check(u"外部题库试样2.txt"_qs);
  EXPECT_EQ(r.report,
            u"\r\n共有3道单选题，2道多选题，1道任选题，6个答案。\r\n"
            "\r\n单选题编号从1到3共3道=3道。检验通过\r\n"
            "\r\n多选题编号从1到2共2道=2道。检验通过\r\n"
            "\r\n任选题编号从1到1共1道=1道。检验通过\r\n"
            "\r\n单选题答案编号从1到3共3道=3道。检验通过\r\n"
            "\r\n多选题答案编号从1到2共2道=2道。检验通过\r\n"
            "\r\n任选题答案编号从1到1共1道=1道。检验通过\r\n"
            "\r\n各个试题详细检验结果汇报：\r\n\r\n"
            "一、单项选择题\r\n第1题：通过检验。\r\n第2题：通过检验。\r\n第3题：通过检验。\r\n\r\n"
            "二、多项选择题\r\n第1题：通过检验。\r\n第2题：通过检验。\r\n\r\n"
            "三、任意选择题\r\n第1题：通过检验。\r\n\r\n\r\n"_qs);
  EXPECT_TRUE(r.passed);
  EXPECT_EQ(state.OutTiMode, 2);
  for (int t = 1; t <= 3; ++t) EXPECT_FALSE(state.OutDaAnText[t].isEmpty()) << t;
}

const QString kFaultyReport = kMissingFreeChoice +
                              u"\r\n共有3道单选题，2道多选题，4个答案。\r\n"
                              "\r\n单选题编号从1到4共4道不等于3道。检验未通过。\r\n"
                              "\r\n多选题编号从1到2共2道=2道。检验通过\r\n"
                              "提示：单选题没有第3．题。\r\n"
                              "但3+2并不等于4（答案数），请你检查一下“答案：”字样和“A．”“B．”“C．”“D．”等字样。\r\n"
                              "提示：单选题有3道，而答案却有2道。\r\n"
                              "\r\n各个试题详细检验结果汇报：\r\n\r\n"
                              "一、单项选择题\r\n第1题：无答案无参见法条，未通过检验。\r\n第2题：通过检验。\r\n×没有第3题的试题编号。\r\n第4题：通过检验。\r\n\r\n"
                              "二、多项选择题\r\n第1题：未注册的法律名《刑法示例》，未通过检验。\r\n第2题：未注册的法律名《合同规定》，未通过检验。\r\n\r\n\r\n"_qs;

TEST_F(DemoPapers, TheFaultySampleShowsEachFault) {
  const PaperCheckResult r = check(u"外部题库试样3（含错误）.txt"_qs);
  EXPECT_EQ(r.report, kFaultyReport);
  EXPECT_FALSE(r.passed);
  EXPECT_EQ(r.lawNames, (QStringList{u"《刑法示例》"_qs, u"《合同规定》"_qs}));
}

TEST_F(DemoPapers, TheFaultySampleMendedWithTheShippedPairs) {
  Form10 form(te->env, state);
  ASSERT_TRUE(form.loadPaper(te->path(u"\\外部题库\\外部题库试样3（含错误）.txt"_qs)));
  form.show();
  form.Command1[0]->click();
  Form11* result = form.resultWindow();
  EXPECT_EQ(result->report(), kFaultyReport);
  test::CheckOnScreen(result, test::kSmallScreen, u"check_result_window_demo"_qs);
  // 《刑法示例》 has a pair in the shipped list already: only 《合同规定》 goes in.
  result->Command2->click();
  ASSERT_EQ(te->boxes.shown().size(), 1);
  EXPECT_EQ(te->boxes.shown()[0].text, u"执行完毕，共加入1项。"_qs);
  Form12* batch = form.batchWindow();
  EXPECT_EQ(batch->entries().last().text, u"9   [《合同规定》]-->[]"_qs);
  // The shipped ticked pairs put the wrong name right.
  form.Command2->click();
  batch->Command1->click();
  EXPECT_TRUE(form.paperText().contains(u"[参见：]《示例刑法》第23条"_qs));
  EXPECT_FALSE(form.paperText().contains(u"《刑法示例》"_qs));
  EXPECT_FALSE(form.Command1[4]->isEnabled());
  form.Command1[0]->click();
  EXPECT_TRUE(result->report().contains(u"第1题：通过检验。\r\n第2题：未注册的法律名《合同规定》，未通过检验。\r\n"_qs));
  EXPECT_EQ(result->Combo1->count(), 1);
  batch->hide();
  result->hide();
  form.hide();
}

}  // namespace
}  // namespace mj
