#pragma once
// The services of the Env that a command-line run gives the core: no window
// can be shown, so message boxes are kept (a command turns them into its
// message), no program is started and every file dialog is cancelled.

#include <QList>

#include "platform/dialogs.h"
#include "platform/messagebox.h"
#include "platform/shell.h"

namespace mj::cli {

// Answers every box with its default button and keeps it. A command whose
// option stands for the answer to a question of the core (apply-update
// --again: "是") sets that answer for the boxes that ask.
class KeptBoxes final : public MessageBoxes {
 public:
  int show(const QString& text, int style = 0, const QString& title = QString()) override;
  const QList<BoxRecord>& shown() const { return shown_; }
  // Boxes with 是/否 (and 取消) from now on answer `answer` (box::Yes, box::No).
  void answerQuestionsWith(int answer) { questionAnswer_ = answer; }

 private:
  QList<BoxRecord> shown_;
  int questionAnswer_ = 0;
};

// Starts nothing: a command-line run never opens a document or a program.
class NoShell final : public Shell {
 public:
  bool open(const QString&, const QString&) override { return false; }
  bool start(const QString&, const QStringList&, WindowMode) override { return false; }
};

// Every dialog is cancelled.
class NoDialogs final : public Dialogs {
 public:
  std::optional<QString> openFile(const FileDialogRequest&) override { return std::nullopt; }
  std::optional<QString> saveFile(const FileDialogRequest&) override { return std::nullopt; }
  std::optional<FontChoice> chooseFont(const FontChoice&) override { return std::nullopt; }
  std::optional<int> chooseColor(int) override { return std::nullopt; }
};

}  // namespace mj::cli
