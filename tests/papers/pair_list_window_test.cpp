#include "papers/pair_list_window.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include "papers/law_list_widget.h"
#include "papers/text_box_widget.h"
#include "papers_fixture.h"
#include "platform/textfile.h"
#include "support/printers.h"
#include "support/test_env.h"
#include "support/window_checks.h"

namespace mj {
namespace {

const QString kPairs =
    u"\"[《刑诉》]-->[《刑事诉讼法》]\",1\r\n\"[答：]-->[答案：]\",0\r\n\"[^p参见]-->[[参见：]]\",1\r\n"_qs;

class Form12Test : public ::testing::Test {
 protected:
  Form12Test() {
    test::WriteStandardLawList(te);
    te.writeGbk(u"\\ini\\listbox.ini"_qs, kPairs);
    form = std::make_unique<Form12>(te.env);
    form->setTarget(&paper);
  }
  ~Form12Test() override { form->hide(); }

  test::TestEnv te;
  QPlainTextEdit paper;
  std::unique_ptr<Form12> form;
};

TEST_F(Form12Test, TheListAsItLoads) {
  form->openWindow();
  EXPECT_EQ(form->objectName(), u"Form12"_qs);
  EXPECT_EQ(form->windowTitle(), u"常用替换设置"_qs);
  EXPECT_EQ(form->entries(), (PairList{{u"1   [《刑诉》]-->[《刑事诉讼法》]"_qs, true},
                                       {u"2   [答：]-->[答案：]"_qs, false},
                                       {u"3   [^p参见]-->[[参见：]]"_qs, true}}));
  QStringList captions;
  for (QPushButton* b : {form->Command1, form->Command2, form->Command3, form->Command4, form->Command5,
                         form->Command6, form->Command7, form->Command9, form->Command10})
    captions << b->text();
  EXPECT_EQ(captions, (QStringList{u"批量替换"_qs, u"取消法条加入"_qs, u"反选"_qs, u"全选"_qs, u"全不选"_qs, u"添加"_qs,
                                   u"删除"_qs, u"保存此设置并返回"_qs, u"直接返回"_qs}));
  EXPECT_EQ(form->Command1->toolTip(), u"把“外部试题/检验合法性”窗口中的文本按上面已打勾设置进行批量替换。"_qs);
  captions.clear();
  for (QPushButton* b : form->Command8) captions << b->text();
  EXPECT_EQ(captions, (QStringList{u"《》"_qs, u"-->"_qs, u"[]"_qs, u"、"_qs, u"．"_qs, u"."_qs, u"回车符"_qs, u"全角空格"_qs}));
  // The law pick lists start on the papers.
  EXPECT_EQ(form->laws->Combo1->currentText(), u"按试卷顺序"_qs);
  EXPECT_EQ(form->laws->Combo2->currentText(), u"试卷一相关法律、法规"_qs);
  ASSERT_EQ(form->laws->Combo3->count(), 1);
  EXPECT_EQ(form->laws->Combo3->itemText(0), u"《行政处罚示例规定》"_qs);
  form->List1->setCurrentRow(0);
  test::CheckOnScreens(form.get(), u"pair_list_window"_qs);
}

TEST_F(Form12Test, AClickCopiesThePairAndEditingRewritesTheEntry) {
  form->openWindow();
  form->List1->setCurrentRow(1);
  EXPECT_EQ(form->Text1->text(), u"[答：]-->[答案：]"_qs);
  form->Text1->setFocus();
  form->Text1->end(false);
  QTest::keyClicks(form->Text1, u"  "_qs);
  form->Text1->insert(u"甲"_qs);
  EXPECT_EQ(form->List1->item(1)->text(), u"2   [答：]-->[答案：]  甲"_qs);
  form->Text1->setText(u"  [答：]-->[答案：]  "_qs);
  EXPECT_EQ(form->List1->item(1)->text(), u"2   [答：]-->[答案：]"_qs);
  EXPECT_TRUE(form->changed());
}

TEST_F(Form12Test, AddingAndDeleting) {
  form->openWindow();
  form->Command6->click();
  ASSERT_EQ(form->entries().size(), 4);
  EXPECT_EQ(form->entries()[3], (PairEntry{u"4   []-->[]"_qs, false}));
  EXPECT_EQ(form->List1->currentRow(), 3);
  EXPECT_EQ(form->Text1->text(), u"[]-->[]"_qs);
  // Adding again: the abandoned empty pair vanishes.
  form->Command6->click();
  EXPECT_EQ(form->entries().size(), 4);
  EXPECT_EQ(form->List1->currentRow(), 3);
  form->Text1->setText(u"[民诉]-->[民事诉讼法]"_qs);
  // Deleting asks first; No keeps the entry.
  form->List1->setCurrentRow(0);
  te.boxes.answer(box::No);
  form->Command7->click();
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].title, u"请你确认"_qs);
  EXPECT_EQ(te.boxes.shown()[0].text, u"真的要删除1   [《刑诉》]-->[《刑事诉讼法》]吗？"_qs);
  EXPECT_EQ(box::buttonsOf(te.boxes.shown()[0].style), box::YesNo);
  EXPECT_EQ(form->entries().size(), 4);
  te.boxes.answer(box::Yes);
  form->Command7->click();
  EXPECT_EQ(form->entries(), (PairList{{u"1   [答：]-->[答案：]"_qs, false},
                                       {u"2   [^p参见]-->[[参见：]]"_qs, true},
                                       {u"3   [民诉]-->[民事诉讼法]"_qs, false}}));
}

TEST_F(Form12Test, Ticks) {
  form->openWindow();
  form->Command3->click();
  EXPECT_EQ(form->entries()[0].ticked, false);
  EXPECT_EQ(form->entries()[1].ticked, true);
  EXPECT_EQ(form->entries()[2].ticked, false);
  form->Command4->click();
  for (const PairEntry& e : form->entries()) EXPECT_TRUE(e.ticked);
  form->Command5->click();
  for (const PairEntry& e : form->entries()) EXPECT_FALSE(e.ticked);
}

TEST_F(Form12Test, CommonCharactersGoInAtTheCursor) {
  form->openWindow();
  form->List1->setCurrentRow(0);
  form->Text1->setText(u"[ab]"_qs);
  form->Text1->setCursorPosition(2);
  form->Command8[6]->click();
  EXPECT_EQ(form->Text1->text(), u"[a^pb]"_qs);
  form->Command8[7]->click();
  EXPECT_EQ(form->Text1->text(), u"[a^p\u3000b]"_qs);
  form->Text1->end(false);
  form->Command8[1]->click();
  form->Command8[2]->click();
  form->Command8[0]->click();
  EXPECT_EQ(form->Text1->text(), u"[a^p\u3000b]-->[]《》"_qs);
}

TEST_F(Form12Test, ALawPickedIsTheReplacement) {
  form->openWindow();
  form->Add2list1FromF11Combo(u"《型法》"_qs);
  EXPECT_EQ(form->Text1->text(), u"[《型法》]-->[]"_qs);
  // 按类别顺序, 刑法类: 《示例刑法》.
  form->laws->Combo1->setCurrentIndex(2);
  EXPECT_EQ(form->laws->Combo2->count(), 8);
  form->laws->Combo2->setCurrentIndex(3);
  ASSERT_EQ(form->laws->Combo3->count(), 1);
  form->laws->Combo3->setCurrentIndex(0);
  emit form->laws->Combo3->activated(0);
  EXPECT_EQ(form->Text1->text(), u"[《型法》]-->[《示例刑法》]"_qs);
  EXPECT_EQ(form->entries().last().text, u"4   [《型法》]-->[《示例刑法》]"_qs);
  // 取消法条加入 cuts back to the part before "-->".
  form->Command2->click();
  EXPECT_EQ(form->Text1->text(), u"[《型法》]"_qs);
  // A text without brackets gets them.
  form->Text1->setText(u"型法"_qs);
  emit form->laws->Combo3->activated(0);
  EXPECT_EQ(form->Text1->text(), u"[型法]-->[《示例刑法》]"_qs);
}

TEST_F(Form12Test, BatchReplaceAppliesTheTickedPairs) {
  SetHeldText(&paper, u"1．题\r\n答：A\r\n参见《刑诉》第1条"_qs);
  form->openWindow();
  form->Command1->click();
  EXPECT_EQ(HeldTextOf(&paper), u"1．题\r\n答：A[参见：]《刑事诉讼法》第1条"_qs);
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].title, u"完成"_qs);
  EXPECT_EQ(te.boxes.shown()[0].text, u"替换完成。"_qs);
  // The replacement can be undone as one step.
  paper.undo();
  EXPECT_EQ(HeldTextOf(&paper), u"1．题\r\n答：A\r\n参见《刑诉》第1条"_qs);
}

TEST_F(Form12Test, SavingWritesTheListAndReturningWithoutDropsTheChanges) {
  form->openWindow();
  form->Command6->click();
  form->Text1->setText(u"[民诉]-->[民事诉讼法]"_qs);
  form->List1->item(3)->setCheckState(Qt::Checked);
  form->Command10->click();
  EXPECT_FALSE(form->isVisible());
  EXPECT_EQ(te.readGbk(u"\\ini\\listbox.ini"_qs), kPairs);
  form->openWindow();
  EXPECT_EQ(form->entries().size(), 3);
  form->Command6->click();
  form->Text1->setText(u"[民诉]-->[民事诉讼法]"_qs);
  form->List1->item(3)->setCheckState(Qt::Checked);
  form->Command6->click();  // an empty pair that is dropped on saving
  form->Command9->click();
  EXPECT_FALSE(form->isVisible());
  EXPECT_EQ(ReadBytes(te.path(u"\\ini\\listbox.ini"_qs)),
            ToGbk(kPairs + u"\"[民诉]-->[民事诉讼法]\",1\r\n"_qs));
}

TEST_F(Form12Test, AnEmptyOrBrokenPairFileShowsWhatItCan) {
  te.writeGbk(u"\\ini\\listbox.ini"_qs, u"\r\n"_qs);
  form->openWindow();
  EXPECT_TRUE(form->entries().isEmpty());
  // Batch replace on an empty list does nothing, not even the box.
  form->Command1->click();
  EXPECT_TRUE(te.boxes.shown().isEmpty());
  form->Command10->click();
  te.writeGbk(u"\\ini\\listbox.ini"_qs, u"乱码一行\r\n\"[a]-->[b]\",1\r\n\",,\r\n"_qs);
  form->openWindow();
  EXPECT_EQ(form->entries().size(), 3);
  EXPECT_EQ(form->entries()[1], (PairEntry{u"2   [a]-->[b]"_qs, true}));
}

TEST_F(Form12Test, AFileThatCannotBeSavedIsSaid) {
  test::TestEnv bare;
  Form12 f(bare.env);
  f.openWindow();
  f.Command6->click();
  f.Text1->setText(u"[a]-->[b]"_qs);
  f.Command9->click();
  ASSERT_EQ(bare.boxes.shown().size(), 1);
  EXPECT_EQ(bare.boxes.shown()[0].text,
            u"无法保存文件"_qs + bare.path(u"\\ini\\listbox.ini"_qs) + u"，替换设置没有保存。"_qs);
  // The window stays with its list.
  EXPECT_TRUE(f.isVisible());
  EXPECT_EQ(f.entries().size(), 1);
  f.hide();
}

}  // namespace
}  // namespace mj
