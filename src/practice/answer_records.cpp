#include "practice/answer_records.h"

#include "log/day_files.h"
#include "platform/dbftable.h"
#include "platform/paths.h"
#include "platform/text_toolkit.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"

namespace mj {

bool MarkUncertain(const Env& env, const QString& id) {
  return PrependToTodayFile(env, kGuessFolder, id);
}

bool HideTheItem(const QString& folder, const QString& table, const QString& id, ItemIndex& itemData) {
  bool written = false;
  {
    DbfTable t = DbfTable::open(AppPath(folder, table), DbfTable::Mode::ReadWrite);
    const int fieldId = t.fieldIndex(QStringLiteral("itemid"));
    const int fieldValid = t.fieldIndex(QStringLiteral("valid2"));
    if (fieldId >= 0 && fieldValid >= 0) {
      for (const int r : t.rows()) {
        if (t.trimmedText(r, fieldId) != id) continue;
        written = t.setLogical(r, fieldValid, false);
        break;
      }
    }
    t.close();
  }
  for (ItemRow& row : itemData)
    if (row.itemid == id) row.valid2 = false;
  return written;
}

namespace {

// A field as the database gave it in a text: numbers without decimals, text
// trimmed.
QString FieldText(const DbfScan& t, int field) {
  if (t.fields().value(field).type == 'N') return NumText(t.number(field));
  return t.trimmedText(field);
}

}  // namespace

QString DiscussionLink(const QString& folder, const QString& table, const QString& id, const QString& newsLink1,
                       const QString& newsLink3) {
  // One pass over the file, comparing the bytes of the ID: the activation
  // of the answer window runs this after every answer.
  DbfScan scan(AppPath(folder, table));
  const int board = scan.fieldIndex(QStringLiteral("boardid"));
  // Tables that did not come with the forum data have no such field.
  if (board < 0) return QString();
  const int topic = scan.fieldIndex(QStringLiteral("topicid"));
  const int itemid = scan.fieldIndex(QStringLiteral("itemid"));
  const QByteArray wanted = ToGbk(id);
  while (scan.next()) {
    QByteArrayView v = scan.bytes(itemid);
    while (!v.isEmpty() && v.back() == ' ') v.chop(1);
    if (v != wanted) continue;
    if (scan.isNull(board)) return QString();
    return newsLink1 + QStringLiteral("?boardid=") + FieldText(scan, board) + QStringLiteral("&id=") +
           (topic >= 0 ? FieldText(scan, topic) : QString()) + newsLink3;
  }
  return QString();
}

ExchangeStep ReadExchangeNumber(const QString& boxText, const QString& currentId, const ItemIndex& allItemData) {
  ExchangeStep step;
  // The box's own change runs again on the text it puts back, so the
  // replacement goes on until no "**" is left.
  step.text = boxText;
  while (step.text.contains(QStringLiteral("**")))
    step.text = ReplaceAll(step.text, QStringLiteral("**"), QStringLiteral("*"));
  if (step.text == u'*' + currentId + u'*') return step;
  if (LastPos(step.text, QStringLiteral("*")) != 13 || Left(step.text, 1) != u"*") return step;
  step.id = Mid(step.text, InStr(step.text, QStringLiteral("*")) + 1, 11);
  step.kind = FindItemRow(allItemData, step.id) > 0 ? ExchangeStep::Question : ExchangeStep::Unknown;
  return step;
}

}  // namespace mj
