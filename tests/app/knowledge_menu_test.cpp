// 知识点管理 from the main window on the demonstration data: the window,
// the practice over a point's questions and the way back, and Ctrl on a
// law article printed under an answer.
#include <gtest/gtest.h>

#include <QAction>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include "app/main_window.h"
#include "knowledge/knowledge_window.h"
#include "law/citations.h"
#include "law/law_query_window.h"
#include "practice/practice_frame_widget.h"
#include "support/printers.h"
#include "support/test_env.h"
#include "support/window_checks.h"

using namespace mj;

namespace {

struct KnowledgeMenu : ::testing::Test {
  std::unique_ptr<test::TestEnv> t;
  std::unique_ptr<Form1> form;

  void SetUp() override {
    if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "no demonstration data built";
    t = std::make_unique<test::TestEnv>(test::DemoDataDir());
    test::NoSupportSite(*t);
    form = std::make_unique<Form1>(t->env);
    ASSERT_EQ(form->load(), Form1::LoadOutcome::Running);
    form->resize(1000, 700);
    form->show();
    t->boxes.clear();
  }
};

TEST_F(KnowledgeMenu, TheMenuOpensTheWindowAndAPointsQuestionsArePractised) {
  ASSERT_TRUE(form->zsd->isEnabled());
  form->zsd->trigger();
  Form17* k = form->knowledgeWindow();
  ASSERT_TRUE(k->isVisible());
  EXPECT_EQ(k->windowTitle(), u"知识点管理窗口"_qs);
  k->SelectNode(u"10 node"_qs);
  EXPECT_EQ(k->Command4->text(), u"相关2题"_qs);
  const QWidget* faceBefore = form->currentFace();
  QTest::mouseClick(k->Command4, Qt::LeftButton);
  PracticeSession& s = form->practice->session();
  ASSERT_TRUE(s.run().Open);
  EXPECT_EQ(s.currentId(), u"10001100002"_qs);
  EXPECT_TRUE(form->practice->isVisibleTo(form.get()));
  EXPECT_EQ(k->Command5->text(), u"返回原题"_qs);
  EXPECT_TRUE(k->inRelatedRun());
  // 返回原题 ends the run and leads back to the point.
  QTest::mouseClick(k->Command5, Qt::LeftButton);
  EXPECT_FALSE(s.run().Open);
  EXPECT_FALSE(k->inRelatedRun());
  EXPECT_EQ(k->Command5->text(), u"关  闭"_qs);
  EXPECT_EQ(form->currentFace(), faceBefore) << form->currentFace()->objectName().toStdString() << " / " << faceBefore->objectName().toStdString();
  EXPECT_TRUE(k->isVisible());
  EXPECT_EQ(k->Text1->text(), u"《示例刑法》12."_qs);
}

TEST_F(KnowledgeMenu, CtrlOnAnArticleUnderAnAnswerLeadsToItsPoint) {
  const QString answer = u"答案：B。参见《示例刑法》第12条\r\n"_qs + GetLawTxtForDaAn(t->env, u"参见《示例刑法》第12条"_qs);
  const qsizetype at = answer.indexOf(u"《示例刑法》\r\n"_qs) + 1;
  ASSERT_GT(at, 0);
  ASSERT_TRUE(form->lawQueryWindow()->OpenLawFromAnswer(answer, at, 2));
  Form17* k = form->knowledgeWindow();
  EXPECT_TRUE(k->isVisible());
  EXPECT_EQ(k->TreeView1->currentItem()->text(0), u"New-刑事责任年龄"_qs);
  EXPECT_EQ(k->Text1->text(), u"《示例刑法》12."_qs);
  // The law query was not opened for it.
  EXPECT_FALSE(form->lawQueryWindow()->isVisible());
  // Without Ctrl the law opens as before.
  ASSERT_TRUE(form->lawQueryWindow()->OpenLawFromAnswer(answer, at, 1));
  EXPECT_TRUE(form->lawQueryWindow()->isVisible());
}

}  // namespace
