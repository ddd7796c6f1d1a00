#include "app/startup.h"

#include "bank/item_index.h"
#include "bank/table_check.h"
#include "bank/tables.h"
#include "log/day_files.h"
#include "platform/paths.h"
#include "platform/text_toolkit.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"

namespace mj {

bool DataSetPresent(const Env& env) { return DirExists(env.path(QStringLiteral("\\yibanti"))); }

QString DataPackageProgram(const Env& env) {
  const QString p = env.path(QStringLiteral("\\lmdata"));
  return FileExists(p) ? p : QString();
}

QString IconFile(const Env& env) {
  for (const QString& s : {QStringLiteral("\\fa.ico"), QStringLiteral("\\ini\\fa.ico")}) {
    const QString p = env.path(s);
    if (FileExists(p)) return p;
  }
  return QString();
}

QString ReadWenShuProgram(const Env& env) { return FirstValueOf(ReadText(env.path(kWenShuFile))); }

QStringList MakeTypeTitle() {
  return {QString(), QStringLiteral("一、单项选择题"), QStringLiteral("二、多项选择题"),
          QStringLiteral("三、任意选择题")};
}

void LoadQuestionIndex(AppState& app) {
  const QString folder = app.env.path(QStringLiteral("\\dbf"));
  ReadData2ItemData(folder, tables::kItems, app.AllItemData);
  SetWorkItemData(app.ItemData, app.AllItemData);
  app.ItemIndexProblem = TableProblem(AppPath(folder, tables::kItems), ItemTableFields());
}

CloseDecision CloseRequest(AppState& app) {
  const Env& env = app.env;
  if (app.RunState == runstate::kInItem) return CloseDecision::Ignore;
  if (app.RunState == runstate::kUpdating) {
    if (env.msgBox(QStringLiteral("正在进行更新任务，确定中止吗？"), box::YesNo | box::Question,
                   QStringLiteral("请你确定")) == box::No)
      return CloseDecision::Cancel;
    // The questions updated so far go in front of today's day file.
    if (app.FlushUpdate)
      app.FlushUpdate();
    else
      PrependToTodayFile(env, kUpdatedFolder, app.UpdatedIds);
  }
  if (app.StartedOk) {
    if (env.msgBox(QStringLiteral("真的不玩儿啦？") + kCrLf + kCrLf + QStringLiteral("     :-)"),
                   box::YesNo | box::Question, QStringLiteral("请你确认")) == box::No)
      return CloseDecision::Cancel;
  }
  if (app.HasIndex) {
    MyEraseItemData(app.ItemData, app.ItemData.size());
    MyEraseItemData(app.AllItemData, app.AllItemData.size());
  }
  return CloseDecision::Close;
}

}  // namespace mj
