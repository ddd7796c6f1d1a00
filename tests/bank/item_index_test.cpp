#include "bank/item_index.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QRandomGenerator>

#include "bank/tables.h"
#include "platform/dbftable.h"
#include "platform/textfile.h"
#include "support/item_rows.h"
#include "support/test_env.h"

using namespace mj;
using namespace mj::test;

namespace {

struct DirRow {
  QString a, b;
  std::optional<double> f;
};

void writeDirectory(const test::TestEnv& t, const QList<DirRow>& rows) {
  t.mkdir(u"\\dbf"_qs);
  DbfTable tab = DbfTable::create(t.path(u"\\dbf\\33ok.mmd"_qs), tables::DirectoryFields());
  ASSERT_TRUE(tab.isOpen());
  for (const DirRow& d : rows) {
    const int r = tab.appendRow();
    if (!d.a.isEmpty()) tab.setText(r, u"a"_qs, d.a);
    if (!d.b.isEmpty()) tab.setText(r, u"b"_qs, d.b);
    if (d.f) tab.setNumber(r, u"f"_qs, *d.f);
  }
}

double directoryF(const test::TestEnv& t, int record) {
  const DbfTable tab = DbfTable::open(t.path(u"\\dbf\\33ok.mmd"_qs));
  return tab.number(record, u"f"_qs);
}

QByteArray fileBytes(const QString& path) {
  QFile f(path);
  if (!f.open(QIODevice::ReadOnly)) return {};
  return f.readAll();
}

}  // namespace

// ---- the index load ----

TEST(ItemIndexLoad, TextColumnsAreTrimmedAndTheOthersTakenAsTheyAre) {
  test::TestEnv t;
  writeItems(t, u"items.mmd"_qs,
             {{u" 10001"_qs, u"  2026-03-01 08:00   A"_qs, u" AB"_qs, u"  《刑法》12．"_qs, u" 1000110001"_qs, u" x"_qs,
               true, false, 2},
              {u"100012"_qs, u"no"_qs, u"C"_qs, u""_qs, u"10001200001"_qs, u""_qs, false, true, 3}});
  ItemIndex index;
  ReadData2ItemData(t.path(u"\\dbf"_qs), u"items.mmd"_qs, index);
  ASSERT_EQ(index.size(), 2);
  EXPECT_EQ(index[0].filename, u"10001"_qs);
  EXPECT_EQ(index[0].story, u"2026-03-01 08:00   A"_qs);
  EXPECT_EQ(index[0].answer, u"AB"_qs);
  EXPECT_EQ(index[0].aboutlaw, u"《刑法》12．"_qs);
  EXPECT_EQ(index[0].itemid, u"1000110001"_qs);
  EXPECT_EQ(index[0].hastest, u"x"_qs);
  EXPECT_TRUE(index[0].valid2);
  EXPECT_FALSE(index[0].hasselect);
  EXPECT_EQ(index[0].itemtype, 2);
  EXPECT_EQ(index[1].filename, u"100012"_qs);
  EXPECT_EQ(index[1].story, u"no"_qs);
  EXPECT_EQ(index[1].story.size(), 2);  // a never-done question is known by this length
  EXPECT_EQ(index[1].answer, u"C"_qs);
  EXPECT_EQ(index[1].aboutlaw, u""_qs);
  EXPECT_EQ(index[1].itemid, u"10001200001"_qs);
  EXPECT_FALSE(index[1].valid2);
  EXPECT_TRUE(index[1].hasselect);
  EXPECT_EQ(index[1].itemtype, 3);
}

TEST(ItemIndexLoad, ATableWithOneRowGivesOneRow) {
  test::TestEnv t;
  writeItems(t, u"items.mmd"_qs, {plainRow(u"10001100001"_qs)});
  ItemIndex index;
  ReadData2ItemData(t.path(u"\\dbf"_qs), u"items.mmd"_qs, index);
  EXPECT_EQ(index, ItemIndex{indexRow(u"10001100001"_qs)});
}

TEST(ItemIndexLoad, RowsKeepTableOrderAndRepeatedValuesReadRight) {
  test::TestEnv t;
  QList<TableRow> rows;
  ItemIndex expected;
  for (int i = 0; i < 700; ++i) {
    const QString id = (i < 400 ? u"100011"_qs : u"100012"_qs) + QStringLiteral("%1").arg(i + 1, 5, 10, QChar(u'0'));
    TableRow s = plainRow(id);
    s.story = i % 3 == 0 ? u"no"_qs : u"2026-03-0"_qs + QString::number(1 + i % 9) + u" 08:00   B"_qs;
    // More distinct answers than are shared, and blanks in front of some.
    s.answer = i % 4 == 0 ? u"A"_qs : (i % 3 == 0 ? u" "_qs : u""_qs) + QString::number(i % 45);
    s.aboutlaw = i % 5 == 0 ? u"《刑法》1．"_qs : u"《民法典》"_qs + QString::number(i) + u"．"_qs;
    rows.append(s);
    ItemRow r = indexRow(id);
    r.story = s.story;
    r.answer = s.answer.trimmed();
    r.aboutlaw = s.aboutlaw;
    expected.append(r);
  }
  writeItems(t, u"items.mmd"_qs, rows);
  ItemIndex index;
  ReadData2ItemData(t.path(u"\\dbf"_qs), u"items.mmd"_qs, index);
  ASSERT_EQ(index.size(), 700);
  EXPECT_EQ(index, expected);
}

TEST(ItemIndexLoad, DeletedRowsAreLeftOut) {
  test::TestEnv t;
  writeItems(t, u"items.mmd"_qs,
             {plainRow(u"10001100001"_qs), plainRow(u"10001100002"_qs), plainRow(u"10001100003"_qs)});
  const QString p = t.path(u"\\dbf\\items.mmd"_qs);
  QByteArray all = fileBytes(p);
  const int header = static_cast<unsigned char>(all[8]) + 256 * static_cast<unsigned char>(all[9]);
  const int reclen = static_cast<unsigned char>(all[10]) + 256 * static_cast<unsigned char>(all[11]);
  all[header + reclen] = '*';
  ASSERT_TRUE(WriteBytesAtomic(p, all));
  ItemIndex index;
  ReadData2ItemData(t.path(u"\\dbf"_qs), u"items.mmd"_qs, index);
  EXPECT_EQ(index, (ItemIndex{indexRow(u"10001100001"_qs), indexRow(u"10001100003"_qs)}));
}

TEST(ItemIndexLoad, ATableThatCannotBeOpenedGivesAnEmptyIndex) {
  test::TestEnv t;
  ItemIndex index{indexRow(u"10001100001"_qs)};
  // No \dbf folder at all.
  ReadData2ItemData(t.path(u"\\dbf"_qs), u"items.mmd"_qs, index);
  EXPECT_TRUE(index.isEmpty());
  // The folder without the table.
  t.mkdir(u"\\dbf"_qs);
  index = {indexRow(u"10001100001"_qs)};
  ReadData2ItemData(t.path(u"\\dbf"_qs), u"items.mmd"_qs, index);
  EXPECT_TRUE(index.isEmpty());
}

TEST(ItemIndexLoad, ATruncatedTableGivesTheRowsBeforeTheCut) {
  test::TestEnv t;
  writeItems(t, u"items.mmd"_qs,
             {plainRow(u"10001100001"_qs), plainRow(u"10001100002"_qs), plainRow(u"10001100003"_qs)});
  const QString p = t.path(u"\\dbf\\items.mmd"_qs);
  const QByteArray all = fileBytes(p);
  const int header = static_cast<unsigned char>(all[8]) + 256 * static_cast<unsigned char>(all[9]);
  const int reclen = static_cast<unsigned char>(all[10]) + 256 * static_cast<unsigned char>(all[11]);
  ASSERT_TRUE(WriteBytesAtomic(p, all.left(header + 2 * reclen + 100)));
  ItemIndex index;
  ReadData2ItemData(t.path(u"\\dbf"_qs), u"items.mmd"_qs, index);
  EXPECT_EQ(index, (ItemIndex{indexRow(u"10001100001"_qs), indexRow(u"10001100002"_qs)}));
  // Cut inside the header: nothing.
  ASSERT_TRUE(WriteBytesAtomic(p, all.left(40)));
  ReadData2ItemData(t.path(u"\\dbf"_qs), u"items.mmd"_qs, index);
  EXPECT_TRUE(index.isEmpty());
}

TEST(ItemIndexLoad, AGarbageTableGivesAnEmptyIndexWithoutACrash) {
  test::TestEnv t;
  t.writeGbk(u"\\dbf\\items.mmd"_qs, u"这不是一个表格文件，只是一段文字。"_qs);
  ItemIndex index{indexRow(u"10001100001"_qs)};
  ReadData2ItemData(t.path(u"\\dbf"_qs), u"items.mmd"_qs, index);
  EXPECT_TRUE(index.isEmpty());

  // Random bytes of every size: whatever the header says, no crash, and
  // never more rows than the bytes could hold.
  QRandomGenerator gen(20260305);
  for (int round = 0; round < 200; ++round) {
    QByteArray junk(static_cast<qsizetype>(gen.bounded(1, 4096)), '\0');
    for (char& c : junk) c = static_cast<char>(gen.bounded(256));
    if (round % 2 == 0 && junk.size() > 12) {
      junk[8] = 65;  // a header of one field
      junk[9] = 0;
    }
    ASSERT_TRUE(WriteBytesAtomic(t.path(u"\\dbf\\items.mmd"_qs), junk));
    ReadData2ItemData(t.path(u"\\dbf"_qs), u"items.mmd"_qs, index);
    ASSERT_LE(index.size(), junk.size());
  }
}

// ---- the working copy and its release ----

TEST(ItemIndexWork, SetWorkItemDataCopiesTheArray) {
  const ItemIndex all{indexRow(u"10001100001"_qs), indexRow(u"10001100002"_qs)};
  ItemIndex work{indexRow(u"09999100001"_qs)};
  SetWorkItemData(work, all);
  EXPECT_EQ(work, all);
  // A copy: changing it leaves the source alone.
  work[0].story = u"2026-03-01 08:00   A"_qs;
  EXPECT_EQ(all[0].story, u"no"_qs);
}

TEST(ItemIndexWork, AnEmptySourceLeavesTheWorkingIndexEmpty) {
  ItemIndex work{indexRow(u"10001100001"_qs)};
  const ItemIndex csItemData;  // nothing ever fills it
  SetWorkItemData(work, csItemData);
  EXPECT_TRUE(work.isEmpty());
  EXPECT_EQ(FindItemRow(work, u"10001100001"_qs), 0);
  EXPECT_EQ(FindItem(work, u"10001100001"_qs), nullptr);
}

TEST(ItemIndexWork, MyEraseItemDataReleasesTheArray) {
  ItemIndex index{indexRow(u"10001100001"_qs), indexRow(u"10001100002"_qs)};
  MyEraseItemData(index, index.size());
  EXPECT_TRUE(index.isEmpty());
  ItemIndex other{indexRow(u"10001100001"_qs)};
  MyEraseItemData(other, 5);  // a count past the end does no harm
  EXPECT_TRUE(other.isEmpty());
}

// ---- IDs ----

TEST(ItemIds, GetItemIdTakesElevenCharactersAtPlaceI) {
  const QString list = u"1000110000110001100002090011000003"_qs.left(33);
  EXPECT_EQ(GetItemID(list, 1), u"10001100001"_qs);
  EXPECT_EQ(GetItemID(list, 2), u"10001100002"_qs);
  EXPECT_EQ(GetItemID(list, 3), u"09001100000"_qs);
}

TEST(ItemIds, GetItemIdPastTheEndIsEmpty) {
  const QString list = u"1000110000110001100002"_qs;
  EXPECT_EQ(GetItemID(list, 3), u""_qs);
  EXPECT_EQ(GetItemID(list, 100), u""_qs);
  EXPECT_EQ(GetItemID(u""_qs, 1), u""_qs);
  EXPECT_EQ(GetItemID(list, 0), u""_qs);
}

TEST(ItemIds, LookupIsTheFirstMatchFromRowOne) {
  ItemIndex index{indexRow(u"10001100001"_qs), indexRow(u"10001100002"_qs), indexRow(u"10001100002"_qs)};
  index[2].story = u"second"_qs;
  EXPECT_EQ(FindItemRow(index, u"10001100001"_qs), 1);
  EXPECT_EQ(FindItemRow(index, u"10001100002"_qs), 2);
  EXPECT_EQ(FindItem(index, u"10001100002"_qs)->story, u"no"_qs);
  EXPECT_EQ(FindItemRow(index, u"10001100003"_qs), 0);
  EXPECT_EQ(FindItemRow(index, u""_qs), 0);
  ItemRow* row = FindItem(index, u"10001100001"_qs);
  ASSERT_NE(row, nullptr);
  row->valid2 = false;
  EXPECT_FALSE(index[0].valid2);
}

// ---- NewItemID ----

TEST(NewItemId, TakesTheFirstFittingRowAndRaisesItsCount) {
  test::TestEnv t;
  writeDirectory(t, {
                        {u"刑法单项选择题"_qs, u""_qs, std::nullopt},                  // heading: no b, no f
                        {u"刑法多项选择题"_qs, u"\\yibanti\\100012.mmd"_qs, 30},       // other type
                        {u"刑法单项选择题"_qs, u"\\yibanti\\100011.mmd"_qs, 41},       // the one
                        {u"刑法单项选择题（二）"_qs, u"\\yibanti\\100031.mmd"_qs, 5},  // fits too, comes later
                    });
  EXPECT_EQ(NewItemID(t.env, u"刑法"_qs, 1), u"10001100042"_qs);
  EXPECT_EQ(directoryF(t, 2), 42);
  EXPECT_EQ(directoryF(t, 1), 30);
  EXPECT_EQ(directoryF(t, 3), 5);
  EXPECT_EQ(NewItemID(t.env, u"刑法"_qs, 1), u"10001100043"_qs);
  EXPECT_EQ(directoryF(t, 2), 43);
  EXPECT_EQ(NewItemID(t.env, u"刑法"_qs, 2), u"10001200031"_qs);
  EXPECT_EQ(directoryF(t, 1), 31);
}

TEST(NewItemId, TheTypeWordComesFromTheTypeNumber) {
  test::TestEnv t;
  writeDirectory(t, {
                        {u"民法典单项选择"_qs, u"\\yibanti\\200014.mmd"_qs, 9},  // no "题": no type word
                        {u"民法典单项选择题"_qs, u"\\yibanti\\200011.mmd"_qs, 1},
                        {u"民法典多项选择题"_qs, u"\\yibanti\\200012.mmd"_qs, 2},
                        {u"民法典任意选择题"_qs, u"\\yibanti\\200013.mmd"_qs, 3},
                    });
  EXPECT_EQ(NewItemID(t.env, u"民法典"_qs, 3), u"20001300004"_qs);
  EXPECT_EQ(NewItemID(t.env, u"民法典"_qs, 2), u"20001200003"_qs);
  EXPECT_EQ(NewItemID(t.env, u"民法典"_qs, 1), u"20001100002"_qs);
}

TEST(NewItemId, RowsWithANullFieldArePassedOver) {
  test::TestEnv t;
  writeDirectory(t, {
                        {u"刑法单项选择题"_qs, u"\\yibanti\\100011.mmd"_qs, std::nullopt},  // f null
                        {u"刑法单项选择题"_qs, u""_qs, 7},                                  // b null
                        {u""_qs, u"\\yibanti\\100013.mmd"_qs, 8},                           // a null
                        {u"刑法单项选择题"_qs, u"\\yibanti\\100021.mmd"_qs, 0},
                    });
  EXPECT_EQ(NewItemID(t.env, u"刑法"_qs, 1), u"10002100001"_qs);
  EXPECT_EQ(directoryF(t, 3), 1);
  const DbfTable tab = DbfTable::open(t.path(u"\\dbf\\33ok.mmd"_qs));
  EXPECT_TRUE(tab.isNull(0, u"f"_qs));
  EXPECT_EQ(tab.number(1, u"f"_qs), 7);
  EXPECT_EQ(tab.number(2, u"f"_qs), 8);
}

TEST(NewItemId, ACountOf99999LosesTheSixthDigit) {
  test::TestEnv t;
  writeDirectory(t, {{u"宪法单项选择题"_qs, u"\\yibanti\\300011.mmd"_qs, 99999}});
  EXPECT_EQ(NewItemID(t.env, u"宪法"_qs, 1), u"30001100000"_qs);
  EXPECT_EQ(directoryF(t, 0), 100000);
  EXPECT_EQ(NewItemID(t.env, u"宪法"_qs, 1), u"30001100001"_qs);
}

TEST(NewItemId, ANameFoundNowhereGivesTheFallbackEveryTimeAndChangesNothing) {
  test::TestEnv t;
  writeDirectory(t, {{u"刑法单项选择题"_qs, u"\\yibanti\\100011.mmd"_qs, 41}});
  const QByteArray before = fileBytes(t.path(u"\\dbf\\33ok.mmd"_qs));
  EXPECT_EQ(NewItemID(t.env, u"公司法"_qs, 1), u"90001300001"_qs);
  EXPECT_EQ(NewItemID(t.env, u"公司法"_qs, 1), u"90001300001"_qs);
  EXPECT_EQ(NewItemID(t.env, u"刑法"_qs, 2), u"90001300001"_qs);  // the law is there, the type is not
  EXPECT_EQ(fileBytes(t.path(u"\\dbf\\33ok.mmd"_qs)), before);
}

TEST(NewItemId, AMissingDbfFolderGivesTheFallback) {
  test::TestEnv t;
  EXPECT_EQ(NewItemID(t.env, u"刑法"_qs, 1), u"90001300001"_qs);
  EXPECT_FALSE(DirExists(t.path(u"\\dbf"_qs)));
}

