#include "practice/answer_keys.h"

#include "practice/answer_check.h"

namespace mj {

AnswerKeyAction AnswerKeys::letter(QChar letter, int type) {
  if (type == 1) return {AnswerKeyAction::Answer, AnswerButtonIndex(QString(letter))};
  typed_ = Order(typed_ + letter);
  return {AnswerKeyAction::Typed};
}

AnswerKeyAction AnswerKeys::enter() {
  if (typed_.isEmpty()) return {};
  const int index = AnswerButtonIndex(typed_);
  typed_.clear();
  if (index < 0) return {AnswerKeyAction::Unknown};
  return {AnswerKeyAction::Answer, index};
}

AnswerKeyAction AnswerKeys::cancel() {
  if (typed_.isEmpty()) return {};
  typed_.clear();
  return {AnswerKeyAction::Cleared};
}

}  // namespace mj
