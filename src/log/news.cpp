#include "log/news.h"

#include "platform/inifile.h"
#include "platform/paths.h"
#include "platform/text_toolkit.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"

namespace mj {

namespace {
const QString kInfo = QStringLiteral("信息");
}

NewsLinks ReadNewsLinks(const Env& env) {
  const QString text = ReadText(env.path(kNewsFile));
  return {IniValueIn(text, kInfo, QStringLiteral("法条详解")), IniValueIn(text, kInfo, QStringLiteral("做下一题")),
          IniValueIn(text, kInfo, QStringLiteral("保留链接1")), IniValueIn(text, kInfo, QStringLiteral("保留链接2"))};
}

qint64 DayNumber(const QDate& date) { return QDate(2003, 1, 1).daysTo(date); }

QString ExamCountdownText(qint64 examDay, const QDate& today) {
  const qint64 d = DayNumber(today);
  const qint64 diff = examDay - d;
  if (diff == 0) return QStringLiteral("今天开始司法统考，祝你成功！");
  if (diff == 1) return QStringLiteral("明天开始司法统考，祝你成功！");
  if (diff == 2) return QStringLiteral("后天开始司法统考，祝你成功！");
  if (diff > 2) return QStringLiteral("距今年司法统考还有") + QString::number(diff) + QStringLiteral("天");
  return QStringLiteral("今年司法统考已过了") + QString::number(d - examDay) + QStringLiteral("天，出去玩玩吧");
}

QString GetExamCountdown(const Env& env) {
  // A missing file reads as no exam day.
  const double e = Val(IniRead(env.path(kNewsFile), kInfo, QStringLiteral("考试时间")));
  if (e == 0) return QString();
  return ExamCountdownText(static_cast<qint64>(e), env.today());
}

QList<Notice> ReadNotices(const QString& newsFile) {
  QList<Notice> out;
  const QString text = ReadText(newsFile);
  auto read = [&text](const QString& section, const QString& key) { return IniValueIn(text, section, key); };
  for (int i = 0; i < kNoticeCount; ++i) {
    const QString section = QStringLiteral("通知") + QString::number(i + 1);
    Notice n;
    n.caption = ReplaceAll(ReplaceAll(read(section, QStringLiteral("显示内容")), QStringLiteral("●"), kCrLf),
                           QStringLiteral("^"), QStringLiteral(" "));
    n.toolTip = read(section, QStringLiteral("鼠标提示"));
    n.link = read(section, QStringLiteral("链接"));
    n.color = static_cast<int>(Val(read(section, QStringLiteral("原色"))));
    n.hoverColor = static_cast<int>(Val(read(section, QStringLiteral("鼠标色"))));
    out.append(n);
  }
  return out;
}

}  // namespace mj
