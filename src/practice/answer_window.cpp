#include "practice/answer_window.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QTextCursor>
#include <QTextEdit>
#include <QVBoxLayout>

#include "platform/named_controls_widget.h"
#include "platform/text_toolkit.h"
#include "settings/text_style_widget.h"

namespace mj {

namespace {
const QString kHideCaption = QStringLiteral("屏蔽该题");
const QString kHiddenCaption = QStringLiteral("已经屏蔽");
const QString kDiscussionTip = QStringLiteral("到网上进行专“题”讨论。");
constexpr int kStandardWidth = 780;
constexpr int kStandardHeight = 580;
}  // namespace

Form3::Form3(QWidget* parent) : QWidget(parent, Qt::Window) {
  setObjectName(QStringLiteral("Form3"));
  setWindowTitle(QStringLiteral("答案与解析"));

  auto* outer = new QVBoxLayout(this);
  splitter = new QSplitter(Qt::Vertical, this);
  splitter->setObjectName(QStringLiteral("splitter"));
  for (int i = 0; i < 2; ++i) {
    auto* box = new QTextEdit(splitter);
    box->setObjectName(QStringLiteral("Form3Text_%1").arg(i));
    box->setReadOnly(true);
    box->setAcceptRichText(false);
    box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    splitter->addWidget(box);
    Form3Text.append(box);
  }
  Form3Text[1]->viewport()->installEventFilter(this);
  splitter->setChildrenCollapsible(false);
  outer->addWidget(splitter, 1);

  auto button = [this](const QString& name, const QString& caption, const QString& tip = QString()) {
    QPushButton* b = NamedButton(this, name, caption);
    if (!tip.isEmpty()) b->setToolTip(tip);
    return b;
  };

  // The tools for the question.
  auto* tools = new QHBoxLayout;
  Label1 = new QLabel(QStringLiteral("网络交流号"), this);
  Label1->setObjectName(QStringLiteral("Label1"));
  Text1 = new QLineEdit(this);
  Text1->setObjectName(QStringLiteral("Text1"));
  Text1->setToolTip(QStringLiteral("可通过QQ等通讯软件得到其它交流号，然后粘贴到这里，便可快速交流试题。"));
  Text1->setMinimumWidth(Text1->fontMetrics().horizontalAdvance(QStringLiteral("*00000000000*")) + 24);
  Label1->setBuddy(Text1);
  tools->addWidget(Label1);
  tools->addWidget(Text1);
  Command5.append(button(QStringLiteral("Command5_0"), QStringLiteral("做题历史")));
  Command5.append(button(QStringLiteral("Command5_1"), QStringLiteral("试题提供")));
  Command6 = button(QStringLiteral("Command6"), QStringLiteral("网上讨论"));
  Command2 = button(QStringLiteral("Command2"), QStringLiteral("法律查询"),
                    QStringLiteral("在查询法律的同时还能使你做一下出自该法条的其它试题"));
  Command3 = button(QStringLiteral("Command3"), kHideCaption,
                    QStringLiteral("如果此题已经非常熟练或有错误或重复，则点击这里便可使其永不在此处出现。"));
  Command4 =
      button(QStringLiteral("Command4"), QStringLiteral("修改/注释"), QStringLiteral("对本题进行修改、加注释并保存。"));
  for (QPushButton* b : {Command5[0], Command5[1], Command6, Command2, Command3, Command4}) tools->addWidget(b);
  tools->addStretch(1);
  outer->addLayout(tools);

  // Moving on.
  auto* moves = new QHBoxLayout;
  moves->addStretch(1);
  const QStringList captions = {QStringLiteral("标准"), QStringLiteral("上一题"), QStringLiteral("下一题"),
                                QStringLiteral("返回")};
  for (int i = 0; i < captions.size(); ++i) {
    QPushButton* b = button(QStringLiteral("Command1_%1").arg(i), captions[i]);
    moves->addWidget(b);
    Command1.append(b);
  }
  moves->addStretch(1);
  outer->addLayout(moves);

  // Windows of later parts of the program: enabled when they are wired.
  Command2->setEnabled(false);
  Command4->setEnabled(false);
  Command6->setEnabled(false);

  connect(Command1[0], &QPushButton::clicked, this, &Form3::standardLayout);
  connect(Command1[1], &QPushButton::clicked, this, [this] { emit moveRequested(1); });
  connect(Command1[2], &QPushButton::clicked, this, [this] { emit moveRequested(2); });
  connect(Command1[3], &QPushButton::clicked, this, &Form3::returnRequested);
  connect(Command2, &QPushButton::clicked, this, &Form3::lawQueryRequested);
  connect(Command3, &QPushButton::clicked, this, &Form3::hideRequested);
  connect(Command4, &QPushButton::clicked, this, &Form3::editorRequested);
  connect(Command5[0], &QPushButton::clicked, this, &Form3::historyRequested);
  connect(Command5[1], &QPushButton::clicked, this, &Form3::providerRequested);
  connect(Command6, &QPushButton::clicked, this, [this] {
    if (!link_.isEmpty()) emit discussionRequested(link_);
  });
  connect(Text1, &QLineEdit::textChanged, this, &Form3::exchangeNumberChanged);

  // 返回 is the window's default: Enter and Esc anywhere in the window do
  // it, Page Up and Page Down move as 上一题 and 下一题 do.
  Command1[3]->setDefault(true);
  for (QWidget* w : findChildren<QWidget*>()) w->installEventFilter(this);

  resize(kStandardWidth, kStandardHeight);
  standardLayout();
}

bool Form3::handleKey(QObject* at, QKeyEvent* e) {
  if (e->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return false;
  auto press = [](QPushButton* b) {
    if (b->isEnabled()) b->click();
    return true;
  };
  switch (e->key()) {
    case Qt::Key_Escape:
      return press(Command1[3]);
    case Qt::Key_Return:
    case Qt::Key_Enter:
      // A button that has the focus is pressed itself. In the exchange
      // number box Enter does nothing: a number takes effect as it is typed.
      if (auto* b = qobject_cast<QPushButton*>(at)) return press(b);
      if (at == Text1) return true;
      return press(Command1[3]);
    case Qt::Key_PageUp:
      return press(Command1[1]);
    case Qt::Key_PageDown:
      return press(Command1[2]);
    default:
      return false;
  }
}

void Form3::keyPressEvent(QKeyEvent* event) {
  if (!handleKey(this, event)) QWidget::keyPressEvent(event);
}

void Form3::IniForm3Text() {
  clearBoxes();
  standardLayout();
}

void Form3::clearBoxes() {
  Form3Text[0]->clear();
  Form3Text[1]->clear();
}

void Form3::setBoxes(const QString& upper, const QString& lower) {
  Form3Text[0]->setPlainText(ShownText(upper));
  Form3Text[1]->setPlainText(ShownText(lower));
}

QString Form3::boxText(int i) const { return HeldText(Form3Text[i]->toPlainText()); }

void Form3::setExchangeNumber(const QString& text) {
  if (Text1->text() != text) Text1->setText(text);
}

void Form3::selectAnswerText() {
  QTextEdit* box = Form3Text[1];
  box->selectAll();
  box->setFocus(Qt::OtherFocusReason);
}

void Form3::SaveForm3() {
  kept_.upper = Form3Text[0]->toPlainText();
  kept_.lower = Form3Text[1]->toPlainText();
  kept_.upperScroll = Form3Text[0]->verticalScrollBar()->value();
  kept_.lowerScroll = Form3Text[1]->verticalScrollBar()->value();
  kept_.sizes = splitter->sizes();
}

void Form3::RestoreForm3() {
  if (Form3Text[0]->toPlainText() != kept_.upper) Form3Text[0]->setPlainText(kept_.upper);
  if (Form3Text[1]->toPlainText() != kept_.lower) Form3Text[1]->setPlainText(kept_.lower);
  if (!kept_.sizes.isEmpty()) splitter->setSizes(kept_.sizes);
  Form3Text[0]->verticalScrollBar()->setValue(kept_.upperScroll);
  Form3Text[1]->verticalScrollBar()->setValue(kept_.lowerScroll);
}

void Form3::applyTextStyle(const TextStyle& style) {
  SaveForm3();
  for (QTextEdit* box : Form3Text) ApplyTextStyle(box, style);
  RestoreForm3();
}

void Form3::setMoveEnabled(bool previous, bool next) {
  Command1[1]->setEnabled(previous);
  Command1[2]->setEnabled(next);
}

void Form3::setDiscussionLink(const QString& address) {
  link_ = address;
  Command6->setEnabled(!address.isEmpty());
  Command6->setToolTip(address.isEmpty() ? QString() : kDiscussionTip);
}

void Form3::markHidden() {
  Command3->setText(kHiddenCaption);
  Command3->setEnabled(false);
}

void Form3::setLawQueryAvailable(bool available) { Command2->setEnabled(available); }
void Form3::setEditorAvailable(bool available) { Command4->setEnabled(available); }

void Form3::loadWindow() {
  Command3->setText(kHideCaption);
  Command3->setEnabled(true);
  loaded_ = true;
}

void Form3::standardLayout() {
  // The question above, the answer with its law text below and larger.
  const int h = qMax(splitter->height(), 200);
  splitter->setSizes({h * 2 / 5, h - h * 2 / 5});
  for (QTextEdit* box : Form3Text) box->verticalScrollBar()->setValue(0);
}

void Form3::showEvent(QShowEvent* event) {
  if (!loaded_) loadWindow();
  QWidget::showEvent(event);
  emit visibilityChanged(true);
  justShown_ = true;
  emit activated();
}

void Form3::hideEvent(QHideEvent* event) {
  justShown_ = false;
  QWidget::hideEvent(event);
  emit visibilityChanged(false);
}

void Form3::closeEvent(QCloseEvent* event) {
  // Closing by the window's own button unloads it: its next show is a load.
  loaded_ = false;
  QWidget::closeEvent(event);
}

bool Form3::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate && isVisible()) {
    // The activation right after a show was reported by the show.
    if (justShown_)
      justShown_ = false;
    else
      emit activated();
  }
  return QWidget::event(event);
}

bool Form3::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && handleKey(watched, static_cast<QKeyEvent*>(event))) return true;
  if (watched == Form3Text[1]->viewport() && event->type() == QEvent::MouseButtonDblClick) {
    auto* e = static_cast<QMouseEvent*>(event);
    if (answerTextDoubleClicked) {
      const QTextCursor c = Form3Text[1]->cursorForPosition(e->position().toPoint());
      answerTextDoubleClicked(Form3Text[1]->toPlainText(), c.position(), (e->modifiers() & Qt::ControlModifier) != 0);
    }
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace mj
