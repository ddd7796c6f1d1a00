// One answer: the key from the question's text, the outcome worded against
// the last attempt, the record written (before the answer window shows), the
// run's counters, the law text, the uncertain mark; simulated papers and runs
// from the law query.

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTextEdit>

#include "law/citations.h"
#include "law/law_files.h"
#include "platform/text_toolkit.h"
#include "practice/answer_check.h"
#include "practice_harness.h"

using namespace mj;
using pt::PracticeHarness;

namespace {

const QString kArticle1 = u"《示例法》\r\n　　第一条　第一条的内容。\r\n"_qs;
const QString kArticle2 = u"《示例法》\r\n　　第二条　第二条的内容。\r\n"_qs;
const QString kArticle3 = u"《示例法》\r\n　　第三条　第三条的内容。\r\n"_qs;

QString entry(const QString& when, const QString& answer) { return when + Right(u"    "_qs + answer, 4); }

// The folder with given records for the single-choice bank.
void withStories(PracticeHarness& h, const QString& s1, const QString& s2 = u"no"_qs) {
  pt::MakePracticeFolder(h.t, {{u"10001100001"_qs, u"B"_qs, s1},
                               {u"10001100002"_qs, u"A"_qs, s2},
                               {u"10001100003"_qs, u"C"_qs},
                               {u"10001100004"_qs, u"D"_qs}});
}

}  // namespace

TEST(AnswerStep, FirstAttemptWrong) {
  PracticeHarness h;
  h.enterShiTi();
  ASSERT_TRUE(h.session().startFromDirectory(2));
  h.answer(u"A"_qs);
  EXPECT_TRUE(h.form3()->isVisible());
  EXPECT_EQ(h.upper(), pt::Stem(u"第一题"_qs));
  EXPECT_EQ(h.lower(), u"你错选了答案A。\r\n\r\n答案：B参见《示例法》第1条\r\n"_qs + kArticle1 + u"\r\n"_qs);
  EXPECT_EQ(h.form3()->Text1->text(), u"*10001100001*"_qs);
  EXPECT_EQ(h.run().DoneInRun, 1);
  EXPECT_EQ(h.run().RightInRun, 0);
  // The answer box is selected and has the focus.
  EXPECT_EQ(h.form3()->Form3Text[1]->textCursor().selectedText().size(), h.form3()->Form3Text[1]->toPlainText().size());
}

TEST(AnswerStep, FirstAttemptRight) {
  PracticeHarness h;
  h.enterShiTi();
  ASSERT_TRUE(h.session().startFromDirectory(2));
  h.answer(u"B"_qs);
  EXPECT_EQ(h.lower(), u"恭喜你，你做对了。\r\n\r\n答案：B参见《示例法》第1条\r\n"_qs + kArticle1 + u"\r\n"_qs);
  EXPECT_EQ(h.run().DoneInRun, 1);
  EXPECT_EQ(h.run().RightInRun, 1);
}

TEST(AnswerStep, RightAfterRight) {
  PracticeHarness h(false);
  withStories(h, entry(u"2026-09-01 08:00"_qs, u"B"_qs));
  h.enterShiTi(2, 1, 30);
  ASSERT_TRUE(h.session().startFromDirectory(2));
  h.answer(u"B"_qs);
  EXPECT_TRUE(h.lower().startsWith(u"上次做对了，本次又恭喜你，你做对了。\r\n\r\n"_qs));
}

TEST(AnswerStep, WrongAfterRight) {
  PracticeHarness h(false);
  withStories(h, entry(u"2026-09-01 08:00"_qs, u"B"_qs));
  h.enterShiTi(2, 1, 30);
  ASSERT_TRUE(h.session().startFromDirectory(2));
  h.answer(u"C"_qs);
  EXPECT_TRUE(h.lower().startsWith(u"上次做对了，但本次你错选了答案C。\r\n\r\n"_qs));
}

TEST(AnswerStep, RightAfterWrong) {
  PracticeHarness h(false);
  withStories(h, entry(u"2026-09-01 08:00"_qs, u"A"_qs));
  h.enterShiTi();
  ASSERT_TRUE(h.session().startFromDirectory(2));
  h.answer(u"B"_qs);
  EXPECT_TRUE(h.lower().startsWith(u"上次错选了答案A，但本次恭喜你，你做对了。\r\n\r\n"_qs));
}

TEST(AnswerStep, WrongAfterWrong) {
  PracticeHarness h(false);
  withStories(h, entry(u"2026-09-01 08:00"_qs, u"A"_qs));
  h.enterShiTi();
  ASSERT_TRUE(h.session().startFromDirectory(2));
  h.answer(u"C"_qs);
  EXPECT_TRUE(h.lower().startsWith(u"上次错选了答案A，本次你又错选了答案C。\r\n\r\n"_qs));
}

TEST(AnswerStep, TheLastAttemptIsTheNewestEntry) {
  // Newest right (B), the oldest wrong (A): the words follow the newest.
  PracticeHarness h(false);
  withStories(h, entry(u"2026-09-01 08:00"_qs, u"B"_qs) + entry(u"2026-08-01 08:00"_qs, u"A"_qs));
  h.enterShiTi();
  ASSERT_TRUE(h.session().startFromDirectory(2));
  h.answer(u"D"_qs);
  EXPECT_TRUE(h.lower().startsWith(u"上次做对了，但本次你错选了答案D。"_qs));
}

TEST(AnswerStep, AWrongAnswerLeavesARecordOfTwentyCharacters) {
  PracticeHarness h(false);
  QString eight;
  for (int i = 0; i < 8; ++i) eight += entry(QStringLiteral("2026-09-%1 08:00").arg(20 - i), u"B"_qs);
  withStories(h, eight);
  h.enterShiTi(10, 1, 0);
  h.t.clock.set(QDateTime(QDate(2026, 11, 21), QTime(14, 7)));
  ASSERT_TRUE(h.session().startFromDirectory(2));
  h.answer(u"D"_qs);
  EXPECT_EQ(h.storyOf(u"10001100001"_qs), u"2026-11-21 14:07   D"_qs);
  EXPECT_EQ(h.app.ItemData[0].story, u"2026-11-21 14:07   D"_qs);
  EXPECT_EQ(h.app.AllItemData[0].story, u"2026-11-21 14:07   D"_qs);
  // The record of the attempt as the history reads it: the old one below.
  EXPECT_EQ(h.run().NewStory, u"2026-11-21 14:07   D"_qs + eight);
}

TEST(AnswerStep, TheEleventhRightEntryCutsTheRecordTo160) {
  PracticeHarness h(false);
  QString ten;
  for (int i = 0; i < 10; ++i) ten += entry(QStringLiteral("2026-09-%1 08:00").arg(20 - i), u"B"_qs);
  ASSERT_EQ(ten.size(), 200);
  withStories(h, ten);
  // Ten right answers are due again only with more than ten to give.
  h.enterShiTi(11, 1, 0);
  ASSERT_TRUE(h.session().startFromDirectory(2));
  h.answer(u"B"_qs);
  const QString expected = Left(u"2026-11-21 09:30   B"_qs + ten, 160);
  EXPECT_EQ(h.storyOf(u"10001100001"_qs), expected);
  EXPECT_EQ(h.app.ItemData[0].story, expected);
  EXPECT_FALSE(expected.contains(u"2026-09-11"_qs));
  EXPECT_TRUE(expected.contains(u"2026-09-14"_qs));
}

TEST(AnswerStep, ARightAnswerGoesInFrontOfTheRecord) {
  PracticeHarness h(false);
  const QString old = entry(u"2026-09-01 08:00"_qs, u"B"_qs);
  withStories(h, old);
  h.enterShiTi(3, 1, 30);
  ASSERT_TRUE(h.session().startFromDirectory(2));
  h.answer(u"B"_qs);
  EXPECT_EQ(h.storyOf(u"10001100001"_qs), u"2026-11-21 09:30   B"_qs + old);
}

TEST(AnswerStep, TheRecordIsOnDiskBeforeTheWindowShows) {
  PracticeHarness h;
  h.enterShiTi();
  ASSERT_TRUE(h.session().startFromDirectory(2));
  QString seen;
  QObject::connect(h.form3(), &Form3::visibilityChanged, h.form3(), [&](bool visible) {
    if (visible) seen = h.storyOf(u"10001100001"_qs);
  });
  h.answer(u"C"_qs);
  EXPECT_EQ(seen, u"2026-11-21 09:30   C"_qs);
}

TEST(AnswerStep, TheKeyComesFromTheQuestionsText) {
  // The table says D, the text says B: the text decides.
  PracticeHarness h(false);
  pt::MakePracticeFolder(h.t, {{u"10001100001"_qs, u"D"_qs}});
  h.enterShiTi();
  ASSERT_TRUE(h.session().startFromDirectory(2));
  h.answer(u"B"_qs);
  EXPECT_TRUE(h.lower().startsWith(u"恭喜你，你做对了。"_qs));
  EXPECT_EQ(h.run().tableKey, u"D"_qs);
}

TEST(AnswerStep, AnAnswerFieldWithoutCitationHasNoKey) {
  // Question 4 reads "答案：D" without "参见": no key can be read, so every
  // answer is wrong; the field gets "参见" in front, as the key reader leaves it.
  PracticeHarness h;
  h.enterShiTi();
  ASSERT_TRUE(h.session().startFromDirectory(2));
  for (int i = 0; i < 3; ++i) h.frame->Frame3Cmd[2]->click();
  h.answer(u"D"_qs);
  EXPECT_EQ(h.lower(), u"你错选了答案D。\r\n\r\n参见答案：D\r\n"_qs);
  EXPECT_EQ(h.storyOf(u"10001100004"_qs), u"2026-11-21 09:30   D"_qs);
}

TEST(AnswerStep, ALawTextOfTwoArticles) {
  PracticeHarness h;
  h.enterShiTi();
  ASSERT_TRUE(h.session().startFromDirectory(2));
  h.frame->Frame3Cmd[2]->click();
  EXPECT_TRUE(h.run().LawText.isEmpty());
  h.answer(u"A"_qs);
  EXPECT_EQ(h.lower(), u"恭喜你，你做对了。\r\n\r\n答案：A参见《示例法》第2条、第3条\r\n"_qs + kArticle2 + u"\r\n"_qs +
                           kArticle3 + u"\r\n"_qs);
  EXPECT_FALSE(h.run().LawTextStale);
  EXPECT_EQ(h.run().LawText, kArticle2 + u"\r\n"_qs + kArticle3 + u"\r\n\r\n"_qs);
  // A second answer on the same question shows the same law text.
  h.form3()->Command1[3]->click();
  h.answer(u"B"_qs);
  EXPECT_EQ(h.lower(), u"上次做对了，但本次你错选了答案B。\r\n\r\n答案：A参见《示例法》第2条、第3条\r\n"_qs +
                           kArticle2 + u"\r\n"_qs + kArticle3 + u"\r\n"_qs);
}

TEST(AnswerStep, TheLastArticleIsShownWithoutTheEndMark) {
  PracticeHarness h;
  h.t.writeGbk(u"\\lawtxt\\示例法.mmd"_qs, pt::kLawText + u"\r\n　　----<全文完>----\r\n"_qs);
  ClearLawCache();
  h.enterShiTi();
  ASSERT_TRUE(h.session().startFromDirectory(2));
  h.frame->Frame3Cmd[2]->click();
  h.frame->Frame3Cmd[2]->click();
  h.answer(u"C"_qs);
  EXPECT_EQ(h.lower(), u"恭喜你，你做对了。\r\n\r\n答案：C参见《示例法》第3条\r\n"_qs + kArticle3 + u"\r\n"_qs);
}

TEST(AnswerStep, AMissingLawFileIsNamed) {
  PracticeHarness h;
  h.enterShiTi();
  QFile::remove(h.t.path(u"\\lawtxt\\示例法.mmd"_qs));
  ClearLawCache();
  ASSERT_TRUE(h.session().startFromDirectory(2));
  h.answer(u"B"_qs);
  EXPECT_EQ(h.lower(), u"恭喜你，你做对了。\r\n\r\n答案：B参见《示例法》第1条\r\n《示例法》\r\n法律文件"_qs +
                           h.t.path(u"\\lawtxt\\示例法.mmd"_qs) + u"不存在。\r\n"_qs);
}

TEST(AnswerStep, CountersAndFinishedQuestions) {
  // With no days to wait, a wrong answer keeps a question due and a right
  // one after a first right answer finishes it (OkTimes 2).
  PracticeHarness h(false);
  withStories(h, entry(u"2026-09-01 08:00"_qs, u"B"_qs));
  h.enterShiTi(2, 1, 0);
  ASSERT_TRUE(h.session().startFromDirectory(2));
  h.answer(u"B"_qs);  // two right: finished
  EXPECT_EQ(h.run().OutInRun, 1);
  h.form3()->Command1[3]->click();
  h.frame->Frame3Cmd[2]->click();
  h.answer(u"C"_qs);  // wrong: due again (0 right since, below 3)
  EXPECT_EQ(h.run().OutInRun, 1);
  EXPECT_EQ(h.run().DoneInRun, 2);
  EXPECT_EQ(h.run().RightInRun, 1);
}

TEST(AnswerStep, TheUncertainMarkGoesIntoTodaysFile) {
  PracticeHarness h;
  h.enterShiTi();
  h.t.writeGbk(u"\\模糊题\\20261121.ini"_qs, u"\"10001300001\"\r\n"_qs);
  ASSERT_TRUE(h.session().startFromDirectory(2));
  h.frame->Check1->setChecked(true);
  h.answer(u"B"_qs);
  EXPECT_EQ(h.t.readGbk(u"\\模糊题\\20261121.ini"_qs), u"\"1000110000110001300001\"\r\n"_qs);
  EXPECT_FALSE(h.frame->Check1->isChecked());
  // Without the mark nothing is added.
  h.form3()->Command1[3]->click();
  h.frame->Frame3Cmd[2]->click();
  h.answer(u"A"_qs);
  EXPECT_EQ(h.t.readGbk(u"\\模糊题\\20261121.ini"_qs), u"\"1000110000110001300001\"\r\n"_qs);
}

TEST(AnswerStep, ASimulatedPaperRecordsWithoutPriorWordsAndGoesOn) {
  PracticeHarness h;
  // Paper 00001: two single choices, both done before (the first wrongly).
  h.t.writeGbk(u"\\moniti\\00001.mmd"_qs, u"示例试卷"_qs + pt::Block(1, u"卷一"_qs, u"答案：B参见《示例法》第1条"_qs) +
                                              pt::Block(2, u"卷二"_qs, u"答案：A参见《示例法》第2条"_qs) + u"\r\n"_qs);
  pt::WriteItems(h.t, tables::kCsItems,
                 {{u"00001100001"_qs, u"B"_qs, entry(u"2026-09-01 08:00"_qs, u"A"_qs)},
                  {u"00001100002"_qs, u"A"_qs, entry(u"2026-09-01 08:00"_qs, u"A"_qs)}});
  pt::WriteDirectory(h.t, tables::kCsDirectory,
                     {{u"示例试卷一 试卷一 单项选择题"_qs, u"\\moniti\\000011.mmd"_qs, {}, 2, 2},
                      {u"示例试卷一 试卷一 多项选择题"_qs, u"\\moniti\\000012.mmd"_qs, {}, 0, 0}});
  h.enterCeShi(2, 1, 30);
  h.run().NewStory = u"left over"_qs;
  ASSERT_TRUE(h.session().startFromDirectory(1));
  EXPECT_EQ(h.run().RunIds, u"0000110000100001100002"_qs);
  h.answer(u"B"_qs);
  // No answer window; the next question is there.
  EXPECT_FALSE(h.form3()->isVisible());
  EXPECT_EQ(h.run().CurIndex, 2);
  EXPECT_EQ(h.frame->questionText(), pt::Stem(u"卷二"_qs));
  EXPECT_TRUE(h.run().TimerRunning);
  // The record is written: a right answer goes in front.
  EXPECT_EQ(h.storyOf(u"00001100001"_qs, tables::kCsItems),
            u"2026-11-21 09:30   B"_qs + entry(u"2026-09-01 08:00"_qs, u"A"_qs));
  // The index is empty: no word of the last attempt, and the record the
  // history reads keeps what it held.
  EXPECT_EQ(h.run().NewStory, u"left over"_qs);
  EXPECT_EQ(h.run().DoneInRun, 1);
  EXPECT_EQ(h.run().RightInRun, 1);
  // After the last question nothing moves and no answer window opens; a
  // wrong answer replaces the record. One box says how the paper went.
  EXPECT_TRUE(h.t.boxes.shown().isEmpty());
  h.answer(u"C"_qs);
  EXPECT_FALSE(h.form3()->isVisible());
  EXPECT_EQ(h.run().CurIndex, 2);
  EXPECT_EQ(h.storyOf(u"00001100002"_qs, tables::kCsItems), u"2026-11-21 09:30   C"_qs);
  EXPECT_EQ(h.run().DoneInRun, 2);
  EXPECT_EQ(h.run().RightInRun, 1);
  ASSERT_EQ(h.t.boxes.shown().size(), 1);
  EXPECT_EQ(h.t.boxes.shown()[0].title, u"本卷结果"_qs);
  EXPECT_EQ(h.t.boxes.shown()[0].text, u"本卷试题已全部做完。\r\n共答2题，答对1题，正确率50%。"_qs);
  EXPECT_EQ(h.t.boxes.shown()[0].style, box::Information);
  // Another click on the last question records nothing and counts nothing:
  // the result comes again.
  h.t.clock.advanceSeconds(120);
  h.answer(u"A"_qs);
  EXPECT_EQ(h.storyOf(u"00001100002"_qs, tables::kCsItems), u"2026-11-21 09:30   C"_qs);
  EXPECT_EQ(h.run().DoneInRun, 2);
  EXPECT_EQ(h.run().RightInRun, 1);
  ASSERT_EQ(h.t.boxes.shown().size(), 2);
  EXPECT_EQ(h.t.boxes.shown()[1].text, h.t.boxes.shown()[0].text);
  // An earlier question answered again is a new answer, recorded.
  h.frame->Frame3Cmd[1]->click();
  h.answer(u"B"_qs);
  EXPECT_EQ(h.run().DoneInRun, 3);
  EXPECT_EQ(h.run().CurIndex, 2);
  EXPECT_EQ(h.t.boxes.shown().size(), 2);
}

TEST(AnswerStep, AnotherRunOfThePaperEndsWithItsOwnResult) {
  PracticeHarness h;
  h.t.writeGbk(u"\\moniti\\00001.mmd"_qs, u"示例试卷"_qs + pt::Block(1, u"卷一"_qs, u"答案：B参见《示例法》第1条"_qs) + u"\r\n"_qs);
  pt::WriteItems(h.t, tables::kCsItems, {{u"00001100001"_qs, u"B"_qs, u"no"_qs}});
  pt::WriteDirectory(h.t, tables::kCsDirectory, {{u"示例试卷一 试卷一 单项选择题"_qs, u"\\moniti\\000011.mmd"_qs, {}, 1, 1}});
  h.enterCeShi(9, 1, 0);
  ASSERT_TRUE(h.session().startFromDirectory(1));
  h.answer(u"B"_qs);
  ASSERT_EQ(h.t.boxes.shown().size(), 1);
  EXPECT_EQ(h.t.boxes.shown()[0].text, u"本卷试题已全部做完。\r\n共答1题，答对1题，正确率100%。"_qs);
  h.frame->Frame3Cmd[3]->click();
  ASSERT_TRUE(h.session().startFromDirectory(1));
  h.answer(u"A"_qs);
  ASSERT_EQ(h.t.boxes.shown().size(), 2);
  EXPECT_EQ(h.t.boxes.shown()[1].text, u"本卷试题已全部做完。\r\n共答1题，答对0题，正确率0%。"_qs);
}

TEST(AnswerStep, ARunFromTheLawQueryChangesNothing) {
  PracticeHarness h;
  h.enterShiTi();
  ASSERT_TRUE(h.session().startListRun(u"1000110000210001100001"_qs, true));
  h.session().Timer1_Timer();
  EXPECT_EQ(h.frame->Label5->text(), u"◎与该法条相关的试题共2道 这是第1题。"_qs);
  h.answer(u"A"_qs);
  EXPECT_TRUE(h.lower().startsWith(u"恭喜你，你做对了。"_qs));
  EXPECT_EQ(h.run().DoneInRun, 0);
  EXPECT_EQ(h.run().RightInRun, 0);
  EXPECT_EQ(h.run().OutInRun, 0);
  EXPECT_EQ(h.storyOf(u"10001100002"_qs), u"no"_qs);
  EXPECT_EQ(h.app.ItemData[1].story, u"no"_qs);
  // 返回 of the answer window goes back to the law query and ends the run.
  h.form3()->Command1[3]->click();
  EXPECT_FALSE(h.form3()->isVisible());
  EXPECT_FALSE(h.frame->isVisible());
  EXPECT_EQ(h.lawQueryShown, 1);
  EXPECT_FALSE(h.run().FromLawQuery);
  EXPECT_EQ(pt::ColumnOf(h.t, tables::kDirectory, u"g"_qs), QStringList({u"0"_qs, u"0"_qs, u"0"_qs, u"0"_qs, u"0"_qs}));
}

TEST(AnswerStep, ReturnOfTheFrameGoesBackToTheLawQuery) {
  PracticeHarness h;
  h.enterShiTi();
  ASSERT_TRUE(h.session().startListRun(u"10001100002"_qs, true));
  h.frame->Frame3Cmd[3]->click();
  EXPECT_EQ(h.lawQueryShown, 1);
  EXPECT_FALSE(h.gridShown);
  EXPECT_FALSE(h.run().FromLawQuery);
}
