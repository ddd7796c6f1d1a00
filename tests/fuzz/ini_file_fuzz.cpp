// The INI reader, on a file of any bytes: values by section and key (the
// names taken from the input itself as well as the program's own), the
// rewrite of a value, and the news file's links, notices and countdown.

#include <QDir>
#include <QFile>

#include "fuzz_target.h"
#include "log/news.h"
#include "platform/inifile.h"
#include "platform/textfile.h"

using namespace mj;

MJ_FUZZ_TARGET(ini_file) {
  const QString text = fuzz::GbkText(data, size);
  // A section and a key out of the text's first two lines, and the program's.
  const QStringList lines = text.split(QStringLiteral("\r\n"));
  const QString section = lines.value(0).left(20);
  const QString key = lines.value(1).left(20);
  for (const auto& [s, k] : {std::pair{section, key}, std::pair{QStringLiteral("信息"), QStringLiteral("考试时间")},
                             std::pair{QStringLiteral("通知1"), QStringLiteral("原色")}}) {
    (void)IniValueIn(text, s, k);
    (void)IniWithValue(text, s, k, QStringLiteral("值"));
    (void)IniWithValue(text, s, k, std::nullopt);
  }
  const QString folder = fuzz::WorkFolder();
  const QString path = folder + QStringLiteral("/ini/newlumen.txt");
  QDir().mkpath(folder + QStringLiteral("/ini"));
  {
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate)) return 0;
    f.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
  }
  (void)IniRead(path, section, key);
  (void)IniRead(path, QStringLiteral("信息"), QStringLiteral("信息号"));
  (void)ReadNotices(path);
  FixedClock clock;
  Env env;
  env.root = folder;
  env.clock = &clock;
  (void)ReadNewsLinks(env);
  (void)GetExamCountdown(env);
  IniWrite(path, section, key, QStringLiteral("新值"));
  return 0;
}
