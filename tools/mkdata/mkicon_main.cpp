// mkicon: the program's icon (the one of \ini\fa.ico) as PNG files in the
// layout of the hicolor icon theme, for the desktop entry of the package.
//
//   mkicon <output folder>    writes <size>x<size>/apps/mingjing.png

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <cstdio>

#include "pictures.h"

int main(int argc, char** argv) {
  // The picture holds a character: fonts, but never a window.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QTemporaryDir runtime;
  if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR")) qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
  QGuiApplication app(argc, argv);
  const QStringList args = app.arguments();
  if (args.size() != 2) {
    std::fprintf(stderr, "用法：mkicon <输出文件夹>\n");
    return 2;
  }
  for (const int size : {32, 48, 64, 128, 256}) {
    const QString dir = QStringLiteral("%1/%2x%2/apps").arg(args[1]).arg(size);
    const QString file = dir + QStringLiteral("/mingjing.png");
    if (!QDir().mkpath(dir) || !mkdata::IconPicture(size).save(file, "PNG")) {
      std::fprintf(stderr, "mkicon: %s 无法写入\n", qUtf8Printable(file));
      return 1;
    }
  }
  return 0;
}
