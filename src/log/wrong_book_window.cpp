#include "log/wrong_book_window.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "log/log_grid_widget.h"

namespace mj {

QString WrongBookSummary(const WrongBook& book) {
  if (book.groups.isEmpty()) return kWrongBookEmpty;
  return QStringLiteral("共有%1道题最近一次做错，分属%2个题库。双击一行（或选中后按回车键）做该题库的错题，点“全部练习”做全部错题；"
                        "做对的题随即离开错题本。")
      .arg(book.count())
      .arg(book.groups.size());
}

Form20::Form20(const Env& env, const ItemIndex* items, QWidget* parent)
    : QWidget(parent, Qt::Window), env_(env), items_(items) {
  setObjectName(QStringLiteral("Form20"));
  setWindowTitle(QStringLiteral("错题本"));
  auto* v = new QVBoxLayout(this);
  Label1 = new QLabel;
  Label1->setObjectName(QStringLiteral("Label1"));
  Label1->setWordWrap(true);
  v->addWidget(Label1);
  Grid1 = new LogGridWidget;
  Grid1->setObjectName(QStringLiteral("Grid1"));
  v->addWidget(Grid1, 1);
  auto* bottom = new QHBoxLayout;
  bottom->addStretch(1);
  Command1 = new QPushButton(QStringLiteral("全部练习"));
  Command1->setObjectName(QStringLiteral("Command1"));
  Command2 = new QPushButton(QStringLiteral("关闭"));
  Command2->setObjectName(QStringLiteral("Command2"));
  bottom->addWidget(Command1);
  bottom->addWidget(Command2);
  v->addLayout(bottom);

  connect(Grid1, &LogGridWidget::rowChosen, this, &Form20::practiseRow);
  connect(Command1, &QPushButton::clicked, this, &Form20::practiseAll);
  connect(Command2, &QPushButton::clicked, this, &QWidget::close);
  resize(760, 480);
}

void Form20::openWindow() {
  book_ = BuildWrongBook(env_, items_ ? *items_ : ItemIndex());
  Grid1->showGrid(WrongBookGrid(book_));
  // The bank's title is the widest text: the header's caption fits above it.
  Grid1->horizontalHeader()->setStretchLastSection(true);
  Label1->setText(WrongBookSummary(book_));
  Command1->setEnabled(!book_.groups.isEmpty());
  show();
  raise();
  activateWindow();
  if (book_.groups.isEmpty())
    Command2->setFocus(Qt::OtherFocusReason);
  else
    Grid1->setFocus(Qt::OtherFocusReason);
}

void Form20::practise(const QString& ids, const QString& title) {
  if (ids.isEmpty() || !onPractise) return;
  hide();
  onPractise(ids, title);
}

void Form20::practiseRow(int row) {
  if (row < 0 || row >= book_.groups.size()) return;
  const WrongBankGroup& g = book_.groups[row];
  practise(g.ids, QStringLiteral("错题本：") + g.title);
}

void Form20::practiseAll() { practise(book_.allIds(), QStringLiteral("错题本：全部错题")); }

void Form20::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    close();
    return;
  }
  QWidget::keyPressEvent(event);
}

}  // namespace mj
