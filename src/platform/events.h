#pragma once
// Letting window events through during long loops. The program's window
// installs the pump; without one (tests of the logic) nothing happens.

#include <QElapsedTimer>
#include <functional>

namespace mj {

void SetEventPump(std::function<void()> pump);
void LetEventsThrough();

// Calls LetEventsThrough at most once a second of wall time: call tick() in
// every round of a long loop.
class Breather {
 public:
  Breather() { timer_.start(); }
  void tick() {
    if (timer_.elapsed() >= 1000) {
      LetEventsThrough();
      timer_.restart();
    }
  }

 private:
  QElapsedTimer timer_;
};

}  // namespace mj
