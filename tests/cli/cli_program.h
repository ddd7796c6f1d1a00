#pragma once
// The program's main window beside mingjing-cli: the side-by-side tests run
// the same input through a window and through the command on the same kind
// of folder.

#include <QString>
#include <QStringList>
#include <memory>

#include "app/main_window.h"
#include "cli_fixture.h"
#include "law/law_files.h"
#include "support/test_env.h"

namespace mj::test {

// The demonstration folder with settings of another day, so that the first
// entry into the internal banks counts; the main window started on it.
struct Program {
  TestEnv t{DemoDataDir()};
  std::unique_ptr<Form1> form;

  Program() {
    // Law texts of an earlier test's folder are not this folder's.
    ClearLawCache();
    t.writeGbk(u"\\ini\\userself.ini"_qs,
               u"STOKTIMES=1\r\nSTADDNUM=1\r\nSTPASSDAYS=30\r\nTSOKTIMES=1\r\nTSADDNUM=1\r\nTSPASSDAYS=30\r\n"
               u"PUBFONTSIZE=15\r\nPUBBACKCOLOR=16777215\r\nPUBFORECOLOR=0\r\nSTLASTUPDATE=0\r\n"
               u"TSLASTUPDATE=0\r\nPUBFONTNAME=宋体\r\nPUBFONTIT=FALSE\r\nPUBFONTBOLD=FALSE\r\n"_qs);
    form = std::make_unique<Form1>(t.env);
    EXPECT_EQ(form->load(), Form1::LoadOutcome::Running);
    form->resize(1100, 760);
    form->show();
    t.boxes.take();
  }
  ~Program() {
    if (form) form->hide();
  }
  cli::CliResult cli(const QStringList& args) const { return RunCliOn(t.root(), args); }
};

}  // namespace mj::test
