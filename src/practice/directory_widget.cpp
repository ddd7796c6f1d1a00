#include "practice/directory_widget.h"

#include <QApplication>
#include <QFontMetrics>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <array>

#include "platform/vbtext.h"
#include "settings/settings_window.h"

namespace mj {

namespace {

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
  horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  horizontalHeader()->setHighlightSections(false);
  connect(this, &QTableWidget::cellClicked, this, [this](int r, int) { clickRow(r + 1); });
}

void DirectoryGrid::showDirectory(const Directory& directory, double scaleX, double scaleY) {
  directory_ = directory;
  scaleX_ = scaleX > 0 ? scaleX : 1.0;
  scaleY_ = scaleY > 0 ? scaleY : 1.0;
  refresh();
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

void DirectoryGrid::refresh() {
  setUpdatesEnabled(false);
  const Directory& d = directory_;
  setColumnCount(kDirectoryColumnCount);
  setRowCount(d.rowCount());

  // The header row: the texts of the format, at size 15 from column 1 on,
  // 400 twips high.
  QFont headerFont = font();
  headerFont.setPointSize(kHeaderFontSize);
  horizontalHeader()->setFont(headerFont);
  const QFontMetrics base(font());
  std::array<bool, kDirectoryColumnCount> visible{};
  for (int c = 0; c < kDirectoryColumnCount; ++c) visible[c] = IsVisibleColumn(c);
  for (int c = 0; c < kDirectoryColumnCount; ++c) {
    const Directory::HeaderCell cell = c < d.header().size() ? d.header()[c] : Directory::HeaderCell{u'<', QString()};
    auto* item = new QTableWidgetItem(cell.text);
    item->setTextAlignment(alignmentOf(cell.alignment));
    item->setFont(c == kColFixed ? font() : headerFont);
    setHorizontalHeaderItem(c, item);
    // The format text sets the width from its text; the screen factor widens
    // it. The caption at its own size always fits, except in the narrow
    // fixed column.
    const bool shown = c == kColFixed || visible[c];
    setColumnHidden(c, !shown);
    if (shown) {
      const int scaled = static_cast<int>((base.horizontalAdvance(cell.text) + 8) * scaleX_);
      const int caption = QFontMetrics(headerFont).horizontalAdvance(cell.text) + 16;
      setColumnWidth(c, c == kColFixed ? scaled : qMax(scaled, caption));
    }
  }
  horizontalHeader()->setFixedHeight(
      qMax(static_cast<int>(kHeaderRowHeight * scaleY_ / 15), QFontMetrics(headerFont).height() + 6));

  QFont headingFont = font();
  headingFont.setPointSize(kHeadingFontSize);
  const QColor headingColor = colorOf(kHeadingColor);
  const QColor fixedBack = palette().color(QPalette::Button);
  const int minLeaf = base.height() + 4;
  const int minHeading = QFontMetrics(headingFont).height() + 4;
  for (int r = 1; r <= d.rowCount(); ++r) {
    const bool look = d.hasHeadingLook(r);
    for (int c = 0; c < kDirectoryColumnCount; ++c) {
      auto* item = new QTableWidgetItem(d.text(r, c));
      item->setTextAlignment(alignmentOf(c < d.header().size() ? d.header()[c].alignment : QChar(u'<')));
      item->setForeground(Qt::black);
      if (c == kColFixed) item->setBackground(fixedBack);
      if (look && visible[c]) {
        item->setForeground(headingColor);
        item->setFont(headingFont);
      }
      setItem(r - 1, c, item);
    }
    const int twips = d.rowHeight(r);
    setRowHidden(r - 1, twips == 0);
    if (twips > 0) setRowHeight(r - 1, qMax(static_cast<int>(twips * scaleY_ / 15), look ? minHeading : minLeaf));
  }
  setUpdatesEnabled(true);
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
  p_.grid->showDirectory(directory, p_.scaleX, p_.scaleY);
  p_.grid->setVisible(true);
  if (p_.window) p_.window->update();
}

}  // namespace mj
