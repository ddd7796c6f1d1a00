// The lists of past work on the main window's list grid, on the
// demonstration data after two scripted days of practice: the four modes,
// their rows, and the runs a chosen row starts.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QPushButton>
#include <QTest>

#include "app/main_window.h"
#include "bank/tables.h"
#include "log/day_files.h"
#include "log/log_grid_widget.h"
#include "platform/dbftable.h"
#include "platform/paths.h"
#include "platform/textfile.h"
#include "practice/answer_check.h"
#include "practice/answer_window.h"
#include "practice/directory_widget.h"
#include "practice/practice_frame_widget.h"
#include "support/directory_runs.h"
#include "support/program_folder.h"
#include "support/window_checks.h"

using namespace mj;

namespace {

const QString kBlank = u"\u3000"_qs;

// Settings of another day, so that the first entry of the day counts.
void WriteSettings(const test::TestEnv& t) {
  t.writeGbk(u"\\ini\\userself.ini"_qs,
             u"STOKTIMES=1\r\nSTADDNUM=1\r\nSTPASSDAYS=30\r\nTSOKTIMES=1\r\nTSADDNUM=1\r\nTSPASSDAYS=30\r\n"
             u"PUBFONTSIZE=15\r\nPUBBACKCOLOR=16777215\r\nPUBFORECOLOR=0\r\nSTLASTUPDATE=0\r\n"
             u"TSLASTUPDATE=0\r\nPUBFONTNAME=宋体\r\nPUBFONTIT=FALSE\r\nPUBFONTBOLD=FALSE\r\n"_qs);
}

struct Demo : ::testing::Test {
  std::unique_ptr<test::TestEnv> t;
  std::unique_ptr<Form1> form;
  QStringList ids;  // the questions practised, in order

  void SetUp() override {
    if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "no demonstration data built";
    t = std::make_unique<test::TestEnv>(test::DemoDataDir());
    WriteSettings(*t);
    t->clock.set(QDateTime(QDate(2026, 11, 20), QTime(20, 15)));
    form = std::make_unique<Form1>(t->env);
    ASSERT_EQ(form->load(), Form1::LoadOutcome::Running);
    form->resize(1000, 700);
    form->show();
  }
  PracticeFrame* frame() const { return form->practice; }
  AppState& app() { return form->state(); }
  LogGridWidget* grid() const { return form->MSFlexGrid2; }
  QString keyOf(const QString& id) { return FindItem(app().AllItemData, id)->answer; }
  void answer(const QString& caption, bool uncertain) {
    frame()->Check1->setChecked(uncertain);
    frame()->Command2[AnswerCaptions().indexOf(caption)]->click();
  }
  QString storyOf(const QString& id) {
    const DbfTable items = DbfTable::open(t->path(u"\\dbf\\items.mmd"_qs));
    const QList<int> rows = Select(items, {{u"itemid"_qs, id}});
    return rows.isEmpty() ? QString() : items.trimmedText(rows[0], u"story"_qs);
  }
  // Opens the internal banks and starts the run of bank 100011.
  void startBank() {
    form->ShiTi->trigger();
    test::StartBankRun(*form->MSFlexGrid1, u"100011.mmd"_qs);
  }
  // Two days of practice: on 11-20 the first question right and the second
  // wrong (marked uncertain), on 11-21 the third wrong (uncertain) and the
  // first right again.
  void practiseTwoDays() {
    startBank();
    for (int i = 1; i <= 3; ++i) ids.append(GetItemID(app().Run.RunIds, i));
    const auto back = [this] { frame()->answerWindow()->Command1[3]->click(); };
    answer(keyOf(ids[0]), false);
    back();
    frame()->Frame3Cmd[2]->click();
    answer(keyOf(ids[1]) == u"A" ? u"B"_qs : u"A"_qs, true);
    back();
    frame()->Frame3Cmd[2]->click();
    t->clock.set(QDateTime(QDate(2026, 11, 21), QTime(9, 5)));
    answer(keyOf(ids[2]) == u"A" ? u"B"_qs : u"A"_qs, true);
    back();
    frame()->Frame3Cmd[1]->click();
    frame()->Frame3Cmd[1]->click();
    answer(keyOf(ids[0]), false);
    back();
    frame()->Frame3Cmd[3]->click();
    t->boxes.clear();
  }
  void openMenu(QMenu* menu) { emit menu->aboutToShow(); }
};

}  // namespace

TEST_F(Demo, TheDaysOfPracticeAndARunOverADay) {
  practiseTwoDays();
  ASSERT_EQ(ids.size(), 3);
  form->RiZhi->trigger();
  EXPECT_EQ(form->currentFace(), form->gridPage);
  ASSERT_TRUE(grid()->isVisible());
  EXPECT_FALSE(form->MSFlexGrid1->isVisible());
  EXPECT_EQ(grid()->cellText(0, 1), kBlank.repeated(15) + u"每天做过的题详细列表"_qs + kBlank.repeated(15));
  EXPECT_EQ(grid()->cellText(0, 2), u"做题数   "_qs);
  EXPECT_EQ(grid()->cellText(0, 3), u"正确数    "_qs);
  EXPECT_EQ(grid()->cellText(0, 4), u"得 分    "_qs);
  ASSERT_EQ(grid()->rowCount(), 2);
  // The first question was done on both days: it counts on 11-20 only.
  const QStringList row1 = {grid()->cellText(1, 1), grid()->cellText(1, 2), grid()->cellText(1, 3), grid()->cellText(1, 4)};
  const QStringList row2 = {grid()->cellText(2, 1), grid()->cellText(2, 2), grid()->cellText(2, 3), grid()->cellText(2, 4)};
  EXPECT_EQ(row1, (QStringList{u"2026年11月20日"_qs, u"2"_qs, u"1"_qs, u"50%"_qs}));
  EXPECT_EQ(row2, (QStringList{u"2026年11月21日"_qs, u"1"_qs, u"0"_qs, u"0%"_qs}));
  EXPECT_EQ(grid()->item(0, 2)->textAlignment(), Qt::AlignCenter);
  EXPECT_EQ(grid()->font().pointSize(), 10);
  test::CheckOnScreen(form.get(), test::kSmallScreen, u"log_days"_qs);

  // The whole of 11-20 again: no records are written by the list's run.
  const QString storyBefore = storyOf(ids[1]);
  t->boxes.answer(box::No);
  emit grid()->rowChosen(0);
  EXPECT_EQ(app().Run.RunIds, ids[0] + ids[1]);
  EXPECT_TRUE(app().InOtherList);
  EXPECT_FALSE(app().InUpdateList);
  EXPECT_EQ(form->currentFace(), form->practicePage);
  answer(keyOf(ids[0]), false);
  frame()->answerWindow()->Command1[3]->click();
  frame()->Frame3Cmd[3]->click();
  EXPECT_EQ(storyOf(ids[1]), storyBefore);
  // The end of the run brings the list back.
  EXPECT_EQ(form->currentFace(), form->gridPage);
  EXPECT_TRUE(grid()->isVisible());
  EXPECT_FALSE(frame()->isVisible());

  // Only the wrong ones of 11-20.
  t->boxes.answer(box::Yes);
  QTest::keyClick(grid(), Qt::Key_Enter);
  EXPECT_EQ(app().Run.RunIds, ids[1]);
}

TEST_F(Demo, UncertainQuestionsByDay) {
  practiseTwoDays();
  openMenu(form->MyGuess);
  ASSERT_TRUE(form->DoneGuess->isEnabled());
  form->DoneGuess->trigger();
  ASSERT_TRUE(grid()->isVisible());
  EXPECT_EQ(grid()->cellText(0, 1),
            kBlank.repeated(11) + u"做起来不太肯定的题按日期进行整理如下"_qs + kBlank.repeated(11));
  ASSERT_EQ(grid()->rowCount(), 2);
  EXPECT_EQ(grid()->cellText(1, 1), u"2026年11月20日做起来不太肯定的试题"_qs);
  EXPECT_EQ(grid()->cellText(1, 2), u"1"_qs);
  EXPECT_EQ(grid()->cellText(1, 3), u"0"_qs);
  EXPECT_EQ(grid()->cellText(1, 4), u"0%"_qs);
  EXPECT_EQ(grid()->cellText(2, 1), u"2026年11月21日做起来不太肯定的试题"_qs);
  test::CheckOnScreen(form.get(), test::kSmallScreen, u"log_uncertain"_qs);
  t->boxes.answer(box::Yes);
  emit grid()->rowChosen(1);
  EXPECT_EQ(app().Run.RunIds, ids[2]);
  EXPECT_TRUE(app().InOtherList);
}

TEST_F(Demo, UpdatedQuestionsByDayAndByLaw) {
  openMenu(form->AutoUpdate);
  // The folder is there and empty.
  EXPECT_FALSE(form->DoneNewItem->isEnabled());
  EXPECT_FALSE(form->DoneNewByLawName->isEnabled());
  EXPECT_TRUE(form->NewerProgram->isEnabled());
  // One question twice in a day file: twice in the count and in the run.
  t->writeGbk(u"\\更新的题\\20261121.ini"_qs, u"\"100011000021000120000110001100002\"\r\n"_qs);
  t->writeGbk(u"\\更新的题\\20261120.ini"_qs, u"\"10003100001\"\r\n"_qs);
  openMenu(form->AutoUpdate);
  ASSERT_TRUE(form->DoneNewItem->isEnabled());
  ASSERT_TRUE(form->DoneNewByLawName->isEnabled());
  form->DoneNewItem->trigger();
  ASSERT_EQ(grid()->rowCount(), 2);
  EXPECT_EQ(grid()->cellText(0, 2), u"题    数   "_qs);
  EXPECT_EQ(grid()->cellText(2, 1), u"2026年11月21日更新的试题"_qs);
  EXPECT_EQ(grid()->cellText(2, 2), u"3"_qs);
  test::CheckOnScreen(form.get(), test::kSmallScreen, u"log_updated_by_day"_qs);
  emit grid()->rowChosen(1);
  EXPECT_TRUE(t->boxes.shown().isEmpty());  // no question in mode 2
  EXPECT_EQ(app().Run.RunIds, u"100011000021000120000110001100002"_qs);
  EXPECT_EQ(app().Run.count(), 3);
  EXPECT_TRUE(app().InUpdateList);
  EXPECT_FALSE(app().InOtherList);
  frame()->Frame3Cmd[3]->click();
  EXPECT_TRUE(grid()->isVisible());

  form->DoneNewByLawName->trigger();
  EXPECT_EQ(grid()->cellText(0, 1), kBlank.repeated(17) + u"刚更新的试题,按法律或试卷归类"_qs + kBlank.repeated(17));
  ASSERT_EQ(grid()->rowCount(), 2);
  EXPECT_EQ(grid()->cellText(1, 1), u"《示例刑法》"_qs);
  EXPECT_EQ(grid()->cellText(1, 2), u"3"_qs);
  EXPECT_EQ(grid()->cellText(2, 1), u"《合同示例规则》"_qs);
  EXPECT_EQ(grid()->cellText(2, 2), u"1"_qs);
  test::CheckOnScreen(form.get(), test::kSmallScreen, u"log_updated_by_law"_qs);
  emit grid()->rowChosen(1);
  EXPECT_EQ(app().Run.RunIds, u"10003100001"_qs);
  EXPECT_TRUE(app().InUpdateList);
}

TEST(LogLists, OtherNamesInTheUncertainFolderEnableTheEntryButAreNotListed) {
  test::TestEnv t;
  test::MakeProgramFolder(t);
  t.writeGbk(u"\\模糊题\\2026112.ini"_qs, u"\"10001100001\"\r\n"_qs);
  Form1 form(t.env);
  ASSERT_EQ(form.load(), Form1::LoadOutcome::Running);
  emit form.MyGuess->aboutToShow();
  EXPECT_TRUE(form.DoneGuess->isEnabled());
  form.DoneGuess->trigger();
  EXPECT_TRUE(form.MSFlexGrid2->isVisibleTo(&form));
  EXPECT_EQ(form.MSFlexGrid2->rowCount(), 0);
  // An empty folder leaves it disabled; a missing one is made.
  QFile::remove(t.path(u"\\模糊题\\2026112.ini"_qs));
  emit form.MyGuess->aboutToShow();
  EXPECT_FALSE(form.DoneGuess->isEnabled());
  QDir(t.path(u"\\模糊题"_qs)).removeRecursively();
  emit form.MyGuess->aboutToShow();
  EXPECT_FALSE(form.DoneGuess->isEnabled());
  EXPECT_TRUE(DirExists(t.path(u"\\模糊题"_qs)));
  emit form.AutoUpdate->aboutToShow();
  EXPECT_TRUE(DirExists(t.path(u"\\更新的题"_qs)));
  EXPECT_FALSE(form.DoneNewItem->isEnabled());
  EXPECT_TRUE(t.boxes.shown().isEmpty());
}

TEST(LogLists, NoRecordShowsTheBoxAndNoGrid) {
  test::TestEnv t;
  test::MakeProgramFolder(t);
  Form1 form(t.env);
  ASSERT_EQ(form.load(), Form1::LoadOutcome::Running);
  form.RiZhi->trigger();
  EXPECT_FALSE(form.MSFlexGrid2->isVisibleTo(&form));
  ASSERT_EQ(t.boxes.shown().size(), 1);
  EXPECT_EQ(t.boxes.shown()[0].title, u"无做题记录"_qs);
  EXPECT_EQ(t.boxes.shown()[0].text, u"没有做题记录。"_qs);
  EXPECT_EQ(t.boxes.shown()[0].style, box::Information);
}
