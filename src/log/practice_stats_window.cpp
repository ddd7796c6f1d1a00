#include "log/practice_stats_window.h"

#include <QApplication>
#include <QBarCategoryAxis>
#include <QBarSet>
#include <QBuffer>
#include <QChart>
#include <QChartView>
#include <QDateTimeAxis>
#include <QHBoxLayout>
#include <QHorizontalBarSeries>
#include <QLabel>
#include <QLineSeries>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QSet>
#include <QStackedBarSeries>
#include <QTabWidget>
#include <QVBoxLayout>
#include <QValueAxis>
#include <cmath>

#include "platform/dialogs.h"
#include "platform/escape_key_widget.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"
#include "settings/settings.h"

namespace mj {

namespace {

constexpr int kPages = 3;
// Page names, as the tabs and the proposed file names show them.
constexpr const char16_t* kPageNames[kPages] = {u"每日做题", u"到期预测", u"各科正确率"};

// A share in percent with one decimal, as the labels print it.
QString PercentText(int part, int whole) {
  return whole > 0 ? QString::number(100.0 * part / whole, 'f', 1) + QStringLiteral("%") : QStringLiteral("—");
}

// A count axis from 0 whose ticks fall on whole numbers: a step of 1, 2 or
// 5 times a power of ten, about five steps up to `maximum` or beyond.
void setCountRange(QValueAxis* axis, int maximum) {
  const int top = std::max(maximum, 1);
  double step = 1;
  while (top / step > 6) {
    if (top / (step * 2) <= 6) {
      step *= 2;
      break;
    }
    if (top / (step * 5) <= 6) {
      step *= 5;
      break;
    }
    step *= 10;
  }
  axis->setRange(0, std::ceil(top / step) * step);
  axis->setTickType(QValueAxis::TicksDynamic);
  axis->setTickAnchor(0);
  axis->setTickInterval(step);
  axis->setLabelFormat(QStringLiteral("%.0f"));
}

QChart* newChart(const QString& title) {
  auto* chart = new QChart;
  QFont f = QApplication::font();
  f.setBold(true);
  f.setPointSizeF(f.pointSizeF() * 1.15);
  chart->setTitleFont(f);
  chart->setTitle(title);
  chart->legend()->setAlignment(Qt::AlignBottom);
  chart->setMargins(QMargins(4, 4, 4, 4));
  return chart;
}

QDateTime atNoon(const QDate& day) { return QDateTime(day, QTime(12, 0)); }

}  // namespace

QString ChartFileName(int page, const QDate& today) {
  const int p = std::clamp(page, 0, kPages - 1);
  return QStringLiteral("做题统计-") + QString::fromUtf16(kPageNames[p]) + QStringLiteral("-") +
         today.toString(QStringLiteral("yyyyMMdd")) + QStringLiteral(".png");
}

Form21::Form21(const Env& env, const Settings& settings, QWidget* parent)
    : QWidget(parent, Qt::Window), env_(env), settings_(settings) {
  setObjectName(QStringLiteral("Form21"));
  setWindowTitle(QStringLiteral("明镜学习伴侣") + QStringLiteral("/做题统计"));
  auto* outer = new QVBoxLayout(this);

  TabStrip1 = new QTabWidget(this);
  TabStrip1->setObjectName(QStringLiteral("TabStrip1"));
  auto page = [this](QChartView*& view, QLabel*& label, const char* viewName, const char* labelName,
                     bool scrolled) {
    auto* w = new QWidget;
    auto* v = new QVBoxLayout(w);
    view = new QChartView(new QChart);
    view->setObjectName(QString::fromLatin1(viewName));
    view->setRenderHint(QPainter::Antialiasing);
    view->setMinimumSize(560, 300);
    if (scrolled) {
      // One bar per law and per paper: many laws make the chart taller
      // than the page, which then scrolls.
      auto* area = new QScrollArea;
      area->setObjectName(QString::fromLatin1(viewName) + QStringLiteral("Area"));
      area->setWidgetResizable(true);
      area->setWidget(view);
      area->setFrameShape(QFrame::NoFrame);
      v->addWidget(area, 1);
    } else {
      v->addWidget(view, 1);
    }
    label = new QLabel;
    label->setObjectName(QString::fromLatin1(labelName));
    label->setWordWrap(true);
    v->addWidget(label);
    TabStrip1->addTab(w, QString::fromUtf16(kPageNames[TabStrip1->count()]));
  };
  page(Chart1, Label1, "Chart1", "Label1", false);
  page(Chart2, Label2, "Chart2", "Label2", false);
  page(Chart3, Label3, "Chart3", "Label3", true);
  outer->addWidget(TabStrip1, 1);

  auto* buttons = new QHBoxLayout;
  Command1 = new QPushButton(QStringLiteral("保存图片"), this);
  Command1->setObjectName(QStringLiteral("Command1"));
  Command1->setToolTip(QStringLiteral("把当前页的图表保存为PNG图片。"));
  Command2 = new QPushButton(QStringLiteral("刷新"), this);
  Command2->setObjectName(QStringLiteral("Command2"));
  Command2->setToolTip(QStringLiteral("重新读取做题记录，按当前设置重画各图。"));
  Command3 = new QPushButton(QStringLiteral("关  闭"), this);
  Command3->setObjectName(QStringLiteral("Command3"));
  buttons->addStretch(1);
  for (QPushButton* b : {Command1, Command2, Command3}) buttons->addWidget(b);
  buttons->addStretch(1);
  outer->addLayout(buttons);
  connect(Command1, &QPushButton::clicked, this, [this] { saveChart(); });
  connect(Command2, &QPushButton::clicked, this, &Form21::refresh);
  connect(Command3, &QPushButton::clicked, this, &QWidget::close);
  CloseOnEscape(this);
  resize(900, 620);
}

QChartView* Form21::chartView(int page) const {
  switch (page) {
    case 0:
      return Chart1;
    case 1:
      return Chart2;
    default:
      return Chart3;
  }
}

int Form21::page() const { return TabStrip1->currentIndex(); }
void Form21::setPage(int page) { TabStrip1->setCurrentIndex(page); }

void Form21::openWindow() {
  refresh();
  if (!isVisible()) {
    if (QScreen* s = screen()) {
      const QRect area = s->availableGeometry();
      resize(std::min(width(), area.width() - 40), std::min(height(), area.height() - 60));
      move(area.center() - QPoint(width() / 2, height() / 2));
    }
  }
  show();
  raise();
  activateWindow();
}

void Form21::refresh() {
  QApplication::setOverrideCursor(Qt::WaitCursor);
  const PracticeRecords records = ReadPracticeRecords(env_.path(QStringLiteral("\\dbf")));
  showRecords(records);
  QApplication::restoreOverrideCursor();
  if (!records.problems.isEmpty())
    env_.msgBox(records.problems.join(kCrLf) + kCrLf + QStringLiteral("统计中没有计入读不出的做题记录。"),
                box::Exclamation, QStringLiteral("请注意"));
}

void Form21::showRecords(const PracticeRecords& records) {
  const QDate today = env_.today();
  days_ = AnswersPerDay(records, today);
  due_ = DueForecast(records, InternalSchedule(settings_, today), SimulatedSchedule(settings_, today));
  shares_ = RightShareByLaw(records);
  drawAnswers();
  drawDue();
  drawShares();
}

void Form21::drawAnswers() {
  QChart* chart = newChart(QStringLiteral("近90天每天的做题数和正确率"));
  auto* answers = new QLineSeries;
  answers->setName(QStringLiteral("做题数（道次，左边刻度）"));
  auto* share = new QLineSeries;
  share->setName(QStringLiteral("正确率（%，右边刻度）"));
  share->setPointsVisible(true);
  int most = 0, all = 0, right = 0;
  for (const DayAnswers& d : days_) {
    const qreal x = static_cast<qreal>(atNoon(d.day).toMSecsSinceEpoch());
    answers->append(x, d.answers);
    // A day without answers has no share: the line goes from one day of
    // practice to the next.
    if (d.answers > 0) share->append(x, 100.0 * d.right / d.answers);
    most = std::max(most, d.answers);
    all += d.answers;
    right += d.right;
  }
  chart->addSeries(answers);
  chart->addSeries(share);
  auto* x = new QDateTimeAxis;
  x->setFormat(QStringLiteral("MM-dd"));
  x->setTitleText(QStringLiteral("日期"));
  if (!days_.isEmpty()) x->setRange(atNoon(days_.first().day), atNoon(days_.last().day));
  x->setTickCount(10);
  // The legend names the scale of each line: a title turned on its side
  // is cut short by the charts when it is Chinese.
  auto* count = new QValueAxis;
  setCountRange(count, most);
  auto* percent = new QValueAxis;
  percent->setRange(0, 100);
  percent->setTickCount(6);
  percent->setLabelFormat(QStringLiteral("%.0f"));
  chart->addAxis(x, Qt::AlignBottom);
  chart->addAxis(count, Qt::AlignLeft);
  chart->addAxis(percent, Qt::AlignRight);
  answers->attachAxis(x);
  answers->attachAxis(count);
  share->attachAxis(x);
  share->attachAxis(percent);
  QChart* old = Chart1->chart();
  Chart1->setChart(chart);
  delete old;
  Label1->setText(days_.isEmpty() ? QString()
                                  : QStringLiteral("%1至%2共做题%3道次，做对%4道次，正确率%5。")
                                        .arg(days_.first().day.toString(QStringLiteral("yyyy-MM-dd")),
                                             days_.last().day.toString(QStringLiteral("yyyy-MM-dd")))
                                        .arg(all)
                                        .arg(right)
                                        .arg(PercentText(right, all)));
}

void Form21::drawDue() {
  QChart* chart = newChart(QStringLiteral("今后30天每天新到期的试题数（按当前设置，其间不再做题）"));
  auto* internal = new QBarSet(QStringLiteral("内部试题"));
  auto* simulated = new QBarSet(QStringLiteral("模拟试题"));
  QStringList categories;
  int most = 0, laterInternal = 0, laterSimulated = 0;
  for (int i = 0; i < due_.size(); ++i) {
    const DueDay& d = due_[i];
    *internal << d.internal;
    *simulated << d.simulated;
    categories << d.day.toString(QStringLiteral("MM-dd"));
    most = std::max(most, d.internal + d.simulated);
    if (i > 0) {
      laterInternal += d.internal;
      laterSimulated += d.simulated;
    }
  }
  auto* series = new QStackedBarSeries;
  series->append(internal);
  series->append(simulated);
  chart->addSeries(series);
  auto* x = new QBarCategoryAxis;
  x->append(categories);
  // Thirty dates side by side only fit standing up.
  x->setLabelsAngle(-90);
  x->setTitleText(QStringLiteral("日期"));
  auto* count = new QValueAxis;
  setCountRange(count, most);
  chart->addAxis(x, Qt::AlignBottom);
  chart->addAxis(count, Qt::AlignLeft);
  series->attachAxis(x);
  series->attachAxis(count);
  QChart* old = Chart2->chart();
  Chart2->setChart(chart);
  delete old;
  Label2->setText(due_.isEmpty() ? QString()
                                 : QStringLiteral("今天（%1）到期：内部试题%2道，模拟试题%3道；此后%4天内又有内部试题%5道、"
                                                  "模拟试题%6道到期。")
                                       .arg(due_.first().day.toString(QStringLiteral("MM-dd")))
                                       .arg(due_.first().internal)
                                       .arg(due_.first().simulated)
                                       .arg(due_.size() - 1)
                                       .arg(laterInternal)
                                       .arg(laterSimulated));
}

void Form21::drawShares() {
  QChart* chart = newChart(QStringLiteral("各法律和各模拟试卷做过的试题中最近一次做对的比例"));
  auto* set = new QBarSet(QStringLiteral("正确率（%）"));
  QStringList categories;
  QSet<QString> used;
  int done = 0, right = 0;
  // A horizontal bar chart draws its first category at the bottom: the
  // list goes in backwards so that it reads from the top.
  for (qsizetype i = shares_.size() - 1; i >= 0; --i) {
    const GroupShare& g = shares_[i];
    QString name = g.label + QStringLiteral("（%1题）").arg(g.done);
    // Categories must differ; two groups of the same name keep their code.
    if (used.contains(name)) name = g.label + QStringLiteral("[") + g.code + QStringLiteral("]（%1题）").arg(g.done);
    used.insert(name);
    categories << name;
    *set << std::round(g.percent() * 10) / 10;
    done += g.done;
    right += g.right;
  }
  auto* series = new QHorizontalBarSeries;
  series->append(set);
  series->setLabelsVisible(true);
  series->setLabelsFormat(QStringLiteral("@value%"));
  series->setLabelsPosition(QAbstractBarSeries::LabelsInsideEnd);
  chart->addSeries(series);
  auto* y = new QBarCategoryAxis;
  y->append(categories);
  auto* x = new QValueAxis;
  x->setTitleText(QStringLiteral("正确率（%）"));
  x->setRange(0, 100);
  x->setTickCount(11);
  x->setLabelFormat(QStringLiteral("%.0f"));
  chart->addAxis(y, Qt::AlignLeft);
  chart->addAxis(x, Qt::AlignBottom);
  series->attachAxis(y);
  series->attachAxis(x);
  chart->legend()->hide();
  QChart* old = Chart3->chart();
  Chart3->setChart(chart);
  delete old;
  // Room for every name: the page scrolls when the laws are many.
  Chart3->setMinimumHeight(std::max(300, 110 + 26 * static_cast<int>(shares_.size())));
  Label3->setText(done == 0 ? QStringLiteral("还没有做题记录。")
                            : QStringLiteral("共做过%1道题，其中最近一次做对的%2道，占%3。")
                                  .arg(done)
                                  .arg(right)
                                  .arg(PercentText(right, done)));
}

bool Form21::saveChart() {
  const int p = std::clamp(page(), 0, kPages - 1);
  FileDialogRequest request;
  request.title = QStringLiteral("把图表保存为图片");
  request.initialDir = env_.root;
  request.filter = QStringLiteral("PNG图片(*.png)|*.png");
  request.defaultExt = QStringLiteral("png");
  request.fileName = ChartFileName(p, env_.today());
  const std::optional<QString> path = env_.dialogs->saveFile(request);
  if (!path || path->isEmpty()) return false;
  // The whole chart, also the part of a tall chart scrolled out of sight.
  QChartView* view = chartView(p);
  const QPixmap picture = view->grab();
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  if (!picture.save(&buffer, "PNG") || !WriteBytesAtomic(*path, bytes)) {
    env_.msgBox(QStringLiteral("图片没有保存成功：无法写入文件") + *path + QStringLiteral("。"), box::Exclamation);
    return false;
  }
  return true;
}

}  // namespace mj
