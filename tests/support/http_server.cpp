#include "support/http_server.h"

#include <QPointer>
#include <QTcpSocket>
#include <QTimer>

namespace mj::test {

HttpServer::HttpServer() { connect(&server_, &QTcpServer::newConnection, this, &HttpServer::onConnection); }

bool HttpServer::start() { return server_.listen(QHostAddress::LocalHost, 0); }

QUrl HttpServer::base() const { return QUrl(QStringLiteral("http://127.0.0.1:%1").arg(server_.serverPort())); }

QUrl HttpServer::url(const QString& path) const {
  QUrl u = base();
  u.setPath(path);
  return u;
}

void HttpServer::onConnection() {
  while (QTcpSocket* s = server_.nextPendingConnection()) {
    s->setParent(this);
    auto buffer = std::make_shared<QByteArray>();
    connect(s, &QTcpSocket::disconnected, s, &QObject::deleteLater);
    connect(s, &QTcpSocket::readyRead, this, [this, s, buffer] {
      buffer->append(s->readAll());
      if (!buffer->contains("\r\n\r\n")) return;
      const QList<QByteArray> first = buffer->left(buffer->indexOf("\r\n")).split(' ');
      buffer->clear();
      const QString path = first.size() > 1 ? QUrl(QString::fromLatin1(first[1])).path() : QString();
      requests.append(path);
      Route r;
      const auto it = routes_.constFind(path);
      if (it != routes_.constEnd()) {
        r = *it;
      } else {
        r.status = 404;
        r.body = "<html><body>404 Not Found</body></html>";
        r.contentType = "text/html";
      }
      if (r.silent) return;
      QPointer<QTcpSocket> socket(s);
      auto answer = [socket, r] {
        if (!socket) return;
        QByteArray head = "HTTP/1.1 " + QByteArray::number(r.status) + (r.status == 200 ? " OK" : " Error") + "\r\n";
        head += "Content-Type: " + r.contentType + "\r\n";
        head += "Content-Length: " + QByteArray::number(r.body.size()) + "\r\nConnection: close\r\n\r\n";
        socket->write(head);
        socket->write(r.body);
        socket->disconnectFromHost();
      };
      if (r.delayMs > 0)
        QTimer::singleShot(r.delayMs, this, answer);
      else
        answer();
    });
  }
}

}  // namespace mj::test
