#include "law/new_law_window.h"

#include <QApplication>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTextBlock>
#include <QVBoxLayout>

#include "law/text_places.h"
#include "platform/escape_key_widget.h"
#include "platform/text_toolkit.h"

namespace mj {

namespace {

// The hourglass while a step works; the window is repainted first.
class BusyCursor {
 public:
  BusyCursor() {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  }
  ~BusyCursor() { QApplication::restoreOverrideCursor(); }
};

QComboBox* Combo(const QString& name, const QStringList& items, const QString& prompt) {
  auto* c = new QComboBox;
  c->setObjectName(name);
  c->addItems(items);
  c->setPlaceholderText(prompt);
  c->setCurrentIndex(-1);
  c->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  return c;
}

}  // namespace

Form15::Form15(const Env& env, QWidget* parent) : QWidget(parent, Qt::Window), wizard_(env) {
  setObjectName(QStringLiteral("Form15"));
  setWindowTitle(kNewLawCaption);
  CloseOnEscape(this);

  auto* v = new QVBoxLayout(this);
  auto* buttons = new QHBoxLayout;
  for (int i = 0; i < kNewLawButtons.size(); ++i) {
    auto* b = new QPushButton(kNewLawButtons[i]);
    b->setObjectName(QStringLiteral("Command1_%1").arg(i));
    connect(b, &QPushButton::clicked, this, [this, i] { step(i); });
    Command1.append(b);
    buttons->addWidget(b);
  }
  buttons->addStretch(1);
  v->addLayout(buttons);

  ClassifyPanel = new QWidget;
  ClassifyPanel->setObjectName(QStringLiteral("ClassifyPanel"));
  auto* g = new QGridLayout(ClassifyPanel);
  g->setContentsMargins(0, 0, 0, 0);
  Combo1 = Combo(QStringLiteral("Combo1"), PaperChoices(), QStringLiteral("请选择所属试卷"));
  Combo2 = Combo(QStringLiteral("Combo2"), LetterChoices(), QStringLiteral("请选择标题的拼音首字母"));
  Combo3 = Combo(QStringLiteral("Combo3"), ClassChoices(), QStringLiteral("请选择所属类别"));
  Label1 = new QLabel(kNewLawTitleLabel);
  Label1->setObjectName(QStringLiteral("Label1"));
  Text1 = new QLineEdit(kEmptyLawTitle);
  Text1->setObjectName(QStringLiteral("Text1"));
  Text1->setMinimumWidth(220);
  Label1->setBuddy(Text1);
  g->addWidget(Combo1, 0, 0);
  g->addWidget(Combo2, 0, 1);
  g->addWidget(Combo3, 0, 2);
  g->addWidget(Label1, 1, 0, 1, 2, Qt::AlignRight);
  g->addWidget(Text1, 1, 2);
  g->setColumnStretch(3, 1);
  v->addWidget(ClassifyPanel);

  RichTextBox1 = new QPlainTextEdit;
  RichTextBox1->setObjectName(QStringLiteral("RichTextBox1"));
  RichTextBox1->setLineWrapMode(QPlainTextEdit::WidgetWidth);
  QFont f = RichTextBox1->font();
  f.setPointSize(12);
  RichTextBox1->setFont(f);
  v->addWidget(RichTextBox1, 1);

  const QList<QComboBox*> combos = {Combo1, Combo2, Combo3};
  for (int i = 0; i < combos.size(); ++i)
    connect(combos[i], &QComboBox::currentTextChanged, this, [this, i](const QString& text) {
      wizard_.setCombo(i + 1, text);
      render();
    });
  connect(Text1, &QLineEdit::textEdited, this, [this](const QString& text) {
    wizard_.setTitle(text);
    render();
  });
  // The check shows the heading it is about to repair.
  wizard_.onSelect = [this](qsizetype start, qsizetype length) {
    render();
    const QString& text = wizard_.view;
    const LinePlace a = LineOfTextIndex(text, start);
    const LinePlace b = LineOfTextIndex(text, start + length);
    QTextCursor c(RichTextBox1->document()->findBlockByNumber(a.line));
    c.setPosition(c.block().position() + static_cast<int>(a.column));
    const QTextBlock end = RichTextBox1->document()->findBlockByNumber(b.line);
    c.setPosition(end.position() + static_cast<int>(b.column), QTextCursor::KeepAnchor);
    RichTextBox1->setTextCursor(c);
    RichTextBox1->ensureCursorVisible();
  };

  resize(900, 640);
  render();
}

void Form15::openWindow() {
  wizard_.start();
  render();
  show();
  raise();
  activateWindow();
}

void Form15::takeEdits() {
  if (!RichTextBox1->document()->isModified()) return;
  wizard_.editView(HeldText(RichTextBox1->toPlainText()));
  RichTextBox1->document()->setModified(false);
}

void Form15::step(int index) {
  takeEdits();
  switch (index) {
    case 0:
      wizard_.open();
      break;
    case 1: {
      BusyCursor busy;
      wizard_.clean();
      break;
    }
    case 2:
      wizard_.classify();
      break;
    case 3: {
      bool added = false;
      {
        BusyCursor busy;
        added = wizard_.add();
      }
      if (added) emit lawAdded(wizard_.addedTitle);
      break;
    }
    default:
      close();
      return;
  }
  render();
}

void Form15::render() {
  if (shownVersion_ != wizard_.viewVersion) {
    shownVersion_ = wizard_.viewVersion;
    RichTextBox1->setPlainText(ShownText(wizard_.view));
    RichTextBox1->document()->setModified(false);
  }
  for (int i = 0; i < Command1.size(); ++i) Command1[i]->setEnabled(wizard_.enabled[i]);
  ClassifyPanel->setVisible(wizard_.classifyVisible);
  const QList<QComboBox*> combos = {Combo1, Combo2, Combo3};
  const QString texts[3] = {wizard_.combo1, wizard_.combo2, wizard_.combo3};
  for (int i = 0; i < 3; ++i) {
    if (combos[i]->currentText() == texts[i]) continue;
    const QSignalBlocker block(combos[i]);
    combos[i]->setCurrentIndex(combos[i]->findText(texts[i]));
  }
  if (Text1->text() != wizard_.title) Text1->setText(wizard_.title);
}

}  // namespace mj
