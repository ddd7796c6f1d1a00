#pragma once
// Fetching a file from a web address without blocking the window: the news
// file, the knowledge files. The answer arrives through the event loop.

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QUrl>
#include <functional>

class QNetworkAccessManager;
class QNetworkReply;

namespace mj {

struct FetchResult {
  bool ok = false;   // a 2xx answer came whole, within the size limit
  int status = 0;    // the HTTP status; 0 when the server gave none
  QByteArray body;   // what came, also on failure (an error page)
  QString error;     // why not, in Chinese, naming the address; empty when ok
  bool timedOut = false;
};

class HttpFetch : public QObject {
  Q_OBJECT
 public:
  using Done = std::function<void(const FetchResult&)>;
  using Progress = std::function<void(qint64 received, qint64 total)>;

  explicit HttpFetch(QObject* parent = nullptr);
  ~HttpFetch() override;

  // Starts a GET of url. The fetch is given up when nothing arrives for
  // timeoutMs, or when more than maxBytes arrive. `done` is called exactly
  // once, from the event loop, unless abort() comes first. One fetch at a
  // time: a new get() aborts the one under way.
  void get(const QUrl& url, int timeoutMs, qint64 maxBytes, Done done, Progress progress = {});
  // Gives up the fetch under way; its `done` is not called.
  void abort();
  bool busy() const { return !reply_.isNull(); }

 private:
  void finish();

  QNetworkAccessManager* nam_ = nullptr;
  QPointer<QNetworkReply> reply_;
  QUrl url_;
  qint64 maxBytes_ = 0;
  bool tooBig_ = false;
  Done done_;
  Progress progress_;
};

// The same, waiting for the answer in a local event loop (window events go
// on meanwhile). For the close of the program and for the command line.
FetchResult FetchNow(const QUrl& url, int timeoutMs, qint64 maxBytes);

}  // namespace mj
