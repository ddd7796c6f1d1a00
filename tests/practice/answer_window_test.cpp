// The answer window Form3: its controls, hiding a question, the history and
// provider boxes, the exchange number, the discussion link and moving on.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSplitter>
#include <QTest>
#include <QTextEdit>

#include "platform/text_toolkit.h"
#include "practice_harness.h"

using namespace mj;
using pt::PracticeHarness;

namespace {

const QString kArticle1 = u"《示例法》\r\n　　第一条　第一条的内容。\r\n"_qs;
const QString kArticle2 = u"《示例法》\r\n　　第二条　第二条的内容。\r\n"_qs;

// A run over the single-choice bank with the answer window open on its first
// question (answered A, wrongly).
struct Answered : PracticeHarness {
  explicit Answered(bool withForum = false, const QList<int>& boards = {}, int passDays = 30) : PracticeHarness(false) {
    pt::MakePracticeFolder(t, {}, withForum, boards);
    enterShiTi(1, 1, passDays);
    EXPECT_TRUE(session().startFromDirectory(2));
    answer(u"A"_qs);
  }
};

}  // namespace

TEST(AnswerWindow, ControlsAndTooltips) {
  Answered h;
  Form3* f = h.form3();
  EXPECT_EQ(f->windowTitle(), u"答案与解析"_qs);
  EXPECT_EQ(f->objectName(), u"Form3"_qs);
  EXPECT_EQ(f->Label1->text(), u"网络交流号"_qs);
  EXPECT_EQ(f->Text1->toolTip(), u"可通过QQ等通讯软件得到其它交流号，然后粘贴到这里，便可快速交流试题。"_qs);
  EXPECT_EQ(f->Command1[0]->text(), u"标准"_qs);
  EXPECT_EQ(f->Command1[1]->text(), u"上一题"_qs);
  EXPECT_EQ(f->Command1[2]->text(), u"下一题"_qs);
  EXPECT_EQ(f->Command1[3]->text(), u"返回"_qs);
  EXPECT_EQ(f->Command2->text(), u"法律查询"_qs);
  EXPECT_EQ(f->Command2->toolTip(), u"在查询法律的同时还能使你做一下出自该法条的其它试题"_qs);
  EXPECT_EQ(f->Command3->text(), u"屏蔽该题"_qs);
  EXPECT_EQ(f->Command3->toolTip(), u"如果此题已经非常熟练或有错误或重复，则点击这里便可使其永不在此处出现。"_qs);
  EXPECT_EQ(f->Command4->text(), u"修改/注释"_qs);
  EXPECT_EQ(f->Command4->toolTip(), u"对本题进行修改、加注释并保存。"_qs);
  EXPECT_EQ(f->Command5[0]->text(), u"做题历史"_qs);
  EXPECT_EQ(f->Command5[1]->text(), u"试题提供"_qs);
  EXPECT_EQ(f->Command6->text(), u"网上讨论"_qs);
  // The law query and the editor come with their windows.
  EXPECT_FALSE(f->Command2->isEnabled());
  EXPECT_FALSE(f->Command4->isEnabled());
}

TEST(AnswerWindow, TheLawQueryHookEnablesItsButton) {
  Answered h;
  int opened = 0;
  h.frame->setLawQueryHook([&] { ++opened; });
  EXPECT_TRUE(h.form3()->Command2->isEnabled());
  h.form3()->Command2->click();
  EXPECT_EQ(opened, 1);
  h.frame->setLawQueryHook({});
  EXPECT_FALSE(h.form3()->Command2->isEnabled());
  int edited = 0;
  h.frame->setEditorHook([&] { ++edited; });
  h.form3()->Command4->click();
  EXPECT_EQ(edited, 1);
}

TEST(AnswerWindow, HistoryOfAQuestionDoneOnce) {
  Answered h;
  h.form3()->Command5[0]->click();
  const QList<BoxRecord> boxes = h.t.boxes.shown();
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_EQ(boxes[0].title, u"本题已做历史"_qs);
  EXPECT_EQ(boxes[0].text, u"本题只做过一次，情况如下：\r\n\r\n2026-11-21 09:30   A\r\n"_qs);
}

TEST(AnswerWindow, HistoryOfAQuestionDoneBefore) {
  PracticeHarness h(false);
  const QString older = u"2026-09-01 08:00   B2026-08-01 08:00   A"_qs;
  pt::MakePracticeFolder(h.t, {{u"10001100001"_qs, u"B"_qs, older}});
  h.enterShiTi(5, 1, 30);
  ASSERT_TRUE(h.session().startFromDirectory(2));
  h.answer(u"B"_qs);
  h.form3()->Command5[0]->click();
  ASSERT_EQ(h.t.boxes.shown().size(), 1);
  EXPECT_EQ(h.t.boxes.shown()[0].text,
            u"本题共做过3次，分别如下：\r\n\r\n2026-11-21 09:30   B\r\n2026-09-01 08:00   B\r\n"
            u"2026-08-01 08:00   A\r\n"_qs);
}

TEST(AnswerWindow, HistoryBeforeAnyRecord) {
  PracticeHarness h;
  h.enterShiTi();
  h.session().showHistory();
  ASSERT_EQ(h.t.boxes.shown().size(), 1);
  EXPECT_EQ(h.t.boxes.shown()[0].text, u"本题第一次做"_qs);
}

TEST(AnswerWindow, ProviderBox) {
  Answered h;
  h.form3()->Command1[3]->click();
  h.frame->Frame3Cmd[2]->click();
  h.frame->Frame3Cmd[2]->click();
  h.answer(u"C"_qs);
  h.form3()->Command5[1]->click();
  ASSERT_EQ(h.t.boxes.shown().size(), 1);
  EXPECT_EQ(h.t.boxes.shown()[0].title, u"提供者信息"_qs);
  EXPECT_EQ(h.t.boxes.shown()[0].text, pt::kProvider);
  // A question without a provider block says so.
  h.form3()->Command1[3]->click();
  h.frame->Frame3Cmd[1]->click();
  h.answer(u"A"_qs);
  h.form3()->Command5[1]->click();
  EXPECT_EQ(h.t.boxes.shown()[1].text, u"本题无试题提供者信息。"_qs);
  EXPECT_EQ(h.t.boxes.shown()[1].title, u"提供者信息"_qs);
}

TEST(AnswerWindow, HidingAskesFirstAndNoKeepsTheQuestion) {
  Answered h;
  h.t.boxes.answer(box::No);
  h.form3()->Command3->click();
  const QList<BoxRecord> boxes = h.t.boxes.shown();
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_EQ(boxes[0].title, u"请你确认"_qs);
  EXPECT_EQ(boxes[0].text, u"按此按钮将永久隐藏该题，确定吗？"_qs);
  EXPECT_EQ(box::buttonsOf(boxes[0].style), box::YesNo);
  EXPECT_EQ(box::defaultAnswer(boxes[0].style), box::No);
  EXPECT_EQ(h.form3()->Command3->text(), u"屏蔽该题"_qs);
  EXPECT_TRUE(h.form3()->Command3->isEnabled());
  EXPECT_EQ(pt::ColumnOf(h.t, tables::kItems, u"valid2"_qs)[0], u"T"_qs);
}

TEST(AnswerWindow, AHiddenQuestionsButtonStaysDisabledUntilTheWindowLoads) {
  // No days to wait: a wrong answer stays due.
  Answered h(false, {}, 0);
  h.t.boxes.answer(box::Yes);
  h.form3()->Command3->click();
  EXPECT_EQ(h.form3()->Command3->text(), u"已经屏蔽"_qs);
  EXPECT_FALSE(h.form3()->Command3->isEnabled());
  EXPECT_EQ(pt::ColumnOf(h.t, tables::kItems, u"valid2"_qs),
            QStringList({u"F"_qs, u"T"_qs, u"T"_qs, u"T"_qs, u"T"_qs, u"T"_qs, u"T"_qs}));
  EXPECT_FALSE(h.app.ItemData[0].valid2);
  // The hidden question stays in the current list.
  EXPECT_EQ(h.run().count(), 4);
  // 返回 hides the window: the next answer finds the button as it was.
  h.form3()->Command1[3]->click();
  h.frame->Frame3Cmd[2]->click();
  h.answer(u"A"_qs);
  EXPECT_EQ(h.form3()->Command3->text(), u"已经屏蔽"_qs);
  EXPECT_FALSE(h.form3()->Command3->isEnabled());
  // Closed with its own button, the window loads again on its next show.
  h.form3()->close();
  h.frame->Frame3Cmd[2]->click();
  h.answer(u"A"_qs);
  EXPECT_EQ(h.form3()->Command3->text(), u"屏蔽该题"_qs);
  EXPECT_TRUE(h.form3()->Command3->isEnabled());
  // The hidden question no longer comes in a new run, though it is due:
  // the second is finished, the third and fourth are due.
  h.form3()->Command1[3]->click();
  h.frame->Frame3Cmd[3]->click();
  ASSERT_TRUE(h.session().startFromDirectory(2));
  EXPECT_EQ(h.run().RunIds, u"1000110000310001100004"_qs);
}

TEST(AnswerWindow, DoubleStarsOfAnExchangeNumberAreReduced) {
  Answered h;
  h.form3()->Text1->setText(u"**10001200001**"_qs);
  EXPECT_EQ(h.form3()->Text1->text(), u"*10001200001*"_qs);
  // The question of that number with its answer and law text; the run stays.
  EXPECT_EQ(h.upper(), pt::Stem(u"多选一"_qs));
  EXPECT_EQ(h.lower(), u"答案：AC参见《示例法》第1条\r\n\r\n"_qs + kArticle1 + u"\r\n"_qs);
  EXPECT_EQ(h.run().CurIndex, 1);
  EXPECT_EQ(h.run().CurItemId, u"10001100001"_qs);
  EXPECT_TRUE(h.t.boxes.shown().isEmpty());
}

TEST(AnswerWindow, TheCurrentQuestionsNumberDoesNothing) {
  Answered h;
  const QString lower = h.lower();
  h.form3()->Text1->setText(u"*10001100001*"_qs);
  EXPECT_EQ(h.lower(), lower);
  h.form3()->Text1->setText(u"**10001100001**"_qs);
  EXPECT_EQ(h.form3()->Text1->text(), u"*10001100001*"_qs);
  EXPECT_EQ(h.lower(), lower);
  EXPECT_TRUE(h.t.boxes.shown().isEmpty());
}

TEST(AnswerWindow, AnUnknownExchangeNumber) {
  Answered h;
  const QString lower = h.lower();
  h.form3()->Text1->setText(u"*99999100001*"_qs);
  const QList<BoxRecord> boxes = h.t.boxes.shown();
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_EQ(boxes[0].text, u"该交流号不存在。"_qs);
  EXPECT_EQ(boxes[0].title, u"明镜学伴3.10提示"_qs);
  EXPECT_EQ(box::iconOf(boxes[0].style), box::Exclamation);
  EXPECT_EQ(h.lower(), lower);
  // Typing a number is quiet until it has its form.
  h.t.boxes.clear();
  h.form3()->Text1->setText(u"*1000120000"_qs);
  h.form3()->Text1->setText(u"*10001200002"_qs);
  EXPECT_TRUE(h.t.boxes.shown().isEmpty());
  EXPECT_EQ(h.lower(), lower);
}

TEST(AnswerWindow, DiscussionLinkFromTheForumFields) {
  Answered h(true, {14, 0, 0, 0, 0, 0, 0});
  h.app.NewsLink1 = u"http://bbs.example.org/dispbbs.asp"_qs;
  h.app.NewsLink3 = u"&skin=1"_qs;
  h.form3()->Command1[3]->click();
  h.answer(u"B"_qs);
  EXPECT_TRUE(h.form3()->Command6->isEnabled());
  EXPECT_EQ(h.form3()->Command6->toolTip(), u"到网上进行专“题”讨论。"_qs);
  h.form3()->Command6->click();
  ASSERT_EQ(h.t.shell.calls.size(), 1);
  EXPECT_EQ(h.t.shell.calls[0].target, u"http://bbs.example.org/dispbbs.asp?boardid=14&id=1014&skin=1"_qs);
  EXPECT_EQ(h.t.shell.calls[0].workDir, h.t.root());
  // The next question has no forum numbers: the button is disabled.
  h.form3()->Command1[3]->click();
  h.frame->Frame3Cmd[2]->click();
  h.answer(u"A"_qs);
  EXPECT_FALSE(h.form3()->Command6->isEnabled());
  // 上一题 and 下一题 of the answer window: the button follows the question.
  h.form3()->Command1[1]->click();
  EXPECT_EQ(h.run().CurIndex, 1);
  EXPECT_TRUE(h.form3()->Command6->isEnabled());
  h.form3()->Command1[2]->click();
  EXPECT_FALSE(h.form3()->Command6->isEnabled());
  h.form3()->Command1[1]->click();
  // An address the desktop cannot open is shown and copied.
  h.t.shell.result = false;
  h.form3()->Command6->click();
  ASSERT_EQ(h.t.boxes.shown().size(), 1);
  EXPECT_EQ(h.t.boxes.shown()[0].text,
            CannotOpenText(u"http://bbs.example.org/dispbbs.asp?boardid=14&id=1014&skin=1"_qs, true));
  EXPECT_EQ(h.t.clipboard.text(), u"http://bbs.example.org/dispbbs.asp?boardid=14&id=1014&skin=1"_qs);
}

TEST(AnswerWindow, KeysOfTheWindow) {
  Answered h;
  Form3* f = h.form3();
  EXPECT_TRUE(f->Command1[3]->isDefault());
  // The answer box has the focus with its text selected.
  EXPECT_EQ(f->focusWidget(), f->Form3Text[1]);
  EXPECT_EQ(f->Form3Text[1]->textCursor().selectedText().size(), f->Form3Text[1]->toPlainText().size());
  // Page Down and Page Up move, also from the answer box.
  QTest::keyClick(f->Form3Text[1], Qt::Key_PageDown);
  EXPECT_EQ(h.run().CurIndex, 2);
  QTest::keyClick(f->Form3Text[0], Qt::Key_PageUp);
  EXPECT_EQ(h.run().CurIndex, 1);
  QTest::keyClick(f->Form3Text[0], Qt::Key_PageUp);  // the first: nothing
  EXPECT_EQ(h.run().CurIndex, 1);
  EXPECT_TRUE(f->isVisible());
  // Enter in the exchange number box stays there; on a button it presses it.
  QTest::keyClick(f->Text1, Qt::Key_Return);
  EXPECT_TRUE(f->isVisible());
  QTest::keyClick(f->Command5[1], Qt::Key_Return);
  ASSERT_EQ(h.t.boxes.shown().size(), 1);
  EXPECT_EQ(h.t.boxes.shown()[0].title, u"提供者信息"_qs);
  EXPECT_TRUE(f->isVisible());
  // Enter in a box is 返回.
  QTest::keyClick(f->Form3Text[1], Qt::Key_Return);
  EXPECT_FALSE(f->isVisible());
  EXPECT_TRUE(h.frame->Frame6->isEnabled());
  // Esc too.
  h.answer(u"A"_qs);
  ASSERT_TRUE(f->isVisible());
  QTest::keyClick(f->Form3Text[0], Qt::Key_Escape);
  EXPECT_FALSE(f->isVisible());
  // The frame's keys work at once: Page Down moves there.
  QTest::keyClick(h.frame->Text3, Qt::Key_PageDown);
  EXPECT_EQ(h.run().CurIndex, 2);
}

TEST(AnswerWindow, OneShowReportsOneActivation) {
  Form3 w;
  int reported = 0;
  QObject::connect(&w, &Form3::activated, [&reported] { ++reported; });
  w.show();
  EXPECT_EQ(reported, 1);
  // The activation that follows the show is the show's own.
  QEvent activate(QEvent::WindowActivate);
  QCoreApplication::sendEvent(&w, &activate);
  EXPECT_EQ(reported, 1);
  // A later activation is reported.
  QCoreApplication::sendEvent(&w, &activate);
  EXPECT_EQ(reported, 2);
  // A hidden window reports nothing; the next show reports once again.
  w.hide();
  QCoreApplication::sendEvent(&w, &activate);
  EXPECT_EQ(reported, 2);
  w.show();
  QCoreApplication::sendEvent(&w, &activate);
  EXPECT_EQ(reported, 3);
  QCoreApplication::sendEvent(&w, &activate);
  EXPECT_EQ(reported, 4);
}

TEST(AnswerWindow, NoForumFieldsNoDiscussion) {
  Answered h;
  EXPECT_FALSE(h.form3()->Command6->isEnabled());
  h.form3()->Command6->click();
  EXPECT_TRUE(h.t.shell.calls.isEmpty());
}

TEST(AnswerWindow, NextAndPreviousShowTheQuestionWithItsAnswer) {
  Answered h;
  EXPECT_FALSE(h.form3()->Command1[1]->isEnabled());
  EXPECT_TRUE(h.form3()->Command1[2]->isEnabled());
  h.form3()->Command1[2]->click();
  EXPECT_EQ(h.run().CurIndex, 2);
  EXPECT_EQ(h.frame->questionText(), pt::Stem(u"第二题"_qs));
  EXPECT_EQ(h.upper(), pt::Stem(u"第二题"_qs));
  EXPECT_EQ(h.lower(), u"答案：A参见《示例法》第2条、第3条\r\n"_qs + kArticle2 +
                           u"\r\n《示例法》\r\n　　第三条　第三条的内容。\r\n\r\n"_qs);
  EXPECT_EQ(h.form3()->Text1->text(), u"*10001100002*"_qs);
  EXPECT_FALSE(h.run().LawTextStale);
  EXPECT_TRUE(h.form3()->Command1[1]->isEnabled());
  h.form3()->Command1[1]->click();
  EXPECT_EQ(h.run().CurIndex, 1);
  EXPECT_EQ(h.upper(), pt::Stem(u"第一题"_qs));
  EXPECT_FALSE(h.form3()->Command1[1]->isEnabled());
  EXPECT_TRUE(h.form3()->isVisible());
}

TEST(AnswerWindow, ReturnHidesTheWindowAndKeepsTheRun) {
  Answered h;
  EXPECT_FALSE(h.frame->Frame6->isEnabled());
  h.form3()->Command1[3]->click();
  EXPECT_FALSE(h.form3()->isVisible());
  EXPECT_TRUE(h.frame->isVisible());
  EXPECT_TRUE(h.frame->Frame6->isEnabled());
  EXPECT_EQ(h.lawQueryShown, 0);
}

TEST(AnswerWindow, StandardBringsTheBoxesBack) {
  Answered h;
  h.form3()->resize(780, 580);
  h.form3()->standardLayout();
  const QList<int> standard = h.form3()->splitter->sizes();
  h.form3()->splitter->setSizes({500, 20});
  h.form3()->Command1[0]->click();
  EXPECT_EQ(h.form3()->splitter->sizes(), standard);
  EXPECT_LT(standard[0], standard[1]);
}

TEST(AnswerWindow, TheBoxesAreClearedAtEachAnswer) {
  Answered h;
  EXPECT_FALSE(h.lower().isEmpty());
  h.form3()->Command1[3]->click();
  // Past the end of the list nothing more happens than the clearing.
  h.run().CurIndex = 9;
  h.session().Command2_Click(0);
  EXPECT_TRUE(h.upper().isEmpty());
  EXPECT_TRUE(h.lower().isEmpty());
  EXPECT_FALSE(h.form3()->isVisible());
}
