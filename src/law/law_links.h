#pragma once
// Links between law articles and questions. A question cites its articles in
// its flat citation list (aboutlaw, 《刑法》12．《刑法》15．); an article's
// questions are the rows whose list holds 《title》 + number + "．", and an
// article printed under an answer leads back to the law.

#include <QString>
#include <optional>

#include "bank/item_index.h"
#include "platform/env.h"

namespace mj {

// The questions of article `number` of the law `lawName` (with its 《》) in
// the bank `code` (the first five characters of filename): for each live row
// of the index, in index order, whose aboutlaw holds lawName + number + "．",
// the long id filename + characters 7..11 of itemid. A question that stands
// in several banks with the same answer and the same citation list counts
// once.
QString NewGetForm6LongId(const ItemIndex& items, const QString& code, const QString& lawName, double number);

// The same read from the item table \dbf\items.mmd, without the dedupe and
// without regard to valid2, as the table query does it.
QString GetForm6LongId(const Env& env, const QString& code, const QString& lawName, double number);

// The number of the type 1 article at pos in a printed text, or 0.
qint16 GetMyOkItemNum(const QString& text, qsizetype pos);

// An article printed under an answer: the title line 《...》, CR LF, then the
// article heading 　　第...条.
// Where a printed article begins: the end of its title line, CR LF, the
// indent and the 第 of its heading.
inline const QString kPrintedArticleHead = QStringLiteral("》\r\n　　第");
struct AnswerCitation {
  QString title;  // without 《》
  QString item;   // 第十二条
};

// The article printed at or next to pos (a click on a title line takes the
// article below it); nothing when pos is not on a printed article or the
// law's file is missing.
std::optional<AnswerCitation> CitationAtAnswer(const Env& env, const QString& text, qsizetype pos);

}  // namespace mj
