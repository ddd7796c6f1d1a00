// 明镜学习伴侣: the program folder is the folder the program stands in.
#include <QApplication>

#include "app/program_window.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("明镜学习伴侣"));
  return mj::RunProgram(QCoreApplication::applicationDirPath());
}
