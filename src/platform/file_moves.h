#pragma once
// Moving and copying files and whole folders, file dates, and whether a
// path stays inside a folder. Paths may be written with `\` and in any
// letter case, as in paths.h.

#include <QDateTime>
#include <QString>

namespace mj {

// Renames a file, replacing `to`.
bool MoveFileOver(const QString& from, const QString& to);
// Renames a file only when nothing stands under the new name yet: false,
// with both files untouched, when `to` exists or `from` cannot be renamed.
bool RenameFileKeeping(const QString& from, const QString& to);
// Copies a folder with all that is in it into `to` (made as needed),
// replacing files of the same name there. False when something could not
// be copied; what could be copied is copied.
bool CopyFolderOver(const QString& from, const QString& to);
// When the file was last written, in local time; invalid when it does not exist.
QDateTime FileModified(const QString& path);
// The absolute path with "." and ".." taken out, so that where a path leads
// can be compared; symbolic links are not followed.
QString CleanAbsolutePath(const QString& path);
// Whether path lies inside folder (or is that folder), after CleanAbsolutePath.
bool IsInsideFolder(const QString& path, const QString& folder);

}  // namespace mj
