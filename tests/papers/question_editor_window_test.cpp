#include "papers/question_editor_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

#include "app/main_window.h"
#include "bank/bank_text.h"
#include "bank/tables.h"
#include "papers/law_list_widget.h"
#include "papers/provider_window.h"
#include "papers/text_box_widget.h"
#include "papers_fixture.h"
#include "platform/dbftable.h"
#include "platform/text_toolkit.h"
#include "platform/textfile.h"
#include "practice/answer_check.h"
#include "practice/answer_window.h"
#include "practice/directory.h"
#include "practice/directory_widget.h"
#include "practice/practice_frame_widget.h"
#include "support/item_rows.h"
#include "support/printers.h"
#include "support/test_env.h"
#include "support/window_checks.h"

namespace mj {
namespace {

const QString kBank =
    u"示例题库\r\n●1●甲的行为属于什么行为呢(      )\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁■答案：B参见《示例刑法》第3条\r\n"
    u"[注释：]旧注释[注于：]2026年10月8日\r\n●2●第二题的题干在这里(      )\r\nA．一\r\nB．二\r\nC．三\r\nD．四■答案：AC参见"
    u"《示例刑法》第5条\r\n"_qs;

class Form9Test : public ::testing::Test {
 protected:
  Form9Test() {
    te.clock.set(QDateTime(QDate(2026, 11, 21), QTime(9, 5)));
    te.writeGbk(u"\\yibanti\\100011.mmd"_qs, kBank);
    te.writeGbk(u"\\lawtxt\\示例刑法.mmd"_qs, u"示例刑法\r\n　　第一条 为了示例。\r\n　　第二条 第二条的内容。"_qs);
    test::WriteStandardLawList(te);
    test::writeItems(te, tables::kItems, {test::plainRow(u"10001100001"_qs), test::plainRow(u"10001100002"_qs)});
    te.mkdir(u"\\ini"_qs);
    form = std::make_unique<Form9>(te.env);
    form->onSaved = [this](const QString& id, const std::optional<ItemRow>& row, const QString& answer) {
      savedId = id;
      savedRow = row;
      savedAnswer = answer;
    };
    form->editQuestion(u"10001100001"_qs);
  }
  ~Form9Test() override { form->hide(); }
  // Picks a law: ordering, group, name.
  void pick(int order, int group, const QString& name) {
    form->laws->Combo1->setCurrentIndex(order);
    form->laws->Combo2->setCurrentIndex(group);
    const int i = form->laws->Combo3->findText(name);
    ASSERT_GE(i, 0) << name.toStdString();
    form->laws->Combo3->setCurrentIndex(i);
    emit form->laws->Combo3->activated(i);
  }
  void passCheck() {
    form->Command1->click();
    te.boxes.clear();
    ASSERT_TRUE(form->Command2->isEnabled());
  }

  test::TestEnv te;
  std::unique_ptr<Form9> form;
  QString savedId, savedAnswer;
  std::optional<ItemRow> savedRow;
};

TEST_F(Form9Test, TheQuestionInItsFields) {
  EXPECT_EQ(form->objectName(), u"Form9"_qs);
  EXPECT_EQ(form->windowTitle(), u"修改/注释"_qs);
  EXPECT_EQ(form->Header->text(), u"你可以对本题进行修改或加上注释，但一定要注意相应的格式"_qs);
  EXPECT_EQ(HeldTextOf(form->Text1), u"甲的行为属于什么行为呢(      )。"_qs);
  EXPECT_EQ(HeldTextOf(form->Options[0]), u"甲"_qs);
  EXPECT_EQ(HeldTextOf(form->Options[3]), u"丁"_qs);
  EXPECT_EQ(form->Text6->text(), u"B"_qs);
  EXPECT_EQ(form->Text7->text(), u"《示例刑法》第3条"_qs);
  EXPECT_EQ(HeldTextOf(form->Text8), u"旧注释"_qs);
  EXPECT_FALSE(form->Command2->isEnabled());
  EXPECT_EQ(form->Command1->text(), u"合法性检验"_qs);
  EXPECT_EQ(form->Command2->text(), u"保存并返回"_qs);
  EXPECT_EQ(form->Command3->text(), u"取消并返回"_qs);
  EXPECT_EQ(form->Command6->text(), u"您的信息"_qs);
  EXPECT_EQ(form->laws->Combo1->currentText(), u"按试卷顺序"_qs);
  EXPECT_EQ(form->laws->Combo2->count(), 3);
  EXPECT_EQ(form->laws->Combo2->currentText(), u"试卷一相关法律、法规"_qs);
  form->laws->Combo1->setCurrentIndex(1);
  ASSERT_EQ(form->laws->Combo2->count(), 26);
  EXPECT_EQ(form->laws->Combo2->itemText(18), u"以字母S开头的法律"_qs);
  form->laws->Combo2->setCurrentIndex(18);
  ASSERT_EQ(form->laws->Combo3->count(), 1);
  EXPECT_EQ(form->laws->Combo3->itemText(0), u"《示例刑法》"_qs);
  emit form->laws->Combo3->activated(0);
  EXPECT_TRUE(form->RichTextBox1->toPlainText().contains(u"第二条 第二条的内容。"_qs));
  EXPECT_TRUE(te.boxes.shown().isEmpty());
  test::CheckOnScreens(form.get(), u"question_editor_window"_qs);
}

TEST_F(Form9Test, TheAnswerIsUpperCaseAndCountsByItsLetters) {
  form->Text6->clear();
  form->Text6->setFocus();
  QTest::keyClicks(form->Text6, u"abx"_qs);
  EXPECT_EQ(form->Text6->text(), u"ABX"_qs);
  form->Command1->click();
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].title, u"通过"_qs);
  EXPECT_EQ(te.boxes.shown()[0].text, u"通过合法性检验，你现在可以保存你的更改了。"_qs);
  EXPECT_TRUE(form->Command2->isEnabled());
}

TEST_F(Form9Test, AnyChangeAfterThePassDisablesSaving) {
  const auto changes = std::vector<std::function<void()>>{
      [&] { form->Text1->appendPlainText(u"x"_qs); },    [&] { form->Options[2]->appendPlainText(u"x"_qs); },
      [&] { form->Text6->setText(u"C"_qs); },             [&] { form->Text7->setText(u"《示例刑法》第2条"_qs); },
      [&] { form->Text8->appendPlainText(u"再加"_qs); }};
  for (const auto& change : changes) {
    passCheck();
    change();
    EXPECT_FALSE(form->Command2->isEnabled());
  }
}

TEST_F(Form9Test, TheFirstFailureIsShown) {
  SetHeldText(form->Text1, u"123456789"_qs);
  form->Command1->click();
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].text, u"题干太短。"_qs);
  EXPECT_EQ(te.boxes.shown()[0].style, box::Information);
  EXPECT_EQ(te.boxes.shown()[0].title, DefaultBoxTitle());
  EXPECT_FALSE(form->Command2->isEnabled());
  SetHeldText(form->Text1, u"1234567890"_qs);
  form->Text7->setText(u"第3条"_qs);
  form->Command1->click();
  EXPECT_EQ(te.boxes.shown()[1].text, u"不能没有参见法条。"_qs);
}

TEST_F(Form9Test, TheNoteLosesTheDateOfAnEarlierNote) {
  SetHeldText(form->Text8, u"新的注释[注于：]2020年1月1日"_qs);
  EXPECT_EQ(HeldTextOf(form->Text8), u"新的注释"_qs);
}

TEST_F(Form9Test, CitationsAreAddedOnceAndRemovedFromTheEnd) {
  form->Text7->clear();
  form->Command4->click();
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].text, u"请先选择法律名。"_qs);
  pick(0, 1, u"《示例刑法》"_qs);
  form->Text9->setText(u"12"_qs);
  form->UpDown1->interpretText();
  EXPECT_EQ(form->UpDown1->value(), 12);
  form->Command4->click();
  form->Command4->click();
  EXPECT_EQ(form->Text7->text(), u"《示例刑法》第12条"_qs);
  form->UpDown1->stepUp();
  form->Command4->click();
  EXPECT_EQ(form->Text7->text(), u"《示例刑法》第12条《示例刑法》第13条"_qs);
  form->Command5->click();
  EXPECT_EQ(form->Text7->text(), u"《示例刑法》第12条"_qs);
  // With one citation the box is emptied.
  form->Command5->click();
  EXPECT_EQ(form->Text7->text(), QString());
  // An article number that is not whole and at least 1 is not taken.
  form->Text9->setText(u"0"_qs);
  form->UpDown1->interpretText();
  EXPECT_EQ(form->UpDown1->value(), 13);
}

TEST_F(Form9Test, AMissingLawFileIsSaid) {
  pick(0, 2, u"《合同示例规则》"_qs);
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].title, u"出错提示"_qs);
  EXPECT_EQ(te.boxes.shown()[0].text, u"文件名：合同示例规则不存在。"_qs);
}

TEST_F(Form9Test, SavingWithoutPosting) {
  form->Text6->setText(u"D"_qs);
  passCheck();
  te.boxes.answer(box::Ok);
  te.boxes.answer(box::No);
  form->Command2->click();
  ASSERT_EQ(te.boxes.shown().size(), 2);
  EXPECT_EQ(te.boxes.shown()[0].title, u"确定吗？"_qs);
  EXPECT_EQ(te.boxes.shown()[0].text, u"确定要保存吗？"_qs);
  EXPECT_EQ(box::buttonsOf(te.boxes.shown()[0].style), box::OkCancel);
  EXPECT_EQ(te.boxes.shown()[1].title, u"拜托并致谢"_qs);
  EXPECT_EQ(te.boxes.shown()[1].text,
            u"要不要把这道凝聚着你智慧和汗水的完美的试题发贴到网上，以便网友能享受你的劳动成果或与您对此进行交流？"_qs);
  EXPECT_EQ(box::buttonsOf(te.boxes.shown()[1].style), box::YesNo);
  EXPECT_FALSE(form->isVisible());
  EXPECT_EQ(savedId, u"10001100001"_qs);
  EXPECT_EQ(savedAnswer, u"答案：D参见《示例刑法》第3条"_qs);
  ASSERT_TRUE(savedRow);
  EXPECT_EQ(savedRow->answer, u"D"_qs);
  EXPECT_EQ(savedRow->story, u"no"_qs);
  EXPECT_TRUE(te.readGbk(u"\\yibanti\\100011.mmd"_qs)
                  .contains(u"\r\n●1●甲的行为属于什么行为呢(      )。\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁■答案：D参见《示例刑法》第3条\r\n"
                            u"[注释：]旧注释[注于：]2026年11月21日■\r\n●2●"_qs));
  EXPECT_FALSE(FileExists(te.path(u"\\ini\\交流共进.txt"_qs)));
}

TEST_F(Form9Test, CancellingTheSaveWritesNothing) {
  const QByteArray before = ReadBytes(te.path(u"\\yibanti\\100011.mmd"_qs));
  passCheck();
  te.boxes.answer(box::Cancel);
  form->Command2->click();
  EXPECT_EQ(te.boxes.shown().size(), 1);
  EXPECT_TRUE(form->isVisible());
  EXPECT_EQ(ReadBytes(te.path(u"\\yibanti\\100011.mmd"_qs)), before);
  EXPECT_TRUE(savedId.isEmpty());
}

TEST_F(Form9Test, PostingWithoutProviderDataStopsBeforeAnythingIsWritten) {
  const QByteArray bank = ReadBytes(te.path(u"\\yibanti\\100011.mmd"_qs));
  const QByteArray table = ReadBytes(te.path(u"\\dbf\\items.mmd"_qs));
  passCheck();
  te.boxes.answer(box::Ok);
  te.boxes.answer(box::Yes);
  form->Command2->click();
  ASSERT_EQ(te.boxes.shown().size(), 3);
  EXPECT_EQ(te.boxes.shown()[2].text, u"请先提供您的相关信息"_qs);
  EXPECT_EQ(ReadBytes(te.path(u"\\yibanti\\100011.mmd"_qs)), bank);
  EXPECT_EQ(ReadBytes(te.path(u"\\dbf\\items.mmd"_qs)), table);
  EXPECT_FALSE(FileExists(te.path(u"\\ini\\交流共进.txt"_qs)));
  EXPECT_TRUE(form->isVisible());
}

TEST_F(Form9Test, PostingWithProviderData) {
  ASSERT_TRUE(WriteProvider(te.env, {u"小明"_qs, u"12345"_qs, u"a@example.org"_qs, QString()}));
  passCheck();
  te.boxes.answer(box::Ok);
  te.boxes.answer(box::Yes);
  form->Command2->click();
  ASSERT_EQ(te.boxes.shown().size(), 3);
  EXPECT_EQ(te.boxes.shown()[2].text,
            u"已经把该题另存一份到"_qs + te.path(u"\\ini\\交流共进.txt"_qs) +
                u"并且已复制进粘贴板，你现在可以把它粘贴到网上去了，或者以后查看前述文本文件。"_qs);
  const QString post = QApplication::clipboard()->text();
  EXPECT_TRUE(post.contains(u"D．丁\r\n[本题ID及提供者有关信息：]\r\n[本题标识ID：][10001100001]\r\n[提供者姓名或昵称：]小明\r\n"_qs));
  EXPECT_EQ(te.readGbk(u"\\ini\\交流共进.txt"_qs), u"●"_qs + post);
  // The bank keeps the question without the provider block.
  EXPECT_FALSE(te.readGbk(u"\\yibanti\\100011.mmd"_qs).contains(u"小明"_qs));
}

TEST_F(Form9Test, LeavingAsksFirst) {
  te.boxes.answer(box::Cancel);
  form->Command3->click();
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].title, u"确定吗？"_qs);
  EXPECT_EQ(te.boxes.shown()[0].text, u"你还没有保存，确定要返回吗？"_qs);
  EXPECT_TRUE(form->isVisible());
  te.boxes.answer(box::Ok);
  form->Command3->click();
  EXPECT_FALSE(form->isVisible());
}

TEST_F(Form9Test, TheProviderWindow) {
  ASSERT_TRUE(WriteProvider(te.env, {u"小明"_qs, u"12345"_qs, QString(), QString()}));
  form->Command6->click();
  Form16* f = form->providerWindow();
  EXPECT_TRUE(f->isVisible());
  EXPECT_EQ(f->objectName(), u"Form16"_qs);
  EXPECT_EQ(f->windowTitle(), u"提供者信息"_qs);
  EXPECT_EQ(f->Header->text(), u"请在下列各项填入您的信息以供网友与您交流"_qs);
  EXPECT_EQ(f->Text1[0]->text(), u"小明"_qs);
  EXPECT_EQ(f->Text1[1]->text(), u"12345"_qs);
  EXPECT_EQ(f->Text1[4]->text(), u"2026年11月21日"_qs);
  EXPECT_TRUE(f->SaveButton->autoRaise());
  EXPECT_EQ(f->SaveButton->text(), u"保存并返回"_qs);
  test::CheckOnScreens(f, u"provider_window"_qs);
  f->Text1[2]->setText(u"a@example.org"_qs);
  f->Text1[3]->setText(u"https://example.org/"_qs);
  f->SaveButton->click();
  EXPECT_FALSE(f->isVisible());
  EXPECT_EQ(ReadBytes(te.path(u"\\ini\\YourInfo.ini"_qs)),
            ToGbk(u"\"小明\",\"12345\",\"a@example.org\",\"https://example.org/\"\r\n"_qs));
}

// --- From the answer window, on the demonstration data -----------------------

TEST(QuestionEditorRoundTrip, ChangeTheAnswerAndACitationAndPractiseAgain) {
  if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "no demonstration data built";
  test::TestEnv t(test::DemoDataDir());
  t.clock.set(QDateTime(QDate(2026, 11, 21), QTime(9, 30)));
  Form1 form(t.env);
  form.load();
  form.resize(1200, 800);
  form.show();
  form.ShiTi->trigger();
  t.boxes.clear();
  DirectoryGrid* g = form.MSFlexGrid1;
  const Directory& d = g->directory();
  int bankRow = 0;
  for (int r = 1; r <= d.rowCount(); ++r)
    if (d.text(r, kColFile).endsWith(u"100011.mmd"_qs)) bankRow = r;
  ASSERT_GT(bankRow, 0);
  ASSERT_EQ(g->clickRow(bankRow), DirectoryClick::Leaf);
  const QString id = u"10001100001"_qs;
  ASSERT_EQ(form.practice->session().currentId(), id);
  PracticeFrame* frame = form.practice;
  Form3* answers = frame->answerWindow();
  frame->Command2[AnswerCaptions().indexOf(u"B"_qs)]->click();
  ASSERT_TRUE(answers->isVisible());
  EXPECT_TRUE(answers->boxText(1).startsWith(u"恭喜你，你做对了。"_qs));

  // 修改/注释 opens the editor on the question.
  ASSERT_TRUE(answers->Command4->isEnabled());
  answers->Command4->click();
  Form9* editor = form.editorWindow();
  ASSERT_TRUE(editor->isVisible());
  EXPECT_EQ(editor->questionId(), id);
  EXPECT_EQ(editor->Text6->text(), u"B"_qs);
  EXPECT_EQ(editor->Text7->text(), u"《示例刑法》第3条"_qs);
  const QString note = HeldTextOf(editor->Text8);
  EXPECT_EQ(note, u"罪刑法定原则禁止类推定罪，选项中比照相类似条文定罪的说法是错误的。"_qs);

  // The answer becomes C, the citation article 4 instead of 3.
  editor->Text6->setText(u"c"_qs);
  editor->Command5->click();
  EXPECT_EQ(editor->Text7->text(), QString());
  editor->laws->Combo1->setCurrentIndex(0);
  editor->laws->Combo2->setCurrentIndex(1);  // 试卷二: 《示例刑法》
  const int law = editor->laws->Combo3->findText(u"《示例刑法》"_qs);
  ASSERT_GE(law, 0);
  editor->laws->Combo3->setCurrentIndex(law);
  emit editor->laws->Combo3->activated(law);
  editor->UpDown1->setValue(4);
  editor->Command4->click();
  EXPECT_EQ(editor->Text7->text(), u"《示例刑法》第4条"_qs);
  editor->Command1->click();
  ASSERT_TRUE(editor->Command2->isEnabled());
  t.boxes.clear();
  t.boxes.answer(box::Ok);
  t.boxes.answer(box::No);
  editor->Command2->click();
  EXPECT_FALSE(editor->isVisible());
  EXPECT_EQ(t.boxes.shown().size(), 2);

  // The bank file holds exactly the new block.
  const QString file = t.readGbk(u"\\yibanti\\100011.mmd"_qs);
  const QString block =
      u"\r\n●1●根据《示例刑法》，下列关于罪刑法定原则的表述，正确的是(      )。\r\n"
      u"A．法律没有明文规定为犯罪的行为，司法机关可以比照最相类似的条文定罪\r\n"
      u"B．只有法律明文规定为犯罪的行为，才能依照法律定罪处刑\r\n"
      u"C．社会危害严重的行为，即使法律没有规定，也可以定罪处刑\r\n"
      u"D．罪刑法定原则只适用于故意犯罪■答案：C参见《示例刑法》第4条\r\n"
      u"[注释：]罪刑法定原则禁止类推定罪，选项中比照相类似条文定罪的说法是错误的。[注于：]2026年11月21日■\r\n●2●"_qs;
  EXPECT_EQ(file.count(block), 1) << file.left(800).toStdString();
  EXPECT_EQ(GetOneOldTi(t.env, id) + u"\r\n"_qs, block.mid(5, block.size() - 8));
  // The table row, and the index with it.
  const DbfTable items = DbfTable::open(t.path(u"\\dbf\\items.mmd"_qs));
  const QList<int> rows = Select(items, {{u"itemid"_qs, id}});
  ASSERT_EQ(rows.size(), 1);
  EXPECT_EQ(items.text(rows[0], u"answer"_qs), u"C"_qs);
  EXPECT_EQ(items.trimmedText(rows[0], u"aboutlaw"_qs), u"《示例刑法》4．"_qs);
  EXPECT_EQ(items.trimmedText(rows[0], u"story"_qs), u"no"_qs);
  const ItemRow* all = FindItem(form.state().AllItemData, id);
  ASSERT_NE(all, nullptr);
  EXPECT_EQ(all->answer, u"C"_qs);
  EXPECT_EQ(all->aboutlaw, u"《示例刑法》4．"_qs);
  EXPECT_EQ(all->story, u"no"_qs);
  const ItemRow* work = FindItem(form.state().ItemData, id);
  ASSERT_NE(work, nullptr);
  EXPECT_EQ(*work, *all);
  // The answer window shows the new answer and article.
  EXPECT_TRUE(answers->boxText(1).startsWith(u"答案：C参见《示例刑法》第4条"_qs)) << answers->boxText(1).toStdString();
  EXPECT_TRUE(answers->boxText(1).contains(u"　　第四条"_qs));
  EXPECT_FALSE(answers->boxText(1).contains(u"　　第三条"_qs));

  // Practising the question again: the new key, the new article.
  answers->Command1[3]->click();
  frame->Command2[AnswerCaptions().indexOf(u"C"_qs)]->click();
  ASSERT_TRUE(answers->isVisible());
  EXPECT_TRUE(answers->boxText(1).startsWith(u"恭喜你，你做对了。"_qs)) << answers->boxText(1).toStdString();
  EXPECT_TRUE(answers->boxText(1).contains(u"答案：C参见《示例刑法》第4条"_qs));
  EXPECT_TRUE(answers->boxText(1).contains(u"　　第四条"_qs));
  answers->Command1[3]->click();
  form.close();
}

}  // namespace
}  // namespace mj
