// The real statutes in the demonstration folder: made at build time from the
// Markdown of the shared real data by the program's own clean-up and adding
// of a new law, so each law file is exactly what a user gets through the
// window, and each statute stands in the three law trees under its group.

#include <gtest/gtest.h>

#include <QFile>

#include "data_test_util.h"
#include "law/law_files.h"
#include "law/law_text.h"
#include "law/law_tree.h"
#include "law/new_law.h"
#include "platform/paths.h"
#include "support/printers.h"
#include "support/test_env.h"

using namespace mj;
using namespace mj::datatest;

namespace {

QString NameOf(const RealLaw& law) { return law.title.mid(1, law.title.size() - 2); }

TEST(DemoRealLaws, EveryStatuteOfTheListIsThere) {
  if (test::RealDataDir().isEmpty()) GTEST_SKIP() << "../shared/realdata is absent: the build leaves them out";
  const QList<RealLaw> laws = RealLawsOfTheList();
  ASSERT_EQ(laws.size(), 24);
  QStringList md;
  for (const RealLaw& law : laws) md << law.sources;
  // Every Markdown file of the real data is used, each once.
  QStringList all;
  for (const QString& f : QDir(test::RealDataDir() + u"/laws-md"_qs).entryList({u"*.md"_qs}, QDir::Files))
    all << u"laws-md/"_qs + f;
  for (const QString& f : QDir(test::RealDataDir() + u"/laws-md/民法典"_qs).entryList({u"*.md"_qs}, QDir::Files))
    all << u"laws-md/民法典/"_qs + f;
  md.sort();
  all.sort();
  EXPECT_EQ(md, all);
}

TEST(DemoRealLaws, EachLawFileIsWhatTheCleanUpMakesOfItsMarkdown) {
  const QList<RealLaw> laws = RealLawsOfTheList();
  if (laws.isEmpty()) GTEST_SKIP() << "../shared/realdata is absent";
  for (const RealLaw& law : laws) {
    SCOPED_TRACE(law.title.toStdString());
    QStringList parts;
    for (const QString& md : law.sources) {
      QFile f(test::RealDataDir() + u'/' + md);
      ASSERT_TRUE(f.open(QIODevice::ReadOnly));
      parts << QString::fromUtf8(f.readAll());
    }
    test::TestEnv te;
    NewLawWizard w(te.env);
    w.view = JoinMarkdownParts(parts);
    w.clean();
    if (!w.checked) {
      w.view = RespellArticleHeads(JoinMarkdownParts(parts));
      w.clean();
    }
    ASSERT_TRUE(w.checked);
    const QString shipped = ReadLawFile(AppPath(Demo(), u"\\lawtxt\\"_qs + NameOf(law) + u".mmd"_qs));
    EXPECT_EQ(shipped, w.view);
    const LawText real(ReadLawFile(test::RealDataDir() + u"/lawtxt/"_qs + NameOf(law) + u".mmd"_qs));
    EXPECT_EQ(LastItemNum(shipped), real.lastItemNum());
    EXPECT_EQ(GetLawTextType(shipped), 1);
  }
}

TEST(DemoRealLaws, EachStandsInTheThreeTreesUnderItsGroup) {
  const QList<RealLaw> laws = RealLawsOfTheList();
  if (laws.isEmpty()) GTEST_SKIP() << "../shared/realdata is absent";
  test::TestEnv te(Demo());
  const LawTree byPaper = LoadLawTree(te.env, LawTreeOrder::Paper);
  const LawTree byLetter = LoadLawTree(te.env, LawTreeOrder::Letter);
  const LawTree byClass = LoadLawTree(te.env, LawTreeOrder::Class);
  const QStringList papers = {u"试卷一相关法律、法规"_qs, u"试卷二相关法律、法规"_qs, u"试卷三相关法律、法规"_qs};
  auto parentOf = [](const LawTree& tree, const QString& text) -> QString {
    for (const LawTreeNode& n : tree.nodes)
      if (n.text == text) return n.parent >= 0 ? tree.nodes[n.parent].text : QString();
    return u"(absent)"_qs;
  };
  auto tagOf = [](const LawTree& tree, const QString& text) {
    for (const LawTreeNode& n : tree.nodes)
      if (n.text == text) return n.tag;
    return QString();
  };
  for (const RealLaw& law : laws) {
    SCOPED_TRACE(law.title.toStdString());
    const QString file = LawFileTag(NameOf(law));
    EXPECT_EQ(parentOf(byPaper, law.title), papers[law.paper - 1]);
    EXPECT_EQ(tagOf(byPaper, law.title), file);
    EXPECT_EQ(parentOf(byClass, law.title), law.klass);
    EXPECT_EQ(tagOf(byClass, law.title), file);
    const QString letterLine = QString(law.letter) + u' ' + law.title;
    EXPECT_EQ(parentOf(byLetter, letterLine), u"按字母顺序"_qs);
    EXPECT_EQ(tagOf(byLetter, letterLine), file);
  }
  // Within a group the statutes keep the order of the list, ahead of the
  // demonstration laws; the letter tree runs from A to Z.
  QStringList paperOne;
  for (const LawTreeNode& n : byPaper.nodes)
    if (n.parent >= 0 && byPaper.nodes[n.parent].text == papers[0]) paperOne << n.text;
  EXPECT_EQ(paperOne, (QStringList{u"《宪法》"_qs, u"《立法法》"_qs, u"《监察法》"_qs, u"《劳动合同法》"_qs,
                                   u"《反不正当竞争法》"_qs, u"《消费者权益保护法》"_qs, u"《律师法》"_qs,
                                   u"《法官法》"_qs, u"《行政处罚示例规定》"_qs}));
  QChar last = u'A';
  for (int i = 1; i < byLetter.nodes.size(); ++i) {
    const QChar c = byLetter.nodes[i].text.at(0);
    EXPECT_GE(c, last) << byLetter.nodes[i].text.toStdString();
    last = c;
  }
  // No law of the list is in the class 国际（经济）法, so that group is not in the tree.
  EXPECT_EQ(parentOf(byClass, u"国际（经济）法"_qs), u"(absent)"_qs);
}

}  // namespace
