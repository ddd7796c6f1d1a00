#include "platform/text_toolkit.h"

#include <gtest/gtest.h>

#include "platform/textfile.h"
#include "support/test_env.h"

using namespace mj;

TEST(TextToolkit, ReplaceAllDoesNotRescanTheReplacement) {
  EXPECT_EQ(ReplaceAll(u"aaa"_qs, u"a"_qs, u"aa"_qs), u"aaaaaa"_qs);
  EXPECT_EQ(ReplaceAll(u"。。。"_qs, u"。。"_qs, u"。"_qs), u"。。"_qs);
  EXPECT_EQ(ReplaceAll(u"abc"_qs, u"x"_qs, u"y"_qs), u"abc"_qs);
  EXPECT_EQ(ReplaceAll(u"abcb"_qs, u"b"_qs, u""_qs), u"ac"_qs);
}

TEST(TextToolkit, ReplaceAllWithEmptyTextOrFindGivesEmptyText) {
  EXPECT_EQ(ReplaceAll(u""_qs, u"a"_qs, u"b"_qs), u""_qs);
  EXPECT_EQ(ReplaceAll(u"abc"_qs, u""_qs, u"b"_qs), u""_qs);
}

TEST(TextToolkit, ReplaceStringOnlyTheFirst) {
  EXPECT_EQ(ReplaceString(u"abab"_qs, u"b"_qs, u"x"_qs), u"axab"_qs);
  EXPECT_EQ(ReplaceString(u"abab"_qs, u"z"_qs, u"x"_qs), u"abab"_qs);
}

TEST(TextToolkit, LastPos) {
  EXPECT_EQ(LastPos(u"abcabc"_qs, u"abc"_qs), 4);
  EXPECT_EQ(LastPos(u""_qs, u"abc"_qs), 0);
  EXPECT_EQ(LastPos(u"abc"_qs, u""_qs), 0);
  EXPECT_EQ(LastPos(u"abc"_qs, u"x"_qs), 0);
}

TEST(TextToolkit, CountOfCountsOverlappingOccurrences) {
  EXPECT_EQ(CountOf(u"aaa"_qs, u"aa"_qs), 2);
  EXPECT_EQ(CountOf(u"abcabc"_qs, u"abc"_qs), 2);
  EXPECT_EQ(CountOf(u"abc"_qs, u""_qs), 0);
}

TEST(TextToolkit, TextBetween) {
  EXPECT_EQ(TextBetween(u"xAyBz"_qs, u"A"_qs, u"Q"_qs), u"yBz"_qs);
  EXPECT_EQ(TextBetween(u"xAyBz"_qs, u"A"_qs, u"B"_qs), u"y"_qs);
  EXPECT_EQ(TextBetween(u"xAyBz"_qs, u"Q"_qs, u"B"_qs), u""_qs);
  // The b is looked for behind the a only.
  EXPECT_EQ(TextBetween(u"BxAyBz"_qs, u"A"_qs, u"B"_qs), u"y"_qs);
  EXPECT_EQ(TextBetween(u"xA"_qs, u"A"_qs, u"B"_qs), u""_qs);
}

TEST(TextToolkit, GetMidAndItsFailureWords) {
  EXPECT_EQ(GetMid(u"abc"_qs, u"x"_qs, u"y"_qs), u"B>A and C>A"_qs);
  EXPECT_EQ(GetMid(u"abc"_qs, u"x"_qs, u"c"_qs), u"B>A"_qs);
  EXPECT_EQ(GetMid(u"abc"_qs, u"a"_qs, u"y"_qs), u"C>A"_qs);
  EXPECT_EQ(GetMid(u"abc"_qs, u"c"_qs, u"a"_qs), u"C-B"_qs);
  EXPECT_EQ(GetMid(u"xabcd"_qs, u"ab"_qs, u"d"_qs), u"abc"_qs);
}

TEST(TextToolkit, CutMarkedBlockKeepsItsLeadingMarker) {
  QString t = u"head●1●one●2●two"_qs;
  EXPECT_EQ(CutMarkedBlock(t, u"●"_qs), u"●1"_qs);
  EXPECT_EQ(t, u"●one●2●two"_qs);
  EXPECT_EQ(CutMarkedBlock(t, u"●"_qs), u"●one"_qs);
  EXPECT_EQ(t, u"●2●two"_qs);
  QString u = u"●1●"_qs;
  EXPECT_EQ(CutMarkedBlock(u, u"●1●"_qs), u"●1●"_qs);
  EXPECT_EQ(u, u""_qs);
  QString v = u"abc"_qs;
  EXPECT_EQ(CutMarkedBlock(v, u"x"_qs), u""_qs);
  EXPECT_EQ(v, u"abc"_qs);
  QString w;
  EXPECT_EQ(CutMarkedBlock(w, u"x"_qs), u""_qs);
  QString x = u"a"_qs;
  EXPECT_EQ(CutMarkedBlock(x, u""_qs), u""_qs);
}

TEST(TextToolkit, FileNames) {
  EXPECT_EQ(FileNameOf(u"abc"_qs), u"abc"_qs);
  EXPECT_EQ(FileNameOf(u"\\yibanti\\010011.mmd"_qs), u"010011.mmd"_qs);
  EXPECT_EQ(FileNameOf(u"/x/y.txt"_qs), u"y.txt"_qs);
  EXPECT_EQ(GetSmallTxtName(u"\\yibanti\\010011.mmd"_qs), u"010011"_qs);
  EXPECT_EQ(GetSmallTxtName(u"a.b\\c"_qs), u"c"_qs);
}

TEST(TextToolkit, AnswerLettersInAlphabeticOrder) {
  QString t = u"答案：DA参见《刑法》第3条"_qs;
  EXPECT_EQ(AnswerLetters(t), u"AD"_qs);
  QString behindPoint = u"1．C答案：B参见《刑法》第3条"_qs;
  EXPECT_EQ(AnswerLetters(behindPoint), u"BC"_qs);
  QString noSee = u"答案：B"_qs;
  EXPECT_EQ(AnswerLetters(noSee), u""_qs);  // "参见" goes in front: nothing stands before it
  EXPECT_EQ(noSee, u"参见答案：B"_qs);
  QString letters = u"答案：ABCD参见"_qs;
  EXPECT_EQ(AnswerLetters(letters), u"ABCD"_qs);
}

TEST(TextToolkit, NumberFields) {
  EXPECT_EQ(GetStrFromNum(12, 5), u"   12"_qs);
  EXPECT_EQ(GetStrFromNum(123456, 5), u"23456"_qs);
  const QString groups = GetStrFromNum(3, 5) + GetStrFromNum(10, 5) + GetStrFromNum(7, 5) + GetStrFromNum(12, 5) +
                         GetStrFromNum(1, 5) + GetStrFromNum(0, 5);
  EXPECT_EQ(Str2Num(groups, 1, 1), 3);
  EXPECT_EQ(Str2Num(groups, 1, 3), 7);
  EXPECT_EQ(Str2Num(groups, 2, 1), 12);
  EXPECT_EQ(Str2Num(groups, 3, 1), 0);
}

TEST(TextToolkit, PowerOfAndChangeRadix) {
  test::TestEnv t;
  EXPECT_EQ(PowerOf(7, 0), 1);
  EXPECT_EQ(PowerOf(2, 10), 1024);
  EXPECT_EQ(ChangeRadix(t.env, u"255"_qs, 10, 16), u"FF"_qs);
  EXPECT_EQ(ChangeRadix(t.env, u"FF"_qs, 16, 2), u"11111111"_qs);
  EXPECT_EQ(ChangeRadix(t.env, u"  10 "_qs, 2, 10), u"2"_qs);
  EXPECT_EQ(ChangeRadix(t.env, u""_qs, 10, 16), u"0"_qs);
  EXPECT_EQ(ChangeRadix(t.env, u"12"_qs, 10, 0), u"0"_qs);
  EXPECT_EQ(ChangeRadix(t.env, u"12"_qs, 10, 1), u"12"_qs);
  EXPECT_TRUE(t.boxes.shown().isEmpty());
  EXPECT_EQ(ChangeRadix(t.env, u"12"_qs, 10, 37), u"0"_qs);
  ASSERT_EQ(t.boxes.shown().size(), 1);
  EXPECT_EQ(t.boxes.shown()[0].text, u"进制数范围为2-36，现不符合约定，返回为0"_qs);
  // The top digit is left out when it is 0: a value of 0 has no digits.
  EXPECT_EQ(ChangeRadix(t.env, u"0"_qs, 10, 16), u""_qs);
}

TEST(TextToolkit, Files) {
  test::TestEnv t;
  t.mkdir(u"\\ini"_qs);
  EXPECT_EQ(ReadFileAsText(t.path(u"\\none"_qs)), u""_qs);
  ASSERT_TRUE(WriteTextFile(t.path(u"\\ini\\a.txt"_qs), u"法"_qs));
  EXPECT_EQ(ReadBytes(t.path(u"\\ini\\a.txt"_qs)), ToGbk(u"法\r\n"_qs));
  ASSERT_TRUE(WriteQuotedValue(t.path(u"\\ini\\q.ini"_qs), u"C:\\wps.exe"_qs));
  EXPECT_EQ(ReadBytes(t.path(u"\\ini\\q.ini"_qs)), QByteArray("\"C:\\wps.exe\"\r\n"));
  EXPECT_EQ(FirstValueOf(u"\"C:\\wps.exe\", 3\r\n"_qs), u"C:\\wps.exe"_qs);
  EXPECT_EQ(FirstValueOf(u" abc , d"_qs), u"abc"_qs);
}

TEST(TextToolkit, IniReadOfAMissingKeyIsEmpty) {
  test::TestEnv t;
  t.writeGbk(u"\\ini\\x.ini"_qs, u"[信息]\r\n信息号=3\r\n"_qs);
  EXPECT_EQ(IniRead(t.path(u"\\ini\\x.ini"_qs), u"信息"_qs, u"考试时间"_qs), u""_qs);
}

TEST(TextToolkit, ShellOpenUsesTheProgramFolder) {
  test::TestEnv t;
  EXPECT_TRUE(ShellOpen(t.env, u"http://example.org/"_qs));
  ASSERT_EQ(t.shell.calls.size(), 1);
  EXPECT_EQ(t.shell.calls[0].target, u"http://example.org/"_qs);
  EXPECT_EQ(t.shell.calls[0].workDir, t.root());
}

TEST(TextToolkit, MoreEdgesOfTheSearchHelpers) {
  // The last of overlapping occurrences.
  EXPECT_EQ(LastPos(u"aaa"_qs, u"aa"_qs), 2);
  EXPECT_EQ(CountOf(u"abc"_qs, u"x"_qs), 0);
  EXPECT_EQ(CountOf(u""_qs, u"a"_qs), 0);
  EXPECT_EQ(TextBetween(u""_qs, u"A"_qs, u"B"_qs), u""_qs);
  // b right behind a: nothing between.
  EXPECT_EQ(TextBetween(u"xABz"_qs, u"A"_qs, u"B"_qs), u""_qs);
  // Only the first a counts.
  EXPECT_EQ(TextBetween(u"A1BA2B"_qs, u"A"_qs, u"B"_qs), u"1"_qs);
  EXPECT_EQ(ReplaceString(u"abc"_qs, u""_qs, u"x"_qs), u"abc"_qs);
  EXPECT_EQ(ReplaceAll(u"●1●\r\n\r\n\r\n"_qs, u"\r\n\r\n"_qs, u"\r\n"_qs), u"●1●\r\n\r\n"_qs);
}

TEST(TextToolkit, AnswerLettersBehindTheCitationDoNotCount) {
  QString t = u"答案：C参见《刑法》第3条A款"_qs;
  EXPECT_EQ(AnswerLetters(t), u"C"_qs);
  EXPECT_EQ(t, u"答案：C参见《刑法》第3条A款"_qs);  // it had "参见": unchanged
  QString none = u"答案：参见《刑法》"_qs;
  EXPECT_EQ(AnswerLetters(none), u""_qs);
}

TEST(TextToolkit, ChangeRadixBothWays) {
  test::TestEnv t;
  EXPECT_EQ(ChangeRadix(t.env, u"FF"_qs, 16, 10), u"255"_qs);
  EXPECT_EQ(ChangeRadix(t.env, u"Z"_qs, 36, 10), u"35"_qs);
  EXPECT_EQ(ChangeRadix(t.env, u"35"_qs, 10, 36), u"Z"_qs);
  EXPECT_EQ(ChangeRadix(t.env, u"100"_qs, 10, 36), u"2S"_qs);
  EXPECT_TRUE(t.boxes.shown().isEmpty());
}

TEST(TextToolkit, WriteTextFileReplacesALongerFile) {
  test::TestEnv t;
  t.writeGbk(u"\\ini\\a.txt"_qs, u"一段很长很长的旧文字\r\n第二行\r\n"_qs);
  ASSERT_TRUE(WriteTextFile(t.path(u"\\ini\\a.txt"_qs), u"新"_qs));
  EXPECT_EQ(ReadBytes(t.path(u"\\ini\\a.txt"_qs)), ToGbk(u"新\r\n"_qs));
  EXPECT_EQ(ReadFileAsText(t.path(u"\\ini\\a.txt"_qs)), u"新\r\n"_qs);
}

TEST(TextToolkit, ShownAndHeldLineEnds) {
  EXPECT_EQ(ShownText(u"第一行\r\n第二行\r\n"_qs), u"第一行\n第二行\n"_qs);
  // A lone CR or LF of the program's text stays as it is.
  EXPECT_EQ(ShownText(u"a\rb\nc"_qs), u"a\rb\nc"_qs);
  EXPECT_EQ(HeldText(u"第一行\n第二行"_qs), u"第一行\r\n第二行"_qs);
  EXPECT_EQ(HeldText(ShownText(u"甲\r\n乙\r\n\r\n丙"_qs)), u"甲\r\n乙\r\n\r\n丙"_qs);
  EXPECT_EQ(ShownText(QString()), QString());
  EXPECT_EQ(HeldText(QString()), QString());
}
