#pragma once
// What the data builder needs to write law texts and citation lists the way
// the program reads them; the reading itself is the program's own (numerals,
// text type, flat citation lists of src/law).

#include <QList>
#include <QString>

namespace mkdata {

// The article heading of number n in a text of the given type (1 第N条,
// 2 N、 in the program's numerals, 3 n．), without indent.
QString ArticleHead(int type, int n);

struct CitationEntry {
  QString title;  // with 《》
  int number = 0;
};
// The entries of a flat citation list (《title》n．...); false when the text
// is not one.
bool SplitFlatList(const QString& flat, QList<CitationEntry>* entries);

}  // namespace mkdata
