#include "bank/item_index.h"

#include <cstring>

#include "app/text_toolkit.h"
#include "bank/bank_text.h"
#include "bank/tables.h"
#include "law/citations.h"
#include "platform/dbftable.h"
#include "platform/events.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

// The trimmed text of one column, row after row. Neighbouring rows often
// hold the same value (the rows of one bank, an answer, a record "no"): the
// text of the row before is then shared instead of decoded again.
class ColumnReader {
 public:
  ColumnReader(const DbfScan& t, const QString& name) : t_(t), field_(t.fieldIndex(name)) {}
  // Sets `out` to the text of the current row; `before` is what this column
  // gave for the row before (nullptr for the first row).
  void read(QString& out, const QString* before) {
    const QByteArrayView b = t_.bytes(field_);
    if (before && b.size() == width_ &&
        (width_ == 0 || std::memcmp(b.data(), last_, static_cast<size_t>(width_)) == 0)) {
      out = *before;
      return;
    }
    // Fields are at most 255 bytes wide.
    width_ = std::min<qsizetype>(b.size(), sizeof last_);
    if (width_ > 0) std::memcpy(last_, b.data(), static_cast<size_t>(width_));
    if (width_ != b.size()) width_ = -1;
    out = t_.trimmedText(field_);
  }

 private:
  const DbfScan& t_;
  int field_;
  qsizetype width_ = -1;
  char last_[256];
};

// The trimmed text of a narrow column with few values (the answer keys):
// each value is decoded once and then shared.
class FewValuesReader {
 public:
  FewValuesReader(const DbfScan& t, const QString& name) : t_(t), field_(t.fieldIndex(name)) {}
  void read(QString& out) {
    const QByteArrayView b = t_.bytes(field_);
    for (const auto& [bytes, text] : seen_)
      if (bytes == b) {
        out = text;
        return;
      }
    out = t_.trimmedText(field_);
    if (seen_.size() < 32) seen_.append({b.toByteArray(), out});
  }

 private:
  const DbfScan& t_;
  int field_;
  QList<std::pair<QByteArray, QString>> seen_;
};

}  // namespace

void ReadData2ItemData(const QString& folder, const QString& table, ItemIndex& array) {
  array.clear();
  Breather breathe;
  DbfScan t(AppPath(folder, QStringLiteral("\\") + table));
  if (!t.isOpen()) return;
  ColumnReader filename(t, QStringLiteral("filename"));
  ColumnReader story(t, QStringLiteral("story"));
  FewValuesReader answer(t, QStringLiteral("answer"));
  ColumnReader aboutlaw(t, QStringLiteral("aboutlaw"));
  ColumnReader itemid(t, QStringLiteral("itemid"));
  ColumnReader hastest(t, QStringLiteral("hastest"));
  const int fValid2 = t.fieldIndex(QStringLiteral("valid2"));
  const int fHasselect = t.fieldIndex(QStringLiteral("hasselect"));
  const int fItemtype = t.fieldIndex(QStringLiteral("itemtype"));
  array.reserve(t.recordCount());
  for (qsizetype n = 1; t.next(); ++n) {
    ItemRow& row = array.emplace_back();
    const ItemRow* before = n > 1 ? array.constData() + (n - 2) : nullptr;
    filename.read(row.filename, before ? &before->filename : nullptr);
    story.read(row.story, before ? &before->story : nullptr);
    answer.read(row.answer);
    aboutlaw.read(row.aboutlaw, before ? &before->aboutlaw : nullptr);
    itemid.read(row.itemid, before ? &before->itemid : nullptr);
    hastest.read(row.hastest, before ? &before->hastest : nullptr);
    row.valid2 = t.logical(fValid2);
    row.hasselect = t.logical(fHasselect);
    row.itemtype = static_cast<int>(t.number(fItemtype));
    if ((n & 255) == 0) breathe.tick();
  }
}

void SetWorkItemData(ItemIndex& itemData, const ItemIndex& array) {
  if (&itemData == &array) return;
  itemData = array;
}

void MyEraseItemData(ItemIndex& array, qsizetype /*rowCount*/) {
  // Clearing the array releases every row; emptying the rows one by one
  // first would only copy an index shared with another one.
  array.clear();
  array.squeeze();
}

QString GetItemID(const QString& list, qsizetype i) { return Mid(list, (i - 1) * 11 + 1, 11); }

qsizetype FindItemRow(const ItemIndex& index, const QString& id) {
  for (qsizetype i = 0; i < index.size(); ++i)
    if (index[i].itemid == id) return i + 1;
  return 0;
}

const ItemRow* FindItem(const ItemIndex& index, const QString& id) {
  const qsizetype p = FindItemRow(index, id);
  return p == 0 ? nullptr : &index[p - 1];
}

ItemRow* FindItem(ItemIndex& index, const QString& id) {
  const qsizetype p = FindItemRow(index, id);
  return p == 0 ? nullptr : &index[p - 1];
}

QString NewItemID(const Env& env, const QString& lawName, int type) {
  const QString path = env.path(QStringLiteral("\\dbf\\") + tables::kDirectory);
  DbfTable t = DbfTable::open(path, DbfTable::Mode::ReadWrite);
  // A table that cannot be written still gives the ID; only the count stays.
  if (!t.isOpen()) t = DbfTable::open(path);
  const int fa = t.fieldIndex(QStringLiteral("a"));
  const int fb = t.fieldIndex(QStringLiteral("b"));
  const int ff = t.fieldIndex(QStringLiteral("f"));
  const QString typeWord =
      Mid(QStringLiteral("单项多项任意"), static_cast<qsizetype>(type - 1) * 2 + 1, 2) + QStringLiteral("选择题");
  for (int r : t.rows()) {
    if (t.isNull(r, fa) || t.isNull(r, fb) || t.isNull(r, ff)) continue;
    const QString a = t.text(r, fa);
    if (InStr(a, lawName) == 0 || InStr(a, typeWord) == 0) continue;
    const long long n = static_cast<long long>(t.number(r, ff)) + 1;
    const QString id = Mid(t.text(r, fb), 10, 5) + CStr(type) + Right(QStringLiteral("00000") + CStr(n), 5);
    t.setNumber(r, ff, static_cast<double>(n));
    t.close();
    return id;
  }
  return kFallbackItemId;
}

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
