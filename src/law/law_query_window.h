#pragma once
// The law query window: the law tree on the left, the boxes and buttons on
// top, the result view below, the keypad beside the article-number box. The
// work is done by LawQuery; the window shows its state after every action.

#include <QList>
#include <QWidget>
#include <functional>

#include "bank/item_index.h"
#include "law/law_query.h"

class QAction;
class QLabel;
class QLineEdit;
class QMenu;
class QPlainTextEdit;
class QPushButton;
class QTimer;
class QToolButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace mj {

class Form7;

class Form6 : public QWidget {
  Q_OBJECT
 public:
  // items: the question index that articles lead to (AllItemData).
  Form6(const Env& env, const ItemIndex* items, QWidget* parent = nullptr);
  ~Form6() override;

  LawQuery& query() { return query_; }

  // How the window was opened: 1 from the menu 法律法规查询, 2 from the
  // answer window's 法律查询.
  int entryMode = 1;
  // A run of related questions was started from here and has not ended.
  bool FromLawQuery = false;

  // Starts a practice run over the questions of 相关NN题 (ids of 11
  // characters each, their count). Set by the main window.
  std::function<void(const QString& ids, int count)> onRelatedRun;
  // Called when the window closes.
  std::function<void()> onClosed;
  // 查找/替换 of the right-button menu: the find/replace window over the
  // view. Setting it enables the menu item.
  void setSeekAndReplaceHook(std::function<void()> hook);
  // The text selected in the view, with CR LF line ends.
  QString selectedViewText() const;

  // Opens the law of the article printed at pos of an answer text (a double
  // click in the answer window): flag 1 plain, 2 with Ctrl. The window comes
  // up at that article. False when pos is on no printed article.
  bool OpenLawFromAnswer(const QString& text, qsizetype pos, int flag);
  // The same for a double click in a text box that shows such a text with
  // LF line ends: its text and the 0-based place of the caret there.
  bool OpenLawFromShownAnswer(const QString& shownText, int position, bool ctrl);
  // 法律查询 of the answer window (entry mode 2): the law query comes up at
  // the first article printed under the answer (text with CR LF line ends),
  // or as it was when the answer prints none.
  void openAtAnswer(const QString& answerText);

  // Shows the window maximised, as it comes back after a run.
  void showAgain();

  // Reads the law tree of the current order again from its file: a law was
  // added to the trees meanwhile.
  void reloadTree();

  // Shows the state of the query.
  void render();

  // Controls, named as the program names them.
  QPushButton* Command1 = nullptr;  // 按试卷
  QPushButton* Command2 = nullptr;  // 按字母
  QPushButton* Command7 = nullptr;  // 按类别
  QTreeWidget* TreeView1 = nullptr;
  QLabel* Label3 = nullptr;
  QLineEdit* Text1 = nullptr;       // article numbers
  QLineEdit* Text2 = nullptr;       // search text
  QPushButton* Command3 = nullptr;  // 查询
  QPushButton* Command4 = nullptr;  // 全文
  QPushButton* Command5 = nullptr;  // 相关NN题
  QList<QPushButton*> Command8;     // 本法重点法条, 本法次重点法条
  QPushButton* Command9 = nullptr;  // export of the law texts (hidden)
  QPlainTextEdit* RichTextBox1 = nullptr;
  QWidget* TreePanel = nullptr;  // the tree and the order buttons
  QToolButton* TreeHandle = nullptr;  // brings the hidden tree back
  QMenu* MenuForRightButton = nullptr;
  QAction* SaveTheText = nullptr;
  QAction* MergeToText = nullptr;
  QAction* LookText = nullptr;
  QAction* SaveTempText = nullptr;
  QAction* GoBack = nullptr;
  QAction* NoText = nullptr;
  QAction* SeekAndReplace = nullptr;
  QTimer* Timer1 = nullptr;
  Form7* keypad() const { return keypad_; }

  // Runs 相关NN题: the practice run over the article's questions.
  void startRelatedRun();
  // One tick of Timer1.
  void timerTick();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* e) override;

 private:
  void buildTree();
  void loadTree(LawTreeOrder order);
  void viewClicked(bool ctrl);
  void showKeypad(bool visible);
  void setTreeVisible(bool visible);
  // After a law was opened from an answer: the tree, the window, the state.
  void showOpenedLaw();

  LawQuery query_;
  std::function<void()> seekAndReplace_;
  Form7* keypad_ = nullptr;
  int shownVersion_ = -1;
  QLineEdit* lastBox_ = nullptr;
};

}  // namespace mj
