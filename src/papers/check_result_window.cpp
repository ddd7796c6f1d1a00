#include "papers/check_result_window.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "papers/pair_list.h"
#include "papers/text_box_widget.h"
#include "platform/escape_key_widget.h"
#include "platform/text_toolkit.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"

namespace mj {

QString Form11::explanation() {
  return QStringLiteral(
      "    另外，请注意：本文中的试题在答案中参见了如下法条的内容，但程序检测到在原数据库中没有这些法律、法规名，请你利用查找/"
      "替换功能把本文本中的名称改一下，但如果本来在原数据库中就没有这个法律、法规名，则你应该先利用“添加新法律、法规”功能添加法律、"
      "法规文本。");
}

Form11::Form11(const Env& env, QWidget* parent) : QWidget(parent, Qt::Window), env_(env) {
  setObjectName(QStringLiteral("Form11"));
  setWindowTitle(QStringLiteral("合法性检查"));
  CloseOnEscape(this);

  auto* outer = new QVBoxLayout(this);
  Heading = new QLabel(QStringLiteral("合法性检验结果"), this);
  Heading->setObjectName(QStringLiteral("Heading"));
  QFont f = Heading->font();
  f.setPointSize(f.pointSize() + 4);
  f.setBold(true);
  Heading->setFont(f);
  Heading->setAlignment(Qt::AlignCenter);
  outer->addWidget(Heading);

  Text1 = new QPlainTextEdit(this);
  Text1->setObjectName(QStringLiteral("Text1"));
  Text1->setReadOnly(true);
  Text1->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  outer->addWidget(Text1, 3);

  // The unregistered names: the list on the left, the words on the right.
  namesPanel_ = new QWidget(this);
  namesPanel_->setObjectName(QStringLiteral("namesPanel"));
  auto* names = new QHBoxLayout(namesPanel_);
  names->setContentsMargins(0, 0, 0, 0);
  Combo1 = new QComboBox(namesPanel_);
  Combo1->setObjectName(QStringLiteral("Combo1"));
  Combo1->setMinimumContentsLength(12);
  Combo1->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  names->addWidget(Combo1, 0, Qt::AlignTop);
  auto* words = new QVBoxLayout;
  Label1 = new QLabel(explanation(), namesPanel_);
  Label1->setObjectName(QStringLiteral("Label1"));
  Label1->setWordWrap(true);
  Label2 = new QLabel(question(), namesPanel_);
  Label2->setObjectName(QStringLiteral("Label2"));
  Label2->setWordWrap(true);
  Command2 = new QPushButton(QStringLiteral("加入批量替换列表"), namesPanel_);
  Command2->setObjectName(QStringLiteral("Command2"));
  Command2->setAutoDefault(false);
  auto* ask = new QHBoxLayout;
  ask->addWidget(Label2, 1);
  ask->addWidget(Command2);
  words->addWidget(Label1);
  words->addLayout(ask);
  names->addLayout(words, 1);
  outer->addWidget(namesPanel_, 0);

  auto* bottom = new QHBoxLayout;
  bottom->addStretch(1);
  Command1 = new QPushButton(QStringLiteral("返回"), this);
  Command1->setObjectName(QStringLiteral("Command1"));
  Command1->setAutoDefault(false);
  bottom->addWidget(Command1);
  outer->addLayout(bottom);

  connect(Command1, &QPushButton::clicked, this, &QWidget::hide);
  connect(Command2, &QPushButton::clicked, this, &Form11::addNamesToPairList);
  resize(780, 560);
  loadWindow();
}

void Form11::setReport(const QString& report, const QStringList& lawNames) {
  Text1->setPlainText(ShownText(report));
  Combo1->clear();
  Combo1->addItems(lawNames);
  if (Combo1->count() > 0) Combo1->setCurrentIndex(0);
}

QString Form11::report() const { return HeldTextOf(Text1); }

void Form11::loadWindow() { namesPanel_->setVisible(Combo1->count() > 0); }

void Form11::addNamesToPairList() {
  int added = 0;
  for (int i = 0; i < Combo1->count(); ++i) {
    const QString name = Trim(Combo1->itemText(i));
    // The file as it stands: a name saved there before is not offered again.
    const QString pairs = ReadText(env_.path(kPairFile));
    if (pairs.contains(u'[' + name + QStringLiteral("]-->"))) continue;
    if (addToPairList) addToPairList(name);
    ++added;
  }
  env_.msgBox(QStringLiteral("执行完毕，共加入") + CStr(added) + QStringLiteral("项。"), 0, QStringLiteral("完成"));
}

}  // namespace mj
