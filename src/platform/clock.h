#pragma once
// The clock the program reads "today" and "now" from; tests set their own.

#include <QDate>
#include <QDateTime>

namespace mj {

class Clock {
 public:
  virtual ~Clock() = default;
  virtual QDateTime now() const = 0;
  QDate today() const { return now().date(); }
};

class SystemClock final : public Clock {
 public:
  QDateTime now() const override { return QDateTime::currentDateTime(); }
};

// A clock that stands still until it is moved.
class FixedClock final : public Clock {
 public:
  explicit FixedClock(QDateTime t = QDateTime(QDate(2026, 11, 21), QTime(9, 30))) : t_(std::move(t)) {}
  QDateTime now() const override { return t_; }
  void set(const QDateTime& t) { t_ = t; }
  void setDate(const QDate& d) { t_.setDate(d); }
  void advanceSeconds(qint64 s) { t_ = t_.addSecs(s); }
  void advanceDays(qint64 days) { t_ = t_.addDays(days); }

 private:
  QDateTime t_;
};

}  // namespace mj
