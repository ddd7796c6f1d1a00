// The daily count of due questions: 20,000 questions in the index and 300
// directory rows, done by one walk of the index (NewIniDbfData) and by the
// walk of the whole index per directory row (NewIniDbfDataByWalk). Both
// write the same numbers into the directory table; the setup checks that.

#include <benchmark/benchmark.h>

#include <QDate>
#include <QDateTime>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>

#include "bank/eligibility.h"
#include "bank/tables.h"
#include "platform/dbftable.h"
#include "platform/vbtext.h"
#include "practice/answer_check.h"

using namespace mj;

namespace {

constexpr int kQuestions = 20000;
constexpr int kDirectoryRows = 300;
const QDate kToday(2026, 11, 21);

QString entry(const QDate& day, const QString& answer) { return RecordEntry(QDateTime(day, QTime(10, 32)), answer); }

struct Data {
  QTemporaryDir dir;
  QString folder;
  ItemIndex index;
  QList<QList<QString>> faceRows;  // a, b, c

  Data() {
    folder = dir.path();
    QRandomGenerator rng(1121);
    const QStringList answers = {QStringLiteral("A"), QStringLiteral("B"),  QStringLiteral("C"),
                                 QStringLiteral("D"), QStringLiteral("AB"), QStringLiteral("ACD")};
    // 300 rows: a heading over every 5 banks, 250 banks of 80 questions.
    QStringList banks;
    while (faceRows.size() < kDirectoryRows) {
      if (faceRows.size() % 6 == 0) {
        const qsizetype first = faceRows.size() + 2;
        faceRows.append({QStringLiteral("法律%1").arg(faceRows.size()), QString(),
                         QStringLiteral("%1-%2").arg(first).arg(first + 4)});
        continue;
      }
      const QString bank = QStringLiteral("%1").arg(10000 + banks.size() / 3, 5, 10, QChar(u'0')) +
                           QString::number(1 + banks.size() % 3);
      banks.append(bank);
      faceRows.append(
          {QStringLiteral("题库") + bank, QStringLiteral("\\yibanti\\") + bank + QStringLiteral(".mmd"), QString()});
    }
    for (int q = 0; q < kQuestions; ++q) {
      const QString bank = banks[q % banks.size()];
      ItemRow r;
      r.filename = bank;
      r.itemid = bank + QStringLiteral("%1").arg(q / banks.size() + 1, 5, 10, QChar(u'0'));
      r.answer = answers[rng.bounded(answers.size())];
      const int entries = rng.bounded(4) == 0 ? 0 : rng.bounded(1, 9);
      r.story = entries == 0 ? QStringLiteral("no") : QString();
      for (int e = 0; e < entries; ++e)
        r.story += entry(kToday.addDays(-rng.bounded(0, 120)), answers[rng.bounded(answers.size())]);
      r.valid2 = rng.bounded(20) != 0;
      r.itemtype = static_cast<int>(Val(Mid(bank, 6, 1)));
      index.append(r);
    }
    // The item table (for the bar's maximum) and the directory table.
    DbfTable items = DbfTable::create(folder + QStringLiteral("/items.mmd"), tables::ItemFields());
    for (const ItemRow& r : index) {
      const int rec = items.appendRow();
      items.setText(rec, QStringLiteral("filename"), r.filename);
      items.setText(rec, QStringLiteral("story"), r.story);
      items.setText(rec, QStringLiteral("answer"), r.answer);
      items.setText(rec, QStringLiteral("itemid"), r.itemid);
      items.setLogical(rec, QStringLiteral("valid2"), r.valid2);
      items.setLogical(rec, QStringLiteral("hasselect"), false);
      items.setNumber(rec, QStringLiteral("itemtype"), r.itemtype);
    }
    items.close();
    resetFace(QStringLiteral("33ok.mmd"));
    resetFace(QStringLiteral("walk.mmd"));
  }

  void resetFace(const QString& name) const {
    DbfTable face = DbfTable::create(folder + u'/' + name, tables::DirectoryFields());
    for (const auto& row : faceRows) {
      const int rec = face.appendRow();
      face.setText(rec, 0, row[0]);
      if (!row[1].isEmpty()) face.setText(rec, 1, row[1]);
      if (!row[2].isEmpty()) face.setText(rec, 2, row[2]);
    }
  }

  QStringList counts(const QString& name) const {
    const DbfTable face = DbfTable::open(folder + u'/' + name);
    QStringList out;
    for (int r : face.rows())
      out.append(NumText(face.number(r, tables::kDirTotal)) + u'/' + NumText(face.number(r, tables::kDirEligible)));
    return out;
  }
};

Data& data() {
  static Data d;
  static bool checked = false;
  if (!checked) {
    checked = true;
    const Schedule s{1, 1, 30, false, kToday};
    NewIniDbfData(d.folder, QStringLiteral("33ok.mmd"), QStringLiteral("items.mmd"), d.index, s);
    NewIniDbfDataByWalk(d.folder, QStringLiteral("walk.mmd"), QStringLiteral("items.mmd"), d.index, s);
    if (d.counts(QStringLiteral("33ok.mmd")) != d.counts(QStringLiteral("walk.mmd"))) {
      std::fprintf(stderr, "the two counts differ\n");
      std::abort();
    }
  }
  return d;
}

const Schedule kSchedule{1, 1, 30, false, kToday};

void BM_NewIniDbfData(benchmark::State& state) {
  Data& d = data();
  int bar = 0;
  const CountProgress p{[&](int m) { bar = m; }, [&](int v) { bar = v; }};
  for (auto _ : state) {
    NewIniDbfData(d.folder, QStringLiteral("33ok.mmd"), QStringLiteral("items.mmd"), d.index, kSchedule, p);
    benchmark::DoNotOptimize(bar);
  }
  state.counters["questions"] = kQuestions;
  state.counters["rows"] = kDirectoryRows;
}
BENCHMARK(BM_NewIniDbfData)->Unit(benchmark::kMillisecond);

void BM_NewIniDbfDataByWalk(benchmark::State& state) {
  Data& d = data();
  int bar = 0;
  const CountProgress p{[&](int m) { bar = m; }, [&](int v) { bar = v; }};
  for (auto _ : state) {
    NewIniDbfDataByWalk(d.folder, QStringLiteral("walk.mmd"), QStringLiteral("items.mmd"), d.index, kSchedule, p);
    benchmark::DoNotOptimize(bar);
  }
}
BENCHMARK(BM_NewIniDbfDataByWalk)->Unit(benchmark::kMillisecond);

// The query that gives the bar its maximum: the live rows of the item table.
void BM_LiveRowsQuery(benchmark::State& state) {
  Data& d = data();
  for (auto _ : state) {
    const DbfTable items = DbfTable::open(d.folder + QStringLiteral("/items.mmd"));
    benchmark::DoNotOptimize(Select(items, {{QStringLiteral("valid2"), true}}).size());
  }
}
BENCHMARK(BM_LiveRowsQuery)->Unit(benchmark::kMillisecond);

// The due test alone over the whole index.
void BM_IsOkItemOverIndex(benchmark::State& state) {
  Data& d = data();
  for (auto _ : state) {
    int ok = 0;
    for (const ItemRow& r : d.index) {
      QString story = r.story;
      ok += IsOkItem(story, kSchedule, r.answer) ? 1 : 0;
    }
    benchmark::DoNotOptimize(ok);
  }
}
BENCHMARK(BM_IsOkItemOverIndex)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
