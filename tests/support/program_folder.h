#pragma once
// A small program folder for tests of the start and the menus: the folders
// of the data set, an icon, the law-name table, an empty item table.

#include <QString>

#include "support/test_env.h"

namespace mj::test {

struct FolderParts {
  bool yibanti = true;
  bool icon = true;        // \ini\fa.ico
  bool rootIcon = false;   // \fa.ico
  bool iniFolder = true;
  bool tables = true;      // \dbf with the five tables of the practice, all empty
  bool readme = true;
  bool formatDocs = true;  // \法律文书
  bool dataPackage = false;  // \lmdata (an executable script)
  bool splash = true;      // \ini\jiemian.jpg
};

void MakeProgramFolder(const TestEnv& t, const FolderParts& parts = {});
void WriteIcon(const QString& path);

}  // namespace mj::test
