#pragma once
// Shared pieces of the paper tests: a law-name list, small papers.

#include <QString>
#include <QStringList>

#include "bank/tables.h"
#include "platform/dbftable.h"
#include "support/test_env.h"

namespace mj::test {

inline QString Lines(const QStringList& lines) { return lines.join(QStringLiteral("\r\n")); }

struct LawListRow {
  QString name;
  int paper;
  QString letter;
  int klass;
};

// \dbf\listbox.mmd with the given rows.
inline void WriteLawList(const TestEnv& te, const QList<LawListRow>& rows) {
  te.mkdir(u"\\dbf"_qs);
  DbfTable t = DbfTable::create(te.path(u"\\dbf\\listbox.mmd"_qs), tables::LawListFields());
  for (const LawListRow& r : rows) {
    const int i = t.appendRow();
    t.setText(i, u"lawname"_qs, r.name);
    t.setNumber(i, u"f"_qs, r.paper);
    t.setText(i, u"c"_qs, r.letter);
    t.setNumber(i, u"lei"_qs, r.klass);
  }
  t.close();
}

// The three laws of the tests' list.
inline void WriteStandardLawList(const TestEnv& te) {
  WriteLawList(te, {{u"《示例刑法》"_qs, 2, u"S"_qs, 4},
                    {u"《行政处罚示例规定》"_qs, 1, u"X"_qs, 3},
                    {u"《合同示例规则》"_qs, 3, u"H"_qs, 2}});
}

// One question of an inline paper: number, stem, four options, answer and
// citation lines (an empty answer or citation leaves its line out).
inline QStringList InlineQuestion(int n, const QString& answer, const QString& citation) {
  QStringList l = {QString::number(n) + u"．这是第"_qs + QString::number(n) + u"题的题干(      )"_qs, u"A．甲"_qs,
                   u"B．乙"_qs, u"C．丙"_qs, u"D．丁"_qs};
  if (!answer.isEmpty()) l.append(u"[答案：]"_qs + answer);
  if (!citation.isEmpty()) l.append(u"[参见：]"_qs + citation);
  return l;
}

// A question without its answer lines, for papers with separate answers.
inline QStringList BareQuestion(int n) { return InlineQuestion(n, {}, {}); }

inline QStringList AnswerItem(int n, const QString& answer, const QString& citation) {
  QStringList l = {QString::number(n) + u"．"_qs};
  if (!answer.isEmpty()) l.append(u"[答案：]"_qs + answer);
  if (!citation.isEmpty()) l.append(u"[参见：]"_qs + citation);
  return l;
}

}  // namespace mj::test
