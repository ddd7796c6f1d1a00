#pragma once
// The menu "文书格式": unpacking the data package when the format documents
// or help pages are missing, opening a format document with the program the
// user registered, and registering that program.

#include "app/startup.h"
#include "practice/app_state.h"

namespace mj {

// The unpack entry; also what every entry that needs the data set runs when
// \yibanti is missing.
void TxtFormat(AppState& app);
// Opens a format document of \法律文书 with the registered program.
void OpenFormatFile(AppState& app);
// Lets the user choose the program for format documents and registers it.
void CfgOpenPro(AppState& app);

// A chosen file counts as a program when its name ends in ".exe" or ".com",
// or when it is an executable file.
bool IsProgramFile(const QString& path);

}  // namespace mj
