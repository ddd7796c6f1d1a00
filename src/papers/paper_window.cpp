#include "papers/paper_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "papers/auto_format.h"
#include "papers/check_result_window.h"
#include "papers/find_replace_window.h"
#include "papers/pair_list_window.h"
#include "papers/paper_check.h"
#include "papers/paper_practice.h"
#include "papers/paper_practice_window.h"
#include "papers/text_box_widget.h"
#include "platform/paths.h"
#include "platform/rich_wrap_widget.h"
#include "platform/named_controls_widget.h"
#include "platform/text_toolkit.h"

namespace mj {

QString Form10::helpText() {
  return QStringLiteral("本窗为格式转换窗口，必须先通过合法性检验才能开始做题，如果不能通过合法") +
         QStringLiteral("性检验则请先进行格式转换，转换前请先把“答：”“参考”“注解”等字样") +
         QStringLiteral("换为“答案”、“参见”、“注释”等字样。或者直接按F1键看更详细的帮助。");
}

Form10::Form10(const Env& env, PaperState& state, QWidget* parent)
    : QWidget(parent, Qt::Window), env_(env), state_(state) {
  setObjectName(QStringLiteral("Form10"));
  setWindowTitle(QStringLiteral("外部题库"));

  auto* outer = new QVBoxLayout(this);
  Label1 = new QLabel(startHint(), this);
  Label1->setObjectName(QStringLiteral("Label1"));
  Label1->setWordWrap(true);
  outer->addWidget(Label1);

  auto* middle = new QHBoxLayout;
  RichTextBox1 = new QPlainTextEdit(this);
  RichTextBox1->setObjectName(QStringLiteral("RichTextBox1"));
  SetRichWrap(RichTextBox1, true);
  RichTextBox1->viewport()->installEventFilter(this);
  middle->addWidget(RichTextBox1, 1);

  auto* side = new QVBoxLayout;
  auto button = [this](const QString& name, const QString& caption) { return NamedButton(this, name, caption); };
  const QStringList captions = {QStringLiteral("检验格式"), QStringLiteral("试一下自动转换"), QStringLiteral("查找/替换"),
                                QStringLiteral("保存一下"), QStringLiteral("开始做题"),      QStringLiteral("返回"),
                                QStringLiteral("本窗说明")};
  for (int i = 0; i < captions.size(); ++i) Command1.append(button(QStringLiteral("Command1_%1").arg(i), captions[i]));
  Command2 = button(QStringLiteral("Command2"), QStringLiteral("常用替换设置"));
  for (int i : {0, 1, 2}) side->addWidget(Command1[i]);
  side->addWidget(Command2);
  for (int i : {3, 4}) side->addWidget(Command1[i]);
  side->addStretch(1);
  side->addWidget(Command1[6]);
  side->addWidget(Command1[5]);
  middle->addLayout(side);
  outer->addLayout(middle, 1);

  FileLabel = new QLabel(this);
  FileLabel->setObjectName(QStringLiteral("FileLabel"));
  FileLabel->setWordWrap(true);
  FileLabel->setTextInteractionFlags(Qt::TextSelectableByMouse);
  outer->addWidget(FileLabel);

  Command1[4]->setEnabled(false);

  connect(RichTextBox1, &QPlainTextEdit::textChanged, this, [this] { Command1[4]->setEnabled(false); });
  connect(Command1[0], &QPushButton::clicked, this, &Form10::runCheck);
  connect(Command1[1], &QPushButton::clicked, this, &Form10::autoFormat);
  connect(Command1[2], &QPushButton::clicked, this, [this] {
    findWindow()->openFor(kFindFromPaper, RichTextBox1, this, SelectionForFind);
  });
  connect(Command1[3], &QPushButton::clicked, this, &Form10::savePaper);
  connect(Command1[4], &QPushButton::clicked, this, &Form10::startPractice);
  connect(Command1[5], &QPushButton::clicked, this, &QWidget::close);
  connect(Command1[6], &QPushButton::clicked, this, &Form10::showWindowHelp);
  connect(Command2, &QPushButton::clicked, this, [this] { batchWindow()->openWindow(); });

  resize(980, 700);
  showFileLabel();
}

Form10::~Form10() {
  if (ownsFindWindow_) delete form13_;
}

QString Form10::paperText() const { return HeldTextOf(RichTextBox1); }

void Form10::setPaperText(const QString& text) { SetHeldText(RichTextBox1, text); }

bool Form10::loadPaper(const QString& path) {
  const PaperFile f = ReadPaper(path);
  if (!f.ok) {
    env_.msgBox(QStringLiteral("无法打开文件") + path + QStringLiteral("。"), box::Exclamation);
    return false;
  }
  fileName_ = path;
  encoding_ = f.encoding;
  Saved = false;
  RichTextBox1->setPlainText(ShownText(f.text));
  Command1[4]->setEnabled(false);
  Label1->setText(startHint());
  showFileLabel();
  return true;
}

void Form10::showFileLabel() {
  FileLabel->setText(fileName_.isEmpty() ? QStringLiteral("没有打开试卷文件。")
                                         : QStringLiteral("文件：") + fileName_ + QStringLiteral("（编码：") +
                                               PaperEncodingName(encoding_) + QStringLiteral("）"));
}

bool Form10::savePaper() {
  const std::optional<QString> chosen = ChoosePaperSaveName(env_, fileName_, Saved);
  if (!chosen) return false;
  const QString path = *chosen;
  if (!WritePaper(path, paperText(), encoding_)) {
    env_.msgBox(QStringLiteral("无法保存文件") + path + QStringLiteral("，原来的文件没有改变。"), box::Exclamation);
    return false;
  }
  fileName_ = path;
  showFileLabel();
  return true;
}

bool Form10::startPractice() {
  const std::optional<PracticeStart> start = StartPaperPractice(env_, state_, fileName_);
  if (!start) return false;
  Form14* f = practiceWindow();
  hide();
  f->startRun(*start);
  return true;
}

Form14* Form10::practiceWindow() {
  if (!form14_) {
    form14_ = new Form14(env_, state_, *this, this);
    // Leaving the practice brings this window back, with the paper's new
    // name when the score went into it.
    form14_->onLeft = [this](const QString& paperFile) {
      fileName_ = paperFile;
      showFileLabel();
      show();
      raise();
      activateWindow();
    };
  }
  return form14_;
}

void Form10::showWindowHelp() { Label1->setText(helpText()); }

void Form10::autoFormat() {
  QApplication::setOverrideCursor(Qt::WaitCursor);
  Label1->setText(QStringLiteral("正在进行格式转换，请稍候……"));
  repaint();
  const QString converted = AutoFormat(paperText());
  // A new text is a change: 开始做题 waits for the next check.
  setPaperText(converted);
  QApplication::restoreOverrideCursor();
  Label1->setText(QStringLiteral("转换完成，请检验一下合法性。"));
}

void Form10::runCheck() {
  Command1[4]->setEnabled(true);
  const PaperCheckResult r = RunPaperCheck(env_, paperText(), state_);
  if (!r.lawListOk)
    env_.msgBox(QStringLiteral("法律名称表") + env_.path(QStringLiteral("\\dbf\\listbox.mmd")) +
                    QStringLiteral("无法读取，所以试题中参见的法律名都当作未注册的法律名报告。"),
                box::Exclamation);
  Form11* f = resultWindow();
  f->setReport(r.report, r.lawNames);
  f->loadWindow();
  f->show();
  f->raise();
  f->activateWindow();
}

Form11* Form10::resultWindow() {
  if (!form11_) {
    form11_ = new Form11(env_, this);
    form11_->addToPairList = [this](const QString& name) { batchWindow()->Add2list1FromF11Combo(name); };
  }
  return form11_;
}

Form12* Form10::batchWindow() {
  if (!form12_) {
    form12_ = new Form12(env_, this);
    form12_->setTarget(RichTextBox1);
  }
  return form12_;
}

Form13* Form10::findWindow() {
  if (!form13_) {
    form13_ = new Form13(env_);
    ownsFindWindow_ = true;
  }
  return form13_;
}

bool Form10::eventFilter(QObject* watched, QEvent* event) {
  // The selection of a mouse release is what the find/replace window starts with.
  if (watched == RichTextBox1->viewport() && event->type() == QEvent::MouseButtonRelease) {
    const QString selected = RichTextBox1->textCursor().selectedText();
    if (!selected.isEmpty()) SelectionForFind = HeldText(QString(selected).replace(QChar::ParagraphSeparator, u'\n'));
  }
  return QWidget::eventFilter(watched, event);
}

void Form10::closeEvent(QCloseEvent* event) {
  // 返回 and the window's close button both leave the paper window.
  if (form11_) form11_->hide();
  if (form12_) form12_->unloadWindow();
  if (form13_ && form13_->FindCaller == kFindFromPaper) form13_->hide();
  QWidget::closeEvent(event);
  if (onReturn) onReturn();
}

}  // namespace mj
