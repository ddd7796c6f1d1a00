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
  const Env env{root, &clock, &boxes, &shell, &dialogs};
  SetEventPump([] { QCoreApplication::processEvents(); });

  Form1 form(env);
  if (form.load() == Form1::LoadOutcome::EndNow) return 0;
  form.show();
  if (onShown) QTimer::singleShot(0, &form, onShown);
  return QApplication::exec();
}

}  // namespace mj
