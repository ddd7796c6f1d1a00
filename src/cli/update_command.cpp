#include "cli/update_command.h"

#include <QFileInfo>

#include "log/update_package.h"
#include "platform/textfile.h"

namespace mj::cli {

namespace {

// The open dialog of the update run, answered with the package named on the
// command line.
class ChosenPackage final : public Dialogs {
 public:
  explicit ChosenPackage(const QString& path) : path_(path) {}
  std::optional<QString> openFile(const FileDialogRequest&) override { return path_; }
  std::optional<QString> saveFile(const FileDialogRequest&) override { return std::nullopt; }
  std::optional<FontChoice> chooseFont(const FontChoice&) override { return std::nullopt; }
  std::optional<int> chooseColor(int) override { return std::nullopt; }

 private:
  QString path_;
};

// Whether the text holds at least one item that the run would take: a "●"
// at a line start and an ID tag of 11 digits in that item.
bool HoldsAnItem(const QString& text) {
  for (const QStringView item : SplitItems(text, QStringLiteral("\r\n●")))
    if (!GetItemIdOfNewText(PreparedItem(item.toString())).isEmpty()) return true;
  return false;
}

}  // namespace

QList<OptionInfo> ApplyUpdateCommand::options() const {
  return {{QStringLiteral("again"), false, QString(),
           QStringLiteral("已经更新过一次的题也再更新一次（窗口询问“要不要再更新一次”时答“是”）"),
           QStringLiteral("update again the questions updated before (the answer 是 to the window's question)")}};
}

int ApplyUpdateCommand::run(CommandContext& ctx) {
  const QString path = ctx.operands[0];
  // Everything that makes the package unusable is found before the run, so
  // that a bad file changes nothing in the folder.
  QString problem;
  const QString absolute = NamedInputFile(path, QStringLiteral("更新包文件"), &problem);
  if (absolute.isEmpty()) return ctx.fail(problem);
  if (!QFileInfo(absolute).fileName().contains(QStringLiteral(".new"), Qt::CaseInsensitive))
    return ctx.fail(QStringLiteral("%1 不是更新包：").arg(path) + kNotAPackage);
  bool read = false;
  const QByteArray bytes = ReadBytes(absolute, &read);
  if (!read) return ctx.fail(QStringLiteral("无法读取文件：") + path);
  if (!HoldsAnItem(DecodeText(bytes)))
    return ctx.fail(QStringLiteral("%1 不是更新包：里面没有一道以“●”开头、带“[本题标识ID：][11位数字]”的试题。").arg(path));

  // The window's own run: its file dialog gets the package, its question
  // the answer of --again.
  ChosenPackage dialog(absolute);
  Env env = ctx.env;
  env.dialogs = &dialog;
  ctx.boxes->answerQuestionsWith(ctx.has(QStringLiteral("again")) ? box::Yes : box::No);
  UpdateView view;  // nothing to show: the run's progress goes nowhere
  qint16 runState = 3;
  QString updatedIds;
  UpdateRun update(env, view, {runState, updatedIds});
  const qsizetype before = ctx.boxes->shown().size();
  const bool taken = update.run();
  QString report;
  for (qsizetype i = before; i < ctx.boxes->shown().size(); ++i) {
    const BoxRecord& b = ctx.boxes->shown()[i];
    if (b.title == QStringLiteral("结果汇报")) report = b.text;
    if (box::iconOf(b.style) == box::Exclamation) problem = OneLine(b.text, QStringLiteral(" "));
  }
  if (!problem.isEmpty()) return ctx.fail(problem);
  if (!taken || report.isEmpty()) return ctx.fail(QStringLiteral("更新包 %1 没有更新进题库。").arg(path));
  ctx.out = report;
  return 0;
}

}  // namespace mj::cli
