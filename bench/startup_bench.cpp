// From the process start to the main window shown, on a generated folder of
// 20,000 questions, without the news download.
#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

#include "generator.h"

namespace {

QString g_folder;

void BM_StartToMainWindowShown(benchmark::State& state) {
  const QString child = QCoreApplication::applicationDirPath() + QStringLiteral("/bench_startup_child");
  for (auto _ : state) {
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    p.setProcessEnvironment(env);
    QElapsedTimer t;
    t.start();
    p.start(child, {g_folder});
    bool shown = false;
    while (p.waitForReadyRead(10000)) {
      if (p.readAll().contains("shown")) {
        shown = true;
        break;
      }
    }
    const double seconds = t.nsecsElapsed() / 1e9;
    p.waitForFinished(10000);
    if (!shown) {
      state.SkipWithError("the program did not show its window");
      break;
    }
    state.SetIterationTime(seconds);
  }
}
BENCHMARK(BM_StartToMainWindowShown)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  QTemporaryDir dir;
  mj::gen::Sizes sizes;
  sizes.questions = 20000;
  sizes.banks = 60;
  sizes.laws = 10;
  sizes.articles = 300;
  QString error;
  if (!mj::gen::Generate(dir.path(), sizes, &error)) {
    std::fprintf(stderr, "generator: %s\n", qPrintable(error));
    return 1;
  }
  // The splash picture, so that the start shows no box.
  QImage splash(480, 300, QImage::Format_RGB32);
  splash.fill(Qt::darkBlue);
  splash.save(dir.path() + QStringLiteral("/ini/jiemian.jpg"), "JPG");
  g_folder = dir.path();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
