#include "platform/events.h"

namespace mj {

namespace {
std::function<void()>& pump() {
  static std::function<void()> p;
  return p;
}
}  // namespace

void SetEventPump(std::function<void()> p) { pump() = std::move(p); }

void LetEventsThrough() {
  if (pump()) pump()();
}

}  // namespace mj
