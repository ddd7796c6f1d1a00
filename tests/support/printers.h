#pragma once
// Readable test failure messages for Qt types.

#include <QString>
#include <QStringList>
#include <QVariant>
#include <ostream>

inline void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }
inline void PrintTo(const QStringList& l, std::ostream* os) {
  *os << '[';
  for (qsizetype i = 0; i < l.size(); ++i) *os << (i ? ", \"" : "\"") << l[i].toStdString() << '"';
  *os << ']';
}
inline void PrintTo(const QVariant& v, std::ostream* os) { *os << "QVariant(" << v.toString().toStdString() << ')'; }
