#pragma once
// Esc closes a secondary window, as a desktop user expects of a dialog:
// the same as its close button in the title bar, so a window that treats
// that close as 取消 does so for Esc too. As in a dialog, Esc reaches the
// window only when the widget with the focus leaves it alone, and a window
// opened over it (a tool window such as a keypad) takes its own Esc.

class QWidget;

namespace mj {

void CloseOnEscape(QWidget* window);

}  // namespace mj
