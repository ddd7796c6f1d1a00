// mingjing-cli as a process: exit status, standard output in UTF-8 whatever
// the locale, one line on standard error, no widget library, and the
// program folder rules of an installed program.
#include <gtest/gtest.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "platform/program_folder.h"
#include "support/test_env.h"

namespace mj {
namespace {

struct Outcome {
  int status = -1;
  QByteArray out;
  QByteArray err;
};

Outcome RunProgram(const QString& program, const QStringList& args,
                   const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment()) {
  QProcess p;
  QProcessEnvironment e = environment;
  e.insert(u"ASAN_OPTIONS"_qs, u"detect_leaks=0"_qs);
  p.setProcessEnvironment(e);
  p.start(program, args);
  EXPECT_TRUE(p.waitForFinished(120000)) << program.toStdString();
  return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1, p.readAllStandardOutput(),
          p.readAllStandardError()};
}

const QString kCli = QStringLiteral(MJ_CLI_PATH);

const QByteArray kArticle3 =
    u"《示例刑法》\n　　第三条　只有法律明文规定为犯罪的行为，才能依照法律定罪处刑；法律没有明文规定为犯罪的行为，不得定罪处刑。\n\n"_qs
        .toUtf8();

TEST(CliProcess, OutputIsUtf8AndAFailureIsOneLineOnStandardError) {
  if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "demonstration data not built";
  const QString demo = test::DemoDataDir();
  for (const QString& locale : {u"C"_qs, u"C.UTF-8"_qs}) {
    QProcessEnvironment e = QProcessEnvironment::systemEnvironment();
    e.insert(u"LC_ALL"_qs, locale);
    Outcome o = RunProgram(kCli, {u"article"_qs, u"示例刑法"_qs, u"3"_qs, u"--folder"_qs, demo}, e);
    EXPECT_EQ(o.status, 0) << o.err.toStdString();
    EXPECT_EQ(o.out, kArticle3) << locale.toStdString();
    EXPECT_EQ(o.err, QByteArray());
    o = RunProgram(kCli, {u"article"_qs, u"民法"_qs, u"1"_qs, u"--folder"_qs, demo}, e);
    EXPECT_EQ(o.status, 1);
    EXPECT_EQ(o.out, QByteArray());
    EXPECT_EQ(o.err, (u"没有这部法律：《民法》（找不到法律文件 "_qs + demo + u"/lawtxt/民法.mmd）。\n"_qs).toUtf8());
  }
  const Outcome none = RunProgram(kCli, {});
  EXPECT_EQ(none.status, 1);
  EXPECT_EQ(none.err, u"缺少命令。用 mingjing-cli --help 查看用法。\n"_qs.toUtf8());
  const Outcome help = RunProgram(kCli, {u"--help"_qs});
  EXPECT_EQ(help.status, 0);
  EXPECT_TRUE(help.out.contains(u"用法：mingjing-cli 命令"_qs.toUtf8()));
}

TEST(CliProcess, TheProgramLinksNoWidgets) {
  const Outcome o = RunProgram(u"readelf"_qs, {u"-d"_qs, kCli});
  if (o.status != 0) GTEST_SKIP() << "readelf is not available";
  EXPECT_TRUE(o.out.contains("libQt6Core.so"));
  EXPECT_FALSE(o.out.contains("libQt6Widgets.so"));
  EXPECT_FALSE(o.out.contains("libQt6Gui.so"));
}

// An installed layout: mingjing-cli and the data package in a folder that
// carries the package's marker, a home of its own.
struct Installed {
  QTemporaryDir dir;
  QString bin() const { return dir.path() + u"/usr/lib/mingjing"_qs; }
  QString home() const { return dir.path() + u"/home"_qs; }
  Installed() {
    EXPECT_TRUE(QDir().mkpath(bin()));
    EXPECT_TRUE(QDir().mkpath(home()));
    EXPECT_TRUE(QFile::copy(kCli, bin() + u"/mingjing-cli"_qs));
    EXPECT_TRUE(QFile::copy(QStringLiteral(MJ_LMDATA_PATH), bin() + u"/lmdata"_qs));
    QFile marker(bin() + u"/"_qs + kPackagedMarker);
    EXPECT_TRUE(marker.open(QIODevice::WriteOnly));
  }
  QProcessEnvironment environment() const {
    QProcessEnvironment e = QProcessEnvironment::systemEnvironment();
    e.insert(u"HOME"_qs, home());
    e.remove(u"XDG_DATA_HOME"_qs);
    return e;
  }
  Outcome run(const QStringList& args, const QProcessEnvironment& e) const {
    return RunProgram(bin() + u"/mingjing-cli"_qs, args, e);
  }
};

TEST(CliProcess, AnInstalledProgramFillsThePerUserFolderOnceAndNeverTouchesItAgain) {
  Installed in;
  const QString folder = in.home() + u"/.local/share/mingjing"_qs;
  Outcome o = in.run({u"article"_qs, u"示例刑法"_qs, u"3"_qs}, in.environment());
  EXPECT_EQ(o.status, 0) << o.err.toStdString();
  EXPECT_EQ(o.out, kArticle3);
  EXPECT_TRUE(QFileInfo::exists(folder + u"/yibanti"_qs));
  EXPECT_TRUE(QFileInfo::exists(folder + u"/dbf/items.mmd"_qs));
  // The program's own folder got nothing.
  EXPECT_EQ(QDir(in.bin()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 3);
  // A folder with its data set is the user's: a file taken away stays away.
  ASSERT_TRUE(QFile::remove(folder + u"/lawtxt/合同示例规则.mmd"_qs));
  o = in.run({u"article"_qs, u"合同示例规则"_qs, u"1"_qs}, in.environment());
  EXPECT_EQ(o.status, 1);
  EXPECT_FALSE(QFileInfo::exists(folder + u"/lawtxt/合同示例规则.mmd"_qs));
  // XDG_DATA_HOME names the data home.
  QProcessEnvironment e = in.environment();
  e.insert(u"XDG_DATA_HOME"_qs, in.dir.path() + u"/xdg"_qs);
  o = in.run({u"article"_qs, u"合同示例规则"_qs, u"1"_qs}, e);
  EXPECT_EQ(o.status, 0) << o.err.toStdString();
  EXPECT_TRUE(QFileInfo::exists(in.dir.path() + u"/xdg/mingjing/lawtxt/合同示例规则.mmd"_qs));
  // --folder wins over the per-user folder.
  o = in.run({u"due"_qs, u"--folder"_qs, in.dir.path() + u"/nothing"_qs}, in.environment());
  EXPECT_EQ(o.status, 1);
  EXPECT_EQ(o.err, (u"程序文件夹 "_qs + in.dir.path() + u"/nothing 不存在。\n"_qs).toUtf8());
}

TEST(CliProcess, AnInstalledProgramWithoutItsDataPackageSaysSo) {
  Installed in;
  ASSERT_TRUE(QFile::remove(in.bin() + u"/lmdata"_qs));
  const Outcome o = in.run({u"due"_qs}, in.environment());
  EXPECT_EQ(o.status, 1);
  EXPECT_EQ(o.err, (u"数据包 "_qs + in.bin() + u"/lmdata 不存在，无法填充数据文件夹 "_qs + in.home() +
                    u"/.local/share/mingjing。\n"_qs)
                       .toUtf8());
}

}  // namespace
}  // namespace mj
