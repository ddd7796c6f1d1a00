#pragma once
// The program's own text and file helpers, used all over: positions are
// 1-based, 0 means not found, comparison is by exact character. Their edge
// behaviour is relied upon by the callers and must stay as it is.

#include <QString>

#include "platform/env.h"
#include "platform/inifile.h"

namespace mj {

// Every occurrence of find replaced, left to right, going on behind the
// inserted text: the replacement is never scanned again. An empty text or an
// empty find gives the empty text. Lets window events through once a second.
QString ReplaceAll(const QString& text, const QString& find, const QString& repl);
// The first occurrence only; the text as it is when find is empty or absent.
QString ReplaceString(const QString& s, const QString& find, const QString& repl);
// Place of the last occurrence; 0 when either text is empty or find is absent.
qsizetype LastPos(const QString& text, const QString& find);
// Occurrences, overlapping ones included.
qsizetype CountOf(const QString& text, const QString& find);
// Behind the first a up to the first b behind it (to the end when there is
// no such b); empty when a is absent.
QString TextBetween(const QString& text, const QString& a, const QString& b);
// a from the first b up to, not including, the first c; a failure word when
// it cannot: "B>A and C>A" neither found, "B>A" only c found, "C>A" only b
// found, "C-B" c before b.
QString GetMid(const QString& a, const QString& b, const QString& c);
// The block from the first marker (included) up to the next marker, which
// text then starts with; without a second marker the block is the rest and
// text becomes empty. Empty when text or marker is empty or marker absent.
QString CutMarkedBlock(QString& text, const QString& marker);
// The part behind the last "\" (or "/"); the whole text when there is none.
QString FileNameOf(const QString& path);
// The part between the last "\" (or "/") and the last "."; to the end when
// no "." follows the separator.
QString GetSmallTxtName(const QString& path);
// The answer key of a field 2 text (which gets "参见" in front when it has
// none): the letters A, B, C, D, in that order, that stand before the first
// "参见", behind the first "．" there.
QString AnswerLetters(QString& text);
// n trimmed, right-aligned in width characters with blanks.
QString GetStrFromNum(long long n, int width);
// The j-th 5-character number of the i-th 15-character group of text.
long long Str2Num(const QString& text, int i, int j);

// 32-bit integer power by repeated product; 1 for exp 0.
qint32 PowerOf(qint32 base, qint32 exp);
// A number text from radix `from` to radix `to` over "0-9A-Z". A `to` above
// 36 shows a box and gives "0".
QString ChangeRadix(const Env& env, const QString& text, int from, int to);

// The whole file as text; empty when it does not exist.
QString ReadFileAsText(const QString& path);
// Replaces the file with text and one CR LF.
bool WriteTextFile(const QString& path, const QString& text);
// The first value of a text as a data reader takes it: a quoted text up to
// its closing quote, else up to the first comma or line end, trimmed.
QString FirstValueOf(const QString& fileText);
// Replaces the file with the quoted text and a CR LF: one value as a data
// reader takes it back (FirstValueOf).
bool WriteQuotedValue(const QString& path, const QString& text);

// Every line end (CR LF, a lone CR, a lone LF) as CR LF; the text itself,
// not a copy, when it has no other line ends.
QString WithCrLf(const QString& text);

// A text of the program (CR LF line ends) as a text box shows it (LF line
// ends), and a text box's text back with CR LF line ends.
QString ShownText(const QString& text);
QString HeldText(const QString& text);

// Opens a file or an address with its registered program, working folder the
// program folder. When nothing could be started, the box of CannotOpenText
// names it and the address or path goes to the clipboard; false then.
bool ShellOpen(const Env& env, const QString& target);
// http://, https://, ftp:// and mailto: addresses; anything else is a file.
bool IsWebAddress(const QString& target);
// The text of the box that says an address or file could not be opened;
// `copied` adds that it is on the clipboard.
QString CannotOpenText(const QString& target, bool copied);
// Starts a program (Env's shell); when it cannot be started, a box names
// it. False then.
bool StartProgram(const Env& env, const QString& program, const QStringList& args, WindowMode mode);

}  // namespace mj
