// The knowledge-point window on the demonstration data, offscreen.
#include "knowledge/knowledge_window.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include "bank/item_index.h"
#include "knowledge_fixture.h"
#include "law/law_files.h"
#include "log/news.h"
#include "platform/paths.h"
#include "platform/text_toolkit.h"
#include "platform/textfile.h"
#include "support/printers.h"
#include "support/http_server.h"
#include "support/test_env.h"
#include "support/window_checks.h"

namespace mj {
namespace {

class Window : public ::testing::Test {
 protected:
  void SetUp() override {
    if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "no demonstration data";
    t = std::make_unique<test::TestEnv>(test::DemoDataDir());
    ClearLawCache();
    app.env = t->env;
    ReadData2ItemData(t->path(u"\\dbf"_qs), u"items.mmd"_qs, app.AllItemData);
    ASSERT_FALSE(app.AllItemData.isEmpty());
    form = std::make_unique<Form17>(app);
  }
  QTreeWidgetItem* item(int therecn) const {
    return form->itemOfNode(form->points().nodeOfKey(NodeKeyOf(QString::number(therecn))));
  }
  void clickItem(QTreeWidgetItem* it) {
    form->TreeView1->scrollToItem(it);
    const QRect r = form->TreeView1->visualItemRect(it);
    QTest::mouseClick(form->TreeView1->viewport(), Qt::LeftButton, {}, r.center());
  }

  std::unique_ptr<test::TestEnv> t;
  AppState app;
  std::unique_ptr<Form17> form;
};

TEST_F(Window, TheTreeOpensAtAPointWithItsExplanationAndQuestions) {
  form->openWindow();
  EXPECT_EQ(form->windowTitle(), u"知识点管理窗口"_qs);
  QTreeWidgetItem* root = form->TreeView1->topLevelItem(0);
  ASSERT_NE(root, nullptr);
  EXPECT_EQ(root->text(0), u"大纲知识点"_qs);
  EXPECT_TRUE(root->isExpanded());
  ASSERT_EQ(root->childCount(), 1);
  EXPECT_EQ(root->child(0)->text(0), u"示例大纲（示例数据）"_qs);
  EXPECT_EQ(root->child(0)->childCount(), 3);

  form->SelectNode(u"4 node"_qs);
  QTreeWidgetItem* four = item(4);
  ASSERT_NE(four, nullptr);
  EXPECT_EQ(form->TreeView1->currentItem(), four);
  EXPECT_TRUE(four->parent()->isExpanded());
  EXPECT_TRUE(four->parent()->parent()->isExpanded());
  EXPECT_EQ(four->text(0), u"罪刑法定原则"_qs);
  EXPECT_EQ(form->Frame1->title(), u"知识点：罪刑法定原则..."_qs);
  EXPECT_EQ(form->Text1->text(), u"《示例刑法》3."_qs);
  EXPECT_EQ(form->Text4->text(), u"示例数据"_qs);
  EXPECT_EQ(form->Text2->text(), t->path(u"\\知识点\\4.txt"_qs));
  EXPECT_EQ(HeldText(form->RichTextBox1->toPlainText()), ReadText(t->path(u"\\知识点\\4.txt"_qs)));
  EXPECT_TRUE(form->RichTextBox1->toPlainText().contains(u"罪刑法定"_qs));
  EXPECT_TRUE(form->Command4->isVisibleTo(form.get()));
  EXPECT_EQ(form->Command4->text(), u"相关1题"_qs);
  EXPECT_EQ(form->points().relatedIds, u"10001100001"_qs);
  test::CheckOnScreens(form.get(), u"knowledge_window"_qs);

  // A click on another point: 刑事责任年龄 (marked new) with two questions.
  test::ShowOnScreen(form.get(), test::TestScreen(test::kSmallScreen));
  form->SelectNode(u"2 node"_qs);
  form->TreeView1->expandAll();
  clickItem(item(10));
  EXPECT_EQ(form->Frame1->title(), u"知识点：New-刑事责任年龄..."_qs);
  EXPECT_EQ(form->Text1->text(), u"《示例刑法》12."_qs);
  EXPECT_EQ(form->Command4->text(), u"相关2题"_qs);
  EXPECT_EQ(form->points().relatedIds, u"1000110000210001200003"_qs);
  // Its explanation file was made with the start text.
  EXPECT_TRUE(form->RichTextBox1->toPlainText().contains(u"此知识点还没有相关解释文件，你可以"_qs));
  EXPECT_EQ(test::TableRow(*t, 10).b, u"\\知识点\\10.txt"_qs);
  test::SaveScreenshot(form.get(), u"knowledge_window_point10"_qs);

  // A group is no point: the fields stay as they were, nothing is selected.
  clickItem(item(7));
  EXPECT_FALSE(form->points().pointSelected);
  EXPECT_EQ(form->Frame1->title(), u"知识点："_qs);
}

TEST_F(Window, TheSampleKnowledgeFileIsTakenInOnActivation) {
  form->openWindow();
  QTRY_VERIFY_WITH_TIMEOUT(FileExists(t->path(u"\\新知识点\\newzsd1.tx_"_qs)), 5000);
  EXPECT_FALSE(FileExists(t->path(u"\\新知识点\\newzsd1.txt"_qs)));
  // 立功 (22) had no citation and is filled; 自首 (21) keeps its own.
  EXPECT_EQ(test::TableRow(*t, 22).d, u"《示例刑法》32."_qs);
  EXPECT_EQ(test::TableRow(*t, 22).b, u"\\知识点\\22.txt"_qs);
  EXPECT_EQ(test::TableRow(*t, 21).d, u"《示例刑法》31."_qs);
  EXPECT_TRUE(ReadText(t->path(u"\\知识点\\22.txt"_qs)).startsWith(u"立功 （示例数据）\r\n\r\n《示例刑法》第三十二条"_qs));
  EXPECT_FALSE(form->Command1->isEnabled());
  EXPECT_TRUE(t->boxes.shown().isEmpty()) << (t->boxes.shown().value(0).text).toStdString();
  form->SelectNode(u"22 node"_qs);
  EXPECT_EQ(form->Text1->text(), u"《示例刑法》32."_qs);
}

TEST_F(Window, TypingDoubleClicksAndTheCheck) {
  form->openWindow();
  form->SelectNode(u"4 node"_qs);
  form->Text1->setFocus();
  form->Text1->selectAll();
  QTest::keyClicks(form->Text1, u"x"_qs);
  EXPECT_EQ(form->points().Text1, u"x"_qs);
  EXPECT_FALSE(form->Command4->isVisibleTo(form.get()));
  form->Text1->setText(u"《示例刑法》"_qs);
  form->Text1->end(false);
  QTest::keyClicks(form->Text1, u"."_qs);
  EXPECT_EQ(form->Text1->text(), u"《示例刑法》.《"_qs);
  form->Text1->setText(u"《示例刑法》12"_qs);
  form->Text1->end(false);
  QTest::keyClicks(form->Text1, u"."_qs);
  EXPECT_EQ(form->Text1->text(), u"《示例刑法》12."_qs);
  EXPECT_EQ(form->Command4->text(), u"相关2题"_qs);

  QTest::mouseDClick(form->Text1, Qt::LeftButton);
  EXPECT_EQ(form->Text3->text(), t->env.today().toString(u"yyyy-MM-dd"_qs));
  EXPECT_EQ(form->Text4->text(), u"自己添加。"_qs);

  QTest::mouseClick(form->Command2, Qt::LeftButton);
  EXPECT_EQ(form->Text1->text(), u"《示例刑法》第12条"_qs);
  EXPECT_EQ(HeldText(form->RichTextBox2->toPlainText()), u"知识点“"_qs + t->path(u"\\知识点\\4.txt"_qs) + u"”检验通过。"_qs);
  EXPECT_EQ(test::TableRow(*t, 4).d, u"《示例刑法》第12条"_qs);
  EXPECT_EQ(test::TableRow(*t, 4).r, u"自己添加。"_qs);
  const QList<BoxRecord> boxes = t->boxes.take();
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_EQ(boxes[0].title, u"保存完毕"_qs);
}

TEST_F(Window, RelatedQuestionsRunAndReturn) {
  QString started;
  bool ended = false;
  form->onRelatedRun = [&](const QString& ids) {
    started = ids;
    return true;
  };
  form->onEndRelatedRun = [&] {
    ended = true;
    form->relatedRunEnded();
  };
  form->openWindow();
  form->SelectNode(u"10 node"_qs);
  QTest::mouseClick(form->Command4, Qt::LeftButton);
  EXPECT_EQ(started, u"1000110000210001200003"_qs);
  EXPECT_TRUE(form->inRelatedRun());
  EXPECT_EQ(form->Command5->text(), u"返回原题"_qs);
  QTest::mouseClick(form->Command5, Qt::LeftButton);
  EXPECT_TRUE(ended);
  EXPECT_FALSE(form->inRelatedRun());
  EXPECT_EQ(form->Command5->text(), u"关  闭"_qs);
  EXPECT_TRUE(form->isVisible());
  QTest::mouseClick(form->Command5, Qt::LeftButton);
  EXPECT_FALSE(form->isVisible());
}

TEST_F(Window, TheTreeMenuOnlySaysItsWord) {
  form->openWindow();
  const QList<QAction*> actions = form->TvwMenu->actions();
  ASSERT_EQ(actions.size(), 3);
  EXPECT_EQ(form->TvwMenu->title(), u"目录树菜单"_qs);
  QStringList captions;
  for (QAction* a : actions) {
    captions << a->text();
    a->trigger();
  }
  EXPECT_EQ(captions, (QStringList{u"插入知识点项目"_qs, u"插入知识点"_qs, u"删除知识点"_qs}));
  const QList<BoxRecord> boxes = t->boxes.take();
  ASSERT_EQ(boxes.size(), 3);
  EXPECT_EQ(boxes[0].text, u"ml"_qs);
  EXPECT_EQ(boxes[1].text, u"xm"_qs);
  EXPECT_EQ(boxes[2].text, u"delete"_qs);
  EXPECT_EQ(form->TreeView1->topLevelItem(0)->child(0)->childCount(), 3);
}

TEST_F(Window, AnArticleLeadsToItsPointsOrOffersOne) {
  form->showArticle(u"示例刑法"_qs, 12);
  EXPECT_TRUE(form->isVisible());
  EXPECT_EQ(form->TreeView1->currentItem(), item(10));
  EXPECT_EQ(form->Text1->text(), u"《示例刑法》12."_qs);
  EXPECT_TRUE(t->boxes.take().isEmpty());
  // An article without a point: the question, then the prompt; the next
  // point chosen gets the article.
  t->boxes.answer(box::Yes);
  form->showArticle(u"示例刑法"_qs, 36);
  QList<BoxRecord> boxes = t->boxes.take();
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_EQ(boxes[0].title, u"是否加入知识点"_qs);
  EXPECT_EQ(boxes[0].text, u"还没有加入该条的知识点，现在要加入吗？"_qs);
  EXPECT_EQ(boxes[0].style, box::YesNo | box::Question);
  // A point is selected: the article is added to it.
  EXPECT_EQ(form->Text1->text(), u"《示例刑法》12.《示例刑法》36."_qs);
  // No point selected: the prompt, and the next point chosen gets it.
  Form17 other(app);
  t->boxes.answer(box::Yes);
  other.showArticle(u"示例刑法"_qs, 36);
  boxes = t->boxes.take();
  ASSERT_EQ(boxes.size(), 2);
  EXPECT_EQ(boxes[1].text, u"请先在左边的目录树里选择知识点。"_qs);
  other.SelectNode(u"21 node"_qs);
  EXPECT_EQ(other.Text1->text(), u"《示例刑法》31.《示例刑法》36."_qs);
  other.close();
  // No: nothing changes.
  t->boxes.answer(box::No);
  form->showArticle(u"示例刑法"_qs, 37);
  EXPECT_EQ(form->Text1->text(), u"《示例刑法》12.《示例刑法》36."_qs);
}


TEST_F(Window, TheDownloadButtonFetchesAndTakesIn) {
  test::HttpServer server;
  ASSERT_TRUE(server.start());
  server.setText(u"/zsd/newzsd2.txt"_qs,
                 ToGbk(u"[知识点]\r\n初始信息=9\r\n[9]\r\n参见法条=《示例刑法》15.\r\n解析内容=过失的解释\r\n"_qs));
  t->writeGbk(kNewsFile, u"[信息]\r\n信息号=1\r\n知识点文件个数=2\r\n知识点文件下载网上目录="_qs +
                             server.url(u"/zsd/"_qs).toString() + u"\r\n"_qs);
  {
    // 犯罪过失 (9) without its citation, so that the file may fill it.
    DbfTable dagang = DbfTable::open(t->path(kOutlineTableFile), DbfTable::Mode::ReadWrite);
    for (const int rec : dagang.rows())
      if (dagang.number(rec, u"therecn"_qs) == 9) {
        ASSERT_TRUE(dagang.setNull(rec, dagang.fieldIndex(u"d"_qs)));
      }
    ASSERT_TRUE(dagang.close());
  }
  form->loadWindow();
  form->points().activate();
  form->render();
  // newzsd1 (the sample) was taken in; 2 is on offer.
  QList<BoxRecord> boxes = t->boxes.take();
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_EQ(boxes[0].text, u"有新的知识点文件，点击下面的按钮进行下载。"_qs);
  EXPECT_TRUE(form->Command1->isEnabled());
  form->Command1_Click();
  EXPECT_TRUE(form->ProgressBar1->isVisibleTo(form.get()));
  EXPECT_FALSE(form->Command1->isEnabled());
  QTRY_VERIFY_WITH_TIMEOUT(!form->downloadBusy() && !t->boxes.shown().isEmpty(), 10000);
  boxes = t->boxes.take();
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_EQ(boxes[0].title, u"新知识点"_qs);
  EXPECT_EQ(boxes[0].text, u"下载了1个知识点文件。"_qs);
  EXPECT_FALSE(form->ProgressBar1->isVisible());
  EXPECT_FALSE(form->Command1->isEnabled());
  EXPECT_EQ(server.requests, QList<QString>{u"/zsd/newzsd2.txt"_qs});
  EXPECT_TRUE(FileExists(t->path(u"\\新知识点\\newzsd2.tx_"_qs)));
  EXPECT_EQ(test::TableRow(*t, 9).d, u"《示例刑法》15."_qs);
  EXPECT_EQ(ReadText(t->path(u"\\知识点\\9.txt"_qs)), u"过失的解释"_qs);
}

TEST_F(Window, TheForumButtons) {
  app.NewsLink1 = u"https://mingjing.example.org/bbs/dispbbs.asp"_qs;
  app.NewsLink2 = u"https://mingjing.example.org/bbs/nextitem.asp"_qs;
  form->openWindow();
  t->boxes.clear();
  QTest::mouseClick(form->Command7, Qt::LeftButton);
  QList<BoxRecord> boxes = t->boxes.take();
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_EQ(boxes[0].text, u"ok"_qs);
  EXPECT_FALSE(form->ProgressBar1->isVisible());
  EXPECT_EQ(form->forumCounters().topic, 45);
  EXPECT_TRUE(form->Command7->isEnabled());

  QTest::mouseClick(form->Command9, Qt::LeftButton);
  boxes = t->boxes.take();
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_EQ(boxes[0].text, u"lawinfo表整理完毕。"_qs);

  // 转换链接: two address boxes; an empty one stops with a box.
  QStringList prompts;
  QList<std::optional<QString>> answers = {u"https://mingjing.example.org/bbs/"_qs, QString()};
  form->inputBox = [&](const QString& prompt, const QString& title) -> std::optional<QString> {
    prompts << title + u"|"_qs + prompt;
    return answers.takeFirst();
  };
  QTest::mouseClick(form->Command8, Qt::LeftButton);
  ASSERT_EQ(prompts.size(), 2);
  EXPECT_TRUE(prompts[0].startsWith(u"输入地址串|老地址字符，形如"_qs)) << prompts[0].toStdString();
  EXPECT_TRUE(prompts[1].startsWith(u"输入地址串|新地址字符，形如"_qs)) << prompts[1].toStdString();
  boxes = t->boxes.take();
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_EQ(boxes[0].title, u"输入有误"_qs);
  EXPECT_EQ(boxes[0].text, u"地址不可以为空"_qs);
  answers = {u"https://mingjing.example.org/bbs/"_qs, u"http://new.example.org/forum/"_qs};
  QTest::mouseClick(form->Command8, Qt::LeftButton);
  boxes = t->boxes.take();
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_EQ(boxes[0].text, u"ok"_qs);
  EXPECT_EQ(form->Label6->text(), u"45/45"_qs);
}

}  // namespace
}  // namespace mj
