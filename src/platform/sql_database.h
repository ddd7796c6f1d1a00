#pragma once
// A database reached through Qt SQL (the forum database): an SQLite file by
// default, or a server database whose driver the settings name. Each
// SqlConnection is a connection of its own, closed and removed with it.

#include <QString>

class QSqlDatabase;

namespace mj {

struct SqlTarget {
  QString driver = QStringLiteral("QSQLITE");  // QSQLITE, QPSQL, QMYSQL, ...
  QString database;                            // the file for SQLite, the database name otherwise
  QString host;
  int port = -1;  // the driver's default
  QString user;
  QString password;
  bool isSqlite() const { return driver.compare(QStringLiteral("QSQLITE"), Qt::CaseInsensitive) == 0; }
};

class SqlConnection {
 public:
  SqlConnection();
  ~SqlConnection();
  SqlConnection(const SqlConnection&) = delete;
  SqlConnection& operator=(const SqlConnection&) = delete;

  // Opens the database; false with *error in words for the user (naming
  // the database) when the driver is missing or the database cannot be
  // opened. An SQLite file is created when it does not exist.
  bool open(const SqlTarget& target, QString* error);
  void close();
  bool isOpen() const;
  QSqlDatabase db() const;
  const SqlTarget& target() const { return target_; }
  // How the database is named to the user: the file, or driver and name.
  QString displayName() const;

 private:
  QString name_;
  SqlTarget target_;
};

// Whether Qt has a driver of that name on this machine.
bool SqlDriverAvailable(const QString& driver);

}  // namespace mj
