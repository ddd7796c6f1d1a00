// The practice of an outside paper: the real sample paper of the data (500
// single-choice questions) opened into the paper window, checked and its
// first question shown in the practice window; and one answer to the boxes
// filled (the record written to the disk first), for the real paper and for
// a paper whose answers cite ten articles of the real statutes.

#include <QDirIterator>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "bench_support.h"
#include "law/law_files.h"
#include "papers/paper_check.h"
#include "papers/paper_file.h"
#include "papers/paper_practice.h"
#include "papers/paper_practice_window.h"
#include "papers/paper_window.h"
#include "papers/text_box_widget.h"
#include "platform/paths.h"

namespace {

using mj::bench::BenchEnv;

const QString kRealPaper = QStringLiteral("/外部题库/司法考试真题500道（LawBench）.txt");
const QString kCitation = QStringLiteral(
    "[参见：]《刑法》第20条、第133条、第264条、第382-383条《刑事诉讼法》第12条、第81条"
    "《民法典》第143条、第1165条、第577条");

// A copy of the demonstration folder of the build.
struct DemoFolder {
  DemoFolder() : env(dir.path()) {
    const QString demo = QStringLiteral(MJ_BINARY_DIR) + QStringLiteral("/demo");
    ok = QFileInfo::exists(demo + kRealPaper);
    if (!ok) return;
    QDirIterator it(demo, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
      const QString f = it.next();
      const QString to = dir.path() + f.mid(demo.size());
      QDir().mkpath(QFileInfo(to).absolutePath());
      QFile::copy(f, to);
    }
  }
  // The real statutes in lawtxt.
  bool addRealLaws() {
    const QString real = mj::bench::RealDataRoot();
    if (real.isEmpty()) return false;
    QDirIterator it(real + QStringLiteral("/lawtxt"), {QStringLiteral("*.mmd")}, QDir::Files);
    while (it.hasNext()) {
      const QString f = it.next();
      mj::CopyFileOver(f, dir.path() + QStringLiteral("/lawtxt/") + QFileInfo(f).fileName());
    }
    return true;
  }
  QTemporaryDir dir;
  BenchEnv env;
  bool ok = false;
};

// Open, check, 开始做题 with the first question shown and painted.
void BM_OpenCheckAndFirstQuestion(benchmark::State& state) {
  DemoFolder folder;
  if (!folder.ok) return state.SkipWithError("no demonstration data built");
  const QString path = folder.dir.path() + kRealPaper;
  mj::PaperState paper;
  mj::Form10 form(folder.env.env, paper);
  form.resize(1000, 700);
  mj::Form14* practice = form.practiceWindow();
  practice->resize(1000, 700);
  for (auto _ : state) {
    form.show();
    form.loadPaper(path);
    form.runCheck();
    form.startPractice();
    practice->RichTextBox1->viewport()->repaint();
    QApplication::processEvents();
    state.PauseTiming();
    practice->hide();
    state.ResumeTiming();
  }
  if (!mj::HeldTextOf(practice->RichTextBox1).startsWith(QStringLiteral("1．某原系")))
    state.SkipWithError("the first question is not shown");
  state.counters["questions"] = static_cast<double>(mj::GetOutTotal(paper));
}
BENCHMARK(BM_OpenCheckAndFirstQuestion)->Unit(benchmark::kMillisecond);

// One answer: the record written (and flushed to the disk), then the boxes
// shown and painted; `withMove`: the 下一题 before it too, which fills the
// boxes (the law text of the answer is made there). `cite`: every answer
// cites ten real articles; `cold`: the law files are read again, as for the
// first answer of a run.
void AnswerToBoxes(benchmark::State& state, bool cite, bool cold, bool withMove) {
  DemoFolder folder;
  if (!folder.ok) return state.SkipWithError("no demonstration data built");
  QString path = folder.dir.path() + kRealPaper;
  if (cite) {
    if (!folder.addRealLaws()) return state.SkipWithError("no real statutes in ../shared/realdata/lawtxt");
    QString text = mj::ReadPaper(path).text;
    // Each answer line gets the ten articles behind it.
    text.replace(QRegularExpression(QStringLiteral("(\\r\\n\\[答案：\\][A-D])")), QStringLiteral("\\1\r\n") + kCitation);
    path = folder.dir.path() + QStringLiteral("/外部题库/带法条.txt");
    mj::WritePaper(path, text, mj::PaperEncoding::Gbk);
  }
  mj::PaperState paper;
  mj::Form10 form(folder.env.env, paper);
  form.loadPaper(path);
  form.runCheck();
  form.startPractice();
  mj::Form14* practice = form.practiceWindow();
  practice->resize(1000, 700);
  int answers = 0;
  for (auto _ : state) {
    // 下一题 fills the boxes of the question (its law text too); the answer
    // writes the record and shows them.
    state.PauseTiming();
    if (cold) mj::ClearLawCache();
    if (!practice->Command1[16]->isEnabled()) practice->OutTiPos = 0;
    QApplication::processEvents();
    if (withMove) state.ResumeTiming();
    practice->move(1);
    if (!withMove) state.ResumeTiming();
    practice->Command1[answers % 4]->click();
    practice->RichTextBox3->viewport()->repaint();
    ++answers;
  }
  const QString lower = mj::HeldTextOf(practice->RichTextBox3);
  if (cite && !lower.contains(QStringLiteral("《民法典》\r\n　　第五百七十七条")))
    state.SkipWithError("the law text is not in the lower box");
  state.counters["lower_box_chars"] = static_cast<double>(lower.size());
}

void BM_AnswerRealPaper(benchmark::State& state) { AnswerToBoxes(state, false, false, false); }
void BM_AnswerTenCitations(benchmark::State& state) { AnswerToBoxes(state, true, false, false); }
void BM_NextAndAnswerTenCitations_Warm(benchmark::State& state) { AnswerToBoxes(state, true, false, true); }
void BM_NextAndAnswerTenCitations_Cold(benchmark::State& state) { AnswerToBoxes(state, true, true, true); }
BENCHMARK(BM_AnswerRealPaper)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_AnswerTenCitations)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_NextAndAnswerTenCitations_Warm)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_NextAndAnswerTenCitations_Cold)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) { return mj::bench::RunInApplication(argc, argv); }
