#include "app/splash_window.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QTimer>

#include "platform/env.h"
#include "platform/paths.h"

namespace mj {

Form8::Form8(const Env& env, QWidget* parent)
    : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint), env_(env) {
  setObjectName(QStringLiteral("Form8"));
  Timer1 = new QTimer(this);
  Timer1->setInterval(100);
  connect(Timer1, &QTimer::timeout, this, &Form8::tick);
}

void Form8::load() {
  const QString path = env_.path(QStringLiteral("\\ini\\jiemian.jpg"));
  if (!FileExists(path) || !picture_.load(path)) {
    env_.msgBox(QStringLiteral("没有启动界面所需的图片“") + path + QStringLiteral("”,无所需图片"));
    picture_ = QPixmap();
    resize(480, 300);
  } else {
    resize(picture_.size());
  }
  if (const QScreen* screen = QGuiApplication::primaryScreen()) {
    const QRect avail = screen->availableGeometry();
    // A picture larger than the screen is shown whole, made smaller, so
    // that a small screen shows it all and the bar where it belongs.
    if (!picture_.isNull() && (width() > avail.width() || height() > avail.height()))
      resize(picture_.size().scaled(avail.size(), Qt::KeepAspectRatio));
    move(avail.center() - rect().center());
  }
  shown_ = picture_.isNull() || picture_.size() == size()
               ? picture_
               : picture_.scaled(size(), Qt::KeepAspectRatio, Qt::SmoothTransformation);
  barStart_ = width() / 3;
  Timer1->start();
}

void Form8::tick() {
  if (firstTick_) {
    firstTick_ = false;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    show();
    QApplication::restoreOverrideCursor();
  }
  // The bar grows until it spans the middle third of the picture (its length
  // is step * 30 twips, 15 twips to a pixel).
  if (step_ * 2 < width() / 3) step_ += 7;
  update();
}

void Form8::paintEvent(QPaintEvent*) {
  QPainter p(this);
  if (!shown_.isNull()) p.drawPixmap(0, 0, shown_);
  else p.fillRect(rect(), QColor(0x20, 0x40, 0x80));
  const int len = std::min(step_ * 2, width() / 3);
  if (len > 0) {
    const int top = static_cast<int>(height() * 0.87);
    const int bottom = std::max(top + 2, static_cast<int>(height() * 0.877));
    p.fillRect(QRect(QPoint(barStart_, top), QPoint(barStart_ + len, bottom)), QColor(255, 255, 0));
  }
}

void Form8::mousePressEvent(QMouseEvent* e) {
  dragging_ = true;
  dragFrom_ = e->globalPosition().toPoint();
}

void Form8::mouseMoveEvent(QMouseEvent* e) {
  if (!dragging_) return;
  const QPoint now = e->globalPosition().toPoint();
  move(pos() + (now - dragFrom_));
  dragFrom_ = now;
}

void Form8::mouseReleaseEvent(QMouseEvent*) { dragging_ = false; }

}  // namespace mj
