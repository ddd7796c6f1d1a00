#pragma once
// Message boxes. Every box of the program goes through this interface: the
// program's window shows a real one, a test scripts the answers and reads
// back every box in the order shown. Styles and answers use the classic
// message-box numbers (buttons + icon + default button).

#include <QList>
#include <QString>

namespace mj {

namespace box {
// Buttons
constexpr int OkOnly = 0, OkCancel = 1, AbortRetryIgnore = 2, YesNoCancel = 3, YesNo = 4, RetryCancel = 5;
// Icons
constexpr int Critical = 16, Question = 32, Exclamation = 48, Information = 64;
// Default button
constexpr int DefaultButton1 = 0, DefaultButton2 = 256, DefaultButton3 = 512;
// Answers
constexpr int Ok = 1, Cancel = 2, Abort = 3, Retry = 4, Ignore = 5, Yes = 6, No = 7;

inline int buttonsOf(int style) { return style & 0x0F; }
inline int iconOf(int style) { return style & 0xF0; }
inline int defaultIndexOf(int style) { return (style & 0xF00) >> 8; }  // 0-based
// The answer of the default button of a style.
int defaultAnswer(int style);
}  // namespace box

// The title a box gets when its caller names none: 明镜学伴3.10提示.
QString DefaultBoxTitle();

struct BoxRecord {
  QString title;
  QString text;
  int style = 0;
  int answer = 0;
};

class MessageBoxes {
 public:
  virtual ~MessageBoxes() = default;
  // Shows the box and returns the answer (box::Ok, box::Yes ...). An empty
  // title means the default title.
  virtual int show(const QString& text, int style = 0, const QString& title = QString()) = 0;
};

// For tests: answers come from a queue (the default button when the queue is
// empty), and every box is kept.
class ScriptedBoxes final : public MessageBoxes {
 public:
  int show(const QString& text, int style = 0, const QString& title = QString()) override;
  void answer(int a) { answers_.append(a); }
  const QList<BoxRecord>& shown() const { return shown_; }
  QList<BoxRecord> take() { QList<BoxRecord> r = shown_; shown_.clear(); return r; }
  void clear() { shown_.clear(); answers_.clear(); }
  int pendingAnswers() const { return static_cast<int>(answers_.size()); }

 private:
  QList<BoxRecord> shown_;
  QList<int> answers_;
};

}  // namespace mj
