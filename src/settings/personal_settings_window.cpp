#include "settings/personal_settings_window.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QShowEvent>
#include <QVBoxLayout>

#include "platform/escape_key_widget.h"

namespace mj {

namespace {
constexpr const char16_t* kOptionCaptions[6] = {
    u"做完每道题以后自动给出答案。",
    u"每题均由用户点击“答案”按钮时才给出答案。",
    u"自动给出答案的同时只显示相关法条。",
    u"自动给出答案的同时显示相关法条及详细解释。",
    u"保存此设置。",
    u"只是暂时使用此设置，将来仍使用默认设置。",
};
}  // namespace

Form2::Form2(QWidget* parent) : QWidget(parent, Qt::Window) {
  setObjectName(QStringLiteral("Form2"));
  setWindowTitle(QStringLiteral("明镜学习伴侣") + QStringLiteral("/个性设置  "));
  CloseOnEscape(this);

  auto* outer = new QVBoxLayout(this);
  for (int f = 0; f < 3; ++f) {
    // Each frame holds one pair; the pair excludes each other within it.
    auto* frame = new QGroupBox(this);
    frame->setObjectName(QStringLiteral("Frame") + QString::number(f + 1));
    auto* box = new QVBoxLayout(frame);
    for (int k = 0; k < 2; ++k) {
      const int n = f * 2 + k;
      auto* option = new QRadioButton(QString::fromUtf16(kOptionCaptions[n]), frame);
      option->setObjectName(QStringLiteral("Option") + QString::number(n + 1));
      box->addWidget(option);
      options_[static_cast<size_t>(n)] = option;
    }
    outer->addWidget(frame);
    frames_[static_cast<size_t>(f)] = frame;
  }

  auto* buttons = new QHBoxLayout;
  command1_ = new QPushButton(QStringLiteral("确定"), this);
  command1_->setObjectName(QStringLiteral("Command1"));
  command2_ = new QPushButton(QStringLiteral("取消"), this);
  command2_->setObjectName(QStringLiteral("Command2"));
  buttons->addStretch(1);
  buttons->addWidget(command1_);
  buttons->addWidget(command2_);
  buttons->addStretch(1);
  outer->addLayout(buttons);
  // Both only close: the options are read by nothing.
  connect(command1_, &QPushButton::clicked, this, &QWidget::close);
  connect(command2_, &QPushButton::clicked, this, &QWidget::close);

  for (int n : {1, 3, 5}) option(n)->setChecked(true);
}

void Form2::showEvent(QShowEvent* event) {
  // Every opening starts from the first option of each group (a window that
  // only comes back from the task bar keeps what it shows).
  if (!event->spontaneous())
    for (int n : {1, 3, 5}) option(n)->setChecked(true);
  QWidget::showEvent(event);
}

}  // namespace mj
