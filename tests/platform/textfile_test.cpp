#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "platform/paths.h"
#include "platform/textfile.h"
#include "support/test_env.h"

using namespace mj;

TEST(TextFile, GbkRoundTripKeepsCrLf) {
  test::TestEnv t;
  const QString text = u"第一条　　法律\r\n●1●题■答案：A\r\n"_qs;
  ASSERT_TRUE(WriteTextAtomic(t.path(u"\\a.mmd"_qs), text));
  QFile f(t.path(u"\\a.mmd"_qs));
  ASSERT_TRUE(f.open(QIODevice::ReadOnly));
  const QByteArray bytes = f.readAll();
  EXPECT_EQ(bytes, ToGbk(text));
  EXPECT_TRUE(bytes.contains("\r\n"));
  EXPECT_EQ(bytes.left(2), QByteArray("\xB5\xDA", 2));  // 第 in GBK
  EXPECT_EQ(ReadText(t.path(u"\\a.mmd"_qs)), text);
}

TEST(TextFile, MissingFileIsEmpty) {
  test::TestEnv t;
  bool ok = true;
  EXPECT_EQ(ReadText(t.path(u"\\none.txt"_qs), &ok), QString());
  EXPECT_FALSE(ok);
}

TEST(TextFile, BytesThatAreNotGbkNeverCrash) {
  test::TestEnv t;
  QFile f(t.path(u"\\bad.mmd"_qs));
  ASSERT_TRUE(f.open(QIODevice::WriteOnly));
  QByteArray junk;
  for (int i = 0; i < 4096; ++i) junk.append(static_cast<char>((i * 131 + 7) & 0xFF));
  junk.append("\xFF\xFF\x81", 3);  // ends inside a two-byte character
  f.write(junk);
  f.close();
  const QString s = ReadText(t.path(u"\\bad.mmd"_qs));
  EXPECT_FALSE(s.isEmpty());
  EXPECT_TRUE(s.contains(QChar(0xFFFD)));
}

TEST(TextFile, Utf8WithBomIsReadAsUtf8) {
  QByteArray b("\xEF\xBB\xBF");
  b.append(u"刑法\r\n"_qs.toUtf8());
  EXPECT_EQ(DecodeText(b), u"刑法\r\n"_qs);
  // Without the mark the same bytes are GBK.
  EXPECT_NE(DecodeText(u"刑法"_qs.toUtf8()), u"刑法"_qs);
  // A mark followed by bytes that are not UTF-8: GBK after all.
  QByteArray mixed("\xEF\xBB\xBF");
  mixed.append(ToGbk(u"刑法"_qs));
  EXPECT_EQ(DecodeText(mixed), FromGbk(mixed));
}

TEST(TextFile, AtomicReplaceLeavesNoTemporaryFiles) {
  test::TestEnv t;
  const QString p = t.path(u"\\x.txt"_qs);
  ASSERT_TRUE(WriteTextAtomic(p, u"old"_qs));
  ASSERT_TRUE(WriteTextAtomic(p, u"new"_qs));
  EXPECT_EQ(ReadText(p), u"new"_qs);
  EXPECT_EQ(QDir(t.root()).entryList(QDir::Files), QStringList{u"x.txt"_qs});
}

TEST(TextFile, WriteIntoMissingFolderFailsAndKeepsNothing) {
  test::TestEnv t;
  EXPECT_FALSE(WriteTextAtomic(t.path(u"\\no\\such\\x.txt"_qs), u"a"_qs));
}

TEST(TextFile, Append) {
  test::TestEnv t;
  const QString p = t.path(u"\\log.txt"_qs);
  ASSERT_TRUE(AppendText(p, u"一\r\n"_qs));
  ASSERT_TRUE(AppendText(p, u"二\r\n"_qs));
  EXPECT_EQ(ReadText(p), u"一\r\n二\r\n"_qs);
}

TEST(TextFile, GbkHeadNeverSplitsACharacter) {
  EXPECT_EQ(GbkLength(u"a刑b"_qs), 4);
  EXPECT_EQ(GbkHead(u"a刑b"_qs, 2), u"a"_qs);
  EXPECT_EQ(GbkHead(u"a刑b"_qs, 3), u"a刑"_qs);
  EXPECT_EQ(GbkHead(u"abc"_qs, 0), u""_qs);
}

TEST(Paths, BackslashSuffixesAndLetterCase) {
  test::TestEnv t;
  t.mkdir(u"/DBF"_qs);
  t.writeGbk(u"/DBF/Items.MMD"_qs, u"x"_qs);
  EXPECT_EQ(AppPath(t.root(), u"\\dbf\\items.mmd"_qs), t.root() + u"/DBF/Items.MMD"_qs);
  EXPECT_TRUE(FileExists(AppPath(t.root(), u"\\dbf\\items.mmd"_qs)));
  EXPECT_TRUE(DirExists(t.path(u"\\dbf"_qs)));
  EXPECT_TRUE(DirExists(t.path(u"\\dbf\\"_qs)));
  EXPECT_FALSE(FileExists(t.path(u"\\dbf"_qs)));
  // A missing name keeps its spelling.
  EXPECT_EQ(AppPath(t.root(), u"\\yibanti\\010011.mmd"_qs), t.root() + u"/yibanti/010011.mmd"_qs);
  EXPECT_EQ(AppPath(t.root(), u"\\yibanti\\"_qs), t.root() + u"/yibanti/"_qs);
  EXPECT_EQ(MapSeparators(u"\\lawtxt\\刑法.mmd"_qs), u"/lawtxt/刑法.mmd"_qs);
}

TEST(TextFile, LeftoversOfACutOffSaveAreRemoved) {
  test::TestEnv t;
  t.writeGbk(u"\\ini\\userself.ini"_qs, u"A=1"_qs);
  t.writeGbk(u"\\ini\\userself.ini.Ab12Cd"_qs, u"A="_qs);
  t.writeGbk(u"\\ini\\userself.ini.zzzzzz"_qs, u"A="_qs);
  t.writeGbk(u"\\ini\\userself.ini.bak"_qs, u"kept"_qs);
  t.writeGbk(u"\\ini\\userself.ini.Ab12Cd7"_qs, u"kept"_qs);
  t.writeGbk(u"\\ini\\other.ini.Ab12Cd"_qs, u"kept"_qs);
  EXPECT_EQ(RemoveLeftoverSaves(t.path(u"\\ini\\userself.ini"_qs)), 2);
  EXPECT_FALSE(QFile::exists(t.path(u"\\ini\\userself.ini.Ab12Cd"_qs)));
  EXPECT_FALSE(QFile::exists(t.path(u"\\ini\\userself.ini.zzzzzz"_qs)));
  EXPECT_TRUE(QFile::exists(t.path(u"\\ini\\userself.ini.bak"_qs)));
  EXPECT_TRUE(QFile::exists(t.path(u"\\ini\\userself.ini.Ab12Cd7"_qs)));
  EXPECT_TRUE(QFile::exists(t.path(u"\\ini\\other.ini.Ab12Cd"_qs)));
  EXPECT_TRUE(QFile::exists(t.path(u"\\ini\\userself.ini"_qs)));
  // Also when the file itself is gone.
  RemoveFile(t.path(u"\\ini\\userself.ini"_qs));
  t.writeGbk(u"\\ini\\userself.ini.Xy98Zw"_qs, u"A="_qs);
  EXPECT_EQ(RemoveLeftoverSaves(t.path(u"\\ini\\userself.ini"_qs)), 1);
}
