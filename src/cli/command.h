#pragma once
// The command base of mingjing-cli. Each verb (article, cite, search, ...)
// is one small class that names itself, says in Chinese and English what it
// does, declares its options, and runs on a program folder. The runner
// (cli/cli.h) picks the class by the verb, reads the options every command
// has (--folder, --help), finds the program folder and hands the rest over.
//
// A command writes its result into the context's output text and ends with
// exit status 0; on failure it calls fail() with one line in Chinese, which
// the runner prints on standard error, and ends with 1. Nothing is written
// into the program folder unless the command is one that writes (writes()).

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

#include "cli/cli_services.h"
#include "platform/env.h"

namespace mj::cli {

// An option of a command: "--group 刑法类" (takes a value) or "--again".
struct OptionInfo {
  QString name;          // without the leading "--"
  bool takesValue = false;
  QString valueName;     // for the help: "组名"
  QString helpZh;
  QString helpEn;
};

// What one run of a command works with.
struct CommandContext {
  Env env;                           // the program folder and the services
  KeptBoxes* boxes = nullptr;  // the boxes the core showed during the run (env.boxes)
  QStringList operands;              // the arguments that are not options
  QHash<QString, QString> options;   // given options: name -> value ("" for a flag)
  QString out;                       // the result, CR LF or LF line ends
  QString error;                     // the one-line message of a failure

  bool has(const QString& option) const { return options.contains(option); }
  QString value(const QString& option) const { return options.value(option); }
  // Records the message and gives the exit status of a failure.
  int fail(const QString& message) {
    error = message;
    return 1;
  }
};

class Command {
 public:
  virtual ~Command() = default;
  // The verb on the command line.
  virtual QString name() const = 0;
  // The operands in the usage line: "法律名 条号".
  virtual QString operandsZh() const = 0;
  virtual QString operandsEn() const = 0;
  // One line each on what the command does.
  virtual QString summaryZh() const = 0;
  virtual QString summaryEn() const = 0;
  // The options of the command besides --folder and --help.
  virtual QList<OptionInfo> options() const { return {}; }
  // How many operands the command takes.
  virtual int minOperands() const = 0;
  virtual int maxOperands() const = 0;
  // Whether the command writes into the program folder.
  virtual bool writes() const { return false; }
  // Runs on ctx.env.root, which exists and holds a data set.
  virtual int run(CommandContext& ctx) = 0;

  // The help of the command, in Chinese and in English.
  QString help() const;
};

using CommandList = std::vector<std::unique_ptr<Command>>;

// Every command of the program, in the order of the help.
CommandList AllCommands();

// A message of the core (a box's text may run over several lines) as the
// one line of a failure: each line break becomes `joiner` ("" between
// Chinese sentences, " " between the entries of a list of files).
QString OneLine(const QString& text, const QString& joiner);

// An input file the user names on the command line (a paper, an update
// package): its absolute path, or empty with the one-line reason in
// `problem` when it does not exist or is a folder. `kind` names the file in
// the messages: "试卷文件", "更新包文件".
QString NamedInputFile(const QString& path, const QString& kind, QString* problem);

// A text for standard output: CR LF and lone CR become LF, and the text
// ends with one LF unless it is empty.
QString ForTerminal(const QString& text);

}  // namespace mj::cli
