#pragma once
// The menu entries 题目搜索 and 错题本 on the main window: their windows,
// created on first use, and the practice runs over the lists they hand over.
// While such a run goes on its window is hidden; the end of the run (返回)
// brings back what the main window showed before (the start page, a grid,
// or a run that was open, with its counters) and the window, with its
// results as they were.

#include <QObject>
#include <optional>

#include "practice/practice_run.h"

class QWidget;

namespace mj {

class Form1;
class Form19;
class Form20;

class SearchEntries : public QObject {
  Q_OBJECT
 public:
  explicit SearchEntries(Form1& main);

  // The search window and the wrong book, created on first use.
  Form19* searchWindow();
  Form20* wrongBookWindow();

  // Starts the run over ids for `owner`, which comes back at its end.
  void practise(QWidget* owner, const QString& ids, const QString& title);

 private:
  // The end of a run of one of the windows.
  void runEnded();

  Form1& main_;
  Form19* form19_ = nullptr;
  Form20* form20_ = nullptr;
  struct Before {
    QWidget* owner = nullptr;
    QWidget* face = nullptr;
    bool directoryShown = false;
    bool listShown = false;
    std::optional<PracticeRun> run;
  };
  std::optional<Before> before_;
};

}  // namespace mj
