#include <gtest/gtest.h>

#include "support/printers.h"

#include "platform/messagebox.h"

using namespace mj;

TEST(MessageBoxes, ScriptedBoxesRecordEveryBoxInOrder) {
  ScriptedBoxes b;
  b.answer(box::No);
  EXPECT_EQ(b.show(u"真的不玩儿啦？"_qs, box::YesNo, u"请你确认"_qs), box::No);
  EXPECT_EQ(b.show(u"该交流号不存在。"_qs, box::Exclamation), box::Ok);
  ASSERT_EQ(b.shown().size(), 2);
  EXPECT_EQ(b.shown()[0].title, u"请你确认"_qs);
  EXPECT_EQ(b.shown()[0].answer, box::No);
  EXPECT_EQ(b.shown()[1].title, u"明镜学伴3.10提示"_qs);
  EXPECT_EQ(b.shown()[1].style, box::Exclamation);
}

TEST(MessageBoxes, DefaultButtonAnswersWhenNothingIsScripted) {
  ScriptedBoxes b;
  EXPECT_EQ(b.show(u"x"_qs, box::YesNo), box::Yes);
  EXPECT_EQ(b.show(u"x"_qs, box::YesNo | box::DefaultButton2), box::No);
  EXPECT_EQ(b.show(u"x"_qs, box::YesNoCancel | box::DefaultButton3), box::Cancel);
  EXPECT_EQ(b.show(u"x"_qs, box::OkCancel), box::Ok);
}
