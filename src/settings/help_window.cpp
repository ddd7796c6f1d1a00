#include "settings/help_window.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QTextEdit>
#include <QVBoxLayout>

#include "platform/escape_key_widget.h"
#include "platform/rich_wrap_widget.h"
#include "settings/help.h"

namespace mj {

Form18::Form18(const Env& env, QWidget* parent) : QWidget(parent, Qt::Window), env_(env) {
  setObjectName(QStringLiteral("Form18"));
  setWindowTitle(QStringLiteral("明镜学习伴侣") + QStringLiteral("3.10") + QStringLiteral("使用说明"));
  CloseOnEscape(this);
  auto* v = new QVBoxLayout(this);
  RichTextBox1 = new QTextEdit;
  RichTextBox1->setObjectName(QStringLiteral("RichTextBox1"));
  RichTextBox1->setReadOnly(true);
  SetRichWrap(RichTextBox1, true);
  v->addWidget(RichTextBox1, 1);
  auto* h = new QHBoxLayout;
  for (const QString& caption : {QStringLiteral("当前窗口说明"), QStringLiteral("全部窗口说明"), QStringLiteral("关  闭")}) {
    auto* b = new QPushButton(caption);
    b->setObjectName(QStringLiteral("Command1_%1").arg(Command1.size()));
    Command1.append(b);
    h->addWidget(b);
  }
  v->addLayout(h);
  connect(Command1[0], &QPushButton::clicked, this, [this] { showText(current_); });
  connect(Command1[1], &QPushButton::clicked, this, [this] { showText(0); });
  connect(Command1[2], &QPushButton::clicked, this, &QWidget::close);
  resize(640, 480);
}

void Form18::showHelp(int number) {
  current_ = number;
  showText(number);
}

void Form18::showText(int number) {
  const HelpText h = ShowHelpText(env_, number);
  if (h.kind != HelpText::Found) return;
  RichTextBox1->setPlainText(h.text);
  show();
  raise();
  activateWindow();
}

}  // namespace mj
