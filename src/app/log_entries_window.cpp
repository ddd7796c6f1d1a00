#include "app/log_entries_window.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>

#include "app/main_window.h"
#include "app/startup.h"
#include "bank/tables.h"
#include "log/day_files.h"
#include "log/log_grid_widget.h"
#include "platform/paths.h"
#include "platform/vbtext.h"
#include "practice/directory_widget.h"
#include "practice/practice_frame_widget.h"

namespace mj {

LogEntries::LogEntries(Form1& main) : QObject(&main), main_(main) {
  connect(main.RiZhi, &QAction::triggered, this, [this] { openList(LogMode::Days); });
  connect(main.DoneGuess, &QAction::triggered, this, [this] { openList(LogMode::UncertainByDay); });
  connect(main.DoneNewItem, &QAction::triggered, this, [this] { openList(LogMode::UpdatedByDay); });
  connect(main.DoneNewByLawName, &QAction::triggered, this, [this] { openList(LogMode::UpdatedByLaw); });
  connect(main.MyGuess, &QMenu::aboutToShow, this, &LogEntries::guessMenuOpens);
  connect(main.AutoUpdate, &QMenu::aboutToShow, this, &LogEntries::updateMenuOpens);
  connect(main.MSFlexGrid2, &LogGridWidget::rowChosen, this, &LogEntries::chooseRow);
  connect(main.NewerProgram, &QAction::triggered, this, &LogEntries::newerProgram);
}

bool LogEntries::makeFolder(const QString& suffix) {
  const QString dir = main_.env().path(suffix);
  if (MakeDir(dir)) return true;
  main_.env().msgBox(QStringLiteral("无法建立文件夹：") + dir, box::Exclamation);
  return false;
}

void LogEntries::guessMenuOpens() {
  const Env& env = main_.env();
  // Without the data set the menu runs the unpack entry instead.
  if (!DataSetPresent(env)) return;
  main_.DoneGuess->setEnabled(false);
  const QString dir = env.path(kGuessFolder);
  if (!DirExists(dir))
    makeFolder(kGuessFolder);
  else
    main_.DoneGuess->setEnabled(CountFiles(dir, QStringLiteral("ini")) >= 1);
}

void LogEntries::updateMenuOpens() {
  const Env& env = main_.env();
  const QString dir = env.path(kUpdatedFolder);
  bool any = false;
  if (!DirExists(dir))
    makeFolder(kUpdatedFolder);
  else
    any = CountFiles(dir, QStringLiteral("ini")) >= 1;
  main_.DoneNewItem->setEnabled(any);
  main_.DoneNewByLawName->setEnabled(any);
  main_.NewerProgram->setEnabled(true);
}

void LogEntries::openList(LogMode mode) {
  Form1& f = main_;
  AppState& app = f.state();
  // The list takes the client area: no frame, no bank grid, no counters of
  // a run left open.
  f.practice->hideAnswerWindow();
  DoHide(f.Frame1);
  f.MSFlexGrid1->setVisible(false);
  f.MSFlexGrid2->setVisible(false);
  f.ShowNewsLabels(false);
  f.showGrids();
  app.Run.DoneInRun = 0;
  app.Run.RightInRun = 0;
  app.Run.OutInRun = 0;
  std::optional<LogGrid> grid;
  switch (mode) {
    case LogMode::Days:
      grid = BuildDaysGrid(f.env(), app.AllItemData);
      break;
    case LogMode::UpdatedByDay:
    case LogMode::UncertainByDay:
      grid = BuildDayFileGrid(f.env(), app.AllItemData, mode);
      break;
    case LogMode::UpdatedByLaw:
      grid = BuildLawGrid(f.env());
      break;
  }
  if (!grid) return;
  f.MSFlexGrid2->showGrid(*grid);
  f.MSFlexGrid2->setVisible(true);
  f.MSFlexGrid2->setFocus();
}

void LogEntries::chooseRow(int row) {
  Form1& f = main_;
  AppState& app = f.state();
  const LogGrid& grid = f.MSFlexGrid2->grid();
  const QString ids = IdsOfRow(f.env(), app.AllItemData, grid, row);
  if (ids.isEmpty()) return;
  // Runs over the lists write no practice records; the end of the run
  // brings the list back.
  const bool updated = grid.mode == LogMode::UpdatedByDay || grid.mode == LogMode::UpdatedByLaw;
  app.InUpdateList = updated;
  app.InOtherList = !updated;
  app.Run.RunTitle = QStringLiteral("◎") + Trim(grid.rows.value(row).value(0));
  f.practice->startListRun(ids, false);
}

namespace {

// The run's progress on the main window's grid face.
class MainWindowUpdateView final : public UpdateView {
 public:
  explicit MainWindowUpdateView(Form1& main) : main_(main) {}
  ~MainWindowUpdateView() override {
    if (waiting_) QApplication::restoreOverrideCursor();
  }
  void showProgress(int maximum) override {
    main_.showGrids();
    main_.ProgressBar1->setRange(0, maximum);
    main_.ProgressBar1->setValue(0);
    main_.ProgressBar1->setVisible(true);
  }
  void setProgress(int value) override { main_.ProgressBar1->setValue(value); }
  void hideProgress() override { main_.ProgressBar1->setVisible(false); }
  void setWaitCursor(bool wait) override {
    if (wait == waiting_) return;
    waiting_ = wait;
    if (wait)
      QApplication::setOverrideCursor(Qt::WaitCursor);
    else
      QApplication::restoreOverrideCursor();
  }
  void letEventsThrough() override { QCoreApplication::processEvents(); }

 private:
  Form1& main_;
  bool waiting_ = false;
};

}  // namespace

void LogEntries::newerProgram() {
  if (update_) return;
  Form1& f = main_;
  AppState& app = f.state();
  QWidget* faceBefore = f.currentFace();
  // The bank grid and the frames give way.
  f.MSFlexGrid1->setVisible(false);
  f.MSFlexGrid2->setVisible(false);
  DoHide(f.Frame1);
  // While the update runs, only 退出 of the menu is open: nothing else
  // reads or writes the tables meanwhile.
  QList<QAction*> closed;
  for (QAction* a : f.menuBar()->actions()) {
    if (a == f.MmExit || !a->isEnabled()) continue;
    a->setEnabled(false);
    closed.append(a);
  }
  MainWindowUpdateView view(f);
  UpdateRun run(f.env(), view, {app.RunState, app.UpdatedIds});
  update_ = &run;
  app.FlushUpdate = [&run] { run.writeNow(); };
  if (updateStarting) updateStarting(run);
  const bool taken = run.run();
  app.FlushUpdate = nullptr;
  update_ = nullptr;
  if (run.stopped()) return;
  for (QAction* a : closed) a->setEnabled(true);
  if (taken) {
    // The questions as the update left them: records reset, new questions.
    ReadData2ItemData(app.env.path(QStringLiteral("\\dbf")), tables::kItems, app.AllItemData);
    SetWorkItemData(app.ItemData, app.IsSimulated ? app.CsItemData : app.AllItemData);
  }
  if (faceBefore == f.startPage) f.showStartPage();
}

void LogEntries::programEnds() {
  if (update_) update_->stop();
}

}  // namespace mj
