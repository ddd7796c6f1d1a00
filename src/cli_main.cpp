// mingjing-cli: the command-line companion of 明镜学习伴侣, on the same core
// and the same program folder rules, without any window.
#include <QCoreApplication>
#include <QProcessEnvironment>
#include <cstdio>

#include "cli/cli.h"

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  mj::SystemClock clock;
  const mj::cli::CliSetup setup{QCoreApplication::applicationDirPath(), QProcessEnvironment::systemEnvironment(),
                                &clock};
  const mj::cli::CliResult r = mj::cli::RunCli(QCoreApplication::arguments(), setup);
  // Output is UTF-8 whatever the locale says.
  const QByteArray out = r.out.toUtf8();
  std::fwrite(out.constData(), 1, static_cast<size_t>(out.size()), stdout);
  std::fflush(stdout);
  if (!r.err.isEmpty()) std::fprintf(stderr, "%s\n", r.err.toUtf8().constData());
  return r.status;
}
