#pragma once
// The statistics window Form21 (做题统计, under the menu 帮助): how the months
// of practice are going, in three charts on three pages:
//   每日做题   answers per day and the share right per day, last 90 days
//   到期预测   questions that become due on each of the next 30 days
//   各科正确率 per law and per simulated paper, the share of the questions
//              done whose newest answer is right
// Every number comes from the practice records of both item tables (read
// anew each time the window opens) and the scheduling numbers the program
// uses now; the window writes nothing but the pictures the user saves.

#include <QList>
#include <QWidget>

#include "log/practice_stats.h"
#include "platform/env.h"

class QLabel;
class QPushButton;
class QTabWidget;
class QChartView;
class QChart;

namespace mj {

class Settings;

class Form21 : public QWidget {
  Q_OBJECT

 public:
  Form21(const Env& env, const Settings& settings, QWidget* parent = nullptr);

  // Reads the records, draws every chart and shows the window. Tables that
  // could not be read in full are said in a box naming them.
  void openWindow();
  // Reads the records and draws every chart again.
  void refresh();
  // Works out the figures of `records` for today and draws every chart.
  void showRecords(const PracticeRecords& records);

  // The page shown: 0 answers per day, 1 due forecast, 2 share right.
  int page() const;
  void setPage(int page);
  // "保存图片": the chart of the page shown as a PNG picture, to a file
  // the user chooses. False when cancelled or not written (said in a box).
  bool saveChart();

  // The figures behind the charts, as last drawn.
  const QList<DayAnswers>& answersPerDay() const { return days_; }
  const QList<DueDay>& dueDays() const { return due_; }
  const QList<GroupShare>& shares() const { return shares_; }

  // Controls, by their names.
  QTabWidget* TabStrip1 = nullptr;
  QChartView* Chart1 = nullptr;  // answers per day
  QChartView* Chart2 = nullptr;  // due forecast
  QChartView* Chart3 = nullptr;  // share right
  QLabel* Label1 = nullptr;      // the sums under the answers per day
  QLabel* Label2 = nullptr;      // the sums under the due forecast
  QLabel* Label3 = nullptr;      // the sums under the share right
  QPushButton* Command1 = nullptr;  // 保存图片
  QPushButton* Command2 = nullptr;  // 刷新
  QPushButton* Command3 = nullptr;  // 关  闭

  // The chart of a page.
  QChartView* chartView(int page) const;

 private:
  void drawAnswers();
  void drawDue();
  void drawShares();

  Env env_;
  const Settings& settings_;
  QList<DayAnswers> days_;
  QList<DueDay> due_;
  QList<GroupShare> shares_;
};

// The file name a saved chart is proposed under: 做题统计-<page>-<date>.png.
QString ChartFileName(int page, const QDate& today);

}  // namespace mj
