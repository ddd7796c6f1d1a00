#pragma once
// The forecast window Form5 (明镜学习伴侣/预测任务量): how long one full pass
// over the questions due today takes with the scheduling numbers on the
// settings window. It opens from "分析预测" of the settings window, which
// stays hidden behind it, and reads the numbers that window shows (the
// shared Settings object holds them, saved or not).
//
// Before a count the window shows its invitation Label4; "开始预测" counts
// with a progress display and then shows the result sentence, whose three
// numbers follow every change of an input or of the kind at once. The three
// inputs keep their values between openings while the program runs.

#include <QWidget>
#include <array>

#include "bank/forecast.h"
#include "platform/env.h"

class QGroupBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QRadioButton;

namespace mj {

class Settings;
class UpDown;

class Form5 : public QWidget {
  Q_OBJECT

 public:
  // settingsWindow is shown again when this window closes; it may be null.
  Form5(const Env& env, const Settings& settings, QWidget* settingsWindow, QWidget* parent = nullptr);

  // "分析预测": the invitation instead of an old result, the inputs as they
  // were left, the window shown.
  void openWindow();
  // "开始预测": the count of both kinds, then the result of the selected kind.
  void CalcData();

  const ForecastCounts& counts() const { return counts_; }
  ForecastKind kind() const;
  // The attempts and the days of the selected kind with the present inputs.
  qint32 attempts() const;
  int days() const;

  // Controls, by their names.
  QRadioButton* Option1 = nullptr;  // 内部试题
  QRadioButton* Option2 = nullptr;  // 模拟试题
  QLabel* Label1 = nullptr;         // what is being counted
  QLabel* Label2 = nullptr;         // caption of Option1
  QLabel* Label3 = nullptr;         // caption of Option2
  QLabel* Label4 = nullptr;         // the invitation before a count
  QLabel* Label5 = nullptr;
  std::array<QLabel*, 9> resultLabels{};  // Label6 ... Label14
  QLabel* label(int n) const { return resultLabels[static_cast<size_t>(n - 6)]; }
  QLineEdit* Text1 = nullptr;  // average score
  QLineEdit* Text2 = nullptr;  // hours per day
  QLineEdit* Text3 = nullptr;  // questions per hour
  UpDown* UpDown1 = nullptr;
  UpDown* UpDown2 = nullptr;
  UpDown* UpDown3 = nullptr;
  QGroupBox* Frame1 = nullptr;  // the two kinds
  QGroupBox* Frame2 = nullptr;  // the result sentence with the inputs
  QProgressBar* ProgressBar1 = nullptr;
  QPushButton* Command1 = nullptr;  // 返  回
  QPushButton* Command2 = nullptr;  // 开始预测

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // Progress display on, result frames off (and back).
  void ShowContrl();
  void HideContrl();
  // Label6, Label8 and Label12 from the counts and the inputs.
  void showResult();
  void textChanged(QLineEdit* text, UpDown* updown);
  void upDownChanged(QLineEdit* text, int value);

  Env env_;
  const Settings& settings_;
  QWidget* settingsWindow_;
  ForecastCounts counts_;
  bool counting_ = false;
};

}  // namespace mj
