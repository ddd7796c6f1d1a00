#pragma once
// The list grid MSFlexGrid2 of the main window: shows a LogGrid (the days of
// practice, the day files of updated and uncertain questions, the updated
// questions by law) and reports the row the user chooses by a double click
// or the Enter key. What the row then practises is the caller's business
// (the main window starts the run), so that this widget needs nothing above
// the log subsystem.

#include <QTableWidget>

#include "log/practice_log.h"

namespace mj {

// A grid header format ("<|<caption|^caption2") as columns.
struct GridColumn {
  QString caption;
  Qt::Alignment alignment = Qt::AlignLeft;
};
QList<GridColumn> ParseGridFormat(const QString& format);

class LogGridWidget : public QTableWidget {
  Q_OBJECT
 public:
  explicit LogGridWidget(QWidget* parent = nullptr);

  // Fills the grid: row 0 of the old grid is the header, column 0 its fixed
  // column; the cells stand centred at font size 10.
  void showGrid(const LogGrid& grid);
  const LogGrid& grid() const { return grid_; }
  // The text of a cell as the old grid numbered them: row 1 is the first row
  // under the header, column 1 the first column beside the fixed one.
  QString cellText(int row, int column) const;

 signals:
  // The user chose row (from 0) of grid().rows.
  void rowChosen(int row);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  LogGrid grid_;
};

}  // namespace mj
