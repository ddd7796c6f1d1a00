#pragma once
// Paper text files: plain texts that the candidate brings from elsewhere.
// They come in GBK (the program's own code page) or in UTF-8, with or without
// a byte order mark, and with CR LF, LF or CR line ends. Reading finds out
// which encoding a file uses, so that saving can write the same one back;
// line ends always come back as CR LF, the program's own.
//
// The paper window and the practice of a paper both read papers through
// ReadPaper, so that a paper reads the same everywhere.

#include <QByteArray>
#include <QString>

namespace mj {

enum class PaperEncoding {
  Gbk,      // code page 936; also the guess for bytes that are valid in neither
  Utf8,     // UTF-8 without byte order mark
  Utf8Bom,  // UTF-8 with byte order mark
};

// The encoding of a paper's bytes: a UTF-8 byte order mark followed by valid
// UTF-8 is Utf8Bom; bytes that hold at least one non-ASCII character and are
// valid UTF-8 throughout are Utf8; everything else is read as GBK.
PaperEncoding DetectPaperEncoding(const QByteArray& bytes);

// The bytes decoded in that encoding (a byte order mark dropped). Bytes that
// do not decode become U+FFFD; never fails.
QString DecodePaper(const QByteArray& bytes, PaperEncoding encoding);
// The text encoded for writing (with the byte order mark for Utf8Bom).
QByteArray EncodePaper(const QString& text, PaperEncoding encoding);

struct PaperFile {
  bool ok = false;  // false: the file is missing or could not be read
  QString text;     // CR LF line ends
  PaperEncoding encoding = PaperEncoding::Gbk;
};

// Reads a paper: its encoding detected, its line ends made CR LF.
PaperFile ReadPaper(const QString& path);

// Writes a paper in the encoding given, replacing the file atomically (a
// temporary file takes its place), so that a failed write leaves the old
// file whole. False when the file cannot be written.
bool WritePaper(const QString& path, const QString& text, PaperEncoding encoding);

// "GBK", "UTF-8", "UTF-8（带BOM）", for the window's status line.
QString PaperEncodingName(PaperEncoding encoding);

}  // namespace mj
