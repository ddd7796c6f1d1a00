#pragma once
// The practice window Form14 "做外部试题": one question of a checked paper at
// a time in the stem box, the fifteen answer buttons (those of the
// question's section enabled), and after an answer the answer box (the
// paper's answer lines, editable) and the lower box with the outcome, the
// answer in the standard form and the text of the cited law articles. Each
// answer is written into the paper's progress record before it is shown.
// 返回 puts the score into the names of paper and record and brings the paper
// window back.
//
// Keys, when no text box has the focus: A to D answer a single choice at
// once; for the other sections the letters are collected and Enter answers
// (Esc or Backspace drops them).

#include <QList>
#include <QString>
#include <QWidget>
#include <functional>

#include "papers/paper_practice.h"
#include "papers/paper_state.h"
#include "platform/env.h"
#include "practice/answer_keys.h"

class QAction;
class QLabel;
class QMenu;
class QPlainTextEdit;
class QPushButton;
class QSplitter;

namespace mj {

class Form10;
class Settings;

class Form14 : public QWidget {
  Q_OBJECT
 public:
  // paper: the paper window whose paper is practised (its text box is where
  // find/replace works, and it comes back on leaving).
  Form14(const Env& env, PaperState& state, Form10& paper, QWidget* parent = nullptr);

  // The boxes take font and colours from the settings of the practice boxes.
  void setSettings(Settings* settings);

  // A run over the list of a start: the run's globals reset, 下一题 pressed
  // once, the window shown.
  void startRun(const PracticeStart& start);

  // The buttons by their work: 下一题 (+1) and 上一题 (-1); answer button
  // 0 to 14; 刷新; 法律查询; 返回.
  void move(int step);
  void answer(int button);
  void refresh();
  void openLawQuery();
  void leave();

  // Globals of the run.
  QString OutRecFile;
  QString OutTiList;
  qint64 OutTiPos = 0;
  qint64 OutTiNo = 0;
  qint64 OutTiTotal = 0;
  GroupPassage group;

  // The answer box was changed by the candidate since the last move.
  bool answerEdited() const { return answerEdited_; }
  // The letters typed so far for a multiple or any choice.
  const QString& typedLetters() const { return keys_.typed(); }

  // 法律查询: the law query, given the lower box's text (set by the main
  // window). A click or double click on a selection of more than five
  // characters in the lower box: the law article printed there, given the
  // box's text, the 0-based place and whether Ctrl was held.
  std::function<void(const QString& lowerText)> lawQueryHook;
  std::function<void(const QString& shownText, int position, bool ctrl)> openLawHook;
  // After leaving: the paper's file, renamed or not.
  std::function<void(const QString& paperFile)> onLeft;

  // Texts of the window.
  static QString refreshHelpText();
  static QString buttonTip() { return QStringLiteral("你可以修改题干，然后按此按钮保存。"); }

  // Controls, by their names.
  QPlainTextEdit* RichTextBox1 = nullptr;  // the stem
  QPlainTextEdit* RichTextBox2 = nullptr;  // the answer, editable
  QPlainTextEdit* RichTextBox3 = nullptr;  // outcome, answer and law text
  QLabel* Label1 = nullptr;                // status line
  QList<QPushButton*> Command1;            // 0-14 answers, 15 上一题, 16 下一题, 17 刷新, 18 法律查询, 19 返回
  QSplitter* splitter = nullptr;
  QLabel* typedLabel = nullptr;  // the letters typed for the next answer
  QMenu* Menu4RightButton = nullptr;
  QAction* AddBracks = nullptr;
  QAction* RefreshAboutLaw = nullptr;
  QAction* Find_Repl = nullptr;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void build();
  void applyStyle();
  void setBoxText(QPlainTextEdit* box, const QString& text);
  void fillLowerBox();
  void showAnswerBoxes(bool shown);
  void showTyped();
  // The score into the names, the find/replace window of the run put away;
  // the paper's file afterwards.
  QString finishRun();
  // The run's answer could not be written: said once per run.
  void recordFailed();

  Env env_;
  PaperState& state_;
  Form10& paper_;
  Settings* settings_ = nullptr;
  AnswerKeys keys_;
  bool answerEdited_ = false;
  bool filling_ = false;
  bool leaving_ = false;
  bool running_ = false;
  bool failureSaid_ = false;
  bool vanishedSaid_ = false;
};

}  // namespace mj
