#pragma once
// The directory grid MSFlexGrid1 of the main window: shows a Directory with
// its header row, hidden columns and rows, and the blue look of headings. A
// click on a heading opens or closes it; a click on a bank is announced.

#include <QList>
#include <QTableWidget>
#include <functional>

#include "platform/env.h"
#include "practice/directory.h"
#include "practice/directory_entries.h"

class QLabel;
class QProgressBar;

namespace mj {
class Form4;
}

namespace mj {

class DirectoryGrid : public QTableWidget {
  Q_OBJECT
 public:
  explicit DirectoryGrid(QWidget* parent = nullptr);

  // The message boxes of a click come from here; without it a click does
  // nothing.
  void setEnv(const Env* env) { env_ = env; }

  // Shows a directory, scrolled to its left edge. Each column is as wide as
  // its header caption and its cells need, in the
  // directory's own fonts; headings and banks have one row height, at least
  // the heading height of the design (twips scaled by scaleY).
  void showDirectory(const Directory& directory, double scaleY);
  Directory& directory() { return directory_; }
  const Directory& directory() const { return directory_; }
  // Draws the directory again after a change of its rows.
  void refresh();

  // A click on grid row `row` (from 1), as a mouse click does it.
  DirectoryClick clickRow(int row);

  // Pixel height and width the grid gives a row and a column (0 hidden).
  int shownRowHeight(int row) const;
  int shownColumnWidth(int column) const;

  // The font the cells of banks are drawn in (kDirectoryFontSize); the
  // grid's own font size, which a practice run sets, does not change it.
  QFont ownFont() const;

 protected:
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 signals:
  // A bank row was clicked: practice starts there.
  void leafClicked(int row);
  // A heading was opened or closed.
  void headingToggled(int row);

 private:
  const Env* env_ = nullptr;
  Directory directory_;
  double scaleY_ = 1.0;
};

// The settings as the entries read them through the settings window: a
// reload is the window's load procedure, the numbers are what its fields
// NumText(i) show.
class SettingsWindowScheduling : public SettingsScheduling {
 public:
  SettingsWindowScheduling(Form4& window, Settings& settings, const Env& env)
      : SettingsScheduling(settings, env), window_(window) {}
  void reload() override;
  int number(int index) const override;

 private:
  Form4& window_;
};

// The main window's side of the directory entries, over its controls.
class GridFaceUi : public DirectoryEntryUi {
 public:
  struct Parts {
    std::function<bool()> needsData;     // the unpack entry runs when the data set is missing
    std::function<void()> showGridFace;  // news labels hidden, the grid face shown
    QWidget* window = nullptr;           // refreshed while a count runs
    QLabel* label = nullptr;             // Label7
    QProgressBar* progress = nullptr;    // ProgressBar1
    DirectoryGrid* grid = nullptr;       // MSFlexGrid1
    QList<QWidget*> frames;              // the Frame1 array
    double scaleY = 1.0;
  };
  explicit GridFaceUi(Parts parts) : p_(std::move(parts)) {}
  ~GridFaceUi() override;

  bool needsData() override;
  void prepareGridFace() override;
  void setWaitCursor(bool on) override;
  void hideFrames() override;
  void showCounting(const QString& text) override;
  void setProgressMaximum(int maximum) override;
  void setProgressValue(int value) override;
  void hideCounting() override;
  void showDirectory(const Directory& directory) override;

 private:
  Parts p_;
  bool waiting_ = false;
};

}  // namespace mj
