// Each command of mingjing-cli on the demonstration data and on a generated
// folder, with the exact output; each bad input with its status and message.
#include <gtest/gtest.h>

#include <QFile>

#include "cli/cli.h"
#include "law/law_files.h"
#include "cli_fixture.h"
#include "generator.h"
#include "papers/paper_file.h"
#include "platform/dbftable.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

using test::Lf;
using test::RunCliOn;
using test::TreeFingerprint;

using CliDemo = test::CliDemoTest;

const QString kArticle3 =
    u"　　第三条　只有法律明文规定为犯罪的行为，才能依照法律定罪处刑；法律没有明文规定为犯罪的行为，不得定罪处刑。\n"_qs;

TEST_F(CliDemo, ArticlePrintsTheTitleLineAndTheArticleAsUnderAnAnswer) {
  const cli::CliResult r = run({u"article"_qs, u"示例刑法"_qs, u"3"_qs});
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.err, QString());
  EXPECT_EQ(r.out, u"《示例刑法》\n"_qs + kArticle3 + u"\n"_qs);
  // The title may be written with its 《》.
  EXPECT_EQ(run({u"article"_qs, u"《示例刑法》"_qs, u"3"_qs}).out, r.out);
  expectUnchanged();
}

TEST_F(CliDemo, ArticleOfALawNumberedByPoints) {
  const cli::CliResult r = run({u"article"_qs, u"合同示例规则"_qs, u"1"_qs});
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out, u"《合同示例规则》\n　　1．　为了保护合同当事人的合法权益，维护示例地区的交易秩序，制定本规则。\n\n"_qs);
}

TEST_F(CliDemo, CitePrintsEveryCitedArticleWithItsTitleLine) {
  const cli::CliResult r = run({u"cite"_qs, u"参见《示例刑法》第2条、第3-4条《合同示例规则》第1条"_qs});
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out,
            u"《示例刑法》\n"
            u"　　第二条　本法的任务，是运用刑罚同犯罪行为作斗争，保卫公共安全，保护公民的人身权利、财产权利和其他合法权利，维护社会秩序和经济秩序。\n\n"
            u"《示例刑法》\n"_qs +
                kArticle3 +
                u"\n《示例刑法》\n"
                u"　　第四条　任何人犯罪，在适用法律上一律平等，不允许任何人享有超越法律的特权。\n\n"
                u"《合同示例规则》\n"
                u"　　1．　为了保护合同当事人的合法权益，维护示例地区的交易秩序，制定本规则。\n\n"_qs);
  expectUnchanged();
}

TEST_F(CliDemo, CiteOfAnArticleBeyondTheLawPrintsTheAnswerWindowsSentence) {
  // As under an answer: the article that does not exist is said in its place.
  const cli::CliResult r = run({u"cite"_qs, u"《示例刑法》第3条、第999条"_qs});
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out, u"《示例刑法》\n"_qs + kArticle3 + u"\n《示例刑法》\n法律文件"_qs + te->root() +
                       u"/lawtxt/示例刑法.mmd中共38条，没有《示例刑法》第999条\n"_qs);
}

TEST_F(CliDemo, SearchInAGroupMarksTheText) {
  const cli::CliResult r = run({u"search"_qs, u"特权"_qs, u"--group"_qs, u"试卷二相关法律、法规"_qs});
  EXPECT_EQ(r.status, 0);
  // The law query puts two line breaks behind the part of each law.
  const QString demoPart = u"《示例刑法》\n　　第四条　任何人犯罪，在适用法律上一律平等，不允许任何人享有超越法律的【特权】。\n\n\n"_qs;
  // The real statutes, where the data ship them, stand at the top of the
  // group, ahead of the demonstration law.
  const bool realLaws = LawFileExists(te->env, u"刑法"_qs);
  if (realLaws) {
    EXPECT_TRUE(r.out.startsWith(u"《刑法》\n"_qs));
    EXPECT_TRUE(r.out.endsWith(u"\n\n\n"_qs + demoPart));
  } else {
    EXPECT_EQ(r.out, demoPart);
  }
  // The group of the tree by class gives the same without the real
  // statutes; with them, 刑法 names the law first (the tree by paper is
  // tried first, and a law is found by its title without 《》).
  const QString byClass = run({u"search"_qs, u"特权"_qs, u"--group=刑法"_qs}).out;
  if (realLaws)
    EXPECT_EQ(byClass, r.out.left(r.out.indexOf(u"\n\n\n"_qs) + 3));
  else
    EXPECT_EQ(byClass, r.out);
  // A single law.
  EXPECT_EQ(run({u"search"_qs, u"特权"_qs, u"--group"_qs, u"《示例刑法》"_qs}).out, demoPart);
  EXPECT_EQ(run({u"search"_qs, u"特权"_qs, u"--group"_qs, u"示例刑法"_qs}).out, demoPart);
  expectUnchanged();
}

TEST_F(CliDemo, SearchWithoutAGroupSearchesEveryLawOnce) {
  const cli::CliResult r = run({u"search"_qs, u"示例地区"_qs});
  EXPECT_EQ(r.status, 0);
  // The laws in the order of the tree by paper.
  const qsizetype a = r.out.indexOf(u"《行政处罚示例规定》"_qs), b = r.out.indexOf(u"《示例刑法》"_qs),
                  c = r.out.indexOf(u"《合同示例规则》"_qs);
  EXPECT_TRUE(b > 0 && c > b) << r.out.toStdString();
  EXPECT_EQ(r.out.count(u"《示例刑法》\n"_qs), 1);
  EXPECT_TRUE(a == -1 || a < b);
  EXPECT_TRUE(r.out.contains(u"结合【示例地区】同犯罪作斗争的经验"_qs));
}

TEST_F(CliDemo, SearchOfANumeralHeadingMarksNothing) {
  const cli::CliResult r = run({u"search"_qs, u"第四条"_qs, u"--group"_qs, u"示例刑法"_qs});
  EXPECT_EQ(r.status, 0);
  EXPECT_TRUE(r.out.startsWith(u"《示例刑法》\n　　第四条　任何人犯罪"_qs)) << r.out.toStdString();
  EXPECT_FALSE(r.out.contains(u"【"_qs));
}

const QString kDemoDirectory =
    u"目录\t总题数\t做次数\t对次数\t得分\t用时(分)\t适格题数\n"
    u"-第一部分 行政法题库（示例数据）\t15\t0\t0\t0%\t0\t15\n"
    u"    -《行政处罚示例规定》（示例数据）\t15\t0\t0\t0%\t0\t15\n"
    u"         《行政处罚示例规定》单项选择题\t7\t0\t0\t0%\t0\t7\n"
    u"         《行政处罚示例规定》多项选择题\t5\t0\t0\t0%\t0\t5\n"
    u"         《行政处罚示例规定》任意选择题\t3\t0\t0\t0%\t0\t3\n"
    u"-第二部分 刑法题库（示例数据）\t15\t0\t0\t0%\t0\t15\n"
    u"    -《示例刑法》（示例数据）\t15\t0\t0\t0%\t0\t15\n"
    u"         《示例刑法》单项选择题\t7\t0\t0\t0%\t0\t7\n"
    u"         《示例刑法》多项选择题\t5\t0\t0\t0%\t0\t5\n"
    u"         《示例刑法》任意选择题\t3\t0\t0\t0%\t0\t3\n"
    u"-第三部分 民法题库（示例数据）\t15\t0\t0\t0%\t0\t15\n"
    u"    -《合同示例规则》（示例数据）\t15\t0\t0\t0%\t0\t15\n"
    u"         《合同示例规则》单项选择题\t7\t0\t0\t0%\t0\t7\n"
    u"         《合同示例规则》多项选择题\t5\t0\t0\t0%\t0\t5\n"
    u"         《合同示例规则》任意选择题\t3\t0\t0\t0%\t0\t3\n"_qs;

TEST_F(CliDemo, DueListsTheDirectoryWithEveryHeadingOpenAndWritesNothing) {
  const cli::CliResult r = run({u"due"_qs});
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out, kDemoDirectory);
  // The day's count happened on copies: neither the table nor the settings
  // (no userself.ini before) changed.
  expectUnchanged();
}

TEST_F(CliDemo, DueOfThePapersAndOfTheReview) {
  const cli::CliResult r = run({u"due"_qs, u"--papers"_qs});
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out,
            u"目录\t总题数\t已做数\t正确数\t得分\t用时(分)\t适格题数\n"
            u"-示例模拟试卷一（示例数据）\t9\t0\t0\t0%\t0\t9\n"
            u"     试卷一 单项选择题\t4\t0\t0\t0%\t0\t4\n"
            u"     试卷一 多项选择题\t3\t0\t0\t0%\t0\t3\n"
            u"     试卷一 任意选择题\t2\t0\t0\t0%\t0\t2\n"
            u"-示例模拟试卷二（示例数据）\t9\t0\t0\t0%\t0\t9\n"
            u"     试卷二 单项选择题\t4\t0\t0\t0%\t0\t4\n"
            u"     试卷二 多项选择题\t3\t0\t0\t0%\t0\t3\n"
            u"     试卷二 任意选择题\t2\t0\t0\t0%\t0\t2\n"_qs);
  const cli::CliResult review = run({u"due"_qs, u"--review"_qs});
  EXPECT_EQ(review.status, 0);
  EXPECT_TRUE(review.out.startsWith(u"目录\t总题数\t已做数\t正确数\t得分\t用时(分)\t未做或错\n"_qs));
  expectFailure({u"due"_qs, u"--papers"_qs, u"--review"_qs}, u"--papers 和 --review 只能选一个。"_qs);
  expectUnchanged();
}

TEST_F(CliDemo, CheckPaperPrintsTheWholeReport) {
  const QString paper = te->path(u"\\外部题库\\小卷.txt"_qs);
  ASSERT_TRUE(WritePaper(paper,
                         u"一、单项选择题\r\n1．题干(  )\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁\r\n[答案：]A\r\n"
                         u"[参见：]《示例刑法》第3条\r\n2．题干(  )\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁\r\n[答案：]E\r\n"_qs,
                         PaperEncoding::Utf8));
  before = TreeFingerprint(te->root());
  const cli::CliResult r = run({u"check-paper"_qs, paper});
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.err, QString());
  EXPECT_EQ(r.out,
            u"    没有“二、多项选择题”字样\n"
            u"    没有“三、任意选择题”字样\n"
            u"注意：由于本程序要适应现存的各种格式，所以你返回后要检查一下原文本是否与该统计结果相符。如果不符，即如果只有单选题和多选题而没有任意选择题，只要下面提示已经通过检验，则也是可以开始做题的。但是你的这个文件内不能只有后面的试题类型而没有前面的试题类型，即不能只有多选题或任意选择题而没有单选题。\n"
            u"\n共有2道单选题，2个答案。\n"
            u"\n单选题编号从1到2共2道=2道。检验通过\n"
            u"\n各个试题详细检验结果汇报：\n"
            u"\n一、单项选择题\n"
            u"第1题：通过检验。\n"
            u"第2题：无答案，未通过检验。\n\n\n"_qs);
  expectUnchanged();
}

TEST_F(CliDemo, EveryBadInputGivesStatusOneAndItsMessageAndChangesNothing) {
  expectFailure({u"article"_qs, u"民法"_qs, u"1"_qs},
                u"没有这部法律：《民法》（找不到法律文件 "_qs + te->root() + u"/lawtxt/民法.mmd）。"_qs);
  expectFailure({u"article"_qs, u"示例刑法"_qs, u"999"_qs},
                u"法律文件"_qs + te->root() + u"/lawtxt/示例刑法.mmd中共38条，没有《示例刑法》第999条"_qs);
  expectFailure({u"article"_qs, u"示例刑法"_qs, u"三"_qs}, u"条号要写成正整数（如 133），不是“三”。"_qs);
  expectFailure({u"article"_qs, u"示例刑法"_qs, u"0"_qs}, u"条号要写成正整数（如 133），不是“0”。"_qs);
  expectFailure({u"article"_qs, u"../ini/x"_qs, u"1"_qs},
                u"没有这部法律：《../ini/x》（找不到法律文件 《../ini/x》）。"_qs);
  expectFailure({u"cite"_qs, u"参见《示例刑法》第十二条"_qs},
                u"引文里没有可查的法条（法条号要用阿拉伯数字，如 《刑法》第12条）：参见《示例刑法》第十二条"_qs);
  expectFailure({u"cite"_qs, u"第12条"_qs}, u"引文里的法条前面没有《法律名》：第12条"_qs);
  expectFailure({u"cite"_qs, u"参见《示例刑法》第1条《民法》第2条"_qs},
                u"没有这部法律：《民法》（找不到法律文件 "_qs + te->root() + u"/lawtxt/民法.mmd）。"_qs);
  expectFailure({u"search"_qs, u"没有的字"_qs}, u"没有含  没有的字  的法条。"_qs);
  expectFailure({u"search"_qs, u"犯罪"_qs, u"--group"_qs, u"没有的组"_qs}, u"法律树里没有“没有的组”这一组或这部法律。"_qs);
  expectFailure({u"search"_qs, u"犯罪"_qs, u"--group"_qs}, u"选项 --group 后面要写组名。"_qs);
  expectFailure({u"search"_qs, u" "_qs}, u"要查的文字是空的。"_qs);
  expectFailure({u"check-paper"_qs, te->path(u"\\外部题库\\没有.txt"_qs)},
                u"试卷文件 "_qs + te->path(u"\\外部题库\\没有.txt"_qs) + u" 不存在。"_qs);
  expectFailure({u"check-paper"_qs, te->path(u"\\外部题库"_qs)},
                te->path(u"\\外部题库"_qs) + u" 是文件夹，不是试卷文件。"_qs);
  expectFailure({u"article"_qs, u"示例刑法"_qs}, u"命令 article 缺少参数，用法：mingjing-cli article 法律名 条号。"_qs);
  expectFailure({u"article"_qs, u"示例刑法"_qs, u"1"_qs, u"2"_qs},
                u"命令 article 的参数太多，用法：mingjing-cli article 法律名 条号。"_qs);
  expectFailure({u"article"_qs, u"示例刑法"_qs, u"1"_qs, u"--again"_qs}, u"命令 article 没有选项 --again。"_qs);
  expectFailure({u"due"_qs, u"--papers=1"_qs}, u"选项 --papers 不带值。"_qs);
  expectFailure({u"wrongs"_qs}, u"未知命令：wrongs。用 mingjing-cli --help 查看用法。"_qs);
  expectUnchanged();
}

TEST_F(CliDemo, SearchInALawWhoseFileIsMissingSaysSo) {
  ASSERT_TRUE(QFile::remove(te->path(u"\\lawtxt\\示例刑法.mmd"_qs)));
  // The law query's own box on the click, as the message.
  expectFailure({u"search"_qs, u"犯罪"_qs, u"--group"_qs, u"示例刑法"_qs},
                u"法律/法规文件"_qs + te->root() + u"/lawtxt/示例刑法.mmd不存在。"_qs);
}

TEST(CliFolder, AMissingFolderOrOneWithoutDataIsSaid) {
  test::TestEnv te;
  const QString missing = te.path(u"\\nothing"_qs);
  cli::CliResult r = RunCliOn(missing, {u"due"_qs});
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.err, u"程序文件夹 "_qs + missing + u" 不存在。"_qs);
  EXPECT_FALSE(QFileInfo::exists(missing));
  r = RunCliOn(te.root(), {u"article"_qs, u"刑法"_qs, u"1"_qs});
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.err, u"文件夹 "_qs + te.root() + u" 里没有明镜学习伴侣的数据（缺少 yibanti 文件夹）。"_qs);
  r = RunCliOn(QString(), {u"due"_qs, u"--folder"_qs});
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.err, u"选项 --folder 后面要写程序文件夹。"_qs);
  r = RunCliOn(QString(), {});
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.err, u"缺少命令。用 mingjing-cli --help 查看用法。"_qs);
  EXPECT_EQ(TreeFingerprint(te.root()).size(), 0);
}

TEST(CliHelp, TheHelpInChineseAndEnglish) {
  cli::CliResult r = RunCliOn(QString(), {u"--help"_qs});
  EXPECT_EQ(r.status, 0);
  for (const QString& verb : {u"article"_qs, u"cite"_qs, u"search"_qs, u"due"_qs, u"check-paper"_qs, u"stats"_qs})
    EXPECT_TRUE(r.out.contains(u"mingjing-cli "_qs + verb)) << verb.toStdString();
  EXPECT_TRUE(r.out.contains(u"用法：mingjing-cli 命令"_qs));
  EXPECT_TRUE(r.out.contains(u"Usage: mingjing-cli COMMAND"_qs));
  EXPECT_TRUE(r.out.contains(u"~/.local/share/mingjing"_qs));
  r = RunCliOn(QString(), {u"search"_qs, u"--help"_qs});
  EXPECT_EQ(r.status, 0);
  EXPECT_TRUE(r.out.startsWith(u"用法：mingjing-cli search 文字 [选项]\n"_qs)) << r.out.toStdString();
  EXPECT_TRUE(r.out.contains(u"Usage: mingjing-cli search TEXT [options]\n"_qs));
  EXPECT_TRUE(r.out.contains(u"  --group 组名\n"_qs));
  EXPECT_TRUE(r.out.contains(u"  --folder 文件夹\n"_qs));
  // The help of a command needs no program folder.
  EXPECT_EQ(RunCliOn(u"/nothing/here"_qs, {u"due"_qs, u"-h"_qs}).status, 0);
}

// A generated folder: three laws of the three numbering types and a
// directory with nested headings and practice records of every shape.
class CliGenerated : public ::testing::Test {
 protected:
  void SetUp() override {
    gen::Sizes s;
    s.questions = 200;
    s.banks = 6;
    s.papers = 1;
    QString error;
    ASSERT_TRUE(gen::Generate(te.root(), s, &error, &result)) << error.toStdString();
    before = TreeFingerprint(te.root());
  }
  test::TestEnv te;
  gen::Result result;
  QMap<QString, QString> before;
};

TEST_F(CliGenerated, ArticlesOfTheThreeNumberingTypes) {
  const QString tail = u"这是生成法律%1的一条生成条文，用于测试程序的速度，没有法律意义。\n\n"_qs;
  EXPECT_EQ(RunCliOn(te.root(), {u"article"_qs, u"生成法律1"_qs, u"2"_qs}).out,
            u"《生成法律1》\n　　第二条　"_qs + tail.arg(1));
  EXPECT_EQ(RunCliOn(te.root(), {u"article"_qs, u"生成法律2"_qs, u"2"_qs}).out,
            u"《生成法律2》\n　　二、　"_qs + tail.arg(2));
  EXPECT_EQ(RunCliOn(te.root(), {u"article"_qs, u"生成法律3"_qs, u"100"_qs}).out,
            u"《生成法律3》\n　　100．　"_qs + tail.arg(3));
  const cli::CliResult r = RunCliOn(te.root(), {u"article"_qs, u"生成法律3"_qs, u"101"_qs});
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.err, u"法律文件"_qs + te.root() + u"/lawtxt/生成法律3.mmd中共100条，没有《生成法律3》第101条"_qs);
  EXPECT_EQ(TreeFingerprint(te.root()), before);
}

TEST_F(CliGenerated, DueCountsAsTheGeneratorsOwnDueTest) {
  // The generator writes into 33ok.mmd the numbers its own due test gives
  // for the settings of a new user; the command counts anew with the
  // program's test and must find the same numbers.
  const cli::CliResult r = RunCliOn(te.root(), {u"due"_qs});
  ASSERT_EQ(r.status, 0) << r.err.toStdString();
  const QStringList lines = r.out.split(u'\n', Qt::SkipEmptyParts);
  ASSERT_EQ(lines.size(), result.directoryRows + 1);
  DbfTable face = DbfTable::open(te.path(u"\\dbf\\33ok.mmd"_qs));
  ASSERT_TRUE(face.isOpen());
  long long sumDue = 0, sumTotal = 0;
  for (int row = 0; row < result.directoryRows; ++row) {
    const QStringList cells = lines[row + 1].split(u'\t');
    ASSERT_EQ(cells.size(), 7) << lines[row + 1].toStdString();
    if (!cells[0].trimmed().startsWith(u'-')) {
      EXPECT_EQ(cells[6].toLongLong(), static_cast<long long>(face.number(row, u"oknum"_qs))) << lines[row + 1].toStdString();
      EXPECT_EQ(cells[1].toLongLong(), static_cast<long long>(face.number(row, u"f"_qs))) << lines[row + 1].toStdString();
      sumDue += cells[6].toLongLong();
      sumTotal += cells[1].toLongLong();
    }
  }
  EXPECT_EQ(sumTotal, result.questions);
  EXPECT_GT(sumDue, 0);
  EXPECT_LT(sumDue, sumTotal);
  EXPECT_EQ(TreeFingerprint(te.root()), before);
}

TEST_F(CliGenerated, SearchAndCite) {
  cli::CliResult r = RunCliOn(te.root(), {u"cite"_qs, u"参见《生成法律1》第1-2条《生成法律3》第3条"_qs});
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out.count(u"《生成法律1》\n"_qs), 2);
  EXPECT_TRUE(r.out.endsWith(u"\n《生成法律3》\n　　3．　这是生成法律3的一条生成条文，用于测试程序的速度，没有法律意义。\n"
                             u"　　（一）生成的项；\n　　（二）生成的项。\n\n"_qs))
      << r.out.toStdString();
  r = RunCliOn(te.root(), {u"search"_qs, u"生成法律2的"_qs});
  EXPECT_EQ(r.status, 0);
  EXPECT_TRUE(r.out.startsWith(u"《生成法律2》\n　　一、　这是【生成法律2的】一条"_qs)) << r.out.toStdString();
  EXPECT_EQ(r.out.count(u"【"_qs), 100);
  EXPECT_EQ(TreeFingerprint(te.root()), before);
}

}  // namespace
}  // namespace mj
