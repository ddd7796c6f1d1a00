// 试一下自动转换 in the paper window: the hourglass and the first text of the
// label while the conversion runs, the converted text in the box, the second
// text of the label, and 开始做题 waiting for the next check.

#include <gtest/gtest.h>

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

#include "papers/auto_format.h"
#include "papers/paper_check.h"
#include "papers/paper_window.h"
#include "papers_fixture.h"
#include "support/printers.h"
#include "support/test_env.h"
#include "support/window_checks.h"

namespace mj {
namespace {

// What the label showed whenever it was painted, and whether the hourglass
// was up then.
class PaintWatch : public QObject {
 public:
  explicit PaintWatch(QLabel* label) : label_(label) { label->installEventFilter(this); }
  QStringList texts;
  QList<bool> busy;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched == label_ && event->type() == QEvent::Paint) {
      texts << label_->text();
      const QCursor* c = QApplication::overrideCursor();
      busy << (c && c->shape() == Qt::WaitCursor);
    }
    return false;
  }

 private:
  QLabel* label_;
};

const QString kLoose = test::Lines({u"2024年模拟试卷"_qs, u"一．单项选择题（每题1分）"_qs, u"1、下列说法正确的是"_qs,
                                    u"A、甲 B、乙"_qs, u"C、丙 D、丁"_qs, u"答案与解析：A，见《刑诉》第十二条"_qs,
                                    u"2、关于本案，"_qs, u"下列哪一选项是正确的？"_qs, u"A.甲"_qs, u"B.乙"_qs, u"C.丙"_qs,
                                    u"D.丁"_qs, u"正确答案：B"_qs, QString()});

TEST(AutoFormatButton, ConvertsTheTextUnderTheHourglassAndAsksForACheck) {
  test::TestEnv te;
  test::WriteStandardLawList(te);
  PaperState state;
  Form10 form(te.env, state);
  form.setPaperText(kLoose);
  form.show();
  QApplication::processEvents();
  // A checked paper: the practice button is on until the text changes.
  form.Command1[0]->click();
  ASSERT_TRUE(form.Command1[4]->isEnabled());
  ASSERT_TRUE(form.Command1[1]->isEnabled());

  PaintWatch watch(form.Label1);
  form.Command1[1]->click();
  ASSERT_FALSE(watch.texts.isEmpty());
  EXPECT_EQ(watch.texts.first(), u"正在进行格式转换，请稍候……"_qs) << "shown before the work starts";
  EXPECT_TRUE(watch.busy.first());
  EXPECT_EQ(QApplication::overrideCursor(), nullptr) << "the pointer is back";
  EXPECT_EQ(form.Label1->text(), u"转换完成，请检验一下合法性。"_qs);
  EXPECT_EQ(form.paperText(), AutoFormat(kLoose));
  EXPECT_EQ(form.paperText(),
            test::Lines({u"一、单项选择题"_qs, u"1．下列说法正确的是"_qs, u"A．甲"_qs, u"B．乙"_qs, u"C．丙"_qs, u"D．丁"_qs,
                         u"[答案：]A．"_qs, u"[参见：]《刑事诉讼法》第12条"_qs, u"2．关于本案，下列哪一选项是正确的？"_qs,
                         u"A．甲"_qs, u"B．乙"_qs, u"C．丙"_qs, u"D．丁正确"_qs, u"[答案：]B"_qs, QString()}));
  EXPECT_FALSE(form.Command1[4]->isEnabled()) << "a new text waits for the next check";
  test::CheckOnScreens(&form, u"paper_window_converted"_qs);

  // The converted paper goes through the check.
  form.Command1[0]->click();
  EXPECT_TRUE(form.Command1[4]->isEnabled());
  EXPECT_EQ(state.OutTiNum[1][2], 2);
  form.hide();
}

}  // namespace
}  // namespace mj
