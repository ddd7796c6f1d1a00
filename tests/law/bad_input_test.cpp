// Input that is wrong or oversized: empty files, texts without articles,
// random bytes, a law of 10 MB, very long citations, unbalanced brackets.
// Nothing may crash or hang, and the results are those the rules give.

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>

#include "law/citations.h"
#include "law/law_extract.h"
#include "law/law_files.h"
#include "law/law_text.h"
#include "law/numerals.h"
#include "law_samples.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

class BadInput : public ::testing::Test {
 protected:
  void SetUp() override {
    ClearLawCache();
    te.writeGbk(u"\\lawtxt\\示例法.mmd"_qs, test::SampleLaw1());
  }
  QString lawPath(const QString& name) const { return te.root() + u"/lawtxt/"_qs + name + u".mmd"_qs; }
  test::TestEnv te;
};

TEST_F(BadInput, AnEmptyLawFile) {
  te.writeGbk(u"\\lawtxt\\空法.mmd"_qs, QString());
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"参见《空法》第1条"_qs),
            u"《空法》\r\n法律文件"_qs + lawPath(u"空法"_qs) + u"中共0条，没有《空法》第1条\r\n"_qs);
  EXPECT_EQ(LawTypeOfName(te.env, u"《空法》第1条"_qs), 0);
}

TEST_F(BadInput, ALawWithoutArticleHeadings) {
  te.writeGbk(u"\\lawtxt\\散文.mmd"_qs, u"散文\r\n　　这是一段话，提到第二条。\r\n　　又一段。"_qs);
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"参见《散文》第2条"_qs),
            u"《散文》\r\n法律文件"_qs + lawPath(u"散文"_qs) + u"中共0条，没有《散文》第2条\r\n"_qs);
  const QString text = LoadLawByName(te.env, u"散文"_qs)->text();
  EXPECT_EQ(GetMyLongDaAn(text, GetLongDaXie(10), u"一段"_qs), QString());
  EXPECT_EQ(GetPutTxt2Text(text, GetLongDaXie(10), u"1．"_qs), QString());
}

TEST_F(BadInput, AFileOfRandomBytes) {
  QRandomGenerator rng(4711);
  QByteArray bytes(200000, '\0');
  for (char& b : bytes) b = static_cast<char>(rng.bounded(256));
  {
    QFile f(te.path(u"\\lawtxt\\乱码.mmd"_qs));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
  }
  const LawTextPtr law = LoadLawByName(te.env, u"乱码"_qs);
  ASSERT_TRUE(law);
  EXPECT_EQ(law->type(), 0);
  EXPECT_EQ(law->lastItemNum(), 0);
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"参见《乱码》第1条、第2条"_qs),
            u"《乱码》\r\n法律文件"_qs + lawPath(u"乱码"_qs) + u"中共0条，没有《乱码》第1条\r\n"_qs +
                u"《乱码》\r\n法律文件"_qs + lawPath(u"乱码"_qs) + u"中共0条，没有《乱码》第2条\r\n"_qs);
  // Every reader of law text gets through it.
  const QString& t = law->text();
  EXPECT_EQ(GetMyLongDaAn(t, GetLongDaXie(5), u"a"_qs), QString());
  for (qsizetype pos = 0; pos < t.size(); pos += 997) {
    EXPECT_LT(ItemNumAtCaret(t, pos, 1), 1);
    EXPECT_GE(LineEndAt(t, pos), pos - 1);  // on a CR the line ends before it
  }
  EXPECT_EQ(CutItemTail(t, 1).isEmpty(), false);
  (void)GetLawNamesIn(QString(), t);
  (void)LongDaAn(t);
  (void)NormalizeDaAnLine(t);
  (void)StripKuanXiang(t);
}

// Texts made of the characters the rules look at, in random order.
TEST_F(BadInput, RandomTextsOfHeadingCharacters) {
  const QString alphabet = u"第条一二十百千万零亿、．　 \r\n《》0123456789-附件则章节编（）。甲,"_qs;
  QRandomGenerator rng(99);
  for (int round = 0; round < 400; ++round) {
    QString t;
    const int n = rng.bounded(0, 300);
    for (int k = 0; k < n; ++k) t += alphabet.at(rng.bounded(alphabet.size()));
    const int type = GetLawTextType(t);
    ASSERT_GE(type, 0);
    ASSERT_LE(type, 3);
    (void)FirstHeadLine(t);
    const int last = LastItemNum(t);
    ASSERT_GE(last, -1);
    const QString table = GetLongDaXie(static_cast<qint16>(std::max(last, 0) + 3));
    (void)GetPutTxt2Text(t, table, u"1．2．3．"_qs);
    (void)GetMyLongDaAn(t, table, u"甲"_qs);
    for (qsizetype pos = -2; pos <= t.size() + 2; ++pos) {
      (void)ItemNumAtCaret(t, pos, 1 + round % 3);
      (void)LineEndAt(t, pos);
    }
    for (int k = 0; k <= 4; ++k) {
      (void)LineKind(t, k);
      (void)CutItemTail(t, k);
    }
    (void)MissingNumbers(t, 1, 20);
    (void)GetLawNamesIn(u"《甲》"_qs, t);
    (void)HasPlainChar(t);
    (void)LongDaAn(t);
    (void)LongDaAn(t, CitationSep::LawQuery);
    (void)LongDaAnForEdit(t);
    (void)NormalizeDaAnLine(t);
    (void)CleanItemList(t);
    (void)StripKuanXiang(t);
    (void)GetLawTxtForDaAn(te.env, t);
  }
}

// A type 1 law of 2000 articles, about 10 MB on disk.
QString BigLaw() {
  QString t = u"大法"_qs;
  const QString filler = QString(2600, u'文');
  for (int i = 1; i <= 2000; ++i) {
    t += u"\r\n　　第"_qs + DaXie(i) + u"条 第"_qs + CStr(i) + u"号"_qs + filler + u"。"_qs;
    if (i % 100 == 0) t += u"\r\n　　第"_qs + DaXie(i / 100 + 1) + u"章 章名"_qs;
  }
  return t;
}

TEST_F(BadInput, ALawOfTenMegabytes) {
  const QString big = BigLaw();
  te.writeGbk(u"\\lawtxt\\大法.mmd"_qs, big);
  EXPECT_GE(QFile(te.path(u"\\lawtxt\\大法.mmd"_qs)).size(), 10 * 1000 * 1000);
  const LawTextPtr law = LoadLawByName(te.env, u"大法"_qs);
  ASSERT_TRUE(law);
  EXPECT_EQ(law->type(), 1);
  EXPECT_EQ(law->lastItemNum(), 2000);
  const QString article = [] { return u"　　第一千九百九十九条　第1999号"_qs + QString(2600, u'文') + u"。\r\n"_qs; }();
  EXPECT_EQ(GetPutTxt2Text(big, GetLongDaXie(2000), u"1999．"_qs), article);
  const QString printed = GetLawTxtForDaAn(te.env, u"参见《大法》第1999条、第2001条"_qs);
  EXPECT_EQ(printed, u"《大法》\r\n"_qs + article + u"\r\n《大法》\r\n法律文件"_qs + lawPath(u"大法"_qs) +
                         u"中共2000条，没有《大法》第2001条\r\n"_qs);
  EXPECT_EQ(GetMyLongDaAn(big, GetLongDaXie(2000), u"第1500号"_qs), u"1500．"_qs);
}

TEST_F(BadInput, CitationsOfAThousandEntries) {
  QString citation = u"参见《示例法》"_qs;
  QString flat;
  for (int i = 0; i < 1000; ++i) {
    const int n = 1 + i % 5;
    citation += u"第"_qs + CStr(n) + u"条、"_qs;
    flat += u"《示例法》"_qs + CStr(n) + u"．"_qs;
  }
  EXPECT_EQ(LongDaAn(citation), flat);
  const QString printed = GetLawTxtForDaAn(te.env, citation);
  EXPECT_EQ(printed.count(u"《示例法》\r\n"_qs), 1000);
  EXPECT_EQ(printed.count(u"中共4条，没有《示例法》第5条"_qs), 200);
  EXPECT_EQ(printed.count(u"　　第四条　本法自公布之日起施行。\r\n"_qs), 200);
}

TEST_F(BadInput, AThousandRanges) {
  QString citation = u"参见《示例法》"_qs;
  for (int i = 0; i < 1000; ++i) citation += u"第1-4条、"_qs;
  const QString flat = LongDaAn(citation);
  EXPECT_EQ(flat, QString(u"《示例法》1．《示例法》2．《示例法》3．《示例法》4．"_qs).repeated(1000));
  const QString query = LongDaAn(QString(u"1-4,"_qs).repeated(1000), CitationSep::LawQuery);
  EXPECT_EQ(query, QString(u"1．2．3．4．"_qs).repeated(1000));
}

TEST_F(BadInput, AHugeRangeIsCut) {
  // At most 99999 numbers are put between the two ends of a range.
  const QString flat = LongDaAn(u"1-99999999"_qs, CitationSep::LawQuery);
  EXPECT_EQ(flat.count(u"．"_qs), 100001);
  EXPECT_TRUE(flat.startsWith(u"1．2．3．"_qs));
  EXPECT_TRUE(flat.endsWith(u"99999．100000．99999999．"_qs));
}

TEST_F(BadInput, TheRangesOfOneCitationShareTheCap) {
  // Ten ranges 1-99999: their ends, and 99999 numbers between them in all.
  QString citation = u"参见《示例法》"_qs;
  for (int i = 0; i < 10; ++i) citation += u"第1-99999条、"_qs;
  const QString flat = LongDaAn(citation);
  EXPECT_EQ(flat.count(u"．"_qs), 20 + 99999);
  EXPECT_TRUE(flat.startsWith(u"《示例法》1．《示例法》2．"_qs));
  EXPECT_TRUE(flat.endsWith(u"《示例法》99999．《示例法》1．《示例法》99999．"_qs)) << flat.right(60).toStdString();
  const QString query = LongDaAn(QString(u"1-99999,"_qs).repeated(10), CitationSep::LawQuery);
  EXPECT_EQ(query.count(u"．"_qs), 20 + 99999);
}

TEST_F(BadInput, ALongTitleTimesAWholeRangeStaysBounded) {
  const QString title = u"《"_qs + QString(3000, u'甲') + u"》"_qs;
  const QString flat = LongDaAnForEdit(u"参见"_qs + title + u"第1-99999条"_qs);
  EXPECT_LE(flat.size(), 4 * 1024 * 1024 + title.size() + 8);
  EXPECT_TRUE(flat.startsWith(title + u"1．"_qs + title + u"2．"_qs));
  // Whole entries only.
  EXPECT_TRUE(flat.endsWith(u"．"_qs));
  EXPECT_EQ(flat.count(title), flat.count(u"．"_qs));
}

TEST_F(BadInput, AMissingLawFileIsSaidOnce) {
  const QString missing = u"《无此法》\r\n法律文件"_qs + lawPath(u"无此法"_qs) + u"不存在。\r\n"_qs;
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"参见《无此法》第1-99999条、第1-99999条、第1-99999条"_qs), missing);
  // Among other laws: at its first article, and the others as ever.
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"参见《无此法》第1条、《示例法》第1条、《无此法》第2条"_qs),
            missing + u"《示例法》\r\n　　第一条　为了示例，制定本法。\r\n\r\n"_qs);
}

TEST_F(BadInput, UnbalancedTitleMarks) {
  // An open title swallows the rest, numbers included.
  EXPECT_EQ(LongDaAn(u"参见《示例法第1条"_qs), QString());
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"参见《示例法第1条"_qs), QString());
  // A closing mark without an opening one leaves the number without a law.
  EXPECT_EQ(LongDaAn(u"参见示例法》第1条"_qs), u"1．"_qs);
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"参见示例法》第1条"_qs),
            u"\r\n法律文件"_qs + lawPath(QString()) + u"不存在。\r\n"_qs);
  // Doubled marks.
  EXPECT_EQ(LongDaAn(u"《《示例法》》第1条"_qs), u"《示例法》1．"_qs);
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"《《示例法》》第1条"_qs),
            u"《示例法》\r\n　　第一条　为了示例，制定本法。\r\n\r\n"_qs);
  // Every 《 gets a separator in front, so an unclosed one is a token of its own.
  EXPECT_EQ(LongDaAn(u"《甲《示例法》第1条"_qs), u"《示例法》1．"_qs);
  EXPECT_EQ(LongDaAnForEdit(u"《甲《示例法》第1条"_qs), u"《甲《示例法》1．"_qs);
  EXPECT_EQ(GetLawTxtForDaAn(te.env, u"《甲《示例法》第1条"_qs),
            u"《示例法》\r\n　　第一条　为了示例，制定本法。\r\n\r\n"_qs);
  EXPECT_EQ(GetLawNamesIn(QString(), u"《甲《乙》丙》"_qs), u"《甲《乙》"_qs);
  EXPECT_EQ(NormalizeDaAnLine(u"A参见》第1条《示例法"_qs), u"答案：A参见"_qs);
  EXPECT_EQ(StripKuanXiang(u"》第1条《"_qs), u"》第1条、《"_qs);
}

}  // namespace
}  // namespace mj
