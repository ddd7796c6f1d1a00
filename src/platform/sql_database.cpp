#include "platform/sql_database.h"

#include <QAtomicInt>
#include <QSqlDatabase>
#include <QSqlError>

#include "platform/paths.h"

namespace mj {

namespace {
QAtomicInt connectionCounter;
}

SqlConnection::SqlConnection() : name_(QStringLiteral("mj_sql_%1").arg(connectionCounter.fetchAndAddRelaxed(1))) {}

SqlConnection::~SqlConnection() { close(); }

bool SqlDriverAvailable(const QString& driver) { return QSqlDatabase::isDriverAvailable(driver.toUpper()); }

QString SqlConnection::displayName() const {
  if (target_.isSqlite()) return MapSeparators(target_.database);
  QString where = target_.driver + QStringLiteral(" 数据库 ") + target_.database;
  if (!target_.host.isEmpty()) where += QStringLiteral("（") + target_.host + QStringLiteral("）");
  return where;
}

bool SqlConnection::open(const SqlTarget& target, QString* error) {
  close();
  target_ = target;
  target_.driver = target.driver.toUpper();
  if (!SqlDriverAvailable(target_.driver)) {
    *error = QStringLiteral("本机没有Qt的数据库驱动") + target_.driver + QStringLiteral("，打不开") + displayName() +
             QStringLiteral("。");
    return false;
  }
  {
    QSqlDatabase db = QSqlDatabase::addDatabase(target_.driver, name_);
    db.setDatabaseName(target_.isSqlite() ? MapSeparators(target_.database) : target_.database);
    if (!target_.host.isEmpty()) db.setHostName(target_.host);
    if (target_.port > 0) db.setPort(target_.port);
    if (!target_.user.isEmpty()) db.setUserName(target_.user);
    if (!target_.password.isEmpty()) db.setPassword(target_.password);
    if (db.open()) return true;
    *error = QStringLiteral("打不开数据库") + displayName() + QStringLiteral("：") + db.lastError().text();
  }
  close();
  return false;
}

void SqlConnection::close() {
  if (!QSqlDatabase::contains(name_)) return;
  {
    QSqlDatabase db = QSqlDatabase::database(name_, false);
    if (db.isOpen()) db.close();
  }
  QSqlDatabase::removeDatabase(name_);
}

bool SqlConnection::isOpen() const {
  return QSqlDatabase::contains(name_) && QSqlDatabase::database(name_, false).isOpen();
}

QSqlDatabase SqlConnection::db() const { return QSqlDatabase::database(name_, false); }

}  // namespace mj
