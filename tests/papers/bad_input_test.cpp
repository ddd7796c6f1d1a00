// Papers and pair files that are not what they should be: the check and the
// windows show what they can, nothing crashes, nothing on disk is changed.

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QPlainTextEdit>
#include <QPushButton>

#include "papers/check_result_window.h"
#include "papers/paper_check.h"
#include "papers/paper_file.h"
#include "papers/paper_window.h"
#include "papers_fixture.h"
#include "platform/textfile.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

class BadPapers : public ::testing::Test {
 protected:
  BadPapers() {
    test::WriteStandardLawList(te);
    te.mkdir(u"\\外部题库"_qs);
  }
  QString writeBytes(const QString& name, const QByteArray& bytes) {
    const QString path = te.path(u"\\外部题库\\"_qs + name);
    EXPECT_TRUE(WriteBytesAtomic(path, bytes));
    return path;
  }
  // Loads the file into the paper window and checks it; the file stays as
  // it was.
  QString checkInWindow(const QString& path) {
    const QByteArray before = ReadBytes(path);
    Form10 form(te.env, state);
    EXPECT_TRUE(form.loadPaper(path));
    form.Command1[0]->click();
    const QString report = form.resultWindow()->report();
    EXPECT_EQ(ReadBytes(path), before);
    form.resultWindow()->hide();
    return report;
  }

  test::TestEnv te;
  PaperState state;
};

TEST_F(BadPapers, APaperOfOneLine) {
  const QString report = checkInWindow(writeBytes(u"一行.txt"_qs, ToGbk(u"一、单项选择题"_qs)));
  // The heading is there, but no question: its section has no numbers, so
  // 0 counts as missing.
  EXPECT_EQ(report, u"    没有“二、多项选择题”字样\r\n    没有“三、任意选择题”字样\r\n"_qs +
                        u"注意：由于本程序要适应现存的各种格式，所以你返回后要检查一下原文本是否与该统计结果相符。如果不符，即如果只有单选题和多选题而没有任意选择题，只要下面提示已经通过检验，则也是可以开始做题的。但是你的这个文件内不能只有后面的试题类型而没有前面的试题类型，即不能只有多选题或任意选择题而没有单选题。\r\n"
                        "\r\n共有0个答案。\r\n"
                        "提示：单选题没有第0．题。\r\n"
                        "\r\n各个试题详细检验结果汇报：\r\n\r\n"
                        "一、单项选择题\r\n\r\n\r\n"_qs);
  EXPECT_EQ(state.OutTiText[1], u"一、单项选择题"_qs);
}

TEST_F(BadPapers, AnEmptyPaper) {
  const QString report = checkInWindow(writeBytes(u"空.txt"_qs, QByteArray()));
  EXPECT_TRUE(report.contains(u"原因：本文件中三种试题类型字样均没出现。"_qs));
}

TEST_F(BadPapers, NulBytesAndInvalidGbk) {
  QByteArray bytes = ToGbk(u"一、单项选择题\r\n1．题干"_qs);
  bytes.append(QByteArray("\x00\x00\xff\xfe\x80\x81\x00", 7));
  bytes.append(ToGbk(u"(      )\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁\r\n[答案：]A\r\n[参见：]《示例刑法》第1条\r\n"_qs));
  bytes.append(QByteArray("\xfe\xfe\xfe", 3));
  const QString report = checkInWindow(writeBytes(u"乱码.txt"_qs, bytes));
  EXPECT_TRUE(report.contains(u"\r\n共有1道单选题，1个答案。\r\n"_qs)) << report.toStdString();
  EXPECT_TRUE(report.contains(u"一、单项选择题\r\n第1题：通过检验。\r\n"_qs));
}

TEST_F(BadPapers, RandomBytes) {
  QByteArray bytes;
  quint32 x = 12345;
  for (int i = 0; i < 200000; ++i) {
    x = x * 1103515245u + 12345u;
    bytes.append(static_cast<char>(x >> 24));
  }
  const QString report = checkInWindow(writeBytes(u"随机.txt"_qs, bytes));
  EXPECT_TRUE(report.contains(u"原因：本文件中三种试题类型字样均没出现。"_qs));
}

TEST_F(BadPapers, StrayHugeNumbersDoNotMakeTheCheckRunForEver) {
  QStringList l = {u"一、单项选择题"_qs};
  l += test::InlineQuestion(1, u"A"_qs, u"《示例刑法》第1条"_qs);
  l += u"2000000000．这一行的编号大得离谱"_qs;
  QElapsedTimer clock;
  clock.start();
  const PaperCheckResult r = RunPaperCheck(te.env, test::Lines(l), state);
  EXPECT_LT(clock.elapsed(), 20000);
  EXPECT_TRUE(r.report.contains(u"单选题编号从1到2000000000共2000000000道不等于1道。检验未通过。"_qs));
  EXPECT_TRUE(r.report.contains(u"……（题号跨度过大，其余各题从略。）\r\n"_qs));
  EXPECT_EQ(state.OutTiNum[1][2], 2000000000);
}

TEST_F(BadPapers, ATenMegabytePaper) {
  // 48,000 questions of about 260 bytes in GBK: some 10 MB.
  QString text = u"一、单项选择题\r\n"_qs;
  const int n = 48000;
  for (int i = 1; i <= n; ++i)
    text += QString::number(i) +
            u"．根据《示例刑法》的规定，下列关于这一道很长的示例题目的说法，正确的是哪一项呢(      )\r\nA．第一个选项的内容\r\nB．第二个选项的内容\r\nC．第三个选项的内容\r\nD．第四个选项的内容\r\n[答案：]A\r\n[参见：]《示例刑法》第1条\r\n"_qs;
  const QString path = te.path(u"\\外部题库\\大.txt"_qs);
  ASSERT_TRUE(WritePaper(path, text, PaperEncoding::Gbk));
  EXPECT_GT(ReadBytes(path).size(), 10'000'000);
  const QString report = checkInWindow(path);
  EXPECT_TRUE(report.contains(u"\r\n共有48000道单选题，48000个答案。\r\n"_qs));
  EXPECT_TRUE(report.contains(u"\r\n单选题编号从1到48000共48000道=48000道。检验通过\r\n"_qs));
  EXPECT_TRUE(report.endsWith(u"第48000题：通过检验。\r\n\r\n\r\n"_qs));
}

}  // namespace
}  // namespace mj
