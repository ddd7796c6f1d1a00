#pragma once
// Screenshots and layout checks of whole windows, for every window test.
//
// Every window must be usable on a 1024×768 screen and still look right on a
// large one: nothing off the screen, nothing cut off at a window's edge, no
// text shown only in part. The test programs run offscreen on two screens
// (set up by test_main.cpp through UseTestScreens): the primary one of
// 1024×768 and a second one of 1600×1000, to its right.
//
// The usual call, after the window has its content:
//
//   mj::test::CheckOnScreens(window, QStringLiteral("answer_window"));
//
// shows the window on each screen in turn, as a user's desktop would show it
// (it keeps the window's maximised state and lets the window place and size
// itself), saves <build>/test-output/screenshots/answer_window-1024x768.png
// and answer_window-1600x1000.png, and adds a GoogleTest failure for each
// problem found:
//  - the window, frame included, does not lie inside the screen's available
//    area (or its minimum size is larger than that area);
//  - a visible child widget lies outside its parent, so that it is cut off
//    (children inside the viewport of a scroll area are exempt: they scroll);
//  - a label, button, check box or option shows only part of its text (too
//    narrow for one line, or too low for its wrapped lines);
//  - a menu bar hides entries behind its » button.
// Each failure names the widget by class and object name and gives the
// sizes. The window ends up on the 1600×1000 screen; call ShowOnScreen with
// the 1024×768 screen to bring it back if the test goes on.
//
// The pieces, for tests that need only one of them:
//   TestScreen(QSize(1024, 768))       the offscreen screen of that size
//   ShowOnScreen(window, screen)       shows the window there and waits for
//                                      its layout
//   LayoutProblems(window)             the problems above, one line each
//   SaveScreenshot(window, name)       grabs the window into
//                                      screenshots/<name>.png, returns the path
//   ElidedText(widget)                 true when that one widget's text is
//                                      cut off

#include <QSize>
#include <QString>
#include <QStringList>
#include <memory>

class QScreen;
class QTemporaryFile;
class QWidget;

namespace mj::test {

// The two screen sizes every window is checked at.
inline const QSize kSmallScreen(1024, 768);
inline const QSize kLargeScreen(1600, 1000);

// Before the QApplication is made: when the platform is offscreen (or not
// chosen), gives it the two screens. Keep the returned file alive as long as
// the application: the platform reads it when the application starts.
std::unique_ptr<QTemporaryFile> UseTestScreens();

// The screen of that size; nullptr when there is none (a test run on another
// platform).
QScreen* TestScreen(QSize size);

// Hides the window, moves it to `screen` and shows it again in its former
// state (normal or maximised), as on a first show there; then lets its
// layouts settle.
void ShowOnScreen(QWidget* window, QScreen* screen);

// Lets posted events and layout requests run, so that geometry is final.
void SettleLayouts();

QStringList LayoutProblems(const QWidget* window);
bool ElidedText(const QWidget* widget);

// Grabs the window's content and saves it as <test-output>/screenshots/<name>.png.
QString SaveScreenshot(QWidget* window, const QString& name);

// ShowOnScreen, SaveScreenshot (as <name>-<w>x<h>) and LayoutProblems on
// each of the two screens, the small one first; every problem is a test
// failure.
void CheckOnScreens(QWidget* window, const QString& name);
// The same on one screen only.
void CheckOnScreen(QWidget* window, QSize screenSize, const QString& name);

}  // namespace mj::test
