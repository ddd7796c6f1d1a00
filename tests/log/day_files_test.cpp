#include "log/day_files.h"

#include <gtest/gtest.h>

#include "platform/textfile.h"
#include "support/test_env.h"

using namespace mj;

TEST(DayFiles, AListIsWrittenAsOneQuotedValue) {
  test::TestEnv t;
  t.mkdir(u"\\模糊题"_qs);
  const QString f = t.path(u"\\模糊题\\20260305.ini"_qs);
  ASSERT_TRUE(WriteIdFile(f, u"1000110000110001100002"_qs));
  EXPECT_EQ(ReadBytes(f), QByteArray("\"1000110000110001100002\"\r\n"));
  EXPECT_EQ(ReadIdFile(f), u"1000110000110001100002"_qs);
  ASSERT_TRUE(WriteIdFile(f, QString()));
  EXPECT_EQ(ReadBytes(f), QByteArray("\"\"\r\n"));
  EXPECT_EQ(ReadIdFile(f), u""_qs);
}

TEST(DayFiles, ADamagedListReadsAsEmpty) {
  test::TestEnv t;
  t.writeGbk(u"\\模糊题\\twelve.ini"_qs, u"\"100011000011\"\r\n"_qs);
  EXPECT_EQ(ReadIdFile(t.path(u"\\模糊题\\twelve.ini"_qs)), u""_qs);
  EXPECT_EQ(ReadIdFile(t.path(u"\\模糊题\\missing.ini"_qs)), u""_qs);
  // Without quotes the value runs to the line end.
  t.writeGbk(u"\\模糊题\\bare.ini"_qs, u"10001100001\r\n"_qs);
  EXPECT_EQ(ReadIdFile(t.path(u"\\模糊题\\bare.ini"_qs)), u"10001100001"_qs);
}

TEST(DayFiles, TodaysFileGetsTheNewIdsInFront) {
  test::TestEnv t;
  t.clock.setDate(QDate(2026, 3, 5));
  EXPECT_EQ(TodayIniName(QDate(2026, 3, 5)), u"20260305.ini"_qs);
  ASSERT_TRUE(PrependToTodayFile(t.env, kGuessFolder, u"10001100001"_qs));
  ASSERT_TRUE(PrependToTodayFile(t.env, kGuessFolder, u"10001100002"_qs));
  ASSERT_TRUE(PrependToTodayFile(t.env, kGuessFolder, u"10001100001"_qs));
  EXPECT_EQ(ReadBytes(t.path(u"\\模糊题\\20260305.ini"_qs)), QByteArray("\"100011000011000110000210001100001\"\r\n"));
  // A damaged file counts as empty and is overwritten.
  t.writeGbk(u"\\更新的题\\20260305.ini"_qs, u"\"1234\"\r\n"_qs);
  ASSERT_TRUE(PrependToTodayFile(t.env, kUpdatedFolder, u"10001100009"_qs));
  EXPECT_EQ(ReadBytes(t.path(u"\\更新的题\\20260305.ini"_qs)), QByteArray("\"10001100009\"\r\n"));
}

TEST(DayFiles, OnlyNamesOfTwelveCharactersAreDayFiles) {
  test::TestEnv t;
  t.writeGbk(u"\\模糊题\\20260305.ini"_qs, u"\"10001100001\"\r\n"_qs);
  t.writeGbk(u"\\模糊题\\20260301.INI"_qs, u"\"10001100002\"\r\n"_qs);
  t.writeGbk(u"\\模糊题\\2026031.ini"_qs, u"\"10001100003\"\r\n"_qs);
  t.writeGbk(u"\\模糊题\\note.txt"_qs, u"x"_qs);
  const QString folder = t.path(u"\\模糊题"_qs);
  // Files of other name lengths count, and upper-case extensions match.
  EXPECT_EQ(CountFiles(folder, u"ini"_qs), 3);
  EXPECT_EQ(CountFiles(folder, u"txt"_qs), 1);
  EXPECT_EQ(CountFiles(t.path(u"\\none"_qs), u"ini"_qs), 0);
  EXPECT_EQ(GetDayFileNames(folder, u"ini"_qs), (QStringList{u"20260301"_qs, u"20260305"_qs}));
  EXPECT_EQ(ReadAllIdFiles(folder), u"1000110000210001100001"_qs);
}

TEST(DayFiles, ADayFileIsFoundByItsDate) {
  test::TestEnv t;
  t.writeGbk(u"\\更新的题\\20030615.ini"_qs, u"\"10001100001\"\r\n"_qs);
  t.writeGbk(u"\\更新的题\\2003615.ini"_qs, u"\"10001100002\"\r\n"_qs);
  const QString folder = t.path(u"\\更新的题"_qs);
  EXPECT_EQ(ReadDayFile(folder, u"2003-06-15"_qs), u"10001100001"_qs);
  // Without "-", or of another length, the text is the name as it stands.
  EXPECT_EQ(ReadDayFile(folder, u"20030615"_qs), u"10001100001"_qs);
  EXPECT_EQ(ReadDayFile(folder, u"2003-6-15"_qs), u""_qs);
  EXPECT_EQ(ReadDayFile(folder, u"2003615"_qs), u"10001100002"_qs);
}
