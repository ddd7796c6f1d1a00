#include "app/format_documents.h"

#include <QFileInfo>

#include "app/startup.h"
#include "platform/paths.h"
#include "platform/text_toolkit.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"

namespace mj {

void TxtFormat(AppState& app) {
  const Env& env = app.env;
  if (!DirExists(env.path(QStringLiteral("\\法律文书"))) || !DirExists(env.path(QStringLiteral("\\readme")))) {
    env.msgBox(QStringLiteral("本次点击为第一次使用解压数据包 ") + kCrLf + QStringLiteral("现在已经可以使用助手了。"),
               0, QStringLiteral("解压数据包"));
    const QString package = DataPackageProgram(env);
    if (!package.isEmpty()) StartProgram(env, package, {}, WindowMode::Normal);
  }
  app.WenShuProgram = ReadWenShuProgram(env);
}

void OpenFormatFile(AppState& app) {
  const Env& env = app.env;
  app.WenShuProgram = ReadWenShuProgram(env);
  const QString program = app.WenShuProgram;
  // No program chosen yet (a fresh installation): the desktop's own program
  // for the file's type opens it. A chosen one that is gone is said.
  if (!program.isEmpty() && !FileExists(program)) {
    env.msgBox(QStringLiteral("  你设置的打开格式文件的程序为") + program +
               QStringLiteral("但现在它不存在或有错误，请重新设置。"));
    return;
  }
  FileDialogRequest r;
  r.title = QStringLiteral("打开格式文书文件");
  r.initialDir = env.path(QStringLiteral("\\法律文书"));
  r.filter = QStringLiteral(
      "常用格式.wps.doc.txt|*.wps;*.doc;*.txt|Htm网页文件(*.htm)|*.htm|Html网页文件(*.html)|*.html|所有文件(*.*)|*.*");
  const auto chosen = env.dialogs->openFile(r);
  if (!chosen || chosen->isEmpty()) return;
  if (program.isEmpty())
    ShellOpen(env, *chosen);
  else
    StartProgram(env, program, {*chosen}, WindowMode::Maximized);
}

bool IsProgramFile(const QString& path) {
  const QString lower = path.toLower();
  if (lower.endsWith(QStringLiteral(".com")) || lower.endsWith(QStringLiteral(".exe"))) return true;
  const QFileInfo fi(ResolveCase(path));
  return fi.isFile() && fi.isExecutable();
}

void CfgOpenPro(AppState& app) {
  const Env& env = app.env;
  if (FileExists(env.path(QStringLiteral("\\ini\\wordpad.exe"))))
    env.msgBox(QStringLiteral("默认用") + QStringLiteral("wordpad.exe") +
               QStringLiteral("打开格式文件，你也可以自定义用其它应用程序。"));
  FileDialogRequest r;
  r.title = QStringLiteral("请您自己手工找到要使用的程序，如WPS或WORD或写字板");
  r.initialDir = env.path(QStringLiteral("\\ini"));
  r.filter =
      QStringLiteral("可执行文件1(*.exe)|*.exe|可执行文件2 (*.com)") + QStringLiteral("|*.com|所有文件(*.*)|*.*");
  const auto chosen = env.dialogs->openFile(r);
  if (!chosen || chosen->isEmpty()) return;
  if (!IsProgramFile(*chosen)) {
    env.msgBox(QStringLiteral("你选的不是一个可执行文件，没有进行注册本文件名。"));
    return;
  }
  MakeDir(env.path(QStringLiteral("\\ini")));
  WriteQuotedValue(env.path(kWenShuFile), *chosen);
  app.WenShuProgram = *chosen;
  env.msgBox(QStringLiteral("注册成功，以后的格式文书就用") + *chosen + QStringLiteral("来打开了。"));
}

}  // namespace mj
