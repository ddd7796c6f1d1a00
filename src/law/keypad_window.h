#pragma once
// The keypad of the law query's article-number box: digits, "-", ",",
// delete, clear and 条, which runs the query. It types into the law query's
// state; the law query window shows the result.

#include <QList>
#include <QWidget>
#include <functional>

class QPushButton;

namespace mj {

class LawQuery;

class Form7 : public QWidget {
  Q_OBJECT
 public:
  // changed: called after every key, so that the law query window shows
  // the new state.
  Form7(LawQuery& query, std::function<void()> changed, QWidget* parent = nullptr);

  // Enables the buttons for the box as it is now.
  void refresh();
  // Places the keypad beside a widget (the article-number box).
  void LocateForm(const QWidget* beside);

  QList<QPushButton*> Command1;  // 0-9, "-", ",", 退格, 清空, 条
  QPushButton* HelpButton = nullptr;

 protected:
  void keyPressEvent(QKeyEvent* e) override;
  // Closed by the user (Esc, the title bar): the law query no longer counts
  // it as open, so that its next view does not bring it back.
  void closeEvent(QCloseEvent* e) override;

 private:
  void press(int index);

  LawQuery& query_;
  std::function<void()> changed_;
};

}  // namespace mj
