#pragma once
// The menu entries of the practice log and the update packages on the main
// window: 做题日志, 模糊题 and 自动更新 with their lists on the list grid
// MSFlexGrid2, and the practice run a chosen row starts.

#include <QObject>
#include <functional>

#include "log/practice_log.h"
#include "log/update_package.h"

namespace mj {

class Form1;

class LogEntries : public QObject {
  Q_OBJECT
 public:
  explicit LogEntries(Form1& main);

  // Shows the list of a mode on the grid face (mode 1 without any record
  // shows its box and no grid).
  void openList(LogMode mode);
  // A row of the list shown was chosen: the run over its questions.
  void chooseRow(int row);

  // What the two submenus do as they open.
  void guessMenuOpens();
  void updateMenuOpens();

  // 选新题库文件并更新进系统题库: an update package taken in.
  void newerProgram();
  // The update under way, if any.
  UpdateRun* update() const { return update_; }
  // The program ends: an update under way goes no further.
  void programEnds();
  // Observes an update run as it starts (tests follow its steps).
  std::function<void(UpdateRun&)> updateStarting;

 private:
  // A folder of day files that could not be made is said.
  bool makeFolder(const QString& suffix);

  Form1& main_;
  UpdateRun* update_ = nullptr;
};

}  // namespace mj
