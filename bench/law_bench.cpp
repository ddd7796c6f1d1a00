// Speed of the law library on the real statutes (skipped without them) and
// of the numeral look-ups.

#include <benchmark/benchmark.h>

#include "bench_support.h"
#include "law/citations.h"
#include "law/law_extract.h"
#include "law/law_files.h"
#include "law/law_text.h"
#include "law/numerals.h"
#include "platform/env.h"

namespace {

using mj::bench::RealDataRoot;

// Ten citations over three laws, as a question's answer may carry them.
const QString kCitations = QStringLiteral(
    "答案：B。参见《刑法》第20条、第133条、第264条、第382-383条"
    "《刑事诉讼法》第12条、第81条"
    "《民法典》第143条、第1165条、第577条");

mj::Env RealEnv() {
  mj::Env env;
  env.root = RealDataRoot();
  return env;
}

void BM_GetLawTxtForDaAn_Warm(benchmark::State& state) {
  const mj::Env env = RealEnv();
  if (env.root.isEmpty()) return state.SkipWithError("no real data");
  (void)mj::GetLawTxtForDaAn(env, kCitations);
  for (auto _ : state) benchmark::DoNotOptimize(mj::GetLawTxtForDaAn(env, kCitations));
}
BENCHMARK(BM_GetLawTxtForDaAn_Warm)->Unit(benchmark::kMillisecond);

void BM_GetLawTxtForDaAn_Cold(benchmark::State& state) {
  const mj::Env env = RealEnv();
  if (env.root.isEmpty()) return state.SkipWithError("no real data");
  for (auto _ : state) {
    mj::ClearLawCache();
    benchmark::DoNotOptimize(mj::GetLawTxtForDaAn(env, kCitations));
  }
}
BENCHMARK(BM_GetLawTxtForDaAn_Cold)->Unit(benchmark::kMillisecond);

void BM_LastItemNum_Minfadian(benchmark::State& state) {
  const QString root = RealDataRoot();
  if (root.isEmpty()) return state.SkipWithError("no real data");
  const QString text = mj::ReadLawFile(root + QStringLiteral("/lawtxt/民法典.mmd"));
  for (auto _ : state) benchmark::DoNotOptimize(mj::LastItemNum(text));
}
BENCHMARK(BM_LastItemNum_Minfadian)->Unit(benchmark::kMicrosecond);

void BM_GetMyLongDaAn_Minfadian(benchmark::State& state) {
  const QString root = RealDataRoot();
  if (root.isEmpty()) return state.SkipWithError("no real data");
  const QString text = mj::ReadLawFile(root + QStringLiteral("/lawtxt/民法典.mmd"));
  const QString table = mj::GetLongDaXie(static_cast<qint16>(mj::LastItemNum(text)));
  for (auto _ : state) benchmark::DoNotOptimize(mj::GetMyLongDaAn(text, table, QStringLiteral("居住权")));
}
BENCHMARK(BM_GetMyLongDaAn_Minfadian)->Unit(benchmark::kMillisecond);

void BM_DaXieToNum_NoNumeral(benchmark::State& state) {
  (void)mj::DaXieToNum(QStringLiteral("一"));  // the table exists from here on
  const QString text = QStringLiteral("一千零一十");
  for (auto _ : state) benchmark::DoNotOptimize(mj::DaXieToNum(text));
}
BENCHMARK(BM_DaXieToNum_NoNumeral)->Unit(benchmark::kNanosecond);

void BM_MyGetTheNum_NoNumeral(benchmark::State& state) {
  (void)mj::MyGetTheNum(QStringLiteral("一"));
  const QString text = QStringLiteral("第一条");
  for (auto _ : state) benchmark::DoNotOptimize(mj::MyGetTheNum(text));
}
BENCHMARK(BM_MyGetTheNum_NoNumeral)->Unit(benchmark::kNanosecond);

void BM_MyGetTheNum_Found(benchmark::State& state) {
  (void)mj::MyGetTheNum(QStringLiteral("一"));
  const QString text = QStringLiteral("九万九千九百九十九");
  for (auto _ : state) benchmark::DoNotOptimize(mj::MyGetTheNum(text));
}
BENCHMARK(BM_MyGetTheNum_Found)->Unit(benchmark::kNanosecond);

}  // namespace

BENCHMARK_MAIN();
