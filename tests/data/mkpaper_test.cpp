// The tool that turns a JSON file of examination questions into a paper, and
// the real sample paper the data ships, which is its output.

#include <gtest/gtest.h>

#include <QFile>

#include "paper_json.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

using tools::JsonPaper;
using tools::PaperFromJson;

QByteArray Json(const QString& text) { return text.toUtf8(); }

TEST(MkPaper, TurnsEachQuestionIntoStemOptionsAndAnswerLine) {
  const JsonPaper p = PaperFromJson(
      Json(uR"([{"instruction":"x","question":"甲的行为构成何罪?A:盗窃罪;B:诈骗罪;C:抢夺罪;D:无罪。","answer":"正确答案:B。"},
               {"question":"下列说法正确的是:A:一;B:二;C:三;D:四","answer":"正确答案:D"}])"_qs),
      {u"真题（示例）"_qs, u"来源：测试"_qs});
  EXPECT_EQ(p.error, u""_qs);
  EXPECT_EQ(p.questions, 2);
  EXPECT_TRUE(p.warnings.isEmpty());
  EXPECT_EQ(p.text, u"真题（示例）\r\n来源：测试\r\n一、单项选择题\r\n"
                    "1．甲的行为构成何罪?\r\nA．盗窃罪\r\nB．诈骗罪\r\nC．抢夺罪\r\nD．无罪\r\n[答案：]B\r\n"
                    "2．下列说法正确的是:\r\nA．一\r\nB．二\r\nC．三\r\nD．四\r\n[答案：]D\r\n"_qs);
}

TEST(MkPaper, TextsThatWouldBreakTheLayoutAreMadeHarmless) {
  const JsonPaper p = PaperFromJson(
      Json(uR"([{"question":"第一行\n2．第二行里有A．和[答案：]A:甲•乙;B:乙;C:丙;D:丁。","answer":"正确答案:A。"}])"_qs), {});
  EXPECT_EQ(p.error, u""_qs);
  // A line of the stem never begins like a question; an option marker or an
  // answer tag inside a text loses its meaning; a character outside GBK gets
  // its stand-in. Each change is listed.
  EXPECT_EQ(p.text, u"一、单项选择题\r\n1．第一行\r\n　2．第二行里有A.和［答案：］\r\nA．甲·乙\r\nB．乙\r\nC．丙\r\nD．丁\r\n[答案：]A\r\n"_qs);
  EXPECT_EQ(p.warnings, (QStringList{u"第1题：“A．”改为“A.”"_qs, u"第1题：[答案：]改为全角括号"_qs,
                                     u"第1题：字符U+2022改为“·”"_qs}));
}

TEST(MkPaper, InputThatDoesNotFitIsRefusedWithItsReason) {
  EXPECT_TRUE(PaperFromJson("[{", {}).error.startsWith(u"JSON 格式错误（第2字节）："_qs));
  EXPECT_EQ(PaperFromJson("{}", {}).error, u"JSON 文件应当是一个数组，每项一道题"_qs);
  EXPECT_EQ(PaperFromJson("[]", {}).error, u"JSON 文件里没有题目"_qs);
  EXPECT_EQ(PaperFromJson(Json(uR"([{"question":"题A:1;B:2;C:3;D:4","answer":"正确答案:A"},{"question":"题"}])"_qs), {}).error,
            u"第2题：缺少文字字段 question 或 answer"_qs);
  EXPECT_EQ(PaperFromJson(Json(uR"([{"question":"题A:1;C:3;B:2;D:4","answer":"正确答案:A"}])"_qs), {}).error,
            u"第1题：题目中找不到按顺序排列的选项“A:”“;B:”“;C:”“;D:”"_qs);
  EXPECT_EQ(PaperFromJson(Json(uR"([{"question":"A:1;B:2;C:3;D:4","answer":"正确答案:A"}])"_qs), {}).error,
            u"第1题：没有题干"_qs);
  EXPECT_EQ(PaperFromJson(Json(uR"([{"question":"题A:1;B:2;C:3;D:4","answer":"正确答案:AB"}])"_qs), {}).error,
            u"第1题：答案“正确答案:AB”不是A到D中的一个字母"_qs);
  EXPECT_TRUE(PaperFromJson("[]", {}).text.isEmpty());
}

// The file under data/ is the tool's output on the real file, in the form of
// the data sources (UTF-8, LF).
TEST(MkPaper, TheShippedRealPaperIsTheToolsOutput) {
  const QString real = test::RealDataDir();
  if (real.isEmpty()) GTEST_SKIP() << "no real data";
  QFile json(real + u"/questions/lawbench-3-6.json"_qs);
  if (!json.open(QIODevice::ReadOnly)) GTEST_SKIP() << "no lawbench-3-6.json";
  const QByteArray bytes = json.readAll();
  const JsonPaper counted = PaperFromJson(bytes, {});
  ASSERT_EQ(counted.error, u""_qs);
  EXPECT_EQ(counted.questions, 500);
  JsonPaper p = PaperFromJson(bytes, tools::LawBenchHeader(counted.questions));
  EXPECT_EQ(p.warnings, (QStringList{u"第145题：字符U+201E改为“。”"_qs, u"第150题：字符U+2022改为“·”"_qs}));
  QString source = p.text;
  source.replace(u"\r\n"_qs, u"\n"_qs);
  QFile shipped(QStringLiteral(MJ_SOURCE_DIR) + u"/data/外部题库/司法考试真题500道（LawBench）.txt"_qs);
  ASSERT_TRUE(shipped.open(QIODevice::ReadOnly));
  EXPECT_TRUE(shipped.readAll() == source.toUtf8());
  EXPECT_TRUE(p.text.startsWith(u"国家司法考试真题·单项选择题（共500道）\r\n来源：LawBench"_qs));
  EXPECT_EQ(FromGbk(ToGbk(p.text)), p.text);
}

}  // namespace
}  // namespace mj
