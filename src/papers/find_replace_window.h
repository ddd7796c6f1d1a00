#pragma once
// The find/replace window Form13 "查找/替换": one hit at a time over the text
// of the window that opened it (the paper window, the practice of a paper,
// or the law query), replacing the current hit or all hits, with special
// characters at hand. Each pair the user replaces with is added to the
// batch replacement list (not for the law query).

#include <QList>
#include <QPointer>
#include <QWidget>

#include "papers/find_replace.h"
#include "platform/env.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace mj {

class Form13 : public QWidget {
  Q_OBJECT
 public:
  explicit Form13(const Env& env, QWidget* parent = nullptr);

  // Who opened the window (FindCallers); set before it opens.
  int FindCaller = 0;

  // Opens the window for caller over the target text box of callerWindow;
  // both boxes start with the selection last made there, the find box
  // selected whole.
  void openFor(int caller, QPlainTextEdit* target, QWidget* callerWindow, const QString& selection);

  // The buttons: 0 下一个, 1 替换, 2 全部替换, 3 关闭.
  void command(int index);
  // The special character of Combo1's entry into the box that had the focus last.
  void insertSpecial(int entry);

  const FindReplace& search() const { return find_; }

  QLineEdit* Text1 = nullptr;  // 查找内容：
  QLineEdit* Text2 = nullptr;  // 替换内容：
  QComboBox* Combo1 = nullptr;  // 特殊符号：
  QList<QPushButton*> Command1;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void show(const FindOutcome& r);
  void backToCaller();

  Env env_;
  FindReplace find_;
  QPointer<QPlainTextEdit> target_;
  QPointer<QWidget> caller_;
  int lastBox_ = 0;  // 1 Text1, 2 Text2, 0 none since the load
};

}  // namespace mj
