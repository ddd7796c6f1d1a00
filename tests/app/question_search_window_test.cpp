// The window 题目搜索 on the demonstration data: the menu entry, the hits
// with their marks, a run over one hit and over all of them that records
// every answer as a bank run does (the internal bank's table and index, the
// paper's table), 返回 back to the results, the whole path by keyboard, and
// the window on a 1024x768 screen.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include "app/main_window.h"
#include "app/search_entries_window.h"
#include "bank/question_search_window.h"
#include "bank/tables.h"
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

struct SearchWindow : ::testing::Test {
  std::unique_ptr<test::TestEnv> t;
  std::unique_ptr<Form1> form;
  const QDateTime now = QDateTime(QDate(2026, 11, 21), QTime(9, 30));

  void SetUp() override {
    if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "no demonstration data built";
    t = std::make_unique<test::TestEnv>(test::DemoDataDir());
    t->clock.set(now);
    form = std::make_unique<Form1>(t->env);
    ASSERT_EQ(form->load(), Form1::LoadOutcome::Running);
    form->resize(1000, 700);
    form->show();
    form->activateWindow();
  }
  AppState& app() { return form->state(); }
  PracticeFrame* frame() const { return form->practice; }
  Form19* window() { return form->searchEntries()->searchWindow(); }
  QString storyOf(const QString& table, const QString& id) {
    const DbfTable items = DbfTable::open(t->path(u"\\dbf\\"_qs + table));
    const QList<int> rows = Select(items, {{u"itemid"_qs, id}});
    return rows.isEmpty() ? QString() : items.trimmedText(rows[0], u"story"_qs);
  }
  void answer(const QString& caption) { frame()->Command2[AnswerCaptions().indexOf(caption)]->click(); }
  void search(const QString& query) {
    form->SouTi->trigger();
    ASSERT_TRUE(window()->isVisible());
    window()->Text1->setText(query);
    window()->Command1->click();
  }
};

}  // namespace

TEST_F(SearchWindow, TheHitsListedAndMarked) {
  search(u"正当防卫"_qs);
  ASSERT_EQ(window()->results().size(), 2);
  EXPECT_EQ(window()->statusText(), SearchFoundText(2));
  const QAbstractItemModel* m = window()->List1->model();
  EXPECT_EQ(m->headerData(0, Qt::Horizontal).toString(), u"题库"_qs);
  EXPECT_EQ(m->headerData(1, Qt::Horizontal).toString(), u"题号"_qs);
  EXPECT_EQ(m->headerData(2, Qt::Horizontal).toString(), u"找到的文字"_qs);
  EXPECT_EQ(m->index(0, 0).data().toString(), u"《示例刑法》单项选择题"_qs);
  EXPECT_EQ(m->index(0, 1).data().toString(), u"10001100003"_qs);
  EXPECT_EQ(m->index(0, 2).data().toString(), u"B．正当防卫"_qs);
  EXPECT_EQ(m->index(0, 2).data(Qt::UserRole).toString(),
            u"<span style=\"white-space:pre;\">B．<span style=\"background-color:#ffe36e; color:#b00000;\">正当防卫"
            u"</span></span>"_qs);
  EXPECT_EQ(m->index(1, 0).data().toString(), u"试卷二 多项选择题"_qs);
  EXPECT_EQ(m->index(1, 1).data().toString(), u"00002200005"_qs);
  EXPECT_TRUE(window()->Command2->isEnabled());
  test::CheckOnScreen(window(), test::kSmallScreen, u"question_search"_qs);

  // Nothing found, and no words at all.
  window()->Text1->setText(u"正当防卫 罪刑法定"_qs);
  window()->Command1->click();
  EXPECT_TRUE(window()->results().isEmpty());
  EXPECT_EQ(window()->statusText(), kSearchNothingFound);
  EXPECT_FALSE(window()->Command2->isEnabled());
  window()->Text1->setText(u"  "_qs);
  window()->Command1->click();
  EXPECT_EQ(window()->statusText(), kSearchNoWords);
  EXPECT_TRUE(t->boxes.shown().isEmpty());
}

TEST_F(SearchWindow, AMissingBankFileIsSaid) {
  ASSERT_TRUE(QFile::remove(t->path(u"\\yibanti\\100012.mmd"_qs)));
  search(u"正当防卫"_qs);
  EXPECT_EQ(window()->statusText(),
            SearchFoundText(2) + u'\n' + SearchUnreadableText({t->path(u"\\yibanti\\100012.mmd"_qs)}));
}

TEST_F(SearchWindow, OneHitPractisedAndBackToTheResults) {
  search(u"正当防卫"_qs);
  ASSERT_EQ(window()->results().size(), 2);
  emit window()->List1->doubleClicked(window()->List1->model()->index(0, 1));
  EXPECT_FALSE(window()->isVisible());
  EXPECT_EQ(app().Run.RunIds, u"10001100003"_qs);
  EXPECT_EQ(form->currentFace(), form->practicePage);
  EXPECT_TRUE(frame()->Label5->text().startsWith(u"◎题目搜索：正当防卫"_qs));
  // A wrong answer, as in a bank run: the record is the one entry, in the
  // table and in the index, and the window says so.
  answer(u"A"_qs);
  const QString entry = RecordEntry(now, u"A"_qs);
  EXPECT_EQ(storyOf(tables::kItems, u"10001100003"_qs), entry);
  EXPECT_EQ(FindItem(app().AllItemData, u"10001100003"_qs)->story, entry);
  EXPECT_TRUE(frame()->answerWindow()->boxText(1).startsWith(u"你错选了答案A。"_qs));
  frame()->answerWindow()->Command1[3]->click();
  // Right this time: worded against the last attempt, added on top.
  t->clock.set(now.addSecs(120));
  answer(u"B"_qs);
  EXPECT_TRUE(frame()->answerWindow()->boxText(1).startsWith(u"上次错选了答案A，但本次恭喜你，你做对了。"_qs));
  EXPECT_EQ(storyOf(tables::kItems, u"10001100003"_qs), RecordEntry(now.addSecs(120), u"B"_qs) + entry);
  frame()->answerWindow()->Command1[3]->click();
  // 返回: the results as they were, the start page behind them.
  frame()->Frame3Cmd[3]->click();
  EXPECT_TRUE(window()->isVisible());
  EXPECT_EQ(window()->results().size(), 2);
  EXPECT_EQ(form->currentFace(), form->startPage);
  EXPECT_FALSE(app().Run.OwnList);
  // No directory row was counted.
  EXPECT_TRUE(t->boxes.shown().isEmpty());
}

TEST_F(SearchWindow, TheRecordIsTheOneABankRunWrites) {
  // The same question answered the same way at the same time, once from the
  // search and once in its bank's run in a second copy of the folder: the
  // item tables come out byte for byte the same, and so does the answer.
  search(u"罪刑法定 类推"_qs);
  ASSERT_EQ(window()->results().ids(), u"10001100001"_qs);
  window()->practiseRow(0);
  answer(u"B"_qs);
  const QString searchAnswer = frame()->answerWindow()->boxText(1);
  frame()->answerWindow()->Command1[3]->click();
  frame()->Frame3Cmd[3]->click();

  test::TestEnv bankEnv(test::DemoDataDir());
  bankEnv.clock.set(now);
  Form1 bankForm(bankEnv.env);
  ASSERT_EQ(bankForm.load(), Form1::LoadOutcome::Running);
  bankForm.show();
  bankForm.ShiTi->trigger();
  DirectoryGrid* g = bankForm.MSFlexGrid1;
  const Directory& d = g->directory();
  int bankRow = 0;
  for (int r = 1; r <= d.rowCount(); ++r)
    if (d.text(r, kColFile).endsWith(u"100011.mmd"_qs)) bankRow = r;
  ASSERT_GT(bankRow, 0);
  for (int r = 1; r < bankRow; ++r) {
    long long a = 0, z = 0;
    if (HeadingRange(d.text(r, kColFlag), a, z) && a <= bankRow && bankRow <= z) g->clickRow(r);
  }
  ASSERT_EQ(g->clickRow(bankRow), DirectoryClick::Leaf);
  ASSERT_EQ(GetItemID(bankForm.state().Run.RunIds, 1), u"10001100001"_qs);
  bankForm.practice->Command2[AnswerCaptions().indexOf(u"B"_qs)]->click();
  EXPECT_EQ(bankForm.practice->answerWindow()->boxText(1), searchAnswer);
  bankForm.practice->answerWindow()->Command1[3]->click();
  bankForm.practice->Frame3Cmd[3]->click();

  QFile fromSearch(t->path(u"\\dbf\\items.mmd"_qs)), fromBank(bankEnv.path(u"\\dbf\\items.mmd"_qs));
  ASSERT_TRUE(fromSearch.open(QIODevice::ReadOnly));
  ASSERT_TRUE(fromBank.open(QIODevice::ReadOnly));
  const QByteArray a = fromSearch.readAll(), b = fromBank.readAll();
  EXPECT_TRUE(a == b) << "the item tables differ";
  EXPECT_EQ(storyOf(tables::kItems, u"10001100001"_qs), RecordEntry(now, u"B"_qs));
}

TEST_F(SearchWindow, AllHitsRecordedWhereTheirBanksRecordThem) {
  // From the simulated papers' mode: no index and no answer window there;
  // the run over the hits has both, and the mode comes back after it.
  form->CeShi->trigger();
  ASSERT_TRUE(app().AutoNext);
  ASSERT_TRUE(app().ItemData.isEmpty());
  search(u"防卫 过当"_qs);
  ASSERT_EQ(window()->results().size(), 2);
  window()->Command2->click();
  EXPECT_EQ(app().Run.RunIds, u"1000110000300002200005"_qs);
  EXPECT_FALSE(app().AutoNext);
  answer(u"B"_qs);
  ASSERT_TRUE(frame()->answerWindow()->isVisible());
  frame()->answerWindow()->Command1[2]->click();  // 下一题
  frame()->answerWindow()->Command1[3]->click();
  EXPECT_EQ(app().Run.CurIndex, 2);
  answer(u"AB"_qs);
  EXPECT_EQ(storyOf(tables::kItems, u"10001100003"_qs), RecordEntry(now, u"B"_qs));
  EXPECT_EQ(FindItem(app().AllItemData, u"10001100003"_qs)->story, RecordEntry(now, u"B"_qs));
  // The paper's question: into csitems.mmd, as its paper's run writes it.
  EXPECT_EQ(storyOf(tables::kCsItems, u"00002200005"_qs), RecordEntry(now, u"AB"_qs));
  frame()->answerWindow()->Command1[3]->click();
  frame()->Frame3Cmd[3]->click();
  EXPECT_TRUE(window()->isVisible());
  EXPECT_TRUE(app().AutoNext);
  EXPECT_TRUE(app().ItemData.isEmpty());
  EXPECT_EQ(form->currentFace(), form->gridPage);
  EXPECT_TRUE(form->MSFlexGrid1->isVisible());
}

TEST_F(SearchWindow, AnOpenBankRunComesBackAfterTheSearchRun) {
  form->ShiTi->trigger();
  ASSERT_NO_FATAL_FAILURE(test::StartBankRun(*form->MSFlexGrid1, u"100011.mmd"_qs));
  const QString bankIds = app().Run.RunIds;
  frame()->Frame3Cmd[2]->click();
  search(u"罪刑法定"_qs);
  window()->Command2->click();
  EXPECT_EQ(app().Run.RunIds, u"10001100001"_qs);
  frame()->Frame3Cmd[3]->click();
  EXPECT_EQ(app().Run.RunIds, bankIds);
  EXPECT_EQ(app().Run.CurIndex, 2);
  EXPECT_EQ(form->currentFace(), form->practicePage);
}

TEST_F(SearchWindow, ByKeyboardOnly) {
  form->SouTi->trigger();
  QApplication::setActiveWindow(window());
  QApplication::processEvents();
  ASSERT_EQ(QApplication::focusWidget(), window()->Text1);
  // Chinese comes as the input method hands it over: a committed string.
  QInputMethodEvent typed;
  typed.setCommitString(u"正当防卫"_qs);
  QApplication::sendEvent(window()->Text1, &typed);
  ASSERT_EQ(window()->Text1->text(), u"正当防卫"_qs);
  test::PressKey(Qt::Key_Return);
  ASSERT_EQ(window()->results().size(), 2);
  ASSERT_EQ(QApplication::focusWidget(), window()->List1);
  // Enter on the list: all hits as one run.
  test::PressKey(Qt::Key_Return);
  ASSERT_EQ(app().Run.RunIds, u"1000110000300002200005"_qs);
  test::PressKey(Qt::Key_B);
  ASSERT_TRUE(frame()->answerWindow()->isVisible());
  EXPECT_TRUE(frame()->answerWindow()->boxText(1).startsWith(u"恭喜你，你做对了。"_qs));
  EXPECT_EQ(storyOf(tables::kItems, u"10001100003"_qs), RecordEntry(now, u"B"_qs));
  // Esc closes the answer window, Esc again is 返回 of the run.
  test::PressKey(Qt::Key_Escape);
  EXPECT_FALSE(frame()->answerWindow()->isVisible());
  test::PressKey(Qt::Key_Escape);
  EXPECT_TRUE(window()->isVisible());
  EXPECT_EQ(window()->results().size(), 2);
  EXPECT_EQ(QApplication::focusWidget(), window()->List1);
}

TEST_F(SearchWindow, F1ShowsItsHelp) {
  QList<int> asked;
  form->helpHandler = [&asked](int n) { asked.append(n); };
  form->SouTi->trigger();
  QTest::keyClick(window()->Text1, Qt::Key_F1);
  EXPECT_EQ(asked, QList<int>{19});
}
