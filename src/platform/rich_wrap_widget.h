#pragma once
// The wrap of the program's rich text boxes (help, paper, new law, outside
// practice and knowledge-point windows). On: the lines break at the right
// edge of the box and follow it when the window is resized, so that no text
// stands beyond the right edge; Chinese text, which has no blanks, may break
// between any two characters. Off: every line runs on to its line break and
// the box scrolls sideways.

class QPlainTextEdit;
class QTextEdit;

namespace mj {

void SetRichWrap(QTextEdit* box, bool on);
void SetRichWrap(QPlainTextEdit* box, bool on);

}  // namespace mj
