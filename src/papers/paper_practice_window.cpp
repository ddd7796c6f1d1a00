#include "papers/paper_practice_window.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>

#include "papers/find_replace_window.h"
#include "papers/paper_window.h"
#include "papers/progress_record.h"
#include "papers/text_box_widget.h"
#include "platform/paths.h"
#include "platform/rich_wrap_widget.h"
#include "platform/text_toolkit.h"
#include "settings/settings.h"
#include "settings/text_style_widget.h"

namespace mj {

namespace {

constexpr int kAnswerButtons = 15;
const QStringList kCaptions = {
    QStringLiteral("A"),      QStringLiteral("B"),      QStringLiteral("C"),    QStringLiteral("D"),
    QStringLiteral("AB"),     QStringLiteral("AC"),     QStringLiteral("AD"),   QStringLiteral("BC"),
    QStringLiteral("BD"),     QStringLiteral("CD"),     QStringLiteral("ABC"),  QStringLiteral("ABD"),
    QStringLiteral("ACD"),    QStringLiteral("BCD"),    QStringLiteral("ABCD"), QStringLiteral("上一题"),
    QStringLiteral("下一题"), QStringLiteral("刷新"),   QStringLiteral("法律查询"), QStringLiteral("返回")};

// Whether answer button i works for a question of section t: a single
// choice takes one letter, a multiple choice two or more, a free choice any.
bool ButtonWorks(int i, int t) { return (t == 1 && i <= 3) || (t == 2 && i >= 4) || t == 3; }

}  // namespace

QString Form14::refreshHelpText() {
  return QStringLiteral("    此按钮专用于左边的第二个文本框，当这个框里的参见法律/法规名引") +
         QStringLiteral("用错误时，比如说宪法没有加“《》”，“刑法”写成了“型法”时程") +
         QStringLiteral("序找不到参见法条，这时程序会在答案后自动加一个空的“《》”，你可") +
         QStringLiteral("以用鼠标把正确的法律/法规名拖入该括号内（或直接打字填入），然后") +
         QStringLiteral("点这个刷新按钮，以使最下面的文本框里能出现希望得到的参见法条。") +
         QStringLiteral("另外，为便于你添加“《》”和刷新，程序为答案框提供了一个右键菜单。");
}

Form14::Form14(const Env& env, PaperState& state, Form10& paper, QWidget* parent)
    : QWidget(parent, Qt::Window), env_(env), state_(state), paper_(paper) {
  setObjectName(QStringLiteral("Form14"));
  setWindowTitle(QStringLiteral("做外部试题"));
  build();
  resize(980, 700);
}

void Form14::build() {
  auto* outer = new QVBoxLayout(this);
  Label1 = new QLabel(this);
  Label1->setObjectName(QStringLiteral("Label1"));
  Label1->setWordWrap(true);
  outer->addWidget(Label1);

  splitter = new QSplitter(Qt::Vertical, this);
  splitter->setObjectName(QStringLiteral("splitter"));
  splitter->setChildrenCollapsible(false);
  auto box = [this](const QString& name) {
    auto* b = new QPlainTextEdit(splitter);
    b->setObjectName(name);
    SetRichWrap(b, true);
    b->setMinimumHeight(60);
    splitter->addWidget(b);
    return b;
  };
  RichTextBox1 = box(QStringLiteral("RichTextBox1"));
  RichTextBox2 = box(QStringLiteral("RichTextBox2"));
  RichTextBox3 = box(QStringLiteral("RichTextBox3"));
  RichTextBox3->setReadOnly(true);
  RichTextBox3->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  outer->addWidget(splitter, 1);

  auto* bottom = new QHBoxLayout;
  auto* answers = new QGridLayout;
  auto* actions = new QGridLayout;
  for (int i = 0; i < kCaptions.size(); ++i) {
    auto* b = new QPushButton(kCaptions[i], this);
    b->setObjectName(QStringLiteral("Command1_%1").arg(i));
    b->setAutoDefault(false);
    Command1.append(b);
  }
  // Rows of one, two and three or four letters.
  for (int i = 0; i < 4; ++i) answers->addWidget(Command1[i], 0, i);
  for (int i = 4; i < 10; ++i) answers->addWidget(Command1[i], 1, i - 4);
  for (int i = 10; i < 15; ++i) answers->addWidget(Command1[i], 2, i - 10);
  actions->addWidget(Command1[15], 0, 0);
  actions->addWidget(Command1[16], 0, 1);
  actions->addWidget(Command1[17], 0, 2);
  actions->addWidget(Command1[18], 1, 0, 1, 2);
  actions->addWidget(Command1[19], 1, 2);
  bottom->addLayout(answers);
  typedLabel = new QLabel(this);
  typedLabel->setObjectName(QStringLiteral("typedLabel"));
  typedLabel->setMinimumWidth(typedLabel->fontMetrics().horizontalAdvance(QStringLiteral("已按：ABCD")) + 8);
  bottom->addWidget(typedLabel);
  bottom->addStretch(1);
  bottom->addLayout(actions);
  outer->addLayout(bottom);
  for (int i : {17, 18, 19}) Command1[i]->setToolTip(buttonTip());

  for (int i = 0; i < kAnswerButtons; ++i)
    connect(Command1[i], &QPushButton::clicked, this, [this, i] { answer(i); });
  connect(Command1[15], &QPushButton::clicked, this, [this] { move(-1); });
  connect(Command1[16], &QPushButton::clicked, this, [this] { move(1); });
  connect(Command1[17], &QPushButton::clicked, this, &Form14::refresh);
  connect(Command1[18], &QPushButton::clicked, this, &Form14::openLawQuery);
  connect(Command1[19], &QPushButton::clicked, this, &Form14::leave);

  connect(RichTextBox2, &QPlainTextEdit::textChanged, this, [this] {
    if (!filling_) answerEdited_ = true;
  });

  // The answer box's own menu: the law name's brackets, the refresh of the
  // lower box and find/replace over the paper, above the usual entries.
  Menu4RightButton = new QMenu(this);
  Menu4RightButton->setObjectName(QStringLiteral("Menu4RightButton"));
  AddBracks = Menu4RightButton->addAction(QStringLiteral("在插入点加“《》”"));
  AddBracks->setObjectName(QStringLiteral("AddBracks"));
  RefreshAboutLaw = Menu4RightButton->addAction(QStringLiteral("用答案框刷新参见框"));
  RefreshAboutLaw->setObjectName(QStringLiteral("RefreshAboutLaw"));
  Find_Repl = Menu4RightButton->addAction(QStringLiteral("把所选定的全部替换为……"));
  Find_Repl->setObjectName(QStringLiteral("Find_Repl"));
  connect(AddBracks, &QAction::triggered, this, [this] {
    QTextCursor c = RichTextBox2->textCursor();
    c.insertText(QStringLiteral("《》"));
    // The caret between the brackets, where the name goes.
    c.movePosition(QTextCursor::PreviousCharacter);
    RichTextBox2->setTextCursor(c);
  });
  connect(RefreshAboutLaw, &QAction::triggered, this, &Form14::refresh);
  connect(Find_Repl, &QAction::triggered, this, [this] {
    paper_.findWindow()->openFor(kFindFromPaperPractice, paper_.RichTextBox1, this, paper_.SelectionForFind);
  });
  RichTextBox2->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(RichTextBox2, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) {
    QMenu* menu = RichTextBox2->createStandardContextMenu();
    QAction* first = menu->actions().isEmpty() ? nullptr : menu->actions().first();
    menu->insertActions(first, Menu4RightButton->actions());
    menu->insertSeparator(first);
    menu->exec(RichTextBox2->viewport()->mapToGlobal(at));
    delete menu;
  });

  RichTextBox2->viewport()->installEventFilter(this);
  RichTextBox3->viewport()->installEventFilter(this);
  showAnswerBoxes(false);
}

void Form14::setSettings(Settings* settings) {
  if (settings_) disconnect(settings_, nullptr, this, nullptr);
  settings_ = settings;
  if (settings_) connect(settings_, &Settings::styleChanged, this, &Form14::applyStyle);
  applyStyle();
}

void Form14::applyStyle() {
  if (!settings_) return;
  for (QPlainTextEdit* b : {RichTextBox1, RichTextBox2, RichTextBox3}) ApplyTextStyle(b, settings_->style());
}

void Form14::setBoxText(QPlainTextEdit* box, const QString& text) {
  // A lone CR (a cut that ends inside a line end) shows as nothing.
  QString shown = ShownText(text);
  shown.remove(u'\r');
  box->setPlainText(shown);
}

void Form14::showTyped() {
  typedLabel->setText(keys_.typed().isEmpty() ? QString() : QStringLiteral("已按：") + keys_.typed());
}

void Form14::fillLowerBox() { setBoxText(RichTextBox3, AboutLawText(env_, HeldTextOf(RichTextBox2))); }

void Form14::showAnswerBoxes(bool shown) {
  RichTextBox2->setVisible(shown);
  RichTextBox3->setVisible(shown);
  if (shown) {
    // The stem gives up room to the answer and the law text.
    const int h = qMax(splitter->height(), 300);
    splitter->setSizes({h * 35 / 100, h * 15 / 100, h * 50 / 100});
  }
}

void Form14::startRun(const PracticeStart& start) {
  OutRecFile = start.recFile;
  OutTiList = start.list;
  OutTiTotal = start.total;
  OutTiPos = 0;
  OutTiNo = 0;
  group.clear();
  failureSaid_ = false;
  vanishedSaid_ = false;
  running_ = true;
  move(1);
  show();
  raise();
  activateWindow();
  Command1[16]->setFocus();
}

void Form14::move(int step) {
  const qint64 cells = TiListCount(OutTiList);
  if (cells < 1) return;
  OutTiPos = std::clamp<qint64>(OutTiPos + step, 1, cells);
  OutTiNo = TiListNumber(OutTiList, OutTiPos);
  const int t = GetTiClass(state_, OutTiNo);

  showAnswerBoxes(false);
  for (int i = 0; i < kAnswerButtons; ++i) Command1[i]->setEnabled(ButtonWorks(i, t));
  setBoxText(RichTextBox1, ShowOutTi(state_, group, OutTiNo));
  filling_ = true;
  setBoxText(RichTextBox2, WithLawNameGap(GetDaAnText(state_, OutTiNo)));
  filling_ = false;
  fillLowerBox();
  Command1[16]->setEnabled(OutTiPos < cells);
  Command1[15]->setEnabled(OutTiPos > 1);
  Label1->setText(PracticeStatusLine(cells, t, GetTiNum(state_, OutTiNo)));
  answerEdited_ = false;
  keys_.clear();
  showTyped();
}

void Form14::answer(int button) {
  if (button < 0 || button >= kAnswerButtons || !Command1[button]->isEnabled()) return;
  const int t = GetTiClass(state_, OutTiNo);
  const qint64 n = GetTiNum(state_, OutTiNo);
  if (t == 0) return;
  const AnswerOutcome outcome =
      JudgeAnswer(Command1[button]->text(), HeldTextOf(RichTextBox2), ProgressRecord::Read(OutRecFile).value(t, n));

  // The record is on the disk before the outcome shows.
  const QString paperFile = paper_.fileName();
  if (!paperFile.isEmpty() && !FileExists(paperFile) && !vanishedSaid_) {
    vanishedSaid_ = true;
    env_.msgBox(QStringLiteral("试卷文件") + paperFile + QStringLiteral("已经不存在了，可能被移走或删除了。做题记录仍然记在") +
                    OutRecFile + QStringLiteral("里；回到试卷窗口后请按“保存一下”把试卷重新保存。"),
                box::Exclamation);
  }
  if (!OutRecFile.isEmpty() && !WriteAnswerRecord(OutRecFile, t, n, outcome.value)) recordFailed();

  for (int i = 0; i < kAnswerButtons; ++i) Command1[i]->setEnabled(false);
  showAnswerBoxes(true);
  setBoxText(RichTextBox3, outcome.line + HeldTextOf(RichTextBox3));
  keys_.clear();
  showTyped();
}

void Form14::recordFailed() {
  if (failureSaid_) return;
  failureSaid_ = true;
  env_.msgBox(QStringLiteral("做题记录无法写入文件") + OutRecFile +
                  QStringLiteral("，这道题的结果没有记下来。以后的题如果也不能记录，不再另行提示。"),
              box::Exclamation);
}

void Form14::refresh() {
  if (answerEdited_)
    fillLowerBox();
  else
    env_.msgBox(refreshHelpText(), box::Information);
}

void Form14::openLawQuery() {
  if (lawQueryHook) lawQueryHook(HeldTextOf(RichTextBox3));
}

QString Form14::finishRun() {
  running_ = false;
  const QString renamed = LeavePaperPractice(state_, paper_.fileName(), OutRecFile);
  Form13* find = paper_.findWindow();
  if (find->FindCaller == kFindFromPaperPractice) find->hide();
  return renamed;
}

void Form14::leave() {
  if (leaving_) return;
  leaving_ = true;
  const QString renamed = running_ ? finishRun() : paper_.fileName();
  close();
  leaving_ = false;
  if (onLeft) onLeft(renamed);
}

void Form14::closeEvent(QCloseEvent* event) {
  // The window's close button leaves as 返回 does.
  if (!leaving_ && running_) {
    const QString renamed = finishRun();
    QWidget::closeEvent(event);
    if (onLeft) onLeft(renamed);
    return;
  }
  QWidget::closeEvent(event);
}

bool Form14::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonRelease) {
    if (watched == RichTextBox2->viewport()) {
      // The selection is what find/replace starts with.
      const QString selected = RichTextBox2->textCursor().selectedText();
      if (!selected.isEmpty())
        paper_.SelectionForFind = HeldText(QString(selected).replace(QChar::ParagraphSeparator, u'\n'));
    } else if (watched == RichTextBox3->viewport()) {
      // A selection on a printed article opens it in the law query.
      const QTextCursor c = RichTextBox3->textCursor();
      if (c.selectedText().size() > 5 && openLawHook) {
        const bool ctrl = static_cast<QMouseEvent*>(event)->modifiers().testFlag(Qt::ControlModifier);
        openLawHook(RichTextBox3->toPlainText(), c.selectionStart() + 1, ctrl);
      }
    }
  }
  return QWidget::eventFilter(watched, event);
}

void Form14::keyPressEvent(QKeyEvent* event) {
  const int t = GetTiClass(state_, OutTiNo);
  AnswerKeyAction a;
  const int key = event->key();
  const bool plain = !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
  if (plain && (key == Qt::Key_PageUp || key == Qt::Key_PageDown)) {
    // As in the practice of the banks: the page keys are 上一题 and 下一题.
    QPushButton* b = Command1[key == Qt::Key_PageUp ? 15 : 16];
    if (b->isEnabled())
      b->click();
    else
      QApplication::beep();
    event->accept();
    return;
  }
  if (plain && t != 0 && key >= Qt::Key_A && key <= Qt::Key_D)
    a = keys_.letter(QChar(u'A' + (key - Qt::Key_A)), t);
  else if (plain && (key == Qt::Key_Return || key == Qt::Key_Enter))
    a = keys_.enter();
  else if (plain && key == Qt::Key_Escape) {
    // Esc clears the letters typed; with none it is 返回, as the close
    // button and Esc of the other windows.
    a = keys_.cancel();
    if (a.kind == AnswerKeyAction::Ignored) {
      Command1[19]->click();
      event->accept();
      return;
    }
  } else if (plain && key == Qt::Key_Backspace)
    a = keys_.cancel();
  switch (a.kind) {
    case AnswerKeyAction::Ignored:
      QWidget::keyPressEvent(event);
      return;
    case AnswerKeyAction::Answer:
      if (a.button >= 0 && a.button < kAnswerButtons && Command1[a.button]->isEnabled())
        Command1[a.button]->click();
      else
        QApplication::beep();
      break;
    case AnswerKeyAction::Unknown:
      QApplication::beep();
      break;
    case AnswerKeyAction::Typed:
    case AnswerKeyAction::Cleared:
      break;
  }
  showTyped();
  event->accept();
}

}  // namespace mj
