#pragma once
// What the benchmarks share: the real data set, the services a program
// folder's Env takes, and the main of a benchmark program with windows.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QString>
#include <functional>

#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/env.h"
#include "platform/messagebox.h"
#include "platform/shell.h"

namespace mj::bench {

// ../shared/realdata when it holds the real statutes (lawtxt/民法典.mmd),
// else the empty text: the benchmarks on real data skip without them.
inline QString RealDataRoot() {
  const QString d = QDir::cleanPath(QStringLiteral(MJ_REALDATA_DIR));
  return QFileInfo::exists(d + QStringLiteral("/lawtxt/民法典.mmd")) ? d : QString();
}

// An Env over the program folder root, with a clock that stands still at now
// and message boxes, a shell and dialogs that only record.
struct BenchEnv {
  explicit BenchEnv(const QString& root, const QDateTime& now = QDateTime(QDate(2026, 11, 21), QTime(9, 30)))
      : clock(now), env{root, &clock, &boxes, &shell, &dialogs} {}
  BenchEnv(const BenchEnv&) = delete;  // env points into this object
  BenchEnv& operator=(const BenchEnv&) = delete;

  FixedClock clock;
  ScriptedBoxes boxes;
  RecordingShell shell;
  ScriptedDialogs dialogs;
  Env env;
};

// The main of a benchmark program with windows: a QApplication (offscreen
// unless QT_QPA_PLATFORM says otherwise), `first` when given, then the
// benchmarks.
inline int RunInApplication(int argc, char** argv, const std::function<void()>& first = nullptr) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  if (first) first();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}

}  // namespace mj::bench
