// A whole run by keyboard alone, on the demonstration data: the menu by Alt
// and Enter, the directory by the arrow keys and Enter, answers by their
// letters, the answer window by Page Down, Esc and Enter, the end by Esc.
// Every key goes to the widget that has the focus, as on a desktop.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>
#include <QTextEdit>

#include "app/main_window.h"
#include "platform/vbtext.h"
#include "practice/answer_window.h"
#include "practice/directory_widget.h"
#include "practice/practice_frame_widget.h"
#include "support/printers.h"
#include "support/keys.h"
#include "support/test_env.h"
#include "support/window_checks.h"

namespace mj {
namespace {

// The key goes where the focus is; nothing else is touched.

void pressAlt() {
  QWidget* to = QApplication::focusWidget() ? QApplication::focusWidget() : QApplication::activeWindow();
  ASSERT_NE(to, nullptr);
  QTest::keyPress(to, Qt::Key_Alt, Qt::AltModifier);
  QTest::keyRelease(to, Qt::Key_Alt, Qt::NoModifier);
  QApplication::processEvents();
}

TEST(KeyboardPath, AWholeRunWithoutTheMouse) {
  if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "no demonstration data built";
  test::TestEnv t(test::DemoDataDir());
  t.clock.set(QDateTime(QDate(2026, 11, 21), QTime(9, 30)));
  Form1 form(t.env);
  ASSERT_EQ(form.load(), Form1::LoadOutcome::Running);
  form.showMaximized();
  form.activateWindow();
  test::SettleLayouts();
  AppState& app = form.state();
  PracticeFrame* frame = form.practice;
  Form3* answers = frame->answerWindow();
  DirectoryGrid* grid = form.MSFlexGrid1;

  // Alt opens the menu bar at its first entry, 内部题库; Enter takes it.
  pressAlt();
  ASSERT_EQ(form.menuBar()->activeAction(), form.ShiTi);
  test::PressKey(Qt::Key_Return);
  ASSERT_EQ(form.currentFace(), form.gridPage);
  ASSERT_EQ(QApplication::focusWidget(), grid);
  ASSERT_EQ(grid->currentRow(), 0);

  // Down to the criminal-law part, open it, down to its law, open it, down
  // to the single-choice bank and in.
  const Directory& d = grid->directory();
  auto moveTo = [&](const QString& labelPart) {
    for (int i = 0; i < d.rowCount() && !grid->item(grid->currentRow(), kColLabel)->text().contains(labelPart); ++i)
      test::PressKey(Qt::Key_Down);
    ASSERT_TRUE(grid->item(grid->currentRow(), kColLabel)->text().contains(labelPart)) << labelPart.toStdString();
  };
  moveTo(u"刑法题库"_qs);
  test::PressKey(Qt::Key_Return);
  moveTo(u"《示例刑法》（"_qs);
  test::PressKey(Qt::Key_Return);
  moveTo(u"单项选择题"_qs);
  test::PressKey(Qt::Key_Return);
  ASSERT_EQ(form.currentFace(), form.practicePage);
  ASSERT_EQ(app.Run.count(), 7);
  const int bankRow = app.Run.GridRow;

  // The answer by its letter: the right one, from the question's key.
  auto keyOf = [&] { return FindItem(app.AllItemData, GetItemID(app.Run.RunIds, app.Run.CurIndex))->answer; };
  auto letter = [](const QString& k) { return static_cast<Qt::Key>(Qt::Key_A + (k.at(0).unicode() - u'A')); };
  test::PressKey(letter(keyOf()));
  ASSERT_TRUE(answers->isVisible());
  EXPECT_TRUE(answers->boxText(1).startsWith(u"恭喜你，你做对了。"_qs));
  EXPECT_TRUE(answers->Command1[3]->isDefault());
  EXPECT_EQ(QApplication::activeWindow(), answers);

  // Page Down in the answer window: the next question there.
  test::PressKey(Qt::Key_PageDown);
  EXPECT_EQ(app.Run.CurIndex, 2);
  // Esc: back in the practice frame, whose keys work at once.
  test::PressKey(Qt::Key_Escape);
  EXPECT_FALSE(answers->isVisible());
  EXPECT_EQ(QApplication::activeWindow(), &form);
  // A wrong answer this time; Enter closes the answer window.
  test::PressKey(keyOf() == u"A" ? Qt::Key_B : Qt::Key_A);
  ASSERT_TRUE(answers->isVisible());
  EXPECT_TRUE(answers->boxText(1).startsWith(u"你错选了答案"_qs));
  test::PressKey(Qt::Key_Return);
  EXPECT_FALSE(answers->isVisible());
  // Page Down in the frame, then Esc ends the run.
  test::PressKey(Qt::Key_PageDown);
  EXPECT_EQ(app.Run.CurIndex, 3);
  test::PressKey(Qt::Key_Escape);
  ASSERT_EQ(form.currentFace(), form.gridPage);
  EXPECT_EQ(d.text(bankRow, kColDone), u"2"_qs);
  EXPECT_EQ(d.text(bankRow, kColRight), u"1"_qs);
  EXPECT_EQ(QApplication::focusWidget(), grid);
  // The menu once more: Alt, then along to 查卷; Esc leaves it.
  pressAlt();
  test::PressKey(Qt::Key_Right);
  test::PressKey(Qt::Key_Right);
  EXPECT_EQ(form.menuBar()->activeAction(), form.ChaJuan);
  test::PressKey(Qt::Key_Escape);
}

}  // namespace
}  // namespace mj
