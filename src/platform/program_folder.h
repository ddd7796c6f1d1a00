#pragma once
// Which folder the program works on. As it always did, the program works on
// the folder its executable stands in. Two exceptions:
//   - `--folder DIR` on the command line names another folder;
//   - an installed program (its folder holds the package's marker file, or
//     cannot be written) works on the per-user folder
//     $XDG_DATA_HOME/mingjing (~/.local/share/mingjing by default), which
//     the data package fills on the first start.
// The window program and mingjing-cli follow the same rules.

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

namespace mj {

// The file that the Debian package puts beside the installed programs: a
// folder holding it belongs to the package manager and is never written.
inline const QString kPackagedMarker = QStringLiteral("mingjing.packaged");
// The data package program that stands beside the programs.
inline const QString kDataPackageName = QStringLiteral("lmdata");

// The per-user folder: $XDG_DATA_HOME/mingjing when XDG_DATA_HOME is an
// absolute path, else $HOME/.local/share/mingjing; "" without a home.
QString PerUserFolder(const QProcessEnvironment& environment);

// Whether the program folder beside the executable is an installed one.
bool IsInstalledFolder(const QString& exeDir);

struct ProgramFolderChoice {
  QString folder;        // the program folder; "" when there is none (problem says why)
  bool perUser = false;  // the per-user folder of an installed program
  QString problem;       // one line for the user, in Chinese
};

// The folder for a start: `folderArg` (the value of --folder, "" when not
// given) must name an existing folder; without it the executable's folder,
// or the per-user folder of an installed program.
ProgramFolderChoice ChooseProgramFolder(const QString& exeDir, const QString& folderArg,
                                        const QProcessEnvironment& environment);

// The value of `--folder DIR` or `--folder=DIR` in args (args[0] is the
// program). *present tells whether the option was given at all; *missingValue
// that it was given without a folder. The option is removed from args.
QString TakeFolderOption(QStringList& args, bool* present = nullptr, bool* missingValue = nullptr);

// A per-user folder that has no data set yet (no \yibanti) is filled by the
// data package beside the executable: `lmdata --console DIR` writes every file of the
// data set that is missing and never replaces one. True when the folder has
// its data set afterwards; otherwise *problem says why. A folder that has
// its data set already is not touched.
bool FillFromDataPackage(const QString& exeDir, const QString& folder, QString* problem);

}  // namespace mj
