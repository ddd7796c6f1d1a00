// The demonstration data read through the program's own readers: the
// question index, the question blocks and their fields, new IDs in the banks
// of the directory, the law texts and the articles that answers cite.

#include <gtest/gtest.h>

#include "bank/bank_text.h"
#include "bank/eligibility.h"
#include "bank/item_index.h"
#include "bank/tables.h"
#include "data_test_util.h"
#include "law/citations.h"
#include "law/law_extract.h"
#include "law/law_text.h"
#include "law/numerals.h"
#include "platform/dbftable.h"
#include "platform/inifile.h"
#include "platform/paths.h"
#include "platform/text_toolkit.h"
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

TEST(DemoProgram, LawsReadAsTheProgramReadsThem) {
  for (const LawFile& law : DemoLaws()) {
    SCOPED_TRACE(law.title.toStdString());
    EXPECT_EQ(GetLawTextType(law.text), law.type);
    int count = 0;
    while (law.text.contains(kCrLf + ArticleHeading(law.type, count + 1))) ++count;
    EXPECT_EQ(LastItemNum(law.text), count);
    // Every article can be cut out, the last one included.
    const QString table = GetLongDaXie(qint16(count));
    for (int n = 1; n <= count; ++n) {
      const QString text = GetPutTxt2Text(law.text, table, QString::number(n) + u'．');
      // The article's own heading line, then its text; nothing of the next.
      EXPECT_TRUE(text.startsWith(ArticleHeading(law.type, n) + u'　')) << n << ": " << text.toStdString();
      EXPECT_FALSE(text.contains(kCrLf + ArticleHeading(law.type, n + 1))) << n;
      EXPECT_FALSE(text.contains(u"附件："_qs)) << n << ": the appendix is no part of an article";
    }
    EXPECT_EQ(GetPutTxt2Text(law.text, table, QString::number(count + 1) + u'．'), QString());
  }
}

TEST(DemoProgram, AnswersPrintTheirArticles) {
  test::TestEnv t(Demo());
  int printed = 0;
  for (const QString& table : {tables::kItems, tables::kCsItems}) {
    ItemIndex index;
    ReadData2ItemData(t.path(u"\\dbf"_qs), table, index);
    for (const ItemRow& row : index) {
      SCOPED_TRACE(row.itemid.toStdString());
      QString provider;
      const QString answer =
          GetField(GetOneShiTi(ReadText(BankFilePath(t.env, row.itemid)), ItemSerial(row.itemid)), 2, provider);
      // The stored list is the program's own reading of the answer.
      EXPECT_EQ(LongDaAn(answer), row.aboutlaw);
      const QString text = GetLawTxtForDaAn(t.env, answer);
      EXPECT_FALSE(text.contains(u"法律文件"_qs)) << text.toStdString();
      QList<Citation> list;
      ASSERT_TRUE(ParseFlatList(row.aboutlaw, &list));
      for (const Citation& c : list) EXPECT_TRUE(text.contains(c.title + kCrLf)) << c.title.toStdString();
      ++printed;
    }
  }
  EXPECT_EQ(printed, 63);
}

TEST(DemoProgram, EmphasesListArticlesOfTheirLaw) {
  for (const LawFile& law : DemoLaws()) {
    const QString name = law.title.mid(1, law.title.size() - 2);
    const QString table = GetLongDaXie(qint16(LastItemNum(law.text)));
    for (const QString& key : {u"重点法条"_qs, u"次重点法条"_qs}) {
      const QString value = IniRead(AppPath(Demo(), u"\\ini\\emphases.ini"_qs), name, key);
      const QString numbers = LongDaAn(value, CitationSep::LawQuery);
      EXPECT_FALSE(numbers.isEmpty()) << name.toStdString();
      const QString text = GetPutTxt2Text(law.text, table, numbers);
      for (const QString& n : numbers.split(u'．', Qt::SkipEmptyParts))
        EXPECT_TRUE((kCrLf + text).contains(kCrLf + ArticleHeading(law.type, n.toInt()) + u'　')) << n.toStdString();
    }
  }
}

// The program's own counts over the shipped tables give the numbers the
// directory rows already hold: every question is due and counted.
TEST(DemoProgram, ProgramCountsAgreeWithTheDirectories) {
  test::TestEnv t(Demo());
  const auto before = TableRows(t.path(u"\\dbf\\33ok.mmd"_qs));
  const auto csBefore = TableRows(t.path(u"\\dbf\\csface.mmd"_qs));
  ItemIndex index;
  ReadData2ItemData(t.path(u"\\dbf"_qs), tables::kItems, index);
  Schedule s;
  s.today = QDate(2027, 3, 1);
  ASSERT_TRUE(NewIniDbfData(t.path(u"\\dbf"_qs), tables::kDirectory, tables::kItems, index, s));
  ASSERT_TRUE(IniDbfData(t.path(u"\\dbf"_qs), tables::kCsDirectory, tables::kCsItems, s));
  const auto after = TableRows(t.path(u"\\dbf\\33ok.mmd"_qs));
  const auto csAfter = TableRows(t.path(u"\\dbf\\csface.mmd"_qs));
  for (const auto& [b, a] : {std::pair{&before, &after}, std::pair{&csBefore, &csAfter}}) {
    ASSERT_EQ(b->size(), a->size());
    for (int i = 0; i < b->size(); ++i) {
      if ((*b)[i][u"b"_qs].isEmpty()) continue;  // headings get sums on display only
      EXPECT_EQ((*a)[i][u"f"_qs], (*b)[i][u"f"_qs]) << i;
      EXPECT_EQ((*a)[i][u"oknum"_qs], (*b)[i][u"oknum"_qs]) << i;
    }
  }
}
