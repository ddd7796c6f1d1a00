// The statistics window 做题统计: its three charts built from the practice
// records.
//   BM_StatsWindowRefresh   刷新 (and the opening of the window): both item
//                           tables and the directories of a generated folder
//                           of 20,000 + 5,000 questions read from disk, every
//                           record 200 characters long (ten entries, the
//                           longest the program keeps), the figures worked
//                           out and the three charts built
//   BM_StatsWindowPainted   the same, and each chart then drawn once
//   BM_StatsFigures200      the figures alone, from 20,000 records of 200
//                           entries each held in memory: ten times the
//                           history a record in the table can hold
//   BM_StatsWindow200       those figures and the three charts built

#include <benchmark/benchmark.h>

#include <QChartView>
#include <QRandomGenerator>
#include <QSet>
#include <QTemporaryDir>
#include <array>
#include <cstdio>

#include "bench_support.h"
#include "generator.h"
#include "log/practice_stats.h"
#include "log/practice_stats_window.h"
#include "platform/dbftable.h"
#include "practice/answer_check.h"
#include "settings/settings.h"

using namespace mj;

namespace {

const QDate kToday(2026, 11, 21);

// A generated folder whose records are all full.
struct Folder {
  QTemporaryDir dir;
  bench::BenchEnv services{dir.path(), QDateTime(kToday, QTime(9, 30))};
  QString error;
  gen::Result result;
  // Counted here from the tables, independently of the statistics: the
  // entries dated on the last 90 days, those right among them, and the
  // records of 200 characters, the laws and papers with questions done, the
  // records whose oldest entry is wrong (under kNumbers each of them
  // becomes due within the 30 days, no other one does).
  int answers = 0, right = 0, fullRecords = 0, groups = 0, wrongOldest = 0;

  Folder() {
    gen::Sizes sizes;
    sizes.questions = 20000;
    sizes.banks = 250;
    sizes.laws = 50;
    sizes.papers = 50;
    sizes.paperQuestions = 100;
    sizes.today = kToday;
    sizes.fullRecords = true;
    if (!gen::Generate(dir.path(), sizes, &error, &result)) {
      std::fprintf(stderr, "%s\n", qPrintable(error));
      return;
    }
    for (const QString& table : {QStringLiteral("items.mmd"), QStringLiteral("csitems.mmd")}) {
      const DbfTable t = DbfTable::open(dir.path() + QStringLiteral("/dbf/") + table);
      const int story = t.fieldIndex(QStringLiteral("story"));
      const int answer = t.fieldIndex(QStringLiteral("answer"));
      const int bank = t.fieldIndex(QStringLiteral("filename"));
      QSet<QString> codes;
      for (int r : t.rows()) {
        const QString s = t.trimmedText(r, story);
        if (s.size() == 200) ++fullRecords;
        if (s.size() >= 20) codes.insert(t.trimmedText(r, bank).left(5));
        if (s.right(4).trimmed() != t.trimmedText(r, answer)) ++wrongOldest;
        for (int e = 0; e + 20 <= s.size(); e += 20) {
          const QDate day = QDate::fromString(s.mid(e, 10), QStringLiteral("yyyy-MM-dd"));
          if (day > kToday || day.daysTo(kToday) >= 90) continue;
          ++answers;
          if (s.mid(e + 16, 4).trimmed() == t.trimmedText(r, answer)) ++right;
        }
      }
      groups += static_cast<int>(codes.size());
    }
  }
};

Folder& TheFolder() {
  static Folder folder;
  return folder;
}

// Scheduling numbers under which the full records keep the due forecast
// busy: a question whose oldest entry is wrong needs 16 answers and is due
// 12 (papers 10) days after its newest entry; one all right is finished.
const std::array<int, 6> kNumbers{10, 6, 12, 10, 6, 10};

// Whether the window shows what the tables hold.
bool ShowsTheFolder(const Form21& window, const Folder& folder) {
  int answers = 0, right = 0, due = 0;
  for (const DayAnswers& d : window.answersPerDay()) {
    answers += d.answers;
    right += d.right;
  }
  for (const DueDay& d : window.dueDays()) due += d.internal + d.simulated;
  return folder.fullRecords == 25000 && window.answersPerDay().size() == 90 && window.dueDays().size() == 30 &&
         answers == folder.answers && right == folder.right && due == folder.wrongOldest && folder.wrongOldest > 0 &&
         window.shares().size() == folder.groups && folder.services.boxes.shown().isEmpty();
}

void StatsWindow(benchmark::State& state, bool paint) {
  Folder& folder = TheFolder();
  if (!folder.error.isEmpty()) {
    state.SkipWithError("the folder could not be generated");
    return;
  }
  Settings settings;
  for (int i = 0; i < 6; ++i) settings.setNumber(i, kNumbers[static_cast<size_t>(i)]);
  Form21 window(folder.services.env, settings);
  window.openWindow();
  for (auto _ : state) {
    window.refresh();
    if (paint) {
      for (int page = 0; page < 3; ++page) {
        const QPixmap picture = window.chartView(page)->grab();
        benchmark::DoNotOptimize(picture.cacheKey());
      }
    }
  }
  if (!ShowsTheFolder(window, folder)) state.SkipWithError("the window does not show the tables");
  state.counters["answers"] = folder.answers;
}

void BM_StatsWindowRefresh(benchmark::State& state) { StatsWindow(state, false); }
BENCHMARK(BM_StatsWindowRefresh)->Unit(benchmark::kMillisecond);

void BM_StatsWindowPainted(benchmark::State& state) { StatsWindow(state, true); }
BENCHMARK(BM_StatsWindowPainted)->Unit(benchmark::kMillisecond);

// 20,000 questions in 250 banks of 50 laws, each record 200 entries long,
// newest first, a day or two apart, one answer in five wrong.
const PracticeRecords& BigRecords() {
  static const PracticeRecords records = [] {
    PracticeRecords r;
    QRandomGenerator rng(20261121);
    const QStringList keys = {QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C"), QStringLiteral("AB"),
                              QStringLiteral("ACD")};
    for (int b = 0; b < 250; ++b) {
      const QString bank = QStringLiteral("%1%2").arg(10001 + b / 5).arg(1 + b % 3);
      r.internalBanks.insert(bank);
      r.lawNames.insert(bank.left(5), QStringLiteral("《生成法律%1》").arg(1 + b / 5));
    }
    const QList<QString> banks = r.internalBanks.values();
    r.internal.reserve(20000);
    for (int q = 0; q < 20000; ++q) {
      RecordedQuestion rq;
      rq.bank = banks[q % banks.size()];
      rq.answer = keys[rng.bounded(keys.size())];
      QDate day = kToday.addDays(-rng.bounded(0, 10));
      QString story;
      story.reserve(200 * kEntryLength);
      for (int e = 0; e < 200; ++e) {
        const bool wrong = rng.bounded(5) == 0;
        story += day.toString(QStringLiteral("yyyy-MM-dd")) + QStringLiteral(" 20:15") +
                 (wrong ? QStringLiteral("D") : rq.answer).rightJustified(4);
        day = day.addDays(-rng.bounded(1, 3));
      }
      rq.story = story;
      r.internal.append(rq);
    }
    return r;
  }();
  return records;
}

const Schedule kSchedule{1, 1, 30, false, kToday};

void BM_StatsFigures200(benchmark::State& state) {
  const PracticeRecords& records = BigRecords();
  for (auto _ : state) {
    const QList<DayAnswers> days = AnswersPerDay(records, kToday);
    const QList<DueDay> due = DueForecast(records, kSchedule, kSchedule);
    const QList<GroupShare> shares = RightShareByLaw(records);
    benchmark::DoNotOptimize(days.data());
    benchmark::DoNotOptimize(due.data());
    benchmark::DoNotOptimize(shares.data());
  }
}
BENCHMARK(BM_StatsFigures200)->Unit(benchmark::kMillisecond);

void BM_StatsWindow200(benchmark::State& state) {
  const PracticeRecords& records = BigRecords();
  QTemporaryDir dir;
  bench::BenchEnv services(dir.path(), QDateTime(kToday, QTime(9, 30)));
  Settings settings;
  Form21 window(services.env, settings);
  window.resize(900, 620);
  for (auto _ : state) {
    window.showRecords(records);
    benchmark::DoNotOptimize(window.shares().size());
  }
  if (window.answersPerDay().size() != 90 || window.shares().size() != 50) state.SkipWithError("wrong figures");
}
BENCHMARK(BM_StatsWindow200)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) { return bench::RunInApplication(argc, argv); }
