#pragma once
// The news file of the support site (\ini\newlumen.txt): the links the
// program keeps for the whole run, the exam countdown of the title bar and
// the notices of the start page.

#include <QDate>
#include <QList>
#include <QString>

#include "platform/env.h"
#include "platform/http_fetch.h"

namespace mj {

inline const QString kNewsFile = QStringLiteral("\\ini\\newlumen.txt");
inline const QString kNewsDownload = QStringLiteral("\\ini\\newlumen.tx_");
inline constexpr int kNoticeCount = 25;

// The program's own settings of its support site, \ini\mingjing.ini:
//   [支持站点]
//   地址=https://mingjing.example.org
// A missing file or key, or an empty value, means the support site of the
// program; the value 无 means none: no news is fetched, and 支持站点 of the
// help menu has nothing to open.
inline const QString kSiteFile = QStringLiteral("\\ini\\mingjing.ini");
inline const QString kSiteSection = QStringLiteral("支持站点");
inline const QString kSiteKey = QStringLiteral("地址");
inline const QString kNoSite = QStringLiteral("无");
inline const QString kDefaultSite = QStringLiteral("https://mingjing.example.org");
// The support site's address without a trailing "/"; empty when switched off.
QString SupportSite(const Env& env);
// Where the news file is fetched from: the support site + "/newlumen.txt";
// empty when there is no support site. The web folder of the news file is
// this address without "newlumen.txt".
QString NewsAddress(const Env& env);

// The news download: 5 seconds without an answer, and an answer of more
// than 1 MB, give up the fetch.
inline constexpr int kNewsTimeoutMs = 5000;
inline constexpr qint64 kNewsMaxBytes = 1024 * 1024;
// The text of a fetch of the news file: what the server answered, an error
// page as well, GBK (or UTF-8 with a byte order mark); empty when no answer
// came, in time and within the size limit.
QString NewsTextOf(const FetchResult& result);
// Takes the text of a fetch: a text of 20 characters or more becomes
// \ini\newlumen.tx_, and when its 信息号 is new (or there is no local file
// yet) it becomes \ini\newlumen.txt too. True when the notices are then to
// be shown from \ini\newlumen.txt; false when there is nothing to show or
// a file could not be written.
bool TakeNewsText(const Env& env, const QString& text);

// The fetch of the news file at start-up, which never blocks the window:
// its end comes through the event loop.
class NewsDownload : public QObject {
  Q_OBJECT
 public:
  explicit NewsDownload(const Env& env, QObject* parent = nullptr);
  // Starts the fetch from NewsAddress. `done` is called once, after the
  // text has been taken, with whether the notices are to be shown; at once,
  // before start returns, when there is no address to fetch from.
  void start(std::function<void(bool showNotices)> done);
  bool pending() const { return fetch_.busy(); }
  // The end of the program: waits for a fetch under way (window events go
  // on meanwhile) and takes its text; `done` is not called.
  void finishNow();

 private:
  const Env env_;
  HttpFetch fetch_;
  std::function<void(bool)> done_;
};

struct NewsLinks {
  QString link1, link2, link3, link4;  // 法条详解, 做下一题, 保留链接1, 保留链接2
};

// The four link values of section 信息 of the local news file.
NewsLinks ReadNewsLinks(const Env& env);

// The countdown text for the title bar; empty without a news file or
// without an exam day. Days count from 2003-01-01 as day 0.
QString GetExamCountdown(const Env& env);
QString ExamCountdownText(qint64 examDay, const QDate& today);
qint64 DayNumber(const QDate& date);

// One notice label of the start page.
struct Notice {
  QString caption;  // "●" became CR LF and "^" a blank
  QString toolTip;
  QString link;
  int color = 0;       // 原色
  int hoverColor = 0;  // 鼠标色
  bool visible() const { return !caption.isEmpty(); }
};

// The 25 notices of a news file, in label order.
QList<Notice> ReadNotices(const QString& newsFile);

// What a click on a notice may hand to the desktop: the link itself when it
// is an http:// or https:// address, or the file when the link names a
// document inside the program folder's readme folder as "\readme\...".
// Anything else gives the empty text and is not opened: the news file comes
// from the network and must never be able to start a program (another
// scheme such as file: or javascript:, a program, a path outside readme, a
// relative path, a file of a type other than a document).
QString NoticeLinkTarget(const Env& env, const QString& link);
// The box shown instead when a notice link is not opened.
QString RefusedLinkText(const QString& link);

}  // namespace mj
