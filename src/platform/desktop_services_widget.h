#pragma once
// The real message boxes, common dialogs and clipboard of the desktop.

#include <QString>

#include "platform/clipboard.h"
#include "platform/dialogs.h"
#include "platform/messagebox.h"

class QWidget;
class QColor;

namespace mj {

class WidgetBoxes final : public MessageBoxes {
 public:
  int show(const QString& text, int style = 0, const QString& title = QString()) override;
};

class WidgetDialogs final : public Dialogs {
 public:
  std::optional<QString> openFile(const FileDialogRequest& request) override;
  std::optional<QString> saveFile(const FileDialogRequest& request) override;
  std::optional<FontChoice> chooseFont(const FontChoice& initial) override;
  std::optional<int> chooseColor(int initial) override;
};

class WidgetClipboard final : public Clipboard {
 public:
  void setText(const QString& text) override;
  QString text() const override;
};

// "说明|*.a;*.b|..." as a Qt name filter list "说明 (*.a *.b);;...".
QString QtFilterOf(const QString& classicFilter);

// The program's colour numbers and Qt colours.
QColor ColorOf(int value);
int ValueOf(const QColor& color);

}  // namespace mj
