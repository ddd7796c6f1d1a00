// The knowledge points: loading an outline of 5,000 points from dagang.mmd
// and showing it as the tree of the knowledge-point window; and the forum
// data generated for 20,000 questions of a generated folder into SQLite.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <cstdio>

#include "bank/tables.h"
#include "bench_support.h"
#include "generator.h"
#include "knowledge/forum_data.h"
#include "knowledge/knowledge_window.h"
#include "platform/dbftable.h"
#include "platform/paths.h"

using namespace mj;

namespace {

constexpr int kPoints = 5000;
constexpr int kForumQuestions = 20000;

// An outline of 5,000 rows in three levels: 20 subjects of 10 chapters of
// 24 points (and one more chapter heading where the rows run out).
void WriteOutline(const QString& root) {
  MakeDir(root + QStringLiteral("/dbf"));
  DbfTable t = DbfTable::create(root + QStringLiteral("/dbf/dagang.mmd"), tables::OutlineFields());
  int n = 0;
  auto add = [&](const QString& a, const QString& d) {
    const int r = t.appendRow();
    t.setText(r, QStringLiteral("a"), a);
    if (!d.isEmpty()) t.setText(r, QStringLiteral("d"), d);
    t.setText(r, QStringLiteral("r"), QStringLiteral("生成数据"));
    t.setNumber(r, QStringLiteral("therecn"), ++n);
    if (n % 7 == 0) t.setText(r, QStringLiteral("k"), QStringLiteral("3"));
  };
  for (int s = 0; n < kPoints; ++s) {
    add(QStringLiteral("学科%1（生成数据）").arg(s + 1), QString());
    for (int c = 0; c < 10 && n < kPoints; ++c) {
      add(QStringLiteral("  第%1章").arg(c + 1), QString());
      for (int p = 0; p < 24 && n < kPoints; ++p)
        add(QStringLiteral("    知识点%1").arg(n + 1), QStringLiteral("《生成法律%1》%2.").arg(s % 20 + 1).arg(p + 1));
    }
  }
  t.closeDurably();
}

void BM_OutlineLoadAndShow(benchmark::State& state) {
  QTemporaryDir dir;
  WriteOutline(dir.path());
  bench::BenchEnv b(dir.path());
  AppState app;
  app.env = b.env;
  Form17 form(app);
  form.loadWindow();
  form.resize(1000, 700);
  form.show();
  QApplication::processEvents();
  if (form.outline().count() != kPoints) state.SkipWithError("outline not written");
  for (auto _ : state) {
    // The array cleared, the table read, the tree built and painted.
    form.reloadOutline();
    form.TreeView1->repaint();
    QApplication::processEvents();
    benchmark::DoNotOptimize(form.TreeView1->topLevelItemCount());
  }
  state.counters["points"] = static_cast<double>(form.outline().count());
}
BENCHMARK(BM_OutlineLoadAndShow)->Unit(benchmark::kMillisecond)->MinTime(2.0);

// A generated folder of 20,000 questions in 20 laws, with one lawinfo row
// per law spread over the boards.
struct ForumFolder {
  QTemporaryDir dir;
  bool ok = false;
  ForumFolder() {
    gen::Sizes s;
    s.questions = kForumQuestions;
    s.banks = 60;
    s.laws = 20;
    s.articles = 200;
    QString error;
    ok = gen::Generate(dir.path(), s, &error);
    if (!ok) std::fprintf(stderr, "%s\n", qPrintable(error));
  }
};

const ForumFolder& TheForumFolder() {
  static ForumFolder folder;
  return folder;
}

// An empty forum database with the laws and the boards, as 处理论坛数据
// finds it on the site's first run.
bool PrepareForumDatabase(const Env& env, QString* error) {
  RemoveFile(env.path(kForumDbFile));
  SqlConnection c;
  if (!OpenForumDatabase(env, c, error)) return false;
  QSqlQuery q(c.db());
  c.db().transaction();
  for (int k = 0; k < 20; ++k)
    q.exec(QStringLiteral("INSERT INTO lawinfo (a, a1, c, firsttid) VALUES ('%1', '%2', '%3', 0)")
               .arg(gen::LawTitle(k), gen::LawCode(k))
               .arg(kFirstBoard + k % (kLastBoard - kFirstBoard + 1)));
  for (int board = kTotalsBoard; board <= kLastBoard; ++board)
    q.exec(QStringLiteral("INSERT INTO board (boardid, lastbbsnum, lasttopicnum, todaynum) VALUES (%1, 0, 0, 0)")
               .arg(board));
  return c.db().commit();
}

// The topics written into the database.
qint64 TopicsWritten(const Env& env) {
  SqlConnection c;
  QString error;
  if (!OpenForumDatabase(env, c, &error)) return -1;
  QSqlQuery q(c.db());
  if (!q.exec(QStringLiteral("SELECT COUNT(*) FROM topic")) || !q.next()) return -1;
  return q.value(0).toLongLong();
}

// The generation alone: open the database, walk the laws, write.
void BM_ForumGeneration(benchmark::State& state) {
  const ForumFolder& folder = TheForumFolder();
  if (!folder.ok) {
    state.SkipWithError("no generated folder");
    return;
  }
  bench::BenchEnv b(folder.dir.path());
  qint64 written = 0;
  for (auto _ : state) {
    state.PauseTiming();
    QString error;
    if (!PrepareForumDatabase(b.env, &error)) {
      state.SkipWithError(qPrintable(error));
      break;
    }
    state.ResumeTiming();
    SqlConnection c;
    OpenForumDatabase(b.env, c, &error);
    ForumCounters counters;
    const ForumRunResult r = ProcessForumData(b.env, c, counters, NewsLinks{}, [](qint64, qint64) {});
    written = r.questions;
    if (!r.ok) {
      state.SkipWithError(qPrintable(r.error));
      break;
    }
  }
  if (written != kForumQuestions) state.SkipWithError("not every question written");
  state.counters["questions"] = static_cast<double>(written);
}
BENCHMARK(BM_ForumGeneration)->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(3);

// The button 处理论坛数据 of the knowledge-point window on the screen: the
// generation with the window's bar moved and its events let through after
// each question, then the box "ok".
void BM_ForumGenerationWindow(benchmark::State& state) {
  const ForumFolder& folder = TheForumFolder();
  if (!folder.ok) {
    state.SkipWithError("no generated folder");
    return;
  }
  bench::BenchEnv b(folder.dir.path());
  AppState app;
  app.env = b.env;
  Form17 form(app);
  form.openWindow();
  QApplication::processEvents();
  qint64 written = 0;
  for (auto _ : state) {
    state.PauseTiming();
    QString error;
    if (!PrepareForumDatabase(b.env, &error)) {
      state.SkipWithError(qPrintable(error));
      break;
    }
    b.boxes.clear();
    state.ResumeTiming();
    form.Command7_Click();
    state.PauseTiming();
    written = TopicsWritten(b.env);
    state.ResumeTiming();
  }
  if (written != kForumQuestions || b.boxes.shown().isEmpty() || b.boxes.shown().last().text != QStringLiteral("ok"))
    state.SkipWithError("not every question written");
  state.counters["questions"] = static_cast<double>(written);
}
BENCHMARK(BM_ForumGenerationWindow)->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(3);

}  // namespace

int main(int argc, char** argv) { return mj::bench::RunInApplication(argc, argv); }
