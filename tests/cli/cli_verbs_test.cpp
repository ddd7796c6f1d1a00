// The commands that convert a paper, take an update package, add a law,
// search the questions and list the wrong book: exact output on the
// demonstration data and on a generated folder, and for each bad input
// status 1, its one-line message and a folder left byte for byte as it was.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "cli/add_law_command.h"
#include "cli/cli.h"
#include "cli_fixture.h"
#include "generator.h"
#include "law/law_files.h"
#include "law/new_law.h"
#include "log/wrong_book.h"
#include "papers/paper_file.h"
#include "platform/dbftable.h"
#include "platform/textfile.h"
#include "support/directory_tables.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

using test::RunCliOn;
using test::TreeFingerprint;

// A copy of the demonstration folder, and a place outside it for the files
// the commands read.
class Verbs : public test::CliDemoTest {
 protected:
  // A failure that leaves the folder byte for byte as it was.
  void expectRefused(const QStringList& args, const QString& message) {
    expectFailure(args, message);
    expectUnchanged();
  }
  // A file outside the program folder (the folder stays comparable).
  QString outside(const QString& name, const QByteArray& bytes) {
    const QString path = files.path() + u"/"_qs + name;
    QFile f(path);
    EXPECT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
    return path;
  }

  QTemporaryDir files;
};

// A generated folder of 200 questions in 6 banks, 3 laws, 1 simulated paper.
class GeneratedVerbs : public ::testing::Test {
 protected:
  void SetUp() override {
    gen::Sizes s;
    s.questions = 200;
    s.banks = 6;
    s.papers = 1;
    sizes = s;
    QString error;
    ASSERT_TRUE(gen::Generate(te.root(), s, &error)) << error.toStdString();
    ClearLawCache();
    before = TreeFingerprint(te.root());
  }
  cli::CliResult run(const QStringList& args) { return RunCliOn(te.root(), args); }
  test::TestEnv te;
  gen::Sizes sizes;
  QMap<QString, QString> before;
  QTemporaryDir files;
};

// ---- convert-paper ------------------------------------------------------------

const QString kLoosePaper =
    u"1、下列……\r\nA、甲\r\nB、乙\r\nC、丙\r\nD、丁\r\n答案：A，参见《刑诉》第十二条\r\n"_qs;
const QString kConverted = u"1．下列……\nA．甲\nB．乙\nC．丙\nD．丁\n[答案：]A．参\n[参见：]《刑事诉讼法》第12条\n"_qs;

TEST_F(Verbs, ConvertPaperPrintsTheConversionAndLeavesTheFile) {
  // In the folder of papers, in UTF-8 and in GBK: the same conversion.
  const QString utf8 = te->path(u"\\外部题库\\散卷.txt"_qs);
  ASSERT_TRUE(WritePaper(utf8, kLoosePaper, PaperEncoding::Utf8));
  const QString gbk = te->path(u"\\外部题库\\散卷（GBK）.txt"_qs);
  ASSERT_TRUE(WritePaper(gbk, kLoosePaper, PaperEncoding::Gbk));
  before = TreeFingerprint(te->root());
  cli::CliResult r = run({u"convert-paper"_qs, utf8});
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.err, QString());
  EXPECT_EQ(r.out, kConverted);
  r = run({u"convert-paper"_qs, gbk});
  EXPECT_EQ(r.out, kConverted);
  // LF line ends in the file make no difference.
  r = run({u"convert-paper"_qs, outside(u"lf.txt"_qs, QString(kLoosePaper).replace(u"\r\n"_qs, u"\n"_qs).toUtf8())});
  EXPECT_EQ(r.out, kConverted);
  expectUnchanged();
}

TEST_F(Verbs, ConvertPaperOfTheDemonstrationSamples) {
  // A paper already in the layout keeps its questions; the conversion drops
  // the lines before the first heading and the blanks inside the brackets.
  const QString sample = te->path(u"\\外部题库\\外部题库试样1.txt"_qs);
  const cli::CliResult r = run({u"convert-paper"_qs, sample});
  ASSERT_EQ(r.status, 0) << r.err.toStdString();
  EXPECT_TRUE(r.out.startsWith(u"一、单项选择题\n1．根据《示例刑法》，下列关于刑事责任年龄的说法，正确的是()\n"
                               u"A．已满十六周岁的人犯罪，应当负刑事责任\n"_qs))
      << r.out.toStdString();
  EXPECT_TRUE(r.out.endsWith(u"\n[答案：]ABC\n[参见：]《合同示例规则》第14-16条\n"_qs)) << r.out.toStdString();
  EXPECT_TRUE(r.out.contains(u"\n[答案：]A\n[参见：]《示例刑法》第12条\n"_qs)) << r.out.toStdString();
  // And the paper it prints passes the check as the file itself does.
  const QString converted = outside(u"converted.txt"_qs, r.out.toUtf8());
  const cli::CliResult check = run({u"check-paper"_qs, converted});
  EXPECT_EQ(check.out, run({u"check-paper"_qs, sample}).out);
  expectUnchanged();
}

TEST_F(Verbs, ConvertPaperBadInputs) {
  const QString missing = te->path(u"\\外部题库\\没有.txt"_qs);
  expectRefused({u"convert-paper"_qs, missing}, u"试卷文件 "_qs + missing + u" 不存在。"_qs);
  expectRefused({u"convert-paper"_qs, te->path(u"\\外部题库"_qs)},
                te->path(u"\\外部题库"_qs) + u" 是文件夹，不是试卷文件。"_qs);
  expectRefused({u"convert-paper"_qs}, u"命令 convert-paper 缺少参数，用法：mingjing-cli convert-paper 试卷文件。"_qs);
  expectRefused({u"convert-paper"_qs, missing, missing},
                u"命令 convert-paper 的参数太多，用法：mingjing-cli convert-paper 试卷文件。"_qs);
}

TEST_F(GeneratedVerbs, ConvertPaperOnAGeneratedFolder) {
  const QString paper = files.path() + u"/散卷.txt"_qs;
  ASSERT_TRUE(WritePaper(paper, kLoosePaper, PaperEncoding::Gbk));
  const cli::CliResult r = run({u"convert-paper"_qs, paper});
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out, kConverted);
  EXPECT_EQ(TreeFingerprint(te.root()), before);
}

// ---- apply-update ---------------------------------------------------------------

const QString kSample = u"\\更新的题\\示例更新包.new"_qs;

TEST_F(Verbs, ApplyUpdateTakesTheSamplePackageWithItsReport) {
  const QString package = te->path(kSample);
  cli::CliResult r = run({u"apply-update"_qs, package});
  ASSERT_EQ(r.status, 0) << r.err.toStdString();
  EXPECT_EQ(r.err, QString());
  // Two corrections and a new question, each filed again under every law it
  // cites: seven questions.
  EXPECT_EQ(r.out, u"共更新了7题。\n"_qs);
  const QString bank = FromGbk(ReadBytes(te->path(u"\\yibanti\\100011.mmd"_qs)));
  EXPECT_TRUE(bank.contains(u"[本题标识ID：][10001100001]"_qs));
  EXPECT_TRUE(bank.contains(u"选项D的措辞已改正"_qs));
  // Today's day file lists the questions written, newest first.
  const QString day = te->readGbk(u"\\更新的题\\20261121.ini"_qs);
  EXPECT_TRUE(day.startsWith(u"\""_qs)) << day.toStdString();
  EXPECT_TRUE(day.endsWith(u"\"\r\n"_qs));
  EXPECT_EQ(day.size(), 1 + 7 * 11 + 3);
  EXPECT_TRUE(day.contains(u"10001100001"_qs));
  EXPECT_TRUE(day.contains(u"10001200090"_qs));
  EXPECT_NE(TreeFingerprint(te->root()), before);

  // The same package again: the window's question answered "否" leaves the
  // questions updated before as they are.
  const QMap<QString, QString> afterFirst = TreeFingerprint(te->root());
  r = run({u"apply-update"_qs, package});
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out, u"共3题，更新了0题，还有3题因为已经有了更新历史而没有更新。\n"_qs);
  EXPECT_EQ(FromGbk(ReadBytes(te->path(u"\\yibanti\\100011.mmd"_qs))), bank);
  // With --again ("是") every question again.
  r = run({u"apply-update"_qs, package, u"--again"_qs});
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out, u"共更新了7题。\n"_qs);
  EXPECT_EQ(afterFirst.size(), TreeFingerprint(te->root()).size());
}

TEST_F(Verbs, ApplyUpdateBadInputsChangeNothing) {
  const QByteArray sample = ReadBytes(te->path(kSample));
  ASSERT_FALSE(sample.isEmpty());
  // The package's text under another name: not a package.
  const QString txt = outside(u"示例更新包.txt"_qs, sample);
  expectRefused({u"apply-update"_qs, txt}, txt + u" 不是更新包：必须为*.new文件。"_qs);
  // A .new file without a single item, or whose items have no usable ID.
  const QString empty = outside(u"空的.new"_qs, ToGbk(u"这里没有试题。\r\n"_qs));
  const QString noItem = u" 不是更新包：里面没有一道以“●”开头、带“[本题标识ID：][11位数字]”的试题。"_qs;
  expectRefused({u"apply-update"_qs, empty}, empty + noItem);
  const QString badId = outside(u"坏的.new"_qs, ToGbk(u"说明\r\n●[单选题]题干\r\n[本题标识ID：][1000110000]\r\n"_qs));
  expectRefused({u"apply-update"_qs, badId}, badId + noItem);
  const QString missing = files.path() + u"/没有.new"_qs;
  expectRefused({u"apply-update"_qs, missing}, u"更新包文件 "_qs + missing + u" 不存在。"_qs);
  expectRefused({u"apply-update"_qs, files.path()}, files.path() + u" 是文件夹，不是更新包文件。"_qs);
  expectRefused({u"apply-update"_qs, te->path(kSample), u"--again=1"_qs}, u"选项 --again 不带值。"_qs);
  expectRefused({u"apply-update"_qs}, u"命令 apply-update 缺少参数，用法：mingjing-cli apply-update 更新包.new。"_qs);
}

TEST_F(GeneratedVerbs, ApplyUpdateOfAGeneratedPackage) {
  QStringList ids;
  const QString text = gen::UpdatePackage(sizes, 12, &ids);
  ASSERT_EQ(ids.size(), 12);
  const QString package = files.path() + u"/生成.new"_qs;
  ASSERT_TRUE(WriteTextAtomic(package, text));
  // With --again every item is written, whatever the texts held before:
  // the twelve and their copies under every law they cite.
  const cli::CliResult r = run({u"apply-update"_qs, package, u"--again"_qs});
  ASSERT_EQ(r.status, 0) << r.err.toStdString();
  const QString day = te.readGbk(u"\\更新的题\\20261121.ini"_qs);
  ASSERT_TRUE(day.startsWith(u'"') && day.endsWith(u"\"\r\n"_qs)) << day.toStdString();
  const qsizetype written = (day.size() - 4) / 11;
  EXPECT_GE(written, 24);
  EXPECT_EQ(r.out, u"共更新了%1题。\n"_qs.arg(written));
  for (const QString& id : ids) {
    EXPECT_TRUE(day.contains(id)) << id.toStdString();
    const QString bank = FromGbk(ReadBytes(te.path(u"\\yibanti\\"_qs + id.left(6) + u".mmd"_qs)));
    EXPECT_TRUE(bank.contains(u"[本题标识ID：]["_qs + id + u"]"_qs)) << id.toStdString();
  }
  // The record of an updated question starts again.
  DbfTable items = DbfTable::open(te.path(u"\\dbf\\items.mmd"_qs));
  const QList<int> rows = Select(items, {{u"itemid"_qs, ids[0]}});
  ASSERT_EQ(rows.size(), 1);
  EXPECT_EQ(items.text(rows[0], u"story"_qs).trimmed(), u"no"_qs);
  // Without --again, now that all carry their IDs: none again.
  const cli::CliResult second = run({u"apply-update"_qs, package});
  EXPECT_EQ(second.status, 0);
  EXPECT_EQ(second.out, u"共12题，更新了0题，还有12题因为已经有了更新历史而没有更新。\n"_qs);
}

// ---- add-law ----------------------------------------------------------------------

const QByteArray kSmallLaw =
    u"测试法\r\n第一章 总则\r\n第一条 为了测试，制定本法。\r\n第二条 本法适用于测试。\r\n第三条　本法自公布之日起施行。\r\n"_qs.toUtf8();
const QString kSmallLawFile =
    u"测试法\r\n　　第一章 总则\r\n　　第一条 为了测试，制定本法。\r\n　　第二条 本法适用于测试。\r\n"
    u"　　第三条 本法自公布之日起施行。\r\n　　\r\n　　"_qs;

QString AddLawReport(const QString& title, const QString& paper, const QString& letter, const QString& klass,
                     const QString& file, int articles, const QString& numeral) {
  Q_UNUSED(articles);
  return u"检测到文本类型为1，即其法条表示形如：\n第一条 …………\n第二条 …………\n如实际情况不是这样，请手工更改。\n"
         u"Ok，含有第一条至第"_qs + numeral + u"条。\n\n返回后请注意一下看是否本法条确实是"_qs + numeral +
         u"条。\n如果没什么问题，在进行归类后，就可以添加进入系统了。\n"_qs + title + u"："_qs + paper + u"，"_qs + letter +
         u"，"_qs + klass + u"。\n　　添加顺利完成，你可以从法律查询界面来看一下效果了。\n"
         u"但请注意，新添加的法律/法规不能从法条到试题，只可以从试题到法条。\n法律文件："_qs + file + u"\n"_qs;
}

TEST_F(Verbs, AddLawOfAPlainTextIntoTheLibraryAndTheThreeTrees) {
  const QString source = outside(u"测试法.txt"_qs, kSmallLaw);
  const cli::CliResult r = run({u"add-law"_qs, source, u"--title"_qs, u"《测试法》"_qs, u"--class"_qs, u"民法"_qs});
  ASSERT_EQ(r.status, 0) << r.err.toStdString();
  const QString lawFile = te->root() + u"/lawtxt/测试法.mmd"_qs;
  // The class 民法 stands under 试卷三 in the trees; 测 is read ce.
  EXPECT_EQ(r.out, AddLawReport(u"《测试法》"_qs, u"属试卷三相关法律、法规"_qs, u"属以字母C开头的法律、法规"_qs,
                                u"属民法类法律、法规"_qs, lawFile, 3, u"三"_qs));
  EXPECT_EQ(te->readGbk(u"\\lawtxt\\测试法.mmd"_qs), kSmallLawFile);
  const QString entry = u"File=\"\\lawtxt\\测试法.mmd\"\r\n"_qs;
  EXPECT_TRUE(te->readGbk(u"\\ini\\shijuan.mmd"_qs).contains(u"试卷三相关法律、法规\r\n"_qs + entry + u"    《测试法》\r\n"_qs));
  EXPECT_TRUE(te->readGbk(u"\\ini\\leibie.mmd"_qs).contains(u"\r\n民法\r\n"_qs + entry + u"    《测试法》\r\n"_qs));
  EXPECT_TRUE(te->readGbk(u"\\ini\\zimu.mmd"_qs).contains(u"B 《保险法》\r\n"_qs + entry + u"C 《测试法》\r\n"_qs));
  // Only those four files changed.
  const QMap<QString, QString> after = TreeFingerprint(te->root());
  QStringList changed;
  for (auto it = after.begin(); it != after.end(); ++it)
    if (before.value(it.key()) != it.value()) changed << QDir(te->root()).relativeFilePath(it.key());
  changed.sort();
  EXPECT_EQ(changed, (QStringList{u"ini/leibie.mmd"_qs, u"ini/shijuan.mmd"_qs, u"ini/zimu.mmd"_qs, u"lawtxt/测试法.mmd"_qs}));
  // The law is read at once: article prints it.
  ClearLawCache();
  EXPECT_EQ(run({u"article"_qs, u"测试法"_qs, u"2"_qs}).out, u"《测试法》\n　　第二条　本法适用于测试。\n\n"_qs);
  // A second time: the title exists now.
  const cli::CliResult again = run({u"add-law"_qs, source, u"--title"_qs, u"测试法"_qs, u"--class"_qs, u"民法"_qs});
  EXPECT_EQ(again.status, 1);
  EXPECT_EQ(again.err, u"文件"_qs + lawFile + u"已经存在，请重新命名该法律/法规的标题。"_qs);
}

TEST_F(Verbs, AddLawOfAMarkdownFileWithPaperAndLetterGiven) {
  const QString source = outside(
      u"示例法.md"_qs,
      u"# 示例法\n\n<!-- 注：示例 -->\n## 第一章 总则\n\n**第一条** 为了示例，制定本法。\n\n**第二条** 本法的条文\n跨两行。\n\n"
      u"**第三条** 本法自公布之日起施行。\n"_qs.toUtf8());
  const cli::CliResult r = run({u"add-law"_qs, source, u"--title"_qs, u"《示例法》"_qs, u"--class"_qs, u"属宪法类法律、法规"_qs,
                                u"--paper"_qs, u"2"_qs, u"--letter"_qs, u"s"_qs});
  ASSERT_EQ(r.status, 0) << r.err.toStdString();
  EXPECT_EQ(r.out, AddLawReport(u"《示例法》"_qs, u"属试卷二相关法律、法规"_qs, u"属以字母S开头的法律、法规"_qs,
                                u"属宪法类法律、法规"_qs, te->root() + u"/lawtxt/示例法.mmd"_qs, 3, u"三"_qs));
  EXPECT_EQ(te->readGbk(u"\\lawtxt\\示例法.mmd"_qs),
            u"示例法\r\n　　第一章 总则\r\n　　第一条 为了示例，制定本法。\r\n　　第二条 本法的条文跨两行。\r\n"
            u"　　第三条 本法自公布之日起施行。\r\n　　\r\n　　"_qs);
  EXPECT_TRUE(te->readGbk(u"\\ini\\shijuan.mmd"_qs)
                  .contains(u"试卷二相关法律、法规\r\nFile=\"\\lawtxt\\示例法.mmd\"\r\n    《示例法》\r\n"_qs));
  EXPECT_TRUE(te->readGbk(u"\\ini\\zimu.mmd"_qs).contains(u"File=\"\\lawtxt\\示例法.mmd\"\r\nS 《示例法》\r\n"_qs));
}

TEST_F(Verbs, AddLawOfARealStatuteInMarkdown) {
  const QString real = test::RealDataDir();
  if (real.isEmpty()) GTEST_SKIP() << "no real data";
  const QString source = outside(u"仲裁法.md"_qs, ReadBytes(real + u"/laws-md/仲裁法.md"_qs));
  const cli::CliResult r =
      run({u"add-law"_qs, source, u"--title"_qs, u"《中华人民共和国仲裁法》"_qs, u"--class"_qs, u"民法类"_qs});
  ASSERT_EQ(r.status, 0) << r.err.toStdString();
  // 中 is read zhong; 民法 stands under 试卷三.
  EXPECT_EQ(r.out, AddLawReport(u"《中华人民共和国仲裁法》"_qs, u"属试卷三相关法律、法规"_qs, u"属以字母Z开头的法律、法规"_qs,
                                u"属民法类法律、法规"_qs, te->root() + u"/lawtxt/中华人民共和国仲裁法.mmd"_qs, 80,
                                u"八十"_qs));
  ClearLawCache();
  const cli::CliResult article = run({u"article"_qs, u"中华人民共和国仲裁法"_qs, u"80"_qs});
  EXPECT_EQ(article.status, 0) << article.err.toStdString();
  EXPECT_TRUE(article.out.startsWith(u"《中华人民共和国仲裁法》\n　　第八十条　本法自1995年9月1日起施行。\n"_qs)) << article.out.toStdString();
}

TEST_F(Verbs, AddLawBadInputsChangeNothing) {
  const QString source = outside(u"测试法.txt"_qs, kSmallLaw);
  const QString classes = u"宪法、民法、行政法、刑法、商法、经济法、国际（经济）法、律师法"_qs;
  expectRefused({u"add-law"_qs, source, u"--class"_qs, u"民法"_qs},
                u"缺少 --title：该法律/法规的标题，如 --title 《刑法》。"_qs);
  expectRefused({u"add-law"_qs, source, u"--title"_qs, u"《》"_qs, u"--class"_qs, u"民法"_qs},
                u"缺少 --title：该法律/法规的标题，如 --title 《刑法》。"_qs);
  expectRefused({u"add-law"_qs, source, u"--title"_qs, u"《测试法》"_qs},
                u"缺少 --class：该法律/法规的类别，可选："_qs + classes + u"。"_qs);
  expectRefused({u"add-law"_qs, source, u"--title"_qs, u"《测试法》"_qs, u"--class"_qs, u"物理"_qs},
                u"没有“物理”这一类法律，可选："_qs + classes + u"。"_qs);
  expectRefused({u"add-law"_qs, source, u"--title"_qs, u"《示例刑法》"_qs, u"--class"_qs, u"刑法"_qs},
                u"文件"_qs + te->root() + u"/lawtxt/示例刑法.mmd已经存在，请重新命名该法律/法规的标题。"_qs);
  expectRefused({u"add-law"_qs, source, u"--title"_qs, u"《../测试法》"_qs, u"--class"_qs, u"民法"_qs},
                BadTitleText(u"《../测试法》"_qs));
  const QString missing = files.path() + u"/没有.txt"_qs;
  expectRefused({u"add-law"_qs, missing, u"--title"_qs, u"《测试法》"_qs, u"--class"_qs, u"民法"_qs},
                u"文件"_qs + missing + u"不存在。"_qs);
  const QString noArticles = outside(u"散文.txt"_qs, u"一篇散文\r\n没有条文。\r\n"_qs.toUtf8());
  expectRefused({u"add-law"_qs, noArticles, u"--title"_qs, u"《散文》"_qs, u"--class"_qs, u"民法"_qs}, kNoTypeText);
  const QString gap = outside(u"缺条.txt"_qs, u"缺条法\r\n第一条 甲。\r\n第二条 乙。\r\n第四条 丁。\r\n"_qs.toUtf8());
  expectRefused({u"add-law"_qs, gap, u"--title"_qs, u"《缺条法》"_qs, u"--class"_qs, u"民法"_qs}, u"共四条，第三条条有误"_qs);
  expectRefused({u"add-law"_qs, source, u"--title"_qs, u"《测试法》"_qs, u"--class"_qs, u"民法"_qs, u"--paper"_qs, u"四"_qs},
                u"--paper 只能是 一、二 或 三（也可写 1、2、3），不是“四”。"_qs);
  expectRefused({u"add-law"_qs, source, u"--title"_qs, u"《测试法》"_qs, u"--class"_qs, u"民法"_qs, u"--letter"_qs, u"测"_qs},
                u"--letter 要写一个字母 A 到 Z，不是“测”。"_qs);
  expectRefused({u"add-law"_qs, source, u"--title"_qs, u"《㐀法》"_qs, u"--class"_qs, u"民法"_qs},
                u"查不出“㐀”的拼音首字母，请用 --letter 写明标题的拼音首字母（如 --letter X）。"_qs);
  // A class none of whose laws stands in the tree by paper.
  expectRefused({u"add-law"_qs, source, u"--title"_qs, u"《测试法》"_qs, u"--class"_qs, u"国际经济法"_qs},
                u"法律树里没有国际（经济）法类的法律可以参照，请用 --paper 写明该法律属试卷一、二还是三（如 --paper 二）。"_qs);
}

TEST_F(Verbs, AddLawRepairsAHeadingGluedToTheTextBefore) {
  // 第三条 stands inside the line of the second: the window asks whether to
  // change it, and the command says "是" and reports it.
  const QString source =
      outside(u"粘连法.txt"_qs, u"粘连法\r\n第一条 甲。\r\n第二条 乙。第三条 丙。\r\n第四条 丁。\r\n"_qs.toUtf8());
  const cli::CliResult r =
      run({u"add-law"_qs, source, u"--title"_qs, u"粘连法"_qs, u"--class"_qs, u"刑法"_qs, u"--letter"_qs, u"Z"_qs});
  ASSERT_EQ(r.status, 0) << r.err.toStdString();
  EXPECT_TRUE(r.out.contains(u"\n第三条有误，但该条头存在，要更改吗？——已更改。\n"_qs)) << r.out.toStdString();
  EXPECT_TRUE(r.out.contains(u"\n《粘连法》：属试卷二相关法律、法规，属以字母Z开头的法律、法规，属刑法类法律、法规。\n"_qs))
      << r.out.toStdString();
  EXPECT_EQ(te->readGbk(u"\\lawtxt\\粘连法.mmd"_qs),
            u"粘连法\r\n　　第一条 甲。\r\n　　第二条 乙。\r\n　　第三条 丙。\r\n　　第四条 丁。\r\n　　\r\n　　"_qs);
}

TEST_F(Verbs, ThePinyinInitialOfEveryLawOfTheLetterTree) {
  // Every title of the tree by letter stands under the letter its first
  // character gives.
  const QStringList lines = te->readGbk(u"\\ini\\zimu.mmd"_qs).split(u"\r\n"_qs, Qt::SkipEmptyParts);
  int laws = 0;
  for (const QString& line : lines) {
    if (line.startsWith(u"File="_qs, Qt::CaseInsensitive)) continue;
    ++laws;
    const QString title = line.mid(2);
    ASSERT_TRUE(title.startsWith(u"《"_qs)) << line.toStdString();
    EXPECT_EQ(cli::PinyinInitial(title.at(1)), line.left(1)) << line.toStdString();
  }
  EXPECT_GE(laws, 3);
  EXPECT_EQ(cli::PinyinInitial(u'啊'), u"A"_qs);
  EXPECT_EQ(cli::PinyinInitial(u'座'), u"Z"_qs);
  EXPECT_EQ(cli::PinyinInitial(u'q'), u"Q"_qs);
  EXPECT_EQ(cli::PinyinInitial(u'１'), QString());
  EXPECT_EQ(cli::PinyinInitial(u'㐀'), QString());
}

TEST_F(Verbs, ThePaperOfAClassAndTheNamesOfTheChoices) {
  EXPECT_EQ(cli::PaperChoiceForClass(te->env, u"属宪法类法律、法规"_qs), u"属试卷一相关法律、法规"_qs);
  EXPECT_EQ(cli::PaperChoiceForClass(te->env, u"属刑法类法律、法规"_qs), u"属试卷二相关法律、法规"_qs);
  EXPECT_EQ(cli::PaperChoiceForClass(te->env, u"属民法类法律、法规"_qs), u"属试卷三相关法律、法规"_qs);
  EXPECT_EQ(cli::PaperChoiceForClass(te->env, u"属国际（经济）法类法律、法规"_qs), QString());
  for (const QString& given : {u"民法"_qs, u"民法类"_qs, u"属民法类法律、法规"_qs, u" 民法 "_qs})
    EXPECT_EQ(cli::ClassChoiceOf(given), u"属民法类法律、法规"_qs) << given.toStdString();
  EXPECT_EQ(cli::ClassChoiceOf(u"国际(经济)法"_qs), u"属国际（经济）法类法律、法规"_qs);
  EXPECT_EQ(cli::ClassChoiceOf(u"国际经济法"_qs), u"属国际（经济）法类法律、法规"_qs);
  EXPECT_EQ(cli::ClassChoiceOf(u"法"_qs), QString());
  EXPECT_EQ(cli::ClassChoiceOf(QString()), QString());
  for (const QString& given : {u"3"_qs, u"三"_qs, u"试卷三"_qs, u"属试卷三相关法律、法规"_qs})
    EXPECT_EQ(cli::PaperChoiceOf(given), u"属试卷三相关法律、法规"_qs) << given.toStdString();
  EXPECT_EQ(cli::PaperChoiceOf(u"0"_qs), QString());
  EXPECT_EQ(cli::LetterChoiceOf(u"m"_qs), u"属以字母M开头的法律、法规"_qs);
  EXPECT_EQ(cli::LetterChoiceOf(u"MM"_qs), QString());
}

TEST_F(GeneratedVerbs, AddLawOnAGeneratedFolder) {
  const QString source = files.path() + u"/测试法.txt"_qs;
  {
    QFile f(source);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(kSmallLaw);
  }
  // The generated trees name a class for each of their laws; the paper of
  // the class's law is taken.
  const cli::CliResult r = run({u"add-law"_qs, source, u"--title"_qs, u"《测试法》"_qs, u"--class"_qs, u"民法"_qs});
  ASSERT_EQ(r.status, 0) << r.err.toStdString();
  EXPECT_EQ(te.readGbk(u"\\lawtxt\\测试法.mmd"_qs), kSmallLawFile);
  const QString paper = cli::PaperChoiceForClass(te.env, u"属民法类法律、法规"_qs);
  ASSERT_FALSE(paper.isEmpty());
  EXPECT_TRUE(r.out.contains(u"《测试法》："_qs + paper + u"，属以字母C开头的法律、法规，属民法类法律、法规。\n"_qs))
      << r.out.toStdString();
  EXPECT_TRUE(te.readGbk(u"\\ini\\zimu.mmd"_qs).contains(u"C 《测试法》\r\n"_qs));
}

// ---- search --questions -------------------------------------------------------------

TEST_F(Verbs, QuestionSearchPrintsBankIdAndTheMarkedLine) {
  cli::CliResult r = run({u"search"_qs, u"--questions"_qs, u"正当防卫"_qs});
  ASSERT_EQ(r.status, 0) << r.err.toStdString();
  EXPECT_EQ(r.out,
            u"题库\t题号\t找到的文字\n"
            u"《示例刑法》单项选择题\t10001100003\tB．【正当防卫】\n"
            u"试卷二 多项选择题\t00002200005\t根据《示例刑法》，下列关于【正当防卫】的说法，正确的有(      )。\n"_qs);
  // Full-width digits find the half-width ones of the answer field.
  r = run({u"search"_qs, u"--questions"_qs, u"第１４条"_qs});
  EXPECT_EQ(r.out,
            u"题库\t题号\t找到的文字\n"
            u"《示例刑法》单项选择题\t10001100003\t答案：B参见《示例刑法》【第14条】\n"
            u"《行政处罚示例规定》单项选择题\t10002100004\t答案：B参见《行政处罚示例规定》【第14条】\n"
            u"《行政处罚示例规定》多项选择题\t10002200003\t答案：ABC参见《行政处罚示例规定》【第14条】\n"
            u"《合同示例规则》多项选择题\t10003200004\t答案：ABD参见《合同示例规则》【第14条】\n"
            u"试卷二 单项选择题\t00002100003\t答案：A参见《行政处罚示例规定》【第14条】\n"
            u"试卷二 多项选择题\t00002200005\t答案：ABC参见《示例刑法》【第14条】\n"_qs);
  // Every word must occur; the words may be separate arguments or one.
  r = run({u"search"_qs, u"--questions"_qs, u"正当防卫"_qs, u"紧急避险"_qs});
  EXPECT_EQ(r.out, u"题库\t题号\t找到的文字\n《示例刑法》单项选择题\t10001100003\tA．【紧急避险】\n"_qs);
  EXPECT_EQ(run({u"search"_qs, u"--questions"_qs, u"正当防卫 紧急避险"_qs}).out, r.out);
  // A quoted word as it stands: no question holds these words side by side.
  expectRefused({u"search"_qs, u"--questions"_qs, u"\"正当防卫 紧急避险\""_qs},
                u"没有含“\"正当防卫 紧急避险\"”的试题。"_qs);
  expectUnchanged();
}

TEST_F(Verbs, QuestionSearchBadInputs) {
  expectRefused({u"search"_qs, u"--questions"_qs, u"没有这样的字"_qs}, u"没有含“没有这样的字”的试题。"_qs);
  expectRefused({u"search"_qs, u"--questions"_qs, u" "_qs}, u"要查的文字是空的。"_qs);
  expectRefused({u"search"_qs, u"--questions"_qs, u"犯罪"_qs, u"--group"_qs, u"刑法"_qs},
                u"--group 只用于查法条，不能和 --questions 一起用。"_qs);
  expectRefused({u"search"_qs, u"--questions"_qs}, u"命令 search 缺少参数，用法：mingjing-cli search 文字。"_qs);
  // The law search takes one text.
  expectRefused({u"search"_qs, u"犯罪"_qs, u"行为"_qs},
                u"命令 search 的参数太多，用法：mingjing-cli search 文字（查试题时：search --questions 词…）。"_qs);
}

TEST_F(GeneratedVerbs, QuestionSearchOnAGeneratedFolder) {
  // A stem, its option in full-width letters, and a word of the notes.
  cli::CliResult r = run({u"search"_qs, u"--questions"_qs, u"生成试题17："_qs});
  ASSERT_EQ(r.status, 0) << r.err.toStdString();
  QStringList lines = r.out.split(u'\n', Qt::SkipEmptyParts);
  ASSERT_EQ(lines.size(), 3) << r.out.toStdString();  // the header, the bank question, the paper question
  EXPECT_TRUE(lines[1].contains(u"\t【生成试题17：】根据生成法律"_qs)) << lines[1].toStdString();
  r = run({u"search"_qs, u"--questions"_qs, u"生成选项Ｂ17"_qs, u"生成试题17："_qs});
  EXPECT_EQ(r.out.split(u'\n', Qt::SkipEmptyParts).size(), 3) << r.out.toStdString();
  r = run({u"search"_qs, u"--questions"_qs, u"生成的注释"_qs});
  ASSERT_EQ(r.status, 0);
  lines = r.out.split(u'\n', Qt::SkipEmptyParts);
  // Question i has a note when i % 4 == 2: a quarter of the 200 and of the 30.
  EXPECT_EQ(lines.size() - 1, 50 + 7) << r.out.toStdString();
  for (qsizetype i = 1; i < lines.size(); ++i) EXPECT_TRUE(lines[i].contains(u"【生成的注释】"_qs));
  EXPECT_EQ(TreeFingerprint(te.root()), before);
}

// ---- wrong ------------------------------------------------------------------------------

// Sets the practice record of questions of an item table.
void SetStories(const QString& table, const QList<std::pair<QString, QString>>& stories) {
  DbfTable items = DbfTable::open(table, DbfTable::Mode::ReadWrite);
  ASSERT_TRUE(items.isOpen()) << table.toStdString();
  for (const auto& [id, story] : stories) {
    const QList<int> rows = Select(items, {{u"itemid"_qs, id}});
    ASSERT_EQ(rows.size(), 1) << id.toStdString();
    ASSERT_TRUE(items.setText(rows[0], u"story"_qs, story));
  }
}

QString KeyOf(const QString& table, const QString& id) {
  DbfTable items = DbfTable::open(table);
  const QList<int> rows = Select(items, {{u"itemid"_qs, id}});
  return rows.isEmpty() ? QString() : items.text(rows[0], u"answer"_qs).trimmed();
}

// A wrong answer to a question whose key is `key`.
QString WrongTo(const QString& key) { return key == u"A"_qs ? u"B"_qs : u"A"_qs; }

TEST_F(Verbs, WrongListsTheBanksOfTheQuestionsLastAnsweredWrong) {
  // No record yet: the window's sentence.
  cli::CliResult r = run({u"wrong"_qs});
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out, kWrongBookEmpty + u"\n"_qs);
  expectUnchanged();

  const QString items = te->path(u"\\dbf\\items.mmd"_qs);
  const QString csItems = te->path(u"\\dbf\\csitems.mmd"_qs);
  const QDate day(2026, 11, 20);
  const auto at = [&](int hour, const QString& answer, const QDate& d) {
    return test::StoryEntry(d, answer, QTime(hour, 0));
  };
  const QString k1 = KeyOf(items, u"10001100001"_qs), k2 = KeyOf(items, u"10001100002"_qs),
                k3 = KeyOf(items, u"10003100001"_qs), kp = KeyOf(csItems, u"00001100001"_qs);
  ASSERT_FALSE(k1.isEmpty());
  ASSERT_FALSE(kp.isEmpty());
  SetStories(items, {{u"10001100001"_qs, at(9, WrongTo(k1), day)},
                     {u"10001100002"_qs, at(10, WrongTo(k2), day) + at(8, k2, day)},
                     {u"10003100001"_qs, at(9, WrongTo(k3), day.addDays(-40))},
                     {u"10003100002"_qs, at(9, KeyOf(items, u"10003100002"_qs), day)}});
  SetStories(csItems, {{u"00001100001"_qs, at(11, WrongTo(kp), day.addDays(-1))}});
  before = TreeFingerprint(te->root());
  r = run({u"wrong"_qs});
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out,
            u"题库\t题数\t最近做错的日期\n"
            u"《示例刑法》单项选择题\t2\t2026年11月20日\n"
            u"试卷一 单项选择题\t1\t2026年11月19日\n"
            u"《合同示例规则》单项选择题\t1\t2026年10月11日\n"_qs);
  r = run({u"wrong"_qs, u"--ids"_qs});
  EXPECT_EQ(r.out,
            u"题库\t题数\t最近做错的日期\n"
            u"《示例刑法》单项选择题\t2\t2026年11月20日\n    10001100001\n    10001100002\n"
            u"试卷一 单项选择题\t1\t2026年11月19日\n    00001100001\n"
            u"《合同示例规则》单项选择题\t1\t2026年10月11日\n    10003100001\n"_qs);
  expectUnchanged();
  // Answered right the next day, the question leaves the book.
  SetStories(items, {{u"10001100001"_qs, at(8, k1, day.addDays(1)) + at(9, WrongTo(k1), day)}});
  EXPECT_EQ(run({u"wrong"_qs}).out,
            u"题库\t题数\t最近做错的日期\n"
            u"《示例刑法》单项选择题\t1\t2026年11月20日\n"
            u"试卷一 单项选择题\t1\t2026年11月19日\n"
            u"《合同示例规则》单项选择题\t1\t2026年10月11日\n"_qs);
  before = TreeFingerprint(te->root());
  expectRefused({u"wrong"_qs, u"x"_qs}, u"命令 wrong 的参数太多，用法：mingjing-cli wrong。"_qs);
}

TEST_F(GeneratedVerbs, WrongOnAGeneratedFolder) {
  // The generated records end right: an empty book, until some go wrong.
  EXPECT_EQ(run({u"wrong"_qs}).out, kWrongBookEmpty + u"\n"_qs);
  const QString items = te.path(u"\\dbf\\items.mmd"_qs);
  DbfTable table = DbfTable::open(items);
  ASSERT_GE(table.recordCount(), 12);
  QList<std::pair<QString, QString>> stories;
  QStringList ids;
  for (int r = 0; r < 12; r += 2) {
    const QString id = table.text(r, u"itemid"_qs).trimmed();
    ids << id;
    stories.append({id, test::StoryEntry(QDate(2026, 11, 1 + r), WrongTo(table.text(r, u"answer"_qs).trimmed()))});
  }
  table = DbfTable();  // closed before the records are written
  SetStories(items, stories);
  const cli::CliResult r = run({u"wrong"_qs, u"--ids"_qs});
  ASSERT_EQ(r.status, 0);
  QStringList listed;
  int count = 0;
  for (const QString& line : r.out.split(u'\n', Qt::SkipEmptyParts)) {
    if (line.startsWith(u"    "_qs))
      listed << line.trimmed();
    else if (line.contains(u'\t') && !line.startsWith(u"题库"_qs))
      count += line.section(u'\t', 1, 1).toInt();
  }
  EXPECT_EQ(count, 6);
  listed.sort();
  ids.sort();
  EXPECT_EQ(listed, ids);
  // The newest wrong answer's bank first.
  EXPECT_TRUE(r.out.section(u'\n', 1, 1).endsWith(u"\t2026年11月11日"_qs)) << r.out.toStdString();
}

// ---- help --------------------------------------------------------------------------------

TEST(CliVerbsHelp, TheNewCommandsInTheHelp) {
  const cli::CliResult r = RunCliOn(QString(), {u"--help"_qs});
  for (const QString& verb : {u"convert-paper 试卷文件"_qs, u"apply-update 更新包.new"_qs, u"add-law 法律文本.md"_qs, u"wrong"_qs})
    EXPECT_TRUE(r.out.contains(u"  mingjing-cli "_qs + verb)) << verb.toStdString();
  for (const QString& verb : {u"convert-paper FILE"_qs, u"apply-update FILE.new"_qs, u"add-law FILE.md|FILE.txt"_qs})
    EXPECT_TRUE(r.out.contains(u"  mingjing-cli "_qs + verb)) << verb.toStdString();
  EXPECT_TRUE(r.out.contains(u"search --questions"_qs));
  const cli::CliResult add = RunCliOn(QString(), {u"add-law"_qs, u"--help"_qs});
  for (const QString& option : {u"  --title 《标题》\n"_qs, u"  --class 类别\n"_qs, u"  --paper 一|二|三\n"_qs, u"  --letter 字母\n"_qs})
    EXPECT_TRUE(add.out.contains(option)) << option.toStdString();
  EXPECT_TRUE(RunCliOn(QString(), {u"apply-update"_qs, u"--help"_qs}).out.contains(u"  --again\n"_qs));
  EXPECT_TRUE(RunCliOn(QString(), {u"search"_qs, u"--help"_qs}).out.contains(u"  --questions\n"_qs));
  EXPECT_EQ(r.out.count(u"（会写入程序文件夹）"_qs), 2);
  EXPECT_EQ(r.out.count(u" (writes into the program folder)"_qs), 2);
  EXPECT_TRUE(RunCliOn(QString(), {u"add-law"_qs, u"--help"_qs}).out.contains(u"（会写入程序文件夹）\n"_qs));
  // Only the two commands that change the folder say they write.
  for (const auto& c : cli::AllCommands())
    EXPECT_EQ(c->writes(), c->name() == u"apply-update"_qs || c->name() == u"add-law"_qs) << c->name().toStdString();
}

}  // namespace
}  // namespace mj
