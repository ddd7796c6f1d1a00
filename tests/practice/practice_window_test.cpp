// The practice run in the main window: started by a click in the directory
// grid, ended by 返回; on a small folder and on the demonstration data, with
// screenshots of the practice frame and the answer window.

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTextEdit>

#include "app/main_window.h"
#include "bank/tables.h"
#include "platform/dbftable.h"
#include "platform/vbtext.h"
#include "practice/answer_check.h"
#include "practice/answer_window.h"
#include "practice/directory_widget.h"
#include "practice/practice_frame_widget.h"
#include "practice_harness.h"
#include "settings/settings.h"
#include "support/program_folder.h"

using namespace mj;

namespace {

// The settings of another day: the first entry of the day counts.
void WriteSettings(const test::TestEnv& t) {
  t.writeGbk(u"\\ini\\userself.ini"_qs,
             u"STOKTIMES=1\r\nSTADDNUM=1\r\nSTPASSDAYS=30\r\nTSOKTIMES=1\r\nTSADDNUM=1\r\nTSPASSDAYS=30\r\n"
             u"PUBFONTSIZE=15\r\nPUBBACKCOLOR=16777215\r\nPUBFORECOLOR=0\r\nSTLASTUPDATE=0\r\n"
             u"TSLASTUPDATE=0\r\nPUBFONTNAME=宋体\r\nPUBFONTIT=FALSE\r\nPUBFONTBOLD=FALSE\r\n"_qs);
}

struct Window {
  test::TestEnv t;
  std::unique_ptr<Form1> form;

  explicit Window(const QString& copyFrom = QString()) : t(copyFrom) {}
  void start() {
    form = std::make_unique<Form1>(t.env);
    form->load();
    form->resize(1200, 800);
    form->show();
  }
  DirectoryGrid* grid() const { return form->MSFlexGrid1; }
  PracticeFrame* frame() const { return form->practice; }
  Form3* form3() const { return frame()->answerWindow(); }
  PracticeRun& run() { return form->state().Run; }
  void answer(const QString& caption) { frame()->Command2[AnswerCaptions().indexOf(caption)]->click(); }
};

QString wrongFor(const QString& key) { return key == u"A" ? u"B"_qs : u"A"_qs; }

}  // namespace

TEST(PracticeWindow, RowsWithoutQuestions) {
  Window w;
  test::MakeProgramFolder(w.t);
  pt::MakePracticeFolder(w.t);
  pt::WriteDirectory(w.t, tables::kDirectory,
                     {{u"第一部分"_qs, {}, u"2-3"_qs, 4, 4},
                      {u"《示例法》待追加"_qs, u"\\yibanti\\100019.mmd"_qs, {}, 0, 0},
                      {u"《示例法》单项选择题"_qs, u"\\yibanti\\100011.mmd"_qs, {}, 4, 4},
                      {u"《示例法》最后一行"_qs, u"\\yibanti\\100018.mmd"_qs, {}, 0, 0}});
  WriteSettings(w.t);
  w.start();
  w.form->ShiTi->trigger();
  w.t.boxes.clear();
  // A row with no questions: the box, and the grid stays.
  EXPECT_EQ(w.grid()->clickRow(2), DirectoryClick::Empty);
  ASSERT_EQ(w.t.boxes.shown().size(), 1);
  EXPECT_EQ(w.t.boxes.shown()[0].text, u"对不起，该部分试题待以后追加。"_qs);
  EXPECT_EQ(w.form->currentFace(), w.form->gridPage);
  // The same on the very last row is silent.
  w.t.boxes.clear();
  EXPECT_EQ(w.grid()->clickRow(4), DirectoryClick::Nothing);
  EXPECT_TRUE(w.t.boxes.shown().isEmpty());
  EXPECT_EQ(w.form->currentFace(), w.form->gridPage);
  EXPECT_FALSE(w.frame()->isVisible());
  // A bank starts its run in the practice face.
  EXPECT_EQ(w.grid()->clickRow(3), DirectoryClick::Leaf);
  EXPECT_EQ(w.form->currentFace(), w.form->practicePage);
  EXPECT_TRUE(w.frame()->isVisible());
  EXPECT_TRUE(w.grid()->isHidden());
  EXPECT_EQ(w.run().RunIds.size(), 44);
  EXPECT_EQ(w.form->Text3, w.frame()->Text3);
  // The clock of the main window drives the frame.
  QTest::qWait(1100);
  EXPECT_EQ(w.frame()->Label5->text(), u"◎《示例法》单项选择题  符合你的设置条件的共4题 这是第1题。"_qs);
}

TEST(PracticeWindow, TheSettingsStyleReachesTheQuestionAndAnswerBoxes) {
  Window w;
  test::MakeProgramFolder(w.t);
  pt::MakePracticeFolder(w.t);
  WriteSettings(w.t);
  w.start();
  TextStyle s = w.form->state().settings->style();
  s.fontSize = 21;
  w.form->state().settings->setStyle(s);
  EXPECT_EQ(w.form->Text3->font().pointSize(), 21);
  EXPECT_EQ(w.form3()->Form3Text[0]->font().pointSize(), 21);
  EXPECT_EQ(w.form3()->Form3Text[1]->font().pointSize(), 21);
  EXPECT_EQ(w.run().FontSize, 21);
}

TEST(PracticeWindow, DemonstrationDataRunAndSecondDay) {
  if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "no demonstration data built";
  Window w(test::DemoDataDir());
  WriteSettings(w.t);
  w.t.clock.set(QDateTime(QDate(2026, 11, 21), QTime(9, 30)));
  w.start();
  w.form->ShiTi->trigger();
  DirectoryGrid* g = w.grid();
  const Directory& d = g->directory();

  // The bank 100011 of 《示例刑法》: its heading and the law's heading opened.
  int bankRow = 0;
  for (int r = 1; r <= d.rowCount(); ++r)
    if (d.text(r, kColFile).endsWith(u"100011.mmd"_qs)) bankRow = r;
  ASSERT_GT(bankRow, 2);
  QList<int> headings;
  for (int r = 1; r < bankRow; ++r) {
    long long a = 0, z = 0;
    if (HeadingRange(d.text(r, kColFlag), a, z) && a <= bankRow && bankRow <= z) headings.append(r);
  }
  ASSERT_EQ(headings.size(), 2);
  for (int r : headings) EXPECT_EQ(g->clickRow(r), DirectoryClick::Toggled);
  const QString total = d.text(bankRow, kColTotal);
  const double eligibleBefore = Val(d.text(bankRow, kColEligible));
  const double headingEligibleBefore = Val(d.text(headings[1], kColEligible));
  EXPECT_EQ(total, u"7"_qs);
  EXPECT_EQ(eligibleBefore, 7);

  // The run: the seven questions of the bank, all due.
  ASSERT_EQ(g->clickRow(bankRow), DirectoryClick::Leaf);
  ASSERT_EQ(w.run().count(), 7);
  EXPECT_EQ(w.form->currentFace(), w.form->practicePage);
  QStringList ids;
  QStringList keys;
  for (int i = 1; i <= 7; ++i) {
    ids.append(GetItemID(w.run().RunIds, i));
    keys.append(FindItem(w.form->state().AllItemData, ids.last())->answer);
  }
  EXPECT_EQ(ids.first(), u"10001100001"_qs);
  QApplication::processEvents();
  w.form->grab().save(test::OutputDir() + u"/practice_frame_demo.png"_qs);

  // Right, wrong, right, wrong; a minute and a second on each.
  const QStringList given = {keys[0], wrongFor(keys[1]), keys[2], wrongFor(keys[3])};
  for (int i = 0; i < given.size(); ++i) {
    if (i > 0) {
      w.form3()->Command1[3]->click();
      w.frame()->Frame3Cmd[2]->click();
    }
    for (int s = 0; s < 61; ++s) w.frame()->session().Timer1_Timer();
    w.t.clock.advanceSeconds(61);
    w.answer(given[i]);
    ASSERT_TRUE(w.form3()->isVisible());
    if (i == 0) {
      EXPECT_TRUE(w.form3()->boxText(1).startsWith(u"恭喜你，你做对了。\r\n\r\n"_qs));
      EXPECT_TRUE(w.form3()->boxText(1).contains(u"《示例刑法》\r\n　　第三条"_qs));
      QApplication::processEvents();
      w.form3()->grab().save(test::OutputDir() + u"/answer_window_demo.png"_qs);
    }
    if (i == 1) {
      EXPECT_TRUE(w.form3()->boxText(1).startsWith(u"你错选了答案"_qs + given[1] + u"。\r\n\r\n"_qs));
    }
  }
  w.form3()->Command1[3]->click();
  EXPECT_EQ(w.run().RunSeconds, 244);
  w.frame()->Frame3Cmd[3]->click();
  EXPECT_EQ(w.form->currentFace(), w.form->gridPage);
  EXPECT_FALSE(g->isHidden());

  // The grid row and the two headings over it.
  EXPECT_EQ(d.text(bankRow, kColDone), u"4"_qs);
  EXPECT_EQ(d.text(bankRow, kColRight), u"2"_qs);
  EXPECT_EQ(d.text(bankRow, kColScore), u"50%"_qs);
  EXPECT_EQ(d.text(bankRow, kColMinutes), u"4"_qs);
  EXPECT_EQ(Val(d.text(bankRow, kColEligible)), eligibleBefore - 4);
  for (int r : headings) {
    EXPECT_EQ(d.text(r, kColDone), u"4"_qs) << r;
    EXPECT_EQ(d.text(r, kColRight), u"2"_qs) << r;
    EXPECT_EQ(d.text(r, kColScore), u"50%"_qs) << r;
    EXPECT_EQ(d.text(r, kColMinutes), u"4"_qs) << r;
  }
  EXPECT_EQ(Val(d.text(headings[1], kColEligible)), headingEligibleBefore - 4);
  EXPECT_EQ(g->item(bankRow - 1, kColDone)->text(), u"4"_qs);

  // The directory table: only the run's row.
  const QStringList done = pt::ColumnOf(w.t, tables::kDirectory, u"g"_qs);
  const QStringList right = pt::ColumnOf(w.t, tables::kDirectory, u"h"_qs);
  const QStringList minutes = pt::ColumnOf(w.t, tables::kDirectory, u"l"_qs);
  const QStringList oknum = pt::ColumnOf(w.t, tables::kDirectory, u"oknum"_qs);
  for (int r = 0; r < done.size(); ++r) {
    EXPECT_EQ(done[r], r + 1 == bankRow ? u"4"_qs : u"0"_qs) << r;
    EXPECT_EQ(right[r], r + 1 == bankRow ? u"2"_qs : u"0"_qs) << r;
    EXPECT_EQ(minutes[r], r + 1 == bankRow ? u"4"_qs : u"0"_qs) << r;
  }
  EXPECT_EQ(oknum[bankRow - 1], u"3"_qs);

  // items.mmd: the four records, the others untouched.
  const QStringList expected = {u"2026-11-21 09:31"_qs + Right(u"    "_qs + given[0], 4),
                                u"2026-11-21 09:32"_qs + Right(u"    "_qs + given[1], 4),
                                u"2026-11-21 09:33"_qs + Right(u"    "_qs + given[2], 4),
                                u"2026-11-21 09:34"_qs + Right(u"    "_qs + given[3], 4),
                                u"no"_qs,
                                u"no"_qs,
                                u"no"_qs};
  const DbfTable items = DbfTable::open(w.t.path(u"\\dbf\\items.mmd"_qs));
  for (int i = 0; i < 7; ++i) {
    const QList<int> rows = Select(items, {{u"itemid"_qs, ids[i]}});
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(items.trimmedText(rows[0], u"story"_qs), expected[i]) << ids[i].toStdString();
    EXPECT_EQ(FindItem(w.form->state().AllItemData, ids[i])->story, expected[i]);
  }
  // Nothing else of the table was written.
  int done_ = 0;
  for (int r : items.rows())
    if (items.trimmedText(r, u"story"_qs) != u"no") ++done_;
  EXPECT_EQ(done_, 4);

  // The next day: the three not yet done.
  w.t.clock.set(QDateTime(QDate(2026, 11, 22), QTime(8, 0)));
  w.form->ShiTi->trigger();
  EXPECT_EQ(Val(g->directory().text(bankRow, kColEligible)), 3);
  for (int r : headings) g->clickRow(r);
  ASSERT_EQ(g->clickRow(bankRow), DirectoryClick::Leaf);
  EXPECT_EQ(w.run().RunIds, ids[4] + ids[5] + ids[6]);
  w.frame()->Frame3Cmd[3]->click();

  // Thirty days later: the wrong ones come back, the right ones are done.
  w.t.clock.set(QDateTime(QDate(2026, 12, 21), QTime(8, 0)));
  w.form->ShiTi->trigger();
  EXPECT_EQ(Val(g->directory().text(bankRow, kColEligible)), 5);
  for (int r : headings) g->clickRow(r);
  ASSERT_EQ(g->clickRow(bankRow), DirectoryClick::Leaf);
  EXPECT_EQ(w.run().RunIds, ids[1] + ids[3] + ids[4] + ids[5] + ids[6]);
}

TEST(PracticeWindow, DemonstrationPaperGoesOnWithoutTheAnswerWindow) {
  if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "no demonstration data built";
  Window w(test::DemoDataDir());
  WriteSettings(w.t);
  w.start();
  w.form->CeShi->trigger();
  DirectoryGrid* g = w.grid();
  const Directory& d = g->directory();
  int row = 0;
  for (int r = 1; r <= d.rowCount() && row == 0; ++r)
    if (d.text(r, kColFile).endsWith(u"000011.mmd"_qs)) row = r;
  ASSERT_GT(row, 0);
  for (int r = 1; r < row; ++r) {
    long long a = 0, z = 0;
    if (HeadingRange(d.text(r, kColFlag), a, z) && a <= row && row <= z) g->clickRow(r);
  }
  ASSERT_EQ(g->clickRow(row), DirectoryClick::Leaf);
  ASSERT_GT(w.run().count(), 1);
  const QString first = GetItemID(w.run().RunIds, 1);
  w.answer(u"A"_qs);
  EXPECT_FALSE(w.form3()->isVisible());
  EXPECT_EQ(w.run().CurIndex, 2);
  const DbfTable items = DbfTable::open(w.t.path(u"\\dbf\\csitems.mmd"_qs));
  const QList<int> rows = Select(items, {{u"itemid"_qs, first}});
  ASSERT_EQ(rows.size(), 1);
  EXPECT_EQ(items.trimmedText(rows[0], u"story"_qs), u"2026-11-21 09:30   A"_qs);
}
