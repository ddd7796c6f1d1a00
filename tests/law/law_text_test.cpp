#include "law/law_text.h"

#include <gtest/gtest.h>

#include <QRandomGenerator>

#include "law/law_files.h"
#include "law_samples.h"
#include "platform/text_toolkit.h"
#include "platform/vbtext.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

using test::JoinCrLf;

// ---- GetLawTextType ----

TEST(GetLawTextType, TheThreeStyles) {
  EXPECT_EQ(GetLawTextType(test::SampleLaw1()), 1);
  EXPECT_EQ(GetLawTextType(test::SampleLaw2()), 2);
  EXPECT_EQ(GetLawTextType(test::SampleLaw3()), 3);
}

TEST(GetLawTextType, TheFirstMarkerWinsNotTheMostLegalOne) {
  const QString t = JoinCrLf({u"示例法"_qs, u"　　序言"_qs, u"　　一、历史。"_qs, u"　　二、现在。"_qs,
                              u"　　第一条 甲。"_qs, u"　　第二条 乙。"_qs});
  EXPECT_EQ(GetLawTextType(t), 2);
}

TEST(GetLawTextType, AMarkerInsideASentenceDoesNotCount) {
  EXPECT_EQ(GetLawTextType(JoinCrLf({u"示例法"_qs, u"　　依照第二条规定，二、2．"_qs})), 0);
  EXPECT_EQ(GetLawTextType(u"第二条 甲"_qs), 0);
  EXPECT_EQ(GetLawTextType(QString()), 0);
}

TEST(GetLawTextType, WithoutIndentTheMarkersHaveNone) {
  EXPECT_EQ(GetLawTextType(u"示例法\r\n第一条 甲。\r\n第二条 乙。"_qs), 1);
  EXPECT_EQ(GetLawTextType(u"示例法\r\n1．甲。\r\n2．乙。"_qs), 3);
  // With an indent anywhere, an unindented marker is not one.
  EXPECT_EQ(GetLawTextType(u"示例法\r\n第二条 乙。\r\n　　其他"_qs), 0);
}

TEST(GetLawTextType, TiesAndMissingMarkers) {
  // A missing marker counts as place 100000, so a real one further on loses,
  // even to a marker that is not there at all.
  const QString filler = QString(100010, u'甲');
  EXPECT_EQ(GetLawTextType(u"法\r\n"_qs + filler + u"\r\n第二条 乙"_qs), 2);
  EXPECT_EQ(GetLawTextType(u"法\r\n"_qs + filler + u"\r\n2．乙"_qs), 1);
  EXPECT_EQ(GetLawTextType(u"法\r\n第二条 甲\r\n二、乙"_qs), 1);
  EXPECT_EQ(GetLawTextType(u"法\r\n2．甲"_qs + filler + u"\r\n第二条 乙"_qs), 3);
  EXPECT_EQ(GetLawTextType(u"法\r\n二、甲"_qs + filler + u"\r\n2．乙"_qs), 2);
}

TEST(GetLawTextType, TableOfContentsListsChaptersOnly) {
  const QString t =
      JoinCrLf({u"示例法"_qs, u"　　目录"_qs, u"　　第一章 总则"_qs, u"　　第二章 分则"_qs, u"　　第一章 总则"_qs,
                u"　　第一条 甲。"_qs, u"　　第二条 乙。"_qs, u"　　第二章 分则"_qs, u"　　第三条 丙。"_qs});
  EXPECT_EQ(GetLawTextType(t), 1);
}

TEST(GetLawTextType, TheTextGoesOnBehindTheFirstHeadingLineOfTheContents) {
  // The line behind the first heading loses its CR, so its 二、 is no marker.
  const QString withContents = JoinCrLf({u"示例法"_qs, u"　　目录"_qs, u"　　第一章 总则"_qs, u"　　二、附录"_qs,
                                         u"　　第一条 甲。"_qs, u"　　第二条 乙。"_qs});
  EXPECT_EQ(GetLawTextType(withContents), 1);
  QString noContents = withContents;
  noContents.replace(u"目录"_qs, u"名录"_qs);
  EXPECT_EQ(GetLawTextType(noContents), 2);
}

// The type test written plainly, one search per marker.
int PlainLawTextType(const QString& text) {
  const QString sp = LawIndentOf(text);
  QString t = text;
  if (InStr(t, sp + u"目录\r\n"_qs) > 0) {
    const QString head = FirstHeadLine(t);
    if (!head.isEmpty()) t = Mid(t, InStr(t, head) + Len(head)) + u"\r\n"_qs;
  }
  qsizetype a = InStr(t, u"\r\n"_qs + sp + u"第二条"_qs);
  qsizetype b = InStr(t, u"\r\n"_qs + sp + u"二、"_qs);
  qsizetype c = InStr(t, u"\r\n"_qs + sp + u"2．"_qs);
  if (a == 0 && b == 0 && c == 0) return 0;
  if (a == 0) a = 100000;
  if (b == 0) b = 100000;
  if (c == 0) c = 100000;
  return (a <= b && a <= c) ? 1 : (b <= c ? 2 : 3);
}

TEST(GetLawTextType, EqualsThePlainSearchOnRandomTexts) {
  QRandomGenerator rng(31);
  const QStringList pieces{u"\r\n"_qs, u"　　"_qs,    u"　"_qs, u"第二条"_qs, u"二、"_qs, u"2．"_qs,
                           u"目录"_qs, u"第一章 "_qs, u"甲"_qs, u"第"_qs,     u"二"_qs};
  for (int round = 0; round < 5000; ++round) {
    QString t;
    for (int k = rng.bounded(30); k > 0; --k) t += pieces[rng.bounded(pieces.size())];
    ASSERT_EQ(GetLawTextType(t), PlainLawTextType(t)) << round;
  }
}

// ---- FirstHeadLine ----

TEST(FirstHeadLine, TheLineWithItsLfAndCr) {
  EXPECT_EQ(FirstHeadLine(test::SampleLaw1()), u"\n　　第一章 总则\r"_qs);
  EXPECT_EQ(FirstHeadLine(test::SampleLaw2()), u"\n　　一、总则内容。\r"_qs);
  EXPECT_EQ(FirstHeadLine(test::SampleLaw3()), QString());  // digits are no heading start
}

TEST(FirstHeadLine, TheFirstLineHasNoLf) {
  EXPECT_EQ(FirstHeadLine(u"第一条 甲\r\n第二条 乙"_qs), u"第一条 甲\r"_qs);
  EXPECT_EQ(FirstHeadLine(u"第一部 甲"_qs), u"第一部 甲\r"_qs);
}

TEST(FirstHeadLine, LinesThatDoNotQualify) {
  EXPECT_EQ(FirstHeadLine(QString()), QString());
  EXPECT_EQ(FirstHeadLine(u"示例法"_qs), QString());
  EXPECT_EQ(FirstHeadLine(u"示例法\r\n　　十分重要\r\n　　\r\n"_qs), QString());
  // Blank after the numeral, or the indent itself, ends the skip.
  EXPECT_EQ(FirstHeadLine(u"示例法\r\n　　十分\r\n　　三 甲"_qs), u"\n　　三 甲\r"_qs);
  EXPECT_EQ(FirstHeadLine(u"示例法\r\n　　第二节　甲"_qs), u"\n　　第二节　甲\r"_qs);
}

// ---- LastItemNum ----

TEST(LastItemNum, CountsTheArticlesOfAWholeLaw) {
  EXPECT_EQ(LastItemNum(test::SampleLaw1()), 4);
  EXPECT_EQ(LastItemNum(test::SampleLaw2()), 3);
  EXPECT_EQ(LastItemNum(test::SampleLaw3()), 3);
}

TEST(LastItemNum, PassesOverACitationInTheLastSentence) {
  const QString t = test::SampleLaw1() + u"\r\n　　依照本法第三条规定。"_qs;
  EXPECT_EQ(LastItemNum(t), 4);
  EXPECT_EQ(LastItemNum(test::SampleLaw1() + u"\r\n　　本条 所称"_qs), 4);
}

TEST(LastItemNum, AnArticleNumberBeyondAnyIntegerGivesNone) {
  // Type 3: the last heading's digits read as a number far above 16 bits.
  const QString t = test::SampleLaw3() + u"\r\n　　"_qs + QString(300, u'9') + u"．末条。"_qs;
  EXPECT_EQ(GetLawTextType(t), 3);
  EXPECT_EQ(LastItemNum(t), 0);
}

TEST(LastItemNum, APartialTextGivesItsOwnLastArticle) {
  const QString t = test::SampleLaw1();
  EXPECT_EQ(LastItemNum(t.left(t.indexOf(u"第三条"_qs) + 3)), 3);
  EXPECT_EQ(LastItemNum(t.left(t.indexOf(u"　　第三条"_qs))), 2);
}

TEST(LastItemNum, AHeadingAtTheVeryStartOfTheText) {
  // The read before the first character fails and counts as the heading test
  // holding.
  EXPECT_EQ(LastItemNum(u"第九条 甲\r\n附件\r\n第二条 乙"_qs), 9);
  EXPECT_EQ(LastItemNum(u"第九条 甲\r\n　　附件\r\n　　第二条 乙"_qs), 9);
  // Within the first len(indent)+1 characters nothing is checked.
  EXPECT_EQ(LastItemNum(u"X第九条 甲\r\n　　附件\r\n　　第二条 乙"_qs), 9);
  // Without an indent the second character is already checked.
  EXPECT_EQ(LastItemNum(u"X第九条 甲\r\n附件\r\n第二条 乙"_qs), 0);
  EXPECT_EQ(LastItemNum(u"3．甲\r\n　　附件\r\n　　2．乙"_qs), 3);
  EXPECT_EQ(LastItemNum(u"十、甲\r\n　　附件\r\n　　二、乙"_qs), 10);
}

TEST(LastItemNum, StopsBeforeTheLastAppendix) {
  const QString t = test::SampleLaw1() + u"\r\n　　附件\r\n　　第八条 附件的条文。\r\n　　第九条 附件的条文。"_qs;
  EXPECT_EQ(LastItemNum(t), 4);
  // Only the last appendix line counts.
  const QString two = test::SampleLaw1() + u"\r\n　　附件一\r\n　　第八条 甲。\r\n　　附件二\r\n　　第九条 乙。"_qs;
  EXPECT_EQ(LastItemNum(two), 8);
}

TEST(LastItemNum, TypesTwoAndThreeDoNotCheckWhatFollowsTheNumber) {
  EXPECT_EQ(LastItemNum(test::SampleLaw3() + u"\r\n　　5年内有效"_qs), 5);
  EXPECT_EQ(LastItemNum(test::SampleLaw2() + u"\r\n　　十年内有效"_qs), 10);
  // Numbers inside a line are passed over.
  EXPECT_EQ(LastItemNum(test::SampleLaw3() + u"\r\n　　自2023年起施行"_qs), 3);
  EXPECT_EQ(LastItemNum(test::SampleLaw2() + u"\r\n　　处三年以下"_qs), 3);
}

TEST(LastItemNum, ANumeralThatDaXieDoesNotPrint) {
  EXPECT_EQ(LastItemNum(test::SampleLaw1() + u"\r\n　　第一千零一十条 甲。"_qs), -1);
  EXPECT_EQ(LastItemNum(test::SampleLaw1() + u"\r\n　　第一千零十条 甲。"_qs), 1010);
}

TEST(LastItemNum, NoArticle) {
  EXPECT_EQ(LastItemNum(QString()), 0);
  EXPECT_EQ(LastItemNum(u"示例法\r\n　　没有条文。"_qs), 0);
  // Type 1 found, but the heading line is in an appendix.
  EXPECT_EQ(LastItemNum(u"示例法\r\n　　附件\r\n　　第二条 乙"_qs), 0);
}

TEST(LastItemNum, ANumberTooLargeForTheCountGivesZero) {
  EXPECT_EQ(LastItemNum(test::SampleLaw3() + u"\r\n　　32767．甲"_qs), 32767);
  EXPECT_EQ(LastItemNum(test::SampleLaw3() + u"\r\n　　99999．甲"_qs), 0);
}

// ---- ItemNumAtCaret ----

TEST(ItemNumAtCaret, CaretOnTheNumeralWithASeparatorBehind) {
  const QString t = u"《示例法》\r\n　　第十二条　内容内容"_qs;
  const qsizetype er = t.indexOf(u"二条"_qs) + 1;  // 1-based place of 二
  EXPECT_EQ(ItemNumAtCaret(t, er, 1), 12);
  // On 十 the separator is three characters away: nothing is found.
  EXPECT_EQ(ItemNumAtCaret(t, er - 1, 1), 0);
}

TEST(ItemNumAtCaret, CaretAtTheEndOfALaterLine) {
  const QString t = u"《示例法》\r\n　　第十二条　依照第三条、规定。\r\n　　第二款内容"_qs;
  EXPECT_EQ(ItemNumAtCaret(t, t.size(), 1), 12);
  EXPECT_EQ(ItemNumAtCaret(t, t.indexOf(u"。"_qs) + 1, 1), 12);
}

TEST(ItemNumAtCaret, APollutedSliceGivesMinusOne) {
  // 本条 triggers; its head is carried up to the real heading, so the slice
  // holds more than a numeral.
  const QString t = u"\r\n　　第十二条　本条 规定"_qs;
  EXPECT_EQ(ItemNumAtCaret(t, t.size(), 1), -1);
}

TEST(ItemNumAtCaret, TypesTwoAndThree) {
  const QString t3 = u"《办法》\r\n　　3．内容\r\n　　12．别的内容"_qs;
  EXPECT_EQ(ItemNumAtCaret(t3, t3.size(), 3), 12);
  EXPECT_EQ(ItemNumAtCaret(t3, t3.indexOf(u"内容"_qs) + 2, 3), 3);
  const QString t2 = u"《规定》\r\n　　十二、内容"_qs;
  EXPECT_EQ(ItemNumAtCaret(t2, t2.size(), 2), 12);
}

TEST(ItemNumAtCaret, NothingToFind) {
  const QString t = u"《示例法》\r\n　　第十二条　内容"_qs;
  EXPECT_EQ(ItemNumAtCaret(t, -1, 1), 0);
  EXPECT_EQ(ItemNumAtCaret(t, 3, 1), 0);
  EXPECT_EQ(ItemNumAtCaret(t, t.size(), 0), 0);
  EXPECT_EQ(ItemNumAtCaret(t, t.size(), 4), 0);
  EXPECT_EQ(ItemNumAtCaret(u"甲乙丙"_qs, 3, 1), 0);
  // A heading without the line break and indent before it is none.
  EXPECT_EQ(ItemNumAtCaret(u"第十二条　内容"_qs, 5, 1), 0);
  // A caret far behind the text scans all of it.
  EXPECT_EQ(ItemNumAtCaret(t, 1000000, 1), 12);
}

// ---- LineKind ----

TEST(LineKind, ShortLinesAndTheDatedNote) {
  EXPECT_EQ(LineKind(u"第一"_qs, 1), 0);
  EXPECT_EQ(LineKind(u"(2004年修正)\r\n其他"_qs, 0), 1);
  EXPECT_EQ(LineKind(u" （2004年修正）\r\n其他"_qs, 2), 1);
  EXPECT_EQ(LineKind(u"（2004年修正） \r\n其他"_qs, 1), 0);
  EXPECT_EQ(LineKind(u"(2004年修正)"_qs, 1), 0);  // without its line end
}

TEST(LineKind, TypeZeroOrUnknownTypes) {
  EXPECT_EQ(LineKind(u"　　第一条 甲"_qs, 0), 0);
  EXPECT_EQ(LineKind(u"　　第一条 甲"_qs, 4), 0);
}

TEST(LineKind, TypeOne) {
  EXPECT_EQ(LineKind(u"　　第一章 总则"_qs, 1), 2);
  EXPECT_EQ(LineKind(u"　　第一条 甲"_qs, 1), 1);
  EXPECT_EQ(LineKind(u"　　第一编 总则"_qs, 1), 2);
  EXPECT_EQ(LineKind(u"　　第一分编 通则"_qs, 1), 2);
  EXPECT_EQ(LineKind(u"第三部分 附则"_qs, 1), 2);
  EXPECT_EQ(LineKind(u"第一　总则"_qs, 1), 2);
  EXPECT_EQ(LineKind(u"　　第一百亿零条"_qs, 1), 1);
  EXPECT_EQ(LineKind(u"　　本法内容"_qs, 1), 0);
  EXPECT_EQ(LineKind(u"　　一、内容"_qs, 1), 0);
  EXPECT_EQ(LineKind(u"第一条 甲"_qs, 1), 1);
  EXPECT_EQ(LineKind(u"　第一条 甲"_qs, 1), 0);  // one blank: the first must be 第
  EXPECT_EQ(LineKind(u"　　第一"_qs, 1), 0);
}

TEST(LineKind, TypeTwo) {
  EXPECT_EQ(LineKind(u"　　二、内容"_qs, 2), 1);
  EXPECT_EQ(LineKind(u"二、内容"_qs, 2), 1);
  EXPECT_EQ(LineKind(u"十二．内容"_qs, 2), 1);
  EXPECT_EQ(LineKind(u"二 内容"_qs, 2), 1);
  EXPECT_EQ(LineKind(u"二x内容"_qs, 2), 0);
  EXPECT_EQ(LineKind(u"第一章 总则"_qs, 2), 2);
  EXPECT_EQ(LineKind(u"第一、总则"_qs, 2), 2);
  EXPECT_EQ(LineKind(u"第一条 甲"_qs, 2), 0);
  // Indented, the first character is a blank of the numeral class, so a
  // chapter line stops at 第.
  EXPECT_EQ(LineKind(u"　　第一章 总则"_qs, 2), 0);
  EXPECT_EQ(LineKind(u"本规定内容"_qs, 2), 0);
}

TEST(LineKind, TypeThree) {
  EXPECT_EQ(LineKind(u"一、总则"_qs, 3), 2);
  EXPECT_EQ(LineKind(u"一、总则。"_qs, 3), 0);
  EXPECT_EQ(LineKind(u"一、总则\r\n　　1．甲"_qs, 3), 2);
  EXPECT_EQ(LineKind(u"　　一、总则"_qs, 3), 2);
  EXPECT_EQ(LineKind(u"　　2．内容"_qs, 3), 1);
  EXPECT_EQ(LineKind(u"2．内容"_qs, 3), 1);
  EXPECT_EQ(LineKind(u"12、内容"_qs, 3), 1);
  EXPECT_EQ(LineKind(u"12a内容"_qs, 3), 0);
  EXPECT_EQ(LineKind(u"x12"_qs, 3), 0);
  // A long line is a sentence, not a chapter title.
  const QString longTitle = u"一、"_qs + QString(40, u'甲');
  EXPECT_EQ(LineKind(longTitle, 3), 0);
  EXPECT_EQ(LineKind(u"　　"_qs + longTitle, 3), 1);
  EXPECT_EQ(LineKind(u"　　一、总则。"_qs, 3), 1);
}

// ---- CutItemTail ----

TEST(CutItemTail, KeepsLinesEndingInAFullStopAndStopsAtTheNextArticle) {
  const QString t = u"\r\n　　第二条　甲。\r\n　　乙。\r\n　　第三条　丙"_qs;
  EXPECT_EQ(CutItemTail(t, 1), u"　　第二条　甲。\r\n　　乙。\r\n"_qs);
}

TEST(CutItemTail, AHeadingLineEndingInAFullStopIsKept) {
  const QString t = u"　　第二条　甲。\r\n　　第三条　丙。\r\n　　第二章 分则\r\n　　第四条 丁。"_qs;
  EXPECT_EQ(CutItemTail(t, 1), u"　　第二条　甲。\r\n　　第三条　丙。\r\n"_qs);
}

TEST(CutItemTail, StoppersOfTypeOneNeedTheirDi) {
  const QString t = u"　　第三条　下列：\r\n　　一、甲；\r\n　　（二）乙；\r\n　　第一节 丙\r\n　　丁"_qs;
  EXPECT_EQ(CutItemTail(t, 1), u"　　第三条　下列：\r\n　　一、甲；\r\n　　（二）乙；\r\n"_qs);
  EXPECT_EQ(CutItemTail(t, 2), u"　　第三条　下列：\r\n"_qs);
}

TEST(CutItemTail, TypeThreeDoesNotStopAtDigits) {
  const QString t = u"　　1．甲：\r\n　　2．乙\r\n　　二、丙\r\n　　丁"_qs;
  EXPECT_EQ(CutItemTail(t, 3), u"　　1．甲：\r\n　　2．乙\r\n"_qs);
  EXPECT_EQ(CutItemTail(u"　　1．甲：\r\n　　第二章 乙\r\n"_qs, 3), u"　　1．甲：\r\n"_qs);
}

TEST(CutItemTail, TheRulesHeadingGoes) {
  const QString t = u"　　第九条　甲。\r\n附则\r\n　　第十条 乙。"_qs;
  EXPECT_EQ(CutItemTail(t, 1), u"　　第九条　甲。\r\n"_qs);
  // Indented, the heading is an ordinary line.
  EXPECT_EQ(CutItemTail(u"　　第九条　甲。\r\n　　附则"_qs, 1), u"　　第九条　甲。\r\n　　附则\r\n"_qs);
}

TEST(CutItemTail, ShortTextsComeBackUnchanged) {
  EXPECT_EQ(CutItemTail(QString(), 1), QString());
  EXPECT_EQ(CutItemTail(u"  "_qs, 1), u"  "_qs);
  EXPECT_EQ(CutItemTail(u"甲"_qs, 1), u"甲\r\n"_qs);
}

TEST(CutItemTail, TypeZeroReturnsTheTextAsPassed) {
  const QString t = u"  甲\r\n　　第二条 乙 "_qs;
  EXPECT_EQ(CutItemTail(t, 0), t);
  EXPECT_EQ(CutItemTail(u"甲。\r\n乙。"_qs, 0), u"甲。\r\n乙。\r\n"_qs);
}

TEST(CutItemTail, ATrailingNoteThatIsNoList) {
  EXPECT_EQ(CutItemTail(u"　　第一条　甲。\r\n　　（注：本条已修改）"_qs, 1), u"　　第一条　甲。\r\n"_qs);
  const QString list = u"　　第一条　甲：\r\n　　（一）乙；\r\n　　（二）丙"_qs;
  EXPECT_EQ(CutItemTail(list, 1), list + u"\r\n"_qs);
}

TEST(CutItemTail, BlankLinesStay) {
  EXPECT_EQ(CutItemTail(u"　　第一条　甲\r\n\r\n　　乙。"_qs, 1), u"　　第一条　甲\r\n\r\n　　乙。\r\n"_qs);
}

// ---- LawTypeOfName ----

TEST(LawTypeOfName, LoadsTheNamedLaw) {
  test::TestEnv te;
  te.writeGbk(u"\\lawtxt\\示例法.mmd"_qs, test::SampleLaw1());
  te.writeGbk(u"\\lawtxt\\示例办法.mmd"_qs, test::SampleLaw3());
  EXPECT_EQ(LawTypeOfName(te.env, u"《示例法》第3条"_qs), 1);
  EXPECT_EQ(LawTypeOfName(te.env, u"\r\n《示例办\r\n法》"_qs), 3);
  EXPECT_EQ(LawTypeOfName(te.env, u"示例法》甲"_qs), 1);  // the text before the first 》
  EXPECT_EQ(LawTypeOfName(te.env, u"《无此法》"_qs), 0);
  EXPECT_EQ(LawTypeOfName(te.env, u"》《示例法》"_qs), 0);
  EXPECT_EQ(LawTypeOfName(te.env, u"《示例法"_qs), 0);
}

TEST(LawTypeOfName, ShortFragments) {
  test::TestEnv te;
  te.writeGbk(u"\\lawtxt\\甲.mmd"_qs, test::SampleLaw1());
  EXPECT_EQ(LawTypeOfName(te.env, u"《甲》"_qs), 0);
  EXPECT_EQ(LawTypeOfName(te.env, u"《甲》 "_qs), 1);
  EXPECT_EQ(LawTypeOfName(te.env, u"《甲》\r\n"_qs), 0);
}

TEST(LawTypeOfName, ATitleIsNoPath) {
  test::TestEnv te;
  te.writeGbk(u"\\lawtxt\\sub\\示例法.mmd"_qs, test::SampleLaw1());
  te.writeGbk(u"\\示例法.mmd"_qs, test::SampleLaw1());
  EXPECT_EQ(LawTypeOfName(te.env, u"《sub/示例法》"_qs), 0);
  EXPECT_EQ(LawTypeOfName(te.env, u"《sub\\示例法》"_qs), 0);
  EXPECT_EQ(LawTypeOfName(te.env, u"《../示例法》"_qs), 0);
}

// ---- HasPlainChar, MissingNumbers, GetLawNamesIn, LineEndAt ----

TEST(HasPlainChar, HeadingCharactersOnly) {
  EXPECT_FALSE(HasPlainChar(QString()));
  EXPECT_FALSE(HasPlainChar(u"第十条"_qs));
  EXPECT_FALSE(HasPlainChar(u" 第1200条\r\n　第一百零五条"_qs));
  EXPECT_TRUE(HasPlainChar(u"第十条a"_qs));
  EXPECT_TRUE(HasPlainChar(u"第十一條"_qs));
  EXPECT_TRUE(HasPlainChar(u"\t"_qs));
  EXPECT_TRUE(HasPlainChar(u"两"_qs));
}

TEST(MissingNumbers, NumbersAbsentFromTheSequence) {
  const QString t = u"办法\r\n1．甲\r\n2．乙\r\n4．丁"_qs;
  EXPECT_EQ(MissingNumbers(t, 1, 5), u"3．5．"_qs);
  EXPECT_EQ(MissingNumbers(t, 1, 4), u"3．"_qs);
  EXPECT_EQ(MissingNumbers(t, 5, 4), QString());
  // The search goes on from the last find only.
  EXPECT_EQ(MissingNumbers(u"\r\n2．甲\r\n1．乙"_qs, 1, 2), u"2．"_qs);
  EXPECT_EQ(MissingNumbers(QString(), 1, 2), u"1．2．"_qs);
}

TEST(GetLawNamesIn, NamesNotKnownYet) {
  EXPECT_EQ(GetLawNamesIn(u"《刑法》"_qs, u"依《刑法》和《民法典》及《宪\r\n法》"_qs), u"《民法典》《宪法》"_qs);
  EXPECT_EQ(GetLawNamesIn(QString(), u"《甲》《甲》"_qs), u"《甲》《甲》"_qs);
  EXPECT_EQ(GetLawNamesIn(u"《刑法》《民法典》"_qs, u"《刑法》"_qs), QString());
  // The scan stops at a 《 without a later 》.
  EXPECT_EQ(GetLawNamesIn(QString(), u"《甲》《乙"_qs), u"《甲》"_qs);
  EXPECT_EQ(GetLawNamesIn(QString(), u"甲》《乙》"_qs), u"《乙》"_qs);
  EXPECT_EQ(GetLawNamesIn(QString(), QString()), QString());
}

TEST(WithoutEndMark, TheMarkGoesWithItsLine) {
  const QString law = u"示例法\r\n　　第一条 内容。"_qs;
  EXPECT_EQ(WithoutEndMark(law), law);
  EXPECT_EQ(WithoutEndMark(law + u"\r\n　　----<全文完>----"_qs), law);
  EXPECT_EQ(WithoutEndMark(law + u"\r\n　　----<全文完>----\r\n"_qs), law + u"\r\n"_qs);
  EXPECT_EQ(WithoutEndMark(law + u"\r\n ----<全文完>----　\r\n　　附件\r\n"_qs), law + u"\r\n　　附件\r\n"_qs);
  EXPECT_EQ(WithoutEndMark(u"----<全文完>----"_qs), QString());
  // Inside a line only the mark itself goes.
  EXPECT_EQ(WithoutEndMark(law + u"----<全文完>----"_qs), law);
  EXPECT_EQ(WithoutEndMark(u"甲----<全文完>----乙\r\n----<全文完>----\r\n----<全文完>----"_qs), u"甲乙"_qs);
}

TEST(LineEndAt, EndOfTheLineHoldingThePosition) {
  EXPECT_EQ(LineEndAt(QString(), 5), 1);
  const QString t = u"ab\r\ncd\r\nef"_qs;
  EXPECT_EQ(LineEndAt(t, 1), 2);
  EXPECT_EQ(LineEndAt(t, 0), 2);
  EXPECT_EQ(LineEndAt(t, 3), 2);  // on the CR
  EXPECT_EQ(LineEndAt(t, 5), 6);
  EXPECT_EQ(LineEndAt(t, 9), 10);  // the last line runs to the end
  EXPECT_EQ(LineEndAt(t, 50), 10);
}

TEST(LineEndAt, APrintedTitleLineGoesWithTheArticleBelow) {
  const QString t = u"答案：A\r\n《刑法》\r\n　　第一条　甲。\r\n"_qs;
  const qsizetype title = t.indexOf(u"《"_qs) + 1;
  const qsizetype articleEnd = t.indexOf(u"。"_qs) + 1;
  EXPECT_EQ(LineEndAt(t, title + 1), articleEnd);
  EXPECT_EQ(LineEndAt(t, articleEnd - 2), articleEnd);
  // A title on the first line has no LF before it.
  const QString first = u"《刑法》\r\n　　第一条　甲。"_qs;
  EXPECT_EQ(LineEndAt(first, 2), 4);
  // A 《 without its 》 is no title line.
  EXPECT_EQ(LineEndAt(u"x\r\n《刑法\r\n甲"_qs, 5), 6);
}

}  // namespace
}  // namespace mj
