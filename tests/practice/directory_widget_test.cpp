#include "practice/directory_widget.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QSignalSpy>
#include <QScrollBar>
#include <QTest>

#include "support/printers.h"
#include "support/test_env.h"

using namespace mj;

namespace {

Directory::Fields Row(const QString& label, const QString& flag = QString(), int total = 0, int done = 0,
                      int right = 0) {
  Directory::Fields f;
  f[0] = label;
  f[2] = flag;
  f[4] = QString::number(total);
  f[5] = QString::number(done);
  f[6] = QString::number(right);
  return f;
}

Directory Sample() {
  Directory d;
  d.setRows({Row(u"民法"_qs, u"2-4"_qs), Row(u"单项"_qs, u"3-3"_qs), Row(u"民法单选"_qs, QString(), 10, 9, 7),
             Row(u"民法多选"_qs, QString(), 6, 2, 1), Row(u"刑法"_qs, QString(), 8, 0, 0)});
  d.show(GridFormatText(DirectoryMode::ShiTi));
  return d;
}

QList<int> ShownRows(const DirectoryGrid& g) {
  QList<int> rows;
  for (int r = 1; r <= g.rowCount(); ++r)
    if (g.shownRowHeight(r) > 0) rows.append(r);
  return rows;
}

}  // namespace

TEST(DirectoryGrid, ShowsTheHeaderColumnsAndRows) {
  DirectoryGrid g;
  g.resize(900, 500);
  g.showDirectory(Sample(), 1.0);
  ASSERT_EQ(g.columnCount(), 13);
  ASSERT_EQ(g.rowCount(), 5);
  // The captions without the blanks that widened the columns of the format.
  EXPECT_EQ(g.horizontalHeaderItem(5)->text(), u"总题数"_qs);
  EXPECT_EQ(g.horizontalHeaderItem(6)->text(), u"做次数"_qs);
  EXPECT_EQ(g.horizontalHeaderItem(12)->text(), u"适格题数"_qs);
  EXPECT_EQ(g.horizontalHeaderItem(1)->textAlignment() & Qt::AlignHorizontal_Mask, Qt::AlignLeft);
  EXPECT_EQ(g.horizontalHeaderItem(5)->textAlignment() & Qt::AlignHorizontal_Mask, Qt::AlignHCenter);
  EXPECT_EQ(g.horizontalHeaderItem(5)->font().pointSize(), 15);
  // Only the columns 1, 5, 6, 7, 8, 11, 12 and the narrow fixed column show.
  QList<int> shown;
  for (int c = 0; c < 13; ++c)
    if (g.shownColumnWidth(c) > 0) shown.append(c);
  EXPECT_EQ(shown, (QList<int>{0, 1, 5, 6, 7, 8, 11, 12}));
  EXPECT_LT(g.shownColumnWidth(0), g.shownColumnWidth(1));
  // Top level only; the heading in blue at size 11 in the shown columns.
  EXPECT_EQ(ShownRows(g), (QList<int>{1, 5}));
  EXPECT_EQ(g.item(0, 1)->text(), u"+民法"_qs);
  EXPECT_EQ(g.item(0, 1)->foreground().color(), QColor(0, 0, 255));
  EXPECT_EQ(g.item(0, 1)->font().pointSize(), 11);
  EXPECT_EQ(g.item(0, 8)->foreground().color(), QColor(0, 0, 255));
  EXPECT_EQ(g.item(0, 8)->text(), u"72%"_qs);
  EXPECT_EQ(g.item(4, 1)->foreground().color(), QColor(Qt::black));
  EXPECT_EQ(g.item(0, 5)->textAlignment() & Qt::AlignHorizontal_Mask, Qt::AlignHCenter);
  EXPECT_GT(g.shownRowHeight(1), 0);
}

TEST(DirectoryGrid, ColumnsHoldTheirContentsInTheDirectorysOwnFont) {
  test::TestEnv t;
  DirectoryGrid plain, big;
  big.setEnv(&t.env);
  // A run has given the grid the largest question font.
  QFont f = big.font();
  f.setPointSize(71);
  big.setFont(f);
  plain.showDirectory(Sample(), 1.0);
  big.showDirectory(Sample(), 1.0);
  for (int c = 0; c < 13; ++c) EXPECT_EQ(big.shownColumnWidth(c), plain.shownColumnWidth(c)) << c;
  for (int c : {1, 5, 6, 7, 8, 11, 12}) {
    const QTableWidgetItem* h = big.horizontalHeaderItem(c);
    EXPECT_GE(big.shownColumnWidth(c), QFontMetrics(h->font()).horizontalAdvance(h->text())) << c;
    for (int r = 0; r < big.rowCount(); ++r) {
      const QTableWidgetItem* it = big.item(r, c);
      EXPECT_EQ(it->font().pointSize(), it->foreground().color() == QColor(Qt::black) ? kDirectoryFontSize : 11);
      EXPECT_GE(big.shownColumnWidth(c), QFontMetrics(it->font()).horizontalAdvance(it->text())) << r << "," << c;
    }
  }
  // Banks and headings alike, one row height.
  ASSERT_EQ(big.clickRow(1), DirectoryClick::Toggled);
  EXPECT_EQ(big.shownRowHeight(1), plain.shownRowHeight(1));
  EXPECT_EQ(big.shownRowHeight(4), big.shownRowHeight(1));
  EXPECT_EQ(big.shownRowHeight(2), big.shownRowHeight(1));
}

TEST(DirectoryGrid, EveryEntryStartsAtTheLabels) {
  QWidget window;
  auto* g = new DirectoryGrid(&window);
  g->resize(300, 200);
  window.resize(300, 200);
  g->showDirectory(Sample(), 1.0);
  window.show();
  QScrollBar* bar = g->horizontalScrollBar();
  ASSERT_GT(bar->maximum(), 0);
  bar->setValue(bar->maximum());
  g->showDirectory(Sample(), 1.0);
  EXPECT_EQ(bar->value(), 0);
  // Hidden during a run, shown again at its end.
  bar->setValue(bar->maximum());
  g->hide();
  g->show();
  EXPECT_EQ(bar->value(), 0);
}

TEST(DirectoryGrid, ClickOnAHeadingTogglesOnALeafAnnounces) {
  test::TestEnv t;
  DirectoryGrid g;
  g.setEnv(&t.env);
  g.resize(900, 500);
  g.showDirectory(Sample(), 1.0);
  g.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&g));
  QSignalSpy toggled(&g, &DirectoryGrid::headingToggled);
  QSignalSpy leaf(&g, &DirectoryGrid::leafClicked);

  // A mouse click on the heading's label.
  QTest::mouseClick(g.viewport(), Qt::LeftButton, {}, g.visualItemRect(g.item(0, 1)).center());
  ASSERT_EQ(toggled.size(), 1);
  EXPECT_EQ(toggled[0][0].toInt(), 1);
  EXPECT_EQ(g.item(0, 1)->text(), u"-民法"_qs);
  EXPECT_EQ(ShownRows(g), (QList<int>{1, 2, 4, 5}));
  EXPECT_EQ(g.item(1, 1)->text(), u"    +单项"_qs);
  EXPECT_EQ(g.item(1, 1)->foreground().color(), QColor(0, 0, 255));
  EXPECT_EQ(g.item(3, 1)->text(), u"     民法多选"_qs);

  // A bank row: announced, nothing else changes.
  QTest::mouseClick(g.viewport(), Qt::LeftButton, {}, g.visualItemRect(g.item(3, 1)).center());
  ASSERT_EQ(leaf.size(), 1);
  EXPECT_EQ(leaf[0][0].toInt(), 4);
  EXPECT_EQ(toggled.size(), 1);

  EXPECT_EQ(g.clickRow(1), DirectoryClick::Toggled);
  EXPECT_EQ(ShownRows(g), (QList<int>{1, 5}));
  EXPECT_TRUE(t.boxes.shown().isEmpty());
  g.grab().save(test::OutputDir() + u"/directory_grid.png"_qs);
}

TEST(DirectoryGrid, RowWithoutQuestionsShowsTheBox) {
  test::TestEnv t;
  DirectoryGrid g;
  g.setEnv(&t.env);
  Directory d;
  d.setRows({Row(u"待追加"_qs), Row(u"刑法"_qs, QString(), 8)});
  d.show(GridFormatText(DirectoryMode::CeShi));
  g.showDirectory(d, 1.0);
  QSignalSpy leaf(&g, &DirectoryGrid::leafClicked);
  EXPECT_EQ(g.clickRow(1), DirectoryClick::Empty);
  ASSERT_EQ(t.boxes.shown().size(), 1);
  EXPECT_EQ(t.boxes.shown()[0].text, u"对不起，该部分试题待以后追加。"_qs);
  EXPECT_EQ(leaf.size(), 0);
  EXPECT_EQ(g.clickRow(2), DirectoryClick::Leaf);
  EXPECT_EQ(leaf.size(), 1);
}

TEST(GridFaceUi, LabelBarAndGrid) {
  QWidget window;
  auto* label = new QLabel(&window);
  auto* bar = new QProgressBar(&window);
  auto* grid = new DirectoryGrid(&window);
  auto* frame = new QWidget(&window);
  bool faceShown = false;
  GridFaceUi ui({[] { return true; }, [&] { faceShown = true; }, &window, label, bar, grid, {frame}, 1.0});
  window.show();
  EXPECT_TRUE(ui.needsData());
  ui.prepareGridFace();
  EXPECT_TRUE(faceShown);
  ui.hideFrames();
  EXPECT_TRUE(frame->isHidden());
  ui.showCounting(u"正在统计"_qs);
  EXPECT_EQ(label->text(), u"正在统计"_qs);
  EXPECT_FALSE(label->isHidden());
  EXPECT_FALSE(bar->isHidden());
  ui.setProgressMaximum(10);
  ui.setProgressValue(4);
  EXPECT_EQ(bar->maximum(), 10);
  EXPECT_EQ(bar->value(), 4);
  ui.setProgressValue(12);  // past the end: full
  EXPECT_EQ(bar->value(), 10);
  ui.setWaitCursor(true);
  ui.setWaitCursor(true);
  EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
  ui.setWaitCursor(false);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  ui.hideCounting();
  EXPECT_TRUE(label->isHidden());
  EXPECT_TRUE(bar->isHidden());
  ui.showDirectory(Sample());
  EXPECT_FALSE(grid->isHidden());
  EXPECT_EQ(grid->rowCount(), 5);
}
