#pragma once
// The forum data: every question of the internal banks becomes a topic
// with one post in the forum's own database, so that each question has a
// discussion page, and the question table keeps the board and topic of its
// page. The database is reached through Qt SQL: by default the SQLite file
// \dbf\db6.db, made with the forum's tables when it is missing (from the
// lawinfo and board tables of an old Jet file \dbf\db6.mdb when there is
// one, read with mdb-export); the program's settings can name another
// driver and database.
//
// The generation runs in one transaction per law: a run that fails leaves
// the database as it was before the law it failed in, and the question
// table is written only for the laws that were committed.

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

#include "log/news.h"
#include "platform/env.h"
#include "platform/sql_database.h"

class QSqlDatabase;

namespace mj {

inline const QString kForumDbFile = QStringLiteral("\\dbf\\db6.db");
inline const QString kJetForumFile = QStringLiteral("\\dbf\\db6.mdb");
// The settings of the forum database in \ini\mingjing.ini:
//   [论坛数据库]
//   驱动=QPSQL           (QSQLITE when missing)
//   数据库=mingjing      (for SQLite a file; \dbf\db6.db when missing)
//   主机=127.0.0.1
//   端口=5432
//   用户=mingjing
//   密码=...
inline const QString kForumSection = QStringLiteral("论坛数据库");

// The common parent board that holds the totals, and the boards 6 to 19.
inline constexpr int kTotalsBoard = 5;
inline constexpr int kFirstBoard = 6;
inline constexpr int kLastBoard = 19;
// The name of a board 6..19; empty for any other number.
QString BoardName(int board);

// The database the settings name.
SqlTarget ForumTarget(const Env& env);

// The tables of the forum that the program reads and writes, and the SQL
// that makes each for a driver.
QStringList ForumTableNames();
QString CreateTableSql(const QString& table, const QString& driver);

// Opens the forum database: the default SQLite file is made when it is
// missing, first from the Jet file when there is one. False with *error
// in words for the user (naming the file or database) otherwise; a file
// that could not be made whole is not left behind.
bool OpenForumDatabase(const Env& env, SqlConnection& connection, QString* error);

// Fills lawinfo and board of a new database from a Jet file with
// mdb-export. False with *error when the tool is missing or cannot read the
// file.
bool ImportJetTables(const QString& mdbFile, QSqlDatabase db, QString* error);
// The rows of a CSV text as mdb-export writes it: fields separated by ",",
// a field in double quotes may hold commas, line breaks and doubled quotes.
QList<QStringList> ParseCsv(const QString& text);

// The counters of the window: they run on through the boards and through
// every run while the window lives; they start at 0 when it opens.
struct ForumCounters {
  qint64 topic = 0;
  qint64 total = 0;
};

// The title of a question's topic: board name, " 第", the count of the board,
// "题,", the law's short name, cut to 20 characters with "*" when longer,
// then " 第", the question's place in its law, "题".
QString ForumTitle(const QString& boardName, qint64 perBoard, const QString& shortName, qint64 i);
// The post's body.
QString ForumBody(const QString& title, int itemType, qint64 topic, const QString& questionText,
                  const QString& itemId, const QString& answer, const QString& aboutlaw, int board,
                  const NewsLinks& links);
// The law's short name of lawinfo's field a: up to the first "》", without
// "《" and "》".
QString LawShortName(const QString& a);

// Progress of a run: questions done and the questions of the whole run.
using ForumProgress = std::function<void(qint64 done, qint64 total)>;

struct ForumRunResult {
  bool ok = false;
  qint64 questions = 0;  // topics written
  QString error;         // why the run stopped, for the user
};

// 处理论坛数据: the whole generation. Window events are let through after
// each question. Shows the box "ok" at the end, or the error.
ForumRunResult ProcessForumData(const Env& env, const SqlConnection& db, ForumCounters& counters, const NewsLinks& links,
                                const ForumProgress& progress = {});

// 转换链接: every old text in the bodies of bbs1 replaced by the new one.
// progress gets the row reached and the rows in all. False with *error.
bool ConvertLinks(const SqlConnection& db, const QString& oldText, const QString& newText,
                  const std::function<void(qint64 row, qint64 rows)>& progress, QString* error);

// 整理lawinfo表: firsttid of each law its first topic in iteminfo.
bool TidyLawinfo(const SqlConnection& db, QString* error);

}  // namespace mj
