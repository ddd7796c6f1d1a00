#include "papers/question_editor.h"

#include <gtest/gtest.h>

#include "bank/bank_text.h"
#include "bank/tables.h"
#include "platform/dbftable.h"
#include "platform/textfile.h"
#include "support/item_rows.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

const QString kBank =
    u"示例题库\r\n●1●甲的行为属于什么行为呢(      )\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁■答案：B参见《示例刑法》第3条\r\n"
    u"[注释：]旧注释[注于：]2026年10月8日\r\n●2●第二题的题干在这里(      )\r\nA．一\r\nB．二\r\nC．三\r\nD．四■答案：AC参见"
    u"《示例刑法》第5条、\r\n第6条\r\n"_qs;

class EditorTest : public ::testing::Test {
 protected:
  EditorTest() {
    te.clock.set(QDateTime(QDate(2026, 11, 21), QTime(9, 5)));
    te.writeGbk(u"\\yibanti\\100011.mmd"_qs, kBank);
    test::TableRow one = test::plainRow(u"10001100001"_qs);
    one.story = u"2026-11-01 10:00   B"_qs;
    one.answer = u"B"_qs;
    one.aboutlaw = u"《示例刑法》3．"_qs;
    test::TableRow free = test::plainRow(u"10001300001"_qs);
    free.itemtype = 3;
    test::writeItems(te, tables::kItems, {one, test::plainRow(u"10001100002"_qs), free});
    te.mkdir(u"\\ini"_qs);
  }
  QuestionParts edited() const {
    QuestionParts p = SplitQuestion(GetTxtWillAlt(te.env, u"10001100001"_qs));
    p.answer = u"A"_qs;
    p.citations = u"《示例刑法》第4条"_qs;
    p.note = u"新注释"_qs;
    return p;
  }

  test::TestEnv te;
};

TEST_F(EditorTest, TheQuestionTakenApart) {
  const QString text = GetTxtWillAlt(te.env, u"10001100001"_qs);
  EXPECT_EQ(text, u"甲的行为属于什么行为呢(      )。\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁\r\n答案：B参见《示例刑法》第3条\r\n"
                  u"[注释：]旧注释\r\n[注于：]2026年10月8日\r\n"_qs);
  const QuestionParts p = SplitQuestion(text);
  EXPECT_EQ(p.stem, u"甲的行为属于什么行为呢(      )。"_qs);
  EXPECT_EQ(p.options[0], u"甲"_qs);
  EXPECT_EQ(p.options[1], u"乙"_qs);
  EXPECT_EQ(p.options[2], u"丙"_qs);
  EXPECT_EQ(p.options[3], u"丁"_qs);
  EXPECT_EQ(p.answer, u"B"_qs);
  EXPECT_EQ(p.citations, u"《示例刑法》第3条"_qs);
  EXPECT_EQ(p.note, u"旧注释"_qs);
  // Line ends inside the citations go.
  const QuestionParts two = SplitQuestion(GetTxtWillAlt(te.env, u"10001100002"_qs));
  EXPECT_EQ(two.answer, u"AC"_qs);
  EXPECT_EQ(two.citations, u"《示例刑法》第5条、第6条"_qs);
  EXPECT_EQ(two.note, QString());
  // A question that is not there gives nothing.
  EXPECT_EQ(GetTxtWillAlt(te.env, u"10001100009"_qs).isEmpty() ||
                SplitQuestion(GetTxtWillAlt(te.env, u"10001100009"_qs)).answer.isEmpty(),
            true);
  EXPECT_EQ(GetTxtWillAlt(te.env, u"20001100001"_qs), QString());
}

TEST_F(EditorTest, TheNoteLosesItsDate) {
  EXPECT_EQ(CutNoteDate(u"旧注释[注于：]2026年10月8日"_qs), u"旧注释"_qs);
  EXPECT_EQ(CutNoteDate(u"没有日期"_qs), u"没有日期"_qs);
}

TEST_F(EditorTest, TheCheckAndItsMessages) {
  QuestionParts p = edited();
  EXPECT_EQ(CheckQuestionParts(p), QString());
  // A stem of nine characters fails, one of ten passes (blanks trimmed).
  p.stem = u" 123456789 "_qs;
  EXPECT_EQ(CheckQuestionParts(p), u"题干太短。"_qs);
  p.stem = u"1234567890"_qs;
  EXPECT_EQ(CheckQuestionParts(p), QString());
  const QStringList messages = {u"选项A不能为空。"_qs, u"选项B不能为空。"_qs, u"选项C不能为空。"_qs, u"选项D不能为空。"_qs};
  for (int i = 0; i < 4; ++i) {
    QuestionParts q = p;
    q.options[i] = u"  "_qs;
    EXPECT_EQ(CheckQuestionParts(q), messages[i]);
  }
  // The answer counts by its letters A to D.
  p.answer = u"ABX"_qs;
  EXPECT_EQ(CheckQuestionParts(p), QString());
  p.answer = u"xyz"_qs;
  EXPECT_EQ(CheckQuestionParts(p), u"不能没有答案。"_qs);
  p.answer = u"C"_qs;
  p.citations = u"刑法第3条"_qs;
  EXPECT_EQ(CheckQuestionParts(p), u"不能没有参见法条。"_qs);
}

TEST_F(EditorTest, AddingAndRemovingCitations) {
  bool added = false;
  QString c = AddCitation(QString(), u" 《示例刑法》 "_qs, 12, &added);
  EXPECT_EQ(c, u"《示例刑法》第12条"_qs);
  EXPECT_TRUE(added);
  c = AddCitation(c, u"《合同示例规则》"_qs, 3, &added);
  EXPECT_EQ(c, u"《示例刑法》第12条《合同示例规则》第3条"_qs);
  // A citation already there is not added twice.
  EXPECT_EQ(AddCitation(c, u"《示例刑法》"_qs, 12, &added), c);
  EXPECT_FALSE(added);
  c = RemoveLastCitation(c);
  EXPECT_EQ(c, u"《示例刑法》第12条"_qs);
  // One citation: the box is emptied.
  EXPECT_EQ(RemoveLastCitation(c), QString());
  EXPECT_EQ(RemoveLastCitation(u"第3条"_qs), u"第3条"_qs);
}

TEST_F(EditorTest, TheBuiltQuestion) {
  const BuiltQuestion b = OkItem(edited(), u"10001100001"_qs, te.env.today(), std::nullopt);
  EXPECT_EQ(b.bankText,
            u"甲的行为属于什么行为呢(      )。\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁■答案：A参见《示例刑法》第4条\r\n"
            u"[注释：]新注释[注于：]2026年11月21日■\r\n"_qs);
  EXPECT_EQ(b.postText, QString());
  // Without a note; a stem that ends in a line end gets no second one.
  QuestionParts p = edited();
  p.note.clear();
  p.stem = u"\r\n甲的行为属于什么行为呢\r\n\r\n"_qs;
  p.citations = u"《示例刑法》第4条\r\n第5条"_qs;
  EXPECT_EQ(OkItem(p, u"10001100001"_qs, te.env.today(), std::nullopt).bankText,
            u"甲的行为属于什么行为呢\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁■答案：A参见《示例刑法》第4条第5条\r\n"_qs);
}

TEST_F(EditorTest, ThePostText) {
  const ProviderInfo who{u"小明"_qs, u"12345"_qs, u"a@example.org"_qs, u"https://example.org/"_qs};
  const BuiltQuestion b = OkItem(edited(), u"10001100001"_qs, te.env.today(), who);
  EXPECT_EQ(b.bankText,
            u"甲的行为属于什么行为呢(      )。\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁■答案：A参见《示例刑法》第4条\r\n"
            u"[注释：]新注释[注于：]2026年11月21日■\r\n"_qs);
  EXPECT_EQ(b.postText,
            u"甲的行为属于什么行为呢(      )。\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁\r\n[本题ID及提供者有关信息：]\r\n"
            u"[本题标识ID：][10001100001]\r\n[提供者姓名或昵称：]小明\r\n[提供者QQ号码：]12345\r\n"
            u"[提供者E_mail：]a@example.org\r\n[提供者主页：]https://example.org/\r\n[提供日期：]2026年11月21日"
            u"■答案：A参见《示例刑法》第4条\r\n[注释：]新注释[注于：]2026年11月21日■\r\n"_qs);
}

TEST_F(EditorTest, TheTableRow) {
  bool ok = false;
  const std::optional<ItemRow> row = F9AltDbf(te.env, u"10001100001"_qs, u" 《示例刑法》第4条、第6-7条 "_qs, u"AC"_qs, &ok);
  EXPECT_TRUE(ok);
  ASSERT_TRUE(row);
  // The record is reset, so that the question is due again.
  EXPECT_EQ(row->story, u"no"_qs);
  EXPECT_EQ(row->answer, u"AC"_qs);
  EXPECT_EQ(row->aboutlaw, u"《示例刑法》4．《示例刑法》6．《示例刑法》7．"_qs);
  EXPECT_EQ(row->itemtype, 2);
  EXPECT_EQ(row->itemid, u"10001100001"_qs);
  const DbfTable t = DbfTable::open(te.path(u"\\dbf\\items.mmd"_qs));
  EXPECT_EQ(t.text(0, u"answer"_qs), u"AC"_qs);
  EXPECT_EQ(t.isNull(0, u"answer"_qs), false);
  // A free choice answered with one letter stays a free choice.
  EXPECT_EQ(F9AltDbf(te.env, u"10001300001"_qs, u"《示例刑法》第1条"_qs, u"A"_qs)->itemtype, 3);
  // One letter: a single choice.
  EXPECT_EQ(F9AltDbf(te.env, u"10001100002"_qs, u"《示例刑法》第1条"_qs, u"D"_qs)->itemtype, 1);
  // A question that is not in the table changes nothing.
  EXPECT_FALSE(F9AltDbf(te.env, u"10001100009"_qs, u"《示例刑法》第1条"_qs, u"D"_qs, &ok));
  EXPECT_TRUE(ok);
  test::TestEnv bare;
  EXPECT_FALSE(F9AltDbf(bare.env, u"10001100001"_qs, u"x"_qs, u"A"_qs, &ok));
  EXPECT_FALSE(ok);
}

TEST_F(EditorTest, SavingWritesTheBlockTheRowAndThePost) {
  const ProviderInfo who{u"小明"_qs, QString(), QString(), QString()};
  const SaveOutcome out = SaveEditedQuestion(te.env, u"10001100001"_qs, edited(), who);
  EXPECT_TRUE(out.saved);
  EXPECT_EQ(out.error, QString());
  const QString file = te.readGbk(u"\\yibanti\\100011.mmd"_qs);
  const QString block = OkItem(edited(), u"10001100001"_qs, te.env.today(), std::nullopt).bankText;
  EXPECT_EQ(file.count(u"\r\n●1●"_qs + block + u"●2●"_qs), 1) << file.toStdString();
  // The other question is as it was, and reads as before.
  EXPECT_EQ(SplitQuestion(GetTxtWillAlt(te.env, u"10001100002"_qs)).citations, u"《示例刑法》第5条、第6条"_qs);
  EXPECT_EQ(SplitQuestion(GetTxtWillAlt(te.env, u"10001100001"_qs)).note, u"新注释"_qs);
  ASSERT_TRUE(out.row);
  EXPECT_EQ(out.row->answer, u"A"_qs);
  EXPECT_EQ(out.row->aboutlaw, u"《示例刑法》4．"_qs);
  // The post file and the clipboard text.
  EXPECT_TRUE(out.clipboard.startsWith(u"甲的行为"_qs));
  EXPECT_TRUE(out.clipboard.contains(u"[提供者姓名或昵称：]小明\r\n"_qs));
  EXPECT_FALSE(out.clipboard.contains(u"●"_qs));
  EXPECT_EQ(te.readGbk(u"\\ini\\交流共进.txt"_qs), u"●"_qs + out.clipboard);
  // A second post is appended.
  SaveEditedQuestion(te.env, u"10001100001"_qs, edited(), who);
  EXPECT_EQ(te.readGbk(u"\\ini\\交流共进.txt"_qs), u"●"_qs + out.clipboard + u"●"_qs + out.clipboard);
}

TEST_F(EditorTest, ABankFileThatCannotBeWrittenIsSaid) {
  test::TestEnv bare;
  const SaveOutcome out = SaveEditedQuestion(bare.env, u"10001100001"_qs, edited(), std::nullopt);
  EXPECT_FALSE(out.saved);
  EXPECT_EQ(out.error, u"题库文件"_qs + BankFilePath(bare.env, u"10001100001"_qs) + u"无法写入，本题没有保存。"_qs);
}

TEST_F(EditorTest, TheProviderFile) {
  EXPECT_EQ(ReadProvider(te.env), ProviderInfo{});
  ASSERT_TRUE(WriteProvider(te.env, {u"小明"_qs, u"12345"_qs, u"a@example.org"_qs, u"https://example.org/"_qs}));
  EXPECT_EQ(ReadBytes(te.path(u"\\ini\\YourInfo.ini"_qs)),
            ToGbk(u"\"小明\",\"12345\",\"a@example.org\",\"https://example.org/\"\r\n"_qs));
  EXPECT_EQ(ReadProvider(te.env),
            (ProviderInfo{u"小明"_qs, u"12345"_qs, u"a@example.org"_qs, u"https://example.org/"_qs}));
  EXPECT_EQ(GetItemInfo(ReadProvider(te.env)), u"小明12345a@example.orghttps://example.org/"_qs);
  EXPECT_EQ(GetItemInfo({}), QString());
  // A file with fewer values gives the rest empty.
  te.writeGbk(u"\\ini\\YourInfo.ini"_qs, u"\"只有名字\"\r\n"_qs);
  EXPECT_EQ(ReadProvider(te.env), (ProviderInfo{u"只有名字"_qs, {}, {}, {}}));
}

TEST(ChineseDate, PlainNumbers) { EXPECT_EQ(ChineseDate(QDate(2027, 1, 5)), u"2027年1月5日"_qs); }

}  // namespace
}  // namespace mj
