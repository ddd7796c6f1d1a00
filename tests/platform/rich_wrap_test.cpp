// The wrap of rich text boxes: on, a long line breaks at the box's right edge
// and follows a resize; off, it runs on and the box scrolls sideways.
#include "platform/rich_wrap_widget.h"

#include <gtest/gtest.h>

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextEdit>
#include <QTextLayout>

#include "support/printers.h"

using namespace mj;

namespace {

// A law article of one long line, Chinese without blanks.
const QString kLongLine = QStringLiteral("第一条　") + QStringLiteral("为了规范行政处罚的设定和实施，保障和监督行政机关有效实施行政管理，").repeated(6);

int LinesOf(const QTextBlock& block) { return block.layout() ? block.layout()->lineCount() : 0; }

}  // namespace

TEST(RichWrap, ATextBoxWrapsToItsWidthAndFollowsAResize) {
  QTextEdit box;
  box.setPlainText(kLongLine);
  box.resize(300, 200);
  box.show();
  SetRichWrap(&box, false);
  QApplication::processEvents();
  EXPECT_EQ(box.lineWrapMode(), QTextEdit::NoWrap);
  EXPECT_EQ(LinesOf(box.document()->firstBlock()), 1);
  EXPECT_GT(box.horizontalScrollBar()->maximum(), 0);

  SetRichWrap(&box, true);
  QApplication::processEvents();
  EXPECT_EQ(box.lineWrapMode(), QTextEdit::WidgetWidth);
  const int narrow = LinesOf(box.document()->firstBlock());
  EXPECT_GT(narrow, 3);
  EXPECT_EQ(box.horizontalScrollBar()->maximum(), 0);
  // No line is wider than the box shows.
  EXPECT_LE(box.document()->idealWidth(), box.viewport()->width());
  box.resize(900, 200);
  QApplication::processEvents();
  EXPECT_LT(LinesOf(box.document()->firstBlock()), narrow);
  EXPECT_LE(box.document()->idealWidth(), box.viewport()->width());
}

TEST(RichWrap, APlainTextBoxWrapsAlike) {
  QPlainTextEdit box;
  box.setPlainText(kLongLine);
  box.resize(300, 200);
  box.show();
  SetRichWrap(&box, false);
  QApplication::processEvents();
  EXPECT_EQ(box.lineWrapMode(), QPlainTextEdit::NoWrap);
  EXPECT_EQ(LinesOf(box.document()->firstBlock()), 1);
  SetRichWrap(&box, true);
  QApplication::processEvents();
  EXPECT_EQ(box.lineWrapMode(), QPlainTextEdit::WidgetWidth);
  EXPECT_GT(LinesOf(box.document()->firstBlock()), 3);
  EXPECT_EQ(box.horizontalScrollBar()->maximum(), 0);
  SetRichWrap(static_cast<QPlainTextEdit*>(nullptr), true);  // no box: nothing happens
}
