#include "papers/pair_list_window.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "papers/law_list_widget.h"
#include "papers/text_box_widget.h"
#include "platform/named_controls_widget.h"
#include "platform/text_toolkit.h"
#include "platform/vbtext.h"

namespace mj {

Form12::Form12(const Env& env, QWidget* parent) : QWidget(parent, Qt::Window), env_(env) {
  setObjectName(QStringLiteral("Form12"));
  setWindowTitle(QStringLiteral("常用替换设置"));

  auto button = [this](const QString& name, const QString& caption) { return NamedButton(this, name, caption); };

  auto* outer = new QVBoxLayout(this);
  auto* top = new QHBoxLayout;
  List1 = new QListWidget(this);
  List1->setObjectName(QStringLiteral("List1"));
  List1->setSelectionMode(QAbstractItemView::SingleSelection);
  top->addWidget(List1, 1);

  auto* side = new QVBoxLayout;
  Command1 = button(QStringLiteral("Command1"), QStringLiteral("批量替换"));
  Command1->setToolTip(QStringLiteral("把“外部试题/检验合法性”窗口中的文本按上面已打勾设置进行批量替换。"));
  Command3 = button(QStringLiteral("Command3"), QStringLiteral("反选"));
  Command4 = button(QStringLiteral("Command4"), QStringLiteral("全选"));
  Command5 = button(QStringLiteral("Command5"), QStringLiteral("全不选"));
  Command6 = button(QStringLiteral("Command6"), QStringLiteral("添加"));
  Command7 = button(QStringLiteral("Command7"), QStringLiteral("删除"));
  Command9 = button(QStringLiteral("Command9"), QStringLiteral("保存此设置并返回"));
  Command10 = button(QStringLiteral("Command10"), QStringLiteral("直接返回"));
  for (QPushButton* b : {Command1, Command3, Command4, Command5, Command6, Command7}) side->addWidget(b);
  side->addStretch(1);
  side->addWidget(Command9);
  side->addWidget(Command10);
  top->addLayout(side);
  outer->addLayout(top, 1);

  auto* edit = new QHBoxLayout;
  Text1 = new QLineEdit(this);
  Text1->setObjectName(QStringLiteral("Text1"));
  Text1->setToolTip(QStringLiteral("形如：[要查找的文字]-->[替换成的文字]，^p表示回车符"));
  Command2 = button(QStringLiteral("Command2"), QStringLiteral("取消法条加入"));
  edit->addWidget(Text1, 1);
  edit->addWidget(Command2);
  outer->addLayout(edit);

  auto* chars = new QHBoxLayout;
  auto* charsLabel = new QLabel(QStringLiteral("常用字符："), this);
  chars->addWidget(charsLabel);
  const QStringList captions = {QStringLiteral("《》"), QStringLiteral("-->"), QStringLiteral("[]"),
                                QStringLiteral("、"),   QStringLiteral("．"),  QStringLiteral("."),
                                QStringLiteral("回车符"), QStringLiteral("全角空格")};
  for (int i = 0; i < captions.size(); ++i) {
    QPushButton* b = button(QStringLiteral("Command8_%1").arg(i), captions[i]);
    b->setFocusPolicy(Qt::TabFocus);
    Command8.append(b);
    chars->addWidget(b);
    connect(b, &QPushButton::clicked, this, [this, i] { insertCharacter(i); });
  }
  chars->addStretch(1);
  outer->addLayout(chars);

  laws = new LawListPicker(env_, false, this);
  outer->addWidget(laws);

  Label1 = new QLabel(QStringLiteral("注意：只保存前后两个\"[]\"中都不为空的选项。"), this);
  Label1->setObjectName(QStringLiteral("Label1"));
  Label1->setWordWrap(true);
  outer->addWidget(Label1);

  connect(Command1, &QPushButton::clicked, this, &Form12::batchReplace);
  connect(Command2, &QPushButton::clicked, this, &Form12::cutLawName);
  connect(Command3, &QPushButton::clicked, this, [this] { setTicks(-1); });
  connect(Command4, &QPushButton::clicked, this, [this] { setTicks(1); });
  connect(Command5, &QPushButton::clicked, this, [this] { setTicks(0); });
  connect(Command6, &QPushButton::clicked, this, [this] { AddNewPair(QString()); });
  connect(Command7, &QPushButton::clicked, this, &Form12::deleteCurrent);
  connect(Command9, &QPushButton::clicked, this, &Form12::saveAndReturn);
  connect(Command10, &QPushButton::clicked, this, &Form12::unloadWindow);
  connect(List1, &QListWidget::currentRowChanged, this, &Form12::currentChanged);
  connect(List1, &QListWidget::itemChanged, this, [this] {
    if (!showing_) changed_ = true;
  });
  connect(Text1, &QLineEdit::textChanged, this, &Form12::text1Changed);
  connect(laws, &LawListPicker::lawPicked, this, &Form12::lawPicked);
  resize(760, 560);
}

void Form12::loadWindow() {
  if (loaded_) return;
  loaded_ = true;
  changed_ = false;
  laws->load();
  showEntries(Read2List(env_.path(kPairFile)), -1);
  {
    const QSignalBlocker b(Text1);
    Text1->clear();
  }
}

void Form12::unloadWindow() {
  loaded_ = false;
  hide();
}

void Form12::openWindow() {
  loadWindow();
  // Centred on the screen.
  if (const QScreen* s = screen() ? screen() : QGuiApplication::primaryScreen()) {
    const QRect r = s->availableGeometry();
    move(r.center() - QPoint(width() / 2, height() / 2));
  }
  show();
  raise();
  activateWindow();
}

void Form12::closeEvent(QCloseEvent* event) {
  loaded_ = false;
  QWidget::closeEvent(event);
}

PairList Form12::entries() const {
  PairList list;
  for (int i = 0; i < List1->count(); ++i) {
    const QListWidgetItem* it = List1->item(i);
    list.append({it->text(), it->checkState() == Qt::Checked});
  }
  return list;
}

void Form12::showEntries(const PairList& list, int select) {
  showing_ = true;
  {
    const QSignalBlocker b(List1);
    List1->clear();
    for (const PairEntry& e : list) {
      auto* it = new QListWidgetItem(e.text, List1);
      it->setFlags(it->flags() | Qt::ItemIsUserCheckable);
      it->setCheckState(e.ticked ? Qt::Checked : Qt::Unchecked);
    }
    List1->setCurrentRow(select);
  }
  showing_ = false;
  currentChanged();
}

void Form12::currentChanged() {
  const QListWidgetItem* it = List1->currentItem();
  const QSignalBlocker b(Text1);
  Text1->setText(it ? PairOfEntry(it->text()) : QString());
}

void Form12::text1Changed(const QString& text) {
  QListWidgetItem* it = List1->currentItem();
  if (!it) return;
  showing_ = true;
  it->setText(Left(it->text(), 4) + Trim(text));
  showing_ = false;
  changed_ = true;
}

void Form12::addEntry(const QString& pair) {
  loadWindow();
  const PairList rebuilt = RebuildList(entries(), pair);
  showEntries(rebuilt, static_cast<int>(rebuilt.size()) - 1);
  changed_ = true;
}

void Form12::Add2list1FromF11Combo(const QString& name) { addEntry(u'[' + name + QStringLiteral("]-->[]")); }

void Form12::AddNewPair(const QString& name) {
  addEntry(QStringLiteral("[]-->[") + name + u']');
  Text1->setFocus(Qt::OtherFocusReason);
}

void Form12::batchReplace() {
  const PairList list = entries();
  if (list.isEmpty() || !target_) return;
  const QString before = HeldTextOf(target_);
  const QString after = ApplyPairs(list, before);
  if (after != before) SetHeldText(target_, after);
  env_.msgBox(QStringLiteral("替换完成。"), 0, QStringLiteral("完成"));
}

void Form12::cutLawName() {
  const qsizetype k = InStr(Text1->text(), QStringLiteral("-->"));
  if (k > 0) Text1->setText(Left(Text1->text(), k - 1));
}

void Form12::setTicks(int how) {
  for (int i = 0; i < List1->count(); ++i) {
    QListWidgetItem* it = List1->item(i);
    const bool ticked = how < 0 ? it->checkState() != Qt::Checked : how > 0;
    it->setCheckState(ticked ? Qt::Checked : Qt::Unchecked);
  }
}

void Form12::deleteCurrent() {
  const int row = List1->currentRow();
  if (row < 0) return;
  const QString entry = List1->item(row)->text();
  if (env_.msgBox(QStringLiteral("真的要删除") + entry + QStringLiteral("吗？"), box::YesNo | box::Question,
                  QStringLiteral("请你确认")) != box::Yes)
    return;
  PairList list = entries();
  list.removeAt(row);
  showEntries(RebuildList(list), std::min(row, static_cast<int>(list.size()) - 1));
  changed_ = true;
}

void Form12::insertCharacter(int index) {
  QString text = Command8.value(index) ? Command8[index]->text() : QString();
  if (index == 6) text = QStringLiteral("^p");
  if (index == 7) text = QStringLiteral("\u3000");
  Text1->insert(text);
  Text1->setFocus(Qt::OtherFocusReason);
}

bool Form12::saveAndReturn() {
  const QString path = env_.path(kPairFile);
  if (!SaveList(entries(), path)) {
    env_.msgBox(QStringLiteral("无法保存文件") + path + QStringLiteral("，替换设置没有保存。"), box::Exclamation);
    return false;
  }
  changed_ = false;
  unloadWindow();
  return true;
}

void Form12::lawPicked(const QString& name) {
  QString a = Trim(Text1->text());
  const qsizetype k = InStr(a, QStringLiteral("-->"));
  if (k > 0) a = Left(a, k - 1);
  if (!(a.startsWith(u'[') && a.endsWith(u']'))) a = u'[' + a + u']';
  Text1->setText(a + QStringLiteral("-->[") + name + u']');
}

}  // namespace mj
