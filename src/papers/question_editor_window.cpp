#include "papers/question_editor_window.h"

#include <QClipboard>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "law/law_files.h"
#include "papers/law_list.h"
#include "papers/law_list_widget.h"
#include "papers/paper_check.h"
#include "papers/provider_window.h"
#include "papers/text_box_widget.h"
#include "platform/named_controls_widget.h"
#include "platform/text_toolkit.h"

namespace mj {

namespace {

// A text box of a few lines in which Tab moves on, as in a form.
QPlainTextEdit* FieldBox(QWidget* parent, const QString& name, int lines) {
  auto* b = new QPlainTextEdit(parent);
  b->setObjectName(name);
  b->setTabChangesFocus(true);
  const int h = b->fontMetrics().lineSpacing() * lines + 2 * b->frameWidth() + 8;
  b->setMinimumHeight(h);
  b->setMaximumHeight(lines > 2 ? QWIDGETSIZE_MAX : h);
  return b;
}

}  // namespace

Form9::Form9(const Env& env, QWidget* parent) : QWidget(parent, Qt::Window), env_(env) {
  setObjectName(QStringLiteral("Form9"));
  setWindowTitle(QStringLiteral("修改/注释"));

  auto* outer = new QVBoxLayout(this);
  Header = new QLabel(QStringLiteral("你可以对本题进行修改或加上注释，但一定要注意相应的格式"), this);
  Header->setObjectName(QStringLiteral("Header"));
  Header->setWordWrap(true);
  outer->addWidget(Header);

  auto* columns = new QHBoxLayout;
  auto* fields = new QGridLayout;
  auto label = [this](const QString& caption, QWidget* buddy) {
    auto* l = new QLabel(caption, this);
    l->setBuddy(buddy);
    return l;
  };
  int row = 0;
  Text1 = FieldBox(this, QStringLiteral("Text1"), 4);
  fields->addWidget(label(QStringLiteral("题干："), Text1), row, 0, Qt::AlignTop);
  fields->addWidget(Text1, row++, 1, 1, 3);
  const QStringList letters = {QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C"), QStringLiteral("D")};
  for (int i = 0; i < 4; ++i) {
    QPlainTextEdit* b = FieldBox(this, QStringLiteral("Text%1").arg(i + 2), 2);
    Options.append(b);
    fields->addWidget(label(QStringLiteral("选项") + letters[i] + QStringLiteral("："), b), row, 0, Qt::AlignTop);
    fields->addWidget(b, row++, 1, 1, 3);
  }
  Text6 = new QLineEdit(this);
  Text6->setObjectName(QStringLiteral("Text6"));
  Text6->setMaxLength(8);
  fields->addWidget(label(QStringLiteral("答案："), Text6), row, 0);
  fields->addWidget(Text6, row++, 1);
  Text7 = new QLineEdit(this);
  Text7->setObjectName(QStringLiteral("Text7"));
  fields->addWidget(label(QStringLiteral("参见法条"), Text7), row, 0);
  fields->addWidget(Text7, row++, 1, 1, 3);
  auto* cite = new QHBoxLayout;
  UpDown1 = new ArticleNumberBox(this);
  UpDown1->setObjectName(QStringLiteral("UpDown1"));
  UpDown1->setRange(1, 9999);
  UpDown1->setValue(1);
  Text9 = UpDown1->lineEdit();
  Text9->setObjectName(QStringLiteral("Text9"));
  Command4 = new QPushButton(QStringLiteral("加入参见法条"), this);
  Command4->setObjectName(QStringLiteral("Command4"));
  Command5 = new QPushButton(QStringLiteral("删除最后一条"), this);
  Command5->setObjectName(QStringLiteral("Command5"));
  cite->addWidget(new QLabel(QStringLiteral("第"), this));
  cite->addWidget(UpDown1);
  cite->addWidget(new QLabel(QStringLiteral("条"), this));
  cite->addWidget(Command4);
  cite->addWidget(Command5);
  cite->addStretch(1);
  fields->addLayout(cite, row++, 1, 1, 3);
  Text8 = FieldBox(this, QStringLiteral("Text8"), 3);
  fields->addWidget(label(QStringLiteral("注释："), Text8), row, 0, Qt::AlignTop);
  fields->addWidget(Text8, row++, 1, 1, 3);
  fields->setColumnStretch(1, 1);
  fields->setColumnStretch(3, 1);
  columns->addLayout(fields, 3);

  auto* lawSide = new QVBoxLayout;
  laws = new LawListPicker(env_, true, this);
  lawSide->addWidget(laws);
  RichTextBox1 = new QPlainTextEdit(this);
  RichTextBox1->setObjectName(QStringLiteral("RichTextBox1"));
  RichTextBox1->setReadOnly(true);
  RichTextBox1->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  lawSide->addWidget(RichTextBox1, 1);
  columns->addLayout(lawSide, 2);
  outer->addLayout(columns, 1);

  auto* buttons = new QHBoxLayout;
  auto button = [this, buttons](const QString& name, const QString& caption) {
    QPushButton* b = NamedButton(this, name, caption);
    buttons->addWidget(b);
    return b;
  };
  Command6 = button(QStringLiteral("Command6"), QStringLiteral("您的信息"));
  buttons->addStretch(1);
  Command1 = button(QStringLiteral("Command1"), QStringLiteral("合法性检验"));
  Command2 = button(QStringLiteral("Command2"), QStringLiteral("保存并返回"));
  Command3 = button(QStringLiteral("Command3"), QStringLiteral("取消并返回"));
  Command4->setAutoDefault(false);
  Command5->setAutoDefault(false);
  outer->addLayout(buttons);

  connect(Command1, &QPushButton::clicked, this, &Form9::check);
  connect(Command2, &QPushButton::clicked, this, &Form9::save);
  connect(Command3, &QPushButton::clicked, this, &Form9::leave);
  connect(Command4, &QPushButton::clicked, this, &Form9::addCitation);
  connect(Command5, &QPushButton::clicked, this, &Form9::removeCitation);
  connect(Command6, &QPushButton::clicked, this, [this] {
    Form16* f = providerWindow();
    f->loadWindow();
    f->show();
    f->raise();
    f->activateWindow();
  });
  connect(laws, &LawListPicker::lawPicked, this, &Form9::lawPicked);
  for (QPlainTextEdit* b : {Text1, Options[0], Options[1], Options[2], Options[3]})
    connect(b, &QPlainTextEdit::textChanged, this, &Form9::fieldChanged);
  connect(Text7, &QLineEdit::textChanged, this, &Form9::fieldChanged);
  // The answer letters are upper case as they are typed.
  connect(Text6, &QLineEdit::textChanged, this, [this](const QString& t) {
    if (t != t.toUpper()) {
      const int at = Text6->cursorPosition();
      Text6->setText(t.toUpper());
      Text6->setCursorPosition(at);
    }
    fieldChanged();
  });
  // The date of an earlier note is cut, so that it does not pile up; saving
  // writes a new one.
  connect(Text8, &QPlainTextEdit::textChanged, this, [this] {
    const QString held = HeldTextOf(Text8);
    const QString cut = CutNoteDate(held);
    if (cut != held) SetHeldText(Text8, cut);
    fieldChanged();
  });
  resize(1000, 720);
}

Form16* Form9::providerWindow() {
  if (!form16_) form16_ = new Form16(env_, this);
  return form16_;
}

void Form9::fieldChanged() {
  if (!filling_) Command2->setEnabled(false);
}

void Form9::setParts(const QuestionParts& p) {
  filling_ = true;
  SetHeldText(Text1, p.stem);
  for (int i = 0; i < 4; ++i) SetHeldText(Options[i], p.options[i]);
  Text6->setText(p.answer);
  Text7->setText(p.citations);
  SetHeldText(Text8, p.note);
  for (QPlainTextEdit* b : {Text1, Options[0], Options[1], Options[2], Options[3], Text8})
    b->document()->clearUndoRedoStacks();
  filling_ = false;
}

void Form9::editQuestion(const QString& id) {
  id_ = id;
  laws->load();
  RichTextBox1->clear();
  setParts(SplitQuestion(GetTxtWillAlt(env_, id)));
  Command2->setEnabled(false);
  show();
  raise();
  activateWindow();
  Text1->setFocus(Qt::OtherFocusReason);
}

QuestionParts Form9::parts() const {
  QuestionParts p;
  p.stem = HeldTextOf(Text1);
  for (int i = 0; i < 4; ++i) p.options[i] = HeldTextOf(Options[i]);
  p.answer = Text6->text();
  p.citations = Text7->text();
  p.note = HeldTextOf(Text8);
  return p;
}

bool Form9::check() {
  const QString failure = CheckQuestionParts(parts());
  if (!failure.isEmpty()) {
    env_.msgBox(failure, box::Information);
    return false;
  }
  env_.msgBox(kEditorCheckPassed, 0, QStringLiteral("通过"));
  Command2->setEnabled(true);
  return true;
}

void Form9::addCitation() {
  const QString name = laws->currentLawName();
  if (name.isEmpty()) {
    env_.msgBox(QStringLiteral("请先选择法律名。"));
    return;
  }
  Text7->setText(AddCitation(Text7->text(), name, UpDown1->value()));
}

void Form9::removeCitation() { Text7->setText(RemoveLastCitation(Text7->text())); }

void Form9::lawPicked(const QString& name) {
  const QString bare = BareLawName(name);
  if (!LawFileExists(env_, bare)) {
    env_.msgBox(QStringLiteral("文件名：") + bare + QStringLiteral("不存在。"), 0, QStringLiteral("出错提示"));
    return;
  }
  RichTextBox1->setPlainText(ShownText(ReadLawFile(LawFilePath(env_, bare))));
}

bool Form9::save() {
  if (!Command2->isEnabled()) return false;
  if (env_.msgBox(QStringLiteral("确定要保存吗？"), box::OkCancel, QStringLiteral("确定吗？")) != box::Ok) return false;
  std::optional<ProviderInfo> provider;
  const int post = env_.msgBox(QStringLiteral("要不要把这道凝聚着你智慧和汗水的完美的试题发贴到网上，") +
                                   QStringLiteral("以便网友能享受你的劳动成果或与您对此进行交流？"),
                               box::YesNo, QStringLiteral("拜托并致谢"));
  if (post == box::Yes) {
    Form16* f = providerWindow();
    if (!f->isLoaded()) f->loadWindow();
    if (f->GetItemInfo().isEmpty()) {
      env_.msgBox(QStringLiteral("请先提供您的相关信息"));
      return false;
    }
    provider = f->info();
  }
  const QuestionParts p = parts();
  const SaveOutcome out = SaveEditedQuestion(env_, id_, p, provider);
  if (!out.error.isEmpty()) env_.msgBox(out.error, box::Exclamation);
  if (!out.saved) return false;
  if (onSaved)
    onSaved(id_, out.row, QStringLiteral("答案：") + OnlyABCD(p.answer) + QStringLiteral("参见") + p.citations);
  if (provider) {
    QGuiApplication::clipboard()->setText(out.clipboard);
    env_.msgBox(QStringLiteral("已经把该题另存一份到") + env_.path(kPostFile) +
                QStringLiteral("并且已复制进粘贴板，你现在可以把它粘贴到网上去了，或者以后查看前述文本文件。"));
  }
  close();
  return true;
}

void Form9::leave() {
  if (env_.msgBox(QStringLiteral("你还没有保存，确定要返回吗？"), box::OkCancel, QStringLiteral("确定吗？")) == box::Ok)
    close();
}

}  // namespace mj
