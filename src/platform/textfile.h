#pragma once
// Text files on disk: GBK (code page 936) unless a file starts with the UTF-8
// byte order mark and is valid UTF-8. Texts keep their CR LF line ends in
// memory; nothing here converts them.

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace mj {

QByteArray ToGbk(const QString& text);
// Bytes that are not valid GBK become U+FFFD; never fails.
QString FromGbk(const QByteArray& bytes);
// GBK, or UTF-8 when the bytes start with a UTF-8 byte order mark and are
// valid UTF-8 throughout.
QString DecodeText(const QByteArray& bytes);

// Number of bytes the text takes in GBK.
qsizetype GbkLength(const QString& text);
// The longest head of text that fits in maxBytes of GBK; never splits a
// two-byte character.
QString GbkHead(const QString& text, qsizetype maxBytes);

// The whole file as text; empty when it does not exist or cannot be read.
QString ReadText(const QString& path, bool* ok = nullptr);
QByteArray ReadBytes(const QString& path, bool* ok = nullptr);

// Replaces the file with text in GBK: the bytes go to a temporary file in the
// same folder, which then takes the file's place, so a crash leaves either
// the old or the new file, never half of one.
bool WriteTextAtomic(const QString& path, const QString& text);
bool WriteBytesAtomic(const QString& path, const QByteArray& bytes);

// For changes to many files that each must stay whole: every new content
// goes to a temporary file (WriteBytesPlain), all of them onto the disk at
// once (SyncToDisk), and then each takes its file's place (RenameOver).
bool WriteBytesPlain(const QString& path, const QByteArray& bytes);
// One pass of the disk's write-back for the files' file system (each file
// on its own where the system has no such pass). False when one failed.
bool SyncToDisk(const QStringList& paths);
// The file `from` takes the place of `to` in one step: a reader sees the old
// or the new file, never a mixture.
bool RenameOver(const QString& from, const QString& to);

// Removes what an atomic write of path that was cut off (the program killed,
// the power gone) may have left beside it: the temporary files named as the
// file plus "." and six letters or digits (userself.ini.Ab12Cd). Returns how
// many were removed.
int RemoveLeftoverSaves(const QString& path);

// Appends text in GBK; creates the file when it is missing.
bool AppendText(const QString& path, const QString& text);

}  // namespace mj
