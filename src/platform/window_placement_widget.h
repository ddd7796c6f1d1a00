#pragma once
// Keeping windows fully on the screen. A candidate may work on a 1024×768
// screen with a panel at its edge: a window, frame and title bar included,
// must lie inside the screen's available area (the screen without its
// panels), and no window may be larger than that area.
//
// KeepWindowsOnScreen, called once where the QApplication is made, does this
// for every window of the program, new windows included: each time a window
// is shown it is shrunk to the available area (never below its minimum size)
// and moved onto it when any part lies outside. Windows need not call
// anything themselves; they still choose their own size and place, and a
// maximised window is left to the window manager.
//
// The window frame is known only once the window manager has framed a
// window; before that, the frame of another window of the program stands in,
// or an estimate of a title bar and borders. A second fit runs once the
// window is framed.

#include <QMargins>
#include <QRect>

class QApplication;
class QString;
class QWidget;

namespace mj {

// Installs the fitting for every window of the application.
void KeepWindowsOnScreen(QApplication& app);

// The available area of the screen the window is on, or will be on when it
// is shown (its parent window's screen, else the primary screen).
QRect AvailableArea(const QWidget* window);

// The window frame around the window's client area.
QMargins FrameMarginsOf(const QWidget* window);

// Shrinks and moves one window so that it lies, with its frame, inside the
// available area. Maximised and full-screen windows are left alone.
void FitOnScreen(QWidget* window);

// The width a window needs so that the window manager can show `title` in
// full in its title bar, with the icon and the buttons beside it.
int TitleBarWidth(const QString& title);
// The title, cut with "…" where a title bar of `width` would cut it.
QString TitleForWidth(const QString& title, int width);

}  // namespace mj
