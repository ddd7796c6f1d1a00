// The automatic conversion of an outside paper on any text: the whole
// sequence of rewrites, then the check the user runs on its result, and the
// single tag rewrite on every keyword it knows.

#include "fuzz_target.h"
#include "papers/auto_format.h"
#include "papers/paper_check.h"
#include "platform/clock.h"
#include "platform/messagebox.h"

using namespace mj;

MJ_FUZZ_TARGET(auto_format) {
  const QString text = fuzz::GbkText(data, size);
  const QString converted = AutoFormat(text);
  // The user checks what the conversion gave. There is no law-name list in
  // this folder, so the check says so and knows no law.
  static FixedClock clock;
  ScriptedBoxes boxes;
  Env env;
  env.root = fuzz::WorkFolder() + QStringLiteral("/auto_format");
  env.clock = &clock;
  env.boxes = &boxes;
  PaperState state;
  (void)RunPaperCheck(env, converted, state);
  for (const QString& word : {QStringLiteral("答案"), QStringLiteral("参见"), QStringLiteral("注释"),
                              QStringLiteral("注于"), QStringLiteral("做题历史")})
    (void)FormatReplace(text, word);
  return 0;
}
