// The check of an outside paper on any text, in both answer layouts, over a
// small law-name list; and the replacement pairs of the text's first line
// applied to the rest, as the pair list does before a check.

#include <QDir>

#include "bank/tables.h"
#include "fuzz_target.h"
#include "papers/pair_list.h"
#include "papers/paper_check.h"
#include "platform/clock.h"
#include "platform/dbftable.h"
#include "platform/messagebox.h"

using namespace mj;

namespace {

const QString& PaperFolder() {
  static const QString root = [] {
    const QString r = fuzz::WorkFolder() + QStringLiteral("/papers");
    QDir().mkpath(r + QStringLiteral("/dbf"));
    DbfTable t = DbfTable::create(r + QStringLiteral("/dbf/") + tables::kLawList, tables::LawListFields());
    int klass = 1;
    for (const QString& name : {QStringLiteral("刑法"), QStringLiteral("民法典"), QStringLiteral("刑事诉讼法")}) {
      const int i = t.appendRow();
      t.setText(i, QStringLiteral("lawname"), name);
      t.setNumber(i, QStringLiteral("f"), 0);
      t.setText(i, QStringLiteral("c"), QStringLiteral("A"));
      t.setNumber(i, QStringLiteral("lei"), klass++);
    }
    t.close();
    return r;
  }();
  return root;
}

}  // namespace

MJ_FUZZ_TARGET(paper_check) {
  const QString text = fuzz::GbkText(data, size);
  static FixedClock clock;
  ScriptedBoxes boxes;  // every box takes its default button
  Env env;
  env.root = PaperFolder();
  env.clock = &clock;
  env.boxes = &boxes;

  // Both layouts on every text (the check's button picks one by the text).
  PaperState state;
  (void)CheckValidity(env, text, state);
  (void)PutBadLawToCombo(state.BadLawNames);
  (void)CheckValidity2(env, text, state);
  (void)PutBadLawToCombo(state.BadLawNames);
  (void)GetStartOrEndNum(env, text, QStringLiteral("Start"));
  (void)GetStartOrEndNum(env, text, QStringLiteral("end"));
  (void)OnlyABCD(text);

  const qsizetype lineEnd = text.indexOf(u'\n');
  if (lineEnd > 0) {
    const PairLine line = ReadPairLine(text.left(lineEnd));
    if (IsOkPair(line.pair)) {
      const PairList list{PairEntry{line.pair, true}};
      (void)ApplyPairs(list, text.mid(lineEnd + 1));
    }
  }
  (void)ExpandLineEnds(text);
  return 0;
}
