#pragma once
// The window 错题本: the banks that hold questions last answered wrong, in
// the list grid of the practice log (bank, count, date of the newest wrong
// answer, newest first). A double click on a row (or Enter) practises that
// bank's wrong questions, 全部练习 all of them; the end of such a run brings
// the window back, worked out again, so that what was answered right is
// gone. The book is WrongBook; the run is the main window's (onPractise).

#include <QWidget>
#include <functional>

#include "bank/item_index.h"
#include "log/wrong_book.h"
#include "platform/env.h"

class QLabel;
class QPushButton;

namespace mj {

class LogGridWidget;

// The line above the grid.
QString WrongBookSummary(const WrongBook& book);

class Form20 : public QWidget {
  Q_OBJECT
 public:
  // items: the question index of the internal banks (AllItemData).
  Form20(const Env& env, const ItemIndex* items, QWidget* parent = nullptr);

  // Practises ids (11 characters each) as one run titled title. Set by the
  // main window.
  std::function<void(const QString& ids, const QString& title)> onPractise;

  // Works the book out from the records and shows the window.
  void openWindow();
  // A row chosen (from 0): that bank's wrong questions.
  void practiseRow(int row);
  // 全部练习.
  void practiseAll();

  const WrongBook& book() const { return book_; }

  QLabel* Label1 = nullptr;  // the summary
  LogGridWidget* Grid1 = nullptr;
  QPushButton* Command1 = nullptr;  // 全部练习
  QPushButton* Command2 = nullptr;  // 关闭

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void practise(const QString& ids, const QString& title);

  Env env_;
  const ItemIndex* items_;
  WrongBook book_;
};

}  // namespace mj
