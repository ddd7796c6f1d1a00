// 明镜学习伴侣: the program folder is the folder the program stands in, the
// folder named by --folder, or, for an installed program, the per-user
// folder (platform/program_folder.h).
#include <QApplication>
#include <QMessageBox>
#include <QProcessEnvironment>
#include <cstdio>

#include "app/program_window.h"
#include "platform/program_folder.h"
#include "platform/qt_translations.h"
#include "platform/window_placement_widget.h"

namespace {

// What keeps the program from starting goes to the terminal and into a box.
int StartFailure(const QString& text) {
  std::fprintf(stderr, "%s\n", qUtf8Printable(text));
  QMessageBox::critical(nullptr, QStringLiteral("明镜学习伴侣"), text);
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("明镜学习伴侣"));
  // The standard dialogs speak Chinese; without the translation they still
  // work, in English, and the terminal says which file is missing.
  QString missing;
  if (!mj::InstallChineseQtTexts(app, &missing))
    std::fprintf(stderr, "找不到 Qt 的中文翻译 %s，标准对话框将显示英文。\n", qUtf8Printable(missing));

  QStringList args = QCoreApplication::arguments();
  bool missingValue = false;
  const QString folderArg = mj::TakeFolderOption(args, nullptr, &missingValue);
  if (missingValue) return StartFailure(QStringLiteral("选项 --folder 后面要写程序文件夹。"));
  const QString exeDir = QCoreApplication::applicationDirPath();
  const mj::ProgramFolderChoice choice =
      mj::ChooseProgramFolder(exeDir, folderArg, QProcessEnvironment::systemEnvironment());
  if (!choice.problem.isEmpty()) return StartFailure(choice.problem);
  // The per-user folder of an installed program gets its data set on the
  // first start, without a question; its own files are never replaced.
  if (choice.perUser) {
    QString problem;
    if (!mj::FillFromDataPackage(exeDir, choice.folder, &problem)) return StartFailure(problem);
  }

  // Every window, frame included, lies on the screen's available area.
  mj::KeepWindowsOnScreen(app);
  return mj::RunProgram(choice.folder);
}
