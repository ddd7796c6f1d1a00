#pragma once
// Opening files and addresses with the desktop's registered program, and
// starting other programs.

#include <QList>
#include <QString>
#include <QStringList>
#include <utility>

namespace mj {

enum class WindowMode { Normal, Maximized, Minimized, Hidden };

class Shell {
 public:
  virtual ~Shell() = default;
  // Opens a file or an http(s) address with its registered program
  // (verb "Open", working folder workDir). False when nothing could be started.
  virtual bool open(const QString& target, const QString& workDir) = 0;
  // Starts a program with arguments. False when it cannot be started.
  virtual bool start(const QString& program, const QStringList& args, WindowMode mode) = 0;
};

// The desktop: xdg-open for documents and addresses. The opener answers
// with its exit code whether the desktop had a program for the target; an
// opener still running after `verdictMs` waits for the program it started
// (xdg-open does so without a desktop environment), which counts as opened.
class DesktopShell final : public Shell {
 public:
  explicit DesktopShell(QString opener = QStringLiteral("xdg-open"), int verdictMs = 3000)
      : opener_(std::move(opener)), verdictMs_(verdictMs) {}
  bool open(const QString& target, const QString& workDir) override;
  bool start(const QString& program, const QStringList& args, WindowMode mode) override;

 private:
  QString opener_;
  int verdictMs_;
};

struct ShellCall {
  enum Kind { Open, Start } kind = Open;
  QString target;  // the file, address or program
  QStringList args;
  QString workDir;
  WindowMode mode = WindowMode::Normal;
};

// For tests: records every call and starts nothing.
class RecordingShell final : public Shell {
 public:
  bool open(const QString& target, const QString& workDir) override;
  bool start(const QString& program, const QStringList& args, WindowMode mode) override;
  QList<ShellCall> calls;
  bool result = true;
};

}  // namespace mj
