// Outside papers: the full check of a generated 500-question paper (answers
// behind each question, and answers behind "[本卷参考答案]"), 50 ticked
// replacement pairs applied to it, and a 2 MB paper opened into the paper
// window.

#include <QPlainTextEdit>
#include <QTemporaryDir>

#include "bank/tables.h"
#include "bench_support.h"
#include "papers/pair_list.h"
#include "papers/paper_check.h"
#include "papers/paper_file.h"
#include "papers/paper_window.h"
#include "platform/dbftable.h"
#include "platform/paths.h"

namespace {

using mj::bench::BenchEnv;

const QString kCrLf = QStringLiteral("\r\n");
constexpr int kLaws = 30;

QString LawName(int i) { return QStringLiteral("《示例法律%1号》").arg(i); }

// A program folder with a law-name list of kLaws names.
struct PaperFolder {
  PaperFolder() : env(dir.path()) {
    QDir().mkpath(dir.path() + QStringLiteral("/dbf"));
    mj::DbfTable t = mj::DbfTable::create(dir.path() + QStringLiteral("/dbf/listbox.mmd"), mj::tables::LawListFields());
    for (int i = 1; i <= kLaws; ++i) {
      const int r = t.appendRow();
      t.setText(r, QStringLiteral("lawname"), LawName(i));
      t.setNumber(r, QStringLiteral("f"), i % 3 + 1);
      t.setText(r, QStringLiteral("c"), QStringLiteral("S"));
      t.setNumber(r, QStringLiteral("lei"), i % 8 + 1);
    }
  }
  QTemporaryDir dir;
  BenchEnv env;
};

QString Stem(int n) {
  return QString::number(n) + QStringLiteral("．根据%1的规定，甲公司与乙公司订立的买卖合同约定了违约金和定金，"
                                             "下列关于本案中当事人权利义务的说法，正确的是(      )")
                                  .arg(LawName(n % kLaws + 1)) +
         kCrLf + QStringLiteral("A．甲公司可以同时主张违约金和定金") + kCrLf +
         QStringLiteral("B．乙公司可以选择适用违约金或者定金条款") + kCrLf +
         QStringLiteral("C．约定的违约金过分高于损失的，可以请求适当减少") + kCrLf +
         QStringLiteral("D．定金的数额由当事人约定，但不得超过主合同标的额的百分之二十") + kCrLf;
}

QString Answer(int n) {
  static const QStringList keys = {QStringLiteral("A"), QStringLiteral("BC"), QStringLiteral("ACD"),
                                   QStringLiteral("D")};
  const QString law = LawName(n % kLaws + 1);
  return QStringLiteral("[答案：]") + keys[n % 4] + kCrLf + QStringLiteral("[参见：]") + law +
         QStringLiteral("第%1条、第%2条").arg(n % 90 + 1).arg(n % 90 + 2) + LawName((n + 7) % kLaws + 1) +
         QStringLiteral("第%1条").arg(n % 40 + 1) + kCrLf + QStringLiteral("[注释：]本题考查违约责任的承担方式。") + kCrLf;
}

// 250 single, 150 multiple and 100 free choices, numbered per section.
QString GeneratedPaper(bool separate) {
  const int counts[4] = {0, 250, 150, 100};
  QString q = QStringLiteral("生成的外部试卷（基准测试用）") + kCrLf;
  QString a = QStringLiteral("[本卷参考答案]") + kCrLf;
  for (int t = 1; t <= 3; ++t) {
    q += mj::kPaperHeadings[t] + kCrLf;
    a += mj::kPaperHeadings[t] + kCrLf;
    for (int n = 1; n <= counts[t]; ++n) {
      q += Stem(n);
      if (separate)
        a += QString::number(n) + QStringLiteral("．") + kCrLf + Answer(n);
      else
        q += Answer(n);
    }
  }
  return separate ? q + a : q;
}

void CheckPaper(benchmark::State& state, bool separate) {
  PaperFolder folder;
  const QString text = GeneratedPaper(separate);
  mj::PaperState paper;
  for (auto _ : state) {
    const mj::PaperCheckResult r = mj::RunPaperCheck(folder.env.env, text, paper);
    benchmark::DoNotOptimize(r.report.size());
  }
  // The paper passes: the work is the full report.
  const mj::PaperCheckResult r = mj::RunPaperCheck(folder.env.env, text, paper);
  if (!r.report.contains(QStringLiteral("任选题编号从1到100共100道=100道。检验通过")) || !r.lawNames.isEmpty())
    state.SkipWithError("the generated paper did not pass");
  state.counters["KB"] = static_cast<double>(text.size()) * 2 / 1024;
}

void BM_CheckInlinePaper500(benchmark::State& state) { CheckPaper(state, false); }
void BM_CheckSeparatePaper500(benchmark::State& state) { CheckPaper(state, true); }
BENCHMARK(BM_CheckInlinePaper500)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CheckSeparatePaper500)->Unit(benchmark::kMillisecond);

void BM_Apply50Pairs(benchmark::State& state) {
  const QString text = GeneratedPaper(false);
  mj::PairList pairs;
  for (int i = 1; i <= 50; ++i) {
    // Half of them find something: law names, tags; the rest nothing.
    const QString pair = i <= 25 ? QStringLiteral("[%1]-->[《示例法律第%2号》]").arg(LawName(i)).arg(i)
                                 : QStringLiteral("[没有这样的文字%1]-->[替换]").arg(i);
    pairs.append({mj::NumberedEntry(i, pair), true});
  }
  for (auto _ : state) benchmark::DoNotOptimize(mj::ApplyPairs(pairs, text).size());
}
BENCHMARK(BM_Apply50Pairs)->Unit(benchmark::kMillisecond);

void BM_OpenTwoMegabytePaper(benchmark::State& state) {
  PaperFolder folder;
  QString text;
  for (int n = 1; n % 100 != 0 || mj::EncodePaper(text, mj::PaperEncoding::Gbk).size() < 2 * 1024 * 1024; ++n)
    text += Stem(n) + Answer(n);
  const QString path = folder.dir.path() + QStringLiteral("/paper.txt");
  mj::WritePaper(path, text, mj::PaperEncoding::Gbk);
  mj::PaperState paper;
  mj::Form10 form(folder.env.env, paper);
  form.resize(1024, 700);
  form.show();
  for (auto _ : state) {
    form.loadPaper(path);
    // The window lays out and paints what it shows.
    form.RichTextBox1->viewport()->repaint();
    QApplication::processEvents();
  }
  state.counters["MB"] = static_cast<double>(QFileInfo(path).size()) / (1024 * 1024);
}
BENCHMARK(BM_OpenTwoMegabytePaper)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) { return mj::bench::RunInApplication(argc, argv); }
