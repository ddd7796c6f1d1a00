// The program as it starts, on a folder given as the argument; it prints
// "shown" and ends as soon as the main window is shown. The start-up
// benchmark times it from the process start.
#include <QApplication>
#include <cstdio>

#include "app/program_window.h"
#include "platform/qt_translations.h"
#include "platform/window_placement_widget.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  if (argc < 2) return 2;
  // As the program does.
  mj::InstallChineseQtTexts(app);
  mj::KeepWindowsOnScreen(app);
  return mj::RunProgram(QString::fromLocal8Bit(argv[1]), [] {
    std::puts("shown");
    std::fflush(stdout);
    QCoreApplication::exit(0);
  });
}
