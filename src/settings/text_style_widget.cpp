#include "settings/text_style_widget.h"

#include <QFont>
#include <QPalette>
#include <QWidget>

#include "platform/desktop_services_widget.h"

namespace mj {

void ApplyTextStyle(QWidget* box, const TextStyle& style) {
  if (!box) return;
  QFont f = box->font();
  f.setFamilies({style.fontName});
  f.setItalic(style.italic);
  f.setBold(style.bold);
  // A size that is no size (0 or less, from a hand-edited file) keeps the
  // box's size.
  if (style.fontSize > 0) f.setPointSize(style.fontSize);
  box->setFont(f);

  QPalette p = box->palette();
  p.setColor(QPalette::Text, ColorOf(style.foreColor));
  p.setColor(QPalette::WindowText, ColorOf(style.foreColor));
  p.setColor(QPalette::Base, ColorOf(style.backColor));
  box->setPalette(p);
}

}  // namespace mj
