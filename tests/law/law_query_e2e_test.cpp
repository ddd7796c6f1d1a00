// The law query in the running program, on the demonstration data: opened
// from the menu, a law picked, articles queried, an article clicked, its
// questions practised, 返回 back to the law query; a double click on a
// citation in the answer window opens the article; 法律查询 of the answer
// window opens the law at the question's article.

#include <gtest/gtest.h>

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTextBlock>
#include <QTextEdit>
#include <QTreeWidget>

#include "app/main_window.h"
#include "bank/tables.h"
#include "law/keypad_window.h"
#include "law/law_files.h"
#include "law/law_links.h"
#include "law/law_query_window.h"
#include "law/numerals.h"
#include "law/text_places.h"
#include "platform/dbftable.h"
#include "platform/vbtext.h"
#include "practice/answer_window.h"
#include "practice/directory_widget.h"
#include "practice/practice_frame_widget.h"
#include "support/directory_runs.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

const QString kLaw = u"《示例刑法》"_qs;

class LawQueryEndToEnd : public ::testing::Test {
 protected:
  void SetUp() override {
    if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "no demonstration data built";
    t = std::make_unique<test::TestEnv>(test::DemoDataDir());
    ClearLawCache();
    form = std::make_unique<Form1>(t->env);
    ASSERT_EQ(form->load(), Form1::LoadOutcome::Running);
    form->resize(1200, 800);
    form->show();
    t->boxes.clear();
  }
  void TearDown() override {
    if (form) {
      if (form->practice) form->practice->answerWindow()->hide();
      if (Form6* f = form->lawQueryWindow()) f->hide();
    }
  }
  Form6* lawQuery() { return form->lawQueryWindow(); }
  Form3* form3() { return form->practice->answerWindow(); }
  PracticeRun& run() { return form->state().Run; }
  void shot(QWidget* w, const QString& name) { w->grab().save(test::OutputDir() + u"/"_qs + name + u".png"_qs); }

  void pickLaw() {
    Form6* f = lawQuery();
    f->TreeView1->expandAll();
    const auto found = f->TreeView1->findItems(kLaw, Qt::MatchExactly | Qt::MatchRecursive);
    ASSERT_EQ(found.size(), 1);
    QTest::mouseClick(f->TreeView1->viewport(), Qt::LeftButton, {}, f->TreeView1->visualItemRect(found[0]).center());
    ASSERT_EQ(f->Label3->text(), u"将要查询 "_qs + kLaw);
  }
  // The first article of the law with questions, and those questions.
  std::pair<int, QString> articleWithQuestions() {
    const QString code = GetMyLawFileName(t->env, kLaw, 1);
    for (int n = 1; n <= lawQuery()->query().itemCount(); ++n) {
      const QString ids = NewGetForm6LongId(form->state().AllItemData, code, kLaw, n);
      if (!ids.isEmpty()) return {n, ids};
    }
    return {0, QString()};
  }
  // The first article of the law that has questions, queried by its number
  // and clicked in the view, so that 相关NN题 is ready: the article (0 when
  // none has questions, and nothing is clicked) and its questions' IDs.
  std::pair<int, QString> clickArticleWithQuestions() {
    const std::pair<int, QString> found = articleWithQuestions();
    if (found.first == 0) return found;
    lawQuery()->query().editText1(CStr(found.first));
    lawQuery()->Command3->click();
    clickView(u"条　"_qs);
    return found;
  }
  // Clicks (or double clicks) the view of the law query on the first place of what.
  void clickView(const QString& what, bool twice = false) {
    Form6* f = lawQuery();
    const qsizetype index = f->query().view.indexOf(what);
    ASSERT_GE(index, 0) << what.toStdString();
    const LinePlace place = LineOfTextIndex(f->query().view, index);
    QTextCursor c(f->RichTextBox1->document()->findBlockByNumber(place.line));
    c.setPosition(c.position() + static_cast<int>(place.column) + 1);
    f->RichTextBox1->setTextCursor(c);
    f->RichTextBox1->ensureCursorVisible();
    const QPoint at = f->RichTextBox1->cursorRect(c).center();
    if (twice)
      QTest::mouseDClick(f->RichTextBox1->viewport(), Qt::LeftButton, {}, at);
    else
      QTest::mouseClick(f->RichTextBox1->viewport(), Qt::LeftButton, {}, at);
    QCoreApplication::processEvents();
  }
  // Answers the question shown with the first button of its row.
  void answer() {
    for (QPushButton* b : form->practice->Command2)
      if (b->isVisible() && b->isEnabled()) {
        b->click();
        return;
      }
    FAIL() << "no answer button";
  }
  QString storyOf(const QString& id) {
    const DbfTable items = DbfTable::open(t->path(u"\\dbf\\items.mmd"_qs));
    for (const int r : items.rows())
      if (items.trimmedText(r, u"itemid"_qs) == id) return items.trimmedText(r, u"story"_qs);
    return QString();
  }
  // Double clicks the answer window's lower box on the first place of what.
  void doubleClickAnswer(const QString& what) {
    QTextEdit* box = form3()->Form3Text[1];
    const QString shown = box->toPlainText();
    const qsizetype index = shown.indexOf(what);
    ASSERT_GE(index, 0) << what.toStdString() << shown.toStdString();
    QTextCursor c(box->document());
    c.setPosition(static_cast<int>(index) + 1);
    box->setTextCursor(c);
    box->ensureCursorVisible();
    QTest::mouseDClick(box->viewport(), Qt::LeftButton, {}, box->cursorRect(c).center());
    QCoreApplication::processEvents();
  }

  std::unique_ptr<test::TestEnv> t;
  std::unique_ptr<Form1> form;
};

TEST_F(LawQueryEndToEnd, FromTheMenuToTheQuestionsOfAnArticleAndBack) {
  ASSERT_TRUE(form->FGCX->isEnabled());
  form->FGCX->trigger();
  Form6* f = lawQuery();
  ASSERT_TRUE(f->isVisible());
  EXPECT_EQ(f->entryMode, 1);
  EXPECT_EQ(f->Label3->text(), u"准备查询:"_qs);
  pickLaw();

  // Articles by number, typed after the decimal key.
  QTest::keyClick(f->TreeView1, Qt::Key_Period);
  ASSERT_TRUE(f->keypad()->isVisible());
  QTest::keyClicks(f->keypad(), u"12-15,20"_qs);
  QTest::keyClick(f->keypad(), Qt::Key_Return);
  QStringList heads;
  for (const int n : {12, 13, 14, 15, 20}) heads.append(u"　　第"_qs + DaXie(n) + u"条　"_qs);
  qsizetype from = 0;
  for (const QString& h : heads) {
    const qsizetype at = f->query().view.indexOf(h, from);
    EXPECT_GE(at, from) << h.toStdString();
    from = at;
  }
  shot(f, u"e2e_law_query_articles"_qs);

  // The article with questions: clicked, 相关NN题 ready.
  const auto [article, ids] = clickArticleWithQuestions();
  ASSERT_GT(article, 0);
  ASSERT_TRUE(f->Command5->isEnabled());
  const int count = static_cast<int>(ids.size() / 11);
  EXPECT_EQ(f->Command5->text(), u"相关"_qs + CStr(count) + u"题"_qs);
  shot(f, u"e2e_law_query_related"_qs);

  // 相关NN题: the practice frame over those questions.
  const QString firstId = ids.left(11);
  const QString storyBefore = storyOf(firstId);
  f->Command5->click();
  EXPECT_FALSE(f->isVisible());
  EXPECT_TRUE(f->FromLawQuery);
  EXPECT_EQ(form->currentFace(), form->practicePage);
  EXPECT_TRUE(run().FromLawQuery);
  EXPECT_EQ(run().RunIds, ids);
  EXPECT_EQ(run().CurIndex, 1);
  form->practice->session().Timer1_Timer();
  EXPECT_EQ(form->practice->Label5->text(), u"◎与该法条相关的试题共"_qs + CStr(count) + u"道 这是第1题。"_qs);
  shot(form.get(), u"e2e_related_run"_qs);

  // An answer: the answer window with the law text; no record, no counters.
  answer();
  ASSERT_TRUE(form3()->isVisible());
  EXPECT_EQ(storyOf(firstId), storyBefore);
  EXPECT_EQ(run().DoneInRun, 0);
  EXPECT_EQ(run().RightInRun, 0);
  const QString lower = form3()->boxText(1);
  ASSERT_TRUE(lower.contains(kLaw + u"\r\n　　第"_qs + DaXie(article) + u"条"_qs)) << lower.toStdString();
  shot(form3(), u"e2e_answer_window"_qs);

  // 返回: back to the law query, as it was.
  form3()->Command1[3]->click();
  QCoreApplication::processEvents();
  EXPECT_TRUE(f->isVisible());
  EXPECT_FALSE(f->FromLawQuery);
  EXPECT_FALSE(run().FromLawQuery);
  EXPECT_EQ(f->Command5->text(), u"相关"_qs + CStr(count) + u"题"_qs);
  EXPECT_TRUE(f->query().view.startsWith(u"　　第"_qs + DaXie(article) + u"条　"_qs));
  EXPECT_EQ(storyOf(firstId), storyBefore);
  shot(f, u"e2e_law_query_after_run"_qs);
  EXPECT_TRUE(t->boxes.shown().isEmpty());
}

TEST_F(LawQueryEndToEnd, ADoubleClickOnACitationInTheAnswerWindowOpensTheArticle) {
  form->FGCX->trigger();
  pickLaw();
  Form6* f = lawQuery();
  const auto [article, ids] = clickArticleWithQuestions();
  ASSERT_GT(article, 0);
  // A double click in the view while 相关NN题 is enabled starts the run too.
  clickView(u"条　"_qs, true);
  ASSERT_FALSE(f->isVisible());
  ASSERT_TRUE(run().FromLawQuery);
  answer();
  ASSERT_TRUE(form3()->isVisible());

  // Elsewhere in the law first, so that the double click has to move it.
  f->query().clickNode(0);
  // The title line of the printed citation: the article below opens.
  const QString heading = u"第"_qs + DaXie(article) + u"条"_qs;
  doubleClickAnswer(kLaw + u"\n　　"_qs + heading);
  ASSERT_TRUE(f->isVisible());
  EXPECT_EQ(f->Label3->text(), u"准备查询:"_qs + kLaw);
  const QTextCursor c = f->RichTextBox1->textCursor();
  EXPECT_TRUE(c.block().text().startsWith(u"　　"_qs + heading)) << c.block().text().toStdString();
  EXPECT_TRUE(f->Command5->isEnabled());
  EXPECT_EQ(f->Command5->text(), u"相关"_qs + CStr(ids.size() / 11) + u"题"_qs);
  shot(f, u"e2e_law_query_from_answer"_qs);
}

TEST_F(LawQueryEndToEnd, TheLawQueryButtonOfTheAnswerWindow) {
  form->FGCX->trigger();
  pickLaw();
  Form6* f = lawQuery();
  const auto [article, ids] = clickArticleWithQuestions();
  ASSERT_GT(article, 0);
  f->Command5->click();
  answer();
  ASSERT_TRUE(form3()->Command2->isEnabled());
  EXPECT_EQ(form3()->Command2->text(), u"法律查询"_qs);
  f->query().clickNode(0);
  form3()->Command2->click();
  ASSERT_TRUE(f->isVisible());
  EXPECT_EQ(f->entryMode, 2);
  EXPECT_EQ(f->Label3->text(), u"准备查询:"_qs + kLaw);
  EXPECT_TRUE(f->RichTextBox1->textCursor().block().text().startsWith(u"　　第"_qs + DaXie(article) + u"条"_qs));
}

// 相关NN题 from a law query opened from the menu on the start page: once the
// run is over and the law query closed, the start page is there again.
TEST_F(LawQueryEndToEnd, AfterARelatedRunTheStartPageComesBack) {
  ASSERT_EQ(form->currentFace(), form->startPage);
  form->FGCX->trigger();
  pickLaw();
  Form6* f = lawQuery();
  const auto [article, ids] = clickArticleWithQuestions();
  ASSERT_GT(article, 0);
  f->Command5->click();
  ASSERT_EQ(form->currentFace(), form->practicePage);
  answer();
  form3()->Command1[3]->click();
  ASSERT_TRUE(f->isVisible());
  EXPECT_EQ(form->currentFace(), form->startPage);
  f->close();
  EXPECT_EQ(form->currentFace(), form->startPage);
  EXPECT_FALSE(form->practice->isVisible());
}

// 相关NN题 from the answer window's 法律查询 in the middle of a bank's run: the
// bank's run comes back at its question, with its counters.
TEST_F(LawQueryEndToEnd, AfterARelatedRunTheOpenRunGoesOn) {
  form->ShiTi->trigger();
  DirectoryGrid* g = form->MSFlexGrid1;
  const Directory& d = g->directory();
  const int bankRow = test::OpenBankRow(*g, u"100011.mmd"_qs);
  ASSERT_GT(bankRow, 0);
  ASSERT_EQ(g->clickRow(bankRow), DirectoryClick::Leaf);
  const QString bankIds = run().RunIds;
  answer();
  form3()->Command1[3]->click();
  form->practice->Frame3Cmd[2]->click();
  answer();
  ASSERT_EQ(run().DoneInRun, 2);
  const int right = run().RightInRun;
  ASSERT_EQ(run().CurIndex, 2);
  const QString question = form->practice->questionText();

  // 法律查询, an article's questions, one answered, 返回, the law query closed.
  form3()->Command2->click();
  Form6* f = lawQuery();
  ASSERT_TRUE(f->isVisible());
  pickLaw();
  const auto [article, ids] = clickArticleWithQuestions();
  ASSERT_GT(article, 0);
  f->Command5->click();
  ASSERT_TRUE(run().FromLawQuery);
  answer();
  form3()->Command1[3]->click();
  ASSERT_TRUE(f->isVisible());
  f->close();

  // The bank's run as it was.
  EXPECT_EQ(form->currentFace(), form->practicePage);
  EXPECT_TRUE(form->practice->isVisible());
  EXPECT_FALSE(run().FromLawQuery);
  EXPECT_EQ(run().RunIds, bankIds);
  EXPECT_EQ(run().CurIndex, 2);
  EXPECT_EQ(run().DoneInRun, 2);
  EXPECT_EQ(run().RightInRun, right);
  EXPECT_EQ(form->practice->questionText(), question);
  // Its end counts both answers in the directory.
  form->practice->Frame3Cmd[3]->click();
  EXPECT_EQ(form->currentFace(), form->gridPage);
  EXPECT_EQ(d.text(bankRow, kColDone), u"2"_qs);
  EXPECT_EQ(d.text(bankRow, kColRight), CStr(right));
}

}  // namespace
}  // namespace mj
