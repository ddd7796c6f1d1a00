// An update run killed at many points: a child process takes the package and
// is killed at a chosen step of its work (before an item, before and after
// each file takes its new content) or after a random time. Every file it
// leaves must be whole, an earlier or a later state of an undisturbed run,
// never a mixture, and the tables must read in full by an independent dBASE
// reader; then the same package taken again with "是" must bring every
// question of the package to the state of the undisturbed run.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QThread>
#include <csignal>
#include <cstdio>

#include "bank/bank_file_batch.h"
#include "bank/bank_text.h"
#include "bank/item_index.h"
#include "bank/tables.h"
#include "generator.h"
#include "log/day_files.h"
#include "log/update_package.h"
#include "platform/dbftable.h"
#include "platform/paths.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"
#include "support/test_env.h"

using namespace mj;

namespace {

const char* const kFolderVar = "MJ_UPDATE_CRASH_FOLDER";
const char* const kStepVar = "MJ_UPDATE_CRASH_STEP";
constexpr int kWriteEvery = 12;
const QString kPython = u"/usr/bin/python3"_qs;

// The services of a run in a folder that is not a TestEnv's.
struct FolderEnv {
  FixedClock clock;
  ScriptedBoxes boxes;
  RecordingShell shell;
  ScriptedDialogs dialogs;
  Env env;
  explicit FolderEnv(const QString& root) : env{root, &clock, &boxes, &shell, &dialogs} {}
};

struct Outcome {
  QString updated, seen;
};

// Takes the folder's package.new with "是"; onStep sees every step.
Outcome takeIn(const QString& root, int writeEvery, const std::function<void(const QString&)>& onStep) {
  FolderEnv f(root);
  qint16 state = 3;
  Outcome o;
  UpdateView view;
  UpdateRun run(f.env, view, {state, o.updated});
  if (writeEvery > 0) run.writeEvery(writeEvery);
  run.onStep = onStep;
  run.takePackage(ReadText(root + u"/package.new"_qs), true);
  o.seen = run.seenIds();
  return o;
}

gen::Sizes crashSizes() {
  gen::Sizes s;
  s.questions = 480;
  s.banks = 12;
  s.laws = 4;
  s.articles = 40;
  s.papers = 1;
  s.paperQuestions = 10;
  return s;
}

QString crashPackage() {
  // The generated items, a paper's question, a law no bank has, and one
  // question twice.
  QString p = gen::UpdatePackage(crashSizes(), 44);
  p += u"\r\n●[单选题]试卷的更新题(      )\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁\r\n■答案：B参见《生成法律1》第2条\r\n"
       u"[本题标识ID：][00001100002]\r\n"_qs;
  p += u"\r\n●[多选题]引用别的法律(      )\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁\r\n■答案：AB参见《没有题库的法》第2条\r\n"
       u"[本题标识ID：][10001200003]\r\n"_qs;
  p += u"\r\n●[单选题]又一次(      )\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁\r\n■答案：D参见《生成法律2》第9条\r\n"
       u"[本题标识ID：][10001100001]\r\n"_qs;
  return p;
}

QMap<QString, QByteArray> filesOf(const QString& root) {
  QMap<QString, QByteArray> out;
  QDirIterator it(root, QDir::Files, QDirIterator::Subdirectories);
  while (it.hasNext()) {
    const QString p = it.next();
    out.insert(QDir(root).relativeFilePath(p), ReadBytes(p));
  }
  return out;
}

bool copyTree(const QString& from, const QString& to) { return test::CopyTree(from, to); }

// The rows and the bank files of a folder, read once.
class Rows {
 public:
  explicit Rows(const QString& root) : root_(root) {
    for (const QString& table : {tables::kItems, tables::kCsItems}) {
      ItemIndex index;
      ReadData2ItemData(root + u"/dbf"_qs, table, index);
      for (const ItemRow& r : index)
        if (!rows_.contains(r.itemid)) rows_.insert(r.itemid, r);
    }
  }
  ItemRow row(const QString& id) const { return rows_.value(id); }
  QString block(const QString& id) const {
    const QString file = BankFileOf(id);
    if (!files_.contains(file)) files_.insert(file, BankFileModel(ReadText(root_ + MapSeparators(file))));
    return files_[file].oldBlock(ItemSerial(id));
  }

 private:
  QString root_;
  QHash<QString, ItemRow> rows_;
  mutable QHash<QString, BankFileModel> files_;
};

bool haveDbfread() {
  if (!QFile::exists(kPython)) return false;
  QProcess p;
  p.start(kPython, {u"-c"_qs, u"import dbfread"_qs});
  return p.waitForFinished(60000) && p.exitCode() == 0;
}

}  // namespace

// The child process of the test below; it does nothing in a test run.
TEST(UpdateCrashChild, TakesThePackageAndIsKilled) {
  const QString folder = qEnvironmentVariable(kFolderVar);
  if (folder.isEmpty()) GTEST_SKIP() << "the child of UpdateCrash only";
  const int killAt = qEnvironmentVariableIntValue(kStepVar);
  int steps = 0;
  takeIn(folder, kWriteEvery, [&](const QString&) {
    if (++steps == killAt) std::raise(SIGKILL);
  });
  WriteTextAtomic(folder + u"/steps.txt"_qs, QString::number(steps));
}

TEST(UpdateCrash, KilledAtManyPointsEveryFileIsWholeAndARunWithYesFinishesTheWork) {
  QTemporaryDir work;
  ASSERT_TRUE(work.isValid());
  const QString base = work.path() + u"/base"_qs;
  QString error;
  ASSERT_TRUE(gen::Generate(base, crashSizes(), &error)) << error.toStdString();
  ASSERT_TRUE(WriteTextAtomic(base + u"/package.new"_qs, crashPackage()));
  const QMap<QString, QByteArray> original = filesOf(base);

  // The undisturbed run, and every state a file takes in it.
  const QString reference = work.path() + u"/reference"_qs;
  ASSERT_TRUE(copyTree(base, reference));
  QHash<QString, QSet<QByteArray>> states;
  for (auto it = original.constBegin(); it != original.constEnd(); ++it) states[it.key()].insert(it.value());
  const Outcome done = takeIn(reference, kWriteEvery, [&](const QString& path) {
    if (path == u"item") return;
    const QString rel = QDir(reference).relativeFilePath(path);
    if (QFile::exists(path)) states[rel].insert(ReadBytes(path));
  });
  ASSERT_GT(done.updated.size(), 47 * 11);
  const QMap<QString, QByteArray> finished = filesOf(reference);

  // The steps of a run.
  const auto child = [&](const QString& folder, int killAt) {
    auto p = std::make_unique<QProcess>();
    QProcessEnvironment e = QProcessEnvironment::systemEnvironment();
    e.insert(QString::fromLatin1(kFolderVar), folder);
    e.insert(QString::fromLatin1(kStepVar), QString::number(killAt));
    p->setProcessEnvironment(e);
    p->start(QCoreApplication::applicationFilePath(), {u"--gtest_filter=UpdateCrashChild.*"_qs});
    return p;
  };
  const QString counted = work.path() + u"/counted"_qs;
  ASSERT_TRUE(copyTree(base, counted));
  QElapsedTimer runTime;
  runTime.start();
  {
    auto p = child(counted, 0);
    ASSERT_TRUE(p->waitForFinished(120000));
    ASSERT_EQ(p->exitCode(), 0) << p->readAllStandardError().toStdString();
  }
  const qint64 runMs = runTime.elapsed();
  const int steps = ReadText(counted + u"/steps.txt"_qs).toInt();
  ASSERT_GT(steps, 100);
  // The child's run is the undisturbed one.
  QMap<QString, QByteArray> countedFiles = filesOf(counted);
  countedFiles.remove(u"steps.txt"_qs);
  EXPECT_EQ(countedFiles, finished);

  // Kills at chosen steps: every write step and every item, thinned out to
  // about 110; and 15 at random times.
  QList<int> killAt;
  const int chosen = std::min(steps, 110);
  for (int i = 1; i <= chosen; ++i) killAt.append(static_cast<int>((static_cast<qint64>(i) * steps) / chosen));
  QRandomGenerator rnd(20261121);
  QStringList folders;
  int crashed = 0;
  for (int i = 0; i < killAt.size() + 15; ++i) {
    const QString folder = work.path() + QStringLiteral("/kill%1").arg(i);
    ASSERT_TRUE(copyTree(base, folder));
    folders.append(folder);
    if (i < killAt.size()) {
      auto p = child(folder, killAt[i]);
      ASSERT_TRUE(p->waitForFinished(120000));
      crashed += p->exitStatus() == QProcess::CrashExit;
    } else {
      auto p = child(folder, 0);
      ASSERT_TRUE(p->waitForStarted());
      QThread::msleep(static_cast<unsigned long>(rnd.bounded(static_cast<int>(std::max<qint64>(runMs, 50)))));
      p->kill();
      p->waitForFinished(120000);
      crashed += p->exitStatus() == QProcess::CrashExit;
    }
  }
  EXPECT_GE(crashed, 100);
  std::fprintf(stderr, "%d steps, %d children killed in %.1f s\n", steps, crashed, runTime.elapsed() / 1000.0);

  // Every file whole: a state it had in the undisturbed run. A new content
  // still beside its file (name~) is left over and harmless.
  QStringList tables;
  for (const QString& folder : folders) {
    const QMap<QString, QByteArray> files = filesOf(folder);
    for (auto it = files.constBegin(); it != files.constEnd(); ++it) {
      if (it.key().endsWith(u'~') || it.key() == u"steps.txt") continue;
      ASSERT_TRUE(states.value(it.key()).contains(it.value())) << folder.toStdString() << " " << it.key().toStdString();
      if (it.key().startsWith(u"dbf/") && it.key().endsWith(u".mmd")) tables.append(folder + u'/' + it.key());
    }
  }

  // The tables as an independent reader reads them: every row in full.
  if (haveDbfread()) {
    const QString script = uR"(
import sys
from dbfread import DBF
for path in sys.argv[1:]:
    n = sum(1 for r in DBF(path, encoding='gbk', char_decode_errors='strict'))
    print(n, path)
)"_qs;
    QProcess p;
    p.start(kPython, QStringList{u"-c"_qs, script} + tables);
    ASSERT_TRUE(p.waitForFinished(300000));
    ASSERT_EQ(p.exitCode(), 0) << p.readAllStandardError().toStdString();
    const QStringList lines = QString::fromUtf8(p.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), tables.size());
    for (const QString& line : lines) {
      const QString path = line.section(u' ', 1);
      EXPECT_EQ(line.section(u' ', 0, 0).toInt(), DbfTable::open(path).rows().size()) << path.toStdString();
    }
  } else {
    std::fprintf(stderr, "/usr/bin/python3 with dbfread is not installed: the tables were read by the program only\n");
  }

  // The same package again with "是": every question of the package as the
  // undisturbed run left it; the copies under the laws as there, under the
  // numbers the bank has next. (All copies for laws without a bank share
  // one number, whose bank file keeps every one of them.)
  const Rows want = Rows(reference);
  for (const QString& folder : folders) {
    SCOPED_TRACE(folder.toStdString());
    const Outcome again = takeIn(folder, 0, {});
    ASSERT_EQ(again.updated.size(), done.updated.size());
    const Rows got(folder);
    for (qsizetype i = 0; i < done.updated.size(); i += 11) {
      const QString id = done.updated.mid(i, 11);
      const QString newId = again.updated.mid(i, 11);
      ASSERT_EQ(newId.left(6), id.left(6));
      ItemRow wanted = want.row(id);
      wanted.itemid = newId;
      EXPECT_EQ(got.row(newId), wanted) << id.toStdString();
      if (id != kFallbackItemId) {
        EXPECT_EQ(got.block(newId), want.block(id)) << id.toStdString();
      }
    }
    EXPECT_TRUE(ReadIdFile(folder + u"/更新的题/"_qs + TodayIniName(FixedClock().today())).startsWith(again.updated));
  }
}
