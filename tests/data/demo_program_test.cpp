// The demonstration data read through the program's own readers: the
// question index, the question blocks and their fields, and new IDs in the
// banks of the directory.

#include <gtest/gtest.h>

#include "app/text_toolkit.h"
#include "bank/bank_text.h"
#include "bank/item_index.h"
#include "bank/tables.h"
#include "data_test_util.h"
#include "platform/dbftable.h"
#include "platform/paths.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"
#include "support/test_env.h"

using namespace mj;
using namespace mj::datatest;

TEST(DemoProgram, IndexLoadsEveryQuestionWithItsText) {
  test::TestEnv t(Demo());
  ItemIndex index;
  ReadData2ItemData(t.path(u"\\dbf"_qs), tables::kItems, index);
  ASSERT_EQ(index.size(), 45);
  int providers = 0, notes = 0;
  for (const ItemRow& row : index) {
    SCOPED_TRACE(row.itemid.toStdString());
    EXPECT_TRUE(row.valid2);
    EXPECT_EQ(row.story, u"no"_qs);
    EXPECT_EQ(row.itemtype, row.itemid.mid(5, 1).toInt());
    const QString block = GetOneShiTi(ReadText(BankFilePath(t.env, row.itemid)), ItemSerial(row.itemid));
    QString provider;
    const QString stem = GetField(block, 1, provider);
    // The program puts a full stop before the first option.
    EXPECT_EQ(stem.count(u"。"_qs + kCrLf + u"A．"_qs), 1) << stem.toStdString();
    EXPECT_FALSE(stem.contains(u"。。"_qs));
    EXPECT_TRUE(stem.contains(kCrLf + u"D．"_qs));
    EXPECT_FALSE(stem.contains(u"[本题"_qs));
    if (!provider.isEmpty()) {
      ++providers;
      EXPECT_TRUE(provider.contains(row.itemid));
    }
    QString answer = GetField(block, 2, provider);
    EXPECT_TRUE(answer.startsWith(u"答案："_qs));
    notes += answer.contains(kCrLf + u"[注释：]"_qs);
    EXPECT_EQ(AnswerLetters(answer), row.answer);
    EXPECT_FALSE(GetOneOldTi(t.env, row.itemid).isEmpty());
  }
  EXPECT_GE(providers, 3);
  EXPECT_GE(notes, 5);
}

TEST(DemoProgram, SimulatedPapersKeepAllTypesInOneFile) {
  test::TestEnv t(Demo());
  ItemIndex index;
  ReadData2ItemData(t.path(u"\\dbf"_qs), tables::kCsItems, index);
  ASSERT_EQ(index.size(), 18);
  for (const ItemRow& row : index) {
    SCOPED_TRACE(row.itemid.toStdString());
    EXPECT_EQ(BankFileOf(row.itemid), u"\\moniti\\"_qs + row.itemid.left(5) + u".mmd"_qs);
    const QString block = GetOneShiTi(ReadText(BankFilePath(t.env, row.itemid)), ItemSerial(row.itemid));
    QString provider;
    QString answer = GetField(block, 2, provider);
    EXPECT_EQ(AnswerLetters(answer), row.answer);
  }
}

TEST(DemoProgram, NewIdsGoBehindTheLastQuestionOfEachBank) {
  test::TestEnv t(Demo());
  const QList<std::pair<QString, QString>> laws = {{u"《示例刑法》"_qs, u"10001"_qs},
                                                   {u"《行政处罚示例规定》"_qs, u"10002"_qs},
                                                   {u"《合同示例规则》"_qs, u"10003"_qs}};
  for (const auto& [law, code] : laws) {
    for (int type = 1; type <= 3; ++type) {
      ItemIndex index;
      ReadData2ItemData(t.path(u"\\dbf"_qs), tables::kItems, index);
      int count = 0;
      for (const ItemRow& r : index) count += r.filename == code + QString::number(type);
      const QString id = NewItemID(t.env, law, type);
      EXPECT_EQ(id, code + QString::number(type) + QStringLiteral("%1").arg(count + 1, 5, 10, QChar(u'0')))
          << law.toStdString() << type;
      // The next question number is free in the bank file.
      EXPECT_FALSE(ReadText(BankFilePath(t.env, id)).contains(u'●' + QString::number(count + 1) + u'●'));
    }
  }
  EXPECT_EQ(NewItemID(t.env, u"《没有这部法律》"_qs, 1), kFallbackItemId);
}
