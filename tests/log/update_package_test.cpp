#include "log/update_package.h"

#include <gtest/gtest.h>

#include <QFile>

#include "bank/item_index.h"
#include "platform/textfile.h"
#include "support/item_rows.h"
#include "support/test_env.h"

using namespace mj;
using namespace mj::test;

namespace {

const QString kUpdated =
    u"\r\n[单选题]甲乙二人共同盗窃，下列说法正确的是(      )\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁\r\n"
    u"■答案：B参见《刑法》第二十五条、第二十六条\r\n[注释：]共同犯罪。\r\n[本题标识ID：][10001100007]\r\n"_qs;

ItemIndex loadItems(const test::TestEnv& t, const QString& table = u"items.mmd"_qs) {
  ItemIndex index;
  ReadData2ItemData(t.path(u"\\dbf"_qs), table, index);
  return index;
}

}  // namespace

TEST(AltItemRow, ANewRowGetsTheFixedValues) {
  test::TestEnv t;
  writeItems(t, u"items.mmd"_qs, {plainRow(u"10001100001"_qs)});
  ASSERT_TRUE(AltItemRow(t.env, u"10001100007"_qs, kUpdated));
  const ItemIndex index = loadItems(t);
  ASSERT_EQ(index.size(), 2);
  EXPECT_EQ(index[0], indexRow(u"10001100001"_qs));
  const ItemRow& r = index[1];
  EXPECT_EQ(r.itemid, u"10001100007"_qs);
  EXPECT_EQ(r.filename, u"100011"_qs);
  EXPECT_EQ(r.story, u"no"_qs);
  EXPECT_TRUE(r.valid2);
  EXPECT_TRUE(r.hasselect);
  EXPECT_EQ(r.hastest, u""_qs);
  EXPECT_EQ(r.itemtype, 1);
  EXPECT_EQ(r.answer, u"B"_qs);
  // Stored as the flat citation list: articles written in Chinese numerals
  // are no article numbers there.
  EXPECT_EQ(r.aboutlaw, u""_qs);
  const DbfTable tab = DbfTable::open(t.path(u"\\dbf\\items.mmd"_qs));
  EXPECT_TRUE(tab.isNull(1, u"hastest"_qs));
}

TEST(AltItemRow, AnExistingRowGetsItsRecordResetAndKeepsTheRest) {
  test::TestEnv t;
  TableRow old = plainRow(u"10001200007"_qs);
  old.story = u"2026-03-01 08:00  AB2026-02-01 08:00   A"_qs;
  old.valid2 = false;
  old.hasselect = false;
  old.hastest = u"1"_qs;
  old.answer = u"AB"_qs;
  old.aboutlaw = u"《刑法》9．"_qs;
  writeItems(t, u"items.mmd"_qs, {plainRow(u"10001100001"_qs), old});
  const QString text =
      u"[多选题]题干(      )\r\nA．一\r\nB．二\r\nC．三\r\nD．四\r\n■答案：DAC参见《民法典》第一千一百六十五条■补充"_qs;
  ASSERT_TRUE(AltItemRow(t.env, u"10001200007"_qs, text));
  const ItemIndex index = loadItems(t);
  ASSERT_EQ(index.size(), 2);
  const ItemRow& r = index[1];
  EXPECT_EQ(r.story, u"no"_qs);
  EXPECT_EQ(r.answer, u"ACD"_qs);
  EXPECT_EQ(r.aboutlaw, u""_qs);
  EXPECT_EQ(r.itemtype, 2);
  EXPECT_FALSE(r.valid2);
  EXPECT_FALSE(r.hasselect);
  EXPECT_EQ(r.hastest, u"1"_qs);
  EXPECT_EQ(r.filename, u"100012"_qs);
  EXPECT_EQ(index[0], indexRow(u"10001100001"_qs));
}

TEST(AltItemRow, TheCitationEndsAtTheNearerOfTheNextFieldAndTheNextBracket) {
  test::TestEnv t;
  writeItems(t, u"items.mmd"_qs, {});
  ASSERT_TRUE(AltItemRow(t.env, u"10001100001"_qs, u"题■答案：A参见《刑法》第3条[注释：]x■y"_qs));
  ASSERT_TRUE(AltItemRow(t.env, u"10001100002"_qs, u"题■答案：A参见《刑法》第4条■y[注释：]x"_qs));
  ASSERT_TRUE(AltItemRow(t.env, u"10001100003"_qs, u"题■答案：A参见《刑法》第5条"_qs));
  const ItemIndex index = loadItems(t);
  ASSERT_EQ(index.size(), 3);
  EXPECT_EQ(index[0].aboutlaw, u"《刑法》3．"_qs);
  EXPECT_EQ(index[1].aboutlaw, u"《刑法》4．"_qs);
  EXPECT_EQ(index[2].aboutlaw, u"《刑法》5．"_qs);
}

TEST(AltItemRow, WithoutACitationTheStoredOneStays) {
  test::TestEnv t;
  TableRow a = plainRow(u"10001100001"_qs);
  a.aboutlaw = u"《刑法》1．"_qs;
  TableRow b = plainRow(u"10001100002"_qs);
  b.aboutlaw = u"《刑法》2．"_qs;
  TableRow c = plainRow(u"10001100003"_qs);
  c.aboutlaw = u"《刑法》3．"_qs;
  writeItems(t, u"items.mmd"_qs, {a, b, c});
  // "参见" with nothing behind it: a section of 2 characters.
  ASSERT_TRUE(AltItemRow(t.env, u"10001100001"_qs, u"题■答案：C参见[注释：]x"_qs));
  // No "参见" at all.
  ASSERT_TRUE(AltItemRow(t.env, u"10001100002"_qs, u"题■答案：C"_qs));
  // No answer section.
  ASSERT_TRUE(AltItemRow(t.env, u"10001100003"_qs, u"题参见《刑法》第3条"_qs));
  const ItemIndex index = loadItems(t);
  EXPECT_EQ(index[0].aboutlaw, u"《刑法》1．"_qs);
  EXPECT_EQ(index[0].answer, u"C"_qs);
  EXPECT_EQ(index[1].aboutlaw, u"《刑法》2．"_qs);
  EXPECT_EQ(index[1].answer, u""_qs);  // "参见" goes in front: nothing stands before it
  EXPECT_EQ(index[2].aboutlaw, u"《刑法》3．"_qs);
  for (const ItemRow& r : index) EXPECT_EQ(r.story, u"no"_qs);
}

TEST(AltItemRow, TheCitationIsStoredAsTheFlatList) {
  test::TestEnv t;
  writeItems(t, u"items.mmd"_qs, {});
  ASSERT_TRUE(AltItemRow(t.env, u"10001100001"_qs, u"题■答案：A参见《刑法》第12-14条、第20条《民法典》第3条■y"_qs));
  EXPECT_EQ(loadItems(t)[0].aboutlaw, u"《刑法》12．《刑法》13．《刑法》14．《刑法》20．《民法典》3．"_qs);
}

TEST(AltItemRow, TheAnswerIsReadBeforeTheNote) {
  test::TestEnv t;
  writeItems(t, u"items.mmd"_qs, {});
  ASSERT_TRUE(AltItemRow(t.env, u"10001300001"_qs, u"题■答案：1．BD参见《刑法》第3条[注释：]A错C错"_qs));
  const ItemIndex index = loadItems(t);
  ASSERT_EQ(index.size(), 1);
  EXPECT_EQ(index[0].answer, u"BD"_qs);
  EXPECT_EQ(index[0].itemtype, 3);  // no type tag: any choice
}

TEST(AltItemRow, ASimulatedIdGoesIntoCsItems) {
  test::TestEnv t;
  writeItems(t, u"items.mmd"_qs, {plainRow(u"10001100001"_qs)});
  writeItems(t, u"csitems.mmd"_qs, {});
  ASSERT_TRUE(AltItemRow(t.env, u"00201100004"_qs, u"［单选题］题■答案：A参见《宪法》第1条"_qs));
  EXPECT_EQ(loadItems(t), ItemIndex{indexRow(u"10001100001"_qs)});
  const ItemIndex cs = loadItems(t, u"csitems.mmd"_qs);
  ASSERT_EQ(cs.size(), 1);
  EXPECT_EQ(cs[0].itemid, u"00201100004"_qs);
  EXPECT_EQ(cs[0].filename, u"002011"_qs);
  EXPECT_EQ(cs[0].itemtype, 1);
  EXPECT_EQ(cs[0].aboutlaw, u"《宪法》1．"_qs);
}

TEST(AltItemRow, AnExplicitTypeWins) {
  test::TestEnv t;
  writeItems(t, u"items.mmd"_qs, {});
  ASSERT_TRUE(AltItemRow(t.env, u"10001200001"_qs, u"[单选题]题■答案：A参见《宪法》第1条"_qs, 2));
  EXPECT_EQ(loadItems(t)[0].itemtype, 2);
}

TEST(AltItemRow, AMissingTableChangesNothing) {
  test::TestEnv t;
  EXPECT_FALSE(AltItemRow(t.env, u"10001100001"_qs, kUpdated));
  EXPECT_FALSE(QFile::exists(t.path(u"\\dbf\\items.mmd"_qs)));
}
