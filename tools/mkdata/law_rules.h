#pragma once
// The few rules of the program's law reading that the data builder must
// obey when it writes law texts and citation lists: the Chinese numeral of
// an article number, the numbering type of a text, and the flat citation
// list of an answer field. They follow the program's rules to the letter,
// so that what the builder writes is what the program will find.

#include <QString>
#include <QStringList>

namespace mkdata {

// The Chinese numeral of n (0 to 99999) as the program spells article
// numbers: 十一 without a leading 一, and 一千零十 after a zero.
QString Numeral(int n);

// The article heading of number n in a text of the given type (1 第N条,
// 2 N、 in numerals, 3 n．), without indent.
QString ArticleHead(int type, int n);

// The numbering type of a law text (CR LF lines, U+3000 indent): 1, 2, 3,
// or 0 when no article 2 stands at the start of a line.
int LawTextType(const QString& text);

// The flat citation list of an answer field: 《title》n．《title》m．...
// read with "、" as separator, ranges expanded, 第 and 条 dropped, tokens
// without a leading number skipped.
QString FlatCitations(const QString& text);

struct CitationEntry {
  QString title;  // with 《》
  int number = 0;
};
// The entries of a flat list; false when it is not one.
bool SplitFlatList(const QString& flat, QList<CitationEntry>* entries);

}  // namespace mkdata
