#include "practice/directory_widget.h"

#include <QApplication>
#include <QFontMetrics>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QScrollBar>
#include <array>

#include "platform/vbtext.h"
#include "settings/settings_window.h"

namespace mj {

namespace {

// Room beside the text of a cell.
constexpr int kCellPadding = 12;

Qt::Alignment alignmentOf(QChar c) {
  return (c == u'^' ? Qt::AlignHCenter : c == u'>' ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

QColor colorOf(unsigned colorNumber) {
  return QColor(static_cast<int>(colorNumber & 0xFF), static_cast<int>((colorNumber >> 8) & 0xFF),
                static_cast<int>((colorNumber >> 16) & 0xFF));
}

}  // namespace

DirectoryGrid::DirectoryGrid(QWidget* parent) : QTableWidget(parent) {
  setObjectName(QStringLiteral("MSFlexGrid1"));
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  // No selection colour over the rows: the blue of the headings stays visible.
  setSelectionMode(QAbstractItemView::NoSelection);
  setWordWrap(false);
  verticalHeader()->setVisible(false);
  // Row heights come from the directory's fonts alone (refresh), not from
  // the grid's own font size.
  verticalHeader()->setMinimumSectionSize(1);
  horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  horizontalHeader()->setHighlightSections(false);
  connect(this, &QTableWidget::cellClicked, this, [this](int r, int) { clickRow(r + 1); });
}

void DirectoryGrid::showDirectory(const Directory& directory, double scaleY) {
  directory_ = directory;
  scaleY_ = scaleY > 0 ? scaleY : 1.0;
  refresh();
  // Every entry starts at the labels, whatever was scrolled before, and at
  // the first row for the keys.
  horizontalScrollBar()->setValue(0);
  for (int r = 0; r < rowCount(); ++r)
    if (!isRowHidden(r)) {
      setCurrentCell(r, kColLabel);
      break;
    }
  setFocus(Qt::OtherFocusReason);
}

int DirectoryGrid::shownRowHeight(int row) const {
  if (row == 0) return horizontalHeader()->height();
  if (row < 1 || row > rowCount() || isRowHidden(row - 1)) return 0;
  return rowHeight(row - 1);
}

int DirectoryGrid::shownColumnWidth(int column) const {
  if (column < 0 || column >= columnCount() || isColumnHidden(column)) return 0;
  return columnWidth(column);
}

QFont DirectoryGrid::ownFont() const {
  QFont f = QApplication::font(this);
  f.setPointSize(kDirectoryFontSize);
  return f;
}

void DirectoryGrid::refresh() {
  setUpdatesEnabled(false);
  const Directory& d = directory_;
  setColumnCount(kDirectoryColumnCount);
  setRowCount(d.rowCount());

  // Every cell is drawn in the directory's own fonts, whatever size the
  // grid itself was given: the columns stay as they are after a run with a
  // large question font.
  const QFont leafFont = ownFont();
  QFont headerFont = leafFont;
  headerFont.setPointSize(kHeaderFontSize);
  QFont headingFont = leafFont;
  headingFont.setPointSize(kHeadingFontSize);
  horizontalHeader()->setFont(headerFont);
  std::array<bool, kDirectoryColumnCount> visible{};
  for (int c = 0; c < kDirectoryColumnCount; ++c) visible[c] = IsVisibleColumn(c);

  // The header row: the texts of the format at size 15 from column 1 on,
  // 400 twips high. Their leading and trailing blanks, which widened the
  // columns of the design, are left out: the columns are as wide as what
  // they show, so that all of them fit a 1024 pixel window.
  std::array<int, kDirectoryColumnCount> widths{};
  for (int c = 0; c < kDirectoryColumnCount; ++c) {
    const Directory::HeaderCell cell = c < d.header().size() ? d.header()[c] : Directory::HeaderCell{u'<', QString()};
    auto* item = new QTableWidgetItem(cell.text.trimmed());
    item->setTextAlignment(alignmentOf(cell.alignment));
    const QFont& f = c == kColFixed ? leafFont : headerFont;
    item->setFont(f);
    setHorizontalHeaderItem(c, item);
    widths[c] = QFontMetrics(f).horizontalAdvance(item->text()) + kCellPadding;
  }
  horizontalHeader()->setFixedHeight(
      qMax(static_cast<int>(kHeaderRowHeight * scaleY_ / 15), QFontMetrics(headerFont).height() + 6));

  // Headings and banks alike are one row high: the taller of the two fonts,
  // or the heading height of the design when that is more.
  const int rowHeight = qMax(static_cast<int>(kHeadingRowHeight * scaleY_ / 15),
                             qMax(QFontMetrics(leafFont).height(), QFontMetrics(headingFont).height()) + 6);
  const QColor headingColor = colorOf(kHeadingColor);
  const QColor fixedBack = palette().color(QPalette::Button);
  const QFontMetrics leafMetrics(leafFont);
  const QFontMetrics headingMetrics(headingFont);
  for (int r = 1; r <= d.rowCount(); ++r) {
    const bool look = d.hasHeadingLook(r);
    for (int c = 0; c < kDirectoryColumnCount; ++c) {
      const QString text = d.text(r, c);
      auto* item = new QTableWidgetItem(text);
      item->setTextAlignment(alignmentOf(c < d.header().size() ? d.header()[c].alignment : QChar(u'<')));
      item->setForeground(Qt::black);
      item->setFont(leafFont);
      if (c == kColFixed) item->setBackground(fixedBack);
      const bool blue = look && visible[c];
      if (blue) {
        item->setForeground(headingColor);
        item->setFont(headingFont);
      }
      setItem(r - 1, c, item);
      // Widths follow what the cells hold, hidden rows included, so that
      // opening a heading does not move the columns.
      widths[c] = qMax(widths[c], (blue ? headingMetrics : leafMetrics).horizontalAdvance(text) + kCellPadding);
    }
    const int twips = d.rowHeight(r);
    setRowHidden(r - 1, twips == 0);
    if (twips > 0) setRowHeight(r - 1, rowHeight);
  }
  for (int c = 0; c < kDirectoryColumnCount; ++c) {
    const bool shown = c == kColFixed || visible[c];
    setColumnHidden(c, !shown);
    if (shown) setColumnWidth(c, widths[c]);
  }
  setUpdatesEnabled(true);
}

void DirectoryGrid::showEvent(QShowEvent* event) {
  QTableWidget::showEvent(event);
  // The grid comes back after a run: with the labels in view, ready for
  // the keys.
  horizontalScrollBar()->setValue(0);
  setFocus(Qt::OtherFocusReason);
}

void DirectoryGrid::keyPressEvent(QKeyEvent* event) {
  // Enter or the space bar on a row is a click on it.
  const int key = event->key();
  if ((key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) && currentRow() >= 0 &&
      !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
    clickRow(currentRow() + 1);
    return;
  }
  QTableWidget::keyPressEvent(event);
}

DirectoryClick DirectoryGrid::clickRow(int row) {
  if (!env_) return DirectoryClick::Nothing;
  const DirectoryClick what = ClickDirectoryRow(directory_, row, *env_);
  if (what == DirectoryClick::Toggled) {
    refresh();
    emit headingToggled(row);
  } else if (what == DirectoryClick::Leaf) {
    emit leafClicked(row);
  }
  return what;
}

// --- the main window's side of the entries ---

void SettingsWindowScheduling::reload() { window_.loadWindow(); }

int SettingsWindowScheduling::number(int index) const {
  return static_cast<qint16>(Val(window_.numText(index)->text()));
}

GridFaceUi::~GridFaceUi() {
  if (waiting_) QApplication::restoreOverrideCursor();
}

bool GridFaceUi::needsData() { return p_.needsData ? p_.needsData() : true; }

void GridFaceUi::prepareGridFace() {
  if (p_.showGridFace) p_.showGridFace();
  if (p_.grid) {
    QPalette pal = p_.grid->palette();
    pal.setColor(QPalette::Text, Qt::black);
    p_.grid->setPalette(pal);
  }
}

void GridFaceUi::setWaitCursor(bool on) {
  if (on == waiting_) return;
  waiting_ = on;
  if (on)
    QApplication::setOverrideCursor(Qt::WaitCursor);
  else
    QApplication::restoreOverrideCursor();
}

void GridFaceUi::hideFrames() {
  for (QWidget* f : p_.frames) f->setVisible(false);
}

void GridFaceUi::showCounting(const QString& text) {
  if (p_.label) {
    p_.label->setText(text);
    p_.label->setVisible(true);
  }
  if (p_.progress) {
    p_.progress->setRange(0, 100);
    p_.progress->setValue(0);
    p_.progress->setVisible(true);
  }
  // Let the label and the bar be drawn before the count starts; no input is
  // taken meanwhile.
  if (p_.window) p_.window->update();
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void GridFaceUi::setProgressMaximum(int maximum) {
  if (p_.progress) p_.progress->setRange(0, qMax(0, maximum));
}

void GridFaceUi::setProgressValue(int value) {
  // A value past the end leaves the bar full.
  if (p_.progress) p_.progress->setValue(qBound(p_.progress->minimum(), value, p_.progress->maximum()));
}

void GridFaceUi::hideCounting() {
  if (p_.label) p_.label->setVisible(false);
  if (p_.progress) p_.progress->setVisible(false);
}

void GridFaceUi::showDirectory(const Directory& directory) {
  if (!p_.grid) return;
  p_.grid->showDirectory(directory, p_.scaleY);
  p_.grid->setVisible(true);
  if (p_.window) p_.window->update();
}

}  // namespace mj
