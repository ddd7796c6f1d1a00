#include "app/search_entries_window.h"

#include <QAction>

#include "app/main_window.h"
#include "bank/question_search_window.h"
#include "log/log_grid_widget.h"
#include "log/wrong_book_window.h"
#include "practice/directory_widget.h"
#include "practice/practice_frame_widget.h"

namespace mj {

SearchEntries::SearchEntries(Form1& main) : QObject(&main), main_(main) {
  main.onDataEntry(main.SouTi, [this] { searchWindow()->openWindow(); });
  connect(main.CuoTiBen, &QAction::triggered, this, [this] { wrongBookWindow()->openWindow(); });
  main.practice->listOwnerHook = [this] { runEnded(); };
}

Form19* SearchEntries::searchWindow() {
  if (!form19_) {
    form19_ = new Form19(main_.env(), &main_.state().AllItemData, &main_);
    form19_->onPractise = [this](const QString& ids, const QString& title) { practise(form19_, ids, title); };
  }
  return form19_;
}

Form20* SearchEntries::wrongBookWindow() {
  if (!form20_) {
    form20_ = new Form20(main_.env(), &main_.state().AllItemData, &main_);
    form20_->onPractise = [this](const QString& ids, const QString& title) { practise(form20_, ids, title); };
  }
  return form20_;
}

void SearchEntries::practise(QWidget* owner, const QString& ids, const QString& title) {
  // What the main window shows now comes back when the run ends; a run
  // started from a window of ours while another of its runs is open (from
  // the law query) keeps the first state.
  if (!before_) {
    Before b;
    b.face = main_.currentFace();
    b.directoryShown = !main_.MSFlexGrid1->isHidden();
    b.listShown = !main_.MSFlexGrid2->isHidden();
    b.run = main_.practice->session().openRun();
    before_ = std::move(b);
  }
  before_->owner = owner;
  if (!main_.practice->startOwnListRun(ids, title)) runEnded();
}

void SearchEntries::runEnded() {
  if (!before_) return;
  Before b = std::move(*before_);
  before_.reset();
  if (b.run) {
    main_.practice->session().resumeRun(std::move(*b.run));
  } else {
    if (b.face == main_.gridPage)
      main_.showGrids();
    else if (b.face == main_.practicePage)
      main_.showPracticeFrame();
    else
      main_.showStartPage();
    main_.MSFlexGrid1->setVisible(b.directoryShown);
    main_.MSFlexGrid2->setVisible(b.listShown);
  }
  if (b.owner == form19_ && form19_) form19_->showAgain();
  // The book is worked out again: what was answered right is gone.
  if (b.owner == form20_ && form20_) form20_->openWindow();
}

}  // namespace mj
