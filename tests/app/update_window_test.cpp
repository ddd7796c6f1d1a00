// 选新题库文件并更新进系统题库 on the main window, with the demonstration
// data's sample package: the progress, the report, the lists after it, and
// the close request during the run.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <functional>

#include "app/log_entries_window.h"
#include "app/main_window.h"
#include "bank/bank_text.h"
#include "bank/item_index.h"
#include "log/day_files.h"
#include "platform/dbftable.h"
#include "log/log_grid_widget.h"
#include "log/update_package.h"
#include "platform/textfile.h"
#include "support/test_env.h"
#include "support/window_checks.h"

using namespace mj;

namespace {

const QString kSample = u"\\更新的题\\示例更新包.new"_qs;
// The sample's two corrections and its new question. Each is filed again
// under every law it cites: the corrections once under 《示例刑法》 (as
// 10001100008 and 10001100009), the new one under 《示例刑法》 and
// 《合同示例规则》: seven questions in all.
const QString kCorrected1 = u"10001100001"_qs;
const QString kCorrected3 = u"10001100003"_qs;
const QString kNewOne = u"10001200090"_qs;

struct Sample : ::testing::Test {
  std::unique_ptr<test::TestEnv> t;
  std::unique_ptr<Form1> form;
  QString dayFile;

  void SetUp() override {
    if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "no demonstration data built";
    t = std::make_unique<test::TestEnv>(test::DemoDataDir());
    t->clock.set(QDateTime(QDate(2026, 11, 21), QTime(10, 0)));
    dayFile = u"\\更新的题\\20261121.ini"_qs;
    form = std::make_unique<Form1>(t->env);
    ASSERT_EQ(form->load(), Form1::LoadOutcome::Running);
    form->resize(1000, 700);
    form->show();
    emit form->AutoUpdate->aboutToShow();
    ASSERT_TRUE(form->NewerProgram->isEnabled());
    t->dialogs.answer(t->path(kSample));
  }
  LogEntries* entries() const { return form->logEntries(); }
  // Takes the sample in, answering 否 to "update again?", with `atSecond`
  // done when the run comes to its second item; the boxes shown.
  QList<BoxRecord> runClosingAtSecondItem(const std::function<void()>& atSecond) {
    t->boxes.answer(box::No);
    int items = 0;
    entries()->updateStarting = [&](UpdateRun& run) {
      run.onStep = [&](const QString& where) {
        if (where == u"item" && ++items == 2) atSecond();
      };
    };
    form->NewerProgram->trigger();
    entries()->updateStarting = nullptr;
    return t->boxes.take();
  }
};

}  // namespace

TEST_F(Sample, TheSamplePackageIsTakenInWithItsProgress) {
  // A record of the first question, in the table and in the index.
  const QString oldStory = u"2026-11-20 09:00   B"_qs;
  {
    DbfTable items = DbfTable::open(t->path(u"\\dbf\\items.mmd"_qs), DbfTable::Mode::ReadWrite);
    items.setText(Select(items, {{u"itemid"_qs, kCorrected1}})[0], u"story"_qs, oldStory);
  }
  FindItem(form->state().AllItemData, kCorrected1)->story = oldStory;
  t->boxes.answer(box::No);
  bool seenRunning = false;
  entries()->updateStarting = [&](UpdateRun& run) {
    run.onStep = [&](const QString& where) {
      if (where != u"item" || seenRunning) return;
      seenRunning = true;
      // What the window shows while the run goes on.
      EXPECT_EQ(form->currentFace(), form->gridPage);
      EXPECT_TRUE(form->ProgressBar1->isVisible());
      EXPECT_EQ(form->ProgressBar1->maximum(), ReadText(t->path(kSample)).size() + 2);
      EXPECT_EQ(QApplication::overrideCursor() ? QApplication::overrideCursor()->shape() : Qt::ArrowCursor,
                Qt::WaitCursor);
      EXPECT_EQ(form->state().RunState, 1);
      for (QAction* a : form->menuBar()->actions())
        EXPECT_EQ(a->isEnabled(), a == form->MmExit) << a->objectName().toStdString();
      test::SaveScreenshot(form.get(), u"update_progress"_qs);
    };
  };
  form->NewerProgram->trigger();
  ASSERT_TRUE(seenRunning);
  const QList<BoxRecord> boxes = t->boxes.take();
  ASSERT_EQ(boxes.size(), 2);
  EXPECT_EQ(boxes[0].title, u"询问"_qs);
  EXPECT_EQ(boxes[1].title, u"结果汇报"_qs);
  EXPECT_EQ(boxes[1].text, u"共更新了7题。"_qs);
  EXPECT_FALSE(form->ProgressBar1->isVisible());
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  EXPECT_EQ(form->state().RunState, 3);
  EXPECT_TRUE(form->ShiTi->isEnabled());
  EXPECT_TRUE(form->RiZhi->isEnabled());
  EXPECT_FALSE(form->state().FlushUpdate);

  // The day file, newest first: the new question's copies and itself, the
  // corrections after their copies.
  const QString updated = ReadIdFile(t->path(dayFile));
  ASSERT_EQ(updated.size(), 7 * 11);
  EXPECT_EQ(updated.mid(22), kNewOne + u"10001100009"_qs + kCorrected3 + u"10001100008"_qs + kCorrected1);
  EXPECT_EQ(updated.left(6), u"100032"_qs);
  EXPECT_EQ(updated.mid(11, 6), u"100012"_qs);
  // The index was read again: the records are reset.
  EXPECT_EQ(FindItem(form->state().AllItemData, kCorrected1)->story, u"no"_qs);
  ASSERT_NE(FindItem(form->state().AllItemData, kNewOne), nullptr);
  EXPECT_EQ(FindItem(form->state().AllItemData, kNewOne)->answer, u"AB"_qs);
  EXPECT_TRUE(GetOneOldTi(t->env, kCorrected3).contains(u"（更新）乙为了使本人"_qs));

  // The updated questions by day and by law.
  emit form->AutoUpdate->aboutToShow();
  ASSERT_TRUE(form->DoneNewItem->isEnabled());
  form->DoneNewItem->trigger();
  ASSERT_EQ(form->MSFlexGrid2->rowCount(), 1);
  EXPECT_EQ(form->MSFlexGrid2->cellText(1, 1), u"2026年11月21日更新的试题"_qs);
  EXPECT_EQ(form->MSFlexGrid2->cellText(1, 2), u"7"_qs);
  form->DoneNewByLawName->trigger();
  ASSERT_EQ(form->MSFlexGrid2->rowCount(), 2);
  EXPECT_EQ(form->MSFlexGrid2->cellText(1, 1), u"《示例刑法》"_qs);
  EXPECT_EQ(form->MSFlexGrid2->cellText(1, 2), u"6"_qs);
  EXPECT_EQ(form->MSFlexGrid2->cellText(2, 1), u"《合同示例规则》"_qs);
  EXPECT_EQ(form->MSFlexGrid2->cellText(2, 2), u"1"_qs);

  // Again with 否: the three have their history now.
  t->dialogs.answer(t->path(kSample));
  t->boxes.answer(box::No);
  entries()->updateStarting = nullptr;
  form->NewerProgram->trigger();
  EXPECT_EQ(t->boxes.take().value(1).text, u"共3题，更新了0题，还有3题因为已经有了更新历史而没有更新。"_qs);
}

TEST_F(Sample, TheCloseRequestDuringTheRunIsAskedAndNoGoesOn) {
  const QList<BoxRecord> boxes = runClosingAtSecondItem([&] {
    // Inside an item the close request is not even asked.
    form->close();
    EXPECT_TRUE(t->boxes.shown().size() == 1);
    QCoreApplication::postEvent(form.get(), new QCloseEvent);
    t->boxes.answer(box::No);  // 确定中止吗？
  });
  ASSERT_EQ(boxes.size(), 3);
  EXPECT_EQ(boxes[1].title, u"请你确定"_qs);
  EXPECT_EQ(boxes[1].text, u"正在进行更新任务，确定中止吗？"_qs);
  EXPECT_EQ(boxes[1].style, box::YesNo | box::Question);
  EXPECT_EQ(boxes[2].text, u"共更新了7题。"_qs);
  EXPECT_TRUE(form->isVisible());
  EXPECT_EQ(ReadIdFile(t->path(dayFile)).size(), 7 * 11);
}

TEST_F(Sample, YesToTheCloseKeepsWhatIsDoneAndEndsTheRun) {
  const QList<BoxRecord> boxes = runClosingAtSecondItem([&] {
    QCoreApplication::postEvent(form.get(), new QCloseEvent);
    t->boxes.answer(box::Yes);  // 确定中止吗？
    t->boxes.answer(box::Yes);  // 真的不玩儿啦？
  });
  ASSERT_EQ(boxes.size(), 3);
  EXPECT_EQ(boxes[1].text, u"正在进行更新任务，确定中止吗？"_qs);
  EXPECT_EQ(boxes[2].title, u"请你确认"_qs);
  EXPECT_TRUE(boxes[2].text.startsWith(u"真的不玩儿啦？"_qs));
  // No report: the run ended with the close. The two items done are
  // written, with today's day file; the third is not.
  EXPECT_EQ(ReadIdFile(t->path(dayFile)), u"10001100009"_qs + kCorrected3 + u"10001100008"_qs + kCorrected1);
  EXPECT_TRUE(GetOneOldTi(t->env, kCorrected1).contains(u"（更新）"_qs));
  EXPECT_TRUE(GetOneOldTi(t->env, kCorrected3).contains(u"（更新）"_qs));
  EXPECT_EQ(GetOneOldTi(t->env, kNewOne), u""_qs);
  EXPECT_FALSE(form->state().FlushUpdate);
}

TEST_F(Sample, YesThenNoToTheCloseGoesOnAndTheDayFileHoldsEachOnce) {
  const QList<BoxRecord> boxes = runClosingAtSecondItem([&] {
    QCoreApplication::postEvent(form.get(), new QCloseEvent);
    t->boxes.answer(box::Yes);  // 确定中止吗？
    t->boxes.answer(box::No);   // 真的不玩儿啦？
  });
  ASSERT_EQ(boxes.size(), 4);
  EXPECT_EQ(boxes[3].text, u"共更新了7题。"_qs);
  const QString updated = ReadIdFile(t->path(dayFile));
  EXPECT_EQ(updated.size(), 7 * 11);
  EXPECT_TRUE(updated.endsWith(kCorrected1));
  EXPECT_EQ(updated.count(kCorrected1), 1);
}
