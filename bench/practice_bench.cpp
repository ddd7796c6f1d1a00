// The answer step, from the click on an answer button to the answer window
// filled (outcome, answer field, law text of ten articles of the real
// statutes, the record written), on a generated program folder whose lawtxt
// holds the real statutes; and a soak of 10,000 answers in one process, with
// the growth of the resident memory and every record checked in the table.

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QVBoxLayout>
#include <cstdio>
#include <memory>

#include "bank/bank_text.h"
#include "bank/item_index.h"
#include "bank/tables.h"
#include "bench_support.h"
#include "generator.h"
#include "law/law_files.h"
#include "platform/dbftable.h"
#include "platform/text_toolkit.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"
#include "practice/answer_check.h"
#include "practice/answer_window.h"
#include "practice/directory.h"
#include "practice/practice_frame_widget.h"
#include "practice/practice_texts.h"
#include "settings/settings.h"

using namespace mj;

namespace {

const QDateTime kNow(QDate(2026, 11, 21), QTime(9, 30));

// Ten articles of three real statutes, as an answer may cite them.
const QString kCitation = QStringLiteral(
    "参见《刑法》第20条、第133条、第264条、第382-383条《刑事诉讼法》第12条、第81条"
    "《民法典》第143条、第1165条、第577条");

// The resident memory in KiB, after the heap gave back what is free: growth
// then means memory held, not freed blocks kept by the allocator.
long RssKb() {
  malloc_trim(0);
  FILE* f = std::fopen("/proc/self/status", "r");
  if (!f) return 0;
  char line[256];
  long kb = 0;
  while (std::fgets(line, sizeof line, f))
    if (std::sscanf(line, "VmRSS: %ld kB", &kb) == 1) break;
  std::fclose(f);
  return kb;
}

// A generated program folder with every record reset to "no" (so that every
// question is due), and a practice frame over it.
struct Practice {
  QTemporaryDir dir;
  bench::BenchEnv services{dir.path(), kNow};
  Settings settings;
  AppState app;
  Directory directory;
  std::unique_ptr<QWidget> host;
  PracticeFrame* frame = nullptr;
  QString error;

  Practice(int questions, int banks) {
    gen::Sizes sizes;
    sizes.questions = questions;
    sizes.banks = banks;
    sizes.papers = 0;
    if (!gen::Generate(dir.path(), sizes, &error)) return;
    app.env = services.env;
    DbfTable items = DbfTable::open(app.env.path(QStringLiteral("\\dbf\\items.mmd")), DbfTable::Mode::ReadWrite);
    for (int r : items.rows()) items.setText(r, QStringLiteral("story"), QStringLiteral("no"));
    items.close();
    app.settings = &settings;
    app.DataFolder = app.env.path(QStringLiteral("\\dbf"));
    app.FaceTable = tables::kDirectory;
    app.ItemTable = tables::kItems;
    app.OkTimes = 1;
    app.AddNum = 1;
    app.PassDays = 30;
    ReadData2ItemData(app.DataFolder, app.ItemTable, app.AllItemData);
    SetWorkItemData(app.ItemData, app.AllItemData);
    directory.load(app.DataFolder, app.FaceTable);
    directory.show(GridFormatText(DirectoryMode::ShiTi));

    host = std::make_unique<QWidget>();
    auto* v = new QVBoxLayout(host.get());
    frame = new PracticeFrame(app);
    v->addWidget(frame);
    PracticeFrame::MainWindowParts parts;
    parts.directory = [this] { return &directory; };
    frame->setMainWindowParts(std::move(parts));
    host->resize(1000, 700);
    host->show();
  }

  PracticeSession& session() { return frame->session(); }
  PracticeRun& run() { return app.Run; }

  // The bank rows of the directory, in order.
  QList<int> bankRows() const {
    QList<int> rows;
    for (int r = 1; r <= directory.rowCount(); ++r)
      if (directory.text(r, kColFile).toUpper().endsWith(QStringLiteral(".MMD"))) rows.append(r);
    return rows;
  }

  // The real statutes in lawtxt, and the answers of the bank of `row` citing
  // ten of their articles.
  bool citeRealLaws(int row) {
    const QString real = bench::RealDataRoot();
    if (real.isEmpty()) return false;
    QDirIterator it(real + QStringLiteral("/lawtxt"), {QStringLiteral("*.mmd")}, QDir::Files);
    while (it.hasNext()) {
      const QString f = it.next();
      CopyFileOver(f, app.env.path(QStringLiteral("\\lawtxt\\") + QFileInfo(f).fileName()));
    }
    const QString bank = GetSmallTxtName(directory.text(row, kColFile));
    const QString path = app.env.path(QStringLiteral("\\yibanti\\") + bank + QStringLiteral(".mmd"));
    QString text = ReadText(path);
    QString out;
    qsizetype at = 0;
    // Every answer field loses its own citation and gets the ten articles.
    for (qsizetype p = text.indexOf(QStringLiteral("■答案：")); p >= 0;
         p = text.indexOf(QStringLiteral("■答案："), at)) {
      const qsizetype see = text.indexOf(QStringLiteral("参见"), p);
      const qsizetype end = text.indexOf(QStringLiteral("\r\n"), p);
      if (see < 0 || end < 0 || see > end) break;
      out += text.mid(at, see - at) + kCitation;
      at = end;
    }
    out += text.mid(at);
    return WriteTextAtomic(path, out);
  }

  // The right answer of the question shown, and a wrong one among the
  // buttons of its type.
  QString key() {
    QString field = run().AnswerField;
    const QString k = Order(AnswerLetters(field));
    return k.isEmpty() ? QStringLiteral("A") : k;
  }
  QString wrong(const QString& k) {
    const AnswerRow row = AnswerRowOf(run().CurType);
    const QString first = AnswerCaptions()[row.first];
    return k == first ? AnswerCaptions()[row.first + 1] : first;
  }
  void answer(const QString& caption) { session().Command2_Click(AnswerButtonIndex(caption)); }
};

// One answer with the law text made anew (the question was just moved to);
// `cold`: the law files are read again, as for the first answer of a run.
void AnswerToWindow(benchmark::State& state, bool cold) {
  Practice p(20000, 60);
  if (!p.error.isEmpty()) return state.SkipWithError(qPrintable(p.error));
  // The last bank: its rows stand at the end of the item table, the longest
  // way for every walk of the table.
  const int row = p.bankRows().value(p.bankRows().size() - 1);
  if (!p.citeRealLaws(row)) return state.SkipWithError("no real statutes in ../shared/realdata/lawtxt");
  if (!p.session().startFromDirectory(row)) return state.SkipWithError("no run");
  int answers = 0;
  for (auto _ : state) {
    state.PauseTiming();
    p.session().answerWindowReturn();
    QCoreApplication::processEvents();
    if (answers > 0) {
      if (!p.session().canGoOn()) p.run().CurIndex = 0;
      p.session().Frame3Cmd_Click(2);
    }
    if (cold) ClearLawCache();
    const QString caption = answers % 2 ? p.wrong(p.key()) : p.key();
    state.ResumeTiming();
    p.answer(caption);
    benchmark::DoNotOptimize(p.frame->answerWindow()->boxText(1));
    ++answers;
  }
  const QString lower = p.frame->answerWindow()->boxText(1);
  if (!lower.contains(QStringLiteral("《民法典》\r\n　　第五百七十七条")))
    state.SkipWithError("the law text is not in the answer window");
  state.counters["bank_size"] = static_cast<double>(p.run().count());
  state.counters["lower_box_chars"] = static_cast<double>(lower.size());
}

void BM_AnswerToWindow_Warm(benchmark::State& state) { AnswerToWindow(state, false); }
void BM_AnswerToWindow_Cold(benchmark::State& state) { AnswerToWindow(state, true); }
BENCHMARK(BM_AnswerToWindow_Warm)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_AnswerToWindow_Cold)->Unit(benchmark::kMillisecond);

// 10,000 answers in one process: every question of 40 banks once, right and
// wrong by turns, each bank a run of its own ended by 返回.
void BM_Soak10000Answers(benchmark::State& state) {
  constexpr int kAnswers = 10000;
  Practice p(kAnswers, 40);
  if (!p.error.isEmpty()) return state.SkipWithError(qPrintable(p.error));
  QHash<QString, QString> given;
  long rssAfterWarmUp = 0;
  int runs = 0;
  for (auto _ : state) {
    for (int row : p.bankRows()) {
      if (!p.session().startFromDirectory(row)) continue;
      ++runs;
      while (true) {
        const QString id = p.session().currentId();
        const QString caption = given.size() % 2 ? p.wrong(p.key()) : p.key();
        p.answer(caption);
        given.insert(id, caption);
        if (given.size() == 1000) rssAfterWarmUp = RssKb();
        p.session().answerWindowReturn();
        // The window system's turn between two clicks.
        QCoreApplication::processEvents();
        if (!p.session().canGoOn()) break;
        p.session().Frame3Cmd_Click(2);
      }
      p.session().Frame3Cmd_Click(3);
    }
  }
  const long rssEnd = RssKb();
  // Every record is in the table: the entry of its one answer.
  int written = 0;
  const DbfTable items = DbfTable::open(p.app.env.path(QStringLiteral("\\dbf\\items.mmd")));
  for (int r : items.rows()) {
    const QString id = items.trimmedText(r, QStringLiteral("itemid"));
    if (given.contains(id) && items.trimmedText(r, QStringLiteral("story")) == RecordEntry(kNow, given.value(id)))
      ++written;
  }
  state.counters["runs"] = runs;
  state.counters["answers"] = static_cast<double>(given.size());
  state.counters["records_written"] = written;
  state.counters["rss_growth_MB"] = static_cast<double>(rssEnd - rssAfterWarmUp) / 1024.0;
  state.counters["rss_end_MB"] = static_cast<double>(rssEnd) / 1024.0;
  if (given.size() != kAnswers || written != kAnswers)
    state.SkipWithError("not every answer was recorded");
  else if (rssEnd - rssAfterWarmUp >= 10 * 1024)
    state.SkipWithError("memory grew by 10 MB or more");
}
BENCHMARK(BM_Soak10000Answers)->Unit(benchmark::kSecond)->Iterations(1);

}  // namespace

int main(int argc, char** argv) { return mj::bench::RunInApplication(argc, argv); }
