#include "log/wrong_book.h"

#include <QHash>
#include <algorithm>

#include "bank/bank_titles.h"
#include "bank/tables.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

const QString kBlank = QStringLiteral("\u3000");

// An entry's time, yyyy-mm-dd hh:mm: digits where digits stand.
bool IsEntryTime(QStringView t) {
  for (qsizetype i = 0; i < 16; ++i) {
    const QChar c = t[i];
    const bool digit = c >= u'0' && c <= u'9';
    switch (i) {
      case 4:
      case 7:
        if (c != u'-') return false;
        break;
      case 10:
        if (c != u' ') return false;
        break;
      case 13:
        if (c != u':') return false;
        break;
      default:
        if (!digit) return false;
    }
  }
  return true;
}

void Collect(const ItemIndex& index, QList<WrongBankGroup>& groups, QHash<QString, qsizetype>& at) {
  QString when;
  for (const ItemRow& row : index) {
    if (!row.valid2 || row.itemid.isEmpty()) continue;
    if (!NewestEntryWrong(row.story, row.answer, &when)) continue;
    const QString bank = Left(row.itemid, 6);
    auto it = at.constFind(bank);
    if (it == at.constEnd()) {
      it = at.insert(bank, groups.size());
      WrongBankGroup g;
      g.bank = bank;
      groups.append(g);
    }
    WrongBankGroup& g = groups[*it];
    g.ids += row.itemid;
    g.count += 1;
    if (when > g.newest) g.newest = when;
  }
}

}  // namespace

QString WrongBook::allIds() const {
  QString out;
  for (const WrongBankGroup& g : groups) out += g.ids;
  return out;
}

int WrongBook::count() const {
  int n = 0;
  for (const WrongBankGroup& g : groups) n += g.count;
  return n;
}

bool NewestEntryWrong(const QString& story, const QString& key, QString* when) {
  // The index holds the record trimmed; only its first entry counts, so a
  // long record costs no more than a short one.
  if (story.size() < 20) return false;
  const QStringView entry = QStringView(story).left(20);
  if (!IsEntryTime(entry)) return false;
  const QStringView given = entry.mid(16).trimmed();
  if (given == QStringView(key).trimmed()) return false;
  if (when) *when = entry.left(16).toString();
  return true;
}

WrongBook BuildWrongBook(const Env& env, const ItemIndex& internal) {
  ItemIndex papers;
  ReadData2ItemData(env.path(QStringLiteral("\\dbf")), tables::kCsItems, papers);
  WrongBook book;
  QHash<QString, qsizetype> at;
  Collect(internal, book.groups, at);
  Collect(papers, book.groups, at);
  const QHash<QString, QString> titles = ReadBankTitles(env);
  for (WrongBankGroup& g : book.groups) g.title = titles.value(g.bank, g.bank);
  std::stable_sort(book.groups.begin(), book.groups.end(),
                   [](const WrongBankGroup& a, const WrongBankGroup& b) { return a.newest > b.newest; });
  return book;
}

WrongBook ReadWrongBook(const Env& env) {
  ItemIndex internal;
  ReadData2ItemData(env.path(QStringLiteral("\\dbf")), tables::kItems, internal);
  return BuildWrongBook(env, internal);
}

QString WrongBookFormat() {
  return QStringLiteral("<|<") + kBlank.repeated(8) + QStringLiteral("最近一次做错的题按题库归类") + kBlank.repeated(8) +
         QStringLiteral("|^题    数   |^最近做错的日期    ");
}

LogGrid WrongBookGrid(const WrongBook& book) {
  LogGrid g;
  g.format = WrongBookFormat();
  for (const WrongBankGroup& group : book.groups) {
    const QString cell = Left(group.newest, 4) + Mid(group.newest, 6, 2) + Mid(group.newest, 9, 2);
    g.rows.append({group.title, CStr(group.count), DayLabel(cell, LogMode::Days)});
  }
  return g;
}

}  // namespace mj
