#pragma once
// The state of a practice run, kept by the main window for the life of the
// program: the list of question IDs, the place in it, the question shown,
// the counters and clocks of the run, and what the answer step keeps of the
// last answer.

#include <QString>

#include "bank/bank_text.h"
#include "bank/eligibility.h"

namespace mj {

struct PracticeRun {
  QString RunIds;         // the IDs of the run, 11 characters each
  qint32 CurIndex = 0;    // 1-based place in the list
  QString CurItemId;      // the ID at that place
  qint32 CurNum = 0;      // its serial number
  qint16 CurType = 0;     // 1, 2 or 3 from character 6 of the ID
  QString RunTitle;       // "◎" + the trimmed directory label
  qint16 GridRow = 0;     // the directory row of the run
  qint16 DoneInRun = 0;   // answers given in this run
  qint16 RightInRun = 0;  // right answers
  qint16 OutInRun = 0;    // questions this run finished
  qint32 RunSeconds = 0;  // running time of the run
  qint32 QuestionSeconds = 0;
  qint16 PrevQuestionSeconds = 0;
  bool TimerRunning = false;  // set by a change of the question text, cleared by an answer and by moving
  QString RunStatText;        // groups of three 5-character numbers for the directory table

  mj::BankText BankFile;  // the hidden text control: the bank file last loaded
  QString BankText;       // the text of the bank file of the question shown
  QString AnswerField;    // field 2 of the question shown
  QString LawText;        // the law text under the answer, made once per question
  bool LawTextStale = false;
  QString ProviderInfo;  // the provider block of the question last split
  qint16 FontSize = 15;  // text size of the question box

  // What the answer step leaves for the next one: the record with the
  // attempt added (the history reads it) and the question's key in the
  // index. Both keep their values where the index has no row (simulated
  // papers).
  QString NewStory;
  QString tableKey;

  // The run came from the law query: no counters, no records, and "返回"
  // goes back there.
  bool FromLawQuery = false;
  // The run is over a list that a window of its own handed over (the
  // question search, the wrong book): every answer is recorded as in a bank
  // run, in the row of its question's item table (PaperRecords for the
  // questions of simulated papers), no directory row is counted, and "返回"
  // leads back to that window. The main window's mode as it was before,
  // given back at the end: whether the answer window was skipped and
  // whether the working index was empty (a simulated mode).
  bool OwnList = false;
  RunRecordSet PaperRecords;
  bool AutoNextBefore = false;
  bool WorkIndexEmptyBefore = false;
  // The frame's controls are set up once per program run.
  bool FrameReady = false;
  // From the start of a run to its 返回.
  bool Open = false;
  // A simulated paper whose last question was answered in this run: its
  // result was shown, and further answers there are not recorded again.
  bool PaperDone = false;
  // The rows of the bank the run was made from; records are written there.
  RunRecordSet Records;
  // The user has been told in this run that its records cannot be saved.
  bool RecordProblemTold = false;

  // Number of questions of the list.
  qint32 count() const { return static_cast<qint32>(RunIds.size() / 11); }
  bool isOpen() const { return !RunIds.isEmpty(); }
};

}  // namespace mj
