#pragma once
// The news file of the support site (\ini\newlumen.txt): the links the
// program keeps for the whole run, the exam countdown of the title bar and
// the notices of the start page.

#include <QDate>
#include <QList>
#include <QString>

#include "platform/env.h"

namespace mj {

inline const QString kNewsFile = QStringLiteral("\\ini\\newlumen.txt");
inline const QString kNewsDownload = QStringLiteral("\\ini\\newlumen.tx_");
inline constexpr int kNoticeCount = 25;

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
