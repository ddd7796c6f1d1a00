// The law-text functions on any text: the heading style, the last article,
// the article at a place, line kinds, the article cut, and the indexed and
// the plain article cut, which must agree.

#include <cstdlib>

#include "fuzz_target.h"
#include "law/law_extract.h"
#include "law/law_files.h"
#include "law/law_text.h"
#include "law/numerals.h"
#include "platform/vbtext.h"

using namespace mj;

MJ_FUZZ_TARGET(law_text) {
  // The first two bytes choose a place in the text.
  const qsizetype place = size >= 2 ? (data[0] | data[1] << 8) : 0;
  const QString text = fuzz::GbkText(data + std::min<size_t>(size, 2), size - std::min<size_t>(size, 2));
  const QString law = WithoutEndMark(text);
  const int type = GetLawTextType(law);
  (void)FirstHeadLine(law);
  const int last = LastItemNum(law, type);
  for (int t = 0; t <= 4; ++t) {
    (void)ItemNumAtCaret(law, place % (law.size() + 3), t);
    (void)LineKind(law.left(200), t);
    (void)CutItemTail(law.left(2000), t);
  }
  (void)HasPlainChar(law);
  (void)MissingNumbers(law, 1, 40);
  (void)GetLawNamesIn(QString(), law);
  (void)LineEndAt(law, place % (law.size() + 2));

  // Every article up to the last (at most 60), cut with and without the index.
  const QString table = GetLongDaXie(static_cast<qint16>(std::clamp(last, 0, 60)));
  QString numbers;
  for (int n = 1; n <= std::clamp(last, 0, 60); ++n) numbers += CStr(n) + QStringLiteral("．");
  numbers += QStringLiteral("0．99999．");
  const LawIndex index(law, type);
  if (GetPutTxt2Text(law, table, numbers, &index) != GetPutTxt2Text(law, table, numbers)) std::abort();
  const QString find = text.mid(static_cast<qsizetype>(place % (text.size() + 1)), 3);
  if (GetMyLongDaAn(law, table, find, &index) != GetMyLongDaAn(law, table, find)) std::abort();
  const LawText loaded(law);
  (void)GetMyLongDaAn(loaded, find);
  return 0;
}
