#include "platform/messagebox.h"

namespace mj {

QString DefaultBoxTitle() { return QStringLiteral("明镜学伴") + QStringLiteral("3.10") + QStringLiteral("提示"); }

int box::defaultAnswer(int style) {
  const int idx = defaultIndexOf(style);
  static const int table[6][3] = {
      {Ok, Ok, Ok},  {Ok, Cancel, Cancel},  {Abort, Retry, Ignore},
      {Yes, No, Cancel}, {Yes, No, No}, {Retry, Cancel, Cancel},
  };
  const int b = buttonsOf(style);
  if (b < 0 || b > 5) return Ok;
  return table[b][idx > 2 ? 0 : idx];
}

int ScriptedBoxes::show(const QString& text, int style, const QString& title) {
  const int a = answers_.isEmpty() ? box::defaultAnswer(style) : answers_.takeFirst();
  shown_.append({title.isEmpty() ? DefaultBoxTitle() : title, text, style, a});
  return a;
}

}  // namespace mj
