#include "settings/settings_window.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>
#include <limits>

#include "platform/escape_key_widget.h"
#include "platform/vbtext.h"
#include "settings/text_style_widget.h"
#include "settings/updown_widget.h"

namespace mj {

namespace {

// The words before and after each number; the simulated papers repeat the
// captions of the internal bank.
struct NumberCaption {
  const char16_t* before;
  const char16_t* after;
};
constexpr NumberCaption kCaptions[3] = {
    {u"◎每道题在做对", u"次之后永不再出现。"},
    {u"◎做错的试题要加罚", u"次。"},
    {u"◎满足以上两个条件的试题也应至少", u"天以后才出现下一次。"},
};

QString IndexedName(const char* name, int index) {
  return QString::fromLatin1(name) + u'(' + QString::number(index) + u')';
}

}  // namespace

Form4::Form4(const Env& env, Settings& settings, QWidget* mainWindow, QWidget* parent)
    : QWidget(parent, Qt::Window), env_(env), settings_(settings), mainWindow_(mainWindow) {
  setObjectName(QStringLiteral("Form4"));
  setWindowTitle(QStringLiteral("明镜学习伴侣/设置"));
  CloseOnEscape(this);

  auto* outer = new QVBoxLayout(this);

  // The two groups of scheduling numbers.
  frame1_ = new QGroupBox(QStringLiteral("以下设置专用于内部题库"), this);
  frame1_->setObjectName(QStringLiteral("Frame1"));
  frame2_ = new QGroupBox(QStringLiteral("以下设置专用于模拟试题"), this);
  frame2_->setObjectName(QStringLiteral("Frame2"));
  for (int group = 0; group < 2; ++group) {
    QGroupBox* frame = group == 0 ? frame1_ : frame2_;
    auto* grid = new QGridLayout(frame);
    for (int row = 0; row < 3; ++row) {
      const int i = group * 3 + row;
      auto* before = new QLabel(QString::fromUtf16(kCaptions[row].before), frame);
      auto* text = new QLineEdit(frame);
      text->setObjectName(IndexedName("NumText", i));
      text->setFixedWidth(48);
      text->setAlignment(Qt::AlignRight);
      auto* updown = new UpDown(frame);
      updown->setObjectName(IndexedName("NumUpDown", i));
      updown->setRange(Settings::minimum(i), Settings::maximum(i));
      auto* after = new QLabel(QString::fromUtf16(kCaptions[row].after), frame);
      grid->addWidget(before, row, 0);
      grid->addWidget(text, row, 1);
      grid->addWidget(updown, row, 2);
      grid->addWidget(after, row, 3);
      grid->setColumnStretch(3, 1);
      numText_[static_cast<size_t>(i)] = text;
      numUpDown_[static_cast<size_t>(i)] = updown;
      connect(text, &QLineEdit::textChanged, this, [this, i] { numTextChanged(i); });
      connect(updown, &UpDown::valueChanged, this, [this, i](int v) { numUpDownChanged(i, v); });
    }
    outer->addWidget(frame);
  }

  // The text style: two buttons on the left, the sample on the right.
  frame3_ = new QGroupBox(QStringLiteral("文本框设置"), this);
  frame3_->setObjectName(QStringLiteral("Frame3"));
  auto* styleRow = new QHBoxLayout(frame3_);
  auto* styleButtons = new QVBoxLayout;
  const QString cfgCaptions[2] = {QStringLiteral("字体"), QStringLiteral("背景颜色")};
  for (int i = 0; i < 2; ++i) {
    auto* b = new QPushButton(cfgCaptions[i], frame3_);
    b->setObjectName(IndexedName("Frame3CfgCmd", i));
    styleButtons->addWidget(b);
    frame3CfgCmd_[static_cast<size_t>(i)] = b;
  }
  styleButtons->addStretch(1);
  text1_ = new QPlainTextEdit(QStringLiteral("点击左边的两个按钮，作出自己喜爱的设置。"), frame3_);
  text1_->setObjectName(QStringLiteral("Text1"));
  text1_->setReadOnly(true);
  text1_->setMinimumHeight(80);
  text1_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  text1_->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  styleRow->addLayout(styleButtons);
  styleRow->addWidget(text1_, 1);
  outer->addWidget(frame3_);
  connect(frame3CfgCmd_[0], &QPushButton::clicked, this, &Form4::fontClicked);
  connect(frame3CfgCmd_[1], &QPushButton::clicked, this, &Form4::backColorClicked);

  // The window's buttons.
  auto* buttonRow = new QHBoxLayout;
  const QString cmdCaptions[3] = {QStringLiteral(" 确定"), QStringLiteral("取消"), QStringLiteral("分析预测")};
  buttonRow->addStretch(1);
  for (int i = 0; i < 3; ++i) {
    auto* b = new QPushButton(cmdCaptions[i], this);
    b->setObjectName(IndexedName("Form4Cmd", i));
    buttonRow->addWidget(b);
    form4Cmd_[static_cast<size_t>(i)] = b;
  }
  buttonRow->addStretch(1);
  outer->addLayout(buttonRow);
  connect(form4Cmd_[0], &QPushButton::clicked, this, &Form4::confirmClicked);
  connect(form4Cmd_[1], &QPushButton::clicked, this, &Form4::cancelClicked);
  connect(form4Cmd_[2], &QPushButton::clicked, this, &Form4::forecastClicked);
  form4Cmd_[2]->setEnabled(false);

  connect(&settings_, &Settings::numbersChanged, this, [this] { showNumbers(false); });
  connect(&settings_, &Settings::styleChanged, this, &Form4::showStyle);

  showNumbers(true);
  showStyle();
}

void Form4::setForecastHook(std::function<void()> hook) {
  forecastHook_ = std::move(hook);
  form4Cmd_[2]->setEnabled(static_cast<bool>(forecastHook_));
}

void Form4::openWindow() {
  loadWindow();
  show();
  raise();
  activateWindow();
  if (mainWindow_) mainWindow_->hide();
}

void Form4::loadWindow() {
  adjustSize();
  if (!isMinimized()) {
    if (QScreen* s = screen()) move(s->availableGeometry().center() - QPoint(width() / 2, height() / 2));
  }
  if (mainWindow_) setWindowIcon(mainWindow_->windowIcon());

  const IniError error = settings_.loadForSettingsWindow(env_);
  // The file's values replace whatever the fields showed, including values
  // typed out of bounds that the up-down controls did not take.
  showNumbers(true);
  // A file that can be neither read nor created was handled with the second
  // defaults; anything else is reported.
  if (error.pending() && error.number != kFileAccessError)
    env_.msgBox(ErrorBoxText(error), box::OkOnly, QStringLiteral("Error"));
}

void Form4::showNumbers(bool all) {
  const bool was = showing_;
  showing_ = true;
  for (int i = 0; i < kSettingsNumberCount; ++i) {
    const int v = settings_.number(i);
    UpDown* updown = numUpDown_[static_cast<size_t>(i)];
    if (!all && updown->value() == v) continue;
    {
      const QSignalBlocker quiet(updown);
      updown->setValue(v);
    }
    QLineEdit* text = numText_[static_cast<size_t>(i)];
    if (text->text() != CStr(v)) text->setText(CStr(v));
  }
  showing_ = was;
}

void Form4::showStyle() { ApplyTextStyle(text1_, settings_.style()); }

void Form4::numTextChanged(int index) {
  if (showing_) return;
  // In bounds the value goes to the up-down control (and the settings); out
  // of bounds it stays on screen only. Either way the internal bank is
  // counted again on its next use.
  settings_.takeNumberText(index, numText_[static_cast<size_t>(index)]->text(), env_.today());
}

void Form4::numUpDownChanged(int index, int value) {
  if (showing_) return;
  settings_.setNumber(index, value);
  // The value goes to the text field, whose change then counts as any other.
  numText_[static_cast<size_t>(index)]->setText(CStr(value));
}

void Form4::fontClicked() {
  const std::optional<FontChoice> chosen =
      env_.dialogs ? env_.dialogs->chooseFont(FontChoiceOf(settings_.style())) : std::nullopt;
  if (!chosen) return;
  // The sample text and the main window's question box follow at once.
  settings_.setStyle(StyleWithFont(settings_.style(), *chosen));
}

void Form4::backColorClicked() {
  const std::optional<int> chosen = env_.dialogs ? env_.dialogs->chooseColor(settings_.backColor()) : std::nullopt;
  if (!chosen) return;
  settings_.setBackColor(*chosen);
}

void Form4::confirmClicked() {
  // Neither stamp equals today's any more: both counts run on next use.
  settings_.subtractStamps();
  settings_.CreateIni(env_);
  // Texts typed out of bounds were not saved; the fields show what was.
  showNumbers(true);
  showMainWindow();
  closeByButton();
}

void Form4::cancelClicked() {
  loadWindow();
  showMainWindow();
  closeByButton();
}

void Form4::forecastClicked() {
  if (!forecastHook_) return;
  forecastHook_();
  hide();
}

void Form4::closeByButton() {
  closingByButton_ = true;
  close();
  closingByButton_ = false;
}

void Form4::showMainWindow() {
  if (mainWindow_) mainWindow_->show();
}

void Form4::closeEvent(QCloseEvent* event) {
  if (!closingByButton_) {
    // Closing by any other route is "取消".
    loadWindow();
    showMainWindow();
  }
  event->accept();
}

}  // namespace mj
