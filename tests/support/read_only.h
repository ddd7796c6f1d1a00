#pragma once
// A folder that cannot be written, for the tests of what the program does
// then: its files are made read-only for the scope. A process with root's
// rights writes read-only files all the same, so as root the scope also
// takes the rights of the user "nobody" (as its effective user) until it
// ends; the program folder is then opened for reading by others.

#include <QString>
#include <QStringList>

namespace mj::test {

class ReadOnlyScope {
 public:
  // folder: the folder whose files become read-only; root: the program
  // folder, which must stay readable.
  ReadOnlyScope(const QString& folder, const QString& root);
  ~ReadOnlyScope();
  ReadOnlyScope(const ReadOnlyScope&) = delete;
  ReadOnlyScope& operator=(const ReadOnlyScope&) = delete;

  // Whether the scope holds: a write into the folder now fails.
  bool holds() const { return holds_; }

 private:
  QString folder_;
  QStringList opened_;  // folders opened for reading by others, to close again
  bool asNobody_ = false;
  bool holds_ = false;
};

}  // namespace mj::test
