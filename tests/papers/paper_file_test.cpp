#include "papers/paper_file.h"

#include <gtest/gtest.h>

#include "platform/text_toolkit.h"
#include "platform/textfile.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

const QString kText = u"一、单项选择题\r\n1．题干(      )\r\nA．甲"_qs;

TEST(PaperFile, TheEncodingIsFound) {
  EXPECT_EQ(DetectPaperEncoding(ToGbk(kText)), PaperEncoding::Gbk);
  EXPECT_EQ(DetectPaperEncoding(kText.toUtf8()), PaperEncoding::Utf8);
  EXPECT_EQ(DetectPaperEncoding("\xEF\xBB\xBF" + kText.toUtf8()), PaperEncoding::Utf8Bom);
  // Plain ASCII is kept as the program's own code page.
  EXPECT_EQ(DetectPaperEncoding("1. abc"), PaperEncoding::Gbk);
  EXPECT_EQ(DetectPaperEncoding(QByteArray()), PaperEncoding::Gbk);
  // A byte order mark before bytes that are no UTF-8 is read as GBK.
  EXPECT_EQ(DetectPaperEncoding("\xEF\xBB\xBF\xB5\xDA"), PaperEncoding::Gbk);
}

TEST(PaperFile, ReadingAndWritingKeepTheEncoding) {
  test::TestEnv te;
  for (const PaperEncoding e : {PaperEncoding::Gbk, PaperEncoding::Utf8, PaperEncoding::Utf8Bom}) {
    const QString path = te.path(u"\\p.txt"_qs);
    ASSERT_TRUE(WritePaper(path, kText, e));
    const PaperFile f = ReadPaper(path);
    EXPECT_TRUE(f.ok);
    EXPECT_EQ(f.encoding, e);
    EXPECT_EQ(f.text, kText);
    ASSERT_TRUE(WritePaper(path, f.text + u"改"_qs, f.encoding));
    EXPECT_EQ(ReadBytes(path), EncodePaper(kText + u"改"_qs, e));
  }
  EXPECT_TRUE(ReadBytes(te.path(u"\\p.txt"_qs)).startsWith("\xEF\xBB\xBF"));
}

TEST(PaperFile, LineEndsBecomeCrLf) {
  EXPECT_EQ(WithCrLf(u"a\nb\rc\r\nd\n\re"_qs), u"a\r\nb\r\nc\r\nd\r\n\r\ne"_qs);
  test::TestEnv te;
  const QString path = te.path(u"\\lf.txt"_qs);
  ASSERT_TRUE(WriteBytesAtomic(path, u"一、单项选择题\n1．题"_qs.toUtf8()));
  EXPECT_EQ(ReadPaper(path).text, u"一、单项选择题\r\n1．题"_qs);
}

TEST(PaperFile, BadBytesAreReadAsFarAsTheyGo) {
  test::TestEnv te;
  const QString path = te.path(u"\\bad.txt"_qs);
  QByteArray bytes = ToGbk(u"一、单项选择题\r\n"_qs);
  bytes.append(QByteArray("\x00\x00\xff\x80\x81", 5));
  bytes.append(ToGbk(u"\r\n1．题"_qs));
  ASSERT_TRUE(WriteBytesAtomic(path, bytes));
  const PaperFile f = ReadPaper(path);
  EXPECT_TRUE(f.ok);
  EXPECT_EQ(f.encoding, PaperEncoding::Gbk);
  EXPECT_TRUE(f.text.startsWith(u"一、单项选择题\r\n"_qs));
  EXPECT_TRUE(f.text.endsWith(u"\r\n1．题"_qs));
  // Reading changed nothing on disk.
  EXPECT_EQ(ReadBytes(path), bytes);
}

TEST(PaperFile, AMissingFileIsNotOk) {
  test::TestEnv te;
  EXPECT_FALSE(ReadPaper(te.path(u"\\none.txt"_qs)).ok);
  EXPECT_FALSE(WritePaper(te.path(u"\\no\\such\\folder.txt"_qs), kText, PaperEncoding::Gbk));
}

TEST(PaperFile, EncodingNames) {
  EXPECT_EQ(PaperEncodingName(PaperEncoding::Gbk), u"GBK"_qs);
  EXPECT_EQ(PaperEncodingName(PaperEncoding::Utf8), u"UTF-8"_qs);
  EXPECT_EQ(PaperEncodingName(PaperEncoding::Utf8Bom), u"UTF-8（带BOM）"_qs);
}

}  // namespace
}  // namespace mj

namespace mj {
namespace {

TEST(PaperFile, OnlyWellFormedUtf8CountsAsUtf8) {
  // Cut off at the end, overlong, a surrogate, above U+10FFFF, a stray
  // continuation byte: GBK.
  for (const char* bad : {"\xE4\xB8", "\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\x80", "a\xE4\xB8\xAD\xE4"})
    EXPECT_EQ(DetectPaperEncoding(QByteArray(bad)), PaperEncoding::Gbk) << bad;
  for (const char* good : {"\xE4\xB8\xAD", "\xC2\xA9", "\xF0\x9F\x98\x80", "\xEF\xBF\xBD", "x\xF4\x8F\xBF\xBFy"})
    EXPECT_EQ(DetectPaperEncoding(QByteArray(good)), PaperEncoding::Utf8) << good;
}

}  // namespace
}  // namespace mj
