#include "platform/escape_key_widget.h"

#include <QEvent>
#include <QKeyEvent>
#include <QWidget>

namespace mj {
namespace {

// Sees the key presses that the window's widgets pass on to the window.
class EscapeCloses final : public QObject {
 public:
  explicit EscapeCloses(QWidget* window) : QObject(window), window_(window) {}

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched == window_ && event->type() == QEvent::KeyPress) {
      const auto* key = static_cast<QKeyEvent*>(event);
      if (key->key() == Qt::Key_Escape && key->modifiers() == Qt::NoModifier) {
        window_->close();
        return true;
      }
    }
    return false;
  }

 private:
  QWidget* window_;
};

}  // namespace

void CloseOnEscape(QWidget* window) { window->installEventFilter(new EscapeCloses(window)); }

}  // namespace mj
