#include "platform/desktop_services_widget.h"

#include <QApplication>
#include <QClipboard>
#include <QColor>
#include <QColorDialog>
#include <QFileDialog>
#include <QFontDialog>
#include <QGridLayout>
#include <QMessageBox>
#include <QPushButton>

#include "platform/paths.h"
#include "platform/window_placement_widget.h"

namespace mj {

int WidgetBoxes::show(const QString& text, int style, const QString& title) {
  QMessageBox mb(QApplication::activeWindow());
  mb.setWindowTitle(title.isEmpty() ? DefaultBoxTitle() : title);
  mb.setText(text);
  switch (box::iconOf(style)) {
    case box::Critical: mb.setIcon(QMessageBox::Critical); break;
    case box::Question: mb.setIcon(QMessageBox::Question); break;
    case box::Exclamation: mb.setIcon(QMessageBox::Warning); break;
    case box::Information: mb.setIcon(QMessageBox::Information); break;
    default: break;
  }
  struct B { QMessageBox::StandardButton sb; int answer; const char16_t* caption; };
  QList<B> buttons;
  switch (box::buttonsOf(style)) {
    case box::OkCancel: buttons = {{QMessageBox::Ok, box::Ok, u"确定"}, {QMessageBox::Cancel, box::Cancel, u"取消"}}; break;
    case box::AbortRetryIgnore:
      buttons = {{QMessageBox::Abort, box::Abort, u"中止"}, {QMessageBox::Retry, box::Retry, u"重试"}, {QMessageBox::Ignore, box::Ignore, u"忽略"}};
      break;
    case box::YesNoCancel:
      buttons = {{QMessageBox::Yes, box::Yes, u"是"}, {QMessageBox::No, box::No, u"否"}, {QMessageBox::Cancel, box::Cancel, u"取消"}};
      break;
    case box::YesNo: buttons = {{QMessageBox::Yes, box::Yes, u"是"}, {QMessageBox::No, box::No, u"否"}}; break;
    case box::RetryCancel: buttons = {{QMessageBox::Retry, box::Retry, u"重试"}, {QMessageBox::Cancel, box::Cancel, u"取消"}}; break;
    default: buttons = {{QMessageBox::Ok, box::Ok, u"确定"}}; break;
  }
  QList<QPushButton*> made;
  for (const B& b : buttons) {
    QPushButton* p = mb.addButton(b.sb);
    p->setText(QString::fromUtf16(b.caption));
    made.append(p);
  }
  const int def = box::defaultIndexOf(style);
  if (def < made.size()) mb.setDefaultButton(made[def]);
  // The box is as wide as its title needs, so that the window manager does
  // not cut the title off; never wider than the screen.
  // A title too long for the screen is cut with "…" by the program, not
  // by the window manager.
  if (auto* grid = qobject_cast<QGridLayout*>(mb.layout())) {
    const int room = AvailableArea(&mb).width() - 16;
    if (TitleBarWidth(mb.windowTitle()) > room) mb.setWindowTitle(TitleForWidth(mb.windowTitle(), room));
    const QMargins lm = grid->contentsMargins();
    const int width = qMin(TitleBarWidth(mb.windowTitle()), room) - lm.left() - lm.right();
    grid->addItem(new QSpacerItem(width, 0, QSizePolicy::Fixed, QSizePolicy::Minimum), grid->rowCount(), 0, 1,
                  grid->columnCount());
  }
  mb.exec();
  for (int i = 0; i < made.size(); ++i)
    if (mb.clickedButton() == made[i]) return buttons[i].answer;
  // Closed by the window's close box: the cancel answer where there is one.
  for (const B& b : buttons)
    if (b.answer == box::Cancel) return box::Cancel;
  return buttons.size() == 1 ? buttons[0].answer : box::defaultAnswer(style);
}

void WidgetClipboard::setText(const QString& text) { QGuiApplication::clipboard()->setText(text); }

QString WidgetClipboard::text() const { return QGuiApplication::clipboard()->text(); }

QString QtFilterOf(const QString& classicFilter) {
  const QStringList parts = classicFilter.split(u'|');
  QStringList out;
  for (int i = 0; i + 1 < parts.size(); i += 2) {
    QString patterns = parts[i + 1];
    patterns.replace(u';', u' ');
    out.append(parts[i] + QStringLiteral(" (") + patterns + u')');
  }
  return out.join(QStringLiteral(";;"));
}

std::optional<QString> WidgetDialogs::openFile(const FileDialogRequest& r) {
  const QString f = QFileDialog::getOpenFileName(QApplication::activeWindow(), r.title, MapSeparators(r.initialDir), QtFilterOf(r.filter));
  if (f.isEmpty()) return std::nullopt;
  return f;
}

std::optional<QString> WidgetDialogs::saveFile(const FileDialogRequest& r) {
  QFileDialog dlg(QApplication::activeWindow(), r.title, MapSeparators(r.initialDir), QtFilterOf(r.filter));
  dlg.setAcceptMode(QFileDialog::AcceptSave);
  dlg.setOption(QFileDialog::DontConfirmOverwrite, true);  // the program asks itself
  QString ext = r.defaultExt;
  if (ext.startsWith(u'.')) ext = ext.mid(1);
  if (!ext.isEmpty()) dlg.setDefaultSuffix(ext);
  if (!r.fileName.isEmpty()) dlg.selectFile(r.fileName);
  if (dlg.exec() != QDialog::Accepted || dlg.selectedFiles().isEmpty()) return std::nullopt;
  return dlg.selectedFiles().first();
}

std::optional<FontChoice> WidgetDialogs::chooseFont(const FontChoice& initial) {
  QFont f(initial.name, initial.size);
  f.setBold(initial.bold);
  f.setItalic(initial.italic);
  bool ok = false;
  const QFont chosen = QFontDialog::getFont(&ok, f, QApplication::activeWindow());
  if (!ok) return std::nullopt;
  FontChoice c;
  c.name = chosen.family();
  c.size = chosen.pointSize();
  c.bold = chosen.bold();
  c.italic = chosen.italic();
  c.color = initial.color;
  return c;
}

std::optional<int> WidgetDialogs::chooseColor(int initial) {
  const QColor c = QColorDialog::getColor(ColorOf(initial), QApplication::activeWindow());
  if (!c.isValid()) return std::nullopt;
  return ValueOf(c);
}

QColor ColorOf(int value) { return QColor(value & 0xFF, (value >> 8) & 0xFF, (value >> 16) & 0xFF); }

int ValueOf(const QColor& color) { return color.red() + color.green() * 256 + color.blue() * 65536; }

}  // namespace mj
