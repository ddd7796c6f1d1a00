#include <gtest/gtest.h>

#include <QPushButton>
#include <QTextEdit>

#include "settings/help.h"
#include "settings/help_window.h"
#include "support/test_env.h"

using namespace mj;

namespace {
const QString kText = u"总说明\r\n[1]主窗口说明，见[3]。\r\n[9]第九窗口，正文里写着[10]也照样截断。\r\n[10]第十\r\n[11]最后"_qs;
}

TEST(Help, NumberOfAWindow) {
  EXPECT_EQ(HelpNumberOf(u"Form1"_qs), 1);
  EXPECT_EQ(HelpNumberOf(u"Form12"_qs), 12);
  EXPECT_EQ(HelpNumberOf(u"frmBrowser"_qs), 0);
}

TEST(Help, SectionRunsToTheNextNumbersMarker) {
  test::TestEnv t;
  t.writeGbk(kHelpFile, kText);
  // The section ends where "[10]" first stands, even in the running text.
  EXPECT_EQ(ShowHelpText(t.env, 9).text, u"第九窗口，正文里写着"_qs);
  // A marker in the text of an earlier section is found first.
  const HelpText three = ShowHelpText(t.env, 2);
  EXPECT_EQ(three.kind, HelpText::NoSection);
  EXPECT_EQ(ShowHelpText(t.env, 1).text, u"主窗口说明，见[3]。\r\n[9]第九窗口，正文里写着[10]也照样截断。\r\n[10]第十\r\n[11]最后"_qs);
  // The last section runs to the end of the file, without its marker.
  EXPECT_EQ(ShowHelpText(t.env, 11).text, u"最后"_qs);
  // 0 is the whole file, markers and all.
  EXPECT_EQ(ShowHelpText(t.env, 0).text, kText);
  ASSERT_EQ(t.boxes.shown().size(), 1);
  EXPECT_EQ(t.boxes.shown()[0].title, u"无帮助文本"_qs);
  EXPECT_EQ(t.boxes.shown()[0].text, u"帮助文件内没有符合约定条件的文本。"_qs);
}

TEST(Help, MissingFile) {
  test::TestEnv t;
  EXPECT_EQ(ShowHelpText(t.env, 1).kind, HelpText::MissingFile);
  ASSERT_EQ(t.boxes.shown().size(), 1);
  EXPECT_EQ(t.boxes.shown()[0].title, u"文件未找到"_qs);
  EXPECT_EQ(t.boxes.shown()[0].text, u"帮助文件"_qs + t.path(kHelpFile) + u"不存在。"_qs);
}

TEST(Help, WindowButtons) {
  test::TestEnv t;
  t.writeGbk(kHelpFile, kText);
  Form18 w(t.env);
  EXPECT_EQ(w.windowTitle(), u"明镜学习伴侣3.10使用说明"_qs);
  // Section 10 starts at the first "[10]", the one in the running text of 9.
  w.showHelp(10);
  EXPECT_TRUE(w.isVisible());
  EXPECT_EQ(w.RichTextBox1->toPlainText(), u"也照样截断。\n[10]第十\n"_qs);
  w.Command1[1]->click();
  EXPECT_EQ(w.RichTextBox1->toPlainText(), QString(kText).replace(u"\r\n"_qs, u"\n"_qs));
  w.Command1[0]->click();
  EXPECT_EQ(w.RichTextBox1->toPlainText(), u"也照样截断。\n[10]第十\n"_qs);
  EXPECT_EQ(w.Command1[2]->text(), u"关  闭"_qs);
  w.Command1[2]->click();
  EXPECT_FALSE(w.isVisible());
}
