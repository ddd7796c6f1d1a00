#pragma once
// Turns the readable sources of the demonstration data (data/, see its
// README.md) into the program folder tree: dBASE tables, GBK bank files and
// law texts, tree files, INI files, help pages and pictures.

#include <QString>
#include <QStringList>

namespace mkdata {

// Builds the tree in outDir, which must not exist or be empty. The real
// statutes of the law list are taken from realDataDir (their Markdown); when
// that folder is empty or missing they are left out and *notes says so.
// Every fault of the sources found is listed in *errors ("file:line:
// message"); the tree is then incomplete and the result false.
bool BuildDemo(const QString& dataDir, const QString& outDir, const QString& realDataDir, QStringList* errors,
               QStringList* notes = nullptr);

}  // namespace mkdata
