// The Chinese numerals on any text: reading a numeral, and the numeral of
// the number read, which must read back as that number.

#include <cstdlib>

#include "fuzz_target.h"
#include "law/numerals.h"
#include "platform/vbtext.h"

using namespace mj;

MJ_FUZZ_TARGET(numerals) {
  const QString text = fuzz::GbkText(data, size);
  const qint32 n = DaXieToNum(text);
  (void)MyGetTheNum(text);
  (void)IsUcaseNum(text);
  if (n > 0) {
    const QString again = DaXie(n);
    if (!again.isEmpty() && DaXieToNum(again) != n) std::abort();
  }
  (void)DaXie(Val(text));
  const QString table = GetLongDaXie(static_cast<qint16>(size % 300));
  (void)NumeralOfSlot(table, RoundHalfEven(Val(text)));
  return 0;
}
