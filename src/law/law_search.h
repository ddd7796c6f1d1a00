#pragma once
// Searches in whole law texts that give exactly what InStr and LastPos give,
// faster on texts of hundreds of thousands of characters.

#include <QString>

namespace mj {

// InStr(text, lead + tail): the occurrences of the tail, which is the rarer
// part, are checked for the lead in front of them. The tail is not empty.
qsizetype FindLeadTail(const QString& text, const QString& lead, const QString& tail);

// LastPos(text, find), searching backwards with skips.
qsizetype LastPosSkipping(const QString& text, const QString& find);

}  // namespace mj
