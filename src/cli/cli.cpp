#include "cli/cli.h"

#include <QFileInfo>

#include "cli/cli_services.h"
#include "cli/command.h"
#include "platform/paths.h"
#include "platform/program_folder.h"

namespace mj::cli {

namespace {

const QString kProgram = QStringLiteral("mingjing-cli");

// Said behind the summary of a command that changes the program folder.
const QString kWritesZh = QStringLiteral("（会写入程序文件夹）");
const QString kWritesEn = QStringLiteral(" (writes into the program folder)");

QString SeeHelp() { return QStringLiteral("用 mingjing-cli --help 查看用法。"); }

CliResult Failure(const QString& message) {
  CliResult r;
  r.status = 1;
  r.err = message;
  return r;
}

const OptionInfo* FindOption(const QList<OptionInfo>& options, const QString& name) {
  for (const OptionInfo& o : options)
    if (o.name == name) return &o;
  return nullptr;
}

// The arguments behind the verb: options of the command, then operands.
// "--" ends the options; "--name=value" and "--name value" both work.
bool ParseArguments(const Command& command, const QStringList& args, CommandContext& ctx, bool* helpAsked,
                    QString* problem) {
  const QList<OptionInfo> options = command.options();
  bool onlyOperands = false;
  for (int i = 0; i < args.size(); ++i) {
    const QString& a = args[i];
    if (onlyOperands || !a.startsWith(QStringLiteral("--")) || a.size() == 2) {
      if (!onlyOperands && a == QStringLiteral("--")) {
        onlyOperands = true;
        continue;
      }
      if (!onlyOperands && a == QStringLiteral("-h")) {
        *helpAsked = true;
        return true;
      }
      ctx.operands.append(a);
      continue;
    }
    QString name = a.mid(2);
    QString value;
    const qsizetype eq = name.indexOf(QLatin1Char('='));
    const bool hasInlineValue = eq >= 0;
    if (hasInlineValue) {
      value = name.mid(eq + 1);
      name = name.left(eq);
    }
    if (name == QStringLiteral("help")) {
      *helpAsked = true;
      return true;
    }
    const OptionInfo* o = FindOption(options, name);
    if (!o) {
      *problem = QStringLiteral("命令 %1 没有选项 --%2。").arg(command.name(), name);
      return false;
    }
    if (o->takesValue) {
      if (!hasInlineValue) {
        if (i + 1 >= args.size()) {
          *problem = QStringLiteral("选项 --%1 后面要写%2。").arg(name, o->valueName);
          return false;
        }
        value = args[++i];
      }
    } else if (hasInlineValue) {
      *problem = QStringLiteral("选项 --%1 不带值。").arg(name);
      return false;
    }
    ctx.options.insert(name, value);
  }
  return true;
}

QString UsageLine(const Command& c) {
  return kProgram + QLatin1Char(' ') + c.name() + (c.operandsZh().isEmpty() ? QString() : QLatin1Char(' ') + c.operandsZh());
}

}  // namespace

QString Command::help() const {
  QString h;
  h += QStringLiteral("用法：%1 %2%3 [选项]\n").arg(kProgram, name(), operandsZh().isEmpty() ? QString() : QLatin1Char(' ') + operandsZh());
  h += summaryZh() + (writes() ? kWritesZh : QString()) + QLatin1Char('\n');
  h += QStringLiteral("Usage: %1 %2%3 [options]\n").arg(kProgram, name(), operandsEn().isEmpty() ? QString() : QLatin1Char(' ') + operandsEn());
  h += summaryEn() + (writes() ? kWritesEn : QString()) + QLatin1Char('\n');
  h += QStringLiteral("\n选项 / Options:\n");
  QList<OptionInfo> all = options();
  all.append({QStringLiteral("folder"), true, QStringLiteral("文件夹"), QStringLiteral("在这个程序文件夹上工作"),
              QStringLiteral("work on this program folder")});
  all.append({QStringLiteral("help"), false, QString(), QStringLiteral("显示本说明"), QStringLiteral("show this help")});
  for (const OptionInfo& o : all) {
    const QString head = QStringLiteral("  --") + o.name + (o.takesValue ? QLatin1Char(' ') + o.valueName : QString());
    h += head + QStringLiteral("\n      ") + o.helpZh + QStringLiteral(" / ") + o.helpEn + QLatin1Char('\n');
  }
  return h;
}

QString GeneralHelp() {
  const CommandList commands = AllCommands();
  QString h;
  h += QStringLiteral("明镜学习伴侣的命令行工具：在程序文件夹上查法条、查引文、检验试卷……\n");
  h += QStringLiteral("用法：mingjing-cli 命令 [参数] [--folder 文件夹]\n\n命令：\n");
  for (const auto& c : commands)
    h += QStringLiteral("  %1\n      %2%3\n").arg(UsageLine(*c), c->summaryZh(), c->writes() ? kWritesZh : QString());
  h += QStringLiteral(
      "\n程序文件夹：--folder 指定的文件夹；不指定时是程序所在的文件夹；安装的程序用个人数据文件夹\n"
      "~/.local/share/mingjing（$XDG_DATA_HOME/mingjing），第一次使用时从数据包填充。\n"
      "成功时退出状态为 0；出错时为 1，并在标准错误输出一行说明；输入有误时程序文件夹保持原样。输出为 UTF-8。\n"
      "每个命令的详细说明：mingjing-cli 命令 --help。\n\n");
  h += QStringLiteral("The command-line companion of Mingjing: law articles, citations, paper checks ... on a program folder.\n");
  h += QStringLiteral("Usage: mingjing-cli COMMAND [ARGUMENTS] [--folder DIR]\n\nCommands:\n");
  for (const auto& c : commands)
    h += QStringLiteral("  %1 %2\n      %3%4\n")
             .arg(kProgram + QLatin1Char(' ') + c->name(), c->operandsEn(), c->summaryEn(), c->writes() ? kWritesEn : QString());
  h += QStringLiteral(
      "\nProgram folder: the folder given by --folder; without it the folder the program stands in; an installed\n"
      "program uses the per-user folder ~/.local/share/mingjing ($XDG_DATA_HOME/mingjing), filled from the data\n"
      "package on first use. Exit status 0 on success, 1 with a one-line message on standard error otherwise.\n"
      "Output is UTF-8. The help of a command: mingjing-cli COMMAND --help.\n");
  return h;
}

QString NamedInputFile(const QString& path, const QString& kind, QString* problem) {
  if (!PathExists(path)) {
    *problem = QStringLiteral("%1 %2 不存在。").arg(kind, path);
    return QString();
  }
  if (DirExists(path)) {
    *problem = QStringLiteral("%1 是文件夹，不是%2。").arg(path, kind);
    return QString();
  }
  return QFileInfo(path).absoluteFilePath();
}

QString OneLine(const QString& text, const QString& joiner) {
  QString t = text;
  t.replace(QStringLiteral("\r\n"), joiner);
  t.replace(QLatin1Char('\n'), joiner);
  t.replace(QLatin1Char('\r'), joiner);
  return t;
}

QString ForTerminal(const QString& text) {
  QString t = text;
  t.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  t.replace(QLatin1Char('\r'), QLatin1Char('\n'));
  if (!t.isEmpty() && !t.endsWith(QLatin1Char('\n'))) t += QLatin1Char('\n');
  return t;
}

CliResult RunCli(const QStringList& argv, const CliSetup& setup) {
  QStringList args = argv;
  bool missingFolder = false;
  const QString folderArg = TakeFolderOption(args, nullptr, &missingFolder);
  if (missingFolder) return Failure(QStringLiteral("选项 --folder 后面要写程序文件夹。"));
  if (args.size() < 2) return Failure(QStringLiteral("缺少命令。") + SeeHelp());
  const QString verb = args[1];
  if (verb == QStringLiteral("--help") || verb == QStringLiteral("-h") || verb == QStringLiteral("help")) {
    CliResult r;
    r.out = GeneralHelp();
    return r;
  }
  if (verb == QStringLiteral("--version")) {
    CliResult r;
    r.out = QStringLiteral("mingjing-cli 3.10\n");
    return r;
  }
  const CommandList commands = AllCommands();
  Command* command = nullptr;
  for (const auto& c : commands)
    if (c->name() == verb) command = c.get();
  if (!command) return Failure(QStringLiteral("未知命令：%1。").arg(verb) + SeeHelp());

  KeptBoxes boxes;
  NoShell shell;
  NoDialogs dialogs;
  SystemClock systemClock;
  CommandContext ctx;
  ctx.env = Env{QString(), setup.clock ? setup.clock : &systemClock, &boxes, &shell, &dialogs, nullptr};
  ctx.boxes = &boxes;
  bool helpAsked = false;
  QString problem;
  if (!ParseArguments(*command, args.mid(2), ctx, &helpAsked, &problem)) return Failure(problem);
  if (helpAsked) {
    CliResult r;
    r.out = command->help();
    return r;
  }
  const qsizetype n = ctx.operands.size();
  if (n < command->minOperands())
    return Failure(QStringLiteral("命令 %1 缺少参数，用法：%2。").arg(verb, UsageLine(*command)));
  if (n > command->maxOperands())
    return Failure(QStringLiteral("命令 %1 的参数太多，用法：%2。").arg(verb, UsageLine(*command)));

  const ProgramFolderChoice choice = ChooseProgramFolder(setup.exeDir, folderArg, setup.environment);
  if (!choice.problem.isEmpty()) return Failure(choice.problem);
  if (choice.perUser && !FillFromDataPackage(setup.exeDir, choice.folder, &problem)) return Failure(problem);
  if (!DirExists(AppPath(choice.folder, QStringLiteral("\\yibanti"))))
    return Failure(QStringLiteral("文件夹 %1 里没有明镜学习伴侣的数据（缺少 yibanti 文件夹）。").arg(choice.folder));
  ctx.env.root = choice.folder;

  CliResult r;
  r.status = command->run(ctx);
  if (r.status != 0) {
    r.status = 1;
    r.err = ctx.error.isEmpty() ? QStringLiteral("命令 %1 失败。").arg(verb) : ctx.error;
    // A failure prints nothing on standard output.
    return r;
  }
  r.out = ForTerminal(ctx.out);
  return r;
}

}  // namespace mj::cli
