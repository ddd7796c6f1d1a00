#include "knowledge/forum_data.h"

#include <QFileInfo>
#include <QHash>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <algorithm>

#include "bank/bank_text.h"
#include "bank/tables.h"
#include "platform/dbftable.h"
#include "platform/events.h"
#include "platform/inifile.h"
#include "platform/file_moves.h"
#include "platform/paths.h"
#include "platform/process.h"
#include "platform/text_toolkit.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

const QString kPoster = QStringLiteral("公民木舟");
const QString kFace = QStringLiteral("face1.gif");
const QString kLastPost = QStringLiteral("公民木舟$16$03-5-31 8:53:07$民法第一贴内容。$$1$8$17");

bool IsSqlite(const QSqlDatabase& db) { return db.driverName().compare(QStringLiteral("QSQLITE"), Qt::CaseInsensitive) == 0; }

// Table order: SQLite keeps the order rows were added in its row numbers;
// a server database gives its rows in the order they lie.
QString RowOrder(const QSqlDatabase& db) { return IsSqlite(db) ? QStringLiteral(" ORDER BY rowid") : QString(); }

QString SqlError(const QString& what, const QSqlError& e) {
  return what + QStringLiteral("：") + (e.text().trimmed().isEmpty() ? QStringLiteral("数据库出错") : e.text().trimmed());
}

QString DatabaseName(const QSqlDatabase& db) {
  return IsSqlite(db) ? MapSeparators(db.databaseName()) : db.driverName() + QStringLiteral(" 数据库 ") + db.databaseName();
}

// The question texts of the bank files, each file read once and its
// question markers found in one pass, so that a run over thousands of
// questions does not search the file from its start for each.
class QuestionTexts {
 public:
  explicit QuestionTexts(const Env& env) : env_(env) {}

  // Stem and options of question id, as the practice shows them.
  QString stemOf(const QString& id) {
    const QString path = BankFilePath(env_, id);
    if (path != path_) load(path);
    const QString number = CStr(ItemSerial(id));
    const auto at = markers_.constFind(number);
    if (at == markers_.cend()) return QString();
    // The question's block: its marker up to the marker after its closing one.
    const qsizetype from = at.value();
    const qsizetype close = text_.indexOf(u'●', from + 1);
    const qsizetype next = close < 0 ? -1 : text_.indexOf(u'●', close + 1);
    const QString block = next < 0 ? text_.mid(from) : text_.mid(from, next - from + 1);
    QString provider;
    return GetField(GetOneShiTi(block, ItemSerial(id)), 1, provider);
  }

 private:
  void load(const QString& path) {
    path_ = path;
    text_ = ReadFileAsText(path);
    markers_.clear();
    // Each "●" + digits + "●": the first place of each number, as a search
    // from the start of the file would find it.
    qsizetype p = text_.indexOf(u'●');
    while (p >= 0) {
      const qsizetype q = text_.indexOf(u'●', p + 1);
      if (q < 0) break;
      const QStringView between = QStringView(text_).mid(p + 1, q - p - 1);
      if (!between.isEmpty() && std::all_of(between.begin(), between.end(), [](QChar c) { return c.isDigit(); }) &&
          !markers_.contains(between.toString()))
        markers_.insert(between.toString(), p);
      p = q;
    }
  }

  const Env& env_;
  QString path_;
  QString text_;
  QHash<QString, qsizetype> markers_;
};

struct Question {
  int record = -1;
  QString itemid;
  QString answer;
  QString aboutlaw;
  int itemtype = 0;
};

struct Law {
  int board = 0;
  QString prefix;
  QString shortName;
  qsizetype first = 0;  // range in the sorted questions
  qsizetype last = 0;
};

QString TypeText(int itemType) {
  switch (itemType) {
    case 1:
      return QStringLiteral("单选题");
    case 2:
      return QStringLiteral("多选题");
    default:
      return QStringLiteral("任选题");
  }
}

bool Exec(QSqlQuery& q, QString* error, const QString& what) {
  if (q.exec()) return true;
  *error = SqlError(what, q.lastError());
  return false;
}

bool ExecSql(QSqlDatabase db, const QString& sql, QString* error) {
  QSqlQuery q(db);
  if (q.exec(sql)) return true;
  *error = SqlError(sql, q.lastError());
  return false;
}

QVariant IntOrNull(const QString& s) {
  if (Trim(s).isEmpty()) return QVariant(QMetaType::fromType<qlonglong>());
  return QVariant(static_cast<qlonglong>(Val(s)));
}

}  // namespace

QString BoardName(int board) {
  static const char16_t* const kNames[] = {u"法理学块",     u"法制史学块",     u"宪法学块",       u"经济法学块",
                                           u"国际法学块",   u"国际私法学块",   u"国际经济法学块", u"法律职业道德学块",
                                           u"刑法学块",     u"刑事诉讼法学块", u"行政法与行政诉讼法学块",
                                           u"民法学块",     u"商法学块",       u"民事诉讼与仲裁学块"};
  if (board < kFirstBoard || board > kLastBoard) return QString();
  return QString::fromUtf16(kNames[board - kFirstBoard]);
}

SqlTarget ForumTarget(const Env& env) {
  const QString file = env.path(kSiteFile);
  auto value = [&](const char* key) { return IniRead(file, kForumSection, QString::fromUtf8(key)); };
  SqlTarget t;
  const QString driver = value("驱动");
  if (!driver.isEmpty()) t.driver = driver.toUpper();
  t.database = value("数据库");
  if (t.isSqlite()) {
    if (t.database.isEmpty())
      t.database = env.path(kForumDbFile);
    else if (t.database.startsWith(u'\\'))
      t.database = env.path(t.database);
  }
  t.host = value("主机");
  const double port = Val(value("端口"));
  t.port = port > 0 && port < 65536 ? static_cast<int>(port) : -1;
  t.user = value("用户");
  t.password = value("密码");
  return t;
}

QStringList ForumTableNames() {
  return {QStringLiteral("lawinfo"), QStringLiteral("board"), QStringLiteral("topic"), QStringLiteral("bbs1"),
          QStringLiteral("iteminfo")};
}

QString CreateTableSql(const QString& table, const QString& driver) {
  const QString d = driver.toUpper();
  QString autoKey = QStringLiteral("INTEGER PRIMARY KEY");
  if (d == u"QSQLITE")
    autoKey = QStringLiteral("INTEGER PRIMARY KEY AUTOINCREMENT");
  else if (d == u"QPSQL")
    autoKey = QStringLiteral("SERIAL PRIMARY KEY");
  else if (d == u"QMYSQL" || d == u"QMARIADB")
    autoKey = QStringLiteral("INTEGER AUTO_INCREMENT PRIMARY KEY");
  const QString text = QStringLiteral("TEXT");
  const QString shortText = QStringLiteral("VARCHAR(255)");
  const QString integer = QStringLiteral("INTEGER");
  const QString date = QStringLiteral("DATE");
  auto columns = [](const QList<std::pair<const char*, QString>>& list) {
    QStringList c;
    for (const auto& [name, type] : list) c << QString::fromLatin1(name) + u' ' + type;
    return c.join(QStringLiteral(", "));
  };
  QString cols;
  if (table == u"lawinfo")
    cols = columns({{"a", text}, {"a1", shortText}, {"c", shortText}, {"firsttid", integer}});
  else if (table == u"board")
    cols = columns({{"boardid", integer}, {"lastbbsnum", integer}, {"lasttopicnum", integer}, {"todaynum", integer}});
  else if (table == u"topic")
    cols = columns({{"topicID", autoKey},      {"title", text},          {"boardid", integer},
                    {"pollid", integer},       {"locktopic", integer},   {"child", integer},
                    {"postusername", shortText}, {"postuserid", integer}, {"dateandtime", date},
                    {"hits", integer},         {"expression", shortText}, {"votetotal", integer},
                    {"lastpost", text},        {"posttable", shortText}, {"istop", integer},
                    {"lastposttime", date},    {"isbest", integer},      {"isvote", integer}});
  else if (table == u"bbs1")
    cols = columns({{"ParentId", integer},   {"boardid", integer},   {"username", shortText}, {"postuserid", integer},
                    {"topic", text},         {"body", text},         {"dateandtime", date},   {"length", integer},
                    {"rootid", integer},     {"layer", integer},     {"orders", integer},     {"isbest", integer},
                    {"ip", shortText},       {"expression", shortText}, {"locktopic", integer}, {"signflag", integer},
                    {"emailflag", integer},  {"isupload", integer},  {"isaudit", integer}});
  else if (table == u"iteminfo")
    cols = columns({{"boardid", integer},
                    {"topicid", integer},
                    {"answer", shortText},
                    {"aboutlaw", text},
                    {"lawid", shortText},
                    {"ItemId", shortText},
                    {"newflag", integer}});
  else
    return QString();
  return QStringLiteral("CREATE TABLE ") + table + QStringLiteral(" (") + cols + u')';
}

namespace {

// The tables of the forum that are missing in db; with create, made.
bool EnsureTables(QSqlDatabase db, bool create, QString* error) {
  QStringList present;
  for (const QString& t : db.tables()) present << t.toLower();
  for (const QString& table : ForumTableNames()) {
    if (present.contains(table)) continue;
    if (!create) {
      *error = QStringLiteral("论坛数据库") + DatabaseName(db) + QStringLiteral("中没有表") + table + QStringLiteral("。");
      return false;
    }
    if (!ExecSql(db, CreateTableSql(table, db.driverName()), error)) return false;
  }
  // What the run looks rows up by.
  if (create) {
    QString ignored;
    ExecSql(db, QStringLiteral("CREATE INDEX bbs1_rootid ON bbs1 (rootid)"), &ignored);
    ExecSql(db, QStringLiteral("CREATE INDEX iteminfo_lawid ON iteminfo (lawid, topicid)"), &ignored);
    ExecSql(db, QStringLiteral("CREATE INDEX board_boardid ON board (boardid)"), &ignored);
  }
  return true;
}

}  // namespace

QList<QStringList> ParseCsv(const QString& text) {
  QList<QStringList> rows;
  QStringList row;
  QString field;
  bool quoted = false;
  bool any = false;
  for (qsizetype i = 0; i < text.size(); ++i) {
    const QChar c = text[i];
    if (quoted) {
      if (c == u'"') {
        if (i + 1 < text.size() && text[i + 1] == u'"') {
          field += u'"';
          ++i;
        } else {
          quoted = false;
        }
      } else {
        field += c;
      }
      continue;
    }
    if (c == u'"') {
      quoted = true;
      any = true;
    } else if (c == u',') {
      row << field;
      field.clear();
      any = true;
    } else if (c == u'\n' || c == u'\r') {
      if (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
      if (any || !field.isEmpty()) {
        row << field;
        rows << row;
      }
      row.clear();
      field.clear();
      any = false;
    } else {
      field += c;
      any = true;
    }
  }
  if (any || !field.isEmpty()) {
    row << field;
    rows << row;
  }
  return rows;
}

bool ImportJetTables(const QString& mdbFile, QSqlDatabase db, QString* error) {
  const QString shown = MapSeparators(mdbFile);
  const QString tool = FindProgram(QStringLiteral("mdb-export"));
  if (tool.isEmpty()) {
    *error = QStringLiteral("找到了旧的论坛数据库") + shown +
             QStringLiteral("，但本机没有读取它的程序mdb-export（Debian软件包mdbtools）。装上mdbtools后再试；"
                            "论坛数据库没有建立。");
    return false;
  }
  struct Wanted {
    QString table;
    QStringList fields;
    QList<bool> numeric;
  };
  const QList<Wanted> wanted = {
      {QStringLiteral("lawinfo"),
       {QStringLiteral("a"), QStringLiteral("a1"), QStringLiteral("c"), QStringLiteral("firsttid")},
       {false, false, false, true}},
      {QStringLiteral("board"),
       {QStringLiteral("boardid"), QStringLiteral("lastbbsnum"), QStringLiteral("lasttopicnum"), QStringLiteral("todaynum")},
       {true, true, true, true}},
  };
  if (!db.transaction()) {
    *error = SqlError(DatabaseName(db), db.lastError());
    return false;
  }
  for (const Wanted& w : wanted) {
    // Old Jet files of Chinese Windows keep their texts in code page 936.
    const ProgramResult r = RunProgram(tool, {QFileInfo(shown).absoluteFilePath(), w.table}, 120000,
                                       {QStringLiteral("MDB_JET3_CHARSET=CP936")});
    if (!r.started || !r.finished || r.exitCode != 0) {
      const QString why = QString::fromUtf8(r.errors).trimmed();
      *error = QStringLiteral("mdb-export读不出旧的论坛数据库") + shown + QStringLiteral("中的表") + w.table +
               (why.isEmpty() ? QStringLiteral("。") : QStringLiteral("：") + why) +
               QStringLiteral("论坛数据库没有建立。");
      db.rollback();
      return false;
    }
    const QList<QStringList> rows = ParseCsv(QString::fromUtf8(r.output));
    if (rows.isEmpty()) continue;
    QList<int> column;
    for (const QString& f : w.fields) {
      int at = -1;
      for (int i = 0; i < rows[0].size(); ++i)
        if (rows[0][i].trimmed().compare(f, Qt::CaseInsensitive) == 0) at = i;
      column << at;
    }
    QSqlQuery q(db);
    q.prepare(QStringLiteral("INSERT INTO ") + w.table + QStringLiteral(" (") + w.fields.join(QStringLiteral(", ")) +
              QStringLiteral(") VALUES (?, ?, ?, ?)"));
    for (qsizetype r2 = 1; r2 < rows.size(); ++r2) {
      for (int i = 0; i < w.fields.size(); ++i) {
        const QString v = column[i] >= 0 && column[i] < rows[r2].size() ? rows[r2][column[i]] : QString();
        q.bindValue(i, w.numeric[i] ? IntOrNull(v) : QVariant(v));
      }
      if (!Exec(q, error, QStringLiteral("写入表") + w.table)) {
        db.rollback();
        return false;
      }
    }
  }
  if (!db.commit()) {
    *error = SqlError(DatabaseName(db), db.lastError());
    db.rollback();
    return false;
  }
  return true;
}

bool OpenForumDatabase(const Env& env, SqlConnection& connection, QString* error) {
  const SqlTarget target = ForumTarget(env);
  if (!target.isSqlite()) {
    // A server database named in the settings: its tables are made when
    // they are missing.
    if (!connection.open(target, error)) return false;
    if (EnsureTables(connection.db(), true, error)) return true;
    connection.close();
    return false;
  }
  if (FileExists(target.database)) {
    if (!connection.open(target, error)) return false;
    if (EnsureTables(connection.db(), false, error)) return true;
    connection.close();
    return false;
  }
  // A new file, made whole under a temporary name first.
  const QString made = target.database + QStringLiteral(".new");
  RemoveFile(made);
  const QString folder = QFileInfo(MapSeparators(target.database)).absolutePath();
  if (!DirExists(folder)) MakeDir(folder);
  {
    SqlTarget temp = target;
    temp.database = made;
    SqlConnection building;
    if (!building.open(temp, error)) return false;
    bool ok = EnsureTables(building.db(), true, error);
    const QString jet = env.path(kJetForumFile);
    if (ok && target.database == env.path(kForumDbFile) && FileExists(jet)) ok = ImportJetTables(jet, building.db(), error);
    building.close();
    if (!ok) {
      RemoveFile(made);
      return false;
    }
  }
  if (!MoveFileOver(made, target.database)) {
    *error = QStringLiteral("不能建立论坛数据库") + MapSeparators(target.database) + QStringLiteral("。");
    RemoveFile(made);
    return false;
  }
  return connection.open(target, error);
}

QString LawShortName(const QString& a) {
  const qsizetype close = InStr(a, QStringLiteral("》"));
  QString s = close > 0 ? Left(a, close) : Trim(a);
  s.remove(u'《');
  s.remove(u'》');
  return s;
}

QString ForumTitle(const QString& boardName, qint64 perBoard, const QString& shortName, qint64 i) {
  QString title = boardName + QStringLiteral(" 第") + CStr(perBoard) + QStringLiteral("题,") + shortName;
  if (Len(title) > 20) title = Left(title, 20) + u'*';
  return title + QStringLiteral(" 第") + CStr(i) + QStringLiteral("题");
}

QString ForumBody(const QString& title, int itemType, qint64 topic, const QString& questionText,
                  const QString& itemId, const QString& answer, const QString& aboutlaw, int board,
                  const NewsLinks& links) {
  const QString two = kCrLf + kCrLf;
  return title + two + QStringLiteral("题型:") + TypeText(itemType) + two + CStr(topic) + QStringLiteral("、") +
         questionText + kCrLf.repeated(8) + QStringLiteral("本题在明镜学伴中的交流号为: *") + itemId + u'*' +
         kCrLf.repeated(5) + QStringLiteral("答案:") + answer + kCrLf + QStringLiteral("参见:") + aboutlaw + kCrLf +
         QStringLiteral("法条详解:") + links.link1 + QStringLiteral("?boardid=") + CStr(board) +
         QStringLiteral("&topid=") + CStr(topic) + links.link3 + kCrLf + QStringLiteral("做下一题:") + links.link2 +
         u'?' + QStringLiteral("boardID=") + CStr(board) + QStringLiteral("&ID=") + CStr(topic + 1) + links.link4;
}

ForumRunResult ProcessForumData(const Env& env, const SqlConnection& connection, ForumCounters& counters, const NewsLinks& links,
                                const ForumProgress& progress) {
  QSqlDatabase db = connection.db();
  ForumRunResult result;
  auto fail = [&](const QString& error) {
    result.error = error;
    env.msgBox(error, box::Exclamation);
    return result;
  };
  // The questions: the live rows of the question table in ID order.
  const QString itemsPath = env.path(QStringLiteral("\\dbf\\") + tables::kItems);
  DbfTable items = DbfTable::open(itemsPath, DbfTable::Mode::ReadWrite);
  if (!items.isOpen()) return fail(QStringLiteral("不能打开试题表") + MapSeparators(itemsPath) + QStringLiteral("：") + items.error());
  const int fItemid = items.fieldIndex(QStringLiteral("itemid"));
  const int fAnswer = items.fieldIndex(QStringLiteral("answer"));
  const int fAboutlaw = items.fieldIndex(QStringLiteral("aboutlaw"));
  const int fType = items.fieldIndex(QStringLiteral("itemtype"));
  const int fValid = items.fieldIndex(QStringLiteral("valid2"));
  const int fBoard = items.fieldIndex(QStringLiteral("boardid"));
  const int fTopic = items.fieldIndex(QStringLiteral("topicid"));
  if (fItemid < 0 || fValid < 0)
    return fail(QStringLiteral("试题表") + MapSeparators(itemsPath) + QStringLiteral("缺少字段itemid或valid2。"));
  QList<Question> questions;
  for (const int rec : items.rows()) {
    if (!items.logical(rec, fValid)) continue;
    Question q;
    q.record = rec;
    q.itemid = items.trimmedText(rec, fItemid);
    q.answer = fAnswer < 0 ? QString() : items.trimmedText(rec, fAnswer);
    q.aboutlaw = fAboutlaw < 0 ? QString() : items.text(rec, fAboutlaw);
    q.itemtype = fType < 0 ? 0 : SaturatedInt<int>(items.number(rec, fType));
    questions << q;
  }
  std::stable_sort(questions.begin(), questions.end(),
                   [](const Question& a, const Question& b) { return a.itemid < b.itemid; });

  // The laws of each board, in the order of lawinfo, with their questions.
  QList<Law> laws;
  qint64 total = 0;
  {
    QSqlQuery q(db);
    q.prepare(QStringLiteral("SELECT a, a1 FROM lawinfo WHERE TRIM(c) = ?") + RowOrder(db));
    for (int board = kFirstBoard; board <= kLastBoard; ++board) {
      q.bindValue(0, QString::number(board));
      QString error;
      if (!Exec(q, &error, QStringLiteral("读表lawinfo"))) return fail(error);
      while (q.next()) {
        Law law;
        law.board = board;
        law.prefix = Trim(q.value(1).toString());
        law.shortName = LawShortName(q.value(0).toString());
        // An empty code would be the prefix of every question.
        if (!law.prefix.isEmpty()) {
          const auto lower = std::lower_bound(questions.cbegin(), questions.cend(), law.prefix,
                                              [](const Question& x, const QString& p) { return x.itemid < p; });
          auto upper = lower;
          while (upper != questions.cend() && upper->itemid.startsWith(law.prefix)) ++upper;
          law.first = lower - questions.cbegin();
          law.last = upper - questions.cbegin();
        }
        total += law.last - law.first;
        laws << law;
      }
    }
  }

  QuestionTexts texts(env);
  const QDate today = env.today();
  QSqlQuery setBoard(db), addTopic(db), lastTopic(db), addPost(db), addItem(db);
  setBoard.prepare(QStringLiteral("UPDATE board SET lastbbsnum = ?, lasttopicnum = ?, todaynum = ? WHERE boardid = ?"));
  addTopic.prepare(
      QStringLiteral("INSERT INTO topic (title, boardid, pollid, locktopic, child, postusername, postuserid, "
                     "dateandtime, hits, expression, votetotal, lastpost, posttable, istop, lastposttime, isbest, "
                     "isvote) VALUES (?, ?, 0, 0, 0, ?, 1, ?, 0, ?, 0, ?, 'bbs1', 0, ?, 0, 0)"));
  lastTopic.prepare(QStringLiteral("SELECT MAX(topicID) FROM topic"));
  addPost.prepare(
      QStringLiteral("INSERT INTO bbs1 (ParentId, boardid, username, postuserid, topic, body, dateandtime, length, "
                     "rootid, layer, orders, isbest, ip, expression, locktopic, signflag, emailflag, isupload, "
                     "isaudit) VALUES (0, ?, ?, 1, ?, ?, ?, ?, ?, 1, 0, 0, '127.0.0.1', ?, 0, 1, 0, 0, 0)"));
  addItem.prepare(
      QStringLiteral("INSERT INTO iteminfo (boardid, topicid, answer, aboutlaw, lawid, ItemId, newflag) "
                     "VALUES (?, ?, ?, ?, ?, ?, 0)"));

  qint64 done = 0;
  qint64 perBoard = 0;
  int boardNow = 0;
  bool itemFieldsMissing = false;
  for (const Law& law : laws) {
    if (law.board != boardNow) {
      boardNow = law.board;
      perBoard = 0;
    }
    if (law.first == law.last) continue;
    const QString boardName = BoardName(law.board);
    const ForumCounters before = counters;
    const qint64 perBoardBefore = perBoard;
    struct Mark {
      int record;
      qint64 topic;
    };
    QList<Mark> marks;
    QString error;
    auto undo = [&](const QString& why) {
      db.rollback();
      counters = before;
      perBoard = perBoardBefore;
      return fail(why + kCrLf + kCrLf + QStringLiteral("《") + law.shortName +
                  QStringLiteral("》的论坛数据没有写入；论坛数据库保持这部法律之前的样子。"));
    };
    if (!db.transaction()) return fail(SqlError(DatabaseName(db), db.lastError()));
    for (qsizetype k = law.first; k < law.last; ++k) {
      const Question& q = questions[k];
      const qint64 i = k - law.first + 1;
      counters.topic += 1;
      counters.total += 1;
      perBoard += 1;
      for (const auto& [board, count] : {std::pair<int, qint64>{kTotalsBoard, counters.total}, {law.board, perBoard}}) {
        for (int f = 0; f < 3; ++f) setBoard.bindValue(f, count);
        setBoard.bindValue(3, board);
        if (!Exec(setBoard, &error, QStringLiteral("写表board"))) return undo(error);
      }
      LetEventsThrough();
      if (progress) progress(++done, total);
      const QString title = ForumTitle(boardName, perBoard, law.shortName, i);
      const QString body = ForumBody(title, q.itemtype, counters.topic, texts.stemOf(q.itemid), q.itemid, q.answer,
                                     q.aboutlaw, law.board, links);
      marks << Mark{q.record, counters.topic};
      addTopic.bindValue(0, title);
      addTopic.bindValue(1, law.board);
      addTopic.bindValue(2, kPoster);
      addTopic.bindValue(3, today);
      addTopic.bindValue(4, kFace);
      addTopic.bindValue(5, kLastPost);
      addTopic.bindValue(6, today);
      if (!Exec(addTopic, &error, QStringLiteral("写表topic"))) return undo(error);
      if (!Exec(lastTopic, &error, QStringLiteral("读表topic"))) return undo(error);
      const qlonglong topicId = lastTopic.next() ? lastTopic.value(0).toLongLong() : 0;
      lastTopic.finish();
      addPost.bindValue(0, law.board);
      addPost.bindValue(1, kPoster);
      addPost.bindValue(2, title);
      addPost.bindValue(3, body);
      addPost.bindValue(4, today);
      addPost.bindValue(5, static_cast<qlonglong>(body.size()) * 2);
      addPost.bindValue(6, topicId);
      addPost.bindValue(7, kFace);
      if (!Exec(addPost, &error, QStringLiteral("写表bbs1"))) return undo(error);
      addItem.bindValue(0, law.board);
      addItem.bindValue(1, counters.topic);
      addItem.bindValue(2, q.answer);
      addItem.bindValue(3, q.aboutlaw);
      addItem.bindValue(4, law.prefix);
      addItem.bindValue(5, q.itemid);
      if (!Exec(addItem, &error, QStringLiteral("写表iteminfo"))) return undo(error);
      ++result.questions;
    }
    if (!db.commit()) return undo(SqlError(DatabaseName(db), db.lastError()));
    // The question table learns the board and topic of each question once
    // the forum holds them.
    if (fBoard < 0 || fTopic < 0) {
      itemFieldsMissing = true;
      continue;
    }
    for (const Mark& m : marks)
      if (!items.setNumber(m.record, fBoard, law.board) || !items.setNumber(m.record, fTopic, static_cast<double>(m.topic)))
        return fail(QStringLiteral("不能写入试题表") + MapSeparators(itemsPath) + QStringLiteral("：") + items.error());
    items.flush();
  }
  if (!items.closeDurably())
    return fail(QStringLiteral("试题表") + MapSeparators(itemsPath) + QStringLiteral("没能保存：") + items.error());
  result.ok = true;
  env.msgBox(itemFieldsMissing ? QStringLiteral("ok") + kCrLf + QStringLiteral("（试题表") + MapSeparators(itemsPath) +
                                     QStringLiteral("没有boardid和topicid字段，没有写入论坛编号。）")
                               : QStringLiteral("ok"));
  return result;
}

bool ConvertLinks(const SqlConnection& connection, const QString& oldText, const QString& newText,
                  const std::function<void(qint64 row, qint64 rows)>& progress, QString* error) {
  QSqlDatabase db = connection.db();
  QSqlQuery q(db);
  if (!q.exec(QStringLiteral("SELECT COUNT(*) FROM bbs1"))) {
    *error = SqlError(QStringLiteral("读表bbs1"), q.lastError());
    return false;
  }
  const qint64 rows = q.next() ? q.value(0).toLongLong() : 0;
  q.finish();
  // Read first, then write: the walk does not see its own changes.
  struct Post {
    QVariant rootid;
    QString body;
  };
  QList<Post> posts;
  if (!q.exec(QStringLiteral("SELECT rootid, body FROM bbs1") + RowOrder(db))) {
    *error = SqlError(QStringLiteral("读表bbs1"), q.lastError());
    return false;
  }
  while (q.next()) posts << Post{q.value(0), q.value(1).toString()};
  q.finish();
  if (!db.transaction()) {
    *error = SqlError(DatabaseName(db), db.lastError());
    return false;
  }
  QSqlQuery write(db);
  // A post is known by its topic and its text: posts alike in both get the
  // same new text anyway.
  write.prepare(QStringLiteral("UPDATE bbs1 SET body = ? WHERE rootid = ? AND body = ?"));
  QSqlQuery writeNoRoot(db);
  writeNoRoot.prepare(QStringLiteral("UPDATE bbs1 SET body = ? WHERE rootid IS NULL AND body = ?"));
  qint64 n = 0;
  for (const Post& p : std::as_const(posts)) {
    ++n;
    if (progress) progress(n, rows);
    LetEventsThrough();
    const QString body = ReplaceAll(p.body, oldText, newText);
    if (body == p.body) continue;
    QSqlQuery& w = p.rootid.isNull() ? writeNoRoot : write;
    int at = 0;
    w.bindValue(at++, body);
    if (!p.rootid.isNull()) w.bindValue(at++, p.rootid);
    w.bindValue(at, p.body);
    if (!w.exec()) {
      *error = SqlError(QStringLiteral("写表bbs1"), w.lastError());
      db.rollback();
      return false;
    }
  }
  if (!db.commit()) {
    *error = SqlError(DatabaseName(db), db.lastError());
    db.rollback();
    return false;
  }
  return true;
}

bool TidyLawinfo(const SqlConnection& connection, QString* error) {
  QSqlDatabase db = connection.db();
  return ExecSql(db,
                 QStringLiteral("UPDATE lawinfo SET firsttid = (SELECT MIN(topicid) FROM iteminfo WHERE iteminfo.lawid = "
                                "TRIM(lawinfo.a1)) WHERE EXISTS (SELECT 1 FROM iteminfo WHERE iteminfo.lawid = "
                                "TRIM(lawinfo.a1))"),
                 error);
}

}  // namespace mj
