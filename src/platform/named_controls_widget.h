#pragma once
// Controls made under the name of the member that keeps them: tests, the
// help and the keyboard checks find a control by that object name.

#include <QAction>
#include <QPushButton>
#include <QString>
#include <QWidget>

namespace mj {

// A push button of a window that never takes Enter as the window's default
// button: Enter stays with the control that has the focus.
inline QPushButton* NamedButton(QWidget* parent, const QString& name, const QString& caption) {
  auto* b = new QPushButton(caption, parent);
  b->setObjectName(name);
  b->setAutoDefault(false);
  return b;
}

// An entry added to a menu or a menu bar.
template <class MenuOrBar>
QAction* NamedAction(MenuOrBar* holder, const QString& name, const QString& caption) {
  QAction* a = holder->addAction(caption);
  a->setObjectName(name);
  return a;
}

}  // namespace mj
