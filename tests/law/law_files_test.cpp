#include "law/law_files.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QFile>

#include "law/law_text.h"
#include "law/numerals.h"
#include "law_samples.h"
#include "platform/textfile.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

void WriteBytes(const QString& path, const QByteArray& bytes) {
  QFile f(path);
  ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
  f.write(bytes);
}

void SetModified(const QString& path, const QDateTime& when) {
  QFile f(path);
  ASSERT_TRUE(f.open(QIODevice::ReadWrite));
  ASSERT_TRUE(f.setFileTime(when, QFileDevice::FileModificationTime));
}

class LawFiles : public ::testing::Test {
 protected:
  void SetUp() override {
    ClearLawCache();
    te.mkdir(u"\\lawtxt"_qs);
  }
  test::TestEnv te;
};

TEST_F(LawFiles, GbkIsTheEncodingOnDisk) {
  te.writeGbk(u"\\lawtxt\\示例法.mmd"_qs, test::SampleLaw1());
  const LawTextPtr law = LoadLawByName(te.env, u"示例法"_qs);
  ASSERT_TRUE(law);
  EXPECT_EQ(law->text(), test::SampleLaw1());
  EXPECT_EQ(law->type(), 1);
  EXPECT_EQ(law->lastItemNum(), 4);
  EXPECT_EQ(law->numeralTable(), GetLongDaXie(4));
  EXPECT_EQ(law->index().text(), test::SampleLaw1());
}

TEST_F(LawFiles, Utf8WithAByteOrderMark) {
  const QString path = te.path(u"\\lawtxt\\示例法.mmd"_qs);
  WriteBytes(path, QByteArray("\xEF\xBB\xBF") + test::SampleLaw2().toUtf8());
  const LawTextPtr law = LoadLawFile(path);
  ASSERT_TRUE(law);
  EXPECT_EQ(law->text(), test::SampleLaw2());
}

TEST_F(LawFiles, AByteOrderMarkBeforeInvalidUtf8MeansGbk) {
  const QString path = te.path(u"\\lawtxt\\示例法.mmd"_qs);
  const QByteArray bytes = QByteArray("\xEF\xBB\xBF") + ToGbk(test::SampleLaw3());
  WriteBytes(path, bytes);
  EXPECT_EQ(LoadLawFile(path)->text(), FromGbk(bytes));
  // Without a mark, valid UTF-8 is still read as GBK.
  WriteBytes(path, u"法\r\n"_qs.toUtf8());
  SetModified(path, QDateTime::currentDateTime().addSecs(10));
  EXPECT_EQ(LoadLawFile(path)->text(), FromGbk(u"法\r\n"_qs.toUtf8()));
}

TEST_F(LawFiles, LoneLineEndsBecomeCrLf) {
  const QString path = te.path(u"\\lawtxt\\甲.mmd"_qs);
  WriteBytes(path, ToGbk(u"法\n　　第一条 甲。\r　　第二条 乙。\r\n　　第三条 丙。\n"_qs));
  EXPECT_EQ(LoadLawFile(path)->text(), u"法\r\n　　第一条 甲。\r\n　　第二条 乙。\r\n　　第三条 丙。\r\n"_qs);
  EXPECT_EQ(ReadLawFile(path), u"法\r\n　　第一条 甲。\r\n　　第二条 乙。\r\n　　第三条 丙。\r\n"_qs);
}

TEST_F(LawFiles, RepeatedLoadsComeFromTheCache) {
  te.writeGbk(u"\\lawtxt\\示例法.mmd"_qs, test::SampleLaw1());
  const LawTextPtr a = LoadLawByName(te.env, u"示例法"_qs);
  const LawTextPtr b = LoadLawByName(te.env, u"示例法"_qs);
  ASSERT_TRUE(a);
  EXPECT_EQ(a.get(), b.get());
  EXPECT_EQ(&a->index(), &b->index());
  ClearLawCache();
  EXPECT_NE(LoadLawByName(te.env, u"示例法"_qs).get(), a.get());
}

TEST_F(LawFiles, AChangedFileIsReadAgain) {
  const QString path = te.path(u"\\lawtxt\\示例法.mmd"_qs);
  te.writeGbk(u"\\lawtxt\\示例法.mmd"_qs, test::SampleLaw1());
  const QDateTime first = QDateTime::currentDateTime().addSecs(-100);
  SetModified(path, first);
  const LawTextPtr a = LoadLawFile(path);
  EXPECT_EQ(a->lastItemNum(), 4);

  // A new modification time.
  te.writeGbk(u"\\lawtxt\\示例法.mmd"_qs, test::SampleLaw1() + u"\r\n　　第五条 甲。"_qs);
  SetModified(path, first.addSecs(5));
  const LawTextPtr b = LoadLawFile(path);
  EXPECT_NE(a.get(), b.get());
  EXPECT_EQ(b->lastItemNum(), 5);

  // The same time but another size.
  te.writeGbk(u"\\lawtxt\\示例法.mmd"_qs, test::SampleLaw1() + u"\r\n　　第六条 甲乙。"_qs);
  SetModified(path, first.addSecs(5));
  EXPECT_EQ(LoadLawFile(path)->lastItemNum(), 6);
  // What was handed out before stays as it was.
  EXPECT_EQ(a->lastItemNum(), 4);
}

TEST_F(LawFiles, MissingAndEmptyFiles) {
  EXPECT_FALSE(LoadLawByName(te.env, u"无此法"_qs));
  EXPECT_FALSE(LoadLawFile(te.path(u"\\lawtxt"_qs)));  // a folder
  te.writeGbk(u"\\lawtxt\\空法.mmd"_qs, QString());
  const LawTextPtr empty = LoadLawByName(te.env, u"空法"_qs);
  ASSERT_TRUE(empty);
  EXPECT_EQ(empty->text(), QString());
  EXPECT_EQ(empty->type(), 0);
  EXPECT_EQ(empty->lastItemNum(), 0);
  EXPECT_EQ(empty->numeralTable(), QString());
}

TEST_F(LawFiles, ATitleWithAPathIsNoLawFile) {
  EXPECT_TRUE(IsPlainLawName(u"刑法"_qs));
  EXPECT_TRUE(IsPlainLawName(QString()));
  EXPECT_TRUE(IsPlainLawName(u"刑法.修正"_qs));
  EXPECT_FALSE(IsPlainLawName(u"a/b"_qs));
  EXPECT_FALSE(IsPlainLawName(u"a\\b"_qs));
  EXPECT_FALSE(IsPlainLawName(u".."_qs));
  EXPECT_FALSE(IsPlainLawName(u"a..b"_qs));

  te.writeGbk(u"\\lawtxt\\sub\\刑法.mmd"_qs, test::SampleLaw1());
  te.writeGbk(u"\\刑法.mmd"_qs, test::SampleLaw1());
  EXPECT_FALSE(LawFileExists(te.env, u"sub/刑法"_qs));
  EXPECT_FALSE(LawFileExists(te.env, u"sub\\刑法"_qs));
  EXPECT_FALSE(LawFileExists(te.env, u"../刑法"_qs));
  EXPECT_FALSE(LoadLawByName(te.env, u"sub/刑法"_qs));
  EXPECT_FALSE(LoadLawByName(te.env, u"../刑法"_qs));
  te.writeGbk(u"\\lawtxt\\刑法.mmd"_qs, test::SampleLaw1());
  EXPECT_TRUE(LawFileExists(te.env, u"刑法"_qs));
}

TEST_F(LawFiles, ThePathOfALawFile) {
  EXPECT_EQ(LawFileTag(u"刑法"_qs), u"\\lawtxt\\刑法.mmd"_qs);
  EXPECT_EQ(LawFilePath(te.env, u"刑法"_qs), te.root() + u"/lawtxt/刑法.mmd"_qs);
  // A name that is no plain file name makes no path: it is shown as given.
  EXPECT_EQ(LawFilePath(te.env, u"../刑法"_qs), u"《../刑法》"_qs);
  // Names are found whatever their letter case, as on the system the data comes from.
  te.writeGbk(u"\\lawtxt\\ABC.mmd"_qs, test::SampleLaw1());
  EXPECT_TRUE(LawFileExists(te.env, u"abc"_qs));
}

}  // namespace
}  // namespace mj
