// The four real statutes of the shared test data, in the program's law-text
// layout, against the same statutes in Markdown.

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QMap>
#include <QRegularExpression>

#include "law/citations.h"
#include "law/law_extract.h"
#include "law/law_files.h"
#include "law/law_text.h"
#include "law/numerals.h"
#include "platform/text_toolkit.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

struct RealLaw {
  QString name;    // the title, also the file name
  QStringList md;  // Markdown files under laws-md, in order
  int articles;    // LastItemNum of the whole law
};

const QList<RealLaw>& RealLaws() {
  static const QList<RealLaw> laws = {
      {u"宪法"_qs, {u"宪法.md"_qs}, 143},
      {u"刑法"_qs, {u"刑法.md"_qs}, 452},
      {u"刑事诉讼法"_qs, {u"刑事诉讼法.md"_qs}, 308},
      {u"民法典"_qs,
       {u"民法典/总则.md"_qs, u"民法典/物权编.md"_qs, u"民法典/合同编.md"_qs, u"民法典/人格权编.md"_qs,
        u"民法典/婚姻家庭编.md"_qs, u"民法典/继承编.md"_qs, u"民法典/侵权责任编.md"_qs, u"民法典/附则.md"_qs},
       1260},
  };
  return laws;
}

// A Chinese numeral in its textbook form (一千零一十 as well as 一千零十).
int TextbookNumber(const QString& s) {
  static const QString digits = u"零一二三四五六七八九"_qs;
  int total = 0, section = 0, digit = 0;
  for (const QChar c : s) {
    const qsizetype d = digits.indexOf(c);
    if (d >= 0) {
      digit = static_cast<int>(d);
    } else if (c == u'〇') {
      digit = 0;
    } else {
      const int unit = c == u'十' ? 10 : c == u'百' ? 100 : c == u'千' ? 1000 : c == u'万' ? 10000 : 0;
      if (unit == 10000) {
        total += (section + digit) * 10000;
        section = 0;
      } else if (unit > 0) {
        section += (digit == 0 ? 1 : digit) * unit;
      }
      digit = 0;
    }
  }
  return total + section + digit;
}

struct MdArticle {
  int number = 0;
  QString suffix;   // 之一 ... for the inserted articles
  QString heading;  // 第...条 (with its suffix)
  QStringList lines;
};

// The articles of a law's Markdown: a heading line 第...条 starts one, any
// Markdown heading (#) ends it.
QList<MdArticle> ReadMdArticles(const QString& dir, const QStringList& files) {
  static const QRegularExpression head(
      u"^第([零〇一二三四五六七八九十百千万]+)(?:\\s*条(之[一二三四五六七八九十]+)?(?:\\s|$)|\\s+条(之[一二三四五六七八九十]+)?)"_qs);
  QList<MdArticle> out;
  for (const QString& f : files) {
    QFile file(dir + u"/"_qs + f);
    if (!file.open(QIODevice::ReadOnly)) continue;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    bool body = false;
    bool inArticle = false;
    for (QString line : lines) {
      line = line.trimmed();
      if (!body) {
        body = line == u"<!-- INFO END -->"_qs;
        continue;
      }
      if (line.startsWith(u'#')) {
        inArticle = false;
        continue;
      }
      if (line.isEmpty()) continue;
      const QRegularExpressionMatch m = head.match(line);
      if (m.hasMatch()) {
        MdArticle a;
        a.number = TextbookNumber(m.captured(1));
        a.suffix = m.captured(2) + m.captured(3);
        a.heading = line.left(m.capturedLength(0));
        a.lines.append(line);
        out.append(a);
        inArticle = true;
      } else if (inArticle) {
        out.last().lines.append(line);
      }
    }
  }
  return out;
}

// Text without blanks and line breaks, for comparing the two layouts.
QString Squeezed(const QString& s) {
  QString r;
  for (const QChar c : s)
    if (c != u' ' && c != u'　' && c != u'\r' && c != u'\n' && c != u'\t') r += c;
  return r;
}

QString RealDir() {
  const QString d = test::RealDataDir();
  if (d.isEmpty() || !QDir(d + u"/lawtxt"_qs).exists() || !QDir(d + u"/laws-md"_qs).exists()) return QString();
  return d;
}

QString ReadRealLaw(const QString& name) { return ReadLawFile(RealDir() + u"/lawtxt/"_qs + name + u".mmd"_qs); }

TEST(RealLaws, TypeAndArticleCount) {
  if (RealDir().isEmpty()) GTEST_SKIP() << "no real data";
  for (const RealLaw& law : RealLaws()) {
    const QString text = ReadRealLaw(law.name);
    ASSERT_FALSE(text.isEmpty()) << law.name.toStdString();
    EXPECT_EQ(GetLawTextType(text), 1) << law.name.toStdString();
    EXPECT_EQ(LastItemNum(text), law.articles) << law.name.toStdString();
  }
}

// The lines of a Markdown file between two heading lines.
QStringList MdSection(const QString& file, const QString& from, const QString& to) {
  QFile f(file);
  if (!f.open(QIODevice::ReadOnly)) return {};
  QStringList out;
  bool in = false;
  for (QString line : QString::fromUtf8(f.readAll()).split(u'\n')) {
    line = line.trimmed();
    if (line == from)
      in = true;
    else if (line == to)
      break;
    else if (in && !line.isEmpty())
      out.append(line);
  }
  return out;
}

// 刑法's inserted articles (第十七条之一 ...) stand between two whole articles.
// When the first line of one ends in 。 the cut of the article before it keeps
// it, so that article prints with its inserted articles; when it ends
// otherwise (a list follows), it stops the article before it.
const QList<int> kXingfaAttached = {17,  37,  120, 135, 139, 162, 175, 185, 205, 210, 219, 224, 234, 236, 244, 253, 260,
                                    262, 276, 280, 284, 291, 299, 307, 308, 334, 336, 342, 344, 355, 388, 390, 399};
const QList<int> kXingfaStopped = {133, 134, 142, 169, 177, 286, 287, 293, 408};

// Lines between the last article of a part and the next article that the
// article cut does not take for headings: the indented 附则 (only a 附则 at
// the start of a line is cut), the name of a 编 and its dates of adoption, and
// 第N分编 (分 is not among the heading words). They run on into the article.
struct RunOn {
  QString law;
  int article;
  QString tail;
};
const QList<RunOn>& HeadingRunOns() {
  static const QString adopted = u"2020年5月28日第十三届全国人民代表大会第三次会议通过"_qs;
  static const QString inForce = u"2021年1月1日施行"_qs;
  static const QList<RunOn> r = {
      {u"刑法"_qs, 451, u"附则"_qs},
      {u"民法典"_qs, 204, u"物权编"_qs + adopted + inForce + u"第一分编通则"_qs},
      {u"民法典"_qs, 239, u"第二分编所有权"_qs},
      {u"民法典"_qs, 322, u"第三分编用益物权"_qs},
      {u"民法典"_qs, 385, u"第四分编担保物权"_qs},
      {u"民法典"_qs, 457, u"第五分编占有"_qs},
      {u"民法典"_qs, 462, u"合同编"_qs + adopted + inForce + u"第一分编通则"_qs},
      {u"民法典"_qs, 594, u"第二分编典型合同"_qs},
      {u"民法典"_qs, 978, u"第三分编准合同"_qs},
      {u"民法典"_qs, 988, u"人格权编"_qs + adopted + inForce},
      {u"民法典"_qs, 1039, u"婚姻家庭编"_qs + adopted},
      {u"民法典"_qs, 1118, u"继承编"_qs + adopted + inForce},
      {u"民法典"_qs, 1163, u"侵权责任编"_qs + adopted + inForce},
      {u"民法典"_qs, 1258, u"附则"_qs + adopted + inForce},
  };
  return r;
}

class RealLawArticles : public ::testing::TestWithParam<int> {};

TEST_P(RealLawArticles, EveryArticleMatchesTheMarkdown) {
  if (RealDir().isEmpty()) GTEST_SKIP() << "no real data";
  const RealLaw& law = RealLaws()[GetParam()];
  const QString text = ReadRealLaw(law.name);
  const QString table = GetLongDaXie(static_cast<qint16>(law.articles));
  const QList<MdArticle> md = ReadMdArticles(RealDir() + u"/laws-md"_qs, law.md);

  // The Markdown text of each whole article, and of its inserted articles.
  QMap<int, QString> plain;
  QMap<int, QString> withInserted;
  QList<int> attached;
  QList<int> stopped;  // followed by an inserted article that does not end in 。
  for (qsizetype k = 0; k < md.size(); ++k) {
    if (!md[k].suffix.isEmpty()) continue;
    const int n = md[k].number;
    if (k + 1 < md.size() && !md[k + 1].suffix.isEmpty() && !md[k + 1].lines.first().endsWith(u"。"_qs))
      stopped.append(n);
    plain[n] = Squeezed(md[k].lines.join(QString()));
    QString t = plain[n];
    for (qsizetype j = k + 1; j < md.size() && !md[j].suffix.isEmpty() && md[j].lines.first().endsWith(u"。"_qs); ++j)
      t += Squeezed(md[j].lines.join(QString()));
    if (t != plain[n]) attached.append(n);
    withInserted[n] = t;
  }
  ASSERT_EQ(plain.size(), law.articles);
  ASSERT_EQ(plain.firstKey(), 1);
  ASSERT_EQ(plain.lastKey(), law.articles);

  QMap<int, QString> expected = plain;
  QMap<int, QString> reason;
  if (law.name == u"刑法"_qs) {
    EXPECT_EQ(attached, kXingfaAttached);
    for (int n : kXingfaAttached) {
      expected[n] = withInserted[n];
      reason[n] = u"inserted articles ending in 。 stay attached"_qs;
    }
    // These print alone: the expected text stays the plain article.
    EXPECT_EQ(stopped, kXingfaStopped);
    // Only the last appendix line is cut, so the first appendix stays in the
    // last article.
    expected[452] =
        plain[452] + u"附件一"_qs +
        Squeezed(MdSection(RealDir() + u"/laws-md/刑法.md"_qs, u"## 附件一"_qs, u"## 附件二"_qs).join(QString()));
    reason[452] = u"the first appendix stays"_qs;
  }
  if (law.name != u"刑法"_qs) {
    EXPECT_TRUE(stopped.isEmpty());
  }
  // 刑事诉讼法's Markdown has 附则 as a plain paragraph inside article 307, so
  // the 附则 line that runs on into 307 is in both texts.
  if (law.name == u"民法典"_qs) {
    // 1010 to 1019 are written 一千零一十 ...: not the numerals DaXie prints,
    // so their headings are never found, and 1009 runs on until the next
    // heading line that does not end in 。, the chapter line before 1012.
    expected[1009] = plain[1009] + plain[1010] + plain[1011];
    reason[1009] = u"runs on over 1010 and 1011"_qs;
    for (int n = 1010; n <= 1019; ++n) {
      expected[n] = QString();
      reason[n] = u"heading in the textbook form"_qs;
    }
  }
  for (const RunOn& r : HeadingRunOns()) {
    if (r.law != law.name) continue;
    expected[r.article] = plain[r.article] + r.tail;
    reason[r.article] = u"heading lines run on"_qs;
  }

  const LawIndex index(text);
  int differences = 0;
  for (int n = 1; n <= law.articles; ++n) {
    const QString nums = CStr(n) + u"．"_qs;
    const QString got = GetPutTxt2Text(text, table, nums, &index);
    EXPECT_EQ(Squeezed(got), expected[n]) << law.name.toStdString() << " " << n << " " << reason.value(n).toStdString();
    if (expected[n] != plain[n]) ++differences;
    // Without the index the same text comes out.
    if (n % 7 == 0) {
      EXPECT_EQ(GetPutTxt2Text(text, table, nums), got) << n;
    }
  }
  EXPECT_EQ(differences, reason.size());
}

INSTANTIATE_TEST_SUITE_P(Laws, RealLawArticles, ::testing::Range(0, 4), [](const auto& info) {
  return std::string(info.param == 0   ? "Xianfa"
                     : info.param == 1 ? "Xingfa"
                     : info.param == 2 ? "Xingsufa"
                                       : "Minfadian");
});

class RealLawCitations : public ::testing::Test {
 protected:
  void SetUp() override {
    if (RealDir().isEmpty()) GTEST_SKIP() << "no real data";
    ClearLawCache();
    ASSERT_TRUE(test::CopyTree(RealDir() + u"/lawtxt"_qs, te.root() + u"/lawtxt"_qs));
  }
  QString article(const QString& name, int n) {
    const LawTextPtr law = LoadLawByName(te.env, name);
    return GetPutTxt2Text(law->text(), law->numeralTable(), CStr(n) + u"．"_qs);
  }
  QString block(const QString& name, int n) { return u"《"_qs + name + u"》\r\n"_qs + article(name, n) + u"\r\n"_qs; }
  QString lawPath(const QString& name) const { return te.root() + u"/lawtxt/"_qs + name + u".mmd"_qs; }
  test::TestEnv te;
};

TEST_F(RealLawCitations, RangesAndSeveralLaws) {
  const QString printed = GetLawTxtForDaAn(
      te.env, u"答案：C。参见《刑法》第20条、第23-25条《民法典》第1260条、第1条《刑事诉讼法》第308条"_qs);
  EXPECT_EQ(printed, block(u"刑法"_qs, 20) + block(u"刑法"_qs, 23) + block(u"刑法"_qs, 24) + block(u"刑法"_qs, 25) +
                         block(u"民法典"_qs, 1260) + block(u"民法典"_qs, 1) + block(u"刑事诉讼法"_qs, 308));
  EXPECT_TRUE(printed.startsWith(u"《刑法》\r\n　　第二十条　为了使国家、公共利益"_qs));
  EXPECT_TRUE(printed.contains(u"《民法典》\r\n　　第一千二百六十条　本法自2021年1月1日起施行。"_qs));
}

TEST_F(RealLawCitations, RepeatedArticlesAndTheLastOne) {
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"参见《宪法》第143条、第143条"_qs),
            u"《宪法》\r\n　　第一百四十三条　中华人民共和国首都是北京。\r\n\r\n"_qs.repeated(2));
}

TEST_F(RealLawCitations, AnArticleAboveTheLast) {
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"参见《刑法》第500条"_qs),
            u"《刑法》\r\n法律文件"_qs + lawPath(u"刑法"_qs) + u"中共452条，没有《刑法》第500条\r\n"_qs);
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"参见《宪法》第144条"_qs),
            u"《宪法》\r\n法律文件"_qs + lawPath(u"宪法"_qs) + u"中共143条，没有《宪法》第144条\r\n"_qs);
}

TEST_F(RealLawCitations, ATextbookNumeralArticle) {
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"参见《民法典》第1010条"_qs),
            u"《民法典》\r\n法律文件"_qs + lawPath(u"民法典"_qs) + u"中共1260条，没有《民法典》第1010条\r\n"_qs);
}

TEST_F(RealLawCitations, AMissingLawAndATitleWithAPath) {
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"参见《民法通则》第3条《刑法》第1条"_qs),
            u"《民法通则》\r\n法律文件"_qs + lawPath(u"民法通则"_qs) + u"不存在。\r\n"_qs + block(u"刑法"_qs, 1));
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"参见《../lawtxt/刑法》第1条"_qs),
            u"《../lawtxt/刑法》\r\n法律文件《../lawtxt/刑法》不存在。\r\n"_qs);
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"参见《lawtxt/刑法》第1条"_qs),
            u"《lawtxt/刑法》\r\n法律文件《lawtxt/刑法》不存在。\r\n"_qs);
}

TEST_F(RealLawCitations, LawTypeOfNameOnRealLaws) {
  for (const RealLaw& law : RealLaws()) EXPECT_EQ(LawTypeOfName(te.env, u"《"_qs + law.name + u"》"_qs), 1);
}

// The search of a text in one law, against the plain per-article search.
TEST(RealLaws, TextSearchInOneLaw) {
  if (RealDir().isEmpty()) GTEST_SKIP() << "no real data";
  const QString xianfa = ReadRealLaw(u"宪法"_qs);
  EXPECT_EQ(GetMyLongDaAn(xianfa, GetLongDaXie(143), u"首都是北京"_qs), u"143．"_qs);
  EXPECT_EQ(GetMyLongDaAn(xianfa, GetLongDaXie(143), u"国歌"_qs), u"141．"_qs);
  const QString minfadian = ReadRealLaw(u"民法典"_qs);
  // 1010's heading is never found, so its text belongs to no article.
  EXPECT_EQ(GetMyLongDaAn(minfadian, GetLongDaXie(1260), u"性骚扰"_qs), QString());
  const QString found = GetMyLongDaAn(minfadian, GetLongDaXie(1260), u"居住权"_qs);
  EXPECT_TRUE(found.startsWith(u"366．367．"_qs)) << found.toStdString();
  for (const RealLaw& law : RealLaws()) {
    const QString text = ReadRealLaw(law.name);
    const QString table = GetLongDaXie(static_cast<qint16>(law.articles));
    for (const QString& f : {u"罚金"_qs, u"人民法院"_qs, u"第一条"_qs, u"附件"_qs}) {
      QString plain;
      for (int i = 1; i <= law.articles; ++i) {
        const QString start = u"\r\n　　第"_qs + NumeralOfSlot(table, i) + u"条"_qs;
        if ((start + TextBetween(text, start, u"\r\n　　第"_qs)).contains(f)) plain += CStr(i) + u"．"_qs;
      }
      EXPECT_EQ(GetMyLongDaAn(text, table, f), plain) << law.name.toStdString() << " " << f.toStdString();
    }
  }
}

}  // namespace
}  // namespace mj
