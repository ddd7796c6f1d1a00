#pragma once
// A program folder of its own for each test, with a fixed clock, scripted
// message boxes, a recording shell, scripted dialogs and a clipboard of its
// own.

#include <QString>
#include <QTemporaryDir>
#include <QUrl>
#include <memory>

#include "platform/clipboard.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/env.h"
#include "platform/messagebox.h"
#include "platform/shell.h"
#include "support/printers.h"

namespace mj::test {

class TestEnv {
 public:
  TestEnv();
  explicit TestEnv(const QString& copyFrom);  // starts with a copy of that folder

  Env env;
  FixedClock clock;
  ScriptedBoxes boxes;
  RecordingShell shell;
  ScriptedDialogs dialogs;
  MemoryClipboard clipboard;

  QString root() const { return env.root; }
  QString path(const QString& suffix) const { return env.path(suffix); }
  // Writes text in GBK (creating folders); the text is written as given.
  void writeGbk(const QString& suffix, const QString& text) const;
  QString readGbk(const QString& suffix) const;
  void mkdir(const QString& suffix) const;

 private:
  std::unique_ptr<QTemporaryDir> dir_;
};

// The folder's support site: none, so that a start fetches nothing (what a
// copied folder and MakeProgramFolder get), or a server of the test.
void NoSupportSite(const TestEnv& t);
void UseSupportSite(const TestEnv& t, const QUrl& site);

// Copies a folder tree.
bool CopyTree(const QString& from, const QString& to);

// The built demonstration program folder (build tree), empty when not built.
QString DemoDataDir();
// ../shared/realdata, empty when absent.
QString RealDataDir();
// Folder for screenshots and other test output, created on demand.
QString OutputDir();

}  // namespace mj::test
