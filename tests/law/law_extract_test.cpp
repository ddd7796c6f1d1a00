#include "law/law_extract.h"

#include <gtest/gtest.h>

#include <QRandomGenerator>

#include "law/citations.h"
#include "law/law_text.h"
#include "law/numerals.h"
#include "law_samples.h"
#include "platform/text_toolkit.h"
#include "platform/vbtext.h"
#include "support/printers.h"

namespace mj {
namespace {

using test::JoinCrLf;

// ---- GetPutTxt2Text ----

TEST(GetPutTxt2Text, OneArticleOfEachPlace) {
  const QString law = test::SampleLaw1();
  const QString table = GetLongDaXie(4);
  EXPECT_EQ(GetPutTxt2Text(law, table, u"1．"_qs), u"　　第一条　为了示例，制定本法。\r\n"_qs);
  // The chapter line between two articles is cut off.
  EXPECT_EQ(GetPutTxt2Text(law, table, u"2．"_qs), u"　　第二条　本法适用于示例。\r\n　　依照第一条规定处理。\r\n"_qs);
  EXPECT_EQ(GetPutTxt2Text(law, table, u"3．"_qs),
            u"　　第三条　下列行为是示例：\r\n　　（一）甲；\r\n　　（二）乙。\r\n"_qs);
}

TEST(GetPutTxt2Text, TheLastArticleIsFoundWithoutAnEndMarker) {
  EXPECT_EQ(GetPutTxt2Text(test::SampleLaw1(), GetLongDaXie(4), u"4．"_qs),
            u"　　第四条　本法自公布之日起施行。\r\n"_qs);
}

TEST(GetPutTxt2Text, ListOrderAndNumbersOutsideTheTable) {
  const QString law = test::SampleLaw1();
  const QString table = GetLongDaXie(4);
  EXPECT_EQ(GetPutTxt2Text(law, table, u"4．1．"_qs),
            u"　　第四条　本法自公布之日起施行。\r\n　　第一条　为了示例，制定本法。\r\n"_qs);
  EXPECT_EQ(GetPutTxt2Text(law, table, u"1．9．0．-1．"_qs), u"　　第一条　为了示例，制定本法。\r\n"_qs);
  EXPECT_EQ(GetPutTxt2Text(law, table, u"5．"_qs), QString());
  EXPECT_EQ(GetPutTxt2Text(law, GetLongDaXie(2), u"3．"_qs), QString());
  EXPECT_EQ(GetPutTxt2Text(law, table, u"1．1．"_qs),
            u"　　第一条　为了示例，制定本法。\r\n　　第一条　为了示例，制定本法。\r\n"_qs);
  // A number without its point is no entry.
  EXPECT_EQ(GetPutTxt2Text(law, table, u"1"_qs), QString());
}

TEST(GetPutTxt2Text, AMissingArticleInsideTheTableEndsTheWholeCall) {
  // Article 5 is within the table but not in the text: the body is a bare
  // line end, and the call gives nothing at all, also for article 1 before it.
  EXPECT_EQ(GetPutTxt2Text(test::SampleLaw1(), GetLongDaXie(10), u"1．5．2．"_qs), QString());
}

TEST(GetPutTxt2Text, TypesTwoAndThree) {
  const QString t2 = test::SampleLaw2();
  const QString table = GetLongDaXie(3);
  EXPECT_EQ(GetPutTxt2Text(t2, table, u"1．"_qs), u"　　一、　总则内容。\r\n"_qs);
  EXPECT_EQ(GetPutTxt2Text(t2, table, u"3．"_qs), u"　　三、　第三项内容，\r\n　　接续的一行。\r\n"_qs);
  const QString t3 = test::SampleLaw3();
  EXPECT_EQ(GetPutTxt2Text(t3, table, u"2．"_qs), u"　　2．　第二项。\r\n"_qs);
  EXPECT_EQ(GetPutTxt2Text(t3, table, u"3．1．"_qs), u"　　3．　第三项。\r\n　　1．　第一项。\r\n"_qs);
}

TEST(GetPutTxt2Text, AMissingTypeThreeArticlePrintsItsMarker) {
  // Type 3 gets no line end added, so an absent article does not end the call.
  EXPECT_EQ(GetPutTxt2Text(test::SampleLaw3(), GetLongDaXie(5), u"5．2．"_qs),
            u"　　5．　\r\n　　2．　第二项。\r\n"_qs);
}

TEST(GetPutTxt2Text, TypeZeroGivesNothing) {
  EXPECT_EQ(GetPutTxt2Text(u"没有条文"_qs, GetLongDaXie(4), u"1．"_qs), QString());
  EXPECT_EQ(GetPutTxt2Text(QString(), GetLongDaXie(4), u"1．"_qs), QString());
}

TEST(GetPutTxt2Text, AppendixLinesAreCutOff) {
  const QString indented = test::SampleLaw1() + u"\r\n　　附件\r\n　　一、甲。"_qs;
  // Only the "　附件" rule applies to an indented line: one blank stays.
  EXPECT_EQ(GetPutTxt2Text(indented, GetLongDaXie(4), u"4．"_qs), u"　　第四条　本法自公布之日起施行。\r\n　\r\n"_qs);
  const QString flush = test::SampleLaw1() + u"\r\n附件\r\n一、甲。"_qs;
  EXPECT_EQ(GetPutTxt2Text(flush, GetLongDaXie(4), u"4．"_qs), u"　　第四条　本法自公布之日起施行。\r\n"_qs);
}

TEST(GetPutTxt2Text, DoubledLineEndsBecomeOne) {
  const QString law = JoinCrLf({u"法"_qs, u"　　第一条 甲"_qs, u""_qs, u"　　乙。"_qs, u"　　第二条 丙。"_qs});
  EXPECT_EQ(GetPutTxt2Text(law, GetLongDaXie(2), u"1．"_qs), u"　　第一条　甲\r\n　　乙。\r\n"_qs);
}

TEST(GetPutTxt2Text, BlanksAroundTheBodyAreTrimmed) {
  const QString law = JoinCrLf({u"法"_qs, u"　　第一条      甲。   "_qs, u"　　第二条 乙。"_qs});
  // Blanks before the line end are inside the text and stay.
  EXPECT_EQ(GetPutTxt2Text(law, GetLongDaXie(2), u"1．"_qs), u"　　第一条　甲。   \r\n"_qs);
}

TEST(GetPutTxt2Text, AnIndexGivesTheSameText) {
  const QString law = test::SampleLaw1();
  const LawIndex index(law);
  for (const QString& nums : {u"1．"_qs, u"2．"_qs, u"3．"_qs, u"4．"_qs, u"4．1．3．"_qs, u"1．5．"_qs})
    EXPECT_EQ(GetPutTxt2Text(law, GetLongDaXie(4), nums, &index), GetPutTxt2Text(law, GetLongDaXie(4), nums))
        << nums.toStdString();
}

TEST(GetPutTxt2Text, WhatTheArticleBoxAsksFor) {
  const QString law = test::SampleLaw1();
  const QString table = GetLongDaXie(4);
  EXPECT_EQ(GetPutTxt2Text(law, table, LongDaAn(u"3-4,1"_qs, CitationSep::LawQuery)),
            GetPutTxt2Text(law, table, u"3．"_qs) + GetPutTxt2Text(law, table, u"4．"_qs) +
                GetPutTxt2Text(law, table, u"1．"_qs));
  EXPECT_EQ(GetPutTxt2Text(law, table, LongDaAn(u"4-3"_qs, CitationSep::LawQuery)),
            GetPutTxt2Text(law, table, u"4．3．"_qs));
  EXPECT_EQ(GetPutTxt2Text(law, table, LongDaAn(u"7,9"_qs, CitationSep::LawQuery)), QString());
}

// ---- GetMyLongDaAn ----

TEST(GetMyLongDaAn, ArticlesContainingTheText) {
  const QString law = test::SampleLaw1();
  const QString table = GetLongDaXie(4);
  EXPECT_EQ(GetMyLongDaAn(law, table, u"示例"_qs), u"1．2．3．"_qs);
  EXPECT_EQ(GetMyLongDaAn(law, table, u"  施行 "_qs), u"4．"_qs);
  EXPECT_EQ(GetMyLongDaAn(law, table, u"没有的字"_qs), QString());
}

TEST(GetMyLongDaAn, TheHeadingItselfIsPartOfTheArticle) {
  const QString law = test::SampleLaw1();
  EXPECT_EQ(GetMyLongDaAn(law, GetLongDaXie(4), u"第一条"_qs), u"1．2．"_qs);
  // Articles beyond the law are their heading alone.
  EXPECT_EQ(GetMyLongDaAn(law, GetLongDaXie(6), u"第五条"_qs), u"5．"_qs);
}

TEST(GetMyLongDaAn, ASearchForAnArticleHeading) {
  QStringList lines{u"十条法"_qs};
  for (int i = 1; i <= 12; ++i) lines.append(u"　　第"_qs + DaXie(i) + u"条 内容"_qs + CStr(i) + u"。"_qs);
  const QString law = JoinCrLf(lines);
  EXPECT_EQ(GetMyLongDaAn(law, GetLongDaXie(12), u"第十条"_qs), u"10．"_qs);
  EXPECT_EQ(GetMyLongDaAn(law, GetLongDaXie(12), u"内容1"_qs), u"1．10．11．12．"_qs);
}

TEST(GetMyLongDaAn, TypeOneArticlesEndAtAnyLineStartingWithDi) {
  // The chapter line 第二章 分则 ends article 2 and belongs to no article.
  EXPECT_EQ(GetMyLongDaAn(test::SampleLaw1(), GetLongDaXie(4), u"分则"_qs), QString());
}

TEST(GetMyLongDaAn, AnEmptySearchFindsEveryArticle) {
  EXPECT_EQ(GetMyLongDaAn(test::SampleLaw1(), GetLongDaXie(4), u"  "_qs), u"1．2．3．4．"_qs);
}

TEST(GetMyLongDaAn, TypesTwoAndThreeCountWithLastItemNum) {
  EXPECT_EQ(GetMyLongDaAn(test::SampleLaw2(), GetLongDaXie(3), u"内容"_qs), u"1．2．3．"_qs);
  // Type 2 markers still come from the table: beyond it they are empty, so
  // article 1 runs to the end and the others are not found.
  EXPECT_EQ(GetMyLongDaAn(test::SampleLaw2(), GetLongDaXie(1), u"内容"_qs), u"1．"_qs);
  EXPECT_EQ(GetMyLongDaAn(test::SampleLaw2(), GetLongDaXie(3), u"接续"_qs), u"3．"_qs);
  EXPECT_EQ(GetMyLongDaAn(test::SampleLaw3(), QString(), u"项"_qs), u"1．2．3．"_qs);
}

TEST(GetMyLongDaAn, TypesTwoAndThreeStopBeforeAnAppendix) {
  const QString law = test::SampleLaw3() + u"\r\n　　附件：丁"_qs;
  EXPECT_EQ(GetMyLongDaAn(law, QString(), u"丁"_qs), QString());
  EXPECT_EQ(GetMyLongDaAn(law, QString(), u"第三项"_qs), u"3．"_qs);
}

TEST(GetMyLongDaAn, TypeZeroGivesNothing) {
  EXPECT_EQ(GetMyLongDaAn(u"甲乙"_qs, GetLongDaXie(4), u"甲"_qs), QString());
}

// The search written plainly: one TextBetween per article.
QString PlainGetMyLongDaAn(const QString& law, const QString& table, const QString& findText) {
  const int type = GetLawTextType(law);
  if (type == 0) return QString();
  const qsizetype count = type == 1 ? Len(table) / 9 : LastItemNum(law);
  const QString ind = u"\r\n　　"_qs;
  QString found;
  for (qsizetype i = 1; i <= count; ++i) {
    QString article;
    if (type == 1) {
      const QString start = ind + u"第"_qs + NumeralOfSlot(table, i) + u"条"_qs;
      article = start + TextBetween(law, start, ind + u"第"_qs);
    } else {
      const QString start = type == 2 ? ind + NumeralOfSlot(table, i) + u"、"_qs : ind + CStr(i) + u"．"_qs;
      const QString end = type == 2 ? ind + NumeralOfSlot(table, i + 1) + u"、"_qs : ind + CStr(i + 1) + u"．"_qs;
      article = start + TextBetween(law, start, end);
      const qsizetype p = LastPos(article, u"附件"_qs);
      if (p >= 2) article = Left(article, p - 1);
    }
    if (InStr(article, Trim(findText)) > 0) found += CStr(i) + u"．"_qs;
  }
  return found;
}

// A law of random heading lines, sentences, citations and repeated numbers.
QString RandomLaw(QRandomGenerator& rng, int type) {
  QStringList lines{u"随机法"_qs};
  const QStringList words{u"甲"_qs, u"乙。"_qs, u"依照第三条"_qs, u"附件"_qs, u"；"_qs, u"十"_qs, u"3"_qs, u"、"_qs};
  for (int k = 0; k < 120; ++k) {
    const int n = rng.bounded(1, 25);
    QString line = u"　　"_qs;
    switch (rng.bounded(5)) {
      case 0:
        line += u"第"_qs + DaXie(n) + u"条 "_qs;
        break;
      case 1:
        line += DaXie(n) + u"、"_qs;
        break;
      case 2:
        line += CStr(n) + u"．"_qs;
        break;
      case 3:
        line += u"第"_qs + DaXie(n) + u"章 "_qs;
        break;
      default:
        break;
    }
    for (int w = rng.bounded(4); w >= 0; --w) line += words[rng.bounded(words.size())];
    lines.append(line);
  }
  // Make sure the wanted type is detected first.
  const QStringList markers{u"　　第二条 起"_qs, u"　　二、起"_qs, u"　　2．起"_qs};
  lines.insert(1, markers[type - 1]);
  return JoinCrLf(lines);
}

TEST(GetMyLongDaAn, TheIndexedSearchEqualsThePlainOne) {
  QRandomGenerator rng(20240601);
  const QStringList finds{u"甲"_qs, u"乙。"_qs, u"第三条"_qs, u"附件"_qs, u"十"_qs, u"3"_qs, u""_qs, u"起"_qs};
  for (int round = 0; round < 60; ++round) {
    const int type = 1 + round % 3;
    const QString law = RandomLaw(rng, type);
    ASSERT_EQ(GetLawTextType(law), type);
    const QString table = GetLongDaXie(static_cast<qint16>(rng.bounded(0, 30)));
    for (const QString& f : finds)
      ASSERT_EQ(GetMyLongDaAn(law, table, f), PlainGetMyLongDaAn(law, table, f)) << round << " " << f.toStdString();
  }
}

TEST(GetPutTxt2Text, TheIndexedCutEqualsThePlainOne) {
  QRandomGenerator rng(77);
  for (int round = 0; round < 60; ++round) {
    const int type = 1 + round % 3;
    const QString law = RandomLaw(rng, type);
    const LawIndex index(law);
    const QString table = GetLongDaXie(30);
    for (int n = 1; n <= 30; ++n) {
      const QString nums = CStr(n) + u"．"_qs;
      ASSERT_EQ(GetPutTxt2Text(law, table, nums, &index), GetPutTxt2Text(law, table, nums)) << round << " " << n;
    }
    QString many;
    for (int n = 30; n >= 1; --n) many += CStr(rng.bounded(1, 31)) + u"．"_qs;
    ASSERT_EQ(GetPutTxt2Text(law, table, many, &index), GetPutTxt2Text(law, table, many)) << round;
  }
}

// ---- LawIndex ----

TEST(LawIndex, FindsExactlyWhatASearchFinds) {
  const QString law =
      u"法\r\n　　第一条 甲\r\n　　第十条 乙\r\n　　第一条之一 丙\r\n　　一、丁\r\n　　12．戊\r\n　　第条"_qs;
  const LawIndex index(law);
  using K = LawIndex::Kind;
  for (const QString& key : {u"一"_qs, u"十"_qs, u""_qs, u"二"_qs, u"一条之一 丙\r\n　　一、丁\r\n　　12．戊"_qs})
    for (qsizetype from : {1, 5, 20, 40, 200})
      EXPECT_EQ(index.find(K::Di, key, from), InStr(from, law, LawIndex::marker(K::Di, key))) << key.toStdString();
  EXPECT_EQ(index.find(K::Dun, u"一"_qs), InStr(law, u"\r\n　　一、"_qs));
  EXPECT_EQ(index.find(K::Point, u"12"_qs), InStr(law, u"\r\n　　12．"_qs));
  EXPECT_EQ(index.find(K::Point, u"2"_qs), 0);
  EXPECT_EQ(index.findDiLine(1), InStr(law, u"\r\n　　第"_qs));
  EXPECT_EQ(index.findDiLine(8), InStr(8, law, u"\r\n　　第"_qs));
  EXPECT_EQ(index.findDiLine(1000), 0);
  EXPECT_EQ(index.between(K::Di, u"一"_qs, K::Di, u"十"_qs), u" 甲"_qs);
}

}  // namespace
}  // namespace mj
