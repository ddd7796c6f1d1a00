// The law query on the four real statutes of the shared test data.

#include <gtest/gtest.h>

#include <QRegularExpression>

#include "law/law_extract.h"
#include "law/law_files.h"
#include "law/law_query.h"
#include "law/numerals.h"
#include "law_samples.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

const QStringList kLaws{u"宪法"_qs, u"刑法"_qs, u"刑事诉讼法"_qs, u"民法典"_qs};

class RealLawQuery : public ::testing::Test {
 protected:
  void SetUp() override {
    if (test::RealDataDir().isEmpty()) GTEST_SKIP() << "no real data";
    te.mkdir(u"\\lawtxt"_qs);
    for (const QString& law : kLaws) {
      const QString from = test::RealDataDir() + u"/lawtxt/"_qs + law + u".mmd"_qs;
      ASSERT_TRUE(QFile::copy(from, te.path(u"\\lawtxt\\"_qs + law + u".mmd"_qs)));
    }
    QStringList tree{u"FILE=\"\\lawtxt\\宪法.mmd\""_qs, u"四部法律"_qs};
    for (const QString& law : kLaws)
      tree << u"FILE=\"\\lawtxt\\"_qs + law + u".mmd\""_qs << u"    《"_qs + law + u"》"_qs;
    te.writeGbk(u"\\ini\\shijuan.mmd"_qs, test::JoinCrLf(tree) + u"\r\n"_qs);
    ClearLawCache();
    q = std::make_unique<LawQuery>(te.env);
  }
  void pick(const QString& text) {
    for (int i = 0; i < q->tree.nodes.size(); ++i)
      if (q->tree.nodes[i].text == text) return q->clickNode(i);
    FAIL() << text.toStdString();
  }
  // The article headings of a printed text, as numbers, in order.
  static QList<int> Headings(const QString& text) {
    static const QRegularExpression head(u"(?:^|\\n)　　第([一二三四五六七八九十百千零]+)条　"_qs);
    QList<int> found;
    for (auto it = head.globalMatch(text); it.hasNext();) found.append(DaXieToNum(it.next().captured(1)));
    return found;
  }

  test::TestEnv te;
  std::unique_ptr<LawQuery> q;
};

TEST_F(RealLawQuery, TwelveToFifteenAndTwentyOfTheCriminalLaw) {
  pick(u"《刑法》"_qs);
  EXPECT_EQ(q->itemCount(), 452);
  q->editText1(u"12-15,20"_qs);
  q->query();
  EXPECT_EQ(Headings(q->view), (QList<int>{12, 13, 14, 15, 20}));
  EXPECT_TRUE(q->view.startsWith(u"　　第十二条　中华人民共和国成立以后本法施行以前的行为"_qs))
      << q->view.left(40).toStdString();
  EXPECT_TRUE(q->view.contains(
      u"　　第二十条　为了使国家、公共利益、本人或者他人的人身、财产和其他权利免受正在进行的不法侵害"_qs));
  q->editText1(u"15-12"_qs);
  q->query();
  EXPECT_EQ(Headings(q->view), (QList<int>{15, 12}));
  EXPECT_TRUE(te.boxes.shown().isEmpty());
}

TEST_F(RealLawQuery, APhraseOverAGroupOfTheFourLaws) {
  pick(u"四部法律"_qs);
  q->editText2(u"人民法院"_qs);
  q->query();
  EXPECT_EQ(q->result.names, u"《宪法》●《刑法》●《刑事诉讼法》●《民法典》●"_qs);
  // Each law's part holds exactly the articles that contain the phrase, all marked.
  qsizetype start = 0;
  for (int k = 0; k < kLaws.size(); ++k) {
    const qsizetype len = q->result.lengths.mid(k * 15, 15).toLongLong();
    const QString part = q->view.mid(start, len);
    EXPECT_TRUE(part.startsWith(u"《"_qs + kLaws[k] + u"》\r\n"_qs));
    const LawTextPtr law = LoadLawByName(te.env, kLaws[k]);
    ASSERT_TRUE(law);
    const QString numbers = GetMyLongDaAn(law->text(), law->numeralTable(), u"人民法院"_qs, &law->index());
    EXPECT_EQ(Headings(part).size(), numbers.count(u'．')) << kLaws[k].toStdString();
    EXPECT_EQ(part.count(u"人民法院"_qs), part.count(u"【人民法院】"_qs));
    // A position inside the part tells this law.
    EXPECT_EQ(q->result.GetLawName(start + len / 2), u"《"_qs + kLaws[k] + u"》"_qs);
    start += len;
  }
  EXPECT_EQ(start, q->view.size());
}

TEST_F(RealLawQuery, TheLastArticleOfEachLawIsFound) {
  const QList<int> last{143, 452, 308, 1260};
  for (int k = 0; k < kLaws.size(); ++k) {
    pick(u"《"_qs + kLaws[k] + u"》"_qs);
    ASSERT_EQ(q->itemCount(), last[k]) << kLaws[k].toStdString();
    q->editText2(QString());
    q->editText1(CStr(last[k]));
    q->query();
    EXPECT_EQ(Headings(q->view), QList<int>{last[k]}) << kLaws[k].toStdString();
    const QString body = q->view.mid(q->view.indexOf(u"条　"_qs) + 2, 8);
    q->editText2(body);
    q->query();
    EXPECT_EQ(Headings(q->view).value(Headings(q->view).size() - 1), last[k]) << body.toStdString();
  }
  EXPECT_TRUE(te.boxes.shown().isEmpty());
}

TEST_F(RealLawQuery, OneCharacterOverTheGroup) {
  pick(u"四部法律"_qs);
  q->editText2(u"法"_qs);
  q->query();
  EXPECT_EQ(q->result.names, u"《宪法》●《刑法》●《刑事诉讼法》●《民法典》●"_qs);
  EXPECT_GT(q->view.size(), 100000);
}

}  // namespace
}  // namespace mj
