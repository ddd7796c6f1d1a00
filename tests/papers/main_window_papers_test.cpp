// The main window and the windows of outside papers: the menu entry 外部题库,
// 返回 back to the main window, the one find/replace window shared with the
// law query, and F1 over the new windows.

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include "app/main_window.h"
#include "law/law_query_window.h"
#include "papers/find_replace_window.h"
#include "papers/paper_window.h"
#include "support/program_folder.h"
#include "support/test_env.h"

namespace mj {
namespace {

struct Started {
  test::TestEnv t;
  std::unique_ptr<Form1> form;
  Started() {
    test::MakeProgramFolder(t);
    form = std::make_unique<Form1>(t.env);
    form->load();
    form->show();
  }
};

TEST(MainWindowPapers, TheMenuEntryOpensThePaperWindowAndReturnComesBack) {
  Started s;
  ASSERT_TRUE(s.form->OutShiTi->isEnabled());
  s.t.writeGbk(u"\\外部题库\\卷.txt"_qs, u"一、单项选择题\r\n"_qs);
  s.t.dialogs.answer(s.t.path(u"\\外部题库\\卷.txt"_qs));
  s.form->OutShiTi->trigger();
  Form10* paper = s.form->paperWindow();
  EXPECT_TRUE(paper->isVisible());
  EXPECT_FALSE(s.form->isVisible());
  EXPECT_FALSE(paper->Command1[4]->isEnabled());
  paper->Command1[5]->click();
  EXPECT_FALSE(paper->isVisible());
  EXPECT_TRUE(s.form->isVisible());
  // The paper state lives in the main window.
  paper->setPaperText(u"一、单项选择题\r\n1．题"_qs);
  paper->runCheck();
  EXPECT_EQ(s.form->paperState().OutTiMode, 1);
  EXPECT_EQ(s.form->paperState().OutTiText[1], u"一、单项选择题\r\n1．题"_qs);
}

TEST(MainWindowPapers, OneFindWindowServesThePaperAndTheLawQuery) {
  Started s;
  Form13* find = s.form->findWindow();
  EXPECT_EQ(s.form->paperWindow()->findWindow(), find);
  Form6* law = s.form->lawQueryWindow();
  EXPECT_TRUE(law->SeekAndReplace->isEnabled());
  law->SeekAndReplace->trigger();
  EXPECT_TRUE(find->isVisible());
  EXPECT_EQ(find->FindCaller, kFindFromLawQuery);
  find->hide();
  s.form->paperWindow()->Command1[2]->click();
  EXPECT_EQ(find->FindCaller, kFindFromPaper);
  find->hide();
}

TEST(MainWindowPapers, F1OverTheNewWindowsShowsTheirHelp) {
  Started s;
  int shown = -1;
  s.form->helpHandler = [&](int n) { shown = n; };
  Form10* paper = s.form->paperWindow();
  paper->show();
  QKeyEvent f1(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
  QApplication::sendEvent(paper->RichTextBox1, &f1);
  EXPECT_EQ(shown, 10);
  QApplication::sendEvent(s.form->findWindow(), &f1);
  EXPECT_EQ(shown, 13);
  paper->hide();
}

}  // namespace
}  // namespace mj
