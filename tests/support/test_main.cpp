// Every test program runs inside a QApplication (offscreen in the test run),
// so that window tests and logic tests share one main. The offscreen
// platform gets the two screens the window checks use (window_checks.h);
// Qt's own Chinese texts are loaded and windows are kept on the screen as in
// the program.
#include <QApplication>
#include <QTemporaryFile>
#include <cstdio>
#include <gtest/gtest.h>

#include "platform/qt_translations.h"
#include "platform/window_placement_widget.h"
#include "support/window_checks.h"

int main(int argc, char** argv) {
  const auto screens = mj::test::UseTestScreens();
  QApplication app(argc, argv);
  QString missing;
  if (!mj::InstallChineseQtTexts(app, &missing)) {
    std::fprintf(stderr, "Qt's Chinese translation is missing (%s): install qt6-translations-l10n (scripts/setup).\n",
                 qUtf8Printable(missing));
    return 1;
  }
  mj::KeepWindowsOnScreen(app);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
