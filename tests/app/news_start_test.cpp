// The start with the news download: the window is usable while the news
// file comes; its end shows the notices and completes the start.
#include <gtest/gtest.h>

#include <QAction>
#include <QCloseEvent>
#include <QDateTime>
#include <QFile>
#include <QLabel>
#include <QTest>

#include "app/main_window.h"
#include "app/splash_window.h"
#include "log/news.h"
#include "platform/paths.h"
#include "platform/textfile.h"
#include "support/http_server.h"
#include "support/program_folder.h"
#include "support/window_checks.h"

using namespace mj;
using mj::test::HttpServer;

namespace {

const QString kOld = u"[信息]\r\n信息号=1\r\n[通知1]\r\n显示内容=旧的通知\r\n"_qs;
const QString kServed =
    u"[信息]\r\n信息号=2\r\n"
    u"[通知1]\r\n显示内容=新的通知●第二行\r\n鼠标提示=新\r\n链接=file:///bin/sh\r\n"
    u"[通知2]\r\n显示内容=脚本链接\r\n链接=javascript:alert(1)\r\n"
    u"[通知3]\r\n显示内容=程序链接\r\n链接=\\lmdata\r\n"
    u"[通知4]\r\n显示内容=支持站点\r\n链接=https://mingjing.example.org/\r\n"_qs;

struct NewsStart : ::testing::Test {
  test::TestEnv t;
  HttpServer server;
  std::unique_ptr<Form1> form;
  QList<int> steps;
  void SetUp() override {
    test::MakeProgramFolder(t);
    ASSERT_TRUE(server.start());
    test::UseSupportSite(t, server.base());
    t.writeGbk(kNewsFile, kOld);
    form = std::make_unique<Form1>(t.env);
    form->onStartupStep = [this](int s) { steps.append(s); };
  }
  bool started(int ms) {
    return QTest::qWaitFor([this] { return form->state().StartedOk; }, ms);
  }
};

}  // namespace

TEST_F(NewsStart, TheWindowIsUsableWhileTheNewsFileComes) {
  HttpServer::Route slow;
  slow.body = ToGbk(kServed);
  slow.delayMs = 1500;
  server.set(u"/newlumen.txt"_qs, slow);
  ASSERT_EQ(form->load(), Form1::LoadOutcome::Running);
  form->show();
  EXPECT_EQ(steps, (QList<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17}));
  EXPECT_FALSE(form->state().StartedOk);
  EXPECT_NE(form->splash(), nullptr);
  EXPECT_TRUE(form->newsDownload()->pending());
  EXPECT_EQ(form->currentFace(), form->startPage);
  EXPECT_TRUE(form->Label14[0]->isHidden());
  // A menu entry works meanwhile.
  QTest::qWait(200);
  form->HelpYou->trigger();
  EXPECT_EQ(t.boxes.take().size(), 1);
  EXPECT_FALSE(form->state().StartedOk);

  ASSERT_TRUE(started(5000));
  EXPECT_EQ(steps.size(), 18);
  EXPECT_EQ(form->splash(), nullptr);
  EXPECT_EQ(ReadBytes(t.path(kNewsFile)), ToGbk(kServed));
  EXPECT_EQ(form->Label14[0]->text(), u"新的通知\r\n第二行"_qs);
  EXPECT_FALSE(form->Label14[0]->isHidden());
  EXPECT_FALSE(form->Label14[3]->isHidden());
  EXPECT_TRUE(form->Label14[4]->isHidden());
  test::SaveScreenshot(form.get(), u"start_page_notices"_qs);

  // None of the links that are no web address reaches the desktop.
  for (int i = 0; i < 3; ++i) QTest::mouseClick(form->Label14[i], Qt::LeftButton);
  EXPECT_TRUE(t.shell.calls.isEmpty());
  EXPECT_EQ(t.boxes.take().size(), 3);
  QTest::mouseClick(form->Label14[3], Qt::LeftButton);
  ASSERT_EQ(t.shell.calls.size(), 1);
  EXPECT_EQ(t.shell.calls[0].target, u"https://mingjing.example.org/"_qs);
}

TEST_F(NewsStart, ASilentSiteLeavesTheOldNoticesAfterFiveSeconds) {
  HttpServer::Route silent;
  silent.silent = true;
  server.set(u"/newlumen.txt"_qs, silent);
  ASSERT_EQ(form->load(), Form1::LoadOutcome::Running);
  form->show();
  EXPECT_FALSE(form->state().StartedOk);
  ASSERT_TRUE(started(9000));
  EXPECT_EQ(form->Label14[0]->text(), u"旧的通知"_qs);
  EXPECT_FALSE(form->Label14[0]->isHidden());
  EXPECT_EQ(ReadBytes(t.path(kNewsFile)), ToGbk(kOld));
  EXPECT_FALSE(FileExists(t.path(kNewsDownload)));
  EXPECT_TRUE(t.boxes.shown().isEmpty());
}

TEST_F(NewsStart, TheCloseFinishesTheDownloadUnderWay) {
  HttpServer::Route slow;
  slow.body = ToGbk(kServed);
  slow.delayMs = 800;
  server.set(u"/newlumen.txt"_qs, slow);
  ASSERT_EQ(form->load(), Form1::LoadOutcome::Running);
  form->show();
  ASSERT_TRUE(form->newsDownload()->pending());
  // The start is not complete: the close asks nothing.
  QCloseEvent close;
  QCoreApplication::sendEvent(form.get(), &close);
  EXPECT_TRUE(close.isAccepted());
  EXPECT_TRUE(t.boxes.shown().isEmpty());
  EXPECT_FALSE(form->newsDownload()->pending());
  EXPECT_EQ(ReadBytes(t.path(kNewsFile)), ToGbk(kServed));
  EXPECT_EQ(ReadBytes(t.path(kNewsDownload)), ToGbk(kServed));
}

// The news file of the demonstration data, served by the site to a folder
// without a news file: it becomes the local file and its notices show; the
// countdown it carries reaches the title bar at the next start.
TEST(NewsStartDemo, TheDemonstrationNewsFileServedBecomesTheLocalOne) {
  if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "no demonstration data built";
  test::TestEnv t(test::DemoDataDir());
  const QByteArray served = ReadBytes(t.path(kNewsFile));
  ASSERT_FALSE(served.isEmpty());
  ASSERT_TRUE(QFile::remove(t.path(kNewsFile)));
  HttpServer server;
  ASSERT_TRUE(server.start());
  test::UseSupportSite(t, server.base());
  server.setText(u"/newlumen.txt"_qs, served);
  // The day before the exam day of the demonstration news file.
  t.clock.set(QDateTime(QDate(2003, 1, 1).addDays(9026 - 1), QTime(8, 0)));
  {
    Form1 form(t.env);
    ASSERT_EQ(form.load(), Form1::LoadOutcome::Running);
    form.show();
    ASSERT_TRUE(QTest::qWaitFor([&form] { return form.state().StartedOk; }, 9000));
    EXPECT_EQ(ReadBytes(t.path(kNewsFile)), served);
    EXPECT_FALSE(FileExists(t.path(kNewsDownload)));
    EXPECT_EQ(form.Label14[0]->text(), u"欢迎使用明镜学习伴侣3.10！\r\n祝你早日通过司法统考。"_qs);
    EXPECT_EQ(form.Label14[0]->toolTip(), u"点击访问明镜学习伴侣支持站点"_qs);
    EXPECT_EQ(form.Label14[3]->text(), u"新手上路：在任何窗口中按F1键， 都可以看到本窗口的使用说明。"_qs);
    EXPECT_FALSE(form.Label14[4]->isHidden());
    // The title was made before the news file came.
    EXPECT_EQ(form.windowTitle(), u"明镜学习伴侣3.10"_qs);
    test::SaveScreenshot(&form, u"start_page_demo_notices"_qs);
  }
  Form1 next(t.env);
  ASSERT_EQ(next.load(), Form1::LoadOutcome::Running);
  EXPECT_EQ(next.windowTitle(), u"明镜学习伴侣3.10   明天开始司法统考，祝你成功！"_qs);
  ASSERT_TRUE(QTest::qWaitFor([&next] { return next.state().StartedOk; }, 9000));
  // The same 信息号: the local file stays, the download beside it.
  EXPECT_EQ(ReadBytes(t.path(kNewsFile)), served);
  EXPECT_EQ(ReadBytes(t.path(kNewsDownload)), served);
  EXPECT_EQ(server.requests.size(), 2);
}
