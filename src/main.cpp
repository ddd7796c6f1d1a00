// 明镜学习伴侣: the program folder is the folder the program stands in.
#include <QApplication>
#include <cstdio>

#include "app/program_window.h"
#include "platform/qt_translations.h"
#include "platform/window_placement_widget.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("明镜学习伴侣"));
  // The standard dialogs speak Chinese; without the translation they still
  // work, in English, and the terminal says which file is missing.
  QString missing;
  if (!mj::InstallChineseQtTexts(app, &missing))
    std::fprintf(stderr, "找不到 Qt 的中文翻译 %s，标准对话框将显示英文。\n", qUtf8Printable(missing));
  // Every window, frame included, lies on the screen's available area.
  mj::KeepWindowsOnScreen(app);
  return mj::RunProgram(QCoreApplication::applicationDirPath());
}
