#include "settings/help.h"

#include "platform/paths.h"
#include "platform/text_toolkit.h"
#include "platform/vbtext.h"

namespace mj {

int HelpNumberOf(const QString& formName) { return SaturatedInt<int>(Val(Mid(formName, 5, 2))); }

HelpText ShowHelpText(const Env& env, int number) {
  const QString a = u'[' + QString::number(number) + u']';
  const QString b = u'[' + QString::number(number + 1) + u']';
  const QString file = env.path(kHelpFile);
  if (!FileExists(file)) {
    env.msgBox(QStringLiteral("帮助文件") + file + QStringLiteral("不存在。"), 0, QStringLiteral("文件未找到"));
    return {HelpText::MissingFile, {}};
  }
  const QString text = ReadFileAsText(file);
  if (number == 0) return {HelpText::Found, text};
  if (InStr(text, a) > 0) {
    if (InStr(text, b) == 0) return {HelpText::Found, ReplaceAll(Mid(text, InStr(text, a)), a, QString())};
    return {HelpText::Found, TextBetween(text, a, b)};
  }
  env.msgBox(QStringLiteral("帮助文件内没有符合约定条件的文本。"), 0, QStringLiteral("无帮助文本"));
  return {HelpText::NoSection, {}};
}

}  // namespace mj
