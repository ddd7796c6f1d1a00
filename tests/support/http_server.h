#pragma once
// A small real HTTP server on 127.0.0.1 for tests of downloads. It runs in
// the test's own event loop: a test waits for a download with a local event
// loop (QTRY_*, QSignalSpy::wait or a blocking fetch), and the server answers
// meanwhile.

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QTcpServer>
#include <QUrl>

namespace mj::test {

class HttpServer : public QObject {
  Q_OBJECT
 public:
  struct Route {
    int status = 200;
    QByteArray body;
    QByteArray contentType = "text/plain";
    bool silent = false;  // accept the connection and never answer
    int delayMs = 0;      // wait this long before answering
  };

  HttpServer();
  // Listens on a free port of 127.0.0.1; false when it cannot.
  bool start();
  // http://127.0.0.1:<port>
  QUrl base() const;
  QUrl url(const QString& path) const;

  void set(const QString& path, const Route& route) { routes_[path] = route; }
  void setText(const QString& path, const QByteArray& body, int status = 200) {
    Route r;
    r.status = status;
    r.body = body;
    routes_[path] = r;
  }
  // Paths asked for, in order.
  QList<QString> requests;

 private:
  void onConnection();
  QTcpServer server_;
  QHash<QString, Route> routes_;
};

}  // namespace mj::test
