// An update package (*.new) of any text taken into a small program folder:
// items split and prepared, IDs and cited laws read, questions replaced in
// their bank files and item tables and filed again under the laws their
// answers cite, every file written, the day file of \更新的题 among them.
// The same package is then taken a second time with the answer "否" over
// what the first run left, as a user who takes a package twice does.

#include <QDir>

#include "bank/tables.h"
#include "fuzz_target.h"
#include "log/update_package.h"
#include "platform/clock.h"
#include "platform/dbftable.h"
#include "platform/dialogs.h"
#include "platform/file_moves.h"
#include "platform/messagebox.h"
#include "platform/shell.h"
#include "platform/textfile.h"

using namespace mj;

namespace {

QString Question(int n, const QString& key, const QString& citation) {
  return QStringLiteral("●%1●第%1题(      )\r\nA．甲\r\nB．乙\r\nC．丙\r\nD．丁■答案：").arg(n) + key +
         QStringLiteral("参见") + citation + QStringLiteral("\r\n");
}

void ItemTable(const QString& path, const QStringList& ids) {
  DbfTable t = DbfTable::create(path, tables::ItemFields());
  for (const QString& id : ids) {
    const int r = t.appendRow();
    t.setText(r, QStringLiteral("filename"), id.left(6));
    t.setText(r, QStringLiteral("story"), QStringLiteral("2026-11-01 09:30   A"));
    t.setText(r, QStringLiteral("answer"), QStringLiteral("A"));
    t.setText(r, QStringLiteral("aboutlaw"), QStringLiteral("《示例刑法》1．"));
    t.setText(r, QStringLiteral("itemid"), id);
    t.setLogical(r, QStringLiteral("valid2"), true);
    t.setLogical(r, QStringLiteral("hasselect"), false);
    t.setNumber(r, QStringLiteral("itemtype"), id.mid(5, 1).toInt());
  }
  t.close();
}

// The folder every input starts from: two banks of 《示例刑法》, one of
// 《合同示例规则》, a simulated paper, their item tables and the directory.
const QString& Template() {
  static const QString root = [] {
    const QString r = fuzz::WorkFolder() + QStringLiteral("/update_template");
    QDir().mkpath(r + QStringLiteral("/dbf"));
    for (const QString& sub : {QStringLiteral("/更新的题"), QStringLiteral("/yibanti"), QStringLiteral("/moniti")})
      QDir().mkpath(r + sub);
    const QString law = QStringLiteral("《示例刑法》");
    WriteTextAtomic(r + QStringLiteral("/yibanti/100011.mmd"),
                    QStringLiteral("示例：《示例刑法》单项选择题\r\n") + Question(1, QStringLiteral("A"), law + QStringLiteral("第1条")) +
                        Question(2, QStringLiteral("B"), law + QStringLiteral("第2条")) +
                        Question(3, QStringLiteral("C"), law + QStringLiteral("第3条")));
    WriteTextAtomic(r + QStringLiteral("/yibanti/100012.mmd"),
                    QStringLiteral("示例：《示例刑法》多项选择题\r\n") + Question(1, QStringLiteral("AB"), law + QStringLiteral("第4条")));
    WriteTextAtomic(r + QStringLiteral("/moniti/00001.mmd"),
                    QStringLiteral("试卷\r\n") + Question(1, QStringLiteral("A"), law + QStringLiteral("第1条")));
    ItemTable(r + QStringLiteral("/dbf/") + tables::kItems,
              {QStringLiteral("10001100001"), QStringLiteral("10001100002"), QStringLiteral("10001100003"),
               QStringLiteral("10001200001")});
    ItemTable(r + QStringLiteral("/dbf/") + tables::kCsItems, {QStringLiteral("00001100001")});
    DbfTable d = DbfTable::create(r + QStringLiteral("/dbf/") + tables::kDirectory, tables::DirectoryFields());
    const auto row = [&d](const QString& a, const QString& b, int f) {
      const int i = d.appendRow();
      d.setText(i, QStringLiteral("a"), a);
      if (!b.isEmpty()) d.setText(i, QStringLiteral("b"), b);
      d.setNumber(i, QStringLiteral("f"), f);
    };
    row(QStringLiteral("第二部分 刑法题库"), QString(), 4);
    row(QStringLiteral("《示例刑法》单项选择题"), QStringLiteral("\\yibanti\\100011.mmd"), 3);
    row(QStringLiteral("《示例刑法》多项选择题"), QStringLiteral("\\yibanti\\100012.mmd"), 1);
    row(QStringLiteral("《合同示例规则》单项选择题"), QStringLiteral("\\yibanti\\200011.mmd"), 0);
    d.close();
    return r;
  }();
  return root;
}

}  // namespace

MJ_FUZZ_TARGET(update_package) {
  const QString text = fuzz::GbkText(data, size);
  const QString folder = fuzz::WorkFolder() + QStringLiteral("/update");
  QDir(folder).removeRecursively();
  if (!CopyFolderOver(Template(), folder)) return 0;

  static FixedClock clock;
  ScriptedBoxes boxes;  // every box takes its default button
  RecordingShell shell;
  ScriptedDialogs dialogs;
  Env env{folder, &clock, &boxes, &shell, &dialogs};
  UpdateView view;
  for (const bool updateAgain : {true, false}) {
    qint16 runState = 3;
    QString ids;
    UpdateRun run(env, view, {runState, ids});
    run.writeEvery(2);  // the writes in the middle of a run too
    (void)run.takePackage(text, updateAgain);
  }
  return 0;
}
