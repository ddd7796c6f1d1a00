#pragma once
// Running a helper program of the system (not one of the user's) to the end
// and taking what it printed: the Jet reader mdb-export. Window events go on
// while it runs.

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace mj {

struct ProgramResult {
  bool started = false;  // the program could be started at all
  bool finished = false;  // it ended by itself within the time allowed
  int exitCode = -1;
  QByteArray output;  // standard output
  QByteArray errors;  // standard error
};

// The full path of a program found on the search path; empty when there is none.
QString FindProgram(const QString& name);

// Runs program with args and waits up to timeoutMs for its end (a program
// still running then is killed). `environment` adds NAME=value pairs.
ProgramResult RunProgram(const QString& program, const QStringList& args, int timeoutMs,
                         const QStringList& environment = {});

}  // namespace mj
