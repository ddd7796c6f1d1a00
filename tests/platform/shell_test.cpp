// Opening addresses and files with the desktop, and telling the user when
// nothing could open them.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include "platform/shell.h"
#include "platform/text_toolkit.h"
#include "support/printers.h"
#include "support/test_env.h"

using namespace mj;

namespace {

// An opener that writes its argument into a file and ends with `exitCode`,
// after `sleepSeconds`.
QString writeOpener(const QTemporaryDir& dir, int exitCode, int sleepSeconds = 0) {
  const QString path = dir.filePath(QStringLiteral("opener-%1.sh").arg(exitCode));
  QFile f(path);
  f.open(QIODevice::WriteOnly);
  f.write(QStringLiteral("#!/bin/sh\nprintf '%s' \"$1\" > '%1'\nsleep %2\nexit %3\n")
              .arg(dir.filePath(QStringLiteral("opened.txt")))
              .arg(sleepSeconds)
              .arg(exitCode)
              .toUtf8());
  f.close();
  f.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  return path;
}

QString opened(const QTemporaryDir& dir) {
  QFile f(dir.filePath(QStringLiteral("opened.txt")));
  return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
}

}  // namespace

TEST(DesktopShell, AnOpenerThatSucceedsOpens) {
  QTemporaryDir dir;
  DesktopShell shell(writeOpener(dir, 0));
  EXPECT_TRUE(shell.open(u"https://mingjing.example.org/"_qs, dir.path()));
  EXPECT_EQ(opened(dir), u"https://mingjing.example.org/"_qs);
}

TEST(DesktopShell, AnOpenerWithoutAProgramForTheAddressFails) {
  QTemporaryDir dir;
  DesktopShell shell(writeOpener(dir, 3));
  EXPECT_FALSE(shell.open(u"http://x/bbs?boardid=2&id=7"_qs, dir.path()));
  EXPECT_EQ(opened(dir), u"http://x/bbs?boardid=2&id=7"_qs);
}

TEST(DesktopShell, AMissingOpenerOrFileFails) {
  QTemporaryDir dir;
  EXPECT_FALSE(DesktopShell(dir.filePath(u"no-such-opener"_qs)).open(u"https://x/"_qs, dir.path()));
  DesktopShell shell(writeOpener(dir, 0));
  EXPECT_FALSE(shell.open(dir.filePath(u"readme/autonewer.htm"_qs), dir.path()));
  EXPECT_EQ(opened(dir), QString());  // the opener was not even started
}

TEST(DesktopShell, AnOpenerThatWaitsForItsProgramCountsAsOpened) {
  QTemporaryDir dir;
  DesktopShell shell(writeOpener(dir, 4, 30), 300);
  QElapsedTimer t;
  t.start();
  EXPECT_TRUE(shell.open(u"https://x/"_qs, dir.path()));
  EXPECT_LT(t.elapsed(), 5000);
}

TEST(ShellOpen, AnAddressNothingOpensIsShownAndCopied) {
  test::TestEnv t;
  t.shell.result = false;
  EXPECT_FALSE(ShellOpen(t.env, u"http://x/bbs?boardid=2&id=7"_qs));
  ASSERT_EQ(t.boxes.shown().size(), 1);
  EXPECT_EQ(t.boxes.shown()[0].text,
            u"无法打开网址：\r\nhttp://x/bbs?boardid=2&id=7\r\n\r\n本机没有能打开网址的程序。网址已复制到剪贴板，可以粘贴到浏览器的地址栏里打开。"_qs);
  EXPECT_EQ(t.boxes.shown()[0].title, u"明镜学伴3.10提示"_qs);
  EXPECT_EQ(t.boxes.shown()[0].style, box::Exclamation);
  EXPECT_EQ(t.clipboard.text(), u"http://x/bbs?boardid=2&id=7"_qs);
}

TEST(ShellOpen, AFileNothingOpensIsNamed) {
  test::TestEnv t;
  t.shell.result = false;
  const QString file = t.path(u"\\readme\\autonewer.htm"_qs);
  EXPECT_FALSE(ShellOpen(t.env, file));
  ASSERT_EQ(t.boxes.shown().size(), 1);
  EXPECT_EQ(t.boxes.shown()[0].text, u"无法打开文件：\r\n"_qs + file +
                                         u"\r\n\r\n文件不存在，或本机没有能打开这类文件的程序。文件路径已复制到剪贴板。"_qs);
  EXPECT_EQ(t.clipboard.text(), file);
}

TEST(ShellOpen, WhatOpensSaysNothing) {
  test::TestEnv t;
  EXPECT_TRUE(ShellOpen(t.env, u"https://x/"_qs));
  EXPECT_TRUE(t.boxes.shown().isEmpty());
  EXPECT_EQ(t.clipboard.text(), QString());
  ASSERT_EQ(t.shell.calls.size(), 1);
  EXPECT_EQ(t.shell.calls[0].workDir, t.root());
}

TEST(ShellOpen, WithoutAClipboardTheBoxStillNamesTheAddress) {
  test::TestEnv t;
  t.shell.result = false;
  t.env.clipboard = nullptr;
  ShellOpen(t.env, u"https://x/"_qs);
  ASSERT_EQ(t.boxes.shown().size(), 1);
  EXPECT_EQ(t.boxes.shown()[0].text, u"无法打开网址：\r\nhttps://x/\r\n\r\n本机没有能打开网址的程序。"_qs);
}
