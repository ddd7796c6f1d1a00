#pragma once
// The bank directory as data: the grid MSFlexGrid1 of the main window shows
// one row per row of the directory table (33ok.mmd for the internal banks,
// csface.mmd for the simulated papers), drawn as a tree of headings with the
// signs "+" (closed) and "-" (open), numbers per bank and sums per heading.
//
// Grid row 0 is the header; grid row r (from 1) is table row r. Grid column 0
// is a narrow fixed column; column c from 1 shows field c - 1 of the table.
// A row whose column 3 holds "a-b" is a heading over the rows a to b (which
// may be headings themselves); any other row is a leaf, one bank.

#include <QList>
#include <QString>
#include <array>

#include "bank/tables.h"
#include "platform/env.h"

namespace mj {

enum class DirectoryMode {
  ShiTi,    // 内部题库: the internal banks
  CeShi,    // 摸拟试卷: the simulated papers
  ChaJuan,  // 查卷: the simulated papers, only questions not done or answered wrong
};

// Grid columns: field c of the directory table shows at column c + 1.
enum DirectoryColumn {
  kColFixed = 0,
  kColLabel = tables::kDirLabel + 1,  // the label, with the sign of a heading
  kColFile = tables::kDirFile + 1,    // the bank file
  kColFlag = tables::kDirFlag + 1,    // "a-b" for a heading
  kColId = tables::kDirId + 1,        // identification number
  kColTotal = tables::kDirTotal + 1,  // questions in the bank
  kColDone = tables::kDirDone + 1,    // answers given
  kColRight = tables::kDirRight + 1,  // right answers
  kColScore = tables::kDirScore + 1,  // the score text
  kColUnused9 = tables::kDirUnused9 + 1,
  kColUnused10 = tables::kDirUnused10 + 1,
  kColMinutes = tables::kDirMinutes + 1,    // minutes of practice
  kColEligible = tables::kDirEligible + 1,  // due questions
};
static_assert(kColLabel == 1 && kColEligible == 12);
constexpr int kDirectoryColumnCount = 13;
constexpr int kDirectoryFieldCount = 12;

// The columns shown, as two-digit numbers; all others have width 0.
inline const QString kVisibleColumns = QStringLiteral("01050607081112");
bool IsVisibleColumn(int column);

// Row heights in twips; 0 hides a row.
constexpr int kHeaderRowHeight = 400;
constexpr int kHeadingRowHeight = 300;
constexpr int kLeafRowHeight = 240;
// The look of a heading row in the shown columns: QBColor(9), size 11.
constexpr unsigned kHeadingColor = 0xFF0000;  // colour number (blue * 65536 + green * 256 + red)
constexpr int kHeadingFontSize = 11;
// The directory's own text size: banks as large as headings, whatever the
// size of the question text.
constexpr int kDirectoryFontSize = 11;
constexpr int kHeaderFontSize = 15;

// The column captions of a mode, "|"-separated, each led by its alignment
// ("<" left, "^" centred); the blanks set the widths.
QString DirectoryHeader(DirectoryMode mode);
// The grid's format text: "<a        |<" + U+3000 + the header of the mode.
QString GridFormatText(DirectoryMode mode);

// The score: the whole part of right / done * 100 and "%"; "0%" when done is 0.
QString ScoreText(double done, double right);

// The bounds of a heading's flag "a-b": true when the text holds a "-"; a
// and b are the numbers before and behind it (0 when there is none). Whether
// a row lies in the range is IsInTheFlag (bank/bank_text.h).
bool HeadingRange(const QString& flag, long long& first, long long& last);

class Directory {
 public:
  struct HeaderCell {
    QChar alignment;  // '<' left, '^' centred (anything else: left)
    QString text;
  };
  using Fields = std::array<QString, kDirectoryFieldCount>;

  Directory() = default;

  // --- binding ---
  // Fills the rows from the directory table `table` in `folder` (the fields
  // as text, numbers without decimals, blank fields empty), all rows shown,
  // no row styled. A table that cannot be opened gives no rows; false then.
  bool load(const QString& folder, const QString& table);
  // Fills the rows from given fields (tests, other sources).
  void setRows(const QList<Fields>& rows);

  // --- the format and the header row ---
  void setFormatText(const QString& format);
  const QString& formatText() const { return format_; }
  // The header cells of the columns 0 to 12 from the format text.
  const QList<HeaderCell>& header() const { return header_; }

  // --- cells and rows (rows from 1; row 0 is the header) ---
  int rowCount() const { return static_cast<int>(rows_.size()); }
  QString text(int row, int column) const;
  void setText(int row, int column, const QString& value);
  int rowHeight(int row) const;
  void setRowHeight(int row, int twips);
  bool isRowHidden(int row) const { return rowHeight(row) == 0; }
  bool hasHeadingLook(int row) const;
  bool isHeading(int row) const;

  // GetText: the text of a cell; empty outside the grid.
  QString GetText(int row, int column) const { return text(row, column); }
  // PutText: writes a cell; mode 1 adds `value` to the cell as a number (a
  // cell that is no number counts as 0), any other mode overwrites it.
  void PutText(int row, int column, const QString& value, int mode);

  // --- the tree ---
  // ShowMsFlexGrid: the header from the format text, then IniRows over the
  // whole grid, which leaves the top level shown with every heading closed.
  void show(const QString& formatText);
  // Prepares the rows first to last: headings get their look, the sign "+",
  // their children hidden, the sums of their leaf rows and the score; leaves
  // get their score; labels are indented under the row above `first`
  // (left-trimmed when the call covers the whole grid).
  void IniRows(int first, int last);
  // The heading look of a row.
  void OutLook(int row);
  // A click on a heading: "+" opens it (its child headings closed), "-"
  // closes it. False for a leaf, which is left alone.
  bool toggleHeading(int row);

  // --- the end of a run ---
  // Adds the counters of a finished run to the row `gridRow` and to every
  // heading with a sign whose range holds it: minutes (whole part of
  // runSeconds / 60) to column 11, answers to 6, right answers to 7, the
  // questions finished to be subtracted from 12, and the score again. Appends
  // the row's 15-character group (row, answers, right answers) to runStatText.
  void addRunCounters(int gridRow, long long runSeconds, long long doneInRun, long long rightInRun, long long outInRun,
                      QString& runStatText);

 private:
  struct Row {
    Fields fields;
    int height = kLeafRowHeight;
    bool headingLook = false;
  };
  bool valid(int row) const { return row >= 1 && row <= rowCount(); }
  void addToCell(int row, int column, double amount);
  void rescore(int row);

  QString format_;
  QList<HeaderCell> header_;
  QList<Row> rows_;
};

// What a click on a directory row did.
enum class DirectoryClick {
  Nothing,  // a row outside the grid, or a row with no questions at the grid's end
  Empty,    // no questions here: the box "对不起，该部分试题待以后追加。" was shown
  Toggled,  // a heading was opened or closed
  Leaf,     // a bank: practice starts here
};
inline const QString kNoQuestionsYet = QStringLiteral("对不起，该部分试题待以后追加。");

// The directory's part of a click on row `row`: a row whose total (column 5)
// is 0 gets the box (on every row but the last, which stays silent); a
// heading is toggled, and gets the box as well when its total is 0 after
// that; a leaf is left to the practice run.
DirectoryClick ClickDirectoryRow(Directory& directory, int row, const Env& env);

// Writes the counters of finished runs into the directory table: for each
// 15-character group of statText (row number, answers, right answers, 5
// places each) the table row of that number gets answers added to field 5,
// right answers to field 6, the whole minutes of runSeconds to field 10 and
// outInRun subtracted from field 11. Field 7, the score, is not written.
// False when the table cannot be opened for writing.
bool AltDbfData(const QString& folder, const QString& table, const QString& statText, long long runSeconds,
                long long outInRun);

}  // namespace mj
