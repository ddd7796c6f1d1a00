#pragma once
// The answer window Form3 "答案与解析": after an answer it shows the question
// (upper box) and the outcome with the answer, the citation and the law text
// (lower box), and offers what can be done with the question: move on, look
// at its history and its provider, hide it, discuss it on the support site,
// exchange its number with other users, open the law query or the editor.
//
// The window is thin: it shows what it is given and reports its buttons;
// the practice frame's run does the work.

#include <QList>
#include <QString>
#include <QWidget>
#include <functional>

#include "settings/settings.h"

class QKeyEvent;
class QLabel;
class QLineEdit;
class QPushButton;
class QSplitter;
class QTextEdit;

namespace mj {

class Form3 : public QWidget {
  Q_OBJECT

 public:
  explicit Form3(QWidget* parent = nullptr);

  // --- content ---
  // IniForm3Text: both boxes emptied, the standard layout back.
  void IniForm3Text();
  void clearBoxes();
  // The texts come with CR LF line ends, as the program holds them.
  void setBoxes(const QString& upper, const QString& lower);
  // The text of box i (0 upper, 1 lower) with CR LF line ends.
  QString boxText(int i) const;
  void setExchangeNumber(const QString& text);
  // The whole text of the answer box selected, the focus there.
  void selectAnswerText();
  // SaveForm3 / RestoreForm3: the boxes' texts, their scroll places and the
  // division between them, kept and brought back around a change of style.
  void SaveForm3();
  void RestoreForm3();
  void applyTextStyle(const TextStyle& style);

  // --- buttons ---
  // 上一题 and 下一题 follow 上题 and 下题 of the practice frame.
  void setMoveEnabled(bool previous, bool next);
  // The discussion address of the question: 网上讨论 enabled with the
  // tooltip "到网上进行专“题”讨论。" when there is one, disabled otherwise.
  void setDiscussionLink(const QString& address);
  const QString& discussionLink() const { return link_; }
  // After a question was hidden: "已经屏蔽", disabled until the window loads
  // again.
  void markHidden();
  // 法律查询 and 修改/注释 are enabled once their windows are wired.
  void setLawQueryAvailable(bool available);
  void setEditorAvailable(bool available);

  // The load of the window: on its first show and on the first show after it
  // was closed with its close button. 屏蔽该题 is back.
  void loadWindow();
  bool isLoaded() const { return loaded_; }
  // 标准: the boxes back to their standard place and size.
  void standardLayout();

  // A double click in the answer box: its text, the place of the caret
  // (0-based) and whether Ctrl was held. For the link from a printed law
  // article to the law query.
  std::function<void(const QString& text, int position, bool ctrl)> answerTextDoubleClicked;

  // Controls, by their names.
  QList<QTextEdit*> Form3Text;      // 0 upper: the question; 1 lower: outcome, answer, law text
  QLabel* Label1 = nullptr;         // "网络交流号"
  QLineEdit* Text1 = nullptr;       // the exchange number
  QList<QPushButton*> Command1;     // 标准, 上一题, 下一题, 返回
  QPushButton* Command2 = nullptr;  // 法律查询
  QPushButton* Command3 = nullptr;  // 屏蔽该题
  QPushButton* Command4 = nullptr;  // 修改/注释
  QList<QPushButton*> Command5;     // 做题历史, 试题提供
  QPushButton* Command6 = nullptr;  // 网上讨论
  QSplitter* splitter = nullptr;

 signals:
  void activated();                                  // shown or made the active window
  void moveRequested(int index);                     // 1 上一题, 2 下一题
  void returnRequested();                            // 返回
  void hideRequested();                              // 屏蔽该题
  void historyRequested();                           // 做题历史
  void providerRequested();                          // 试题提供
  void discussionRequested(const QString& address);  // 网上讨论
  void exchangeNumberChanged(const QString& text);   // any change of Text1
  void lawQueryRequested();                          // 法律查询
  void editorRequested();                            // 修改/注释
  void visibilityChanged(bool visible);

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  // The keys of the window: true when the key was used.
  bool handleKey(QObject* at, QKeyEvent* event);
  struct Kept {
    QString upper, lower;
    int upperScroll = 0, lowerScroll = 0;
    QList<int> sizes;
  };
  QString link_;
  bool loaded_ = false;
  // Set by a show, which already reported itself as activated: the
  // activation that follows the show is the same event and is not reported
  // again. Later activations are.
  bool justShown_ = false;
  Kept kept_;
};

}  // namespace mj
