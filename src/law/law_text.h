#pragma once
// Reading the structure of a law text: its numbering style, where article N
// starts and ends, which article a position lies in, what kind a line is.
//
// A law is one text file with CR LF line ends; every line but the first is
// indented by two ideographic blanks (U+3000). Article headings come in three
// styles, numbered internally:
//   1  第二条 ...   Chinese numeral between 第 and 条
//   2  二、...     Chinese numeral and 、
//   3  2．...      decimal digits and the full-width point (U+FF0E)
// 0 means no style was found. Positions are 1-based, 0 means not found.

#include <QString>

#include "platform/env.h"

namespace mj {

inline const QString kIdeoBlank = QStringLiteral("　");  // U+3000
inline const QString kLawIndent = QStringLiteral("　　");
inline const QString kFullPoint = QStringLiteral("．");  // U+FF0E
// The mark that may close a law text. It is never shown to the user.
inline const QString kLawEndMark = QStringLiteral("----<全文完>----");

// The indent of a text: two ideographic blanks when the text holds them
// anywhere, else the empty text.
QString LawIndentOf(const QString& text);

// The numbering style 0..3: whichever of CR LF + indent + 第二条 / 二、 / 2．
// comes first (a table of contents after 目录 is stepped over).
int GetLawTextType(const QString& text);

// The first heading-like line (with the LF before it and its own CR), or the
// empty text.
QString FirstHeadLine(const QString& text);

// The number of the last article heading of the text, read backwards from the
// end (or from the last 附件 line), passing over article numbers cited inside
// sentences; 0 when there is none, -1 when the numeral is not one DaXie prints.
int LastItemNum(const QString& text);
// The same for a text whose numbering style (GetLawTextType) is known.
int LastItemNum(const QString& text, int type);
// The backward scan itself, with the indent sp that a heading stands behind,
// starting at the 1-based place from and going up.
int LastItemNumFrom(const QString& text, int type, const QString& sp, qsizetype from);

// The number of the article whose heading stands at or above pos in a text the
// program printed; 0 (or below 1) when there is none.
double ItemNumAtCaret(const QString& text, qsizetype pos, int type);

// 0 continuation, 1 article (or list item, or the dated note under a title),
// 2 chapter heading.
int LineKind(const QString& line, int type);
// The same for a view of a text; doubleBlank tells whether the line holds two
// ideographic blanks anywhere, which a caller walking a long text knows
// without searching the rest of it again.
int LineKind(QStringView line, int type, bool doubleBlank);

// Reduces a text that starts at an article heading to that article: the text
// stops before the next heading line, unless that line ends in 。.
QString CutItemTail(const QString& text, int type);

// Removes every CR and LF.
QString NoCrLf(const QString& text);

// The text without its end marks. A mark that stands alone on its line (with
// blanks or an indent around it) takes its whole line along, line break
// included, so that no empty indented line is left where it stood.
QString WithoutEndMark(const QString& text);

// The type of the law named by the first 《...》 of a fragment; 0 when the
// fragment is 3 characters or shorter or the law file is missing.
int LawTypeOfName(const Env& env, const QString& fragment);

// True when the text has a character other than CR, LF, blanks and the
// characters of an article heading (第条, Chinese and decimal digits).
bool HasPlainChar(const QString& text);

// For a type 3 text: every number from..to without a line CR LF + n + "．",
// each written as n + "．".
QString MissingNumbers(const QString& text, long long from, long long to);

// The 《...》 names of text (with their marks, CR LF removed) that do not occur
// in known, in text order.
QString GetLawNamesIn(const QString& known, const QString& text);

// The position of the last character of the line holding pos; a printed law
// title line (LF + 《...》) counts together with the line after it.
qsizetype LineEndAt(const QString& text, qsizetype pos);

}  // namespace mj
