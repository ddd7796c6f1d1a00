#include "knowledge/knowledge_download.h"

#include <QTimer>

#include "knowledge/knowledge_points.h"
#include "platform/paths.h"
#include "platform/textfile.h"
#include "platform/vbtext.h"

namespace mj {

QString KnowledgeDownloadText(const KnowledgeDownloadResult& result) {
  QString text = QStringLiteral("下载了%1个知识点文件。").arg(result.fetched.size());
  if (!result.failures.isEmpty())
    text += kCrLf + kCrLf + QStringLiteral("下面的文件没能下载：") + kCrLf + result.failures.join(kCrLf);
  return text;
}

KnowledgeDownload::KnowledgeDownload(const Env& env, QObject* parent) : QObject(parent), env_(env), fetch_(this) {}

void KnowledgeDownload::start(const QString& folder, const QList<int>& numbers, Progress progress, Done done) {
  abort();
  folder_ = folder;
  queue_ = numbers;
  total_ = static_cast<int>(numbers.size());
  done_ = 0;
  result_ = KnowledgeDownloadResult();
  progress_ = std::move(progress);
  finished_ = std::move(done);
  if (folder_.isEmpty() && !queue_.isEmpty()) {
    result_.failures << QStringLiteral("新闻文件没有给出知识点文件的下载网址（“知识点文件下载网上目录”）。");
    queue_.clear();
  }
  MakeDir(env_.path(kNewPointsFolder));
  next();
}

void KnowledgeDownload::abort() {
  fetch_.abort();
  queue_.clear();
  finished_ = nullptr;
}

void KnowledgeDownload::next() {
  if (progress_ && total_ > 0) progress_(done_ * 1000 / total_);
  if (queue_.isEmpty()) {
    Done done = std::move(finished_);
    finished_ = nullptr;
    if (done) done(result_);
    return;
  }
  const int i = queue_.takeFirst();
  const QString address = folder_ + QStringLiteral("newzsd") + QString::number(i) + QStringLiteral(".txt");
  fetch_.get(
      QUrl(address), kKnowledgeTimeoutMs, kKnowledgeMaxBytes,
      [this, i, address](const FetchResult& r) {
        if (!r.ok) {
          result_.failures << r.error;
        } else if (!DecodeText(r.body).contains(QStringLiteral("[知识点]"))) {
          // An error page of a server that answers everything is no knowledge file.
          result_.failures << address + QStringLiteral("：下载的内容不是知识点文件（没有[知识点]一节）。");
        } else if (!WriteBytesAtomic(KnowledgeFilePath(env_, i, QStringLiteral("txt")), r.body)) {
          result_.failures << address + QStringLiteral("：不能写入") +
                                  MapSeparators(KnowledgeFilePath(env_, i, QStringLiteral("txt"))) +
                                  QStringLiteral("。");
        } else {
          result_.fetched << i;
        }
        ++done_;
        // The next fetch starts from the event loop, outside this answer.
        QTimer::singleShot(0, this, [this] { next(); });
      },
      [this](qint64 received, qint64 total) {
        if (progress_ && total_ > 0 && total > 0)
          progress_(static_cast<int>((done_ * 1000LL + received * 1000LL / total) / total_));
      });
}

}  // namespace mj
