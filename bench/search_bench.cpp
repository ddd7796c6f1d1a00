// The question search and the wrong book on a generated folder of 20,000
// questions whose bank files hold about 20 MB of text (every question gets
// a long generated note): a search kept warm between runs, for a rare word,
// a common one and two words, each beside `grep -F -c` over the same bank
// files (its time is the counter grep_ms); the common word with every hit's
// line made; the window's search with the common word, list painted; the
// first search of a fresh search object (every file read); and the wrong
// book over the index of those 20,000 questions with 200 entries of history
// each.

#include <benchmark/benchmark.h>

#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QProcess>
#include <QRandomGenerator>
#include <QTableView>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <memory>

#include "bank/item_index.h"
#include "bank/question_search.h"
#include "bank/question_search_window.h"
#include "bank/tables.h"
#include "bench_support.h"
#include "generator.h"
#include "log/wrong_book.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"

using namespace mj;

namespace {

constexpr int kQuestions = 20000;
constexpr int kNoteLength = 330;  // characters of the note each question gets

// Generated note text: words of the statutes in a fixed random order.
QString Filler(QRandomGenerator& rng) {
  static const QStringList words = {
      QStringLiteral("当事人"),   QStringLiteral("人民法院"), QStringLiteral("应当"),     QStringLiteral("依照"),
      QStringLiteral("规定"),     QStringLiteral("合同"),     QStringLiteral("违约责任"), QStringLiteral("犯罪"),
      QStringLiteral("刑事责任"), QStringLiteral("行政机关"), QStringLiteral("处罚"),     QStringLiteral("证据"),
      QStringLiteral("诉讼"),     QStringLiteral("权利"),     QStringLiteral("义务"),     QStringLiteral("，"),
      QStringLiteral("。"),       QStringLiteral("但是"),     QStringLiteral("可以"),     QStringLiteral("不得")};
  QString s = QStringLiteral("生成的长注释：");
  while (s.size() < kNoteLength) s += words[rng.bounded(words.size())];
  return s;
}

struct Folder {
  QTemporaryDir dir;
  std::unique_ptr<bench::BenchEnv> env;
  ItemIndex index;
  QStringList bankFiles;
  qint64 bytes = 0;

  Folder() {
    gen::Sizes s;
    s.questions = kQuestions;
    s.banks = 60;
    s.laws = 20;
    s.articles = 200;
    s.papers = 2;
    QString error;
    if (!gen::Generate(dir.path(), s, &error)) {
      std::fprintf(stderr, "generation failed: %s\n", qPrintable(error));
      std::abort();
    }
    // Every question of the internal banks gets a long note in front of
    // the next marker.
    QRandomGenerator rng(2026);
    QDirIterator it(dir.path() + QStringLiteral("/yibanti"), {QStringLiteral("*.mmd")}, QDir::Files);
    while (it.hasNext()) {
      const QString path = it.next();
      const QString text = ReadText(path);
      QString out;
      out.reserve(text.size() * 4);
      const QStringList blocks = text.split(u'●');
      for (qsizetype i = 0; i < blocks.size(); ++i) {
        if (i > 0) out += u'●';
        out += blocks[i];
        // blocks: text before the first marker, then n, question, n, question ...
        if (i >= 2 && i % 2 == 0) out += kCrLf + QStringLiteral("[注释：]") + Filler(rng) + kCrLf;
      }
      WriteTextAtomic(path, out);
      bankFiles.append(path);
      bytes += QFileInfo(path).size();
    }
    bankFiles.append(dir.path() + QStringLiteral("/moniti/00001.mmd"));
    bankFiles.append(dir.path() + QStringLiteral("/moniti/00002.mmd"));
    env = std::make_unique<bench::BenchEnv>(dir.path());
    ReadData2ItemData(dir.path() + QStringLiteral("/dbf"), tables::kItems, index);
  }
};

Folder& TheFolder() {
  static Folder f;
  return f;
}

// The time of `grep -F -c` for word over the bank files (GBK bytes, as the
// files hold them), best of five.
double GrepMs(const QString& word) {
  Folder& f = TheFolder();
  const QString patterns = f.dir.path() + QStringLiteral("/pattern.txt");
  QFile p(patterns);
  p.open(QIODevice::WriteOnly);
  p.write(ToGbk(word) + '\n');
  p.close();
  double best = 1e9;
  for (int round = 0; round < 5; ++round) {
    QProcess grep;
    QProcessEnvironment e = QProcessEnvironment::systemEnvironment();
    e.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    grep.setProcessEnvironment(e);
    QElapsedTimer t;
    t.start();
    grep.start(QStringLiteral("grep"), QStringList{QStringLiteral("-F"), QStringLiteral("-c"), QStringLiteral("-f"), patterns} + f.bankFiles);
    grep.waitForFinished(-1);
    best = std::min(best, t.nsecsElapsed() / 1e6);
  }
  return best;
}

// A list shows about this many rows at first; their lines are made, the
// others when they are scrolled to.
constexpr qsizetype kFirstRows = 40;

// The search kept warm, as the window runs it: the questions found and the
// lines of the first rows made. With every_line the line of every hit is
// made, as a front end printing all of them does.
void Warm(benchmark::State& state, const QString& query, bool everyLine = false) {
  Folder& f = TheFolder();
  QuestionSearch search;
  qsizetype hits = search.searchResults(f.env->env, f.index, query).size();
  for (auto _ : state) {
    const SearchResults r = search.searchResults(f.env->env, f.index, query);
    const qsizetype lines = everyLine ? r.size() : std::min(r.size(), kFirstRows);
    for (qsizetype i = 0; i < lines; ++i) benchmark::DoNotOptimize(r.hit(i).line.size());
    hits = r.size();
  }
  const double grep = GrepMs(SearchWords(query).value(0));
  state.counters["hits"] = static_cast<double>(hits);
  state.counters["questions"] = static_cast<double>(search.questionCount());
  state.counters["bank_MB"] = static_cast<double>(f.bytes) / 1e6;
  state.counters["grep_ms"] = grep;
}

void BM_SearchWarmRareWord(benchmark::State& state) { Warm(state, QStringLiteral("生成试题12345：")); }
void BM_SearchWarmCommonWord(benchmark::State& state) { Warm(state, QStringLiteral("违约责任")); }
void BM_SearchWarmTwoWords(benchmark::State& state) { Warm(state, QStringLiteral("刑事责任 行政机关")); }
void BM_SearchWarmNoHit(benchmark::State& state) { Warm(state, QStringLiteral("不存在的词语")); }
void BM_SearchWarmCommonWordEveryLine(benchmark::State& state) { Warm(state, QStringLiteral("违约责任"), true); }

// The window itself: 搜索 with the common word, the list filled, its first
// two columns sized, the rows on screen painted.
void BM_SearchWindowCommonWord(benchmark::State& state) {
  Folder& f = TheFolder();
  Form19 window(f.env->env, &f.index);
  window.resize(900, 600);
  window.show();
  window.Text1->setText(QStringLiteral("违约责任"));
  window.runSearch();
  for (auto _ : state) {
    window.runSearch();
    window.List1->viewport()->repaint();
  }
  state.counters["hits"] = static_cast<double>(window.results().size());
}

// Every bank file read and the texts made: the first search of a program run.
void BM_SearchCold(benchmark::State& state) {
  Folder& f = TheFolder();
  for (auto _ : state) {
    QuestionSearch search;
    benchmark::DoNotOptimize(search.search(f.env->env, f.index, QStringLiteral("生成试题12345：")).size());
  }
}

// The wrong book over 20,000 questions with 200 entries of history each,
// the newest entry wrong for every tenth.
void BM_WrongBook(benchmark::State& state) {
  Folder& f = TheFolder();
  ItemIndex index = f.index;
  const int setWrong = gen::LongRecords(index, QDateTime(QDate(2026, 11, 21), QTime(9, 30)), 200, 10, 3);
  int count = 0;
  for (auto _ : state) {
    const WrongBook book = BuildWrongBook(f.env->env, index);
    count = book.count();
    benchmark::DoNotOptimize(count);
  }
  if (count != setWrong) state.SkipWithError("the book does not hold the questions set wrong");
  state.counters["wrong"] = count;
  state.counters["set_wrong"] = setWrong;
}

}  // namespace

BENCHMARK(BM_SearchWarmRareWord)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SearchWarmCommonWord)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SearchWarmTwoWords)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SearchWarmNoHit)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SearchWarmCommonWordEveryLine)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SearchWindowCommonWord)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SearchCold)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_WrongBook)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) { return bench::RunInApplication(argc, argv); }
