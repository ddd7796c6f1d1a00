#pragma once
// The lists of past work that the list grid of the main window shows, and
// the questions a double click on one of their rows practises again:
//
//   mode 1  做题日志: one row per day on which questions were done, from the
//           practice records of the question index;
//   mode 2  按日期做刚更新的试题: one row per day file of \更新的题;
//   mode 3  做不太确定的试题: one row per day file of \模糊题;
//   mode 4  按法律名做刚更新的试题: one row per law or paper among all
//           updated questions.
//
// A practice record (story) holds entries of 20 characters, the newest
// first: the time as yyyy-mm-dd hh:mm and the answer given, right-aligned
// in 4. The counts of a day look only at the last 20 characters of
// 20 blanks + story, the oldest entry still kept: a question counts on the
// day of that entry only, so that a day can be listed with fewer questions,
// or none, than were done on it.
//
// Everything here is logic on the question index and the files; the grid
// widget (log_grid_widget.h) only shows a LogGrid.

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

#include "bank/item_index.h"
#include "platform/env.h"

namespace mj {

enum class LogMode { Days = 1, UpdatedByDay = 2, UncertainByDay = 3, UpdatedByLaw = 4 };

// The cells of `width` characters of a text in ascending order (the oldest
// day first for yyyymmdd cells); characters behind the last whole cell are
// dropped. A text shorter than one cell gives the empty text.
QString SortCells(const QString& text, int width);

// The date yyyy-mm-dd of a cell yyyymmdd, by position.
QString DateOfCell(const QString& cell);

// --- mode 1 ---
// The distinct days (yyyymmdd cells, one behind the other, in the order
// met) of every entry of every record longer than 10 characters.
QString GetAllDoneDays(const ItemIndex& index);
// Count, right answers and score of a day (yyyymmdd), three fields of 10
// characters right-aligned. A question counts when the date stands in the
// last 20 characters of 20 blanks + story; it is right when the answer at
// the last place of the date in that text is the question's key.
QString GetDayStat(const ItemIndex& index, const QString& cell);
// The questions of a day (yyyy-mm-dd) by the same test, in index order:
// all of them, or those answered wrongly there.
QString GetDayItemIds(const ItemIndex& index, const QString& date, bool wrongOnly);

// --- modes 2 and 3 ---
struct DayFileStat {
  int count = 0;  // IDs of the list, repeats included
  int right = 0;
  int score = 0;  // Int(right / max(count, 1) * 100), in floating point
};
DayFileStat GetDayFileStat(const ItemIndex& index, const QString& date, const QString& list);
// Mode 3 on "是": the IDs of the list, in its order, that the index has, that
// pass the date test and that were answered wrongly there. On "否" the list.
QString KeepWrongItems(const ItemIndex& index, const QString& list, const QString& date, bool answerYes);

// --- mode 4 ---
// The distinct 5-character bank codes of an ID list, in the order met.
QString GetBankCodes(const QString& list);
// The title of a bank code: from the first row of \dbf\33ok.mmd whose fields
// a and b are filled and whose b holds "\" + code, field a up to and with
// its first "》", trimmed. Empty for a code that begins with "0" (a paper)
// and for one that no row names.
QString GetBankTitle(const Env& env, const QString& code);
// The IDs of an ID list whose first 5 characters are code (of 5 characters).
QString GetIdsOfBank(const QString& list, const QString& code);

// --- the grid ---
// The format of the grid's header: columns separated by "|", a leading "<"
// or "^" aligning a column left or centred.
QString LogGridFormat(LogMode mode);
// The label of a day (yyyymmdd): year, "年", month and day right-aligned in
// two characters with "月" and "日", and in modes 2 and 3 the caption of the
// list behind it: "2003年 6月15日更新的试题".
QString DayLabel(const QString& cell, LogMode mode);
// The date yyyy-mm-dd that a label reads back by position; a label shorter
// than 11 characters reads as 6666-66-66, which no record holds.
QString DateOfLabel(const QString& label);

struct LogGrid {
  LogMode mode = LogMode::Days;
  QString format;
  // The cells of columns 1 and on: modes 1 to 3 the label, the count, the
  // right answers and the score + "%"; mode 4 the title and the count.
  QList<QStringList> rows;
  // Mode 4: the sorted bank codes of the rows, their titles, and the list of
  // all updated questions.
  QStringList codes;
  QStringList titles;
  QString list;
};

// The grid of mode 1. Without any record the box "无做题记录" is shown and
// there is no grid.
std::optional<LogGrid> BuildDaysGrid(const Env& env, const ItemIndex& index);
// The grid of mode 2 or 3 from the day files of their folder.
LogGrid BuildDayFileGrid(const Env& env, const ItemIndex& index, LogMode mode);
// The grid of mode 4. No grid when there are no updated questions.
std::optional<LogGrid> BuildLawGrid(const Env& env);
// The bank code whose title (trimmed) is the given one; empty when none.
QString GetBankCodeByTitle(const LogGrid& grid, const QString& title);

// A double click on row `row` (from 0) of a grid: in modes 1 and 3 the
// question whether only the wrong ones are wanted, then the list of the
// run. An empty list has been told by a box (modes 1 to 3).
QString IdsOfRow(const Env& env, const ItemIndex& index, const LogGrid& grid, int row);

}  // namespace mj
