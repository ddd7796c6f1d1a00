#pragma once
// The settings window Form4: the six scheduling numbers, each as a text
// field NumText(i) with its up-down control NumUpDown(i), the text style with
// its sample text, and the buttons " 确定", "取消" and "分析预测".
//
// It works on the program's one Settings object. While it is open the main
// window is hidden; " 确定" saves the file, "取消" (and closing the window by
// any other route) reads the file back over everything changed, and both
// show the main window again.

#include <QWidget>
#include <array>
#include <functional>

#include "platform/env.h"
#include "settings/settings.h"

class QGroupBox;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace mj {

class UpDown;

class Form4 : public QWidget {
  Q_OBJECT

 public:
  // mainWindow is hidden while this window is open and shown again when it
  // closes; it also lends its icon. It may be null.
  Form4(const Env& env, Settings& settings, QWidget* mainWindow, QWidget* parent = nullptr);

  // The menu entry "设置": the load procedure, then this window is shown and
  // the main window hidden.
  void openWindow();
  // The load procedure: centred on the screen unless minimised, the main
  // window's icon, the settings read from the file (with the fallback when
  // the file can be neither read nor created). "取消" runs it again.
  void loadWindow();

  // "分析预测" calls this and then hides this window without closing it; the
  // button is disabled while no hook is set.
  void setForecastHook(std::function<void()> hook);

  // Controls, by their names and indexes.
  QLineEdit* numText(int index) const { return numText_[static_cast<size_t>(index)]; }
  UpDown* numUpDown(int index) const { return numUpDown_[static_cast<size_t>(index)]; }
  QPlainTextEdit* text1() const { return text1_; }
  // 0 " 确定", 1 "取消", 2 "分析预测".
  QPushButton* form4Cmd(int index) const { return form4Cmd_[static_cast<size_t>(index)]; }
  // 0 "字体", 1 "背景颜色".
  QPushButton* frame3CfgCmd(int index) const { return frame3CfgCmd_[static_cast<size_t>(index)]; }
  QGroupBox* frame1() const { return frame1_; }
  QGroupBox* frame2() const { return frame2_; }
  QGroupBox* frame3() const { return frame3_; }

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void confirmClicked();
  void cancelClicked();
  void forecastClicked();
  void fontClicked();
  void backColorClicked();
  // Puts the settings' numbers into the controls: all text fields when all
  // is set, else only the pairs whose value changed.
  void showNumbers(bool all);
  void showStyle();
  void numTextChanged(int index);
  void numUpDownChanged(int index, int value);
  // Closes through a button, without the close route's reload.
  void closeByButton();
  void showMainWindow();

  Env env_;
  Settings& settings_;
  QWidget* mainWindow_;
  std::function<void()> forecastHook_;
  bool showing_ = false;  // controls being filled from the settings
  bool closingByButton_ = false;

  std::array<QLineEdit*, kSettingsNumberCount> numText_{};
  std::array<UpDown*, kSettingsNumberCount> numUpDown_{};
  std::array<QPushButton*, 3> form4Cmd_{};
  std::array<QPushButton*, 2> frame3CfgCmd_{};
  QPlainTextEdit* text1_ = nullptr;
  QGroupBox* frame1_ = nullptr;
  QGroupBox* frame2_ = nullptr;
  QGroupBox* frame3_ = nullptr;
};

}  // namespace mj
