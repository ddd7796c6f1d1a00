#pragma once
// Keys for window tests: a key goes where the focus is, as on a desktop.

#include <QApplication>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

namespace mj::test {

// Presses key on the widget with the focus (the active window when none
// has it), with the events before and after handled.
inline void PressKey(Qt::Key key, Qt::KeyboardModifiers mods = Qt::NoModifier) {
  QApplication::processEvents();
  QWidget* to = QApplication::focusWidget();
  if (!to) to = QApplication::activeWindow();
  ASSERT_NE(to, nullptr) << "no widget has the focus";
  QTest::keyClick(to, key, mods);
  QApplication::processEvents();
}

}  // namespace mj::test
