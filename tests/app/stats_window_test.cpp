// The statistics window (帮助/做题统计) and the forecast window (设置/分析预测)
// on the demonstration data after a scripted month of practice through the
// real windows: the figures behind each chart against figures this test
// works out itself from the item tables, the charts drawn from them, the
// pictures saved, and the screenshots.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QBarCategoryAxis>
#include <QBarSet>
#include <QChart>
#include <QChartView>
#include <QCryptographicHash>
#include <QDirIterator>
#include <QFile>
#include <QHorizontalBarSeries>
#include <QImage>
#include <QLabel>
#include <QLineSeries>
#include <QMap>
#include <QPushButton>
#include <QSet>
#include <QStackedBarSeries>
#include <QTabWidget>
#include <QTest>

#include "app/main_window.h"
#include "bank/forecast.h"
#include "bank/forecast_window.h"
#include "bank/item_index.h"
#include "log/practice_stats_window.h"
#include "platform/dbftable.h"
#include "practice/answer_check.h"
#include "practice/answer_window.h"
#include "practice/directory.h"
#include "practice/directory_widget.h"
#include "practice/practice_frame_widget.h"
#include "settings/settings_window.h"
#include "support/directory_runs.h"
#include "support/printers.h"
#include "support/program_folder.h"
#include "support/window_checks.h"

using namespace mj;

namespace {

// Twice right, 5 days apart, for the internal banks; once right, 7 days
// apart, for the papers.
void WriteSettings(const test::TestEnv& t) {
  t.writeGbk(u"\\ini\\userself.ini"_qs,
             u"STOKTIMES=2\r\nSTADDNUM=1\r\nSTPASSDAYS=5\r\nTSOKTIMES=1\r\nTSADDNUM=1\r\nTSPASSDAYS=7\r\n"
             u"PUBFONTSIZE=15\r\nPUBBACKCOLOR=16777215\r\nPUBFORECOLOR=0\r\nSTLASTUPDATE=0\r\n"
             u"TSLASTUPDATE=0\r\nPUBFONTNAME=宋体\r\nPUBFONTIT=FALSE\r\nPUBFONTBOLD=FALSE\r\n"_qs);
}

const QDate kFirstDay(2026, 10, 22);
const QDate kToday(2026, 11, 21);  // the day after the month

// What the tables hold, worked out here without the program's statistics.
struct Tally {
  QMap<QDate, std::pair<int, int>> perDay;             // answers, right
  QMap<QString, std::pair<int, int>> perGroup;         // "i10001" / "s00001": done, right newest
  int entries = 0;
};

Tally TallyOf(const QString& dbf) {
  Tally tally;
  for (const QString& table : {u"items.mmd"_qs, u"csitems.mmd"_qs}) {
    const DbfTable t = DbfTable::open(dbf + u'/' + table);
    for (int r : t.rows()) {
      const QString story = t.text(r, u"story"_qs).trimmed();
      const QString key = t.text(r, u"answer"_qs).trimmed();
      bool first = true;
      for (qsizetype at = 0; at + 20 <= story.size(); at += 20) {
        const QDate day = QDate::fromString(story.mid(at, 10), u"yyyy-MM-dd"_qs);
        if (!day.isValid()) continue;
        const bool right = story.mid(at + 16, 4).trimmed() == key;
        auto& [answers, rights] = tally.perDay[day];
        ++answers;
        rights += right ? 1 : 0;
        ++tally.entries;
        if (first) {
          auto& [done, newestRight] =
              tally.perGroup[(table == u"items.mmd" ? u"i"_qs : u"s"_qs) + t.text(r, u"filename"_qs).left(5)];
          ++done;
          newestRight += right ? 1 : 0;
          first = false;
        }
      }
    }
  }
  return tally;
}

// The eligible counts the directory table shows, summed over its banks.
int DueOfDirectory(const QString& path) {
  const DbfTable t = DbfTable::open(path);
  int sum = 0;
  for (int r : t.rows())
    if (t.text(r, u"b"_qs).trimmed().toUpper().endsWith(u".MMD"_qs)) sum += static_cast<int>(t.number(r, u"oknum"_qs));
  return sum;
}

QByteArray DigestOfTables(const QString& dbf) {
  QCryptographicHash h(QCryptographicHash::Sha256);
  QDirIterator it(dbf, QDir::Files);
  QStringList files;
  while (it.hasNext()) files.append(it.next());
  files.sort();
  for (const QString& f : files) {
    QFile file(f);
    if (file.open(QIODevice::ReadOnly)) h.addData(file.readAll());
  }
  return h.result();
}

struct Month : ::testing::Test {
  std::unique_ptr<test::TestEnv> t;
  std::unique_ptr<Form1> form;
  int answered = 0;

  void SetUp() override {
    if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "no demonstration data built";
    t = std::make_unique<test::TestEnv>(test::DemoDataDir());
    WriteSettings(*t);
    t->clock.set(QDateTime(kFirstDay, QTime(20, 15)));
    form = std::make_unique<Form1>(t->env);
    ASSERT_EQ(form->load(), Form1::LoadOutcome::Running);
    form->resize(1000, 700);
    form->show();
  }
  PracticeFrame* frame() const { return form->practice; }
  AppState& app() { return form->state(); }
  QString keyOf(const QString& id) {
    const DbfTable items = DbfTable::open(app().DataFolder + u'/' + app().ItemTable);
    const QList<int> rows = Select(items, {{u"itemid"_qs, id}});
    return rows.isEmpty() ? QString() : items.trimmedText(rows[0], u"answer"_qs);
  }
  // Opens the directory of `entry` and starts the run of the bank whose file
  // ends in `bank`; false when none of its questions is due.
  bool startBank(QAction* entry, const QString& bank) {
    entry->trigger();
    const int bankRow = test::OpenBankRow(*form->MSFlexGrid1, bank + u".mmd"_qs);
    if (bankRow == 0) return false;
    form->MSFlexGrid1->clickRow(bankRow);
    t->boxes.clear();  // "no question due" when none is
    return app().Run.Open;
  }
  // Answers the question shown: right, or a wrong letter.
  void answer(bool right) {
    const QString id = GetItemID(app().Run.RunIds, app().Run.CurIndex);
    const QString key = keyOf(id);
    frame()->Command2[AnswerCaptions().indexOf(right ? key : (key == u"A" ? u"B"_qs : u"A"_qs))]->click();
    ++answered;
  }
  // A month of practice, one run of an internal bank every evening and one
  // of a simulated paper every third: two questions each, one in four
  // answered wrong.
  void practiseMonth() {
    const QStringList banks = {u"100011"_qs, u"100021"_qs, u"100031"_qs};
    const QStringList papers = {u"000011"_qs, u"000021"_qs};
    int n = 0;
    for (int day = 0; day < 30; ++day) {
      t->clock.set(QDateTime(kFirstDay.addDays(day), QTime(20, 15)));
      if (startBank(form->ShiTi, banks[day % 3])) {
        const int count = static_cast<int>(app().Run.RunIds.size() / 11);
        for (int i = 0; i < std::min(2, count); ++i) {
          answer(++n % 4 != 0);
          frame()->answerWindow()->Command1[3]->click();
          if (i + 1 < count) frame()->Frame3Cmd[2]->click();
        }
        frame()->Frame3Cmd[3]->click();
      }
      if (day % 3 == 0 && startBank(form->CeShi, papers[(day / 3) % 2])) {
        const int count = static_cast<int>(app().Run.RunIds.size() / 11);
        // A paper goes on to the next question by itself.
        for (int i = 0; i < std::min(2, count); ++i) answer(++n % 4 != 0);
        frame()->Frame3Cmd[3]->click();
      }
      t->boxes.clear();
    }
  }
};

}  // namespace

TEST_F(Month, TheChartsShowWhatTheRecordsHold) {
  practiseMonth();
  ASSERT_GE(answered, 60);
  // The next morning: the directories count the questions due today.
  t->clock.set(QDateTime(kToday, QTime(8, 30)));
  form->ShiTi->trigger();
  const int dueInternal = DueOfDirectory(t->path(u"\\dbf\\33ok.mmd"_qs));
  form->CeShi->trigger();
  const int dueSimulated = DueOfDirectory(t->path(u"\\dbf\\csface.mmd"_qs));
  t->boxes.clear();
  const QByteArray before = DigestOfTables(t->path(u"\\dbf"_qs));

  form->TongJi->trigger();
  Form21* w = form->statsWindow();
  ASSERT_TRUE(w->isVisible());
  EXPECT_EQ(w->windowTitle(), u"明镜学习伴侣/做题统计"_qs);
  EXPECT_TRUE(t->boxes.shown().isEmpty());
  const Tally tally = TallyOf(t->path(u"\\dbf"_qs));
  EXPECT_GE(tally.entries, 20);

  // Answers per day: the last 90 days, as the records hold them.
  const QList<DayAnswers>& days = w->answersPerDay();
  ASSERT_EQ(days.size(), 90);
  EXPECT_EQ(days.last().day, kToday);
  int all = 0, right = 0, practised = 0;
  for (const DayAnswers& d : days) {
    const auto expected = tally.perDay.value(d.day);
    EXPECT_EQ(d.answers, expected.first) << d.day.toString().toStdString();
    EXPECT_EQ(d.right, expected.second) << d.day.toString().toStdString();
    all += d.answers;
    right += d.right;
    practised += d.answers > 0 ? 1 : 0;
  }
  EXPECT_EQ(all, tally.entries);
  EXPECT_GE(practised, 20);
  // The chart draws those numbers: a point a day, the share on days with
  // answers only.
  QChart* c1 = w->Chart1->chart();
  ASSERT_EQ(c1->series().size(), 2);
  const auto* answers = qobject_cast<QLineSeries*>(c1->series()[0]);
  const auto* share = qobject_cast<QLineSeries*>(c1->series()[1]);
  ASSERT_TRUE(answers && share);
  EXPECT_EQ(answers->name(), u"做题数（道次，左边刻度）"_qs);
  EXPECT_EQ(share->name(), u"正确率（%，右边刻度）"_qs);
  ASSERT_EQ(answers->count(), 90);
  EXPECT_EQ(share->count(), practised);
  int k = 0;
  for (int i = 0; i < 90; ++i) {
    EXPECT_EQ(answers->at(i).y(), days[i].answers);
    if (days[i].answers == 0) continue;
    EXPECT_DOUBLE_EQ(share->at(k).y(), 100.0 * days[i].right / days[i].answers);
    EXPECT_EQ(share->at(k++).x(), answers->at(i).x());
  }
  EXPECT_EQ(w->Label1->text(), u"2026-08-24至2026-11-21共做题"_qs + QString::number(all) + u"道次，做对"_qs +
                                   QString::number(right) + u"道次，正确率"_qs +
                                   QString::number(100.0 * right / all, 'f', 1) + u"%。"_qs);

  // Due forecast: day 0 is what the directories count today.
  const QList<DueDay>& due = w->dueDays();
  ASSERT_EQ(due.size(), 30);
  EXPECT_EQ(due[0].day, kToday);
  EXPECT_EQ(due[0].internal, dueInternal);
  EXPECT_EQ(due[0].simulated, dueSimulated);
  int laterInternal = 0, laterSimulated = 0;
  for (int d = 1; d < 30; ++d) {
    laterInternal += due[d].internal;
    laterSimulated += due[d].simulated;
  }
  // Answers of the last five days come back within the 30 days.
  EXPECT_GT(laterInternal, 0);
  QChart* c2 = w->Chart2->chart();
  ASSERT_EQ(c2->series().size(), 1);
  const auto* bars = qobject_cast<QStackedBarSeries*>(c2->series()[0]);
  ASSERT_TRUE(bars);
  ASSERT_EQ(bars->count(), 2);
  EXPECT_EQ(bars->barSets()[0]->label(), u"内部试题"_qs);
  EXPECT_EQ(bars->barSets()[1]->label(), u"模拟试题"_qs);
  const auto* days2 = qobject_cast<QBarCategoryAxis*>(c2->axes(Qt::Horizontal).value(0));
  ASSERT_TRUE(days2);
  EXPECT_EQ(days2->count(), 30);
  EXPECT_EQ(days2->at(0), u"11-21"_qs);
  EXPECT_EQ(days2->at(1), u"11-22"_qs);
  for (int d = 0; d < 30; ++d) {
    EXPECT_EQ(bars->barSets()[0]->at(d), due[d].internal) << d;
    EXPECT_EQ(bars->barSets()[1]->at(d), due[d].simulated) << d;
  }
  EXPECT_EQ(w->Label2->text(), u"今天（11-21）到期：内部试题"_qs + QString::number(dueInternal) + u"道，模拟试题"_qs +
                                   QString::number(dueSimulated) + u"道；此后29天内又有内部试题"_qs +
                                   QString::number(laterInternal) + u"道、模拟试题"_qs +
                                   QString::number(laterSimulated) + u"道到期。"_qs);

  // Share right per law and per paper.
  QMap<QString, std::pair<int, int>> got;
  for (const GroupShare& g : w->shares()) got.insert((g.simulated ? u"s"_qs : u"i"_qs) + g.code, {g.done, g.right});
  EXPECT_EQ(got, tally.perGroup);
  EXPECT_TRUE(got.contains(u"i10001"_qs));
  EXPECT_TRUE(got.contains(u"s00001"_qs));
  QChart* c3 = w->Chart3->chart();
  const auto* groups = qobject_cast<QHorizontalBarSeries*>(c3->series().value(0));
  ASSERT_TRUE(groups);
  const auto* names = qobject_cast<QBarCategoryAxis*>(c3->axes(Qt::Vertical).value(0));
  ASSERT_TRUE(names);
  const QList<GroupShare>& shares = w->shares();
  ASSERT_EQ(names->count(), shares.size());
  // The first law stands at the top, that is the last category.
  for (qsizetype i = 0; i < shares.size(); ++i) {
    const qsizetype c = shares.size() - 1 - i;
    EXPECT_EQ(names->at(c), shares[i].label + u"（"_qs + QString::number(shares[i].done) + u"题）"_qs);
    EXPECT_NEAR(groups->barSets()[0]->at(c), 100.0 * shares[i].right / shares[i].done, 0.05);
  }
  // Names from the law-name table and the paper directory's headings.
  EXPECT_EQ(shares.first().label, u"《示例刑法》"_qs);
  EXPECT_EQ(shares.last().label, u"示例模拟试卷二（示例数据）"_qs);

  // Nothing was written.
  w->Command2->click();
  EXPECT_EQ(DigestOfTables(t->path(u"\\dbf"_qs)), before);

  // What a user looks at: each page on both screens.
  const char* pages[] = {"stats_answers_per_day", "stats_due_forecast", "stats_share_right"};
  for (int p = 0; p < 3; ++p) {
    w->setPage(p);
    test::CheckOnScreens(w, QString::fromLatin1(pages[p]));
  }
}

TEST_F(Month, EachChartIsSavedAsAPicture) {
  practiseMonth();
  form->TongJi->trigger();
  Form21* w = form->statsWindow();
  for (int p = 0; p < 3; ++p) {
    w->setPage(p);
    const QString file = t->path(u"\\图表"_qs + QString::number(p) + u".png"_qs);
    t->dialogs.answer(file);
    w->Command1->click();
    ASSERT_EQ(t->dialogs.fileRequests.size(), p + 1);
    const FileDialogRequest& asked = t->dialogs.fileRequests.last();
    EXPECT_EQ(asked.title, u"把图表保存为图片"_qs);
    EXPECT_EQ(asked.filter, u"PNG图片(*.png)|*.png"_qs);
    EXPECT_EQ(asked.fileName, ChartFileName(p, t->env.today()));
    QImage picture;
    ASSERT_TRUE(picture.load(file, "PNG")) << p;
    EXPECT_EQ(picture.size(), w->chartView(p)->size());
    // Not a blank picture: the chart's lines and letters are in it.
    QSet<QRgb> colours;
    for (int y = 0; y < picture.height(); y += 7)
      for (int x = 0; x < picture.width(); x += 7) colours.insert(picture.pixel(x, y));
    EXPECT_GT(colours.size(), 3) << p;
  }
  EXPECT_EQ(ChartFileName(1, QDate(2026, 11, 21)), u"做题统计-到期预测-20261121.png"_qs);
  EXPECT_TRUE(t->boxes.shown().isEmpty());
  // Cancelled: nothing written, nothing said.
  w->Command1->click();
  EXPECT_TRUE(t->boxes.shown().isEmpty());
  // A folder that does not exist: said, naming the file.
  const QString nowhere = t->path(u"\\没有的文件夹\\图表.png"_qs);
  t->dialogs.answer(nowhere);
  EXPECT_FALSE(w->saveChart());
  ASSERT_EQ(t->boxes.shown().size(), 1);
  EXPECT_EQ(t->boxes.shown()[0].text, u"图片没有保存成功：无法写入文件"_qs + nowhere + u"。"_qs);
}

TEST_F(Month, F1AndTheMenuEntries) {
  QList<int> asked;
  form->helpHandler = [&asked](int n) { asked.append(n); };
  EXPECT_EQ(form->TongJi->text(), u"做题统计"_qs);
  form->TongJi->trigger();
  Form21* w = form->statsWindow();
  QTest::keyClick(w, Qt::Key_F1);
  // The forecast from 设置/分析预测: the settings window waits hidden behind it.
  form->MyConfigMenu->trigger();
  Form4* form4 = form->settingsWindow();
  ASSERT_TRUE(form4->isVisible());
  form4->form4Cmd(2)->click();
  Form5* form5 = form->forecastWindow();
  EXPECT_TRUE(form5->isVisible());
  EXPECT_FALSE(form4->isVisible());
  QTest::keyClick(form5, Qt::Key_F1);
  EXPECT_EQ(asked, (QList<int>{21, 5}));
  form5->Command1->click();
  EXPECT_TRUE(form4->isVisible());
}

TEST_F(Month, TheForecastAfterTheMonth) {
  practiseMonth();
  t->clock.set(QDateTime(kToday, QTime(8, 30)));
  form->ShiTi->trigger();
  const int dueInternal = DueOfDirectory(t->path(u"\\dbf\\33ok.mmd"_qs));
  form->MyConfigMenu->trigger();
  form->settingsWindow()->form4Cmd(2)->click();
  Form5* form5 = form->forecastWindow();
  form5->Command2->click();
  // The forecast counts hidden questions as well; the demonstration data
  // has none, so its count is the directory's.
  EXPECT_EQ(form5->counts().internal, dueInternal);
  const qint32 attempts = UserWillDo(dueInternal, 2, 1, 60);
  EXPECT_EQ(form5->label(6)->text(),
            u"内部试题库中共有"_qs + Num2StrAddStr(dueInternal, 5, u" "_qs) + u"道试题满足你的设置要求，如果你的"_qs);
  EXPECT_EQ(form5->label(8)->text(),
            u"分，则按此种设置你可能要做"_qs + Num2StrAddStr(attempts, 6, u" "_qs) + u"道次，如果"_qs);
  test::CheckOnScreens(form5, u"forecast_after_a_month"_qs);
}
