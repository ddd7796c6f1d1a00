#pragma once
// The program holds texts with CR LF line ends and counts places in them;
// a text box counts one place per line break. These helpers read and change
// a plain text box in the program's terms, so that the paper window, the
// batch replacement and the find/replace window (also over the law query's
// text) all work on the same places.

#include <QString>

class QPlainTextEdit;

namespace mj {

// The box's text with CR LF line ends.
QString HeldTextOf(const QPlainTextEdit* box);
// The place in the box of a 0-based place in that held text.
int BoxPlaceOf(const QString& held, qsizetype index);
// Selects length characters of the held text from the 0-based start and
// brings them into view.
void SelectHeldRange(QPlainTextEdit* box, const QString& held, qsizetype start, qsizetype length);
// Replaces length characters of the held text from the 0-based start by
// text (CR LF line ends), as one step the user can undo.
void ReplaceHeldRange(QPlainTextEdit* box, const QString& held, qsizetype start, qsizetype length,
                      const QString& text);
// Replaces the whole text of the box (CR LF line ends), as one step the user
// can undo; the box reports it as a change.
void SetHeldText(QPlainTextEdit* box, const QString& text);

}  // namespace mj
