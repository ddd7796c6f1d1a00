#include "bank/item_index.h"

#include <cstring>

#include "bank/bank_text.h"
#include "bank/tables.h"
#include "platform/dbftable.h"
#include "platform/events.h"
#include "platform/text_toolkit.h"
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
    row.itemtype = SaturatedInt<int>(t.number(fItemtype));
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
    const long long n = SaturatedInt<long long>(t.number(r, ff)) + 1;
    const QString id = Mid(t.text(r, fb), 10, 5) + CStr(type) + Right(QStringLiteral("00000") + CStr(n), 5);
    t.setNumber(r, ff, static_cast<double>(n));
    t.close();
    return id;
  }
  return kFallbackItemId;
}

}  // namespace mj
