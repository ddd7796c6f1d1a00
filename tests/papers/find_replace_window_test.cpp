#include "papers/find_replace_window.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include "law/law_query_fixture.h"
#include "law/law_query_window.h"
#include "papers/pair_list.h"
#include "papers/text_box_widget.h"
#include "platform/text_toolkit.h"
#include "platform/textfile.h"
#include "support/printers.h"
#include "support/test_env.h"
#include "support/window_checks.h"

namespace mj {
namespace {

class Form13Test : public ::testing::Test {
 protected:
  Form13Test() {
    te.mkdir(u"\\ini"_qs);
    SetHeldText(&paper, u"一、单项选择题\r\n1．依《刑诉》规定\r\n答：A\r\n2．依《刑诉》\r\n答：B"_qs);
    form = std::make_unique<Form13>(te.env);
  }
  ~Form13Test() override { form->hide(); }
  QString selected() const {
    return HeldText(paper.textCursor().selectedText().replace(QChar::ParagraphSeparator, u'\n'));
  }

  test::TestEnv te;
  QPlainTextEdit paper;
  std::unique_ptr<Form13> form;
};

TEST_F(Form13Test, OpensWithTheSelection) {
  form->openFor(kFindFromPaper, &paper, &paper, u"《刑诉》"_qs);
  EXPECT_EQ(form->objectName(), u"Form13"_qs);
  EXPECT_EQ(form->windowTitle(), u"查找/替换"_qs);
  EXPECT_EQ(form->Text1->text(), u"《刑诉》"_qs);
  EXPECT_EQ(form->Text2->text(), u"《刑诉》"_qs);
  EXPECT_EQ(form->Text1->selectedText(), u"《刑诉》"_qs);
  QStringList captions;
  for (QPushButton* b : form->Command1) captions << b->text();
  EXPECT_EQ(captions, (QStringList{u"下一个"_qs, u"替换"_qs, u"全部替换"_qs, u"关闭"_qs}));
  EXPECT_EQ(form->Combo1->count(), 3);
  EXPECT_EQ(form->Combo1->itemText(0), u"回车符"_qs);
  EXPECT_EQ(form->Combo1->itemText(1), u"《》"_qs);
  EXPECT_EQ(form->Combo1->itemText(2), u"全角空格"_qs);
  test::CheckOnScreens(form.get(), u"find_replace_window"_qs);
  // Esc in the find box closes the window, as 关闭 does.
  form->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
  QTest::keyClick(form->Text1, Qt::Key_Escape);
  EXPECT_FALSE(form->isVisible());
}

TEST_F(Form13Test, FindNextSelectsInTheTargetAndSaysWhenAtTheEnd) {
  form->openFor(kFindFromPaper, &paper, &paper, u"刑诉"_qs);
  form->Command1[0]->click();
  EXPECT_EQ(selected(), u"刑诉"_qs);
  EXPECT_EQ(form->search().p, 14);
  form->Command1[0]->click();
  EXPECT_EQ(form->search().p, 30);
  form->Command1[0]->click();
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].text, u"已经搜索到文本未尾。"_qs);
  EXPECT_EQ(te.boxes.shown()[0].title, DefaultBoxTitle());
  EXPECT_EQ(form->search().p, 0);
  form->Command1[0]->click();
  EXPECT_EQ(form->search().p, 14);
}

TEST_F(Form13Test, AnEmptyFindBoxIsRefused) {
  form->openFor(kFindFromPaper, &paper, &paper, QString());
  for (int i : {0, 1, 2}) form->Command1[i]->click();
  ASSERT_EQ(te.boxes.shown().size(), 3);
  for (const BoxRecord& b : te.boxes.shown()) {
    EXPECT_EQ(b.text, u"进行查找替换时第一个文本框内容不能为空。"_qs);
    EXPECT_EQ(b.style, box::Exclamation);
  }
  EXPECT_FALSE(FileExists(te.path(kPairFile)));
}

TEST_F(Form13Test, ReplaceLearnsThePairOnce) {
  form->openFor(kFindFromPaper, &paper, &paper, u"刑诉"_qs);
  form->Text2->setText(u"刑事诉讼法"_qs);
  form->Command1[0]->click();
  form->Command1[1]->click();
  EXPECT_EQ(HeldTextOf(&paper), u"一、单项选择题\r\n1．依《刑事诉讼法》规定\r\n答：A\r\n2．依《刑诉》\r\n答：B"_qs);
  EXPECT_EQ(selected(), u"刑诉"_qs);
  form->Command1[1]->click();
  EXPECT_EQ(HeldTextOf(&paper), u"一、单项选择题\r\n1．依《刑事诉讼法》规定\r\n答：A\r\n2．依《刑事诉讼法》\r\n答：B"_qs);
  // The second replace found no further hit.
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].text, u"已经搜索到文本未尾。"_qs);
  EXPECT_EQ(ReadBytes(te.path(kPairFile)), ToGbk(u"\"[刑诉]-->[刑事诉讼法]\",1\r\n"_qs));
}

TEST_F(Form13Test, ReplaceAllAcrossLines) {
  form->openFor(kFindFromPaperPractice, &paper, &paper, u"^p答："_qs);
  form->Text2->setText(u"^p[答案：]"_qs);
  form->Command1[2]->click();
  EXPECT_EQ(HeldTextOf(&paper), u"一、单项选择题\r\n1．依《刑诉》规定\r\n[答案：]A\r\n2．依《刑诉》\r\n[答案：]B"_qs);
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].title, u"完成"_qs);
  EXPECT_EQ(te.boxes.shown()[0].text, u"已完成全部替换，共替换2处。"_qs);
  // No learning for replace all.
  EXPECT_FALSE(FileExists(te.path(kPairFile)));
  form->Command1[2]->click();
  EXPECT_EQ(te.boxes.shown()[1].text, u"未搜索到“^p答：”。"_qs);
  // An empty replacement deletes and still counts.
  form->Text1->setText(u"《刑诉》"_qs);
  form->Text2->clear();
  form->Command1[2]->click();
  EXPECT_EQ(te.boxes.shown()[2].text, u"已完成全部替换，共替换2处。"_qs);
  EXPECT_FALSE(HeldTextOf(&paper).contains(u"刑诉"_qs));
}

TEST_F(Form13Test, SpecialCharactersGoIntoTheBoxThatHadTheFocus) {
  form->openFor(kFindFromPaper, &paper, &paper, QString());
  form->Text2->setFocus();
  QApplication::processEvents();
  emit form->Combo1->activated(0);
  emit form->Combo1->activated(2);
  form->Text1->setFocus();
  QApplication::processEvents();
  emit form->Combo1->activated(1);
  EXPECT_EQ(form->Text1->text(), u"《》"_qs);
  EXPECT_EQ(form->Text2->text(), u"^p\u3000"_qs);
}

TEST_F(Form13Test, AnUnknownCallerMakesTheButtonsDoNothing) {
  form->openFor(0, &paper, &paper, u"刑诉"_qs);
  EXPECT_EQ(form->Text1->text(), QString());
  form->Text1->setText(u"刑诉"_qs);
  const QString before = HeldTextOf(&paper);
  for (int i : {0, 1, 2}) form->Command1[i]->click();
  EXPECT_EQ(HeldTextOf(&paper), before);
  EXPECT_TRUE(te.boxes.shown().isEmpty());
}

TEST_F(Form13Test, TheLawQueryTextIsChangedWithoutLearning) {
  test::TestEnv lawTe;
  test::MakeLawFolder(lawTe);
  ItemIndex items;
  Form6 law(lawTe.env, &items);
  Form13 find(lawTe.env);
  law.setSeekAndReplaceHook([&] { find.openFor(kFindFromLawQuery, law.RichTextBox1, &law, law.selectedViewText()); });
  EXPECT_TRUE(law.SeekAndReplace->isEnabled());
  law.show();
  law.TreeView1->expandAll();
  const auto found = law.TreeView1->findItems(u"《示例法》"_qs, Qt::MatchExactly | Qt::MatchRecursive);
  ASSERT_FALSE(found.isEmpty());
  emit law.TreeView1->itemClicked(found.first(), 0);
  ASSERT_TRUE(law.query().view.contains(u"示例法第5号规定的内容。"_qs));
  law.SeekAndReplace->trigger();
  EXPECT_TRUE(find.isVisible());
  EXPECT_EQ(find.FindCaller, kFindFromLawQuery);
  find.Text1->setText(u"示例法第5号"_qs);
  find.Text2->setText(u"第五号"_qs);
  find.Command1[0]->click();
  find.Command1[1]->click();
  EXPECT_TRUE(law.query().view.contains(u"第五号规定的内容。"_qs));
  EXPECT_EQ(law.query().view, HeldTextOf(law.RichTextBox1));
  EXPECT_FALSE(FileExists(lawTe.path(kPairFile)));
  find.hide();
  law.close();
}

}  // namespace
}  // namespace mj
