#include <gtest/gtest.h>

#include <QDateTime>
#include <QFileInfo>

#include "platform/file_moves.h"
#include "support/test_env.h"

using namespace mj;

TEST(FileMoves, RenameKeepingTakesTheNewNameWhenItIsFree) {
  test::TestEnv t;
  t.writeGbk(u"\\外部题库\\卷.txt"_qs, u"第一题"_qs);
  EXPECT_TRUE(RenameFileKeeping(t.path(u"\\外部题库\\卷.txt"_qs), t.path(u"\\外部题库\\50%卷.txt"_qs)));
  EXPECT_FALSE(QFileInfo::exists(t.path(u"\\外部题库\\卷.txt"_qs)));
  EXPECT_EQ(t.readGbk(u"\\外部题库\\50%卷.txt"_qs), u"第一题"_qs);
}

TEST(FileMoves, RenameKeepingNeverReplacesAFile) {
  test::TestEnv t;
  t.writeGbk(u"\\a.txt"_qs, u"甲"_qs);
  t.writeGbk(u"\\b.txt"_qs, u"乙"_qs);
  EXPECT_FALSE(RenameFileKeeping(t.path(u"\\a.txt"_qs), t.path(u"\\b.txt"_qs)));
  EXPECT_EQ(t.readGbk(u"\\a.txt"_qs), u"甲"_qs);
  EXPECT_EQ(t.readGbk(u"\\b.txt"_qs), u"乙"_qs);
}

TEST(FileMoves, RenameKeepingOfAMissingFileFails) {
  test::TestEnv t;
  EXPECT_FALSE(RenameFileKeeping(t.path(u"\\none.txt"_qs), t.path(u"\\b.txt"_qs)));
  EXPECT_FALSE(QFileInfo::exists(t.path(u"\\b.txt"_qs)));
}

TEST(FileMoves, MoveOverReplacesAFile) {
  test::TestEnv t;
  t.writeGbk(u"\\a.txt"_qs, u"甲"_qs);
  t.writeGbk(u"\\b.txt"_qs, u"乙"_qs);
  EXPECT_TRUE(MoveFileOver(t.path(u"\\a.txt"_qs), t.path(u"\\b.txt"_qs)));
  EXPECT_FALSE(QFileInfo::exists(t.path(u"\\a.txt"_qs)));
  EXPECT_EQ(t.readGbk(u"\\b.txt"_qs), u"甲"_qs);
}

TEST(FileMoves, ModifiedTimeOfAFileAndOfNone) {
  test::TestEnv t;
  t.writeGbk(u"\\a.txt"_qs, u"甲"_qs);
  EXPECT_EQ(FileModified(t.path(u"\\a.txt"_qs)), QFileInfo(t.path(u"\\a.txt"_qs)).lastModified());
  EXPECT_TRUE(FileModified(t.path(u"\\a.txt"_qs)).isValid());
  EXPECT_FALSE(FileModified(t.path(u"\\none.txt"_qs)).isValid());
}
