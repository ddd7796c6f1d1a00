#include "practice/directory.h"

#include "bank/bank_text.h"
#include "platform/dbftable.h"
#include "platform/paths.h"
#include "platform/text_toolkit.h"
#include "platform/vbtext.h"

namespace mj {

namespace {

const QChar kIdeographicBlank(0x3000);

// The columns whose numbers a heading sums over its leaf rows.
constexpr int kSummedColumns[] = {kColTotal, kColDone, kColRight, kColMinutes, kColEligible};

bool hasSign(const QString& label) { return label.contains(u'+') || label.contains(u'-'); }

qsizetype leadingBlanks(const QString& s) {
  qsizetype n = 0;
  while (n < s.size() && s[n] == u' ') ++n;
  return n;
}

// The text a grid cell shows for a field of the bound table.
QString cellText(const DbfTable& t, int record, int field) {
  const QVariant v = t.value(record, field);
  if (!v.isValid()) return QString();
  if (v.typeId() == QMetaType::Double) return NumText(v.toDouble());
  if (v.typeId() == QMetaType::Bool) return v.toBool() ? QStringLiteral("True") : QStringLiteral("False");
  return v.toString();
}

}  // namespace

bool IsVisibleColumn(int column) {
  for (qsizetype i = 1; i <= Len(kVisibleColumns); i += 2)
    if (static_cast<int>(Val(Mid(kVisibleColumns, i, 2))) == column) return true;
  return false;
}

QString DirectoryHeader(DirectoryMode mode) {
  const QString tail = QStringLiteral("|<文件名2|<  标志3|<  文件ID号4    |^总题数      |");
  switch (mode) {
    case DirectoryMode::ShiTi:
      return QStringLiteral("    目                录                            .") + tail +
             QStringLiteral("^做次数   |^对次数    |^得 分    |^9|^10|^用时(分)     |^") + kIdeographicBlank +
             QStringLiteral("适格题数") + kIdeographicBlank + Space(4);
    case DirectoryMode::CeShi:
    case DirectoryMode::ChaJuan:
      return QStringLiteral("     目                录                             .") + tail +
             QStringLiteral("^已做数   |^正确数    |^得 分    |^9|^10|^用时(分)     |^") +
             (mode == DirectoryMode::CeShi ? QStringLiteral("适格题数") : QStringLiteral("未做或错")) +
             kIdeographicBlank + Space(6);
  }
  return QString();
}

QString GridFormatText(DirectoryMode mode) {
  return QStringLiteral("<a        |<") + kIdeographicBlank + DirectoryHeader(mode);
}

QString ScoreText(double done, double right) {
  if (done == 0) return QStringLiteral("0%");
  return NumText(Int(right / done * 100)) + QStringLiteral("%");
}

bool HeadingRange(const QString& flag, long long& first, long long& last) {
  first = last = 0;
  const qsizetype dash = InStr(flag, QStringLiteral("-"));
  if (dash == 0) return false;
  first = SaturatedInt<long long>(Val(Left(flag, dash - 1)));
  last = SaturatedInt<long long>(Val(Mid(flag, dash + 1)));
  return true;
}

// --- binding ---

bool Directory::load(const QString& folder, const QString& table) {
  rows_.clear();
  const DbfTable t = DbfTable::open(AppPath(folder, table));
  if (!t.isOpen()) return false;
  const int fields = qMin(t.fieldCount(), kDirectoryFieldCount);
  for (int r : t.rows()) {
    Row row;
    for (int f = 0; f < fields; ++f) row.fields[static_cast<size_t>(f)] = cellText(t, r, f);
    rows_.append(row);
  }
  return true;
}

void Directory::setRows(const QList<Fields>& rows) {
  rows_.clear();
  for (const Fields& f : rows) rows_.append(Row{f, kLeafRowHeight, false});
}

void Directory::setFormatText(const QString& format) {
  format_ = format;
  header_.clear();
  const QStringList parts = format.split(u'|');
  for (int c = 0; c < kDirectoryColumnCount; ++c) {
    HeaderCell cell{u'<', QString()};
    if (c < parts.size()) {
      const QString& p = parts[c];
      if (!p.isEmpty() && (p[0] == u'<' || p[0] == u'^' || p[0] == u'>')) {
        cell.alignment = p[0];
        cell.text = p.mid(1);
      } else {
        cell.text = p;
      }
    }
    header_.append(cell);
  }
}

// --- cells and rows ---

QString Directory::text(int row, int column) const {
  if (column < 0 || column >= kDirectoryColumnCount) return QString();
  if (row == 0) return column < header_.size() ? header_[column].text : QString();
  if (!valid(row) || column == kColFixed) return QString();
  return rows_[row - 1].fields[static_cast<size_t>(column - 1)];
}

void Directory::setText(int row, int column, const QString& value) {
  if (!valid(row) || column < 1 || column >= kDirectoryColumnCount) return;
  rows_[row - 1].fields[static_cast<size_t>(column - 1)] = value;
}

int Directory::rowHeight(int row) const {
  if (row == 0) return kHeaderRowHeight;
  return valid(row) ? rows_[row - 1].height : 0;
}

void Directory::setRowHeight(int row, int twips) {
  if (valid(row)) rows_[row - 1].height = twips;
}

bool Directory::hasHeadingLook(int row) const { return valid(row) && rows_[row - 1].headingLook; }

bool Directory::isHeading(int row) const {
  long long a = 0, b = 0;
  return valid(row) && HeadingRange(text(row, kColFlag), a, b);
}

void Directory::addToCell(int row, int column, double amount) {
  if (!valid(row)) return;
  setText(row, column, NumText(Val(text(row, column)) + amount));
}

void Directory::PutText(int row, int column, const QString& value, int mode) {
  if (mode == 1)
    addToCell(row, column, Val(value));
  else
    setText(row, column, value);
}

void Directory::rescore(int row) {
  if (!valid(row)) return;
  setText(row, kColScore, ScoreText(Val(GetText(row, kColDone)), Val(GetText(row, kColRight))));
}

// --- the tree ---

void Directory::show(const QString& formatText) {
  setFormatText(formatText);
  IniRows(1, rowCount());
}

void Directory::OutLook(int row) {
  if (valid(row)) rows_[row - 1].headingLook = true;
}

void Directory::IniRows(int first, int last) {
  const bool wholeGrid = first == 1 && last == rowCount();
  QString indent;
  if (first != 1 && valid(first - 1)) indent = Space(leadingBlanks(text(first - 1, kColLabel)));

  int r = first;
  while (r <= last) {
    if (!valid(r)) {
      ++r;
      continue;
    }
    setRowHeight(r, kLeafRowHeight);
    int next = r + 1;
    long long a = 0, b = 0;
    const bool heading = HeadingRange(text(r, kColFlag), a, b);
    QString label = text(r, kColLabel);
    if (heading) {
      OutLook(r);
      if (!hasSign(label))
        label = QStringLiteral("+") + label;
      else if (!label.contains(u'+'))
        label = ReplaceString(label, QStringLiteral("-"), QStringLiteral("+"));
      // Children hidden; sums over leaf rows only, so nested headings never
      // count twice.
      double sums[std::size(kSummedColumns)] = {};
      for (long long i = qMax(1LL, a); i <= qMin(b, static_cast<long long>(rowCount())); ++i) {
        const int child = static_cast<int>(i);
        setRowHeight(child, 0);
        if (isHeading(child)) continue;
        for (size_t k = 0; k < std::size(kSummedColumns); ++k) sums[k] += Val(text(child, kSummedColumns[k]));
      }
      for (size_t k = 0; k < std::size(kSummedColumns); ++k) setText(r, kSummedColumns[k], NumText(sums[k]));
      setText(r, kColScore, ScoreText(sums[1], sums[2]));
      setRowHeight(r, kHeadingRowHeight);
      // A range that does not lie below the heading cannot send the walk back.
      if (b >= r) next = static_cast<int>(qMin(b, static_cast<long long>(last)) + 1);
    } else {
      rescore(r);
    }
    if (wholeGrid)
      label = LTrim(label);
    else
      label = indent + Space(heading ? 4 : 5) + LTrim(label);
    setText(r, kColLabel, label);
    r = next;
  }
}

bool Directory::toggleHeading(int row) {
  long long a = 0, b = 0;
  if (!valid(row) || !HeadingRange(text(row, kColFlag), a, b)) return false;
  const QString label = text(row, kColLabel);
  if (label.contains(u'+')) {
    setText(row, kColLabel, ReplaceString(label, QStringLiteral("+"), QStringLiteral("-")));
    IniRows(static_cast<int>(qBound(-1LL, a, static_cast<long long>(rowCount()) + 1)),
            static_cast<int>(qBound(-1LL, b, static_cast<long long>(rowCount()) + 1)));
  } else if (label.contains(u'-')) {
    setText(row, kColLabel, ReplaceString(label, QStringLiteral("-"), QStringLiteral("+")));
    for (long long i = qMax(1LL, a); i <= qMin(b, static_cast<long long>(rowCount())); ++i)
      setRowHeight(static_cast<int>(i), 0);
  }
  return true;
}

// --- the end of a run ---

void Directory::addRunCounters(int gridRow, long long runSeconds, long long doneInRun, long long rightInRun,
                               long long outInRun, QString& runStatText) {
  const double minutes = Int(static_cast<double>(runSeconds) / 60);
  auto addAll = [&](int row) {
    addToCell(row, kColMinutes, minutes);
    addToCell(row, kColEligible, -static_cast<double>(outInRun));
    addToCell(row, kColDone, static_cast<double>(doneInRun));
    addToCell(row, kColRight, static_cast<double>(rightInRun));
    rescore(row);
  };
  addAll(gridRow);
  runStatText += GetStrFromNum(gridRow, 5) + GetStrFromNum(doneInRun, 5) + GetStrFromNum(rightInRun, 5);
  for (int r = 1; r <= rowCount(); ++r)
    if (IsInTheFlag(text(r, kColFlag), gridRow) && hasSign(text(r, kColLabel))) addAll(r);
}

DirectoryClick ClickDirectoryRow(Directory& directory, int row, const Env& env) {
  if (row < 1 || row > directory.rowCount()) return DirectoryClick::Nothing;
  if (Val(directory.GetText(row, kColTotal)) == 0) {
    if (row == directory.rowCount()) return DirectoryClick::Nothing;
    env.msgBox(kNoQuestionsYet);
    return DirectoryClick::Empty;
  }
  if (directory.toggleHeading(row)) {
    if (Val(directory.GetText(row, kColTotal)) == 0) env.msgBox(kNoQuestionsYet);
    return DirectoryClick::Toggled;
  }
  return DirectoryClick::Leaf;
}

bool AltDbfData(const QString& folder, const QString& table, const QString& statText, long long runSeconds,
                long long outInRun) {
  DbfTable t = DbfTable::open(AppPath(folder, table), DbfTable::Mode::ReadWrite);
  if (!t.isOpen()) return false;
  const QList<int> rows = t.rows();
  const double minutes = Int(static_cast<double>(runSeconds) / 60);
  const qsizetype groups = Len(statText) / 15;
  for (int i = 1; i <= groups; ++i) {
    const long long row = Str2Num(statText, i, 1);
    if (row < 1 || row > rows.size()) continue;  // the move fails: nothing is edited
    const int rec = rows[static_cast<qsizetype>(row - 1)];
    auto add = [&](int field, double amount) { t.setNumber(rec, field, t.number(rec, field) + amount); };
    add(tables::kDirDone, static_cast<double>(Str2Num(statText, i, 2)));
    add(tables::kDirRight, static_cast<double>(Str2Num(statText, i, 3)));
    add(tables::kDirMinutes, minutes);
    add(tables::kDirEligible, -static_cast<double>(outInRun));
  }
  t.close();
  return true;
}

}  // namespace mj
