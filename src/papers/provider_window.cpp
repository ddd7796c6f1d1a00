#include "papers/provider_window.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>

namespace mj {

Form16::Form16(const Env& env, QWidget* parent) : QWidget(parent, Qt::Window), env_(env) {
  setObjectName(QStringLiteral("Form16"));
  setWindowTitle(QStringLiteral("提供者信息"));
  auto* outer = new QVBoxLayout(this);
  Header = new QLabel(QStringLiteral("请在下列各项填入您的信息以供网友与您交流"), this);
  Header->setObjectName(QStringLiteral("Header"));
  Header->setWordWrap(true);
  outer->addWidget(Header);
  auto* form = new QFormLayout;
  const QStringList labels = {QStringLiteral("姓名或昵称："), QStringLiteral("QQ号码："), QStringLiteral("E_mail："),
                              QStringLiteral("主页："), QStringLiteral("提供日期：")};
  for (int i = 0; i < labels.size(); ++i) {
    auto* box = new QLineEdit(this);
    box->setObjectName(QStringLiteral("Text1_%1").arg(i));
    box->setMinimumWidth(260);
    Text1.append(box);
    form->addRow(labels[i], box);
  }
  outer->addLayout(form);
  auto* bottom = new QHBoxLayout;
  bottom->addStretch(1);
  // A label that serves as the button: flat, raised while the mouse is over it.
  SaveButton = new QToolButton(this);
  SaveButton->setObjectName(QStringLiteral("SaveButton"));
  SaveButton->setText(QStringLiteral("保存并返回"));
  SaveButton->setAutoRaise(true);
  SaveButton->setFocusPolicy(Qt::StrongFocus);
  bottom->addWidget(SaveButton);
  outer->addLayout(bottom);
  connect(SaveButton, &QToolButton::clicked, this, &Form16::saveAndReturn);
}

void Form16::loadWindow() {
  const ProviderInfo p = ReadProvider(env_);
  Text1[0]->setText(p.name);
  Text1[1]->setText(p.qq);
  Text1[2]->setText(p.email);
  Text1[3]->setText(p.homePage);
  Text1[4]->setText(ChineseDate(env_.today()));
  loaded_ = true;
}

ProviderInfo Form16::info() const {
  return {Text1[0]->text(), Text1[1]->text(), Text1[2]->text(), Text1[3]->text()};
}

bool Form16::saveAndReturn() {
  if (!WriteProvider(env_, info())) {
    env_.msgBox(QStringLiteral("无法写入文件") + env_.path(kProviderFile) + QStringLiteral("，您的信息没有保存。"),
                box::Exclamation);
    return false;
  }
  close();
  return true;
}

}  // namespace mj
