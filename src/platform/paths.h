#pragma once
// Paths of the program folder. The data files and the program's own rules
// write paths with "\" (\dbf, \yibanti\010011.mmd, FILE="\lawtxt\刑法.mmd");
// here they become paths of this platform. Data folders come from Windows,
// where names ignore letter case, so an existing file or folder whose name
// differs only in case is found as well.

#include <QString>

namespace mj {

// root + suffix, the suffix written with "\" or "/" separators. The result
// uses "/" and names the existing file whose name differs only in case when
// there is one.
QString AppPath(const QString& root, const QString& suffix);

// Maps "\" to "/"; nothing else.
QString MapSeparators(const QString& path);

// The existing path that equals path except for letter case, component by
// component; path itself when it exists or when no such path exists.
QString ResolveCase(const QString& path);

bool FileExists(const QString& path);  // a file (not a folder)
bool DirExists(const QString& path);
bool PathExists(const QString& path);  // file or folder
bool MakeDir(const QString& path);     // with parents
bool RemoveFile(const QString& path);
bool CopyFileOver(const QString& from, const QString& to);  // replaces `to`

// Why a file operation failed, in words for the user, from the system's
// error number (errno): "没有写入权限", "磁盘已满", ...
QString SystemErrorText(int error);

// Makes what was written to the file at path durable: its data reaches the
// disk before this returns. False (and errno set) when that fails.
bool SyncFileData(const QString& path);

}  // namespace mj
