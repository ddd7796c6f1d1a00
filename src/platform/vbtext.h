#pragma once
// Text helpers with 1-based positions and "0 means not found", so that the
// program's expressions read the same in the code as in the data rules:
// Mid(s, i, n), InStr(start, s, find), Val(s) ...
//
// Positions count UTF-16 code units of QString; every Chinese character the
// program deals with is one unit.

#include <QString>
#include <cmath>
#include <limits>
#include <optional>
#include <type_traits>

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

// Rounds half to even, as the program's integer conversions do. A number
// beyond the range of long long gives its nearest limit, NaN gives 0.
long long RoundHalfEven(double x);

// The whole part of x (cut toward zero) as an integer of type I, saturated
// at the limits of I; NaN gives 0. Numbers read from files may be anything
// (1e99 in a colour, a heading flag or an ID): a plain cast of one that does
// not fit is undefined.
template <typename I>
I SaturatedInt(double x) {
  static_assert(std::is_integral_v<I>);
  if (std::isnan(x)) return 0;
  // The limits as doubles: the lower one is exact (a power of two), the
  // upper one may round up, so a number at or above it saturates.
  constexpr double lo = static_cast<double>(std::numeric_limits<I>::min());
  constexpr double hi = static_cast<double>(std::numeric_limits<I>::max());
  if (x <= lo) return std::numeric_limits<I>::min();
  if (x >= hi) return std::numeric_limits<I>::max();
  return static_cast<I>(x);
}

QString Space(qsizetype n);
QString StringOf(qsizetype n, QChar c);

// Decimal text of a whole number, without a leading blank.
QString CStr(long long n);
// Decimal text of a number: whole numbers without decimals.
QString NumText(double x);

inline const QString kCrLf = QStringLiteral("\r\n");

}  // namespace mj
