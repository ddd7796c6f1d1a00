#include "support/directory_runs.h"

#include <gtest/gtest.h>

#include "practice/directory.h"

namespace mj::test {

int OpenBankRow(DirectoryGrid& grid, const QString& fileEnd) {
  const Directory& d = grid.directory();
  int row = 0;
  for (int r = 1; r <= d.rowCount(); ++r)
    if (d.text(r, kColFile).endsWith(fileEnd)) row = r;
  // A heading's click opens it when it is closed and closes it when it is
  // open: only closed ones are clicked, outermost first.
  for (int r = 1; r < row; ++r) {
    long long a = 0, z = 0;
    if (HeadingRange(d.text(r, kColFlag), a, z) && a <= row && row <= z && d.isRowHidden(r + 1)) grid.clickRow(r);
  }
  return row;
}

void StartBankRun(DirectoryGrid& grid, const QString& fileEnd) {
  const int row = OpenBankRow(grid, fileEnd);
  ASSERT_GT(row, 0) << "no bank file ends in " << fileEnd.toStdString();
  ASSERT_EQ(grid.clickRow(row), DirectoryClick::Leaf) << fileEnd.toStdString();
}

}  // namespace mj::test
