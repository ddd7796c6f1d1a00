// The practice log and the update packages: the grid of the days of
// practice over 20,000 questions with 200 entries of history each, and an
// update package of 1,000 items taken into a generated folder of 20,000
// questions (its files written and put onto the disk).

#include <benchmark/benchmark.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "bank/item_index.h"
#include "bench_support.h"
#include "generator.h"
#include "log/practice_log.h"
#include "log/update_package.h"
#include "platform/textfile.h"

using namespace mj;

namespace {

// 20,000 questions of 200 entries each (4,000 characters of record), the
// oldest on one of 400 days, right or wrong, as the program writes them.
ItemIndex LongHistories() {
  ItemIndex index;
  const QDate first(2025, 10, 1);
  const QStringList keys = {QStringLiteral("A"), QStringLiteral("BD"), QStringLiteral("ABCD")};
  for (int i = 0; i < 20000; ++i) {
    ItemRow r;
    r.itemid = QStringLiteral("1%1%2%3").arg(i / 1000 + 1000, 4, 10, QChar(u'0')).arg(i % 3 + 1).arg(i % 1000 + 1, 5, 10, QChar(u'0'));
    r.filename = r.itemid.left(6);
    r.answer = keys[i % 3];
    r.itemtype = i % 3 + 1;
    r.valid2 = true;
    QString story;
    story.reserve(200 * 20);
    for (int k = 0; k < 200; ++k) {
      // Newest first: entry k is (199 - k) steps after the oldest.
      const QDate d = first.addDays((i * 7 + (199 - k) * 2) % 400);
      const QString given = (k == 199 && i % 4 == 0) ? QStringLiteral("C") : r.answer;
      story += d.toString(QStringLiteral("yyyy-MM-dd")) + QStringLiteral(" 09:30") + QString(4 - given.size(), u' ') + given;
    }
    r.story = story;
    index.append(r);
  }
  return index;
}

void BM_DaysGrid(benchmark::State& state) {
  const ItemIndex index = LongHistories();
  QTemporaryDir dir;
  bench::BenchEnv services(dir.path());
  int rows = 0;
  for (auto _ : state) {
    const std::optional<LogGrid> g = BuildDaysGrid(services.env, index);
    rows = g ? static_cast<int>(g->rows.size()) : 0;
    benchmark::DoNotOptimize(rows);
  }
  state.counters["days"] = rows;
  state.counters["questions"] = static_cast<double>(index.size());
}
BENCHMARK(BM_DaysGrid)->Unit(benchmark::kMillisecond);

// A copy of a folder tree.
void CopyFolder(const QString& from, const QString& to) {
  QDirIterator it(from, QDir::Files, QDirIterator::Subdirectories);
  while (it.hasNext()) {
    const QString p = it.next();
    const QString target = to + u'/' + QDir(from).relativeFilePath(p);
    QDir().mkpath(QFileInfo(target).absolutePath());
    QFile::copy(p, target);
  }
}

// The update of 1,000 items, from the package's text to the last file
// written; each round on a fresh copy of the generated folder.
void BM_UpdateThousandItems(benchmark::State& state) {
  QTemporaryDir dir;
  const QString base = dir.path() + QStringLiteral("/base");
  gen::Sizes sizes;
  sizes.questions = 20000;
  sizes.banks = 60;
  sizes.laws = 20;
  sizes.articles = 200;
  QString error;
  if (!gen::Generate(base, sizes, &error)) {
    state.SkipWithError(error.toStdString().c_str());
    return;
  }
  const QString package = gen::UpdatePackage(sizes, 1000);
  int round = 0;
  qsizetype updated = 0;
  for (auto _ : state) {
    state.PauseTiming();
    const QString folder = dir.path() + QStringLiteral("/run%1").arg(round++);
    CopyFolder(base, folder);
    bench::BenchEnv services(folder);
    qint16 runState = 3;
    QString ids;
    UpdateView view;
    UpdateRun run(services.env, view, {runState, ids});
    state.ResumeTiming();
    run.takePackage(package, true);
    state.PauseTiming();
    updated = ids.size() / 11;
    QDir(folder).removeRecursively();
    state.ResumeTiming();
  }
  state.counters["questions_written"] = static_cast<double>(updated);
}
BENCHMARK(BM_UpdateThousandItems)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

int main(int argc, char** argv) { return mj::bench::RunInApplication(argc, argv); }
