// The news file of the support site: the address, what a fetch gives, and
// how the downloaded text replaces the local file.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QFile>
#include <QTest>
#include <QTimer>

#include "log/news.h"
#include "platform/paths.h"
#include "platform/textfile.h"
#include "support/http_server.h"
#include "support/test_env.h"

using namespace mj;
using mj::test::HttpServer;

namespace {

const QString kOld = u"[信息]\r\n信息号=2026110101\r\n考试时间=9026\r\n[通知1]\r\n显示内容=旧通知\r\n"_qs;
const QString kNew = u"[信息]\r\n信息号=2026112101\r\n考试时间=9026\r\n[通知1]\r\n显示内容=新通知\r\n"_qs;
const QString kSameNumber = u"[信息]\r\n信息号=2026110101\r\n考试时间=9030\r\n[通知1]\r\n显示内容=改过的通知\r\n"_qs;
const QString kNoNumber = u"[信息]\r\n考试时间=9026\r\n[通知1]\r\n显示内容=没有信息号\r\n"_qs;

QByteArray bytesOf(const test::TestEnv& t, const QString& suffix) { return ReadBytes(t.path(suffix)); }

}  // namespace

TEST(NewsAddress, TheSupportSiteAndItsOverride) {
  test::TestEnv t;
  EXPECT_EQ(SupportSite(t.env), u"https://mingjing.example.org"_qs);
  EXPECT_EQ(NewsAddress(t.env), u"https://mingjing.example.org/newlumen.txt"_qs);
  t.writeGbk(kSiteFile, u"[支持站点]\r\n地址=http://127.0.0.1:8080/site/\r\n"_qs);
  EXPECT_EQ(SupportSite(t.env), u"http://127.0.0.1:8080/site"_qs);
  EXPECT_EQ(NewsAddress(t.env), u"http://127.0.0.1:8080/site/newlumen.txt"_qs);
  t.writeGbk(kSiteFile, u"[支持站点]\r\n地址=\r\n"_qs);
  EXPECT_EQ(NewsAddress(t.env), u"https://mingjing.example.org/newlumen.txt"_qs);
  t.writeGbk(kSiteFile, u"[支持站点]\r\n地址=无\r\n"_qs);
  EXPECT_EQ(SupportSite(t.env), u""_qs);
  EXPECT_EQ(NewsAddress(t.env), u""_qs);
}

TEST(NewsText, ANewFileWithoutALocalOneBecomesTheLocalOne) {
  test::TestEnv t;
  t.mkdir(u"\\ini"_qs);
  EXPECT_TRUE(TakeNewsText(t.env, kNew));
  EXPECT_EQ(bytesOf(t, kNewsFile), ToGbk(kNew));
  EXPECT_FALSE(FileExists(t.path(kNewsDownload)));
}

TEST(NewsText, ATextWithoutNumberAndNoLocalFileShowsNothing) {
  test::TestEnv t;
  t.mkdir(u"\\ini"_qs);
  EXPECT_FALSE(TakeNewsText(t.env, kNoNumber));
  EXPECT_EQ(bytesOf(t, kNewsDownload), ToGbk(kNoNumber));
  EXPECT_FALSE(FileExists(t.path(kNewsFile)));
}

TEST(NewsText, ATextWithoutNumberKeepsTheLocalFile) {
  test::TestEnv t;
  t.writeGbk(kNewsFile, kOld);
  EXPECT_TRUE(TakeNewsText(t.env, kNoNumber));
  EXPECT_EQ(bytesOf(t, kNewsFile), ToGbk(kOld));
  EXPECT_EQ(bytesOf(t, kNewsDownload), ToGbk(kNoNumber));
}

TEST(NewsText, AnUnchangedNumberKeepsTheLocalFileWhateverElseChanged) {
  test::TestEnv t;
  t.writeGbk(kNewsFile, kOld);
  EXPECT_TRUE(TakeNewsText(t.env, kSameNumber));
  EXPECT_EQ(bytesOf(t, kNewsFile), ToGbk(kOld));
  EXPECT_EQ(bytesOf(t, kNewsDownload), ToGbk(kSameNumber));
}

TEST(NewsText, ANewNumberReplacesTheLocalFileAndTheDownloadStays) {
  test::TestEnv t;
  t.writeGbk(kNewsFile, kOld);
  EXPECT_TRUE(TakeNewsText(t.env, kNew));
  EXPECT_EQ(bytesOf(t, kNewsFile), ToGbk(kNew));
  EXPECT_EQ(bytesOf(t, kNewsDownload), ToGbk(kNew));
}

TEST(NewsText, AFileThatCannotBeWrittenEndsTheStepSilently) {
  test::TestEnv t;  // no \\ini folder
  EXPECT_FALSE(TakeNewsText(t.env, kNew));
  EXPECT_FALSE(FileExists(t.path(kNewsFile)));
}

TEST(NewsText, NothingOrAShortTextLeavesTheFilesAlone) {
  test::TestEnv t;
  t.mkdir(u"\\ini"_qs);
  EXPECT_FALSE(TakeNewsText(t.env, QString()));
  EXPECT_FALSE(TakeNewsText(t.env, u"[信息]\r\n信息号=12345"_qs));  // 19 characters
  EXPECT_FALSE(FileExists(t.path(kNewsDownload)));
  t.writeGbk(kNewsFile, kOld);
  t.writeGbk(kNewsDownload, kNoNumber);
  EXPECT_TRUE(TakeNewsText(t.env, u"1234567890123456789"_qs));
  EXPECT_EQ(bytesOf(t, kNewsFile), ToGbk(kOld));
  EXPECT_EQ(bytesOf(t, kNewsDownload), ToGbk(kNoNumber));
  // Twenty characters are enough to be taken.
  EXPECT_TRUE(TakeNewsText(t.env, u"12345678901234567890"_qs));
  EXPECT_EQ(bytesOf(t, kNewsDownload), QByteArray("12345678901234567890"));
  EXPECT_EQ(bytesOf(t, kNewsFile), ToGbk(kOld));
}

TEST(NewsText, AFetchGivesWhatTheServerAnswered) {
  FetchResult r;
  r.ok = true;
  r.status = 200;
  r.body = ToGbk(kNew);
  EXPECT_EQ(NewsTextOf(r), kNew);
  // An error page is a text like any other: it has no 信息号.
  r.ok = false;
  r.status = 404;
  r.body = "<html><body>404 Not Found</body></html>";
  r.error = u"x"_qs;
  EXPECT_EQ(NewsTextOf(r), u"<html><body>404 Not Found</body></html>"_qs);
  // No answer, a time-out, an answer given up for its size.
  r.status = 0;
  EXPECT_EQ(NewsTextOf(r), u""_qs);
  r.status = 200;
  r.timedOut = true;
  EXPECT_EQ(NewsTextOf(r), u""_qs);
  r.timedOut = false;
  r.body.clear();
  EXPECT_EQ(NewsTextOf(r), u""_qs);
}

namespace {

struct Download : ::testing::Test {
  test::TestEnv t;
  HttpServer server;
  bool finished = false;
  bool shown = false;
  void SetUp() override {
    ASSERT_TRUE(server.start());
    test::UseSupportSite(t, server.base());
  }
  // Starts the download and waits for its end; false when it did not end
  // within ms.
  bool run(NewsDownload& d, int ms = 3000) {
    d.start([this](bool show) {
      finished = true;
      shown = show;
    });
    return QTest::qWaitFor([this] { return finished; }, ms);
  }
};

}  // namespace

TEST_F(Download, ANewFileIsFetchedAndTaken) {
  server.setText(u"/newlumen.txt"_qs, ToGbk(kNew));
  t.writeGbk(kNewsFile, kOld);
  NewsDownload d(t.env);
  ASSERT_TRUE(run(d));
  EXPECT_TRUE(shown);
  EXPECT_EQ(server.requests, QList<QString>{u"/newlumen.txt"_qs});
  EXPECT_EQ(bytesOf(t, kNewsFile), ToGbk(kNew));
  EXPECT_EQ(bytesOf(t, kNewsDownload), ToGbk(kNew));
}

TEST_F(Download, ANotFoundPageIsWrittenAndChangesNothingElse) {
  t.writeGbk(kNewsFile, kOld);
  NewsDownload d(t.env);
  ASSERT_TRUE(run(d));
  EXPECT_TRUE(shown);
  EXPECT_EQ(bytesOf(t, kNewsFile), ToGbk(kOld));
  EXPECT_EQ(bytesOf(t, kNewsDownload), QByteArray("<html><body>404 Not Found</body></html>"));
}

TEST_F(Download, AShortAnswerIsPassedOver) {
  server.setText(u"/newlumen.txt"_qs, "[信息]");
  t.writeGbk(kNewsFile, kOld);
  NewsDownload d(t.env);
  ASSERT_TRUE(run(d));
  EXPECT_TRUE(shown);
  EXPECT_FALSE(FileExists(t.path(kNewsDownload)));
  EXPECT_EQ(bytesOf(t, kNewsFile), ToGbk(kOld));
}

TEST_F(Download, ATenMegabyteAnswerIsGivenUp) {
  QByteArray big = ToGbk(kNew);
  big.append(QByteArray(10 * 1024 * 1024, 'x'));
  server.setText(u"/newlumen.txt"_qs, big);
  t.writeGbk(kNewsFile, kOld);
  NewsDownload d(t.env);
  ASSERT_TRUE(run(d, 10000));
  EXPECT_TRUE(shown);
  EXPECT_FALSE(FileExists(t.path(kNewsDownload)));
  EXPECT_EQ(bytesOf(t, kNewsFile), ToGbk(kOld));
}

TEST_F(Download, ASilentServerIsGivenUpAfterFiveSecondsAndTheLoopRunsMeanwhile) {
  HttpServer::Route silent;
  silent.silent = true;
  server.set(u"/newlumen.txt"_qs, silent);
  NewsDownload d(t.env);
  int ticks = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [&] { ++ticks; });
  timer.start(100);
  QElapsedTimer clock;
  clock.start();
  d.start([this](bool show) {
    finished = true;
    shown = show;
  });
  EXPECT_FALSE(finished);
  EXPECT_TRUE(d.pending());
  ASSERT_TRUE(QTest::qWaitFor([this] { return finished; }, 9000));
  EXPECT_GE(clock.elapsed(), 4500);
  EXPECT_LT(clock.elapsed(), 8000);
  EXPECT_GT(ticks, 30);
  // No local file: nothing to show.
  EXPECT_FALSE(shown);
  EXPECT_FALSE(d.pending());
}

TEST_F(Download, NoSiteFetchesNothing) {
  test::NoSupportSite(t);
  t.writeGbk(kNewsFile, kOld);
  NewsDownload d(t.env);
  d.start([this](bool show) {
    finished = true;
    shown = show;
  });
  // Done before start returned.
  EXPECT_TRUE(finished);
  EXPECT_TRUE(shown);
  EXPECT_TRUE(server.requests.isEmpty());
}

TEST_F(Download, TheEndOfTheProgramWaitsForTheFetchUnderWay) {
  HttpServer::Route slow;
  slow.body = ToGbk(kNew);
  slow.delayMs = 600;
  server.set(u"/newlumen.txt"_qs, slow);
  t.writeGbk(kNewsFile, kOld);
  NewsDownload d(t.env);
  d.start([this](bool) { finished = true; });
  ASSERT_TRUE(d.pending());
  d.finishNow();
  EXPECT_FALSE(d.pending());
  // The window's part is over: nothing is shown any more.
  EXPECT_FALSE(finished);
  EXPECT_EQ(bytesOf(t, kNewsFile), ToGbk(kNew));
}

TEST(NewsText, ANoticeValueIsCutAt127Bytes) {
  test::TestEnv t;
  // 100 Chinese characters are 200 bytes of GBK: 63 of them fit.
  t.writeGbk(kNewsFile, u"[通知1]\r\n显示内容="_qs + QString(100, u'通') + u"\r\n链接=https://example.org/"_qs +
                            QString(150, u'x') + u"\r\n"_qs);
  const QList<Notice> n = ReadNotices(t.path(kNewsFile));
  EXPECT_EQ(n[0].caption, QString(63, u'通'));
  EXPECT_EQ(n[0].link, u"https://example.org/"_qs + QString(127 - 20, u'x'));
}
