#include "bank/forecast_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QToolButton>

#include "settings/settings.h"
#include "settings/settings_window.h"
#include "settings/updown_widget.h"
#include "support/directory_tables.h"
#include "support/printers.h"
#include "support/test_env.h"
#include "support/window_checks.h"

using namespace mj;
using test::StoryEntry;

namespace {

const QDate kToday(2026, 11, 21);

// 1000 internal questions never done, and 40 simulated ones of which 30 are
// due under the first defaults.
void MakeTables(const test::TestEnv& t) {
  QList<test::ItemSpec> items;
  for (int i = 1; i <= 1000; ++i) items.append({u"100011"_qs + QStringLiteral("%1").arg(i, 5, 10, QChar(u'0'))});
  test::WriteItemTable(t, u"items.mmd"_qs, items);
  QList<test::ItemSpec> papers;
  for (int i = 1; i <= 40; ++i)
    papers.append({u"000011"_qs + QStringLiteral("%1").arg(i, 5, 10, QChar(u'0')),
                   i <= 10 ? StoryEntry(kToday.addDays(-1), u"A"_qs) : u"no"_qs});
  test::WriteItemTable(t, u"csitems.mmd"_qs, papers);
}

class ForecastWindow : public ::testing::Test {
 protected:
  ForecastWindow() : form4(t.env, settings, nullptr), form(t.env, settings, &form4) {
    t.clock.setDate(kToday);
    MakeTables(t);
    // The settings window's numbers: 2, 1, 30 for the internal bank.
    settings.setNumber(kStOkTimes, 2);
  }
  ~ForecastWindow() override {
    form.hide();
    form4.hide();
  }
  void type(QLineEdit* e, const QString& s) {
    e->setFocus();
    e->selectAll();
    QTest::keyClick(e, Qt::Key_Delete);
    QTest::keyClicks(e, s);
  }

  test::TestEnv t;
  Settings settings;
  Form4 form4;
  Form5 form;
};

}  // namespace

TEST_F(ForecastWindow, OpensWithItsInvitation) {
  form.openWindow();
  EXPECT_EQ(form.windowTitle(), u"明镜学习伴侣/预测任务量 "_qs);
  EXPECT_TRUE(form.Label4->isVisible());
  EXPECT_EQ(form.Label4->text(), u"    请点击开始按钮，预测一下如果按你的这种设置将要用多长时间才能做完一遍。"_qs);
  EXPECT_FALSE(form.Frame1->isVisible());
  EXPECT_FALSE(form.Frame2->isVisible());
  EXPECT_FALSE(form.ProgressBar1->isVisible());
  EXPECT_FALSE(form.Label1->isVisible());
  EXPECT_EQ(form.Command2->text(), u"开始预测"_qs);
  EXPECT_EQ(form.Command1->text(), u"返  回"_qs);
  EXPECT_EQ(form.Text1->text(), u"60"_qs);
  EXPECT_EQ(form.Text2->text(), u"6"_qs);
  EXPECT_EQ(form.Text3->text(), u"100"_qs);
  for (auto [u, lo, hi] : {std::tuple{form.UpDown1, 30, 100}, {form.UpDown2, 1, 24}, {form.UpDown3, 30, 200}}) {
    EXPECT_EQ(u->minimum(), lo);
    EXPECT_EQ(u->maximum(), hi);
  }
}

TEST_F(ForecastWindow, CountShowsTheResultSentence) {
  form.openWindow();
  QStringList shownWhileCounting;
  // The progress display while the count runs: read it from the bar's moves.
  QObject::connect(form.ProgressBar1, &QProgressBar::valueChanged, &form, [&](int value) {
    if (value == 0) return;  // the bar set back before a table
    if (shownWhileCounting.isEmpty() || shownWhileCounting.last() != form.Label1->text())
      shownWhileCounting.append(form.Label1->text());
    EXPECT_TRUE(form.ProgressBar1->isVisible());
    EXPECT_FALSE(form.Frame2->isVisible());
    EXPECT_FALSE(form.Label4->isVisible());
  });
  form.Command2->click();
  EXPECT_EQ(shownWhileCounting, QStringList({u"正在统计符合设置条件的内部试题数，请稍候……"_qs,
                                             u"  正在统计符合设置条件的模拟试题数，请稍候……"_qs}));
  EXPECT_EQ(form.counts().internal, 1000);
  EXPECT_EQ(form.counts().simulated, 30);
  EXPECT_FALSE(form.ProgressBar1->isVisible());
  EXPECT_FALSE(form.Label1->isVisible());
  EXPECT_FALSE(form.Label4->isVisible());
  EXPECT_TRUE(form.Frame1->isVisible());
  EXPECT_TRUE(form.Frame2->isVisible());
  EXPECT_TRUE(form.Option1->isChecked());
  // 1000 questions, twice right each, 40% wrong with one extra round: 2400
  // attempts, Int(2400 / 6 / 100 + 1) = 5 days.
  EXPECT_EQ(form.label(6)->text(), u"内部试题库中共有1000 道试题满足你的设置要求，如果你的"_qs);
  EXPECT_EQ(form.label(7)->text(), u"平均成绩是"_qs);
  EXPECT_EQ(form.label(8)->text(), u"分，则按此种设置你可能要做 2400 道次，如果"_qs);
  EXPECT_EQ(form.label(9)->text(), u"你平均每天能抽出"_qs);
  EXPECT_EQ(form.label(10)->text(), u"小时，每小时可以做"_qs);
  EXPECT_EQ(form.label(11)->text(), u"道试题，则你"_qs);
  EXPECT_EQ(form.label(12)->text(), u"大约需要 5  天可以完整做一遍所有满足你的设置条件的内部试题，"_qs);
  EXPECT_EQ(form.label(13)->text(), u"如果你能够保证设置所需要的时间，请返回后直接按确定按钮完成设"_qs);
  EXPECT_EQ(form.label(14)->text(), u"置，否则请返回后继续调整相关设置。"_qs);
  EXPECT_EQ(form.Label2->text(), u"内部试题"_qs);
  EXPECT_EQ(form.Label3->text(), u"模拟试题"_qs);
  EXPECT_EQ(form.Label5->text(), u"  选择左边的试题类型以改变下面的说明。"_qs);
  EXPECT_TRUE(t.boxes.shown().isEmpty());
  test::CheckOnScreens(&form, u"forecast_window"_qs);
}

TEST_F(ForecastWindow, EveryInputChangeRebuildsTheSentence) {
  form.openWindow();
  form.CalcData();
  // A full score: only the right rounds.
  type(form.Text1, u"100"_qs);
  EXPECT_EQ(form.UpDown1->value(), 100);
  EXPECT_EQ(form.label(8)->text(), u"分，则按此种设置你可能要做 2000 道次，如果"_qs);
  // Out of bounds: left on screen, not taken over, the sentence stays.
  type(form.Text1, u"150"_qs);
  EXPECT_EQ(form.Text1->text(), u"150"_qs);
  EXPECT_EQ(form.UpDown1->value(), 100);
  EXPECT_EQ(form.label(8)->text(), u"分，则按此种设置你可能要做 2000 道次，如果"_qs);
  // The arrow copies its value into the field and recomputes: 99 gives
  // 2000 + 0.01 * 1000 = 2010.
  form.UpDown1->downButton()->click();
  EXPECT_EQ(form.Text1->text(), u"99"_qs);
  EXPECT_EQ(form.label(8)->text(), u"分，则按此种设置你可能要做 2010 道次，如果"_qs);
  // One hour a day at 30 an hour: Int(2010 / 1 / 30 + 1) = 68 days.
  type(form.Text2, u"1"_qs);
  type(form.Text3, u"30"_qs);
  EXPECT_EQ(form.label(12)->text(), u"大约需要 68 天可以完整做一遍所有满足你的设置条件的内部试题，"_qs);
  // The lower bounds stop the arrows.
  form.UpDown2->downButton()->click();
  EXPECT_EQ(form.UpDown2->value(), 1);
  EXPECT_EQ(form.Text2->text(), u"1"_qs);
}

TEST_F(ForecastWindow, TheKindChangesTheSentenceAndItsNumbers) {
  form.openWindow();
  form.CalcData();
  // A click on the caption selects its option.
  QTest::mouseClick(form.Label3, Qt::LeftButton);
  EXPECT_TRUE(form.Option2->isChecked());
  // 30 simulated questions with tsoktimes 1 and tsaddnum 1 at 60: 30 + 12 = 42.
  EXPECT_EQ(form.label(6)->text(), u"模拟试题库中共有 30  道试题满足你的设置要求，如果你的"_qs);
  EXPECT_EQ(form.label(8)->text(), u"分，则按此种设置你可能要做  42  道次，如果"_qs);
  EXPECT_EQ(form.label(12)->text(), u"大约需要 1  天可以完整做一遍所有满足你的设置条件的模拟试题，"_qs);
  QTest::mouseClick(form.Label2, Qt::LeftButton);
  EXPECT_TRUE(form.Option1->isChecked());
  EXPECT_EQ(form.label(6)->text(), u"内部试题库中共有1000 道试题满足你的设置要求，如果你的"_qs);
}

TEST_F(ForecastWindow, TheNumbersOnTheSettingsWindowCountSavedOrNot) {
  form.openWindow();
  // The internal option stays selected while the count runs; the simulated
  // count still takes tsoktimes 2 and tspassdays 0, so that the ten answered
  // yesterday are due again.
  settings.setNumber(kTsOkTimes, 2);
  settings.setNumber(kTsPassDays, 0);
  form.CalcData();
  EXPECT_EQ(form.counts().simulated, 40);
  form.Option2->setChecked(true);
  // 40 * 2 + 0.4 * 40 * 1 = 96.
  EXPECT_EQ(form.attempts(), 96);
  // Nothing was written to the settings file.
  EXPECT_FALSE(QFile::exists(t.path(kSettingsFile)));
}

TEST_F(ForecastWindow, ReturnShowsTheSettingsWindowAndTheInputsStay) {
  form4.show();
  form4.hide();
  form.openWindow();
  form.CalcData();
  type(form.Text2, u"8"_qs);
  form.Command1->click();
  EXPECT_FALSE(form.isVisible());
  EXPECT_TRUE(form4.isVisible());
  // Opened again: the inputs as they were left, the invitation instead of
  // the old result.
  form4.hide();
  form.openWindow();
  EXPECT_EQ(form.Text2->text(), u"8"_qs);
  EXPECT_EQ(form.UpDown2->value(), 8);
  EXPECT_TRUE(form.Label4->isVisible());
  EXPECT_FALSE(form.Frame2->isVisible());
  // Closing by the window's frame does the same as 返回.
  form.close();
  EXPECT_TRUE(form4.isVisible());
}
