#include "settings/settings.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "platform/textfile.h"
#include "support/test_env.h"

using namespace mj;

namespace {

// The file as the program writes it: each line followed by CR LF.
QString FileText(const QStringList& lines) {
  QString out;
  for (const QString& l : lines) out += l + u"\r\n"_qs;
  return out;
}

// The 14 lines with the first defaults, for a given day stamp.
QStringList FirstDefaultLines(const QString& stamp) {
  return {u"STOKTIMES=1"_qs,
          u"STADDNUM=1"_qs,
          u"STPASSDAYS=30"_qs,
          u"TSOKTIMES=1"_qs,
          u"TSADDNUM=1"_qs,
          u"TSPASSDAYS=30"_qs,
          u"PUBFONTSIZE=15"_qs,
          u"PUBBACKCOLOR=16777215"_qs,
          u"PUBFORECOLOR=0"_qs,
          u"STLASTUPDATE="_qs + stamp,
          u"TSLASTUPDATE="_qs + stamp,
          u"PUBFONTNAME=宋体"_qs,
          u"PUBFONTIT=FALSE"_qs,
          u"PUBFONTBOLD=FALSE"_qs};
}

QByteArray FileBytes(const test::TestEnv& t) { return ReadBytes(t.path(kSettingsFile)); }

std::array<int, 6> Numbers(const Settings& s) {
  return {s.number(0), s.number(1), s.number(2), s.number(3), s.number(4), s.number(5)};
}

class SettingsFile : public ::testing::Test {
 protected:
  SettingsFile() { t.mkdir(u"\\ini"_qs); }
  // Writes the settings file with the given lines and reads it.
  IniError readLines(const QStringList& lines) {
    t.writeGbk(kSettingsFile, FileText(lines));
    return s.ReadDataFromIni(t.env);
  }
  test::TestEnv t;  // today is 2026-11-21: stamp 1121
  Settings s;
};

}  // namespace

// ---- day stamps ----

TEST(DayStamps, MonthAndDayWrittenBehindEachOther) {
  EXPECT_EQ(DayStamp(QDate(2026, 11, 15)), 1115);
  EXPECT_EQ(DayStamp(QDate(2026, 1, 5)), 15);
  EXPECT_EQ(DayStamp(QDate(2026, 1, 15)), 115);
  EXPECT_EQ(DayStamp(QDate(2026, 11, 5)), 115);
  EXPECT_EQ(DayStamp(QDate(2026, 11, 1)), 111);
  EXPECT_EQ(DayStamp(QDate(2026, 1, 11)), 111);
  EXPECT_EQ(DayStamp(QDate(2026, 12, 31)), 1231);
}

TEST(DayStamps, ChangedStampIsFormedFromMonthLessOneAndDayLessOne) {
  EXPECT_EQ(ChangedStamp(QDate(2026, 11, 21)), 1020);
  EXPECT_EQ(ChangedStamp(QDate(2026, 12, 1)), 110);
  EXPECT_EQ(ChangedStamp(QDate(2026, 1, 10)), 9);  // "0" & "9"
  EXPECT_EQ(ChangedStamp(QDate(2026, 10, 1)), 90);
}

TEST(DayStamps, FirstJanuaryGivesZeroWhichStillDiffersFromTheDaysStamp) {
  const QDate d(2027, 1, 1);
  EXPECT_EQ(ChangedStamp(d), 0);
  EXPECT_EQ(DayStamp(d), 11);
  EXPECT_NE(ChangedStamp(d), DayStamp(d));
}

// ---- the keys and the file layout ----

TEST(SettingsKeysTest, FourteenKeysInTheFilesOrder) {
  EXPECT_EQ(SettingsKeys(), (QStringList{u"stoktimes="_qs, u"staddnum="_qs, u"stpassdays="_qs, u"tsoktimes="_qs,
                                         u"tsaddnum="_qs, u"tspassdays="_qs, u"PubFontSize="_qs, u"pubbackcolor="_qs,
                                         u"pubforecolor="_qs, u"stlastupdate="_qs, u"tslastupdate="_qs,
                                         u"pubfontname="_qs, u"pubfontIt="_qs, u"pubfontBold="_qs}));
}

TEST(SettingsBounds, SpinBoundsOfTheSixNumbers) {
  const int expected[6][2] = {{1, 10}, {1, 6}, {0, 210}, {0, 10}, {0, 6}, {0, 210}};
  for (int i = 0; i < 6; ++i) {
    EXPECT_EQ(Settings::minimum(i), expected[i][0]) << i;
    EXPECT_EQ(Settings::maximum(i), expected[i][1]) << i;
  }
}

// ---- first read without a file ----

TEST_F(SettingsFile, FirstReadWithoutFileCreatesItWithTheFirstDefaults) {
  ASSERT_FALSE(FileExists(t.path(kSettingsFile)));
  const IniError e = s.ReadDataFromIni(t.env);
  EXPECT_FALSE(e.pending());
  EXPECT_EQ(FileBytes(t), ToGbk(FileText(FirstDefaultLines(u"1121"_qs))));
  EXPECT_EQ(Numbers(s), (std::array<int, 6>{1, 1, 30, 1, 1, 30}));
  EXPECT_EQ(s.fontSize(), 15);
  EXPECT_EQ(s.backColor(), 16777215);
  EXPECT_EQ(s.foreColor(), 0);
  EXPECT_EQ(s.stLastUpdate(), 1121);
  EXPECT_EQ(s.tsLastUpdate(), 1121);
  EXPECT_EQ(s.fontName(), u"宋体"_qs);
  EXPECT_FALSE(s.fontItalic());
  EXPECT_FALSE(s.fontBold());
}

TEST_F(SettingsFile, FirstReadWithoutFileReplacesValuesHeldBefore) {
  // Whatever the object held, the read starts from the first defaults.
  s.setNumber(kStOkTimes, 7);
  s.setFontName(u"Arial"_qs);
  s.setStLastUpdate(5);
  s.ReadDataFromIni(t.env);
  EXPECT_EQ(s.number(kStOkTimes), 1);
  EXPECT_EQ(s.fontName(), u"宋体"_qs);
  EXPECT_EQ(s.stLastUpdate(), 1121);
  EXPECT_EQ(FileBytes(t), ToGbk(FileText(FirstDefaultLines(u"1121"_qs))));
}

TEST_F(SettingsFile, ReadingAnExistingFileDoesNotRewriteIt) {
  const QString text = u"stoktimes=3\r\n"_qs;  // lower case, one key only
  t.writeGbk(kSettingsFile, text);
  s.ReadDataFromIni(t.env);
  EXPECT_EQ(FileBytes(t), ToGbk(text));
  EXPECT_EQ(s.number(kStOkTimes), 3);
}

// ---- writing ----

TEST_F(SettingsFile, SaveWritesFourteenUpperCasedLinesByteForByte) {
  s.ReadDataFromIni(t.env);
  s.setNumber(kStOkTimes, 3);
  s.setNumber(kStAddNum, 2);
  s.setNumber(kStPassDays, 7);
  s.setNumber(kTsOkTimes, 0);
  s.setNumber(kTsAddNum, 0);
  s.setNumber(kTsPassDays, 210);
  TextStyle st;
  st.fontSize = 20;
  st.backColor = 65535;
  st.foreColor = 255;
  st.fontName = u"Microsoft YaHei"_qs;
  st.italic = true;
  st.bold = false;
  s.setStyle(st);
  s.setStLastUpdate(1019);
  s.setTsLastUpdate(-3);
  ASSERT_TRUE(s.CreateIni(t.env));
  EXPECT_EQ(FileBytes(t),
            ToGbk(FileText({u"STOKTIMES=3"_qs, u"STADDNUM=2"_qs, u"STPASSDAYS=7"_qs, u"TSOKTIMES=0"_qs,
                            u"TSADDNUM=0"_qs, u"TSPASSDAYS=210"_qs, u"PUBFONTSIZE=20"_qs, u"PUBBACKCOLOR=65535"_qs,
                            u"PUBFORECOLOR=255"_qs, u"STLASTUPDATE=1019"_qs, u"TSLASTUPDATE=-3"_qs,
                            u"PUBFONTNAME=MICROSOFT YAHEI"_qs, u"PUBFONTIT=TRUE"_qs, u"PUBFONTBOLD=FALSE"_qs})));
}

TEST_F(SettingsFile, TheFileIsGbkOnDisk) {
  s.ReadDataFromIni(t.env);
  const QByteArray bytes = FileBytes(t);
  // 宋体 in GBK is CB CE CC E5.
  EXPECT_TRUE(bytes.contains(QByteArray("PUBFONTNAME=\xCB\xCE\xCC\xE5\r\n")));
}

TEST_F(SettingsFile, LatinFontNameComesBackInCapitalsAfterOneSave) {
  s.ReadDataFromIni(t.env);
  s.setFontName(u"Arial"_qs);
  s.CreateIni(t.env);
  Settings again;
  again.ReadDataFromIni(t.env);
  EXPECT_EQ(again.fontName(), u"ARIAL"_qs);
  EXPECT_TRUE(FileBytes(t).contains("PUBFONTNAME=ARIAL\r\n"));
}

TEST_F(SettingsFile, SaveAndReadGiveTheSameValues) {
  s.ReadDataFromIni(t.env);
  s.setNumber(kStPassDays, 0);
  s.setNumber(kTsAddNum, 6);
  s.setFontSize(9);
  s.setFontBold(true);
  s.setBackColor(12632256);
  s.setStLastUpdate(1120);
  s.CreateIni(t.env);
  Settings again;
  again.ReadDataFromIni(t.env);
  EXPECT_EQ(Numbers(again), Numbers(s));
  EXPECT_EQ(again.style(), s.style());
  EXPECT_EQ(again.stLastUpdate(), 1120);
  EXPECT_EQ(again.tsLastUpdate(), 1121);
}

TEST_F(SettingsFile, CreateIniFailsWithoutTheFolder) {
  test::TestEnv bare;
  EXPECT_FALSE(s.CreateIni(bare.env));
  EXPECT_FALSE(FileExists(bare.path(kSettingsFile)));
}

// ---- reading: the six numbers ----

TEST_F(SettingsFile, StOkTimesZeroIsNotTakenWhileTsOkTimesZeroIs) {
  readLines({u"STOKTIMES=0"_qs, u"TSOKTIMES=0"_qs});
  EXPECT_EQ(s.number(kStOkTimes), 1);
  EXPECT_EQ(s.number(kTsOkTimes), 0);
}

TEST_F(SettingsFile, StAddNumZeroIsNotTakenWhileTsAddNumZeroIs) {
  readLines({u"STADDNUM=0"_qs, u"TSADDNUM=0"_qs});
  EXPECT_EQ(s.number(kStAddNum), 1);
  EXPECT_EQ(s.number(kTsAddNum), 0);
}

TEST_F(SettingsFile, ValuesOutOfBoundsLeaveTheDefaults) {
  readLines({u"STOKTIMES=11"_qs, u"STADDNUM=7"_qs, u"STPASSDAYS=211"_qs, u"TSOKTIMES=-1"_qs, u"TSADDNUM=7"_qs,
             u"TSPASSDAYS=99999"_qs});
  EXPECT_EQ(Numbers(s), (std::array<int, 6>{1, 1, 30, 1, 1, 30}));
}

TEST_F(SettingsFile, TheBoundsThemselvesAreTaken) {
  readLines({u"STOKTIMES=10"_qs, u"STADDNUM=6"_qs, u"STPASSDAYS=210"_qs, u"TSOKTIMES=10"_qs, u"TSADDNUM=6"_qs,
             u"TSPASSDAYS=0"_qs});
  EXPECT_EQ(Numbers(s), (std::array<int, 6>{10, 6, 210, 10, 6, 0}));
  readLines({u"STOKTIMES=1"_qs, u"STADDNUM=1"_qs, u"STPASSDAYS=0"_qs, u"TSOKTIMES=0"_qs, u"TSADDNUM=0"_qs,
             u"TSPASSDAYS=210"_qs});
  EXPECT_EQ(Numbers(s), (std::array<int, 6>{1, 1, 0, 0, 0, 210}));
}

TEST_F(SettingsFile, NonNumericTextReadsAsZero) {
  // "abc" gives 0: out of bounds for stoktimes, a valid value for tsoktimes.
  readLines({u"STOKTIMES=abc"_qs, u"TSOKTIMES=abc"_qs, u"STPASSDAYS=x12"_qs});
  EXPECT_EQ(s.number(kStOkTimes), 1);
  EXPECT_EQ(s.number(kTsOkTimes), 0);
  EXPECT_EQ(s.number(kStPassDays), 0);
}

TEST_F(SettingsFile, NumbersUseTheNumericPrefix) {
  readLines({u"STOKTIMES= 4"_qs, u"STADDNUM=2 times"_qs, u"STPASSDAYS=12abc"_qs, u"TSPASSDAYS=&H10"_qs});
  EXPECT_EQ(s.number(kStOkTimes), 4);
  EXPECT_EQ(s.number(kStAddNum), 2);
  EXPECT_EQ(s.number(kStPassDays), 12);
  EXPECT_EQ(s.number(kTsPassDays), 16);
}

TEST_F(SettingsFile, NumbersAreRoundedHalfToEven) {
  readLines({u"STPASSDAYS=2.5"_qs, u"TSPASSDAYS=3.5"_qs, u"STADDNUM=1.4"_qs});
  EXPECT_EQ(s.number(kStPassDays), 2);
  EXPECT_EQ(s.number(kTsPassDays), 4);
  EXPECT_EQ(s.number(kStAddNum), 1);
  // 0.5 rounds to 0, below the bound of stoktimes; 10.4 rounds into it.
  readLines({u"STOKTIMES=0.5"_qs, u"TSOKTIMES=10.4"_qs});
  EXPECT_EQ(s.number(kStOkTimes), 1);
  EXPECT_EQ(s.number(kTsOkTimes), 10);
  readLines({u"STOKTIMES=10.6"_qs});
  EXPECT_EQ(s.number(kStOkTimes), 1);
}

TEST_F(SettingsFile, LookupsIgnoreCase) {
  readLines({u"stoktimes=3"_qs, u"StAddNum=2"_qs, u"STPASSDAYS=5"_qs, u"tSoKtImEs=4"_qs, u"tsaddnum=3"_qs,
             u"TsPassDays=6"_qs, u"pubfontsize=11"_qs, u"PubBackColor=255"_qs, u"PUBFORECOLOR=65280"_qs,
             u"StLastUpdate=1001"_qs, u"tslastupdate=1002"_qs, u"PubFontName=Arial"_qs, u"pubfontit=true"_qs,
             u"PUBFONTBOLD=True"_qs});
  EXPECT_EQ(Numbers(s), (std::array<int, 6>{3, 2, 5, 4, 3, 6}));
  EXPECT_EQ(s.fontSize(), 11);
  EXPECT_EQ(s.backColor(), 255);
  EXPECT_EQ(s.foreColor(), 65280);
  EXPECT_EQ(s.stLastUpdate(), 1001);
  EXPECT_EQ(s.tsLastUpdate(), 1002);
  EXPECT_EQ(s.fontName(), u"Arial"_qs);  // the text as it stands in the file
  EXPECT_TRUE(s.fontItalic());
  EXPECT_TRUE(s.fontBold());
}

TEST_F(SettingsFile, MissingKeysKeepTheDefaults) {
  readLines({u"STPASSDAYS=7"_qs, u"PUBFONTSIZE=12"_qs});
  EXPECT_EQ(Numbers(s), (std::array<int, 6>{1, 1, 7, 1, 1, 30}));
  EXPECT_EQ(s.fontSize(), 12);
  EXPECT_EQ(s.backColor(), 16777215);
  EXPECT_EQ(s.foreColor(), 0);
  EXPECT_EQ(s.stLastUpdate(), 1121);
  EXPECT_EQ(s.tsLastUpdate(), 1121);
  EXPECT_EQ(s.fontName(), u"宋体"_qs);
  EXPECT_FALSE(s.fontItalic());
  EXPECT_FALSE(s.fontBold());
}

TEST_F(SettingsFile, AnEmptyFileGivesTheFirstDefaultsAndStaysEmpty) {
  const IniError e = readLines({});
  EXPECT_FALSE(e.pending());
  EXPECT_EQ(Numbers(s), (std::array<int, 6>{1, 1, 30, 1, 1, 30}));
  EXPECT_EQ(s.stLastUpdate(), 1121);
  EXPECT_EQ(FileBytes(t), QByteArray());
}

TEST_F(SettingsFile, KeysAreFoundAnywhereFromTheStartOfTheText) {
  // The first place the key occurs counts, even inside another line.
  readLines({u"; my notes: xstoktimes=4 was too much"_qs, u"STOKTIMES=2"_qs, u"STOKTIMES=3"_qs});
  EXPECT_EQ(s.number(kStOkTimes), 4);
}

TEST_F(SettingsFile, GarbageLinesAroundTheKeysAreIgnored) {
  readLines({u"[userself]"_qs, u""_qs, u"这是一行说明"_qs, u"STOKTIMES=5"_qs, u"????"_qs, u"OTHER=9"_qs,
             u"TSPASSDAYS=14"_qs, u"   "_qs, u"PUBFONTNAME=黑体"_qs, u"=="_qs, u"PUBFONTBOLD=TRUE"_qs,
             u"trailing garbage"_qs});
  EXPECT_EQ(Numbers(s), (std::array<int, 6>{5, 1, 30, 1, 1, 14}));
  EXPECT_EQ(s.fontName(), u"黑体"_qs);
  EXPECT_TRUE(s.fontBold());
  EXPECT_EQ(s.fontSize(), 15);
}

TEST_F(SettingsFile, ALastLineWithoutLineEndIsReadToTheEnd) {
  t.writeGbk(kSettingsFile, u"STOKTIMES=4\r\nPUBFONTBOLD=TRUE"_qs);
  s.ReadDataFromIni(t.env);
  EXPECT_EQ(s.number(kStOkTimes), 4);
  EXPECT_TRUE(s.fontBold());
}

TEST_F(SettingsFile, TheValueEndsAtCrLfOnly) {
  // A bare LF does not end the value: the text up to the next CR LF is the
  // value of stpassdays here, whose numeric prefix is still 12.
  t.writeGbk(kSettingsFile, u"STPASSDAYS=12\nSTADDNUM=3\r\nPUBFONTSIZE=14\nX\r\n"_qs);
  s.ReadDataFromIni(t.env);
  EXPECT_EQ(s.number(kStPassDays), 12);
  EXPECT_EQ(s.number(kStAddNum), 3);
  // "14\nX" is no number: the size keeps its default.
  EXPECT_EQ(s.fontSize(), 15);
}

// ---- reading: the other eight ----

TEST_F(SettingsFile, StyleValuesThatDoNotConvertKeepTheirValue) {
  readLines({u"PUBFONTSIZE=abc"_qs, u"PUBBACKCOLOR=white"_qs, u"PUBFORECOLOR="_qs, u"STLASTUPDATE=today"_qs,
             u"TSLASTUPDATE=12x"_qs, u"PUBFONTIT=yes"_qs, u"PUBFONTBOLD="_qs});
  EXPECT_EQ(s.fontSize(), 15);
  EXPECT_EQ(s.backColor(), 16777215);
  EXPECT_EQ(s.foreColor(), 0);
  EXPECT_EQ(s.stLastUpdate(), 1121);
  EXPECT_EQ(s.tsLastUpdate(), 1121);
  EXPECT_FALSE(s.fontItalic());
  EXPECT_FALSE(s.fontBold());
}

TEST_F(SettingsFile, SixteenAndThirtyTwoBitRanges) {
  readLines({u"PUBFONTSIZE=40000"_qs, u"STLASTUPDATE=-32768"_qs, u"TSLASTUPDATE=32768"_qs,
             u"PUBBACKCOLOR=2147483648"_qs, u"PUBFORECOLOR=-2147483648"_qs});
  EXPECT_EQ(s.fontSize(), 15);
  EXPECT_EQ(s.stLastUpdate(), -32768);
  EXPECT_EQ(s.tsLastUpdate(), 1121);
  EXPECT_EQ(s.backColor(), 16777215);
  EXPECT_EQ(s.foreColor(), -2147483647 - 1);
}

TEST_F(SettingsFile, StyleNumbersAreRoundedHalfToEven) {
  readLines({u"PUBFONTSIZE=16.5"_qs, u"STLASTUPDATE=1120.5"_qs, u"TSLASTUPDATE= 1119.51 "_qs, u"PUBBACKCOLOR=&HFF"_qs});
  EXPECT_EQ(s.fontSize(), 16);
  EXPECT_EQ(s.stLastUpdate(), 1120);
  EXPECT_EQ(s.tsLastUpdate(), 1120);
  EXPECT_EQ(s.backColor(), 255);
}

TEST_F(SettingsFile, BooleansReadTrueFalseAndNumbers) {
  readLines({u"PUBFONTIT=-1"_qs, u"PUBFONTBOLD=false"_qs});
  EXPECT_TRUE(s.fontItalic());
  EXPECT_FALSE(s.fontBold());
  readLines({u"PUBFONTIT=0"_qs, u"PUBFONTBOLD= TRUE "_qs});
  EXPECT_FALSE(s.fontItalic());
  EXPECT_TRUE(s.fontBold());
}

TEST_F(SettingsFile, TheFontNameIsTakenAsItStands) {
  readLines({u"PUBFONTNAME=TIMES NEW ROMAN "_qs});
  EXPECT_EQ(s.fontName(), u"TIMES NEW ROMAN "_qs);
  readLines({u"PUBFONTNAME="_qs});
  EXPECT_EQ(s.fontName(), u""_qs);
}

TEST_F(SettingsFile, AFileInUtf8WithByteOrderMarkIsReadToo) {
  QByteArray bytes("\xEF\xBB\xBF");
  bytes += QStringLiteral("STOKTIMES=6\r\nPUBFONTNAME=楷体\r\n").toUtf8();
  ASSERT_TRUE(WriteBytesAtomic(t.path(kSettingsFile), bytes));
  s.ReadDataFromIni(t.env);
  EXPECT_EQ(s.number(kStOkTimes), 6);
  EXPECT_EQ(s.fontName(), u"楷体"_qs);
}

// ---- announcing the values ----

TEST_F(SettingsFile, AReadAnnouncesNumbersAndStyleOnce) {
  QSignalSpy style(&s, &Settings::styleChanged);
  QSignalSpy numbers(&s, &Settings::numbersChanged);
  readLines({u"STOKTIMES=3"_qs, u"STADDNUM=2"_qs, u"PUBFONTSIZE=20"_qs, u"PUBFONTBOLD=TRUE"_qs});
  EXPECT_EQ(style.count(), 1);
  EXPECT_EQ(numbers.count(), 1);
  // Even an unchanged style is announced again: the boxes apply it at once.
  s.ReadDataFromIni(t.env);
  EXPECT_EQ(style.count(), 2);
}

TEST_F(SettingsFile, StyleSettersAnnounceOnlyChanges) {
  QSignalSpy style(&s, &Settings::styleChanged);
  s.setFontName(u"宋体"_qs);
  EXPECT_EQ(style.count(), 0);
  s.setFontName(u"黑体"_qs);
  s.setBackColor(255);
  s.setForeColor(65280);
  s.setFontSize(9);
  s.setFontItalic(true);
  s.setFontBold(true);
  EXPECT_EQ(style.count(), 6);
}

// ---- the number fields and the stamps ----

TEST(SettingsNumbers, SetNumberBehavesLikeTheSpinControl) {
  Settings s;
  QSignalSpy numbers(&s, &Settings::numbersChanged);
  EXPECT_FALSE(s.setNumber(kStOkTimes, 0));
  EXPECT_EQ(s.number(kStOkTimes), 1);
  EXPECT_TRUE(s.setNumber(kTsOkTimes, 0));
  EXPECT_EQ(s.number(kTsOkTimes), 0);
  EXPECT_FALSE(s.setNumber(kStPassDays, 211));
  EXPECT_TRUE(s.setNumber(kStPassDays, 210));
  EXPECT_EQ(numbers.count(), 2);
  EXPECT_TRUE(s.setNumber(kStPassDays, 210));  // no change, no announcement
  EXPECT_EQ(numbers.count(), 2);
}

TEST(SettingsNumbers, NumberTextInBoundsIsTakenAndSetsTheChangedStamp) {
  Settings s;
  s.setStLastUpdate(1121);
  s.setTsLastUpdate(1121);
  const QDate today(2026, 11, 21);
  EXPECT_TRUE(s.takeNumberText(kStPassDays, u"45"_qs, today));
  EXPECT_EQ(s.number(kStPassDays), 45);
  EXPECT_EQ(s.stLastUpdate(), 1020);
  EXPECT_EQ(s.tsLastUpdate(), 1121);  // only the internal bank's stamp
}

TEST(SettingsNumbers, NumberTextOutOfBoundsIsNotTakenButStillSetsTheStamp) {
  Settings s;
  s.setStLastUpdate(1121);
  const QDate today(2026, 11, 21);
  EXPECT_FALSE(s.takeNumberText(kStOkTimes, u"0"_qs, today));
  EXPECT_EQ(s.number(kStOkTimes), 1);
  EXPECT_EQ(s.stLastUpdate(), 1020);
  EXPECT_FALSE(s.takeNumberText(kStOkTimes, u"abc"_qs, today));
  EXPECT_FALSE(s.takeNumberText(kStOkTimes, u"11"_qs, today));
  EXPECT_FALSE(s.takeNumberText(kStOkTimes, u"10.4"_qs, today));  // above 10 before rounding
  EXPECT_EQ(s.number(kStOkTimes), 1);
  EXPECT_TRUE(s.takeNumberText(kTsOkTimes, u"abc"_qs, today));  // 0 is within 0..10
  EXPECT_EQ(s.number(kTsOkTimes), 0);
  EXPECT_TRUE(s.takeNumberText(kStPassDays, u"2.5"_qs, today));
  EXPECT_EQ(s.number(kStPassDays), 2);
  EXPECT_TRUE(s.takeNumberText(kStPassDays, u"7 days"_qs, today));
  EXPECT_EQ(s.number(kStPassDays), 7);
}

TEST(SettingsNumbers, OnFirstJanuaryTheChangedStampIsZero) {
  Settings s;
  s.setStLastUpdate(DayStamp(QDate(2027, 1, 1)));
  s.takeNumberText(kStAddNum, u"2"_qs, QDate(2027, 1, 1));
  EXPECT_EQ(s.stLastUpdate(), 0);
  EXPECT_NE(s.stLastUpdate(), DayStamp(QDate(2027, 1, 1)));
}

TEST(SettingsNumbers, SubtractStampsTakesOneFromBothWhateverTheyWere) {
  Settings s;
  s.setStLastUpdate(500);  // not today's stamp
  s.setTsLastUpdate(1121);
  s.subtractStamps();
  EXPECT_EQ(s.stLastUpdate(), 499);
  EXPECT_EQ(s.tsLastUpdate(), 1120);
  s.setStLastUpdate(0);
  s.setTsLastUpdate(-32768);
  s.subtractStamps();
  EXPECT_EQ(s.stLastUpdate(), -1);
  EXPECT_EQ(s.tsLastUpdate(), -32768);  // cannot go lower
}

TEST(SettingsNumbers, SecondDefaults) {
  Settings s;
  QSignalSpy style(&s, &Settings::styleChanged);
  s.setFontName(u"Arial"_qs);
  s.setSecondDefaults();
  EXPECT_EQ(Numbers(s), (std::array<int, 6>{2, 1, 30, 1, 2, 10}));
  EXPECT_EQ(s.style(), TextStyle{});
  EXPECT_EQ(s.fontName(), u"宋体"_qs);
  EXPECT_EQ(s.fontSize(), 15);
  EXPECT_EQ(s.backColor(), 16777215);
  EXPECT_EQ(s.foreColor(), 0);
  EXPECT_EQ(s.stLastUpdate(), 0);
  EXPECT_EQ(s.tsLastUpdate(), 0);
  EXPECT_EQ(style.count(), 2);
}

// ---- a file that can be neither read nor created ----

TEST(SettingsFileAccess, WithoutTheIniFolderTheReadEndsWithError75) {
  test::TestEnv t;  // no \ini folder
  Settings s;
  s.setNumber(kStOkTimes, 5);
  const IniError e = s.ReadDataFromIni(t.env);
  EXPECT_TRUE(e.pending());
  EXPECT_EQ(e.number, 75);
  // The first defaults stand; nothing was written.
  EXPECT_EQ(Numbers(s), (std::array<int, 6>{1, 1, 30, 1, 1, 30}));
  EXPECT_EQ(s.stLastUpdate(), 1121);
  EXPECT_FALSE(PathExists(t.path(u"\\ini"_qs)));
}

TEST(SettingsFileAccess, TheSettingsWindowFallsBackToTheSecondDefaults) {
  test::TestEnv t;
  Settings s;
  const IniError e = s.loadForSettingsWindow(t.env);
  EXPECT_EQ(e.number, 75);
  EXPECT_EQ(Numbers(s), (std::array<int, 6>{2, 1, 30, 1, 2, 10}));
  EXPECT_EQ(s.style(), TextStyle{});
  EXPECT_EQ(s.stLastUpdate(), 0);
  EXPECT_EQ(s.tsLastUpdate(), 0);
}

TEST(SettingsFileAccess, AFolderInThePlaceOfTheFileCannotBeReadOrReplaced) {
  test::TestEnv t;
  t.mkdir(u"\\ini\\userself.ini"_qs);
  Settings s;
  EXPECT_EQ(s.loadForSettingsWindow(t.env).number, 75);
  EXPECT_EQ(Numbers(s), (std::array<int, 6>{2, 1, 30, 1, 2, 10}));
  EXPECT_TRUE(DirExists(t.path(kSettingsFile)));
}

TEST(SettingsFileAccess, WithAReadableFileTheWindowKeepsTheFilesValues) {
  test::TestEnv t;
  t.writeGbk(kSettingsFile, u"STOKTIMES=4\r\n"_qs);
  Settings s;
  EXPECT_FALSE(s.loadForSettingsWindow(t.env).pending());
  EXPECT_EQ(Numbers(s), (std::array<int, 6>{4, 1, 30, 1, 1, 30}));
}

TEST(SettingsFileAccess, ErrorBoxText) {
  IniError e;
  e.number = 13;
  e.source = u"明镜学习伴侣"_qs;
  e.description = u"Type mismatch"_qs;
  EXPECT_EQ(ErrorBoxText(e), u"Error # 13 was generated by 明镜学习伴侣\rType mismatch"_qs);
}

TEST(TextStyleFont, TheFontDialogSeesTheStyleAndGivesItBack) {
  TextStyle s;
  s.fontName = u"黑体"_qs;
  s.fontSize = 21;
  s.bold = true;
  s.foreColor = 255;
  s.backColor = 65280;
  const FontChoice f = FontChoiceOf(s);
  EXPECT_EQ(f.name, u"黑体"_qs);
  EXPECT_EQ(f.size, 21);
  EXPECT_TRUE(f.bold);
  EXPECT_FALSE(f.italic);
  EXPECT_EQ(f.color, 255);
  EXPECT_EQ(StyleWithFont(s, f), s);

  FontChoice chosen{u"楷体"_qs, 40000, false, true, 16711680};
  const TextStyle t = StyleWithFont(s, chosen);
  EXPECT_EQ(t.fontName, u"楷体"_qs);
  EXPECT_EQ(t.fontSize, 32767);  // within the stored range
  EXPECT_FALSE(t.bold);
  EXPECT_TRUE(t.italic);
  EXPECT_EQ(t.foreColor, 16711680);
  EXPECT_EQ(t.backColor, 65280);  // not the font dialog's
  chosen.size = 0;
  EXPECT_EQ(StyleWithFont(s, chosen).fontSize, 1);
}
