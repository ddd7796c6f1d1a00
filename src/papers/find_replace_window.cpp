#include "papers/find_replace_window.h"

#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "papers/pair_list.h"
#include "papers/text_box_widget.h"
#include "platform/escape_key_widget.h"

namespace mj {

Form13::Form13(const Env& env, QWidget* parent) : QWidget(parent, Qt::Window), env_(env) {
  setObjectName(QStringLiteral("Form13"));
  setWindowTitle(QStringLiteral("查找/替换"));
  CloseOnEscape(this);

  auto* outer = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  auto label = [this](const QString& caption, QWidget* buddy) {
    auto* l = new QLabel(caption, this);
    l->setBuddy(buddy);
    return l;
  };
  Text1 = new QLineEdit(this);
  Text1->setObjectName(QStringLiteral("Text1"));
  Text2 = new QLineEdit(this);
  Text2->setObjectName(QStringLiteral("Text2"));
  Combo1 = new QComboBox(this);
  Combo1->setObjectName(QStringLiteral("Combo1"));
  Combo1->addItems({QStringLiteral("回车符"), QStringLiteral("《》"), QStringLiteral("全角空格")});
  Combo1->setCurrentIndex(-1);
  Combo1->setFocusPolicy(Qt::TabFocus);
  grid->addWidget(label(QStringLiteral("查找内容："), Text1), 0, 0);
  grid->addWidget(Text1, 0, 1);
  grid->addWidget(label(QStringLiteral("替换内容："), Text2), 1, 0);
  grid->addWidget(Text2, 1, 1);
  grid->addWidget(label(QStringLiteral("特殊符号："), Combo1), 2, 0);
  grid->addWidget(Combo1, 2, 1, Qt::AlignLeft);
  grid->setColumnStretch(1, 1);
  outer->addLayout(grid);

  auto* buttons = new QHBoxLayout;
  const QStringList captions = {QStringLiteral("下一个"), QStringLiteral("替换"), QStringLiteral("全部替换"),
                                QStringLiteral("关闭")};
  for (int i = 0; i < captions.size(); ++i) {
    auto* b = new QPushButton(captions[i], this);
    b->setObjectName(QStringLiteral("Command1_%1").arg(i));
    b->setAutoDefault(false);
    Command1.append(b);
    buttons->addWidget(b);
    connect(b, &QPushButton::clicked, this, [this, i] { command(i); });
  }
  Command1[0]->setDefault(true);
  outer->addLayout(buttons);

  Text1->installEventFilter(this);
  Text2->installEventFilter(this);
  connect(Text1, &QLineEdit::textChanged, this, [this] { find_.findTextChanged(); });
  connect(Combo1, &QComboBox::activated, this, &Form13::insertSpecial);
  resize(480, 170);
}

bool Form13::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn) {
    if (watched == Text1) lastBox_ = 1;
    if (watched == Text2) lastBox_ = 2;
  }
  return QWidget::eventFilter(watched, event);
}

void Form13::openFor(int caller, QPlainTextEdit* target, QWidget* callerWindow, const QString& selection) {
  FindCaller = caller;
  target_ = target;
  caller_ = callerWindow;
  lastBox_ = 0;
  if (caller == kFindFromPaper || caller == kFindFromPaperPractice || caller == kFindFromLawQuery) {
    Text1->setText(selection);
    Text2->setText(selection);
  }
  QWidget::show();
  raise();
  activateWindow();
  Text1->setFocus(Qt::OtherFocusReason);
  Text1->selectAll();
}

void Form13::insertSpecial(int entry) {
  const QString text = SpecialCharText(Combo1->itemText(entry));
  QLineEdit* box = lastBox_ == 1 ? Text1 : lastBox_ == 2 ? Text2 : nullptr;
  if (!box) return;
  box->insert(text);
  box->setFocus(Qt::OtherFocusReason);
}

void Form13::command(int index) {
  if (index == 3) {
    hide();
    return;
  }
  const bool paper = FindCaller == kFindFromPaper || FindCaller == kFindFromPaperPractice;
  if (!paper && FindCaller != kFindFromLawQuery) return;
  if (!target_) return;
  const QString held = HeldTextOf(target_);
  FindOutcome r;
  switch (index) {
    case 0:
      r = find_.findNext(held, Text1->text());
      break;
    case 1:
      // What the user replaces with is kept for the batch replacement.
      if (!Text1->text().isEmpty() && paper && !LearnPair(env_, Text1->text(), Text2->text()))
        env_.msgBox(QStringLiteral("无法写入文件") + env_.path(kPairFile) + QStringLiteral("，本次替换没有加入常用替换列表。"),
                    box::Exclamation);
      r = find_.replace(held, Text1->text(), Text2->text());
      if (r.edited) ReplaceHeldRange(target_, held, r.editStart, r.editLength, r.editText);
      break;
    case 2:
      r = find_.replaceAll(held, Text1->text(), Text2->text());
      if (r.wholeText) SetHeldText(target_, r.text);
      break;
    default:
      return;
  }
  show(r);
}

void Form13::show(const FindOutcome& r) {
  switch (r.kind) {
    case FindOutcome::Empty:
      env_.msgBox(r.message, box::Exclamation);
      Text1->setFocus(Qt::OtherFocusReason);
      return;
    case FindOutcome::Selected:
      if (target_) SelectHeldRange(target_, HeldTextOf(target_), r.selStart, r.selLength);
      return;
    case FindOutcome::AtEnd:
    case FindOutcome::NotFound:
      env_.msgBox(r.message);
      backToCaller();
      return;
    case FindOutcome::Replaced:
      env_.msgBox(r.message, 0, QStringLiteral("完成"));
      return;
    case FindOutcome::Nothing:
      return;
  }
}

void Form13::backToCaller() {
  if (!caller_) return;
  caller_->activateWindow();
  if (target_) target_->setFocus(Qt::OtherFocusReason);
}

}  // namespace mj
