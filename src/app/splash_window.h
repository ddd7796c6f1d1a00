#pragma once
// The splash window of the start: the picture \ini\jiemian.jpg with a
// growing yellow bar; it can be dragged by its background.

#include <QPixmap>
#include <QPoint>
#include <QWidget>

class QTimer;

namespace mj {

struct Env;

class Form8 : public QWidget {
  Q_OBJECT
 public:
  explicit Form8(const Env& env, QWidget* parent = nullptr);

  // Loads the picture (a box when it is missing), takes its size (made
  // smaller to fit a smaller screen) and centres the window on the screen.
  void load();

  // The picture as loaded, at its own size; null when it was missing.
  const QPixmap& picture() const { return picture_; }
  int step() const { return step_; }
  int barStart() const { return barStart_; }
  QTimer* Timer1 = nullptr;
  // One tick of Timer1: the first shows the window; each adds 7 to the step.
  void tick();

 protected:
  void paintEvent(QPaintEvent*) override;
  void mousePressEvent(QMouseEvent*) override;
  void mouseMoveEvent(QMouseEvent*) override;
  void mouseReleaseEvent(QMouseEvent*) override;

 private:
  const Env& env_;
  QPixmap picture_;
  QPixmap shown_;  // the picture at the window's size
  int step_ = 0;
  int barStart_ = 0;
  bool firstTick_ = true;
  bool dragging_ = false;
  QPoint dragFrom_;
};

}  // namespace mj
