#pragma once
// The common dialogs (files, font, colour) behind an interface, so that a
// test can answer them. Colours are the program's colour numbers
// (blue * 65536 + green * 256 + red).

#include <QList>
#include <QString>
#include <optional>
#include <variant>

namespace mj {

struct FileDialogRequest {
  QString title;
  QString initialDir;
  // Filter in the classic form "说明|*.a;*.b|说明2|*.c".
  QString filter;
  QString defaultExt;
  QString fileName;  // proposed name
};

struct FontChoice {
  QString name;
  int size = 15;
  bool bold = false;
  bool italic = false;
  int color = 0;
};

class Dialogs {
 public:
  virtual ~Dialogs() = default;
  // The chosen file, or nothing on cancel.
  virtual std::optional<QString> openFile(const FileDialogRequest& request) = 0;
  virtual std::optional<QString> saveFile(const FileDialogRequest& request) = 0;
  virtual std::optional<FontChoice> chooseFont(const FontChoice& initial) = 0;
  virtual std::optional<int> chooseColor(int initial) = 0;
};

// For tests: answers from a queue (cancel when empty), requests recorded.
class ScriptedDialogs final : public Dialogs {
 public:
  using Answer = std::variant<std::monostate, QString, FontChoice, int>;  // monostate: cancel
  std::optional<QString> openFile(const FileDialogRequest& request) override;
  std::optional<QString> saveFile(const FileDialogRequest& request) override;
  std::optional<FontChoice> chooseFont(const FontChoice& initial) override;
  std::optional<int> chooseColor(int initial) override;

  void answer(Answer a) { answers.append(std::move(a)); }
  QList<Answer> answers;
  QList<FileDialogRequest> fileRequests;
  int fontRequests = 0;
  int colorRequests = 0;
};

}  // namespace mj
