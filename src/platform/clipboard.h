#pragma once
// The clipboard behind an interface, so that the logic can put text there
// and a test can read it back without a window system.

#include <QString>

namespace mj {

class Clipboard {
 public:
  virtual ~Clipboard() = default;
  virtual void setText(const QString& text) = 0;
  virtual QString text() const = 0;
};

// For tests: holds the text.
class MemoryClipboard final : public Clipboard {
 public:
  void setText(const QString& text) override { text_ = text; }
  QString text() const override { return text_; }

 private:
  QString text_;
};

}  // namespace mj
