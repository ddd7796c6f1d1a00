#include "practice/practice_frame_widget.h"

#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTextEdit>
#include <QVBoxLayout>

#include "platform/text_toolkit.h"
#include "practice/answer_check.h"
#include "practice/answer_window.h"
#include "practice/practice_texts.h"
#include "settings/personal_settings_window.h"
#include "settings/settings.h"

namespace mj {

void AltFont(const QList<QPushButton*>& controls) {
  for (QPushButton* c : controls) {
    QFont f = c->font();
    f.setPointSize(13);
    c->setFont(f);
  }
}

void SetArrayEnabled(const QList<QPushButton*>& controls, bool enabled) {
  for (QPushButton* c : controls) c->setEnabled(enabled);
}

void DoHide(const QList<QWidget*>& controls) {
  for (QWidget* c : controls) c->setVisible(false);
}

void DoShow(const QList<QWidget*>& controls) {
  for (QWidget* c : controls) c->setVisible(true);
}

PracticeFrame::PracticeFrame(AppState& app, QWidget* parent) : QWidget(parent), app_(app), session_(app, *this) {
  setObjectName(QStringLiteral("Frame1_3"));
  setFocusPolicy(Qt::StrongFocus);
  build();
  buildAnswerWindow();
  if (app_.settings) {
    app_.Run.FontSize = app_.settings->fontSize();
    connect(app_.settings, &Settings::styleChanged, this, [this] {
      app_.Run.FontSize = app_.settings->fontSize();
      form3_->applyTextStyle(app_.settings->style());
    });
    form3_->applyTextStyle(app_.settings->style());
  }
}

PracticeFrame::~PracticeFrame() = default;

void PracticeFrame::build() {
  auto* outer = new QVBoxLayout(this);
  outer->setContentsMargins(6, 6, 6, 6);

  // The top label and the clock.
  auto* top = new QHBoxLayout;
  Label5 = new QLabel(this);
  Label5->setObjectName(QStringLiteral("Label5"));
  Label5->setWordWrap(true);
  QFont titleFont = Label5->font();
  titleFont.setPointSize(titleFont.pointSize() + 2);
  titleFont.setBold(true);
  Label5->setFont(titleFont);
  Label6 = new QLabel(this);
  Label6->setObjectName(QStringLiteral("Label6"));
  Label6->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  top->addWidget(Label5, 1);
  top->addWidget(Label6);
  outer->addLayout(top);

  // The question.
  Text3 = new QTextEdit(this);
  Text3->setObjectName(QStringLiteral("Text3"));
  // The candidate may type in the question (to mark words); any change of
  // its text, typed or a new question, sets the run's clock going.
  Text3->setAcceptRichText(false);
  outer->addWidget(Text3, 1);
  connect(Text3, &QTextEdit::textChanged, this, [this] { session_.questionTextChanged(); });

  // The answers. The fifteen buttons of a free-choice question take the
  // whole row on a 1024 pixel wide screen.
  auto* answers = new QHBoxLayout;
  Frame6 = new QGroupBox(QStringLiteral("答案"), this);
  Frame6->setObjectName(QStringLiteral("Frame6"));
  const QStringList& captions = AnswerCaptions();
  for (int i = 0; i < kAnswerButtonCount; ++i) {
    auto* b = new QPushButton(captions[i], Frame6);
    b->setObjectName(QStringLiteral("Command2_%1").arg(i));
    b->setAutoDefault(false);
    b->setVisible(false);
    connect(b, &QPushButton::clicked, this, [this, i] {
      clearTyped();
      session_.Command2_Click(i);
    });
    Command2.append(b);
  }
  answers->addWidget(Frame6);
  typedLabel = new QLabel(this);
  typedLabel->setObjectName(QStringLiteral("typedLabel"));
  typedLabel->setToolTip(QStringLiteral("键盘答题：单选题直接按A～D；多选题、任意选择题先按字母，再按回车。"));
  answers->addWidget(typedLabel);
  answers->addStretch(1);
  outer->addLayout(answers);

  // The uncertain mark, moving and the text size.
  auto* bottom = new QHBoxLayout;
  Check1 = new QCheckBox(this);
  Check1->setObjectName(QStringLiteral("Check1"));
  Label13 = new QLabel(QStringLiteral("也许是……"), this);
  Label13->setObjectName(QStringLiteral("Label13"));
  Label13->installEventFilter(this);
  bottom->addWidget(Check1);
  bottom->addWidget(Label13);
  bottom->addSpacing(12);
  moveBar_ = new QWidget(this);
  auto* moves = new QHBoxLayout(moveBar_);
  moves->setContentsMargins(0, 0, 0, 0);
  const QStringList moveCaptions = {QStringLiteral("设置"), QStringLiteral("上题"), QStringLiteral("下题"),
                                    QStringLiteral("返回")};
  for (int i = 0; i < moveCaptions.size(); ++i) {
    auto* b = new QPushButton(moveCaptions[i], moveBar_);
    b->setObjectName(QStringLiteral("Frame3Cmd_%1").arg(i));
    b->setAutoDefault(false);
    connect(b, &QPushButton::clicked, this, [this, i] { session_.Frame3Cmd_Click(i); });
    moves->addWidget(b);
    Frame3Cmd.append(b);
  }
  Frame3Cmd[1]->setToolTip(QStringLiteral("Page Up"));
  Frame3Cmd[2]->setToolTip(QStringLiteral("Page Down"));
  bottom->addWidget(moveBar_);
  bottom->addStretch(1);
  const QStringList fontCaptions = {QStringLiteral("大字体"), QStringLiteral("小字体")};
  for (int i = 0; i < fontCaptions.size(); ++i) {
    auto* b = new QPushButton(fontCaptions[i], this);
    b->setObjectName(QStringLiteral("Frame6BigOrSmallCmd_%1").arg(i));
    b->setAutoDefault(false);
    connect(b, &QPushButton::clicked, this, [this, i] { session_.Frame6BigOrSmallCmd_Click(i); });
    bottom->addWidget(b);
    Frame6BigOrSmallCmd.append(b);
  }
  outer->addLayout(bottom);

  // The keys of the run reach the frame from every control on it.
  for (QWidget* w : findChildren<QWidget*>()) w->installEventFilter(this);
  type_ = 1;
  layoutAnswerButtons();
}

void PracticeFrame::buildAnswerWindow() {
  form3_ = new Form3(this);
  connect(form3_, &Form3::moveRequested, this, [this](int i) { session_.answerWindowMove(i); });
  connect(form3_, &Form3::returnRequested, this, [this] { session_.answerWindowReturn(); });
  connect(form3_, &Form3::hideRequested, this, [this] {
    if (session_.hideCurrentQuestion()) form3_->markHidden();
  });
  connect(form3_, &Form3::historyRequested, this, [this] { session_.showHistory(); });
  connect(form3_, &Form3::providerRequested, this, [this] { session_.showProvider(); });
  connect(form3_, &Form3::discussionRequested, this, [this](const QString& a) { ShellOpen(app_.env, a); });
  connect(form3_, &Form3::exchangeNumberChanged, this, [this](const QString& t) { session_.exchangeNumberChanged(t); });
  connect(form3_, &Form3::activated, this, [this] { setDiscussionLink(session_.discussionLink()); });
  connect(form3_, &Form3::visibilityChanged, this, [this](bool v) {
    setBlocked(v);
    // Back from the answer window: the frame's keys work at once.
    if (!v && isVisible()) {
      window()->activateWindow();
      setFocus(Qt::OtherFocusReason);
    }
  });
}

void PracticeFrame::setLawQueryHook(std::function<void()> hook) {
  const bool available = static_cast<bool>(hook);
  disconnect(form3_, &Form3::lawQueryRequested, this, nullptr);
  if (available) connect(form3_, &Form3::lawQueryRequested, this, std::move(hook));
  form3_->setLawQueryAvailable(available);
}

void PracticeFrame::setEditorHook(std::function<void()> hook) {
  const bool available = static_cast<bool>(hook);
  disconnect(form3_, &Form3::editorRequested, this, nullptr);
  if (available) connect(form3_, &Form3::editorRequested, this, std::move(hook));
  form3_->setEditorAvailable(available);
}

void PracticeFrame::bringUpForList() {
  form3_->hide();
  QWidget* main = window();
  if (main != this) {
    main->show();
    main->raise();
    main->activateWindow();
  }
}

bool PracticeFrame::startListRun(const QString& ids, bool fromLawQuery) {
  bringUpForList();
  return session_.startListRun(ids, fromLawQuery);
}

bool PracticeFrame::startOwnListRun(const QString& ids, const QString& title) {
  bringUpForList();
  return session_.startOwnListRun(ids, title);
}

// --- the answer buttons ---

void PracticeFrame::IniObjInFrame1_3() {
  AltFont(Command2);
  layoutAnswerButtons();
}

void PracticeFrame::PutFrame6Cmd(int type) {
  type_ = type;
  clearTyped();
  layoutAnswerButtons();
}

void PracticeFrame::layoutAnswerButtons() {
  const AnswerRow row = AnswerRowOf(type_);
  // Twips of the design, scaled by the screen factors; never smaller than
  // the captions need.
  const double sx = app_.ScaleX > 0 ? app_.ScaleX / 15.0 : 1.0 / 15.0;
  const double sy = app_.ScaleY > 0 ? app_.ScaleY / 15.0 : 1.0 / 15.0;
  int captionWidth = 0;
  for (int i = row.first; i <= row.last; ++i)
    captionWidth = qMax(captionWidth, Command2[i]->fontMetrics().horizontalAdvance(Command2[i]->text()));
  const int width = qMax(static_cast<int>(row.width * sx), captionWidth + 12);
  const int height = qMax(static_cast<int>(row.height * sy), Command2[0]->fontMetrics().height() + 10);
  const int step = qMax(static_cast<int>(row.step * sx), width + 2);
  // A narrow margin in the frame: the row of a free-choice question must
  // fit a 1024 pixel wide window.
  const int left = qBound(4, static_cast<int>(row.left * sx), 12);
  const int top = Frame6->fontMetrics().height() + 6;
  for (int i = 0; i < kAnswerButtonCount; ++i) {
    QPushButton* b = Command2[i];
    if (!row.shows(i)) {
      b->setVisible(false);
      continue;
    }
    b->setGeometry(left + (i - row.first) * step, top, width, height);
    b->setVisible(true);
  }
  const int count = row.last - row.first + 1;
  Frame6->setMinimumSize(left * 2 + (count - 1) * step + width, top + height + 8);
}

void PracticeFrame::setAnswerButtonsEnabled(bool enabled) { SetArrayEnabled(Command2, enabled); }

// --- the question ---

void PracticeFrame::setQuestionText(const QString& text) {
  const QString shown = ShownText(text);
  if (shown == Text3->toPlainText()) return;
  Text3->setPlainText(shown);
}

QString PracticeFrame::questionText() const { return HeldText(Text3->toPlainText()); }

void PracticeFrame::setQuestionFontSize(int size) {
  QFont f = Text3->font();
  f.setPointSize(size);
  Text3->setFont(f);
}

bool PracticeFrame::uncertainMarked() const { return Check1->isChecked(); }
void PracticeFrame::clearUncertainMark() { Check1->setChecked(false); }

void PracticeFrame::setMoveEnabled(bool previous, bool next) {
  Frame3Cmd[1]->setEnabled(previous);
  Frame3Cmd[2]->setEnabled(next);
  form3_->setMoveEnabled(previous, next);
}

void PracticeFrame::setTopLabel(const QString& text) {
  if (Label5->text() != text) Label5->setText(text);
}

void PracticeFrame::setClockLabel(const QString& text) { Label6->setText(ShownText(text)); }

// --- the main window ---

void PracticeFrame::showFrame(bool visible) {
  setVisible(visible);
  if (visible && main_.showPracticeFace) main_.showPracticeFace();
}

void PracticeFrame::hideFrames() {
  if (main_.hideFrames)
    main_.hideFrames();
  else
    setVisible(false);
}

void PracticeFrame::focusFrame() { setFocus(Qt::OtherFocusReason); }

void PracticeFrame::showPersonalSettings() {
  if (!form2_) form2_ = new Form2(this);
  form2_->show();
  form2_->raise();
  form2_->activateWindow();
}

Directory* PracticeFrame::directory() { return main_.directory ? main_.directory() : nullptr; }

void PracticeFrame::refreshDirectory() {
  if (main_.refreshDirectory) main_.refreshDirectory();
}

void PracticeFrame::showDirectoryGrid(bool visible) {
  if (main_.showDirectoryGrid) main_.showDirectoryGrid(visible);
}

void PracticeFrame::setDirectoryFontSize(int size) {
  if (main_.setDirectoryFontSize) main_.setDirectoryFontSize(size);
}

void PracticeFrame::showListGrid(bool hideFrameParts) {
  if (main_.showListGrid) main_.showListGrid(hideFrameParts);
}

void PracticeFrame::showListOwner() {
  if (listOwnerHook) {
    listOwnerHook();
    return;
  }
  showDirectoryGrid(true);
}

void PracticeFrame::refreshMain() {
  if (main_.refreshMain) main_.refreshMain();
}

void PracticeFrame::showLawQuery() {
  if (lawQueryHook) {
    lawQueryHook();
    return;
  }
  // Without a law query window the directory is what stays.
  showDirectoryGrid(true);
}

// --- the answer window ---

void PracticeFrame::clearAnswerBoxes() { form3_->clearBoxes(); }

void PracticeFrame::setAnswerBoxes(const QString& upper, const QString& lower) { form3_->setBoxes(upper, lower); }

void PracticeFrame::setExchangeNumber(const QString& text) { form3_->setExchangeNumber(text); }

void PracticeFrame::setDiscussionLink(const QString& address) { form3_->setDiscussionLink(address); }

void PracticeFrame::showAnswerWindow() {
  if (!form3_->isVisible()) {
    // Over the main window, in the middle of it.
    const QWidget* main = window();
    const QRect g = main->frameGeometry();
    QRect r = form3_->frameGeometry();
    r.moveCenter(g.center());
    form3_->move(r.topLeft());
  }
  form3_->show();
  form3_->raise();
  form3_->activateWindow();
}

void PracticeFrame::hideAnswerWindow() { form3_->hide(); }

void PracticeFrame::selectAnswerText() { form3_->selectAnswerText(); }

// --- keys ---

void PracticeFrame::setBlocked(bool blocked) {
  blocked_ = blocked;
  Frame6->setEnabled(!blocked);
  moveBar_->setEnabled(!blocked);
  Check1->setEnabled(!blocked);
  if (blocked) clearTyped();
}

void PracticeFrame::clearTyped() {
  keys_.clear();
  showTyped();
}

void PracticeFrame::showTyped() {
  const QString& letters = keys_.typed();
  typedLabel->setText(letters.isEmpty() ? QString() : QStringLiteral("键入：") + letters);
}

bool PracticeFrame::handleKey(QKeyEvent* e) {
  if (blocked_ || !isVisible()) return false;
  if (e->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return false;
  auto press = [](QPushButton* b) {
    if (b->isHidden() || !b->isEnabled()) {
      QApplication::beep();
      return;
    }
    b->click();
  };
  AnswerKeyAction action;
  switch (e->key()) {
    case Qt::Key_PageUp:
      press(Frame3Cmd[1]);
      return true;
    case Qt::Key_PageDown:
      press(Frame3Cmd[2]);
      return true;
    case Qt::Key_A:
    case Qt::Key_B:
    case Qt::Key_C:
    case Qt::Key_D:
      action = keys_.letter(QChar(u'A' + (e->key() - Qt::Key_A)), type_);
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      action = keys_.enter();
      break;
    case Qt::Key_Escape:
      // Esc clears typed letters; with none it is 返回.
      action = keys_.cancel();
      if (action.kind == AnswerKeyAction::Ignored) {
        press(Frame3Cmd[3]);
        return true;
      }
      break;
    case Qt::Key_Backspace:
      action = keys_.cancel();
      break;
    default:
      return false;
  }
  switch (action.kind) {
    case AnswerKeyAction::Ignored:
      return false;
    case AnswerKeyAction::Answer:
      showTyped();
      press(Command2[action.button]);
      return true;
    case AnswerKeyAction::Unknown:
      showTyped();
      QApplication::beep();
      return true;
    case AnswerKeyAction::Typed:
    case AnswerKeyAction::Cleared:
      showTyped();
      return true;
  }
  return true;
}

void PracticeFrame::keyPressEvent(QKeyEvent* event) {
  if (!handleKey(event)) QWidget::keyPressEvent(event);
}

bool PracticeFrame::eventFilter(QObject* watched, QEvent* event) {
  if (watched == Label13 && event->type() == QEvent::MouseButtonRelease && Check1->isEnabled()) {
    // A click on the label sets the box.
    Check1->setChecked(true);
    return true;
  }
  if (event->type() == QEvent::KeyPress && handleKey(static_cast<QKeyEvent*>(event))) return true;
  return QWidget::eventFilter(watched, event);
}

}  // namespace mj
