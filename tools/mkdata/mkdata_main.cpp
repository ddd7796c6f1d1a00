// mkdata: builds the demonstration program folder from the sources in
// data/ and, when a third argument is given, the data package's archive of
// that folder. The real statutes of the law list come from the real data
// folder; without it they are left out.
//
//   mkdata <data folder> <output folder> [<archive file>] [--realdata=<folder>]

#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <cstdio>

#include "demo_builder.h"
#include "pack.h"
#include "platform/textfile.h"

int main(int argc, char** argv) {
  // Fonts for the pictures; no window is ever shown.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QTemporaryDir runtime;
  if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR")) qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
  QGuiApplication app(argc, argv);
  QStringList args;
  QString real;
  for (const QString& a : app.arguments()) {
    if (a.startsWith(QStringLiteral("--realdata=")))
      real = a.mid(11);
    else
      args << a;
  }
  if (args.size() != 3 && args.size() != 4) {
    std::fprintf(stderr, "用法：mkdata <数据源文件夹> <输出文件夹> [<数据包文件>] [--realdata=<真实数据文件夹>]\n");
    return 2;
  }
  QStringList errors, notes;
  const bool built = mkdata::BuildDemo(args[1], args[2], real, &errors, &notes);
  for (const QString& n : notes) std::fprintf(stdout, "mkdata: %s\n", qUtf8Printable(n));
  if (!built) {
    for (const QString& e : errors) std::fprintf(stderr, "mkdata: %s\n", qUtf8Printable(e));
    return 1;
  }
  if (args.size() == 4) {
    const QByteArray pack = mjpack::Pack(mjpack::ReadTree(args[2]));
    // An archive with the same bytes is left as it is: its unchanged file
    // time spares the build a new data package program.
    QFile old(args[3]);
    const bool same = old.open(QIODevice::ReadOnly) && old.readAll() == pack;
    old.close();
    if (!same && !mj::WriteBytesAtomic(args[3], pack)) {
      std::fprintf(stderr, "mkdata: %s 无法写入\n", qUtf8Printable(args[3]));
      return 1;
    }
  }
  return 0;
}
