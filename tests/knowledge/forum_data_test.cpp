// The forum data generated from the banks into a real SQLite database (and
// a PostgreSQL server when one can be started here).
#include "knowledge/forum_data.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSqlError>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QFileInfo>
#include <QHostAddress>
#include <algorithm>
#include <unistd.h>

#include "bank/bank_text.h"
#include "bank/tables.h"
#include "platform/dbftable.h"
#include "platform/paths.h"
#include "platform/text_toolkit.h"
#include "platform/textfile.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

const NewsLinks kLinks{u"https://mingjing.example.org/bbs/dispbbs.asp"_qs, u"https://mingjing.example.org/bbs/nextitem.asp"_qs,
                       u"&page=1"_qs, u"&from=mingjing"_qs};

// The demonstration folder, with its forum database, 15 questions in each
// of three laws: 示例刑法 (board 14), 行政处罚示例规定 (16), 合同示例规则 (17).
class Forum : public ::testing::Test {
 protected:
  void SetUp() override {
    if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "no demonstration data";
    t = std::make_unique<test::TestEnv>(test::DemoDataDir());
    ASSERT_TRUE(FileExists(t->path(kForumDbFile)));
  }
  void open() {
    QString error;
    ASSERT_TRUE(OpenForumDatabase(t->env, db, &error)) << error.toStdString();
  }
  ForumRunResult run() { return ProcessForumData(t->env, db, counters, kLinks); }
  QList<QVariantList> rows(const QString& sql) const {
    QList<QVariantList> out;
    QSqlQuery q(db.db());
    EXPECT_TRUE(q.exec(sql)) << sql.toStdString() << q.lastError().text().toStdString();
    while (q.next()) {
      QVariantList r;
      for (int i = 0; i < q.record().count(); ++i) r << q.value(i);
      out << r;
    }
    return out;
  }
  qint64 count(const QString& table) const { return rows(u"SELECT COUNT(*) FROM "_qs + table).value(0).value(0).toLongLong(); }
  QList<int> board(int id) const {
    const QVariantList r = rows(u"SELECT lastbbsnum, lasttopicnum, todaynum FROM board WHERE boardid = "_qs + QString::number(id)).value(0);
    return {r.value(0).toInt(), r.value(1).toInt(), r.value(2).toInt()};
  }
  // boardid and topicid of a question in items.mmd.
  std::pair<int, int> itemForum(const QString& id) const {
    const DbfTable items = DbfTable::open(t->path(u"\\dbf\\items.mmd"_qs));
    for (const int rec : items.rows())
      if (items.trimmedText(rec, QStringLiteral("itemid")) == id)
        return {static_cast<int>(items.number(rec, QStringLiteral("boardid"))),
                static_cast<int>(items.number(rec, QStringLiteral("topicid")))};
    return {-1, -1};
  }
  QString stem(const QString& id) const {
    QString provider;
    return GetField(GetOneShiTi(ReadFileAsText(BankFilePath(t->env, id)), ItemSerial(id)), 1, provider);
  }

  std::unique_ptr<test::TestEnv> t;
  SqlConnection db;
  ForumCounters counters;
};

TEST(ForumTitle, TwentyCharactersAreKeptMoreAreCut) {
  EXPECT_EQ(ForumTitle(u"刑法学块"_qs, 1, u"示例刑法"_qs, 1), u"刑法学块 第1题,示例刑法 第1题"_qs);
  // 11 + 2 + 1 + 2 + 4 = 20 characters: not cut.
  EXPECT_EQ(ForumTitle(u"行政法与行政诉讼法学块"_qs, 1, u"行政处罚"_qs, 3), u"行政法与行政诉讼法学块 第1题,行政处罚 第3题"_qs);
  EXPECT_EQ(ForumTitle(u"行政法与行政诉讼法学块"_qs, 1, u"行政处罚示例规定"_qs, 3),
            u"行政法与行政诉讼法学块 第1题,行政处罚* 第3题"_qs);
  EXPECT_EQ(ForumTitle(u"行政法与行政诉讼法学块"_qs, 10, u"行政处罚示例规定"_qs, 10),
            u"行政法与行政诉讼法学块 第10题,行政处* 第10题"_qs);
}

TEST(ForumTitle, BoardNamesAndShortNames) {
  EXPECT_EQ(BoardName(6), u"法理学块"_qs);
  EXPECT_EQ(BoardName(13), u"法律职业道德学块"_qs);
  EXPECT_EQ(BoardName(19), u"民事诉讼与仲裁学块"_qs);
  EXPECT_EQ(BoardName(5), u""_qs);
  EXPECT_EQ(BoardName(20), u""_qs);
  EXPECT_EQ(LawShortName(u"《中华人民共和国刑法》（2020修正）"_qs), u"中华人民共和国刑法"_qs);
  EXPECT_EQ(LawShortName(u"刑法"_qs), u"刑法"_qs);
}

TEST(ForumBody, LinesAndLineBreaks) {
  const QString body = ForumBody(u"T"_qs, 2, 7, u"题干"_qs, u"10001200001"_qs, u"AB"_qs, u"《刑法》1．"_qs, 14, kLinks);
  EXPECT_EQ(body, u"T\r\n\r\n题型:多选题\r\n\r\n7、题干\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n"
                  u"本题在明镜学伴中的交流号为: *10001200001*\r\n\r\n\r\n\r\n\r\n"
                  u"答案:AB\r\n参见:《刑法》1．\r\n"
                  u"法条详解:https://mingjing.example.org/bbs/dispbbs.asp?boardid=14&topid=7&page=1\r\n"
                  u"做下一题:https://mingjing.example.org/bbs/nextitem.asp?boardID=14&ID=8&from=mingjing"_qs);
  EXPECT_TRUE(ForumBody(u"T"_qs, 1, 1, {}, {}, {}, {}, 6, kLinks).contains(u"题型:单选题\r\n"_qs));
  EXPECT_TRUE(ForumBody(u"T"_qs, 3, 1, {}, {}, {}, {}, 6, kLinks).contains(u"题型:任选题\r\n"_qs));
}

TEST_F(Forum, TheDemonstrationBanksGiveTheirTopicsPostsAndItems) {
  open();
  const ForumRunResult r = run();
  ASSERT_TRUE(r.ok) << r.error.toStdString();
  EXPECT_EQ(r.questions, 45);
  EXPECT_EQ(counters.topic, 45);
  EXPECT_EQ(counters.total, 45);
  const QList<BoxRecord> boxes = t->boxes.take();
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_EQ(boxes[0].text, u"ok"_qs);

  EXPECT_EQ(count(u"topic"_qs), 45);
  EXPECT_EQ(count(u"bbs1"_qs), 45);
  EXPECT_EQ(count(u"iteminfo"_qs), 45);
  // Boards: the totals in 5, each board its own count.
  EXPECT_EQ(board(5), (QList<int>{45, 45, 45}));
  EXPECT_EQ(board(14), (QList<int>{15, 15, 15}));
  EXPECT_EQ(board(16), (QList<int>{15, 15, 15}));
  EXPECT_EQ(board(17), (QList<int>{15, 15, 15}));
  EXPECT_EQ(board(6), (QList<int>{0, 0, 0}));

  const QString today = t->env.today().toString(Qt::ISODate);
  // The first topic, every field.
  const QVariantList topic = rows(u"SELECT topicID, title, boardid, pollid, locktopic, child, postusername, postuserid, "
                                  u"dateandtime, hits, expression, votetotal, lastpost, posttable, istop, lastposttime, "
                                  u"isbest, isvote FROM topic ORDER BY topicID LIMIT 1"_qs)
                                 .value(0);
  EXPECT_EQ(topic, (QVariantList{1, u"刑法学块 第1题,示例刑法 第1题"_qs, 14, 0, 0, 0, u"公民木舟"_qs, 1, today, 0,
                                 u"face1.gif"_qs, 0, u"公民木舟$16$03-5-31 8:53:07$民法第一贴内容。$$1$8$17"_qs,
                                 u"bbs1"_qs, 0, today, 0, 0}));
  // Titles across the boards: the count per board starts again, the
  // question's place runs within its law.
  const QList<QVariantList> titles = rows(u"SELECT title, boardid FROM topic ORDER BY topicID"_qs);
  ASSERT_EQ(titles.size(), 45);
  EXPECT_EQ(titles[14][0].toString(), u"刑法学块 第15题,示例刑法 第15题"_qs);
  EXPECT_EQ(titles[15][0].toString(), u"行政法与行政诉讼法学块 第1题,行政处罚* 第1题"_qs);
  EXPECT_EQ(titles[15][1].toInt(), 16);
  EXPECT_EQ(titles[24][0].toString(), u"行政法与行政诉讼法学块 第10题,行政处* 第10题"_qs);
  EXPECT_EQ(titles[30][0].toString(), u"民法学块 第1题,合同示例规则 第1题"_qs);
  EXPECT_EQ(titles[30][1].toInt(), 17);

  // The first post, every field; its body in full.
  const QVariantList post =
      rows(u"SELECT ParentId, boardid, username, postuserid, topic, body, dateandtime, length, rootid, layer, orders, "
           u"isbest, ip, expression, locktopic, signflag, emailflag, isupload, isaudit FROM bbs1 ORDER BY rootid LIMIT 1"_qs)
          .value(0);
  const QString body = u"刑法学块 第1题,示例刑法 第1题\r\n\r\n题型:单选题\r\n\r\n1、"_qs + stem(u"10001100001"_qs) +
                       u"\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n本题在明镜学伴中的交流号为: *10001100001*\r\n\r\n\r\n\r\n\r\n"
                       u"答案:B\r\n参见:《示例刑法》3．\r\n"
                       u"法条详解:https://mingjing.example.org/bbs/dispbbs.asp?boardid=14&topid=1&page=1\r\n"
                       u"做下一题:https://mingjing.example.org/bbs/nextitem.asp?boardID=14&ID=2&from=mingjing"_qs;
  EXPECT_TRUE(stem(u"10001100001"_qs).startsWith(u"根据《示例刑法》，下列关于罪刑法定原则的表述，正确的是(      )"_qs))
      << stem(u"10001100001"_qs).toStdString();
  EXPECT_TRUE(stem(u"10001100001"_qs).contains(u"D．罪刑法定原则只适用于故意犯罪"_qs));
  EXPECT_EQ(post, (QVariantList{0, 14, u"公民木舟"_qs, 1, u"刑法学块 第1题,示例刑法 第1题"_qs, body, today,
                                static_cast<int>(body.size() * 2), 1, 1, 0, 0, u"127.0.0.1"_qs, u"face1.gif"_qs, 0, 1, 0,
                                0, 0}));
  // Every post carries its question's text as the practice shows it.
  for (const QVariantList& p : rows(u"SELECT i.ItemId, b.body FROM bbs1 b JOIN iteminfo i ON i.topicid = b.rootid"_qs))
    EXPECT_TRUE(p[1].toString().contains(u"、"_qs + stem(p[0].toString()) + u"\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n本题"_qs))
        << p[0].toString().toStdString();

  // iteminfo: one row per question, in ID order within each law.
  const QList<QVariantList> items =
      rows(u"SELECT boardid, topicid, answer, aboutlaw, lawid, ItemId, newflag FROM iteminfo ORDER BY topicid"_qs);
  ASSERT_EQ(items.size(), 45);
  EXPECT_EQ(items[0], (QVariantList{14, 1, u"B"_qs, u"《示例刑法》3．"_qs, u"10001"_qs, u"10001100001"_qs, 0}));
  EXPECT_EQ(items[7], (QVariantList{14, 8, u"ABD"_qs, u"《示例刑法》23．"_qs, u"10001"_qs, u"10001200001"_qs, 0}));
  EXPECT_EQ(items[15], (QVariantList{16, 16, u"A"_qs, u"《行政处罚示例规定》6．"_qs, u"10002"_qs, u"10002100001"_qs, 0}));
  EXPECT_EQ(items[44], (QVariantList{17, 45, u"ABC"_qs, u"《合同示例规则》2．"_qs, u"10003"_qs, u"10003300003"_qs, 0}));
  // The question table learns board and topic.
  EXPECT_EQ(itemForum(u"10001100001"_qs), std::make_pair(14, 1));
  EXPECT_EQ(itemForum(u"10002100001"_qs), std::make_pair(16, 16));
  EXPECT_EQ(itemForum(u"10003300003"_qs), std::make_pair(17, 45));
}

TEST_F(Forum, TheNextQuestionLinkRunsAcrossLawsAndBoards) {
  open();
  ASSERT_TRUE(run().ok);
  const QList<QVariantList> posts = rows(u"SELECT rootid, boardid, body FROM bbs1 ORDER BY rootid"_qs);
  ASSERT_EQ(posts.size(), 45);
  for (const QVariantList& p : posts) {
    const int topic = p[0].toInt();
    EXPECT_TRUE(p[2].toString().endsWith(u"nextitem.asp?boardID="_qs + p[1].toString() + u"&ID="_qs +
                                         QString::number(topic + 1) + u"&from=mingjing"_qs))
        << topic;
  }
  // The last of 示例刑法 (board 14) leads to topic 16, the first of 行政处罚示例规定 on board 16.
  EXPECT_TRUE(posts[14][2].toString().endsWith(u"?boardID=14&ID=16&from=mingjing"_qs));
  EXPECT_EQ(rows(u"SELECT boardid, ItemId FROM iteminfo WHERE topicid = 16"_qs).value(0),
            (QVariantList{16, u"10002100001"_qs}));
  // The last overall points to a topic that does not exist.
  EXPECT_TRUE(posts[44][2].toString().endsWith(u"?boardID=17&ID=46&from=mingjing"_qs));
  EXPECT_EQ(count(u"topic WHERE topicID = 46"_qs), 0);
}

TEST_F(Forum, ASecondRunContinuesTheNumbersARestartBeginsAgain) {
  open();
  ASSERT_TRUE(run().ok);
  ASSERT_TRUE(run().ok);
  EXPECT_EQ(counters.topic, 90);
  EXPECT_EQ(count(u"topic"_qs), 90);
  EXPECT_EQ(board(5), (QList<int>{90, 90, 90}));
  // The count per board starts at 0 for each board in each run.
  EXPECT_EQ(board(14), (QList<int>{15, 15, 15}));
  const QList<QVariantList> second = rows(u"SELECT topicid, ItemId FROM iteminfo WHERE topicid = 46"_qs);
  EXPECT_EQ(second.value(0), (QVariantList{46, u"10001100001"_qs}));
  EXPECT_TRUE(rows(u"SELECT body FROM bbs1 WHERE rootid = 46"_qs).value(0).value(0).toString().startsWith(
      u"刑法学块 第1题,示例刑法 第1题\r\n\r\n题型:单选题\r\n\r\n46、"_qs));
  EXPECT_EQ(itemForum(u"10001100001"_qs), std::make_pair(14, 46));
  // A new program run: the window's counters begin at 0 again, while the
  // forum's own topic numbers go on.
  counters = ForumCounters();
  ASSERT_TRUE(run().ok);
  EXPECT_EQ(rows(u"SELECT topicid FROM iteminfo ORDER BY rowid DESC LIMIT 1"_qs).value(0).value(0).toInt(), 45);
  EXPECT_EQ(itemForum(u"10001100001"_qs), std::make_pair(14, 1));
  EXPECT_EQ(rows(u"SELECT MAX(topicID) FROM topic"_qs).value(0).value(0).toInt(), 135);
  EXPECT_EQ(rows(u"SELECT rootid FROM bbs1 ORDER BY rowid DESC LIMIT 1"_qs).value(0).value(0).toInt(), 135);
}

TEST_F(Forum, AFailedLawLeavesTheDatabaseAsBeforeIt) {
  open();
  // The server refuses the posts of board 16: the second law fails.
  ASSERT_TRUE(QSqlQuery(db.db()).exec(
      u"CREATE TRIGGER refuse BEFORE INSERT ON bbs1 WHEN NEW.boardid = 16 BEGIN SELECT RAISE(ABORT, '拒绝'); END"_qs));
  const ForumRunResult r = run();
  EXPECT_FALSE(r.ok);
  EXPECT_EQ(r.questions, 15);
  EXPECT_EQ(count(u"topic"_qs), 15);
  EXPECT_EQ(count(u"bbs1"_qs), 15);
  EXPECT_EQ(count(u"iteminfo"_qs), 15);
  EXPECT_EQ(board(5), (QList<int>{15, 15, 15}));
  EXPECT_EQ(board(16), (QList<int>{0, 0, 0}));
  EXPECT_EQ(counters.topic, 15);
  EXPECT_EQ(itemForum(u"10001100007"_qs), std::make_pair(14, 7));
  // The question table keeps what it had for the law that failed.
  EXPECT_EQ(itemForum(u"10002100001"_qs), std::make_pair(16, 2001));
  const QList<BoxRecord> boxes = t->boxes.take();
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_TRUE(boxes[0].text.contains(u"拒绝"_qs)) << (boxes[0].text).toStdString();
  EXPECT_TRUE(boxes[0].text.endsWith(u"《行政处罚示例规定》的论坛数据没有写入；论坛数据库保持这部法律之前的样子。"_qs))
      << boxes[0].text.toStdString();
}

TEST_F(Forum, ALawWithoutQuestionsAddsNothing) {
  open();
  ASSERT_TRUE(QSqlQuery(db.db()).exec(u"INSERT INTO lawinfo (a, a1, c, firsttid) VALUES ('《空法》', '10009', '6', 0)"_qs));
  ASSERT_TRUE(run().ok);
  EXPECT_EQ(count(u"topic"_qs), 45);
  EXPECT_EQ(board(6), (QList<int>{0, 0, 0}));
}

TEST_F(Forum, ConvertLinksRewritesEveryBody) {
  open();
  ASSERT_TRUE(run().ok);
  qint64 lastRow = 0, rowsAll = 0;
  QString error;
  ASSERT_TRUE(ConvertLinks(db, u"https://mingjing.example.org/bbs/"_qs, u"http://new.example.org/forum/"_qs,
                           [&](qint64 row, qint64 n) {
                             lastRow = row;
                             rowsAll = n;
                           },
                           &error))
      << error.toStdString();
  EXPECT_EQ(lastRow, 45);
  EXPECT_EQ(rowsAll, 45);
  EXPECT_EQ(count(u"bbs1 WHERE body LIKE '%mingjing.example.org/bbs/%'"_qs), 0);
  EXPECT_EQ(count(u"bbs1 WHERE body LIKE '%http://new.example.org/forum/nextitem.asp?boardID=%'"_qs), 45);
}

TEST_F(Forum, TidyLawinfoTakesEachLawsFirstTopic) {
  open();
  ASSERT_TRUE(run().ok);
  QString error;
  ASSERT_TRUE(TidyLawinfo(db, &error)) << error.toStdString();
  // Only the three demonstration laws have questions; the laws the data may
  // ship besides them (the real statutes) have no topic and keep 0.
  EXPECT_EQ(rows(u"SELECT a1, firsttid FROM lawinfo WHERE firsttid <> 0 ORDER BY a1"_qs),
            (QList<QVariantList>{{u"10001"_qs, 1}, {u"10002"_qs, 16}, {u"10003"_qs, 31}}));
  EXPECT_EQ(count(u"lawinfo WHERE firsttid = 0"_qs), count(u"lawinfo"_qs) - 3);
}

// ---- Making the database -----------------------------------------------------------

TEST(ForumDatabase, AMissingFileIsMadeWithTheTables) {
  test::TestEnv t;
  t.mkdir(u"\\dbf"_qs);
  SqlConnection c;
  QString error;
  ASSERT_TRUE(OpenForumDatabase(t.env, c, &error)) << error.toStdString();
  QStringList tables = c.db().tables();
  tables.removeAll(u"sqlite_sequence"_qs);  // SQLite's own
  tables.sort();
  EXPECT_EQ(tables, (QStringList{u"bbs1"_qs, u"board"_qs, u"iteminfo"_qs, u"lawinfo"_qs, u"topic"_qs}));
  EXPECT_TRUE(FileExists(t.path(u"\\dbf\\db6.db"_qs)));
  EXPECT_FALSE(FileExists(t.path(u"\\dbf\\db6.db.new"_qs)));
}

TEST(ForumDatabase, AFileWithoutTheTablesIsNamed) {
  test::TestEnv t;
  t.mkdir(u"\\dbf"_qs);
  {
    SqlConnection c;
    SqlTarget target;
    target.database = t.path(u"\\dbf\\db6.db"_qs);
    QString error;
    ASSERT_TRUE(c.open(target, &error));
    ASSERT_TRUE(QSqlQuery(c.db()).exec(u"CREATE TABLE lawinfo (a TEXT)"_qs));
  }
  SqlConnection c;
  QString error;
  EXPECT_FALSE(OpenForumDatabase(t.env, c, &error));
  EXPECT_EQ(error, u"论坛数据库"_qs + MapSeparators(t.path(u"\\dbf\\db6.db"_qs)) + u"中没有表board。"_qs);
}

TEST(ForumDatabase, AJetFileThatCannotBeReadIsSaidAndNothingIsMade) {
  if (QStandardPaths::findExecutable(u"mdb-export"_qs).isEmpty()) GTEST_SKIP() << "mdbtools not installed";
  test::TestEnv t;
  t.mkdir(u"\\dbf"_qs);
  WriteBytesAtomic(t.path(u"\\dbf\\db6.mdb"_qs), QByteArray(4096, 'x'));
  SqlConnection c;
  QString error;
  EXPECT_FALSE(OpenForumDatabase(t.env, c, &error));
  EXPECT_TRUE(error.startsWith(u"mdb-export读不出旧的论坛数据库"_qs + MapSeparators(t.path(u"\\dbf\\db6.mdb"_qs)) +
                               u"中的表lawinfo"_qs))
      << error.toStdString();
  EXPECT_TRUE(error.endsWith(u"论坛数据库没有建立。"_qs)) << (error).toStdString();
  EXPECT_FALSE(FileExists(t.path(u"\\dbf\\db6.db"_qs)));
  EXPECT_FALSE(FileExists(t.path(u"\\dbf\\db6.db.new"_qs)));
  EXPECT_TRUE(FileExists(t.path(u"\\dbf\\db6.mdb"_qs)));
}

// The Jet reader's output taken in: a stand-in for mdb-export that prints
// what mdbtools prints for the two tables (its CSV with a header line).
TEST(ForumDatabase, TheJetTablesAreCopiedIn) {
  test::TestEnv t;
  t.mkdir(u"\\dbf"_qs);
  t.mkdir(u"\\bin"_qs);
  WriteBytesAtomic(t.path(u"\\dbf\\db6.mdb"_qs), "jet");
  const QString tool = t.path(u"\\bin\\mdb-export"_qs);
  WriteBytesAtomic(tool,
                   "#!/bin/sh\n"
                   "case \"$2\" in\n"
                   "lawinfo) printf 'a,a1,c,firsttid,other\\n\"\xe3\x80\x8a\xe5\x88\x91\xe6\xb3\x95\xe3\x80\x8b, "
                   "\"\"2020\"\"\",\"10001\",\"14\",12,x\\n\"\xe3\x80\x8a\xe6\xb0\x91\xe6\xb3\x95\xe3\x80\x8b\","
                   "\"10003\",\"17\",,y\\n' ;;\n"
                   "board) printf 'boardid,lastbbsnum,lasttopicnum,todaynum\\n5,3,3,3\\n14,2,2,2\\n' ;;\n"
                   "*) exit 1 ;;\n"
                   "esac\n");
  QFile::setPermissions(tool, QFile::permissions(tool) | QFileDevice::ExeOwner);
  const QByteArray path = qgetenv("PATH");
  qputenv("PATH", QFile::encodeName(MapSeparators(t.path(u"\\bin"_qs))) + ':' + path);
  SqlConnection c;
  QString error;
  const bool ok = OpenForumDatabase(t.env, c, &error);
  qputenv("PATH", path);
  ASSERT_TRUE(ok) << error.toStdString();
  QSqlQuery q(c.db());
  ASSERT_TRUE(q.exec(u"SELECT a, a1, c, firsttid FROM lawinfo ORDER BY rowid"_qs));
  ASSERT_TRUE(q.next());
  EXPECT_EQ(q.value(0).toString(), u"《刑法》, \"2020\""_qs);
  EXPECT_EQ(q.value(1).toString(), u"10001"_qs);
  EXPECT_EQ(q.value(2).toString(), u"14"_qs);
  EXPECT_EQ(q.value(3).toInt(), 12);
  ASSERT_TRUE(q.next());
  EXPECT_EQ(q.value(0).toString(), u"《民法》"_qs);
  EXPECT_TRUE(q.value(3).isNull());
  EXPECT_FALSE(q.next());
  ASSERT_TRUE(q.exec(u"SELECT boardid, lastbbsnum FROM board ORDER BY boardid"_qs));
  ASSERT_TRUE(q.next());
  EXPECT_EQ(q.value(0).toInt(), 5);
  EXPECT_EQ(q.value(1).toInt(), 3);
  ASSERT_TRUE(q.next());
  EXPECT_EQ(q.value(0).toInt(), 14);
}

TEST(ForumDatabase, WithoutMdbtoolsAJetFileIsSaid) {
  test::TestEnv t;
  t.mkdir(u"\\dbf"_qs);
  WriteBytesAtomic(t.path(u"\\dbf\\db6.mdb"_qs), "jet");
  const QByteArray path = qgetenv("PATH");
  qputenv("PATH", QFile::encodeName(MapSeparators(t.path(u"\\dbf"_qs))));
  SqlConnection c;
  QString error;
  const bool ok = OpenForumDatabase(t.env, c, &error);
  qputenv("PATH", path);
  EXPECT_FALSE(ok);
  EXPECT_EQ(error, u"找到了旧的论坛数据库"_qs + MapSeparators(t.path(u"\\dbf\\db6.mdb"_qs)) +
                       u"，但本机没有读取它的程序mdb-export（Debian软件包mdbtools）。装上mdbtools后再试；论坛数据库没有建立。"_qs);
  EXPECT_FALSE(FileExists(t.path(u"\\dbf\\db6.db"_qs)));
}

TEST(ForumDatabase, ParseCsvAsMdbExportWritesIt) {
  EXPECT_EQ(ParseCsv(u"a,b\n\"x,1\",\"say \"\"hi\"\"\"\n\"two\nlines\",\r\n"_qs),
            (QList<QStringList>{{u"a"_qs, u"b"_qs}, {u"x,1"_qs, u"say \"hi\""_qs}, {u"two\nlines"_qs, u""_qs}}));
  EXPECT_TRUE(ParseCsv(u""_qs).isEmpty());
}

TEST(ForumDatabase, TheSettingsNameAnotherDatabase) {
  test::TestEnv t;
  EXPECT_EQ(ForumTarget(t.env).driver, u"QSQLITE"_qs);
  EXPECT_EQ(ForumTarget(t.env).database, t.path(u"\\dbf\\db6.db"_qs));
  t.writeGbk(u"\\ini\\mingjing.ini"_qs,
             u"[论坛数据库]\r\n驱动=qpsql\r\n数据库=forum\r\n主机=127.0.0.1\r\n端口=5433\r\n用户=mj\r\n密码=pw\r\n"_qs);
  const SqlTarget target = ForumTarget(t.env);
  EXPECT_EQ(target.driver, u"QPSQL"_qs);
  EXPECT_EQ(target.database, u"forum"_qs);
  EXPECT_EQ(target.host, u"127.0.0.1"_qs);
  EXPECT_EQ(target.port, 5433);
  EXPECT_EQ(target.user, u"mj"_qs);
  EXPECT_EQ(target.password, u"pw"_qs);
  t.writeGbk(u"\\ini\\mingjing.ini"_qs, u"[论坛数据库]\r\n驱动=QNOSUCH\r\n"_qs);
  SqlConnection c;
  QString error;
  EXPECT_FALSE(OpenForumDatabase(t.env, c, &error));
  EXPECT_EQ(error, u"本机没有Qt的数据库驱动QNOSUCH，打不开QNOSUCH 数据库 。"_qs);
}

}  // namespace
}  // namespace mj

namespace mj {
namespace {

// A PostgreSQL server of the test's own, in a temporary folder, reached
// through its socket there; none when the server programs are missing or
// it does not start (the tests then skip).
class PostgresServer {
 public:
  PostgresServer() {
    const QString bin = serverPrograms();
    if (bin.isEmpty() || !dir_.isValid()) return;
    QFile::setPermissions(dir_.path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner |
                                           QFileDevice::ReadOther | QFileDevice::WriteOther | QFileDevice::ExeOther |
                                           QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ExeGroup);
    // The server refuses to run as root: it runs as the user postgres then.
    QStringList prefix;
    if (geteuid() == 0) {
      if (QStandardPaths::findExecutable(u"runuser"_qs).isEmpty()) return;
      prefix = {u"runuser"_qs, u"-u"_qs, u"postgres"_qs, u"--"_qs};
    }
    QTcpServer probe;
    if (!probe.listen(QHostAddress::LocalHost)) return;
    port_ = probe.serverPort();
    probe.close();
    const QString data = dir_.path() + u"/data"_qs;
    if (!run(prefix, bin + u"/initdb"_qs, {u"-D"_qs, data, u"-U"_qs, u"postgres"_qs, u"-A"_qs, u"trust"_qs, u"-E"_qs, u"UTF8"_qs}))
      return;
    started_ = run(prefix, bin + u"/pg_ctl"_qs,
                   {u"-D"_qs, data, u"-w"_qs, u"-l"_qs, dir_.path() + u"/log"_qs, u"-o"_qs,
                    u"-k "_qs + dir_.path() + u" -p "_qs + QString::number(port_) + u" -c listen_addresses="_qs, u"start"_qs});
    prefix_ = prefix;
    bin_ = bin;
  }
  ~PostgresServer() {
    if (started_)
      run(prefix_, bin_ + u"/pg_ctl"_qs, {u"-D"_qs, dir_.path() + u"/data"_qs, u"-m"_qs, u"immediate"_qs, u"stop"_qs});
  }
  bool started() const { return started_; }
  QString socketDir() const { return dir_.path(); }
  int port() const { return port_; }

 private:
  // The folder of initdb and pg_ctl: the one of initdb on the PATH, else
  // where Debian's packages put them, /usr/lib/postgresql/<version>/bin
  // (the newest version); empty when there is none.
  static QString serverPrograms() {
    auto hasBoth = [](const QString& dir) {
      return QFileInfo(dir + u"/initdb"_qs).isExecutable() && QFileInfo(dir + u"/pg_ctl"_qs).isExecutable();
    };
    const QString onPath = QStandardPaths::findExecutable(u"initdb"_qs);
    if (!onPath.isEmpty() && hasBoth(QFileInfo(onPath).canonicalPath())) return QFileInfo(onPath).canonicalPath();
    QDir lib(u"/usr/lib/postgresql"_qs);
    QList<int> versions;
    for (const QString& v : lib.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
      bool number = false;
      const int n = v.toInt(&number);
      if (number) versions.append(n);
    }
    std::sort(versions.rbegin(), versions.rend());
    for (int v : versions) {
      const QString dir = lib.filePath(QString::number(v) + u"/bin"_qs);
      if (hasBoth(dir)) return dir;
    }
    return {};
  }

  static bool run(const QStringList& prefix, const QString& program, const QStringList& args) {
    QProcess p;
    QStringList all = prefix;
    all << program << args;
    p.start(all.first(), all.mid(1));
    if (!p.waitForFinished(60000)) {
      p.kill();
      p.waitForFinished();
      return false;
    }
    return p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0;
  }

  QTemporaryDir dir_{QDir::tempPath() + u"/mj-pg-XXXXXX"_qs};
  QStringList prefix_;
  QString bin_;
  int port_ = 0;
  bool started_ = false;
};

TEST(ForumPostgres, TheDemonstrationBanksIntoAServerDatabase) {
  if (!QSqlDatabase::isDriverAvailable(u"QPSQL"_qs)) GTEST_SKIP() << "no Qt driver QPSQL";
  if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "no demonstration data";
  PostgresServer server;
  if (!server.started()) GTEST_SKIP() << "no PostgreSQL server could be started here";
  test::TestEnv t(test::DemoDataDir());
  t.writeGbk(u"\\ini\\mingjing.ini"_qs, u"[论坛数据库]\r\n驱动=QPSQL\r\n数据库=postgres\r\n主机="_qs + server.socketDir() +
                                           u"\r\n端口="_qs + QString::number(server.port()) + u"\r\n用户=postgres\r\n"_qs);
  SqlConnection db;
  QString error;
  ASSERT_TRUE(OpenForumDatabase(t.env, db, &error)) << error.toStdString();
  // The laws and boards of the demonstration database.
  {
    SqlConnection demo;
    SqlTarget target;
    target.database = t.path(kForumDbFile);
    ASSERT_TRUE(demo.open(target, &error));
    QSqlQuery from(demo.db());
    QSqlQuery to(db.db());
    ASSERT_TRUE(from.exec(u"SELECT a, a1, c FROM lawinfo ORDER BY rowid"_qs));
    to.prepare(u"INSERT INTO lawinfo (a, a1, c, firsttid) VALUES (?, ?, ?, 0)"_qs);
    while (from.next()) {
      for (int i = 0; i < 3; ++i) to.bindValue(i, from.value(i));
      ASSERT_TRUE(to.exec()) << to.lastError().text().toStdString();
    }
    for (int b = kTotalsBoard; b <= kLastBoard; ++b)
      ASSERT_TRUE(to.exec(u"INSERT INTO board (boardid, lastbbsnum, lasttopicnum, todaynum) VALUES ("_qs +
                          QString::number(b) + u", 0, 0, 0)"_qs));
  }
  ForumCounters counters;
  ForumRunResult r = ProcessForumData(t.env, db, counters, kLinks);
  ASSERT_TRUE(r.ok) << r.error.toStdString();
  EXPECT_EQ(r.questions, 45);
  r = ProcessForumData(t.env, db, counters, kLinks);
  ASSERT_TRUE(r.ok) << r.error.toStdString();
  QSqlQuery q(db.db());
  ASSERT_TRUE(q.exec(u"SELECT COUNT(*), MAX(topicID) FROM topic"_qs));
  ASSERT_TRUE(q.next());
  EXPECT_EQ(q.value(0).toInt(), 90);
  EXPECT_EQ(q.value(1).toInt(), 90);
  ASSERT_TRUE(q.exec(u"SELECT title, boardid FROM topic WHERE topicID = 16"_qs));
  ASSERT_TRUE(q.next());
  EXPECT_EQ(q.value(0).toString(), u"行政法与行政诉讼法学块 第1题,行政处罚* 第1题"_qs);
  EXPECT_EQ(q.value(1).toInt(), 16);
  ASSERT_TRUE(q.exec(u"SELECT lastbbsnum, lasttopicnum, todaynum FROM board WHERE boardid = 5"_qs));
  ASSERT_TRUE(q.next());
  EXPECT_EQ(q.value(0).toInt(), 90);
  ASSERT_TRUE(q.exec(u"SELECT body FROM bbs1 WHERE rootid = 15"_qs));
  ASSERT_TRUE(q.next());
  EXPECT_TRUE(q.value(0).toString().endsWith(u"?boardID=14&ID=16&from=mingjing"_qs));
  ASSERT_TRUE(q.exec(u"SELECT boardid, topicid, ItemId FROM iteminfo WHERE topicid = 46"_qs));
  ASSERT_TRUE(q.next());
  EXPECT_EQ(q.value(2).toString(), u"10001100001"_qs);
  ASSERT_TRUE(TidyLawinfo(db, &error)) << error.toStdString();
  ASSERT_TRUE(q.exec(u"SELECT firsttid FROM lawinfo WHERE a1 = '10003'"_qs));
  ASSERT_TRUE(q.next());
  EXPECT_EQ(q.value(0).toInt(), 31);
}

}  // namespace
}  // namespace mj
