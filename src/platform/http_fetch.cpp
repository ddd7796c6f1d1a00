#include "platform/http_fetch.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

namespace mj {

HttpFetch::HttpFetch(QObject* parent) : QObject(parent), nam_(new QNetworkAccessManager(this)) {}

HttpFetch::~HttpFetch() { abort(); }

void HttpFetch::get(const QUrl& url, int timeoutMs, qint64 maxBytes, Done done, Progress progress) {
  abort();
  url_ = url;
  maxBytes_ = maxBytes;
  tooBig_ = false;
  done_ = std::move(done);
  progress_ = std::move(progress);
  QNetworkRequest request(url);
  // The time-out counts from the last byte that arrived, so a slow but
  // living server is not cut off, and a silent one is after timeoutMs.
  request.setTransferTimeout(timeoutMs);
  request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
  reply_ = nam_->get(request);
  connect(reply_, &QNetworkReply::downloadProgress, this, [this](qint64 received, qint64 total) {
    if (maxBytes_ > 0 && (received > maxBytes_ || total > maxBytes_)) {
      tooBig_ = true;
      if (reply_) reply_->abort();
      return;
    }
    if (progress_) progress_(received, total);
  });
  connect(reply_, &QNetworkReply::finished, this, &HttpFetch::finish);
}

void HttpFetch::abort() {
  if (!reply_) return;
  QNetworkReply* r = reply_;
  reply_.clear();
  r->disconnect(this);
  r->abort();
  r->deleteLater();
  done_ = nullptr;
  progress_ = nullptr;
}

void HttpFetch::finish() {
  QNetworkReply* r = reply_;
  if (!r) return;
  reply_.clear();
  FetchResult result;
  result.status = r->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
  if (!tooBig_ && r->isOpen()) result.body = r->readAll();
  const QString where = url_.toDisplayString();
  if (tooBig_) {
    result.error = QStringLiteral("从 %1 下载的文件太大（超过 %2 字节），已放弃。").arg(where).arg(maxBytes_);
  } else if (r->error() == QNetworkReply::OperationCanceledError || r->error() == QNetworkReply::TimeoutError) {
    result.timedOut = true;
    result.error = QStringLiteral("连接 %1 超时，未能下载。").arg(where);
  } else if (r->error() != QNetworkReply::NoError) {
    if (result.status > 0)
      result.error = QStringLiteral("从 %1 下载失败：服务器回答 %2。").arg(where).arg(result.status);
    else
      result.error = QStringLiteral("无法连接 %1：%2").arg(where, r->errorString());
  } else if (result.status != 0 && (result.status < 200 || result.status > 299)) {
    result.error = QStringLiteral("从 %1 下载失败：服务器回答 %2。").arg(where).arg(result.status);
  } else {
    result.ok = true;
  }
  r->deleteLater();
  Done done = std::move(done_);
  done_ = nullptr;
  progress_ = nullptr;
  if (done) done(result);
}

FetchResult FetchNow(const QUrl& url, int timeoutMs, qint64 maxBytes) {
  HttpFetch fetch;
  FetchResult out;
  QEventLoop loop;
  fetch.get(url, timeoutMs, maxBytes, [&](const FetchResult& r) {
    out = r;
    loop.quit();
  });
  if (fetch.busy()) loop.exec();
  return out;
}

}  // namespace mj
