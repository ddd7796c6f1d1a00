// Speed of the automatic conversion of a loose paper: the program's
// AutoFormat against the rules written out one replacement at a time (the
// transcription kept in the tests), on the same generated 500-question paper.
// Both must give the same bytes; the benchmark stops when they do not.

#include <benchmark/benchmark.h>

#include <random>

#include "bench_support.h"
#include "papers/auto_format.h"
#include "papers/auto_format_literal.h"
#include "papers/loose_papers.h"
#include "platform/textfile.h"

namespace {

const QString& Paper() {
  static const QString paper = [] {
    std::mt19937 rng(2024);
    return mj::test::LoosePaper(rng, 500);
  }();
  return paper;
}

bool SameOutput(benchmark::State& state) {
  static const bool same = mj::AutoFormat(Paper()) == mj::literal::AutoFormat(Paper());
  if (!same) state.SkipWithError("AutoFormat and the written-out rules differ");
  state.counters["KB"] = static_cast<double>(mj::ToGbk(Paper()).size()) / 1024.0;
  return same;
}

void BM_AutoFormat(benchmark::State& state) {
  if (!SameOutput(state)) return;
  for (auto _ : state) benchmark::DoNotOptimize(mj::AutoFormat(Paper()));
}
BENCHMARK(BM_AutoFormat)->Unit(benchmark::kMillisecond);

void BM_AutoFormat_RulesWrittenOut(benchmark::State& state) {
  if (!SameOutput(state)) return;
  for (auto _ : state) benchmark::DoNotOptimize(mj::literal::AutoFormat(Paper()));
}
BENCHMARK(BM_AutoFormat_RulesWrittenOut)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) { return mj::bench::RunInApplication(argc, argv); }
