#pragma once
// The practice frame Frame1(3) of the main window: the top label and the
// clock, the question box Text3, the uncertain mark, the answer buttons in
// the frame "答案", the buttons 设置 上题 下题 返回 and the font buttons. It
// owns the practice run (PracticeSession) and the answer window Form3, and
// shows what the run tells it.
//
// Keys: for a single choice A to D answer at once; for the other types the
// letters are collected and Enter gives the answer (Esc or Backspace starts
// again); Page Up and Page Down are 上题 and 下题.

#include <QList>
#include <QWidget>
#include <functional>
#include <memory>

#include "practice/answer_keys.h"
#include "practice/app_state.h"
#include "practice/practice_session.h"

class QCheckBox;
class QGroupBox;
class QLabel;
class QPushButton;
class QTextEdit;

namespace mj {

class Form2;
class Form3;

class PracticeFrame : public QWidget, public PracticeView {
  Q_OBJECT

 public:
  // What the frame needs of the main window.
  struct MainWindowParts {
    std::function<void()> showPracticeFace;       // the client area shows the practice face
    std::function<Directory*()> directory;        // the rows of MSFlexGrid1
    std::function<void()> refreshDirectory;       // MSFlexGrid1 drawn again
    std::function<void(bool)> showDirectoryGrid;  // MSFlexGrid1 shown (with the grid face) or hidden
    std::function<void(int)> setDirectoryFontSize;
    std::function<void(bool hideFrameParts)> showListGrid;  // MSFlexGrid2
    std::function<void()> hideFrames;                       // every frame of Frame1
    std::function<void()> refreshMain;
  };

  PracticeFrame(AppState& app, QWidget* parent = nullptr);
  ~PracticeFrame() override;

  void setMainWindowParts(MainWindowParts parts) { main_ = std::move(parts); }
  PracticeSession& session() { return session_; }
  Form3* answerWindow() const { return form3_; }
  Form2* personalSettingsWindow() const { return form2_; }

  // A run over a given ID list, for the law query ("相关NN题": fromLawQuery
  // true; set lawQueryHook so that 返回 leads back there) and the day lists
  // (which set InUpdateList or InOtherList first). The answer window goes,
  // the main window comes up with the practice frame and the first question.
  // False for an empty list (the box "请注意" was shown).
  bool startListRun(const QString& ids, bool fromLawQuery);
  // A run over a list a window of its own hands over (the question search,
  // the wrong book): answers recorded as in a bank run; its end calls
  // listOwnerHook. False for an empty list (the box "请注意" was shown).
  bool startOwnListRun(const QString& ids, const QString& title);

  // --- hooks for the windows of later parts ---
  // Back to the law query when a run that came from there ends.
  std::function<void()> lawQueryHook;
  // Back to the window that handed over the list of an own-list run.
  std::function<void()> listOwnerHook;
  // 法律查询 of the answer window: the law query opened at the current
  // question (CurIndex), so that it can come back to it. Set it with
  // setLawQueryHook: the button is enabled then.
  void setLawQueryHook(std::function<void()> hook);
  // 修改/注释 of the answer window: the question editor.
  void setEditorHook(std::function<void()> hook);

  // The letters typed so far for a multiple or any choice.
  const QString& typedLetters() const { return keys_.typed(); }

  // Controls, by their names.
  QLabel* Label5 = nullptr;  // the top label
  QLabel* Label6 = nullptr;  // the clock
  QTextEdit* Text3 = nullptr;
  QCheckBox* Check1 = nullptr;
  QLabel* Label13 = nullptr;                // "也许是……"
  QList<QPushButton*> Frame3Cmd;            // 设置, 上题, 下题, 返回
  QList<QPushButton*> Frame6BigOrSmallCmd;  // 大字体, 小字体
  QGroupBox* Frame6 = nullptr;              // "答案"
  QList<QPushButton*> Command2;             // the 15 answer buttons
  QLabel* typedLabel = nullptr;             // the letters typed for the next answer

  // --- PracticeView ---
  void IniObjInFrame1_3() override;
  void PutFrame6Cmd(int type) override;
  void setAnswerButtonsEnabled(bool enabled) override;
  void setQuestionText(const QString& text) override;
  void setQuestionFontSize(int size) override;
  bool uncertainMarked() const override;
  void clearUncertainMark() override;
  void setMoveEnabled(bool previous, bool next) override;
  void setTopLabel(const QString& text) override;
  void setClockLabel(const QString& text) override;
  void showFrame(bool visible) override;
  void hideFrames() override;
  void focusFrame() override;
  void showPersonalSettings() override;
  Directory* directory() override;
  void refreshDirectory() override;
  void showDirectoryGrid(bool visible) override;
  void setDirectoryFontSize(int size) override;
  void showListGrid(bool hideFrameParts) override;
  void refreshMain() override;
  void showLawQuery() override;
  void showListOwner() override;
  void clearAnswerBoxes() override;
  void setAnswerBoxes(const QString& upper, const QString& lower) override;
  void setExchangeNumber(const QString& text) override;
  void setDiscussionLink(const QString& address) override;
  void showAnswerWindow() override;
  void hideAnswerWindow() override;
  void selectAnswerText() override;

  // The question box's text as the program holds it (CR LF line ends).
  QString questionText() const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void build();
  void buildAnswerWindow();
  // Before a run over a given list: the answer window goes, the main window
  // comes up.
  void bringUpForList();
  // A key meant for the run; true when it was used.
  bool handleKey(QKeyEvent* event);
  // The answer buttons placed for the current type in the frame's width.
  void layoutAnswerButtons();
  // The buttons of the frame blocked while the answer window lies over it.
  void setBlocked(bool blocked);
  // The collected letters dropped, and the label with them.
  void clearTyped();
  void showTyped();

  AppState& app_;
  PracticeSession session_;
  MainWindowParts main_;
  Form3* form3_ = nullptr;
  Form2* form2_ = nullptr;
  QWidget* moveBar_ = nullptr;
  int type_ = 1;
  AnswerKeys keys_;
  bool blocked_ = false;
};

// Helpers on control arrays. AltFont: the font size of every member set to
// 13. SetArrayEnabled: Enabled of every member. DoHide, DoShow: Visible of
// every member.
void AltFont(const QList<QPushButton*>& controls);
void SetArrayEnabled(const QList<QPushButton*>& controls, bool enabled);
void DoHide(const QList<QWidget*>& controls);
void DoShow(const QList<QWidget*>& controls);

}  // namespace mj
