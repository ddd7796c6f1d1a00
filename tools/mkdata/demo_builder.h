#pragma once
// Turns the readable sources of the demonstration data (data/, see its
// README.md) into the program folder tree: dBASE tables, GBK bank files and
// law texts, tree files, INI files, help pages and pictures.

#include <QString>
#include <QStringList>

namespace mkdata {

// Builds the tree in outDir, which must not exist or be empty. Every fault
// of the sources found is listed in *errors ("file:line: message"); the
// tree is then incomplete and the result false.
bool BuildDemo(const QString& dataDir, const QString& outDir, QStringList* errors);

}  // namespace mkdata
