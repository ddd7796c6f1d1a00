#include <gtest/gtest.h>

#include "platform/inifile.h"
#include "platform/textfile.h"
#include "support/test_env.h"

using namespace mj;

TEST(IniFile, ReadsWithoutRegardToCaseAndTrims) {
  const QString text = u"; comment\r\n[信息]\r\n信息号 =  12  \r\nLink=\"http://a\"\r\n[Other]\r\nkey=x\r\n"_qs;
  EXPECT_EQ(IniValueIn(text, u"信息"_qs, u"信息号"_qs), u"12"_qs);
  EXPECT_EQ(IniValueIn(text, u"信息"_qs, u"link"_qs), u"http://a"_qs);
  EXPECT_EQ(IniValueIn(text, u"OTHER"_qs, u"KEY"_qs), u"x"_qs);
  EXPECT_EQ(IniValueIn(text, u"信息"_qs, u"key"_qs), u""_qs);
  EXPECT_EQ(IniValueIn(text, u"none"_qs, u"key"_qs), u""_qs);
}

TEST(IniFile, MissingKeyOrFileGivesEmptyText) {
  test::TestEnv t;
  EXPECT_EQ(IniRead(t.path(u"\\ini\\none.ini"_qs), u"a"_qs, u"b"_qs), u""_qs);
  t.writeGbk(u"\\ini\\x.ini"_qs, u"[a]\r\nb=1\r\n"_qs);
  EXPECT_EQ(IniRead(t.path(u"\\ini\\x.ini"_qs), u"a"_qs, u"c"_qs), u""_qs);
}

TEST(IniFile, ValuesAreCutTo127BytesWithoutSplittingACharacter) {
  const QString longAscii(500, u'x');
  EXPECT_EQ(IniValueIn(u"[s]\r\nk="_qs + longAscii + u"\r\n"_qs, u"s"_qs, u"k"_qs), QString(127, u'x'));
  // 100 Chinese characters are 200 bytes: 63 of them fit in 127 bytes.
  const QString longChinese(100, QChar(0x6CD5));
  EXPECT_EQ(IniValueIn(u"[s]\r\nk="_qs + longChinese, u"s"_qs, u"k"_qs), QString(63, QChar(0x6CD5)));
  EXPECT_EQ(IniValueIn(u"[s]\r\nk=a"_qs + QString(126, u'x') + u"法"_qs, u"s"_qs, u"k"_qs).size(), 127);
}

TEST(IniFile, ValueIsCutAtNul) {
  EXPECT_EQ(IniValueIn(u"[s]\r\nk=ab"_qs + QChar(0) + u"cd\r\n"_qs, u"s"_qs, u"k"_qs), u"ab"_qs);
}

TEST(IniFile, WriteKeepsEveryOtherLine) {
  test::TestEnv t;
  const QString p = t.path(u"\\ini\\e.ini"_qs);
  t.writeGbk(u"\\ini\\e.ini"_qs, u"; 注释\r\n[刑法]\r\n重点法条=1-3\r\n\r\n[宪法]\r\n重点法条=5\r\n"_qs);
  ASSERT_TRUE(IniWrite(p, u"刑法"_qs, u"次重点法条"_qs, u"7,9"_qs));
  EXPECT_EQ(ReadText(p), u"; 注释\r\n[刑法]\r\n重点法条=1-3\r\n次重点法条=7,9\r\n\r\n[宪法]\r\n重点法条=5\r\n"_qs);
  ASSERT_TRUE(IniWrite(p, u"宪法"_qs, u"重点法条"_qs, u"6"_qs));
  EXPECT_EQ(IniRead(p, u"宪法"_qs, u"重点法条"_qs), u"6"_qs);
  ASSERT_TRUE(IniWrite(p, u"新"_qs, u"k"_qs, u"v"_qs));
  EXPECT_TRUE(ReadText(p).endsWith(u"[新]\r\nk=v\r\n"_qs));
  ASSERT_TRUE(IniDeleteKey(p, u"新"_qs, u"k"_qs));
  EXPECT_EQ(IniRead(p, u"新"_qs, u"k"_qs), u""_qs);
}

TEST(IniFile, WriteCreatesTheFileAndCutsTheValue) {
  test::TestEnv t;
  t.mkdir(u"\\ini"_qs);
  const QString p = t.path(u"\\ini\\n.ini"_qs);
  ASSERT_TRUE(IniWrite(p, u"s"_qs, u"k"_qs, QString(500, u'y')));
  EXPECT_EQ(ReadText(p), u"[s]\r\nk="_qs + QString(127, u'y') + u"\r\n"_qs);
  // GBK on disk.
  t.writeGbk(u"\\ini\\g.ini"_qs, u""_qs);
  ASSERT_TRUE(IniWrite(t.path(u"\\ini\\g.ini"_qs), u"信息"_qs, u"考试时间"_qs, u"100"_qs));
  EXPECT_EQ(ReadBytes(t.path(u"\\ini\\g.ini"_qs)), ToGbk(u"[信息]\r\n考试时间=100\r\n"_qs));
}

// IniDocument answers exactly as IniValueIn does, on any text made of the
// pieces INI files hold.
TEST(IniFile, TheDocumentReadsAsTheSingleLookup) {
  const QStringList pieces = {u"["_qs, u"]"_qs,  u"="_qs,    u"\r\n"_qs,  u"\n"_qs, u" "_qs,   u"\t"_qs,  u";"_qs,
                              u"\""_qs, u"'"_qs, u"a"_qs,    u"A"_qs,     u"1"_qs,  u"2"_qs,   u"答"_qs,  u"做到题类"_qs,
                              u"x"_qs,  u"OKOK"_qs, u"[1]"_qs, u"[做到题类]"_qs, u"答=3"_qs, u"1=AC"_qs, QString(QChar(0))};
  const QStringList names = {u"1"_qs, u"2"_qs, u"a"_qs, u"A"_qs, u"答"_qs, u"做到题类"_qs, u"x"_qs, u""_qs};
  quint32 seed = 7;
  auto next = [&seed](quint32 n) {
    seed = seed * 1103515245u + 12345u;
    return (seed >> 8) % n;
  };
  for (int round = 0; round < 400; ++round) {
    QString text;
    const quint32 len = next(60);
    for (quint32 i = 0; i < len; ++i) text += pieces[static_cast<int>(next(static_cast<quint32>(pieces.size())))];
    const IniDocument doc(text);
    for (const QString& s : names)
      for (const QString& k : names) EXPECT_EQ(doc.value(s, k), IniValueIn(text, s, k)) << text.toStdString();
  }
  const IniDocument doc(u"[A]\r\nk=1\r\n[b]\r\nK=2\r\nk=3\r\n[a]\r\nk=4\r\n"_qs);
  EXPECT_EQ(doc.value(u"a"_qs, u"K"_qs), u"1"_qs);
  EXPECT_EQ(doc.value(u"B"_qs, u"k"_qs), u"2"_qs);
  EXPECT_EQ(IniDocument().value(u"a"_qs, u"k"_qs), u""_qs);
}
