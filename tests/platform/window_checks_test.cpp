// The window checks every window test uses must themselves find what they
// promise to find.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

#include "support/test_env.h"
#include "support/window_checks.h"

using namespace mj::test;

namespace {

bool anyContains(const QStringList& problems, const QString& part) {
  for (const QString& p : problems)
    if (p.contains(part)) return true;
  return false;
}

}  // namespace

TEST(WindowChecks, TwoScreensTheSmallOnePrimary) {
  ASSERT_NE(TestScreen(kSmallScreen), nullptr);
  ASSERT_NE(TestScreen(kLargeScreen), nullptr);
  EXPECT_EQ(QGuiApplication::primaryScreen(), TestScreen(kSmallScreen));
  EXPECT_EQ(TestScreen(QSize(10, 10)), nullptr);
}

TEST(WindowChecks, ATidyWindowHasNoProblemsAndItsScreenshotsAreSaved) {
  QWidget w;
  auto* v = new QVBoxLayout(&w);
  v->addWidget(new QLabel(QStringLiteral("科学、高效、智能化的题海战术")));
  v->addWidget(new QCheckBox(QStringLiteral("也许是……")));
  v->addWidget(new QPushButton(QStringLiteral("返回")));
  w.resize(400, 300);
  CheckOnScreens(&w, QStringLiteral("checks_tidy"));
  for (const QSize s : {kSmallScreen, kLargeScreen}) {
    const QString path = OutputDir() + QStringLiteral("/screenshots/checks_tidy-%1x%2.png").arg(s.width()).arg(s.height());
    ASSERT_TRUE(QFileInfo::exists(path)) << path.toStdString();
    EXPECT_EQ(QImage(path).size(), w.size());
  }
  EXPECT_EQ(w.screen(), TestScreen(kLargeScreen));
  EXPECT_TRUE(TestScreen(kLargeScreen)->geometry().contains(w.frameGeometry()));
}

TEST(WindowChecks, ANarrowLabelAndButtonAreFound) {
  QWidget w;
  auto* label = new QLabel(QStringLiteral("科学、高效、智能化的题海战术使在较短时间内通过司法统考成为可能。"), &w);
  label->setGeometry(10, 10, 60, 30);
  auto* wrapped = new QLabel(QStringLiteral("科学、高效、智能化的题海战术使在较短时间内通过司法统考成为可能。"), &w);
  wrapped->setWordWrap(true);
  wrapped->setGeometry(10, 50, 60, 20);
  auto* button = new QPushButton(QStringLiteral("设置打开格式文书文件的程序"), &w);
  button->setGeometry(10, 80, 50, 30);
  auto* fine = new QLabel(QStringLiteral("返回"), &w);
  fine->setGeometry(10, 120, 200, 30);
  w.resize(300, 200);
  ShowOnScreen(&w, TestScreen(kSmallScreen));
  EXPECT_TRUE(ElidedText(label));
  EXPECT_TRUE(ElidedText(wrapped));
  EXPECT_TRUE(ElidedText(button));
  EXPECT_FALSE(ElidedText(fine));
  const QStringList problems = LayoutProblems(&w);
  EXPECT_EQ(problems.size(), 3) << problems.join(u'\n').toStdString();
  EXPECT_TRUE(anyContains(problems, QStringLiteral("shows only part of its text")));
}

TEST(WindowChecks, AChildOutsideItsParentIsFoundButNotInsideAScrollArea) {
  QWidget w;
  auto* out = new QPushButton(QStringLiteral("返回"), &w);
  out->setObjectName(QStringLiteral("Frame3Cmd_3"));
  out->setGeometry(250, 170, 100, 60);
  auto* area = new QScrollArea(&w);
  area->setGeometry(0, 0, 200, 100);
  auto* big = new QWidget;
  big->resize(800, 800);
  area->setWidget(big);
  w.resize(300, 200);
  ShowOnScreen(&w, TestScreen(kSmallScreen));
  const QStringList problems = LayoutProblems(&w);
  ASSERT_EQ(problems.size(), 1) << problems.join(u'\n').toStdString();
  EXPECT_TRUE(problems[0].contains(QStringLiteral("'Frame3Cmd_3'")));
  EXPECT_TRUE(problems[0].contains(QStringLiteral("lies outside its parent")));
}

TEST(WindowChecks, AWindowTooLargeForTheScreenIsFound) {
  QWidget w;
  w.setMinimumSize(1100, 500);
  ShowOnScreen(&w, TestScreen(kSmallScreen));
  const QStringList problems = LayoutProblems(&w);
  EXPECT_TRUE(anyContains(problems, QStringLiteral("does not lie inside the screen's available area")))
      << problems.join(u'\n').toStdString();
  EXPECT_TRUE(anyContains(problems, QStringLiteral("minimum size 1100x500")));
}

TEST(WindowChecks, AMenuBarThatHidesEntriesIsFound) {
  QMainWindow w;
  for (int i = 0; i < 14; ++i) w.menuBar()->addAction(QStringLiteral("法律法规查询%1").arg(i));
  w.setCentralWidget(new QWidget);
  w.resize(500, 300);
  ShowOnScreen(&w, TestScreen(kSmallScreen));
  const QStringList problems = LayoutProblems(&w);
  EXPECT_TRUE(anyContains(problems, QStringLiteral("hides entries behind »"))) << problems.join(u'\n').toStdString();
  EXPECT_TRUE(anyContains(problems, QStringLiteral("法律法规查询13")));
}
