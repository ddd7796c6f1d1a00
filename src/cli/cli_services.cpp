#include "cli/cli_services.h"

namespace mj::cli {

int KeptBoxes::show(const QString& text, int style, const QString& title) {
  const int buttons = box::buttonsOf(style);
  const bool asks = buttons == box::YesNo || buttons == box::YesNoCancel;
  const int answer = asks && questionAnswer_ != 0 ? questionAnswer_ : box::defaultAnswer(style);
  shown_.append({title.isEmpty() ? DefaultBoxTitle() : title, text, style, answer});
  return answer;
}

}  // namespace mj::cli
