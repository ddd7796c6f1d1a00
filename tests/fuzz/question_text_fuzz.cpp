// The question-text split on any bank file: the block of a question by its
// number, its fields, the answer letters, the type tag, and the IDs and
// heading flags that number questions and directory rows.

#include "bank/bank_text.h"
#include "fuzz_target.h"
#include "platform/text_toolkit.h"
#include "platform/vbtext.h"
#include "practice/answer_check.h"
#include "practice/directory.h"

using namespace mj;

MJ_FUZZ_TARGET(question_text) {
  const QString text = fuzz::GbkText(data, size);
  for (long long n : {1LL, 2LL, 3LL, ItemSerial(text.left(11))}) {
    const QString block = GetOneShiTi(text, n);
    for (int field = 0; field <= 3; ++field) {
      QString provider;
      QString f = GetField(block, field, provider);
      (void)AnswerLetters(f);
      (void)Order(f);
    }
  }
  (void)ItemTypeOfTag(text);
  (void)IsInTheFlag(text.left(30), 12);
  long long first = 0, last = 0;
  (void)HeadingRange(text.left(30), first, last);
  (void)Str2Num(text, 1, 1);
  return 0;
}
