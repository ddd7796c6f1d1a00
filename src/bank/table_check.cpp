#include "bank/table_check.h"

#include <QFileInfo>

#include "bank/tables.h"
#include "platform/dbftable.h"
#include "platform/paths.h"
#include "platform/vbtext.h"

namespace mj {

QStringList ItemTableFields() {
  return {QStringLiteral("filename"), QStringLiteral("story"), QStringLiteral("answer"), QStringLiteral("itemid"),
          QStringLiteral("valid2")};
}

QStringList DirectoryTableFields() {
  return {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("f"), QStringLiteral("oknum")};
}

QStringList LawNameTableFields() { return {QStringLiteral("lawname"), QStringLiteral("filename")}; }

QString TableProblem(const QString& path, const QStringList& fields) {
  const QString real = ResolveCase(path);
  const QFileInfo info(real);
  if (!info.exists()) return QStringLiteral("表文件 %1 不存在。").arg(real);
  if (info.size() == 0) return QStringLiteral("表文件 %1 是空文件。").arg(real);
  const DbfTable t = DbfTable::open(real);
  if (!t.isOpen()) return t.error() + QStringLiteral("。");
  QString text;
  QStringList missing;
  for (const QString& f : fields)
    if (t.fieldIndex(f) < 0) missing.append(f);
  if (!missing.isEmpty())
    text += QStringLiteral("表文件 %1 缺少字段 %2。").arg(real, missing.join(QStringLiteral("、")));
  if (t.recordCount() < t.headerRecordCount())
    text += QStringLiteral("表文件 %1 不完整：表头记有 %2 条记录，文件中只有 %3 条完整的记录。")
                .arg(real)
                .arg(t.headerRecordCount())
                .arg(t.recordCount());
  return text;
}

QList<TableProblemOf> CheckDataTables(const Env& env) {
  const QString folder = env.path(QStringLiteral("\\dbf"));
  if (!DirExists(folder))
    return {{QString(), QStringLiteral("文件夹 %1 不存在，其中的数据表都无法读出。").arg(folder)}};
  const QList<std::pair<QString, QStringList>> tablesToCheck = {
      {tables::kItems, ItemTableFields()},
      {tables::kDirectory, DirectoryTableFields()},
      {tables::kCsItems, ItemTableFields()},
      {tables::kCsDirectory, DirectoryTableFields()},
      {tables::kLawNames, LawNameTableFields()},
  };
  QList<TableProblemOf> out;
  for (const auto& [table, fields] : tablesToCheck) {
    const QString text = TableProblem(AppPath(folder, table), fields);
    if (!text.isEmpty()) out.append({table, text});
  }
  return out;
}

QString TableProblemsMessage(const QList<TableProblemOf>& problems) {
  QString text = QStringLiteral("下列数据表不能完整读出：");
  for (const TableProblemOf& p : problems) text += kCrLf + p.text;
  text += kCrLf + kCrLf +
          QStringLiteral("程序照常使用其中能读出的部分，读不出的试题和记录暂时不能使用；"
                         "请用备份恢复这些文件后重新启动程序。");
  return text;
}

}  // namespace mj
