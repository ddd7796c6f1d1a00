// A click on a start-page notice: only web addresses and help documents of
// the program reach the desktop.
#include <gtest/gtest.h>

#include <QFileInfo>
#include <QLabel>
#include <QTest>

#include "app/main_window.h"
#include "log/news.h"
#include "platform/text_toolkit.h"
#include "support/program_folder.h"

using namespace mj;

TEST(NoticeClick, LinksThatAreNoAddressOpenNothing) {
  test::TestEnv t;
  test::MakeProgramFolder(t);
  t.writeGbk(u"\\readme\\autonewer.htm"_qs, u"<html></html>"_qs);
  t.writeGbk(kNewsFile, u"[通知1]\r\n显示内容=文件\r\n鼠标提示=提示一\r\n链接=file:///bin/sh\r\n"
                        u"[通知2]\r\n显示内容=脚本\r\n链接=javascript:alert(1)\r\n"
                        u"[通知3]\r\n显示内容=程序\r\n链接=\\lmdata\r\n"
                        u"[通知4]\r\n显示内容=邮件\r\n链接=mailto:a@example.org\r\n"
                        u"[通知5]\r\n显示内容=说明\r\n链接=\\readme\\autonewer.htm\r\n"
                        u"[通知6]\r\n显示内容=网址\r\n链接=https://mingjing.example.org/x\r\n"
                        u"[通知7]\r\n鼠标提示=没有内容\r\n链接=https://mingjing.example.org/7\r\n"_qs);
  Form1 form(t.env);
  ASSERT_EQ(form.load(), Form1::LoadOutcome::Running);
  form.show();
  for (int i = 0; i < 4; ++i) {
    // The label keeps its text and tool tip.
    EXPECT_FALSE(form.Label14[i]->isHidden());
    QTest::mouseClick(form.Label14[i], Qt::LeftButton);
  }
  EXPECT_EQ(form.Label14[0]->toolTip(), u"提示一"_qs);
  EXPECT_TRUE(t.shell.calls.isEmpty());
  const QList<BoxRecord> boxes = t.boxes.take();
  ASSERT_EQ(boxes.size(), 4);
  EXPECT_EQ(boxes[0].text, RefusedLinkText(u"file:///bin/sh"_qs));
  EXPECT_EQ(boxes[1].text, RefusedLinkText(u"javascript:alert(1)"_qs));
  EXPECT_EQ(boxes[2].text, RefusedLinkText(u"\\lmdata"_qs));
  EXPECT_EQ(boxes[3].text, RefusedLinkText(u"mailto:a@example.org"_qs));
  EXPECT_EQ(boxes[0].title, DefaultBoxTitle());

  // A link on a notice without text is never reached: its label is hidden.
  EXPECT_TRUE(form.Label14[6]->isHidden());
  QTest::mouseClick(form.Label14[4], Qt::LeftButton);
  QTest::mouseClick(form.Label14[5], Qt::LeftButton);
  EXPECT_TRUE(t.boxes.shown().isEmpty());
  ASSERT_EQ(t.shell.calls.size(), 2);
  EXPECT_EQ(t.shell.calls[0].target, QFileInfo(t.path(u"\\readme\\autonewer.htm"_qs)).canonicalFilePath());
  EXPECT_EQ(t.shell.calls[1].target, u"https://mingjing.example.org/x"_qs);
}

TEST(NoticeClick, AnAddressTheDesktopCannotOpenIsSaid) {
  test::TestEnv t;
  test::MakeProgramFolder(t);
  t.writeGbk(kNewsFile, u"[通知1]\r\n显示内容=网址\r\n链接=https://mingjing.example.org/x\r\n"_qs);
  t.shell.result = false;
  Form1 form(t.env);
  ASSERT_EQ(form.load(), Form1::LoadOutcome::Running);
  form.show();
  QTest::mouseClick(form.Label14[0], Qt::LeftButton);
  ASSERT_EQ(t.boxes.shown().size(), 1);
  EXPECT_EQ(t.boxes.shown()[0].text, CannotOpenText(u"https://mingjing.example.org/x"_qs, true));
  EXPECT_EQ(t.clipboard.text(), u"https://mingjing.example.org/x"_qs);
}
