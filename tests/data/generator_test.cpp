// The data generator: a folder of the sizes asked for, with directory rows
// that match the questions, every question in its bank file, citations into
// the generated laws, and practice records of every shape.

#include "generator.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QDir>
#include <QImageReader>
#include <QRegularExpression>
#include <QTemporaryDir>

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

namespace {

gen::Sizes Small() {
  gen::Sizes s;
  s.questions = 50;
  s.banks = 7;
  s.laws = 4;
  s.articles = 45;
  s.papers = 2;
  s.paperQuestions = 10;
  s.codesPerGroup = 2;
  s.today = QDate(2026, 11, 21);
  return s;
}

struct Generated {
  QTemporaryDir dir;
  gen::Result result;
  QString root() const { return dir.path(); }
};

std::unique_ptr<Generated> Make(const gen::Sizes& s) {
  auto g = std::make_unique<Generated>();
  QString error;
  EXPECT_TRUE(gen::Generate(g->root(), s, &error, &g->result)) << error.toStdString();
  return g;
}

QDate DateOf(const QString& entry) { return QDate::fromString(entry.left(10), u"yyyy-MM-dd"_qs); }

}  // namespace

TEST(Generator, WritesTheSizesAskedFor) {
  const auto g = Make(Small());
  EXPECT_EQ(g->result.questions, 50);
  EXPECT_EQ(g->result.paperQuestions, 20);
  // Codes 10001..10003 (7 banks, three types a code), two codes a group:
  // 2 group headings, 3 code headings, 7 leaves.
  EXPECT_EQ(g->result.headings, 5);
  EXPECT_EQ(g->result.directoryRows, 12);
  EXPECT_EQ(g->result.lawFiles.size(), 4);
  EXPECT_EQ(TableRows(g->root() + u"/dbf/items.mmd"_qs).size(), 50);
  EXPECT_EQ(TableRows(g->root() + u"/dbf/csitems.mmd"_qs).size(), 20);
  EXPECT_EQ(TableRows(g->root() + u"/dbf/33ok.mmd"_qs).size(), 12);
  EXPECT_EQ(TableRows(g->root() + u"/dbf/csface.mmd"_qs).size(), 8);
  EXPECT_EQ(TableRows(g->root() + u"/dbf/33.mmd"_qs).size(), 4);
  EXPECT_EQ(TableRows(g->root() + u"/dbf/listbox.mmd"_qs).size(), 4);
  for (int b = 0; b < 7; ++b) EXPECT_TRUE(FileExists(g->root() + u"/yibanti/"_qs + gen::BankName(b) + u".mmd"_qs));
  EXPECT_TRUE(FileExists(g->root() + u"/moniti/00001.mmd"_qs));
  EXPECT_TRUE(FileExists(g->root() + u"/moniti/00002.mmd"_qs));
  for (const QString& d :
       {u"yibanti"_qs, u"ini"_qs, u"外部题库/试卷三"_qs, u"模糊题"_qs, u"更新的题"_qs, u"新知识点"_qs})
    EXPECT_TRUE(DirExists(g->root() + u'/' + d)) << d.toStdString();
  // The program needs an icon to start.
  QImageReader icon(g->root() + u"/ini/fa.ico"_qs);
  EXPECT_EQ(icon.read().size(), QSize(16, 16));
  EXPECT_EQ(QDate(2003, 1, 1).addDays(IniRead(g->root() + u"/ini/newlumen.txt"_qs, u"信息"_qs, u"考试时间"_qs).toInt()),
            QDate(2026, 11, 21).addDays(200));
}

TEST(Generator, DirectoryRowsCountTheirQuestions) {
  const gen::Sizes s = Small();
  const auto g = Make(s);
  for (const auto& [face, items] :
       {std::pair{u"33ok.mmd"_qs, u"items.mmd"_qs}, std::pair{u"csface.mmd"_qs, u"csitems.mmd"_qs}}) {
    SCOPED_TRACE(face.toStdString());
    const auto rows = TableRows(g->root() + u"/dbf/"_qs + face);
    const auto questions = TableRows(g->root() + u"/dbf/"_qs + items);
    QList<int> total(rows.size() + 1), ok(rows.size() + 1);
    QList<bool> leaf(rows.size() + 1);
    int leaves = 0, nested = 0;
    for (int i = 0; i < rows.size(); ++i) {
      const auto& r = rows[i];
      total[i + 1] = r[u"f"_qs].toInt();
      ok[i + 1] = r[u"oknum"_qs].toInt();
      if (r[u"c"_qs].contains(u'-')) {
        const int a = r[u"c"_qs].section(u'-', 0, 0).toInt(), z = r[u"c"_qs].section(u'-', 1).toInt();
        EXPECT_EQ(a, i + 2);
        EXPECT_GE(z, a);
        EXPECT_LE(z, rows.size());
        for (int k = a; k <= z; ++k) nested += rows[k - 1][u"c"_qs].contains(u'-');
        continue;
      }
      leaf[i + 1] = true;
      ++leaves;
      const QString b = r[u"b"_qs];
      const QString bank = Mid(b, Len(b) - 9, 6);
      int count = 0, due = 0, done = 0, right = 0;
      for (const auto& q : questions) {
        if (q[u"filename"_qs] != bank) continue;
        ++count;
        due += gen::DueWithDefaults(q[u"story"_qs], q[u"answer"_qs], s.today);
        const QString story = q[u"story"_qs];
        for (int e = 0; e + 20 <= story.size(); e += 20) {
          ++done;
          right += story.mid(e + 16, 4).trimmed() == q[u"answer"_qs];
        }
      }
      EXPECT_EQ(total[i + 1], count) << bank.toStdString();
      EXPECT_EQ(ok[i + 1], due) << bank.toStdString();
      EXPECT_EQ(r[u"g"_qs].toInt(), done);
      EXPECT_EQ(r[u"h"_qs].toInt(), right);
      EXPECT_EQ(r[u"i"_qs], done ? QString::number(right * 100 / done) + u'%' : u"0%"_qs);
    }
    EXPECT_EQ(leaves, face == u"33ok.mmd" ? 7 : 6);
    if (face == u"33ok.mmd") {
      EXPECT_GT(nested, 0) << "headings over headings";
    }
    for (int i = 0; i < rows.size(); ++i) {
      if (!rows[i][u"c"_qs].contains(u'-')) continue;
      const int a = rows[i][u"c"_qs].section(u'-', 0, 0).toInt(), z = rows[i][u"c"_qs].section(u'-', 1).toInt();
      int sum = 0, sumOk = 0;
      for (int k = a; k <= z; ++k)
        if (leaf[k]) {
          sum += total[k];
          sumOk += ok[k];
        }
      EXPECT_EQ(total[i + 1], sum);
      EXPECT_EQ(ok[i + 1], sumOk);
    }
  }
}

TEST(Generator, EveryQuestionHasItsBlockAndItsCitationsExist) {
  const auto g = Make(Small());
  QHash<QString, std::pair<QString, int>> laws;  // title -> text, type
  for (int k = 0; k < 4; ++k) {
    const QString text = ReadText(g->root() + u"/lawtxt/"_qs + gen::LawName(k) + u".mmd"_qs);
    EXPECT_TRUE(text.startsWith(gen::LawName(k) + kCrLf));
    EXPECT_EQ(TextType(text), gen::LawType(k));
    laws.insert(gen::LawTitle(k), {text, gen::LawType(k)});
    // All the articles, and no more.
    for (int n = 1; n <= 45; ++n) EXPECT_EQ(text.count(kCrLf + ArticleHeading(gen::LawType(k), n)), 1) << n;
    EXPECT_FALSE(text.contains(kCrLf + ArticleHeading(gen::LawType(k), 46)));
  }
  int citations = 0, ranges = 0;
  for (const QString& table : {u"items.mmd"_qs, u"csitems.mmd"_qs}) {
    for (const auto& r : TableRows(g->root() + u"/dbf/"_qs + table)) {
      const QString id = r[u"itemid"_qs];
      SCOPED_TRACE(id.toStdString());
      const QString file =
          id.startsWith(u'0') ? u"/moniti/"_qs + id.left(5) + u".mmd"_qs : u"/yibanti/"_qs + id.left(6) + u".mmd"_qs;
      const QString text = ReadText(g->root() + file);
      const QString n = QString::number(int(Val(Mid(id, 7, 5))));
      EXPECT_EQ(text.count(kCrLf + u'●' + n + u'●'), 1);
      const QString block = TextBetween(text, u'●' + n + u'●', u"●"_qs);
      EXPECT_TRUE(block.contains(u"■答案："_qs + r[u"answer"_qs] + u"参见《"_qs));
      EXPECT_EQ(r[u"itemtype"_qs], id.mid(5, 1));
      QList<Citation> list;
      ASSERT_TRUE(ParseFlatList(r[u"aboutlaw"_qs], &list)) << r[u"aboutlaw"_qs].toStdString();
      for (const Citation& c : list) {
        ++citations;
        ASSERT_TRUE(laws.contains(c.title));
        EXPECT_TRUE(laws[c.title].first.contains(kCrLf + ArticleHeading(laws[c.title].second, c.number)));
      }
      ranges += block.contains(QRegularExpression(u"第[0-9]+-[0-9]+条"_qs));
    }
  }
  EXPECT_EQ(citations, g->result.citations);
  EXPECT_GT(ranges, 0);
}

TEST(Generator, RecordsHaveEveryShape) {
  const gen::Sizes s = Small();
  const auto g = Make(s);
  const auto rows = TableRows(g->root() + u"/dbf/items.mmd"_qs);
  QSet<int> shapes;
  for (int i = 0; i < rows.size(); ++i) {
    const QString story = rows[i][u"story"_qs], key = rows[i][u"answer"_qs];
    SCOPED_TRACE(story.toStdString());
    const gen::Story shape = gen::StoryShapeOf(i);
    shapes.insert(int(shape));
    EXPECT_EQ(story, gen::StoryText(shape, i, key, s.today));
    if (shape == gen::Story::Never) {
      EXPECT_EQ(story, u"no"_qs);
      continue;
    }
    ASSERT_EQ(story.size() % 20, 0);
    const int n = int(story.size() / 20);
    QList<QString> entries;
    for (int e = 0; e < n; ++e) {
      entries.append(story.mid(e * 20, 20));
      EXPECT_TRUE(QDateTime::fromString(entries.last().left(16), u"yyyy-MM-dd hh:mm"_qs).isValid());
      if (e > 0) {
        EXPECT_LT(DateOf(entries[e]), DateOf(entries[e - 1])) << "newest first";
      }
    }
    const auto answerOf = [](const QString& e) { return e.mid(16, 4).trimmed(); };
    switch (shape) {
      case gen::Story::OneRight:
        EXPECT_EQ(n, 1);
        EXPECT_EQ(answerOf(entries[0]), key);
        EXPECT_LT(DateOf(entries[0]), s.today);
        break;
      case gen::Story::WrongThenRight:
        EXPECT_GE(n, 2);
        EXPECT_NE(answerOf(entries.last()), key);
        for (int e = 0; e + 1 < n; ++e) EXPECT_EQ(answerOf(entries[e]), key);
        break;
      case gen::Story::Eight:
        EXPECT_EQ(n, 8);
        for (const QString& e : entries) EXPECT_EQ(answerOf(e), key);
        break;
      case gen::Story::Future:
        for (const QString& e : entries) EXPECT_GT(DateOf(e), s.today);
        break;
      case gen::Story::Never:
        break;
    }
    EXPECT_EQ(entries[0].mid(16, 4), QStringLiteral("%1").arg(answerOf(entries[0]), 4)) << "answer right-aligned in 4";
  }
  EXPECT_EQ(shapes.size(), gen::kStoryShapes);
}

// Records as long as the program keeps them, for the statistics' benchmarks:
// ten entries each in both tables, over about the last 90 days, the oldest
// wrong for every second question, and the directories count them.
TEST(Generator, FullRecordsHoldTenEntries) {
  gen::Sizes s = Small();
  s.fullRecords = true;
  const auto g = Make(s);
  int wrongOldest = 0, rows = 0;
  for (const QString& table : {u"items.mmd"_qs, u"csitems.mmd"_qs}) {
    const auto all = TableRows(g->root() + u"/dbf/"_qs + table);
    for (int i = 0; i < all.size(); ++i) {
      const QString story = all[i][u"story"_qs], key = all[i][u"answer"_qs];
      SCOPED_TRACE(story.toStdString());
      ++rows;
      ASSERT_EQ(story.size(), 200);
      for (int e = 0; e < 10; ++e) {
        const QString entry = story.mid(e * 20, 20);
        EXPECT_TRUE(QDateTime::fromString(entry.left(16), u"yyyy-MM-dd hh:mm"_qs).isValid());
        EXPECT_LE(DateOf(entry), s.today);
        EXPECT_LT(DateOf(entry).daysTo(s.today), 110);
        if (e > 0) {
          EXPECT_LT(DateOf(entry), DateOf(story.mid((e - 1) * 20, 20))) << "newest first";
        }
        if (e < 9) {
          EXPECT_EQ(entry.mid(16, 4).trimmed(), key);
        }
      }
      if (story.right(4).trimmed() != key) ++wrongOldest;
    }
  }
  EXPECT_EQ(rows, 50 + 2 * 10);
  EXPECT_EQ(wrongOldest, 25 + 2 * 5);
  // With a wrong oldest entry ten answers are far more than two: nothing is due.
  const auto face = TableRows(g->root() + u"/dbf/33ok.mmd"_qs);
  int ok = 0;
  for (const auto& row : face) ok += row[u"oknum"_qs].toInt();
  EXPECT_EQ(ok, 0);
}

TEST(Generator, DueTestFollowsTheDefaultSettings) {
  const QDate today(2026, 11, 21);
  EXPECT_TRUE(gen::DueWithDefaults(u"no"_qs, u"A"_qs, today));
  // Right once, long ago: done (once right is enough).
  EXPECT_FALSE(gen::DueWithDefaults(u"2026-01-01 10:00   A"_qs, u"A"_qs, today));
  // Wrong once, long ago: due; wrong, then right twice: done.
  EXPECT_TRUE(gen::DueWithDefaults(u"2026-01-01 10:00   B"_qs, u"A"_qs, today));
  EXPECT_FALSE(
      gen::DueWithDefaults(u"2026-03-01 10:00   A2026-02-01 10:00   A2026-01-01 10:00   B"_qs, u"A"_qs, today));
  // Wrong ten days ago: not yet due.
  EXPECT_FALSE(gen::DueWithDefaults(u"2026-11-11 10:00   B"_qs, u"A"_qs, today));
}

TEST(Generator, SizesOfNoneAndBadSizes) {
  gen::Sizes none;
  none.questions = 0;
  none.banks = 0;
  none.papers = 0;
  none.laws = 0;
  none.articles = 0;
  const auto g = Make(none);
  EXPECT_EQ(TableRows(g->root() + u"/dbf/items.mmd"_qs).size(), 0);
  EXPECT_EQ(TableRows(g->root() + u"/dbf/33ok.mmd"_qs).size(), 0);
  EXPECT_TRUE(DirExists(g->root() + u"/yibanti"_qs));

  QTemporaryDir dir;
  QString error;
  gen::Sizes bad = Small();
  bad.laws = 0;
  EXPECT_FALSE(gen::Generate(dir.path(), bad, &error));
  EXPECT_EQ(error, u"试题要引用法条：至少要有一部法律和一条条文"_qs);
  bad = Small();
  bad.banks = 0;
  EXPECT_FALSE(gen::Generate(dir.path(), bad, &error));
  EXPECT_EQ(error, u"试题要放进题库：至少要有一个题库"_qs);
  bad = Small();
  bad.questions = -1;
  EXPECT_FALSE(gen::Generate(dir.path(), bad, &error));
  EXPECT_EQ(error, u"大小不能为负数"_qs);
}

TEST(Generator, LargeLawsSpellTheirArticlesLikeTheProgram) {
  gen::Sizes s = Small();
  s.laws = 3;
  s.articles = 1015;
  s.questions = 30;
  const auto g = Make(s);
  const QString type1 = ReadText(g->root() + u"/lawtxt/"_qs + gen::LawName(0) + u".mmd"_qs);
  for (const QString& h :
       {u"第一百零五条 "_qs, u"第一百一十条 "_qs, u"第一千零一条 "_qs, u"第一千零十条 "_qs, u"第一千零十五条 "_qs})
    EXPECT_TRUE(type1.contains(kCrLf + u"　　"_qs + h)) << h.toStdString();
  EXPECT_FALSE(type1.contains(u"第一千零一十条"_qs));
  const QString type2 = ReadText(g->root() + u"/lawtxt/"_qs + gen::LawName(1) + u".mmd"_qs);
  EXPECT_TRUE(type2.contains(kCrLf + u"　　一千零十五、"_qs));
  EXPECT_TRUE(type2.contains(kCrLf + u"　　附件"_qs));
  const QString type3 = ReadText(g->root() + u"/lawtxt/"_qs + gen::LawName(2) + u".mmd"_qs);
  EXPECT_TRUE(type3.contains(kCrLf + u"　　1015．"_qs));
  EXPECT_FALSE(type3.contains(kCrLf + u"　　1016．"_qs));
  // The program's own reader finds every law's type and its last article.
  const QString table = GetLongDaXie(1015);
  for (int k = 0; k < 3; ++k) {
    const QString text = ReadText(g->root() + u"/lawtxt/"_qs + gen::LawName(k) + u".mmd"_qs);
    EXPECT_EQ(GetLawTextType(text), gen::LawType(k));
    EXPECT_EQ(LastItemNum(text), 1015);
    for (int n : {1, 105, 1010, 1015})
      EXPECT_TRUE(
          GetPutTxt2Text(text, table, QString::number(n) + u'．').startsWith(ArticleHeading(gen::LawType(k), n)))
          << k << " " << n;
  }
}

TEST(Generator, StoredCitationsAreTheProgramsReadingOfTheAnswers) {
  const auto g = Make(Small());
  test::TestEnv t(g->root());
  for (const QString& table : {u"items.mmd"_qs, u"csitems.mmd"_qs}) {
    for (const auto& r : TableRows(g->root() + u"/dbf/"_qs + table)) {
      const QString id = r[u"itemid"_qs];
      QString provider;
      const QString answer = GetField(GetOneShiTi(ReadText(BankFilePath(t.env, id)), ItemSerial(id)), 2, provider);
      EXPECT_EQ(LongDaAn(answer), r[u"aboutlaw"_qs]) << id.toStdString();
      EXPECT_FALSE(GetLawTxtForDaAn(t.env, answer).contains(u"法律文件"_qs)) << id.toStdString();
    }
  }
}

// The program's own counts over a generated folder give the numbers the
// generator wrote into the directory rows.
TEST(Generator, ProgramCountsAgreeWithTheDirectories) {
  const gen::Sizes sizes = Small();
  const auto g = Make(sizes);
  const QString dbf = g->root() + u"/dbf"_qs;
  const auto before = TableRows(dbf + u"/33ok.mmd"_qs);
  const auto csBefore = TableRows(dbf + u"/csface.mmd"_qs);
  ItemIndex index;
  ReadData2ItemData(dbf, tables::kItems, index);
  Schedule s;
  s.today = sizes.today;
  ASSERT_TRUE(NewIniDbfData(dbf, tables::kDirectory, tables::kItems, index, s));
  ASSERT_TRUE(IniDbfData(dbf, tables::kCsDirectory, tables::kCsItems, s));
  const auto after = TableRows(dbf + u"/33ok.mmd"_qs);
  const auto csAfter = TableRows(dbf + u"/csface.mmd"_qs);
  int due = 0;
  for (const auto& [b, a] : {std::pair{&before, &after}, std::pair{&csBefore, &csAfter}}) {
    ASSERT_EQ(b->size(), a->size());
    for (int i = 0; i < b->size(); ++i) {
      if ((*b)[i][u"b"_qs].isEmpty()) continue;
      EXPECT_EQ((*a)[i][u"f"_qs], (*b)[i][u"f"_qs]) << i;
      EXPECT_EQ((*a)[i][u"oknum"_qs], (*b)[i][u"oknum"_qs]) << i;
      due += (*a)[i][u"oknum"_qs].toInt();
    }
  }
  EXPECT_GT(due, 0);
  EXPECT_LT(due, 70) << "some records are not due";
}
