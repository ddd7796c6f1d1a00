#pragma once
// Starting a bank's run from the directory grid of the main window, as the
// user does it: the headings over the bank opened, then a click on the bank.

#include <QString>

#include "practice/directory_widget.h"

namespace mj::test {

// The grid row of the bank whose file ends in fileEnd (the last such row),
// with each closed heading over it opened by a click; 0 when no row names
// such a file.
int OpenBankRow(DirectoryGrid& grid, const QString& fileEnd);

// Opens the bank's headings and clicks the bank, which starts its run; a
// test fails when no row names the file or the click starts no run.
void StartBankRun(DirectoryGrid& grid, const QString& fileEnd);

}  // namespace mj::test
