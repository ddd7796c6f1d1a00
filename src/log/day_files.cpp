#include "log/day_files.h"

#include <QDir>

#include "platform/paths.h"
#include "platform/text_toolkit.h"
#include "platform/vbtext.h"

namespace mj {

QString ReadIdFile(const QString& path) {
  const QString v = FirstValueOf(ReadFileAsText(path));
  return v.size() % 11 == 0 ? v : QString();
}

bool WriteIdFile(const QString& path, const QString& list) { return WriteQuotedValue(path, list); }

QString TodayIniName(const QDate& today) { return today.toString(QStringLiteral("yyyyMMdd")) + QStringLiteral(".ini"); }

bool PrependToTodayFile(const Env& env, const QString& folder, const QString& ids) {
  const QString dir = env.path(folder);
  if (!DirExists(dir)) MakeDir(dir);
  const QString file = env.path(folder + QStringLiteral("\\") + TodayIniName(env.today()));
  return WriteIdFile(file, ids + ReadIdFile(file));
}

namespace {

QStringList filesOf(const QString& folder, const QString& extension) {
  QDir dir(ResolveCase(MapSeparators(folder)));
  dir.setNameFilters({QStringLiteral("*.") + extension});
  dir.setFilter(QDir::Files | QDir::Hidden);
  dir.setSorting(QDir::Name);
  return dir.entryList();
}

}  // namespace

int CountFiles(const QString& folder, const QString& extension) {
  return static_cast<int>(filesOf(folder, extension).size());
}

QStringList GetDayFileNames(const QString& folder, const QString& extension) {
  QStringList out;
  for (const QString& name : filesOf(folder, extension))
    if (name.size() == 12) out.append(name.left(8));
  return out;
}

QString ReadDayFile(const QString& folder, const QString& date) {
  QString name = date;
  if (InStr(date, QStringLiteral("-")) > 0 && Len(date) == 10) name = ReplaceAll(date, QStringLiteral("-"), QString());
  return ReadIdFile(AppPath(folder, name + QStringLiteral(".ini")));
}

QString ReadAllIdFiles(const QString& folder) {
  QString all;
  for (const QString& name : GetDayFileNames(folder, QStringLiteral("ini")))
    all += ReadIdFile(AppPath(folder, name + QStringLiteral(".ini")));
  return all;
}

}  // namespace mj
