#include "log/practice_log.h"

#include <QSet>
#include <algorithm>
#include <vector>

#include "bank/tables.h"
#include "log/day_files.h"
#include "platform/dbftable.h"
#include "platform/text_toolkit.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

constexpr int kEntry = 20;  // characters of one record entry
const QString kBlank = QStringLiteral("\u3000");

// The last 20 characters of 20 blanks + story, without the blanks: a date
// can only stand in the record's part of them.
QStringView tailOf(const QString& story) {
  return story.size() >= kEntry ? QStringView(story).right(kEntry) : QStringView(story);
}

// The answer given at the last place of the date in the record, trimmed.
QString answerAtLast(const QString& story, const QString& date) {
  const qsizetype q = story.lastIndexOf(date);
  return q < 0 ? QString() : Trim(story.mid(q + 16, 4));
}

struct Oldest {
  bool counts = false;  // the date stands in the oldest entry
  bool right = false;   // and the answer there is the key
};

Oldest testOldest(const ItemRow& row, const QString& date) {
  Oldest o;
  if (!tailOf(row.story).contains(date)) return o;
  o.counts = true;
  o.right = answerAtLast(row.story, date) == row.answer;
  return o;
}

int digit(QChar c) { return c >= u'0' && c <= u'9' ? c.unicode() - u'0' : -1; }

// The day yyyymmdd of 8 digits at p, p+5, p+8 of a text in the form
// yyyy?mm?dd as a number; -1 when one of them is no digit.
int dayKeyAt(QStringView s, qsizetype p) {
  static constexpr int kPlaces[8] = {0, 1, 2, 3, 5, 6, 8, 9};
  int key = 0;
  for (int k : kPlaces) {
    const int d = digit(s[p + k]);
    if (d < 0) return -1;
    key = key * 10 + d;
  }
  return key;
}

QString cellText(int key) { return QStringLiteral("%1").arg(key, 8, 10, QChar(u'0')); }

// Days already met, for numbers yyyymmdd with a month up to 12 and a day up
// to 31 (one bit each); other cells go to a set of texts.
class DaySet {
 public:
  DaySet() : bits_(10000 * 13 * 32 / 64 + 1, 0) {}
  // True when the day was new: key is its number, or -1 with its cell text
  // when it is not all digits.
  bool insert(int key, const QString& cell) {
    const int year = key / 10000, month = key / 100 % 100, day = key % 100;
    if (key >= 0 && month <= 12 && day <= 31) {
      const std::size_t bit = static_cast<std::size_t>(year) * 416 + static_cast<std::size_t>(month) * 32 +
                              static_cast<std::size_t>(day);
      std::uint64_t& word = bits_[bit / 64];
      const std::uint64_t mask = std::uint64_t{1} << (bit % 64);
      if (word & mask) return false;
      word |= mask;
      return true;
    }
    const QString text = key >= 0 ? cellText(key) : cell;
    if (others_.contains(text)) return false;
    others_.insert(text);
    return true;
  }

 private:
  std::vector<std::uint64_t> bits_;
  QSet<QString> others_;
};

// The cell of an entry's first 10 characters: year, month and day by place.
QString cellOfEntry(QStringView first10) {
  return first10.mid(0, 4).toString() + first10.mid(5, 2).toString() + first10.mid(8, 2).toString();
}

// Index rows by itemid: the first row of each ID, as a walk from row 1 finds it.
QHash<QString, const ItemRow*> firstRows(const ItemIndex& index) {
  QHash<QString, const ItemRow*> h;
  h.reserve(index.size());
  for (const ItemRow& r : index)
    if (!h.contains(r.itemid)) h.insert(r.itemid, &r);
  return h;
}

QString statText(int count, int right) {
  const int score = count == 0 ? right * 100 : right * 100 / count;
  return GetStrFromNum(count, 10) + GetStrFromNum(right, 10) + GetStrFromNum(score, 10);
}

QString fieldOf(const QString& stat, int n) { return Trim(Mid(stat, (n - 1) * 10 + 1, 10)); }

QStringList cellsOf(const QString& text, int width) {
  QStringList cells;
  for (qsizetype i = 0; i + width <= text.size(); i += width) cells.append(text.mid(i, width));
  return cells;
}

}  // namespace

QString SortCells(const QString& text, int width) {
  if (width <= 0 || text.size() < width) return QString();
  QStringList cells = cellsOf(text, width);
  std::sort(cells.begin(), cells.end());
  return cells.join(QString());
}

QString DateOfCell(const QString& cell) {
  return Left(cell, 4) + QStringLiteral("-") + Mid(cell, 5, 2) + QStringLiteral("-") + Mid(cell, 7, 2);
}

QString GetAllDoneDays(const ItemIndex& index) {
  DaySet seen;
  QString out;
  for (const ItemRow& row : index) {
    const QString& s = row.story;
    if (s.size() <= 10) continue;
    // Records run to thousands of entries: the digits are read in place.
    const char16_t* p = reinterpret_cast<const char16_t*>(s.constData());
    int last = -1;
    for (qsizetype at = 0; at < s.size(); at += kEntry) {
      int key = -1;
      if (at + 10 <= s.size()) {
        const char16_t* e = p + at;
        key = 0;
        for (const int k : {0, 1, 2, 3, 5, 6, 8, 9}) {
          const unsigned d = static_cast<unsigned>(e[k]) - u'0';
          if (d > 9) {
            key = -1;
            break;
          }
          key = key * 10 + static_cast<int>(d);
        }
      }
      if (key >= 0 && key == last) continue;
      last = key;
      const QString cell = key >= 0 ? QString() : cellOfEntry(QStringView(s).mid(at, 10));
      if (seen.insert(key, cell)) out += key >= 0 ? cellText(key) : cell;
    }
  }
  return out;
}

QString GetDayStat(const ItemIndex& index, const QString& cell) {
  const QString date = DateOfCell(cell);
  int count = 0, right = 0;
  for (const ItemRow& row : index) {
    const Oldest o = testOldest(row, date);
    count += o.counts;
    right += o.right;
  }
  return statText(count, right);
}

QString GetDayItemIds(const ItemIndex& index, const QString& date, bool wrongOnly) {
  QString all, wrong;
  for (const ItemRow& row : index) {
    const Oldest o = testOldest(row, date);
    if (!o.counts) continue;
    all += row.itemid;
    if (!o.right) wrong += row.itemid;
  }
  return wrongOnly ? wrong : all;
}

namespace {

DayFileStat dayFileStat(const QHash<QString, const ItemRow*>& rows, const QString& date, const QString& list) {
  DayFileStat st;
  st.count = static_cast<int>(list.size() / 11);
  for (qsizetype i = 1; i <= st.count; ++i) {
    const ItemRow* row = rows.value(GetItemID(list, i));
    if (row && testOldest(*row, date).right) ++st.right;
  }
  // Divided first, then multiplied, in floating point: 29 of 50 gives 57.
  const double ratio = static_cast<double>(st.right) / std::max(st.count, 1);
  st.score = static_cast<int>(Int(ratio * 100));
  return st;
}

}  // namespace

DayFileStat GetDayFileStat(const ItemIndex& index, const QString& date, const QString& list) {
  return dayFileStat(firstRows(index), date, list);
}

QString KeepWrongItems(const ItemIndex& index, const QString& list, const QString& date, bool answerYes) {
  if (!answerYes) return list;
  const QHash<QString, const ItemRow*> rows = firstRows(index);
  QString out;
  for (qsizetype i = 1; i <= list.size() / 11; ++i) {
    const QString id = GetItemID(list, i);
    const ItemRow* row = rows.value(id);
    if (!row) continue;
    const Oldest o = testOldest(*row, date);
    if (o.counts && !o.right) out += id;
  }
  return out;
}

QString GetBankCodes(const QString& list) {
  QSet<QString> seen;
  QString out;
  for (qsizetype i = 1; i <= list.size() / 11; ++i) {
    const QString code = Left(GetItemID(list, i), 5);
    if (seen.contains(code)) continue;
    seen.insert(code);
    out += code;
  }
  return out;
}

namespace {

// Fields a and b of the rows of the directory table, in table order, for
// the titles of bank codes; rows with a or b empty are left out.
QList<std::pair<QString, QString>> directoryLabels(const Env& env) {
  QList<std::pair<QString, QString>> out;
  DbfTable t = DbfTable::open(env.path(QStringLiteral("\\dbf\\") + tables::kDirectory));
  const int fa = t.fieldIndex(QStringLiteral("a"));
  const int fb = t.fieldIndex(QStringLiteral("b"));
  if (fa < 0 || fb < 0) return out;
  for (const int r : t.rows()) {
    if (t.isNull(r, fa) || t.isNull(r, fb)) continue;
    out.append({t.text(r, fa), t.text(r, fb)});
  }
  return out;
}

QString titleIn(const QList<std::pair<QString, QString>>& labels, const QString& code) {
  if (Left(code, 1) == u"0") return QString();
  const QString wanted = QStringLiteral("\\") + code;
  for (const auto& [a, b] : labels)
    if (b.contains(wanted)) return Trim(Left(a, InStr(a, QStringLiteral("》"))));
  return QString();
}

}  // namespace

QString GetBankTitle(const Env& env, const QString& code) {
  if (Left(code, 1) == u"0") return QString();
  return titleIn(directoryLabels(env), code);
}

QString GetIdsOfBank(const QString& list, const QString& code) {
  if (code.size() != 5) return QString();
  QString out;
  for (qsizetype i = 1; i <= list.size() / 11; ++i) {
    const QString id = GetItemID(list, i);
    if (Left(id, 5) == code) out += id;
  }
  return out;
}

QString LogGridFormat(LogMode mode) {
  const auto pad = [](int n) { return kBlank.repeated(n); };
  switch (mode) {
    case LogMode::Days:
      return QStringLiteral("<|<") + pad(15) + QStringLiteral("每天做过的题详细列表") + pad(15) +
             QStringLiteral("|^做题数   |^正确数    |^得 分    ");
    case LogMode::UpdatedByDay:
      return QStringLiteral("<|<") + pad(11) + QStringLiteral("已更新的试题按日期进行分类") + pad(11) +
             QStringLiteral("|^题    数   |^正确数    |^得 分    ");
    case LogMode::UncertainByDay:
      return QStringLiteral("<|<") + pad(11) + QStringLiteral("做起来不太肯定的题按日期进行整理如下") + pad(11) +
             QStringLiteral("|^做题数   |^正确数    |^得 分    ");
    case LogMode::UpdatedByLaw:
      return QStringLiteral("^|") + pad(17) + QStringLiteral("刚更新的试题,按法律或试卷归类") + pad(17) +
             QStringLiteral("|^题    数   ");
  }
  return QString();
}

QString DayLabel(const QString& cell, LogMode mode) {
  const auto two = [](const QString& digits) { return Right(QStringLiteral("  ") + CStr(static_cast<long long>(Val(digits))), 2); };
  QString label = Left(cell, 4) + QStringLiteral("年") + two(Mid(cell, 5, 2)) + QStringLiteral("月") +
                  two(Mid(cell, 7, 2)) + QStringLiteral("日");
  if (mode == LogMode::UpdatedByDay) label += QStringLiteral("更新的试题");
  if (mode == LogMode::UncertainByDay) label += QStringLiteral("做起来不太肯定的试题");
  return label;
}

QString DateOfLabel(const QString& label) {
  const QString l = Len(label) < 11 ? QStringLiteral("66666666666") : label;
  const auto padded = [](const QString& part, int width) {
    return Right(QString(width, u'0') + Trim(part), width);
  };
  return padded(Mid(l, 1, 4), 4) + QStringLiteral("-") + padded(Mid(l, 6, 2), 2) + QStringLiteral("-") +
         padded(Mid(l, 9, 2), 2);
}

namespace {

// Count and right answers of every day of `cells` in one walk over the
// index: each record's oldest entry is looked at once, for the dates that
// stand in it. Gives what GetDayStat gives day by day.
QList<std::pair<int, int>> dayStats(const ItemIndex& index, const QStringList& cells) {
  QList<std::pair<int, int>> stats(cells.size(), {0, 0});
  QHash<int, int> rowOfKey;
  QList<int> unusual;  // cells that are not 8 digits: day by day
  for (int i = 0; i < cells.size(); ++i) {
    const QString date = DateOfCell(cells[i]);
    const int key = date.size() == 10 ? dayKeyAt(date, 0) : -1;
    if (key >= 0)
      rowOfKey.insert(key, i);
    else
      unusual.append(i);
  }
  for (const ItemRow& row : index) {
    const QStringView tail = tailOf(row.story);
    int seen[11];
    int nSeen = 0;
    for (qsizetype p = 0; p + 10 <= tail.size(); ++p) {
      if (tail[p + 4] != u'-' || tail[p + 7] != u'-') continue;
      const int key = dayKeyAt(tail, p);
      if (key < 0 || std::find(seen, seen + nSeen, key) != seen + nSeen) continue;
      seen[nSeen++] = key;
      const auto it = rowOfKey.constFind(key);
      if (it == rowOfKey.constEnd()) continue;
      auto& [count, right] = stats[*it];
      ++count;
      if (answerAtLast(row.story, tail.mid(p, 10).toString()) == row.answer) ++right;
    }
  }
  for (const int i : unusual) {
    const QString st = GetDayStat(index, cells[i]);
    stats[i] = {static_cast<int>(Val(fieldOf(st, 1))), static_cast<int>(Val(fieldOf(st, 2)))};
  }
  return stats;
}

QStringList statRow(const QString& label, const QString& stat) {
  return {label, fieldOf(stat, 1), fieldOf(stat, 2), fieldOf(stat, 3) + QStringLiteral("%")};
}

}  // namespace

std::optional<LogGrid> BuildDaysGrid(const Env& env, const ItemIndex& index) {
  const QStringList cells = cellsOf(SortCells(GetAllDoneDays(index), 8), 8);
  if (cells.isEmpty()) {
    env.msgBox(QStringLiteral("没有做题记录。"), box::Information, QStringLiteral("无做题记录"));
    return std::nullopt;
  }
  LogGrid g;
  g.mode = LogMode::Days;
  g.format = LogGridFormat(g.mode);
  const QList<std::pair<int, int>> stats = dayStats(index, cells);
  for (int i = 0; i < cells.size(); ++i)
    g.rows.append(statRow(DayLabel(cells[i], g.mode), statText(stats[i].first, stats[i].second)));
  return g;
}

LogGrid BuildDayFileGrid(const Env& env, const ItemIndex& index, LogMode mode) {
  LogGrid g;
  g.mode = mode;
  g.format = LogGridFormat(mode);
  const QString folder = env.path(mode == LogMode::UncertainByDay ? kGuessFolder : kUpdatedFolder);
  const QStringList names = GetDayFileNames(folder, QStringLiteral("ini"));
  const QStringList cells = cellsOf(SortCells(names.join(QString()), 8), 8);
  const QHash<QString, const ItemRow*> rows = firstRows(index);
  for (const QString& cell : cells) {
    const QString date = DateOfCell(cell);
    const DayFileStat st = dayFileStat(rows, date, ReadDayFile(folder, date));
    g.rows.append({DayLabel(cell, mode), CStr(st.count), CStr(st.right), CStr(st.score) + QStringLiteral("%")});
  }
  return g;
}

std::optional<LogGrid> BuildLawGrid(const Env& env) {
  LogGrid g;
  g.mode = LogMode::UpdatedByLaw;
  g.format = LogGridFormat(g.mode);
  g.list = ReadAllIdFiles(env.path(kUpdatedFolder));
  const QString codes = SortCells(GetBankCodes(g.list), 5);
  if (codes.isEmpty() || codes.size() % 5 != 0) return std::nullopt;
  const QList<std::pair<QString, QString>> labels = directoryLabels(env);
  for (const QString& code : cellsOf(codes, 5)) {
    const QString title = titleIn(labels, code);
    g.codes.append(code);
    g.titles.append(title);
    g.rows.append({title, CStr(GetIdsOfBank(g.list, code).size() / 11)});
  }
  return g;
}

QString GetBankCodeByTitle(const LogGrid& grid, const QString& title) {
  for (int i = 0; i < grid.codes.size(); ++i)
    if (Trim(grid.titles.value(i)) == title) return grid.codes[i];
  return QString();
}

QString IdsOfRow(const Env& env, const ItemIndex& index, const LogGrid& grid, int row) {
  if (row < 0 || row >= grid.rows.size()) return QString();
  const LogMode mode = grid.mode;
  if (mode == LogMode::UpdatedByLaw) {
    const QString code = GetBankCodeByTitle(grid, Trim(grid.rows[row].value(0)));
    return GetIdsOfBank(grid.list, code);
  }
  bool wrongOnly = false;
  if (mode == LogMode::Days || mode == LogMode::UncertainByDay)
    wrongOnly = env.msgBox(QStringLiteral("只做上次作错的题吗？") + kCrLf + QStringLiteral("“否”则做该日做过的全部试题。"),
                           box::YesNo | box::Question, QStringLiteral("请选择")) == box::Yes;
  const QString date = DateOfLabel(grid.rows[row].value(0));
  QString ids;
  QString empty;
  switch (mode) {
    case LogMode::Days:
      ids = GetDayItemIds(index, date, wrongOnly);
      empty = QStringLiteral("没有符合条件的试题，或者你当日全做对了，但这次你却选了只做错题");
      break;
    case LogMode::UpdatedByDay:
      ids = ReadDayFile(env.path(kUpdatedFolder), date);
      empty = QStringLiteral("没有更新试题记录");
      break;
    case LogMode::UncertainByDay:
      ids = KeepWrongItems(index, ReadDayFile(env.path(kGuessFolder), date), date, wrongOnly);
      empty = QStringLiteral("没有符合条件的试题，或者你当时全猜对了，但这次你却选了只做错题");
      break;
    case LogMode::UpdatedByLaw:
      break;
  }
  if (ids.isEmpty()) env.msgBox(empty, box::Information);
  return ids;
}

}  // namespace mj
