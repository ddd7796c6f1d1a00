#include "law/law_search.h"

#include <gtest/gtest.h>

#include <QRandomGenerator>

#include "platform/text_toolkit.h"
#include "platform/vbtext.h"
#include "support/printers.h"

namespace mj {
namespace {

TEST(LawSearch, FindLeadTailIsInStrOfBoth) {
  EXPECT_EQ(FindLeadTail(u"ab目录\r\n　　目录\r\n"_qs, u"　　"_qs, u"目录\r\n"_qs), 7);
  EXPECT_EQ(FindLeadTail(u"目录\r\n"_qs, QString(), u"目录\r\n"_qs), 1);
  EXPECT_EQ(FindLeadTail(u"目录\r\n"_qs, u"　"_qs, u"目录\r\n"_qs), 0);
  QRandomGenerator rng(5);
  const QString alphabet = u"ab　目录\r\n"_qs;
  for (int round = 0; round < 3000; ++round) {
    QString t, lead, tail;
    for (int k = rng.bounded(60); k > 0; --k) t += alphabet.at(rng.bounded(alphabet.size()));
    for (int k = rng.bounded(3); k > 0; --k) lead += alphabet.at(rng.bounded(alphabet.size()));
    for (int k = 1 + rng.bounded(3); k > 0; --k) tail += alphabet.at(rng.bounded(alphabet.size()));
    ASSERT_EQ(FindLeadTail(t, lead, tail), InStr(t, lead + tail)) << round;
  }
}

TEST(LawSearch, LastPosSkippingIsLastPos) {
  EXPECT_EQ(LastPosSkipping(u"abcabc"_qs, u"abc"_qs), 4);
  EXPECT_EQ(LastPosSkipping(u"abc"_qs, QString()), 0);
  EXPECT_EQ(LastPosSkipping(QString(), u"a"_qs), 0);
  EXPECT_EQ(LastPosSkipping(u"ab"_qs, u"abc"_qs), 0);
  QRandomGenerator rng(6);
  // Characters that share a low byte (U+0141 and U+0241 ...) share skip slots.
  const QString alphabet = u"ab\u0141\u0241\r\n　附件"_qs;
  for (int round = 0; round < 5000; ++round) {
    QString t, f;
    for (int k = rng.bounded(80); k > 0; --k) t += alphabet.at(rng.bounded(alphabet.size()));
    for (int k = rng.bounded(6); k > 0; --k) f += alphabet.at(rng.bounded(alphabet.size()));
    ASSERT_EQ(LastPosSkipping(t, f), LastPos(t, f)) << round;
  }
}

}  // namespace
}  // namespace mj
