#pragma once
// The line joiner written out as its rules read, with a fresh copy of the
// rest of the text for every heading test: the program's JoinBrokenLines
// must give the same text.

#include <QString>

namespace mj::test {

QString LiteralJoinBrokenLines(const QString& text);

}  // namespace mj::test
