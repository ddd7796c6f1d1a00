// The data package program: run in an empty folder it unpacks the whole
// demonstration tree beside itself; run again over a folder in use it only
// adds what is missing and leaves every existing file as it is.

#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include "data_test_util.h"
#include "platform/paths.h"
#include "platform/textfile.h"
#include "support/test_env.h"

using namespace mj;
using namespace mj::datatest;

namespace {

const QString kLmdata = QStringLiteral(MJ_LMDATA_PATH);

// Copies the data package program into folder and runs it there, from
// another working folder, so that only the place of the program counts.
struct LmdataRun {
  int exitCode = -1;
  QString out, err;
};

// With --console, as the scripts run it; without, it shows its window
// (offscreen in the tests).
LmdataRun RunLmdata(const QString& folder, const QStringList& args = {u"--console"_qs}) {
  LmdataRun r;
  const QString program = folder + u"/lmdata"_qs;
  if (!QFile::exists(program)) {
    EXPECT_TRUE(QFile::copy(kLmdata, program));
    QFile(program).setPermissions(QFile(kLmdata).permissions());
  }
  QProcess p;
  p.setWorkingDirectory(QDir::tempPath());
  p.start(program, args);
  EXPECT_TRUE(p.waitForFinished(120000));
  r.exitCode = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
  r.out = QString::fromUtf8(p.readAllStandardOutput());
  r.err = QString::fromUtf8(p.readAllStandardError());
  return r;
}

QStringList TreeOf(const QString& root) {
  QStringList out;
  QDirIterator it(root, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDirIterator::Subdirectories);
  while (it.hasNext()) out.append(QDir(root).relativeFilePath(it.next()));
  out.sort();
  return out;
}

}  // namespace

TEST(Lmdata, UnpacksTheWholeTreeBesideItself) {
  ASSERT_FALSE(kLmdata.isEmpty());
  const QString demo = Demo();
  QTemporaryDir dir;
  const LmdataRun r = RunLmdata(dir.path());
  EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
  EXPECT_EQ(r.out.count(u'\n'), 1) << r.out.toStdString();
  EXPECT_TRUE(r.out.contains(u"明镜学习伴侣数据包已解压到"_qs)) << r.out.toStdString();
  QStringList unpacked = TreeOf(dir.path());
  unpacked.removeAll(u"lmdata"_qs);
  EXPECT_EQ(unpacked, TreeOf(demo));
  const QStringList files = TreeOf(demo);
  int fileCount = 0;
  for (const QString& rel : files) {
    const QFileInfo fi(demo + u'/' + rel);
    if (fi.isDir()) continue;
    ++fileCount;
    EXPECT_EQ(ReadBytes(dir.path() + u'/' + rel), ReadBytes(fi.filePath())) << rel.toStdString();
  }
  EXPECT_TRUE(r.out.contains(u"新写入 "_qs + QString::number(fileCount) + u" 个文件"_qs)) << r.out.toStdString();
  EXPECT_TRUE(r.out.contains(u"保留已有文件 0 个"_qs)) << r.out.toStdString();
}

TEST(Lmdata, RunAgainKeepsTheUsersFiles) {
  ASSERT_FALSE(kLmdata.isEmpty());
  QTemporaryDir dir;
  ASSERT_EQ(RunLmdata(dir.path()).exitCode, 0);
  const QString root = dir.path();
  // The user's records: a changed table; a missing icon and folder; a file
  // that came from Windows with its name in capitals.
  ASSERT_TRUE(WriteBytesAtomic(root + u"/dbf/items.mmd"_qs, QByteArray("changed by the user")));
  ASSERT_TRUE(QFile::remove(root + u"/ini/fa.ico"_qs));
  ASSERT_TRUE(QDir(root + u"/知识点"_qs).removeRecursively());
  ASSERT_TRUE(QFile::rename(root + u"/ini/newlumen.txt"_qs, root + u"/ini/NEWLUMEN.TXT"_qs));
  ASSERT_TRUE(WriteBytesAtomic(root + u"/ini/NEWLUMEN.TXT"_qs, QByteArray("[信息]\r\n")));
  const LmdataRun r = RunLmdata(root);
  EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
  EXPECT_TRUE(r.out.contains(u"新写入 4 个文件，新建 1 个文件夹"_qs)) << r.out.toStdString();
  EXPECT_EQ(ReadBytes(root + u"/dbf/items.mmd"_qs), QByteArray("changed by the user"));
  EXPECT_EQ(ReadBytes(root + u"/ini/fa.ico"_qs), ReadBytes(Demo() + u"/ini/fa.ico"_qs));
  EXPECT_TRUE(QDir(root + u"/知识点"_qs).exists());
  EXPECT_FALSE(QFile::exists(root + u"/ini/newlumen.txt"_qs));
  EXPECT_EQ(ReadBytes(root + u"/ini/NEWLUMEN.TXT"_qs), QByteArray("[信息]\r\n"));
}

// Started by the program in an empty folder: the window with its progress,
// then the program beside it is started again.
TEST(Lmdata, InItsWindowItStartsTheProgramAgainWhenTheDataIsReady) {
  ASSERT_FALSE(kLmdata.isEmpty());
  QTemporaryDir dir;
  const QString marker = dir.filePath(u"started.txt"_qs);
  // A stand-in for the program: it notes where it was started.
  QFile program(dir.filePath(u"mingjing"_qs));
  ASSERT_TRUE(program.open(QIODevice::WriteOnly));
  program.write(u"#!/bin/sh\npwd > '%1'\n"_qs.arg(marker).toUtf8());
  program.close();
  program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  const LmdataRun r = RunLmdata(dir.path(), {});
  EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
  EXPECT_TRUE(r.out.contains(u"明镜学习伴侣数据包已解压到"_qs)) << r.out.toStdString();
  EXPECT_TRUE(QDir(dir.filePath(u"yibanti"_qs)).exists());
  // The program was started in its folder.
  for (int i = 0; i < 100 && !QFile::exists(marker); ++i) QThread::msleep(50);
  EXPECT_EQ(ReadBytes(marker).trimmed(), QFileInfo(dir.path()).canonicalFilePath().toUtf8());
}
