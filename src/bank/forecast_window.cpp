#include "bank/forecast_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "platform/escape_key_widget.h"
#include "platform/vbtext.h"
#include "settings/settings.h"
#include "settings/updown_widget.h"

namespace mj {

namespace {

// The fixed captions of the result sentence; Label6, Label8 and Label12 are
// rebuilt with the numbers.
constexpr const char16_t* kFixedCaptions[9] = {
    nullptr,
    u"平均成绩是",
    nullptr,
    u"你平均每天能抽出",
    u"小时，每小时可以做",
    u"道试题，则你",
    nullptr,
    u"如果你能够保证设置所需要的时间，请返回后直接按确定按钮完成设",
    u"置，否则请返回后继续调整相关设置。",
};

QHBoxLayout* lineOf(std::initializer_list<QWidget*> widgets) {
  auto* line = new QHBoxLayout;
  line->setSpacing(2);
  for (QWidget* w : widgets) line->addWidget(w);
  line->addStretch(1);
  return line;
}

}  // namespace

Form5::Form5(const Env& env, const Settings& settings, QWidget* settingsWindow, QWidget* parent)
    : QWidget(parent, Qt::Window), env_(env), settings_(settings), settingsWindow_(settingsWindow) {
  setObjectName(QStringLiteral("Form5"));
  setWindowTitle(QStringLiteral("明镜学习伴侣") + QStringLiteral("/预测任务量 "));
  auto* outer = new QVBoxLayout(this);

  // The kind: two options, each with its caption as a label of its own that
  // selects it on a click.
  Frame1 = new QGroupBox(this);
  Frame1->setObjectName(QStringLiteral("Frame1"));
  auto* kinds = new QGridLayout(Frame1);
  Option1 = new QRadioButton(Frame1);
  Option1->setObjectName(QStringLiteral("Option1"));
  Option2 = new QRadioButton(Frame1);
  Option2->setObjectName(QStringLiteral("Option2"));
  Label2 = new QLabel(QStringLiteral("内部试题"), Frame1);
  Label2->setObjectName(QStringLiteral("Label2"));
  Label3 = new QLabel(QStringLiteral("模拟试题"), Frame1);
  Label3->setObjectName(QStringLiteral("Label3"));
  Label5 = new QLabel(QStringLiteral("  选择左边的试题类型以改变下面的说明。"), Frame1);
  Label5->setObjectName(QStringLiteral("Label5"));
  Option1->setAccessibleName(Label2->text());
  Option2->setAccessibleName(Label3->text());
  for (QLabel* l : {Label2, Label3}) l->installEventFilter(this);
  kinds->addWidget(Option1, 0, 0);
  kinds->addWidget(Label2, 0, 1);
  kinds->addWidget(Option2, 1, 0);
  kinds->addWidget(Label3, 1, 1);
  kinds->addWidget(Label5, 0, 2, 2, 1);
  kinds->setColumnStretch(2, 1);
  Option1->setChecked(true);
  outer->addWidget(Frame1);
  connect(Option1, &QRadioButton::toggled, this, [this] { showResult(); });

  Label4 = new QLabel(QStringLiteral("    请点击开始按钮，预测一下如果按你的这种设置将要用多长时间才能做完一遍。"), this);
  Label4->setObjectName(QStringLiteral("Label4"));
  Label4->setWordWrap(true);
  outer->addWidget(Label4);

  // The result sentence, with the three inputs standing in it.
  Frame2 = new QGroupBox(this);
  Frame2->setObjectName(QStringLiteral("Frame2"));
  for (int i = 0; i < 9; ++i) {
    auto* l = new QLabel(kFixedCaptions[i] ? QString::fromUtf16(kFixedCaptions[i]) : QString(), Frame2);
    l->setObjectName(QStringLiteral("Label") + QString::number(i + 6));
    resultLabels[static_cast<size_t>(i)] = l;
  }
  auto input = [this](const char* textName, const char* upDownName, const ForecastInput& bounds, QLineEdit*& text,
                      UpDown*& updown) {
    text = new QLineEdit(Frame2);
    text->setObjectName(QString::fromLatin1(textName));
    text->setFixedWidth(44);
    text->setAlignment(Qt::AlignRight);
    updown = new UpDown(Frame2);
    updown->setObjectName(QString::fromLatin1(upDownName));
    updown->setRange(bounds.minimum, bounds.maximum);
    updown->setValue(bounds.start);
    text->setText(CStr(bounds.start));
    connect(text, &QLineEdit::textChanged, this, [this, text, updown] { textChanged(text, updown); });
    connect(updown, &UpDown::valueChanged, this, [this, text](int v) { upDownChanged(text, v); });
  };
  input("Text1", "UpDown1", kAverageScore, Text1, UpDown1);
  input("Text2", "UpDown2", kHoursPerDay, Text2, UpDown2);
  input("Text3", "UpDown3", kPerHour, Text3, UpDown3);
  auto* sentence = new QVBoxLayout(Frame2);
  sentence->addLayout(lineOf({label(6)}));
  sentence->addLayout(lineOf({label(7), Text1, UpDown1, label(8)}));
  sentence->addLayout(lineOf({label(9), Text2, UpDown2, label(10), Text3, UpDown3, label(11)}));
  sentence->addLayout(lineOf({label(12)}));
  sentence->addLayout(lineOf({label(13)}));
  sentence->addLayout(lineOf({label(14)}));
  outer->addWidget(Frame2);

  // The progress display of a count.
  Label1 = new QLabel(this);
  Label1->setObjectName(QStringLiteral("Label1"));
  ProgressBar1 = new QProgressBar(this);
  ProgressBar1->setObjectName(QStringLiteral("ProgressBar1"));
  ProgressBar1->setTextVisible(false);
  outer->addWidget(Label1);
  outer->addWidget(ProgressBar1);
  outer->addStretch(1);

  auto* buttons = new QHBoxLayout;
  Command2 = new QPushButton(QStringLiteral("开始预测"), this);
  Command2->setObjectName(QStringLiteral("Command2"));
  Command1 = new QPushButton(QStringLiteral("返  回"), this);
  Command1->setObjectName(QStringLiteral("Command1"));
  buttons->addStretch(1);
  buttons->addWidget(Command2);
  buttons->addWidget(Command1);
  buttons->addStretch(1);
  outer->addLayout(buttons);
  connect(Command2, &QPushButton::clicked, this, &Form5::CalcData);
  connect(Command1, &QPushButton::clicked, this, &QWidget::close);
  Command2->setDefault(true);

  HideContrl();
  Frame1->hide();
  Frame2->hide();
  showResult();
  // Esc is 返回, as the window's close button is.
  CloseOnEscape(this);
}

void Form5::openWindow() {
  // Numbers of an earlier count may no longer fit the settings: the window
  // invites a new count, with the inputs as they were left.
  if (!counting_) {
    HideContrl();
    Frame1->hide();
    Frame2->hide();
    Label4->show();
  }
  adjustSize();
  if (QScreen* s = screen()) move(s->availableGeometry().center() - QPoint(width() / 2, height() / 2));
  show();
  raise();
  activateWindow();
  Command2->setFocus();
}

ForecastKind Form5::kind() const { return Option2->isChecked() ? ForecastKind::Simulated : ForecastKind::Internal; }

qint32 Form5::attempts() const {
  // Each kind with its own numbers, whichever kind was selected while the
  // count ran.
  const bool internal = kind() == ForecastKind::Internal;
  const int ok = settings_.number(internal ? kStOkTimes : kTsOkTimes);
  const int add = settings_.number(internal ? kStAddNum : kTsAddNum);
  return UserWillDo(counts_.of(kind()), ok, add, UpDown1->value());
}

int Form5::days() const { return ForecastDays(attempts(), UpDown2->value(), UpDown3->value()); }

void Form5::ShowContrl() {
  ProgressBar1->setValue(ProgressBar1->minimum());
  ProgressBar1->show();
  Label1->show();
}

void Form5::HideContrl() {
  ProgressBar1->hide();
  Label1->hide();
}

void Form5::CalcData() {
  if (counting_) return;
  counting_ = true;
  Command2->setEnabled(false);
  Label4->hide();
  Frame1->hide();
  Frame2->hide();
  ShowContrl();
  QApplication::setOverrideCursor(Qt::WaitCursor);
  std::array<int, 6> numbers{};
  for (int i = 0; i < 6; ++i) numbers[static_cast<size_t>(i)] = settings_.number(i);
  ForecastProgress progress;
  progress.setLabel = [this](const QString& text) {
    Label1->setText(text);
    Label1->repaint();
  };
  progress.setMaximum = [this](int maximum) {
    ProgressBar1->setRange(0, std::max(1, maximum));
    ProgressBar1->setValue(0);
  };
  progress.setValue = [this](int value) { ProgressBar1->setValue(value); };
  counts_ = mj::CalcData(env_, numbers, progress);
  QApplication::restoreOverrideCursor();
  HideContrl();
  Frame1->show();
  Frame2->show();
  showResult();
  Command2->setEnabled(true);
  counting_ = false;
}

void Form5::showResult() {
  const ForecastText t = ForecastResultText(kind(), counts_.of(kind()), attempts(), days());
  label(6)->setText(t.label6);
  label(8)->setText(t.label8);
  label(12)->setText(t.label12);
}

void Form5::textChanged(QLineEdit* text, UpDown* updown) {
  // A value within the control's bounds is taken over and the sentence
  // follows; any other stays on screen only.
  const double v = Val(text->text());
  if (v < updown->minimum() || v > updown->maximum()) return;
  {
    const QSignalBlocker quiet(updown);
    updown->setValue(static_cast<int>(RoundHalfEven(v)));
  }
  showResult();
}

void Form5::upDownChanged(QLineEdit* text, int value) {
  {
    const QSignalBlocker quiet(text);
    text->setText(CStr(value));
  }
  showResult();
}

bool Form5::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonRelease) {
    if (watched == Label2) Option1->setChecked(true);
    if (watched == Label3) Option2->setChecked(true);
  }
  return QWidget::eventFilter(watched, event);
}

void Form5::closeEvent(QCloseEvent* event) {
  // 返回 and any other way out lead back to the settings window.
  if (settingsWindow_) {
    settingsWindow_->show();
    settingsWindow_->raise();
    settingsWindow_->activateWindow();
  }
  event->accept();
}

}  // namespace mj
