#pragma once
// Automatic conversion of an outside paper. Papers found elsewhere follow no
// common style: answers stand behind 答案与解析 or 正确答案, citations behind
// 解析：见, questions are numbered 1、 or 1, and laws go by short names.
// AutoFormat rewrites such a text, as far as it can, into the layout the
// paper validator accepts: numbers 1．, options A．to D．on lines of their
// own, the tags [答案：] [参见：] [注释：] at the start of a line, article
// numbers in digits. It is a fixed sequence of replacements and a best
// effort: the user is told to check the result. Running it twice does not
// give the same text again, and nothing relies on that.

#include <QString>

namespace mj {

// The text of the paper after the whole sequence of rewrites.
QString AutoFormat(const QString& text);

// Turns a keyword into a tag at the start of its own line: 答案 becomes
// CR LF + [答案：] with the text behind it on the same line. Blanks go first;
// a word that had its colon or its brackets already keeps one of each.
QString FormatReplace(const QString& text, const QString& word);

}  // namespace mj
