#include "log/update_package.h"

#include <optional>

#include "bank/bank_text.h"
#include "bank/item_index.h"
#include "bank/tables.h"
#include "law/citations.h"
#include "platform/dbftable.h"
#include "platform/text_toolkit.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

// The citation of a question text: behind the "参见" of its answer section,
// up to the next "■" or "[" behind that "参见", whichever comes first, or to
// the end. Nothing when the section is missing or shorter than 3 characters.
std::optional<QString> citationOf(const QString& text) {
  const qsizetype answerAt = InStr(text, QStringLiteral("■答案："));
  if (answerAt == 0) return std::nullopt;
  const qsizetype seeAt = InStr(answerAt, text, QStringLiteral("参见"));
  if (seeAt == 0) return std::nullopt;
  const qsizetype fieldAt = InStr(seeAt, text, QStringLiteral("■"));
  const qsizetype bracketAt = InStr(seeAt, text, QStringLiteral("["));
  qsizetype end = Len(text) + 1;
  if (fieldAt > 0) end = fieldAt;
  if (bracketAt > 0 && bracketAt < end) end = bracketAt;
  const QString section = Mid(text, seeAt, end - seeAt);
  if (Len(section) < 3) return std::nullopt;
  return Mid(section, 3);
}

// The answer key of a question text: the letters of its answer section,
// read from the part before the first "[注释：]".
QString answerKeyOf(const QString& text) {
  const qsizetype answerAt = InStr(text, QStringLiteral("■答案："));
  QString part;
  if (answerAt > 0) {
    part = Mid(text, answerAt);
  } else {
    QString unused;
    part = GetField(text, 2, unused);
  }
  const qsizetype noteAt = InStr(part, QStringLiteral("[注释：]"));
  if (noteAt > 0) part = Left(part, noteAt - 1);
  return AnswerLetters(part);
}

}  // namespace

bool AltItemRow(const Env& env, const QString& id, const QString& text, int type) {
  const QString table = Left(id, 1) == u"0" ? tables::kCsItems : tables::kItems;
  DbfTable t = DbfTable::open(env.path(QStringLiteral("\\dbf\\") + table), DbfTable::Mode::ReadWrite);
  if (!t.isOpen()) return false;
  if (type == 0) type = ItemTypeOfTag(text);
  const QList<int> found = Select(t, {{QStringLiteral("itemid"), id}});
  int r = found.isEmpty() ? -1 : found.first();
  bool ok = true;
  if (r < 0) {
    r = t.appendRow();
    if (r < 0) return false;
    ok &= t.setText(r, QStringLiteral("itemid"), id);
    ok &= t.setLogical(r, QStringLiteral("valid2"), true);
    ok &= t.setNumber(r, QStringLiteral("itemtype"), type);
    ok &= t.setText(r, QStringLiteral("hastest"), QString());
    ok &= t.setText(r, QStringLiteral("aboutlaw"), QString());
    ok &= t.setText(r, QStringLiteral("story"), QStringLiteral("no"));
    ok &= t.setLogical(r, QStringLiteral("hasselect"), true);
    ok &= t.setText(r, QStringLiteral("filename"), Left(id, 6));
  }
  ok &= t.setText(r, QStringLiteral("story"), QStringLiteral("no"));
  if (const std::optional<QString> citation = citationOf(text)) {
    // Stored as the flat citation list, which the search from a law article
    // to its questions reads.
    const QString aboutlaw = LongDaAn(QStringLiteral("参见") + *citation);
    ok &= t.setText(r, QStringLiteral("aboutlaw"), aboutlaw);
  }
  ok &= t.setText(r, QStringLiteral("answer"), answerKeyOf(text));
  ok &= t.setNumber(r, QStringLiteral("itemtype"), type);
  ok &= t.flush();
  t.close();
  return ok;
}

}  // namespace mj
