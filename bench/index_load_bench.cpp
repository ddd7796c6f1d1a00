// The start-up load of the question index: 20,000 rows of items.mmd into
// memory, against merely reading the table file's bytes.

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>
#include <QTimeZone>
#include <chrono>
#include <cstdlib>
#include <memory>

#include "bank/item_index.h"
#include "bank/tables.h"
#include "platform/dbftable.h"
#include "platform/paths.h"
#include "practice/answer_check.h"

namespace {

constexpr int kRows = 20000;

const QStringList& lawTitles() {
  static const QStringList t = {QStringLiteral("刑法"), QStringLiteral("民法典"),     QStringLiteral("刑事诉讼法"),
                                QStringLiteral("宪法"), QStringLiteral("行政诉讼法"), QStringLiteral("公司法")};
  return t;
}

// A practice record of `entries` entries, newest first: the time as
// yyyy-mm-dd hh:mm and the answer right-aligned in 4.
QString storyOf(int seed, int entries) {
  if (entries == 0) return QStringLiteral("no");
  static const QStringList answers = {QStringLiteral("A"), QStringLiteral("BD"), QStringLiteral("ABC"),
                                      QStringLiteral("ABCD"), QStringLiteral("C")};
  QString s;
  for (int e = 0; e < entries; ++e) {
    const int day = 1 + (seed + e * 7) % 28;
    const int month = 1 + (seed / 3 + e) % 12;
    const QString ans = answers[(seed + e) % answers.size()];
    // In UTC every hour of every day exists.
    const QDateTime when(QDate(2024, month, day), QTime((seed + e) % 24, (seed * 7 + e) % 60), QTimeZone::utc());
    s += mj::RecordEntry(when, ans);
  }
  return s;
}

// A flat citation list of one to four articles.
QString citationOf(int seed) {
  QString c;
  const int n = 1 + seed % 4;
  for (int k = 0; k < n; ++k)
    c += QStringLiteral("《") + lawTitles()[(seed + k) % lawTitles().size()] + QStringLiteral("》") +
         QString::number(1 + (seed * 13 + k * 31) % 450) + QStringLiteral("．");
  return c;
}

struct IndexFixture {
  QTemporaryDir dir;
  QString folder;
  QString file;

  IndexFixture() {
    folder = dir.path() + QStringLiteral("/dbf");
    mj::MakeDir(folder);
    file = folder + QStringLiteral("/items.mmd");
    mj::DbfTable t = mj::DbfTable::create(file, mj::tables::ItemFields());
    // In table order as a data set has it: the rows of one bank file
    // (200 questions of one type) together, banks in code order.
    for (int i = 0; i < kRows; ++i) {
      const int r = t.appendRow();
      const int type = 1 + (i / 200) % 3;
      const QString bank = QStringLiteral("%1").arg(10001 + i / 600, 5, 10, QChar(u'0'));
      const QString id = bank + QString::number(type) + QStringLiteral("%1").arg(1 + i % 200, 5, 10, QChar(u'0'));
      static const QStringList singles = {QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C"),
                                          QStringLiteral("D")};
      static const QStringList multiples = {QStringLiteral("AB"), QStringLiteral("ACD"), QStringLiteral("BD"),
                                            QStringLiteral("ABCD"), QStringLiteral("BC")};
      t.setText(r, QStringLiteral("filename"), id.left(6));
      t.setText(r, QStringLiteral("story"), storyOf(i, (i * 7) % 9));
      t.setText(r, QStringLiteral("answer"), type == 1 ? singles[(i * 3) % 4] : multiples[(i * 7) % 5]);
      t.setText(r, QStringLiteral("aboutlaw"), citationOf(i));
      t.setText(r, QStringLiteral("itemid"), id);
      if (i % 5 == 0) t.setText(r, QStringLiteral("hastest"), QStringLiteral("1"));
      t.setLogical(r, QStringLiteral("valid2"), i % 17 != 0);
      t.setLogical(r, QStringLiteral("hasselect"), i % 2 == 0);
      t.setNumber(r, QStringLiteral("itemtype"), type);
    }
    t.close();
  }
};

IndexFixture& fixture() {
  static IndexFixture f;
  return f;
}

bool loadIndex(const IndexFixture& f) {
  mj::ItemIndex index;
  mj::ReadData2ItemData(f.folder, mj::tables::kItems, index);
  benchmark::DoNotOptimize(index);
  return index.size() == kRows;
}

bool readBytes(const IndexFixture& f) {
  QFile file(f.file);
  if (!file.open(QIODevice::ReadOnly)) return false;
  QByteArray bytes = file.readAll();
  benchmark::DoNotOptimize(bytes);
  return bytes.size() > kRows * 500;
}

// Seconds that `work` takes in a child process of its own: a fresh heap, as
// the program has it when it loads the index at start-up. -1 when the work
// or the child failed.
template <typename Work>
double secondsInChild(Work work) {
  int fds[2];
  if (pipe(fds) != 0) return -1;
  const pid_t pid = fork();
  if (pid == 0) {
    close(fds[0]);
    const auto t0 = std::chrono::steady_clock::now();
    const bool ok = work();
    const double s = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
    const ssize_t n = write(fds[1], &s, sizeof s);
    _exit(ok && n == sizeof s ? 0 : 1);
  }
  close(fds[1]);
  double s = -1;
  if (read(fds[0], &s, sizeof s) != sizeof s) s = -1;
  close(fds[0]);
  int status = 0;
  if (waitpid(pid, &status, 0) != pid || !WIFEXITED(status) || WEXITSTATUS(status) != 0) s = -1;
  return s;
}

// The load at start-up: each run in a fresh process.
void BM_IndexLoad(benchmark::State& state) {
  IndexFixture& f = fixture();
  for (auto _ : state) {
    const double s = secondsInChild([&] { return loadIndex(f); });
    if (s < 0) state.SkipWithError("the load failed");
    state.SetIterationTime(s);
  }
}
BENCHMARK(BM_IndexLoad)->UseManualTime()->Unit(benchmark::kMillisecond);

void BM_ReadFileBytes(benchmark::State& state) {
  IndexFixture& f = fixture();
  for (auto _ : state) {
    const double s = secondsInChild([&] { return readBytes(f); });
    if (s < 0) state.SkipWithError("the read failed");
    state.SetIterationTime(s);
  }
}
BENCHMARK(BM_ReadFileBytes)->UseManualTime()->Unit(benchmark::kMillisecond);

// The same, again and again in one process, with memory the process
// already has: the allocator keeps what is freed (no trimming, no mapping
// of large blocks), so that these two measure the work alone, without the
// page faults of fresh memory. The release of each index is not timed, and
// neither is the allocator's sorting of the blocks just freed: one large
// request makes it happen before the clock runs again.
void keepFreedMemory() {
  mallopt(M_TRIM_THRESHOLD, 1 << 30);
  mallopt(M_MMAP_THRESHOLD, 1 << 30);
}

void BM_IndexLoadRepeated(benchmark::State& state) {
  keepFreedMemory();
  IndexFixture& f = fixture();
  for (auto _ : state) {
    mj::ItemIndex index;
    mj::ReadData2ItemData(f.folder, mj::tables::kItems, index);
    benchmark::DoNotOptimize(index);
    state.PauseTiming();
    if (index.size() != kRows) state.SkipWithError("wrong row count");
    index = mj::ItemIndex();
    void* block = std::malloc(1 << 20);
    benchmark::DoNotOptimize(block);
    std::free(block);
    state.ResumeTiming();
  }
}
BENCHMARK(BM_IndexLoadRepeated)->Unit(benchmark::kMillisecond);

void BM_ReadFileBytesRepeated(benchmark::State& state) {
  keepFreedMemory();
  IndexFixture& f = fixture();
  for (auto _ : state)
    if (!readBytes(f)) state.SkipWithError("the read failed");
}
BENCHMARK(BM_ReadFileBytesRepeated)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
