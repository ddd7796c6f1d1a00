#pragma once
// The help text of a window: the section of \ini\lumenhelp.ini that starts at
// "[n]" (n the window's number) and ends at "[n+1]", or the whole file for 0.

#include <QString>

#include "platform/env.h"

namespace mj {

inline const QString kHelpFile = QStringLiteral("\\ini\\lumenhelp.ini");

// The number behind "Form" in a window's name: characters 5 and 6 read as a
// number (0 for a name without digits there).
int HelpNumberOf(const QString& formName);

struct HelpText {
  enum Kind { Found, MissingFile, NoSection } kind = Found;
  QString text;
};

// The section of `number`; on MissingFile and NoSection the box has been shown.
HelpText ShowHelpText(const Env& env, int number);

}  // namespace mj
