// Answering from the keyboard: what each key does to the collected letters.

#include "practice/answer_keys.h"

#include <gtest/gtest.h>

#include "practice/answer_check.h"
#include "support/printers.h"

using namespace mj;

namespace {

AnswerKeyAction AnswerWith(int button) { return {AnswerKeyAction::Answer, button}; }

}  // namespace

TEST(AnswerKeys, ASingleChoiceIsAnsweredByItsLetterAtOnce) {
  AnswerKeys k;
  EXPECT_EQ(k.letter(u'A', 1), AnswerWith(0));
  EXPECT_EQ(k.letter(u'D', 1), AnswerWith(3));
  EXPECT_EQ(k.typed(), u""_qs);
}

TEST(AnswerKeys, OtherTypesCollectTheLettersInOrderEachOnce) {
  AnswerKeys k;
  EXPECT_EQ(k.letter(u'C', 2), AnswerKeyAction{AnswerKeyAction::Typed});
  EXPECT_EQ(k.letter(u'A', 2), AnswerKeyAction{AnswerKeyAction::Typed});
  EXPECT_EQ(k.letter(u'C', 2), AnswerKeyAction{AnswerKeyAction::Typed});
  EXPECT_EQ(k.typed(), u"AC"_qs);
  // Enter gives them as the answer and drops them.
  EXPECT_EQ(k.enter(), AnswerWith(AnswerButtonIndex(u"AC"_qs)));
  EXPECT_EQ(k.typed(), u""_qs);
  // Any choice: a single letter is collected as well.
  EXPECT_EQ(k.letter(u'B', 3), AnswerKeyAction{AnswerKeyAction::Typed});
  EXPECT_EQ(k.enter(), AnswerWith(1));
  for (QChar c : {u'D', u'C', u'B', u'A'}) k.letter(c, 3);
  EXPECT_EQ(k.typed(), u"ABCD"_qs);
  EXPECT_EQ(k.enter(), AnswerWith(14));
}

TEST(AnswerKeys, EnterOrCancelWithNothingCollectedIsIgnored) {
  AnswerKeys k;
  EXPECT_EQ(k.enter(), AnswerKeyAction{});
  EXPECT_EQ(k.cancel(), AnswerKeyAction{});
  EXPECT_EQ(AnswerKeyAction{}.kind, AnswerKeyAction::Ignored);
}

TEST(AnswerKeys, CancelDropsTheCollectedLetters) {
  AnswerKeys k;
  k.letter(u'B', 2);
  EXPECT_EQ(k.cancel(), AnswerKeyAction{AnswerKeyAction::Cleared});
  EXPECT_EQ(k.typed(), u""_qs);
  EXPECT_EQ(k.enter(), AnswerKeyAction{});
  k.letter(u'A', 2);
  k.clear();
  EXPECT_EQ(k.typed(), u""_qs);
}
