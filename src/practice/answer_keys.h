#pragma once
// Answering from the keyboard in the practice frame: a single choice is
// answered by its letter at once; for the other types the letters A to D
// are collected (in alphabetic order, each once) and Enter gives them as the
// answer; Escape or Backspace drops them. The frame turns the outcome into a
// press of an answer button or a beep.

#include <QString>

namespace mj {

struct AnswerKeyAction {
  enum Kind {
    Ignored,  // the key is not for answering: the frame lets it pass
    Typed,    // a letter was added to the collected ones
    Cleared,  // the collected letters were dropped
    Answer,   // answer button `button` is to be pressed
    Unknown,  // the collected letters are no answer: a beep
  };
  Kind kind = Ignored;
  int button = -1;

  bool operator==(const AnswerKeyAction&) const = default;
};

class AnswerKeys {
 public:
  // A letter 'A' to 'D' for a question of type `type`.
  AnswerKeyAction letter(QChar letter, int type);
  // Enter: the collected letters as the answer; ignored when there are none.
  AnswerKeyAction enter();
  // Escape or Backspace: the collected letters dropped; ignored when there
  // are none.
  AnswerKeyAction cancel();
  // The letters collected so far.
  const QString& typed() const { return typed_; }
  void clear() { typed_.clear(); }

 private:
  QString typed_;
};

}  // namespace mj
