#include "papers/paper_folder.h"

#include "platform/paths.h"
#include "platform/text_toolkit.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

bool MakeFolder(const Env& env, const QString& path) {
  if (DirExists(path) || MakeDir(path)) return true;
  env.msgBox(QStringLiteral("无法建立文件夹") + path + QStringLiteral("。"), box::Exclamation);
  return false;
}

FileDialogRequest PaperDialog(const Env& env, const QString& title) {
  FileDialogRequest r;
  r.title = title;
  r.initialDir = env.path(kPaperFolder);
  r.filter = kPaperFilter;
  return r;
}

// The save dialog, asked again for every chosen file that exists until the
// user lets it be overwritten or chooses a free name.
std::optional<QString> SaveDialogLoop(const Env& env, const QString& name) {
  FileDialogRequest r = PaperDialog(env, QStringLiteral("保存外部题库文件"));
  r.fileName = FileNameOf(name);
  r.defaultExt = QStringLiteral("txt");
  for (;;) {
    const std::optional<QString> chosen = env.dialogs->saveFile(r);
    if (!chosen) return std::nullopt;
    if (!FileExists(*chosen)) return chosen;
    if (env.msgBox(QStringLiteral("文件") + *chosen + QStringLiteral("已经存在，要覆盖吗？"),
                   box::YesNo | box::Question, QStringLiteral("请确认")) == box::Yes)
      return chosen;
    r.fileName = FileNameOf(*chosen);
  }
}

}  // namespace

bool MakePaperFolders(const Env& env, bool fromMenu) {
  const QString folder = env.path(kPaperFolder);
  const bool wasMissing = !DirExists(folder);
  if (!MakeFolder(env, folder)) return false;
  bool ok = true;
  QStringList subfolders = kPaperClassFolders;
  if (fromMenu) subfolders += kPaperSheetFolders;
  for (const QString& sub : subfolders) ok = MakeFolder(env, folder + u'/' + sub) && ok;
  if (fromMenu && wasMissing) {
    for (int i : {1, 2}) {
      const QString sample = env.path(QStringLiteral("\\ini\\sample%1.ini").arg(i));
      const QString copy = folder + QStringLiteral("/外部题库试样%1.txt").arg(i);
      if (FileExists(sample) && !CopyFileOver(sample, copy))
        env.msgBox(QStringLiteral("无法把试样") + sample + QStringLiteral("复制为") + copy + QStringLiteral("。"),
                   box::Exclamation);
    }
  }
  return ok;
}

std::optional<QString> ChoosePaperToOpen(const Env& env) {
  MakePaperFolders(env, true);
  return env.dialogs->openFile(PaperDialog(env, QStringLiteral("打开外部题库文件")));
}

std::optional<QString> ChoosePaperSaveName(const Env& env, const QString& name, bool& saved) {
  MakePaperFolders(env, false);
  const QString folder = env.path(kPaperFolder);
  // A paper that came from no file gets its name from the dialog.
  if (name.isEmpty()) {
    std::optional<QString> chosen = SaveDialogLoop(env, name);
    if (chosen && MapSeparators(*chosen).startsWith(folder)) saved = true;
    return chosen;
  }
  if (MapSeparators(name).startsWith(folder)) {
    std::optional<QString> chosen = name;
    if (FileExists(name) && !saved) {
      if (env.msgBox(QStringLiteral("文件") + name + QStringLiteral("已经存在，要覆盖吗？"), box::YesNo | box::Question,
                     QStringLiteral("请确认")) != box::Yes)
        chosen = SaveDialogLoop(env, name);
    }
    if (chosen) saved = true;
    return chosen;
  }
  const int a = env.msgBox(name + QStringLiteral("为外部文件，它现在不在“外部题库”目录下，要不要把它存入“外部题库”目") +
                               QStringLiteral("录下？(注：选“否”则直接保存为") + name + QStringLiteral(")"),
                           box::YesNo | box::Question);
  if (a != box::Yes) return name;
  return SaveDialogLoop(env, name);
}

}  // namespace mj
