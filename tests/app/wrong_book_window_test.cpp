// The window 错题本 on the demonstration data after a scripted day of
// answers in two banks and a simulated paper: the groups and counts, newest
// first; a bank's wrong questions practised, the one answered right gone;
// the next day the rest still there, all practised at once; the window on a
// 1024x768 screen, by keyboard, and its help.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "app/main_window.h"
#include "app/search_entries_window.h"
#include "bank/tables.h"
#include "log/log_grid_widget.h"
#include "log/wrong_book_window.h"
#include "platform/dbftable.h"
#include "practice/answer_check.h"
#include "practice/answer_window.h"
#include "practice/directory_widget.h"
#include "practice/practice_frame_widget.h"
#include "support/directory_runs.h"
#include "support/keys.h"
#include "support/test_env.h"
#include "support/window_checks.h"

using namespace mj;

namespace {

struct WrongBookWindow : ::testing::Test {
  std::unique_ptr<test::TestEnv> t;
  std::unique_ptr<Form1> form;
  const QDate day = QDate(2026, 11, 20);

  void SetUp() override {
    if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "no demonstration data built";
    t = std::make_unique<test::TestEnv>(test::DemoDataDir());
    t->clock.set(QDateTime(day, QTime(9, 0)));
    form = std::make_unique<Form1>(t->env);
    ASSERT_EQ(form->load(), Form1::LoadOutcome::Running);
    form->resize(1000, 700);
    form->show();
    form->activateWindow();
  }
  AppState& app() { return form->state(); }
  PracticeFrame* frame() const { return form->practice; }
  Form20* window() { return form->searchEntries()->wrongBookWindow(); }
  void at(int hour, int minute, const QDate& d) { t->clock.set(QDateTime(d, QTime(hour, minute))); }
  QString keyOf(const QString& id) {
    if (const ItemRow* r = FindItem(app().AllItemData, id)) return r->answer;
    const DbfTable items = DbfTable::open(t->path(u"\\dbf\\csitems.mmd"_qs));
    const QList<int> rows = Select(items, {{u"itemid"_qs, id}});
    return rows.isEmpty() ? QString() : items.trimmedText(rows[0], u"answer"_qs);
  }
  QString wrongFor(const QString& id) { return keyOf(id) == u"A" ? u"B"_qs : u"A"_qs; }
  void answer(const QString& caption) { frame()->Command2[AnswerCaptions().indexOf(caption)]->click(); }
  void closeAnswer() { frame()->answerWindow()->Command1[3]->click(); }
  // The run of the bank whose file ends in `file` in the directory shown.
  void startBank(const QString& file) { test::StartBankRun(*form->MSFlexGrid1, file); }
  QStringList rowOf(int row) {
    return {window()->Grid1->cellText(row, 1), window()->Grid1->cellText(row, 2), window()->Grid1->cellText(row, 3)};
  }
  // The scripted day: in bank 100011 the first question right and the next
  // two wrong, in bank 100021 the first wrong, in paper 1 the first wrong.
  QStringList ids100011, ids100021, idsPaper;
  void scriptedDay() {
    form->ShiTi->trigger();
    startBank(u"100011.mmd"_qs);
    for (int i = 1; i <= 3; ++i) ids100011.append(GetItemID(app().Run.RunIds, i));
    at(9, 0, day);
    answer(keyOf(ids100011[0]));
    closeAnswer();
    frame()->Frame3Cmd[2]->click();
    at(9, 1, day);
    answer(wrongFor(ids100011[1]));
    closeAnswer();
    frame()->Frame3Cmd[2]->click();
    at(9, 2, day);
    answer(wrongFor(ids100011[2]));
    closeAnswer();
    frame()->Frame3Cmd[3]->click();
    startBank(u"100021.mmd"_qs);
    ids100021.append(GetItemID(app().Run.RunIds, 1));
    at(9, 10, day);
    answer(wrongFor(ids100021[0]));
    closeAnswer();
    frame()->Frame3Cmd[3]->click();
    form->CeShi->trigger();
    startBank(u"000011.mmd"_qs);
    idsPaper.append(GetItemID(app().Run.RunIds, 1));
    at(9, 20, day);
    answer(wrongFor(idsPaper[0]));  // a paper goes straight on
    frame()->Frame3Cmd[3]->click();
    t->boxes.clear();
  }
};

}  // namespace

TEST_F(WrongBookWindow, AScriptedDayThenOneRightThenTheNextDay) {
  ASSERT_TRUE(ReadWrongBook(t->env).groups.isEmpty()) << "the demonstration data has no wrong answers";
  scriptedDay();
  form->CuoTiBen->trigger();
  ASSERT_TRUE(window()->isVisible());
  const QString blank = u"\u3000"_qs;
  EXPECT_EQ(window()->Grid1->cellText(0, 1), blank.repeated(8) + u"最近一次做错的题按题库归类"_qs + blank.repeated(8));
  EXPECT_EQ(window()->Grid1->cellText(0, 2), u"题    数   "_qs);
  EXPECT_EQ(window()->Grid1->cellText(0, 3), u"最近做错的日期    "_qs);
  ASSERT_EQ(window()->Grid1->rowCount(), 3);
  EXPECT_EQ(rowOf(1), (QStringList{u"试卷一 单项选择题"_qs, u"1"_qs, u"2026年11月20日"_qs}));
  EXPECT_EQ(rowOf(2), (QStringList{u"《行政处罚示例规定》单项选择题"_qs, u"1"_qs, u"2026年11月20日"_qs}));
  EXPECT_EQ(rowOf(3), (QStringList{u"《示例刑法》单项选择题"_qs, u"2"_qs, u"2026年11月20日"_qs}));
  EXPECT_EQ(window()->book().groups[2].ids, ids100011[1] + ids100011[2]);
  EXPECT_EQ(window()->Label1->text(), WrongBookSummary(window()->book()));
  EXPECT_EQ(window()->Grid1->font().pointSize(), 10);
  test::CheckOnScreen(window(), test::kSmallScreen, u"wrong_book"_qs);

  // The bank of 100011: its two wrong questions; the first answered right
  // leaves the book.
  emit window()->Grid1->rowChosen(2);
  EXPECT_FALSE(window()->isVisible());
  EXPECT_EQ(app().Run.RunIds, ids100011[1] + ids100011[2]);
  EXPECT_FALSE(app().AutoNext);
  at(9, 30, day);
  answer(keyOf(ids100011[1]));
  EXPECT_TRUE(frame()->answerWindow()->boxText(1).startsWith(u"上次错选了答案"_qs));
  closeAnswer();
  frame()->Frame3Cmd[3]->click();
  ASSERT_TRUE(window()->isVisible());
  ASSERT_EQ(window()->Grid1->rowCount(), 3);
  EXPECT_EQ(rowOf(3), (QStringList{u"《示例刑法》单项选择题"_qs, u"1"_qs, u"2026年11月20日"_qs}));
  EXPECT_EQ(window()->book().groups[2].ids, ids100011[2]);
  EXPECT_EQ(window()->book().groups[2].newest, u"2026-11-20 09:02"_qs);
  window()->Command2->click();

  // The next day: the rest is still there; all of them at once, right.
  const QDate next = day.addDays(1);
  at(8, 0, next);
  form->CuoTiBen->trigger();
  ASSERT_EQ(window()->book().count(), 3);
  EXPECT_EQ(window()->book().allIds(), idsPaper[0] + ids100021[0] + ids100011[2]);
  window()->Command1->click();
  EXPECT_EQ(app().Run.RunIds, idsPaper[0] + ids100021[0] + ids100011[2]);
  for (int i = 1; i <= 3; ++i) {
    at(8, i, next);
    answer(keyOf(GetItemID(app().Run.RunIds, i)));
    closeAnswer();
    if (i < 3) frame()->Frame3Cmd[2]->click();
  }
  frame()->Frame3Cmd[3]->click();
  ASSERT_TRUE(window()->isVisible());
  EXPECT_EQ(window()->Grid1->rowCount(), 0);
  EXPECT_EQ(window()->Label1->text(), kWrongBookEmpty);
  EXPECT_FALSE(window()->Command1->isEnabled());
  // The paper's record is in its own table, right on top of the wrong one.
  const DbfTable cs = DbfTable::open(t->path(u"\\dbf\\csitems.mmd"_qs));
  const QList<int> rows = Select(cs, {{u"itemid"_qs, idsPaper[0]}});
  ASSERT_EQ(rows.size(), 1);
  EXPECT_EQ(cs.trimmedText(rows[0], u"story"_qs),
            RecordEntry(QDateTime(next, QTime(8, 1)), keyOf(idsPaper[0])) +
                RecordEntry(QDateTime(day, QTime(9, 20)), wrongFor(idsPaper[0])));
}

TEST_F(WrongBookWindow, ByKeyboardAndHelp) {
  scriptedDay();
  form->CuoTiBen->trigger();
  QApplication::setActiveWindow(window());
  QApplication::processEvents();
  ASSERT_EQ(QApplication::focusWidget(), window()->Grid1);
  // Down to the second row, Enter: that bank's question.
  test::PressKey(Qt::Key_Down);
  test::PressKey(Qt::Key_Return);
  EXPECT_EQ(app().Run.RunIds, ids100021[0]);
  test::PressKey(keyOf(ids100021[0]) == u"A" ? Qt::Key_A : keyOf(ids100021[0]) == u"B" ? Qt::Key_B
                                                 : keyOf(ids100021[0]) == u"C" ? Qt::Key_C
                                                                               : Qt::Key_D);
  ASSERT_TRUE(frame()->answerWindow()->isVisible());
  test::PressKey(Qt::Key_Escape);
  test::PressKey(Qt::Key_Escape);
  ASSERT_TRUE(window()->isVisible());
  EXPECT_EQ(window()->book().count(), 3);
  QList<int> asked;
  form->helpHandler = [&asked](int n) { asked.append(n); };
  QTest::keyClick(window()->Grid1, Qt::Key_F1);
  EXPECT_EQ(asked, QList<int>{20});
}
