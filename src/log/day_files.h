#pragma once
// Day files: the lists of questions of one day, kept under \模糊题 (marked
// uncertain while practising) and \更新的题 (taken in from an update
// package). A day file is named yyyymmdd.ini and holds one ID list (11
// characters per question, no separator, the newest first) as one quoted
// value and a CR LF. The same ID may stand in it more than once.

#include <QDate>
#include <QString>
#include <QStringList>

#include "platform/env.h"

namespace mj {

// Folders of the day files, as suffixes of the program folder.
inline const QString kGuessFolder = QStringLiteral("\\模糊题");
inline const QString kUpdatedFolder = QStringLiteral("\\更新的题");

// The ID list of a day file. A list whose length is no multiple of 11 is
// damaged and reads as empty, as does a missing or unreadable file.
QString ReadIdFile(const QString& path);
// Replaces the file with the quoted list and a CR LF.
bool WriteIdFile(const QString& path, const QString& list);
// yyyymmdd + ".ini".
QString TodayIniName(const QDate& today);
// Puts ids (an ID list) in front of the list in today's day file of the
// folder (a suffix of the program folder such as kGuessFolder); the folder
// is made when it is missing. False when the file cannot be written.
bool PrependToTodayFile(const Env& env, const QString& folder, const QString& ids);

// The number of files of the folder (a path) whose names match
// *.extension, letter case aside.
int CountFiles(const QString& folder, const QString& extension);
// The first 8 characters of the names of the day files among them: the
// names of exactly 12 characters. In the order of the names.
QStringList GetDayFileNames(const QString& folder, const QString& extension);
// The list of the day file of a date written yyyy-mm-dd: the "-" go, so
// that 2003-06-15 reads <folder>/20030615.ini. A date without "-" or of
// another length than 10 is taken as the name as it stands.
QString ReadDayFile(const QString& folder, const QString& date);
// The lists of all day files of the folder, in the order of their names,
// one behind the other.
QString ReadAllIdFiles(const QString& folder);

}  // namespace mj
