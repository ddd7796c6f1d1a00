// The windows a candidate meets on the first day, on the demonstration data,
// at 1024×768 and at 1600×1000: screenshots, and nothing cut off.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QTextEdit>
#include <QTreeWidget>

#include "app/main_window.h"
#include "app/splash_window.h"
#include "law/keypad_window.h"
#include "law/law_query_window.h"
#include "platform/vbtext.h"
#include "practice/answer_window.h"
#include "practice/directory_widget.h"
#include "practice/practice_frame_widget.h"
#include "settings/settings_window.h"
#include "support/directory_runs.h"
#include "support/printers.h"
#include "support/test_env.h"
#include "support/window_checks.h"

namespace mj {
namespace {

class DesktopScreens : public ::testing::Test {
 protected:
  void SetUp() override {
    if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "no demonstration data built";
    t = std::make_unique<test::TestEnv>(test::DemoDataDir());
    t->writeGbk(u"\\ini\\userself.ini"_qs,
                u"STOKTIMES=1\r\nSTADDNUM=1\r\nSTPASSDAYS=30\r\nTSOKTIMES=1\r\nTSADDNUM=1\r\nTSPASSDAYS=30\r\n"
                u"PUBFONTSIZE=15\r\nPUBBACKCOLOR=16777215\r\nPUBFORECOLOR=0\r\nSTLASTUPDATE=0\r\n"
                u"TSLASTUPDATE=0\r\nPUBFONTNAME=宋体\r\nPUBFONTIT=FALSE\r\nPUBFONTBOLD=FALSE\r\n"_qs);
    t->clock.set(QDateTime(QDate(2026, 11, 21), QTime(9, 30)));
    form = std::make_unique<Form1>(t->env);
    ASSERT_EQ(form->load(), Form1::LoadOutcome::Running);
    form->showMaximized();
    test::SettleLayouts();
  }
  void TearDown() override {
    if (form) {
      form->practice->answerWindow()->hide();
      form->lawQueryWindow()->hide();
      form->hide();
    }
  }
  DirectoryGrid* grid() { return form->MSFlexGrid1; }
  PracticeFrame* frame() { return form->practice; }
  Form3* form3() { return frame()->answerWindow(); }
  PracticeRun& run() { return form->state().Run; }

  // Opens the headings over the bank of that file and starts its run.
  void startBank(const QString& file) { test::StartBankRun(*grid(), file); }

  std::unique_ptr<test::TestEnv> t;
  std::unique_ptr<Form1> form;
};

TEST_F(DesktopScreens, StartPage) { test::CheckOnScreens(form.get(), u"main_start_page"_qs); }

TEST_F(DesktopScreens, PracticeFrameOfAFreeChoiceBank) {
  form->ShiTi->trigger();
  startBank(u"100013.mmd"_qs);
  ASSERT_EQ(run().CurType, 3);
  test::CheckOnScreens(form.get(), u"practice_frame_free_choice"_qs);
}

TEST_F(DesktopScreens, AnswerWindow) {
  form->ShiTi->trigger();
  startBank(u"100011.mmd"_qs);
  frame()->Command2[0]->click();
  ASSERT_TRUE(form3()->isVisible());
  test::CheckOnScreens(form3(), u"answer_window"_qs);
}

// The directory keeps its columns after a run at the largest question font:
// all counts in view at 1024 pixels, the labels at the left, one row height.
TEST_F(DesktopScreens, DirectoryAfterARunWithTheLargestFont) {
  form->ShiTi->trigger();
  QList<int> before;
  for (int c = 0; c < grid()->columnCount(); ++c) before.append(grid()->shownColumnWidth(c));
  grid()->horizontalScrollBar()->setValue(grid()->horizontalScrollBar()->maximum());
  startBank(u"100011.mmd"_qs);
  for (int i = 0; i < 40; ++i) frame()->Frame6BigOrSmallCmd[0]->click();
  ASSERT_EQ(run().FontSize, 71);
  frame()->Command2[0]->click();
  form3()->Command1[3]->click();
  frame()->Frame3Cmd[3]->click();
  ASSERT_EQ(form->currentFace(), form->gridPage);
  test::CheckOnScreens(form.get(), u"directory_largest_font"_qs);
  test::ShowOnScreen(form.get(), test::TestScreen(test::kSmallScreen));
  form->ShiTi->trigger();
  EXPECT_EQ(grid()->horizontalScrollBar()->value(), 0);
  int right = 0;
  for (int c = 0; c < grid()->columnCount(); ++c) {
    // Opened headings may widen the label column, nothing else.
    if (c != kColLabel) {
      EXPECT_EQ(grid()->shownColumnWidth(c), before[c]) << c;
    }
    right += grid()->shownColumnWidth(c);
  }
  EXPECT_LE(right, grid()->viewport()->width());
  const int height = grid()->shownRowHeight(1);
  for (int r = 1; r <= grid()->rowCount(); ++r)
    if (grid()->shownRowHeight(r) > 0) {
      EXPECT_EQ(grid()->shownRowHeight(r), height) << r;
    }
}

TEST_F(DesktopScreens, LawQuery) {
  form->FGCX->trigger();
  Form6* f = form->lawQueryWindow();
  ASSERT_TRUE(f->isVisible());
  test::CheckOnScreens(f, u"law_query"_qs);
}

// The keypad of the article numbers opens beside its box and fully on the
// screen the law query is on, at either size.
TEST_F(DesktopScreens, LawQueryKeypad) {
  form->FGCX->trigger();
  Form6* f = form->lawQueryWindow();
  f->TreeView1->expandAll();
  const auto found = f->TreeView1->findItems(u"《示例刑法》"_qs, Qt::MatchExactly | Qt::MatchRecursive);
  ASSERT_EQ(found.size(), 1);
  QTest::mouseClick(f->TreeView1->viewport(), Qt::LeftButton, {}, f->TreeView1->visualItemRect(found[0]).center());
  for (const QSize size : {test::kSmallScreen, test::kLargeScreen}) {
    QScreen* screen = test::TestScreen(size);
    ASSERT_NE(screen, nullptr);
    test::ShowOnScreen(f, screen);
    QTest::keyClick(f->TreeView1, Qt::Key_Period);
    Form7* k = f->keypad();
    ASSERT_NE(k, nullptr);
    ASSERT_TRUE(k->isVisible());
    test::SettleLayouts();
    const QString name = u"law_query_keypad-%1x%2"_qs.arg(size.width()).arg(size.height());
    test::SaveScreenshot(k, name);
    EXPECT_EQ(k->screen(), screen) << name.toStdString();
    EXPECT_TRUE(screen->availableGeometry().contains(k->frameGeometry())) << name.toStdString();
    EXPECT_TRUE(test::LayoutProblems(k).isEmpty()) << test::LayoutProblems(k).join(u'\n').toStdString();
    k->hide();
  }
}

// The splash of the start, with the demonstration picture.
TEST_F(DesktopScreens, Splash) {
  Form8 splash(t->env);
  splash.load();
  splash.tick();
  splash.Timer1->stop();
  test::CheckOnScreens(&splash, u"splash"_qs);
  splash.hide();
}

// The windows of the settings: the settings window and the practice frame's
// personal settings.
TEST_F(DesktopScreens, SettingsWindows) {
  form->MyConfigMenu->trigger();
  Form4* settings = form->settingsWindow();
  ASSERT_TRUE(settings->isVisible());
  test::CheckOnScreens(settings, u"settings_window"_qs);
  // Esc closes each, as 取消 does.
  settings->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(settings));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  EXPECT_FALSE(settings->isVisible());
  EXPECT_TRUE(form->isVisible());
  form->ShiTi->trigger();
  startBank(u"100011.mmd"_qs);
  frame()->Frame3Cmd[0]->click();
  QWidget* personal = nullptr;
  for (QWidget* w : QApplication::topLevelWidgets())
    if (w->objectName() == u"Form2"_qs && w->isVisible()) personal = w;
  ASSERT_NE(personal, nullptr);
  test::CheckOnScreens(personal, u"personal_settings_window"_qs);
  personal->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(personal));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  EXPECT_FALSE(personal->isVisible());
}

}  // namespace
}  // namespace mj
