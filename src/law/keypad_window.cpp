#include "law/keypad_window.h"

#include <QGridLayout>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QScreen>

#include "law/law_query.h"
#include "platform/escape_key_widget.h"

namespace mj {

Form7::Form7(LawQuery& query, std::function<void()> changed, QWidget* parent)
    : QWidget(parent, Qt::Tool), query_(query), changed_(std::move(changed)) {
  setObjectName(QStringLiteral("Form7"));
  setWindowTitle(QStringLiteral("请输入法条"));
  CloseOnEscape(this);
  auto* grid = new QGridLayout(this);
  const QStringList captions{QStringLiteral("0"),    QStringLiteral("1"),    QStringLiteral("2"), QStringLiteral("3"),
                             QStringLiteral("4"),    QStringLiteral("5"),    QStringLiteral("6"), QStringLiteral("7"),
                             QStringLiteral("8"),    QStringLiteral("9"),    QStringLiteral("-"), QStringLiteral(","),
                             QStringLiteral("退格"), QStringLiteral("清空"), QStringLiteral("条")};
  for (int i = 0; i < captions.size(); ++i) {
    auto* b = new QPushButton(captions[i]);
    b->setObjectName(QStringLiteral("Command1_%1").arg(i));
    b->setFocusPolicy(Qt::NoFocus);
    b->setMinimumSize(44, 36);
    connect(b, &QPushButton::clicked, this, [this, i] { press(i); });
    Command1.append(b);
  }
  // Digits as on a keypad: 7 8 9 / 4 5 6 / 1 2 3 / 0 - , ; the editing keys at the side.
  const int rows[10] = {3, 2, 2, 2, 1, 1, 1, 0, 0, 0};
  const int cols[10] = {0, 0, 1, 2, 0, 1, 2, 0, 1, 2};
  for (int d = 0; d <= 9; ++d) grid->addWidget(Command1[d], rows[d], cols[d]);
  grid->addWidget(Command1[keypad::kMinus], 3, 1);
  grid->addWidget(Command1[keypad::kComma], 3, 2);
  grid->addWidget(Command1[keypad::kDelete], 0, 3);
  grid->addWidget(Command1[keypad::kClear], 1, 3);
  grid->addWidget(Command1[keypad::kRun], 2, 3, 2, 1);
  Command1[keypad::kRun]->setMinimumHeight(76);
  HelpButton = new QPushButton(QStringLiteral("说明"));
  HelpButton->setObjectName(QStringLiteral("HelpButton"));
  HelpButton->setFocusPolicy(Qt::NoFocus);
  grid->addWidget(HelpButton, 4, 0, 1, 4);
  connect(HelpButton, &QPushButton::clicked, this,
          [this] { query_.env().msgBox(keypad::HelpText(), 0, keypad::HelpTitle()); });
  refresh();
}

void Form7::refresh() {
  for (int i = 0; i < Command1.size(); ++i) Command1[i]->setEnabled(keypad::Enabled(query_.Text1, i));
}

void Form7::press(int index) {
  query_.keypadPress(index);
  refresh();
  if (changed_) changed_();
}

void Form7::LocateForm(const QWidget* beside) {
  if (!beside) return;
  adjustSize();
  QPoint at = beside->mapToGlobal(QPoint(0, beside->height() + 4));
  if (const QScreen* screen = beside->screen()) {
    const QRect avail = screen->availableGeometry();
    if (at.x() + width() > avail.right()) at.setX(avail.right() - width());
    if (at.y() + height() > avail.bottom()) at.setY(beside->mapToGlobal(QPoint(0, 0)).y() - height() - 4);
  }
  move(at);
}

void Form7::closeEvent(QCloseEvent* e) {
  query_.closeKeypad();
  QWidget::closeEvent(e);
}

void Form7::keyPressEvent(QKeyEvent* e) {
  const int index = keypad::ButtonForKey(e->key(), e->text().isEmpty() ? QChar() : e->text().at(0));
  if (index < 0) {
    QWidget::keyPressEvent(e);
    return;
  }
  // A key stands for its button, and does nothing while the button is disabled.
  if (Command1[index]->isEnabled()) press(index);
  e->accept();
}

}  // namespace mj
