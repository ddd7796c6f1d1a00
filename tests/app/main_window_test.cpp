#include <gtest/gtest.h>

#include <QAction>
#include <QFile>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QTextEdit>
#include <QTimer>

#include "app/main_window.h"
#include "app/splash_window.h"
#include "app/startup.h"
#include "platform/dbftable.h"
#include "platform/paths.h"
#include "log/news.h"
#include "settings/help_window.h"
#include "settings/settings.h"
#include "settings/personal_settings_window.h"
#include "settings/settings_window.h"
#include "support/program_folder.h"

using namespace mj;

namespace {

struct Started {
  test::TestEnv t;
  std::unique_ptr<Form1> form;
  QList<int> steps;
  Form1::LoadOutcome outcome = Form1::LoadOutcome::Running;

  explicit Started(const test::FolderParts& parts = {}, bool load = true) {
    test::MakeProgramFolder(t, parts);
    form = std::make_unique<Form1>(t.env);
    form->onStartupStep = [this](int s) { steps.append(s); };
    if (load) outcome = form->load();
  }
};

QList<int> range(int from, int to) {
  QList<int> r;
  for (int i = from; i <= to; ++i) r.append(i);
  return r;
}

}  // namespace

TEST(MainWindow, StartRunsItsStepsInOrder) {
  Started s;
  EXPECT_EQ(s.outcome, Form1::LoadOutcome::Running);
  EXPECT_EQ(s.steps, range(1, 18));
  AppState& a = s.form->state();
  EXPECT_TRUE(a.StartedOk);
  EXPECT_TRUE(a.HasIndex);
  EXPECT_EQ(a.RunState, runstate::kNormal);
  EXPECT_EQ(a.TypeTitle.size(), 4);
  ASSERT_EQ(a.NumeralTable.size(), 2001);
  EXPECT_EQ(a.NumeralTable[0], u"零"_qs);
  EXPECT_EQ(a.NumeralTable[1010], u"一千零十"_qs);
  EXPECT_EQ(a.NumeralTable[2000], u"二千"_qs);
  EXPECT_EQ(a.LawNameTable, u"33.mmd"_qs);
  EXPECT_EQ(a.ItemTable, u"items.mmd"_qs);
  EXPECT_EQ(a.DataFolder, s.t.path(u"\\dbf"_qs));
  EXPECT_EQ(s.form->splash(), nullptr);
  EXPECT_EQ(s.form->Label12->text(), u"科学、高效、智能化的题海战术使在较短时间内通过司法统考成为可能。"_qs);
  EXPECT_EQ(s.form->windowTitle(), u"明镜学习伴侣3.10"_qs);
  EXPECT_EQ(s.form->currentFace(), s.form->startPage);
  EXPECT_TRUE(s.t.boxes.shown().isEmpty());
}

TEST(MainWindow, TitleCarriesTheCountdown) {
  Started s({}, false);
  s.t.clock.setDate(QDate(2026, 11, 21));
  s.t.writeGbk(kNewsFile, u"[信息]\r\n考试时间="_qs + QString::number(DayNumber(QDate(2026, 11, 21)) + 10) + u"\r\n"_qs);
  s.form->load();
  EXPECT_EQ(s.form->windowTitle(), u"明镜学习伴侣3.10   距今年司法统考还有10天"_qs);
}

TEST(MainWindow, NewsLinksAreReadBeforeTheSplash) {
  Started s({}, false);
  s.t.writeGbk(kNewsFile, u"[信息]\r\n法条详解=http://x/law\r\n保留链接1=&a=1\r\n[通知1]\r\n显示内容=示例通知\r\n"_qs);
  s.form->load();
  EXPECT_EQ(s.form->state().NewsLink1, u"http://x/law"_qs);
  EXPECT_EQ(s.form->state().NewsLink3, u"&a=1"_qs);
  EXPECT_EQ(s.form->Label14[0]->text(), u"示例通知"_qs);
  EXPECT_FALSE(s.form->Label14[0]->isHidden());
  EXPECT_TRUE(s.form->Label14[1]->isHidden());
  s.form->ShowNewsLabels(false);
  EXPECT_TRUE(s.form->Label14[0]->isHidden());
  s.form->ShowNewsLabels(true);
  EXPECT_FALSE(s.form->Label14[0]->isHidden());
  EXPECT_TRUE(s.form->Label14[1]->isHidden());
}

TEST(MainWindow, ANoticeClickOpensItsLinkOnce) {
  Started s({}, false);
  s.t.writeGbk(kNewsFile, u"[通知1]\r\n显示内容=示例通知\r\n链接=https://x/notice\r\n[通知2]\r\n显示内容=无链接\r\n"_qs);
  s.form->load();
  s.form->show();
  QTest::mouseClick(s.form->Label14[1], Qt::LeftButton);
  EXPECT_TRUE(s.t.shell.calls.isEmpty());
  QTest::mouseClick(s.form->Label14[0], Qt::LeftButton);
  ASSERT_EQ(s.t.shell.calls.size(), 1);
  EXPECT_EQ(s.t.shell.calls[0].kind, ShellCall::Open);
  EXPECT_EQ(s.t.shell.calls[0].target, u"https://x/notice"_qs);
}

TEST(MainWindow, StartPageShowsTheSplashPicture) {
  Started s;
  ASSERT_FALSE(s.form->Picture1->pixmap().isNull());
  EXPECT_EQ(s.form->Picture1->pixmap().size(), QSize(540, 360));  // 300 × 200 scaled into 640 × 360
  Started without({.splash = false});
  EXPECT_TRUE(without.form->Picture1->pixmap().isNull());
}

TEST(MainWindow, StartPageShowsItsOwnPictureWhenThereIsOne) {
  Started s({}, false);
  QImage own(400, 200, QImage::Format_RGB32);
  own.fill(QColor(10, 200, 30));
  ASSERT_TRUE(own.save(s.t.path(kStartPagePicture), "JPEG"));
  s.form->load();
  const QImage shown = s.form->Picture1->pixmap().toImage();
  ASSERT_EQ(shown.size(), QSize(640, 320));
  EXPECT_GT(qGreen(shown.pixel(320, 160)), 150);
  EXPECT_LT(qRed(shown.pixel(320, 160)), 60);
}

TEST(MainWindow, MissingDataSetWithDataPackageStartsItAndEnds) {
  Started s({.yibanti = false, .dataPackage = true});
  EXPECT_EQ(s.outcome, Form1::LoadOutcome::EndNow);
  EXPECT_EQ(s.steps, QList<int>{1});
  ASSERT_EQ(s.t.shell.calls.size(), 1);
  EXPECT_EQ(s.t.shell.calls[0].kind, ShellCall::Start);
  EXPECT_EQ(s.t.shell.calls[0].target, s.t.path(u"\\lmdata"_qs));
  EXPECT_EQ(s.form->splash(), nullptr);
  EXPECT_FALSE(s.form->isVisible());
  EXPECT_FALSE(s.form->state().StartedOk);
}

TEST(MainWindow, ADataPackageThatCannotBeStartedIsSaidAndTheStartGoesOn) {
  Started s({.yibanti = false, .dataPackage = true}, false);
  s.t.shell.result = false;
  s.outcome = s.form->load();
  EXPECT_EQ(s.outcome, Form1::LoadOutcome::Running);
  ASSERT_GE(s.t.boxes.shown().size(), 1);
  EXPECT_EQ(s.t.boxes.shown()[0].text, u"无法启动程序：\r\n"_qs + s.t.path(u"\\lmdata"_qs));
  EXPECT_EQ(s.t.boxes.shown()[0].style, box::Exclamation);
}

TEST(MainWindow, MissingDataSetWithoutPackageOpensAndDataEntriesUnpack) {
  Started s({.yibanti = false, .readme = false});
  EXPECT_EQ(s.outcome, Form1::LoadOutcome::Running);
  EXPECT_EQ(s.steps, range(1, 18));
  EXPECT_FALSE(s.form->needsData());
  ASSERT_EQ(s.t.boxes.shown().size(), 1);
  EXPECT_EQ(s.t.boxes.shown()[0].title, u"解压数据包"_qs);
  // 帮助 tests \readme and runs the unpack entry when it is missing.
  s.t.boxes.clear();
  emit s.form->Help->aboutToShow();
  EXPECT_EQ(s.t.boxes.shown().size(), 1);
}

// Every menu entry that needs the data set, by name. An entry that is still
// disabled (its window comes later) is only checked to be disabled; once it is
// enabled it is tested like the others, with no change here. A new entry that
// needs the data set: add its name.
const QStringList kDataEntries = {u"ShiTi"_qs,   u"CeShi"_qs, u"ChaJuan"_qs, u"SouTi"_qs,       u"OutShiTi"_qs,
                                  u"AddNewLaw"_qs, u"MyGuess"_qs, u"FGCX"_qs,  u"MyConfigMenu"_qs};

QAction* MenuEntry(Form1& form, const QString& name) {
  for (QAction* a : form.menuBar()->actions())
    if (a->objectName() == name) return a;
  return nullptr;
}

// The windows other than the main window that are open.
QStringList OtherWindows(const Form1& form) {
  QStringList r;
  for (QWidget* w : QApplication::topLevelWidgets())
    if (w != &form && w->isVisible()) r.append(w->objectName() + u"/"_qs + w->metaObject()->className());
  return r;
}

// Triggers an entry as a click in the menu bar does: a submenu opens.
void Click(QAction* a) {
  if (QMenu* m = a->menu()) {
    m->popup(QPoint(10, 10));
    QApplication::processEvents();
    QApplication::processEvents();
  } else {
    a->trigger();
  }
}

TEST(MainWindow, EveryDataEntryRunsTheUnpackEntryWithoutTheDataSet) {
  int tested = 0;
  for (const QString& name : kDataEntries) {
    SCOPED_TRACE(name.toStdString());
    Started s({.yibanti = false, .readme = false});
    s.form->show();
    QAction* a = MenuEntry(*s.form, name);
    ASSERT_NE(a, nullptr);
    if (!a->isEnabled()) continue;
    ++tested;
    Click(a);
    ASSERT_EQ(s.t.boxes.shown().size(), 1);
    EXPECT_EQ(s.t.boxes.shown()[0].title, u"解压数据包"_qs);
    EXPECT_EQ(s.t.boxes.shown()[0].text, u"本次点击为第一次使用解压数据包 \r\n现在已经可以使用助手了。"_qs);
    // Nothing of the entry's own work: no directory, no window, no open submenu.
    EXPECT_EQ(s.form->currentFace(), s.form->startPage);
    EXPECT_EQ(OtherWindows(*s.form), QStringList());
    if (a->menu()) {
      EXPECT_FALSE(a->menu()->isVisible());
    }
  }
  EXPECT_GE(tested, 6);
}

TEST(MainWindow, WithTheDataSetTheGuessMenuOpens) {
  Started s;
  s.form->show();
  Click(s.form->MyGuess->menuAction());
  EXPECT_TRUE(s.form->MyGuess->isVisible());
  EXPECT_TRUE(s.t.boxes.shown().isEmpty());
  s.form->MyGuess->close();
}

TEST(MainWindow, MissingIconsStopTheStartAfterTheSplashIsGone) {
  Started s({.icon = false});
  EXPECT_EQ(s.outcome, Form1::LoadOutcome::Stopped);
  EXPECT_EQ(s.steps, range(1, 8));
  EXPECT_EQ(s.form->splash(), nullptr);
  EXPECT_FALSE(s.form->state().StartedOk);
  EXPECT_FALSE(s.form->state().HasIndex);
  // A close before the start was complete asks nothing.
  s.form->show();
  EXPECT_TRUE(s.form->close());
  EXPECT_TRUE(s.t.boxes.shown().isEmpty());
}

TEST(MainWindow, IconInTheProgramFolderIsEnough) {
  Started s({.icon = false, .rootIcon = true});
  EXPECT_EQ(s.outcome, Form1::LoadOutcome::Running);
  EXPECT_FALSE(s.form->windowIcon().isNull());
}

TEST(MainWindow, IniFolderIsCreatedWhenMissing) {
  Started s({.icon = false, .rootIcon = true, .iniFolder = false, .splash = false}, false);
  ASSERT_FALSE(DirExists(s.t.path(u"\\ini"_qs)));
  s.form->load();
  EXPECT_TRUE(DirExists(s.t.path(u"\\ini"_qs)));
  // The missing splash picture was the one box of the start.
  ASSERT_EQ(s.t.boxes.shown().size(), 1);
  EXPECT_EQ(s.t.boxes.shown()[0].text,
            u"没有启动界面所需的图片“"_qs + s.t.path(u"\\ini\\jiemian.jpg"_qs) + u"”,无所需图片"_qs);
}

TEST(MainWindow, SplashBarGrowsToAThirdOfTheWindow) {
  test::TestEnv t;
  test::MakeProgramFolder(t);
  Form8 splash(t.env);
  splash.load();
  EXPECT_EQ(splash.size(), QSize(300, 200));
  EXPECT_EQ(splash.barStart(), 100);
  for (int i = 0; i < 50; ++i) splash.tick();
  EXPECT_TRUE(splash.isVisible());
  EXPECT_GE(splash.step() * 2, 100);
  EXPECT_LT((splash.step() - 7) * 2, 100);
}

TEST(MainWindow, CloseAsksOnceStarted) {
  Started s;
  s.form->show();
  s.t.boxes.answer(box::No);
  EXPECT_FALSE(s.form->close());
  EXPECT_TRUE(s.form->isVisible());
  ASSERT_EQ(s.t.boxes.shown().size(), 1);
  EXPECT_EQ(s.t.boxes.shown()[0].text, u"真的不玩儿啦？\r\n\r\n     :-)"_qs);
  s.t.boxes.answer(box::Yes);
  EXPECT_TRUE(s.form->close());
  EXPECT_FALSE(s.form->state().HasIndex && !s.form->state().AllItemData.isEmpty());
}

TEST(MainWindow, CloseDuringAnUpdateItemIsIgnored) {
  Started s;
  s.form->show();
  s.form->state().RunState = runstate::kInItem;
  EXPECT_FALSE(s.form->close());
  EXPECT_TRUE(s.t.boxes.shown().isEmpty());
  s.form->state().RunState = runstate::kUpdating;
  s.t.boxes.answer(box::Yes);
  s.t.boxes.answer(box::Yes);
  EXPECT_TRUE(s.form->close());
  ASSERT_EQ(s.t.boxes.shown().size(), 2);
  EXPECT_EQ(s.t.boxes.shown()[0].text, u"正在进行更新任务，确定中止吗？"_qs);
}

TEST(MainWindow, MenuInMenuOrderWithItsCaptions) {
  Started s;
  QStringList top;
  for (QAction* a : s.form->menuBar()->actions()) top.append(a->objectName() + u'=' + a->text());
  EXPECT_EQ(top, (QStringList{u"ShiTi=内部题库"_qs, u"CeShi=摸拟试卷"_qs, u"ChaJuan=查卷"_qs, u"SouTi=题目搜索"_qs,
                              u"OutShiTi=外部题库"_qs, u"zsd=知识点管理"_qs, u"AddNewLaw=添加新法律"_qs, u"MyGuess=模糊题"_qs,
                              u"AutoUpdate=自动更新"_qs, u"RiZhi=做题日志"_qs, u"CuoTiBen=错题本"_qs, u"FGCX=法律法规查询"_qs,
                              u"TxtFormat=文书格式"_qs, u"MyConfigMenu=设置"_qs, u"Help=帮助"_qs, u"MmExit=退出"_qs}));
  auto sub = [](QMenu* m) {
    QStringList r;
    for (QAction* a : m->actions()) r.append(a->objectName() + u'=' + a->text());
    return r;
  };
  EXPECT_EQ(sub(s.form->MyGuess), (QStringList{u"DoneGuess=做不太确定的试题"_qs, u"HelpGuess=本功能说明"_qs}));
  EXPECT_EQ(sub(s.form->AutoUpdate),
            (QStringList{u"DoneNewItem=按日期做刚更新的试题"_qs, u"DoneNewByLawName=按法律名做刚更新的试题"_qs,
                         u"NewerProgram=选新题库文件并更新进系统题库"_qs, u"Help4New=本功能说明"_qs}));
  EXPECT_EQ(sub(s.form->TxtFormat),
            (QStringList{u"OpenFormatFile=打开格式文书文件"_qs, u"CfgOpenPro=设置打开格式文书文件的程序"_qs}));
  // 做题统计 opens the statistics window.
  EXPECT_EQ(sub(s.form->Help), (QStringList{u"HelpWeb=支持站点"_qs, u"HelpYou=联机帮助"_qs, u"TongJi=做题统计"_qs}));
}

TEST(MainWindow, HelpEntries) {
  Started s;
  s.form->HelpGuess->trigger();
  s.form->HelpYou->trigger();
  ASSERT_EQ(s.t.boxes.shown().size(), 2);
  EXPECT_EQ(s.t.boxes.shown()[0].title, u"模糊题功能说明"_qs);
  EXPECT_EQ(s.t.boxes.shown()[0].text,
            u"如果您在做题时先点一下“也许是……”则程序会作出记录，并按时期、对、错进行分类，将来您可以有条件的进行复习。"_qs);
  EXPECT_EQ(s.t.boxes.shown()[1].title, u"明镜学伴3.10提示"_qs);
  EXPECT_EQ(s.t.boxes.shown()[1].text,
            u"    你可以在每个界面上按F1功能键调出当\r\n前界面的详细说明，注意，带有“●”号的\r\n功能在界面里不能直接看出来，为必看项。"_qs);
  // The test folder has no support site; the program's own is the default.
  s.form->HelpWeb->trigger();
  ASSERT_EQ(s.t.boxes.shown().size(), 3);
  EXPECT_EQ(s.t.boxes.shown()[2].text, u"没有设置支持站点的地址（见"_qs + s.t.path(kSiteFile) + u"）。"_qs);
  EXPECT_TRUE(s.t.shell.calls.isEmpty());
  ASSERT_TRUE(QFile::remove(s.t.path(kSiteFile)));
  s.form->HelpWeb->trigger();
  s.form->Help4New->trigger();
  ASSERT_EQ(s.t.shell.calls.size(), 2);
  EXPECT_EQ(s.t.shell.calls[0].target, u"https://mingjing.example.org"_qs);
  EXPECT_EQ(s.t.shell.calls[1].target, s.t.path(u"\\readme\\autonewer.htm"_qs));
  EXPECT_EQ(s.t.shell.calls[1].workDir, s.t.root());
}

TEST(MainWindow, F1ReachesTheHelpHandlerWithTheWindowNumber) {
  Started s;
  QList<int> asked;
  s.form->helpHandler = [&asked](int n) { asked.append(n); };
  s.form->show();
  QTest::keyClick(s.form.get(), Qt::Key_F1);
  QTest::keyClick(s.form->Text3, Qt::Key_F1);
  QWidget other;
  other.setObjectName(u"Form18"_qs);
  other.show();
  QTest::keyClick(&other, Qt::Key_F1);
  QWidget browser;
  browser.setObjectName(u"frmBrowser"_qs);
  browser.show();
  QTest::keyClick(&browser, Qt::Key_F1);
  EXPECT_EQ(asked, (QList<int>{1, 1, 18, 0}));
}

TEST(MainWindow, F1InTheSettingsWindowsAndTheirFields) {
  Started s;
  QList<int> asked;
  s.form->helpHandler = [&asked](int n) { asked.append(n); };
  Form4* form4 = s.form->settingsWindow();
  form4->openWindow();
  QTest::keyClick(form4, Qt::Key_F1);
  form4->numText(0)->setFocus();
  QTest::keyClick(form4->numText(0), Qt::Key_F1);
  QTest::keyClick(form4->form4Cmd(1), Qt::Key_F1);
  EXPECT_EQ(form4->numText(0)->text(), u"1"_qs);  // the key typed nothing
  form4->hide();
  Form2 form2;
  form2.show();
  QTest::keyClick(&form2, Qt::Key_F1);
  QTest::keyClick(form2.option(3), Qt::Key_F1);
  form2.hide();
  EXPECT_EQ(asked, (QList<int>{4, 4, 4, 2, 2}));
}

TEST(MainWindow, StartPageScreenshot) {
  const QString demo = test::DemoDataDir();
  std::unique_ptr<test::TestEnv> t = demo.isEmpty() ? std::make_unique<test::TestEnv>() : std::make_unique<test::TestEnv>(demo);
  if (demo.isEmpty()) test::MakeProgramFolder(*t);
  Form1 form(t->env);
  ASSERT_EQ(form.load(), Form1::LoadOutcome::Running);
  form.resize(1024, 720);
  form.show();
  QApplication::processEvents();
  const QImage shot = form.grab().toImage();
  EXPECT_FALSE(shot.isNull());
  EXPECT_TRUE(shot.save(test::OutputDir() + u"/start_page.png"_qs));
}

TEST(MainWindow, F1OpensTheHelpWindowOnTheWindowsSection) {
  Started s;
  s.t.writeGbk(u"\\ini\\lumenhelp.ini"_qs, u"[1]主窗口的说明\r\n[2]下一个"_qs);
  s.form->show();
  QTest::keyClick(s.form.get(), Qt::Key_F1);
  ASSERT_NE(s.form->helpWindow(), nullptr);
  EXPECT_TRUE(s.form->helpWindow()->isVisible());
  EXPECT_EQ(s.form->helpWindow()->currentNumber(), 1);
}

TEST(MainWindow, SettingsAreLoadedAtStartAndStyleTheQuestionBox) {
  Started s({}, false);
  s.t.writeGbk(u"\\ini\\userself.ini"_qs,
               u"STOKTIMES=3\r\nSTADDNUM=2\r\nSTPASSDAYS=5\r\nTSOKTIMES=1\r\nTSADDNUM=1\r\nTSPASSDAYS=30\r\nPUBFONTSIZE=21\r\n"
               u"PUBBACKCOLOR=16777215\r\nPUBFORECOLOR=255\r\nSTLASTUPDATE=1121\r\nTSLASTUPDATE=1121\r\n"
               u"PUBFONTNAME=宋体\r\nPUBFONTIT=FALSE\r\nPUBFONTBOLD=TRUE\r\n"_qs);
  s.form->load();
  ASSERT_NE(s.form->state().settings, nullptr);
  EXPECT_EQ(s.form->state().settings->number(0), 3);
  EXPECT_EQ(s.form->state().settings->number(2), 5);
  EXPECT_EQ(s.form->Text3->font().pointSize(), 21);
  EXPECT_TRUE(s.form->Text3->font().bold());
}

TEST(MainWindow, TheTemporaryFileOfACutOffSettingsSaveGoesAtTheStart) {
  Started s({}, false);
  s.t.writeGbk(u"\\ini\\userself.ini.Ab12Cd"_qs, u"STOKTIMES=3\r\nSTADD"_qs);
  s.t.writeGbk(u"\\ini\\userself.ini.bak"_qs, u"a copy of the user's own"_qs);
  s.form->load();
  EXPECT_FALSE(QFile::exists(s.t.path(u"\\ini\\userself.ini.Ab12Cd"_qs)));
  EXPECT_TRUE(QFile::exists(s.t.path(u"\\ini\\userself.ini.bak"_qs)));
  EXPECT_TRUE(QFile::exists(s.t.path(u"\\ini\\userself.ini"_qs)));
}

TEST(MainWindow, WithoutASettingsFileTheStartCreatesIt) {
  Started s;
  EXPECT_TRUE(FileExists(s.t.path(u"\\ini\\userself.ini"_qs)));
  EXPECT_EQ(s.form->state().settings->number(2), 30);
}

TEST(MainWindow, SettingsMenuOpensTheSettingsWindow) {
  Started s;
  s.form->show();
  s.form->MyConfigMenu->trigger();
  ASSERT_NE(s.form->settingsWindow(), nullptr);
  EXPECT_TRUE(s.form->settingsWindow()->isVisible());
  EXPECT_FALSE(s.form->isVisible());
  s.form->settingsWindow()->close();  // closing acts as 取消 and brings the main window back
  EXPECT_TRUE(s.form->isVisible());
}

TEST(MainWindow, StartReadsTheQuestionIndex) {
  Started s({}, false);
  {
    DbfTable items = DbfTable::open(s.t.path(u"\\dbf\\items.mmd"_qs), DbfTable::Mode::ReadWrite);
    for (int i = 1; i <= 3; ++i) {
      const int r = items.appendRow();
      items.setText(r, u"filename"_qs, u"100011"_qs);
      items.setText(r, u"story"_qs, u"no"_qs);
      items.setText(r, u"itemid"_qs, u"1000110000"_qs + QString::number(i));
      items.setLogical(r, u"valid2"_qs, true);
    }
  }
  s.form->load();
  const AppState& a = s.form->state();
  ASSERT_EQ(a.AllItemData.size(), 3);
  EXPECT_EQ(a.ItemData, a.AllItemData);
  EXPECT_EQ(a.AllItemData[2].itemid, u"10001100003"_qs);
  EXPECT_TRUE(a.HasIndex);
}
