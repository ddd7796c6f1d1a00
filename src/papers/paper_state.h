#pragma once
// What the check of a paper leaves behind for its practice: the answer mode,
// the numbers of each section, the section texts, and the law names that
// were not found. It lives until the next check overwrites it; editing the
// paper does not clear it.

#include <QString>
#include <array>

namespace mj {

struct PaperState {
  // 1: the answers stand behind each question; 2: they stand together behind
  // "[本卷参考答案]"; 0 before the first check.
  qint16 OutTiMode = 0;
  // OutTiNum[t][c] for the section t (1 single, 2 multiple, 3 any choice):
  // c = 1 its first number, c = 2 its last number, c = 3 the running total
  // of questions up to and including the section, which the practice of the
  // paper works out. Row 0 and column 0 stay 0.
  std::array<std::array<qint32, 4>, 4> OutTiNum{};
  // The question sections 1 to 3 (element 0 unused).
  std::array<QString, 4> OutTiText;
  // The answer sections 1 to 3; only filled in mode 2.
  std::array<QString, 4> OutDaAnText;
  // Every law name (with 《》) of the last check that the law-name list does
  // not hold, one behind the other.
  QString BadLawNames;
};

}  // namespace mj
