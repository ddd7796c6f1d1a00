// The knowledge files fetched from a real local HTTP server into 新知识点.
#include "knowledge/knowledge_download.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTest>

#include "knowledge/knowledge_points.h"
#include "log/news.h"
#include "platform/paths.h"
#include "platform/textfile.h"
#include "support/http_server.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

using test::HttpServer;

QByteArray FileText(int i) {
  return ToGbk(u"[知识点]\r\n初始信息="_qs + QString::number(i) + u"\r\n["_qs + QString::number(i) +
               u"]\r\n参见法条=《刑法》1.\r\n"_qs);
}

class Download : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(server.start()); }
  // Runs a download to its end; the result.
  KnowledgeDownloadResult fetch(const QList<int>& numbers, const QString& folder) {
    KnowledgeDownload d(t.env);
    bool done = false;
    KnowledgeDownloadResult result;
    d.start(folder, numbers, [this](int permille) { progress << permille; },
            [&](const KnowledgeDownloadResult& r) {
              result = r;
              done = true;
            });
    EXPECT_TRUE(QTest::qWaitFor([&] { return done; }, 20000));
    EXPECT_FALSE(d.busy());
    return result;
  }
  QString folder() const { return server.url(u"/zsd/"_qs).toString(); }
  QString local(int i, const char* ext) const {
    return t.path(u"\\新知识点\\newzsd"_qs + QString::number(i) + u"."_qs + QString::fromLatin1(ext));
  }

  test::TestEnv t;
  HttpServer server;
  QList<int> progress;
};

TEST_F(Download, FilesOneToNAreFetched) {
  for (int i = 1; i <= 3; ++i) server.setText(u"/zsd/newzsd"_qs + QString::number(i) + u".txt"_qs, FileText(i));
  const KnowledgeDownloadResult r = fetch({1, 2, 3}, folder());
  EXPECT_EQ(r.fetched, (QList<int>{1, 2, 3}));
  EXPECT_TRUE(r.failures.isEmpty()) << (r.failures.join(u"\n"_qs)).toStdString();
  for (int i = 1; i <= 3; ++i) EXPECT_EQ(ReadBytes(local(i, "txt")), FileText(i)) << i;
  EXPECT_EQ(server.requests, (QList<QString>{u"/zsd/newzsd1.txt"_qs, u"/zsd/newzsd2.txt"_qs, u"/zsd/newzsd3.txt"_qs}));
  ASSERT_FALSE(progress.isEmpty());
  EXPECT_EQ(progress.first(), 0);
  EXPECT_EQ(progress.last(), 1000);
  EXPECT_TRUE(std::is_sorted(progress.begin(), progress.end()));
  EXPECT_EQ(KnowledgeDownloadText(r), u"下载了3个知识点文件。"_qs);
}

TEST_F(Download, AMissingFileIsNamedTheOthersCome) {
  server.setText(u"/zsd/newzsd1.txt"_qs, FileText(1));
  server.setText(u"/zsd/newzsd2.txt"_qs, "not found", 404);
  server.setText(u"/zsd/newzsd3.txt"_qs, "<html>error page</html>");
  const KnowledgeDownloadResult r = fetch({1, 2, 3}, folder());
  EXPECT_EQ(r.fetched, QList<int>{1});
  ASSERT_EQ(r.failures.size(), 2);
  EXPECT_TRUE(r.failures[0].contains(folder() + u"newzsd2.txt"_qs)) << (r.failures[0]).toStdString();
  EXPECT_TRUE(r.failures[0].contains(u"404"_qs)) << (r.failures[0]).toStdString();
  EXPECT_EQ(r.failures[1], folder() + u"newzsd3.txt：下载的内容不是知识点文件（没有[知识点]一节）。"_qs);
  EXPECT_FALSE(FileExists(local(2, "txt")));
  EXPECT_FALSE(FileExists(local(3, "txt")));
  EXPECT_EQ(KnowledgeDownloadText(r), u"下载了1个知识点文件。\r\n\r\n下面的文件没能下载：\r\n"_qs + r.failures.join(u"\r\n"_qs));
}

TEST_F(Download, AServerThatDoesNotAnswerIsGivenUpAfterFiveSeconds) {
  HttpServer::Route silent;
  silent.silent = true;
  server.set(u"/zsd/newzsd1.txt"_qs, silent);
  server.setText(u"/zsd/newzsd2.txt"_qs, FileText(2));
  QElapsedTimer timer;
  timer.start();
  const KnowledgeDownloadResult r = fetch({1, 2}, folder());
  const qint64 ms = timer.elapsed();
  EXPECT_GE(ms, 4500);
  EXPECT_LT(ms, 15000);
  EXPECT_EQ(r.fetched, QList<int>{2});
  ASSERT_EQ(r.failures.size(), 1);
  EXPECT_TRUE(r.failures[0].contains(folder() + u"newzsd1.txt"_qs)) << (r.failures[0]).toStdString();
  EXPECT_FALSE(FileExists(local(1, "txt")));
}

TEST_F(Download, OnlyTextIsFetchedAndNothingIsStarted) {
  server.setText(u"/zsd/newzsd1.exe"_qs, "MZ program");
  server.setText(u"/zsd/newzsd1.txt"_qs, FileText(1));
  t.mkdir(u"\\新知识点"_qs);
  WriteBytesAtomic(local(1, "exe"), "MZ old package");
  const KnowledgeDownloadResult r = fetch({1}, folder());
  EXPECT_EQ(r.fetched, QList<int>{1});
  EXPECT_EQ(server.requests, QList<QString>{u"/zsd/newzsd1.txt"_qs});
  EXPECT_TRUE(t.shell.calls.isEmpty());
  // The old package stays where it is, untouched.
  EXPECT_EQ(ReadBytes(local(1, "exe")), QByteArray("MZ old package"));
}

TEST_F(Download, WithoutAWebFolderNothingIsFetched) {
  const KnowledgeDownloadResult r = fetch({1}, QString());
  EXPECT_TRUE(r.fetched.isEmpty());
  EXPECT_EQ(r.failures, QStringList{u"新闻文件没有给出知识点文件的下载网址（“知识点文件下载网上目录”）。"_qs});
  EXPECT_TRUE(server.requests.isEmpty());
}

TEST_F(Download, TheWebFolderComesFromTheNewsFile) {
  t.writeGbk(kNewsFile, u"[信息]\r\n知识点文件个数=2\r\n知识点文件下载网上目录="_qs + server.url(u"/zsd"_qs).toString() +
                            u"\r\n"_qs);
  EXPECT_EQ(KnowledgeFileFolder(t.env), folder());
  server.setText(u"/zsd/newzsd2.txt"_qs, FileText(2));
  t.mkdir(u"\\新知识点"_qs);
  WriteBytesAtomic(local(1, "tx_"), FileText(1));
  const QList<int> missing = MissingKnowledgeFiles(t.env, KnowledgeFileCount(t.env));
  EXPECT_EQ(missing, QList<int>{2});
  const KnowledgeDownloadResult r = fetch(missing, KnowledgeFileFolder(t.env));
  EXPECT_EQ(r.fetched, QList<int>{2});
  EXPECT_EQ(server.requests, QList<QString>{u"/zsd/newzsd2.txt"_qs});
}

}  // namespace
}  // namespace mj
