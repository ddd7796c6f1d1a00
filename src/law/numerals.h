#pragma once
// Chinese numerals of article numbers (第一百零五条) and back.
//
// Only the numerals that DaXie itself prints are recognised: the reverse
// direction accepts a number only when the generator prints exactly the
// given text for it. The
// law texts are spelled the same way, so the exact spellings decide whether
// an article is found at all.

#include <QString>
#include <QStringList>

namespace mj {

// The numeral of n (0 to 99999). Fractions are rounded to the nearest whole
// number first; a number outside 0..99999 gives the empty text.
QString DaXie(double n);

// The number whose numeral is text, searching 1 to 30000; -1 when none is.
qint32 DaXieToNum(const QString& text);
// The same over 1 to 99999; 0 when none is.
qint32 MyGetTheNum(const QString& text);

// True when every character is one of 一二三四五六七八九十百千万亿零 (the empty
// text included).
bool IsUcaseNum(const QString& text);

// The numerals of 1..count, each right-aligned in a slot of 9 characters
// padded with blanks on the left; slot i is characters (i-1)*9+1 .. i*9.
// count <= 0 gives the empty text.
QString GetLongDaXie(qint16 count);

// The trimmed slot of article n in a table made by GetLongDaXie; empty when
// the table has no such slot.
QString NumeralOfSlot(const QString& table, long long n);

// The program's numeral table: entries 0..2000, entry i the numeral of i.
inline constexpr int kNumeralTableLast = 2000;
QStringList MakeNumeralTable();
void FillNumeralTable(QStringList& table);

}  // namespace mj
