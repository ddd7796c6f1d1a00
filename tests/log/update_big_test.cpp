// An update package of 1,000 items against a generated folder of 20,000
// questions: every question it touches, and the runs after it with "否" and
// with "是".
#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QTemporaryDir>

#include "bank/bank_text.h"
#include "bank/item_index.h"
#include "bank/tables.h"
#include "generator.h"
#include "law/citations.h"
#include "log/day_files.h"
#include "log/update_package.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"
#include "support/test_env.h"

using namespace mj;

namespace {

struct Taken {
  QString updated, seen;
};

Taken take(const Env& env, const QString& package, bool yes) {
  qint16 state = 3;
  Taken t;
  UpdateView view;
  UpdateRun run(env, view, {state, t.updated});
  EXPECT_TRUE(run.takePackage(package, yes));
  t.seen = run.seenIds();
  return t;
}

QMap<QString, QByteArray> filesUnder(const QString& root, const QStringList& folders) {
  QMap<QString, QByteArray> out;
  for (const QString& f : folders) {
    QDirIterator it(root + u'/' + f, QDir::Files);
    while (it.hasNext()) {
      const QString p = it.next();
      out.insert(p, ReadBytes(p));
    }
  }
  return out;
}

QHash<QString, ItemRow> rowsById(const test::TestEnv& t) {
  ItemIndex index;
  ReadData2ItemData(t.path(u"\\dbf"_qs), tables::kItems, index);
  QHash<QString, ItemRow> out;
  for (const ItemRow& r : index)
    if (!out.contains(r.itemid)) out.insert(r.itemid, r);
  return out;
}

// The citation of an item of the generated package.
QString citationOf(const QString& item) {
  const qsizetype see = item.indexOf(u"参见"_qs);
  return item.mid(see + 2, item.indexOf(u"\r\n"_qs, see) - see - 2);
}

}  // namespace

TEST(UpdateBig, AThousandItemsIntoTwentyThousandQuestions) {
  test::TestEnv t;
  gen::Sizes sizes;
  sizes.questions = 20000;
  sizes.banks = 60;
  sizes.laws = 20;
  sizes.articles = 200;
  sizes.papers = 1;
  QString error;
  ASSERT_TRUE(gen::Generate(t.root(), sizes, &error)) << error.toStdString();
  QStringList ids;
  const QString package = gen::UpdatePackage(sizes, 1000, &ids);
  ASSERT_EQ(ids.size(), 1000);
  ASSERT_EQ(QSet<QString>(ids.begin(), ids.end()).size(), 1000);
  const QHash<QString, ItemRow> rowsBefore = rowsById(t);
  // Questions the package does not touch, to see that they stay.
  QStringList untouched;
  for (int b = 0; b < 60; b += 7) untouched.append(gen::BankName(b) + u"00300"_qs);
  QStringList untouchedBlocks;
  for (const QString& id : untouched) untouchedBlocks.append(GetOneOldTi(t.env, id));

  const Taken first = take(t.env, package, true);
  const QList<QStringView> items = SplitItems(package, u"\r\n●"_qs);
  ASSERT_EQ(items.size(), 1000);
  QHash<QString, ItemRow> rows = rowsById(t);
  int copies = 0;
  for (int k = 0; k < 1000; ++k) {
    const QString& id = ids[k];
    const QString item = PreparedItem(items[k].toString());
    const QString block = GetOneOldTi(t.env, id);
    ASSERT_TRUE(block.startsWith(QStringLiteral("生成更新试题%1：").arg(k + 1))) << id.toStdString();
    ASSERT_TRUE(block.contains(u"[本题标识ID：]["_qs + id + u"]"_qs));
    ASSERT_FALSE(block.contains(u"选题]"_qs));
    const ItemRow& row = rows.value(id);
    ASSERT_EQ(row.itemid, id);
    EXPECT_EQ(row.story, u"no"_qs) << id.toStdString();
    const int type = ItemTypeOfTag(item);
    EXPECT_EQ(row.itemtype, type);
    EXPECT_EQ(row.answer, (QStringList{QString(), u"C"_qs, u"BD"_qs, u"ACD"_qs})[type]);
    EXPECT_EQ(row.aboutlaw, LongDaAn(u"参见"_qs + citationOf(item)).left(254));
    EXPECT_EQ(row.valid2, rowsBefore.value(id).valid2);
    copies += static_cast<int>(GetLawCitedNames(item).count(u'《'));
  }
  EXPECT_EQ(first.updated.size(), (1000 + copies) * 11);
  EXPECT_EQ(first.seen, first.updated);
  // Every copy: a new row with its question's values and a block of its own.
  for (qsizetype i = 0; i < first.updated.size(); i += 11) {
    const QString id = first.updated.mid(i, 11);
    if (ids.contains(id)) continue;
    ASSERT_TRUE(rows.contains(id)) << id.toStdString();
    EXPECT_FALSE(rowsBefore.contains(id));
    EXPECT_EQ(rows.value(id).story, u"no"_qs);
    EXPECT_TRUE(GetOneOldTi(t.env, id).startsWith(u"生成更新试题"_qs)) << id.toStdString();
  }
  for (int i = 0; i < untouched.size(); ++i) EXPECT_EQ(GetOneOldTi(t.env, untouched[i]), untouchedBlocks[i]);
  EXPECT_EQ(rows.size(), rowsBefore.size() + copies);
  const QString dayFile = t.path(u"\\更新的题\\"_qs + TodayIniName(t.clock.today()));
  EXPECT_EQ(ReadIdFile(dayFile), first.updated);

  // "否": every question has its history now and is passed over.
  const QStringList folders = {u"yibanti"_qs, u"dbf"_qs};
  const auto before = filesUnder(t.root(), folders);
  const Taken second = take(t.env, package, false);
  EXPECT_EQ(second.updated, u""_qs);
  EXPECT_EQ(second.seen.size(), 1000 * 11);
  EXPECT_EQ(t.boxes.shown().last().text, u"共1000题，更新了0题，还有1000题因为已经有了更新历史而没有更新。"_qs);
  EXPECT_EQ(filesUnder(t.root(), folders), before);
  EXPECT_EQ(ReadIdFile(dayFile), first.updated);

  // "是": all of them again, their records reset again, new copies.
  rows = rowsById(t);
  QStringList done;
  for (int k = 0; k < 1000; k += 10) done.append(ids[k]);
  {
    DbfTable items = DbfTable::open(t.path(u"\\dbf\\items.mmd"_qs), DbfTable::Mode::ReadWrite);
    for (const QString& id : done) items.setText(Select(items, {{u"itemid"_qs, id}})[0], u"story"_qs, u"2026-11-22 10:00   C"_qs);
  }
  const Taken third = take(t.env, package, true);
  EXPECT_EQ(third.updated.size(), first.updated.size());
  EXPECT_EQ(t.boxes.shown().last().text, QStringLiteral("共更新了%1题。").arg(1000 + copies));
  rows = rowsById(t);
  for (const QString& id : done) EXPECT_EQ(rows.value(id).story, u"no"_qs);
  EXPECT_EQ(rows.size(), rowsBefore.size() + 2 * copies);
  EXPECT_EQ(ReadIdFile(dayFile), third.updated + first.updated);
}
