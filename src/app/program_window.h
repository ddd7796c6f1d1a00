#pragma once
// The program's run: the real services over a program folder, the main
// window's start-up, and the event loop.

#include <QString>
#include <functional>

namespace mj {

// Starts the program on `root` and runs until the application ends.
// `onShown` runs once the main window is shown (the start-up benchmark uses
// it); returns the exit code.
int RunProgram(const QString& root, const std::function<void()>& onShown = {});

}  // namespace mj
