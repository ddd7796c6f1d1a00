#include "papers/text_box_widget.h"

#include <QPlainTextEdit>
#include <QTextCursor>

#include "platform/text_toolkit.h"

namespace mj {

QString HeldTextOf(const QPlainTextEdit* box) { return HeldText(box->toPlainText()); }

int BoxPlaceOf(const QString& held, qsizetype index) {
  index = std::clamp<qsizetype>(index, 0, held.size());
  // Every LF of the held text stands behind a CR the box does not have.
  const qsizetype lfs = QStringView(held).left(index).count(u'\n');
  return static_cast<int>(index - lfs);
}

void SelectHeldRange(QPlainTextEdit* box, const QString& held, qsizetype start, qsizetype length) {
  QTextCursor c = box->textCursor();
  c.setPosition(BoxPlaceOf(held, start));
  c.setPosition(BoxPlaceOf(held, start + length), QTextCursor::KeepAnchor);
  box->setTextCursor(c);
  box->ensureCursorVisible();
}

void ReplaceHeldRange(QPlainTextEdit* box, const QString& held, qsizetype start, qsizetype length,
                      const QString& text) {
  QTextCursor c = box->textCursor();
  c.beginEditBlock();
  c.setPosition(BoxPlaceOf(held, start));
  c.setPosition(BoxPlaceOf(held, start + length), QTextCursor::KeepAnchor);
  c.insertText(ShownText(text));
  c.endEditBlock();
  box->setTextCursor(c);
}

void SetHeldText(QPlainTextEdit* box, const QString& text) {
  QTextCursor c(box->document());
  c.beginEditBlock();
  c.select(QTextCursor::Document);
  c.insertText(ShownText(text));
  c.endEditBlock();
}

}  // namespace mj
