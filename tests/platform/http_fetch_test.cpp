#include "platform/http_fetch.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

#include "support/http_server.h"

using namespace mj;
using mj::test::HttpServer;

namespace {

struct Served : ::testing::Test {
  HttpServer server;
  void SetUp() override { ASSERT_TRUE(server.start()); }
};

}  // namespace

TEST_F(Served, AWholeAnswerComesWithItsBody) {
  server.setText(u"/newlumen.txt"_qs, "[news]\r\nx=1\r\n");
  const FetchResult r = FetchNow(server.url(u"/newlumen.txt"_qs), 5000, 1 << 20);
  EXPECT_TRUE(r.ok);
  EXPECT_EQ(r.status, 200);
  EXPECT_EQ(r.body, QByteArray("[news]\r\nx=1\r\n"));
  EXPECT_TRUE(r.error.isEmpty());
  EXPECT_EQ(server.requests, QList<QString>{u"/newlumen.txt"_qs});
}

TEST_F(Served, AMissingFileIsNotOkAndNamesTheStatusAndAddress) {
  const QUrl url = server.url(u"/nothing.txt"_qs);
  const FetchResult r = FetchNow(url, 5000, 1 << 20);
  EXPECT_FALSE(r.ok);
  EXPECT_EQ(r.status, 404);
  EXPECT_EQ(r.error, u"从 "_qs + url.toDisplayString() + u" 下载失败：服务器回答 404。"_qs);
}

TEST_F(Served, ASilentServerTimesOutAndTheEventLoopRunsMeanwhile) {
  HttpServer::Route silent;
  silent.silent = true;
  server.set(u"/slow"_qs, silent);
  int ticks = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [&] { ++ticks; });
  timer.start(50);
  QElapsedTimer clock;
  clock.start();
  const FetchResult r = FetchNow(server.url(u"/slow"_qs), 500, 1 << 20);
  EXPECT_FALSE(r.ok);
  EXPECT_TRUE(r.timedOut);
  EXPECT_GE(clock.elapsed(), 450);
  EXPECT_GT(ticks, 3);
  EXPECT_EQ(r.error, u"连接 "_qs + server.url(u"/slow"_qs).toDisplayString() + u" 超时，未能下载。"_qs);
}

TEST_F(Served, AnAnswerOverTheLimitIsGivenUp) {
  server.setText(u"/big"_qs, QByteArray(100000, 'x'));
  const FetchResult r = FetchNow(server.url(u"/big"_qs), 5000, 1000);
  EXPECT_FALSE(r.ok);
  EXPECT_TRUE(r.body.isEmpty());
  EXPECT_TRUE(r.error.contains(u"太大"_qs));
}

TEST_F(Served, NoServerAtAllIsNotOk) {
  const QUrl url(u"http://127.0.0.1:1/x"_qs);
  const FetchResult r = FetchNow(url, 2000, 1000);
  EXPECT_FALSE(r.ok);
  EXPECT_EQ(r.status, 0);
  EXPECT_TRUE(r.error.startsWith(u"无法连接 "_qs + url.toDisplayString()));
}

TEST_F(Served, AbortBeforeTheAnswerCallsNothing) {
  HttpServer::Route slow;
  slow.delayMs = 200;
  slow.body = "late";
  server.set(u"/late"_qs, slow);
  HttpFetch fetch;
  bool called = false;
  fetch.get(server.url(u"/late"_qs), 5000, 1000, [&](const FetchResult&) { called = true; });
  EXPECT_TRUE(fetch.busy());
  fetch.abort();
  EXPECT_FALSE(fetch.busy());
  QTest::qWait(400);
  EXPECT_FALSE(called);
}

TEST_F(Served, ProgressIsReported) {
  server.setText(u"/f"_qs, QByteArray(5000, 'y'));
  HttpFetch fetch;
  qint64 last = -1;
  bool done = false;
  fetch.get(
      server.url(u"/f"_qs), 5000, 1 << 20, [&](const FetchResult& r) { done = r.ok; },
      [&](qint64 received, qint64) { last = received; });
  for (int i = 0; i < 100 && !done; ++i) QTest::qWait(50);
  ASSERT_TRUE(done);
  EXPECT_EQ(last, 5000);
}
