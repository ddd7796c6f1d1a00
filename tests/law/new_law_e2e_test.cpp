// Adding a new law in the running program, on the demonstration data: the
// menu entry opens the window, the five steps run on a real statute (or, when
// the shared real data is absent, on a small law text), screenshots of each
// step; the law then shows in all three trees of the law query that was open
// all along, a text search finds it, and a citation prints its article.

#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QFile>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTreeWidget>

#include "app/main_window.h"
#include "law/citations.h"
#include "law/law_files.h"
#include "law/law_query_window.h"
#include "law/new_law.h"
#include "law/new_law_window.h"
#include "platform/text_toolkit.h"
#include "platform/textfile.h"
#include "support/printers.h"
#include "support/test_env.h"
#include "support/window_checks.h"

namespace mj {
namespace {

const QString kTitle = u"《中华人民共和国仲裁法》"_qs;

// Text as an input method types it (any characters, not only ASCII keys).
void Type(QWidget* w, const QString& text) {
  QInputMethodEvent e;
  e.setCommitString(text);
  QCoreApplication::sendEvent(w, &e);
}

class NewLawEndToEnd : public ::testing::Test {
 protected:
  void SetUp() override {
    if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "no demonstration data built";
    t = std::make_unique<test::TestEnv>(test::DemoDataDir());
    ClearLawCache();
    form = std::make_unique<Form1>(t->env);
    ASSERT_EQ(form->load(), Form1::LoadOutcome::Running);
    form->show();
    t->boxes.clear();
    // The statute to add.
    QDir().mkpath(t->root() + u"/下载"_qs);
    const QString real = test::RealDataDir();
    if (!real.isEmpty()) {
      source = t->root() + u"/下载/仲裁法.md"_qs;
      ASSERT_TRUE(QFile::copy(real + u"/laws-md/仲裁法.md"_qs, source));
      articles = 80;
    } else {
      source = t->root() + u"/下载/仲裁法.txt"_qs;
      WriteTextAtomic(source, u"中华人民共和国仲裁法\r\n第一章 总则\r\n第一条 为保证公正、及时地仲裁经济纠纷，"
                              u"制定本法。\r\n第二条 平等主体之间发生的合同纠纷，可以仲裁。\r\n第三条 仲裁委员会"
                              u"可以在直辖市设立。\r\n"_qs);
      articles = 3;
    }
  }
  void TearDown() override {
    if (form && form->lawQueryWindow()) form->lawQueryWindow()->hide();
  }
  void shot(QWidget* w, const QString& name) { w->grab().save(test::OutputDir() + u"/"_qs + name + u".png"_qs); }
  QTreeWidgetItem* node(Form6* f, const QString& text) {
    f->TreeView1->expandAll();
    const auto found = f->TreeView1->findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
    return found.isEmpty() ? nullptr : found.first();
  }

  std::unique_ptr<test::TestEnv> t;
  std::unique_ptr<Form1> form;
  QString source;
  int articles = 0;
};

TEST_F(NewLawEndToEnd, TheFiveStepsAndTheLawInTheLawQueryAtOnce) {
  // The law query is open before the law is added.
  form->FGCX->trigger();
  Form6* query = form->lawQueryWindow();
  ASSERT_TRUE(query->isVisible());
  EXPECT_EQ(node(query, kTitle), nullptr);

  ASSERT_TRUE(form->AddNewLaw->isEnabled());
  form->AddNewLaw->trigger();
  Form15* w = form->newLawWindow();
  ASSERT_TRUE(w->isVisible());
  EXPECT_EQ(w->windowTitle(), u"添加新法律/法规"_qs);
  EXPECT_EQ(HeldText(w->RichTextBox1->toPlainText()), ReadLawFile(t->path(u"\\ini\\Help4AddNewLaw.ini"_qs)));
  ASSERT_EQ(w->Command1.size(), 5);
  const QStringList captions = {u"1、打开新文件"_qs, u"2、整理"_qs, u"3、进行系统归类"_qs, u"4、添加进系统"_qs,
                                u"5、返回"_qs};
  for (int i = 0; i < 5; ++i) EXPECT_EQ(w->Command1[i]->text(), captions[i]);
  EXPECT_FALSE(w->ClassifyPanel->isVisible());
  EXPECT_FALSE(w->Command1[2]->isEnabled());
  EXPECT_FALSE(w->Command1[3]->isEnabled());
  // Usable on a 1024 x 768 screen.
  EXPECT_LE(w->width(), 1024);
  EXPECT_LE(w->height(), 768);
  EXPECT_LE(w->minimumSizeHint().width(), 1024);
  test::CheckOnScreen(w, test::kSmallScreen, u"new_law_0_help"_qs);

  // 1: open.
  t->dialogs.answer(source);
  QTest::mouseClick(w->Command1[0], Qt::LeftButton);
  EXPECT_TRUE(w->RichTextBox1->toPlainText().startsWith(u"中华人民共和国仲裁法"_qs));
  EXPECT_TRUE(t->boxes.take().isEmpty());
  test::CheckOnScreen(w, test::kSmallScreen, u"new_law_1_opened"_qs);

  // 2: clean.
  QTest::mouseClick(w->Command1[1], Qt::LeftButton);
  auto boxes = t->boxes.take();
  ASSERT_EQ(boxes.size(), 2);
  EXPECT_EQ(boxes[0].text, DetectedTypeText(1));
  EXPECT_EQ(boxes[1].text, CheckOkText(articles));
  EXPECT_TRUE(w->Command1[2]->isEnabled());
  EXPECT_TRUE(w->RichTextBox1->toPlainText().contains(u"\n　　第一条 "_qs));
  test::CheckOnScreen(w, test::kSmallScreen, u"new_law_2_cleaned"_qs);

  // 3: classify, by keyboard.
  QTest::mouseClick(w->Command1[2], Qt::LeftButton);
  ASSERT_TRUE(w->ClassifyPanel->isVisible());
  EXPECT_EQ(w->Text1->text(), u"《》"_qs);
  EXPECT_EQ(w->Label1->text(), u"该法律/法规的标题，如“《刑法》”："_qs);
  EXPECT_FALSE(w->Command1[2]->isEnabled());
  EXPECT_FALSE(w->Command1[3]->isEnabled());
  w->Combo1->setFocus();
  for (int k = 0; k < 3; ++k) QTest::keyClick(w->Combo1, Qt::Key_Down);
  EXPECT_EQ(w->Combo1->currentText(), u"属试卷三相关法律、法规"_qs);
  w->Combo2->setCurrentIndex(25);  // Z
  w->Combo3->setCurrentIndex(1);   // 民法
  EXPECT_FALSE(w->Command1[3]->isEnabled()) << "no title yet";
  w->Text1->selectAll();
  Type(w->Text1, u"《仲裁法》"_qs);
  EXPECT_TRUE(w->Command1[3]->isEnabled());
  test::CheckOnScreens(w, u"new_law_3_classified"_qs);
  test::ShowOnScreen(w, test::TestScreen(test::kSmallScreen));

  // 4: add. A title that names a law already there is refused when the real
  // statutes ship; the full title is new.
  const bool shipped = LawFileExists(t->env, u"仲裁法"_qs);
  if (shipped) {
    QTest::mouseClick(w->Command1[3], Qt::LeftButton);
    boxes = t->boxes.take();
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_EQ(boxes[0].title, u"请重来"_qs);
  }
  w->Text1->selectAll();
  Type(w->Text1, kTitle);
  EXPECT_EQ(w->wizard().title, kTitle);
  t->boxes.answer(box::Yes);
  QTest::mouseClick(w->Command1[3], Qt::LeftButton);
  boxes = t->boxes.take();
  ASSERT_EQ(boxes.size(), 2);
  EXPECT_EQ(boxes[0].title, u"请你确认"_qs);
  EXPECT_EQ(boxes[1].title, u"完成"_qs);
  ASSERT_TRUE(LawFileExists(t->env, u"中华人民共和国仲裁法"_qs));
  test::CheckOnScreen(w, test::kSmallScreen, u"new_law_4_added"_qs);

  // 5: back.
  QTest::mouseClick(w->Command1[4], Qt::LeftButton);
  EXPECT_FALSE(w->isVisible());

  // The law query shows the law at once, in each of the three trees.
  QTreeWidgetItem* added = node(query, kTitle);
  ASSERT_NE(added, nullptr);
  ASSERT_NE(added->parent(), nullptr);
  EXPECT_EQ(added->parent()->text(0), u"试卷三相关法律、法规"_qs);
  QTest::mouseClick(query->Command2, Qt::LeftButton);
  ASSERT_NE(node(query, u"Z "_qs + kTitle), nullptr);
  QTest::mouseClick(query->Command7, Qt::LeftButton);
  QTreeWidgetItem* byClass = node(query, kTitle);
  ASSERT_NE(byClass, nullptr);
  EXPECT_EQ(byClass->parent()->text(0), u"民法"_qs);

  // It is read and searched.
  QTest::mouseClick(query->TreeView1->viewport(), Qt::LeftButton, {},
                    query->TreeView1->visualItemRect(byClass).center());
  EXPECT_EQ(query->Label3->text(), u"将要查询 "_qs + kTitle);
  EXPECT_EQ(query->query().itemCount(), articles);
  query->Text2->setFocus(Qt::MouseFocusReason);
  Type(query->Text2, u"仲裁委员会"_qs);
  QTest::keyClick(query->Text2, Qt::Key_Return);
  EXPECT_TRUE(query->query().view.contains(u"【仲裁委员会】"_qs)) << query->query().view.left(300).toStdString();
  shot(query, u"new_law_5_law_query"_qs);
  // A search over the group finds it as well.
  QTest::mouseClick(query->TreeView1->viewport(), Qt::LeftButton, {},
                    query->TreeView1->visualItemRect(byClass->parent()).center());
  query->Text2->setFocus(Qt::MouseFocusReason);
  QTest::keyClick(query->Text2, Qt::Key_Return);
  EXPECT_TRUE(query->query().view.contains(kTitle));

  // And cited by its title.
  const QString cited = GetLawTxtForDaAn(t->env, u"参见"_qs + kTitle + u"第3条"_qs);
  EXPECT_TRUE(cited.startsWith(kTitle + u"\r\n　　第三条"_qs)) << cited.toStdString();
  EXPECT_TRUE(t->boxes.shown().isEmpty());
}

TEST_F(NewLawEndToEnd, OpenedAgainTheWindowStartsAfresh) {
  form->AddNewLaw->trigger();
  Form15* w = form->newLawWindow();
  t->dialogs.answer(source);
  QTest::mouseClick(w->Command1[0], Qt::LeftButton);
  QTest::mouseClick(w->Command1[1], Qt::LeftButton);
  QTest::mouseClick(w->Command1[2], Qt::LeftButton);
  ASSERT_TRUE(w->ClassifyPanel->isVisible());
  QTest::mouseClick(w->Command1[4], Qt::LeftButton);
  ASSERT_FALSE(w->isVisible());
  form->AddNewLaw->trigger();
  EXPECT_TRUE(w->isVisible());
  EXPECT_FALSE(w->ClassifyPanel->isVisible());
  EXPECT_FALSE(w->Command1[2]->isEnabled());
  EXPECT_FALSE(w->Command1[3]->isEnabled());
  EXPECT_EQ(w->Combo1->currentIndex(), -1);
  EXPECT_EQ(HeldText(w->RichTextBox1->toPlainText()), ReadLawFile(t->path(u"\\ini\\Help4AddNewLaw.ini"_qs)));
  w->close();
}

TEST_F(NewLawEndToEnd, EscClosesTheWindowAs5ReturnDoes) {
  form->AddNewLaw->trigger();
  Form15* w = form->newLawWindow();
  ASSERT_TRUE(w->isVisible());
  QTest::keyClick(w->RichTextBox1, Qt::Key_Escape);
  EXPECT_FALSE(w->isVisible());
  EXPECT_TRUE(t->boxes.shown().isEmpty());
}

TEST_F(NewLawEndToEnd, F1ShowsTheWindowsHelpSection) {
  form->AddNewLaw->trigger();
  Form15* w = form->newLawWindow();
  int number = 0;
  form->helpHandler = [&number](int n) { number = n; };
  QTest::keyClick(w->RichTextBox1, Qt::Key_F1);
  EXPECT_EQ(number, 15);
  w->close();
}

TEST_F(NewLawEndToEnd, EditsByHandBetweenTheStepsAreTakenIn) {
  form->AddNewLaw->trigger();
  Form15* w = form->newLawWindow();
  w->RichTextBox1->setFocus();
  w->RichTextBox1->selectAll();
  Type(w->RichTextBox1, u"示例法"_qs);
  QTest::keyClick(w->RichTextBox1, Qt::Key_Return);
  Type(w->RichTextBox1, u"第一条 甲。"_qs);
  QTest::keyClick(w->RichTextBox1, Qt::Key_Return);
  Type(w->RichTextBox1, u"第二条 乙。"_qs);
  QTest::keyClick(w->RichTextBox1, Qt::Key_Return);
  QTest::mouseClick(w->Command1[1], Qt::LeftButton);
  const auto boxes = t->boxes.take();
  ASSERT_EQ(boxes.size(), 2);
  EXPECT_EQ(boxes[1].text, CheckOkText(2));
  EXPECT_EQ(w->RichTextBox1->toPlainText(), u"示例法\n　　第一条 甲。\n　　第二条 乙。\n　　\n　　"_qs);
  w->close();
}

}  // namespace
}  // namespace mj
