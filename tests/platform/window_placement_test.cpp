// Every window of the program lies, frame included, on the available area of
// its screen (test_main installs the fitting as the program's main does).
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

#include "platform/desktop_services_widget.h"
#include "platform/window_placement_widget.h"
#include "support/printers.h"
#include "support/window_checks.h"

using namespace mj;
using namespace mj::test;

namespace {

QRect smallArea() { return TestScreen(kSmallScreen)->availableGeometry(); }
QRect largeArea() { return TestScreen(kLargeScreen)->availableGeometry(); }

}  // namespace

TEST(WindowPlacement, AWindowLargerThanTheScreenIsShrunkOntoIt) {
  QWidget w;
  w.resize(1300, 900);
  w.move(0, 0);
  w.show();
  SettleLayouts();
  EXPECT_TRUE(smallArea().contains(w.frameGeometry())) << w.frameGeometry().width() << "x" << w.frameGeometry().height();
  EXPECT_EQ(FrameMarginsOf(&w), QMargins(2, 2, 2, 2));
  EXPECT_EQ(w.frameGeometry().size(), smallArea().size());
}

TEST(WindowPlacement, AWindowPartlyBelowTheScreenMovesUpAndKeepsItsSize) {
  QWidget w;
  w.resize(500, 400);
  w.move(300, 600);
  w.show();
  SettleLayouts();
  EXPECT_EQ(w.size(), QSize(500, 400));
  EXPECT_TRUE(smallArea().contains(w.frameGeometry()));
  EXPECT_EQ(w.frameGeometry().bottom(), smallArea().bottom());
  EXPECT_EQ(w.pos().x(), 300);
}

TEST(WindowPlacement, AWindowAlreadyOnTheScreenStaysWhereItIs) {
  QWidget w;
  w.resize(300, 200);
  w.move(100, 120);
  w.show();
  SettleLayouts();
  EXPECT_EQ(w.pos(), QPoint(100, 120));
  EXPECT_EQ(w.size(), QSize(300, 200));
}

TEST(WindowPlacement, AMaximisedWindowFillsTheAvailableArea) {
  QWidget w;
  w.showMaximized();
  SettleLayouts();
  EXPECT_EQ(w.frameGeometry(), smallArea());
}

TEST(WindowPlacement, AChildWindowOpensOnItsParentsScreen) {
  QWidget parent;
  parent.resize(600, 500);
  ShowOnScreen(&parent, TestScreen(kLargeScreen));
  parent.move(largeArea().right() - 620, largeArea().bottom() - 520);
  SettleLayouts();
  // A help window placed below and right of its parent, as a window manager
  // without placement rules would put it.
  QWidget help(&parent, Qt::Window);
  help.resize(640, 480);
  help.move(parent.geometry().bottomRight() - QPoint(100, 100));
  help.show();
  SettleLayouts();
  EXPECT_TRUE(largeArea().contains(help.frameGeometry()))
      << help.frameGeometry().x() << "," << help.frameGeometry().y();
  EXPECT_EQ(help.size(), QSize(640, 480));
}

TEST(WindowPlacement, NotBelowTheMinimumSize) {
  QWidget w;
  w.setMinimumSize(1100, 300);
  w.resize(1100, 300);
  w.show();
  SettleLayouts();
  EXPECT_EQ(w.width(), 1100);
}

TEST(WindowPlacement, TitleBarWidthGrowsWithTheTitle) {
  EXPECT_GT(TitleBarWidth(QStringLiteral("明镜学习伴侣3.10使用说明")), TitleBarWidth(QStringLiteral("提示")));
  EXPECT_GT(TitleBarWidth(QStringLiteral("提示")), 100);
}

// The real message box: wide enough for its title, fully on the screen, and
// the clicked button is the answer.
TEST(WindowPlacement, AMessageBoxShowsItsWholeTitle) {
  const QString title = QStringLiteral("明镜学伴3.10提示：正在进行更新任务，确定中止吗？请你确定");
  QRect frame;
  int width = 0;
  QString shownTitle;
  QTimer::singleShot(0, [&] {
    auto* mb = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(mb, nullptr);
    SettleLayouts();
    frame = mb->frameGeometry();
    width = mb->width();
    shownTitle = mb->windowTitle();
    for (QAbstractButton* b : mb->buttons())
      if (b->text() == QStringLiteral("否")) b->click();
  });
  WidgetBoxes boxes;
  EXPECT_EQ(boxes.show(QStringLiteral("中止？"), box::YesNo, title), box::No);
  EXPECT_EQ(shownTitle, title);
  EXPECT_GE(width + 4, TitleBarWidth(title));
  EXPECT_TRUE(smallArea().contains(frame));
}

TEST(WindowPlacement, AMessageBoxIsNeverWiderThanTheScreen) {
  const QString title = QString(200, QChar(u'长'));
  QRect frame;
  QString shownTitle;
  QTimer::singleShot(0, [&] {
    auto* mb = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(mb, nullptr);
    SettleLayouts();
    frame = mb->frameGeometry();
    shownTitle = mb->windowTitle();
    mb->buttons().first()->click();
  });
  WidgetBoxes boxes;
  EXPECT_EQ(boxes.show(QStringLiteral("x"), box::OkOnly, title), box::Ok);
  EXPECT_TRUE(smallArea().contains(frame)) << frame.width();
  EXPECT_TRUE(shownTitle.endsWith(u'…'));
  EXPECT_TRUE(shownTitle.startsWith(u"长长长"_qs));
}
