#include "log/news.h"

#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QUrl>

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

QString SupportSite(const Env& env) {
  QString site = IniRead(env.path(kSiteFile), kSiteSection, kSiteKey);
  if (site == kNoSite) return QString();
  if (site.isEmpty()) site = kDefaultSite;
  while (site.endsWith(u'/')) site.chop(1);
  return site;
}

QString NewsAddress(const Env& env) {
  const QString site = SupportSite(env);
  return site.isEmpty() ? QString() : site + QStringLiteral("/newlumen.txt");
}

QString NewsTextOf(const FetchResult& result) {
  // A server's answer counts whatever its status: an error page has no
  // 信息号 and so changes nothing.
  if (result.timedOut || result.status == 0 || result.body.isEmpty() || result.body.size() > kNewsMaxBytes)
    return QString();
  return DecodeText(result.body);
}

bool TakeNewsText(const Env& env, const QString& text) {
  const QString local = env.path(kNewsFile);
  const QString download = env.path(kNewsDownload);
  if (Len(text) < 20) return FileExists(local);
  if (!WriteTextAtomic(download, text)) return false;
  const QString number = IniRead(download, kInfo, QStringLiteral("信息号"));
  if (!FileExists(local)) {
    if (number.isEmpty()) return false;
    if (!CopyFileOver(download, local)) return false;
    RemoveFile(download);
    return true;
  }
  if (number.isEmpty()) return true;
  if (number != IniRead(local, kInfo, QStringLiteral("信息号"))) {
    // The new file takes the old one's place in one step.
    if (!CopyFileOver(download, local)) return false;
  }
  return true;
}

NewsDownload::NewsDownload(const Env& env, QObject* parent) : QObject(parent), env_(env) {}

void NewsDownload::start(std::function<void(bool)> done) {
  const QString address = NewsAddress(env_);
  if (address.isEmpty()) {
    done(TakeNewsText(env_, QString()));
    return;
  }
  done_ = std::move(done);
  fetch_.get(QUrl(address), kNewsTimeoutMs, kNewsMaxBytes, [this](const FetchResult& r) {
    const bool show = TakeNewsText(env_, NewsTextOf(r));
    std::function<void(bool)> d = std::move(done_);
    done_ = nullptr;
    if (d) d(show);
  });
}

void NewsDownload::finishNow() {
  if (!fetch_.busy()) return;
  QEventLoop loop;
  // The fetch's own end quits the wait; its time-out bounds it.
  std::function<void(bool)> quit = [&loop](bool) { loop.quit(); };
  done_ = quit;
  loop.exec();
  done_ = nullptr;
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
  // A day number is a 32-bit number; one that does not fit is its limit.
  return ExamCountdownText(SaturatedInt<qint32>(e), env.today());
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
    n.color = SaturatedInt<int>(Val(read(section, QStringLiteral("原色"))));
    n.hoverColor = SaturatedInt<int>(Val(read(section, QStringLiteral("鼠标色"))));
    out.append(n);
  }
  return out;
}

QString NoticeLinkTarget(const Env& env, const QString& link) {
  const QString l = link.trimmed();
  if (l.startsWith(u"http://", Qt::CaseInsensitive) || l.startsWith(u"https://", Qt::CaseInsensitive)) {
    const QUrl url(l, QUrl::StrictMode);
    const QString scheme = url.scheme().toLower();
    if (url.isValid() && (scheme == u"http" || scheme == u"https") && !url.host().isEmpty()) return l;
    return QString();
  }
  // A document of the help folder, named from the program folder.
  static const QString kReadme = QStringLiteral("\\readme\\");
  const QString mapped = QString(l).replace(u'/', u'\\');
  if (!mapped.startsWith(kReadme, Qt::CaseInsensitive) || mapped.size() == kReadme.size()) return QString();
  const QFileInfo file(env.path(mapped));
  const QFileInfo readme(env.path(QStringLiteral("\\readme")));
  if (!file.exists() || !file.isFile() || !readme.isDir()) return QString();
  const QString filePath = file.canonicalFilePath();
  const QString readmePath = readme.canonicalFilePath();
  // Through a link or "..", a path may lead out of the folder.
  if (filePath.isEmpty() || readmePath.isEmpty() || !filePath.startsWith(readmePath + u'/')) return QString();
  static const QStringList kDocuments = {QStringLiteral("htm"), QStringLiteral("html"), QStringLiteral("txt"),
                                         QStringLiteral("pdf"), QStringLiteral("jpg"),  QStringLiteral("jpeg"),
                                         QStringLiteral("png"), QStringLiteral("gif"),  QStringLiteral("bmp")};
  if (!kDocuments.contains(file.suffix().toLower())) return QString();
  return filePath;
}

QString RefusedLinkText(const QString& link) {
  return QStringLiteral("这条通知的链接既不是以http://或https://开头的网址，也不是程序的readme文件夹中的说明文件，"
                        "为了安全没有打开：") +
         kCrLf + link;
}

}  // namespace mj
