#include "platform/rich_wrap_widget.h"

#include <QPlainTextEdit>
#include <QTextEdit>
#include <QTextOption>

namespace mj {

void SetRichWrap(QTextEdit* box, bool on) {
  if (!box) return;
  box->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  box->setLineWrapMode(on ? QTextEdit::WidgetWidth : QTextEdit::NoWrap);
}

void SetRichWrap(QPlainTextEdit* box, bool on) {
  if (!box) return;
  box->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  box->setLineWrapMode(on ? QPlainTextEdit::WidgetWidth : QPlainTextEdit::NoWrap);
}

}  // namespace mj
