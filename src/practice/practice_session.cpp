#include "practice/practice_session.h"

#include "bank/item_index.h"
#include "bank/table_check.h"
#include "bank/tables.h"
#include "law/citations.h"
#include "platform/messagebox.h"
#include "platform/paths.h"
#include "platform/text_toolkit.h"
#include "platform/vbtext.h"
#include "practice/answer_check.h"
#include "practice/answer_records.h"
#include "practice/directory_entries.h"
#include "practice/practice_texts.h"
#include "practice/run_records.h"
#include "settings/settings.h"

namespace mj {

namespace {

qint16 TypeOf(const QString& id) { return static_cast<qint16>(Val(Mid(id, 6, 1))); }

// The stem with its options (field 1) and the answer field (field 2) of
// question n of a bank file's text. Field 1 sets providerInfo to the
// question's provider block.
struct QuestionFields {
  QString stem;
  QString answer;
};

QuestionFields FieldsOf(const QString& fileText, long long n, QString& providerInfo) {
  const QString block = GetOneShiTi(fileText, n);
  QuestionFields f;
  f.stem = GetField(block, 1, providerInfo);
  f.answer = GetField(block, 2, providerInfo);
  return f;
}

}  // namespace

QString PracticeSession::currentId() const { return GetItemID(run().RunIds, run().CurIndex); }

QString RecordNotSavedText(const QString& problem) {
  return QStringLiteral("本题的答题记录没能保存：") + problem + QStringLiteral("。") + kCrLf + kCrLf +
         QStringLiteral("本轮练习的答题记录都保存不了，下次启动程序时将看不到它们；您可以继续练习。");
}

bool PracticeSession::startFromDirectory(int gridRow) {
  PracticeRun& r = run();
  Directory* d = view_.directory();
  if (!d) return false;
  // 1. A new run finishes no question yet; the grid takes the text size.
  r.OutInRun = 0;
  view_.setDirectoryFontSize(r.FontSize);
  // 2. The title of the run.
  const QString label = Trim(d->GetText(gridRow, kColLabel));
  r.RunTitle = QStringLiteral("◎") + label;
  // 3. Papers hide the grid at once.
  if (label.contains(QStringLiteral("试卷"))) view_.showDirectoryGrid(false);
  // 6. The due questions of the bank.
  const QString bank = GetSmallTxtName(d->GetText(gridRow, kColFile));
  r.RunIds.clear();
  RunList list = GetLongID(app_.DataFolder, app_.ItemTable, bank, CurrentSchedule(app_));
  // 7. None due; or none to be had, when the item table cannot be read.
  if (list.ids.isEmpty()) {
    view_.showDirectoryGrid(true);
    const QString problem = TableProblem(AppPath(app_.DataFolder, app_.ItemTable), ItemTableFields());
    if (!problem.isEmpty())
      env().msgBox(kTableUnreadable + kCrLf + problem, box::Exclamation, kNoDueQuestionsTitle);
    else
      env().msgBox(kNoDueQuestions + kCrLf, 0, kNoDueQuestionsTitle);
    return false;
  }
  r.RunIds = list.ids;
  r.Records = std::move(list.records);
  r.FromLawQuery = false;
  r.OwnList = false;
  r.GridRow = static_cast<qint16>(gridRow);
  beginRun();
  return true;
}

bool PracticeSession::startListRun(const QString& ids, bool fromLawQuery) {
  PracticeRun& r = run();
  r.RunIds = ids.left(ids.size() / 11 * 11);
  if (r.RunIds.isEmpty()) {
    view_.showDirectoryGrid(true);
    env().msgBox(kNoDueQuestions + kCrLf, 0, kNoDueQuestionsTitle);
    return false;
  }
  r.FromLawQuery = fromLawQuery;
  r.OwnList = false;
  // A list is no bank: its answers are written nowhere but in the records
  // of the questions (and not even there from the law query).
  r.Records = RunRecordSet();
  r.OutInRun = 0;
  beginRun();
  return true;
}

bool PracticeSession::startOwnListRun(const QString& ids, const QString& title) {
  PracticeRun& r = run();
  r.RunIds = ids.left(ids.size() / 11 * 11);
  if (r.RunIds.isEmpty()) {
    env().msgBox(kNoDueQuestions + kCrLf, 0, kNoDueQuestionsTitle);
    return false;
  }
  r.RunTitle = QStringLiteral("◎") + title;
  r.FromLawQuery = false;
  r.OwnList = true;
  // The answers go where a bank run puts them: into the rows of each
  // question's item table.
  const QString dbf = env().path(QStringLiteral("\\dbf"));
  r.Records = RecordsOfList(dbf, tables::kItems, r.RunIds);
  r.PaperRecords = RecordsOfList(dbf, tables::kCsItems, r.RunIds);
  // Every answer is shown with its outcome, whatever mode the main window
  // is in; the index is the whole one, so that the last attempt is worded
  // and the new record reaches the index (a simulated mode has none).
  r.AutoNextBefore = app_.AutoNext;
  r.WorkIndexEmptyBefore = app_.ItemData.size() != app_.AllItemData.size();
  app_.AutoNext = false;
  if (r.WorkIndexEmptyBefore) SetWorkItemData(app_.ItemData, app_.AllItemData);
  app_.InUpdateList = false;
  app_.InOtherList = false;
  r.OutInRun = 0;
  r.RunSeconds = 0;
  beginRun();
  return true;
}

std::optional<PracticeRun> PracticeSession::openRun() const {
  if (!run().Open || run().FromLawQuery) return std::nullopt;
  return run();
}

void PracticeSession::resumeRun(PracticeRun saved) {
  const qint16 size = run().FontSize;
  const bool ready = run().FrameReady;
  app_.Run = std::move(saved);
  PracticeRun& r = run();
  r.FontSize = size;
  r.FrameReady = ready;
  view_.showDirectoryGrid(false);
  view_.showFrame(true);
  showQuestionAt();
  updateMoveButtons();
  view_.setTopLabel(TopLabelText(r.FromLawQuery, r.RunTitle, r.count(), r.CurIndex));
  view_.focusFrame();
}

QString PaperResultText(int answered, int right) {
  return QStringLiteral("本卷试题已全部做完。") + kCrLf + QStringLiteral("共答%1题，答对%2题，正确率%3。")
                                                          .arg(answered)
                                                          .arg(right)
                                                          .arg(ScoreText(answered, right));
}

void PracticeSession::beginRun() {
  PracticeRun& r = run();
  r.Open = true;
  r.PaperDone = false;
  // 8. The first question of the list.
  view_.showDirectoryGrid(false);
  r.CurIndex = 1;
  r.CurItemId = GetItemID(r.RunIds, 1);
  r.CurNum = static_cast<qint32>(ItemSerial(r.CurItemId));
  r.CurType = TypeOf(r.CurItemId);
  // The counters of this run start at nothing, whatever an earlier list run
  // left in them.
  r.DoneInRun = 0;
  r.RightInRun = 0;
  r.RecordProblemTold = false;
  // 9. The frame's controls, once per program run.
  if (!r.FrameReady) {
    view_.IniObjInFrame1_3();
    r.FrameReady = true;
  }
  // 10. The answer buttons that fit the question type.
  view_.PutFrame6Cmd(r.CurType);
  // 11. The run's clocks start from zero.
  r.RunSeconds = 0;
  r.QuestionSeconds = 0;
  r.PrevQuestionSeconds = 0;
  // 12. The bank file.
  r.BankText = r.BankFile.loadFor(env(), r.CurItemId);
  // 13. The practice frame comes up.
  view_.showFrame(true);
  // 14. The question, its answer field, the law text made in advance.
  const QuestionFields q = FieldsOf(r.BankText, r.CurNum, r.ProviderInfo);
  view_.setQuestionText(q.stem);
  r.AnswerField = q.answer;
  r.LawText.clear();
  makeLawText();
  updateMoveButtons();
  // The labels at once, not only at the next tick of the clock.
  showLabels();
  // 15. The keys go to the frame; the directory grid goes.
  view_.focusFrame();
  view_.showDirectoryGrid(false);
}

void PracticeSession::makeLawText() {
  PracticeRun& r = run();
  view_.setAnswerButtonsEnabled(false);
  r.LawText = GetLawTxtForDaAn(env(), r.AnswerField) + kCrLf;
  r.LawTextStale = false;
  view_.setAnswerButtonsEnabled(true);
}

QString PracticeSession::lawTextForBox() const {
  QString t = run().LawText;
  if (Len(t) <= 3) return QString();
  if (Right(t, 2) == kCrLf) t.chop(2);
  return t;
}

QString PracticeSession::showQuestionAt() {
  PracticeRun& r = run();
  r.CurItemId = currentId();
  r.CurType = TypeOf(r.CurItemId);
  // A list may span banks: the file of this question.
  r.BankText = r.BankFile.MyGetAllShiTi(env(), r.RunIds, r.CurIndex);
  r.CurNum = static_cast<qint32>(ItemSerial(r.CurItemId));
  const QuestionFields q = FieldsOf(r.BankText, r.CurNum, r.ProviderInfo);
  view_.setQuestionText(q.stem);
  r.PrevQuestionSeconds = static_cast<qint16>(r.QuestionSeconds);
  r.QuestionSeconds = 0;
  r.AnswerField = q.answer;
  r.LawText.clear();
  r.LawTextStale = true;
  view_.PutFrame6Cmd(r.CurType);
  return q.stem;
}

void PracticeSession::reloadCurrentQuestion(const QString& answerText) {
  PracticeRun& r = run();
  if (r.CurIndex < 1 || r.CurIndex > r.count()) return;
  r.BankFile.forget();
  r.BankText = r.BankFile.MyGetAllShiTi(env(), r.RunIds, r.CurIndex);
  const QuestionFields q = FieldsOf(r.BankText, r.CurNum, r.ProviderInfo);
  view_.setQuestionText(q.stem);
  r.AnswerField = q.answer;
  makeLawText();
  view_.setAnswerBoxes(q.stem, answerText + lawTextForBox());
}

QString PracticeSession::moveBy(int step) {
  run().TimerRunning = false;
  run().CurIndex += step;
  const QString stem = showQuestionAt();
  updateMoveButtons();
  return stem;
}

void PracticeSession::updateMoveButtons() { view_.setMoveEnabled(canGoBack(), canGoOn()); }

void PracticeSession::Frame3Cmd_Click(int index) {
  switch (index) {
    case 0:
      view_.showPersonalSettings();
      view_.focusFrame();
      return;
    case 1:
      if (canGoBack()) moveBy(-1);
      return;
    case 2:
      if (canGoOn()) moveBy(1);
      return;
    case 3:
      endRun();
      return;
    default:
      return;
  }
}

void PracticeSession::endRun() {
  PracticeRun& r = run();
  // 1. The practice frame goes.
  r.Open = false;
  view_.showFrame(false);
  // 2. Back to the law query.
  if (r.FromLawQuery) {
    r.FromLawQuery = false;
    view_.refreshMain();
    view_.showLawQuery();
    return;
  }
  // A list of a window of its own: the main window's mode comes back, and
  // so does that window.
  if (r.OwnList) {
    r.OwnList = false;
    r.TimerRunning = false;
    app_.AutoNext = r.AutoNextBefore;
    if (r.WorkIndexEmptyBefore) SetWorkItemData(app_.ItemData, ItemIndex());
    r.DoneInRun = 0;
    r.RightInRun = 0;
    r.RunStatText.clear();
    r.Records = RunRecordSet();
    r.PaperRecords = RunRecordSet();
    view_.hideFrames();
    view_.showListOwner();
    return;
  }
  // 3. The day lists.
  if (app_.InUpdateList) {
    view_.showListGrid(false);
    return;
  }
  if (app_.InOtherList) {
    view_.showListGrid(true);
    return;
  }
  // 4. The clock stops; the directory grid comes back.
  r.TimerRunning = false;
  view_.hideFrames();
  view_.showDirectoryGrid(true);
  // 5 to 7. The row of the run and its headings.
  Directory* d = view_.directory();
  if (d) {
    d->addRunCounters(r.GridRow, r.RunSeconds, r.DoneInRun, r.RightInRun, r.OutInRun, r.RunStatText);
    view_.refreshDirectory();
  }
  // 8. The run's counters start again for the next run.
  r.DoneInRun = 0;
  r.RightInRun = 0;
  // 9. The directory table (the day lists returned above).
  AltDbfData(app_.DataFolder, app_.FaceTable, r.RunStatText, r.RunSeconds, r.OutInRun);
  r.RunStatText.clear();
  // 10. The directory grid again, when it has rows.
  if (d && !d->GetText(1, kColLabel).isEmpty()) {
    view_.showDirectoryGrid(true);
    view_.showFrame(false);
  }
}

void PracticeSession::Frame6BigOrSmallCmd_Click(int index) {
  PracticeRun& r = run();
  const int size = index == 0 ? BiggerFontSize(r.FontSize) : SmallerFontSize(r.FontSize);
  r.FontSize = static_cast<qint16>(size);
  view_.setQuestionFontSize(size);
  if (app_.settings) {
    app_.settings->setFontSize(r.FontSize);
    app_.settings->CreateIni(env());
  }
}

void PracticeSession::Command2_Click(int index) {
  PracticeRun& r = run();
  const QString caption = AnswerCaptions().value(index);
  // 1. The answer boxes are emptied.
  view_.clearAnswerBoxes();
  // 2. Nothing to check outside the list.
  if (r.CurIndex < 1 || r.CurIndex > r.count()) return;
  // The last question of a finished paper is not recorded twice: its
  // result comes again instead.
  if (app_.AutoNext && r.PaperDone && r.CurIndex == r.count()) {
    env().msgBox(PaperResultText(r.DoneInRun, r.RightInRun), box::Information, kPaperResultTitle);
    return;
  }
  // 3. The key from the question's own text.
  const QString key = Order(AnswerLetters(r.AnswerField));
  const QString id = currentId();
  r.CurItemId = id;
  // 4. The uncertain mark.
  if (view_.uncertainMarked()) {
    MarkUncertain(env(), id);
    view_.clearUncertainMark();
  }
  // 5 to 7. The record as it would read with this attempt, and the last
  // attempt's answer.
  QString lastAnswer;
  const qsizetype row = FindItemRow(app_.ItemData, id);
  if (row > 0) {
    const ItemRow& item = app_.ItemData[row - 1];
    const QString entry = RecordEntry(env().now(), caption);
    const QString old = Trim(item.story);
    if (Len(old) <= 3) {
      r.NewStory = entry;
    } else {
      r.NewStory = entry + item.story;
      lastAnswer = Trim(Mid(old, 17, 4));
    }
    r.tableKey = item.answer;
  }
  // 8. The last attempt, for the wording of the outcome.
  const LastAttempt last{lastAnswer, lastAnswer.isEmpty() || SameAnswer(lastAnswer, key)};
  // 9. The exchange number shown with the answer.
  view_.setExchangeNumber(u'*' + id + u'*');
  // 10, 11. The run's counters; a question is finished when the record with
  // this attempt on top is no longer due.
  if (!r.FromLawQuery) {
    r.DoneInRun += 1;
    if (!IsOkItem(r.NewStory, CurrentSchedule(app_), r.tableKey)) r.OutInRun += 1;
  }
  // 12, 13. A right answer counts towards the run (not in a run from the
  // law query).
  const bool isWrong = !SameAnswer(caption, key);
  if (!isWrong && !r.FromLawQuery) r.RightInRun += 1;
  // 14. The run's clock stops until the text changes again.
  r.TimerRunning = false;
  r.PrevQuestionSeconds = static_cast<qint16>(r.QuestionSeconds);
  r.QuestionSeconds = 0;

  // 16. Simulated papers go straight on, without the answer window.
  const bool autoNext = app_.AutoNext;
  bool paperDone = false;
  QString upper, lower;
  if (autoNext) {
    if (r.CurIndex < r.count()) {
      r.CurIndex += 1;
      showQuestionAt();
    } else {
      paperDone = true;
    }
    updateMoveButtons();
  } else {
    // 17, 18. The outcome and the answer.
    // The stem again, which also sets the provider block back to this
    // question's after a look at another one by its exchange number.
    upper = FieldsOf(r.BankText, r.CurNum, r.ProviderInfo).stem;
    lower = OutcomeSentence(last, isWrong, caption) + kCrLf + kCrLf + r.AnswerField;
    // 19. The law text, made once per question.
    if (r.LawText.isEmpty() || r.LawTextStale) makeLawText();
    lower += lawTextForBox();
  }
  // 21. The record, written before the window shows, so that nothing that
  // was answered is lost when the program ends right after.
  if (!r.FromLawQuery && !app_.InUpdateList && !app_.InOtherList) {
    QString problem;
    // A list of a window of its own may mix the banks and the papers: each
    // question's record goes into its own item table.
    const RunRecordSet& records = r.OwnList && Left(id, 1) == u"0" ? r.PaperRecords : r.Records;
    AltStory(env(), records, app_.ItemData, app_.AllItemData, isWrong, caption, id, row, &problem);
    // A record that could not be saved is said once per run; the practice
    // goes on, with the records kept in memory until the program ends.
    if (!problem.isEmpty() && !r.RecordProblemTold) {
      r.RecordProblemTold = true;
      env().msgBox(RecordNotSavedText(problem), box::Exclamation, kRecordNotSavedTitle);
    }
  }
  if (autoNext) {
    // After the last question: how the paper went, once.
    if (paperDone) {
      r.PaperDone = true;
      env().msgBox(PaperResultText(r.DoneInRun, r.RightInRun), box::Information, kPaperResultTitle);
    }
    return;
  }
  // 18, 20, 22. The answer window over the main window.
  view_.setAnswerBoxes(upper, lower);
  view_.refreshMain();
  view_.showAnswerWindow();
  view_.selectAnswerText();
}

void PracticeSession::Timer1_Timer() {
  PracticeRun& r = run();
  // 1, 2. The top label and the move buttons follow the place in the list.
  view_.setTopLabel(TopLabelText(r.FromLawQuery, r.RunTitle, r.count(), r.CurIndex));
  updateMoveButtons();
  // 3. Both clocks run on; the run clock only while the text was changed.
  r.QuestionSeconds += 1;
  if (r.TimerRunning) r.RunSeconds += 1;
  // 4. The clock label.
  view_.setClockLabel(ClockText(env().now(), r.RunSeconds, r.QuestionSeconds));
}

void PracticeSession::showLabels() {
  const PracticeRun& r = run();
  view_.setTopLabel(TopLabelText(r.FromLawQuery, r.RunTitle, r.count(), r.CurIndex));
  view_.setClockLabel(ClockText(env().now(), r.RunSeconds, r.QuestionSeconds));
}

void PracticeSession::answerWindowMove(int index) {
  PracticeRun& r = run();
  if (index == 1 ? !canGoBack() : !canGoOn()) return;
  const QString upper = moveBy(index == 1 ? -1 : 1);
  // Both boxes show the new question with its answer and law text.
  makeLawText();
  view_.setAnswerBoxes(upper, r.AnswerField + lawTextForBox());
  view_.setExchangeNumber(u'*' + r.CurItemId + u'*');
  // 网上讨论 follows the question now shown.
  view_.setDiscussionLink(discussionLink());
}

void PracticeSession::answerWindowReturn() {
  view_.hideAnswerWindow();
  // A run from the law query ends here and goes back there.
  if (run().FromLawQuery) endRun();
}

bool PracticeSession::hideCurrentQuestion() {
  const int answer = env().msgBox(kHideQuestion, box::YesNo | box::DefaultButton2, kHideTitle);
  if (answer != box::Yes) return false;
  HideTheItem(app_.DataFolder, app_.ItemTable, currentId(), app_.ItemData);
  return true;
}

void PracticeSession::showHistory() { env().msgBox(GetHistoryText(run().NewStory), 0, kHistoryTitle); }

void PracticeSession::showProvider() {
  // A question without a provider block says so rather than showing an
  // empty box.
  const QString& info = run().ProviderInfo;
  env().msgBox(Trim(info).isEmpty() ? kNoProvider : info, 0, kProviderTitle);
}

QString PracticeSession::discussionLink() const {
  return DiscussionLink(app_.DataFolder, app_.ItemTable, currentId(), app_.NewsLink1, app_.NewsLink3);
}

void PracticeSession::exchangeNumberChanged(const QString& text) {
  PracticeRun& r = run();
  const ExchangeStep step = ReadExchangeNumber(text, currentId(), app_.AllItemData);
  if (step.text != text) {
    // The box's own change does the rest on the text put back.
    view_.setExchangeNumber(step.text);
    return;
  }
  if (step.kind == ExchangeStep::Unknown) {
    env().msgBox(kNoSuchExchangeNumber, box::Exclamation);
    return;
  }
  if (step.kind != ExchangeStep::Question) return;
  // The question of that number, from its bank file; the run is not touched.
  const QString fileText = r.BankFile.loadFor(env(), step.id);
  const QuestionFields q = FieldsOf(fileText, ItemSerial(step.id), r.ProviderInfo);
  view_.setAnswerBoxes(q.stem, q.answer + kCrLf + GetLawTxtForDaAn(env(), q.answer));
}

}  // namespace mj
