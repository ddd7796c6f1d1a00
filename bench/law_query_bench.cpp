// Speed of the law query on the four real statutes (skipped without them):
// a text search over a group of the four laws, against grep -F counting the
// same phrase in the same files; and opening 民法典 in the law query window
// with its whole text shown.

#include <benchmark/benchmark.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QPlainTextEdit>
#include <QProcess>
#include <QTemporaryDir>
#include <cstdio>

#include "bench_support.h"
#include "law/law_files.h"
#include "law/law_query.h"
#include "law/law_query_window.h"
#include "law/numerals.h"
#include "platform/textfile.h"

namespace {

const QStringList kLaws{QStringLiteral("宪法"), QStringLiteral("刑法"), QStringLiteral("刑事诉讼法"),
                        QStringLiteral("民法典")};

// A program folder with the four laws and a tree: a group of the four, then
// 民法典 alone.
struct Folder {
  QTemporaryDir dir;
  mj::bench::BenchEnv services{dir.path()};
  const mj::Env& env = services.env;
  bool ok = false;

  Folder() {
    const QString real = mj::bench::RealDataRoot();
    if (real.isEmpty() || !dir.isValid()) return;
    QDir().mkpath(dir.path() + QStringLiteral("/lawtxt"));
    QDir().mkpath(dir.path() + QStringLiteral("/ini"));
    QString tree = QStringLiteral("FILE=\"\\lawtxt\\宪法.mmd\"\r\n四部法律\r\n");
    for (const QString& law : kLaws) {
      QFile::copy(real + QStringLiteral("/lawtxt/") + law + QStringLiteral(".mmd"),
                  dir.path() + QStringLiteral("/lawtxt/") + law + QStringLiteral(".mmd"));
      tree += QStringLiteral("FILE=\"\\lawtxt\\") + law + QStringLiteral(".mmd\"\r\n    《") + law +
              QStringLiteral("》\r\n");
    }
    mj::WriteTextAtomic(dir.path() + QStringLiteral("/ini/shijuan.mmd"), tree);
    ok = true;
  }
  QString fileList() const {
    QString list;
    for (const QString& law : kLaws)
      list += QStringLiteral("《") + law + QStringLiteral("》●\\lawtxt\\") + law + QStringLiteral(".mmd■");
    return list;
  }
  QStringList files() const {
    QStringList f;
    for (const QString& law : kLaws) f.append(dir.path() + QStringLiteral("/lawtxt/") + law + QStringLiteral(".mmd"));
    return f;
  }
};

Folder& TheFolder() {
  static Folder f;
  return f;
}

// The phrases: a common one (hundreds of articles) and a rare one.
const QString kCommon = QStringLiteral("人民法院");
const QString kRare = QStringLiteral("居住权");

void TextSearch(benchmark::State& state, const QString& phrase, bool cold) {
  Folder& f = TheFolder();
  if (!f.ok) return state.SkipWithError("no real data");
  const QString list = f.fileList();
  mj::LawResultIndex index;
  qsizetype shown = 0;
  for (auto _ : state) {
    if (cold) mj::ClearLawCache();
    const QString text = mj::GetRichTxt(f.env, list, phrase, index);
    shown = text.size();
    benchmark::DoNotOptimize(text);
  }
  qint64 bytes = 0;
  for (const QString& p : f.files()) bytes += QFileInfo(p).size();
  state.counters["text_bytes"] = static_cast<double>(bytes);
  state.counters["result_chars"] = static_cast<double>(shown);
}

void BM_TextSearch_FourLaws_Common(benchmark::State& s) { TextSearch(s, kCommon, false); }
void BM_TextSearch_FourLaws_Rare(benchmark::State& s) { TextSearch(s, kRare, false); }
void BM_TextSearch_FourLaws_Common_Cold(benchmark::State& s) { TextSearch(s, kCommon, true); }
BENCHMARK(BM_TextSearch_FourLaws_Common)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TextSearch_FourLaws_Rare)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TextSearch_FourLaws_Common_Cold)->Unit(benchmark::kMillisecond);

// grep -F -c with the phrase in GBK (the files' code page), one process per
// iteration, as a user would run it.
void Grep(benchmark::State& state, const QString& phrase) {
  Folder& f = TheFolder();
  if (!f.ok) return state.SkipWithError("no real data");
  const QString pattern = f.dir.path() + QStringLiteral("/pattern.txt");
  QFile p(pattern);
  if (!p.open(QIODevice::WriteOnly)) return state.SkipWithError("no pattern file");
  p.write(mj::ToGbk(phrase));
  p.close();
  QStringList args{QStringLiteral("-F"), QStringLiteral("-c"), QStringLiteral("-f"), pattern};
  args += f.files();
  for (auto _ : state) {
    QProcess grep;
    grep.start(QStringLiteral("grep"), args);
    if (!grep.waitForFinished(10000)) return state.SkipWithError("grep did not run");
    benchmark::DoNotOptimize(grep.readAllStandardOutput());
  }
}

void BM_GrepF_FourLaws_Common(benchmark::State& s) { Grep(s, kCommon); }
void BM_GrepF_FourLaws_Rare(benchmark::State& s) { Grep(s, kRare); }
BENCHMARK(BM_GrepF_FourLaws_Common)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_GrepF_FourLaws_Rare)->Unit(benchmark::kMillisecond)->UseRealTime();

// Opening 民法典 in the window: the tree click (file check, loading, the
// article count, the view's text), then 全文 with the view's text again.
void OpenMinfadian(benchmark::State& state, bool cold) {
  Folder& f = TheFolder();
  if (!f.ok) return state.SkipWithError("no real data");
  mj::Form6 form(f.env, nullptr);
  form.show();
  const int group = 1;
  const int leaf = 5;  // 《民法典》
  if (form.query().tree.nodes.value(leaf).text != QStringLiteral("《民法典》"))
    return state.SkipWithError("tree not as built");
  for (auto _ : state) {
    state.PauseTiming();
    form.query().clickNode(group);
    form.render();
    if (cold) mj::ClearLawCache();
    state.ResumeTiming();
    form.query().clickNode(leaf);
    form.render();
    form.query().fullText();
    form.render();
    benchmark::DoNotOptimize(form.RichTextBox1->document()->blockCount());
  }
  state.counters["chars"] = static_cast<double>(form.query().view.size());
}

void BM_OpenMinfadianAndFullText(benchmark::State& s) { OpenMinfadian(s, false); }
void BM_OpenMinfadianAndFullText_Cold(benchmark::State& s) { OpenMinfadian(s, true); }
BENCHMARK(BM_OpenMinfadianAndFullText)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_OpenMinfadianAndFullText_Cold)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
  // The very first open in a fresh process also builds the numeral look-up
  // table once; it is timed here, before anything else has built it.
  return mj::bench::RunInApplication(argc, argv, [] {
    if (!TheFolder().ok) return;
    QElapsedTimer t;
    t.start();
    mj::Form6 form(TheFolder().env, nullptr);
    std::printf("Law query window created: %lld ms\n", static_cast<long long>(t.restart()));
    // The window builds the numeral look-up right after it comes up.
    QCoreApplication::processEvents();
    std::printf("Events after the window came up (numeral look-up built): %lld ms\n",
                static_cast<long long>(t.restart()));
    form.query().clickNode(5);
    form.render();
    form.query().fullText();
    form.render();
    std::printf("First open of 民法典 with 全文 in a fresh process: %lld ms\n", static_cast<long long>(t.elapsed()));
  });
}
