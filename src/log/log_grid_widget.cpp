#include "log/log_grid_widget.h"

#include <QHeaderView>
#include <QKeyEvent>

namespace mj {

QList<GridColumn> ParseGridFormat(const QString& format) {
  QList<GridColumn> out;
  for (const QString& part : format.split(u'|')) {
    GridColumn c;
    c.caption = part;
    if (part.startsWith(u'<')) {
      c.caption = part.mid(1);
    } else if (part.startsWith(u'^')) {
      c.alignment = Qt::AlignHCenter;
      c.caption = part.mid(1);
    } else if (part.startsWith(u'>')) {
      c.alignment = Qt::AlignRight;
      c.caption = part.mid(1);
    }
    out.append(c);
  }
  return out;
}

LogGridWidget::LogGridWidget(QWidget* parent) : QTableWidget(parent) {
  setObjectName(QStringLiteral("MSFlexGrid2"));
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setSelectionBehavior(QAbstractItemView::SelectRows);
  setSelectionMode(QAbstractItemView::SingleSelection);
  verticalHeader()->setVisible(false);
  QFont f = font();
  f.setPointSize(10);
  setFont(f);
  connect(this, &QTableWidget::cellDoubleClicked, this, [this](int row, int) { emit rowChosen(row); });
}

void LogGridWidget::showGrid(const LogGrid& grid) {
  grid_ = grid;
  const QList<GridColumn> columns = ParseGridFormat(grid.format);
  clear();
  setColumnCount(static_cast<int>(columns.size()));
  setRowCount(static_cast<int>(grid.rows.size()));
  for (int c = 0; c < columns.size(); ++c) {
    auto* head = new QTableWidgetItem(columns[c].caption);
    head->setTextAlignment(columns[c].alignment | Qt::AlignVCenter);
    setHorizontalHeaderItem(c, head);
  }
  for (int r = 0; r < grid.rows.size(); ++r) {
    for (int c = 1; c < columns.size(); ++c) {
      auto* item = new QTableWidgetItem(grid.rows[r].value(c - 1));
      item->setTextAlignment(Qt::AlignCenter);
      setItem(r, c, item);
    }
  }
  resizeColumnsToContents();
  // The fixed column of the old grid holds nothing.
  setColumnWidth(0, 12);
  if (rowCount() > 0) setCurrentCell(0, 1);
}

QString LogGridWidget::cellText(int row, int column) const {
  if (row == 0) {
    const QTableWidgetItem* h = horizontalHeaderItem(column);
    return h ? h->text() : QString();
  }
  const QTableWidgetItem* i = item(row - 1, column);
  return i ? i->text() : QString();
}

void LogGridWidget::keyPressEvent(QKeyEvent* event) {
  if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && currentRow() >= 0) {
    emit rowChosen(currentRow());
    return;
  }
  QTableWidget::keyPressEvent(event);
}

}  // namespace mj
