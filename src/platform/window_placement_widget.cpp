#include "platform/window_placement_widget.h"

#include <QApplication>
#include <QEvent>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QPointer>
#include <QScreen>
#include <QTimer>
#include <QWidget>

namespace mj {

namespace {

// Windows that get a place of their own; menus, tool tips and the popups of
// combo boxes are placed by Qt next to what opened them.
bool placedWindow(const QWidget* w) {
  if (!w->isWindow()) return false;
  switch (w->windowType()) {
    case Qt::Window:
    case Qt::Dialog:
    case Qt::Sheet:
    case Qt::Tool:
    case Qt::SplashScreen:
      return true;
    default:
      return false;
  }
}

QMargins measuredFrame(const QWidget* w) {
  if (!w->isVisible()) return {};
  const QRect f = w->frameGeometry();
  const QRect g = w->geometry();
  return QMargins(g.left() - f.left(), g.top() - f.top(), f.right() - g.right(), f.bottom() - g.bottom());
}

class WindowFitter final : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Show && watched->isWidgetType()) {
      auto* w = static_cast<QWidget*>(watched);
      if (placedWindow(w)) {
        FitOnScreen(w);
        // Again once the window manager has put its frame around the window.
        QPointer<QWidget> guard(w);
        for (int delay : {0, 400})
          QTimer::singleShot(delay, this, [guard] {
            if (guard && guard->isVisible()) FitOnScreen(guard);
          });
      }
    }
    return QObject::eventFilter(watched, event);
  }
};

}  // namespace

void KeepWindowsOnScreen(QApplication& app) {
  const QString name = QStringLiteral("mjWindowFitter");
  if (app.findChild<QObject*>(name, Qt::FindDirectChildrenOnly)) return;
  auto* fitter = new WindowFitter(&app);
  fitter->setObjectName(name);
  app.installEventFilter(fitter);
}

QRect AvailableArea(const QWidget* window) {
  const QScreen* screen = nullptr;
  const QWidget* parent = window->parentWidget();
  if (!window->isVisible() && parent && parent->window()->isVisible()) {
    // A window about to open comes up on its parent's screen.
    screen = parent->window()->screen();
  } else {
    // The screen that holds the largest part of the window.
    const QRect place(window->pos(), window->frameSize());
    qint64 best = 0;
    for (QScreen* s : QGuiApplication::screens()) {
      const QRect common = s->geometry().intersected(place);
      const qint64 area = static_cast<qint64>(common.width()) * common.height();
      if (area > best) {
        best = area;
        screen = s;
      }
    }
    if (!screen) screen = window->screen();
  }
  if (!screen) screen = QGuiApplication::primaryScreen();
  return screen ? screen->availableGeometry() : QRect();
}

QMargins FrameMarginsOf(const QWidget* window) {
  if (window->windowFlags() & Qt::FramelessWindowHint) return {};
  const QMargins own = measuredFrame(window);
  if (!own.isNull()) return own;
  // Another framed window of the program has the frame this one will get.
  for (const QWidget* other : QApplication::topLevelWidgets()) {
    if (other == window || !placedWindow(other) || (other->windowFlags() & Qt::FramelessWindowHint)) continue;
    const QMargins m = measuredFrame(other);
    if (!m.isNull()) return m;
  }
  // An estimate: a title bar of about twice the text height, thin borders.
  if (QGuiApplication::platformName() == QLatin1String("offscreen")) return QMargins(2, 2, 2, 2);
  const int line = QFontMetrics(window->font()).height();
  return QMargins(4, 2 * line + 8, 4, 4);
}

void FitOnScreen(QWidget* window) {
  if (!window || window->windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen | Qt::WindowMinimized)) return;
  const QRect area = AvailableArea(window);
  if (area.isEmpty()) return;
  const QMargins m = FrameMarginsOf(window);
  const QSize room(area.width() - m.left() - m.right(), area.height() - m.top() - m.bottom());
  const QSize size = window->size().boundedTo(room).expandedTo(window->minimumSize());
  if (size != window->size()) window->resize(size);
  // pos() and move() are the frame's top left corner.
  const QRect frame(window->pos(), QSize(size.width() + m.left() + m.right(), size.height() + m.top() + m.bottom()));
  if (area.contains(frame)) return;
  const int x = qMax(area.left(), qMin(frame.left(), area.right() + 1 - frame.width()));
  const int y = qMax(area.top(), qMin(frame.top(), area.bottom() + 1 - frame.height()));
  window->move(x, y);
}

namespace {

// Window managers draw titles bold and often larger than the text of
// windows; the icon and three buttons take about five text heights.
QFont titleFont() {
  QFont f = QApplication::font();
  f.setBold(true);
  if (f.pointSizeF() > 0) f.setPointSizeF(f.pointSizeF() * 1.2);
  return f;
}

int titleBarExtra(const QFontMetrics& fm) { return 5 * fm.height() + 24; }

}  // namespace

int TitleBarWidth(const QString& title) {
  const QFontMetrics fm(titleFont());
  return fm.horizontalAdvance(title) + titleBarExtra(fm);
}

QString TitleForWidth(const QString& title, int width) {
  const QFontMetrics fm(titleFont());
  return fm.elidedText(title, Qt::ElideRight, qMax(0, width - titleBarExtra(fm)));
}

}  // namespace mj
