// 明镜学习伴侣: the program folder is the folder the program stands in.
#include <QApplication>

#include "app/main_window.h"
#include "platform/clock.h"
#include "platform/desktop_services_widget.h"
#include "platform/events.h"
#include "platform/shell.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("明镜学习伴侣"));
  mj::SystemClock clock;
  mj::WidgetBoxes boxes;
  mj::DesktopShell shell;
  mj::WidgetDialogs dialogs;
  const mj::Env env{QCoreApplication::applicationDirPath(), &clock, &boxes, &shell, &dialogs};
  mj::SetEventPump([] { QCoreApplication::processEvents(); });

  mj::Form1 form(env);
  if (form.load() == mj::Form1::LoadOutcome::EndNow) return 0;
  form.show();
  return QApplication::exec();
}
