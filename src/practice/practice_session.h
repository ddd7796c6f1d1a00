#pragma once
// The practice run: a walk through a list of question IDs in the practice
// frame of the main window. A run starts from a bank of the directory (its
// due questions) or from a given list (the law query, the day lists); the
// user moves back and forth, answers, and ends the run with "返回", which
// adds the run's counters to the directory.
//
// One answer does everything it causes, in this order: the key is read from
// the question's answer field, the uncertain mark goes into today's file,
// the outcome is worded against the last attempt, the run's counters move,
// the practice record is written, and the answer window shows the outcome,
// the answer and the law text; in a simulated paper the next question comes
// at once instead.
//
// The session works on the shared state and talks to the windows through
// PracticeView, so that it has no widget of its own.

#include <QString>
#include <optional>

#include "practice/app_state.h"
#include "practice/directory.h"
#include "practice/practice_run.h"

namespace mj {

// What the run needs of the windows.
class PracticeView {
 public:
  virtual ~PracticeView() = default;

  // --- the practice frame Frame1(3) ---
  // IniObjInFrame1_3: once per program run, before the first question.
  virtual void IniObjInFrame1_3() = 0;
  // PutFrame6Cmd: the answer buttons of a question type, the others hidden.
  virtual void PutFrame6Cmd(int type) = 0;
  // SetArrayEnabled on the answer buttons.
  virtual void setAnswerButtonsEnabled(bool enabled) = 0;
  // Text3. A change of its text reaches the run as questionTextChanged().
  virtual void setQuestionText(const QString& text) = 0;
  virtual void setQuestionFontSize(int size) = 0;
  // Check1, the uncertain mark ("也许是……").
  virtual bool uncertainMarked() const = 0;
  virtual void clearUncertainMark() = 0;
  // 上题 and 下题, with 上一题 and 下一题 of the answer window.
  virtual void setMoveEnabled(bool previous, bool next) = 0;
  virtual void setTopLabel(const QString& text) = 0;    // Label5
  virtual void setClockLabel(const QString& text) = 0;  // Label6
  virtual void showFrame(bool visible) = 0;             // Frame1(3), with the practice face
  virtual void hideFrames() = 0;                        // every frame of Frame1
  virtual void focusFrame() = 0;
  virtual void showPersonalSettings() = 0;  // Form2

  // --- the main window ---
  // The directory shown by MSFlexGrid1; null when there is none.
  virtual Directory* directory() = 0;
  virtual void refreshDirectory() = 0;
  virtual void showDirectoryGrid(bool visible) = 0;
  virtual void setDirectoryFontSize(int size) = 0;
  // MSFlexGrid2, the list grid; hideFrameParts: the frame's parts go as well.
  virtual void showListGrid(bool hideFrameParts) = 0;
  virtual void refreshMain() = 0;
  // Back to the law query after a run that came from there.
  virtual void showLawQuery() = 0;
  // Back to the window that handed over the list of an own-list run (the
  // question search, the wrong book).
  virtual void showListOwner() {}

  // --- the answer window Form3 ---
  virtual void clearAnswerBoxes() = 0;
  virtual void setAnswerBoxes(const QString& upper, const QString& lower) = 0;
  virtual void setExchangeNumber(const QString& text) = 0;
  // 网上讨论: the discussion address of the question shown (empty: none).
  virtual void setDiscussionLink(const QString& address) = 0;
  virtual void showAnswerWindow() = 0;
  virtual void hideAnswerWindow() = 0;
  virtual void selectAnswerText() = 0;
};

// The texts of the run's message boxes.
inline const QString kNoDueQuestionsTitle = QStringLiteral("请注意");
inline const QString kNoDueQuestions = QStringLiteral(
    "对不起，所选项目中试题都不符合你的设置条件，要做此项目中的试题，必须在先在设置菜单中设置相关内容。");
// The bank's questions cannot be had: the item table is damaged.
inline const QString kTableUnreadable = QStringLiteral("该部分试题无法取出，因为题库表不能完整读出：");
// An answer whose record could not be written: said once per run, with
// why (problem names the file); the practice goes on.
QString RecordNotSavedText(const QString& problem);
inline const QString kRecordNotSavedTitle = QStringLiteral("答题记录没能保存");
inline const QString kHideTitle = QStringLiteral("请你确认");
inline const QString kHideQuestion = QStringLiteral("按此按钮将永久隐藏该题，确定吗？");
inline const QString kHistoryTitle = QStringLiteral("本题已做历史");
inline const QString kProviderTitle = QStringLiteral("提供者信息");
inline const QString kNoProvider = QStringLiteral("本题无试题提供者信息。");
inline const QString kPaperResultTitle = QStringLiteral("本卷结果");
// The box after the last question of a simulated paper: answers, right
// answers and the share right, as the directory's score shows it.
QString PaperResultText(int answered, int right);

class PracticeSession {
 public:
  PracticeSession(AppState& app, PracticeView& view) : app_(app), view_(view) {}

  PracticeRun& run() { return app_.Run; }
  const PracticeRun& run() const { return app_.Run; }

  // --- starting a run ---
  // A click on bank row `gridRow` of the directory (a leaf with questions):
  // the run over the bank's due questions. False when none is due (the box
  // "请注意" was shown).
  bool startFromDirectory(int gridRow);
  // A run over a given ID list, as the law query (fromLawQuery: no counters,
  // no records, "返回" goes back there) and the day lists start it. False for
  // an empty list (the box "请注意" was shown).
  bool startListRun(const QString& ids, bool fromLawQuery);
  // A run over a list that a window of its own hands over (the question
  // search, the wrong book), titled "◎" + title. Its answers are recorded
  // as a bank run records them: the practice records in the item tables
  // (items.mmd for the internal banks, csitems.mmd for the papers) and in
  // the question index, which is the whole index for the time of the run.
  // The answer window shows after every answer; "返回" ends the run and
  // leads back to that window (showListOwner). False for an empty list (the
  // box "请注意" was shown).
  bool startOwnListRun(const QString& ids, const QString& title);

  // A run from the law query may start while another run is open (from
  // the answer window's 法律查询). The open run, kept to come back to after
  // it; nothing when no run is open or the open one is the law query's.
  std::optional<PracticeRun> openRun() const;
  // Brings a kept run back into the practice frame, at its question and
  // with its counters; the text size stays as it is now.
  void resumeRun(PracticeRun saved);

  // --- the practice frame ---
  // Frame3Cmd: 0 设置, 1 上题, 2 下题, 3 返回.
  void Frame3Cmd_Click(int index);
  // Frame6BigOrSmallCmd: 0 大字体, 1 小字体.
  void Frame6BigOrSmallCmd_Click(int index);
  // Command2_Click: the answer given by button `index` (0 "A" .. 14 "ABCD").
  void Command2_Click(int index);
  // Timer1, once a second.
  void Timer1_Timer();
  // Any change of the question box's text.
  void questionTextChanged() { run().TimerRunning = true; }

  // --- the answer window ---
  // 上一题 (1) and 下一题 (2).
  void answerWindowMove(int index);
  // 返回.
  void answerWindowReturn();
  // 屏蔽该题: asks, and hides the question on Yes. True when hidden.
  bool hideCurrentQuestion();
  // 做题历史 and 试题提供: the boxes.
  void showHistory();
  void showProvider();
  // The activation: the discussion address of the question at CurIndex.
  QString discussionLink() const;
  // A change of the exchange number box.
  void exchangeNumberChanged(const QString& text);

  // After the question at CurIndex was changed in its bank file (the
  // question editor): the file is read again, the frame shows the new stem,
  // the answer window the stem and answerText with the law text of the new
  // citations, and the next answer uses the new key.
  void reloadCurrentQuestion(const QString& answerText);

  // The ID at CurIndex.
  QString currentId() const;
  // Whether 上题 / 下题 may be used now.
  bool canGoBack() const { return run().CurIndex > 1; }
  bool canGoOn() const { return run().CurIndex < run().count(); }

 private:
  const Env& env() const { return app_.env; }
  // Steps 8 to 15 of a start: the first question shown.
  void beginRun();
  // The question at CurIndex into the frame. Returns its stem as shown.
  QString showQuestionAt();
  // 上题 (-1) and 下题 (+1), once checked: the run's clock stops and the
  // question there is shown. Returns its stem.
  QString moveBy(int step);
  // LawText for AnswerField, made behind disabled answer buttons.
  void makeLawText();
  // LawText without its last CR LF, when it has more than 3 characters.
  QString lawTextForBox() const;
  void endRun();
  void updateMoveButtons();
  // The top label and the clock as they stand, without a tick.
  void showLabels();

  AppState& app_;
  PracticeView& view_;
};

}  // namespace mj
