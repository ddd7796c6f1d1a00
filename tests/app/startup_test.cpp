#include <gtest/gtest.h>

#include "app/format_documents.h"
#include "app/startup.h"
#include "log/news.h"
#include "platform/textfile.h"
#include "platform/text_toolkit.h"
#include "support/program_folder.h"

using namespace mj;

namespace {
AppState makeApp(test::TestEnv& t) {
  AppState a;
  a.env = t.env;
  return a;
}
}  // namespace

TEST(Startup, DataSetIsTheFolderYibanti) {
  test::TestEnv t;
  EXPECT_FALSE(DataSetPresent(t.env));
  t.writeGbk(u"\\yibanti"_qs, u"a file is no folder"_qs);
  EXPECT_FALSE(DataSetPresent(t.env));
  QFile::remove(t.path(u"\\yibanti"_qs));
  t.mkdir(u"\\YIBANTI"_qs);  // a folder from Windows in capitals
  EXPECT_TRUE(DataSetPresent(t.env));
}

TEST(Startup, IconPrefersTheProgramFolder) {
  test::TestEnv t;
  EXPECT_EQ(IconFile(t.env), u""_qs);
  test::WriteIcon(t.path(u"\\ini\\fa.ico"_qs));
  EXPECT_EQ(IconFile(t.env), t.path(u"\\ini\\fa.ico"_qs));
  test::WriteIcon(t.path(u"\\fa.ico"_qs));
  EXPECT_EQ(IconFile(t.env), t.path(u"\\fa.ico"_qs));
}

TEST(Startup, TypeTitles) {
  EXPECT_EQ(MakeTypeTitle(), (QStringList{u""_qs, u"一、单项选择题"_qs, u"二、多项选择题"_qs, u"三、任意选择题"_qs}));
}

TEST(CloseRequest, BeforeTheStartIsCompleteItEndsWithoutAQuestion) {
  test::TestEnv t;
  AppState a = makeApp(t);
  EXPECT_EQ(CloseRequest(a), CloseDecision::Close);
  EXPECT_TRUE(t.boxes.shown().isEmpty());
}

TEST(CloseRequest, AfterTheStartItAsks) {
  test::TestEnv t;
  AppState a = makeApp(t);
  a.StartedOk = true;
  a.HasIndex = true;
  a.AllItemData = ItemIndex(3);
  a.ItemData = ItemIndex(3);
  t.boxes.answer(box::No);
  EXPECT_EQ(CloseRequest(a), CloseDecision::Cancel);
  ASSERT_EQ(t.boxes.shown().size(), 1);
  EXPECT_EQ(t.boxes.shown()[0].title, u"请你确认"_qs);
  EXPECT_EQ(t.boxes.shown()[0].text, u"真的不玩儿啦？\r\n\r\n     :-)"_qs);
  EXPECT_EQ(box::buttonsOf(t.boxes.shown()[0].style), box::YesNo);
  EXPECT_EQ(a.AllItemData.size(), 3);  // nothing released on No
  t.boxes.answer(box::Yes);
  EXPECT_EQ(CloseRequest(a), CloseDecision::Close);
  EXPECT_TRUE(a.AllItemData.isEmpty());
  EXPECT_TRUE(a.ItemData.isEmpty());
}

TEST(CloseRequest, InsideAnUpdateItemTheRequestIsIgnored) {
  test::TestEnv t;
  AppState a = makeApp(t);
  a.StartedOk = true;
  a.RunState = runstate::kInItem;
  EXPECT_EQ(CloseRequest(a), CloseDecision::Ignore);
  EXPECT_TRUE(t.boxes.shown().isEmpty());
}

TEST(CloseRequest, DuringAnUpdateItAsksFirstAboutTheUpdate) {
  test::TestEnv t;
  AppState a = makeApp(t);
  a.StartedOk = true;
  a.RunState = runstate::kUpdating;
  a.UpdatedIds = u"10001100002"_qs u"10001100001"_qs;
  t.clock.setDate(QDate(2026, 11, 21));
  t.writeGbk(u"\\更新的题\\20261121.ini"_qs, u"\"30001200007\"\r\n"_qs);
  t.boxes.answer(box::No);
  EXPECT_EQ(CloseRequest(a), CloseDecision::Cancel);
  EXPECT_EQ(t.readGbk(u"\\更新的题\\20261121.ini"_qs), u"\"30001200007\"\r\n"_qs);  // No keeps nothing
  ASSERT_EQ(t.boxes.shown().size(), 1);
  EXPECT_EQ(t.boxes.shown()[0].title, u"请你确定"_qs);
  EXPECT_EQ(t.boxes.shown()[0].text, u"正在进行更新任务，确定中止吗？"_qs);
  t.boxes.clear();
  t.boxes.answer(box::Yes);
  t.boxes.answer(box::Yes);
  EXPECT_EQ(CloseRequest(a), CloseDecision::Close);
  ASSERT_EQ(t.boxes.shown().size(), 2);
  EXPECT_EQ(t.boxes.shown()[1].title, u"请你确认"_qs);
  // The updated list so far stands in front of what today's file held.
  EXPECT_EQ(t.readGbk(u"\\更新的题\\20261121.ini"_qs), u"\"100011000021000110000130001200007\"\r\n"_qs);
}

TEST(CloseRequest, BreakingOffAnUpdateMakesTheFolderOfUpdatedQuestions) {
  test::TestEnv t;
  AppState a = makeApp(t);
  a.RunState = runstate::kUpdating;
  a.UpdatedIds = u"10001100002"_qs;
  t.clock.setDate(QDate(2003, 6, 15));
  t.boxes.answer(box::Yes);
  EXPECT_EQ(CloseRequest(a), CloseDecision::Close);  // not started: no second question
  EXPECT_EQ(t.boxes.shown().size(), 1);
  EXPECT_EQ(t.readGbk(u"\\更新的题\\20030615.ini"_qs), u"\"10001100002\"\r\n"_qs);
}

TEST(Countdown, FiveCasesAndNoCountdown) {
  const QDate today(2026, 11, 21);
  const qint64 d = DayNumber(today);
  EXPECT_EQ(DayNumber(QDate(2003, 1, 1)), 0);
  EXPECT_EQ(DayNumber(QDate(2003, 1, 2)), 1);
  EXPECT_EQ(ExamCountdownText(d, today), u"今天开始司法统考，祝你成功！"_qs);
  EXPECT_EQ(ExamCountdownText(d + 1, today), u"明天开始司法统考，祝你成功！"_qs);
  EXPECT_EQ(ExamCountdownText(d + 2, today), u"后天开始司法统考，祝你成功！"_qs);
  EXPECT_EQ(ExamCountdownText(d + 3, today), u"距今年司法统考还有3天"_qs);
  EXPECT_EQ(ExamCountdownText(d - 1, today), u"今年司法统考已过了1天，出去玩玩吧"_qs);

  test::TestEnv t;
  t.clock.setDate(today);
  EXPECT_EQ(GetExamCountdown(t.env), u""_qs);  // no news file
  t.writeGbk(u"\\ini\\newlumen.txt"_qs, u"[信息]\r\n考试时间=0\r\n"_qs);
  EXPECT_EQ(GetExamCountdown(t.env), u""_qs);
  t.writeGbk(u"\\ini\\newlumen.txt"_qs, u"[信息]\r\n考试时间=abc\r\n"_qs);
  EXPECT_EQ(GetExamCountdown(t.env), u""_qs);
  t.writeGbk(u"\\ini\\newlumen.txt"_qs, u"[信息]\r\n考试时间="_qs + QString::number(d + 300) + u"\r\n"_qs);
  EXPECT_EQ(GetExamCountdown(t.env), u"距今年司法统考还有300天"_qs);
  t.clock.setDate(today.addDays(301));
  EXPECT_EQ(GetExamCountdown(t.env), u"今年司法统考已过了1天，出去玩玩吧"_qs);
}

TEST(News, LinksAndNotices) {
  test::TestEnv t;
  t.writeGbk(u"\\ini\\newlumen.txt"_qs,
             u"[信息]\r\n法条详解=http://a/law\r\n做下一题=http://a/next\r\n保留链接1=&x=1\r\n保留链接2=&y=2\r\n"
             u"[通知1]\r\n显示内容=第一行●第二^行\r\n鼠标提示=提示\r\n链接=http://a/1\r\n原色=255\r\n鼠标色=65280\r\n"
             u"[通知2]\r\n显示内容=二\r\n"
             u"[通知7]\r\n鼠标提示=没有内容\r\n链接=http://a/7\r\n"_qs);
  const NewsLinks l = ReadNewsLinks(t.env);
  EXPECT_EQ(l.link1, u"http://a/law"_qs);
  EXPECT_EQ(l.link2, u"http://a/next"_qs);
  EXPECT_EQ(l.link3, u"&x=1"_qs);
  EXPECT_EQ(l.link4, u"&y=2"_qs);
  const QList<Notice> n = ReadNotices(t.path(kNewsFile));
  ASSERT_EQ(n.size(), 25);
  EXPECT_EQ(n[0].caption, u"第一行\r\n第二 行"_qs);
  EXPECT_EQ(n[0].toolTip, u"提示"_qs);
  EXPECT_EQ(n[0].link, u"http://a/1"_qs);
  EXPECT_EQ(n[0].color, 255);
  EXPECT_EQ(n[0].hoverColor, 65280);
  EXPECT_TRUE(n[1].visible());
  // A section with no 显示内容 hides its label while the others stay.
  EXPECT_FALSE(n[6].visible());
  EXPECT_EQ(n[6].link, u"http://a/7"_qs);
  EXPECT_FALSE(n[24].visible());
}

TEST(FormatDocuments, UnpackEntryWhenFoldersAreMissing) {
  test::TestEnv t;
  test::MakeProgramFolder(t, {.readme = false, .dataPackage = true});
  AppState a = makeApp(t);
  TxtFormat(a);
  ASSERT_EQ(t.boxes.shown().size(), 1);
  EXPECT_EQ(t.boxes.shown()[0].title, u"解压数据包"_qs);
  EXPECT_EQ(t.boxes.shown()[0].text, u"本次点击为第一次使用解压数据包 \r\n现在已经可以使用助手了。"_qs);
  ASSERT_EQ(t.shell.calls.size(), 1);
  EXPECT_EQ(t.shell.calls[0].kind, ShellCall::Start);
  EXPECT_EQ(t.shell.calls[0].target, t.path(u"\\lmdata"_qs));
  EXPECT_EQ(t.shell.calls[0].mode, WindowMode::Normal);
}

TEST(FormatDocuments, UnpackEntryWithoutPackageOnlyTellsAndWithFoldersDoesNothing) {
  test::TestEnv t;
  test::MakeProgramFolder(t, {.formatDocs = false});
  AppState a = makeApp(t);
  TxtFormat(a);
  EXPECT_EQ(t.boxes.shown().size(), 1);
  EXPECT_TRUE(t.shell.calls.isEmpty());
  t.mkdir(u"\\法律文书"_qs);
  t.boxes.clear();
  t.writeGbk(u"\\ini\\wenshu.ini"_qs, u"\"/usr/bin/true\"\r\n"_qs);
  TxtFormat(a);
  EXPECT_TRUE(t.boxes.shown().isEmpty());
  EXPECT_EQ(a.WenShuProgram, u"/usr/bin/true"_qs);
}

TEST(FormatDocuments, OpenWithAMissingProgramTellsTheUser) {
  test::TestEnv t;
  test::MakeProgramFolder(t);
  AppState a = makeApp(t);
  t.writeGbk(u"\\ini\\WenShu.ini"_qs, u"\"C:\\Program Files\\wps.exe\"\r\n"_qs);
  OpenFormatFile(a);
  ASSERT_EQ(t.boxes.shown().size(), 1);
  EXPECT_EQ(t.boxes.shown()[0].text,
            u"  你设置的打开格式文件的程序为C:\\Program Files\\wps.exe但现在它不存在或有错误，请重新设置。"_qs);
  EXPECT_TRUE(t.dialogs.fileRequests.isEmpty());
}

// A fresh installation has chosen no program: the desktop's own program for
// the document's type opens it, and no box names an empty path.
TEST(FormatDocuments, WithoutAChosenProgramTheDesktopOpensTheFile) {
  test::TestEnv t;
  test::MakeProgramFolder(t);
  AppState a = makeApp(t);
  ASSERT_FALSE(QFile::exists(t.path(u"\\ini\\WenShu.ini"_qs)));
  const QString doc = t.path(u"\\法律文书\\起诉状.txt"_qs);
  t.dialogs.answer(doc);
  OpenFormatFile(a);
  EXPECT_TRUE(t.boxes.shown().isEmpty());
  ASSERT_EQ(t.dialogs.fileRequests.size(), 1);
  EXPECT_EQ(t.dialogs.fileRequests[0].title, u"打开格式文书文件"_qs);
  ASSERT_EQ(t.shell.calls.size(), 1);
  EXPECT_EQ(t.shell.calls[0].kind, ShellCall::Open);
  EXPECT_EQ(t.shell.calls[0].target, doc);
  // A desktop without a program for it says so, naming the file.
  t.shell.result = false;
  t.dialogs.answer(doc);
  OpenFormatFile(a);
  ASSERT_EQ(t.boxes.shown().size(), 1);
  EXPECT_EQ(t.boxes.shown()[0].text, CannotOpenText(doc, true));
}

TEST(FormatDocuments, AProgramThatCannotBeStartedIsSaid) {
  test::TestEnv t;
  test::MakeProgramFolder(t);
  AppState a = makeApp(t);
  t.writeGbk(u"\\ini\\WenShu.ini"_qs, u"\"/bin/sh\"\r\n"_qs);
  t.shell.result = false;
  t.dialogs.answer(t.path(u"\\法律文书\\起诉状.txt"_qs));
  OpenFormatFile(a);
  ASSERT_EQ(t.boxes.shown().size(), 1);
  EXPECT_EQ(t.boxes.shown()[0].text, u"无法启动程序：\r\n/bin/sh"_qs);
}

TEST(FormatDocuments, OpenStartsTheProgramWithTheChosenFile) {
  test::TestEnv t;
  test::MakeProgramFolder(t);
  AppState a = makeApp(t);
  t.writeGbk(u"\\ini\\WenShu.ini"_qs, u"\"/bin/sh\"\r\n"_qs);
  const QString doc = t.path(u"\\法律文书\\起诉状.txt"_qs);
  t.dialogs.answer(doc);
  OpenFormatFile(a);
  EXPECT_TRUE(t.boxes.shown().isEmpty());
  ASSERT_EQ(t.dialogs.fileRequests.size(), 1);
  const FileDialogRequest& r = t.dialogs.fileRequests[0];
  EXPECT_EQ(r.title, u"打开格式文书文件"_qs);
  EXPECT_EQ(r.initialDir, t.path(u"\\法律文书"_qs));
  EXPECT_EQ(r.filter,
            u"常用格式.wps.doc.txt|*.wps;*.doc;*.txt|Htm网页文件(*.htm)|*.htm|Html网页文件(*.html)|*.html|所有文件(*.*)|*.*"_qs);
  ASSERT_EQ(t.shell.calls.size(), 1);
  EXPECT_EQ(t.shell.calls[0].target, u"/bin/sh"_qs);
  EXPECT_EQ(t.shell.calls[0].args, QStringList{doc});
  EXPECT_EQ(t.shell.calls[0].mode, WindowMode::Maximized);
  // Cancel in the dialog starts nothing.
  OpenFormatFile(a);
  EXPECT_EQ(t.shell.calls.size(), 1);
}

TEST(FormatDocuments, RegisterAProgram) {
  test::TestEnv t;
  test::MakeProgramFolder(t);
  AppState a = makeApp(t);
  t.dialogs.answer(t.path(u"\\ini\\readme.txt"_qs));
  CfgOpenPro(a);
  ASSERT_EQ(t.dialogs.fileRequests.size(), 1);
  EXPECT_EQ(t.dialogs.fileRequests[0].title, u"请您自己手工找到要使用的程序，如WPS或WORD或写字板"_qs);
  EXPECT_EQ(t.dialogs.fileRequests[0].initialDir, t.path(u"\\ini"_qs));
  EXPECT_EQ(t.dialogs.fileRequests[0].filter, u"可执行文件1(*.exe)|*.exe|可执行文件2 (*.com)|*.com|所有文件(*.*)|*.*"_qs);
  ASSERT_EQ(t.boxes.shown().size(), 1);
  EXPECT_EQ(t.boxes.shown()[0].text, u"你选的不是一个可执行文件，没有进行注册本文件名。"_qs);
  EXPECT_FALSE(QFile::exists(t.path(u"\\ini\\WenShu.ini"_qs)));

  t.boxes.clear();
  t.dialogs.answer(u"D:\\WPS\\wps.EXE"_qs);
  CfgOpenPro(a);
  EXPECT_EQ(ReadBytes(t.path(u"\\ini\\WenShu.ini"_qs)), QByteArray("\"D:\\WPS\\wps.EXE\"\r\n"));
  ASSERT_EQ(t.boxes.shown().size(), 1);
  EXPECT_EQ(t.boxes.shown()[0].text, u"注册成功，以后的格式文书就用D:\\WPS\\wps.EXE来打开了。"_qs);
  EXPECT_EQ(ReadWenShuProgram(t.env), u"D:\\WPS\\wps.EXE"_qs);

  // On this platform an executable without extension is a program too.
  t.boxes.clear();
  t.dialogs.answer(u"/bin/sh"_qs);
  CfgOpenPro(a);
  EXPECT_EQ(ReadWenShuProgram(t.env), u"/bin/sh"_qs);

  // With wordpad.exe in \ini the user hears of the default first.
  t.boxes.clear();
  t.writeGbk(u"\\ini\\wordpad.exe"_qs, u"x"_qs);
  CfgOpenPro(a);  // the dialog is cancelled: nothing stored
  ASSERT_EQ(t.boxes.shown().size(), 1);
  EXPECT_EQ(t.boxes.shown()[0].text, u"默认用wordpad.exe打开格式文件，你也可以自定义用其它应用程序。"_qs);
  EXPECT_EQ(ReadWenShuProgram(t.env), u"/bin/sh"_qs);
}
