#pragma once
// The start-up of the program and its end, apart from the windows: the
// data-set test, the data package, the icon, the question index, and the
// close request's questions.

#include <QString>

#include "practice/app_state.h"

namespace mj {

// The data set is present when \yibanti exists.
bool DataSetPresent(const Env& env);
// The data package program of this platform (\lmdata) when it exists, else "".
QString DataPackageProgram(const Env& env);
// \fa.ico when it exists, else \ini\fa.ico when that exists, else "".
QString IconFile(const Env& env);
// The picture of the start page; without it the start page shows the
// splash picture.
inline const QString kStartPagePicture = QStringLiteral("\\ini\\startpage.jpg");
// Where the program for format documents is registered.
inline const QString kWenShuFile = QStringLiteral("\\ini\\WenShu.ini");
// The program for format documents: the first value of \ini\WenShu.ini.
QString ReadWenShuProgram(const Env& env);

QStringList MakeTypeTitle();

// Reads items.mmd of \dbf into AllItemData and copies it to ItemData;
// ItemIndexProblem says what kept it from being read whole.
void LoadQuestionIndex(AppState& app);

enum class CloseDecision {
  Ignore,  // an item of an update package is being written: nothing happens
  Cancel,  // the user said No
  Close,   // end the application
};

// The questions of the close request, in their order; on Close the index
// has been released.
CloseDecision CloseRequest(AppState& app);

}  // namespace mj
