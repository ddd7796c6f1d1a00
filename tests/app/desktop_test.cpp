// The main window on a desktop: it fits the screen, its windows and boxes
// open fully on the screen, and addresses that cannot be opened are said.
#include <gtest/gtest.h>

#include <QAction>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPainter>
#include <QScreen>
#include <QTextEdit>
#include <QTest>
#include <QTimer>

#include "app/main_window.h"
#include "app/splash_window.h"
#include "law/law_query_window.h"
#include "settings/help_window.h"
#include "support/printers.h"
#include "support/program_folder.h"
#include "support/window_checks.h"

using namespace mj;

namespace {

struct Started {
  test::TestEnv t;
  std::unique_ptr<Form1> form;
  explicit Started(bool load = true) {
    test::MakeProgramFolder(t);
    form = std::make_unique<Form1>(t.env);
    if (load) form->load();
  }
};

QRect smallArea() { return test::TestScreen(test::kSmallScreen)->availableGeometry(); }

const QString kAddressBoxEnd =
    u"\r\n\r\n本机没有能打开网址的程序。网址已复制到剪贴板，可以粘贴到浏览器的地址栏里打开。"_qs;

}  // namespace

TEST(Desktop, TheMainWindowStartsAtTheSizeOfTheAvailableArea) {
  Started s;
  s.form->show();
  test::SettleLayouts();
  EXPECT_EQ(s.form->frameGeometry(), smallArea());
  EXPECT_EQ(s.form->state().ScaleX, 1024 * 15.0 / 12000.0);
  EXPECT_EQ(s.form->state().ScaleY, 768 * 15.0 / 9000.0);
  // As the program shows it: maximised, the same area.
  s.form->showMaximized();
  test::SettleLayouts();
  EXPECT_EQ(s.form->frameGeometry(), smallArea());
}

TEST(Desktop, TheHelpWindowOpensFullyOnTheScreen) {
  Started s;
  s.t.writeGbk(u"\\ini\\lumenhelp.ini"_qs, u"[1]主窗口的说明\r\n[6]法律查询的说明\r\n"_qs);
  s.form->showMaximized();
  Form6* lawQuery = s.form->lawQueryWindow();
  lawQuery->showAgain();
  test::SettleLayouts();
  // Where a window manager put it once: half below the screen.
  QTest::keyClick(lawQuery->Text2, Qt::Key_F1);
  Form18* help = s.form->helpWindow();
  ASSERT_NE(help, nullptr);
  help->hide();
  help->move(600, 500);
  QTest::keyClick(lawQuery->Text2, Qt::Key_F1);
  test::SettleLayouts();
  ASSERT_TRUE(help->isVisible());
  EXPECT_TRUE(smallArea().contains(help->frameGeometry()))
      << help->frameGeometry().y() << "+" << help->frameGeometry().height();
  test::CheckOnScreens(help, u"help_window"_qs);
  // Esc closes the help alone.
  help->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(help));
  QTest::keyClick(help->RichTextBox1, Qt::Key_Escape);
  EXPECT_FALSE(help->isVisible());
  EXPECT_TRUE(lawQuery->isVisible());
}

TEST(Desktop, TheSupportSiteThatCannotBeOpenedIsShownAndCopied) {
  Started s;
  s.t.shell.result = false;
  // Test folders have the download switched off; without the file the
  // program's own site is the one.
  ASSERT_TRUE(QFile::remove(s.t.path(kSiteFile)));
  s.form->HelpWeb->trigger();
  ASSERT_EQ(s.t.boxes.shown().size(), 1);
  const QString site = u"https://mingjing.example.org"_qs;
  EXPECT_EQ(s.t.boxes.shown()[0].text, u"无法打开网址：\r\n"_qs + site + kAddressBoxEnd);
  EXPECT_EQ(s.t.clipboard.text(), site);
}

// Every entry of the menu, 退出 last, stays in view: on a 1024 pixel screen
// with a large system font, and in a window of 800 pixels.
TEST(Desktop, TheMenuBarShowsAllItsEntries) {
  Started s;
  QFont large = s.form->font();
  large.setPointSize(12);
  s.form->setFont(large);
  s.form->showMaximized();
  test::SettleLayouts();
  EXPECT_TRUE(test::LayoutProblems(s.form.get()).filter(u"hides entries"_qs).isEmpty())
      << test::LayoutProblems(s.form.get()).join(u'\n').toStdString();
  QMenuBar* bar = s.form->menuBar();
  EXPECT_TRUE(bar->rect().contains(bar->actionGeometry(s.form->MmExit)));
  test::SaveScreenshot(s.form.get(), u"menu_large_font-1024x768"_qs);
  // The usual font, 800 pixels wide.
  s.form->setFont(QFont());
  s.form->showNormal();
  s.form->resize(800, 600);
  test::SettleLayouts();
  EXPECT_TRUE(bar->rect().contains(bar->actionGeometry(s.form->MmExit))) << bar->actionGeometry(s.form->MmExit).right();
  // Wide again: the usual spacing comes back.
  s.form->resize(1000, 600);
  test::SettleLayouts();
  EXPECT_TRUE(bar->styleSheet().isEmpty());
}

// A start picture larger than the screen: the splash shows it whole, made
// smaller, centred on the screen, with its bar in the middle third.
TEST(Desktop, ASplashPictureLargerThanTheScreenIsShownWholeOnIt) {
  test::TestEnv t;
  test::MakeProgramFolder(t);
  QImage big(2000, 1000, QImage::Format_RGB32);
  big.fill(QColor(200, 0, 0));
  QPainter(&big).fillRect(1000, 0, 1000, 1000, QColor(0, 200, 0));
  ASSERT_TRUE(big.save(t.path(u"\\ini\\jiemian.jpg"_qs), "JPEG"));
  Form8 splash(t.env);
  splash.load();
  splash.tick();
  test::SettleLayouts();
  const QRect area = smallArea();
  EXPECT_EQ(splash.size(), QSize(area.width(), area.width() / 2));
  EXPECT_TRUE(area.contains(splash.frameGeometry()));
  EXPECT_EQ(splash.frameGeometry().center(), area.center());
  EXPECT_EQ(splash.barStart(), splash.width() / 3);
  EXPECT_EQ(splash.picture().size(), QSize(2000, 1000));
  // The whole picture: red on the left, green up to the right edge.
  const QImage shown = splash.grab().toImage();
  EXPECT_GT(qRed(shown.pixel(10, 10)), 150);
  EXPECT_GT(qGreen(shown.pixel(shown.width() - 10, 10)), 150);
  EXPECT_LT(qRed(shown.pixel(shown.width() - 10, 10)), 60);
  EXPECT_TRUE(test::LayoutProblems(&splash).isEmpty()) << test::LayoutProblems(&splash).join(u'\n').toStdString();
  splash.Timer1->stop();
}
