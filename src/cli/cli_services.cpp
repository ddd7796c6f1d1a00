#include "cli/cli_services.h"

namespace mj::cli {

int KeptBoxes::show(const QString& text, int style, const QString& title) {
  const int answer = box::defaultAnswer(style);
  shown_.append({title.isEmpty() ? DefaultBoxTitle() : title, text, style, answer});
  return answer;
}

}  // namespace mj::cli
