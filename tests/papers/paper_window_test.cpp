#include "papers/paper_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTextCursor>

#include "papers/check_result_window.h"
#include "papers/find_replace_window.h"
#include "papers/pair_list_window.h"
#include "papers/paper_check.h"
#include "papers/paper_practice_window.h"
#include "papers_fixture.h"
#include "platform/textfile.h"
#include "support/printers.h"
#include "support/test_env.h"
#include "support/window_checks.h"

namespace mj {
namespace {

using test::InlineQuestion;
using test::Lines;

QString GoodPaper() {
  QStringList l = {u"外部试卷"_qs, u"一、单项选择题"_qs};
  l += InlineQuestion(1, u"A"_qs, u"《示例刑法》第12条"_qs);
  l += InlineQuestion(2, u"B"_qs, u"《示例刑法》第13条"_qs);
  l += u"二、多项选择题"_qs;
  l += InlineQuestion(1, u"AB"_qs, u"《合同示例规则》第3条"_qs);
  return Lines(l);
}

QString PaperWithBadName() {
  QStringList l = {u"一、单项选择题"_qs};
  l += InlineQuestion(1, u"A"_qs, u"《示例刑法》第12条"_qs);
  l += InlineQuestion(2, u"B"_qs, u"《型法》第13条"_qs);
  l += InlineQuestion(3, u"C"_qs, u"《民诉》第1条、《型法》第2条"_qs);
  return Lines(l);
}

class Form10Test : public ::testing::Test {
 protected:
  Form10Test() {
    test::WriteStandardLawList(te);
    te.mkdir(u"\\ini"_qs);
    te.mkdir(u"\\外部题库"_qs);
    form = std::make_unique<Form10>(te.env, state);
  }
  ~Form10Test() override {
    if (form) form->hide();
  }
  QString writePaper(const QString& name, const QString& text, PaperEncoding e = PaperEncoding::Gbk) {
    const QString path = te.path(u"\\外部题库\\"_qs + name);
    EXPECT_TRUE(WritePaper(path, text, e));
    return path;
  }
  void typeInPaper(const QString& text) {
    form->RichTextBox1->setFocus();
    QTextCursor c = form->RichTextBox1->textCursor();
    c.movePosition(QTextCursor::End);
    form->RichTextBox1->setTextCursor(c);
    QTest::keyClicks(form->RichTextBox1, text);
  }

  test::TestEnv te;
  PaperState state;
  std::unique_ptr<Form10> form;
};

TEST_F(Form10Test, TheWindowAsItStarts) {
  EXPECT_EQ(form->objectName(), u"Form10"_qs);
  EXPECT_EQ(form->windowTitle(), u"外部题库"_qs);
  EXPECT_EQ(form->Label1->text(), u"检验格式后才能做题。"_qs);
  QStringList captions;
  for (QPushButton* b : form->Command1) captions << b->text();
  EXPECT_EQ(captions, (QStringList{u"检验格式"_qs, u"试一下自动转换"_qs, u"查找/替换"_qs, u"保存一下"_qs, u"开始做题"_qs,
                                   u"返回"_qs, u"本窗说明"_qs}));
  EXPECT_EQ(form->Command2->text(), u"常用替换设置"_qs);
  EXPECT_FALSE(form->Command1[4]->isEnabled());
  ASSERT_TRUE(form->loadPaper(writePaper(u"卷.txt"_qs, GoodPaper())));
  EXPECT_FALSE(form->Command1[4]->isEnabled());
  EXPECT_EQ(form->paperText(), GoodPaper());
  EXPECT_EQ(form->FileLabel->text(), u"文件："_qs + te.path(u"\\外部题库\\卷.txt"_qs) + u"（编码：GBK）"_qs);
  test::CheckOnScreens(form.get(), u"paper_window"_qs);
}

TEST_F(Form10Test, TheHelpButtonPutsTheHelpIntoTheLabel) {
  form->Command1[6]->click();
  EXPECT_EQ(form->Label1->text(),
            u"本窗为格式转换窗口，必须先通过合法性检验才能开始做题，如果不能通过合法性检验则请先进行格式转换，转换前请先把“答：”“参考”“注解”等字样换为“答案”、“参见”、“注释”等字样。或者直接按F1键看更详细的帮助。"_qs);
  test::CheckOnScreen(form.get(), test::kSmallScreen, u"paper_window_help"_qs);
}

TEST_F(Form10Test, TheCheckEnablesPracticeAndAChangeDisablesItAgain) {
  ASSERT_TRUE(form->loadPaper(writePaper(u"卷.txt"_qs, GoodPaper())));
  form->show();
  form->Command1[0]->click();
  EXPECT_TRUE(form->Command1[4]->isEnabled());
  EXPECT_EQ(state.OutTiMode, 1);
  EXPECT_EQ(state.OutTiNum[1][2], 2);
  typeInPaper(u"x"_qs);
  EXPECT_FALSE(form->Command1[4]->isEnabled());
  // Editing leaves the state of the last check alone.
  EXPECT_EQ(state.OutTiNum[1][2], 2);
  // A check that fails enables it as well.
  form->setPaperText(u"没有任何题型标题"_qs);
  EXPECT_FALSE(form->Command1[4]->isEnabled());
  form->Command1[0]->click();
  EXPECT_TRUE(form->Command1[4]->isEnabled());
  EXPECT_TRUE(form->resultWindow()->report().contains(u"原因：本文件中三种试题类型字样均没出现。"_qs));
}

TEST_F(Form10Test, TheReportInTheResultWindow) {
  ASSERT_TRUE(form->loadPaper(writePaper(u"卷.txt"_qs, GoodPaper())));
  form->show();
  form->Command1[0]->click();
  Form11* f = form->resultWindow();
  EXPECT_TRUE(f->isVisible());
  EXPECT_EQ(f->objectName(), u"Form11"_qs);
  EXPECT_EQ(f->windowTitle(), u"合法性检查"_qs);
  EXPECT_EQ(f->Heading->text(), u"合法性检验结果"_qs);
  EXPECT_EQ(f->Command1->text(), u"返回"_qs);
  PaperState s2;
  EXPECT_EQ(f->report(), RunPaperCheck(te.env, GoodPaper(), s2).report);
  EXPECT_EQ(f->report(),
            u"    没有“三、任意选择题”字样\r\n注意：由于本程序要适应现存的各种格式，所以你返回后要检查一下原文本是否与该统计结果相符。如果不符，即如果只有单选题和多选题而没有任意选择题，只要下面提示已经通过检验，则也是可以开始做题的。但是你的这个文件内不能只有后面的试题类型而没有前面的试题类型，即不能只有多选题或任意选择题而没有单选题。\r\n"
            "\r\n共有2道单选题，1道多选题，3个答案。\r\n"
            "\r\n单选题编号从1到2共2道=2道。检验通过\r\n"
            "\r\n多选题编号从1到1共1道=1道。检验通过\r\n"
            "\r\n各个试题详细检验结果汇报：\r\n\r\n"
            "一、单项选择题\r\n第1题：通过检验。\r\n第2题：通过检验。\r\n\r\n"
            "二、多项选择题\r\n第1题：通过检验。\r\n\r\n\r\n"_qs);
  // Without unknown names the report fills the window.
  EXPECT_FALSE(f->Combo1->isVisible());
  EXPECT_FALSE(f->Label1->isVisible());
  EXPECT_FALSE(f->Label2->isVisible());
  EXPECT_FALSE(f->Command2->isVisible());
  test::CheckOnScreens(f, u"check_result_window"_qs);
  f->Command1->click();
  EXPECT_FALSE(f->isVisible());
  // Esc as well, wherever the focus is in it.
  form->Command1[0]->click();
  ASSERT_TRUE(f->isVisible());
  f->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(f));
  QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : f, Qt::Key_Escape);
  EXPECT_FALSE(f->isVisible());
  EXPECT_TRUE(form->isVisible());
}

TEST_F(Form10Test, UnknownLawNamesComeWithTheOfferToReplaceThem) {
  te.writeGbk(u"\\ini\\listbox.ini"_qs, u"\"[《民诉》]-->[《民事诉讼法》]\",1\r\n"_qs);
  ASSERT_TRUE(form->loadPaper(writePaper(u"卷.txt"_qs, PaperWithBadName())));
  form->show();
  form->Command1[0]->click();
  Form11* f = form->resultWindow();
  EXPECT_TRUE(f->report().contains(u"\r\n第2题：未注册的法律名《型法》，未通过检验。\r\n"_qs));
  EXPECT_TRUE(f->report().contains(u"\r\n第3题：未注册的法律名《民诉》《型法》，未通过检验。\r\n"_qs));
  ASSERT_EQ(f->Combo1->count(), 2);
  EXPECT_EQ(f->Combo1->itemText(0), u"《型法》"_qs);
  EXPECT_EQ(f->Combo1->itemText(1), u"《民诉》"_qs);
  EXPECT_EQ(f->Combo1->currentText(), u"《型法》"_qs);
  EXPECT_TRUE(f->Combo1->isVisible());
  EXPECT_TRUE(f->Command2->isVisible());
  EXPECT_EQ(f->Label1->text(), Form11::explanation());
  EXPECT_EQ(f->Label2->text(), u"现在要不要把左边列出的须更改或注册的法律名加入批量替换列表里？"_qs);
  test::CheckOnScreens(f, u"check_result_window_names"_qs);

  // 《民诉》 has a pair in the file already; 《型法》 goes into the list.
  f->Command2->click();
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].title, u"完成"_qs);
  EXPECT_EQ(te.boxes.shown()[0].text, u"执行完毕，共加入1项。"_qs);
  Form12* batch = form->batchWindow();
  EXPECT_TRUE(batch->isLoaded());
  EXPECT_FALSE(batch->isVisible());
  EXPECT_EQ(batch->entries(), (PairList{{u"1   [《民诉》]-->[《民事诉讼法》]"_qs, true}, {u"2   [《型法》]-->[]"_qs, false}}));
  // Nothing is written until the list is saved.
  EXPECT_EQ(te.readGbk(u"\\ini\\listbox.ini"_qs), u"\"[《民诉》]-->[《民事诉讼法》]\",1\r\n"_qs);
  // The batch window shows the added name when it opens.
  form->Command2->click();
  EXPECT_TRUE(batch->isVisible());
  EXPECT_EQ(batch->entries().size(), 2);
}

TEST_F(Form10Test, ANewCheckWithoutUnknownNamesHidesTheList) {
  ASSERT_TRUE(form->loadPaper(writePaper(u"卷.txt"_qs, PaperWithBadName())));
  form->show();
  form->Command1[0]->click();
  EXPECT_TRUE(form->resultWindow()->Combo1->isVisible());
  form->setPaperText(GoodPaper());
  form->Command1[0]->click();
  EXPECT_EQ(form->resultWindow()->Combo1->count(), 0);
  EXPECT_FALSE(form->resultWindow()->Combo1->isVisible());
}

TEST_F(Form10Test, PapersInUtf8AreReadAndSavedAsUtf8) {
  for (const PaperEncoding e : {PaperEncoding::Utf8, PaperEncoding::Utf8Bom, PaperEncoding::Gbk}) {
    const QString path = writePaper(u"卷.txt"_qs, GoodPaper(), e);
    ASSERT_TRUE(form->loadPaper(path));
    EXPECT_EQ(form->encoding(), e);
    EXPECT_EQ(form->paperText(), GoodPaper());
    typeInPaper(u"z"_qs);
    // The paper in the folder of papers is overwritten after the question.
    te.boxes.answer(box::Yes);
    form->Command1[3]->click();
    EXPECT_EQ(ReadBytes(path), EncodePaper(GoodPaper() + u"z"_qs, e));
    ASSERT_EQ(te.boxes.shown().size(), 1);
    EXPECT_EQ(te.boxes.shown()[0].text, u"文件"_qs + path + u"已经存在，要覆盖吗？"_qs);
    te.boxes.clear();
  }
}

TEST_F(Form10Test, FilesThatCannotBeReadOrWrittenAreNamed) {
  const QString missing = te.path(u"\\外部题库\\没有.txt"_qs);
  EXPECT_FALSE(form->loadPaper(missing));
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].text, u"无法打开文件"_qs + missing + u"。"_qs);
  te.boxes.clear();
  // A paper without a file asks for one; a folder that is not there cannot take it.
  form->setPaperText(GoodPaper());
  const QString bad = te.path(u"\\没有的文件夹\\卷.txt"_qs);
  te.dialogs.answer(bad);
  EXPECT_FALSE(form->savePaper());
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].text, u"无法保存文件"_qs + bad + u"，原来的文件没有改变。"_qs);
  // The text is still there.
  EXPECT_EQ(form->paperText(), GoodPaper());
}

TEST_F(Form10Test, AMissingLawListIsSaid) {
  QFile::remove(te.path(u"\\dbf\\listbox.mmd"_qs));
  form->setPaperText(GoodPaper());
  form->Command1[0]->click();
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].text, u"法律名称表"_qs + te.path(u"\\dbf\\listbox.mmd"_qs) +
                                          u"无法读取，所以试题中参见的法律名都当作未注册的法律名报告。"_qs);
  EXPECT_TRUE(form->resultWindow()->report().contains(u"第1题：未注册的法律名《示例刑法》，未通过检验。"_qs));
}

TEST_F(Form10Test, ASelectionMadeWithTheMouseIsKeptForTheFindWindow) {
  form->setPaperText(GoodPaper());
  form->show();
  (void)QTest::qWaitForWindowExposed(form.get());
  const QString held = form->paperText();
  const int at = static_cast<int>(held.indexOf(u"《示例刑法》"_qs) - held.left(held.indexOf(u"《示例刑法》"_qs)).count(u'\n'));
  QTextCursor c = form->RichTextBox1->textCursor();
  c.setPosition(at);
  c.setPosition(at + 6, QTextCursor::KeepAnchor);
  form->RichTextBox1->setTextCursor(c);
  QTest::mouseRelease(form->RichTextBox1->viewport(), Qt::LeftButton, {}, QPoint(5, 5));
  EXPECT_EQ(form->SelectionForFind, u"《示例刑法》"_qs);
  // 查找/替换 opens with it.
  form->Command1[2]->click();
  Form13* find = form->findWindow();
  EXPECT_TRUE(find->isVisible());
  EXPECT_EQ(find->FindCaller, kFindFromPaper);
  EXPECT_EQ(find->Text1->text(), u"《示例刑法》"_qs);
  EXPECT_EQ(find->Text2->text(), u"《示例刑法》"_qs);
  EXPECT_EQ(find->Text1->selectedText(), u"《示例刑法》"_qs);
  find->hide();
}

TEST_F(Form10Test, ReturnAndStartPractice) {
  int returned = 0;
  form->onReturn = [&] { ++returned; };
  ASSERT_TRUE(form->loadPaper(writePaper(u"卷.txt"_qs, GoodPaper())));
  form->show();
  form->Command1[0]->click();
  // 开始做题: the practice window takes the paper window's place.
  form->Command1[4]->click();
  EXPECT_TRUE(te.boxes.shown().isEmpty());
  Form14* practice = form->practiceWindow();
  EXPECT_TRUE(practice->isVisible());
  EXPECT_FALSE(form->isVisible());
  EXPECT_EQ(practice->Label1->text(), u"共3题符合条件,本题为单选题，编号为1"_qs);
  // 返回 of the practice brings the paper window back, the paper renamed
  // with its score.
  practice->Command1[19]->click();
  EXPECT_FALSE(practice->isVisible());
  EXPECT_TRUE(form->isVisible());
  EXPECT_EQ(form->fileName(), te.path(u"\\外部题库\\00%卷.txt"_qs));
  form->Command1[5]->click();
  EXPECT_EQ(returned, 1);
  EXPECT_FALSE(form->isVisible());
  EXPECT_FALSE(form->resultWindow()->isVisible());
}

}  // namespace
}  // namespace mj
