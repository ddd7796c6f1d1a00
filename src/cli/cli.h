#pragma once
// mingjing-cli: the command-line companion of the program, over the same
// core. RunCli does a whole run from the arguments to the exit status, so
// that tests run it in the same process as the program does in its own.

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include "platform/clock.h"

namespace mj::cli {

// What a run takes from the outside world.
struct CliSetup {
  QString exeDir;                        // where the executable stands (the data package beside it)
  QProcessEnvironment environment;       // HOME, XDG_DATA_HOME
  Clock* clock = nullptr;                // "today" for the due counts
};

struct CliResult {
  int status = 0;  // 0 success, 1 failure
  QString out;     // standard output, LF line ends
  QString err;     // standard error: the one-line message, or the help asked for wrongly
};

// argv[0] is the program, then the verb, its operands and options.
CliResult RunCli(const QStringList& argv, const CliSetup& setup);

// The help of the whole program, in Chinese and English.
QString GeneralHelp();

}  // namespace mj::cli
