#pragma once
// Rejoining lines that a web page or a book broke in the middle of a
// sentence. Both the clean-up of a new law and the automatic conversion of an
// outside paper run it before they know how the text numbers its articles or
// questions, so it tries the three numbering styles at once.

#include <QString>

namespace mj {

// Trims blanks at both ends and drops one leading CR LF. Then, line by line
// (each line blank-trimmed, lines of blanks only passed over): a line that
// ends in one of 。：；:; keeps its line end; any other line keeps it only when
// the text behind it starts a new unit (LineKind at least 1 for style 1, 2 or
// 3: an article or chapter heading, a numbered line, or a first line closed
// by a bracket pair), and is otherwise joined directly to the next line.
//
// The walk ends at an empty line and at the last line break: whatever stands
// behind the last CR LF is lost, so a text must end in a line break to keep
// its last line, and a text of one line gives the empty text. A text that
// still begins with CR LF after the first one was dropped gives the empty
// text as well.
QString JoinBrokenLines(const QString& text);

}  // namespace mj
