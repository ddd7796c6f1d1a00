#include "bank/bank_text.h"

#include <gtest/gtest.h>

#include <limits>

#include <QDir>
#include <QFile>
#include <QSet>

#include "platform/text_toolkit.h"
#include "platform/textfile.h"
#include "support/test_env.h"

using namespace mj;

namespace {

QByteArray fileBytes(const QString& path) {
  QFile f(path);
  if (!f.open(QIODevice::ReadOnly)) return {};
  return f.readAll();
}

// A bank of three questions as the data sets have them: every marker at
// the beginning of a line, the file starting with a line end.
const QString kBank =
    u"\r\n●1●下列关于犯罪故意的说法，正确的是(      )\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁\r\n"
    u"■答案：A参见《刑法》第十四条\r\n"
    u"●2●关于正当防卫，下列哪一选项是正确的?(      )\r\nA．一\r\nB．二\r\nC．三\r\nD．四\r\n"
    u"■答案：C参见《刑法》第二十条\r\n"
    u"●3●甲的行为构成何罪\r\nA．盗窃罪\r\nB．诈骗罪\r\nC．抢夺罪\r\nD．抢劫罪\r\n"
    u"■答案：B参见《刑法》第二百六十六条\r\n"_qs;

}  // namespace

// ---- where the text of a question lies ----

TEST(BankFile, TheFileFollowsFromTheId) {
  EXPECT_EQ(BankFileOf(u"10001100042"_qs), u"\\yibanti\\100011.mmd"_qs);
  EXPECT_EQ(BankFileOf(u"10001200042"_qs), u"\\yibanti\\100012.mmd"_qs);
  // A simulated paper keeps all its types in one file.
  EXPECT_EQ(BankFileOf(u"00201100042"_qs), u"\\moniti\\00201.mmd"_qs);
  EXPECT_EQ(BankFileOf(u"00201300001"_qs), u"\\moniti\\00201.mmd"_qs);
  test::TestEnv t;
  EXPECT_EQ(BankFilePath(t.env, u"10001100001"_qs), t.root() + u"/yibanti/100011.mmd"_qs);
}

TEST(BankFile, SerialNumberAndTypeTag) {
  EXPECT_EQ(ItemSerial(u"10001100042"_qs), 42);
  EXPECT_EQ(ItemSerial(u"10001100000"_qs), 0);
  EXPECT_EQ(ItemSerial(u"1000110"_qs), 0);
  // A serial number far beyond any integer saturates instead of being undefined.
  EXPECT_EQ(ItemSerial(u"1000119e300"_qs), std::numeric_limits<long long>::max());
  EXPECT_EQ(ItemTypeOfTag(u"x[单选题]y"_qs), 1);
  EXPECT_EQ(ItemTypeOfTag(u"x[多选题]y"_qs), 2);
  EXPECT_EQ(ItemTypeOfTag(u"x[任选题]y"_qs), 3);
  EXPECT_EQ(ItemTypeOfTag(u"x［多选题］y"_qs), 2);
  EXPECT_EQ(ItemTypeOfTag(u"no tag"_qs), 3);
}

// ---- GetOneShiTi ----

TEST(GetOneShiTi, TakesTheBlockUpToTheNextMarker) {
  EXPECT_EQ(GetOneShiTi(kBank, 1),
            u"下列关于犯罪故意的说法，正确的是(      )。\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁\r\n"
            u"■答案：A参见《刑法》第十四条\r\n"_qs);
}

TEST(GetOneShiTi, NumberZeroMeansOne) { EXPECT_EQ(GetOneShiTi(kBank, 0), GetOneShiTi(kBank, 1)); }

TEST(GetOneShiTi, ATextWithoutAnOpeningBracketGetsTheGapAtTheEnd) {
  EXPECT_EQ(GetOneShiTi(kBank, 3),
            u"甲的行为构成何罪。\r\nA．盗窃罪\r\nB．诈骗罪\r\nC．抢夺罪\r\nD．抢劫罪\r\n"
            u"■答案：B参见《刑法》第二百六十六条\r\n(      )"_qs);
  EXPECT_EQ(GetOneShiTi(u"●1●题干"_qs, 1), u"题干(      )"_qs);
}

TEST(GetOneShiTi, AGapBeforeTheOptionsGetsAFullStopBehindIt) {
  EXPECT_EQ(GetOneShiTi(u"\r\n●5●题干(  )\r\nA．一\r\nB．二"_qs, 5), u"题干(  )。\r\nA．一\r\nB．二"_qs);
}

TEST(GetOneShiTi, WithoutAGapRightBeforeTheOptionsTheStemGetsTheFullStop) {
  EXPECT_EQ(GetOneShiTi(u"\r\n●5●甲(乙)的说法\r\nA．一\r\nB．二"_qs, 5), u"甲(乙)的说法。\r\nA．一\r\nB．二"_qs);
}

TEST(GetOneShiTi, AQuestionGapKeepsItsSignAndTheOptionsGetTheFullStop) {
  EXPECT_EQ(GetOneShiTi(kBank, 2),
            u"关于正当防卫，下列哪一选项是正确的?(      )。\r\nA．一\r\nB．二\r\nC．三\r\nD．四\r\n"
            u"■答案：C参见《刑法》第二十条\r\n"_qs);
}

TEST(GetOneShiTi, AStemAlreadyEndingInAFullStopDoesNotGetASecondOne) {
  EXPECT_EQ(GetOneShiTi(u"\r\n●1●题干(  )。\r\nA．一"_qs, 1), u"题干(  )。\r\nA．一"_qs);
  EXPECT_EQ(GetOneShiTi(u"\r\n●1●问?(  )。\r\nA．一"_qs, 1), u"问?(  )。\r\nA．一"_qs);
  // Every double full stop of the block goes.
  EXPECT_EQ(GetOneShiTi(u"●1●甲。。乙(  )\r\nB．一"_qs, 1), u"甲。乙(  )\r\nB．一"_qs);
}

TEST(GetOneShiTi, AMissingMarkerGivesAnEmptyBlockWithTheGap) {
  // The block is empty; the gap rule still adds the gap.
  EXPECT_EQ(GetOneShiTi(kBank, 9), u"(      )"_qs);
  EXPECT_EQ(GetOneShiTi(u""_qs, 1), u"(      )"_qs);
}

TEST(GetOneShiTi, TheMarkerNeedsItsClosingSign) {
  // "●1●" is not found inside "●11●".
  EXPECT_EQ(GetOneShiTi(u"\r\n●11●十一(  )\r\n●1●一(  )"_qs, 1), u"一(  )"_qs);
  EXPECT_EQ(GetOneShiTi(u"\r\n●11●十一(  )\r\n●1●一(  )"_qs, 11), u"十一(  )\r\n"_qs);
}

// ---- GetField ----

namespace {
const QString kBlock =
    u"题干(  )。\r\nA．一\r\nB．二\r\n[本题ID及提供者有关信息：]ID:10001100001 提供者：张三\r\n"
    u"■答案：B参见《刑法》第3条[注释：]说明一\r\n\r\n[注于：]2026年■第三段[注释：]x"_qs;
}

TEST(GetField, FieldOneCutsOffTheProviderBlock) {
  QString provider = u"old"_qs;
  EXPECT_EQ(GetField(kBlock, 1, provider), u"题干(  )。\r\nA．一\r\nB．二"_qs);
  EXPECT_EQ(provider, u"\r\n[本题ID及提供者有关信息：]ID:10001100001 提供者：张三\r\n"_qs);
}

TEST(GetField, FieldOneWithoutAProviderBlockClearsProviderInfo) {
  QString provider = u"old"_qs;
  EXPECT_EQ(GetField(u"题干\r\nA．一■答案：A"_qs, 1, provider), u"题干\r\nA．一"_qs);
  EXPECT_EQ(provider, u""_qs);
  // The block marker must start a line to count.
  provider = u"old"_qs;
  EXPECT_EQ(GetField(u"题干[本题ID及提供者有关信息：]x■答案：A"_qs, 1, provider),
            u"题干[本题ID及提供者有关信息：]x"_qs);
  EXPECT_EQ(provider, u""_qs);
}

TEST(GetField, FieldOneCutsThroughTwoMarkerSigns) {
  QString provider;
  EXPECT_EQ(GetField(u"●12●题干■答案：A"_qs, 1, provider), u"题干"_qs);
  EXPECT_EQ(GetField(u"前●题干■答案：A"_qs, 1, provider), u"题干"_qs);  // one sign: cut once
  EXPECT_EQ(GetField(u"a●b●c●d■x"_qs, 1, provider), u"c●d"_qs);
}

TEST(GetField, FieldTwoBringsTheNoteMarkersToTheirLines) {
  QString provider = u"kept"_qs;
  EXPECT_EQ(GetField(kBlock, 2, provider), u"答案：B参见《刑法》第3条\r\n[注释：]说明一\r\n\r\n[注于：]2026年"_qs);
  EXPECT_EQ(provider, u"kept"_qs);  // only field 1 sets it
  EXPECT_EQ(GetField(u"a■答案：A[注释：]x[注于：]y"_qs, 2, provider), u"答案：A\r\n[注释：]x\r\n[注于：]y"_qs);
  EXPECT_EQ(GetField(u"a■答案：A\r\n[注释：]x"_qs, 2, provider), u"答案：A\r\n[注释：]x"_qs);
}

TEST(GetField, FurtherFields) {
  QString provider;
  EXPECT_EQ(GetField(kBlock, 3, provider), u"第三段\r\n[注释：]x"_qs);
  EXPECT_EQ(GetField(u"a■b■c■d"_qs, 4, provider), u"d"_qs);
  // Past the last field the cuts stop: the last field stays.
  EXPECT_EQ(GetField(u"a■b"_qs, 5, provider), u"b"_qs);
}

TEST(GetField, ABlockWithoutFieldSignIsBothFieldOneAndFieldTwo) {
  QString provider = u"old"_qs;
  const QString block = u"题干(  )\r\nA．一\r\nB．二"_qs;
  EXPECT_EQ(GetField(block, 1, provider), block);
  EXPECT_EQ(provider, u""_qs);
  EXPECT_EQ(GetField(block, 2, provider), block);
}

TEST(GetField, FieldsOfACleanedBlock) {
  QString provider;
  const QString q = GetOneShiTi(kBank, 1);
  EXPECT_EQ(GetField(q, 1, provider),
            u"下列关于犯罪故意的说法，正确的是(      )。\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁\r\n"_qs);
  EXPECT_EQ(GetField(q, 2, provider), u"答案：A参见《刑法》第十四条\r\n"_qs);
}

// ---- GetOneOldTi ----

TEST(GetOneOldTi, TheStoredTextBetweenTwoMarkers) {
  test::TestEnv t;
  t.writeGbk(u"\\yibanti\\100011.mmd"_qs, kBank);
  EXPECT_EQ(GetOneOldTi(t.env, u"10001100001"_qs),
            u"下列关于犯罪故意的说法，正确的是(      )\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁\r\n"
            u"■答案：A参见《刑法》第十四条"_qs);
  EXPECT_EQ(GetOneOldTi(t.env, u"10001100002"_qs),
            u"关于正当防卫，下列哪一选项是正确的?(      )\r\nA．一\r\nB．二\r\nC．三\r\nD．四\r\n"
            u"■答案：C参见《刑法》第二十条"_qs);
  // The last question runs to the end of the file.
  EXPECT_EQ(GetOneOldTi(t.env, u"10001100003"_qs),
            u"甲的行为构成何罪\r\nA．盗窃罪\r\nB．诈骗罪\r\nC．抢夺罪\r\nD．抢劫罪\r\n"
            u"■答案：B参见《刑法》第二百六十六条\r\n"_qs);
}

TEST(GetOneOldTi, MissingMarkerOrFileGivesEmptyText) {
  test::TestEnv t;
  t.writeGbk(u"\\yibanti\\100011.mmd"_qs, kBank);
  EXPECT_EQ(GetOneOldTi(t.env, u"10001100009"_qs), u""_qs);
  EXPECT_EQ(GetOneOldTi(t.env, u"10001200001"_qs), u""_qs);  // no such file
  // A marker at the very start of the file has no line end before it.
  t.writeGbk(u"\\yibanti\\100013.mmd"_qs, u"●1●一\r\n●2●二"_qs);
  EXPECT_EQ(GetOneOldTi(t.env, u"10001300001"_qs), u""_qs);
  EXPECT_EQ(GetOneOldTi(t.env, u"10001300002"_qs), u"二"_qs);
}

TEST(GetOneOldTi, ASimulatedPaperIsReadFromItsOwnFile) {
  test::TestEnv t;
  t.writeGbk(u"\\moniti\\00201.mmd"_qs, u"\r\n●1●单选(  )\r\n●2●多选(  )\r\n"_qs);
  EXPECT_EQ(GetOneOldTi(t.env, u"00201200002"_qs), u"多选(  )\r\n"_qs);
  EXPECT_EQ(GetOneOldTi(t.env, u"00201100001"_qs), u"单选(  )"_qs);
}

TEST(GetOneOldTi, TheIdTagOfAnUpdatedQuestionIsPartOfTheText) {
  test::TestEnv t;
  t.writeGbk(u"\\yibanti\\100011.mmd"_qs, u"\r\n●1●题[本题标识ID：][10001100001]\r\n●2●二"_qs);
  EXPECT_TRUE(GetOneOldTi(t.env, u"10001100001"_qs).contains(u"10001100001"_qs));
  EXPECT_FALSE(GetOneOldTi(t.env, u"10001100002"_qs).contains(u"10001100002"_qs));
}

TEST(BankFileBadInput, BytesThatAreNotGbkDoNotDisturbTheOtherQuestions) {
  test::TestEnv t;
  t.mkdir(u"\\yibanti"_qs);
  QByteArray bytes = ToGbk(u"\r\n●1●坏"_qs);
  bytes.append("\x80\xFF\x81", 3);  // no GBK character
  bytes.append(ToGbk(u"(  )\r\nA．一\r\n●2●好(  )\r\nA．二\r\n"_qs));
  ASSERT_TRUE(WriteBytesAtomic(t.path(u"\\yibanti\\100011.mmd"_qs), bytes));
  EXPECT_EQ(GetOneOldTi(t.env, u"10001100002"_qs), u"好(  )\r\nA．二\r\n"_qs);
  BankText bank;
  const QString text = bank.loadFor(t.env, u"10001100002"_qs);
  EXPECT_EQ(GetOneShiTi(text, 2), u"好(  )。\r\nA．二\r\n"_qs);
  const QString first = GetOneShiTi(text, 1);
  EXPECT_TRUE(first.startsWith(u"坏"_qs));
  EXPECT_TRUE(first.endsWith(u"(  )。\r\nA．一\r\n"_qs));
}

// ---- PutItemText ----

namespace {
const QString kThree =
    u"\r\n●1●一(  )\r\nA．甲\r\n■答案：A\r\n●2●二(  )\r\nA．乙\r\n■答案：B\r\n●3●三(  )\r\nA．丙\r\n■答案：C\r\n"_qs;
}

TEST(PutItemText, AQuestionInTheMiddle) {
  test::TestEnv t;
  t.writeGbk(u"\\yibanti\\100011.mmd"_qs, kThree);
  ASSERT_TRUE(PutItemText(t.env, u"10001100002"_qs, u"新二(  )\r\nA．乙乙\r\n■答案：D\r\n"_qs));
  EXPECT_EQ(fileBytes(t.path(u"\\yibanti\\100011.mmd"_qs)),
            ToGbk(u"\r\n●1●一(  )\r\nA．甲\r\n■答案：A\r\n●2●新二(  )\r\nA．乙乙\r\n■答案：D\r\n"
                  u"●3●三(  )\r\nA．丙\r\n■答案：C\r\n\r\n"_qs));
}

TEST(PutItemText, BracketsBecomeHalfWidthAndTypeTagsGo) {
  test::TestEnv t;
  t.writeGbk(u"\\yibanti\\100011.mmd"_qs, kThree);
  ASSERT_TRUE(
      PutItemText(t.env, u"10001100002"_qs, u"［单选题］新二[多选题](  )[任选题]\r\n■答案：D［注释：］x\r\n"_qs));
  EXPECT_EQ(fileBytes(t.path(u"\\yibanti\\100011.mmd"_qs)),
            ToGbk(u"\r\n●1●一(  )\r\nA．甲\r\n■答案：A\r\n●2●新二(  )\r\n■答案：D[注释：]x\r\n"
                  u"●3●三(  )\r\nA．丙\r\n■答案：C\r\n\r\n"_qs));
}

TEST(PutItemText, TheLastQuestionOfTheFile) {
  test::TestEnv t;
  t.writeGbk(u"\\yibanti\\100011.mmd"_qs, kThree);
  ASSERT_TRUE(PutItemText(t.env, u"10001100003"_qs, u"新三(  )\r\n■答案：A\r\n"_qs));
  EXPECT_EQ(fileBytes(t.path(u"\\yibanti\\100011.mmd"_qs)),
            ToGbk(u"\r\n●1●一(  )\r\nA．甲\r\n■答案：A\r\n●2●二(  )\r\nA．乙\r\n■答案：B\r\n"
                  u"●3●新三(  )\r\n■答案：A\r\n\r\n"_qs));
}

TEST(PutItemText, TheFirstQuestionOfTheFile) {
  test::TestEnv t;
  t.writeGbk(u"\\yibanti\\100011.mmd"_qs, kThree);
  ASSERT_TRUE(PutItemText(t.env, u"10001100001"_qs, u"新一\r\n"_qs));
  EXPECT_EQ(fileBytes(t.path(u"\\yibanti\\100011.mmd"_qs)),
            ToGbk(u"\r\n●1●新一\r\n●2●二(  )\r\nA．乙\r\n■答案：B\r\n●3●三(  )\r\nA．丙\r\n■答案：C\r\n\r\n"_qs));
}

TEST(PutItemText, AMissingMarkerAppendsTheQuestionAtTheEnd) {
  test::TestEnv t;
  t.writeGbk(u"\\yibanti\\100011.mmd"_qs, kThree);
  ASSERT_TRUE(PutItemText(t.env, u"10001100007"_qs, u"七(  )\r\n■答案：B\r\n"_qs));
  // The file's own end, the line end added on reading, the marker's line
  // end: three in a row, of which the single pass takes one pair.
  EXPECT_EQ(fileBytes(t.path(u"\\yibanti\\100011.mmd"_qs)),
            ToGbk(kThree.left(kThree.size() - 2) + u"\r\n\r\n●7●七(  )\r\n■答案：B\r\n\r\n"_qs));
  // Read back, it is the question 7 of the file.
  EXPECT_EQ(GetOneOldTi(t.env, u"10001100007"_qs), u"七(  )\r\n■答案：B\r\n\r\n"_qs);
}

TEST(PutItemText, AMissingMarkerInAFileWithoutFinalLineEnd) {
  test::TestEnv t;
  t.writeGbk(u"\\yibanti\\100011.mmd"_qs, u"\r\n●1●一"_qs);
  ASSERT_TRUE(PutItemText(t.env, u"10001100002"_qs, u"二"_qs));
  EXPECT_EQ(fileBytes(t.path(u"\\yibanti\\100011.mmd"_qs)), ToGbk(u"\r\n●1●一\r\n●2●二\r\n"_qs));
}

TEST(PutItemText, TheTextFollowsDirectlyBehindItsMarker) {
  test::TestEnv t;
  t.writeGbk(u"\\yibanti\\100011.mmd"_qs, kThree);
  ASSERT_TRUE(PutItemText(t.env, u"10001100002"_qs, u"\r\n\r\n新二\r\n"_qs));
  // CR LF CR LF becomes one CR LF; then "●" CR LF becomes "●".
  EXPECT_EQ(fileBytes(t.path(u"\\yibanti\\100011.mmd"_qs)),
            ToGbk(u"\r\n●1●一(  )\r\nA．甲\r\n■答案：A\r\n●2●新二\r\n●3●三(  )\r\nA．丙\r\n■答案：C\r\n\r\n"_qs));
}

TEST(PutItemText, BlankLinesOfTheWholeFileAreSqueezedInOnePass) {
  test::TestEnv t;
  t.writeGbk(u"\\yibanti\\100011.mmd"_qs, u"\r\n●1●一\r\n\r\n甲\r\n\r\n\r\n乙\r\n●2●二\r\n"_qs);
  ASSERT_TRUE(PutItemText(t.env, u"10001100002"_qs, u"新二\r\n"_qs));
  EXPECT_EQ(fileBytes(t.path(u"\\yibanti\\100011.mmd"_qs)), ToGbk(u"\r\n●1●一\r\n甲\r\n\r\n乙\r\n●2●新二\r\n\r\n"_qs));
}

TEST(PutItemText, ATextWithoutFinalLineEndJoinsTheNextMarker) {
  test::TestEnv t;
  t.writeGbk(u"\\yibanti\\100011.mmd"_qs, kThree);
  ASSERT_TRUE(PutItemText(t.env, u"10001100001"_qs, u"新一"_qs));
  EXPECT_EQ(fileBytes(t.path(u"\\yibanti\\100011.mmd"_qs)),
            ToGbk(u"\r\n●1●新一●2●二(  )\r\nA．乙\r\n■答案：B\r\n●3●三(  )\r\nA．丙\r\n■答案：C\r\n\r\n"_qs));
}

TEST(PutItemText, ASimulatedPaperIsWrittenInItsOwnFile) {
  test::TestEnv t;
  t.writeGbk(u"\\moniti\\00201.mmd"_qs, u"\r\n●1●一\r\n●2●二\r\n"_qs);
  ASSERT_TRUE(PutItemText(t.env, u"00201300002"_qs, u"新二\r\n"_qs));
  EXPECT_EQ(fileBytes(t.path(u"\\moniti\\00201.mmd"_qs)), ToGbk(u"\r\n●1●一\r\n●2●新二\r\n\r\n"_qs));
  EXPECT_FALSE(QFile::exists(t.path(u"\\yibanti\\002013.mmd"_qs)));
}

TEST(PutItemText, AMissingFileIsCreatedWithTheQuestion) {
  test::TestEnv t;
  t.mkdir(u"\\yibanti"_qs);
  ASSERT_TRUE(PutItemText(t.env, u"10001100003"_qs, u"三"_qs));
  EXPECT_EQ(fileBytes(t.path(u"\\yibanti\\100011.mmd"_qs)), ToGbk(u"\r\n●3●三\r\n"_qs));
}

TEST(PutItemText, AMissingFolderFailsWithoutAFile) {
  test::TestEnv t;
  EXPECT_FALSE(PutItemText(t.env, u"10001100003"_qs, u"三"_qs));
  EXPECT_FALSE(QFile::exists(t.path(u"\\yibanti\\100011.mmd"_qs)));
}

TEST(PutItemText, NoTemporaryFileIsLeftBehind) {
  test::TestEnv t;
  t.writeGbk(u"\\yibanti\\100011.mmd"_qs, kThree);
  ASSERT_TRUE(PutItemText(t.env, u"10001100002"_qs, u"新二\r\n"_qs));
  EXPECT_EQ(QDir(t.path(u"\\yibanti"_qs)).entryList(QDir::Files), QStringList{u"100011.mmd"_qs});
}

// ---- AppendItemText ----

TEST(AppendItemText, ATextWithoutMarkerGetsOne) {
  test::TestEnv t;
  t.writeGbk(u"\\yibanti\\100011.mmd"_qs, u"\r\n●1●一\r\n"_qs);
  ASSERT_TRUE(AppendItemText(t.env, u"10001100007"_qs, u"\r\n［多选题］七(  )\r\n■答案：AB\r\n"_qs));
  EXPECT_EQ(fileBytes(t.path(u"\\yibanti\\100011.mmd"_qs)), ToGbk(u"\r\n●1●一\r\n●7●七(  )\r\n■答案：AB\r\n\r\n"_qs));
  EXPECT_EQ(GetOneOldTi(t.env, u"10001100007"_qs), u"七(  )\r\n■答案：AB\r\n\r\n"_qs);
}

TEST(AppendItemText, EveryMarkerSignOfTheTextGetsTheNumber) {
  test::TestEnv t;
  t.writeGbk(u"\\yibanti\\100011.mmd"_qs, u"\r\n●1●一\r\n"_qs);
  ASSERT_TRUE(AppendItemText(t.env, u"10001100012"_qs, u"●\r\n题●甲\r\n[单选题]"_qs));
  EXPECT_EQ(fileBytes(t.path(u"\\yibanti\\100011.mmd"_qs)), ToGbk(u"\r\n●1●一\r\n●12●题●12●甲\r\n\r\n"_qs));
}

TEST(AppendItemText, TheFileIsAlwaysAnInternalBank) {
  test::TestEnv t;
  t.mkdir(u"\\yibanti"_qs);
  ASSERT_TRUE(AppendItemText(t.env, u"00201100003"_qs, u"三"_qs));
  EXPECT_EQ(fileBytes(t.path(u"\\yibanti\\002011.mmd"_qs)), ToGbk(u"●3●三\r\n"_qs));
  EXPECT_FALSE(QFile::exists(t.path(u"\\moniti\\00201.mmd"_qs)));
}

TEST(AppendItemText, TheFallbackIdLandsInItsOwnBank) {
  test::TestEnv t;
  t.mkdir(u"\\yibanti"_qs);
  ASSERT_TRUE(AppendItemText(t.env, u"90001300001"_qs, u"\r\n甲\r\n"_qs));
  ASSERT_TRUE(AppendItemText(t.env, u"90001300001"_qs, u"\r\n乙\r\n"_qs));
  EXPECT_EQ(fileBytes(t.path(u"\\yibanti\\900013.mmd"_qs)), ToGbk(u"●1●甲\r\n\r\n●1●乙\r\n\r\n"_qs));
}

TEST(AppendItemText, AMissingFolderFails) {
  test::TestEnv t;
  EXPECT_FALSE(AppendItemText(t.env, u"10001100003"_qs, u"三"_qs));
}

// ---- small helpers ----

TEST(BankHelpers, GetMidAndItsFourWords) {
  EXPECT_EQ(GetMid(u"abc"_qs, u"x"_qs, u"y"_qs), u"B>A and C>A"_qs);
  EXPECT_EQ(GetMid(u"abc"_qs, u"x"_qs, u"b"_qs), u"B>A"_qs);
  EXPECT_EQ(GetMid(u"abc"_qs, u"b"_qs, u"y"_qs), u"C>A"_qs);
  EXPECT_EQ(GetMid(u"abc"_qs, u"c"_qs, u"b"_qs), u"C-B"_qs);
  EXPECT_EQ(GetMid(u"甲●1●乙●2●"_qs, u"●1●"_qs, u"●2●"_qs), u"●1●乙"_qs);
}

TEST(BankHelpers, ReplaceStringReplacesTheFirstOnly) {
  EXPECT_EQ(ReplaceString(u"●●"_qs, u"●"_qs, u"●1●"_qs), u"●1●●"_qs);
}

TEST(BankHelpers, RndAbcdHoldsEachLetterOnce) {
  QSet<QString> orders;
  for (int i = 0; i < 2000; ++i) {
    const QString s = RndABCD();
    ASSERT_EQ(s.size(), 4);
    QString sorted = s;
    std::sort(sorted.begin(), sorted.end());
    ASSERT_EQ(sorted, u"ABCD"_qs) << s.toStdString();
    orders.insert(s);
  }
  // All 24 orders come up.
  EXPECT_EQ(orders.size(), 24);
}

TEST(BankHelpers, IsInTheFlag) {
  EXPECT_TRUE(IsInTheFlag(u"12-30"_qs, 12));
  EXPECT_TRUE(IsInTheFlag(u"12-30"_qs, 20));
  EXPECT_TRUE(IsInTheFlag(u"12-30"_qs, 30));
  EXPECT_FALSE(IsInTheFlag(u"12-30"_qs, 11));
  EXPECT_FALSE(IsInTheFlag(u"12-30"_qs, 31));
  EXPECT_FALSE(IsInTheFlag(u"12"_qs, 12));
  EXPECT_FALSE(IsInTheFlag(u""_qs, 0));
  EXPECT_TRUE(IsInTheFlag(u" 5 - 7"_qs, 6));
}

// ---- the kept bank text ----

TEST(BankText, TheSamePathGivesTheKeptText) {
  test::TestEnv t;
  t.writeGbk(u"\\yibanti\\100011.mmd"_qs, u"\r\n●1●一\r\n"_qs);
  t.writeGbk(u"\\yibanti\\100012.mmd"_qs, u"\r\n●1●多\r\n"_qs);
  const QString ids = u"100011000011000110000210001200001"_qs;
  BankText bank;
  EXPECT_EQ(bank.MyGetAllShiTi(t.env, ids, 1), u"\r\n●1●一\r\n"_qs);
  EXPECT_EQ(bank.path(), t.path(u"\\yibanti\\100011.mmd"_qs));
  t.writeGbk(u"\\yibanti\\100011.mmd"_qs, u"\r\n●1●改\r\n"_qs);
  // Same file: not read again.
  EXPECT_EQ(bank.MyGetAllShiTi(t.env, ids, 2), u"\r\n●1●一\r\n"_qs);
  // Another bank: read.
  EXPECT_EQ(bank.MyGetAllShiTi(t.env, ids, 3), u"\r\n●1●多\r\n"_qs);
  EXPECT_EQ(bank.text(), u"\r\n●1●多\r\n"_qs);
  // Back to the first: read again, now with the change.
  EXPECT_EQ(bank.MyGetAllShiTi(t.env, ids, 1), u"\r\n●1●改\r\n"_qs);
  t.writeGbk(u"\\yibanti\\100011.mmd"_qs, u"\r\n●1●再改\r\n"_qs);
  bank.forget();
  EXPECT_EQ(bank.loadFor(t.env, u"10001100001"_qs), u"\r\n●1●再改\r\n"_qs);
}

TEST(BankText, AMissingFileGivesEmptyText) {
  test::TestEnv t;
  BankText bank;
  EXPECT_EQ(bank.loadFor(t.env, u"10001100001"_qs), u""_qs);
  EXPECT_EQ(bank.MyGetAllShiTi(t.env, u"10001100001"_qs, 2), u""_qs);
}
