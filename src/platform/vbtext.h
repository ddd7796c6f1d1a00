#pragma once
// Text helpers with 1-based positions and "0 means not found", so that the
// program's expressions read the same in the code as in the data rules:
// Mid(s, i, n), InStr(start, s, find), Val(s) ...
//
// Positions count UTF-16 code units of QString; every Chinese character the
// program deals with is one unit.

#include <QString>
#include <optional>

namespace mj {

// Substring of n characters from the 1-based place start; n < 0 means to the
// end. A start below 1 has no result: Mid gives the empty text, MidChecked
// gives nothing (callers that must tell a failed read from an empty one).
QString Mid(const QString& s, qsizetype start, qsizetype n = -1);
std::optional<QString> MidChecked(const QString& s, qsizetype start, qsizetype n = -1);

QString Left(const QString& s, qsizetype n);   // n <= 0 gives ""
QString Right(const QString& s, qsizetype n);  // n <= 0 gives ""
inline qsizetype Len(const QString& s) { return s.size(); }

// 1-based place of find in s, searching from start; 0 when absent.
// s empty gives 0; find empty gives start (0 when start is past Len(s) + 1).
qsizetype InStr(const QString& s, const QString& find);
qsizetype InStr(qsizetype start, const QString& s, const QString& find);

// Place of the last find that ends at or before start (-1: the whole text).
qsizetype InStrRev(const QString& s, const QString& find, qsizetype start = -1);

// Blanks (U+0020) only, as the program has always trimmed.
QString Trim(const QString& s);
QString LTrim(const QString& s);
QString RTrim(const QString& s);

QString UCase(const QString& s);  // ASCII letters only
QString LCase(const QString& s);  // ASCII letters only

// Numeric prefix of a text: blanks, tabs and line breaks are skipped
// wherever they stand, then an optional sign, digits, a decimal point and an
// exponent; &H and &O prefixes read hexadecimal and octal. 0 when none.
double Val(const QString& s);

// Next lower whole number.
double Int(double x);

// Rounds half to even, as the program's integer conversions do.
long long RoundHalfEven(double x);

QString Space(qsizetype n);
QString StringOf(qsizetype n, QChar c);

// Decimal text of a whole number, without a leading blank.
QString CStr(long long n);
// Decimal text of a number: whole numbers without decimals.
QString NumText(double x);

inline const QString kCrLf = QStringLiteral("\r\n");

}  // namespace mj
