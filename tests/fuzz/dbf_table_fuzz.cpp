// The dBASE table reader, from the bytes of a table file: opening, every
// field of every row, the equality filter, the one-pass scan, the question
// index load, the table check and a write.

#include <QFile>

#include "bank/item_index.h"
#include "bank/table_check.h"
#include "fuzz_target.h"
#include "platform/dbftable.h"

using namespace mj;

MJ_FUZZ_TARGET(dbf_table) {
  const QString folder = fuzz::WorkFolder();
  const QString path = folder + QStringLiteral("/fuzz.mmd");
  {
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate)) return 0;
    f.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
  }
  {
    const DbfTable t = DbfTable::open(path);
    const int fields = t.fieldCount();
    (void)t.fields();
    for (int r : t.rows())
      for (int f = -1; f <= fields; ++f) {
        (void)t.isNull(r, f);
        (void)t.text(r, f);
        (void)t.trimmedText(r, f);
        (void)t.logical(r, f);
        (void)t.number(r, f);
        if (f >= 0 && f < fields) (void)t.value(r, f);
      }
    (void)Select(t, {{QStringLiteral("itemid"), QStringLiteral("10001100001")}, {QStringLiteral("valid2"), true}});
  }
  {
    DbfScan scan(path);
    while (scan.next())
      for (int f = -1; f <= scan.fieldCount(); ++f) {
        (void)scan.isNull(f);
        (void)scan.text(f);
        (void)scan.trimmedText(f);
        (void)scan.logical(f);
        (void)scan.number(f);
        (void)scan.bytes(f);
      }
  }
  ItemIndex index;
  ReadData2ItemData(folder, QStringLiteral("fuzz.mmd"), index);
  (void)TableProblem(path, ItemTableFields());
  {
    DbfTable w = DbfTable::open(path, DbfTable::Mode::ReadWrite);
    const QList<int> rows = w.rows();
    if (!rows.isEmpty()) w.setText(rows.first(), 0, QStringLiteral("某甲"));
    const int added = w.appendRow();
    if (added >= 0) w.setNumber(added, w.fieldCount() - 1, 1e99);
    w.close();
  }
  return 0;
}
