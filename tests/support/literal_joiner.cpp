#include "support/literal_joiner.h"

#include "law/law_text.h"
#include "platform/vbtext.h"

namespace mj::test {

QString LiteralJoinBrokenLines(const QString& text) {
  QString t = Trim(text);
  if (Len(t) > 2 && Left(t, 2) == kCrLf) t = Mid(t, 3);
  qsizetype i = InStr(t, kCrLf);
  if (i == 1 || i == 0) return QString();
  QString out;
  // Lines as long as the next line break stands at place 2 or later.
  while (i >= 2) {
    const QString line = Trim(Left(t, i - 1));
    t = Mid(t, i + 2);
    if (!line.isEmpty()) {
      if (InStr(QStringLiteral("。：；:;"), Right(line, 1)) > 0 || LineKind(t, 1) >= 1 || LineKind(t, 2) >= 1 ||
          LineKind(t, 3) >= 1)
        out += line + kCrLf;
      else
        out += line;
    }
    i = InStr(t, kCrLf);
  }
  return out;
}

}  // namespace mj::test
