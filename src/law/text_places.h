#pragma once
// Places in a text against places in a text view. The text keeps its line
// ends as they are (CR LF, two characters); a text view counts one place
// for each line break, whether CR LF, a lone CR, a lone LF or a paragraph
// separator (U+2029).

#include <QString>

namespace mj {

struct LinePlace {
  int line = 0;          // 0-based line (the view's block number)
  qsizetype column = 0;  // 0-based place within the line
};

// The 0-based index in text of column `column` of line `line`; a column
// past the line's end gives the line's end, a line past the last gives the
// end of the text.
qsizetype TextIndexOfLine(const QString& text, int line, qsizetype column);
// The line and column of the 0-based index in text; an index inside a
// CR LF counts as the end of its line.
LinePlace LineOfTextIndex(const QString& text, qsizetype index);

// A text shown with LF line ends as a text with CR LF ones (every LF becomes
// CR LF), and a 0-based place in the shown text carried over to it: every LF
// before the place became two characters. The place is first kept within
// 0..the length of the shown text.
struct CrLfPlace {
  QString text;
  qsizetype index = 0;
};
CrLfPlace ToCrLfPlace(const QString& shownText, qsizetype position);

}  // namespace mj
