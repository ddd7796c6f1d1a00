// The question search over a generated folder (240 questions in 6 banks and
// a paper of 12) into which a few questions with known texts are written as
// the question editor writes them: all words, a quoted word, width forms, a
// word in the note only, a word split by a line break, no hit, each with its
// exact hits, lines and marks. Then every query is checked against a plain
// search of each question's text on its own, so that the scan over all
// texts at once finds exactly the same questions in the same order. Last,
// the window over that folder with a word found in nearly every question.
#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QLineEdit>
#include <QTableView>
#include <algorithm>

#include "bank/bank_text.h"
#include "bank/bank_titles.h"
#include "bank/item_index.h"
#include "bank/question_search.h"
#include "bank/question_search_window.h"
#include "bank/tables.h"
#include "generator.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"
#include "support/test_env.h"

using namespace mj;

namespace {

// Four options and an answer field, as the question editor hands a text to
// the bank file.
QString Question(const QString& stem, const QString& key, const QString& note = QString()) {
  QString text = stem + u"\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁■答案："_qs + key + u"参见《生成法律1》第1条\r\n"_qs;
  if (!note.isEmpty()) text += u"[注释：]"_qs + note + u"\r\n"_qs;
  return text;
}

struct Generated : ::testing::Test {
  test::TestEnv t;
  ItemIndex internal, papers;
  // The questions given known texts.
  QString whale, egret, note, wifi, spaced, joined;

  void SetUp() override {
    gen::Sizes s;
    s.questions = 240;
    s.banks = 6;
    s.laws = 1;
    s.articles = 20;
    s.papers = 1;
    s.paperQuestions = 12;
    QString error;
    ASSERT_TRUE(gen::Generate(t.root(), s, &error)) << error.toStdString();
    const QString dbf = t.path(u"\\dbf"_qs);
    ReadData2ItemData(dbf, tables::kItems, internal);
    ReadData2ItemData(dbf, tables::kCsItems, papers);
    ASSERT_EQ(internal.size(), 240);
    ASSERT_EQ(papers.size(), 12);
    whale = internal[7].itemid;
    egret = internal[45].itemid;
    note = internal[100].itemid;
    spaced = internal[160].itemid;
    joined = internal[201].itemid;
    wifi = papers[3].itemid;
    ASSERT_NE(Left(whale, 6), Left(egret, 6)) << "two banks";
    // "照一" holds the bytes of "q" across its two characters: a find that
    // starts inside a character must not count.
    ASSERT_TRUE(PutItemText(t.env, whale, Question(u"蓝鲸公司与白鹭公司订立合同，照一(      )"_qs, u"A"_qs)));
    ASSERT_TRUE(PutItemText(t.env, egret, Question(u"白鹭公司的经理与蓝鲸\r\n公司谈判(      )"_qs, u"B"_qs)));
    ASSERT_TRUE(PutItemText(t.env, note, Question(u"甲的行为如何认定(      )"_qs, u"C"_qs, u"北极星条款只在注释中出现"_qs)));
    ASSERT_TRUE(PutItemText(t.env, spaced, Question(u"雪豹 条款的适用(      )"_qs, u"D"_qs)));
    ASSERT_TRUE(PutItemText(t.env, joined, Question(u"雪豹条款与Q版本的关系(      )"_qs, u"A"_qs)));
    ASSERT_TRUE(PutItemText(t.env, wifi, Question(u"ＷＩＦＩ密码１２３４的保护(      )"_qs, u"D"_qs)));
  }

  SearchResults search(const QString& query) {
    QuestionSearch s;
    return s.searchResults(t.env, internal, query);
  }
  QStringList idsOf(const SearchResults& r) {
    QStringList out;
    for (qsizetype i = 0; i < r.size(); ++i) out.append(r.id(i));
    return out;
  }
  // Every live question, in index order and then the paper's, whose text
  // read on its own holds every word.
  QStringList plainSearch(const QString& query) {
    const QStringList words = SearchWords(query);
    QStringList out;
    if (words.isEmpty()) return out;
    for (const ItemIndex* index : {&internal, &papers}) {
      for (const ItemRow& row : *index) {
        if (!row.valid2) continue;
        const QString file = ReadText(BankFilePath(t.env, row.itemid));
        const QString text = FoldForSearch(SearchableText(file, std::max<long long>(ItemSerial(row.itemid), 1)));
        bool all = true;
        for (const QString& w : words) all = all && text.contains(w);
        if (all) out.append(row.itemid);
      }
    }
    return out;
  }
};

}  // namespace

TEST_F(Generated, AllWordsMustOccurInOneQuestion) {
  const SearchResults r = search(u"蓝鲸公司 白鹭公司"_qs);
  ASSERT_EQ(idsOf(r), (QStringList{whale, egret}));
  const SearchHit first = r.hit(0);
  EXPECT_EQ(first.id, whale);
  EXPECT_EQ(first.line, u"蓝鲸公司与白鹭公司订立合同，照一(      )。"_qs);
  EXPECT_EQ(first.marks, (QList<TextMark>{{0, 4}, {5, 4}}));
  EXPECT_EQ(first.bank, ReadBankTitles(t.env).value(Left(whale, 6)));
  EXPECT_NE(first.bank, Left(whale, 6)) << "the bank's title from the directory";
  // The line of the first place found; the second word runs into the next
  // line there and is not marked in this one.
  const SearchHit second = r.hit(1);
  EXPECT_EQ(second.line, u"白鹭公司的经理与蓝鲸"_qs);
  EXPECT_EQ(second.marks, (QList<TextMark>{{0, 4}}));
  EXPECT_TRUE(search(u"蓝鲸公司 北极星条款"_qs).isEmpty());
}

TEST_F(Generated, AWordSplitByALineBreak) {
  const SearchResults r = search(u"蓝鲸公司"_qs);
  ASSERT_EQ(idsOf(r), (QStringList{whale, egret}));
  EXPECT_EQ(r.hit(1).line, u"白鹭公司的经理与蓝鲸公司谈判(      )。"_qs);
  EXPECT_EQ(r.hit(1).marks, (QList<TextMark>{{8, 4}}));
}

TEST_F(Generated, AQuotedWordKeepsItsBlank) {
  EXPECT_EQ(idsOf(search(u"\"雪豹 条款\""_qs)), QStringList{spaced});
  EXPECT_EQ(idsOf(search(u"“雪豹\u3000条款”"_qs)), QStringList{spaced});
  EXPECT_EQ(idsOf(search(u"\"雪豹条款\""_qs)), QStringList{joined});
  EXPECT_EQ(idsOf(search(u"雪豹条款"_qs)), QStringList{joined});
  // Unquoted, the two words may stand anywhere.
  const SearchResults loose = search(u"雪豹 条款"_qs);
  ASSERT_EQ(idsOf(loose), (QStringList{spaced, joined}));
  EXPECT_EQ(loose.hit(0).line, u"雪豹 条款的适用(      )。"_qs);
  EXPECT_EQ(loose.hit(0).marks, (QList<TextMark>{{0, 2}, {3, 2}}));
  EXPECT_EQ(loose.hit(1).marks, (QList<TextMark>{{0, 4}}));
}

TEST_F(Generated, WidthFormsAndCaseMatch) {
  for (const QString& q : {u"wifi密码1234"_qs, u"ＷＩＦＩ密码１２３４"_qs, u"WiFi密码１234"_qs}) {
    const SearchResults r = search(q);
    ASSERT_EQ(idsOf(r), QStringList{wifi}) << q.toStdString();
    EXPECT_EQ(r.hit(0).line, u"ＷＩＦＩ密码１２３４的保护(      )。"_qs);
    EXPECT_EQ(r.hit(0).marks, (QList<TextMark>{{0, 10}}));
    EXPECT_EQ(r.hit(0).bank, ReadBankTitles(t.env).value(Left(wifi, 6)));
  }
  // A letter found only inside the bytes of two characters is no hit; the
  // real one further on is.
  EXPECT_EQ(idsOf(search(u"q"_qs)), QStringList{joined});
  EXPECT_EQ(idsOf(search(u"Ｑ版"_qs)), QStringList{joined});
}

TEST_F(Generated, AWordInTheNoteOnly) {
  const SearchResults r = search(u"北极星条款"_qs);
  ASSERT_EQ(idsOf(r), QStringList{note});
  EXPECT_EQ(r.hit(0).line, u"[注释：]北极星条款只在注释中出现"_qs);
  EXPECT_EQ(r.hit(0).marks, (QList<TextMark>{{5, 5}}));
}

TEST_F(Generated, NoHit) {
  EXPECT_TRUE(search(u"不存在的词语"_qs).isEmpty());
  EXPECT_TRUE(search(u"蓝鲸公司 ＷＩＦＩ"_qs).isEmpty());
  EXPECT_TRUE(search(u" \u3000 "_qs).isEmpty());
}

TEST_F(Generated, TheScanFindsWhatAPlainSearchOfEachQuestionFinds) {
  QuestionSearch s;
  const QStringList queries = {u"蓝鲸公司 白鹭公司"_qs, u"蓝鲸公司"_qs,   u"\"雪豹 条款\""_qs, u"雪豹 条款"_qs,
                               u"wifi密码1234"_qs,      u"北极星条款"_qs, u"q"_qs,             u"生成试题1"_qs,
                               u"生成选项b12 生成法律1"_qs, u"答案：a"_qs, u"生成的注释"_qs,  u"不存在的词语"_qs,
                               u"。"_qs,                u"(      )"_qs};
  for (const QString& q : queries) {
    const SearchResults r = s.searchResults(t.env, internal, q);
    EXPECT_EQ(idsOf(r), plainSearch(q)) << q.toStdString();
    // The IDs handed to a run are the hits' IDs, in the same order.
    EXPECT_EQ(r.ids(), idsOf(r).join(QString())) << q.toStdString();
    // Every hit made at once, as a front end printing them all gets them,
    // is the hit made for its row alone.
    const QList<SearchHit> all = r.hits();
    ASSERT_EQ(all.size(), r.size());
    for (qsizetype i = 0; i < r.size(); ++i) {
      EXPECT_EQ(all[i].id, r.id(i));
      EXPECT_EQ(all[i].bank, r.bank(i));
      EXPECT_FALSE(all[i].line.isEmpty()) << q.toStdString() << " " << r.id(i).toStdString();
    }
  }
  EXPECT_GT(s.searchResults(t.env, internal, u"生成试题1"_qs).size(), 100);
}

TEST_F(Generated, ResultsKeepTheirRowsWhenTheFilesChange) {
  QuestionSearch s;
  const SearchResults before = s.searchResults(t.env, internal, u"北极星条款"_qs);
  ASSERT_EQ(before.size(), 1);
  ASSERT_TRUE(PutItemText(t.env, note, Question(u"甲的行为如何认定(      )"_qs, u"C"_qs, u"改写后的注释"_qs)));
  // The next search reads the changed file; the results already shown keep
  // the text they were found in.
  EXPECT_TRUE(s.searchResults(t.env, internal, u"北极星条款"_qs).isEmpty());
  EXPECT_EQ(idsOf(s.searchResults(t.env, internal, u"改写后的注释"_qs)), QStringList{note});
  EXPECT_EQ(before.hit(0).line, u"[注释：]北极星条款只在注释中出现"_qs);
}

// The window over the generated folder: a word in most questions gives many
// rows, each row's line made when the list shows it, the first and the last
// exactly the hits' lines; the list scrolled to its end is painted.
TEST_F(Generated, TheWindowShowsManyHitsRowByRow) {
  Form19 window(t.env, &internal);
  window.resize(900, 600);
  window.show();
  window.Text1->setText(u"生成试题"_qs);
  window.runSearch();
  const qsizetype count = window.results().size();
  ASSERT_EQ(count, 240 + 12 - 6);  // every question but the six with known texts
  EXPECT_EQ(window.statusText(), SearchFoundText(count));
  const QAbstractItemModel* m = window.List1->model();
  ASSERT_EQ(m->rowCount(), count);
  const SearchResults& r = window.results();
  for (const int row : {0, static_cast<int>(count) - 1}) {
    const SearchHit hit = r.hit(row);
    EXPECT_EQ(m->index(row, 0).data().toString(), hit.bank);
    EXPECT_EQ(m->index(row, 1).data().toString(), hit.id);
    EXPECT_EQ(m->index(row, 2).data().toString(), hit.line);
    EXPECT_EQ(m->index(row, 2).data(Qt::UserRole).toString(), MarkedLineHtml(hit));
    EXPECT_TRUE(hit.line.contains(u"生成试题"_qs)) << hit.line.toStdString();
  }
  EXPECT_EQ(r.hit(0).line, u"生成试题1：根据生成法律，下列说法正确的是(      )。"_qs);
  window.List1->scrollToBottom();
  const QImage shot = window.grab().toImage();
  EXPECT_FALSE(shot.isNull());
  QDir().mkpath(test::OutputDir() + u"/screenshots"_qs);
  EXPECT_TRUE(shot.save(test::OutputDir() + u"/screenshots/question_search_many_hits.png"_qs));
}
