#pragma once
// The download of the knowledge files newzsd<i>.txt from the web folder the
// news file names into \新知识点\, one after the other, never blocking the
// window. Only text files are fetched and nothing fetched is ever started.

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>

#include "platform/env.h"
#include "platform/http_fetch.h"

namespace mj {

// As the news: given up after 5 seconds without an answer. A knowledge file
// may hold many points, but never more than this.
inline constexpr int kKnowledgeTimeoutMs = 5000;
inline constexpr qint64 kKnowledgeMaxBytes = 16 * 1024 * 1024;

struct KnowledgeDownloadResult {
  QList<int> fetched;   // the numbers written to the folder 新知识点
  QStringList failures; // one line each: the address and why
};

// The box at the end of a download.
QString KnowledgeDownloadText(const KnowledgeDownloadResult& result);

class KnowledgeDownload : public QObject {
  Q_OBJECT
 public:
  explicit KnowledgeDownload(const Env& env, QObject* parent = nullptr);

  // Progress: the files done so far (the one under way counted by the share
  // of it received) out of all, scaled to 0..1000.
  using Progress = std::function<void(int permille)>;
  using Done = std::function<void(const KnowledgeDownloadResult&)>;
  // Fetches web folder + "newzsd" + i + ".txt" for each i. `done` comes once,
  // from the event loop; at once when the list is empty or there is no web
  // folder (a failure then says so).
  void start(const QString& folder, const QList<int>& numbers, Progress progress, Done done);
  bool busy() const { return fetch_.busy() || !queue_.isEmpty(); }
  void abort();

 private:
  void next();

  const Env env_;
  HttpFetch fetch_;
  QString folder_;
  QList<int> queue_;
  int total_ = 0;
  int done_ = 0;
  KnowledgeDownloadResult result_;
  Progress progress_;
  Done finished_;
};

}  // namespace mj
