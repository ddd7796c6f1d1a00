#pragma once
// The shared help window: the help text of the window from which F1 was
// pressed, or of all windows.

#include <QList>
#include <QWidget>

class QPushButton;
class QTextEdit;

namespace mj {

struct Env;

class Form18 : public QWidget {
  Q_OBJECT
 public:
  explicit Form18(const Env& env, QWidget* parent = nullptr);

  // Shows the section of `number` (0: the whole file); the window comes up
  // whenever there is text to show.
  void showHelp(int number);
  int currentNumber() const { return current_; }

  QTextEdit* RichTextBox1 = nullptr;
  QList<QPushButton*> Command1;  // 当前窗口说明, 全部窗口说明, 关  闭

 private:
  void showText(int number);
  const Env& env_;
  int current_ = 0;
};

}  // namespace mj
