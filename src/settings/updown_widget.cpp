#include "settings/updown_widget.h"

#include <QKeyEvent>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

namespace mj {

UpDown::UpDown(QWidget* parent) : QWidget(parent), up_(new QToolButton(this)), down_(new QToolButton(this)) {
  up_->setObjectName(QStringLiteral("up"));
  down_->setObjectName(QStringLiteral("down"));
  up_->setArrowType(Qt::UpArrow);
  down_->setArrowType(Qt::DownArrow);
  for (QToolButton* b : {up_, down_}) {
    b->setAutoRepeat(true);
    b->setFixedSize(18, 11);
    b->setFocusPolicy(Qt::NoFocus);
  }
  auto* box = new QVBoxLayout(this);
  box->setContentsMargins(0, 0, 0, 0);
  box->setSpacing(0);
  box->addWidget(up_);
  box->addWidget(down_);
  setFocusPolicy(Qt::StrongFocus);
  connect(up_, &QToolButton::clicked, this, &UpDown::stepUp);
  connect(down_, &QToolButton::clicked, this, &UpDown::stepDown);
}

void UpDown::setRange(int minimum, int maximum) {
  minimum_ = minimum;
  maximum_ = std::max(minimum, maximum);
  const int v = std::clamp(value_, minimum_, maximum_);
  if (v != value_) {
    value_ = v;
    emit valueChanged(value_);
  }
}

bool UpDown::setValue(int value) {
  if (value < minimum_ || value > maximum_) return false;
  if (value != value_) {
    value_ = value;
    emit valueChanged(value_);
  }
  return true;
}

void UpDown::stepUp() {
  if (value_ < maximum_) setValue(value_ + 1);
}

void UpDown::stepDown() {
  if (value_ > minimum_) setValue(value_ - 1);
}

void UpDown::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Up)
    stepUp();
  else if (event->key() == Qt::Key_Down)
    stepDown();
  else
    QWidget::keyPressEvent(event);
}

}  // namespace mj
