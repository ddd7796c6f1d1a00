#include "papers/pair_list.h"

#include <gtest/gtest.h>

#include "platform/textfile.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

TEST(IsOkPair, TheRulesOfAPair) {
  EXPECT_TRUE(IsOkPair(u"[《刑诉》]-->[《刑事诉讼法》]"_qs));
  // An empty b is valid: it deletes a.
  EXPECT_TRUE(IsOkPair(u"[答：]-->[]"_qs));
  // An empty a is not.
  EXPECT_FALSE(IsOkPair(u"[]-->[答案：]"_qs));
  EXPECT_FALSE(IsOkPair(u"-->[b]"_qs));
  EXPECT_FALSE(IsOkPair(u"[a]->[b]"_qs));
  EXPECT_FALSE(IsOkPair(u"a]-->[b]"_qs));
  EXPECT_FALSE(IsOkPair(u"[a-->[b]"_qs));
  EXPECT_FALSE(IsOkPair(u"[a]-->b]"_qs));
  EXPECT_FALSE(IsOkPair(u"[a]-->[b"_qs));
  EXPECT_FALSE(IsOkPair(u"[a]-->["_qs));
  EXPECT_FALSE(IsOkPair(QString()));
  // The first "-->" splits; the rest belongs to b.
  EXPECT_TRUE(IsOkPair(u"[a]-->[-->]"_qs));
}

TEST(PairEntries, NumberThenPair) {
  EXPECT_EQ(NumberedEntry(1, u"[a]-->[b]"_qs), u"1   [a]-->[b]"_qs);
  EXPECT_EQ(NumberedEntry(12, u"[a]-->[b]"_qs), u"12  [a]-->[b]"_qs);
  EXPECT_EQ(NumberedEntry(12345, u"[a]-->[b]"_qs), u"1234[a]-->[b]"_qs);
  EXPECT_EQ(PairOfEntry(u"7   [a]-->[b]"_qs), u"[a]-->[b]"_qs);
}

TEST(PairFile, ReadingTakesTwoValuesALine) {
  test::TestEnv te;
  te.writeGbk(u"\\ini\\listbox.ini"_qs,
              u"\"[《刑诉》]-->[《刑事诉讼法》]\",1\r\n\"[答：]-->[答案：]\",0\r\n\r\n\"[a\"b]-->[c]\",1\r\n"_qs);
  const PairList l = Read2List(te.path(kPairFile));
  ASSERT_EQ(l.size(), 3);
  EXPECT_EQ(l[0], (PairEntry{u"1   [《刑诉》]-->[《刑事诉讼法》]"_qs, true}));
  EXPECT_EQ(l[1], (PairEntry{u"2   [答：]-->[答案：]"_qs, false}));
  // A quote inside the pair survives.
  EXPECT_EQ(l[2], (PairEntry{u"3   [a\"b]-->[c]"_qs, true}));
}

TEST(PairFile, AMissingFileIsAnEmptyList) {
  test::TestEnv te;
  EXPECT_TRUE(Read2List(te.path(kPairFile)).isEmpty());
  // The file of a list with nothing to save: one empty line.
  te.writeGbk(u"\\ini\\listbox.ini"_qs, u"\r\n"_qs);
  EXPECT_TRUE(Read2List(te.path(kPairFile)).isEmpty());
  te.writeGbk(u"\\ini\\listbox.ini"_qs, QString());
  EXPECT_TRUE(Read2List(te.path(kPairFile)).isEmpty());
}

TEST(PairFile, MalformedLinesShowWhatTheyCan) {
  test::TestEnv te;
  te.writeGbk(u"\\ini\\listbox.ini"_qs,
              u"没有引号也没有逗号\r\n[a]-->[b],1\r\n\"[c]-->[d]\r\n\"[e]-->[f]\",yes\r\n,,,\r\n\"\",1\r\n"_qs);
  const PairList l = Read2List(te.path(kPairFile));
  ASSERT_EQ(l.size(), 6);
  EXPECT_EQ(l[0], (PairEntry{u"1   没有引号也没有逗号"_qs, false}));
  EXPECT_EQ(l[1], (PairEntry{u"2   [a]-->[b]"_qs, true}));
  EXPECT_EQ(l[2], (PairEntry{u"3   [c]-->[d]"_qs, false}));
  EXPECT_EQ(l[3], (PairEntry{u"4   [e]-->[f]"_qs, false}));
  EXPECT_EQ(l[4], (PairEntry{u"5   "_qs, false}));
  EXPECT_EQ(l[5], (PairEntry{u"6   "_qs, true}));
  // Saving keeps the valid ones only.
  ASSERT_TRUE(SaveList(l, te.path(kPairFile)));
  EXPECT_EQ(ReadBytes(te.path(kPairFile)), ToGbk(u"\"[a]-->[b]\",1\r\n\"[c]-->[d]\",0\r\n\"[e]-->[f]\",0\r\n"_qs));
}

TEST(PairFile, BytesThatAreNoTextDoNotStopTheReading) {
  test::TestEnv te;
  te.mkdir(u"\\ini"_qs);
  QByteArray junk("\"[x]-->[y]\",1\r\n");
  static const char bad[] = "\x00\xff\xfe\x81\r\n\"[\x81\x30]-->[z]\",1";
  junk.append(QByteArray(bad, sizeof bad - 1));
  ASSERT_TRUE(WriteBytesAtomic(te.path(kPairFile), junk));
  const PairList l = Read2List(te.path(kPairFile));
  ASSERT_GE(l.size(), 2);
  EXPECT_EQ(l[0], (PairEntry{u"1   [x]-->[y]"_qs, true}));
}

TEST(PairFile, SavingWritesTheQuotedListForm) {
  test::TestEnv te;
  te.mkdir(u"\\ini"_qs);
  const PairList l = {{u"1   [《刑诉》]-->[《刑事诉讼法》]"_qs, true},
                      {u"2   []-->[x]"_qs, true},
                      {u"3   [^p^p]-->[^p]"_qs, false},
                      {u"4   [答：]-->[]"_qs, true}};
  ASSERT_TRUE(SaveList(l, te.path(kPairFile)));
  EXPECT_EQ(ReadBytes(te.path(kPairFile)),
            ToGbk(u"\"[《刑诉》]-->[《刑事诉讼法》]\",1\r\n\"[^p^p]-->[^p]\",0\r\n\"[答：]-->[]\",1\r\n"_qs));
  // Read back: the same pairs, numbered anew.
  const PairList back = Read2List(te.path(kPairFile));
  EXPECT_EQ(back, (PairList{{u"1   [《刑诉》]-->[《刑事诉讼法》]"_qs, true},
                            {u"2   [^p^p]-->[^p]"_qs, false},
                            {u"3   [答：]-->[]"_qs, true}}));
}

TEST(PairFile, NothingValidWritesOneEmptyLine) {
  test::TestEnv te;
  te.mkdir(u"\\ini"_qs);
  ASSERT_TRUE(SaveList({}, te.path(kPairFile)));
  EXPECT_EQ(ReadBytes(te.path(kPairFile)), QByteArray("\r\n"));
  ASSERT_TRUE(SaveList({{u"1   []-->[x]"_qs, true}, {u"2   abc"_qs, true}}, te.path(kPairFile)));
  EXPECT_EQ(ReadBytes(te.path(kPairFile)), QByteArray("\r\n"));
}

TEST(PairFile, AFileThatCannotBeWrittenIsSaid) {
  test::TestEnv te;
  // \ini is missing: nothing can be written there.
  EXPECT_FALSE(SaveList({{u"1   [a]-->[b]"_qs, true}}, te.path(kPairFile)));
}

TEST(RebuildList, DropsAbandonedEntriesAndNumbersAgain) {
  const PairList l = {{u"1   [a]-->[b]"_qs, true},
                      {u"2   "_qs, true},
                      {u"3   []-->[]"_qs, false},
                      {u"4   [c]-->[]"_qs, true}};
  EXPECT_EQ(RebuildList(l), (PairList{{u"1   [a]-->[b]"_qs, true}, {u"2   [c]-->[]"_qs, true}}));
  // A new entry comes in at the end, not ticked; the new "[]-->[]" of 添加
  // stays.
  EXPECT_EQ(RebuildList(l, u"[]-->[]"_qs),
            (PairList{{u"1   [a]-->[b]"_qs, true}, {u"2   [c]-->[]"_qs, true}, {u"3   []-->[]"_qs, false}}));
}

TEST(ApplyPairs, TickedValidPairsInListOrder) {
  const PairList l = {{u"1   [《刑诉》]-->[《刑事诉讼法》]"_qs, true},
                      {u"2   [刑事诉讼法]-->[刑诉法]"_qs, true},   // works on what the first wrote
                      {u"3   [甲]-->[乙]"_qs, false},            // not ticked
                      {u"4   []-->[丙]"_qs, true},               // not valid
                      {u"5   [答：]-->[]"_qs, true}};            // deletes
  EXPECT_EQ(ApplyPairs(l, u"答：A参见《刑诉》第1条，甲"_qs), u"A参见《刑诉法》第1条，甲"_qs);
}

TEST(ApplyPairs, LineEndsInAPair) {
  const PairList l = {{u"1   [^p参见]-->[参见]"_qs, true}, {u"2   [答案：]-->[^p[答案：]]"_qs, true}};
  EXPECT_EQ(ApplyPairs(l, u"1．题\r\n答案：A\r\n参见《x》"_qs), u"1．题\r\n\r\n[答案：]A参见《x》"_qs);
}

TEST(ExpandLineEnds, CaretPIsALineEnd) { EXPECT_EQ(ExpandLineEnds(u"a^pb^p"_qs), u"a\r\nb\r\n"_qs); }

TEST(LearnPair, AddsAUsedPairOnce) {
  test::TestEnv te;
  te.writeGbk(u"\\ini\\listbox.ini"_qs, u"\"[a]-->[b]\",0"_qs);
  ASSERT_TRUE(LearnPair(te.env, u"刑诉^p"_qs, u"刑事诉讼法"_qs));
  const QByteArray once = ToGbk(u"\"[a]-->[b]\",0\r\n\"[刑诉^p]-->[刑事诉讼法]\",1\r\n"_qs);
  EXPECT_EQ(ReadBytes(te.path(kPairFile)), once);
  // The same pair again adds nothing.
  ASSERT_TRUE(LearnPair(te.env, u"刑诉^p"_qs, u"刑事诉讼法"_qs));
  EXPECT_EQ(ReadBytes(te.path(kPairFile)), once);
  // A pair with an empty replacement is never learned.
  ASSERT_TRUE(LearnPair(te.env, u"x"_qs, QString()));
  EXPECT_EQ(ReadBytes(te.path(kPairFile)), once);
}

TEST(LearnPair, AMissingFileIsMade) {
  test::TestEnv te;
  te.mkdir(u"\\ini"_qs);
  ASSERT_TRUE(LearnPair(te.env, u"a"_qs, u"b"_qs));
  EXPECT_EQ(ReadBytes(te.path(kPairFile)), QByteArray("\"[a]-->[b]\",1\r\n"));
}

}  // namespace
}  // namespace mj

namespace mj {
namespace {

TEST(PairTable, TheOlderStoreOfTheList) {
  test::TestEnv te;
  te.mkdir(u"\\dbf"_qs);
  const PairList l = {{u"1   [《刑诉》]-->[《刑事诉讼法》]"_qs, true}, {u"2   []-->[x]"_qs, true}, {u"3   [答：]-->[]"_qs, false}};
  ASSERT_TRUE(PutList1toDbf(te.env, l));
  EXPECT_EQ(ReadListFromDbf(te.env),
            (PairList{{u"1   [《刑诉》]-->[《刑事诉讼法》]"_qs, true}, {u"2   [答：]-->[]"_qs, false}}));
  test::TestEnv bare;
  EXPECT_FALSE(PutList1toDbf(bare.env, l));
  EXPECT_TRUE(ReadListFromDbf(bare.env).isEmpty());
}

}  // namespace
}  // namespace mj
