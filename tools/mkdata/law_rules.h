#pragma once
// What the data builder needs to check citation lists the way the program
// reads them; the reading itself is the program's own (flat citation lists of
// src/law).

#include <QList>
#include <QString>

namespace mkdata {

struct CitationEntry {
  QString title;  // with 《》
  int number = 0;
};
// The entries of a flat citation list (《title》n．...); false when the text
// is not one.
bool SplitFlatList(const QString& flat, QList<CitationEntry>* entries);

}  // namespace mkdata
