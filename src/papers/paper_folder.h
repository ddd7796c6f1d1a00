#pragma once
// The folder of papers "\外部题库" below the program folder: where the
// candidate keeps outside papers, sorted into class folders, and where the
// progress records of their practice are kept beside them. Opening a paper
// (the main window's menu 外部题库) and saving one (保存一下 of the paper
// window) both start there.

#include <QString>
#include <QStringList>
#include <optional>

#include "platform/env.h"

namespace mj {

// The folder of papers below the program folder.
inline const QString kPaperFolder = QStringLiteral("\\外部题库");
// The filter of the paper dialogs.
inline const QString kPaperFilter =
    QStringLiteral("文本文件(*.txt)|*.txt|网页文件1 (*.htm)|*.htm|网页文件2 (*.html)|*.html|所有文件(*.*)|*.*");
// The class folders in it, and the three folders of the examination's papers
// that only the main window's menu makes.
inline const QStringList kPaperClassFolders = {
    QStringLiteral("宪法类"), QStringLiteral("民法类"),           QStringLiteral("刑法类"),   QStringLiteral("经济法类"),
    QStringLiteral("商法类"), QStringLiteral("国际（经济）法类"), QStringLiteral("行政法类"), QStringLiteral("律师法类")};
inline const QStringList kPaperSheetFolders = {QStringLiteral("试卷一"), QStringLiteral("试卷二"),
                                               QStringLiteral("试卷三")};

// Makes the folder of papers and its eight class folders where they are
// missing. fromMenu (the menu 外部题库): the three folders 试卷一 to 试卷三
// as well, and, when the folder of papers itself was missing, the two sample
// papers \ini\sample1.ini and \ini\sample2.ini (where present) copied into it
// as 外部题库试样1.txt and 外部题库试样2.txt. A folder that cannot be made is
// named in a box; false then.
bool MakePaperFolders(const Env& env, bool fromMenu);

// The open of the menu 外部题库: the folder of papers made when missing, then
// the file dialog over it ("打开外部题库文件", the filter of papers, no file
// name). The chosen file, nothing on cancel.
std::optional<QString> ChoosePaperToOpen(const Env& env);

// Where 保存一下 writes a paper now under `name` (the file it was opened
// from, or saved to last). In the folder of papers an existing file is
// overwritten only after "…已经存在，要覆盖吗？" — asked once: `saved` is
// set by the first save there, so that later saves do not ask; No leads to
// the save dialog, which asks again for each existing choice. A paper
// outside that folder may be moved into it (the question says so) or saved
// where it is. Nothing when the user cancelled the dialog.
std::optional<QString> ChoosePaperSaveName(const Env& env, const QString& name, bool& saved);

}  // namespace mj
