#include "settings/settings_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include "platform/desktop_services_widget.h"
#include "platform/textfile.h"
#include "settings/personal_settings_window.h"
#include "settings/text_style_widget.h"
#include "settings/updown_widget.h"
#include "support/test_env.h"

using namespace mj;

namespace {

QString FileText(const QStringList& lines) {
  QString out;
  for (const QString& l : lines) out += l + u"\r\n"_qs;
  return out;
}

// A font dialog that also keeps what it was prefilled with.
class RecordingDialogs final : public Dialogs {
 public:
  std::optional<QString> openFile(const FileDialogRequest&) override { return std::nullopt; }
  std::optional<QString> saveFile(const FileDialogRequest&) override { return std::nullopt; }
  std::optional<FontChoice> chooseFont(const FontChoice& initial) override {
    fontInitial = initial;
    return fontAnswer;
  }
  std::optional<int> chooseColor(int initial) override {
    colorInitial = initial;
    return colorAnswer;
  }
  std::optional<FontChoice> fontAnswer;
  std::optional<int> colorAnswer;
  FontChoice fontInitial;
  int colorInitial = -1;
};

const QString kSavedFile = FileText(
    {u"STOKTIMES=3"_qs, u"STADDNUM=2"_qs, u"STPASSDAYS=7"_qs, u"TSOKTIMES=0"_qs, u"TSADDNUM=4"_qs, u"TSPASSDAYS=100"_qs,
     u"PUBFONTSIZE=18"_qs, u"PUBBACKCOLOR=12632256"_qs, u"PUBFORECOLOR=128"_qs, u"STLASTUPDATE=500"_qs,
     u"TSLASTUPDATE=600"_qs, u"PUBFONTNAME=宋体"_qs, u"PUBFONTIT=FALSE"_qs, u"PUBFONTBOLD=TRUE"_qs});

class SettingsWindow : public ::testing::Test {
 protected:
  SettingsWindow() {
    t.mkdir(u"\\ini"_qs);
    // The main window's question box follows the style, as the main window
    // does it.
    QObject::connect(&settings, &Settings::styleChanged, &questionBox,
                     [this] { ApplyTextStyle(&questionBox, settings.style()); });
    main.show();
  }
  ~SettingsWindow() override { form.hide(); }

  QString text(int i) const { return form.numText(i)->text(); }
  int spin(int i) const { return form.numUpDown(i)->value(); }
  // Replaces the text of a number field by typing.
  void type(int i, const QString& s) {
    QLineEdit* e = form.numText(i);
    e->setFocus();
    e->selectAll();
    QTest::keyClick(e, Qt::Key_Delete);
    QTest::keyClicks(e, s);
  }
  QByteArray fileBytes() const { return ReadBytes(t.path(kSettingsFile)); }

  test::TestEnv t;  // today 2026-11-21: stamp 1121, changed stamp 1020
  Settings settings;
  QWidget main;
  QPlainTextEdit questionBox{&main};
  Form4 form{t.env, settings, &main};
};

}  // namespace

TEST_F(SettingsWindow, CaptionsFramesAndBounds) {
  EXPECT_EQ(form.objectName(), u"Form4"_qs);
  EXPECT_EQ(form.frame1()->title(), u"以下设置专用于内部题库"_qs);
  EXPECT_EQ(form.frame2()->title(), u"以下设置专用于模拟试题"_qs);
  EXPECT_EQ(form.frame3()->title(), u"文本框设置"_qs);
  const QStringList captions = {u"◎每道题在做对"_qs,
                                u"次之后永不再出现。"_qs,
                                u"◎做错的试题要加罚"_qs,
                                u"次。"_qs,
                                u"◎满足以上两个条件的试题也应至少"_qs,
                                u"天以后才出现下一次。"_qs};
  for (QGroupBox* frame : {form.frame1(), form.frame2()}) {
    QStringList labels;
    for (QLabel* l : frame->findChildren<QLabel*>()) labels.append(l->text());
    EXPECT_EQ(labels, captions);
  }
  // Each number field sits between its captions.
  EXPECT_EQ(form.numText(0)->parentWidget(), form.frame1());
  EXPECT_EQ(form.numText(5)->parentWidget(), form.frame2());
  const int bounds[6][2] = {{1, 10}, {1, 6}, {0, 210}, {0, 10}, {0, 6}, {0, 210}};
  for (int i = 0; i < 6; ++i) {
    EXPECT_EQ(form.numUpDown(i)->minimum(), bounds[i][0]);
    EXPECT_EQ(form.numUpDown(i)->maximum(), bounds[i][1]);
  }
  EXPECT_EQ(form.frame3CfgCmd(0)->text(), u"字体"_qs);
  EXPECT_EQ(form.frame3CfgCmd(1)->text(), u"背景颜色"_qs);
  EXPECT_EQ(form.text1()->toPlainText(), u"点击左边的两个按钮，作出自己喜爱的设置。"_qs);
  EXPECT_EQ(form.form4Cmd(0)->text(), u" 确定"_qs);
  EXPECT_EQ(form.form4Cmd(1)->text(), u"取消"_qs);
  EXPECT_EQ(form.form4Cmd(2)->text(), u"分析预测"_qs);
  // The forecast window comes later: the button stands there, disabled.
  EXPECT_FALSE(form.form4Cmd(2)->isEnabled());
}

TEST_F(SettingsWindow, OpeningReadsTheFileShowsItAndHidesTheMainWindow) {
  t.writeGbk(kSettingsFile, kSavedFile);
  form.openWindow();
  EXPECT_TRUE(form.isVisible());
  EXPECT_FALSE(main.isVisible());
  const int values[6] = {3, 2, 7, 0, 4, 100};
  for (int i = 0; i < 6; ++i) {
    EXPECT_EQ(text(i), QString::number(values[i])) << i;
    EXPECT_EQ(spin(i), values[i]) << i;
  }
  EXPECT_EQ(settings.stLastUpdate(), 500);
  EXPECT_EQ(settings.tsLastUpdate(), 600);
  // The sample text and the main window's box show the style.
  for (QWidget* box : {static_cast<QWidget*>(form.text1()), static_cast<QWidget*>(&questionBox)}) {
    EXPECT_EQ(box->font().pointSize(), 18);
    EXPECT_TRUE(box->font().bold());
    EXPECT_FALSE(box->font().italic());
    EXPECT_EQ(box->font().families().value(0), u"宋体"_qs);
    EXPECT_EQ(box->palette().color(QPalette::Base), ColorOf(12632256));
    EXPECT_EQ(box->palette().color(QPalette::Text), ColorOf(128));
  }
  EXPECT_TRUE(t.boxes.shown().isEmpty());
}

TEST_F(SettingsWindow, OpeningWithoutAFileCreatesItWithTheFirstDefaults) {
  form.openWindow();
  for (int i = 0; i < 6; ++i) EXPECT_EQ(text(i), QString::number(QList<int>{1, 1, 30, 1, 1, 30}[i]));
  EXPECT_EQ(fileBytes(),
            ToGbk(FileText({u"STOKTIMES=1"_qs, u"STADDNUM=1"_qs, u"STPASSDAYS=30"_qs, u"TSOKTIMES=1"_qs,
                            u"TSADDNUM=1"_qs, u"TSPASSDAYS=30"_qs, u"PUBFONTSIZE=15"_qs, u"PUBBACKCOLOR=16777215"_qs,
                            u"PUBFORECOLOR=0"_qs, u"STLASTUPDATE=1121"_qs, u"TSLASTUPDATE=1121"_qs,
                            u"PUBFONTNAME=宋体"_qs, u"PUBFONTIT=FALSE"_qs, u"PUBFONTBOLD=FALSE"_qs})));
}

TEST_F(SettingsWindow, AFileValueOutOfBoundsShowsTheDefault) {
  t.writeGbk(kSettingsFile, FileText({u"STOKTIMES=0"_qs, u"TSOKTIMES=0"_qs, u"STADDNUM=abc"_qs}));
  form.openWindow();
  EXPECT_EQ(text(0), u"1"_qs);
  EXPECT_EQ(spin(0), 1);
  EXPECT_EQ(text(3), u"0"_qs);
  EXPECT_EQ(spin(3), 0);
  EXPECT_EQ(text(1), u"1"_qs);
}

TEST_F(SettingsWindow, TheUpDownCopiesItsValueToTheTextAndChangesTheStamp) {
  t.writeGbk(kSettingsFile, kSavedFile);
  form.openWindow();
  QTest::mouseClick(form.numUpDown(0)->upButton(), Qt::LeftButton);
  EXPECT_EQ(spin(0), 4);
  EXPECT_EQ(text(0), u"4"_qs);
  EXPECT_EQ(settings.number(kStOkTimes), 4);
  EXPECT_EQ(settings.stLastUpdate(), 1020);
  EXPECT_EQ(settings.tsLastUpdate(), 600);  // left alone
  QTest::mouseClick(form.numUpDown(5)->downButton(), Qt::LeftButton);
  EXPECT_EQ(text(5), u"99"_qs);
  EXPECT_EQ(settings.number(kTsPassDays), 99);
  EXPECT_EQ(settings.tsLastUpdate(), 600);
}

TEST_F(SettingsWindow, TheUpDownStopsAtItsBounds) {
  t.writeGbk(kSettingsFile, FileText({u"STOKTIMES=10"_qs, u"STLASTUPDATE=1121"_qs}));
  form.openWindow();
  QTest::mouseClick(form.numUpDown(0)->upButton(), Qt::LeftButton);
  EXPECT_EQ(spin(0), 10);
  EXPECT_EQ(text(0), u"10"_qs);
  // Nothing changed, so the stamp stays.
  EXPECT_EQ(settings.stLastUpdate(), 1121);
  QTest::mouseClick(form.numUpDown(3)->downButton(), Qt::LeftButton);  // 1 -> 0
  QTest::mouseClick(form.numUpDown(3)->downButton(), Qt::LeftButton);  // stays 0
  EXPECT_EQ(text(3), u"0"_qs);
  EXPECT_EQ(settings.number(kTsOkTimes), 0);
}

TEST_F(SettingsWindow, TheUpDownAnswersTheArrowKeys) {
  form.openWindow();
  form.numUpDown(2)->setFocus();
  QTest::keyClick(form.numUpDown(2), Qt::Key_Up);
  EXPECT_EQ(text(2), u"31"_qs);
  QTest::keyClick(form.numUpDown(2), Qt::Key_Down);
  QTest::keyClick(form.numUpDown(2), Qt::Key_Down);
  EXPECT_EQ(text(2), u"29"_qs);
  EXPECT_EQ(settings.number(kStPassDays), 29);
}

TEST_F(SettingsWindow, TypedValuesInBoundsGoToTheUpDown) {
  t.writeGbk(kSettingsFile, kSavedFile);
  form.openWindow();
  type(2, u"45"_qs);
  EXPECT_EQ(text(2), u"45"_qs);
  EXPECT_EQ(spin(2), 45);
  EXPECT_EQ(settings.number(kStPassDays), 45);
  EXPECT_EQ(settings.stLastUpdate(), 1020);
  EXPECT_EQ(settings.tsLastUpdate(), 600);
  // A simulated-paper number changes the internal bank's stamp as well, and
  // never the simulated one.
  settings.setStLastUpdate(500);
  type(4, u"6"_qs);
  EXPECT_EQ(spin(4), 6);
  EXPECT_EQ(settings.stLastUpdate(), 1020);
  EXPECT_EQ(settings.tsLastUpdate(), 600);
}

TEST_F(SettingsWindow, TypedValuesOutOfBoundsStayOnScreenOnly) {
  t.writeGbk(kSettingsFile, kSavedFile);
  form.openWindow();
  type(0, u"0"_qs);
  EXPECT_EQ(text(0), u"0"_qs);
  EXPECT_EQ(spin(0), 3);
  EXPECT_EQ(settings.number(kStOkTimes), 3);
  EXPECT_EQ(settings.stLastUpdate(), 1020);  // set in either case
  type(1, u"abc"_qs);
  EXPECT_EQ(text(1), u"abc"_qs);
  EXPECT_EQ(spin(1), 2);
  type(2, u"300"_qs);  // 3 and 30 are taken on the way, 300 is not
  EXPECT_EQ(text(2), u"300"_qs);
  EXPECT_EQ(spin(2), 30);
  // The simulated twin takes 0.
  type(3, u"0"_qs);
  EXPECT_EQ(spin(3), 0);
  EXPECT_EQ(settings.number(kTsOkTimes), 0);
  // Changes of other numbers leave the texts out of bounds on screen.
  EXPECT_EQ(text(0), u"0"_qs);
  EXPECT_EQ(text(1), u"abc"_qs);
}

TEST_F(SettingsWindow, ATakenValueIsWrittenBackAsTheUpDownHoldsIt) {
  form.openWindow();
  type(2, u"07"_qs);
  EXPECT_EQ(spin(2), 7);
  EXPECT_EQ(text(2), u"7"_qs);
}

TEST_F(SettingsWindow, OnFirstJanuaryAChangeLeavesStampZero) {
  t.clock.set(QDateTime(QDate(2027, 1, 1), QTime(8, 0)));
  form.openWindow();
  EXPECT_EQ(settings.stLastUpdate(), 11);
  type(2, u"5"_qs);
  EXPECT_EQ(settings.stLastUpdate(), 0);
  EXPECT_NE(settings.stLastUpdate(), DayStamp(t.env.today()));
}

TEST_F(SettingsWindow, ConfirmSubtractsOneFromBothStampsSavesAndShowsTheMainWindow) {
  t.writeGbk(kSettingsFile, kSavedFile);
  form.openWindow();
  QTest::mouseClick(form.form4Cmd(0), Qt::LeftButton);
  EXPECT_FALSE(form.isVisible());
  EXPECT_TRUE(main.isVisible());
  EXPECT_EQ(settings.stLastUpdate(), 499);
  EXPECT_EQ(settings.tsLastUpdate(), 599);
  QString expected = kSavedFile;
  expected.replace(u"STLASTUPDATE=500"_qs, u"STLASTUPDATE=499"_qs);
  expected.replace(u"TSLASTUPDATE=600"_qs, u"TSLASTUPDATE=599"_qs);
  EXPECT_EQ(fileBytes(), ToGbk(expected));
}

TEST_F(SettingsWindow, ConfirmSavesTheUpDownValuesNotTextsOutOfBounds) {
  t.writeGbk(kSettingsFile, kSavedFile);
  form.openWindow();
  QTest::mouseClick(form.numUpDown(1)->upButton(), Qt::LeftButton);  // 2 -> 3
  type(0, u"0"_qs);                                                  // not taken: 3 stays
  type(5, u"45"_qs);
  QTest::mouseClick(form.form4Cmd(0), Qt::LeftButton);
  // The changed stamp of today is 1020; " 确定" takes 1 off it.
  EXPECT_EQ(fileBytes(),
            ToGbk(FileText({u"STOKTIMES=3"_qs, u"STADDNUM=3"_qs, u"STPASSDAYS=7"_qs, u"TSOKTIMES=0"_qs,
                            u"TSADDNUM=4"_qs, u"TSPASSDAYS=45"_qs, u"PUBFONTSIZE=18"_qs, u"PUBBACKCOLOR=12632256"_qs,
                            u"PUBFORECOLOR=128"_qs, u"STLASTUPDATE=1019"_qs, u"TSLASTUPDATE=599"_qs,
                            u"PUBFONTNAME=宋体"_qs, u"PUBFONTIT=FALSE"_qs, u"PUBFONTBOLD=TRUE"_qs})));
  // The field shows the saved value again.
  EXPECT_EQ(text(0), u"3"_qs);
}

TEST_F(SettingsWindow, ConfirmOnADayWhoseStampWasTodaysStillSubtracts) {
  form.openWindow();  // no file: stamps are today's, 1121
  QTest::mouseClick(form.form4Cmd(0), Qt::LeftButton);
  EXPECT_EQ(settings.stLastUpdate(), 1120);
  EXPECT_EQ(settings.tsLastUpdate(), 1120);
  EXPECT_TRUE(fileBytes().contains("STLASTUPDATE=1120\r\nTSLASTUPDATE=1120\r\n"));
}

TEST_F(SettingsWindow, CancelReadsTheFileBackOverEverythingChanged) {
  t.writeGbk(kSettingsFile, kSavedFile);
  RecordingDialogs dialogs;
  t.env.dialogs = &dialogs;
  Form4 f(t.env, settings, &main);
  f.openWindow();
  QTest::mouseClick(f.numUpDown(0)->upButton(), Qt::LeftButton);
  QLineEdit* e = f.numText(1);
  e->selectAll();
  QTest::keyClicks(e, u"x"_qs);
  FontChoice arial;
  arial.name = u"Arial"_qs;
  arial.size = 24;
  arial.italic = true;
  arial.color = 255;
  dialogs.fontAnswer = arial;
  QTest::mouseClick(f.frame3CfgCmd(0), Qt::LeftButton);
  ASSERT_EQ(questionBox.font().pointSize(), 24);  // applied at once

  QTest::mouseClick(f.form4Cmd(1), Qt::LeftButton);
  EXPECT_FALSE(f.isVisible());
  EXPECT_TRUE(main.isVisible());
  EXPECT_EQ(settings.number(kStOkTimes), 3);
  EXPECT_EQ(settings.stLastUpdate(), 500);
  EXPECT_EQ(f.numText(0)->text(), u"3"_qs);
  EXPECT_EQ(f.numText(1)->text(), u"2"_qs);
  EXPECT_EQ(settings.fontName(), u"宋体"_qs);
  EXPECT_EQ(settings.fontSize(), 18);
  // The main window's box has the saved style again.
  EXPECT_EQ(questionBox.font().pointSize(), 18);
  EXPECT_FALSE(questionBox.font().italic());
  EXPECT_EQ(questionBox.palette().color(QPalette::Text), ColorOf(128));
  // The file is untouched.
  EXPECT_EQ(fileBytes(), ToGbk(kSavedFile));
  f.hide();
}

TEST_F(SettingsWindow, ClosingTheWindowOtherwiseIsCancel) {
  t.writeGbk(kSettingsFile, kSavedFile);
  form.openWindow();
  QTest::mouseClick(form.numUpDown(2)->upButton(), Qt::LeftButton);
  type(0, u"0"_qs);
  ASSERT_EQ(settings.number(kStPassDays), 8);
  EXPECT_TRUE(form.close());
  EXPECT_FALSE(form.isVisible());
  EXPECT_TRUE(main.isVisible());
  EXPECT_EQ(settings.number(kStPassDays), 7);
  EXPECT_EQ(text(2), u"7"_qs);
  EXPECT_EQ(text(0), u"3"_qs);
  EXPECT_EQ(settings.stLastUpdate(), 500);
  EXPECT_EQ(fileBytes(), ToGbk(kSavedFile));
}

// Esc in a number field is 取消 as well.
TEST_F(SettingsWindow, EscIsCancel) {
  t.writeGbk(kSettingsFile, kSavedFile);
  form.openWindow();
  form.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
  QTest::mouseClick(form.numUpDown(2)->upButton(), Qt::LeftButton);
  type(0, u"0"_qs);
  ASSERT_EQ(settings.number(kStPassDays), 8);
  QTest::keyClick(form.numText(0), Qt::Key_Escape);
  EXPECT_FALSE(form.isVisible());
  EXPECT_TRUE(main.isVisible());
  EXPECT_EQ(settings.number(kStPassDays), 7);
  EXPECT_EQ(text(2), u"7"_qs);
  EXPECT_EQ(text(0), u"3"_qs);
  EXPECT_EQ(fileBytes(), ToGbk(kSavedFile));
}

TEST_F(SettingsWindow, FontDialogIsPrefilledAndItsChoiceAppliedAtOnce) {
  t.writeGbk(kSettingsFile, kSavedFile);
  RecordingDialogs dialogs;
  t.env.dialogs = &dialogs;
  Form4 f(t.env, settings, &main);
  f.openWindow();
  QSignalSpy style(&settings, &Settings::styleChanged);
  FontChoice choice;
  choice.name = u"Arial"_qs;
  choice.size = 20;
  choice.bold = false;
  choice.italic = true;
  choice.color = 255;
  dialogs.fontAnswer = choice;
  QTest::mouseClick(f.frame3CfgCmd(0), Qt::LeftButton);
  EXPECT_EQ(dialogs.fontInitial.name, u"宋体"_qs);
  EXPECT_EQ(dialogs.fontInitial.size, 18);
  EXPECT_TRUE(dialogs.fontInitial.bold);
  EXPECT_FALSE(dialogs.fontInitial.italic);
  EXPECT_EQ(dialogs.fontInitial.color, 128);
  EXPECT_EQ(style.count(), 1);
  EXPECT_EQ(settings.fontName(), u"Arial"_qs);
  EXPECT_EQ(settings.fontSize(), 20);
  EXPECT_FALSE(settings.fontBold());
  EXPECT_TRUE(settings.fontItalic());
  EXPECT_EQ(settings.foreColor(), 255);
  EXPECT_EQ(settings.backColor(), 12632256);
  for (QWidget* box : {static_cast<QWidget*>(f.text1()), static_cast<QWidget*>(&questionBox)}) {
    EXPECT_EQ(box->font().families().value(0), u"Arial"_qs);
    EXPECT_EQ(box->font().pointSize(), 20);
    EXPECT_TRUE(box->font().italic());
    EXPECT_FALSE(box->font().bold());
    EXPECT_EQ(box->palette().color(QPalette::Text), QColor(255, 0, 0));
  }
  // Saved, the name comes back in capitals.
  QTest::mouseClick(f.form4Cmd(0), Qt::LeftButton);
  EXPECT_TRUE(fileBytes().contains("PUBFONTNAME=ARIAL\r\nPUBFONTIT=TRUE\r\nPUBFONTBOLD=FALSE\r\n"));
  EXPECT_TRUE(fileBytes().contains("PUBFORECOLOR=255\r\n"));
  f.openWindow();
  EXPECT_EQ(settings.fontName(), u"ARIAL"_qs);
  f.hide();
}

TEST_F(SettingsWindow, ScriptedFontAndColourAnswers) {
  form.openWindow();
  FontChoice choice;
  choice.name = u"黑体"_qs;
  choice.size = 12;
  choice.bold = true;
  t.dialogs.answer(choice);
  t.dialogs.answer(65280);
  QTest::mouseClick(form.frame3CfgCmd(0), Qt::LeftButton);
  QTest::mouseClick(form.frame3CfgCmd(1), Qt::LeftButton);
  EXPECT_EQ(t.dialogs.fontRequests, 1);
  EXPECT_EQ(t.dialogs.colorRequests, 1);
  EXPECT_EQ(settings.fontName(), u"黑体"_qs);
  EXPECT_TRUE(settings.fontBold());
  EXPECT_EQ(settings.backColor(), 65280);
  EXPECT_EQ(form.text1()->palette().color(QPalette::Base), QColor(0, 255, 0));
  EXPECT_EQ(questionBox.palette().color(QPalette::Base), QColor(0, 255, 0));
  QTest::mouseClick(form.form4Cmd(0), Qt::LeftButton);
  EXPECT_TRUE(fileBytes().contains("PUBFONTSIZE=12\r\nPUBBACKCOLOR=65280\r\n"));
}

TEST_F(SettingsWindow, CancelledDialogsChangeNothing) {
  form.openWindow();
  QSignalSpy style(&settings, &Settings::styleChanged);
  QTest::mouseClick(form.frame3CfgCmd(0), Qt::LeftButton);  // no answer: cancelled
  QTest::mouseClick(form.frame3CfgCmd(1), Qt::LeftButton);
  EXPECT_EQ(t.dialogs.fontRequests, 1);
  EXPECT_EQ(t.dialogs.colorRequests, 1);
  EXPECT_EQ(style.count(), 0);
  EXPECT_EQ(settings.style(), TextStyle{});
}

TEST_F(SettingsWindow, BackgroundColourDialogStartsFromTheCurrentColour) {
  t.writeGbk(kSettingsFile, kSavedFile);
  RecordingDialogs dialogs;
  dialogs.colorAnswer = 255;
  t.env.dialogs = &dialogs;
  Form4 f(t.env, settings, &main);
  f.openWindow();
  QTest::mouseClick(f.frame3CfgCmd(1), Qt::LeftButton);
  EXPECT_EQ(dialogs.colorInitial, 12632256);
  EXPECT_EQ(settings.backColor(), 255);
  EXPECT_EQ(f.text1()->palette().color(QPalette::Base), QColor(255, 0, 0));
  f.hide();
}

TEST_F(SettingsWindow, WhenTheFileCanBeNeitherReadNorCreatedTheSecondDefaultsShow) {
  test::TestEnv bare;  // no \ini folder
  Form4 f(bare.env, settings, &main);
  f.openWindow();
  const int values[6] = {2, 1, 30, 1, 2, 10};
  for (int i = 0; i < 6; ++i) {
    EXPECT_EQ(f.numText(i)->text(), QString::number(values[i]));
    EXPECT_EQ(f.numUpDown(i)->value(), values[i]);
  }
  EXPECT_EQ(settings.stLastUpdate(), 0);
  EXPECT_EQ(settings.tsLastUpdate(), 0);
  EXPECT_EQ(settings.style(), TextStyle{});
  EXPECT_TRUE(bare.boxes.shown().isEmpty());
  EXPECT_TRUE(f.isVisible());
  // " 确定" cannot save but still closes and shows the main window.
  QTest::mouseClick(f.form4Cmd(0), Qt::LeftButton);
  EXPECT_FALSE(f.isVisible());
  EXPECT_TRUE(main.isVisible());
  EXPECT_FALSE(PathExists(bare.path(u"\\ini"_qs)));
}

TEST_F(SettingsWindow, AReloadByAPracticeEntryKeepsTheFilesStamp) {
  t.writeGbk(kSettingsFile, kSavedFile);
  form.openWindow();
  QTest::mouseClick(form.form4Cmd(0), Qt::LeftButton);  // saved: stamps 499 and 599
  // The window stays loaded; reading the file again must not count as a
  // change of the number fields.
  t.writeGbk(kSettingsFile, FileText({u"STOKTIMES=9"_qs, u"STLASTUPDATE=1121"_qs}));
  settings.ReadDataFromIni(t.env);
  EXPECT_EQ(text(0), u"9"_qs);
  EXPECT_EQ(spin(0), 9);
  EXPECT_EQ(settings.stLastUpdate(), 1121);
}

TEST_F(SettingsWindow, ForecastButtonHidesTheWindowWithoutClosingIt) {
  t.writeGbk(kSettingsFile, kSavedFile);
  int opened = 0;
  form.setForecastHook([&] { ++opened; });
  EXPECT_TRUE(form.form4Cmd(2)->isEnabled());
  form.openWindow();
  type(2, u"60"_qs);
  QTest::mouseClick(form.form4Cmd(2), Qt::LeftButton);
  EXPECT_EQ(opened, 1);
  EXPECT_FALSE(form.isVisible());
  EXPECT_FALSE(main.isVisible());
  // Unsaved values stay for the forecast to read.
  EXPECT_EQ(spin(2), 60);
  EXPECT_EQ(settings.number(kStPassDays), 60);
  EXPECT_EQ(fileBytes(), ToGbk(kSavedFile));
}

TEST_F(SettingsWindow, TakesTheMainWindowsIcon) {
  QPixmap px(16, 16);
  px.fill(Qt::red);
  main.setWindowIcon(QIcon(px));
  form.openWindow();
  EXPECT_EQ(form.windowIcon().cacheKey(), main.windowIcon().cacheKey());
}

TEST_F(SettingsWindow, Screenshot) {
  t.writeGbk(kSettingsFile, kSavedFile);
  form.openWindow();
  type(0, u"0"_qs);
  const QPixmap shot = form.grab();
  ASSERT_FALSE(shot.isNull());
  const QString file = test::OutputDir() + u"/settings_form4.png"_qs;
  EXPECT_TRUE(shot.save(file));
  EXPECT_TRUE(FileExists(file));
}

// ---- the personal-settings window ----

TEST(PersonalSettingsWindow, TitleOptionsAndButtons) {
  Form2 f;
  EXPECT_EQ(f.objectName(), u"Form2"_qs);
  EXPECT_EQ(f.windowTitle(), u"明镜学习伴侣/个性设置  "_qs);
  const QStringList captions = {u"做完每道题以后自动给出答案。"_qs,
                                u"每题均由用户点击“答案”按钮时才给出答案。"_qs,
                                u"自动给出答案的同时只显示相关法条。"_qs,
                                u"自动给出答案的同时显示相关法条及详细解释。"_qs,
                                u"保存此设置。"_qs,
                                u"只是暂时使用此设置，将来仍使用默认设置。"_qs};
  for (int n = 1; n <= 6; ++n) {
    EXPECT_EQ(f.option(n)->text(), captions[n - 1]);
    EXPECT_EQ(f.option(n)->objectName(), u"Option"_qs + QString::number(n));
    EXPECT_EQ(f.option(n)->parentWidget(), f.frame((n + 1) / 2));
  }
  EXPECT_EQ(f.command1()->text(), u"确定"_qs);
  EXPECT_EQ(f.command2()->text(), u"取消"_qs);
}

TEST(PersonalSettingsWindow, EveryOpeningSelectsTheFirstOptionOfEachFrame) {
  Form2 f;
  f.show();
  for (int n : {1, 3, 5}) EXPECT_TRUE(f.option(n)->isChecked()) << n;
  for (int n : {2, 4, 6}) {
    QTest::mouseClick(f.option(n), Qt::LeftButton);
    EXPECT_TRUE(f.option(n)->isChecked()) << n;
    EXPECT_FALSE(f.option(n - 1)->isChecked()) << n;
  }
  QTest::mouseClick(f.command1(), Qt::LeftButton);  // "确定" only closes
  EXPECT_FALSE(f.isVisible());
  f.show();
  for (int n : {1, 3, 5}) EXPECT_TRUE(f.option(n)->isChecked()) << n;
  for (int n : {2, 4, 6}) EXPECT_FALSE(f.option(n)->isChecked()) << n;
  QTest::mouseClick(f.option(2), Qt::LeftButton);
  QTest::mouseClick(f.command2(), Qt::LeftButton);  // "取消" as well
  EXPECT_FALSE(f.isVisible());
  f.show();
  EXPECT_TRUE(f.option(1)->isChecked());
  f.hide();
}
