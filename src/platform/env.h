#pragma once
// What the logic needs from the outside world: the program folder, the
// clock, the message boxes, the shell, the common dialogs and the clipboard. The program
// builds one from the real services; tests build one over a temporary
// folder with a fixed clock and scripted boxes.

#include <QString>

#include "platform/clipboard.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/messagebox.h"
#include "platform/paths.h"
#include "platform/shell.h"

namespace mj {

struct Env {
  QString root;  // the program folder
  Clock* clock = nullptr;
  MessageBoxes* boxes = nullptr;
  Shell* shell = nullptr;
  Dialogs* dialogs = nullptr;
  Clipboard* clipboard = nullptr;  // may be missing: nothing is copied then

  // root + a suffix such as "\dbf" or "\ini\userself.ini".
  QString path(const QString& suffix) const { return AppPath(root, suffix); }
  QDateTime now() const { return clock->now(); }
  QDate today() const { return clock->today(); }
  // A message box; an empty title gives the default title.
  int msgBox(const QString& text, int style = 0, const QString& title = QString()) const {
    return boxes->show(text, style, title);
  }
};

}  // namespace mj
