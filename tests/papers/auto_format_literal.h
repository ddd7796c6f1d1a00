#pragma once
// The automatic conversion of an outside paper written out literally, one
// replacement per rule and the loops as they read, step by step. The program's
// AutoFormat must give byte for byte the same text; the tests and the
// benchmark compare the two. The steps are kept in a list so that a test can
// leave one out and see which step tore a question apart.

#include <QList>
#include <QString>
#include <functional>

namespace mj::literal {

QString FormatReplace(const QString& text, const QString& word);

// The 37 steps, in order; steps[i] is step i + 1.
using Step = std::function<void(QString& text)>;
const QList<Step>& AutoFormatSteps();

// All steps in order; skip (1-based) leaves one out.
QString AutoFormat(const QString& text, int skip = 0);

}  // namespace mj::literal
