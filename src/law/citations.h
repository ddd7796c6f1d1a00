#pragma once
// Citations of law articles: the free-hand list at the end of an answer
// (参见《刑法》第12条、第15-17条《民法通则》第3条) turned into the flat list
// 《刑法》12．《刑法》15．《刑法》16．《刑法》17．《民法通则》3． that the field
// aboutlaw stores, and the printed text of the cited articles.

#include <QString>

#include "platform/dbftable.h"
#include "platform/env.h"

namespace mj {

// The separator of the citation text: "、" in questions, "," in the article
// number box of the law query (whose input has no titles).
enum class CitationSep { Question, LawQuery };

// The flat citation list of a citation text. Only Arabic digits count as
// article numbers; 第 and 条 are dropped, a-b ranges are expanded (with 99,999
// numbers at most for all the ranges of one text together), tokens without a
// number are dropped. Without a title the entries are bare: 12．13．.
// The list ends with the entry that takes it past about four million
// characters, so that a title of thousands of characters repeated for every
// number of a long range cannot fill the memory.
QString LongDaAn(const QString& text, CitationSep sep = CitationSep::Question);
// The question editor's variant: 条《 and 条第 get their missing separator
// first, and the text before 参见《 is dropped.
QString LongDaAnForEdit(const QString& text);

// Cuts at the first mark. mode -2: up to and including the mark; -1: before
// it; 1: after it; 2: the mark and what follows. "" when the mark is absent;
// any other mode gives the sentence "第三个参数只能为-2，-1，1，2".
QString OkMid(const QString& text, const QString& mark, int mode);
QString CutAtMark(const QString& text, const QString& mark, int mode);

QString ReverseText(const QString& text);

// A paper's answer line in the standard form 答案：letters参见《law》第n条、第m条.
QString NormalizeDaAnLine(const QString& line);
// Only the 第...条 pieces of a text, each followed by 、.
QString CleanItemList(const QString& text);
// Drops 款 and 项 references, so that only whole articles remain:
// 《刑法》第12条第2款第3项、第13条 gives 《刑法》第12条、第13条、.
QString StripKuanXiang(const QString& text);

// The printable text of every cited article: for each entry of the flat list
// the title line, CR LF, the article text (or the reason why there is none),
// CR LF. The title is printed again for every article; a law whose file is
// missing is printed once, with that reason, at its first article.
QString GetLawTxtForDaAn(const Env& env, const QString& citationText);

// The first row of the law-name table whose trimmed lawname equals the
// trimmed name; -1 when there is none.
int FindLawNameRow(const DbfTable& lawNames, const QString& name);

// The filename field of the first row of the law-name table whose trimmed
// lawname equals the trimmed lawName. Without one, shows a box and sets
// *endProgram: the program is to end; the result is then empty.
QString GetOneLawFileName(const Env& env, const DbfTable& lawNames, const QString& lawName, bool* endProgram);
// The same on \dbf\33.mmd of the program folder.
QString GetOneLawFileName(const Env& env, const QString& lawName, bool* endProgram);

}  // namespace mj
