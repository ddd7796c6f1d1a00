#pragma once
// Characters at 1-based places, for the code that walks law texts character
// by character.

#include <QChar>
#include <QString>

namespace mj::char_places {

// The character at the 1-based place i; a null character outside the text.
inline QChar At(const QString& s, qsizetype i) { return (i >= 1 && i <= s.size()) ? s.at(i - 1) : QChar(); }

// Whether c is one of the characters of set; never for a character outside
// the text.
inline bool In(const QString& set, QChar c) { return !c.isNull() && set.contains(c); }

}  // namespace mj::char_places
