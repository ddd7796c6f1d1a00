#pragma once
// An up-down control: two arrow buttons that step a whole number within its
// bounds, without a text field of its own (the window pairs it with one).
// A value outside the bounds is not taken over.

#include <QWidget>

class QToolButton;

namespace mj {

class UpDown : public QWidget {
  Q_OBJECT

 public:
  explicit UpDown(QWidget* parent = nullptr);

  // Sets the bounds; a value outside them is pulled back inside.
  void setRange(int minimum, int maximum);
  int minimum() const { return minimum_; }
  int maximum() const { return maximum_; }
  int value() const { return value_; }
  // Takes the value when it lies within the bounds, limits included; returns
  // whether the control now holds it.
  bool setValue(int value);
  // One step up or down; nothing at the bound.
  void stepUp();
  void stepDown();

  QToolButton* upButton() const { return up_; }
  QToolButton* downButton() const { return down_; }

 signals:
  // The value changed (by the arrows or by setValue).
  void valueChanged(int value);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QToolButton* up_;
  QToolButton* down_;
  int minimum_ = 0;
  int maximum_ = 10;
  int value_ = 0;
};

}  // namespace mj
