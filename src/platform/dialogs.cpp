#include "platform/dialogs.h"

namespace mj {

namespace {
template <typename T>
std::optional<T> next(QList<ScriptedDialogs::Answer>& answers) {
  if (answers.isEmpty()) return std::nullopt;
  ScriptedDialogs::Answer a = answers.takeFirst();
  if (auto* v = std::get_if<T>(&a)) return *v;
  return std::nullopt;
}
}  // namespace

std::optional<QString> ScriptedDialogs::openFile(const FileDialogRequest& request) {
  fileRequests.append(request);
  return next<QString>(answers);
}

std::optional<QString> ScriptedDialogs::saveFile(const FileDialogRequest& request) {
  fileRequests.append(request);
  return next<QString>(answers);
}

std::optional<FontChoice> ScriptedDialogs::chooseFont(const FontChoice&) {
  ++fontRequests;
  return next<FontChoice>(answers);
}

std::optional<int> ScriptedDialogs::chooseColor(int) {
  ++colorRequests;
  return next<int>(answers);
}

}  // namespace mj
