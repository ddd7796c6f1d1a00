#include "app/program_window.h"

#include <QApplication>
#include <QTimer>

#include "app/main_window.h"
#include "platform/clock.h"
#include "platform/desktop_services_widget.h"
#include "platform/events.h"
#include "platform/shell.h"

namespace mj {

int RunProgram(const QString& root, const std::function<void()>& onShown) {
  SystemClock clock;
  WidgetBoxes boxes;
  DesktopShell shell;
  WidgetDialogs dialogs;
  WidgetClipboard clipboard;
  const Env env{root, &clock, &boxes, &shell, &dialogs, &clipboard};
  SetEventPump([] { QCoreApplication::processEvents(); });

  Form1 form(env);
  if (form.load() == Form1::LoadOutcome::EndNow) return 0;
  // Maximised: the window manager fits the window to the screen without
  // its panels; the size of the start-up is the size when restored.
  form.showMaximized();
  if (onShown) QTimer::singleShot(0, &form, onShown);
  return QApplication::exec();
}

}  // namespace mj
