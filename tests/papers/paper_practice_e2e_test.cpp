// The real sample paper of the data (500 questions of the examination) from
// end to end: opened through the menu 外部题库, checked, practised, the
// program closed, and started again a day later, where the resumption offers
// what the record says.

#include <gtest/gtest.h>

#include <QApplication>
#include <QFileInfo>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTimer>

#include "app/main_window.h"
#include "papers/check_result_window.h"
#include "papers/paper_check.h"
#include "papers/paper_file.h"
#include "papers/paper_practice.h"
#include "papers/paper_practice_window.h"
#include "papers/progress_record.h"
#include "papers/paper_window.h"
#include "papers/text_box_widget.h"
#include "platform/desktop_services_widget.h"
#include "support/printers.h"
#include "support/test_env.h"
#include "support/window_checks.h"

namespace mj {
namespace {

const QString kRealPaper = u"司法考试真题500道（LawBench）"_qs;

// Boxes answered from the script; the one named for a picture is also shown
// as the program shows it, photographed and closed with the scripted answer.
class PhotographedBoxes final : public MessageBoxes {
 public:
  explicit PhotographedBoxes(ScriptedBoxes& script) : script_(script) {}
  QString nextPicture;  // the picture's name for the next box
  QStringList problems;

  int show(const QString& text, int style, const QString& title) override {
    const int answer = script_.show(text, style, title);
    if (nextPicture.isEmpty()) return answer;
    const QString name = nextPicture;
    nextPicture.clear();
    QTimer::singleShot(0, [this, name, answer] {
      auto* mb = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (!mb) return;
      test::SettleLayouts();
      test::SaveScreenshot(mb, name);
      problems += test::LayoutProblems(mb);
      mb->button(answer == box::Yes ? QMessageBox::Yes : QMessageBox::No)->click();
    });
    WidgetBoxes().show(text, style, title);
    return answer;
  }

 private:
  ScriptedBoxes& script_;
};

class RealPaper : public ::testing::Test {
 protected:
  void SetUp() override {
    if (test::DemoDataDir().isEmpty()) GTEST_SKIP() << "no demonstration data built";
    te = std::make_unique<test::TestEnv>(test::DemoDataDir());
    test::NoSupportSite(*te);
    boxes = std::make_unique<PhotographedBoxes>(te->boxes);
    te->env.boxes = boxes.get();
    const PaperFile f = ReadPaper(paperPath());
    ASSERT_TRUE(f.ok);
    ASSERT_EQ(f.encoding, PaperEncoding::Gbk);
    text = f.text;
    const QRegularExpression answer(u"\r\n\\[答案：\\]([A-D])"_qs);
    for (auto it = answer.globalMatch(text); it.hasNext();) keys.append(it.next().captured(1));
    ASSERT_EQ(keys.size(), 500);
  }
  void TearDown() override { form.reset(); }

  QString paperPath(const QString& mark = QString()) const {
    return te->path(u"\\外部题库\\"_qs + mark + kRealPaper + u".txt"_qs);
  }
  QString recordPath(const QString& mark = QString()) const {
    return te->path(u"\\外部题库\\"_qs + mark + kRealPaper + u".rec"_qs);
  }
  // The program started; the paper opened through 外部题库 and checked.
  Form10* openAndCheck(const QString& path) {
    form = std::make_unique<Form1>(te->env);
    form->load();
    form->show();
    te->dialogs.answer(path);
    form->OutShiTi->trigger();
    Form10* paper = form->paperWindow();
    EXPECT_TRUE(paper->isVisible());
    EXPECT_EQ(paper->fileName(), path);
    paper->Command1[0]->click();
    return paper;
  }
  // A wrong letter for question k.
  QString wrong(int k) const { return keys[k - 1] == u"A"_qs ? u"B"_qs : u"A"_qs; }
  static int Button(const QString& letter) { return letter[0].unicode() - u'A'; }

  std::unique_ptr<test::TestEnv> te;
  std::unique_ptr<PhotographedBoxes> boxes;
  std::unique_ptr<Form1> form;
  QString text;
  QStringList keys;
};

TEST_F(RealPaper, PassesTheCheckQuestionByQuestion) {
  Form10* paper = openAndCheck(paperPath());
  QString expected =
      u"    没有“二、多项选择题”字样\r\n    没有“三、任意选择题”字样\r\n"
      u"注意：由于本程序要适应现存的各种格式，所以你返回后要检查一下原文本是否与该统计结果相符。如果不符，即如果只有单选题和多选题而没有任意选择题，只要下面提示已经通过检验，则也是可以开始做题的。但是你的这个文件内不能只有后面的试题类型而没有前面的试题类型，即不能只有多选题或任意选择题而没有单选题。\r\n"
      u"\r\n共有500道单选题，500个答案。\r\n"
      u"\r\n单选题编号从1到500共500道=500道。检验通过\r\n"
      u"\r\n各个试题详细检验结果汇报：\r\n\r\n一、单项选择题\r\n"_qs;
  for (int i = 1; i <= 500; ++i) expected += u"第"_qs + QString::number(i) + u"题：通过检验。\r\n"_qs;
  expected += u"\r\n\r\n"_qs;
  EXPECT_EQ(paper->resultWindow()->report(), expected);
  EXPECT_EQ(form->paperState().OutTiMode, 1);
  EXPECT_TRUE(paper->Command1[4]->isEnabled());
  // The first lines name the source and the licence.
  EXPECT_TRUE(text.startsWith(u"国家司法考试真题·单项选择题（共500道）\r\n来源：LawBench"_qs));
  EXPECT_TRUE(text.contains(u"Apache License 2.0"_qs));
}

TEST_F(RealPaper, TwentyAnswersTheProgramClosedAndTheNextDaysResumption) {
  Form10* paper = openAndCheck(paperPath());
  paper->Command1[4]->click();
  EXPECT_TRUE(te->boxes.shown().isEmpty());
  Form14* practice = paper->practiceWindow();
  ASSERT_TRUE(practice->isVisible());
  EXPECT_EQ(practice->Label1->text(), u"共500题符合条件,本题为单选题，编号为1"_qs);
  EXPECT_TRUE(HeldTextOf(practice->RichTextBox1).startsWith(u"1．某原系某市信用社办公室负责人。"_qs));
  EXPECT_TRUE(HeldTextOf(practice->RichTextBox1).endsWith(u"\r\nA．职务侵占罪\r\nB．金融凭证诈骗罪\r\nC．挪用资金罪\r\nD．挪用公款罪"_qs));
  test::CheckOnScreens(practice, u"paper_practice_real_question"_qs);

  // Odd questions right, even ones wrong.
  QString record = u"[1]\r\n"_qs;
  for (int k = 1; k <= 20; ++k) {
    if (k > 1) practice->Command1[16]->click();
    ASSERT_EQ(practice->OutTiNo, k);
    const QString letter = k % 2 ? keys[k - 1] : wrong(k);
    practice->Command1[Button(letter)]->click();
    EXPECT_TRUE(HeldTextOf(practice->RichTextBox3)
                    .startsWith(k % 2 ? u"恭喜你，你做对了。\r\n答案："_qs + keys[k - 1] + u"参见\r\n"_qs
                                      : u"错选为"_qs + letter + u"。\r\n答案："_qs + keys[k - 1] + u"参见\r\n"_qs));
    record += QString::number(k) + u"="_qs + (k % 2 ? u"OKOK"_qs : letter) + u"\r\n"_qs;
  }
  record += u"[做到题类]\r\n答=1\r\n[做到编号]\r\n答=20\r\n"_qs;
  test::CheckOnScreens(practice, u"paper_practice_real_answer"_qs);
  EXPECT_EQ(te->readGbk(u"\\外部题库\\"_qs + kRealPaper + u".rec"_qs), record);

  // The program closes as it is; the next day it starts again.
  form.reset();
  te->clock.advanceDays(1);
  const QDateTime changed = QFileInfo(recordPath()).lastModified();
  paper = openAndCheck(paperPath());
  te->boxes.clear();
  te->boxes.answer(box::No);
  boxes->nextPicture = u"paper_practice_resumption_question"_qs;
  paper->Command1[4]->click();
  ASSERT_EQ(te->boxes.shown().size(), 1);
  EXPECT_EQ(te->boxes.shown()[0].text,
            u"今天是2026年11月22日，本套试题\r\n已经在"_qs + QString::number(changed.date().year()) + u"年"_qs +
                QString::number(changed.date().month()) + u"月"_qs + QString::number(changed.date().day()) + u"日"_qs +
                QString::number(changed.time().hour()) + u"点"_qs + QString::number(changed.time().minute()) +
                u"分做过，\r\n共500道\r\n已经做了20道\r\n做对10道\r\n正确率为 2%\r\n"
                u"最后一次做的是第20题（也就是单选题的第20题），\r\n这次是否从第1题开始重做？"_qs);
  EXPECT_EQ(te->boxes.shown()[0].style, box::YesNo | box::Question);
  EXPECT_EQ(boxes->problems, QStringList());
  // No: the run goes on at question 21.
  Form14* practice2 = paper->practiceWindow();
  ASSERT_TRUE(practice2->isVisible());
  EXPECT_EQ(practice2->OutTiNo, 21);
  EXPECT_EQ(practice2->Label1->text(), u"共480题符合条件,本题为单选题，编号为21"_qs);
  EXPECT_FALSE(practice2->Command1[15]->isEnabled());
  test::CheckOnScreens(practice2, u"paper_practice_resumed"_qs);
  // The record is what the first day left.
  EXPECT_EQ(te->readGbk(u"\\外部题库\\"_qs + kRealPaper + u".rec"_qs), record);
  practice2->Command1[Button(keys[20])]->click();
  record.replace(u"20=A\r\n"_qs, u"20=A\r\n21=OKOK\r\n"_qs).replace(u"20=B\r\n"_qs, u"20=B\r\n21=OKOK\r\n"_qs);
  record.replace(u"答=20"_qs, u"答=21"_qs);
  EXPECT_EQ(te->readGbk(u"\\外部题库\\"_qs + kRealPaper + u".rec"_qs), record);

  // Starting again from the first, only the wrong and the not done ones.
  practice2->Command1[19]->click();
  EXPECT_EQ(paper->fileName(), paperPath(u"02%"_qs));
  te->boxes.clear();
  te->boxes.answer(box::Yes);
  te->boxes.answer(box::Yes);
  paper->Command1[4]->click();
  ASSERT_EQ(te->boxes.shown().size(), 2);
  EXPECT_TRUE(te->boxes.shown()[0].text.endsWith(
      u"最后一次做的是第21题（也就是单选题的第21题），\r\n这次是否从第1题开始重做？"_qs));
  EXPECT_EQ(te->boxes.shown()[1].text, u"本次是否只做曾做错的题和未做过的题？"_qs);
  EXPECT_EQ(practice2->Label1->text(), u"共489题符合条件,本题为单选题，编号为2"_qs);
}

TEST_F(RealPaper, CanBePractisedToTheEnd) {
  Form10* paper = openAndCheck(paperPath());
  paper->Command1[4]->click();
  Form14* practice = paper->practiceWindow();
  for (int k = 1; k <= 500; ++k) {
    if (k > 1) practice->Command1[16]->click();
    ASSERT_EQ(practice->OutTiNo, k);
    practice->Command1[Button(keys[k - 1])]->click();
    ASSERT_TRUE(HeldTextOf(practice->RichTextBox3).startsWith(u"恭喜你，你做对了。"_qs)) << k;
  }
  EXPECT_FALSE(practice->Command1[16]->isEnabled());
  practice->Command1[19]->click();
  // All right: 00%.
  EXPECT_EQ(paper->fileName(), paperPath(u"00%"_qs));
  EXPECT_TRUE(QFileInfo::exists(recordPath(u"00%"_qs)));
  EXPECT_FALSE(QFileInfo::exists(paperPath()));
  const ProgressRecord r = ProgressRecord::Read(recordPath(u"00%"_qs));
  EXPECT_EQ(GetOutInfo(form->paperState(), r, 500), u"  500  500"_qs);
}

TEST_F(RealPaper, ReadsTheSameInUtf8) {
  ASSERT_TRUE(WritePaper(paperPath(u"UTF8"_qs), text, PaperEncoding::Utf8Bom));
  Form10* paper = openAndCheck(paperPath(u"UTF8"_qs));
  EXPECT_EQ(paper->encoding(), PaperEncoding::Utf8Bom);
  PaperState gbk;
  RunPaperCheck(te->env, text, gbk);
  EXPECT_EQ(form->paperState().OutTiText, gbk.OutTiText);
  EXPECT_EQ(form->paperState().OutTiNum, gbk.OutTiNum);
  paper->Command1[4]->click();
  GetOutTotal(gbk);
  EXPECT_EQ(form->paperState().OutTiNum, gbk.OutTiNum);
  EXPECT_EQ(GetStemText(form->paperState(), 500), GetStemText(gbk, 500));
  EXPECT_TRUE(GetStemText(gbk, 500).startsWith(u"500．甲县居民黄某立遗嘱"_qs));
}

}  // namespace
}  // namespace mj
