#include "law/law_query_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QToolButton>
#include <QTextBlock>
#include <QTreeWidget>

#include "law/citations.h"
#include "law/keypad_window.h"
#include "law/text_places.h"
#include "law_query_fixture.h"
#include "support/printers.h"
#include "support/test_env.h"

namespace mj {
namespace {

using test::kSampleLast;

QString Lf(QString s) { return s.replace(u"\r\n"_qs, u"\n"_qs); }

// Text as an input method types it (any characters, not only ASCII keys).
void Type(QWidget* w, const QString& text) {
  QInputMethodEvent e;
  e.setCommitString(text);
  QCoreApplication::sendEvent(w, &e);
}

class Form6Test : public ::testing::Test {
 protected:
  Form6Test() {
    test::MakeLawFolder(te);
    items = {test::Item(u"10001100001"_qs, u"A"_qs, u"《示例法》12．《示例法》3．"_qs),
             test::Item(u"10001100006"_qs, u"D"_qs, u"《示例法》12．"_qs)};
    form = std::make_unique<Form6>(te.env, &items);
    form->show();
    form->activateWindow();
    (void)QTest::qWaitForWindowActive(form.get());
    form->TreeView1->expandAll();
  }
  ~Form6Test() override {
    if (form) form->close();
  }
  QTreeWidgetItem* item(const QString& text) const {
    const auto found = form->TreeView1->findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
    return found.isEmpty() ? nullptr : found.first();
  }
  void clickNode(const QString& text) {
    QTreeWidgetItem* it = item(text);
    ASSERT_NE(it, nullptr) << text.toStdString();
    const QRect r = form->TreeView1->visualItemRect(it);
    QTest::mouseClick(form->TreeView1->viewport(), Qt::LeftButton, {}, r.center());
  }
  // Clicks the view on the first place of what.
  void clickView(const QString& what, Qt::KeyboardModifiers mods = {}) {
    const QPoint at = viewPoint(what);
    QTest::mouseClick(form->RichTextBox1->viewport(), Qt::LeftButton, mods, at);
    QCoreApplication::processEvents();
  }
  QPoint viewPoint(const QString& what) {
    const qsizetype index = form->query().view.indexOf(what);
    EXPECT_GE(index, 0) << what.toStdString();
    const LinePlace place = LineOfTextIndex(form->query().view, index);
    QTextCursor c(form->RichTextBox1->document()->findBlockByNumber(place.line));
    c.setPosition(c.position() + static_cast<int>(place.column) + 1);
    form->RichTextBox1->setTextCursor(c);
    form->RichTextBox1->ensureCursorVisible();
    return form->RichTextBox1->cursorRect(c).center();
  }
  void shot(const QString& name) { form->grab().save(test::OutputDir() + u"/"_qs + name + u".png"_qs); }

  test::TestEnv te;
  ItemIndex items;
  std::unique_ptr<Form6> form;
};

TEST_F(Form6Test, TheWindowAtItsStart) {
  EXPECT_EQ(form->windowTitle(), u"法律查询"_qs);
  EXPECT_EQ(form->objectName(), u"Form6"_qs);
  EXPECT_EQ(form->Label3->text(), u"准备查询:"_qs);
  EXPECT_EQ(form->TreeView1->topLevelItem(0)->text(0), u"按试卷顺序"_qs);
  EXPECT_EQ(form->Command1->text(), u"按试卷"_qs);
  EXPECT_EQ(form->Command2->text(), u"按字母"_qs);
  EXPECT_EQ(form->Command7->text(), u"按类别"_qs);
  EXPECT_EQ(form->Text1->placeholderText(), u"在这里输入法条数，形如：12-23,34"_qs);
  EXPECT_FALSE(form->Command9->isVisible());
  EXPECT_FALSE(form->Command9->isEnabled());
  EXPECT_FALSE(form->Command8[0]->isVisible());
  EXPECT_FALSE(form->Command5->isEnabled());
  EXPECT_FALSE(form->SeekAndReplace->isEnabled());
  EXPECT_EQ(form->SaveTheText->shortcut(), QKeySequence(Qt::Key_F5));
  EXPECT_EQ(form->MergeToText->shortcut(), QKeySequence(Qt::Key_F6));
  EXPECT_EQ(form->LookText->shortcut(), QKeySequence(Qt::Key_F7));
  EXPECT_EQ(form->SaveTempText->shortcut(), QKeySequence(Qt::Key_F8));
  EXPECT_EQ(form->GoBack->shortcut(), QKeySequence(Qt::Key_F9));
  EXPECT_EQ(form->NoText->text(), u"清空临时文本"_qs);
  EXPECT_EQ(form->SeekAndReplace->text(), u"查找/替换"_qs);
  shot(u"law_query_start"_qs);
}

TEST_F(Form6Test, PickQueryClickAndTheRelatedQuestions) {
  clickNode(u"《示例法》"_qs);
  EXPECT_EQ(form->Label3->text(), u"将要查询 《示例法》"_qs);
  EXPECT_EQ(form->RichTextBox1->toPlainText(), Lf(test::ArticleLaw(kSampleLast)));
  EXPECT_TRUE(form->Command8[0]->isVisible());
  EXPECT_EQ(form->Command8[0]->text(), u"本法重点法条"_qs);
  EXPECT_TRUE(form->Command4->isEnabled());

  form->Text1->setFocus(Qt::MouseFocusReason);
  QCoreApplication::processEvents();
  ASSERT_NE(form->keypad(), nullptr);
  EXPECT_TRUE(form->keypad()->isVisible());
  QTest::keyClicks(form->Text1, u"12-15,20"_qs);
  EXPECT_EQ(form->query().Text1, u"12-15,20"_qs);
  form->timerTick();
  EXPECT_TRUE(form->Command3->isEnabled());
  QTest::keyClick(form->Text1, Qt::Key_Return);
  EXPECT_TRUE(form->RichTextBox1->toPlainText().startsWith(u"　　第十二条　示例法第12号规定的内容。\n　　第十三条"_qs));
  EXPECT_TRUE(form->Text1->text().isEmpty());
  EXPECT_FALSE(form->keypad()->isVisible());
  shot(u"law_query_articles"_qs);

  clickView(u"第12号"_qs);
  EXPECT_TRUE(form->Command5->isEnabled());
  EXPECT_EQ(form->Command5->text(), u"相关2题"_qs);
  EXPECT_FALSE(form->TreePanel->isVisible());
  // The mouse at the left edge brings the tree back.
  QMouseEvent move(QEvent::MouseMove, QPointF(2, 20), form->RichTextBox1->viewport()->mapToGlobal(QPointF(2, 20)),
                   Qt::NoButton, Qt::NoButton, Qt::NoModifier);
  QCoreApplication::sendEvent(form->RichTextBox1->viewport(), &move);
  EXPECT_TRUE(form->TreePanel->isVisible());
  EXPECT_FALSE(form->TreeHandle->isVisible());
  // So does the handle that stands in the tree's place, by mouse or key.
  clickView(u"第12号"_qs);
  ASSERT_FALSE(form->TreePanel->isVisible());
  ASSERT_TRUE(form->TreeHandle->isVisible());
  EXPECT_EQ(form->TreeHandle->toolTip(), u"显示法律目录"_qs);
  EXPECT_LT(form->TreeHandle->geometry().right(), form->RichTextBox1->geometry().left());
  shot(u"law_query_tree_hidden"_qs);
  form->TreeHandle->setFocus(Qt::TabFocusReason);
  QTest::keyClick(form->TreeHandle, Qt::Key_Space);
  EXPECT_TRUE(form->TreePanel->isVisible());
  EXPECT_FALSE(form->TreeHandle->isVisible());
  EXPECT_EQ(form->focusWidget(), form->TreeView1);

  QString ranIds;
  int ranCount = 0;
  form->onRelatedRun = [&](const QString& ids, int count) {
    ranIds = ids;
    ranCount = count;
  };
  QTest::mouseDClick(form->RichTextBox1->viewport(), Qt::LeftButton, {}, viewPoint(u"第12号"_qs));
  QCoreApplication::processEvents();
  EXPECT_EQ(ranIds, u"1000110000110001100006"_qs);
  EXPECT_EQ(ranCount, 2);
  EXPECT_TRUE(form->FromLawQuery);
  EXPECT_FALSE(form->isVisible());
  form->showAgain();
  EXPECT_TRUE(form->isVisible());
  EXPECT_EQ(form->Command5->text(), u"相关2题"_qs);
}

TEST_F(Form6Test, TheDecimalKeyAnywhereCallsTheKeypad) {
  // Without a law: the warning.
  QTest::keyClick(form->TreeView1, Qt::Key_Period);
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].text, u"请先选择要查询的法律！"_qs);
  te.boxes.clear();
  clickNode(u"《示例法》"_qs);
  form->Text2->setText(u"盗窃"_qs);
  form->query().Text2 = u"盗窃"_qs;
  QTest::keyClick(form->TreeView1, Qt::Key_Period, Qt::KeypadModifier);
  ASSERT_NE(form->keypad(), nullptr);
  EXPECT_TRUE(form->keypad()->isVisible());
  EXPECT_TRUE(form->Text2->text().isEmpty());
  EXPECT_EQ(form->keypad()->windowTitle(), u"请输入法条"_qs);
  EXPECT_FALSE(form->keypad()->Command1[keypad::kRun]->isEnabled());
  QTest::keyClicks(form->keypad(), u"01*2"_qs);
  EXPECT_EQ(form->Text1->text(), u"1,2"_qs);
  EXPECT_TRUE(form->keypad()->Command1[keypad::kRun]->isEnabled());
  QTest::keyClick(form->keypad(), Qt::Key_Backspace);
  QTest::keyClick(form->keypad(), Qt::Key_Minus);
  EXPECT_FALSE(form->keypad()->Command1[keypad::kComma]->isEnabled());
  QTest::keyClicks(form->keypad(), u"-3"_qs);
  EXPECT_EQ(form->Text1->text(), u"1,3"_qs);  // no "-" after ","
  QTest::keyClick(form->keypad(), Qt::Key_C);
  EXPECT_TRUE(form->Text1->text().isEmpty());
  QTest::keyClicks(form->keypad(), u"3"_qs);
  shot(u"law_query_keypad"_qs);
  form->keypad()->grab().save(test::OutputDir() + u"/law_query_keypad_window.png"_qs);
  QTest::keyClick(form->keypad(), Qt::Key_Enter);
  EXPECT_FALSE(form->keypad()->isVisible());
  EXPECT_EQ(form->RichTextBox1->toPlainText(), u"　　第三条　下列情形适用本法：\n　　（一）甲；\n　　（二）乙。\n"_qs);
  // The help of the keypad.
  form->keypad()->HelpButton->click();
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].title, u"本框说明"_qs);
  EXPECT_EQ(te.boxes.shown()[0].text, keypad::HelpText());
}

// Esc closes the keypad alone, and the law query takes it as closed: the
// next view leaves it shut and the decimal key opens it again. Esc in the
// law query then closes the law query.
TEST_F(Form6Test, EscClosesTheKeypadThenTheLawQuery) {
  clickNode(u"《示例法》"_qs);
  QTest::keyClick(form->TreeView1, Qt::Key_Period);
  Form7* k = form->keypad();
  ASSERT_NE(k, nullptr);
  ASSERT_TRUE(k->isVisible());
  ASSERT_TRUE(QTest::qWaitForWindowActive(k));
  QTest::keyClicks(k, u"3"_qs);
  QTest::keyClick(k, Qt::Key_Escape);
  EXPECT_FALSE(k->isVisible());
  EXPECT_FALSE(form->query().keypadOpen);
  EXPECT_TRUE(form->isVisible());
  form->showAgain();
  EXPECT_FALSE(k->isVisible());
  QTest::keyClick(form->TreeView1, Qt::Key_Period);
  EXPECT_TRUE(k->isVisible());
  k->close();
  form->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
  QTest::keyClick(form->TreeView1, Qt::Key_Escape);
  EXPECT_FALSE(form->isVisible());
  EXPECT_FALSE(k->isVisible());
}

TEST_F(Form6Test, TheKeypadButtons) {
  clickNode(u"《示例法》"_qs);
  form->query().decimalKey();
  form->render();
  Form7* k = form->keypad();
  ASSERT_NE(k, nullptr);
  EXPECT_EQ(k->Command1.size(), 15);
  EXPECT_EQ(k->Command1[keypad::kRun]->text(), u"条"_qs);
  EXPECT_EQ(k->Command1[keypad::kClear]->text(), u"清空"_qs);
  for (const int i : {0, 2, 5, keypad::kMinus, 2, 5}) k->Command1[i]->click();
  EXPECT_EQ(form->Text1->text(), u"25-25"_qs);
  k->Command1[keypad::kRun]->click();
  EXPECT_EQ(form->RichTextBox1->toPlainText(),
            u"　　第二十五条　本法自公布之日起施行。\n　　第二十五条　本法自公布之日起施行。\n"_qs);
  // Closing the window closes the keypad.
  form->query().decimalKey();
  form->render();
  EXPECT_TRUE(k->isVisible());
  form->close();
  EXPECT_FALSE(k->isVisible());
}

TEST_F(Form6Test, EnteringABoxWithoutALawWarns) {
  te.boxes.clear();
  form->Text2->setFocus(Qt::MouseFocusReason);
  QCoreApplication::processEvents();
  ASSERT_EQ(te.boxes.shown().size(), 1);
  EXPECT_EQ(te.boxes.shown()[0].text, u"请先选择要查询的法律！"_qs);
  EXPECT_EQ(te.boxes.shown()[0].style, 48);
}

TEST_F(Form6Test, AGroupAndATextSearch) {
  clickNode(u"试卷一相关法律、法规"_qs);
  EXPECT_FALSE(form->Text1->isEnabled());
  EXPECT_FALSE(form->Command4->isEnabled());
  EXPECT_EQ(form->RichTextBox1->toPlainText(),
            u"你现在选择的不是单个法律，所以不能使用“全文”按钮，也不能按条查询，只能按包含字符串方式查询。"_qs);
  form->Text2->setFocus(Qt::MouseFocusReason);
  Type(form->Text2, u"内容"_qs);
  QTest::keyClick(form->Text2, Qt::Key_Return);
  EXPECT_TRUE(form->RichTextBox1->toPlainText().startsWith(u"《示例法》\n　　第一条　示例法第1号规定的【内容】。"_qs));
  EXPECT_TRUE(form->RichTextBox1->toPlainText().contains(u"《示例规定》\n　　一、　总则【内容】。"_qs));
  shot(u"law_query_group_search"_qs);
  // A click in the part of 《示例法》 finds its article.
  clickView(u"示例法第12号"_qs);
  EXPECT_EQ(form->Command5->text(), u"相关2题"_qs);
}

TEST_F(Form6Test, TheOtherTrees) {
  form->Command2->click();
  EXPECT_EQ(form->TreeView1->topLevelItem(0)->text(0), u"按字母顺序"_qs);
  EXPECT_EQ(form->TreeView1->topLevelItem(0)->child(0)->text(0), u"S 《示例办法》"_qs);
  form->Command7->click();
  EXPECT_EQ(form->TreeView1->topLevelItem(0)->text(0), u"按类别顺序"_qs);
  form->Command1->click();
  EXPECT_EQ(form->TreeView1->topLevelItem(0)->text(0), u"按试卷顺序"_qs);
  EXPECT_EQ(form->TreeView1->topLevelItem(0)->child(0)->data(0, Qt::UserRole + 1).toString(), u"0001 node"_qs);
}

TEST_F(Form6Test, TheMenuAndTheTemporaryText) {
  clickNode(u"《示例法》"_qs);
  form->query().editText1(u"10"_qs);
  form->Command3->click();
  form->MergeToText->trigger();
  form->LookText->trigger();
  EXPECT_FALSE(form->RichTextBox1->isReadOnly());
  EXPECT_EQ(form->Command5->text(), u"在看临时文本"_qs);
  EXPECT_FALSE(form->Command5->isEnabled());
  EXPECT_FALSE(form->LookText->isEnabled());
  EXPECT_TRUE(form->GoBack->isEnabled());
  // Typing in the view changes the temporary text.
  QTextCursor c = form->RichTextBox1->textCursor();
  c.movePosition(QTextCursor::End);
  form->RichTextBox1->setTextCursor(c);
  Type(form->RichTextBox1, u"注"_qs);
  EXPECT_EQ(form->query().tempText, u"《示例法》\r\n　　第十条　盗窃公私财物，数额较大的，处三年以下有期徒刑。\r\n注"_qs);
  te.dialogs.answer(te.path(u"\\temp.txt"_qs));
  form->SaveTempText->trigger();
  EXPECT_EQ(te.readGbk(u"\\temp.txt"_qs), u"《示例法》\r\n　　第十条　盗窃公私财物，数额较大的，处三年以下有期徒刑。\r\n注"_qs);
  shot(u"law_query_temporary_text"_qs);
  form->GoBack->trigger();
  EXPECT_TRUE(form->RichTextBox1->isReadOnly());
  EXPECT_EQ(form->RichTextBox1->toPlainText(), u"　　第十条　盗窃公私财物，数额较大的，处三年以下有期徒刑。\n"_qs);
  EXPECT_EQ(form->Command5->text(), u"相关试题"_qs);
}

TEST_F(Form6Test, ASelectionGoesToTheClipboard) {
  clickNode(u"《示例法》"_qs);
  const QPoint to = viewPoint(u"第2号"_qs);
  const QPoint from = viewPoint(u"第二条"_qs);
  QTest::mousePress(form->RichTextBox1->viewport(), Qt::LeftButton, {}, from);
  QTest::mouseMove(form->RichTextBox1->viewport(), to);
  QTest::mouseRelease(form->RichTextBox1->viewport(), Qt::LeftButton, {}, to);
  QCoreApplication::processEvents();
  const QString selected = form->RichTextBox1->textCursor().selectedText();
  EXPECT_EQ(selected, u"二条 示例法第"_qs);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), selected);
}

TEST_F(Form6Test, TheContentsLeadToTheirHeadings) {
  QStringList lines{u"目录法"_qs, u"　　目录"_qs, u"　　第一章 总则"_qs, u"　　第二章 分则"_qs, u"　　第一章 总则"_qs};
  for (int i = 1; i <= 5; ++i) lines.append(u"　　第"_qs + DaXie(i) + u"条 总则内容"_qs + CStr(i) + u"。"_qs);
  lines << u"　　第二章 分则"_qs;
  for (int i = 6; i <= 80; ++i) lines.append(u"　　第"_qs + DaXie(i) + u"条 分则内容"_qs + CStr(i) + u"。"_qs);
  te.writeGbk(u"\\lawtxt\\目录法.mmd"_qs, test::JoinCrLf(lines));
  te.writeGbk(u"\\ini\\leibie.mmd"_qs, test::TreeText({u"FILE=\"\\lawtxt\\目录法.mmd\""_qs, u"《目录法》"_qs}));
  form->resize(900, 300);
  form->Command7->click();
  clickNode(u"《目录法》"_qs);
  clickView(u"二章 分则"_qs);
  const QTextCursor c = form->RichTextBox1->textCursor();
  const qsizetype heading = form->query().view.lastIndexOf(u"　　第二章 分则"_qs);
  EXPECT_EQ(c.blockNumber(), LineOfTextIndex(form->query().view, heading).line);
  EXPECT_EQ(form->RichTextBox1->cursorForPosition(QPoint(4, 4)).blockNumber(), c.blockNumber());
}

TEST_F(Form6Test, OpenTheLawFromAnAnswer) {
  const QString answer = u"答案：A。参见《示例法》第12条\r\n"_qs + GetLawTxtForDaAn(te.env, u"参见《示例法》第12条"_qs);
  form->hide();
  form->resize(900, 300);
  ASSERT_TRUE(form->OpenLawFromAnswer(answer, answer.indexOf(u"《示例法》\r\n"_qs) + 1, 1));
  EXPECT_TRUE(form->isVisible());
  EXPECT_EQ(form->Label3->text(), u"准备查询:《示例法》"_qs);
  EXPECT_EQ(form->RichTextBox1->toPlainText(), Lf(test::ArticleLaw(kSampleLast)));
  const QTextCursor c = form->RichTextBox1->textCursor();
  EXPECT_TRUE(c.block().text().startsWith(u"　　第十二条"_qs)) << c.block().text().toStdString();
  EXPECT_EQ(form->RichTextBox1->cursorForPosition(QPoint(4, 4)).blockNumber(), c.blockNumber());
  EXPECT_TRUE(form->Command5->isEnabled());
  EXPECT_EQ(form->Command5->text(), u"相关2题"_qs);
  shot(u"law_query_from_answer"_qs);
  EXPECT_FALSE(form->OpenLawFromAnswer(answer, 3, 1));
}

TEST(TextPlaces, LinesAndIndexes) {
  const QString t = u"ab\r\ncd\nef\r\r\ngh"_qs;
  EXPECT_EQ(TextIndexOfLine(t, 0, 1), 1);
  EXPECT_EQ(TextIndexOfLine(t, 1, 0), 4);
  EXPECT_EQ(TextIndexOfLine(t, 1, 9), 6);
  EXPECT_EQ(TextIndexOfLine(t, 2, 1), 8);
  EXPECT_EQ(TextIndexOfLine(t, 3, 0), 10);
  EXPECT_EQ(TextIndexOfLine(t, 4, 1), 13);
  EXPECT_EQ(TextIndexOfLine(t, 9, 0), t.size());
  for (const qsizetype i : {0, 1, 4, 5, 7, 8, 10, 12, 13}) {
    const LinePlace p = LineOfTextIndex(t, i);
    EXPECT_EQ(TextIndexOfLine(t, p.line, p.column), i) << i;
  }
  EXPECT_EQ(LineOfTextIndex(t, 3).line, 0);  // the LF of the first CR LF
  EXPECT_EQ(LineOfTextIndex(t, 3).column, 2);
  EXPECT_EQ(LineOfTextIndex(t, 12).line, 4);
}

TEST(TextPlaces, AShownTextAndItsCaretWithCrLf) {
  const QString shown = u"ab\ncd\n\nef"_qs;
  EXPECT_EQ(ToCrLfPlace(shown, 0).text, u"ab\r\ncd\r\n\r\nef"_qs);
  EXPECT_EQ(ToCrLfPlace(shown, 0).index, 0);
  EXPECT_EQ(ToCrLfPlace(shown, 2).index, 2);  // before the first LF
  EXPECT_EQ(ToCrLfPlace(shown, 3).index, 4);  // behind it: on c
  EXPECT_EQ(ToCrLfPlace(shown, 6).index, 8);  // on the LF of the empty line
  EXPECT_EQ(ToCrLfPlace(shown, 7).index, 10);
  EXPECT_EQ(ToCrLfPlace(shown, 9).index, 12);  // the end
  // Places outside the text are kept at its ends.
  EXPECT_EQ(ToCrLfPlace(shown, -5).index, 0);
  EXPECT_EQ(ToCrLfPlace(shown, 99).index, 12);
  // A CR LF already there gets a second CR, as any LF does.
  EXPECT_EQ(ToCrLfPlace(u"a\r\nb"_qs, 3).text, u"a\r\r\nb"_qs);
  EXPECT_EQ(ToCrLfPlace(u"a\r\nb"_qs, 3).index, 4);
  EXPECT_EQ(ToCrLfPlace(QString(), 3).index, 0);
}

}  // namespace
}  // namespace mj
