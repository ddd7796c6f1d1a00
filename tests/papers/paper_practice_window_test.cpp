// The practice window Form14 over the paper window: a run from 开始做题, the
// answer buttons of each section, the answer and law boxes, the record file
// after each answer, the refresh, the answer box's menu, the law query,
// leaving with the score in the names, the keys, and what goes wrong.

#include <gtest/gtest.h>

#include <QAction>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRandomGenerator>
#include <QTest>
#include <QTextCursor>

#include "law/law_files.h"
#include "papers/find_replace_window.h"
#include "papers/paper_check.h"
#include "papers/paper_file.h"
#include "papers/paper_practice.h"
#include "papers/paper_practice_window.h"
#include "papers/paper_window.h"
#include "papers/text_box_widget.h"
#include "paper_practice_fixture.h"
#include "platform/textfile.h"
#include "settings/settings.h"
#include "support/printers.h"
#include "support/test_env.h"
#include "support/window_checks.h"

namespace mj {
namespace {

using test::InlineQuestion;
using test::Lines;
using test::ThreeSections;

class Form14Test : public ::testing::Test {
 protected:
  Form14Test() {
    ClearLawCache();
    test::WriteStandardLawList(te);
    te.writeGbk(u"\\lawtxt\\示例刑法.mmd"_qs, test::SampleCriminalLaw());
    te.mkdir(u"\\外部题库"_qs);
    paper = std::make_unique<Form10>(te.env, state);
    practice = paper->practiceWindow();
  }
  ~Form14Test() override {
    practice->hide();
    paper->hide();
    ClearLawCache();
  }
  QString paperPath(const QString& name = u"卷.txt"_qs) const { return te.path(u"\\外部题库\\"_qs + name); }
  QString readRecord(const QString& name = u"卷.rec"_qs) const { return te.readGbk(u"\\外部题库\\"_qs + name); }
  // The paper written, opened, checked and started.
  bool start(const QString& text = ThreeSections(), const QString& path = QString()) {
    const QString file = path.isEmpty() ? paperPath() : path;
    EXPECT_TRUE(WritePaper(file, text, PaperEncoding::Gbk));
    EXPECT_TRUE(paper->loadPaper(file));
    paper->show();
    paper->Command1[0]->click();
    paper->Command1[4]->click();
    return practice->isVisible();
  }
  QString stem() const { return HeldTextOf(practice->RichTextBox1); }
  QString answerBox() const { return HeldTextOf(practice->RichTextBox2); }
  QString lower() const { return HeldTextOf(practice->RichTextBox3); }
  QList<bool> answerButtons() const {
    QList<bool> r;
    for (int i = 0; i < 15; ++i) r.append(practice->Command1[i]->isEnabled());
    return r;
  }
  static QList<bool> Enabled(int first, int last) {
    QList<bool> r;
    for (int i = 0; i < 15; ++i) r.append(i >= first && i <= last);
    return r;
  }
  void press(int button) { practice->Command1[button]->click(); }
  void next() { practice->Command1[16]->click(); }

  test::TestEnv te;
  PaperState state;
  std::unique_ptr<Form10> paper;
  Form14* practice = nullptr;
};

const QString kArticle1 = u"《示例刑法》\r\n　　第一条　为了示例，制定本法。\r\n\r\n"_qs;
const QString kArticle2 = u"《示例刑法》\r\n　　第二条　本法适用于示例。\r\n\r\n"_qs;

TEST_F(Form14Test, TheWindowAsARunStarts) {
  ASSERT_TRUE(start());
  EXPECT_TRUE(te.boxes.shown().isEmpty());
  EXPECT_FALSE(paper->isVisible());
  EXPECT_EQ(practice->objectName(), u"Form14"_qs);
  EXPECT_EQ(practice->windowTitle(), u"做外部试题"_qs);
  QStringList captions;
  for (QPushButton* b : practice->Command1) captions << b->text();
  EXPECT_EQ(captions, (QStringList{u"A"_qs, u"B"_qs, u"C"_qs, u"D"_qs, u"AB"_qs, u"AC"_qs, u"AD"_qs, u"BC"_qs, u"BD"_qs,
                                   u"CD"_qs, u"ABC"_qs, u"ABD"_qs, u"ACD"_qs, u"BCD"_qs, u"ABCD"_qs, u"上一题"_qs,
                                   u"下一题"_qs, u"刷新"_qs, u"法律查询"_qs, u"返回"_qs}));
  for (int i : {17, 18, 19}) EXPECT_EQ(practice->Command1[i]->toolTip(), u"你可以修改题干，然后按此按钮保存。"_qs);
  QStringList menu;
  for (QAction* a : practice->Menu4RightButton->actions()) menu << a->text();
  EXPECT_EQ(menu, (QStringList{u"在插入点加“《》”"_qs, u"用答案框刷新参见框"_qs, u"把所选定的全部替换为……"_qs}));

  // The run's globals and the first question.
  EXPECT_EQ(practice->OutRecFile, paperPath(u"卷.rec"_qs));
  EXPECT_EQ(practice->OutTiList, MakeAllTiList(6));
  EXPECT_EQ(practice->OutTiPos, 1);
  EXPECT_EQ(practice->OutTiNo, 1);
  EXPECT_EQ(practice->OutTiTotal, 6);
  EXPECT_EQ(stem(), u"1．这是第1题的题干(      )\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁"_qs);
  EXPECT_EQ(answerBox(), u"[答案：]A\r\n[参见：]《示例刑法》第1条\r\n"_qs);
  EXPECT_EQ(lower(), u"答案：A参见《示例刑法》第1条\r\n"_qs + kArticle1);
  EXPECT_FALSE(practice->RichTextBox2->isVisible());
  EXPECT_FALSE(practice->RichTextBox3->isVisible());
  EXPECT_EQ(practice->Label1->text(), u"共6题符合条件,本题为单选题，编号为1"_qs);
  EXPECT_EQ(answerButtons(), Enabled(0, 3));
  EXPECT_FALSE(practice->Command1[15]->isEnabled());
  EXPECT_TRUE(practice->Command1[16]->isEnabled());
  // Nothing is written before an answer.
  EXPECT_FALSE(QFileInfo::exists(paperPath(u"卷.rec"_qs)));
  test::CheckOnScreens(practice, u"paper_practice_question"_qs);
}

TEST_F(Form14Test, AnAnswerIsRecordedBeforeItShows) {
  ASSERT_TRUE(start());
  // The record is on the disk when the boxes come.
  bool recordedFirst = false;
  QObject::connect(practice->RichTextBox3, &QPlainTextEdit::textChanged, practice, [&] {
    if (practice->RichTextBox3->isVisible())
      recordedFirst = readRecord() == u"[1]\r\n1=OKOK\r\n[做到题类]\r\n答=1\r\n[做到编号]\r\n答=1\r\n"_qs;
  });
  press(0);
  EXPECT_TRUE(recordedFirst);
  EXPECT_EQ(readRecord(), u"[1]\r\n1=OKOK\r\n[做到题类]\r\n答=1\r\n[做到编号]\r\n答=1\r\n"_qs);
  EXPECT_EQ(lower(), u"恭喜你，你做对了。\r\n答案：A参见《示例刑法》第1条\r\n"_qs + kArticle1);
  EXPECT_TRUE(practice->RichTextBox2->isVisible());
  EXPECT_TRUE(practice->RichTextBox3->isVisible());
  EXPECT_EQ(answerButtons(), Enabled(0, -1));
  test::CheckOnScreens(practice, u"paper_practice_answer"_qs);

  // A wrong answer to question 2, which then stands in the record.
  next();
  EXPECT_FALSE(practice->RichTextBox3->isVisible());
  EXPECT_EQ(answerButtons(), Enabled(0, 3));
  EXPECT_TRUE(practice->Command1[15]->isEnabled());
  press(3);
  EXPECT_EQ(lower(), u"错选为D。\r\n答案：B参见《示例刑法》第2条\r\n"_qs + kArticle2);
  EXPECT_EQ(readRecord(), u"[1]\r\n1=OKOK\r\n2=D\r\n[做到题类]\r\n答=1\r\n[做到编号]\r\n答=2\r\n"_qs);
  // Back and again: the last wrong answer is named.
  practice->Command1[15]->click();
  practice->Command1[16]->click();
  EXPECT_EQ(practice->OutTiNo, 2);
  press(1);
  EXPECT_EQ(lower(), u"上次错选为D,本次恭喜你，你做对了。\r\n答案：B参见《示例刑法》第2条\r\n"_qs + kArticle2);
  EXPECT_EQ(readRecord(), u"[1]\r\n1=OKOK\r\n2=OKOK\r\n[做到题类]\r\n答=1\r\n[做到编号]\r\n答=2\r\n"_qs);
}

TEST_F(Form14Test, EachSectionHasItsButtons) {
  ASSERT_TRUE(start());
  next();
  next();
  next();
  // Multiple choice: two letters or more; A、C counts as AC.
  EXPECT_EQ(practice->Label1->text(), u"共6题符合条件,本题为多选题，编号为4"_qs);
  EXPECT_EQ(answerButtons(), Enabled(4, 14));
  press(5);
  EXPECT_TRUE(lower().startsWith(u"恭喜你，你做对了。\r\n答案：A、C参见《示例刑法》第1条、第2条\r\n"_qs + kArticle1 + kArticle2));
  next();
  press(4);
  EXPECT_TRUE(lower().startsWith(u"错选为AB。\r\n"_qs));
  // Free choice: all fifteen; ABCD needs button 14.
  next();
  EXPECT_EQ(practice->Label1->text(), u"共6题符合条件,本题为任选题，编号为1"_qs);
  EXPECT_EQ(answerButtons(), Enabled(0, 14));
  EXPECT_FALSE(practice->Command1[16]->isEnabled());
  EXPECT_TRUE(practice->Command1[15]->isEnabled());
  press(13);
  EXPECT_TRUE(lower().startsWith(u"错选为BCD。\r\n"_qs));
  practice->Command1[15]->click();
  next();
  press(14);
  EXPECT_TRUE(lower().startsWith(u"上次错选为BCD,本次恭喜你，你做对了。\r\n"_qs));
  EXPECT_EQ(readRecord(),
            u"[2]\r\n4=OKOK\r\n5=AB\r\n[做到题类]\r\n答=3\r\n[做到编号]\r\n答=1\r\n[3]\r\n1=OKOK\r\n"_qs);
  // 下一题 on the last cell stays there.
  practice->move(1);
  EXPECT_EQ(practice->OutTiPos, 6);
}

TEST_F(Form14Test, PapersWithSeparateAnswers) {
  ASSERT_TRUE(start(test::SeparateAnswers()));
  EXPECT_EQ(state.OutTiMode, 2);
  EXPECT_EQ(answerBox(), u"[答案：]B\r\n[参见：]《示例刑法》第2条\r\n"_qs);
  press(1);
  EXPECT_EQ(lower(), u"恭喜你，你做对了。\r\n答案：B参见《示例刑法》第2条\r\n"_qs + kArticle2);
  next();
  // The cut CR of the answer section does not show.
  EXPECT_EQ(answerBox(), u"[答案：]C\r\n"_qs);
  press(0);
  EXPECT_EQ(lower(), u"错选为A。\r\n答案：C参见\r\n"_qs);
  next();
  press(6);
  EXPECT_EQ(readRecord(), u"[1]\r\n1=OKOK\r\n2=A\r\n[做到题类]\r\n答=2\r\n[做到编号]\r\n答=3\r\n[2]\r\n3=OKOK\r\n"_qs);
}

TEST_F(Form14Test, AWrongLawNameIsPutRightInTheAnswerBoxAndRefreshed) {
  QStringList l = {u"一、单项选择题"_qs};
  l += InlineQuestion(1, u"A"_qs, u"示例刑法第2条"_qs);
  ASSERT_TRUE(start(Lines(l)));
  // An empty 《》 stands before the first 第.
  EXPECT_EQ(answerBox(), u"[答案：]A\r\n[参见：]示例刑法《》第2条\r\n"_qs);
  // Refresh before any change: what the button is for.
  practice->Command1[17]->click();
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].text, Form14::refreshHelpText());
  EXPECT_EQ(te.boxes.shown()[0].style, box::Information);
  EXPECT_EQ(Form14::refreshHelpText(),
            u"    此按钮专用于左边的第二个文本框，当这个框里的参见法律/法规名引用错误时，比如说宪法没有加“《》”，“刑法”写成了“型法”时程序找不到参见法条，这时程序会在答案后自动加一个空的“《》”，你可以用鼠标把正确的法律/法规名拖入该括号内（或直接打字填入），然后点这个刷新按钮，以使最下面的文本框里能出现希望得到的参见法条。另外，为便于你添加“《》”和刷新，程序为答案框提供了一个右键菜单。"_qs);
  te.boxes.clear();
  press(0);
  // The name typed into the brackets, then 刷新: the article comes.
  QTextCursor c = practice->RichTextBox2->textCursor();
  c.setPosition(static_cast<int>(practice->RichTextBox2->toPlainText().indexOf(u"《》"_qs)) + 1);
  practice->RichTextBox2->setTextCursor(c);
  practice->RichTextBox2->setFocus();
  practice->RichTextBox2->insertPlainText(u"示例刑法"_qs);
  EXPECT_TRUE(practice->answerEdited());
  practice->Command1[17]->click();
  EXPECT_TRUE(te.boxes.shown().isEmpty());
  EXPECT_EQ(lower(), u"答案：A参见《示例刑法》第2条\r\n"_qs + kArticle2);
  // The menu entry does the same.
  practice->RefreshAboutLaw->trigger();
  EXPECT_EQ(lower(), u"答案：A参见《示例刑法》第2条\r\n"_qs + kArticle2);
  // A move clears the mark.
  practice->move(0);
  EXPECT_FALSE(practice->answerEdited());
}

TEST_F(Form14Test, ALawTheProgramDoesNotHaveIsSaid) {
  QStringList l = {u"一、单项选择题"_qs};
  l += InlineQuestion(1, u"C"_qs, u"《没有的法》第3条"_qs);
  ASSERT_TRUE(start(Lines(l)));
  press(2);
  EXPECT_EQ(lower(), u"恭喜你，你做对了。\r\n答案：C参见《没有的法》第3条\r\n《没有的法》\r\n法律文件"_qs + te.root() +
                         u"/lawtxt/没有的法.mmd不存在。\r\n"_qs);
}

TEST_F(Form14Test, TheAnswerBoxMenuAndFindReplaceOverThePaper) {
  ASSERT_TRUE(start());
  press(0);
  // 在插入点加“《》”: at the caret, the caret between the brackets.
  QTextCursor c = practice->RichTextBox2->textCursor();
  c.setPosition(0);
  practice->RichTextBox2->setTextCursor(c);
  practice->AddBracks->trigger();
  EXPECT_EQ(answerBox(), u"《》[答案：]A\r\n[参见：]《示例刑法》第1条\r\n"_qs);
  EXPECT_EQ(practice->RichTextBox2->textCursor().position(), 1);
  // A selection made with the mouse goes to the paper window for find/replace.
  const int at = static_cast<int>(practice->RichTextBox2->toPlainText().indexOf(u"示例刑法"_qs));
  c.setPosition(at);
  c.setPosition(at + 4, QTextCursor::KeepAnchor);
  practice->RichTextBox2->setTextCursor(c);
  QTest::mouseRelease(practice->RichTextBox2->viewport(), Qt::LeftButton, {}, QPoint(5, 5));
  EXPECT_EQ(paper->SelectionForFind, u"示例刑法"_qs);
  practice->Find_Repl->trigger();
  Form13* find = paper->findWindow();
  EXPECT_TRUE(find->isVisible());
  EXPECT_EQ(find->FindCaller, kFindFromPaperPractice);
  EXPECT_EQ(find->Text1->text(), u"示例刑法"_qs);
  // 全部替换 works on the paper's text.
  find->Text2->setText(u"示例刑法典"_qs);
  find->command(2);
  EXPECT_TRUE(paper->paperText().contains(u"《示例刑法典》第1条"_qs));
  EXPECT_FALSE(paper->Command1[4]->isEnabled());
  // Leaving puts the window away.
  te.boxes.clear();
  practice->Command1[19]->click();
  EXPECT_FALSE(find->isVisible());
}

TEST_F(Form14Test, ThePrintedArticlesLeadToTheLawQuery) {
  QString opened;
  int place = -1;
  bool withCtrl = true;
  practice->openLawHook = [&](const QString& text, int position, bool ctrl) {
    opened = text;
    place = position;
    withCtrl = ctrl;
  };
  QString asked;
  practice->lawQueryHook = [&](const QString& text) { asked = text; };
  ASSERT_TRUE(start());
  press(0);
  practice->Command1[18]->click();
  EXPECT_EQ(asked, lower());
  // Five characters selected are not enough; six are.
  const QString shown = practice->RichTextBox3->toPlainText();
  const int at = static_cast<int>(shown.indexOf(u"第一条"_qs));
  QTextCursor c = practice->RichTextBox3->textCursor();
  c.setPosition(at);
  c.setPosition(at + 5, QTextCursor::KeepAnchor);
  practice->RichTextBox3->setTextCursor(c);
  QTest::mouseRelease(practice->RichTextBox3->viewport(), Qt::LeftButton, {}, QPoint(5, 5));
  EXPECT_EQ(place, -1);
  c.setPosition(at);
  c.setPosition(at + 6, QTextCursor::KeepAnchor);
  practice->RichTextBox3->setTextCursor(c);
  QTest::mouseRelease(practice->RichTextBox3->viewport(), Qt::LeftButton, Qt::ControlModifier, QPoint(5, 5));
  EXPECT_EQ(opened, shown);
  EXPECT_EQ(place, at + 1);
  EXPECT_TRUE(withCtrl);
}

TEST_F(Form14Test, LeavingPutsTheScoreIntoTheNames) {
  ASSERT_TRUE(start());
  press(0);
  next();
  press(0);
  next();
  press(2);
  practice->Command1[19]->click();
  EXPECT_FALSE(practice->isVisible());
  EXPECT_TRUE(paper->isVisible());
  // 2 right of 6: 33%.
  EXPECT_EQ(paper->fileName(), paperPath(u"33%卷.txt"_qs));
  EXPECT_EQ(paper->FileLabel->text(), u"文件："_qs + paperPath(u"33%卷.txt"_qs) + u"（编码：GBK）"_qs);
  EXPECT_EQ(QDir(te.path(u"\\外部题库"_qs)).entryList(QDir::Files), (QStringList{u"33%卷.rec"_qs, u"33%卷.txt"_qs}));
  EXPECT_EQ(readRecord(u"33%卷.rec"_qs),
            u"[1]\r\n1=OKOK\r\n2=A\r\n3=OKOK\r\n[做到题类]\r\n答=1\r\n[做到编号]\r\n答=3\r\n"_qs);
}

TEST_F(Form14Test, TheCloseButtonLeavesAsReturnDoes) {
  ASSERT_TRUE(start());
  press(0);
  practice->close();
  EXPECT_TRUE(paper->isVisible());
  EXPECT_EQ(paper->fileName(), paperPath(u"16%卷.txt"_qs));
}

TEST_F(Form14Test, AllRightGivesZeroZeroAndTheNextRunOffersTheWrongOnes) {
  ASSERT_TRUE(start());
  const int right[] = {0, 1, 2, 5, 8, 14};
  for (int i = 0; i < 6; ++i) {
    if (i > 0) next();
    press(right[i]);
  }
  practice->Command1[19]->click();
  EXPECT_EQ(paper->fileName(), paperPath(u"00%卷.txt"_qs));
  // The last question was answered last: only the question of the wrong
  // ones comes, and with all right there is nothing to do.
  te.boxes.answer(box::Yes);
  paper->Command1[0]->click();
  paper->Command1[4]->click();
  ASSERT_EQ(te.boxes.shown().size(), 2);
  EXPECT_TRUE(te.boxes.shown()[0].text.endsWith(u"本次是否只做曾做错的题和未做过的题？"_qs));
  EXPECT_EQ(te.boxes.shown()[0].title, u"请选择"_qs);
  EXPECT_EQ(te.boxes.shown()[1].text, u"没有符合条件的试题。"_qs);
  EXPECT_FALSE(practice->isVisible());
}

TEST_F(Form14Test, ASecondRunOverTheWrongOnesShowsFewerCells) {
  ASSERT_TRUE(start());
  for (int i = 0; i < 6; ++i) {
    if (i > 0) next();
    press(i < 3 ? 3 : 14);  // 1-3 wrong, 4 and 5 wrong, 6 right
  }
  practice->Command1[19]->click();
  te.boxes.answer(box::Yes);
  paper->Command1[0]->click();
  paper->Command1[4]->click();
  ASSERT_TRUE(practice->isVisible());
  EXPECT_EQ(practice->OutTiList, u"*   1**   2**   3**   4**   5*"_qs);
  EXPECT_EQ(practice->Label1->text(), u"共5题符合条件,本题为单选题，编号为1"_qs);
  practice->move(4);
  EXPECT_EQ(practice->Label1->text(), u"共5题符合条件,本题为多选题，编号为5"_qs);
  EXPECT_FALSE(practice->Command1[16]->isEnabled());
}

TEST_F(Form14Test, AQuestionWithoutSectionShowsNoQuestion) {
  ASSERT_TRUE(start());
  PracticeStart s{u"*   1**  99*"_qs, practice->OutRecFile, 6};
  practice->startRun(s);
  practice->move(1);
  EXPECT_EQ(practice->OutTiNo, 99);
  EXPECT_EQ(stem(), u"没有该题题干。"_qs);
  EXPECT_EQ(answerBox(), u"没有该题答案。"_qs);
  EXPECT_EQ(practice->Label1->text(), u"共2题符合条件,"_qs);
  EXPECT_EQ(answerButtons(), Enabled(0, -1));
  // Nothing to answer, nothing written.
  practice->answer(0);
  EXPECT_FALSE(QFileInfo::exists(paperPath(u"卷.rec"_qs)));
}

TEST_F(Form14Test, AnsweringByKeys) {
  ASSERT_TRUE(start());
  practice->Command1[16]->setFocus();
  // A single choice answers at once.
  QTest::keyClick(practice->Command1[16], Qt::Key_B);
  EXPECT_TRUE(lower().startsWith(u"错选为B。"_qs));
  next();
  next();
  next();
  // A multiple choice collects the letters; Enter answers.
  QTest::keyClick(practice->Command1[16], Qt::Key_C);
  QTest::keyClick(practice->Command1[16], Qt::Key_A);
  EXPECT_EQ(practice->typedLetters(), u"AC"_qs);
  EXPECT_EQ(practice->typedLabel->text(), u"已按：AC"_qs);
  QTest::keyClick(practice->Command1[16], Qt::Key_Escape);
  EXPECT_EQ(practice->typedLetters(), u""_qs);
  QTest::keyClick(practice->Command1[16], Qt::Key_C);
  QTest::keyClick(practice->Command1[16], Qt::Key_A);
  QTest::keyClick(practice->Command1[16], Qt::Key_Return);
  EXPECT_TRUE(lower().startsWith(u"恭喜你，你做对了。"_qs));
  EXPECT_EQ(practice->typedLabel->text(), u""_qs);
  // Letters typed into the stem box stay there.
  next();
  practice->RichTextBox1->setFocus();
  QTest::keyClick(practice->RichTextBox1, Qt::Key_A);
  EXPECT_FALSE(practice->RichTextBox3->isVisible());
}

TEST_F(Form14Test, PageKeysMoveAndEscWithNothingTypedLeaves) {
  ASSERT_TRUE(start());
  practice->Command1[16]->setFocus();
  QTest::keyClick(practice->Command1[16], Qt::Key_PageDown);
  EXPECT_EQ(practice->OutTiNo, 2);
  QTest::keyClick(practice->Command1[16], Qt::Key_PageUp);
  EXPECT_EQ(practice->OutTiNo, 1);
  // On the first question 上一题 is off: PageUp stays there.
  QTest::keyClick(practice->Command1[16], Qt::Key_PageUp);
  EXPECT_EQ(practice->OutTiNo, 1);
  press(0);
  QTest::keyClick(practice->Command1[16], Qt::Key_PageDown);
  QTest::keyClick(practice->Command1[16], Qt::Key_PageDown);
  QTest::keyClick(practice->Command1[16], Qt::Key_PageDown);
  EXPECT_EQ(practice->OutTiNo, 4);
  // The first Esc clears the letters typed, the second leaves as 返回 does.
  QTest::keyClick(practice->Command1[16], Qt::Key_C);
  EXPECT_EQ(practice->typedLetters(), u"C"_qs);
  QTest::keyClick(practice->Command1[16], Qt::Key_Escape);
  EXPECT_EQ(practice->typedLetters(), u""_qs);
  EXPECT_TRUE(practice->isVisible());
  QTest::keyClick(practice->Command1[16], Qt::Key_Escape);
  EXPECT_FALSE(practice->isVisible());
  EXPECT_TRUE(paper->isVisible());
  // 1 right of 6: 16%.
  EXPECT_EQ(paper->fileName(), paperPath(u"16%卷.txt"_qs));
  EXPECT_EQ(readRecord(u"16%卷.rec"_qs), u"[1]\r\n1=OKOK\r\n[做到题类]\r\n答=1\r\n[做到编号]\r\n答=1\r\n"_qs);
}

TEST_F(Form14Test, ARecordThatCannotBeWrittenIsSaidOnce) {
  ASSERT_TRUE(start());
  practice->startRun(PracticeStart{MakeAllTiList(6), te.path(u"\\没有的文件夹\\卷.rec"_qs), 6});
  press(0);
  next();
  press(0);
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].text, u"做题记录无法写入文件"_qs + te.path(u"\\没有的文件夹\\卷.rec"_qs) +
                                          u"，这道题的结果没有记下来。以后的题如果也不能记录，不再另行提示。"_qs);
  // The answer shows all the same.
  EXPECT_TRUE(lower().startsWith(u"错选为A。"_qs));
}

TEST_F(Form14Test, APaperThatVanishesDuringTheRunIsSaidAndTheRecordKept) {
  ASSERT_TRUE(start());
  ASSERT_TRUE(QFile::remove(paperPath()));
  press(0);
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].text, u"试卷文件"_qs + paperPath() + u"已经不存在了，可能被移走或删除了。做题记录仍然记在"_qs +
                                          paperPath(u"卷.rec"_qs) + u"里；回到试卷窗口后请按“保存一下”把试卷重新保存。"_qs);
  EXPECT_EQ(readRecord(), u"[1]\r\n1=OKOK\r\n[做到题类]\r\n答=1\r\n[做到编号]\r\n答=1\r\n"_qs);
  next();
  press(0);
  EXPECT_EQ(te.boxes.shown().size(), 1);
  // Leaving renames nothing; saving brings the paper back beside its record.
  practice->Command1[19]->click();
  EXPECT_EQ(paper->fileName(), paperPath());
  EXPECT_TRUE(QFileInfo::exists(paperPath(u"卷.rec"_qs)));
  te.boxes.clear();
  ASSERT_TRUE(paper->savePaper());
  EXPECT_EQ(ReadPaper(paperPath()).text, ThreeSections());
}

TEST_F(Form14Test, APaperThatVanishedBeforeTheStartIsSaid) {
  ASSERT_TRUE(WritePaper(paperPath(), ThreeSections(), PaperEncoding::Gbk));
  ASSERT_TRUE(paper->loadPaper(paperPath()));
  paper->show();
  paper->Command1[0]->click();
  ASSERT_TRUE(QFile::remove(paperPath()));
  paper->Command1[4]->click();
  EXPECT_FALSE(practice->isVisible());
  EXPECT_TRUE(paper->isVisible());
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_TRUE(te.boxes.shown()[0].text.startsWith(u"试卷文件"_qs + paperPath() + u"已经不存在了"_qs));
}

TEST_F(Form14Test, APaperOutsideTheFolderIsPractisedWithItsRecordBesideIt) {
  te.mkdir(u"\\别处"_qs);
  const QString outside = te.path(u"\\别处\\卷.txt"_qs);
  ASSERT_TRUE(start(ThreeSections(), outside));
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].title, u"最好保存进“外部题库”文件夹下。"_qs);
  press(0);
  EXPECT_EQ(te.readGbk(u"\\别处\\卷.rec"_qs), u"[1]\r\n1=OKOK\r\n[做到题类]\r\n答=1\r\n[做到编号]\r\n答=1\r\n"_qs);
  practice->Command1[19]->click();
  EXPECT_EQ(paper->fileName(), outside);
  EXPECT_EQ(QDir(te.path(u"\\别处"_qs)).entryList(QDir::Files), (QStringList{u"卷.rec"_qs, u"卷.txt"_qs}));
}

// A record file that is not what the practice wrote: the question whether
// to delete it comes, nothing goes without Yes, and nothing breaks.
TEST_F(Form14Test, BadRecordFilesAreOfferedForDeletion) {
  QRandomGenerator rng(1121);
  QByteArray random(300, Qt::Uninitialized);
  for (char& c : random) c = static_cast<char>(rng.bounded(256));
  const QString whole = u"[1]\r\n1=OKOK\r\n2=C\r\n[做到题类]\r\n答=1\r\n[做到编号]\r\n答=2\r\n"_qs;
  const QList<std::pair<const char*, QByteArray>> cases = {
      {"empty", QByteArray()},
      {"cut off", ToGbk(whole.left(whole.indexOf(u"[做到编号]"_qs) + 3))},
      {"random bytes", random},
      {"of a paper that has changed", ToGbk(u"[1]\r\n1=OKOK\r\n[做到题类]\r\n答=1\r\n[做到编号]\r\n答=9\r\n"_qs)},
  };
  ASSERT_TRUE(WritePaper(paperPath(), ThreeSections(), PaperEncoding::Gbk));
  ASSERT_TRUE(paper->loadPaper(paperPath()));
  paper->show();
  paper->Command1[0]->click();
  const QString rec = paperPath(u"卷.rec"_qs);
  for (const auto& [what, bytes] : cases) {
    SCOPED_TRACE(what);
    ASSERT_TRUE(WriteBytesAtomic(rec, bytes));
    te.boxes.clear();
    te.boxes.answer(box::No);
    paper->Command1[4]->click();
    ASSERT_EQ(te.boxes.shown().size(), 1);
    EXPECT_EQ(te.boxes.shown()[0].text,
              u"没有符合条件的试题，或者是本试卷的记录文件，也就是"_qs + rec + u"有误，要删除本文件吗？"_qs);
    EXPECT_FALSE(practice->isVisible());
    EXPECT_TRUE(ReadBytes(rec) == bytes);
    te.boxes.clear();
    te.boxes.answer(box::Yes);
    paper->Command1[4]->click();
    EXPECT_FALSE(QFileInfo::exists(rec));
    EXPECT_FALSE(practice->isVisible());
  }
  // Without it the run starts from the first question.
  te.boxes.clear();
  paper->Command1[4]->click();
  EXPECT_TRUE(practice->isVisible());
  EXPECT_EQ(practice->OutTiNo, 1);
}

TEST_F(Form14Test, TheBoxesTakeTheStyleOfThePracticeBoxes) {
  Settings settings;
  TextStyle style = settings.style();
  style.fontSize = 21;
  style.bold = true;
  settings.setStyle(style);
  practice->setSettings(&settings);
  for (QPlainTextEdit* b : {practice->RichTextBox1, practice->RichTextBox2, practice->RichTextBox3}) {
    EXPECT_EQ(b->font().pointSize(), 21);
    EXPECT_TRUE(b->font().bold());
  }
  style.fontSize = 12;
  settings.setStyle(style);
  EXPECT_EQ(practice->RichTextBox2->font().pointSize(), 12);
  practice->setSettings(nullptr);
}

}  // namespace
}  // namespace mj
