#include "platform/program_folder.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "support/printers.h"

namespace mj {
namespace {

QProcessEnvironment Environment(const QString& home, const QString& xdg = QString()) {
  QProcessEnvironment e;
  if (!home.isEmpty()) e.insert(u"HOME"_qs, home);
  if (!xdg.isEmpty()) e.insert(u"XDG_DATA_HOME"_qs, xdg);
  return e;
}

TEST(ProgramFolder, ThePerUserFolderFollowsXdg) {
  EXPECT_EQ(PerUserFolder(Environment(u"/home/a"_qs)), u"/home/a/.local/share/mingjing"_qs);
  EXPECT_EQ(PerUserFolder(Environment(u"/home/a"_qs, u"/data/x/"_qs)), u"/data/x/mingjing"_qs);
  // A relative XDG_DATA_HOME is not valid and is passed over.
  EXPECT_EQ(PerUserFolder(Environment(u"/home/a"_qs, u"rel"_qs)), u"/home/a/.local/share/mingjing"_qs);
  EXPECT_EQ(PerUserFolder(Environment(QString())), QString());
}

TEST(ProgramFolder, TheExecutablesFolderUnlessInstalled) {
  QTemporaryDir exe;
  ProgramFolderChoice c = ChooseProgramFolder(exe.path(), QString(), Environment(u"/home/a"_qs));
  EXPECT_EQ(c.folder, exe.path());
  EXPECT_FALSE(c.perUser);
  EXPECT_EQ(c.problem, QString());
  QFile marker(exe.path() + u"/mingjing.packaged"_qs);
  ASSERT_TRUE(marker.open(QIODevice::WriteOnly));
  marker.close();
  c = ChooseProgramFolder(exe.path(), QString(), Environment(u"/home/a"_qs));
  EXPECT_EQ(c.folder, u"/home/a/.local/share/mingjing"_qs);
  EXPECT_TRUE(c.perUser);
  c = ChooseProgramFolder(exe.path(), QString(), Environment(QString()));
  EXPECT_EQ(c.folder, QString());
  EXPECT_EQ(c.problem, u"找不到用户的数据文件夹：环境变量 HOME 和 XDG_DATA_HOME 都没有设置。"_qs);
}

TEST(ProgramFolder, AFolderTheUserCannotWriteIsAnInstalledOne) {
  if (::geteuid() == 0) GTEST_SKIP() << "root may write into any folder";
  QTemporaryDir exe;
  ASSERT_TRUE(QFile::setPermissions(exe.path(), QFile::ReadOwner | QFile::ExeOwner));
  EXPECT_TRUE(IsInstalledFolder(exe.path()));
  QFile::setPermissions(exe.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  EXPECT_FALSE(IsInstalledFolder(exe.path()));
}

TEST(ProgramFolder, TheFolderOptionWinsAndMustExist) {
  QTemporaryDir exe, data;
  ProgramFolderChoice c = ChooseProgramFolder(exe.path(), data.path(), Environment(u"/home/a"_qs));
  EXPECT_EQ(c.folder, data.path());
  EXPECT_FALSE(c.perUser);
  c = ChooseProgramFolder(exe.path(), data.path() + u"/none"_qs, Environment(u"/home/a"_qs));
  EXPECT_EQ(c.folder, QString());
  EXPECT_EQ(c.problem, u"程序文件夹 "_qs + data.path() + u"/none 不存在。"_qs);
  QFile f(data.path() + u"/file"_qs);
  ASSERT_TRUE(f.open(QIODevice::WriteOnly));
  f.close();
  c = ChooseProgramFolder(exe.path(), f.fileName(), Environment(u"/home/a"_qs));
  EXPECT_EQ(c.problem, f.fileName() + u" 不是文件夹。"_qs);
}

TEST(ProgramFolder, TheFolderOptionIsTakenOutOfTheArguments) {
  QStringList args = {u"p"_qs, u"article"_qs, u"--folder"_qs, u"/d"_qs, u"刑法"_qs, u"1"_qs};
  bool present = false, missing = true;
  EXPECT_EQ(TakeFolderOption(args, &present, &missing), u"/d"_qs);
  EXPECT_TRUE(present);
  EXPECT_FALSE(missing);
  EXPECT_EQ(args, (QStringList{u"p"_qs, u"article"_qs, u"刑法"_qs, u"1"_qs}));
  args = {u"p"_qs, u"--folder=/e"_qs, u"due"_qs};
  EXPECT_EQ(TakeFolderOption(args, &present, &missing), u"/e"_qs);
  EXPECT_EQ(args, (QStringList{u"p"_qs, u"due"_qs}));
  args = {u"p"_qs, u"due"_qs, u"--folder"_qs};
  EXPECT_EQ(TakeFolderOption(args, &present, &missing), QString());
  EXPECT_TRUE(present);
  EXPECT_TRUE(missing);
  // Behind "--" it is an operand.
  args = {u"p"_qs, u"search"_qs, u"--"_qs, u"--folder"_qs};
  EXPECT_EQ(TakeFolderOption(args, &present, &missing), QString());
  EXPECT_FALSE(present);
  EXPECT_EQ(args.size(), 4);
  args = {u"p"_qs, u"due"_qs};
  TakeFolderOption(args, &present, &missing);
  EXPECT_FALSE(present);
}

TEST(ProgramFolder, AFolderWithItsDataSetIsNotFilled) {
  QTemporaryDir exe, data;
  ASSERT_TRUE(QDir(data.path()).mkdir(u"yibanti"_qs));
  QString problem;
  // No data package beside the executable, yet nothing is needed.
  EXPECT_TRUE(FillFromDataPackage(exe.path(), data.path(), &problem));
  EXPECT_EQ(problem, QString());
  EXPECT_EQ(QDir(data.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList{u"yibanti"_qs});
}

}  // namespace
}  // namespace mj
