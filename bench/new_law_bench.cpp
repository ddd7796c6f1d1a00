// Speed of adding a new law: 民法典 from its Markdown (the eight parts of the
// shared real data, its textbook article spellings respelled as the check
// asks), cleaned, checked, classified and written with the three law trees,
// as steps 2 to 4 of the window do. Skipped without the real data.

#include <benchmark/benchmark.h>

#include <QFile>
#include <QTemporaryDir>

#include "bench_support.h"
#include "law/law_files.h"
#include "law/new_law.h"
#include "platform/paths.h"
#include "platform/textfile.h"

namespace {

using mj::bench::RealDataRoot;

QString Minfadian() {
  QStringList parts;
  for (const char* p : {"总则", "物权编", "合同编", "人格权编", "婚姻家庭编", "继承编", "侵权责任编", "附则"}) {
    QFile f(RealDataRoot() + QStringLiteral("/laws-md/民法典/") + QString::fromUtf8(p) + QStringLiteral(".md"));
    if (!f.open(QIODevice::ReadOnly)) return QString();
    parts << QString::fromUtf8(f.readAll());
  }
  return mj::RespellArticleHeads(mj::JoinMarkdownParts(parts));
}

void BM_NewLaw_Minfadian_CleanToAdd(benchmark::State& state) {
  if (RealDataRoot().isEmpty()) return state.SkipWithError("no real data");
  const QString text = Minfadian();
  if (text.isEmpty()) return state.SkipWithError("no Markdown of 民法典");
  QTemporaryDir dir;
  mj::bench::BenchEnv b(dir.path());
  const QString trees[3][2] = {{QStringLiteral("\\ini\\shijuan.mmd"), QStringLiteral("试卷三相关法律、法规\r\n")},
                               {QStringLiteral("\\ini\\leibie.mmd"), QStringLiteral("民法\r\n")},
                               {QStringLiteral("\\ini\\zimu.mmd"), QStringLiteral("FILE=\"\\lawtxt\\甲.mmd\"\r\nA 《甲》\r\n")}};
  mj::MakeDir(b.env.path(QStringLiteral("\\ini")));
  for (const auto& t : trees) mj::WriteTextAtomic(b.env.path(t[0]), t[1]);
  for (auto _ : state) {
    mj::NewLawWizard w(b.env);
    w.view = text;
    w.clean();
    w.classify();
    w.setCombo(1, mj::PaperChoices()[2]);
    w.setCombo(2, mj::LetterChoices()[12]);
    w.setCombo(3, mj::ClassChoices()[1]);
    w.setTitle(QStringLiteral("《民法典》"));
    b.boxes.answer(mj::box::Yes);
    const bool added = w.checked && w.add();
    state.PauseTiming();
    if (!added) {
      state.SkipWithError("民法典 was not added");
      break;
    }
    b.boxes.clear();
    mj::RemoveFile(mj::LawFilePath(b.env, QStringLiteral("民法典")));
    for (const auto& t : trees) mj::WriteTextAtomic(b.env.path(t[0]), t[1]);
    state.ResumeTiming();
  }
}
BENCHMARK(BM_NewLaw_Minfadian_CleanToAdd)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) { return mj::bench::RunInApplication(argc, argv); }
