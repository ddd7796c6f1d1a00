// The law query window on the demonstration data: its trees, its laws of the
// three heading styles, its question index and law-name table.

#include <gtest/gtest.h>

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTextBlock>
#include <QTreeWidget>

#include "bank/item_index.h"
#include "law/law_files.h"
#include "law/law_links.h"
#include "law/law_query.h"
#include "law/law_query_window.h"
#include "law/text_places.h"
#include "platform/vbtext.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

class DemoLawQuery : public ::testing::Test {
 protected:
  void SetUp() override {
    if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "no demonstration data";
    te = std::make_unique<test::TestEnv>(test::DemoDataDir());
    ClearLawCache();
    ReadData2ItemData(te->path(u"\\dbf"_qs), u"items.mmd"_qs, items);
    ASSERT_FALSE(items.isEmpty());
  }
  int node(const LawQuery& q, const QString& text) const {
    for (int i = 0; i < q.tree.nodes.size(); ++i)
      if (q.tree.nodes[i].text == text) return i;
    return -1;
  }
  std::unique_ptr<test::TestEnv> te;
  ItemIndex items;
};

TEST_F(DemoLawQuery, EveryLawOfEveryTreeOpens) {
  LawQuery q(te->env);
  for (const LawTreeOrder order : {LawTreeOrder::Paper, LawTreeOrder::Letter, LawTreeOrder::Class}) {
    q.loadTree(order);
    ASSERT_GT(q.tree.nodes.size(), 1);
    for (int i = 1; i < q.tree.nodes.size(); ++i) {
      q.clickNode(i);
      EXPECT_TRUE(te->boxes.shown().isEmpty()) << q.tree.nodes[i].text.toStdString();
      if (q.tree.nodes[i].children.isEmpty()) {
        EXPECT_GT(q.itemCount(), 0) << q.tree.nodes[i].text.toStdString();
        EXPECT_EQ(q.view, q.lawText());
        // Article 1 and the last article of every law are found.
        q.editText1(u"1,"_qs + CStr(q.itemCount()));
        q.query();
        EXPECT_NE(q.view, u"没有该条。"_qs) << q.tree.nodes[i].text.toStdString();
      }
    }
  }
}

TEST_F(DemoLawQuery, FromAnArticleToItsQuestions) {
  Form6 form(te->env, &items);
  form.show();
  LawQuery& q = form.query();
  const int law = node(q, u"《示例刑法》"_qs);
  ASSERT_GT(law, 0);
  form.TreeView1->expandAll();
  const auto found = form.TreeView1->findItems(u"《示例刑法》"_qs, Qt::MatchExactly | Qt::MatchRecursive);
  ASSERT_EQ(found.size(), 1);
  QTest::mouseClick(form.TreeView1->viewport(), Qt::LeftButton, {}, form.TreeView1->visualItemRect(found[0]).center());
  EXPECT_EQ(form.Label3->text(), u"将要查询 《示例刑法》"_qs);
  EXPECT_TRUE(form.Command8[0]->isVisible());

  // The first article with questions.
  const QString code = GetMyLawFileName(te->env, u"《示例刑法》"_qs, 1);
  ASSERT_EQ(code.size(), 5);
  int article = 0;
  QString ids;
  for (int n = 1; n <= q.itemCount() && ids.isEmpty(); ++n) {
    ids = NewGetForm6LongId(items, code, u"《示例刑法》"_qs, n);
    article = n;
  }
  ASSERT_FALSE(ids.isEmpty());
  q.editText1(CStr(article));
  form.Command3->click();
  ASSERT_TRUE(q.view.startsWith(u"　　第"_qs)) << q.view.toStdString();
  const LinePlace place = LineOfTextIndex(q.view, 5);
  QTextCursor c(form.RichTextBox1->document()->findBlockByNumber(place.line));
  c.setPosition(c.position() + static_cast<int>(place.column));
  const QPoint at = form.RichTextBox1->cursorRect(c).center();
  QTest::mouseClick(form.RichTextBox1->viewport(), Qt::LeftButton, {}, at);
  QCoreApplication::processEvents();
  EXPECT_TRUE(form.Command5->isEnabled());
  EXPECT_EQ(form.Command5->text(), u"相关"_qs + CStr(ids.size() / 11) + u"题"_qs);
  form.grab().save(test::OutputDir() + u"/law_query_demo_article.png"_qs);
  QString ran;
  form.onRelatedRun = [&](const QString& list, int) { ran = list; };
  form.Command5->click();
  EXPECT_EQ(ran, ids);
}

}  // namespace
}  // namespace mj
