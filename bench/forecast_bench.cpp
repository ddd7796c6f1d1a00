// The count of the forecast window ("开始预测") over a generated folder of
// 20,000 internal questions and 5,000 questions of simulated papers: both
// item tables read from disk and walked row by row, every row tested for
// being due. Once as the count alone, once through the window with its
// progress bar, as the user starts it.

#include <benchmark/benchmark.h>

#include <QGroupBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <array>
#include <cstdio>

#include "bank/forecast.h"
#include "bank/forecast_window.h"
#include "bench_support.h"
#include "generator.h"
#include "platform/dbftable.h"
#include "settings/settings.h"

using namespace mj;

namespace {

struct Folder {
  QTemporaryDir dir;
  bench::BenchEnv services{dir.path()};
  QString error;
  gen::Result result;
  int dueInternal = 0;  // due by the generator's own test, with the settings a new user has
  int dueSimulated = 0;

  Folder() {
    gen::Sizes sizes;
    sizes.questions = 20000;
    sizes.banks = 250;
    sizes.papers = 50;
    sizes.paperQuestions = 100;
    if (!gen::Generate(dir.path(), sizes, &error, &result)) {
      std::fprintf(stderr, "%s\n", qPrintable(error));
      return;
    }
    // Every row walked: the count must equal the due questions counted
    // here independently, with the generator's due test on each record read
    // back from its table.
    for (const auto& [table, count] : {std::pair{QStringLiteral("items.mmd"), &dueInternal},
                                       std::pair{QStringLiteral("csitems.mmd"), &dueSimulated}}) {
      const DbfTable t = DbfTable::open(dir.path() + QStringLiteral("/dbf/") + table);
      const int story = t.fieldIndex(QStringLiteral("story"));
      const int answer = t.fieldIndex(QStringLiteral("answer"));
      for (int r : t.rows())
        if (gen::DueWithDefaults(t.trimmedText(r, story), t.trimmedText(r, answer), sizes.today)) ++*count;
    }
  }
  bool walkedAll(const ForecastCounts& counts) const {
    return error.isEmpty() && result.questions == 20000 && result.paperQuestions == 5000 &&
           services.boxes.shown().isEmpty() && counts.internal == dueInternal && counts.simulated == dueSimulated &&
           dueInternal > 0 && dueSimulated > 0;
  }
};

Folder& TheFolder() {
  static Folder folder;
  return folder;
}

// The numbers of a new user, in the order of the settings file.
const std::array<int, 6> kNumbers{1, 1, 30, 1, 1, 30};

void BM_ForecastCount(benchmark::State& state) {
  Folder& folder = TheFolder();
  if (!folder.error.isEmpty()) {
    state.SkipWithError("the folder could not be generated");
    return;
  }
  ForecastCounts counts;
  for (auto _ : state) {
    counts = CalcData(folder.services.env, kNumbers);
    benchmark::DoNotOptimize(counts);
  }
  if (!folder.walkedAll(counts)) state.SkipWithError("the count did not walk both tables");
  state.counters["questions"] = folder.result.questions + folder.result.paperQuestions;
  state.counters["due"] = counts.internal + counts.simulated;
}
BENCHMARK(BM_ForecastCount)->Unit(benchmark::kMillisecond);

// The button 开始预测 of the window on the screen: the count with the label
// and the bar moving, then the result sentence.
void BM_ForecastWindowCount(benchmark::State& state) {
  Folder& folder = TheFolder();
  if (!folder.error.isEmpty()) {
    state.SkipWithError("the folder could not be generated");
    return;
  }
  Settings settings;
  for (int i = 0; i < 6; ++i) settings.setNumber(i, kNumbers[static_cast<size_t>(i)]);
  Form5 window(folder.services.env, settings, nullptr);
  window.openWindow();
  for (auto _ : state) {
    window.Command2->click();
    benchmark::DoNotOptimize(window.counts());
  }
  if (!folder.walkedAll(window.counts()) || !window.Frame2->isVisible())
    state.SkipWithError("the window did not count both tables");
  state.counters["due"] = window.counts().internal + window.counts().simulated;
}
BENCHMARK(BM_ForecastWindowCount)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) { return bench::RunInApplication(argc, argv); }
