#include "practice/answer_records.h"

#include <gtest/gtest.h>

#include "bank/tables.h"
#include "platform/dbftable.h"
#include "platform/paths.h"
#include "platform/text_toolkit.h"
#include "support/test_env.h"

using namespace mj;

namespace {

struct Row {
  QString itemid;
  bool valid2 = true;
  QString boardid = {};  // empty: blank
  QString topicid = {};
};

void writeItems(const test::TestEnv& t, const QList<Row>& rows, bool withForum) {
  t.mkdir(u"\\dbf"_qs);
  DbfTable tab = DbfTable::create(t.path(u"\\dbf\\items.mmd"_qs), tables::ItemFields(withForum));
  for (const Row& s : rows) {
    const int r = tab.appendRow();
    tab.setText(r, u"filename"_qs, s.itemid.left(6));
    tab.setText(r, u"story"_qs, u"no"_qs);
    tab.setText(r, u"answer"_qs, u"A"_qs);
    tab.setText(r, u"itemid"_qs, s.itemid);
    tab.setLogical(r, u"valid2"_qs, s.valid2);
    tab.setNumber(r, u"itemtype"_qs, 1);
    if (withForum && !s.boardid.isEmpty()) tab.setNumber(r, u"boardid"_qs, s.boardid.toDouble());
    if (withForum && !s.topicid.isEmpty()) tab.setNumber(r, u"topicid"_qs, s.topicid.toDouble());
  }
}

ItemIndex indexOf(const QStringList& ids) {
  ItemIndex index;
  for (const QString& id : ids) {
    ItemRow r;
    r.filename = id.left(6);
    r.story = u"no"_qs;
    r.answer = u"A"_qs;
    r.itemid = id;
    r.valid2 = true;
    r.itemtype = 1;
    index.append(r);
  }
  return index;
}

}  // namespace

TEST(UncertainMark, PutsTheIdInFrontOfTodaysList) {
  test::TestEnv t;
  t.clock.set(QDateTime(QDate(2026, 3, 5), QTime(8, 0)));
  t.writeGbk(u"\\模糊题\\20260305.ini"_qs, u"\"10001100002\"\r\n"_qs);
  ASSERT_TRUE(MarkUncertain(t.env, u"10001100007"_qs));
  EXPECT_EQ(t.readGbk(u"\\模糊题\\20260305.ini"_qs), u"\"1000110000710001100002\"\r\n"_qs);
  // The same question twice stays twice.
  ASSERT_TRUE(MarkUncertain(t.env, u"10001100007"_qs));
  EXPECT_EQ(t.readGbk(u"\\模糊题\\20260305.ini"_qs), u"\"100011000071000110000710001100002\"\r\n"_qs);
}

TEST(UncertainMark, MakesTheFolderAndTheFile) {
  test::TestEnv t;
  t.clock.set(QDateTime(QDate(2026, 12, 31), QTime(23, 0)));
  ASSERT_TRUE(MarkUncertain(t.env, u"01001300004"_qs));
  EXPECT_EQ(t.readGbk(u"\\模糊题\\20261231.ini"_qs), u"\"01001300004\"\r\n"_qs);
}

TEST(UncertainMark, ADamagedListIsStartedAgain) {
  test::TestEnv t;
  t.clock.set(QDateTime(QDate(2026, 3, 5), QTime(8, 0)));
  t.writeGbk(u"\\模糊题\\20260305.ini"_qs, u"\"1000110000\"\r\n"_qs);
  ASSERT_TRUE(MarkUncertain(t.env, u"10001100007"_qs));
  EXPECT_EQ(t.readGbk(u"\\模糊题\\20260305.ini"_qs), u"\"10001100007\"\r\n"_qs);
}

TEST(HideTheItem, TableRowAndWorkingIndex) {
  test::TestEnv t;
  writeItems(t, {{u"10001100001"_qs}, {u"10001100002"_qs}, {u"10001100003"_qs}}, false);
  ItemIndex work = indexOf({u"10001100001"_qs, u"10001100002"_qs, u"10001100003"_qs});
  ItemIndex all = work;
  ASSERT_TRUE(HideTheItem(t.path(u"\\dbf"_qs), u"items.mmd"_qs, u"10001100002"_qs, work));
  const DbfTable tab = DbfTable::open(t.path(u"\\dbf\\items.mmd"_qs));
  const QList<int> rows = tab.rows();
  ASSERT_EQ(rows.size(), 3);
  EXPECT_TRUE(tab.logical(rows[0], u"valid2"_qs));
  EXPECT_FALSE(tab.logical(rows[1], u"valid2"_qs));
  EXPECT_TRUE(tab.logical(rows[2], u"valid2"_qs));
  EXPECT_TRUE(work[0].valid2);
  EXPECT_FALSE(work[1].valid2);
  EXPECT_TRUE(work[2].valid2);
  // Only the working index is changed.
  EXPECT_TRUE(all[1].valid2);
}

TEST(HideTheItem, AnUnknownIdChangesNoRow) {
  test::TestEnv t;
  writeItems(t, {{u"10001100001"_qs}}, false);
  ItemIndex work = indexOf({u"10001100001"_qs});
  EXPECT_FALSE(HideTheItem(t.path(u"\\dbf"_qs), u"items.mmd"_qs, u"10001100009"_qs, work));
  const DbfTable tab = DbfTable::open(t.path(u"\\dbf\\items.mmd"_qs));
  EXPECT_TRUE(tab.logical(tab.rows()[0], u"valid2"_qs));
  EXPECT_TRUE(work[0].valid2);
}

TEST(DiscussionLink, BuiltFromTheForumFields) {
  test::TestEnv t;
  writeItems(t, {{u"10001100001"_qs, true, u"12"_qs, u"3456"_qs}, {u"10001100002"_qs}}, true);
  const QString folder = t.path(u"\\dbf"_qs);
  EXPECT_EQ(DiscussionLink(folder, u"items.mmd"_qs, u"10001100001"_qs, u"http://bbs.example.org/dispbbs.asp"_qs,
                           u"&page=1"_qs),
            u"http://bbs.example.org/dispbbs.asp?boardid=12&id=3456&page=1"_qs);
  // A row whose boardid is blank has no address; nor has an unknown ID.
  EXPECT_EQ(DiscussionLink(folder, u"items.mmd"_qs, u"10001100002"_qs, u"x"_qs, u"y"_qs), u""_qs);
  EXPECT_EQ(DiscussionLink(folder, u"items.mmd"_qs, u"10001100009"_qs, u"x"_qs, u"y"_qs), u""_qs);
}

TEST(DiscussionLink, TablesWithoutForumFieldsHaveNone) {
  test::TestEnv t;
  writeItems(t, {{u"10001100001"_qs}}, false);
  EXPECT_EQ(DiscussionLink(t.path(u"\\dbf"_qs), u"items.mmd"_qs, u"10001100001"_qs, u"x"_qs, u"y"_qs), u""_qs);
}

TEST(ExchangeNumber, DoubleStarsAreReducedFirst) {
  const ItemIndex all = indexOf({u"01234567891"_qs, u"10001100001"_qs});
  const ExchangeStep s = ReadExchangeNumber(u"**01234567891**"_qs, u"10001100001"_qs, all);
  EXPECT_EQ(s.text, u"*01234567891*"_qs);
  EXPECT_EQ(s.kind, ExchangeStep::Question);
  EXPECT_EQ(s.id, u"01234567891"_qs);
}

TEST(ExchangeNumber, TheCurrentQuestionsNumberDoesNothing) {
  const ItemIndex all = indexOf({u"10001100001"_qs});
  EXPECT_EQ(ReadExchangeNumber(u"*10001100001*"_qs, u"10001100001"_qs, all).kind, ExchangeStep::Nothing);
  EXPECT_EQ(ReadExchangeNumber(u"**10001100001**"_qs, u"10001100001"_qs, all).kind, ExchangeStep::Nothing);
}

TEST(ExchangeNumber, OtherFormsDoNothing) {
  const ItemIndex all = indexOf({u"10001100001"_qs, u"10001100002"_qs});
  for (const QString& box : {u""_qs, u"10001100002"_qs, u"*10001100002"_qs, u"*1000110000*"_qs, u"*100011000022*"_qs,
                             u"x*10001100002*"_qs, u"*10001100002**x*"_qs})
    EXPECT_EQ(ReadExchangeNumber(box, u"10001100001"_qs, all).kind, ExchangeStep::Nothing) << box.toStdString();
  // Text behind the closing star is no obstacle.
  const ExchangeStep s = ReadExchangeNumber(u"*10001100002*abc"_qs, u"10001100001"_qs, all);
  EXPECT_EQ(s.kind, ExchangeStep::Question);
  EXPECT_EQ(s.id, u"10001100002"_qs);
}

TEST(ExchangeNumber, AnUnknownNumber) {
  const ItemIndex all = indexOf({u"10001100001"_qs});
  const ExchangeStep s = ReadExchangeNumber(u"*99999399999*"_qs, u"10001100001"_qs, all);
  EXPECT_EQ(s.kind, ExchangeStep::Unknown);
  EXPECT_EQ(s.id, u"99999399999"_qs);
  EXPECT_EQ(kNoSuchExchangeNumber, u"该交流号不存在。"_qs);
}
