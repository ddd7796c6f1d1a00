#include "cli/bank_commands.h"

#include "cli/paper_commands.h"
#include "cli/scratch_folder.h"
#include "bank/item_index.h"
#include "bank/table_check.h"
#include "bank/tables.h"
#include "papers/paper_check.h"
#include "papers/paper_state.h"
#include "platform/paths.h"
#include "practice/app_state.h"
#include "practice/directory.h"
#include "practice/directory_entries.h"
#include "settings/settings.h"

namespace mj::cli {

namespace {

// The main window as the directory entries see it: nothing is drawn, the
// directory is kept.
class KeptDirectory final : public DirectoryEntryUi {
 public:
  bool needsData() override { return true; }
  void prepareGridFace() override {}
  void setWaitCursor(bool) override {}
  void hideFrames() override {}
  void showCounting(const QString&) override {}
  void setProgressMaximum(int) override {}
  void setProgressValue(int) override {}
  void hideCounting() override {}
  void showDirectory(const Directory& d) override {
    directory = d;
    shown = true;
  }
  Directory directory;
  bool shown = false;
};

// The columns the directory shows, in its order.
const int kShownColumns[] = {kColLabel, kColTotal, kColDone, kColRight, kColScore, kColMinutes, kColEligible};

}  // namespace

QList<OptionInfo> DueCommand::options() const {
  return {{QStringLiteral("papers"), false, QString(), QStringLiteral("列模拟试卷（摸拟试卷的目录）"),
           QStringLiteral("the simulated papers instead of the internal banks")},
          {QStringLiteral("review"), false, QString(), QStringLiteral("列查卷的目录：模拟试卷里没做过或做错的题"),
           QStringLiteral("the review directory: questions of the simulated papers not done or answered wrongly")}};
}

int DueCommand::run(CommandContext& ctx) {
  const bool papers = ctx.has(QStringLiteral("papers"));
  const bool review = ctx.has(QStringLiteral("review"));
  if (papers && review) return ctx.fail(QStringLiteral("--papers 和 --review 只能选一个。"));
  const DirectoryMode mode = review ? DirectoryMode::ChaJuan : papers ? DirectoryMode::CeShi : DirectoryMode::ShiTi;
  const bool simulated = mode != DirectoryMode::ShiTi;

  // The directory entry counts into the directory table and stamps the day
  // in the settings: it does so here on copies.
  const QString faceTable = simulated ? tables::kCsDirectory : tables::kDirectory;
  QStringList required = {QStringLiteral("\\dbf\\") + faceTable};
  if (simulated) required.append(QStringLiteral("\\dbf\\") + tables::kCsItems);
  const ScratchFolder copy(ctx.env, {QStringLiteral("\\ini\\userself.ini")}, required);
  if (!copy.problem().isEmpty()) return ctx.fail(copy.problem());
  const Env& scratch = copy.env();

  AppState app;
  app.env = ctx.env;
  if (!simulated) {
    const QString folder = ctx.env.path(QStringLiteral("\\dbf"));
    ReadData2ItemData(folder, tables::kItems, app.AllItemData);
    app.ItemIndexProblem = TableProblem(AppPath(folder, tables::kItems), ItemTableFields());
  }
  app.env = scratch;
  Settings settings;
  app.settings = &settings;
  SettingsScheduling scheduling(settings, scratch);
  KeptDirectory ui;
  EnterDirectory(app, mode, ui, scheduling);
  Directory& d = ui.directory;
  if (d.rowCount() == 0) return ctx.fail(QStringLiteral("目录表 %1 是空的或无法读取。").arg(ctx.env.path(QStringLiteral("\\dbf\\") + faceTable)));

  // Every heading opened, top to bottom, as a user opens them in the grid:
  // each row shows then with the indent and sign the grid gives it.
  for (int r = 1; r <= d.rowCount(); ++r)
    if (d.isHeading(r) && d.text(r, kColLabel).trimmed().startsWith(QLatin1Char('+'))) d.toggleHeading(r);

  // The header and every row, one line each, columns separated by tabs.
  QString out;
  QStringList header;
  for (const int c : kShownColumns) {
    QString h = d.header().value(c).text;
    h.remove(QLatin1Char(' '));
    h.remove(QChar(0x3000));
    if (h.endsWith(QLatin1Char('.'))) h.chop(1);
    header.append(h);
  }
  out += header.join(QLatin1Char('\t')) + QLatin1Char('\n');
  for (int r = 1; r <= d.rowCount(); ++r) {
    QStringList cells;
    for (const int c : kShownColumns) {
      QString t = d.text(r, c);
      if (c == kColLabel) {
        while (t.endsWith(QLatin1Char(' '))) t.chop(1);
      } else {
        t = t.trimmed();
      }
      cells.append(t);
    }
    out += cells.join(QLatin1Char('\t')) + QLatin1Char('\n');
  }
  ctx.out = out;
  return 0;
}

int CheckPaperCommand::run(CommandContext& ctx) {
  QString text, problem;
  if (!ReadNamedPaper(ctx.operands[0], &text, &problem)) return ctx.fail(problem);
  PaperState state;
  const PaperCheckResult r = RunPaperCheck(ctx.env, text, state);
  ctx.out = r.report;
  return 0;
}

}  // namespace mj::cli
