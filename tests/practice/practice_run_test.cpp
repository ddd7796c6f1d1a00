// The practice run in its frame: the start from a bank of the directory, the
// three question types, moving, the clock, and the end of the run.

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTextCursor>
#include <QTextEdit>

#include "law/citations.h"
#include "practice/answer_check.h"
#include "practice/practice_texts.h"
#include "practice_harness.h"
#include "settings/personal_settings_window.h"

using namespace mj;
using pt::PracticeHarness;

namespace {

const QString kArticle1 = u"《示例法》\r\n　　第一条　第一条的内容。\r\n\r\n"_qs;

QStringList shownCaptions(PracticeFrame* f) {
  QStringList out;
  for (QPushButton* b : f->Command2)
    if (!b->isHidden()) out.append(b->text());
  return out;
}

}  // namespace

TEST(PracticeRun, ABankStartsAtItsFirstDueQuestion) {
  PracticeHarness h;
  h.enterShiTi();
  ASSERT_TRUE(h.session().startFromDirectory(2));
  const PracticeRun& r = h.run();
  EXPECT_EQ(r.RunIds, u"10001100001100011000021000110000310001100004"_qs);
  EXPECT_EQ(r.count(), 4);
  EXPECT_EQ(r.CurIndex, 1);
  EXPECT_EQ(r.CurItemId, u"10001100001"_qs);
  EXPECT_EQ(r.CurNum, 1);
  EXPECT_EQ(r.CurType, 1);
  EXPECT_EQ(r.GridRow, 2);
  EXPECT_EQ(r.RunTitle, u"◎《示例法》单项选择题"_qs);
  EXPECT_EQ(h.frame->questionText(), pt::Stem(u"第一题"_qs));
  EXPECT_EQ(r.AnswerField, u"答案：B参见《示例法》第1条\r\n"_qs);
  // The law text is ready before the first answer, the buttons usable again.
  EXPECT_EQ(r.LawText, kArticle1 + u"\r\n"_qs);
  for (QPushButton* b : h.frame->Command2) EXPECT_TRUE(b->isEnabled());
  EXPECT_TRUE(h.frame->isVisible());
  EXPECT_FALSE(h.gridShown);
  EXPECT_FALSE(h.frame->Frame3Cmd[1]->isEnabled());
  EXPECT_TRUE(h.frame->Frame3Cmd[2]->isEnabled());
  // The grid takes the text size of the question box.
  EXPECT_EQ(h.gridFontSize, 15);
  EXPECT_TRUE(h.t.boxes.shown().isEmpty());
  // The labels are filled at once.
  EXPECT_EQ(h.frame->Label5->text(), u"◎《示例法》单项选择题  符合你的设置条件的共4题 这是第1题。"_qs);
  EXPECT_EQ(h.frame->Label6->text(), u"2026-11-21 09:30\n00:00:00   00:00"_qs);
}

TEST(PracticeRun, SingleChoiceShowsAToD) {
  PracticeHarness h;
  h.enterShiTi();
  ASSERT_TRUE(h.session().startFromDirectory(2));
  EXPECT_EQ(shownCaptions(h.frame), QStringList({u"A"_qs, u"B"_qs, u"C"_qs, u"D"_qs}));
}

TEST(PracticeRun, MultipleChoiceShowsABToABCD) {
  PracticeHarness h;
  h.enterShiTi();
  ASSERT_TRUE(h.session().startFromDirectory(3));
  EXPECT_EQ(shownCaptions(h.frame), QStringList({u"AB"_qs, u"AC"_qs, u"AD"_qs, u"BC"_qs, u"BD"_qs, u"CD"_qs, u"ABC"_qs,
                                                 u"ABD"_qs, u"ACD"_qs, u"BCD"_qs, u"ABCD"_qs}));
}

TEST(PracticeRun, AnyChoiceShowsAllFifteenInOneRow) {
  PracticeHarness h;
  h.enterShiTi();
  ASSERT_TRUE(h.session().startFromDirectory(4));
  EXPECT_EQ(shownCaptions(h.frame), AnswerCaptions());
  const int y = h.frame->Command2[0]->y();
  for (int i = 1; i < kAnswerButtonCount; ++i) {
    EXPECT_EQ(h.frame->Command2[i]->y(), y);
    // Left to right in index order, without overlap.
    EXPECT_GE(h.frame->Command2[i]->x(), h.frame->Command2[i - 1]->geometry().right());
  }
}

TEST(PracticeRun, TheFrameIsSetUpOnceBeforeTheFirstQuestion) {
  PracticeHarness h;
  h.enterShiTi();
  EXPECT_FALSE(h.run().FrameReady);
  ASSERT_TRUE(h.session().startFromDirectory(2));
  EXPECT_TRUE(h.run().FrameReady);
  for (QPushButton* b : h.frame->Command2) EXPECT_EQ(b->font().pointSize(), 13);
}

TEST(PracticeRun, ABankWithNothingDueGivesTheBoxPleaseNote) {
  test::TestEnv* unused = nullptr;
  (void)unused;
  PracticeHarness h(false);
  const QString today = h.t.clock.now().toString(u"yyyy-MM-dd HH:mm"_qs);
  pt::MakePracticeFolder(h.t, {{u"10001100001"_qs, u"B"_qs}, {u"10001300001"_qs, u"A"_qs, today + u"   A"_qs}});
  h.enterShiTi();
  EXPECT_FALSE(h.session().startFromDirectory(4));
  const QList<BoxRecord> boxes = h.t.boxes.shown();
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_EQ(boxes[0].title, u"请注意"_qs);
  EXPECT_EQ(
      boxes[0].text,
      u"对不起，所选项目中试题都不符合你的设置条件，要做此项目中的试题，必须在先在设置菜单中设置相关内容。\r\n"_qs);
  EXPECT_TRUE(h.gridShown);
  EXPECT_FALSE(h.frame->isVisible());
  EXPECT_TRUE(h.run().RunIds.isEmpty());
}

TEST(PracticeRun, MovingOnAndBack) {
  PracticeHarness h;
  h.enterShiTi();
  ASSERT_TRUE(h.session().startFromDirectory(2));
  PracticeRun& r = h.run();
  r.QuestionSeconds = 42;
  h.frame->Frame3Cmd[2]->click();
  EXPECT_EQ(r.CurIndex, 2);
  EXPECT_EQ(r.CurItemId, u"10001100002"_qs);
  EXPECT_EQ(h.frame->questionText(), pt::Stem(u"第二题"_qs));
  EXPECT_EQ(r.AnswerField, u"答案：A参见《示例法》第2条、第3条\r\n"_qs);
  EXPECT_EQ(r.PrevQuestionSeconds, 42);
  EXPECT_EQ(r.QuestionSeconds, 0);
  EXPECT_TRUE(r.LawText.isEmpty());
  EXPECT_TRUE(r.LawTextStale);
  EXPECT_TRUE(h.frame->Frame3Cmd[1]->isEnabled());
  h.frame->Frame3Cmd[2]->click();
  h.frame->Frame3Cmd[2]->click();
  EXPECT_EQ(r.CurIndex, 4);
  EXPECT_FALSE(h.frame->Frame3Cmd[2]->isEnabled());
  EXPECT_EQ(h.frame->questionText(), pt::Stem(u"第四题"_qs));
  h.frame->Frame3Cmd[1]->click();
  h.frame->Frame3Cmd[1]->click();
  h.frame->Frame3Cmd[1]->click();
  EXPECT_EQ(r.CurIndex, 1);
  EXPECT_FALSE(h.frame->Frame3Cmd[1]->isEnabled());
  EXPECT_TRUE(h.frame->Frame3Cmd[2]->isEnabled());
  // The provider block of a question goes to its own box.
  h.frame->Frame3Cmd[2]->click();
  h.frame->Frame3Cmd[2]->click();
  EXPECT_EQ(r.ProviderInfo, pt::kProvider);
}

TEST(PracticeRun, AOneQuestionListDisablesBothMoves) {
  PracticeHarness h;
  h.enterShiTi();
  ASSERT_TRUE(h.session().startFromDirectory(4));
  EXPECT_EQ(h.run().count(), 1);
  EXPECT_FALSE(h.frame->Frame3Cmd[1]->isEnabled());
  EXPECT_FALSE(h.frame->Frame3Cmd[2]->isEnabled());
  h.session().Timer1_Timer();
  EXPECT_FALSE(h.frame->Frame3Cmd[1]->isEnabled());
  EXPECT_FALSE(h.frame->Frame3Cmd[2]->isEnabled());
  EXPECT_FALSE(h.form3()->Command1[1]->isEnabled());
  EXPECT_FALSE(h.form3()->Command1[2]->isEnabled());
  // The keys cannot move past the ends either.
  QTest::keyClick(h.frame->Text3, Qt::Key_PageDown);
  QTest::keyClick(h.frame->Text3, Qt::Key_PageUp);
  EXPECT_EQ(h.run().CurIndex, 1);
}

TEST(PracticeRun, TheTimerFillsTheLabels) {
  PracticeHarness h;
  h.enterShiTi();
  ASSERT_TRUE(h.session().startFromDirectory(2));
  h.t.clock.set(QDateTime(QDate(2026, 11, 21), QTime(9, 30)));
  h.run().RunSeconds = 5399;
  h.run().QuestionSeconds = 64;
  h.session().Timer1_Timer();
  EXPECT_EQ(h.frame->Label5->text(), u"◎《示例法》单项选择题  符合你的设置条件的共4题 这是第1题。"_qs);
  // The run's clock runs: the question's text came in.
  EXPECT_EQ(h.frame->Label6->text(), u"2026-11-21 09:30\n01:90:00   01:05"_qs);
}

TEST(PracticeRun, RunSecondsStandStillAfterAnAnswer) {
  PracticeHarness h;
  h.enterShiTi();
  ASSERT_TRUE(h.session().startFromDirectory(2));
  PracticeRun& r = h.run();
  EXPECT_TRUE(r.TimerRunning);
  h.session().Timer1_Timer();
  h.session().Timer1_Timer();
  EXPECT_EQ(r.RunSeconds, 2);
  h.answer(u"B"_qs);
  h.form3()->Command1[3]->click();
  EXPECT_FALSE(r.TimerRunning);
  for (int i = 0; i < 5; ++i) h.session().Timer1_Timer();
  EXPECT_EQ(r.RunSeconds, 2);
  EXPECT_EQ(r.QuestionSeconds, 5);
  // A new question's text sets the clock going again.
  h.frame->Frame3Cmd[2]->click();
  EXPECT_TRUE(r.TimerRunning);
  h.session().Timer1_Timer();
  EXPECT_EQ(r.RunSeconds, 3);
}

TEST(PracticeRun, TypingInTheQuestionSetsTheClockGoing) {
  PracticeHarness h;
  h.enterShiTi();
  ASSERT_TRUE(h.session().startFromDirectory(2));
  PracticeRun& r = h.run();
  h.answer(u"B"_qs);
  h.form3()->Command1[3]->click();
  ASSERT_FALSE(r.TimerRunning);
  EXPECT_FALSE(h.frame->Text3->isReadOnly());
  // A mark typed into the question (the letters A to D answer).
  QTextCursor c = h.frame->Text3->textCursor();
  c.movePosition(QTextCursor::End);
  h.frame->Text3->setTextCursor(c);
  QTest::keyClicks(h.frame->Text3, u"??"_qs);
  EXPECT_TRUE(h.frame->Text3->toPlainText().endsWith(u"??"_qs));
  EXPECT_TRUE(r.TimerRunning);
  h.session().Timer1_Timer();
  EXPECT_EQ(r.RunSeconds, 1);
  // The next question replaces the marked text.
  h.frame->Frame3Cmd[2]->click();
  EXPECT_FALSE(h.frame->Text3->toPlainText().contains(u"??"_qs));
}

TEST(PracticeRun, FontButtonsStepByTwoAndStoreTheSize) {
  PracticeHarness h;
  h.enterShiTi();
  h.t.mkdir(u"\\ini"_qs);
  ASSERT_TRUE(h.session().startFromDirectory(2));
  h.frame->Frame6BigOrSmallCmd[0]->click();
  EXPECT_EQ(h.run().FontSize, 17);
  EXPECT_EQ(h.frame->Text3->font().pointSize(), 17);
  EXPECT_EQ(h.settings.fontSize(), 17);
  EXPECT_TRUE(h.t.readGbk(u"\\ini\\userself.ini"_qs).contains(u"PUBFONTSIZE=17\r\n"_qs));
  h.frame->Frame6BigOrSmallCmd[1]->click();
  h.frame->Frame6BigOrSmallCmd[1]->click();
  EXPECT_EQ(h.run().FontSize, 13);
  EXPECT_TRUE(h.t.readGbk(u"\\ini\\userself.ini"_qs).contains(u"PUBFONTSIZE=13\r\n"_qs));
  h.run().FontSize = 10;
  h.frame->Frame6BigOrSmallCmd[1]->click();
  EXPECT_EQ(h.run().FontSize, 10);
  h.run().FontSize = 70;
  h.frame->Frame6BigOrSmallCmd[0]->click();
  EXPECT_EQ(h.run().FontSize, 70);
}

TEST(PracticeRun, SettingsButtonOpensThePersonalSettings) {
  PracticeHarness h;
  h.enterShiTi();
  ASSERT_TRUE(h.session().startFromDirectory(2));
  h.frame->Frame3Cmd[0]->click();
  ASSERT_NE(h.frame->personalSettingsWindow(), nullptr);
  EXPECT_TRUE(h.frame->personalSettingsWindow()->isVisible());
  EXPECT_TRUE(h.frame->personalSettingsWindow()->option(1)->isChecked());
  h.frame->personalSettingsWindow()->command1()->click();
  EXPECT_FALSE(h.frame->personalSettingsWindow()->isVisible());
  // Nothing of the run changed.
  EXPECT_EQ(h.run().CurIndex, 1);
}

TEST(PracticeRun, TheEndAddsTheCountersToTheRowItsHeadingAndTheTable) {
  PracticeHarness h;
  h.enterShiTi();
  ASSERT_TRUE(h.dir.toggleHeading(1));  // the heading open, with its sign
  ASSERT_TRUE(h.session().startFromDirectory(2));
  h.t.clock.advanceSeconds(1);
  // Every question answered today rests for 30 days: each one is finished
  // for this day's count, the wrong one as well.
  h.answer(u"B"_qs);  // right
  h.form3()->Command1[3]->click();
  h.frame->Frame3Cmd[2]->click();
  h.answer(u"C"_qs);  // wrong
  h.form3()->Command1[3]->click();
  h.frame->Frame3Cmd[2]->click();
  h.answer(u"C"_qs);  // right
  h.form3()->Command1[3]->click();
  h.run().RunSeconds = 150;
  h.frame->Frame3Cmd[3]->click();
  const PracticeRun& r = h.run();
  EXPECT_EQ(r.OutInRun, 3);
  EXPECT_EQ(r.DoneInRun, 0);
  EXPECT_EQ(r.RightInRun, 0);
  EXPECT_TRUE(r.RunStatText.isEmpty());
  EXPECT_FALSE(h.frame->isVisible());
  EXPECT_TRUE(h.gridShown);
  // The row of the run: answers 3, right 2, score 66%, 2 minutes, 4 - 3 due.
  EXPECT_EQ(h.dir.text(2, kColDone), u"3"_qs);
  EXPECT_EQ(h.dir.text(2, kColRight), u"2"_qs);
  EXPECT_EQ(h.dir.text(2, kColScore), u"66%"_qs);
  EXPECT_EQ(h.dir.text(2, kColMinutes), u"2"_qs);
  EXPECT_EQ(h.dir.text(2, kColEligible), u"1"_qs);
  // The heading over it.
  EXPECT_EQ(h.dir.text(1, kColDone), u"3"_qs);
  EXPECT_EQ(h.dir.text(1, kColRight), u"2"_qs);
  EXPECT_EQ(h.dir.text(1, kColScore), u"66%"_qs);
  EXPECT_EQ(h.dir.text(1, kColEligible), u"4"_qs);
  // The directory table: the row's fields 5, 6, 10, 11; the score is not stored.
  EXPECT_EQ(pt::ColumnOf(h.t, tables::kDirectory, u"g"_qs), QStringList({u"0"_qs, u"3"_qs, u"0"_qs, u"0"_qs, u"0"_qs}));
  EXPECT_EQ(pt::ColumnOf(h.t, tables::kDirectory, u"h"_qs), QStringList({u"0"_qs, u"2"_qs, u"0"_qs, u"0"_qs, u"0"_qs}));
  EXPECT_EQ(pt::ColumnOf(h.t, tables::kDirectory, u"l"_qs), QStringList({u"0"_qs, u"2"_qs, u"0"_qs, u"0"_qs, u"0"_qs}));
  EXPECT_EQ(pt::ColumnOf(h.t, tables::kDirectory, u"oknum"_qs),
            QStringList({u"7"_qs, u"1"_qs, u"2"_qs, u"1"_qs, u"0"_qs}));
  EXPECT_EQ(pt::ColumnOf(h.t, tables::kDirectory, u"i"_qs), QStringList({u""_qs, u""_qs, u""_qs, u""_qs, u""_qs}));
}

TEST(PracticeRun, ListRunsWriteNoCountersAtTheEnd) {
  PracticeHarness h;
  h.enterShiTi();
  h.app.InOtherList = true;
  ASSERT_TRUE(h.session().startListRun(u"1000110000210001200001"_qs, false));
  h.answer(u"A"_qs);
  h.form3()->Command1[3]->click();
  h.frame->Frame3Cmd[3]->click();
  EXPECT_EQ(h.listGridShown, 1);
  EXPECT_FALSE(h.gridShown);
  EXPECT_EQ(pt::ColumnOf(h.t, tables::kDirectory, u"g"_qs), QStringList({u"0"_qs, u"0"_qs, u"0"_qs, u"0"_qs, u"0"_qs}));
  EXPECT_EQ(h.dir.text(2, kColDone), u"0"_qs);
  // No record either: a list run of the day files writes none.
  EXPECT_EQ(h.storyOf(u"10001100002"_qs), u"no"_qs);
}

TEST(PracticeRun, UpdateListRunsGoBackToTheirGrid) {
  PracticeHarness h;
  h.enterShiTi();
  h.app.InUpdateList = true;
  ASSERT_TRUE(h.frame->startListRun(u"10001100002"_qs, false));
  h.answer(u"A"_qs);
  EXPECT_EQ(h.run().DoneInRun, 1);
  h.form3()->Command1[3]->click();
  h.frame->Frame3Cmd[3]->click();
  EXPECT_EQ(h.listGridShown, 1);
  EXPECT_FALSE(h.frame->isVisible());
  EXPECT_FALSE(h.gridShown);
  EXPECT_EQ(h.dir.text(2, kColDone), u"0"_qs);
  EXPECT_EQ(pt::ColumnOf(h.t, tables::kDirectory, u"g"_qs), QStringList({u"0"_qs, u"0"_qs, u"0"_qs, u"0"_qs, u"0"_qs}));
  EXPECT_EQ(h.storyOf(u"10001100002"_qs), u"no"_qs);
}

TEST(PracticeRun, AListRunFromTheLawQueryHidesTheAnswerWindowFirst) {
  PracticeHarness h;
  h.enterShiTi();
  ASSERT_TRUE(h.session().startFromDirectory(2));
  h.answer(u"B"_qs);
  ASSERT_TRUE(h.form3()->isVisible());
  ASSERT_TRUE(h.frame->startListRun(u"1000110000310001300001"_qs, true));
  EXPECT_FALSE(h.form3()->isVisible());
  EXPECT_TRUE(h.run().FromLawQuery);
  EXPECT_EQ(h.run().CurIndex, 1);
  EXPECT_EQ(h.frame->questionText(), pt::Stem(u"第三题"_qs));
  EXPECT_EQ(h.run().DoneInRun, 0);
  // An empty list is the box "请注意".
  EXPECT_FALSE(h.frame->startListRun(QString(), true));
  ASSERT_EQ(h.t.boxes.shown().size(), 1);
  EXPECT_EQ(h.t.boxes.shown()[0].title, u"请注意"_qs);
}

TEST(PracticeRun, APaperRowHidesTheGridAtOnce) {
  PracticeHarness h;
  pt::WriteDirectory(h.t, tables::kDirectory,
                     {{u"示例试卷一 试卷一 单项选择题"_qs, u"\\yibanti\\100013.mmd"_qs, {}, 1, 1},
                      {u"《示例法》单项选择题"_qs, u"\\yibanti\\100011.mmd"_qs, {}, 4, 4}});
  h.enterShiTi();
  // Nothing due in the paper's bank: hidden first, shown again with the box.
  h.app.OkTimes = 0;
  h.app.PassDays = 30;
  pt::WriteItems(h.t, tables::kItems, {{u"10001300001"_qs, u"A"_qs, u"2026-11-21 08:00   A"_qs}});
  EXPECT_FALSE(h.session().startFromDirectory(1));
  EXPECT_EQ(h.gridCalls, QList<bool>({false, true}));
  // Another row leaves the grid until the run starts.
  h.gridCalls.clear();
  pt::MakePracticeFolder(h.t);
  ASSERT_TRUE(h.session().startFromDirectory(2));
  EXPECT_EQ(h.gridCalls, QList<bool>({false, false}));
}

TEST(PracticeRun, AListRunMaySpanBanksAndTypes) {
  PracticeHarness h;
  h.enterShiTi();
  ASSERT_TRUE(h.session().startListRun(u"1000110000210001200001"_qs, false));
  EXPECT_EQ(h.frame->questionText(), pt::Stem(u"第二题"_qs));
  EXPECT_EQ(shownCaptions(h.frame).size(), 4);
  h.frame->Frame3Cmd[2]->click();
  EXPECT_EQ(h.frame->questionText(), pt::Stem(u"多选一"_qs));
  EXPECT_EQ(h.run().CurType, 2);
  EXPECT_EQ(shownCaptions(h.frame).size(), 11);
}

TEST(PracticeRun, KeysAnswerAndMove) {
  PracticeHarness h;
  h.enterShiTi();
  ASSERT_TRUE(h.session().startFromDirectory(2));
  h.frame->setFocus();
  QTest::keyClick(h.frame->Text3, Qt::Key_PageDown);
  EXPECT_EQ(h.run().CurIndex, 2);
  QTest::keyClick(h.frame->Text3, Qt::Key_PageUp);
  EXPECT_EQ(h.run().CurIndex, 1);
  // A single choice answers with its letter at once.
  QTest::keyClick(h.frame->Text3, Qt::Key_B);
  EXPECT_TRUE(h.form3()->isVisible());
  EXPECT_TRUE(h.lower().startsWith(u"恭喜你，你做对了。"_qs));
  // While the answer window lies over the frame, keys and buttons rest.
  QTest::keyClick(h.frame->Text3, Qt::Key_PageDown);
  EXPECT_EQ(h.run().CurIndex, 1);
  EXPECT_FALSE(h.frame->Frame6->isEnabled());
  h.form3()->Command1[3]->click();
  EXPECT_TRUE(h.frame->Frame6->isEnabled());
}

TEST(PracticeRun, KeysCollectTheLettersOfAMultipleChoice) {
  PracticeHarness h;
  h.enterShiTi();
  ASSERT_TRUE(h.session().startFromDirectory(3));
  QTest::keyClick(h.frame->Text3, Qt::Key_C);
  QTest::keyClick(h.frame->Text3, Qt::Key_A);
  EXPECT_EQ(h.frame->typedLetters(), u"AC"_qs);
  EXPECT_EQ(h.frame->typedLabel->text(), u"键入：AC"_qs);
  QTest::keyClick(h.frame->Text3, Qt::Key_Return);
  EXPECT_TRUE(h.form3()->isVisible());
  EXPECT_TRUE(h.lower().startsWith(u"恭喜你，你做对了。"_qs));
  EXPECT_TRUE(h.frame->typedLetters().isEmpty());
  h.form3()->Command1[3]->click();
  // One letter is no answer of a multiple choice; Esc starts again.
  QTest::keyClick(h.frame->Text3, Qt::Key_A);
  QTest::keyClick(h.frame->Text3, Qt::Key_Return);
  EXPECT_FALSE(h.form3()->isVisible());
  QTest::keyClick(h.frame->Text3, Qt::Key_B);
  QTest::keyClick(h.frame->Text3, Qt::Key_Escape);
  EXPECT_TRUE(h.frame->typedLetters().isEmpty());
  EXPECT_TRUE(h.frame->isVisible());
  // With nothing typed Esc is 返回: the run ends, the grid comes back.
  QTest::keyClick(h.frame->Text3, Qt::Key_Escape);
  EXPECT_FALSE(h.frame->isVisible());
  EXPECT_TRUE(h.gridShown);
}

TEST(PracticeRun, TheUncertainMarkIsSetByItsLabel) {
  PracticeHarness h;
  h.enterShiTi();
  ASSERT_TRUE(h.session().startFromDirectory(2));
  EXPECT_EQ(h.frame->Label13->text(), u"也许是……"_qs);
  QTest::mouseClick(h.frame->Label13, Qt::LeftButton);
  EXPECT_TRUE(h.frame->Check1->isChecked());
  QTest::mouseClick(h.frame->Label13, Qt::LeftButton);
  EXPECT_TRUE(h.frame->Check1->isChecked());
}
