#include "papers/find_replace.h"

#include <gtest/gtest.h>

#include "support/printers.h"

namespace mj {
namespace {

TEST(FindReplace, FindNextWalksThroughTheHitsAndStartsAgainAtTheTop) {
  FindReplace f;
  const QString t = u"刑诉甲刑诉乙刑诉"_qs;
  FindOutcome r = f.findNext(t, u"刑诉"_qs);
  EXPECT_EQ(r.kind, FindOutcome::Selected);
  EXPECT_EQ(r.selStart, 0);
  EXPECT_EQ(r.selLength, 2);
  EXPECT_EQ(f.p, 1);
  EXPECT_EQ(f.findNext(t, u"刑诉"_qs).selStart, 3);
  EXPECT_EQ(f.findNext(t, u"刑诉"_qs).selStart, 6);
  r = f.findNext(t, u"刑诉"_qs);
  EXPECT_EQ(r.kind, FindOutcome::AtEnd);
  EXPECT_EQ(r.message, u"已经搜索到文本未尾。"_qs);
  EXPECT_EQ(f.p, 0);
  // The next press starts at the top.
  EXPECT_EQ(f.findNext(t, u"刑诉"_qs).selStart, 0);
}

TEST(FindReplace, OverlappingHitsAreFoundOneCharacterOn) {
  FindReplace f;
  EXPECT_EQ(f.findNext(u"aaa"_qs, u"aa"_qs).selStart, 0);
  EXPECT_EQ(f.findNext(u"aaa"_qs, u"aa"_qs).selStart, 1);
}

TEST(FindReplace, FindNextDoesNotExpandCaretP) {
  FindReplace f;
  EXPECT_EQ(f.findNext(u"a\r\nb"_qs, u"a^pb"_qs).kind, FindOutcome::AtEnd);
  EXPECT_EQ(f.findNext(u"a^pb"_qs, u"a^pb"_qs).kind, FindOutcome::Selected);
}

TEST(FindReplace, AnEmptyFindTextIsRefused) {
  FindReplace f;
  for (const FindOutcome& r :
       {f.findNext(u"x"_qs, QString()), f.replace(u"x"_qs, QString(), u"y"_qs), f.replaceAll(u"x"_qs, QString(), u"y"_qs)}) {
    EXPECT_EQ(r.kind, FindOutcome::Empty);
    EXPECT_EQ(r.message, u"进行查找替换时第一个文本框内容不能为空。"_qs);
    EXPECT_FALSE(r.edited);
  }
}

TEST(FindReplace, ANewFindTextStartsAtTheTop) {
  FindReplace f;
  f.findNext(u"ab ab"_qs, u"ab"_qs);
  f.findNext(u"ab ab"_qs, u"ab"_qs);
  EXPECT_EQ(f.p, 4);
  f.findTextChanged();
  EXPECT_EQ(f.p, 0);
}

TEST(FindReplace, ReplaceTheCurrentHitAndGoOn) {
  FindReplace f;
  const QString t = u"《刑诉》与《刑诉》"_qs;
  f.findNext(t, u"刑诉"_qs);
  FindOutcome r = f.replace(t, u"刑诉"_qs, u"刑事诉讼法"_qs);
  EXPECT_TRUE(r.edited);
  EXPECT_EQ(r.editStart, 1);
  EXPECT_EQ(r.editLength, 2);
  EXPECT_EQ(r.editText, u"刑事诉讼法"_qs);
  // The next hit behind the replacement is selected.
  EXPECT_EQ(r.kind, FindOutcome::Selected);
  EXPECT_EQ(r.selStart, 9);
  const QString after = u"《刑事诉讼法》与《刑诉》"_qs;
  r = f.replace(after, u"刑诉"_qs, u"刑事诉讼法"_qs);
  EXPECT_EQ(r.editStart, 9);
  EXPECT_EQ(r.kind, FindOutcome::AtEnd);
  EXPECT_EQ(f.p, 0);
}

TEST(FindReplace, ReplaceWithoutAHitPutsTheTextAtTheFront) {
  FindReplace f;
  const FindOutcome r = f.replace(u"甲乙"_qs, u"乙"_qs, u"丙^p"_qs);
  EXPECT_TRUE(r.edited);
  EXPECT_EQ(r.editStart, 0);
  EXPECT_EQ(r.editLength, 0);
  EXPECT_EQ(r.editText, u"丙\r\n"_qs);
  // The search goes on from behind the inserted text: 乙 of "丙\r\n甲乙".
  EXPECT_EQ(r.kind, FindOutcome::Selected);
  EXPECT_EQ(r.selStart, 4);
}

TEST(FindReplace, ReplaceAllExpandsLineEndsAndCounts) {
  FindReplace f;
  FindOutcome r = f.replaceAll(u"1．\r\n答案：A\r\n答案：B"_qs, u"^p答案："_qs, u"^p[答案：]"_qs);
  EXPECT_EQ(r.kind, FindOutcome::Replaced);
  EXPECT_EQ(r.text, u"1．\r\n[答案：]A\r\n[答案：]B"_qs);
  EXPECT_EQ(r.message, u"已完成全部替换，共替换2处。"_qs);
  // An empty replacement deletes and still counts.
  r = f.replaceAll(u"a-b-c"_qs, u"-"_qs, QString());
  EXPECT_EQ(r.text, u"abc"_qs);
  EXPECT_EQ(r.message, u"已完成全部替换，共替换2处。"_qs);
  // Overlapping occurrences are counted as the count finds them.
  r = f.replaceAll(u"aaa"_qs, u"aa"_qs, u"b"_qs);
  EXPECT_EQ(r.text, u"ba"_qs);
  EXPECT_EQ(r.message, u"已完成全部替换，共替换2处。"_qs);
}

TEST(FindReplace, ReplaceAllWithoutAHit) {
  FindReplace f;
  const FindOutcome r = f.replaceAll(u"abc"_qs, u"x^p"_qs, u"y"_qs);
  EXPECT_EQ(r.kind, FindOutcome::NotFound);
  EXPECT_EQ(r.message, u"未搜索到“x^p”。"_qs);
  EXPECT_FALSE(r.wholeText);
}

TEST(SpecialCharText, TheEntriesAsTheyGoIn) {
  EXPECT_EQ(SpecialCharText(u"回车符"_qs), u"^p"_qs);
  EXPECT_EQ(SpecialCharText(u"全角空格"_qs), u"\u3000"_qs);
  EXPECT_EQ(SpecialCharText(u" 《》 "_qs), u"《》"_qs);
}

}  // namespace
}  // namespace mj
